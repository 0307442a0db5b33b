#include "link/TrafficLog.h"

#include <array>
#include <cstdio>
#include <ostream>

namespace vantrel {

void TextTrafficLog::Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) {
    if (!first_) {
        first_ = sentAt;
        out_ << "# seconds  sent  received\n";
    }
    const double seconds = std::chrono::duration<double>(sentAt - *first_).count();
    std::array<char, 64> line{};
    std::snprintf(line.data(), line.size(), "%9.6f  %02X  ", seconds, static_cast<unsigned>(sent));
    out_ << line.data();
    if (received) {
        std::snprintf(line.data(), line.size(), "%02X\n", static_cast<unsigned>(*received));
        out_ << line.data();
    } else {
        out_ << "--\n";
    }
}

} // namespace vantrel
