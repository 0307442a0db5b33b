// The host's own clock. It counts the time in which the machine slept.
#pragma once

#include "platform/Clock.h"

namespace vantrel {

class SystemClock final : public Clock {
public:
    [[nodiscard]] MonotonicTime Now() const override;
    void SleepUntil(MonotonicTime time) override;
    [[nodiscard]] std::chrono::local_seconds LocalNow() const override;
};

} // namespace vantrel
