// The trace of a link's bytes where somebody wants it: in a file, or on standard output. Knows files and the log.
#pragma once

#include "link/TrafficLog.h"

#include <cstddef>
#include <fstream>
#include <iosfwd>
#include <string>

namespace vantrel {

/// Counts the bytes of the line, and writes each exchange once there is somewhere to write it.
class ByteTrace final : public TrafficLog {
public:
    /// `name`: a file in UTF-8, or "-" for `standardOutput`, which has to outlive this. Throws RuntimeError 75, with
    /// the reason, when the file cannot be opened for writing.
    void WriteTo(const std::string& name, std::ostream& standardOutput);
    /// Brings what was written so far to the file, for whoever reads it meanwhile.
    void Flush();
    /// Each exchange with its meaning behind it; before the first.
    void Decode() { text_.Decode(); }
    /// Closes the file. What kept any of it from being written; empty when nothing did.
    [[nodiscard]] std::string Finish();
    void Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) override;
    void Surplus(MonotonicTime at, std::uint8_t byte) override;
    [[nodiscard]] std::size_t Bytes() const { return bytes_; }

private:
    template <typename Action> void Write(const Action& action);

    std::string name_; ///< Empty: nothing is written.
    std::ofstream file_;
    std::ostream out_{nullptr};
    TextTrafficLog text_{out_};
    std::string problem_;
    std::size_t bytes_ = 0;
};

} // namespace vantrel
