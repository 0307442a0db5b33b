// The Windows claim: the file is open for one alone, and deleted by the host when it is closed.
#include "platform/FileClaim.h"

#include <utility>

#include <windows.h>

namespace vantrel {

namespace {

constexpr std::intptr_t None = -1;

} // namespace

std::optional<FileClaim> FileClaim::Take(const std::filesystem::path& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::nullopt;
    return FileClaim(path, reinterpret_cast<std::intptr_t>(file));
}

FileClaim::FileClaim(std::filesystem::path path, std::intptr_t handle) : path_(std::move(path)), handle_(handle) {}

FileClaim::FileClaim(FileClaim&& other) noexcept
    : path_(std::move(other.path_)), handle_(std::exchange(other.handle_, None)) {}

FileClaim& FileClaim::operator=(FileClaim&& other) noexcept {
    std::swap(path_, other.path_);
    std::swap(handle_, other.handle_);
    return *this;
}

FileClaim::~FileClaim() {
    if (handle_ != None) CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

} // namespace vantrel
