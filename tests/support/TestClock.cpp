#include "support/TestClock.h"

#include "core/ground/LogicClock.h"

static std::uint64_t currentTicks;
static std::time_t currentTimeOfDay;

TestClock::TestClock(std::uint64_t ticks, std::time_t timeOfDay) {
    currentTicks = ticks;
    currentTimeOfDay = timeOfDay;
    _KXSetTimeSource({[] { return currentTicks; }, [] { return currentTimeOfDay; }});
}

TestClock::~TestClock() { _KXSetTimeSource({nullptr, nullptr}); }

void TestClock::advance(std::uint64_t milliseconds) { currentTicks += milliseconds; }

void TestClock::setTimeOfDay(std::time_t seconds) { currentTimeOfDay = seconds; }
