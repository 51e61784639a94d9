#pragma once

#include <cstdint>
#include <ctime>

/// Owns the library's time while it lives: it stands still until the test moves it, or the library waits.
class TestClock {
public:
    explicit TestClock(std::uint64_t ticks = 0, std::time_t timeOfDay = 0);
    ~TestClock();
    TestClock(const TestClock&) = delete;
    TestClock& operator=(const TestClock&) = delete;

    static void advance(std::uint64_t milliseconds);
    static void advanceNanoseconds(std::uint64_t nanoseconds);
    static void setTimeOfDay(std::time_t seconds);
};
