// The binary set-up file: record to bytes and bytes to record. Knows the record and the file's code page, no disk.
#pragma once

#include "document/Configuration.h"
#include "platform/RuntimeError.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vantrel {

/// A file whose bytes stop making sense. The description names the offset.
class BadSetupFile : public RuntimeError {
public:
    BadSetupFile(ErrorNumber number, std::size_t offset, const std::string& what);
    /// Offset in bytes from the start of the file at which it stopped making sense.
    [[nodiscard]] std::size_t Offset() const { return offset_; }

private:
    std::size_t offset_;
};

/// The record as bytes: little-endian, fields in order without padding, texts in Windows-1252 behind a 2-byte length,
/// each array behind a 10-byte header (dimensions 1, element count, lower bound 0). Throws RuntimeError 6 for a text
/// of more than 65535 bytes.
[[nodiscard]] std::vector<std::uint8_t> SetupFileBytes(const Configuration& record);

/// The record at the start of `bytes`, arrays sized as the file says; bytes behind it are ignored. Throws
/// BadSetupFile (62 file too short, also for the count of an array; 321 no such array header).
[[nodiscard]] Configuration ParseSetupFile(std::span<const std::uint8_t> bytes);

} // namespace vantrel
