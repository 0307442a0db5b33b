// The trace of a link's bytes, in a file that somebody names. Knows files and the link's log.
#pragma once

#include "link/TrafficLog.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>

namespace vantrel {

/// Counts the bytes of the line, and writes each exchange into a file when one is opened.
class ByteTrace final : public TrafficLog {
public:
    /// Throws RuntimeError 75, with the reason, when the file cannot be opened for writing.
    void WriteTo(const std::string& file);
    /// The same into a stream, which has to outlive this.
    void WriteTo(std::ostream& out);
    /// Closes the file. What kept any of it from being written; empty when nothing did.
    [[nodiscard]] std::string Finish();
    void Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) override;
    void Surplus(MonotonicTime at, std::uint8_t byte) override;
    [[nodiscard]] std::size_t Bytes() const { return bytes_; }

private:
    template <typename Action> void Write(const Action& action);

    std::string name_;
    bool writes_ = false;
    std::ofstream file_;
    TextTrafficLog text_{file_};
    std::string problem_;
    std::size_t bytes_ = 0;
};

} // namespace vantrel
