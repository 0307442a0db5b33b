// Paths as UTF-8 text and back, whatever the host's own encoding is. Uses nothing.
#pragma once

#include <filesystem>
#include <string>

namespace vantrel {

[[nodiscard]] inline std::string Utf8FromPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

[[nodiscard]] inline std::filesystem::path PathFromUtf8(const std::string& text) {
    return {std::u8string(text.begin(), text.end())};
}

} // namespace vantrel
