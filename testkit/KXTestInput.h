#pragma once

#include <Kobaltrix/KXTypes.h>

#include <functional>

/// A user for tests: hands the platform the events that a keyboard, a mouse and a touch screen would, and
/// runs the game step by step. What was handed over is read by the next logic step, as real input is.
class KXTestInput {
public:
    /// @param windowID the window that events belong to, KXWindow::id().
    /// @param logic the game's own step, called by step(); may be empty.
    explicit KXTestInput(unsigned windowID = 0, std::function<void()> logic = {});
    virtual ~KXTestInput();

    // Keys by the platform's codes, such as SDLK_a. Each event tells which modifier keys are held.
    void keyDown(int keycode);
    void keyUp(int keycode);
    /// What keys or an input method type, in UTF-8; a long text comes in several events.
    void type(const char* text);
    /// What an input method is composing.
    void compose(const char* text);

    void moveMouse(int x, int y); ///< In points of the window.
    // Buttons as the platform numbers them: 1 left, 2 middle, 3 right.
    void mouseDown(int button = 1);
    void mouseUp(int button = 1);
    void turnWheel(int notches, int sideways = 0); ///< Away from the user, and to the right.

    // One finger, x and y as fractions of the window.
    void fingerDown(float x, float y);
    void moveFinger(float x, float y);
    void fingerUp(float x, float y);

    void resizeWindow(int width, int height); ///< Tells of it only; the window keeps its size.
    void quit();

    /// Frames with exactly one logic step each, whatever time has passed.
    virtual void step(unsigned count = 1);

    // What takes several steps. Each ends with a step in which everything is let go.
    void tap(int keycode, unsigned steps = 1);
    void click(int x, int y, int button = 1);
    void drag(KXPoint from, KXPoint to, unsigned steps = 8);

private:
    void _key(unsigned type, int keycode);
    void _button(unsigned type, int button);
    void _finger(unsigned type, float x, float y);

    unsigned _windowID;
    std::function<void()> _logic;
    int _modifiers = 0;
    int _x = 0, _y = 0;
    float _fingerX = 0, _fingerY = 0;
};
