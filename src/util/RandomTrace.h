#pragma once

#include "util/RecordedNumbers.h"

#include <Kobaltrix/KXRandomGenerator.h>

#include <bit>
#include <cstdint>
#include <functional>
#include <optional>

/// What is drawn at random, for whoever records a game or plays a recording of it: both must draw the same.
struct _KXRandomTrace {
    std::uint64_t numbers = 0;                ///< How many generators and the calls on rand() have drawn.
    std::uint64_t hash = 0xCBF29CE484222325U; ///< Of all these in their order.
    /// Told where a generator is about to begin, by a seed or a state. What it is changed to is where the
    /// generator begins instead: so a replay puts the recorded one in the place of a seed that the clock
    /// gave.
    std::function<void(KXRandomState&)> begins;
    /// Drawn from instead of rand(); none where that gives the same.
    std::optional<_KXRecordedNumbers> instead;

    void note(std::uint32_t number) {
        ++numbers;
        hash = std::rotl((hash ^ number) * 0x100000001B3U, 29); // where two differ, they go on to differ
    }
};

/// The trace that is kept of this thread, null for none; its owner sets and unsets it. The order in which
/// threads draw is left to chance, so only the thread of the logic loop should have one.
inline constinit thread_local _KXRandomTrace* _KXTraceOfRandom = nullptr;

/// To be called with each number drawn.
inline void _KXNoteRandomNumber(std::uint32_t number) {
    if (_KXRandomTrace* trace = _KXTraceOfRandom)
        trace->note(number);
}
