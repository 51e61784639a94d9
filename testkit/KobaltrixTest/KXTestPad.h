#pragma once

#include <Kobaltrix/KXPads.h>

/// @file
/// A game pad for tests.

struct _SDL_Joystick;

/// What a test's pad is made of, for tests of the older calls of KXGamePad.h.
struct KXTestPadParts {
    /// @param ofAxes,ofButtons,ofHats see the members.
    KXTestPadParts(int ofAxes = 6, int ofButtons = 20, int ofHats = 1)
        : axes(ofAxes), buttons(ofButtons), hats(ofHats) {}

    int axes;    ///< Two sticks and two triggers.
    int buttons; ///< Those of KXPadButton, up to the last paddle.
    int hats;    ///< Not of the layout.
};

/// A game pad, plugged in while it lives. It moves only while somebody listens, as KXInitPads() and
/// KXInitGamePad() do; what it does is read by the next logic step. What it does not have, and a pad to which
/// nobody listens, gives false.
class KXTestPad {
public:
    /// Starts the platform's joysticks if they are not yet. plugged() tells whether they take this one.
    /// @param shakes whether it has motors. @param parts what it is made of.
    explicit KXTestPad(bool shakes = true, KXTestPadParts parts = KXTestPadParts());
    /// Unplugs it.
    ~KXTestPad();
    KXTestPad(const KXTestPad&) = delete;
    KXTestPad& operator=(const KXTestPad&) = delete;

    /// Whether it is plugged in.
    bool plugged() const;
    /// Pulls it out.
    void unplug();

    /// Holds a button; sticks and triggers go all the way to that side. It has no touch pad, and its guide
    /// button comes up a quarter of a second of the system's time after it went down at the earliest.
    bool hold(KXPadButton button);
    /// Lets a button go; sticks and triggers go back to rest.
    bool release(KXPadButton button);
    /// Moves a stick: -1 to 1, to the right and downward, before any dead zone.
    bool stick(KXPadSide side, KXPoint place);
    /// Pulls a trigger, 0 to 1.
    bool trigger(KXPadSide side, float way);

    /// How the pad's motors run, 0 to 1.
    struct Shaking {
        float low;  ///< The slow, heavy one.
        float high; ///< The fast, light one.
    };
    /// How it shakes now.
    Shaking shaking() const;

    // By the numbers of its parts, for KXGamePad.h.

    /// A button goes down or up.
    bool setButton(int button, int down);
    /// A hat is pushed: a sum of 1 up, 2 right, 4 down, 8 left.
    bool setHat(int hat, int position);
    /// An axis moves: -32768 to 32767, triggers from end to end.
    bool setAxis(int axis, int value);

private:
    bool _set(KXPadButton button, int down);
    _SDL_Joystick* _open() const;

    int _instance = -1;
    Shaking _shaking = {0, 0};
};
