// The check of the connection: what it says of each thing that can be wrong, and that it changes nothing on the board.
#include "link/ConnectionCheck.h"

#include "link/CheckTexts.h"
#include "platform/RuntimeError.h"

#include "tests/support/BoardLink.h"

namespace vantrel {
namespace {

using namespace std::chrono_literals;
using Kind = CheckResult::Kind;

class SeenSteps final : public CheckDisplay {
public:
    void Begins(const std::string&) override {}
    void Ends(const CheckStep& step) override { text += step.name + ": " + step.seen + "\n  " + step.todo + "\n"; }
    void Progress(std::size_t, std::size_t) override {}
    std::string text;
};

/// Has bytes to give each time it has been opened, before anything is sent.
class TalkedOver final : public SimulatedPort {
public:
    using SimulatedPort::SimulatedPort;
    int many = 1;
    void ClearReceived() override { unasked_ = many; }
    std::size_t ReceivedCount() override { return unasked_ > 0 ? 1 : SimulatedPort::ReceivedCount(); }
    PortWait WaitForByte(MonotonicTime deadline) override {
        return unasked_ > 0 ? PortWait::ByteReceived : SimulatedPort::WaitForByte(deadline);
    }
    std::uint8_t ReadByte() override {
        return unasked_ > 0 ? static_cast<std::uint8_t>(unasked_--) : SimulatedPort::ReadByte();
    }

private:
    int unasked_ = 0;
};

/// Does not take 19200 baud, as some adapters do not.
class SlowOnly final : public SimulatedPort {
public:
    using SimulatedPort::SimulatedPort;
    void SetSettings(const std::string& settings) override {
        if (settings.starts_with("19200")) throw RuntimeError(ErrorNumber::PathFileAccess, "19200 is refused. Sorry.");
        SimulatedPort::SetSettings(settings);
    }
};

class ConnectionCheckTest : public BoardLink<> {
protected:
    ConnectionCheckTest() : BoardLink(LinePacing::LineSpeed) { link.SetPortOverride({.number = 1, .speed = "9600"}); }
    CheckResult Check(const std::string& name = "/dev/ttyUSB0") { return Check(name, port); }
    CheckResult Check(const std::string& name, SerialPort& at) {
        const std::vector<std::uint8_t> before(board.Stored().begin(), board.Stored().end());
        ConnectionCheck check(link, at, {name, '6', ident}, clock, turns, seen);
        CheckResult result = turns.RunToEnd(check.Run());
        EXPECT_TRUE(std::equal(before.begin(), before.end(), board.Stored().begin())) << "something was written";
        EXPECT_TRUE(dialogs.shown.empty());
        return result;
    }
    SeenSteps seen;
    std::string ident = "K5216505"; ///< Of the user program on disk.
};

TEST_F(ConnectionCheckTest, FindsAHealthyBoardAndSaysWhichItIs) {
    port.SetBoardSpeed(9600);
    const CheckResult result = Check();
    EXPECT_EQ(result.kind, Kind::Healthy) << seen.text << result.verdict;
    ASSERT_TRUE(result.figures && result.board);
    EXPECT_EQ(result.figures->tried, 200U);
    EXPECT_EQ(result.figures->Share(0.5), 2 * (MonotonicTime(10s) / 9600));
    EXPECT_EQ(result.board->networkAddress, 1);
    EXPECT_EQ(result.board->ident + " " + result.board->model, "K5216505 K5216");
    EXPECT_NE(seen.text.find("revision numbers 1 and 4;"), std::string::npos) << seen.text;
    ident = "K5216999";
    EXPECT_EQ(Check().board->model, "") << "another program's type says nothing";
    EXPECT_FALSE(port.IsOpen());
}

TEST_F(ConnectionCheckTest, KeepsTheOpenLinkAndItsSpeedWhileOnlineAndLeavesItInStep) {
    Open();
    ASSERT_TRUE(link.OnlineMode());
    (void)turns.RunToEnd(link.RSWrite("W16384", "7"));
    const int opened = link.Opened();
    EXPECT_EQ(Check().kind, Kind::Healthy) << seen.text;
    EXPECT_EQ(seen.text.find("19200"), std::string::npos);
    EXPECT_TRUE(link.OnlineMode() && port.IsOpen() && link.Opened() == opened);
    EXPECT_EQ(turns.RunToEnd(link.Read("W16384")).TextOr("unread"), "7");
    board.AddFault({FaultKind::NoAnswer});
    EXPECT_EQ(Check().kind, Kind::NoLink);
}

TEST_F(ConnectionCheckTest, NamesWhatIsWrongAndNeverMoreThanItSaw) {
    // The fault, the board's speed, the kind of the result, its verdict, and what is said beside it.
    const std::vector<std::tuple<const char*, int, Kind, const char*, const char*>> cases{
        {"no-answer", 9600, Kind::NoLink, "Nothing answers, at either speed.", "Nothing came back within a second"},
        {"shorted-lines", 9600, Kind::NoLink, "What is sent comes back itself", "the very byte that was sent"},
        {"", 19200, Kind::NoLink, "The board answers at 19200 baud; the program is set to 9600.",
         "vantrelctl --speed 19200"},
        {"", 38400, Kind::NoLink, "Something answers, but nothing that a board says", "no board's answer:"},
        {"latency-timer", 9600, Kind::Flawed, "about 16 ms", "Latency Timer"},
        {"late-answer:62ms", 9600, Kind::Flawed, "slowly: each answer takes about 6", "adapter"},
        {"no-answer:once@50", 9600, Kind::Flawed, "not each time: of 200 exchanges 1 lost", "200 exchanges, 1 lost"},
        {"late-answer:once@50", 9600, Kind::Flawed, "not without flaws: of 200 exchanges 1 late", "1 late"},
        {"late-answer:300ms:once@50", 9600, Kind::Flawed, "of 200 exchanges 1 late", "most 30"},
        {"doubled-byte:once@50", 9600, Kind::Flawed, "of 200 exchanges 1 answered twice", "1 answered twice"},
        {"spoiled-answer:01H:once@50", 9600, Kind::Flawed, "1 answered wrongly", "1 answered wrongly"},
        {"hang-up@50", 9600, Kind::NoLink, "The line went away while it was tried.", "1 lost"},
        {"hang-up", 9600, Kind::NoLink, "", "The device went away."},
    };
    for (const auto& [fault, boardSpeed, kind, verdict, said] : cases) {
        SCOPED_TRACE(std::string(fault) + " " + std::to_string(boardSpeed));
        seen.text.clear();
        board.ClearFaults();
        port.MendLine();
        if (*fault) {
            SimulatedFault parsed = ParseFault(fault).value();
            if (parsed.afterBytes > 0) parsed.afterBytes += board.ReceivedBytes();
            board.AddFault(parsed);
        }
        port.SetBoardSpeed(boardSpeed);
        const CheckResult result = Check();
        EXPECT_EQ(result.kind, kind) << seen.text << result.verdict;
        EXPECT_NE(result.verdict.find(verdict), std::string::npos) << result.verdict << "\n" << seen.text;
        EXPECT_NE((seen.text + "\n" + result.todo).find(said), std::string::npos) << seen.text;
        EXPECT_FALSE(result.todo.empty());
        EXPECT_EQ(result.todo.find("try 9600"), std::string::npos) << "it is there";
        EXPECT_FALSE(port.IsOpen());
    }
    // The same figure behind a network is the network's.
    board.ClearFaults();
    port.MendLine();
    port.SetBoardSpeed(0);
    board.AddFault({.kind = FaultKind::LatencyTimer});
    seen.text.clear();
    EXPECT_EQ(Check("socket://plc:1").kind, Kind::Healthy);
    EXPECT_TRUE(seen.text.starts_with("Port: socket://plc:1 takes the connection.\n  \nAnswer: 55")) << seen.text;
    EXPECT_EQ(seen.text.find("Answer:"), seen.text.rfind("Answer:")) << "no second speed to set there";
    board.AddFault({FaultKind::NoAnswer});
    EXPECT_TRUE(Check("socket://plc:1").todo.starts_with("Is the speed that is set at the server the board's?"));
}

TEST_F(ConnectionCheckTest, SpeaksOfNoSpeedThatCouldNotBeTried) {
    SlowOnly slow(board, clock, LinePacing::LineSpeed);
    EXPECT_EQ(Check("/dev/ttyUSB0", slow).kind, Kind::Healthy);
    EXPECT_NE(seen.text.find("This speed could not be tried: 19200 is refused. Sorry."), std::string::npos);
    board.AddFault({FaultKind::NoAnswer});
    EXPECT_EQ(Check("/dev/ttyUSB0", slow).verdict, "Nothing answers at 9600 baud, the only speed that could be tried.");
    // What is only just as slow as that is not slow, nor is the edge a latency timer's.
    EXPECT_FALSE(check::IsSlow({.times{30ms}}) || check::LooksLikeLatencyTimer({.times{12ms}}) ||
                 check::LooksLikeLatencyTimer({.times{20ms}}));
}

TEST_F(ConnectionCheckTest, StopsWhereBytesComeBeforeAnythingWasSent) {
    TalkedOver talked(board, clock, LinePacing::LineSpeed);
    for (const char* name : {"rfc2217://plc:1", "socket://plc:1"}) {
        const CheckResult result = Check(name, talked);
        EXPECT_EQ(result.verdict, "Something else is talking on this line.") << seen.text;
        EXPECT_FALSE(result.figures) << "no exchanges";
    }
    talked.many = 100;
    line.Forget();
    EXPECT_EQ(Check("rfc2217://plc:1", talked).verdict, "Something else is talking on this line.") << seen.text;
    EXPECT_TRUE(line.bytes.empty()) << "a byte of ours could be a value in the other's exchange";
}

} // namespace
} // namespace vantrel
