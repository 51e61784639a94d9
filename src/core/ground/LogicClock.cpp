#include "core/ground/LogicClock.h"

#include "core/ground/Tape.h"

#include <SDL_timer.h>

#include <chrono>
#include <thread>

static constinit KXClock replacement = {};

void KXSetClock(const KXClock* clock) { replacement = clock ? *clock : KXClock{}; }

bool _KXTimeIsReplaced() { return replacement.nanoseconds; }

std::uint32_t _KXTicks() {
    return _KXAnswerTo(_KXQuestion::Ticks, [] {
        return static_cast<std::uint32_t>(
            _KXTimeIsReplaced() ? replacement.nanoseconds(replacement.data) / 1'000'000 : SDL_GetTicks64());
    });
}

std::uint64_t _KXWorldNanoseconds() {
    if (_KXTimeIsReplaced())
        return replacement.nanoseconds(replacement.data);
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::nanoseconds(sinceStart).count());
}

std::uint64_t _KXNanoseconds() { return _KXAnswerTo(_KXQuestion::Nanoseconds, _KXWorldNanoseconds); }

void _KXSleep(std::uint64_t nanoseconds) {
    if (replacement.sleep)
        replacement.sleep(replacement.data, nanoseconds);
    else
        std::this_thread::sleep_for(std::chrono::nanoseconds(nanoseconds));
}

std::time_t _KXTimeOfDay() {
    return _KXAnswerTo(_KXQuestion::TimeOfDay, [] {
        return replacement.timeOfDay ? static_cast<std::time_t>(replacement.timeOfDay(replacement.data))
                                     : std::time(nullptr);
    });
}

bool _KXRepeatIsDue(std::int32_t reportTime) {
    constexpr std::uint32_t stepsBeforeRepeat = 30;
    if (_KXLogicTimeRequiredPerLogicCycle == 0)
        return false;
    const std::uint32_t held = _KXLogicCurrentTime - static_cast<std::uint32_t>(reportTime);
    return held / _KXLogicTimeRequiredPerLogicCycle >= stepsBeforeRepeat;
}
