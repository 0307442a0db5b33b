// The description files: what the board's fault and error codes mean, in files that can be changed without a new
// release. Knows the disk and the files' code page.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

struct FaultRecord {
    std::string code; ///< Hexadecimal, as it stands in the file: at least two digits, either case.
    std::string description; ///< UTF-8.
};

/// The records of a file, one a line: code and description, separated by a comma, either of them in double quotes or
/// not. Nothing when there is no such file. Throws RuntimeError when it cannot be read.
[[nodiscard]] std::optional<std::vector<FaultRecord>> ReadFaultFile(const std::filesystem::path& file);

} // namespace vantrel
