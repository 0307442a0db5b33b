// What passed the line, with its meaning, for somebody who looks on. Bounded; hears the link and changes nothing.
#pragma once

#include "link/TraceDecoder.h"
#include "link/TrafficLog.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace vantrel {

/// A byte with its answer, a byte nobody had asked for (`sent` is none), or a remark (neither byte).
struct LineEntry {
    std::chrono::local_seconds when{};
    MonotonicTime passed{}; ///< Since the first entry.
    std::optional<std::uint8_t> sent;
    std::optional<std::uint8_t> received;
    std::string meaning;
};

/// Keeps the newest `Most` entries between Begin() and End(). What passes before only moves the decoder on: a link
/// stays in the read mode for hours, and whoever looks on later has to be told what its bytes mean. The bytes of a
/// pause are followed, so that the meaning of later ones is right, and counted, but not kept.
class LineRecorder final : public TrafficLog {
public:
    static constexpr std::size_t Most = 20'000;

    /// `clock` must outlive it.
    explicit LineRecorder(const Clock& clock) : clock_(clock) {}

    void Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) override;
    void Surplus(MonotonicTime at, std::uint8_t byte) override;

    /// Keeps what passes from now on.
    void Begin() { keeps_ = true; }
    void End();
    /// The end of a pause in which anything passed leaves a remark on how much.
    void SetPaused(bool paused);
    [[nodiscard]] bool Paused() const { return paused_; }
    /// Entries that the pause has kept out so far.
    [[nodiscard]] std::size_t Missed() const { return missed_; }
    void Clear();

    [[nodiscard]] const std::deque<LineEntry>& Entries() const { return entries_; }
    /// How many there have been before those that are kept.
    [[nodiscard]] std::size_t Gone() const { return gone_; }
    /// How many of these were pushed out by newer ones, not cleared.
    [[nodiscard]] std::size_t PushedOut() const { return pushedOut_; }

private:
    void Add(MonotonicTime at, std::optional<std::uint8_t> sent, std::optional<std::uint8_t> received,
             std::string meaning);

    const Clock& clock_;
    TraceDecoder decoder_;
    std::optional<MonotonicTime> first_;
    std::deque<LineEntry> entries_;
    std::size_t gone_ = 0;
    std::size_t pushedOut_ = 0;
    bool keeps_ = false;
    bool paused_ = false;
    std::size_t missed_ = 0;
};

inline constexpr std::array<const char*, 5> LineHeadings{"Time", "Seconds", "Sent", "Received", "Meaning"};
/// As shown: time of day, seconds with six places, bytes in hexadecimal, "--" for none.
[[nodiscard]] std::array<std::string, 5> LineCells(const LineEntry& entry);
/// A line an entry with the headings before them, for a file.
[[nodiscard]] std::string LineText(const LineRecorder& recorder);

} // namespace vantrel
