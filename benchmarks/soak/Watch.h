#pragma once

#include <chrono>
#include <climits>
#include <cstdint>

/// Watches a long run: what the process holds must not grow with what it has done.
class Watch {
public:
    /// @param steps how many there will be.
    explicit Watch(std::uint64_t steps) : _steps(steps) {}

    bool isOver() const { return _done >= _steps; }
    std::uint64_t done() const { return _done; }
    /// Around each step.
    void stepBegins() { _began = Clock::now(); }
    void stepEnds();
    /// Looks at what is held, at a moment when that should be the same each time.
    void look();
    /// Prints what was seen. @return whether in the last three tenths of the steps memory is within a
    /// megabyte of what it was in the three after the first, and descriptors are as many. Drivers take and
    /// give back some all the time, so the least of each counts.
    bool report(const char* name) const;

private:
    using Clock = std::chrono::steady_clock;
    struct Held {
        long kilobytes = LONG_MAX, descriptors = 0;
    };

    Held inTenths(int first, int last) const;

    std::uint64_t _steps, _done = 0;
    Held _tenths[10]; ///< In each tenth of the run: the least memory, the most descriptors.
    Clock::time_point _began, _first = Clock::now();
    Clock::duration _longest = {};
};
