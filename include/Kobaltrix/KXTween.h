#pragma once

#include <Kobaltrix/KXPlatform.h>

#include <stdint.h>

/// @file
/// Movements that end where they should: curves, and a number that goes along one in step with the logic
/// loop. Nothing here allocates or fails. Truth values are ints: -1 for yes, 0 for no.
///
///     KXTween rise({.from = 0, .to = 46, .seconds = 0.25f, .ease = KXEaseOutQuadratic});
///     height = rise.step(); // in each logic step
///
/// Before C++20 the fields of a KXTweenSettings are set one by one.

/// How a movement is eased. In starts slowly, out ends slowly, and in-out does both: the first half of the
/// movement as in, the second as out, each half as far. Out is in played backwards. Any other number behaves
/// as #KXEaseLinear.
///
/// With t from 0 to 1, in is: quadratic to quintic t to the power of 2 to 5; sine one less the cosine of t
/// quarter turns; back the cubic (s + 1) t³ - s t² whose s lets it go a tenth beyond its start first; elastic
/// a cosine wave of three and a third turns that grows as 2 to the power of 10 t does; bounce the arcs of a
/// ball that is let fall and rises to a quarter of the height each time, backwards. Back and elastic leave
/// the interval from start to end on their way, the others never do.
enum KXEase : int {
    KXEaseLinear = 0, ///< Constant speed.
    KXEaseInQuadratic,
    KXEaseOutQuadratic,
    KXEaseInOutQuadratic,
    KXEaseInCubic,
    KXEaseOutCubic,
    KXEaseInOutCubic,
    KXEaseInQuartic,
    KXEaseOutQuartic,
    KXEaseInOutQuartic,
    KXEaseInQuintic,
    KXEaseOutQuintic,
    KXEaseInOutQuintic,
    KXEaseInSine,
    KXEaseOutSine,
    KXEaseInOutSine,
    KXEaseInBack,
    KXEaseOutBack,
    KXEaseInOutBack,
    KXEaseInElastic,
    KXEaseOutElastic,
    KXEaseInOutElastic,
    KXEaseInBounce,
    KXEaseOutBounce,
    KXEaseInOutBounce ///< The last: those before it have all the numbers from 0 on.
};

/// The eased fraction for a progress of @a t: exactly 0 at 0 and below, exactly 1 at 1 and above, 0 for
/// not-a-number. Usable from any thread.
KX_API float KXEased(KXEase ease, float t);

/// What a KXTween does. Seconds are those of the game: logic steps at KXLogicInterval() a second, rounded to
/// whole steps. Negative ones and not-a-number count as 0.
struct KXTweenSettings {
    float from = 0;              ///< Where it starts.
    float to = 1;                ///< Where it goes to.
    float seconds = 1;           ///< How long a way takes, at least one step.
    KXEase ease = KXEaseLinear;  ///< How each way is eased.
    int repeats = 0;             ///< How often it does it again, -1 for ever.
    int backAndForth = 0;        ///< Non-zero: it goes back as well, as if time ran backwards.
    float delay = 0;             ///< Seconds before it sets out, once.
    float pauseBeforeReturn = 0; ///< Seconds at the far end, if it goes back.
    float pauseBeforeRepeat = 0; ///< Seconds at the end, if it repeats.
};

/// A number that moves from one value to another in game time, and is exactly there with its last step,
/// whatever the speed of the logic. For points and colours let it run from 0 to 1 and mix with its value, for
/// instance with KXParametricLine(). A plain value: a copy takes over the whole state and goes on
/// independently.
class KX_API KXTween {
public:
    /// Sets a movement up; it waits for step().
    KXTween(const KXTweenSettings& settings = KXTweenSettings());

    /// Advances by one logic step. A change of KXLogicInterval() on the way changes the steps that are left,
    /// not where it is.
    /// @return the value.
    float step();
    /// The value now: that of the last step, before the first where it starts.
    float value() const;
    /// How far along it is before easing: 0 at the start, 1 at the far end, and on the way back from 1 to 0.
    float progress() const;
    /// -1 if the last step came to an end of its way, at either side; so each time is told once.
    int arrived() const;
    /// -1 once all of it is over; more steps change nothing then. 0 before.
    int done() const;
    /// Begins again with the delay, and all repeats to do.
    void restart();
    /// Ends it at once: the value is the one it would end with, if it repeats for ever that of any repeat.
    void finish();

private:
    enum class _Stage : int { Begin, Delay, There, PauseBeforeReturn, Back, PauseBeforeRepeat, Done };

    KXTweenSettings _settings;
    _Stage _stage;
    int _repeatsLeft;          // below 0 for ever
    unsigned _speed;           // logic steps a second that the steps below are counted with
    int64_t _steps, _lastStep; // of this stage
    double _before;            // the part of the stage that was over when the speed changed last
    double _progress;
    float _value;
    int _arrived;

    KX_INTERNAL double _seconds() const;
    KX_INTERNAL double _part() const;
    KX_INTERNAL void _count(double before);
    KX_INTERNAL _Stage _next() const;
    KX_INTERNAL void _moveTo(double progress);
};
