#pragma once

#include <Kobaltrix/KXPlatform.h>

#include <stdint.h>

/// @file
/// Where the library's time comes from: the system's clocks, or others in their place. With a clock that
/// moves when it is told to, a test plays a minute in a moment and waits for nothing; the test kit's
/// KXTestClock is one.

/// A clock. Its functions get @a data; for one that is null the system's is asked.
struct KXClock {
    uint64_t (*nanoseconds)(void* data);             ///< Since some fixed moment; never goes back.
    int64_t (*timeOfDay)(void* data);                ///< Seconds since 1970.
    void (*sleep)(void* data, uint64_t nanoseconds); ///< Lets that time pass.
    void* data;                                      ///< The clock's own.
};

/// Puts a clock in the place of the system's: the logic loop, KXTime(), timers, key repeats and the frame
/// counter go by it, and waiting for the next step ends for no event. Best before KXInit(), and else followed
/// by KXResetLogicLoop(). Sound and network keep to the system's time.
/// @param clock copied, with functions that stay callable; null for the system's clocks.
KX_API void KXSetClock(const KXClock* clock);
