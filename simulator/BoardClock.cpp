// The running of the simulated board's clock.
#include "simulator/BoardClock.h"

#include "link/TargetMap.h"

#include <algorithm>
#include <cstddef>

namespace vantrel {

namespace {

enum Register : std::size_t { Second, Minute, Hour, Day, Month, Year };

struct RegisterPlace {
    Register index;
    int address;
    int lowest;
    int highest;
};

constexpr std::array<RegisterPlace, 6> Places{{
    {Second, ClockSecondByte, 0, 59},
    {Minute, ClockMinuteByte, 0, 59},
    {Hour, ClockHourByte, 0, 23},
    {Day, ClockDayByte, 1, 31},
    {Month, ClockMonthByte, 1, 12},
    {Year, ClockYearByte, 0, 99},
}};

const RegisterPlace* PlaceAt(std::uint16_t address) {
    const auto* place =
        std::find_if(Places.begin(), Places.end(), [&](const RegisterPlace& each) { return each.address == address; });
    return place == Places.end() ? nullptr : place;
}

std::chrono::year_month_day DayAfter(int year, int month, int day, std::chrono::days passed) {
    using namespace std::chrono;
    const year_month_day_last last =
        std::chrono::year{2000 + year} / std::chrono::month{static_cast<unsigned>(month)} / std::chrono::last;
    const auto shown = std::min(std::chrono::day{static_cast<unsigned>(day)}, last.day());
    return year_month_day{local_days{last.year() / last.month() / shown} + passed};
}

} // namespace

BoardClock::BoardClock(std::chrono::local_seconds startedAt) {
    using namespace std::chrono;
    const local_days today = floor<days>(startedAt);
    const year_month_day date{today};
    const hh_mm_ss time{startedAt - today};
    asSet_[Second] = static_cast<int>(time.seconds().count());
    asSet_[Minute] = static_cast<int>(time.minutes().count());
    asSet_[Hour] = static_cast<int>(time.hours().count());
    asSet_[Day] = static_cast<int>(static_cast<unsigned>(date.day()));
    asSet_[Month] = static_cast<int>(static_cast<unsigned>(date.month()));
    asSet_[Year] = static_cast<int>(date.year()) % 100;
}

std::chrono::seconds BoardClock::RunSinceSet(MonotonicTime now) const {
    return std::chrono::floor<std::chrono::seconds>(std::max(now - setAt_, MonotonicTime{0}));
}

BoardClock::Registers BoardClock::At(MonotonicTime now) const {
    using namespace std::chrono;
    const seconds time = hours{asSet_[Hour]} + minutes{asSet_[Minute]} + seconds{asSet_[Second]} + RunSinceSet(now);
    const days passed = floor<days>(time);
    const hh_mm_ss shown{time - passed};
    Registers registers = asSet_;
    registers[Second] = static_cast<int>(shown.seconds().count());
    registers[Minute] = static_cast<int>(shown.minutes().count());
    registers[Hour] = static_cast<int>(shown.hours().count());
    // Until midnight the calendar stays as it was set, be it 31 February: whoever sets month, day and year one after
    // the other passes through such dates, and they must not roll over under his hands.
    if (passed.count() == 0) return registers;
    const year_month_day date = DayAfter(asSet_[Year], asSet_[Month], asSet_[Day], passed);
    registers[Day] = static_cast<int>(static_cast<unsigned>(date.day()));
    registers[Month] = static_cast<int>(static_cast<unsigned>(date.month()));
    registers[Year] = static_cast<int>(date.year()) % 100;
    return registers;
}

std::optional<std::uint8_t> BoardClock::Read(std::uint16_t address, MonotonicTime now) const {
    const RegisterPlace* place = PlaceAt(address);
    if (place == nullptr) return std::nullopt;
    return static_cast<std::uint8_t>(At(now)[place->index]);
}

void BoardClock::Set(std::uint16_t address, std::uint8_t value, MonotonicTime now) {
    const RegisterPlace* place = PlaceAt(address);
    if (place == nullptr || value < place->lowest || value > place->highest) return;
    const Registers running = At(now);
    // A set second begins with its setting; the other registers do not disturb the second that runs.
    setAt_ = place->index == Second ? now : setAt_ + RunSinceSet(now);
    asSet_ = running;
    asSet_[place->index] = value;
}

} // namespace vantrel
