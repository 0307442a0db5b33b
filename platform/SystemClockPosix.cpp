// The POSIX clock. The host's steady clock stands still while the machine sleeps, so on hosts that have it the one that
// goes on is read: a board that was left alone over lunch with the lid closed has been left alone for an hour.
#include "platform/SystemClock.h"

#include <cerrno>
#include <chrono>
#include <ctime>

namespace vantrel {

namespace {

#ifdef CLOCK_BOOTTIME
constexpr clockid_t CountsSleep = CLOCK_BOOTTIME;
#else
constexpr clockid_t CountsSleep = CLOCK_MONOTONIC;
#endif

constexpr MonotonicTime OneSecond = std::chrono::seconds(1);

} // namespace

MonotonicTime SystemClock::Now() const {
    timespec now{};
    clock_gettime(CountsSleep, &now);
    return now.tv_sec * OneSecond + MonotonicTime(now.tv_nsec);
}

void SystemClock::SleepUntil(MonotonicTime time) {
    if (time <= Now()) return;
    timespec end{};
    end.tv_sec = static_cast<std::time_t>(time / OneSecond);
    end.tv_nsec = static_cast<long>((time % OneSecond).count());
    while (clock_nanosleep(CountsSleep, TIMER_ABSTIME, &end, nullptr) == EINTR) {
    }
}

std::chrono::local_seconds SystemClock::LocalNow() const {
    using namespace std::chrono;
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return local_days{year{local.tm_year + 1900} / (local.tm_mon + 1) / local.tm_mday} + hours{local.tm_hour} +
           minutes{local.tm_min} + seconds{local.tm_sec};
}

} // namespace vantrel
