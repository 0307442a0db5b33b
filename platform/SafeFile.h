// Whole files, read at once and replaced at once: at every instant the disk holds the old file or the new one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace vantrel {

/// Hears a sentence for the user, before the risky thing that it tells of happens.
using SafeFileWarning = std::function<void(const std::string&)>;

/// The file's bytes. Throws RuntimeError: 53 not found, 70 not permitted, 75 any other failure (a folder, a file of
/// more than 16 MiB), 76 no such folder.
[[nodiscard]] std::vector<std::uint8_t> ReadWholeFile(const std::filesystem::path& path);

/// Throws what ReplaceFile would, as far as that can be told without writing: for those who fetch the bytes first.
void RequireReplaceable(const std::filesystem::path& path);

/// What happens to an existing file that is longer than the new bytes.
enum class OldTail { Keep, Drop };

/// Writes `bytes` from offset 0 to a temporary file beside the target, flushes it to the disk and renames it over the
/// target; what such a replacement of this file left behind when it was cut off is cleared away first. Links are
/// followed, permissions kept. Where the folder takes no new file, it warns and writes in place; it also warns when the
/// file has a second name that will keep the old content. Throws RuntimeError (61 disk full, 70, 75, 76); the old file
/// is then untouched, unless the error says otherwise.
void ReplaceFile(const std::filesystem::path& path, std::span<const std::uint8_t> bytes, OldTail tail,
                 const SafeFileWarning& warn);

} // namespace vantrel
