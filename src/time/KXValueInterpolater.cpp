#include <Kobaltrix/KXInterpolation.h>

#include "core/ground/LogicClock.h"

#include <utility>

KXValueInterpolater::KXValueInterpolater() {
    _commonInit(1, 1.0f, 0.0f, 100.0f, 5.0f, -1, 0, 0, 0, KXAnimationCurveTypeEaseInOut);
}

KXValueInterpolater::KXValueInterpolater(int stepTicks, float duration, float extra, float startValue,
                                         float endValue, int repeatCount, int repeatDelay, int pingPong,
                                         int pingPongDelay, KXAnimationCurveType curve) {
    _commonInit(stepTicks, duration, extra, startValue, endValue, repeatCount, repeatDelay, pingPong,
                pingPongDelay, curve);
}

void KXValueInterpolater::_commonInit(int stepTicks, float duration, float extra, float startValue,
                                      float endValue, int repeatCount, int repeatDelay, int pingPong,
                                      int pingPongDelay, KXAnimationCurveType curve) {
    _stepTimer = KXTimer(stepTicks);
    _repeatDelayTimer = KXTimer(repeatDelay);
    _repeatCount = repeatCount;
    _repeatsDone = repeatCount == -1 ? -2 : 0;
    _waitingToRepeat = 0;
    _pauseTimer = KXTimer(pingPongDelay);
    _returning = 0;
    _pingPong = pingPong;
    _waitingToReturn = 0;
    _done = 0;
    _stepTicks = stepTicks;
    _elapsed = 0;
    _extra = extra;
    _currentValue = startValue;
    _startValue = startValue;
    _from = startValue;
    _endValue = endValue;
    _to = endValue;
    _duration = duration;
    _curve = curve;
}

float KXValueInterpolater::value() const { return _currentValue; }

int KXValueInterpolater::done() const { return _done; }

void KXValueInterpolater::reset() {
    _done = 0;
    _elapsed = 0;
    _stepTimer.reset();
    _from = _startValue;
    _to = _endValue;
    _pauseTimer.reset();
    _waitingToReturn = 0;
    _returning = 0;
    _waitingToRepeat = 0;
    _repeatDelayTimer.reset();
    _repeatsDone = 0; // also of a movement that repeats for ever, which then ends with its next run
}

float KXValueInterpolater::interpolate() {
    if (_done) {
        if (_repeatsDone >= _repeatCount)
            return _currentValue;
        const int repeatsDone = _repeatsDone;
        reset();
        _repeatsDone = repeatsDone;
        _waitingToRepeat = -1;
    }
    if (_waitingToReturn && _pingPong)
        _pauseBeforeReturn();
    if (_waitingToRepeat)
        _pauseBeforeRepeat();
    if (!_waitingToReturn && !_waitingToRepeat && _stepTimer.tick())
        _step();
    return _currentValue;
}

void KXValueInterpolater::_pauseBeforeReturn() {
    if (!_pauseTimer.tick())
        return;
    if (_returning) {
        _done = -1;
        return;
    }
    std::swap(_from, _to);
    _elapsed = 0;
    _waitingToReturn = 0;
    _returning = 1;
}

void KXValueInterpolater::_pauseBeforeRepeat() {
    if (!_repeatDelayTimer.tick())
        return;
    _done = 0;
    if (_repeatCount != -1 && _repeatsDone++ >= _repeatCount)
        _done = -1;
    _elapsed = 0;
    _waitingToRepeat = 0;
}

void KXValueInterpolater::_step() {
    const std::uint32_t stepsPerSecond = _KXLogicSpeed ? _KXLogicSpeed : 1;
    _elapsed += static_cast<float>(_stepTicks) / static_cast<float>(stepsPerSecond);

    // A run that takes no time has no progress to speak of: it is over.
    const bool timeless = _duration == 0 || _duration != _duration;
    if (timeless) {
        _currentValue = _to;
    } else {
        _currentValue = _from + KXAnimationCurve(_curve, _elapsed / _duration) * (_to - _from);
        KXClampf(&_currentValue, KXMinf(_from, _to), KXMaxf(_from, _to));
    }

    if (!timeless && !(_elapsed > _duration))
        return;
    if (_pingPong && !_returning)
        _waitingToReturn = -1;
    else
        _done = -1;
}
