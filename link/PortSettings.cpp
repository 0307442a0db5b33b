#include "link/PortSettings.h"

#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "text/NumberText.h"
#include "text/SequentialText.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <system_error>
#include <vector>

namespace vantrel {

namespace {

int StoredNumber(const std::string& item, const std::filesystem::path& file) {
    using Limits = std::numeric_limits<std::int16_t>;
    const std::int32_t number = LeadingInteger(item).value_or(std::numeric_limits<std::int32_t>::max());
    if (number < Limits::min() || number > Limits::max()) {
        throw RuntimeError(ErrorNumber::Overflow,
                           "Overflow: the port number in " + Utf8FromPath(file) + " is too large.");
    }
    return number;
}

} // namespace

StoredPortSettings ReadPortSettings(const std::filesystem::path& file, PortRange range) {
    StoredPortSettings stored;
    if (!std::filesystem::exists(file)) return stored;
    const std::vector<std::uint8_t> bytes = ReadWholeFile(file);
    const std::string content(bytes.begin(), bytes.end());
    SequentialText items(content);
    if (items.AtEnd()) return stored;
    stored.present = true;
    stored.storedNumber = StoredNumber(items.NextItem(), file);
    stored.settings.number = std::clamp(stored.storedNumber, range.minimum, range.maximum);
    stored.settings.speed = LeadingNumber(items.NextItem()) == 19200.0 ? "19200" : "9600";
    return stored;
}

void WritePortSettings(const std::filesystem::path& file, const PortSettings& settings) {
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    if (error) {
        throw RuntimeError(ErrorNumber::PathFileAccess, "The folder " + Utf8FromPath(file.parent_path()) +
                                                            " cannot be created: " + error.message() + ".");
    }
    const std::string line = std::to_string(settings.number) + "," + settings.speed + "\r\n";
    const std::vector<std::uint8_t> bytes(line.begin(), line.end());
    // Two words that can be set again in the dialog: written in place is good enough where it has to be.
    ReplaceFile(file, bytes, OldTail::Drop, [](const std::string&) {});
}

std::string SettingsString(const PortSettings& settings) { return settings.speed + ",n,8,1"; }

} // namespace vantrel
