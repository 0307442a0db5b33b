// The program's help: a text of topics, each headed by a line "# Title {#name}", in Markdown. Knows no window.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

struct HelpTopic {
    std::string name; ///< What links name it by: "[text](#name)".
    std::string title;
    std::string text; ///< Markdown, the title as its first heading.
    /// The rows of its tables as they are read, headings included: their cells, without markup.
    std::vector<std::vector<std::string>> rows{};
};

/// A row of a topic's tables.
struct HelpPlace {
    std::size_t topic = 0;
    std::size_t row = 0;
};

class HelpFile {
public:
    /// `text`: UTF-8. What stands before the first topic belongs to nobody and is left out.
    explicit HelpFile(std::string_view text);
    /// Throws RuntimeError when the file is missing (53), cannot be read (as ReadWholeFile) or holds no
    /// topic (321).
    [[nodiscard]] static HelpFile Read(const std::filesystem::path& path);

    /// In the order of the file.
    [[nodiscard]] const std::vector<HelpTopic>& Topics() const { return topics_; }
    [[nodiscard]] std::optional<std::size_t> Find(std::string_view name) const;
    /// The topics in which every one of the words occurs, in any case and also as a part of a word; all of them when
    /// `words` is blank.
    [[nodiscard]] std::vector<std::size_t> Search(std::string_view words) const;

    /// The first row of the topic, from `from` on, that holds every one of the words; nothing for blank words.
    [[nodiscard]] std::optional<std::size_t> FindRow(std::size_t topic, std::string_view words,
                                                     std::size_t from = 0) const;
    /// The row that explains a message: the one whose first cell, "..." standing for anything, agrees with most of the
    /// message's text.
    [[nodiscard]] std::optional<HelpPlace> FindMessage(std::string_view message) const;

private:
    std::vector<HelpTopic> topics_;
};

/// The words of a search text.
[[nodiscard]] std::vector<std::string> SearchWords(std::string_view text);

} // namespace vantrel
