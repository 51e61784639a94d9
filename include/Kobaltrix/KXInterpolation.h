#pragma once

#include <Kobaltrix/KXTimer.h>
#include <Kobaltrix/KXTypes.h>

/// @file
/// Easing curves, and a value that moves along one in step with the logic loop. Nothing here allocates or
/// fails. Truth values are ints: -1 for yes, 0 for no.

/// How a movement is eased. Any other value behaves as #KXAnimationCurveTypeLinear.
enum KXAnimationCurveType : int {
    KXAnimationCurveTypeLinear = 0,   ///< Constant speed.
    KXAnimationCurveTypeEaseIn = 1,   ///< Slow start.
    KXAnimationCurveTypeEaseOut = 2,  ///< Slow end.
    KXAnimationCurveTypeEaseInOut = 3 ///< Slow start and slow end.
};

/// The point at parameter @a t (0 to 1, not clamped) of the cubic Bézier curve from @a p0 to @a p3 with the
/// control points @a p1 and @a p2.
KX_API KXPoint KXBezierCurve(KXPoint p0, KXPoint p1, KXPoint p2, KXPoint p3, float t);

/// The eased fraction for a progress of @a t: 0 at 0 and 1 at 1 for every type. @a t is not clamped.
KX_API float KXAnimationCurve(KXAnimationCurveType type, float t);

/// A number that moves from a start value to an end value along an easing curve, in game time. It can come
/// back again (ping-pong) and repeat, each after a pause. The game calls interpolate() once per logic step.
/// A plain value: a copy takes over the whole state and goes on independently.
class KX_API KXValueInterpolater {
public:
    /// Moves from 100.0 to 5.0 in one second, eased in and out, over and over without pause.
    KXValueInterpolater();
    /// Sets a movement up; the first interpolate() is its first logic step.
    /// @param stepTicks logic steps from one change of the value to the next; with 0 and less time does not
    /// go
    ///   on, and the movement never ends.
    /// @param duration seconds of game time per run, and for each way of a ping-pong; with 0, and with
    ///   not-a-number, the first change is to the end value. A negative one ends with the first change too.
    /// @param extra kept, without effect.
    /// @param startValue where the movement starts; also value() until the first change.
    /// @param endValue where it moves to. A run ends with the first change after its duration, as far beyond
    ///   its end as that change is late. Linear and eased-in movements are at the end value then. The curves
    ///   with a slow end turn back beyond it, so what they leave short of the end value grows with the square
    ///   of the delay: of the whole way 1.2 (ease out) or 2.9 (in and out) times the square of the part of
    ///   the duration that the change is late, which is next to nothing while steps are short.
    /// @param repeatCount repeats after the first run, -1 for ever; less behaves as 0.
    /// @param repeatDelay pause before a repeat: the value holds for one interpolate() less than this. 0 and
    /// 1
    ///   are no pause.
    /// @param pingPong non-zero: after the way to the end value, go back to the start value.
    /// @param pingPongDelay pause before going back: the value holds for one interpolate() less than this. 0
    ///   and 1 are no pause.
    /// @param curve how each way is eased.
    KXValueInterpolater(int stepTicks, float duration, float extra, float startValue, float endValue,
                        int repeatCount, int repeatDelay, int pingPong, int pingPongDelay,
                        KXAnimationCurveType curve);

    /// Advances by one logic step and returns the value, which never leaves the interval between the start
    /// and end values. A run ends with the first change later than its duration.
    float interpolate();
    /// Starts over from the start value. value() stays as it is until the next change. A movement that
    /// repeats for ever ends with its next run from now on.
    void reset();
    /// The value last computed.
    float value() const;
    /// -1 once a run has finished, else 0. After the last run it stays; before a repeat the next
    /// interpolate() clears it.
    int done() const;

    // Used by the library itself.
    KX_INTERNAL void _commonInit(int stepTicks, float duration, float extra, float startValue, float endValue,
                                 int repeatCount, int repeatDelay, int pingPong, int pingPongDelay,
                                 KXAnimationCurveType curve);

private:
    KXTimer _stepTimer;
    KXTimer _repeatDelayTimer;
    int _repeatCount;
    int _repeatsDone; // -2 while repeating for ever
    int _waitingToRepeat;
    KXTimer _pauseTimer;
    int _returning;
    int _pingPong;
    int _waitingToReturn;
    int _done;
    int _stepTicks;
    float _elapsed; // game seconds in this run
    float _extra;
    float _currentValue;
    float _startValue;
    float _from; // the two ends of the way under way
    float _endValue;
    float _to;
    float _duration; // seconds
    KXAnimationCurveType _curve;

    KX_INTERNAL void _pauseBeforeReturn();
    KX_INTERNAL void _pauseBeforeRepeat();
    KX_INTERNAL void _step();
};
