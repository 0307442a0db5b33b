// The main frame's safety copies before a download, and its memory of which board a set-up file belongs to.
#include "app/frmMDIMain.h"

#include "app/frmBackups.h"
#include "document/DocumentFiles.h"
#include "document/frmMain.h"
#include "platform/RuntimeError.h"
#include "platform/SetWhile.h"
#include "text/PathText.h"

#include <utility>

namespace vantrel {

namespace {

constexpr const char* Title = "Data Download";

MessageBox OtherBoardQuestion(const BoardIdentity& known, const BoardIdentity& now) {
    return {.title = Title,
            .text = "The board that answers is not the one that this set-up was last sent to or fetched from.\n\n"
                    "Then:  " +
                    known.Text() + "\nNow:  " + now.Text() + "\n\nDo You Wish to Continue?",
            .icon = MessageIcon::Exclamation,
            .buttons = MessageButtons::YesNo,
            .destroys = true};
}

MessageBox NoCopyQuestion(const std::string& problem) {
    return {.title = Title,
            .text = "No copy of the board's values was kept, which the download overwrites:\n" + problem +
                    "\n\nDo You Wish to Continue without a copy?",
            .icon = MessageIcon::Exclamation,
            .buttons = MessageButtons::YesNo,
            .destroys = true};
}

} // namespace

bool frmMDIMain::MayDownload() {
    if (!CanStartTransfer()) return true; // Nothing will be written; the transfer itself says so.
    const bool backUp = mnuToolsBackUp->isChecked();
    if (!backUp && !KnownBoard()) return true;
    const int opened = link_.Opened();
    std::optional<BoardIdentity> board;
    if (!Identify(board)) return false;
    if (link_.LinkFailed()) return true;
    return AcceptsBoard(board) && (!backUp || BackUpBoard(board, opened));
}

bool frmMDIMain::MaySendValues() {
    const std::pair asked{link_.Opened(), program_.document.Generation};
    if (!CanStartTransfer() || !KnownBoard() || boardAsked_ == asked) return true;
    std::optional<BoardIdentity> board;
    if (!Identify(board)) return false;
    if (!link_.LinkFailed() && !AcceptsBoard(board)) return false;
    boardAsked_ = asked;
    return true;
}

bool frmMDIMain::Identify(std::optional<BoardIdentity>& board) {
    frmIdentifying window(link_, turns_, this);
    {
        const SetWhile identifying(transferring_, true);
        board = window.RunModal();
    }
    if (window.Cancelled()) FollowLink();
    return !window.Cancelled();
}

bool frmMDIMain::AcceptsBoard(const std::optional<BoardIdentity>& board) {
    const auto known = KnownBoard();
    if (!known || known == board) return true;
    if (!board) {
        Notice(QStringLiteral("Which board this is could not be read clearly"), LongNotice);
        return true;
    }
    return dialogs_.Show(OtherBoardQuestion(*known, *board)) == MessageAnswer::Yes;
}

bool frmMDIMain::BackUpBoard(const std::optional<BoardIdentity>& board, int opened) {
    const Configuration& record = program_.document.CurrentConfiguration;
    frmComparing window(record, EveryIndex(), link_, turns_, this);
    window.Called("Backing Up Data, Please Standby...");
    const BoardComparison& values = [&]() -> const BoardComparison& {
        const SetWhile reading(transferring_, true);
        return window.RunModal();
    }();
    if (values.Cancelled() && !values.Complete()) {
        FollowLink();
        return false;
    }
    if (link_.LinkFailed()) return true; // As above.
    const std::string problem = KeepBackup(values, board ? board->Text() : "", opened);
    return problem.empty() || dialogs_.Show(NoCopyQuestion(problem)) == MessageAnswer::Yes;
}

std::string frmMDIMain::KeepBackup(const BoardComparison& values, const std::string& board, int opened) {
    if (values.Reconnected() || link_.Opened() != opened)
        return "The link was taken up again in between: the values may be of two boards.";
    if (!values.Complete()) return "Not all values were read.";
    if (!values.Unread().empty()) {
        const std::size_t count = values.Unread().size();
        return std::to_string(count) + (count == 1 ? " value was" : " values were") + " not read clearly.";
    }
    const Document& document = program_.document;
    Configuration held = values.OnBoard();
    held.CreatorVersion = document.ProgramVersion();
    held.SavedDate = OleDate::FromLocal(clock_.LocalNow());
    const std::filesystem::path named = PathFromUtf8(document.IsUnnamed ? "unnamed" : document.FileTitle);
    try {
        const std::filesystem::path file = backups_.Keep(held, Utf8FromPath(named.stem()), board);
        Notice(QStringLiteral("Backup: ") + QString::fromStdString(Utf8FromPath(file.filename())), LongNotice);
    } catch (const RuntimeError& error) {
        return error.Description();
    }
    return {};
}

std::filesystem::path frmMDIMain::BoardFile() const {
    const Document& document = program_.document;
    // A document that was taken up again has its file's name, but was not opened from it.
    return document.Recovered && !document.IsUnnamed ? document.FilePath : document.OwnFile;
}

std::optional<BoardIdentity> frmMDIMain::KnownBoard() const {
    if (const std::filesystem::path file = BoardFile(); !file.empty()) return knownBoards_.Of(file);
    return lastBoardOf_ == program_.document.Generation ? lastBoard_ : std::nullopt;
}

void frmMDIMain::NoteBoard(const std::optional<BoardIdentity>& board) {
    lastBoard_ = board;
    lastBoardOf_ = program_.document.Generation;
    RememberBoard();
}

void frmMDIMain::RememberBoard() {
    const std::filesystem::path file = BoardFile();
    if (!lastBoard_ || lastBoardOf_ != program_.document.Generation || file.empty()) return;
    if (knownBoards_.Of(file) == lastBoard_) return;
    try {
        knownBoards_.Note(file, *lastBoard_);
    } catch (const RuntimeError& error) {
        Notice(QStringLiteral("Which board it was is not remembered. ") + QString::fromStdString(error.Description()));
        lastBoard_.reset();
    }
}

void frmMDIMain::ToolsBackups() {
    if (!editor_->FinishEntry()) return;
    frmBackups window(backups_.Find(), backups_.Folder(), program_.document.CurrentConfiguration, this);
    if (window.exec() != QDialog::Accepted) return;
    std::optional<Backup> chosen = window.Chosen();
    if (!chosen || !mnuFileOpen->isEnabled()) return;
    editor_->FinishFill();
    const FileCommands::Outcome outcome = files_.OpenCopy(std::move(chosen->record));
    AfterFileCommand();
    if (outcome == FileCommands::Outcome::Done) {
        // It was read while its values were.
        NoteBoard(BoardIdentity::FromText(chosen->board));
        Notice(QStringLiteral("Opened as a new set-up; the backup stays as it is"), LongNotice);
    }
}

} // namespace vantrel
