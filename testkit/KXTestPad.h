#pragma once

struct _SDL_Joystick;

/// A game pad for tests, plugged in while it lives. It moves only while somebody has it open, as
/// KXInitGamePad() and KXInitPads() do; what it does is read by the next logic step.
class KXTestPad {
public:
    /// Starts the platform's joysticks if they are not yet. plugged() tells whether they take this one.
    explicit KXTestPad(int axes = 6, int buttons = 16, int hats = 1, bool shakes = false);
    ~KXTestPad();
    KXTestPad(const KXTestPad&) = delete;
    KXTestPad& operator=(const KXTestPad&) = delete;

    bool plugged() const;
    void unplug();

    // False where the pad is not open or has none of that number.
    bool setButton(int button, int down);
    bool setHat(int hat, int position); ///< A set of SDL_HAT_UP and the others.
    bool setAxis(int axis, int value);  ///< -32768 to 32767.

    /// How the pad's motors run, 0 to 65535.
    struct Shaking {
        int low, high;
    };
    Shaking shaking() const;

private:
    _SDL_Joystick* _open() const;

    int _instance = -1;
    Shaking _shaking = {0, 0};
};
