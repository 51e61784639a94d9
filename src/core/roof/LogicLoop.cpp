#include <Kobaltrix/KXLogicLoop.h>
#include <Kobaltrix/KXReload.h>

#include "core/dispatch/EventDispatch.h"
#include "core/ground/LogicClock.h"
#include "core/ground/Tape.h"
#include "core/roof/Recording.h"
#include "input/KXMouse.h"
#include "input/StepInput.h"
#include "platform/Sleep.h"
#include "platform/VideoDriver.h"
#include "render/Cursor.h"
#include "render/DrawBatch.h"
#include "render/KXTextureCache.h"
#include "util/FollowedFile.h"
#include "util/KXString.h"

#include <Kobaltrix/KXMusic.h>

#include <SDL.h>

#include <algorithm>
#include <cmath>

namespace {
constexpr std::uint64_t nanosecondsPerMillisecond = 1'000'000, nanosecondsPerSecond = 1'000'000'000;

// What is owed to the logic beside the milliseconds of the clock's globals, for whom that is too coarse.
struct ExactTime {
    bool kept = false;               // whether the loop goes by it
    std::uint64_t now = 0, last = 0; // nanoseconds: at this frame, at the end of the last one
    // Owed, in units of which a step is a billion whatever the speed: nothing is lost to a division.
    std::uint64_t owed = 0;
};
constinit ExactTime exactTime;
constinit unsigned maximumSteps = 0;
constinit std::uint64_t droppedSteps = 0;
} // namespace

// The frame counter.
static constinit int _KXFPS = 0;
static constinit int _KXFPSCount = 0;
static constinit int _KXFPSElapsedTime = 0;
static constinit int _KXFPSLastTime = 0;

unsigned KXLogicInterval() { return _KXLogicSpeed; }

void KXSetLogicInterval(unsigned speed) {
    _KXLogicSpeed = speed > 999 ? 1000 : speed == 0 ? 1 : speed;
    _KXLogicTimeRequiredPerLogicCycle = 1000 / _KXLogicSpeed;
}

void KXSetLogicExact(int exact) { exactTime.kept = exact; }

void KXSetMaximumLogicSteps(unsigned steps) { maximumSteps = steps; }

std::uint64_t KXDroppedLogicSteps() { return droppedSteps; }

void KXResetLogicLoop() {
    exactTime.now = exactTime.last = _KXNanoseconds();
    exactTime.owed = nanosecondsPerSecond * 3 / 2;
    droppedSteps = 0;
    _KXLogicTimeElapsed = _KXLogicTimeRequiredPerLogicCycle;
    _KXLogicCurrentTime = _KXLogicLastTime = _KXTicks();
    _KXLogicCurrentCycles = 0;
    _KXStartTime = _KXTimeOfDay();
}

// Takes the steps that are due from what is owed; those that the last frame has left are owed still.
static std::uint32_t takeExactSteps() {
    constexpr std::uint64_t longest = 24 * 3600 * nanosecondsPerSecond; // a day at full speed fits
    exactTime.owed += std::min(exactTime.now - exactTime.last, longest) * _KXLogicSpeed +
                      _KXLogicCurrentCycles * nanosecondsPerSecond;
    const std::uint64_t steps = exactTime.owed / nanosecondsPerSecond;
    exactTime.owed %= nanosecondsPerSecond;
    return static_cast<std::uint32_t>(steps);
}

// The steps in the whole milliseconds that are owed. KXLogicUpdate() drops what is left of them.
static std::uint32_t countSteps() {
    const std::uint32_t stepTime = _KXLogicTimeRequiredPerLogicCycle;
    return stepTime ? _KXLogicTimeElapsed / stepTime : 0; // no speed is set before KXInit
}

void KXReloadChangedFiles(int reload) { _KXReloadsFiles = reload; }

void KXPreLogicLoop() {
    if (_KXFollowsFiles() && _KXLookAtFiles())
        _KXReloadChangedTextures();
    _KXLogicCurrentTime = _KXTicks();
    exactTime.now = _KXNanoseconds();
    _KXLogicTimeElapsed += _KXLogicCurrentTime - _KXLogicLastTime;
    const std::uint32_t due = exactTime.kept ? takeExactSteps() : countSteps();
    _KXLogicCurrentCycles = maximumSteps ? std::min(due, maximumSteps) : due;
    droppedSteps += due - _KXLogicCurrentCycles;
    if (due == 0 && !_KXTimeIsReplaced() && !_KXIsReplaying())
        _KXSleepBriefly();
}

int KXLogicLoop() {
    if (_KXLogicCurrentCycles == 0)
        return 0;
    _KXBeginInputStep();
    _KXLeaveReplay();
    _KXDispatchEvents();
    _KXTellInputStep();
    _KXRecordStep();
    return -1;
}

void KXLogicUpdate() {
    if (_KXLogicCurrentCycles == 0 || --_KXLogicCurrentCycles == 0)
        _KXLogicTimeElapsed = 0;
    _KXEndInputStep();
    _KXSettleCursor();
    KXMusic::_tend();
    if (_KXTemporaryStringCleanupDisabledCount == 0)
        _KXCleanTempStrings();
    const std::time_t now = _KXTimeOfDay();
    if (now != _KXStartTime) {
        _KXStartTime = now;
        ++_KXElapsedTime;
    }
}

void KXPostLogicLoop() {
    _KXFlushBatch(KXDrawFlushFrame);
    _KXUnsetMouseWheel();
    _KXLogicLastTime = _KXLogicCurrentTime;
    exactTime.last = exactTime.now;
}

float KXLogicFraction() {
    const std::uint32_t stepTime = std::max(_KXLogicTimeRequiredPerLogicCycle, 1u);
    const double fraction =
        exactTime.kept ? static_cast<double>(exactTime.owed % nanosecondsPerSecond) / nanosecondsPerSecond
                       : static_cast<double>(_KXLogicTimeElapsed % stepTime) / stepTime;
    return std::min(static_cast<float>(fraction), std::nextafter(1.0f, 0.0f)); // just below 1 rounds to 1
}

// Nanoseconds until the next KXPreLogicLoop() would find a step due.
static std::uint64_t timeToNextStep() {
    if (_KXLogicCurrentCycles)
        return 0;
    if (exactTime.kept) {
        const std::uint64_t owed = exactTime.owed + (_KXNanoseconds() - exactTime.now) * _KXLogicSpeed;
        return owed < nanosecondsPerSecond ? (nanosecondsPerSecond - owed) / _KXLogicSpeed + 1 : 0;
    }
    const std::uint32_t stepTime = _KXLogicTimeRequiredPerLogicCycle;
    const std::uint32_t owed = _KXLogicTimeElapsed + (_KXTicks() - _KXLogicCurrentTime);
    return owed < stepTime ? (stepTime - owed) * nanosecondsPerMillisecond : 0;
}

// Whether an event comes within some milliseconds. Drivers that show nothing cannot wait for one: the
// platform looks for it each millisecond, which costs more than many a game, and is more often than steps
// need it.
static bool eventComesWithin(int milliseconds) {
    if (!_KXShowsNothing())
        return SDL_WaitEventTimeout(nullptr, milliseconds);
    constexpr int pause = 20;
    for (int rest = milliseconds; rest > 0; rest -= pause) {
        _KXSleep(std::min(rest, pause) * nanosecondsPerMillisecond);
        SDL_PumpEvents();
        if (SDL_HasEvents(SDL_FIRSTEVENT, SDL_LASTEVENT))
            return true;
    }
    return false;
}

int KXWaitForLogicStep() {
    // The platform waits for events by whole milliseconds. What waits already waits for the step's beginning.
    const auto wait = static_cast<int>(timeToNextStep() / nanosecondsPerMillisecond);
    const bool hearsEvents = SDL_WasInit(SDL_INIT_EVENTS) && !_KXTimeIsReplaced();
    const auto hear = [=] {
        return hearsEvents && wait && !SDL_HasEvents(SDL_FIRSTEVENT, SDL_LASTEVENT) && eventComesWithin(wait);
    };
    if (_KXAnswerTo(_KXQuestion::Event, hear))
        return 0;
    if (const std::uint64_t rest = timeToNextStep(); rest && !_KXIsReplaying())
        _KXSleep(rest);
    return -1;
}

double KXTime() { return static_cast<double>(_KXNanoseconds()) / nanosecondsPerSecond; }

std::int64_t KXElapsedTime() { return _KXElapsedTime; }

void KXResetElapsedTime() { _KXElapsedTime = 0; }

int KXFPS() { return _KXFPS; }

void KXFPSTick() {
    constexpr std::uint32_t period = 1000;
    const std::uint32_t now = _KXTicks();
    const std::uint32_t sinceLast = now - static_cast<std::uint32_t>(_KXFPSLastTime);
    _KXFPSLastTime = static_cast<int>(now);
    if (sinceLast <= period && _KXFPSElapsedTime + sinceLast <= period) {
        _KXFPSElapsedTime += static_cast<int>(sinceLast);
        ++_KXFPSCount;
        return;
    }
    _KXFPS = _KXFPSCount;
    _KXFPSElapsedTime = 0;
    _KXFPSCount = 1; // the frame that closed the period
}
