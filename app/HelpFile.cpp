#include "app/HelpFile.h"

#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
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

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

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
        const std::string text = Lower(topics_[i].text);
        if (std::all_of(wanted.begin(), wanted.end(),
                        [&text](const std::string& word) { return text.find(Lower(word)) != std::string::npos; }))
            found.push_back(i);
    }
    return found;
}

std::vector<std::string> SearchWords(std::string_view text) {
    std::istringstream words{std::string(text)};
    return {std::istream_iterator<std::string>(words), std::istream_iterator<std::string>()};
}

} // namespace vantrel
