#include "tests/proof/ProofWorld.h"

#include "document/SettingsTransfer.h"
#include "document/StatusTab.h"
#include "document/WriteThrough.h"
#include "link/StatusText.h"
#include "views/History.h"

#include <numeric>
#include <utility>

namespace vantrel::proof {

namespace {

/// The bytes of an address text; a bit counts as its byte.
std::vector<int> BytesOf(const std::string& address) {
    const TargetAddress parsed = ParseAddress(address);
    std::vector<int> bytes(static_cast<std::size_t>(ByteCount(parsed.type)));
    std::iota(bytes.begin(), bytes.end(), parsed.byteAddress);
    return bytes;
}

} // namespace

void Said::Value(std::map<int, int>& list, const std::string& address, std::uint32_t number) {
    const std::vector<int> bytes = BytesOf(address);
    // A double word is two of four decimal digits.
    const bool two = bytes.size() == 4;
    const std::uint32_t words = two ? number % 10000 | number / 10000 << 16 : number & 0xFFFF;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        list[bytes[i]] = static_cast<int>(words >> (i * 8) & 0xFF);
}

void Said::TakeBack(std::map<int, int>& list, const std::string& address) {
    for (const int byte : BytesOf(address))
        list.erase(byte);
}

void Said::Doubt(const std::string& address) {
    for (const int byte : BytesOf(address))
        doubtful.insert(byte);
    TakeBack(stored, address);
}

void Said::Wrote(const std::string& address, std::uint32_t number, bool confirmed) {
    confirmed ? Value(stored, address, number) : Doubt(address);
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

TaskOf<bool> Write(World& world, std::string address, std::string number, std::uint32_t byte) {
    const WriteResult result = co_await world.link.RSWrite(address, number);
    world.said.Wrote(address, byte, result.Confirmed());
    world.said.Reached(result.mayHaveReached);
    co_return result.Confirmed();
}

Task WriteValues(World& world) {
    const std::pair<std::string, std::uint32_t> writes[] = {
        {"B200", 0x55}, {"W22222", 0x1234}, {"D23000", 123456789}, {"W40002", 0xFFFF}, {"B255", 0}};
    for (const auto& [address, number] : writes)
        (void)co_await Write(world, address, std::to_string(number), number);
}

/// The value of a bit's byte beside it.
Task WriteBits(World& world) {
    const bool off = co_await Write(world, "F13", "0", 0xDF);
    if (off) (void)co_await Write(world, "B201.3", "1", 0x08);
}

Task WriteOneThrough(World& world) {
    const WriteThroughResult result = co_await WriteThrough(world.link, "W16898", 0xABCD);
    world.said.Wrote("W16898", 0xABCD, result.written.Confirmed());
    world.said.Reached(result.written.mayHaveReached);
    world.said.Reached(result.mayHaveReached);
    world.said.Read("W16898", result.onBoard);
    if (const auto held = result.onBoard.Number(); held && *held != 0xABCD) world.said.Doubt("W16898");
    world.said.flagNamed = !result.flagLowered;
    if (!result.flagRaised) world.said.Doubt(WriteThroughFlag);
}

Task Transfer(World& world, TransferMode mode) {
    Configuration record = Record(world);
    NoDisplay display;
    SettingsTransfer transfer(mode, record, world.link, world.dialogs, world.turns, display);
    world.cancel = [&transfer] { transfer.Cancel(); };
    co_await transfer.Run();
    Said& said = world.said;
    const bool upload = mode == TransferMode::UploadData;
    auto& list = upload ? said.shown : said.stored;
    for (std::size_t i = 0; i < transfer.Walked(); ++i)
        said.Value(list, record.TargetAddress(i), static_cast<std::uint32_t>(record.Value(i)));
    for (const std::size_t index : transfer.Unconfirmed())
        upload ? Said::TakeBack(list, record.TargetAddress(index)) : said.Doubt(record.TargetAddress(index));
    said.Reached(transfer.MayHaveReached());
    said.flagNamed = !transfer.FlagCleared();
    if (upload && !transfer.FlagCleared()) said.Doubt(WriteThroughFlag);
    if (upload) co_return;
    if (!transfer.Complete()) said.Doubt(record.TargetAddress(transfer.Walked()));
    if (!transfer.Reconnected()) co_return;
    for (const auto& [byte, value] : std::exchange(said.stored, {}))
        said.doubtful.insert(byte);
}

Task Download(World& world) { return Transfer(world, TransferMode::DownloadData); }

Task Upload(World& world) { return Transfer(world, TransferMode::UploadData); }

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
    History log(world.clock);
    StatusSurvey survey(log);
    co_await RefreshStatusTab(display, survey, nodes, statuses, world.link, world.turns);
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
