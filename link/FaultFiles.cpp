// Line by line, so that one that is short of a field spoils itself only.
#include "link/FaultFiles.h"

#include "platform/SafeFile.h"
#include "text/SequentialText.h"
#include "text/Windows1252.h"

#include <algorithm>
#include <cstdint>
#include <system_error>

namespace vantrel {

namespace {

std::string WithoutTrailingBlanks(std::string text) {
    text.erase(text.find_last_not_of(" \t\r") + 1);
    return text;
}

} // namespace

std::optional<std::vector<FaultRecord>> ReadFaultFile(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::exists(file, error)) return std::nullopt;
    const std::vector<std::uint8_t> bytes = ReadWholeFile(file);
    const std::string text = Utf8FromAnyEditor(std::string(bytes.begin(), bytes.end()));
    std::string_view rest = text;
    rest = rest.substr(0, rest.find(ControlZ));
    std::vector<FaultRecord> records;
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        SequentialText items(line);
        if (items.AtEnd()) continue;
        FaultRecord record;
        record.code = WithoutTrailingBlanks(items.NextItem());
        record.description = WithoutTrailingBlanks(items.NextItem());
        records.push_back(std::move(record));
    }
    return records;
}

} // namespace vantrel
