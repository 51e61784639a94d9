#include <Kobaltrix/KXLogicLoop.h>

#include "core/dispatch/EventDispatch.h"
#include "core/ground/LogicClock.h"
#include "input/KXMouse.h"
#include "platform/Sleep.h"
#include "render/DrawBatch.h"
#include "util/KXString.h"

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

void KXResetLogicLoop() {
    _KXLogicTimeElapsed = _KXLogicTimeRequiredPerLogicCycle;
    _KXLogicCurrentTime = _KXLogicLastTime = _KXTicks();
    _KXLogicCurrentCycles = 0;
    _KXStartTime = _KXTimeOfDay();
}

void KXPreLogicLoop() {
    const std::uint32_t stepTime = _KXLogicTimeRequiredPerLogicCycle;
    _KXLogicCurrentTime = _KXTicks();
    _KXLogicTimeElapsed += _KXLogicCurrentTime - _KXLogicLastTime;
    _KXLogicCurrentCycles = stepTime ? _KXLogicTimeElapsed / stepTime : 0; // no speed is set before KXInit
    if (_KXLogicTimeElapsed < stepTime)
        _KXSleepBriefly();
}

int KXLogicLoop() {
    if (_KXLogicCurrentCycles == 0)
        return 0;
    _KXDispatchEvents();
    return -1;
}

void KXLogicUpdate() {
    if (_KXLogicCurrentCycles == 0 || --_KXLogicCurrentCycles == 0)
        _KXLogicTimeElapsed = 0;
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
}

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
