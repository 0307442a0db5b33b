// The fixed tables and texts of the target board view: its set-up fields, captions, advice, boxes. Knows the memory
// map; no link, no toolkit.
#pragma once

#include "link/TargetMap.h"
#include "platform/Dialogs.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

/// The slot of the CO-CPU is shown on this board type only (types are character codes; 0 is unknown).
[[nodiscard]] constexpr bool HasCoCpu(std::int16_t boardType) { return boardType == '2'; }
/// Whether the board type has a clock and calendar that can be set.
[[nodiscard]] constexpr bool HasBoardClock(std::int16_t boardType) { return boardType == '6' || boardType == 'A'; }

/// Where the view's six codes stand in `FaultAddresses` and in every list of captions and descriptions.
enum class BoardCode : std::size_t {
    CurrentFault,
    LastFault,
    CoCpuSlot,
    Advice, ///< The last fault again: it selects the advice.
    CurrentCommError,
    LastCommError,
};
inline constexpr std::size_t BoardCodeCount = 6;
[[nodiscard]] constexpr std::size_t IndexOf(BoardCode code) { return static_cast<std::size_t>(code); }

inline constexpr std::array<int, BoardCodeCount> FaultAddresses{
    CurrentFaultByte, LastFaultByte, CoCpuSlotByte, LastFaultByte, CurrentCommErrorByte, LastCommErrorByte};

/// At least two upper-case hexadecimal digits.
[[nodiscard]] std::string CodeText(int value);
/// What every code reads as when the link has failed.
inline constexpr std::string_view DeadLinkCode = "42";
/// What a code reads as that the board did not tell clearly; any other value is then UnreadText.
inline constexpr std::string_view UnreadCode = "--";

/// "Current Fault: Code = 0AH" and its kin; the slot is the code in decimal. Empty for the advice, which has none.
[[nodiscard]] std::string CodeCaption(BoardCode which, std::string_view code);
[[nodiscard]] std::string SlotCaption(std::string_view slot);
/// What to do about the last fault, whose code is `code` (hexadecimal); empty for a code that is not known.
[[nodiscard]] std::string AdviceText(std::string_view code);
/// Stands in the description boxes while OFFLINE.
inline constexpr std::string_view NoBoardText = "Cannot Communicate with Target Board.";
[[nodiscard]] std::string NetworkAddressComment();

/// One value of the board that the view sets, in the order of its entry boxes.
struct SetupField {
    std::string_view description; ///< Without access key; begins the title of a refusal.
    int byte; ///< Address in target memory.
    int lowest;
    int highest;
};
inline constexpr std::size_t SetupFieldCount = 8;
inline constexpr std::size_t NetworkAddressField = 0;
inline constexpr std::size_t SerialSetupField = 1;
inline constexpr std::size_t FirstClockField = 2;
inline constexpr std::array<SetupField, SetupFieldCount> SetupFields{{
    {"Network Address", NetworkAddressByte, 1, 32},
    {"Serial Communication", SerialSetupByte, 0, 255},
    {"Hour", ClockHourByte, 0, 23},
    {"Minute", ClockMinuteByte, 0, 59},
    {"Second", ClockSecondByte, 0, 59},
    {"Month", ClockMonthByte, 1, 12},
    {"Day", ClockDayByte, 1, 31},
    {"Year", ClockYearByte, 0, 99},
}};

/// "B" + address.
[[nodiscard]] std::string ByteAddress(int byte);
/// The last two characters of "00" + the value.
[[nodiscard]] std::string TwoDigits(std::string_view value);
/// What the box of a set-up field shows of its value: two digits, or "-" for one that is not known.
[[nodiscard]] std::string SetupBoxText(std::string_view value);
/// What stands beside the box: the whole of a value that the two digits cut, and a mark at one that is outside of the
/// field's limits. Empty when the box tells everything.
[[nodiscard]] std::string SetupMark(std::size_t field, std::string_view value);
/// What an entry means for field `field`: the value to write as decimal text; nothing when it is to be refused.
[[nodiscard]] std::optional<std::string> SetupEntry(std::size_t field, std::string_view entry);
/// The box that refuses it, titled with the field's description and "Set-up".
[[nodiscard]] MessageBox SetupRefusal(std::size_t field);
/// The value one step (1 or -1) beside an entry, kept within the field's limits, as it is shown.
[[nodiscard]] std::string SteppedSetup(std::size_t field, std::string_view entry, int step);

/// The warning before the fault codes are reset; only Yes goes on.
[[nodiscard]] MessageBox ResetQuestion();

// What became of a write that the board did not confirm, or that reads back otherwise.

/// `onBoard`: what the field reads as now.
/// The value was confirmed, but only when it was sent a second time.
[[nodiscard]] MessageBox SetupSentTwice(std::size_t field, std::string_view value);
[[nodiscard]] MessageBox SetupNotConfirmed(std::size_t field, std::string_view value, std::string_view onBoard);
/// `what`: "Time" or "Date".
/// What to tell when the link failed under a write, whether it was given up or not.
[[nodiscard]] MessageBox WriteCutOff(const std::string& title, const std::string& what);
[[nodiscard]] MessageBox SetupCutOff(std::size_t field, std::string_view value);
[[nodiscard]] MessageBox ClockNotConfirmed(std::string_view what);
[[nodiscard]] MessageBox ResetNotConfirmed();
/// The reset was confirmed, but the board holds a code again.
[[nodiscard]] MessageBox CodesAfterReset();

/// "09 : 05 : 07" and "03 - 14 - 2021".
[[nodiscard]] std::string ComputerTimeText(std::chrono::local_seconds now);
[[nodiscard]] std::string ComputerDateText(std::chrono::local_seconds now);

} // namespace vantrel
