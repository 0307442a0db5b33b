// Unsaved edits, kept on the disk against a flat battery and offered again afterwards: one file for each program that
// runs. Knows the document and files; asks nobody anything.
#pragma once

#include "document/Document.h"
#include "platform/Clock.h"
#include "platform/FileClaim.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

/// Edits that a program had no time to save. While this lives no other program offers them.
class LeftBehind {
public:
    std::filesystem::path file; ///< The copy.
    std::filesystem::path path; ///< The document's own; empty: it had none.
    OleDate when; ///< The copy was written.
    Configuration record;
    FileClaim claim;

    /// Gives the edits up for good.
    void Delete() const;
};

class UnsavedCopy {
public:
    /// Keeps copies in `folder`, which is made when it is needed. What is borrowed must outlive it.
    UnsavedCopy(std::filesystem::path folder, const Document& document, const Clock& clock);

    /// Call a few times a second. Once a minute it keeps what has been edited since it looked last; a copy of edits
    /// that are saved by now, or given up, goes at once. A sentence for the user when the edits cannot be kept, the
    /// first time.
    [[nodiscard]] std::optional<std::string> Tick();
    /// The program ends in good order: nothing stays.
    void Discard();

    /// What programs that run no more have left, the newest first.
    [[nodiscard]] std::vector<LeftBehind> Find() const;
    /// That copy is of this program's document now, which has just taken its record.
    void Adopt(LeftBehind left);

private:
    void Keep();
    void Write(const std::vector<std::uint8_t>& bytes);

    std::filesystem::path folder_;
    const Document& document_;
    const Clock& clock_;
    MonotonicTime nextLook_;
    std::filesystem::path file_; ///< Empty: nothing is kept.
    std::optional<FileClaim> claim_;
    std::vector<std::uint8_t> kept_; ///< The record in the file.
    int generation_ = 0; ///< Of the document in the file.
    bool told_ = false;
};

} // namespace vantrel
