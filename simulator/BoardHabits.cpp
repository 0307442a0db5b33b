// The list of habits and how one is written on a command line.
#include "simulator/BoardHabits.h"

#include "link/TargetAddress.h"
#include "simulator/DurationText.h"

#include <algorithm>
#include <charconv>

namespace vantrel {

namespace {

/// All bytes of the value at one address; nothing for a text that is no address.
std::optional<AddressRange> ParsePlace(std::string_view text) {
    if (!AddressProblem(text).empty()) return std::nullopt;
    const TargetAddress address = ParseAddress(text);
    const std::int32_t last = address.byteAddress + ByteCount(address.type) - 1;
    return AddressRange{static_cast<std::uint16_t>(address.byteAddress), static_cast<std::uint16_t>(last)};
}

std::optional<AddressRange> ParseRange(std::string_view text) {
    const std::size_t dash = text.find('-');
    if (dash == std::string_view::npos) return ParsePlace(text);
    const auto first = ParsePlace(text.substr(0, dash));
    const auto last = ParsePlace(text.substr(dash + 1));
    if (!first || !last || first->first > last->last) return std::nullopt;
    return AddressRange{first->first, last->last};
}

bool SetHalfSent(BoardHabits& habits, std::string_view value) {
    const auto limit = ParseDuration(value);
    if (!limit && value != "forever") return false;
    habits.halfSentLimit = limit;
    return true;
}

bool SetAfterForgetting(BoardHabits& habits, std::string_view value) {
    habits.afterForgetting = value == "mode" ? AfterForgetting::StayInMode : AfterForgetting::WaitForSync;
    return value == "mode" || value == "sync";
}

bool SetSyncInMode(BoardHabits& habits, std::string_view value) {
    habits.syncInMode = value == "first"   ? SyncInMode::First
                        : value == "never" ? SyncInMode::Never
                                           : SyncInMode::Second;
    return value == "first" || value == "second" || value == "never";
}

bool SetIdle(BoardHabits& habits, std::string_view value) {
    habits.echoesWhileIdle = value == "echo";
    return value == "echo" || value == "zero";
}

bool AddRefused(BoardHabits& habits, std::string_view value) {
    const auto range = ParseRange(value);
    if (range) habits.refused.push_back(*range);
    return range.has_value();
}

constexpr MonotonicTime StatusCycle = std::chrono::seconds(10);
constexpr int LastSequence = 30;

template <typename Number> bool ReadWhole(std::string_view text, Number& number, int base) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    return error == std::errc{} && end == text.data() + text.size();
}

/// SEQUENCE:CODE or SEQUENCE:CODE:TIME, the code in hexadecimal.
bool AddStatus(BoardHabits& habits, std::string_view value) {
    const std::size_t colon = std::min(value.find(':'), value.size());
    const std::string_view rest = value.substr(std::min(colon + 1, value.size()));
    const std::size_t second = rest.find(':');
    ShownStatus shown;
    if (second != std::string_view::npos) {
        shown.forTime = ParseDuration(rest.substr(second + 1));
        if (!shown.forTime || *shown.forTime > StatusCycle) return false;
    }
    if (!ReadWhole(value.substr(0, colon), shown.sequence, 10) || shown.sequence < 0) return false;
    if (shown.sequence > LastSequence || !ReadWhole(rest.substr(0, second), shown.code, 16)) return false;
    habits.statuses.push_back(shown);
    return true;
}

/// In the order of HabitNames.
constexpr std::array<bool (*)(BoardHabits&, std::string_view), 6> Setters{
    SetHalfSent, SetAfterForgetting, SetSyncInMode, SetIdle, AddRefused, AddStatus};

} // namespace

bool BoardHabits::Refuses(std::uint16_t address) const {
    return std::any_of(refused.begin(), refused.end(),
                       [&](const AddressRange& range) { return range.first <= address && address <= range.last; });
}

std::optional<std::uint16_t> BoardHabits::StatusOf(int sequence, MonotonicTime now) const {
    const auto found = std::find_if(statuses.rbegin(), statuses.rend(),
                                    [&](const ShownStatus& shown) { return shown.sequence == sequence; });
    if (found == statuses.rend()) return std::nullopt;
    if (found->forTime && now % StatusCycle < StatusCycle - *found->forTime) return std::nullopt;
    return found->code;
}

const std::array<HabitName, 6>& HabitNames() {
    static constexpr std::array<HabitName, 6> names{{
        {"half-sent", "500ms|TIME|forever", "A value that stops half way is forgotten after this time."},
        {"after-half-sent", "sync|mode",
         "The board then waits for a sync, or stays in its mode and waits for an address."},
        {"sync-in-mode", "second|first|never",
         "Where an address is due, the second FF in a row is a sync, or the first, or none is."},
        {"idle", "zero|echo", "Where a sync is due, any other byte is answered with 00, or echoed."},
        {"refuse", "ADDRESS",
         "The value is echoed but not stored: W16384, or B8176-B8190; may be given more than once."},
        {"status", "SEQ:CODE[:TIME]",
         "The sequence shows this status code, 4:05, or only for so long in ten seconds, 9:0C:1s."},
    }};
    return names;
}

std::optional<BoardHabits> WithHabit(BoardHabits habits, std::string_view text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) return std::nullopt;
    const auto& names = HabitNames();
    const auto named = std::find_if(names.begin(), names.end(),
                                    [&](const HabitName& each) { return each.name == text.substr(0, equals); });
    if (named == names.end()) return std::nullopt;
    const auto set = Setters.at(static_cast<std::size_t>(named - names.begin()));
    if (!set(habits, text.substr(equals + 1))) return std::nullopt;
    return habits;
}

} // namespace vantrel
