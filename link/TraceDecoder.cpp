#include "link/TraceDecoder.h"

#include "link/ProtocolBytes.h"
#include "text/NumberText.h"

namespace vantrel {

namespace {

std::string HexOf(int number, std::size_t digits) { return HexText(static_cast<std::uint16_t>(number), digits) + "H"; }

/// "B16385 = 1", and with the byte below it the word that both make.
std::string ValueText(int address, std::uint8_t byte, std::optional<std::uint8_t> below) {
    std::string text = "B" + std::to_string(address) + " = " + std::to_string(byte);
    if (below) text += ", so W" + std::to_string(address - 1) + " = " + std::to_string(byte * 256 + *below);
    return text;
}

} // namespace

std::string TraceDecoder::Exchanged(std::uint8_t sent, std::optional<std::uint8_t> received) {
    const bool repeated = silent_ && sent == SyncByte;
    silent_ = !received;
    if (!received) {
        due_ = Due::Unknown;
        return repeated ? "sync repeated after silence: no answer" : "no answer";
    }
    if (repeated) {
        due_ = *received == Acknowledge ? Due::Mode : Due::Unknown;
        return "sync repeated after silence: answer " + HexOf(*received, 2);
    }
    // An address byte FF is echoed; only a sync is answered with 55.
    if (sent == SyncByte && *received == Acknowledge && due_ != Due::ReadLow && due_ != Due::WriteData) {
        return Sync(*received);
    }
    switch (due_) {
    case Due::Unknown:
        return sent == SyncByte ? Sync(*received) : "not known: no sync was seen before it";
    case Due::Mode:
        return Mode(sent, *received);
    case Due::ReadHigh:
    case Due::WriteHigh:
        return High(sent, *received);
    case Due::ReadLow:
        return ReadValue(sent, *received);
    case Due::WriteLow:
        return WriteLow(sent, *received);
    case Due::WriteData:
        break;
    }
    return WriteValue(sent, *received);
}

std::string TraceDecoder::Surplus(std::uint8_t byte) {
    return "surplus: " + HexOf(byte, 2) + " came without being asked for";
}

std::string TraceDecoder::Sync(std::uint8_t received) {
    lastAddress_.reset();
    due_ = received == Acknowledge ? Due::Mode : Due::Unknown;
    return due_ == Due::Mode ? "sync" : "sync not acknowledged: answer " + HexOf(received, 2);
}

std::string TraceDecoder::Mode(std::uint8_t sent, std::uint8_t received) {
    if (sent == SyncByte) return Sync(received);
    if (sent != ReadMode && sent != WriteMode) {
        due_ = Due::Unknown;
        return "no mode that is known";
    }
    std::string mode = sent == ReadMode ? "read mode" : "write mode";
    if (received != Acknowledge) return NotEchoed(mode + " not acknowledged", received);
    due_ = sent == ReadMode ? Due::ReadHigh : Due::WriteHigh;
    return mode;
}

std::string TraceDecoder::High(std::uint8_t sent, std::uint8_t received) {
    if (sent != received) return NotEchoed("address " + HexOf(sent, 2) + ".. not echoed", received);
    address_ = sent * 256;
    due_ = due_ == Due::ReadHigh ? Due::ReadLow : Due::WriteLow;
    return sent == SyncByte ? "sync, or address FF..H: echoed" : "address " + HexText(sent, 2) + "..H";
}

std::string TraceDecoder::ReadValue(std::uint8_t low, std::uint8_t data) {
    // Address 65535 cannot be told from the second byte of a sync; that is what it nearly always is.
    if (low == SyncByte && address_ == SyncByte * 256 && data == Acknowledge) return Sync(data);
    address_ += low;
    due_ = Due::ReadHigh;
    const bool word = address_ % 2 == 1 && lastAddress_ == address_ - 1;
    std::string text = "read " + ValueText(address_, data, word ? std::optional(lastByte_) : std::nullopt);
    lastAddress_ = address_;
    lastByte_ = data;
    return text;
}

std::string TraceDecoder::WriteLow(std::uint8_t sent, std::uint8_t received) {
    if (sent != received) return NotEchoed("address .." + HexOf(sent, 2) + " not echoed", received);
    address_ += sent;
    due_ = Due::WriteData;
    return "address " + HexOf(address_, 4) + ", B" + std::to_string(address_);
}

std::string TraceDecoder::WriteValue(std::uint8_t sent, std::uint8_t received) {
    if (sent != received) return NotEchoed("write " + ValueText(address_, sent, {}) + " not echoed", received);
    due_ = Due::WriteHigh;
    const bool word = address_ % 2 == 1 && lastAddress_ == address_ - 1;
    std::string text = "write " + ValueText(address_, sent, word ? std::optional(lastByte_) : std::nullopt);
    lastAddress_ = address_;
    lastByte_ = sent;
    return text;
}

std::string TraceDecoder::NotEchoed(const std::string& what, std::uint8_t received) {
    due_ = Due::Unknown;
    lastAddress_.reset();
    return what + ": answer " + HexOf(received, 2);
}

} // namespace vantrel
