// Writing the trace, and noticing when that fails.
#include "link/ByteTrace.h"

#include "platform/RuntimeError.h"
#include "text/PathText.h"

#include <cerrno>
#include <ostream>
#include <system_error>

namespace vantrel {

namespace {

/// The last failure's reason, as the host puts it.
std::string Problem(const std::string& file) {
    const std::string reason = errno != 0 ? ": " + std::generic_category().message(errno) : "";
    return "The trace \"" + file + "\" cannot be written" + reason + ".";
}

} // namespace

template <typename Action> void ByteTrace::Write(const Action& action) {
    if (name_.empty() || !problem_.empty()) return;
    errno = 0;
    action();
    if (!out_ || !file_) problem_ = Problem(name_);
}

void ByteTrace::WriteTo(const std::string& name, std::ostream& standardOutput) {
    const bool toFile = name != "-";
    errno = 0;
    if (toFile) file_.open(PathFromUtf8(name));
    if (!file_) throw RuntimeError(ErrorNumber::PathFileAccess, Problem(name));
    out_.rdbuf(toFile ? file_.rdbuf() : standardOutput.rdbuf());
    name_ = name;
}

void ByteTrace::Flush() {
    Write([this] { out_.flush(); });
}

std::string ByteTrace::Finish() {
    Write([this] {
        out_.flush();
        if (file_.is_open()) file_.close();
    });
    return problem_;
}

void ByteTrace::Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) {
    bytes_ += received ? 2 : 1;
    Write([&] { text_.Exchanged(sentAt, sent, received); });
}

void ByteTrace::Surplus(MonotonicTime at, std::uint8_t byte) {
    ++bytes_;
    Write([&] { text_.Surplus(at, byte); });
}

} // namespace vantrel
