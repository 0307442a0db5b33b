#include "tests/monkey/Stage.h"

#include "document/SetupFile.h"
#include "document/frmMain.h"
#include "text/PathText.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

namespace vantrel::monkey {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

Stage::Stage(const fs::path& folder, const fs::path& data, Chance& chance) : folder_(folder), chance_(chance) {
    fs::create_directories(folder_ / "documents");
    fs::copy(data, folder_ / "program", fs::copy_options::recursive);
    for (const auto& entry : fs::directory_iterator(data / "samples"))
        fs::copy(entry.path(), folder_ / "documents" / entry.path().filename());
    fs::create_directory(folder_ / "documents" / "folder.sdt");
    Start();
}

Stage::~Stage() = default;

void Stage::Start() {
    frame.reset();
    port.Close();
    frame = std::make_unique<frmMDIMain>(ProgramFolder(folder_ / "program", folder_ / "user"), clock, port);
    frame->Boxes().SetQuietTime(0ms);
    frame->Boxes().SetFilePicker(
        [this](const FileQuestion& question, bool saving) { return PickFile(question, saving); });
    // Time passes as the monkey says.
    frame->tmrBackgroungUpdate.setInterval(std::chrono::hours(1));
    Editor().tmrStatusTab.setInterval(std::chrono::hours(1));
    frame->show();
    frame->activateWindow();
    const fs::path file = chance_.OneIn(2) ? AnyFile() : fs::path();
    QTimer::singleShot(0, frame.get(), [this, file] { frame->OpenAtStart(file); });
}

frmMain& Stage::Editor() const {
    return dynamic_cast<frmMain&>(*frame->findChild<QWidget*>(QStringLiteral("frmMain")));
}

void Stage::PassTime() {
    clock.Advance(chance_.OneIn(20) ? std::chrono::minutes(chance_.Below(90)) : 10ms * chance_.Below(200));
    std::vector<QPointer<QTimer>> timers{&frame->tmrBackgroungUpdate, &Editor().tmrStatusTab};
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        for (QTimer* timer : window->findChildren<QTimer*>())
            timers.emplace_back(timer);
    }
    for (const auto& timer : timers) {
        if (timer && timer->isActive()) QMetaObject::invokeMethod(timer, "timeout", Qt::QueuedConnection);
    }
}

std::string Stage::TroubleLine() {
    switch (chance_.Below(8)) {
    case 0:
        port.CutLine();
        return "the line is cut";
    case 1:
    case 2:
    case 3:
        HealLine();
        return "all is mended";
    default:
        break;
    }
    const FaultName& name = chance_.Of(FaultNames());
    const SimulatedFault fault{.kind = name.kind,
                               .firstTimeOnly = !chance_.OneIn(4),
                               .afterBytes = board.ReceivedBytes() + static_cast<std::size_t>(chance_.Below(60)),
                               .lateBy = 10ms * chance_.Below(400),
                               .flips = static_cast<std::uint8_t>(1 + chance_.Below(255))};
    board.AddFault(fault);
    return std::string(name.name) + (fault.firstTimeOnly ? " once" : " from now on");
}

void Stage::HealLine() {
    board.ClearFaults();
    port.MendLine();
}

fs::path Stage::AnyFile() {
    constexpr std::array names{"small.sdt",  "full.sdt",    "hexadecimal.sdt", "bottling-line.vtl",
                               "new.sdt",    "new",         "a.json",          "table.csv",
                               "folder.sdt", "missing.sdt", "a.pdf",           "ä&<b>.sdt"};
    return folder_ / "documents" / PathFromUtf8(chance_.Of(names));
}

std::string Stage::TroubleFiles() {
    const fs::path file = AnyFile();
    std::error_code error;
    if (fs::is_directory(file, error)) return {};
    switch (chance_.Below(3)) {
    case 0:
        fs::remove(file, error);
        return "removed " + file.filename().string();
    case 1:
        if (fs::file_size(file, error) > 0 && !error) fs::resize_file(file, fs::file_size(file) / 2, error);
        return "cut " + file.filename().string();
    default:
        fs::copy_file(folder_ / "program" / "samples" / "full.sdt", file, fs::copy_options::overwrite_existing, error);
        return "replaced " + file.filename().string();
    }
}

/// A question like the real one, which the monkey meets as any other window; the name is taken in one folder alone.
std::optional<FileChoice> Stage::PickFile(const FileQuestion& question, bool saving) {
    QDialog window(frame.get());
    window.setObjectName(QStringLiteral("PickFile"));
    window.setWindowTitle(saving ? QStringLiteral("Save As") : QStringLiteral("Open"));
    QLineEdit entry(QString::fromStdString(Utf8FromPath(AnyFile().filename())));
    QDialogButtonBox buttons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QVBoxLayout layout(&window);
    layout.addWidget(&entry);
    layout.addWidget(&buttons);
    QObject::connect(&buttons, &QDialogButtonBox::accepted, &window, &QDialog::accept);
    QObject::connect(&buttons, &QDialogButtonBox::rejected, &window, &QDialog::reject);
    if (window.exec() != QDialog::Accepted) return std::nullopt;
    const fs::path name = PathFromUtf8(entry.text().toStdString()).filename();
    if (name.empty() || name == "." || name == "..") return std::nullopt;
    const fs::path path = folder_ / "documents" / name;
    std::error_code error;
    if (!saving && !fs::exists(path, error) && chance_.OneIn(2)) return std::nullopt;
    return FileChoice{path,
                      static_cast<std::size_t>(chance_.Below(int(std::max<std::size_t>(question.filters.size(), 1))))};
}

bool Stage::Resting() const {
    return !frame->Link().Busy() && frame->Turns().Waiting() == 0 && !frame->Boxes().BoxUp() &&
           !QApplication::activeModalWidget();
}

std::string Stage::LookFaults() const {
    const bool online = frame->Link().OnlineMode();
    const bool shown = frame->sbrMainPanels[1]->text() == QLatin1String("ONLINE");
    std::string wrong;
    const auto hold = [&](bool agrees, const char* what) { wrong += agrees ? "" : std::string(what) + "\n"; };
    hold(shown == online, "the panel does not agree with the link");
    hold(frame->mnuViewOnline->isChecked() == online, "the menu does not agree with the link");
    hold(frame->mnuViewOffline->isChecked() != online, "OFFLINE in the menu does not agree with the link");
    hold(frame->mnuViewCommStatus->isEnabled() == online, "the view's entry does not agree with the link");
    hold(port.IsOpen() == online, "the port does not agree with the link");
    hold(!(online && frame->Link().LinkFailed()), "ONLINE with a failed link");
    return wrong;
}

std::string Stage::UndoFaults(const std::function<bool()>& pump) {
    const auto record = [this] { return SetupFileBytes(frame->State().document.CurrentConfiguration); };
    QAction* undo = frame->findChild<QAction*>(QStringLiteral("mnuEditUndo"));
    QAction* redo = frame->findChild<QAction*>(QStringLiteral("mnuEditRedo"));
    if (!undo || !redo) return "no entry for undo\n";
    // An entry that is refused would stand in the way.
    frmMain& editor = Editor();
    if (editor.EntryOpen()) {
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(&editor.txtEntry, &escape);
    }
    const auto before = record();
    int steps = 0;
    for (; undo->isEnabled(); ++steps) {
        if (steps > 2000) return "undo does not come to an end\n";
        undo->trigger();
        if (!pump()) return "undo comes to no rest\n";
    }
    for (int i = 0; i < steps; ++i) {
        if (!redo->isEnabled())
            return "only " + std::to_string(i) + " of " + std::to_string(steps) + " steps to redo\n";
        redo->trigger();
        if (!pump()) return "redo comes to no rest\n";
    }
    return record() == before ? "" : "undo and redo of " + std::to_string(steps) + " steps leave another record\n";
}

std::string Stage::DisplayFaults(const std::function<bool()>& pump) {
    frmMain& editor = Editor();
    if (editor.CurrentTab == EditorTab::CommStatus) return {};
    const QtFormatGrid& grid = editor.fgComm.at(static_cast<std::size_t>(editor.CurrentTab) - 1);
    const auto texts = [&grid] {
        QStringList all;
        for (int row = 1; row < grid.RowCount(); ++row) {
            for (int column = 0; column < grid.ColumnCount(); ++column)
                all << grid.Text(row, column);
        }
        return all;
    };
    const QStringList before = texts();
    frame->State().document.ReloadDisplay = true;
    editor.RefillIfAsked();
    if (!pump()) return "the display comes to no rest\n";
    const QStringList after = texts();
    for (qsizetype i = 0; i < after.size(); ++i) {
        if (before[i] != after[i])
            return "row " + std::to_string(1 + i / grid.ColumnCount()) + " shows \"" + before[i].toStdString() +
                   "\", the record has \"" + after[i].toStdString() + "\"\n";
    }
    return {};
}

std::string Stage::Faults(const std::function<bool()>& pump) {
    if (!pump()) return "the last action comes to no rest\n";
    // What still waits on the line may strike in one tick; whatever became of the link, the next one shows it.
    for (int tick = 0; tick < 2; ++tick) {
        QMetaObject::invokeMethod(&frame->tmrBackgroungUpdate, "timeout");
        if (!pump()) return "a tick comes to no rest\n";
        HealLine();
        // A close that was put off has come with it.
        if (!frame->isVisible()) Start();
        if (!pump()) return "the next start comes to no rest\n";
    }
    std::string wrong = LookFaults();
    clock.Advance(2s);
    frame->mnuViewOffline->trigger();
    if (!pump()) return wrong + "OFFLINE comes to no rest\n";
    wrong += LookFaults();
    if (frame->Link().OnlineMode()) wrong += "does not go OFFLINE\n";
    wrong += UndoFaults(pump);
    wrong += DisplayFaults(pump);
    frame->mnuViewOnline->trigger();
    if (!pump()) return wrong + "ONLINE comes to no rest\n";
    wrong += LookFaults();
    if (!frame->Link().OnlineMode()) wrong += "does not go ONLINE with a healthy board\n";
    frame->mnuViewOffline->trigger();
    if (!pump()) return wrong + "OFFLINE comes to no rest again\n";
    return wrong + LookFaults();
}

} // namespace vantrel::monkey
