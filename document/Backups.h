// Safety copies: the values that a board held before a download overwrote them, one set-up file for each. Knows files
// and records; asks nobody anything and deletes nothing.
#pragma once

#include "document/Configuration.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace vantrel {

struct Backup {
    std::filesystem::path file;
    Configuration record; ///< All 218 values are there; SavedDate: when the board held them.
    std::string board; ///< Which board it was, on one line; empty when that was not kept.

    /// In how many of the 218 values it differs from `other`; a board holds no descriptions.
    [[nodiscard]] std::size_t DifferencesTo(const Configuration& other) const;
};

class Backups {
public:
    struct List {
        std::vector<Backup> found; ///< The newest first.
        std::vector<std::string> skipped; ///< Name and reason of what may be meant as one, but cannot be read.
    };

    /// Keeps them in `folder`, which is made when it is needed.
    explicit Backups(std::filesystem::path folder) : folder_(std::move(folder)) {}

    [[nodiscard]] const std::filesystem::path& Folder() const { return folder_; }
    /// Keeps what a board holds under the time `record.SavedDate` and `name`, the set-up's that is to be downloaded.
    /// Never overwrites anything. Returns the new file; throws RuntimeError when it cannot be written.
    [[nodiscard]] std::filesystem::path Keep(const Configuration& record, const std::string& name,
                                             const std::string& board) const;
    /// All that can be read; a folder that is not there holds none.
    [[nodiscard]] List Find() const;

private:
    std::filesystem::path folder_;
};

} // namespace vantrel
