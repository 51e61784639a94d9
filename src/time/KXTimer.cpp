#include <Kobaltrix/KXTimer.h>

#include <Kobaltrix/KXRandom.h>
#include <Kobaltrix/KXTypes.h>

KXTimer::KXTimer() { _sharedInit(0); }

KXTimer::KXTimer(int timeout) { _sharedInit(timeout); }

void KXTimer::_sharedInit(int timeout) {
    _ticks = 0;
    _timeout = timeout;
    _maxTimeout = -1;
    _minTimeout = -1;
}

void KXTimer::setTimeout(int timeout) {
    _timeout = KXMaxi(timeout, 0);
    _maxTimeout = -1;
    _minTimeout = -1;
}

void KXTimer::setMinMaxTimeout(int min, int max) {
    _maxTimeout = max;
    _minTimeout = KXMini(min, max);
    _timeout = KXRandomize(_minTimeout, _maxTimeout);
}

void KXTimer::reset() {
    if (_hasRange())
        _timeout = KXRandomize(_minTimeout, _maxTimeout);
    _ticks = 0;
}

int KXTimer::tick() {
    // Cannot overflow: a count that reaches the timeout, which is an int, goes back to 0.
    ++_ticks;
    if (_ticks < _timeout)
        return 0;
    reset();
    return -1;
}

float KXTimer::progress() const {
    if (_timeout == 0)
        return 1;
    float progress = static_cast<float>(_ticks) / static_cast<float>(_timeout);
    KXClampf(&progress, 0, 1);
    return progress;
}
