// The main frame in front of the tests' person: keys and clicks go in, the simulated board is on the port, and boxes,
// entry boxes and file dialogs are answered from lists.
#pragma once

#include "app/frmMDIMain.h"
#include "app/frmProcessing.h"
#include "document/SetupFile.h"
#include "simulator/SimulatedPort.h"
#include "tests/support/SentBytes.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/VirtualClock.h"
#include "tests/windows/BoxAnswerer.h"

#include <QFileDialog>
#include <QLineEdit>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

namespace vantrel {

inline constexpr auto Yes = QMessageBox::Yes;
inline constexpr auto No = QMessageBox::No;
using Answers = std::deque<QMessageBox::StandardButton>;

/// Types into dialogs that have an entry box, file dialogs included, and ends with Enter; without an entry left, with
/// Escape.
class EntryTyper {
public:
    EntryTyper() {
        timer_.callOnTimeout([this] { Look(); });
        timer_.start(0);
    }

    std::deque<std::string> entries;
    /// Title and initial text of every dialog, "title|text".
    std::vector<std::string> shown;

private:
    void Look() {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        auto* entry = dialog ? dialog->findChild<QLineEdit*>() : nullptr;
        // The program's own windows are the tests' business.
        if (!entry || typing_ || dialog->objectName().startsWith(QLatin1String("frm"))) return;
        // What a file dialog takes for the chosen file depends on where the focus is.
        dialog->activateWindow();
        if (!dialog->isActiveWindow()) return;
        if (qobject_cast<QFileDialog*>(dialog)) entry = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        typing_ = true;
        shown.push_back((dialog->windowTitle() + "|" + entry->text()).toStdString());
        Type(*dialog, *entry);
        typing_ = false;
    }
    void Type(QDialog& dialog, QLineEdit& entry) {
        if (entries.empty()) {
            QTest::keyClick(&dialog, Qt::Key_Escape);
            return;
        }
        const std::string text = entries.front();
        entries.pop_front();
        entry.setFocus();
        entry.selectAll();
        QTest::keyClick(&entry, Qt::Key_Delete);
        QTest::keyClicks(&entry, QString::fromStdString(text));
        QTest::keyClick(&entry, Qt::Key_Return);
    }

    QTimer timer_;
    bool typing_ = false;
};

/// Does something once, as soon as a modal window of that kind is up.
template <typename Window> class WhenModal {
public:
    explicit WhenModal(std::function<void(Window&)> act) : act_(std::move(act)) {
        timer_.callOnTimeout([this] {
            auto* window = dynamic_cast<Window*>(QApplication::activeModalWidget());
            if (window && window->isActiveWindow() && act_) std::exchange(act_, nullptr)(*window);
        });
        timer_.start(0);
    }
    [[nodiscard]] bool Happened() const { return !act_; }

private:
    std::function<void(Window&)> act_;
    QTimer timer_;
};

class FrameTest : public testing::Test, private TrafficLog {
protected:
    explicit FrameTest(LinePacing pacing = LinePacing::None) : port(board, clock, pacing) {
        std::filesystem::create_directory(folder / "Support");
        Start();
    }

    /// The frame says goodbye to the board when it goes, after whatever a test does with that.
    void TearDown() override { line.onByte = nullptr; }

    void Start() {
        frame.reset();
        port.Close();
        port.MendLine();
        board = SimulatedBoard();
        duringTransfer = nullptr;
        user.whileShown = nullptr;
        frame = std::make_unique<frmMDIMain>(ProgramFolder(folder.Path(), folder / "user"), clock, port);
        frame->Link().SetTrafficLog(this);
        frame->Boxes().SetQuietTime(std::chrono::milliseconds(0));
        frame->show();
        Forget();
    }
    void StartOnline() { Start(), GoOnline(); }
    /// From now on these answers and entries, and nothing seen yet.
    void Answer(Answers answers, std::deque<std::string> entries = {}) {
        Forget();
        user.answers = std::move(answers);
        typer.entries = std::move(entries);
    }
    void Forget() {
        user.shown.clear();
        user.answers.clear();
        typer.shown.clear();
        typer.entries.clear();
    }
    /// Chooses an entry by the access keys of menu and entry.
    void Menu(Qt::Key menu, Qt::Key entry) {
        Activate();
        // By way of the window, which passes keys on to the menu that is open.
        QTest::keyClick(frame->windowHandle(), menu, Qt::AltModifier);
        ASSERT_TRUE(QApplication::activePopupWidget()) << "no menu opens";
        QTest::keyClick(frame->windowHandle(), entry);
        Settle();
    }
    /// The same with these answers and entries, and nothing seen before.
    void Menu(Qt::Key menu, Qt::Key entry, Answers answers, std::deque<std::string> entries = {}) {
        Answer(std::move(answers), std::move(entries));
        Menu(menu, entry);
    }
    /// Acts once in the window of that kind that an entry opens, and closes it where that is left to be done.
    template <typename Window> void Within(Qt::Key menu, Qt::Key entry, const std::function<void(Window&)>& act) {
        const WhenModal<Window> opened([&](Window& window) {
            act(window);
            if (window.isVisible()) window.reject();
        });
        Menu(menu, entry);
        EXPECT_TRUE(opened.Happened());
    }
    /// With these answers; how many boxes came up.
    std::size_t Download(Answers answers) {
        Menu(Qt::Key_F, Qt::Key_D, std::move(answers));
        return user.shown.size();
    }
    void Ctrl(Qt::Key key) {
        Activate();
        QTest::keyClick(frame->windowHandle(), key, Qt::ControlModifier);
        Settle();
    }
    /// Until nobody waits for the board or for a turn.
    void Settle() {
        for (int round = 0; round < 3 || frame->Link().Busy() || frame->Turns().Waiting() > 0; ++round) {
            ASSERT_LT(round, 100'000) << "comes to no end";
            QCoreApplication::processEvents();
        }
    }
    /// As a window manager does when a dialog has gone.
    void Activate() {
        frame->activateWindow();
        QCoreApplication::processEvents();
    }
    void ClickButton(QWidget* button) {
        QTest::mouseClick(button, Qt::LeftButton);
        Settle();
    }
    void ClickButton(QAction* entry) { ClickButton(frame->Toolbar1->widgetForAction(entry)); }
    void ClickPanel(std::size_t index) { QTest::mouseClick(frame->sbrMainPanels.at(index), Qt::LeftButton); }
    void GoOnline() {
        Menu(Qt::Key_V, Qt::Key_N);
        ASSERT_EQ(Mode(), "ONLINE");
    }
    /// By the status stack dialog, so that the document counts as changed.
    void ChangeDocument(const std::string& address) {
        if (!frame->mnuEditStackAdd->isEnabled()) Menu(Qt::Key_E, Qt::Key_O);
        Menu(Qt::Key_E, Qt::Key_A, {}, {address});
        Forget();
    }
    /// A set-up file with that stack address.
    std::string Stored(const std::string& name, std::int32_t address) {
        Configuration record = DefaultRecord(ProgramVersion(), OleDate::FromLocal(clock.LocalNow()));
        record.SetValue(StatusStackIndex, address);
        const auto bytes = SetupFileBytes(record);
        WriteText(folder / name, std::string(bytes.begin(), bytes.end()));
        return (folder / name).string();
    }
    void Tick() {
        QMetaObject::invokeMethod(&frame->tmrBackgroungUpdate, "timeout");
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    void TickAndSettle() { Tick(), Settle(); }

    /// The window of that kind that is open beside the frame.
    template <typename Window> Window& Opened() {
        Window* found = nullptr;
        for (QDialog* dialog : frame->findChildren<QDialog*>())
            found = found ? found : dynamic_cast<Window*>(dialog);
        EXPECT_TRUE(found && found->isVisible());
        return *found;
    }
    [[nodiscard]] Document& Doc() { return frame->State().document; }
    [[nodiscard]] std::int32_t Value(std::size_t index) { return Doc().CurrentConfiguration.Value(index); }
    [[nodiscard]] std::string Caption() const { return frame->windowTitle().toStdString(); }
    [[nodiscard]] std::string DateShown() const { return frame->lblDocumentDate->text().toStdString(); }
    /// As the panel and the elements that go with it tell; they have to agree.
    [[nodiscard]] std::string Mode() const {
        const bool online = frame->mnuViewOnline->isChecked();
        EXPECT_NE(frame->mnuViewOffline->isChecked(), online);
        EXPECT_EQ(frame->mnuViewCommStatus->isEnabled(), online);
        EXPECT_EQ(frame->Toolbar1->widgetForAction(frame->mnuViewCommStatus)->isEnabled(), online);
        EXPECT_EQ(frame->mnuEditStackAdd->isEnabled(), online || frame->mnuEditOfflineEditing->isChecked());
        EXPECT_EQ(frame->Link().OnlineMode(), online);
        EXPECT_EQ(port.IsOpen(), online);
        const std::string panel = frame->sbrMainPanels[1]->text().toStdString();
        EXPECT_EQ(panel, online ? "ONLINE" : "OFFLINE");
        return panel;
    }
    [[nodiscard]] std::uint16_t Word(std::uint16_t address) const { return board.PeekWord(address, clock.Now()); }
    [[nodiscard]] int Flag() const { return board.Peek(105, clock.Now()); }

    TemporaryFolder folder;
    VirtualClock clock;
    BoxAnswerer user;
    EntryTyper typer;
    SimulatedBoard board;
    SimulatedPort port;
    /// Called once, when so many values have been transferred.
    std::function<void(frmProcessing&)> duringTransfer;
    int atValue = 100;
    SentBytes line;
    std::unique_ptr<frmMDIMain> frame;

private:
    void Exchanged(MonotonicTime at, std::uint8_t sent, std::optional<std::uint8_t> answer) override {
        line.Exchanged(at, sent, answer);
        auto* window = dynamic_cast<frmProcessing*>(QApplication::activeModalWidget());
        if (!window || window->prgProcessing->value() != atValue || !duringTransfer) return;
        std::exchange(duringTransfer, nullptr)(*window);
    }
    void Surplus(MonotonicTime /*at*/, std::uint8_t /*byte*/) override {}
};

} // namespace vantrel
