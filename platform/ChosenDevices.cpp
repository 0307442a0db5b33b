#include "platform/ChosenDevices.h"

#include "platform/NetworkAddress.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "text/NumberText.h"

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string_view>
#include <vector>

namespace vantrel {

namespace {

constexpr std::string_view Section = "[Ports]";
constexpr std::string_view Key = "COM";

std::filesystem::path FileIn(const std::filesystem::path& supportFolder) { return supportFolder / "vantrel.ini"; }

std::vector<std::string> LinesOf(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::exists(file, error)) return {};
    const std::vector<std::uint8_t> bytes = ReadWholeFile(file);
    std::istringstream text(std::string(bytes.begin(), bytes.end()));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        if (line.ends_with('\r')) line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

/// The port number of a line "COM2=..."; 0 for every other line.
int NumberOf(const std::string& line) {
    const std::size_t end = line.find('=');
    if (!line.starts_with(Key) || end == std::string::npos) return 0;
    return std::max(WholeNumber(line.substr(Key.size(), end - Key.size())).value_or(0), 0);
}

/// The toolkit, which writes the file as well, quotes a text where it has to.
std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') quoted += '\\';
        quoted += c;
    }
    return quoted + '"';
}

std::string Unquoted(std::string_view quoted) {
    std::string text;
    for (std::size_t i = 0; i < quoted.size(); ++i) {
        if (quoted[i] == '"') continue;
        if (quoted[i] == '\\' && i + 1 < quoted.size()) ++i;
        text += quoted[i];
    }
    return text;
}

using Lines = std::vector<std::string>;

/// The lines of the section, without its heading.
struct Part {
    Lines::iterator begin;
    Lines::iterator end;
};
Part SectionOf(Lines& lines) {
    auto begin = std::find(lines.begin(), lines.end(), Section);
    if (begin != lines.end()) ++begin;
    return {begin, std::find_if(begin, lines.end(), [](const std::string& line) { return line.starts_with('['); })};
}

} // namespace

std::map<int, std::string> ChosenDevices(const std::filesystem::path& supportFolder) {
    std::map<int, std::string> chosen;
    try {
        Lines lines = LinesOf(FileIn(supportFolder));
        const Part part = SectionOf(lines);
        for (auto line = part.begin; line != part.end; ++line) {
            const std::string device = Unquoted(std::string_view(*line).substr(line->find('=') + 1));
            if (NumberOf(*line) > 0 && !device.empty()) chosen[NumberOf(*line)] = device;
        }
    } catch (const RuntimeError&) {
        // The ports work without it; whoever writes the file hears of it.
        return {};
    }
    return chosen;
}

std::map<int, std::string> ChosenNetworkPorts(const std::filesystem::path& supportFolder) {
    std::map<int, std::string> chosen = ChosenDevices(supportFolder);
    std::erase_if(chosen, [](const auto& each) { return !MeantAsNetworkAddress(each.second); });
    return chosen;
}

void KeepChosenDevice(const std::filesystem::path& supportFolder, int number, const std::string& device) {
    const std::filesystem::path file = FileIn(supportFolder);
    Lines lines = LinesOf(file);
    if (std::find(lines.begin(), lines.end(), Section) == lines.end()) lines.emplace_back(Section);
    const Part part = SectionOf(lines);
    lines.erase(std::remove_if(part.begin, part.end, [&](const auto& line) { return NumberOf(line) == number; }),
                part.end);
    if (!device.empty())
        lines.insert(SectionOf(lines).begin, std::string(Key) + std::to_string(number) + "=" + Quoted(device));
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    std::error_code error;
    std::filesystem::create_directories(supportFolder, error);
    ReplaceFile(file, bytes, OldTail::Drop, [](const std::string&) {});
}

} // namespace vantrel
