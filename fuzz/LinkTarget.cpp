// A board that answers anything at any time, to what the program asks of one: each operation has to end, in bounded
// time, and no reading is a value and a failed link at once. What is confirmed rightly is the proof tests' matter.
#include "document/SettingsTransfer.h"
#include "fuzz/FuzzTargets.h"
#include "link/RSComm.h"
#include "platform/RuntimeError.h"
#include "simulator/SimulatedBoard.h"
#include "tests/support/ReceivingPort.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/VirtualClock.h"

#include <chrono>
#include <string>

namespace vantrel::fuzz {

namespace {

using namespace std::chrono_literals;

/// Every byte that is sent takes one byte of the input, which says what comes back: mostly the answer of a healthy
/// board, so that the search gets deep. Behind the input's end all is healthy for a while, and then silent.
class AnyBoardPort final : public ReceivingPort {
public:
    AnyBoardPort(VirtualClock& clock, Input script) : ReceivingPort(clock), script_(script) {}

    void SetPortNumber(int /*number*/) override {}
    void SetSettings(const std::string& /*settings*/) override {}
    void Open() override {
        if (Next() % 16 == 15) throw RuntimeError(ErrorNumber::PathFileAccess, "busy");
        open_ = true;
        lost_ = false;
    }
    void Write(std::span<const std::uint8_t> bytes) override {
        for (const std::uint8_t byte : bytes)
            Answer(byte);
    }
    /// 0 once the input has run out.
    std::uint8_t Next() {
        if (at_ == script_.size()) return 0;
        return script_[at_++];
    }

private:
    void Put(std::uint8_t byte, MonotonicTime late) {
        const MonotonicTime earliest = received_.empty() ? MonotonicTime{0} : received_.back().first;
        received_.emplace_back(std::max(earliest, clock_.Now() + late), byte);
    }
    void Answer(std::uint8_t byte) {
        if (lost_ || (at_ == script_.size() && ++behindEnd_ > 5000)) return;
        const BoardAnswer healthy = board_.Receive(byte, clock_.Now());
        const std::uint8_t what = Next();
        const MonotonicTime late = what >= 0xF0 ? 1ms * (what - 0xEF) * (what - 0xEF) * 20 : 1ms;
        switch (what < 0xC0 ? 0 : what & 0x0F) {
        case 1:
            Put(Next(), late);
            return;
        case 2:
            return;
        case 3:
            Put(byte, late);
            break;
        case 4:
            Put(0x55, late);
            break;
        case 5:
            Put(0xFF, late);
            break;
        case 6:
            lost_ = Next() > 0xF0;
            break;
        case 7:
            clock_.Advance(1ms * Next());
            break;
        default:
            break;
        }
        for (const std::uint8_t answer : healthy.bytes)
            Put(answer, late);
    }

    Input script_;
    std::size_t at_ = 0;
    int behindEnd_ = 0;
    SimulatedBoard board_;
};

/// Somebody whose answers are the input's, too, and who loses patience.
class AnyDialogs final : public Dialogs {
public:
    explicit AnyDialogs(AnyBoardPort& port) : port_(port) {}
    MessageAnswer Show(const MessageBox& box) override {
        Require(!box.text.empty() && ++shown_ < 200);
        switch (box.buttons) {
        case MessageButtons::Ok:
            return MessageAnswer::Ok;
        case MessageButtons::RetryCancel:
            return port_.Next() % 4 == 1 && shown_ < 20 ? MessageAnswer::Retry : MessageAnswer::Cancel;
        default:
            return port_.Next() % 2 == 1 ? MessageAnswer::Yes : MessageAnswer::No;
        }
    }

private:
    AnyBoardPort& port_;
    int shown_ = 0;
};

class NoDisplay final : public TransferDisplay {
public:
    void ShowLabel(std::string_view /*label*/) override {}
    void ShowProgress(std::size_t done, std::size_t total) override { Require(done <= total); }
};

} // namespace

void TakeLink(Input input) {
    static const TemporaryFolder folder;
    VirtualClock clock;
    AnyBoardPort port(clock, input);
    AnyDialogs dialogs(port);
    TurnQueue turns(clock);
    RSComm link(folder / "RSPort.cfg", {1, 4}, clock, dialogs, turns);
    const std::uint8_t job = port.Next();
    turns.RunToEnd(link.OpenRSComm(port));
    for (const char* address : {"B8176", "W32", "D100", "B8176.3"}) {
        const Reading reading = turns.RunToEnd(link.Read(address));
        Require(!reading.IsValue() || !reading.HasLinkFailed());
        if (job % 2 == 1) static_cast<void>(turns.RunToEnd(link.RSWrite(address, std::to_string(port.Next()))));
    }
    if (job >= 0xE0) {
        NoDisplay display;
        Configuration record = DefaultRecord("VANTREL_R1.0.0", {46095.25});
        SettingsTransfer transfer(job % 2 == 1 ? TransferMode::DownloadData : TransferMode::UploadData, record, link,
                                  dialogs, turns, display);
        transfer.Only({0, 1, 2, 3, 217});
        transfer.Load();
        turns.RunToEnd(transfer.Run());
    }
    turns.RunToEnd(link.CloseRSComm());
    Require(!port.IsOpen() && clock.Now() < 1h);
}

} // namespace vantrel::fuzz
