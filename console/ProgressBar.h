// How far a transfer is, as one line of a terminal that is drawn over and over. Draws nothing where there is no
// terminal. Knows a stream and the time.
#pragma once

#include "document/SettingsTransfer.h"
#include "platform/Clock.h"

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

namespace vantrel {

class ProgressBar final : public TransferDisplay {
public:
    /// `draws`: `out` is a terminal.
    ProgressBar(std::ostream& out, const Clock& clock, bool draws) : out_(out), clock_(clock), draws_(draws) {}

    void ShowLabel(std::string_view label) override;
    void ShowProgress(std::size_t done, std::size_t total) override;
    /// Ends the line of a bar that stands there unfinished; called before anything else is written.
    void EndLine();

private:
    [[nodiscard]] std::string TimeLeft(std::size_t done, std::size_t total) const;

    std::ostream& out_;
    const Clock& clock_;
    bool draws_;
    bool lineOpen_ = false;
    std::string shown_;
    MonotonicTime startedAt_{0};
};

} // namespace vantrel
