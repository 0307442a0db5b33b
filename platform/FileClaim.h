// A mark in a folder that says that a program is running: held by one at a time, and given up when it ends, however.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace vantrel {

/// Holds a file for as long as it lives; then the file is gone. One that a killed program has left can be taken again.
class FileClaim {
public:
    /// Makes the file if there is none. Nothing while somebody else holds it, in this program or in another, and where
    /// the host cannot tell.
    [[nodiscard]] static std::optional<FileClaim> Take(const std::filesystem::path& path);
    FileClaim(FileClaim&& other) noexcept;
    FileClaim& operator=(FileClaim&& other) noexcept;
    FileClaim(const FileClaim&) = delete;
    FileClaim& operator=(const FileClaim&) = delete;
    ~FileClaim();

private:
    FileClaim(std::filesystem::path path, std::intptr_t handle);

    std::filesystem::path path_;
    std::intptr_t handle_;
};

} // namespace vantrel
