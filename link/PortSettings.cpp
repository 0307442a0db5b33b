#include "link/PortSettings.h"

#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "platform/SerialDevices.h"
#include "text/NumberText.h"
#include "text/PathText.h"
#include "text/SequentialText.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <system_error>
#include <vector>

namespace vantrel {

namespace {

/// What the file holds; empty when there is no file.
std::string Content(const std::filesystem::path& file) {
    try {
        const std::vector<std::uint8_t> bytes = ReadWholeFile(file);
        return {bytes.begin(), bytes.end()};
    } catch (const RuntimeError& error) {
        const bool missing = error.Number() == static_cast<int>(ErrorNumber::FileNotFound) ||
                             error.Number() == static_cast<int>(ErrorNumber::PathNotFound);
        if (!missing) throw;
        return {};
    }
}

/// The number that a text begins with; far out of every range for one that is too large to be held.
std::int32_t StoredNumber(const std::string& item) {
    using Limits = std::numeric_limits<std::int32_t>;
    return LeadingInteger(item).value_or(LeadingNumber(item) < 0 ? Limits::min() : Limits::max());
}

} // namespace

PortRange PortRangeOf(const std::filesystem::path& supportFolder) {
    const PortRange usual;
    return {usual.minimum, std::max(usual.maximum, HighestSerialPort(supportFolder))};
}

StoredPortSettings ReadPortSettings(const std::filesystem::path& file, PortRange range) {
    StoredPortSettings stored;
    const std::string content = Content(file);
    stored.present = !content.empty();
    const std::string line = content.substr(0, content.find_first_of("\r\n"));
    SequentialText items(line);
    if (items.AtEnd()) return stored;
    const std::string port = items.NextItem();
    const std::int32_t number = StoredNumber(port);
    stored.settings.number = std::clamp(number, range.minimum, range.maximum);
    if (stored.settings.number != number) stored.storedPort = port;
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
