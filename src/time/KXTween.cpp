#include <Kobaltrix/KXTween.h>

#include "core/ground/LogicClock.h"

#include <algorithm>
#include <cmath>
#include <numbers>

static double bounced(double t) { // a ball that is let fall: parabolas, the first of them half a one
    constexpr double fall = 1 / 2.75;
    constexpr double arcs[][2] = {{0, 0}, {1.5, 0.75}, {2.25, 0.9375}, {2.625, 0.984375}}; // middle, height
    const int arc = t < fall ? 0 : t < 2 * fall ? 1 : t < 2.5 * fall ? 2 : 3;
    const double fromMiddle = t / fall - arcs[arc][0];
    return fromMiddle * fromMiddle + arcs[arc][1];
}

// The curves that start slowly; all others are made of them. They come by threes after the linear one.
static double easedIn(int curve, double t) {
    constexpr double overshoot = 1.70158; // a tenth of the way at most
    constexpr double elasticPeriod = 0.3;
    switch (curve) {
    case 0:
        return t * t;
    case 1:
        return t * t * t;
    case 2:
        return t * t * t * t;
    case 3:
        return t * t * t * t * t;
    case 4:
        return 1 - std::cos(t * std::numbers::pi / 2);
    case 5:
        return t * t * ((overshoot + 1) * t - overshoot);
    case 6: // from exactly nothing, as 2 to the power of -10 would not be
        return (std::exp2(10 * t) - 1) / 1023 * std::cos((1 - t) * 2 * std::numbers::pi / elasticPeriod);
    default:
        return 1 - bounced(1 - t);
    }
}

float KXEased(KXEase ease, float t) {
    if (!(t > 0))
        return 0;
    if (t >= 1)
        return 1;
    if (ease <= KXEaseLinear || ease > KXEaseInOutBounce)
        return t;
    const int curve = (ease - KXEaseInQuadratic) / 3;
    const auto in = [curve](double part) { return easedIn(curve, part); };
    const double part = t;
    switch ((ease - KXEaseInQuadratic) % 3) {
    case 0:
        return static_cast<float>(in(part));
    case 1:
        return static_cast<float>(1 - in(1 - part));
    default:
        return static_cast<float>(part < 0.5 ? in(2 * part) / 2 : 1 - in(2 - 2 * part) / 2);
    }
}

static unsigned logicSpeed() { return std::max(_KXLogicSpeed, 1U); }

KXTween::KXTween(const KXTweenSettings& settings) : _settings(settings) { restart(); }

void KXTween::restart() {
    _stage = _Stage::Begin;
    _repeatsLeft = _settings.repeats;
    _speed = logicSpeed();
    _steps = _lastStep = 0;
    _before = 0;
    _arrived = 0;
    _moveTo(0);
}

void KXTween::finish() {
    _stage = _Stage::Done;
    _arrived = 0;
    _moveTo(_settings.backAndForth ? 0 : 1);
}

float KXTween::value() const { return _value; }
float KXTween::progress() const { return static_cast<float>(_progress); }
int KXTween::arrived() const { return _arrived; }
int KXTween::done() const { return _stage == _Stage::Done ? -1 : 0; }

float KXTween::step() {
    _arrived = 0;
    if (_stage == _Stage::Done)
        return _value;
    if (_steps < _lastStep && _speed != logicSpeed())
        _count(_part());
    while (_steps >= _lastStep) { // pauses may take no step, ways take one at least
        _stage = _next();
        if (_stage == _Stage::PauseBeforeRepeat && _repeatsLeft > 0)
            --_repeatsLeft;
        _count(0);
    }
    ++_steps;

    const bool there = _stage == _Stage::There, back = _stage == _Stage::Back;
    if (there || back)
        _moveTo(there ? _part() : 1 - _part());
    if (_steps == _lastStep && (there || back)) {
        _arrived = -1;
        if (_next() == _Stage::Done)
            _stage = _Stage::Done;
    }
    return _value;
}

void KXTween::_moveTo(double progress) {
    _progress = progress;
    const float eased = KXEased(_settings.ease, static_cast<float>(progress));
    const double from = _settings.from, to = _settings.to; // the way between them may be more than a float
    _value = eased == 0   ? _settings.from
             : eased == 1 ? _settings.to
                          : static_cast<float>(from + (to - from) * eased);
}

// How long the stage takes.
double KXTween::_seconds() const {
    switch (_stage) {
    case _Stage::Delay:
        return _settings.delay;
    case _Stage::There:
    case _Stage::Back:
        return _settings.seconds;
    case _Stage::PauseBeforeReturn:
        return _settings.pauseBeforeReturn;
    case _Stage::PauseBeforeRepeat:
        return _settings.pauseBeforeRepeat;
    default:
        return 0;
    }
}

// The part of the stage that is over.
double KXTween::_part() const {
    return _steps < _lastStep
               ? _before + (1 - _before) * static_cast<double>(_steps) / static_cast<double>(_lastStep)
               : 1;
}

// Counts the steps of the stage from here on, where that part of it is over.
void KXTween::_count(double before) {
    constexpr double most = 1e15; // no game sees the end of it, and a double counts as far
    const bool way = _stage == _Stage::There || _stage == _Stage::Back;
    _speed = logicSpeed();
    const double steps = std::round((1 - before) * _seconds() * _speed);
    _steps = 0;
    _lastStep = steps > 0 ? static_cast<int64_t>(std::min(steps, most)) : 0;
    _lastStep = std::max<int64_t>(_lastStep, way);
    _before = before;
}

KXTween::_Stage KXTween::_next() const {
    switch (_stage) {
    case _Stage::Begin:
        return _Stage::Delay;
    case _Stage::Delay:
    case _Stage::PauseBeforeRepeat:
        return _Stage::There;
    case _Stage::There:
        if (_settings.backAndForth)
            return _Stage::PauseBeforeReturn;
        break;
    case _Stage::PauseBeforeReturn:
        return _Stage::Back;
    default:
        break;
    }
    return _repeatsLeft ? _Stage::PauseBeforeRepeat : _Stage::Done;
}
