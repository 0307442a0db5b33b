#include "tests/proof/ProofWorld.h"

#include "document/SettingsTransfer.h"
#include "document/StatusTab.h"
#include "document/WriteThrough.h"
#include "link/StatusText.h"

#include <memory>
#include <utility>

namespace vantrel::proof {

namespace {

/// The first byte of an address text and how many it has; a bit counts as its byte.
std::pair<int, int> Span(const std::string& address) {
    const TargetAddress parsed = ParseAddress(address);
    return {parsed.byteAddress, ByteCount(parsed.type)};
}

} // namespace

void Said::Value(std::map<int, int>& list, const std::string& address, std::uint32_t number) {
    const auto [first, count] = Span(address);
    const std::uint32_t low = count == 4 ? number % 10000 : number & 0xFFFF;
    const std::uint32_t high = count == 4 ? number / 10000 : 0;
    for (int i = 0; i < count; ++i)
        list[first + i] = static_cast<int>((i < 2 ? low : high) >> (i % 2 * 8) & 0xFF);
}

void Said::TakeBack(std::map<int, int>& list, const std::string& address) {
    const auto [first, count] = Span(address);
    for (int i = 0; i < count; ++i)
        list.erase(first + i);
}

void Said::Doubt(const std::string& address) {
    const auto [first, count] = Span(address);
    for (int i = 0; i < count; ++i)
        doubtful.insert(first + i);
    TakeBack(stored, address);
}

void Said::Wrote(const std::string& address, std::uint32_t number, const WriteResult& result) {
    if (result.Confirmed()) {
        Value(stored, address, number);
    } else {
        Doubt(address);
    }
    mayHaveReached.insert(result.mayHaveReached.begin(), result.mayHaveReached.end());
}

namespace {

class NoDisplay final : public TransferDisplay {
public:
    void ShowLabel(std::string_view) override {}
    void ShowProgress(std::size_t, std::size_t) override {}
};

/// A record that the board does not hold, but for two sequences.
Configuration Record(const World& world) {
    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
    for (std::size_t i = 0; i < ValueCount; ++i) {
        const auto byte = static_cast<std::uint16_t>(std::stoi(DefaultTargetAddress(i).substr(1)));
        record.SetValue(i, i % 5 == 0 ? world.board.PeekWord(byte, world.clock.Now())
                                      : static_cast<std::int32_t>(300 * i + 7));
    }
    return record;
}

Task ReadValues(World& world) {
    for (const std::string address : {"B8177", "W17000", "D17010"}) {
        const Reading reading = co_await world.link.Read(address);
        world.said.Read(address, reading);
    }
    const Reading bit = co_await world.link.Read("B33.5");
    const auto number = bit.Number();
    if (number && *number != 1) world.said.shown[33] = -1;
}

Task WriteValues(World& world) {
    const std::pair<std::string, std::uint32_t> writes[] = {
        {"B200", 0x55}, {"W22222", 0x1234}, {"D23000", 123456789}, {"W40002", 0xFFFF}, {"B255", 0}};
    for (const auto& [address, number] : writes) {
        const WriteResult result = co_await world.link.RSWrite(address, std::to_string(number));
        world.said.Wrote(address, number, result);
    }
}

Task WriteBits(World& world) {
    const WriteResult off = co_await world.link.RSWrite("F13", "0");
    world.said.Wrote("B33", 0xDF, off);
    if (!off.Confirmed()) co_return;
    const WriteResult on = co_await world.link.RSWrite("B201.3", "1");
    world.said.Wrote("B201", 0x08, on);
}

Task WriteOneThrough(World& world) {
    const WriteThroughResult result = co_await WriteThrough(world.link, "W16898", 0xABCD);
    world.said.Wrote("W16898", 0xABCD, result.written);
    world.said.mayHaveReached.insert(result.mayHaveReached.begin(), result.mayHaveReached.end());
    world.said.Read("W16898", result.onBoard);
    if (const auto held = result.onBoard.Number(); held && *held != 0xABCD) world.said.Doubt("W16898");
    world.said.flagNamed = !result.flagLowered;
    if (!result.flagRaised) world.said.Doubt(WriteThroughFlag);
}

Task Download(World& world) {
    Configuration record = Record(world);
    NoDisplay display;
    SettingsTransfer transfer(TransferMode::DownloadData, record, world.link, world.dialogs, world.turns, display);
    world.cancel = [&transfer] { transfer.Cancel(); };
    co_await transfer.Run();
    Said& said = world.said;
    for (std::size_t i = 0; i < transfer.Walked(); ++i)
        said.Value(said.stored, record.TargetAddress(i), static_cast<std::uint32_t>(record.Value(i)));
    for (const std::size_t index : transfer.Unconfirmed())
        said.Doubt(record.TargetAddress(index));
    if (!transfer.Complete()) said.Doubt(record.TargetAddress(transfer.Walked()));
    said.mayHaveReached.insert(transfer.MayHaveReached().begin(), transfer.MayHaveReached().end());
    said.flagNamed = !transfer.FlagCleared();
    if (transfer.Reconnected()) {
        for (const auto& [byte, value] : std::exchange(said.stored, {}))
            said.doubtful.insert(byte);
    }
}

Task Upload(World& world) {
    Configuration record = Record(world);
    NoDisplay display;
    SettingsTransfer transfer(TransferMode::UploadData, record, world.link, world.dialogs, world.turns, display);
    world.cancel = [&transfer] { transfer.Cancel(); };
    co_await transfer.Run();
    Said& said = world.said;
    for (std::size_t i = 0; i < transfer.Walked(); ++i)
        said.Value(said.shown, record.TargetAddress(i), static_cast<std::uint32_t>(record.Value(i)));
    for (const std::size_t index : transfer.Unconfirmed())
        Said::TakeBack(said.shown, record.TargetAddress(index));
    said.mayHaveReached.insert(transfer.MayHaveReached().begin(), transfer.MayHaveReached().end());
    said.flagNamed = !transfer.FlagCleared();
    if (!transfer.FlagCleared()) said.Doubt(WriteThroughFlag);
}

Task Compare(World& world) {
    const Configuration record = Record(world);
    NoDisplay display;
    BoardComparison comparison(record, world.link, world.turns, display);
    world.cancel = [&comparison] { comparison.Cancel(); };
    co_await comparison.Run();
    Said& said = world.said;
    for (std::size_t i = 0; i < comparison.Compared(); ++i)
        said.Value(said.shown, record.TargetAddress(i), static_cast<std::uint32_t>(record.Value(i)));
    for (const ValueDifference& one : comparison.Differences())
        said.Value(said.shown, record.TargetAddress(one.index), static_cast<std::uint32_t>(one.onBoard));
    for (const std::size_t index : comparison.Unread())
        Said::TakeBack(said.shown, record.TargetAddress(index));
}

/// Reads the shown texts back into numbers; a "-" says nothing.
class StatusDisplayed final : public StatusTabDisplay {
public:
    explicit StatusDisplayed(World& world) : world_(world) {}
    [[nodiscard]] bool StatusWanted() const override { return true; }
    [[nodiscard]] bool RowVisible(int row) const override { return row < 8; }
    void ShowNode(int row, const std::string& text) override {
        if (text == "-") return;
        world_.said.Value(world_.said.shown, NodeNumberAddressTable().at(static_cast<std::size_t>(row) - 1),
                          static_cast<std::uint32_t>(std::stoul(text)));
    }
    void ShowStatus(int row, const std::string& text) override {
        if (text == "-") return;
        world_.said.Value(world_.said.shown, StatusWordAddressTable().at(static_cast<std::size_t>(row) - 1),
                          static_cast<std::uint32_t>(std::stoul(text, nullptr, 16)));
    }

private:
    World& world_;
};

Task StatusPass(World& world) {
    StatusDisplayed display(world);
    const SequenceAddresses nodes = NodeNumberAddressTable();
    const SequenceAddresses statuses = StatusWordAddressTable();
    co_await RefreshStatusTab(display, nodes, statuses, world.link, world.turns);
}

} // namespace

const std::vector<Operation>& LinkOperations() {
    static const std::vector<Operation> all{
        {"read", &ReadValues},      {"write", &WriteValues},
        {"write bits", &WriteBits}, {"write-through", &WriteOneThrough},
        {"download", &Download},    {"upload", &Upload},
        {"compare", &Compare},      {"status pass", &StatusPass},
    };
    return all;
}

} // namespace vantrel::proof
