// Several files in one, as every host can open it: a zip archive whose contents are stored as they are. Own code: of
// the libraries that write one none comes for both hosts, and what is stored needs no compression. Pure.
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vantrel {

struct ZipEntry {
    std::string name; ///< UTF-8; folders are separated by "/".
    std::vector<std::uint8_t> bytes;
};

/// CRC-32 as zip archives have it.
[[nodiscard]] std::uint32_t Crc32(std::span<const std::uint8_t> bytes);

/// The archive, every entry dated `when` (the format counts two seconds at a time, from 1980 to 2107). Throws
/// RuntimeError 6 for more than the format holds: 65535 entries, names of 65535 bytes, 4 GiB in all.
[[nodiscard]] std::vector<std::uint8_t> ZipBytes(std::span<const ZipEntry> entries, std::chrono::local_seconds when);

} // namespace vantrel
