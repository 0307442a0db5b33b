// What the bytes on the line mean, as a reader of a trace sees it: sync, mode, values, and what went wrong. Pure.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vantrel {

/// Follows the exchanges in order and needs no beginning: before the first answered sync it says what the bytes alone
/// tell.
class TraceDecoder {
public:
    /// One exchange in words; never empty. A value is told with its last byte: "read B8176 = 0".
    [[nodiscard]] std::string Exchanged(std::uint8_t sent, std::optional<std::uint8_t> received);
    [[nodiscard]] static std::string Surplus(std::uint8_t byte);

private:
    enum class Due { Unknown, Mode, ReadHigh, ReadLow, WriteHigh, WriteLow, WriteData };

    [[nodiscard]] std::string Sync(std::uint8_t received);
    [[nodiscard]] std::string Mode(std::uint8_t sent, std::uint8_t received);
    [[nodiscard]] std::string High(std::uint8_t sent, std::uint8_t received);
    [[nodiscard]] std::string ReadValue(std::uint8_t low, std::uint8_t data);
    [[nodiscard]] std::string WriteLow(std::uint8_t sent, std::uint8_t received);
    [[nodiscard]] std::string WriteValue(std::uint8_t sent, std::uint8_t received);
    [[nodiscard]] std::string NotEchoed(const std::string& what, std::uint8_t received);

    Due due_ = Due::Unknown;
    bool silent_ = false; ///< The exchange before had no answer.
    int address_ = 0;
    std::optional<int> lastAddress_; ///< Of the value before, in the same mode,
    std::uint8_t lastByte_ = 0; ///< which was this.
};

} // namespace vantrel
