#pragma once

#include <Kobaltrix/KXPlatform.h>

#include <stdint.h>

/// @file
/// Timers: one that counts logic steps and one that measures real time. Both are plain values that copy their
/// state; nothing here allocates or fails. Truth values are ints: -1 for yes, 0 for no.

/// A timer that counts calls of tick(). A game ticks it once per logic step, so it stands still while the
/// game pauses and never skips.
class KX_API KXTimer {
public:
    /// A timer that fires on every tick.
    KXTimer();
    /// A timer that fires on every @a timeout-th tick; 1 and less fire on every tick.
    explicit KXTimer(int timeout);

    /// Sets a fixed timeout in ticks, 0 for a negative one. The ticks counted so far stay counted.
    void setTimeout(int timeout);
    /// Has the timeout drawn at random, now and again whenever the timer fires or is reset. In ticks, both
    /// ends included; a @a min greater than @a max becomes @a max. With a negative end one timeout is drawn
    /// now and kept. The ticks counted so far stay counted.
    void setMinMaxTimeout(int min, int max);
    /// Starts counting from 0 again, with a newly drawn timeout if it is a random one.
    void reset();
    /// Counts one tick. Returns -1 when the timeout is reached, and counting starts from 0 again; else 0.
    int tick();
    /// The part of the timeout that has passed, 0.0 to 1.0; 1.0 with a timeout of 0, 0.0 with a negative one.
    float progress() const;

    // Used by the library itself.
    KX_INTERNAL void _sharedInit(int timeout);

private:
    int32_t _ticks;      // since the last firing or reset
    int32_t _timeout;    // ticks
    int32_t _maxTimeout; // ticks; negative: no range
    int32_t _minTimeout; // ticks; negative: no range

    KX_INTERNAL bool _hasRange() const { return _minTimeout >= 0 && _maxTimeout >= 0; }
};

/// A timer that measures real time in seconds, to the millisecond. It runs all the time; a single period may
/// last up to 24 days.
class KX_API KXRealTimeTimer {
public:
    /// A timer with a timeout of 0 seconds, started now.
    KXRealTimeTimer();
    /// A timer with a timeout in seconds, started now; 0 for a negative one and for not-a-number.
    explicit KXRealTimeTimer(float timeout);

    /// Sets a fixed timeout in seconds, 0 for a negative one and for not-a-number, and starts now.
    void setTimeout(float timeout);
    /// Has the timeout drawn at random, now and again whenever the timer fires or is reset, and starts now.
    /// In seconds, to a ten-thousandth, both ends included; a @a min that is greater than @a max or not a
    /// number becomes @a max. With a @a max that is not a number the timeout is 0.
    void setMinMaxTimeout(float min, float max);
    /// Starts now, with a newly drawn timeout if it is a random one.
    void reset();
    /// -1 when more than the timeout has passed, and the timer starts again now; else 0. Time beyond the
    /// timeout is dropped, not carried over.
    int tick();
    /// Seconds since the timer started; negative once more than 24 days have passed.
    float elapsedTime() const;
    /// The elapsed time divided by the timeout. Not clamped: it exceeds 1.0 while the timer is due and not
    /// ticked. With a timeout of 0 it is infinite, and not a number while no time has passed; with a negative
    /// one, which setMinMaxTimeout() allows, it is negative.
    float progress() const;

    // Used by the library itself.
    KX_INTERNAL void _sharedInit(float timeout);

private:
    uint32_t _startTicks; // milliseconds, when the timer last started
    float _timeout;       // seconds
    int32_t _useRange;    // -1: the timeout is drawn from the range
    float _maxTimeout;    // seconds
    float _minTimeout;    // seconds
};
