#pragma once

#include <Kobaltrix/KXClock.h>

#include <cstdint>
#include <ctime>

/// Whether KXSetClock() has put another clock in the place of the platform's.
bool _KXTimeIsReplaced();

/// The tick counter in milliseconds, truncated to 32 bits: it wraps after 49.7 days.
std::uint32_t _KXTicks();

/// The fine clock: nanoseconds since some fixed moment.
std::uint64_t _KXNanoseconds();

/// The same clock as it runs in the world, also during a replay. No recording knows that it was asked: for
/// what depends on other programs and so happens at other times in each run.
std::uint64_t _KXWorldNanoseconds();

/// Lets time pass.
void _KXSleep(std::uint64_t nanoseconds);

/// The wall clock in whole seconds.
std::time_t _KXTimeOfDay();

// The clock of the logic loop. The loop (core module) writes it; timers, keys and interpolators read it.
inline constinit std::uint32_t _KXLogicSpeed = 1;                     ///< Logic steps per second.
inline constinit std::uint32_t _KXLogicTimeRequiredPerLogicCycle = 0; ///< Milliseconds per logic step.
inline constinit std::uint32_t _KXLogicCurrentTime = 0;               ///< Ticks at this frame.
inline constinit std::uint32_t _KXLogicLastTime = 0;                  ///< Ticks at the end of the last frame.
inline constinit std::uint32_t _KXLogicTimeElapsed = 0;               ///< Milliseconds owed to the logic.
inline constinit std::uint32_t _KXLogicCurrentCycles = 0;             ///< Steps still to run this frame.
inline constinit std::time_t _KXStartTime = 0;                        ///< Second last seen.
inline constinit std::int64_t _KXElapsedTime = 0;                     ///< Whole seconds counted.

/// The time stamp of an input that has not been reported.
inline constexpr std::int32_t _KXNeverReported = 0x7FFFFFFF;

/// Whether an input that was reported at logic time @a reportTime and is still held repeats now: true once
/// the time of 30 logic steps has passed.
bool _KXRepeatIsDue(std::int32_t reportTime);
