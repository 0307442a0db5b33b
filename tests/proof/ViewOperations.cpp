// The operations of the live views and of the tick, and what their displays show by them.
#include "tests/proof/ProofWorld.h"

#include "app/BackgroundUpdate.h"
#include "views/BoardMonitor.h"
#include "views/SequenceMonitor.h"

#include <optional>
#include <string>

namespace vantrel::proof {

namespace {

constexpr std::int16_t Sequence = 4;

/// The number in a shown text, behind a "V" or "W"; nothing for a "-".
std::optional<std::uint32_t> ShownNumber(const std::string& text, int base) {
    const std::size_t digits = text.find_first_of("0123456789ABCDEF", 0, static_cast<std::size_t>(base));
    if (digits == std::string::npos || text.find('-') != std::string::npos) return std::nullopt;
    return static_cast<std::uint32_t>(std::stoul(text.substr(digits), nullptr, base));
}

class SequenceDisplayed final : public SequenceDisplay {
public:
    explicit SequenceDisplayed(World& world) : world_(world) {}
    [[nodiscard]] bool Active() const override { return true; }
    [[nodiscard]] bool RowVisible(int row) const override { return row <= 5; }
    void ClearData() override {}
    void ShowDescription(const std::string&) override {}
    void ShowNodeNumber(const std::string& text) override { Note(SequenceWord(Sequence, 0), text); }
    void ShowSetting(SettingsGrid grid, int row, const std::string& text) override {
        Note(SequenceWord(Sequence, static_cast<std::size_t>(3 * static_cast<int>(grid) + row)), text);
    }
    void ShowStatus(const std::string& text) override {
        if (const auto code = ShownNumber(text.substr(0, text.find(':')), 16))
            world_.said.Value(world_.said.shown, StatusWordAddress(Sequence), *code);
    }
    void ShowDataWord(int row, DataDirection column, const std::string& text) override {
        Note(DataWordAddress(Sequence, column, row), text);
    }

private:
    void Note(const std::string& address, const std::string& text) {
        if (const auto number = ShownNumber(text, 10)) world_.said.Value(world_.said.shown, address, *number);
    }
    World& world_;
};

Task SequencePass(World& world) {
    SequenceDisplayed display(world);
    const Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
    const std::int16_t selected = Sequence;
    SequenceMonitor monitor(record, world.link, world.turns, selected, display);
    co_await monitor.RefreshSettings(SettingsBaseOf(Sequence));
    co_await monitor.RefreshStatusAndData();
}

class BoardDisplayed final : public BoardDisplay {
public:
    explicit BoardDisplayed(World& world) : world_(world) {}
    [[nodiscard]] bool Active() const override { return true; }
    [[nodiscard]] bool SetupWanted(std::size_t) const override { return true; }
    void EnableOnline(bool) override {}
    void EnableReset(bool) override {}
    void ShowCaption(BoardCode which, const std::string& text) override {
        const std::string code = "Code = ";
        const std::size_t at = text.find(code);
        // A link that has failed shows every code as 42.
        if (at == std::string::npos || text.find("--") != std::string::npos || world_.link.LinkFailed()) return;
        Note(FaultAddresses.at(IndexOf(which)), text.substr(at + code.size(), 2), 16);
    }
    void ShowDescription(BoardCode, const std::string&) override {}
    void ShowSetup(std::size_t field, const std::string& value) override {
        // The clock runs.
        if (field < FirstClockField) Note(SetupFields.at(field).byte, value, 10);
    }
    void ShowRevision(std::size_t label, const std::string& text) override {
        if (label > 0) Note(label == 2 ? RevisionNumberBase : RevisionNumberBase + 1, text, 10);
    }
    void ShowGoOnline(bool) override {}

private:
    void Note(int byte, const std::string& text, int base) {
        if (const auto number = ShownNumber(text, base)) world_.said.shown[byte] = static_cast<int>(*number);
    }
    World& world_;
};

struct BoardView {
    explicit BoardView(World& of) : world(of), display(of) { monitor.SetBoardType('6'); }
    World& world;
    AlarmFlags alarms{};
    BoardDisplayed display;
    BoardMonitor monitor{world.link, world.turns, world.clock, world.dialogs, alarms, {"/nowhere/1", "/nowhere/2"},
                         display};
};

Task BoardPass(World& world) {
    BoardView view(world);
    co_await view.monitor.ShowBoardOnline();
    co_await view.monitor.RefreshSetupFields();
    co_await view.monitor.RefreshCodes();
    const bool fault = world.Byte(CurrentFaultByte) != 0;
    if (view.alarms[0] != fault) world.said.shown[CurrentFaultByte] = -1;
}

Task ResetFaults(World& world) {
    BoardView view(world);
    const WriteOutcome outcome = co_await view.monitor.ResetFaultCodes();
    for (const int byte : {LastCommErrorByte, CurrentCommErrorByte, LastFaultByte, CurrentFaultByte})
        world.said.Wrote("B" + std::to_string(byte), 0, outcome == WriteOutcome::Written);
}

Task SetAddress(World& world) {
    BoardView view(world);
    const WriteOutcome outcome = co_await view.monitor.WriteSetup(NetworkAddressField, "17");
    world.said.Wrote("B" + std::to_string(NetworkAddressByte), 17, outcome == WriteOutcome::Written);
}

Task SetClock(World& world) {
    BoardView view(world);
    const WriteOutcome outcome = co_await view.monitor.SetToCurrDate();
    // The registers run and are left out of every look at the memory; what is said of them is looked at here.
    const bool right = world.board.Peek(ClockMonthByte, world.clock.Now()) == 3;
    if (outcome == WriteOutcome::Written && !right) world.said.stored[ClockMonthByte] = -1;
    for (int byte = ClockSecondByte; byte <= ClockYearByte; ++byte)
        world.said.doubtful.insert(byte);
}

Task Tick(World& world) {
    const TemporaryFolder folder;
    Program program(ProgramFolder(folder.Path(), folder.Path()), world.clock);
    program.InitDefaults();
    BackgroundUpdate update(program, world.link, world.clock);
    world.link.SetOnlineMode(true);
    for (int i = 0; i < 3; ++i)
        co_await update.Tick(false);
    const bool fault = world.Byte(CurrentFaultByte) != 0;
    const bool commError = world.Byte(CurrentCommErrorByte) != 0;
    if (!world.link.LinkFailed() && program.alarms != AlarmFlags{fault, commError, false})
        world.said.shown[CurrentFaultByte] = -1;
}

} // namespace

const std::vector<Operation>& ViewOperations() {
    static const std::vector<Operation> all{
        {"sequence pass", &SequencePass}, {"board pass", &BoardPass}, {"fault reset", &ResetFaults},
        {"set-up field", &SetAddress},    {"clock", &SetClock},       {"tick", &Tick},
    };
    return all;
}

} // namespace vantrel::proof
