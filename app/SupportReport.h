// What the maintainers need to see of a problem, in one file: versions, settings, trace, event log, set-up. Lists what
// goes in before anything is written; nothing else goes in. Knows files and the document; no toolkit.
#pragma once

#include "app/Program.h"
#include "app/ZipArchive.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vantrel {

/// What whoever writes the report hands in beside the program's own state.
struct SupportSources {
    std::string program; ///< "vantrel" or "vantrelctl".
    std::string toolkit{}; ///< "Qt 6.4.2"; empty without one.
    bool withSetup = true; ///< The document goes in.
    std::filesystem::path trace{}; ///< The last trace; empty for none.
    /// A text under a name, for what is kept in memory: the event log as "events.csv".
    struct Text {
        std::string name;
        std::string what; ///< A few words for the list.
        std::string text;
    };
    std::vector<Text> texts{};
    std::vector<std::filesystem::path> files{}; ///< Whatever else belongs to it.
};

class SupportReport {
public:
    struct Item {
        std::string name; ///< In the archive; never twice.
        std::string what; ///< A few words.
        std::vector<std::uint8_t> bytes;
    };

    /// In bytes: of a longer trace only the end goes in, from the beginning of a line.
    static constexpr std::size_t MostOfTrace = std::size_t{4} << 20U;

    /// Reads everything. What cannot be read is left out, and said. `now`: for the dates of the files.
    SupportReport(const Program& state, const SupportSources& sources, std::chrono::local_seconds now);

    [[nodiscard]] const std::vector<Item>& Items() const { return items_; }
    /// A sentence for each file that could not be read.
    [[nodiscard]] const std::vector<std::string>& LeftOut() const { return leftOut_; }
    /// The list for people: name, what it is, size; behind it what was left out.
    [[nodiscard]] std::string ListText() const;
    /// The archive: all items, and the list as "contents.txt". Throws as ZipBytes.
    [[nodiscard]] std::vector<std::uint8_t> Archive() const;

private:
    void AddVersions(const SupportSources& sources);
    void AddSettings(const Program& state);
    void AddSetup(const Program& state);
    void AddTrace(const std::filesystem::path& file);
    void Add(std::string name, std::string what, std::vector<std::uint8_t> bytes);
    void AddText(std::string name, std::string what, std::string_view text);
    /// A file that is there; `named`: it ought to be.
    void AddFile(const std::filesystem::path& file, std::string what, bool named);

    std::vector<Item> items_;
    std::vector<std::string> leftOut_;
    std::chrono::local_seconds now_;
};

/// "1,234 bytes".
[[nodiscard]] std::string SizeText(std::size_t bytes);

} // namespace vantrel
