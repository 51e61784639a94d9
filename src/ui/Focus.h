#pragma once

#include <string>

/// Whether mouse or keyboard, as @a whose asks, are in another window than a widget's, 0 for every one. Most
/// widgets are never told of a window and ask nothing.
inline bool _KXIsElsewhere(unsigned windowID, unsigned (*whose)()) {
    const unsigned actual = windowID ? whose() : 0;
    return actual && actual != windowID;
}

/// A widget's part in the focus. The keyboard and the pointer belong to one widget each at a time; this is
/// the one place that knows to which, and the one that turns the platform's text input on and off for it.
class _KXFocus {
public:
    _KXFocus() = default;
    /// Gives up what it has.
    virtual ~_KXFocus();
    _KXFocus(const _KXFocus&) = delete;
    _KXFocus& operator=(const _KXFocus&) = delete;

    /// The window of the widget, 0 for every one.
    unsigned windowID = 0;

    /// Whose the keyboard is, null if nobody has it.
    static _KXFocus* keyboardOwner();
    bool hasKeyboard() const { return keyboardOwner() == this; }
    /// Whether it has the keyboard and is typed to. What is typed in another window than its own is for
    /// nobody: it is forgotten here.
    bool isTypedTo();
    /// Takes the keyboard, from whoever has it. Keys that are held and text that was typed before are not for
    /// this widget.
    void takeKeyboard();
    /// Leaves the keyboard to nobody; nothing happens without it.
    void giveUpKeyboard();

    /// To be called first in each poll of a widget that Tab stops at: if the keyboard is on its way, it
    /// arrives here.
    void pollTabStop();
    /// Tab: sends the keyboard to the next stop that is polled. Until then it stays here.
    static void sendKeyboardOn();
    /// Shift and Tab, within the poll of a stop: sends the keyboard to the one that was polled before.
    static void sendKeyboardBack();

    struct Typed {
        std::string text;        ///< What was typed since the last call.
        std::string composition; ///< What an input method is composing but has not typed yet.
    };
    /// What the user types, for the poll of the widget that has the keyboard, before it asks for keys: those
    /// that an input method takes, the one that ends its work too, are not reported any more.
    static Typed takeTyped();
    /// Whether keys are an input method's, for who asks for them before takeTyped().
    static bool inputMethodIsAtWork();

    /// Takes the pointer, for as long as the left mouse button stays down.
    void takePointer();
    bool hasPointer() const;

    /// Whether nobody may learn what is typed while this has the keyboard.
    virtual bool isSecret() const { return false; }

protected:
    /// The keyboard has come.
    virtual void keyboardTaken() {}
    /// The keyboard goes; @a typed is what came since the last takeTyped().
    virtual void keyboardLost(const std::string& typed);
    /// The keyboard has come by Tab, in either direction, or comes back because there is no other stop.
    virtual void tabArrived() {}
};
