#include "core/ground/LogicClock.h"

#include <SDL_timer.h>

static std::time_t platformTimeOfDay() { return std::time(nullptr); }

static constinit _KXTimeSource timeSource = {SDL_GetTicks64, platformTimeOfDay};

void _KXSetTimeSource(_KXTimeSource source) {
    timeSource.ticks = source.ticks ? source.ticks : SDL_GetTicks64;
    timeSource.timeOfDay = source.timeOfDay ? source.timeOfDay : platformTimeOfDay;
}

std::uint32_t _KXTicks() { return static_cast<std::uint32_t>(timeSource.ticks()); }

std::time_t _KXTimeOfDay() { return timeSource.timeOfDay(); }

bool _KXRepeatIsDue(std::int32_t reportTime) {
    constexpr std::uint32_t stepsBeforeRepeat = 30;
    if (_KXLogicTimeRequiredPerLogicCycle == 0)
        return false;
    const std::uint32_t held = _KXLogicCurrentTime - static_cast<std::uint32_t>(reportTime);
    return held / _KXLogicTimeRequiredPerLogicCycle >= stepsBeforeRepeat;
}
