#include "app/RecentFiles.h"

#include "text/PathText.h"
#include "text/PrintableText.h"
#include "text/Utf8.h"

#include <algorithm>
#include <ranges>

namespace vantrel {

namespace {

constexpr std::size_t LongestCaption = 60; ///< In bytes.

/// What of a path can stand in a menu: whole folders as long as they fit.
std::string Shortened(const std::string& path) {
    if (path.size() <= LongestCaption) return path;
    std::size_t begin = path.size() - LongestCaption;
    const std::size_t folder = path.find_first_of("/\\", begin);
    if (folder != std::string::npos) begin = folder;
    while (begin < path.size() && ContinuesCharacter(path[begin]))
        ++begin;
    return "..." + path.substr(begin);
}

} // namespace

RecentFiles::RecentFiles(const std::vector<std::string>& remembered) {
    for (const std::string& file : std::views::reverse(remembered)) {
        if (!file.empty()) Note(PathFromUtf8(file));
    }
}

bool RecentFiles::Note(const std::filesystem::path& file) {
    if (!files_.empty() && files_.front() == file) return false;
    std::erase(files_, file);
    files_.insert(files_.begin(), file);
    if (files_.size() > Most) files_.resize(Most);
    return true;
}

std::string RecentCaption(std::size_t place, const std::filesystem::path& file) {
    std::string caption = "&" + std::to_string(place + 1) + " ";
    for (const char character : Shortened(PrintableText(Utf8FromPath(file), Layout::Drop))) {
        caption += character;
        // A single one would be an access key.
        if (character == '&') caption += character;
    }
    return caption;
}

} // namespace vantrel
