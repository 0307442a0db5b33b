// What the target board view knows from the disk about the board's user program: its board type and revision. Knows the
// program folder and the disk.
#pragma once

#include "link/ConnectionCheck.h"
#include "platform/Folders.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>

namespace vantrel {

struct UserProgram {
    /// Character code of the first character of the program file ("6" is 54); 0 when the file is missing or empty.
    std::int16_t boardType = 0;
    std::string revIdentOnDisk = "-"; ///< "-" when unknown.
    std::array<int, 2> revisionNumbers{}; ///< First and second, 0..255; 0 when unknown.
};

/// The program file that belongs to a set-up file: beside it, with the same base name and the extension TRV, else
/// `K5216-505.TRV` of the program folder's `Program`. Extensions are matched without regard to case.
[[nodiscard]] std::filesystem::path FindUserProgram(const std::filesystem::path& setupFile,
                                                    const ProgramFolder& folder);

/// Reads the program file's board type and the revision file beside it (extension REV). A missing file leaves its
/// values unknown. Throws RuntimeError when one that is there cannot be read, 321 when the revision's numbers are none
/// of 0..255.
[[nodiscard]] UserProgram ReadUserProgram(const std::filesystem::path& programFile);

/// What the check of the connection knows beforehand. Of a program that cannot be read nothing is.
[[nodiscard]] CheckSubject SubjectOfCheck(std::string portName, const std::filesystem::path& setupFile,
                                          const ProgramFolder& folder);

} // namespace vantrel
