// What replacing a file needs from the host and the standard library does not give. For SafeFile only.
// An answer of std::errc{} is success; a full disk is always no_space_on_device, a refusal permission_denied.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <system_error>

namespace vantrel::host {

/// A file open for writing from offset 0, closed with the object. Nothing is ever truncated by opening. One that it has
/// created counts as abandoned when this object has gone, however the process ended.
class OutputFile {
public:
    OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    /// A new file; file_exists when the name is taken. It gets the permissions of `model`, as far as the host lets us,
    /// before it holds a byte; without one, those of any new file.
    [[nodiscard]] std::errc Create(const std::filesystem::path& path,
                                   const std::optional<std::filesystem::path>& model);
    [[nodiscard]] std::errc OpenExisting(const std::filesystem::path& path);
    [[nodiscard]] std::errc Write(std::span<const std::uint8_t> bytes);
    /// How many bytes have been written so far.
    [[nodiscard]] std::uintmax_t Written() const { return written_; }
    /// Cuts the file off behind what was written.
    [[nodiscard]] std::errc CutOff();
    /// Ends the writing: when it has succeeded the bytes are on the disk, not only in the host's memory.
    [[nodiscard]] std::errc FlushAndClose();

private:
    std::intptr_t handle_ = -1;
    std::intptr_t claim_ = -1; ///< Tells others that a created file is not abandoned, where the host needs it told.
    std::uintmax_t written_ = 0;
};

/// Why the file cannot be read: permission_denied, text_file_busy while another program keeps it to itself, io_error.
[[nodiscard]] std::errc ReadProblem(const std::filesystem::path& path);

/// Removes a file that an OutputFile has created, when it is abandoned and the host lets us.
void RemoveAbandoned(const std::filesystem::path& path);

/// What is already in the way of replacing a file, or of making it: permission_denied when this user may not change its
/// content, text_file_busy while another program lets nobody replace it, invalid_argument for a name that no file can
/// have. Changes nothing.
[[nodiscard]] std::errc WriteProblem(const std::filesystem::path& path);

/// Puts `from` in the place of `to` in one step, whether `to` exists or not. Both stand in the same folder. On hosts
/// where an open file cannot be replaced it waits a little for whoever only looks at it (a virus scanner, an index);
/// text_file_busy when it is still open then.
[[nodiscard]] std::errc RenameOver(const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace vantrel::host
