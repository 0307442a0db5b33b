#include "app/HelpFile.h"

#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "text/AsciiCase.h"
#include "text/PathText.h"
#include "text/Windows1252.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <sstream>
#include <utility>

namespace vantrel {

namespace {

constexpr std::string_view TopicMark = "# ";
constexpr std::string_view NameMark = " {#";

HelpTopic TopicOf(std::string_view heading) {
    HelpTopic topic;
    const std::size_t mark = heading.find(NameMark);
    topic.title = heading.substr(0, mark);
    if (mark != std::string_view::npos) {
        const std::size_t begin = mark + NameMark.size();
        topic.name = heading.substr(begin, heading.find('}', begin) - begin);
    }
    topic.text = std::string(TopicMark) + topic.title + "\n";
    return topic;
}

bool HoldsAll(std::string_view text, const std::vector<std::string>& words) {
    const std::string lower = InLowerCase(std::string(text));
    return std::ranges::all_of(
        words, [&](const std::string& word) { return lower.find(InLowerCase(word)) != std::string::npos; });
}

/// Without emphasis, code marks and the targets of links.
std::string WithoutMarkup(std::string_view cell) {
    std::string plain;
    while (!cell.empty()) {
        if (cell.starts_with("](")) {
            cell.remove_prefix(std::min(cell.find(')'), cell.size() - 1) + 1);
            continue;
        }
        if (std::string_view("*`[").find(cell.front()) == std::string_view::npos) plain += cell.front();
        cell.remove_prefix(1);
    }
    return plain;
}

/// The cells of a line of Markdown; none when it is no row of a table.
std::vector<std::string> CellsOf(std::string_view line) {
    std::vector<std::string> cells;
    if (!line.starts_with('|') || line.starts_with("|--")) return cells;
    while (line.size() > 1) {
        line.remove_prefix(1);
        const std::string_view cell = line.substr(0, line.find('|'));
        cells.push_back(WithoutMarkup(cell));
        line.remove_prefix(cell.size());
    }
    return cells;
}

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
    std::vector<std::string> parts;
    for (std::size_t end = text.find(separator); end != std::string_view::npos; end = text.find(separator)) {
        parts.emplace_back(text.substr(0, end));
        text.remove_prefix(end + separator.size());
    }
    parts.emplace_back(text);
    return parts;
}

/// With one blank between words, whatever lines they stood on.
std::string OnOneLineOf(std::string_view text) {
    std::string line;
    for (const std::string& word : SearchWords(text))
        line += (line.empty() ? "" : " ") + word;
    return line;
}

/// How many characters of a message agree with the start of a text in which "..." stands for anything.
std::size_t Agreement(std::string_view text, std::string_view message) {
    std::size_t agreed = 0;
    for (const std::string& part : Split(text, "...")) {
        const std::string fixed = OnOneLineOf(part);
        const std::size_t at = message.find(fixed);
        if (at == std::string_view::npos) break;
        agreed += fixed.size();
        message.remove_prefix(at + fixed.size());
    }
    return agreed;
}

/// The best agreement with one of the texts of a cell, each with the title of its box behind it, in brackets, or not.
std::size_t BestAgreement(std::string_view cell, std::string_view message) {
    std::size_t best = 0;
    for (const std::string& row : Split(cell, " / ")) {
        for (std::string_view text : Split(row, "; ")) {
            if (OnOneLineOf(text).ends_with(')')) text = text.substr(0, text.rfind(" ("));
            best = std::max(best, Agreement(text, message));
        }
    }
    return best;
}

} // namespace

HelpFile::HelpFile(std::string_view text) {
    std::istringstream lines{std::string(text)};
    std::string line;
    while (std::getline(lines, line)) {
        if (line.ends_with('\r')) line.pop_back();
        if (line.starts_with(TopicMark)) {
            topics_.push_back(TopicOf(std::string_view(line).substr(TopicMark.size())));
        } else if (!topics_.empty()) {
            topics_.back().text += line + "\n";
            if (auto cells = CellsOf(line); !cells.empty()) topics_.back().rows.push_back(std::move(cells));
        }
    }
}

HelpFile HelpFile::Read(const std::filesystem::path& path) {
    const std::string named = "The help file \"" + Utf8FromPath(path) + "\" ";
    std::error_code error;
    if (!std::filesystem::exists(path, error)) {
        throw RuntimeError(ErrorNumber::FileNotFound, named + "is missing. Install the program again to have it back.");
    }
    const std::vector<std::uint8_t> bytes = [&] {
        try {
            return ReadWholeFile(path);
        } catch (const RuntimeError& failed) {
            throw RuntimeError(static_cast<ErrorNumber>(failed.Number()),
                               named + "cannot be read. " + failed.Description());
        }
    }();
    HelpFile help(Utf8FromAnyEditor(std::string(bytes.begin(), bytes.end())));
    if (help.topics_.empty()) throw RuntimeError(ErrorNumber::BadFileFormat, named + "holds no topic.");
    return help;
}

std::optional<std::size_t> HelpFile::Find(std::string_view name) const {
    const auto found =
        std::find_if(topics_.begin(), topics_.end(), [name](const HelpTopic& topic) { return topic.name == name; });
    if (found == topics_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - topics_.begin());
}

std::vector<std::size_t> HelpFile::Search(std::string_view words) const {
    const std::vector<std::string> wanted = SearchWords(words);
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < topics_.size(); ++i) {
        if (HoldsAll(topics_[i].text, wanted)) found.push_back(i);
    }
    return found;
}

std::optional<std::size_t> HelpFile::FindRow(std::size_t topic, std::string_view words, std::size_t from) const {
    const std::vector<std::string> wanted = SearchWords(words);
    const auto& rows = topics_.at(topic).rows;
    for (std::size_t row = from; row < rows.size() && !wanted.empty(); ++row) {
        std::string text;
        for (const std::string& cell : rows[row])
            text += cell + "\n";
        if (HoldsAll(text, wanted)) return row;
    }
    return std::nullopt;
}

std::optional<HelpPlace> HelpFile::FindMessage(std::string_view message) const {
    constexpr std::size_t tooShort = 8; // A few characters agree with anything.
    const std::string text = OnOneLineOf(message);
    std::size_t best = tooShort;
    std::optional<HelpPlace> found;
    for (std::size_t topic = 0; topic < topics_.size(); ++topic) {
        for (std::size_t row = 0; row < topics_[topic].rows.size(); ++row) {
            const std::size_t agreement = BestAgreement(topics_[topic].rows[row].front(), text);
            if (agreement <= best) continue;
            best = agreement;
            found = HelpPlace{topic, row};
        }
    }
    return found;
}

std::vector<std::string> SearchWords(std::string_view text) {
    std::istringstream words{std::string(text)};
    return {std::istream_iterator<std::string>(words), std::istream_iterator<std::string>()};
}

} // namespace vantrel
