#include <Kobaltrix/KXTimer.h>

#include "core/ground/LogicClock.h"

#include <Kobaltrix/KXRandom.h>
#include <Kobaltrix/KXTypes.h>

#include <limits>

KXRealTimeTimer::KXRealTimeTimer() { _sharedInit(0); }

KXRealTimeTimer::KXRealTimeTimer(float timeout) { _sharedInit(timeout); }

void KXRealTimeTimer::_sharedInit(float timeout) {
    _startTicks = _KXTicks();
    _timeout = KXMaxf(timeout, 0);
    _useRange = 0;
    _maxTimeout = 0;
    _minTimeout = 0;
}

void KXRealTimeTimer::setTimeout(float timeout) { _sharedInit(timeout); }

void KXRealTimeTimer::setMinMaxTimeout(float min, float max) {
    _useRange = -1;
    _maxTimeout = max;
    _minTimeout = min;
    reset();
}

void KXRealTimeTimer::reset() {
    if (!_useRange)
        return _sharedInit(_timeout);
    _minTimeout = KXMinf(_minTimeout, _maxTimeout);
    _timeout = KXRandomizef(_minTimeout, _maxTimeout);
    _startTicks = _KXTicks();
}

int KXRealTimeTimer::tick() {
    if (!(elapsedTime() > _timeout))
        return 0;
    reset();
    return -1;
}

float KXRealTimeTimer::elapsedTime() const {
    // The difference survives the wrap of the counter.
    const auto milliseconds = static_cast<std::int32_t>(_KXTicks() - _startTicks);
    return static_cast<float>(static_cast<float>(milliseconds) / 1000.0);
}

float KXRealTimeTimer::progress() const {
    const float elapsed = elapsedTime();
    if (_timeout != 0)
        return elapsed / _timeout;
    if (elapsed == 0)
        return std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    return elapsed > 0 ? infinity : -infinity;
}
