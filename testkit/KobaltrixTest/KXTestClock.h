#pragma once

#include <stdint.h>

/// @file
/// Time that belongs to the test.

/// The library's time while it lives: it stands still until the test moves it, KXTestUser makes steps, or the
/// game waits for a step. One at a time.
class KXTestClock {
public:
    /// @param milliseconds what the library's counter shows at first. @param timeOfDay the wall clock then,
    /// in seconds since 1970; it goes on with the counter.
    explicit KXTestClock(uint64_t milliseconds = 0, int64_t timeOfDay = 0);
    /// Gives the library the system's clocks back.
    ~KXTestClock();
    KXTestClock(const KXTestClock&) = delete;
    KXTestClock& operator=(const KXTestClock&) = delete;

    /// Lets time pass between two frames.
    void advance(uint64_t milliseconds);
    /// The same, finer.
    void advanceNanoseconds(uint64_t nanoseconds);
    /// The wall clock: seconds since 1970.
    int64_t timeOfDay() const;
    /// Sets the wall clock alone.
    void setTimeOfDay(int64_t seconds);
    /// Nanoseconds since the counter's zero.
    uint64_t nanoseconds() const { return _now; }

    /// The one that lives, null for none.
    static KXTestClock* current();

private:
    friend class KXTestUser;

    enum : uint64_t { _never = UINT64_MAX };

    uint64_t _now;
    uint64_t _lastFrame = _never; // when KXTestUser made it
    uint64_t _dayBegan;           // when the wall clock was set, and to what
    int64_t _day;
};
