// The main frame's tools: the check of the set-up, comparisons with the board and with files, and what is done with a
// difference.
#include "app/frmMDIMain.h"

#include "app/frmCompare.h"
#include "document/FileQuestions.h"
#include "document/SetupCheck.h"
#include "document/SetupFile.h"
#include "document/frmCheck.h"
#include "document/frmMain.h"
#include "link/frmCheckConnection.h"
#include "platform/NetworkAddress.h"
#include "platform/QtPrinter.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "platform/SerialDevices.h"
#include "platform/SetWhile.h"
#include "report/ComparisonPages.h"
#include "report/Report.h"
#include "text/PathText.h"
#include "views/UserProgram.h"

#include <QScreen>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace vantrel {

namespace {

FileFilter SetupFilter() { return {.name = "Setup Files(*.sdt)", .pattern = "*.sdt"}; }

MessageBox Failure(const std::string& text) {
    return {.title = ProgramTitle, .text = text, .icon = MessageIcon::Exclamation, .buttons = MessageButtons::Ok};
}

/// Of the comparison that has been made of `wanted` values.
std::string RemarkOn(const BoardComparison& comparison, std::size_t wanted) {
    if (comparison.Reconnected()) return "The link was taken up again in between: the values may be of two boards.";
    if (comparison.Complete()) return {};
    return "Only " + std::to_string(comparison.Compared()) + " of " + std::to_string(wanted) + " values were compared.";
}

std::span<const std::uint8_t> BytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}; // NOLINT(*-reinterpret-cast)
}

/// Moves a window that lies over a place on the screen to where there is more room, above or below it, and makes it as
/// low as that room. One that cannot be as low stays.
void KeepClear(QWidget& window, const QRect& place) {
    const QRect room = window.screen()->availableGeometry();
    const QRect taken = window.frameGeometry();
    if (!window.isVisible() || !taken.intersects(place)) return;
    const int above = place.top() - room.top();
    const int below = room.bottom() - place.bottom();
    const int border = taken.height() - window.height();
    const int height = std::min(window.height(), std::max(above, below) - border);
    if (height < window.minimumSizeHint().height()) return;
    window.resize(window.width(), height);
    window.move(taken.left(), below >= above ? place.bottom() + 1 : place.top() - height - border);
}

} // namespace

void frmMDIMain::BuildTools() {
    mnuEdit->addSeparator();
    for (QAction* command : editor_->Commands()) {
        if (command) {
            mnuEdit->addAction(command);
        } else {
            mnuEdit->addSeparator();
        }
    }
    editor_->SetOnSendBlock([this] { return MaySendValues(); },
                            [this](const std::vector<std::size_t>& indices) { SendValues(indices); });
}

void frmMDIMain::GoTo(std::size_t sequence, std::optional<std::size_t> index) {
    if (index != StatusStackIndex) {
        editor_->GoTo(sequence, index);
        const QtFormatGrid& grid = editor_->fgComm.at(static_cast<std::size_t>(editor_->CurrentTab) - 1);
        const QRect cell = grid.CellRect(grid.CurrentRow(), grid.CurrentColumn());
        const QRect row(grid.mapToGlobal(QPoint(0, cell.top())), QSize(grid.width(), cell.height()));
        for (QWidget* window : std::initializer_list<QWidget*>{check_, compare_}) {
            if (window) KeepClear(*window, row);
        }
    } else if (mnuEditStackAdd->isEnabled()) {
        EditStackAdd();
    } else {
        Notice(QStringLiteral("The status stack address: Enable Offline Editing first, in the menu Edit"), LongNotice);
    }
}

void frmMDIMain::ToolsCheck() {
    if (!editor_->FinishEntry()) return;
    if (!check_) {
        check_ = new frmCheck(
            program_.document,
            [this](std::size_t sequence, std::optional<std::size_t> index) { GoTo(sequence, index); }, this);
        check_->show();
    }
    check_->raise();
    check_->activateWindow();
}

void frmMDIMain::ToolsCheckConnection() {
    if (!editor_->FinishEntry()) return;
    FindPorts();
    std::string name = fixedDevice_;
    try {
        const int number = link_.SettingsToCome().number;
        if (name.empty()) {
            name = SerialDeviceOf(number, program_.folder.SupportFolder());
            if (!MeantAsNetworkAddress(name)) name = "COM" + std::to_string(number) + " (" + name + ")";
        }
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, "Check Connection", error);
        return;
    }
    frmCheckConnection window(link_, port_, SubjectOfCheck(name, program_.document.FilePath, program_.folder), clock_,
                              turns_, this);
    window.exec();
}

bool frmMDIMain::WantsToSeeErrors() {
    std::string errors;
    std::size_t count = 0;
    for (const Finding& finding : CheckSetup(program_.document.CurrentConfiguration)) {
        if (finding.severity != Severity::Error) continue;
        errors += finding.Place() + ": " + finding.text + "\n";
        ++count;
    }
    if (count == 0 || std::exchange(errorsTold_, errors) == errors) return false;
    const std::string found = count == 1 ? "1 error" : std::to_string(count) + " errors";
    const MessageAnswer answer =
        dialogs_.Show({.title = ProgramTitle,
                       .text = "The check of the set-up found " + found +
                               ", overlapping blocks for instance.\n\nDo You Wish to Continue? "
                               "No shows the list instead.",
                       .icon = MessageIcon::Exclamation,
                       .buttons = MessageButtons::YesNo});
    if (answer != MessageAnswer::Yes) ToolsCheck();
    return answer != MessageAnswer::Yes;
}

frmCompare& frmMDIMain::OpenComparison(bool withBoard, std::function<void()> repeat) {
    if (compare_) compare_->close();
    frmCompare::Commands commands{
        .repeat = std::move(repeat),
        .send = nullptr,
        .take = [this](const std::vector<Difference>& differences) { TakeDifferences(differences); },
        .saveBoard = nullptr,
        .print = [this] { PrintComparison(); },
        .saveList = [this] { SaveComparison(); },
        .goTo = [this](std::size_t sequence, std::optional<std::size_t> index) { GoTo(sequence, index); },
    };
    if (withBoard) {
        commands.send = [this](const std::vector<std::size_t>& indices) {
            SendValues(indices);
            if (compare_) compare_->activateWindow();
        };
        commands.saveBoard = [this] { SaveBoardValues(); };
    }
    compare_ = new frmCompare(std::move(commands), this);
    return *compare_;
}

void frmMDIMain::ToolsCompareBoard() {
    if (!editor_->FinishEntry()) return;
    RunOnline([this] {
        if (!CanStartTransfer()) return;
        OpenComparison(true, [this] { RunOnline([this] { CompareWithBoard(); }); });
        CompareWithBoard();
    });
}

const BoardComparison& frmMDIMain::RunComparing(frmComparing& window) {
    const BoardComparison& comparison = [&]() -> const BoardComparison& {
        const SetWhile running(transferring_, true);
        return window.RunModal();
    }();
    FollowLink();
    return comparison;
}

void frmMDIMain::CompareWithBoard() {
    if (!editor_->FinishEntry() || !CanStartTransfer() || transferring_) return;
    const Configuration here = program_.document.CurrentConfiguration;
    ComparisonReport report{program_.document.BracketName, "the board", GeneralDate(clock_.LocalNow()), {}, {}};
    const int opened = link_.Opened();
    frmComparing window(here, EveryIndex(), link_, turns_, this);
    window.Identify();
    const BoardComparison& comparison = RunComparing(window);
    if (window.Board()) report.there += ", " + window.Board()->Text();
    report.remark = RemarkOn(comparison, ValueCount);
    report.differences = DifferencesFrom(here, comparison);
    if (!compare_) return;
    comparedHere_ = here;
    comparedThere_ = comparison.OnBoard();
    comparedLink_ = opened;
    compare_->Show(std::move(report));
    compare_->SetOnline(link_.OnlineMode());
    compare_->show();
    compare_->activateWindow();
}

void frmMDIMain::ToolsCompareFile() {
    if (!editor_->FinishEntry()) return;
    const auto choice = dialogs_.OpenFile({.filters = {SetupFilter()}, .initial = {}, .title = "Compare With File"});
    if (choice) CompareWithFile(choice->path);
}

void frmMDIMain::CompareWithFile(const std::filesystem::path& file) {
    const Configuration here = program_.document.CurrentConfiguration;
    Configuration there;
    try {
        there = ParseSetupFile(ReadWholeFile(file));
    } catch (const RuntimeError& error) {
        dialogs_.Show(Failure(QuotedPath(file) + ": " + error.Description()));
        return;
    }
    frmCompare& window = OpenComparison(false, [this, file] {
        if (editor_->FinishEntry()) CompareWithFile(file);
    });
    comparedHere_ = here;
    comparedThere_ = there;
    comparedLink_.reset();
    window.Show({program_.document.BracketName,
                 Utf8FromPath(file),
                 GeneralDate(clock_.LocalNow()),
                 {},
                 DifferencesBetween(here, there)});
    window.show();
}

void frmMDIMain::FollowComparison() {
    if (!compare_) return;
    compare_->SetOnline(link_.OnlineMode());
    if (compare_->Old()) return;
    if (!EditsBetween(comparedHere_, program_.document.CurrentConfiguration).empty()) {
        compare_->MarkOld("The set-up has changed since.");
    } else if (comparedLink_ && *comparedLink_ != link_.Opened()) {
        compare_->MarkOld("The link was opened anew since.");
    }
}

void frmMDIMain::SendValues(const std::vector<std::size_t>& indices) {
    if (transferring_ || !MaySendValues()) return;
    if (!CanStartTransfer()) {
        Warn("The board does not answer any more: nothing was sent.");
        return;
    }
    if (IsReliable(TransferInWindow(TransferMode::DownloadData, indices))) ReadBack(indices);
    program_.refreshTargetStatus = true;
}

void frmMDIMain::ReadBack(const std::vector<std::size_t>& indices) {
    const Configuration& record = program_.document.CurrentConfiguration;
    frmComparing window(record, indices, link_, turns_, this);
    const BoardComparison& comparison = RunComparing(window);
    const std::vector<Difference> left = DifferencesFrom(record, comparison);
    const std::string remark = RemarkOn(comparison, indices.size());
    if (!left.empty() || !remark.empty()) {
        Warn("The board confirmed the values, but reading them back does not show all of them.\n" + remark);
    }
    if (!compare_ || !remark.empty()) return;
    // What the board holds now leaves the list; what it does not is listed as it was read.
    ComparisonReport report = compare_->Report();
    std::erase_if(report.differences,
                  [&](const Difference& one) { return one.index && std::ranges::binary_search(indices, *one.index); });
    report.differences.insert(report.differences.end(), left.begin(), left.end());
    PutInOrder(report.differences);
    for (const std::size_t index : indices)
        comparedThere_.SetValue(index, comparison.OnBoard().Value(index));
    compare_->Show(std::move(report));
}

void frmMDIMain::TakeDifferences(const std::vector<Difference>& differences) {
    const Configuration& record = program_.document.CurrentConfiguration;
    Configuration after = record;
    for (const Difference& difference : differences) {
        if (difference.doubtful) continue;
        if (difference.index) {
            after.SetValue(*difference.index, comparedThere_.Value(*difference.index));
            after.SetAddressType(*difference.index, comparedThere_.AddressType(*difference.index));
        } else {
            after.SetNodeDescription(difference.sequence, comparedThere_.NodeDescription(difference.sequence));
        }
    }
    const EditStep step{"Taking Differences", EditsBetween(record, after)};
    // The board holds these values: there is nothing to send.
    const bool made = comparedLink_ ? editor_->Take(step) : editor_->Make(step);
    if (!made || !compare_) return;
    comparedHere_ = record;
    ComparisonReport report = compare_->Report();
    std::erase_if(report.differences, [&](const Difference& one) {
        return !one.doubtful && std::ranges::any_of(differences, [&](const Difference& taken) {
            return taken.index == one.index && taken.sequence == one.sequence;
        });
    });
    compare_->Show(std::move(report));
}

void frmMDIMain::SaveBoardValues() {
    const FileQuestion question{.filters = {SetupFilter()}, .initial = {}, .title = "Save Board's Values As"};
    const auto choice = dialogs_.SaveFile(question);
    if (!choice) return;
    // A document of its own, so that its name is treated as that of any other save.
    Document board(program_.document.ProgramVersion(), clock_);
    board.CurrentConfiguration = comparedThere_;
    board.NameFile(choice->path);
    const std::filesystem::path file = board.SaveTarget();
    if (!AcceptsTarget(board, choice->path, dialogs_)) return;
    try {
        board.Save([this](const std::string& text) { Warn(text); });
        Notice(QStringLiteral("Saved ") + QString::fromStdString(Utf8FromPath(file)), LongNotice);
    } catch (const RuntimeError& failure) {
        dialogs_.Show(Failure(QuotedPath(file) + ": " + failure.Description()));
    }
}

void frmMDIMain::SaveComparison() {
    const auto choice = dialogs_.SaveFile(
        {.filters = {{.name = "Text(*.txt)", .pattern = "*.txt"}, {.name = "Table(*.csv)", .pattern = "*.csv"}},
         .initial = {},
         .title = "Save List As"});
    if (!choice) return;
    std::filesystem::path file = choice->path;
    if (!file.has_extension()) file += choice->filter == 1 ? ".csv" : ".txt";
    const bool table = HasExtension(file, ".csv");
    const std::string text = table ? ComparisonCsv(compare_->Report()) : ComparisonText(compare_->Report());
    if (file != choice->path && !MayReplace(file, dialogs_)) return;
    try {
        ReplaceFile(file, BytesOf(text), OldTail::Drop, [this](const std::string& warning) { Warn(warning); });
    } catch (const RuntimeError& failure) {
        dialogs_.Show(Failure(QuotedPath(file) + ": " + failure.Description()));
    }
}

void frmMDIMain::PrintComparison() {
    try {
        const Target target = AskPrinter(ComparisonTitle);
        if (!target.printer) return;
        vantrel::PrintComparison(compare_->Report(), *target.printer,
                                 [this] { return GeneralDate(clock_.LocalNow()); });
        Notice(QString::fromStdString(target.done), LongNotice);
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, ReportProcedure, error);
    }
}

} // namespace vantrel
