// Where things are in the target board's memory (the board's memory map). Uses nothing.
#pragma once

#include <cstddef>
#include <string>

namespace vantrel {

/// Set to "1" before a download or a write-through, back to "0" after it.
inline constexpr const char* WriteThroughFlag = "B105";
inline constexpr const char* StatusStackWord = "W6400";
inline constexpr int StatusStackByte = 6400; ///< The same location as a number.

inline constexpr int StatusWordBase = 6914; ///< Status word of sequence s at base + 2 s.
inline constexpr int SequenceBase = 16384; ///< Field k of sequence s at base + 512 s + 2 k.
inline constexpr int SequenceStride = 512;
inline constexpr int SendDataBase = 16400; ///< Send word r (from 1) of sequence s at base + 512 s + 2 (r - 1).
inline constexpr int ReceiveDataBase = 16640; ///< Receive word r likewise.
inline constexpr int DataWordCount = 120;

/// "W" + address of field `field` (0..6) of sequence `sequence` (0..30).
[[nodiscard]] inline std::string SequenceWord(std::size_t sequence, std::size_t field) {
    return "W" + std::to_string(static_cast<std::size_t>(SequenceBase) + SequenceStride * sequence + 2 * field);
}

// Board locations, one byte each unless noted.
inline constexpr int FirmwareRevisionByte = 8159;
inline constexpr int CoCpuSlotByte = 8175;
inline constexpr int CurrentFaultByte = 8176;
inline constexpr int LastFaultByte = 8177;
inline constexpr int LastCommErrorByte = 8178;
inline constexpr int CurrentCommErrorByte = 8179;
inline constexpr int NetworkAddressByte = 8180;
inline constexpr int SerialSetupByte = 8191;
inline constexpr int ClockSecondByte = 43008;
inline constexpr int ClockMinuteByte = 43010;
inline constexpr int ClockHourByte = 43012;
inline constexpr int ClockDayByte = 43015;
inline constexpr int ClockMonthByte = 43016;
inline constexpr int ClockYearByte = 43017; ///< Last two digits.
inline constexpr int RevisionIdentBase = 61424; ///< Eight characters.
inline constexpr int RevisionNumberBase = 61432; ///< Two revision numbers, one byte each.

} // namespace vantrel
