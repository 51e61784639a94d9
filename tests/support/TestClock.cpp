#include "support/TestClock.h"

#include "core/ground/LogicClock.h"

static std::uint64_t now; // nanoseconds
static std::time_t currentTimeOfDay;

static constexpr _KXTimeSource source = {[] { return now; }, [] { return currentTimeOfDay; },
                                         [](std::uint64_t nanoseconds) { now += nanoseconds; }};

TestClock::TestClock(std::uint64_t ticks, std::time_t timeOfDay) {
    now = ticks * 1'000'000;
    currentTimeOfDay = timeOfDay;
    _KXSetTimeSource(&source);
}

TestClock::~TestClock() { _KXSetTimeSource(nullptr); }

void TestClock::advance(std::uint64_t milliseconds) { now += milliseconds * 1'000'000; }

void TestClock::advanceNanoseconds(std::uint64_t nanoseconds) { now += nanoseconds; }

void TestClock::setTimeOfDay(std::time_t seconds) { currentTimeOfDay = seconds; }
