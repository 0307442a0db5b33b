// The steps of New, Open, Save and Save As, in the order in which the user meets them.
#include "document/FileCommands.h"

#include "document/FileQuestions.h"
#include "document/SetupFile.h"
#include "document/TransferTexts.h"
#include "link/TargetMap.h"
#include "platform/RuntimeError.h"
#include "text/NumberText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

namespace fs = std::filesystem;

constexpr const char* OpenLabel = "MDIMain FileOpen";
constexpr const char* SaveLabel = "MDIMain FileSave";
constexpr const char* StackTitle = "TI Status Stack Address";

FileFilter SetupFilter() { return {.name = "Setup Files(*.sdt)", .pattern = "*.sdt"}; }
FileFilter TextFilter() { return {.name = "Vantrel Files(*.vtl)", .pattern = "*.vtl"}; }

constexpr const char* StackPrompt =
    "The TI-505 Communications Status Stack Address is the starting address of 32 consecutive V memory locations. \n"
    "\n"
    "The first V memory location is a Watchdog toggle from the K5216-505. The remainder are the communication status "
    "of "
    "the respective 31 Comm sequences (0 through 30). \n"
    "\n"
    "The Status stack can be located anywhere within the V memory space (V1 to V34463).\n"
    "\n"
    "TI-505 Communications Status Stack Address V:";

} // namespace

FileCommands::FileCommands(Document& document, RSComm& link, DocumentDialogs& dialogs, const Clock& clock,
                           FileCommandHooks hooks)
    : document_(document), link_(link), dialogs_(dialogs), clock_(clock), hooks_(std::move(hooks)) {}

FileCommands::SaveAnswer FileCommands::AskSaveChanges() {
    if (!document_.Changed()) return SaveAnswer::Unchanged;
    switch (dialogs_.Show({.title = ProgramTitle,
                           .text = "Save Changes to File?",
                           .icon = MessageIcon::Exclamation,
                           .buttons = MessageButtons::YesNoCancel})) {
    case MessageAnswer::Yes:
        return SaveAnswer::Yes;
    case MessageAnswer::No:
        return SaveAnswer::No;
    default:
        return SaveAnswer::Cancel;
    }
}

FileCommands::Outcome FileCommands::SaveChangesFirst() {
    const SaveAnswer answer = AskSaveChanges();
    if (answer == SaveAnswer::Cancel) return Outcome::Cancelled;
    // A save that the user cancelled was given up knowingly; one that failed would lose the changes against their will.
    if (answer == SaveAnswer::Yes && Save() == Outcome::Failed) return Outcome::Failed;
    return Outcome::Done;
}

FileCommands::Outcome FileCommands::New() {
    const Outcome saved = SaveChangesFirst();
    if (saved != Outcome::Done) return saved;
    document_.New();
    hooks_.showCaption();
    hooks_.showDocumentDate();
    return Outcome::Done;
}

FileCommands::Outcome FileCommands::Open() {
    const Outcome saved = SaveChangesFirst();
    if (saved != Outcome::Done) return saved;
    const auto choice = dialogs_.OpenFile(
        {.filters = {SetupFilter(), TextFilter()}, .initial = document_.FilePath, .filter = openFilter_});
    if (!choice) return Outcome::Cancelled;
    return OpenAs(choice->filter == 0 ? FileKind::Setup : FileKind::TextImport, choice->path, NamesFrom::Dialog);
}

FileCommands::Outcome FileCommands::OpenPath(const fs::path& path) {
    const Outcome saved = SaveChangesFirst();
    if (saved != Outcome::Done) return saved;
    return OpenAs(MeansTextFile(path) ? FileKind::TextImport : FileKind::Setup, path, NamesFrom::User);
}

FileCommands::Outcome FileCommands::OpenAs(FileKind kind, const fs::path& path, NamesFrom namedBy) {
    try {
        if (kind == FileKind::TextImport) {
            ImportTextFileByName(document_, path, "Open it as one of the " + SetupFilter().name + ".");
            document_.FileNamedBy = namedBy;
            openFilter_ = 1;
        } else {
            ReadSetupFileByName(document_, path,
                                "If it is a text file of the older format, open it as one of the " + TextFilter().name +
                                    ".");
            document_.FileNamedBy = namedBy;
            openFilter_ = 0;
            if (!AcceptsLoadedVersion(document_, dialogs_)) return Outcome::Cancelled;
            document_.ApplyLoadedFile();
        }
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, OpenLabel, error);
        return Outcome::Failed;
    }
    hooks_.showCaption();
    hooks_.showDocumentDate();
    NameUnholdableValues(document_, dialogs_);
    return Outcome::Done;
}

FileCommands::Outcome FileCommands::OpenCopy(Configuration record) {
    const Outcome saved = SaveChangesFirst();
    if (saved != Outcome::Done) return saved;
    document_.LoadedConfiguration = std::move(record);
    if (!AcceptsLoadedVersion(document_, dialogs_)) return Outcome::Cancelled;
    document_.ApplyLoadedCopy();
    hooks_.showCaption();
    hooks_.showDocumentDate();
    NameUnholdableValues(document_, dialogs_);
    return Outcome::Done;
}

FileCommands::Outcome FileCommands::Save() {
    const Outcome saved = SaveOver(document_.OwnFile);
    TellKept();
    return saved;
}

void FileCommands::TellKept() {
    if (kept_.empty()) return;
    // Short: there is not much room for a passing word. In the documents folder nobody else would look for it.
    const fs::path copy = std::exchange(kept_, {});
    const bool beside = copy.parent_path() == document_.FilePath.parent_path();
    const fs::path name = beside ? copy.filename() : copy.parent_path().filename() / copy.filename();
    hooks_.notice("Old set-up in " + QuotedPath(name));
}

FileCommands::Outcome FileCommands::SaveOver(const fs::path& confirmed) {
    if (link_.OnlineMode() && !link_.LinkFailed() && !document_.UploadedBeforeSave && !FetchFromBoard())
        return Outcome::Failed;
    if (document_.IsUnnamed) return SaveUnderNewName();
    return AcceptsTarget(document_, confirmed, dialogs_) ? Write() : Outcome::Cancelled;
}

bool FileCommands::FetchFromBoard() {
    Configuration& record = document_.CurrentConfiguration;
    const Configuration before = document_.RecordToSave();
    // The defaults are in no danger.
    const bool worthKeeping = !document_.IsUnnamed || document_.Edited();
    const OleDate date = record.SavedDate;
    const bool fromBoard = std::exchange(document_.FromBoard, true);
    record.SavedDate = OleDate::FromLocal(clock_.LocalNow());
    hooks_.showDocumentDate();
    const bool fetched = hooks_.uploadData();
    document_.UploadedBeforeSave = fetched && (!worthKeeping || KeepBeforeFetch(before));
    if (document_.UploadedBeforeSave) {
        hooks_.uploaded(before);
    } else {
        record.Values = before.Values;
        record.SavedDate = date;
        document_.FromBoard = fromBoard;
        hooks_.showDocumentDate();
    }
    if (!fetched) {
        dialogs_.Show(
            Notice("The settings were not fetched from the board, so nothing was saved.", MessageIcon::Information));
    }
    document_.ReloadDisplay = true;
    return document_.UploadedBeforeSave;
}

bool FileCommands::KeepBeforeFetch(const Configuration& before) {
    if (document_.CurrentConfiguration.Values == before.Values) return true;
    try {
        const bool unnamed = document_.IsUnnamed;
        const fs::path target = unnamed ? hooks_.documentsFolder() / "unnamed.sdt" : document_.SaveTarget();
        const fs::path copy = FreeNameBeside(target, " before fetch");
        ReplaceFile(copy, SetupFileBytes(before), OldTail::Drop, {});
        kept_ = copy;
        return true;
    } catch (const RuntimeError& error) {
        return dialogs_.Show(FetchWithoutCopyQuestion(error.Description())) == MessageAnswer::Yes;
    }
}

FileCommands::Outcome FileCommands::SaveAs() {
    const Outcome saved = SaveUnderNewName();
    TellKept();
    return saved;
}

FileCommands::Outcome FileCommands::SaveUnderNewName() {
    const auto choice = dialogs_.SaveFile({.filters = {SetupFilter()}, .initial = {}});
    if (!choice) return Outcome::Cancelled;
    const bool wasUnnamed = document_.IsUnnamed;
    const fs::path oldPath = document_.FilePath;
    const std::string oldTitle = document_.FileTitle;
    const NamesFrom oldNamedBy = std::exchange(document_.FileNamedBy, NamesFrom::Dialog);
    document_.NameFile(choice->path);
    const Outcome saved = SaveOver(document_.FilePath);
    if (saved != Outcome::Done) {
        document_.IsUnnamed = wasUnnamed;
        document_.FilePath = oldPath;
        document_.FileTitle = oldTitle;
        document_.FileNamedBy = oldNamedBy;
        hooks_.showDocumentDate();
    }
    return saved;
}

FileCommands::Outcome FileCommands::Write() {
    try {
        document_.Save(WarningsTo(dialogs_));
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, SaveLabel, error);
        return Outcome::Failed;
    }
    openFilter_ = 0;
    hooks_.showCaption();
    hooks_.showDocumentDate();
    return Outcome::Done;
}

void FileCommands::OfferUnsaved(UnsavedCopy& copies) {
    for (LeftBehind& left : copies.Find()) {
        if (dialogs_.Show(RecoverQuestion(left, hooks_.dateText(left.when))) == MessageAnswer::Yes) {
            document_.TakeUnsaved(std::move(left.record), left.path);
            copies.Adopt(std::move(left));
            hooks_.showCaption();
            hooks_.showDocumentDate();
            return;
        }
        if (dialogs_.Show(GiveUpQuestion(left)) == MessageAnswer::Yes) left.Delete();
    }
}

bool FileCommands::MayClose() {
    const SaveAnswer answer = AskSaveChanges();
    if (answer != SaveAnswer::Yes) return answer != SaveAnswer::Cancel;
    const bool saved = SaveOver(document_.OwnFile) == Outcome::Done;
    // Of a program that ends nobody sees a passing word.
    if (saved && !kept_.empty()) {
        dialogs_.Show(
            Notice("The set-up as it was before the fetch is in\n" + QuotedPath(std::exchange(kept_, {})) + ".",
                   MessageIcon::Information));
    }
    TellKept();
    return saved;
}

Task FileCommands::AskStatusStackAddress() {
    const bool online = link_.OnlineMode();
    const ShownAddress shown = co_await StackAddressToShow();
    // Who has gone OFFLINE while the board was silent wants it no more.
    if (online && !link_.OnlineMode()) co_return;
    const auto answer = dialogs_.AskText(StackTitle, StackPrompt, shown.text, shown.whose);
    if (!answer || answer->empty()) co_return;
    const std::optional<std::int32_t> address = StackAddressIn(*answer);
    if (!address) {
        dialogs_.Show(StackAddressRefusal());
        co_return;
    }
    document_.CurrentConfiguration.SetValue(StatusStackIndex, *address);
    if (link_.OnlineMode() && !link_.LinkFailed()) co_await SendStackAddress(*address);
}

TaskOf<FileCommands::ShownAddress> FileCommands::StackAddressToShow() {
    const Configuration& record = document_.CurrentConfiguration;
    std::string unread;
    if (link_.OnlineMode() && !link_.LinkFailed()) {
        const Reading onBoard = co_await link_.Read(record.TargetAddress(StatusStackIndex));
        if (const auto address = onBoard.Number()) {
            ShownAddress shown{"V" + std::to_string(*address), "This is the address that the board holds."};
            co_return shown;
        }
        unread = "The board's address could not be read clearly. ";
    }
    ShownAddress shown{"V" + std::to_string(record.Value(StatusStackIndex)),
                       unread + "This is the address of the set-up."};
    co_return shown;
}

Task FileCommands::SendStackAddress(std::int32_t address) {
    RSComm::Line line = co_await link_.TakeLine();
    const int opened = link_.Opened();
    bool confirmed = true;
    const std::array<std::pair<std::string, std::string>, 3> writes{
        {{WriteThroughFlag, "1"}, {StatusStackWord, std::to_string(address)}, {WriteThroughFlag, "0"}}};
    for (const auto& [target, value] : writes) {
        const WriteResult written = co_await line.RSWrite(target, value);
        confirmed = confirmed && written.Confirmed();
    }
    confirmed = confirmed && link_.Opened() == opened;
    if (confirmed) co_return;
    const std::string flag = link_.LinkFailed() ? std::string("\n") + FlagLeftSentence : "";
    dialogs_.Show({.title = StackTitle,
                   .text = "The board did not confirm the address V" + std::to_string(address) +
                           " and may still use the old one.\nEnter the address once more." + flag,
                   .icon = MessageIcon::Exclamation,
                   .buttons = MessageButtons::Ok});
}

MessageBox StackAddressRefusal() {
    return {.title = StackTitle,
            .text = "Only a V Memory Space Address Between 1 and 34463 can be Entered",
            .icon = MessageIcon::Exclamation,
            .buttons = MessageButtons::Ok};
}

std::optional<std::int32_t> StackAddressIn(const std::string& answer) {
    constexpr std::int32_t lastWord = 34463;
    std::string_view number = answer;
    number.remove_prefix(std::min(number.find_first_not_of(" \t"), number.size()));
    if (number.starts_with('V') || number.starts_with('v')) number.remove_prefix(1);
    const std::optional<std::int32_t> address = WholeNumber(number);
    return address && *address >= 1 && *address <= lastWord ? address : std::nullopt;
}

} // namespace vantrel
