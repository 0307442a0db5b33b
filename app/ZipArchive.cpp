#include "app/ZipArchive.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace vantrel {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t MostCounted = std::numeric_limits<std::uint16_t>::max();
constexpr std::size_t MostBytes = std::numeric_limits<std::uint32_t>::max();

// The records of the format, by their signatures; lengths without names.
constexpr std::uint32_t LocalSignature = 0x04034B50;
constexpr std::uint32_t CentralSignature = 0x02014B50;
constexpr std::uint32_t EndSignature = 0x06054B50;
constexpr std::size_t LocalLength = 30;
constexpr std::size_t CentralLength = 46;
constexpr std::size_t EndLength = 22;
constexpr std::uint16_t Version = 20; ///< 2.0 can read it.
constexpr std::uint16_t NamesAreUtf8 = 0x0800;

void Add16(Bytes& bytes, std::size_t number) {
    bytes.push_back(static_cast<std::uint8_t>(number & 0xFFU));
    bytes.push_back(static_cast<std::uint8_t>(number >> 8U & 0xFFU));
}

void Add32(Bytes& bytes, std::size_t number) {
    Add16(bytes, number & 0xFFFFU);
    Add16(bytes, number >> 16U & 0xFFFFU);
}

struct DosTime {
    std::uint16_t time;
    std::uint16_t date;
};

DosTime DosTimeOf(std::chrono::local_seconds when) {
    using namespace std::chrono;
    constexpr int firstYear = 1980;
    constexpr int lastYear = 2107;
    const auto day = floor<days>(when);
    const year_month_day date(day);
    const hh_mm_ss time(when - day);
    const int counted = std::clamp(static_cast<int>(date.year()), firstYear, lastYear) - firstYear;
    return {static_cast<std::uint16_t>(time.hours().count() << 11 | time.minutes().count() << 5 |
                                       time.seconds().count() / 2),
            static_cast<std::uint16_t>(counted << 9 | static_cast<int>(static_cast<unsigned>(date.month())) << 5 |
                                       static_cast<int>(static_cast<unsigned>(date.day())))};
}

void RequireHeld(std::span<const ZipEntry> entries) {
    std::size_t length = EndLength;
    bool held = entries.size() <= MostCounted;
    for (const ZipEntry& entry : entries) {
        held = held && entry.name.size() <= MostCounted && entry.bytes.size() <= MostBytes;
        length += LocalLength + CentralLength + 2 * entry.name.size() + entry.bytes.size();
        held = held && length <= MostBytes;
    }
    if (!held) throw RuntimeError(ErrorNumber::Overflow, "This is more than a zip archive holds.");
}

/// What stands in both records of an entry, from the version that reads it to the length of the name; no extra field.
void AddFacts(Bytes& bytes, const ZipEntry& entry, DosTime when) {
    Add16(bytes, Version);
    Add16(bytes, NamesAreUtf8);
    Add16(bytes, 0); // Stored.
    Add16(bytes, when.time);
    Add16(bytes, when.date);
    Add32(bytes, Crc32(entry.bytes));
    Add32(bytes, entry.bytes.size());
    Add32(bytes, entry.bytes.size());
    Add16(bytes, entry.name.size());
    Add16(bytes, 0);
}

void AddCentral(Bytes& bytes, const ZipEntry& entry, DosTime when, std::size_t offset) {
    Add32(bytes, CentralSignature);
    Add16(bytes, Version);
    AddFacts(bytes, entry, when);
    Add16(bytes, 0); // No comment,
    Add16(bytes, 0); // on the first disk,
    Add16(bytes, 0); // with no attributes
    Add32(bytes, 0); // of any host.
    Add32(bytes, offset);
    bytes.insert(bytes.end(), entry.name.begin(), entry.name.end());
}

} // namespace

std::uint32_t Crc32(std::span<const std::uint8_t> bytes) {
    constexpr std::uint32_t polynomial = 0xEDB88320;
    std::uint32_t crc = 0xFFFFFFFF;
    for (const std::uint8_t byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1U) != 0 ? crc >> 1U ^ polynomial : crc >> 1U;
    }
    return ~crc;
}

std::vector<std::uint8_t> ZipBytes(std::span<const ZipEntry> entries, std::chrono::local_seconds when) {
    RequireHeld(entries);
    const DosTime time = DosTimeOf(when);
    Bytes bytes;
    Bytes central;
    for (const ZipEntry& entry : entries) {
        AddCentral(central, entry, time, bytes.size());
        Add32(bytes, LocalSignature);
        AddFacts(bytes, entry, time);
        bytes.insert(bytes.end(), entry.name.begin(), entry.name.end());
        bytes.insert(bytes.end(), entry.bytes.begin(), entry.bytes.end());
    }
    const std::size_t centralAt = bytes.size();
    bytes.insert(bytes.end(), central.begin(), central.end());
    Add32(bytes, EndSignature);
    Add32(bytes, 0); // One disk.
    Add16(bytes, entries.size());
    Add16(bytes, entries.size());
    Add32(bytes, central.size());
    Add32(bytes, centralAt);
    Add16(bytes, 0);
    return bytes;
}

} // namespace vantrel
