#pragma once

#include <Kobaltrix/KXKeys.h>
#include <Kobaltrix/KXTypes.h>
#include <KobaltrixTest/KXTestPicture.h>

#include <functional>
#include <map>
#include <set>

/// @file
/// Somebody who plays the game in a test.

class KXWindow;

/// A user at a window, who hands the platform the events that a keyboard, a mouse and a touch screen would,
/// makes the game's steps and looks at its pictures. What was handed over is read by the next logic step, as
/// real input is: so hold() alone changes nothing yet, while press(), click() and drag() take steps.
class KXTestUser {
public:
    /// @param window whose events they are, and that is looked at. @param step the game's logic step.
    /// @param draw its drawing, for which the window is the target; without the swap. Both may be empty.
    explicit KXTestUser(KXWindow& window, std::function<void()> step = {}, std::function<void()> draw = {});
    /// Hands alone, for a game that runs a loop of its own. @param windowID KXWindow::id() of the window that
    /// the events belong to. @param step as above.
    explicit KXTestUser(unsigned windowID = 0, std::function<void()> step = {});
    virtual ~KXTestUser() = default; ///< What is held stays held.

    /// A key by its label goes down; one that is held already repeats. Modifier keys count for those after
    /// it. Keys type nothing by themselves, see type().
    void hold(KXKeyNumber key);
    /// A key by its place goes down, on whatever layout.
    void hold(KXKeyPosition position);
    /// A button of the mouse goes down where the pointer is; those of the wheel are none, see wheel().
    void hold(KXMouseButton button);
    /// A key comes up.
    void release(KXKeyNumber key);
    /// A key comes up.
    void release(KXKeyPosition position);
    /// A button of the mouse comes up.
    void release(KXMouseButton button);
    /// Holds a key for some steps, and makes one more without it.
    void press(KXKeyNumber key, unsigned steps = 1);
    /// The same with a key by its place.
    void press(KXKeyPosition position, unsigned steps = 1);

    /// What keys or an input method type, in UTF-8; a long text comes in several events.
    void type(const char* text);
    /// What an input method is composing.
    void compose(const char* text);

    /// The pointer goes to a place, in points of the window, cut to whole ones.
    void move(KXPoint point);
    /// Goes to a place and clicks there; takes three steps.
    void click(KXPoint point, KXMouseButton button = KXMouseLeft);
    /// Drags from one place to another, on the way in so many steps, and three more.
    void drag(KXPoint from, KXPoint to, unsigned steps = 8, KXMouseButton button = KXMouseLeft);
    /// Turns the wheel away from the user and to the right, in notches; fine wheels give fractions.
    void wheel(float notches, float sideways = 0);

    /// A finger goes down on the screen. The first one moves the mouse as well and presses its left button,
    /// as on real screens, unless KXSetTouchMovesMouse(0) was called.
    /// @param finger any number for it. @param point in points of the window. @param pressure 0 to 1.
    void touch(int finger, KXPoint point, float pressure = 1);
    /// A finger that is down moves.
    void slide(int finger, KXPoint point, float pressure = 1);
    /// A finger is lifted where it is.
    void lift(int finger);

    /// Drops a file on the window.
    void dropFile(const char* path);
    /// Drops a text on the window.
    void dropText(const char* text);
    /// Gives the window another size in points. Without a display pixels beyond its first size stay black.
    void resize(KXSize size);
    /// Another window has the keyboard now.
    void loseFocus();
    /// The window has the keyboard again.
    void gainFocus();
    /// Asks to close the window.
    void close();
    /// Asks to end the program.
    void quit();

    /// Frames with exactly one logic step each, at the moment in which it is due, and without drawing. Where
    /// the test has moved the clock itself, nothing but the one step is owed. To be overridden for a game
    /// that runs a loop of its own.
    virtual void step(unsigned count = 1);
    /// A whole frame as a game's loop makes it, with the steps that are due after some time, drawing and
    /// swap; then KXLastDrawStatistics() tells what it has cost. @return how many steps it had.
    int frame(double milliseconds);
    /// Draws the game as it stands, and returns what is to be seen. Empty without a window.
    KXTestPicture look();

private:
    void _key(unsigned type, int keycode, int position);
    void _button(unsigned type, KXMouseButton button, bool byTouch);
    void _motion(KXPoint point, bool byTouch);
    void _finger(unsigned type, int finger, float pressure);
    void _drop(unsigned type, const char* text);
    void _tell(unsigned windowEvent, KXSize size = KXSize());
    void _draw();
    void _endFrame();
    KXSize _size() const;

    KXWindow* _window = nullptr;
    unsigned _windowID;
    std::function<void()> _step, _drawing;
    int _modifiers = 0;
    std::set<int> _held; // keycodes
    int _x = 0, _y = 0;
    KXPoint _wheel = {0, 0}; // less than a notch
    std::map<int, KXPoint> _fingers;
    int _mouseFinger = -1; // the one that moves the mouse, if any is down
    bool _movesMouse = false;
};
