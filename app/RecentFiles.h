// The set-up files that were opened or saved last, the newest first. Knows paths only; keeps nothing on the disk.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace vantrel {

class RecentFiles {
public:
    static constexpr std::size_t Most = 5;

    RecentFiles() = default;
    /// As they were remembered, in UTF-8; what is empty, there twice or too many is dropped.
    explicit RecentFiles(const std::vector<std::string>& remembered);

    /// Puts a file in front. False when it stood there already.
    bool Note(const std::filesystem::path& file);
    [[nodiscard]] const std::vector<std::filesystem::path>& List() const { return files_; }

private:
    std::vector<std::filesystem::path> files_;
};

/// The caption of a menu entry, "&1 /plant/line 3.sdt": its place, from 0, is its access key. A path that is far too
/// long for a menu has "..." for its first folders, and for the beginning of its name where that is too long alone.
[[nodiscard]] std::string RecentCaption(std::size_t place, const std::filesystem::path& file);

} // namespace vantrel
