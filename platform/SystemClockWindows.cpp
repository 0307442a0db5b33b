// The Windows clock: the time since the start of the machine, sleep included, and waits that are not rounded up to the
// 16 ms of the usual timer.
#include "platform/SystemClock.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <ratio>

namespace vantrel {

namespace {

/// In which the host counts.
using Ticks = std::chrono::duration<LONGLONG, std::ratio<1, 10'000'000>>;

using InterruptTime = void(WINAPI*)(PULONGLONG);

/// The one clock of which the host promises that it goes on while the machine sleeps, and finely. It is looked for by
/// name, because not every host that runs the program has it.
InterruptTime FindInterruptTime() {
    const HMODULE host = GetModuleHandleW(L"kernelbase.dll");
    const FARPROC found = host ? GetProcAddress(host, "QueryInterruptTimePrecise") : nullptr;
    return reinterpret_cast<InterruptTime>(reinterpret_cast<void*>(found));
}

HANDLE NewTimer() {
    constexpr DWORD highResolution = 2; // CREATE_WAITABLE_TIMER_HIGH_RESOLUTION
    HANDLE timer = CreateWaitableTimerExW(nullptr, nullptr, highResolution, TIMER_ALL_ACCESS);
    return timer ? timer : CreateWaitableTimerExW(nullptr, nullptr, 0, TIMER_ALL_ACCESS);
}

void SleepFor(MonotonicTime time) {
    const HANDLE timer = NewTimer();
    LARGE_INTEGER due{};
    // Below 0: from now on.
    due.QuadPart = -(std::max)(std::chrono::ceil<Ticks>(time), Ticks{1}).count();
    if (timer && SetWaitableTimer(timer, &due, 0, nullptr, nullptr, FALSE)) {
        WaitForSingleObject(timer, INFINITE);
    } else {
        Sleep(static_cast<DWORD>(std::chrono::ceil<std::chrono::milliseconds>(time).count()));
    }
    if (timer) CloseHandle(timer);
}

} // namespace

MonotonicTime SystemClock::Now() const {
    static const InterruptTime interruptTime = FindInterruptTime();
    if (!interruptTime) return std::chrono::steady_clock::now().time_since_epoch();
    ULONGLONG ticks = 0;
    interruptTime(&ticks);
    return Ticks(static_cast<LONGLONG>(ticks));
}

void SystemClock::SleepUntil(MonotonicTime time) {
    for (MonotonicTime left = time - Now(); left > MonotonicTime{0}; left = time - Now())
        SleepFor(left);
}

std::chrono::local_seconds SystemClock::LocalNow() const {
    using namespace std::chrono;
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return local_days{year{now.wYear} / month{now.wMonth} / day{now.wDay}} + hours{now.wHour} + minutes{now.wMinute} +
           seconds{now.wSecond};
}

} // namespace vantrel
