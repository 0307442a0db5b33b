// Which board is at the other end, as far as it can be told, and which one every set-up file was last sent to or
// fetched from. Knows the link and one file of its own; asks nobody anything.
#pragma once

#include "link/RSComm.h"
#include "platform/Task.h"
#include "platform/TurnQueue.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantrel {

/// Boards of the same address and program ident cannot be told apart.
struct BoardIdentity {
    int networkAddress = 0; ///< 0..255.
    std::string ident; ///< Of the program in it, eight characters, UTF-8.

    /// "network address 3, program ident "K5216505""
    [[nodiscard]] std::string Text() const;
    /// The board whose Text() that is; nothing for any other text.
    [[nodiscard]] static std::optional<BoardIdentity> FromText(const std::string& text);
    /// What nobody could tell apart by reading it is the same.
    friend bool operator==(const BoardIdentity& one, const BoardIdentity& other) { return one.Text() == other.Text(); }
};

/// Asks the board, as long as `wanted`. Nothing when any of it was not read clearly.
[[nodiscard]] TaskOf<std::optional<BoardIdentity>> ReadBoardIdentity(RSComm& link, TurnQueue& turns,
                                                                     std::function<bool()> wanted);

class KnownBoards {
public:
    static constexpr std::size_t Most = 500;

    /// Remembers in `file`, whose folder is made when it is needed.
    explicit KnownBoards(std::filesystem::path file) : file_(std::move(file)) {}

    /// The board of a set-up file, which is named by its full path; nothing for one that is not known, and when the
    /// memory cannot be read.
    [[nodiscard]] std::optional<BoardIdentity> Of(const std::filesystem::path& setup) const;
    /// From now on it is this one. Beyond `Most` the file that was noted longest ago is forgotten. Throws RuntimeError
    /// when it cannot be read or written.
    void Note(const std::filesystem::path& setup, const BoardIdentity& board) const;

private:
    struct Entry {
        std::string setup;
        BoardIdentity board;
    };
    /// Lines that make no sense are none. Throws RuntimeError when the file is there and cannot be read.
    [[nodiscard]] std::vector<Entry> Read() const;

    std::filesystem::path file_;
};

} // namespace vantrel
