// The progress window and the wait window as a user meets them: the real windows and boxes, the simulated board in
// process.
#include "app/frmProcessing.h"
#include "app/frmWaitDisplay.h"
#include "platform/RuntimeError.h"
#include "tests/windows/ViewFixture.h"

namespace vantrel {
namespace {

class ProcessingTest : public ViewFixture {
protected:
    ProcessingTest() {
        for (std::size_t i = 0; i < ValueCount; ++i)
            record.SetValue(i, static_cast<std::int32_t>(1000 + i));
        look.callOnTimeout([this] {
            const auto since = link.AwaitingSince();
            if (!whenSilent || !since || clock.Now() <= *since + RSComm::SilenceTime) return;
            givenUp = clock.Now();
            std::exchange(whenSilent, nullptr)();
        });
        look.start(0);
    }
    /// A transfer in its window; `act` is called once, before the turn of the value `at`.
    frmProcessing::Result Run(TransferMode mode, int at, std::function<void()> act) {
        board = SimulatedBoard();
        port.MendLine();
        line.onByte = nullptr;
        user.shown.clear();
        Online();
        window = std::make_unique<frmProcessing>(mode, record, link, dialogs, turns, nullptr);
        user.whileShown = [this] { EXPECT_TRUE(window->isVisible()); };
        onTurn = [&] {
            EXPECT_TRUE(window->isVisible()) << "begins only when it is seen";
            if (act && window->prgProcessing->value() == at) std::exchange(act, nullptr)();
        };
        const frmProcessing::Result result = window->RunModal();
        onTurn = nullptr;
        EXPECT_FALSE(window->isVisible() || link.Busy());
        EXPECT_EQ(turns.Waiting(), 0U);
        return result;
    }
    void Cancel() { QTest::mouseClick(window->cmdCancel, Qt::LeftButton); }
    void Escape() { QTest::keyClick(window.get(), Qt::Key_Escape); }
    /// Once the board, which falls silent now, has been so for a while.
    void WhenSilent(std::function<void()> way) {
        board.AddFault({.kind = FaultKind::NoAnswer});
        whenSilent = std::move(way);
    }
    /// The values from index 0 on that have reached the board.
    [[nodiscard]] std::size_t OnBoard() const {
        std::size_t count = 0;
        while (count < ValueCount &&
               board.PeekWord(static_cast<std::uint16_t>(std::stoi(DefaultTargetAddress(count).substr(1))),
                              clock.Now()) == 1000 + count)
            ++count;
        return count;
    }
    [[nodiscard]] static std::string Ending(const frmProcessing::Result& result) {
        return std::string(result.complete ? "complete " : "") + (result.cancelled ? "cancelled " : "") +
               (result.failed ? "failed " : "") + (result.flagLeft ? "flag " : "") +
               (result.reconnected ? "reconnected " : "");
    }

    QTimer look;
    std::function<void()> whenSilent;
    MonotonicTime givenUp{};
    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
    std::unique_ptr<frmProcessing> window;
};

TEST_F(ProcessingTest, EndsAsTheLineTheBoardAndItsUserWant) {
    using Case = std::tuple<const char*, int, std::function<void()>, std::string, std::size_t, Boxes>;
    const auto cut = [&] { port.CutLine(); };
    const auto retried = [&](std::function<void()> beside) {
        return [this, beside = std::move(beside)] {
            port.CutLine();
            user.answers = {QMessageBox::Retry};
            user.whileShown = [this, beside] {
                port.MendLine();
                beside();
                EXPECT_TRUE(link.Busy() && window->isVisible());
            };
        };
    };
    const auto atNextByte = [&](std::function<void()> act) {
        return [this, act = std::move(act)] { line.onByte = act; };
    };
    const auto cancelTwice = [&] {
        Cancel();
        Cancel();
    };
    const auto thenSilent = [&] {
        Cancel();
        WhenSilent([&] { Escape(); });
    };
    const auto fail = [] { throw RuntimeError(ErrorNumber::DiskFull, "Disk full"); };
    int errors = 0;
    onError = [&] { ++errors; };
    for (const auto& [what, at, act, ending, onBoard, boxes] : std::vector<Case>{
             {"nothing", 100, [&] { EXPECT_EQ(board.Peek(105, clock.Now()), 1); }, "complete ", ValueCount, {}},
             {"Cancel, twice", 100, cancelTwice, "cancelled ", 100, {}},
             {"Escape", 100, [&] { Escape(); }, "cancelled ", 100, {}},
             {"Escape before the first value", 0, [&] { Escape(); }, "cancelled ", 0, {}},
             {"the close button", 100, [&] { window->close(); }, "cancelled ", 100, {}},
             {"Cancel during the last value", 217, atNextByte([&] { Cancel(); }), "complete ", ValueCount, {}},
             {"no line", 0, cut, "failed flag ", 0, {CableWarning, NotComplete}},
             {"a cut line", 57, cut, "failed flag ", 57, {CableWarning, NotComplete}},
             {"reconnected", 57, retried([] {}), "complete reconnected ", ValueCount, {CableWarning}},
             {"given up behind the box", 57, retried([&] { window->close(); }), "cancelled flag ", 57, {CableWarning}},
             {"silent", 57, [&] { WhenSilent([&] { Cancel(); }); }, "cancelled flag ", 57, {}},
             {"silent at once", 0, [&] { WhenSilent([&] { Cancel(); }); }, "cancelled flag ", 0, {}},
             {"silent after Cancel", 100, thenSilent, "cancelled flag ", 100, {}},
             {"an unexpected error", 9, atNextByte(fail), "failed flag ", 9, {}}}) {
        SCOPED_TRACE(what);
        givenUp = MonotonicTime::max();
        EXPECT_EQ(Ending(Run(TransferMode::DownloadData, at, act)), ending);
        EXPECT_EQ(OnBoard(), onBoard);
        EXPECT_EQ(user.shown, boxes);
        EXPECT_TRUE(givenUp > clock.Now() || clock.Now() - givenUp <= std::chrono::milliseconds(100));
        EXPECT_EQ(window->prgProcessing->maximum(), 218);
        EXPECT_EQ(window->lblProcessing->text().toStdString(), "Downloading Data, Please Standby...");
    }
    EXPECT_EQ(errors, 1);
    EXPECT_EQ(Ending(Run(TransferMode::UploadData, 57, [&] { WhenSilent([&] { Cancel(); }); })), "cancelled ");
}

TEST_F(ProcessingTest, TheWaitWindowStaysForItsJobAndOnlyForIt) {
    int errors = 0;
    onError = [&] { ++errors; };
    for (const bool fails : {false, true}) {
        frmWaitDisplay* shown = nullptr;
        int steps = 0;
        const auto job = [&]() -> Task {
            for (; steps < 3; ++steps) {
                QTest::keyClick(shown, Qt::Key_Escape);
                EXPECT_TRUE(shown->isVisible());
                co_await turns.Next();
            }
            if (fails) throw RuntimeError(ErrorNumber::PrinterError, "Printer error");
        };
        frmWaitDisplay wait(WaitSelector::Report, job, turns, nullptr);
        shown = &wait;
        EXPECT_EQ(wait.lblWait->text().toStdString(), "Generating Report, Please Standby ...");
        EXPECT_EQ(wait.RunModal(), !fails);
        EXPECT_EQ(steps, 3);
        EXPECT_FALSE(wait.isVisible());
    }
    EXPECT_EQ(errors, 1);
}

} // namespace
} // namespace vantrel
