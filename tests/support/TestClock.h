#pragma once

#include <cstdint>
#include <ctime>

/// Owns the library's time while it lives: ticks and time of day stand still until the test moves them.
class TestClock {
public:
    explicit TestClock(std::uint64_t ticks = 0, std::time_t timeOfDay = 0);
    ~TestClock();
    TestClock(const TestClock&) = delete;
    TestClock& operator=(const TestClock&) = delete;

    void advance(std::uint64_t milliseconds);
    void setTimeOfDay(std::time_t seconds);
};
