#pragma once

struct _SDL_Joystick;

/// A game pad for tests, plugged in while it lives. It moves only while somebody has it open, as
/// KXInitGamePad() does; what it does is read by the next logic step.
class KXTestPad {
public:
    /// Starts the platform's joysticks if they are not yet. plugged() tells whether they take this one.
    explicit KXTestPad(int axes = 6, int buttons = 16, int hats = 1);
    ~KXTestPad();
    KXTestPad(const KXTestPad&) = delete;
    KXTestPad& operator=(const KXTestPad&) = delete;

    bool plugged() const;
    void unplug();

    // False where the pad is not open or has none of that number.
    bool setButton(int button, int down);
    bool setHat(int hat, int position); ///< A set of SDL_HAT_UP and the others.
    bool setAxis(int axis, int value);  ///< -32768 to 32767.

private:
    _SDL_Joystick* _open() const;

    int _instance = -1;
};
