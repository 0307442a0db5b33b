// What up to four data words did over time, for a plot and for a table: a bounded record of readings. Knows times and
// the words' notations; no link, no toolkit.
#pragma once

#include "platform/Clock.h"
#include "views/DataWords.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

/// A data word of one sequence (0..30).
struct RecordedWord {
    int sequence;
    WordPlace place;
    bool operator==(const RecordedWord&) const = default;
};
/// "Send 5, sequence 3".
[[nodiscard]] std::string RecordedWordName(const RecordedWord& word);

class WordRecorder {
public:
    static constexpr std::size_t MostWords = 4;
    /// Of one word; then the oldest go. Eight hours and more at ten readings a second, in 6 MB.
    static constexpr std::size_t MostReadings = 345'600;

    /// One reading; without a value it was doubtful.
    struct Sample {
        MonotonicTime at;
        std::optional<std::uint16_t> word;
    };
    using Samples = std::deque<Sample>;

    /// `now` and `local` are the same moment; times of the table count from there.
    WordRecorder(MonotonicTime now, std::chrono::local_seconds local) : begun_(now), begunLocal_(local) {}

    /// Puts a word, or none, in a slot (0..3). Another one than before begins without readings.
    void Follow(std::size_t slot, std::optional<RecordedWord> word);
    [[nodiscard]] const std::optional<RecordedWord>& Followed(std::size_t slot) const { return slots_.at(slot).word; }
    [[nodiscard]] const Samples& Of(std::size_t slot) const { return slots_.at(slot).samples; }

    /// A reading of a word, which goes wherever it is followed; others are dropped.
    void Take(const RecordedWord& word, std::optional<std::uint16_t> value, MonotonicTime now);

    /// A known value, for a plot.
    struct Point {
        double seconds; ///< Since the record began.
        double value; ///< Below 0 in the notation Signed only.
        bool joined; ///< A line may lead here from the point before.
        bool operator==(const Point&) const = default;
    };
    /// The values from `since` on, and the last one before it. No line leads across a doubtful reading, nor across more
    /// than LongestStep without any.
    [[nodiscard]] std::vector<Point> Points(std::size_t slot, WordNotation notation, MonotonicTime since) const;
    static constexpr MonotonicTime LongestStep = std::chrono::seconds(5);

    /// Drops all readings; the words stay followed.
    void Clear();
    [[nodiscard]] bool IsEmpty() const;

    [[nodiscard]] MonotonicTime Begun() const { return begun_; }
    [[nodiscard]] std::chrono::local_seconds BegunLocal() const { return begunLocal_; }
    /// A row for each reading, in the order of time: date and time of the computer, seconds since the record began, and
    /// a column for each word, in which the others' rows are empty; "-" for a doubtful one. Values are decimal numbers,
    /// below 0 in the notation Signed only. UTF-8 with a mark of it, as spreadsheets want it.
    [[nodiscard]] std::string Csv(WordNotation notation) const;

private:
    struct Slot {
        std::optional<RecordedWord> word{};
        Samples samples{};
    };

    MonotonicTime begun_;
    std::chrono::local_seconds begunLocal_;
    std::array<Slot, MostWords> slots_{};
};

} // namespace vantrel
