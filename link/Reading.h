// What is known of a value after it was asked for. Judged once, in this room; nobody else asks whether a read failed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace vantrel {

/// Stands where no value does.
inline constexpr const char* UnreadText = "-";

/// One value of the board's memory as read: a value, doubtful, or nothing because the link has failed. A data byte of a
/// read has no check on the line: a value is what came in step, each answer at once and its own.
class Reading {
public:
    enum class Kind {
        Value, ///< Every answer came in step, at once and alone.
        Doubtful, ///< Twice something was wrong with the answers, or nothing of use came; the link stands.
        LinkFailed, ///< The board could not be reached.
    };

    [[nodiscard]] static Reading Value(std::uint32_t number) { return {Kind::Value, number}; }
    /// `number`: what the line said all the same, if anything.
    [[nodiscard]] static Reading Doubtful(std::optional<std::uint32_t> number) { return {Kind::Doubtful, number}; }
    [[nodiscard]] static Reading LinkFailed() { return {Kind::LinkFailed, std::nullopt}; }

    [[nodiscard]] Kind What() const { return kind_; }
    [[nodiscard]] bool IsValue() const { return kind_ == Kind::Value; }
    [[nodiscard]] bool HasLinkFailed() const { return kind_ == Kind::LinkFailed; }
    /// The value; nothing when it is doubtful or the link has failed.
    [[nodiscard]] std::optional<std::uint32_t> Number() const { return IsValue() ? number_ : std::nullopt; }
    /// The value as decimal text without a leading blank; `otherwise` when there is none to rely on.
    [[nodiscard]] std::string TextOr(const std::string& otherwise) const {
        return IsValue() ? std::to_string(*number_) : otherwise;
    }
    /// What the line said, right or wrong; nothing when it said nothing. For callers that name it as doubtful.
    [[nodiscard]] std::optional<std::uint32_t> NumberEvenIfDoubtful() const { return number_; }

private:
    Reading(Kind kind, std::optional<std::uint32_t> number) : kind_(kind), number_(number) {}

    Kind kind_;
    std::optional<std::uint32_t> number_;
};

/// A reading of a walk, and what the caller called it.
struct JudgedReading {
    std::size_t tag;
    Reading reading;
};

} // namespace vantrel
