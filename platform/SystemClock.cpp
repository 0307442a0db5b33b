#include "platform/SystemClock.h"

#include <chrono>
#include <ctime>
#include <thread>

namespace vantrel {

MonotonicTime SystemClock::Now() const {
    return std::chrono::duration_cast<MonotonicTime>(std::chrono::steady_clock::now().time_since_epoch());
}

void SystemClock::SleepUntil(MonotonicTime time) {
    std::this_thread::sleep_until(
        std::chrono::steady_clock::time_point(std::chrono::duration_cast<std::chrono::steady_clock::duration>(time)));
}

std::chrono::local_seconds SystemClock::LocalNow() const {
    using namespace std::chrono;
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    return local_days{year{local.tm_year + 1900} / (local.tm_mon + 1) / local.tm_mday} + hours{local.tm_hour} +
           minutes{local.tm_min} + seconds{local.tm_sec};
}

} // namespace vantrel
