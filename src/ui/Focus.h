#pragma once

#include "input/StepInput.h"

#include <cstdint>

class _KXUIWidget;

/// Whether mouse or keyboard, as @a whose asks, are in another window than a widget's, 0 for every one. Most
/// widgets are never told of a window and ask nothing.
inline bool _KXIsElsewhere(unsigned windowID, unsigned (*whose)()) {
    const unsigned actual = windowID ? whose() : 0;
    return actual && actual != windowID;
}

/// A widget's part in the focus. The keyboard and the pointer belong to one widget each at a time; this is
/// the one place that knows to which, and the one that turns the platform's text input on and off for it.
///
/// It is also where a widget hears of what the user does, event by event in the order in which it came,
/// however much of that lies within a step: the mouse's to each widget, the keyboard's to the one that has
/// it when they come. Who has the keyboard may change from event to event, by a click or by Tab, and widgets
/// are polled one after the other; so each event goes by its number to whom it belongs.
class _KXFocus {
public:
    _KXFocus();
    /// Gives up what it has.
    virtual ~_KXFocus();
    _KXFocus(const _KXFocus&) = delete;
    _KXFocus& operator=(const _KXFocus&) = delete;

    /// The window of the widget, 0 for every one.
    unsigned windowID = 0;

    /// Whose the keyboard is, null if nobody has it.
    static _KXFocus* keyboardOwner();
    bool hasKeyboard() const { return keyboardOwner() == this; }
    /// The keyboard has come by Tab, in either direction, or comes back because there is no other stop.
    virtual void tabArrived() {}
    /// Takes the keyboard, from whoever has it, from the event on that is being heard, or in no event what
    /// comes from now on: keys that are held and what was typed before are not for this widget.
    void takeKeyboard();
    /// The same by a key: what has it shows that.
    void takeKeyboardByKey();
    /// Leaves the keyboard to nobody; nothing happens without it.
    void giveUpKeyboard();
    /// Takes the keyboard for a while, until returnKeyboard() or until another takes it.
    void borrowKeyboard();
    /// Gives it back to whoever had it, if that still lives; nothing happens without it.
    void returnKeyboard();
    /// Whether another in the same window has borrowed it: something is open there.
    bool isBehindBorrower() const;

    /// To be called first in each poll of a widget that Tab stops at: if the keyboard is on its way, it
    /// arrives here.
    void pollTabStop();
    /// Tab: sends the keyboard to the next stop that is polled. Until then it stays here.
    static void sendKeyboardOn();
    /// Shift and Tab, within the poll of a stop: sends the keyboard to the one that was polled before.
    static void sendKeyboardBack();

    /// Tells the widget of what it has not heard yet, up to the event with a number. To be called in each
    /// poll: what came before the last step is forgotten, and where the last step was not polled, what came
    /// in it too, since widgets that are not polled do not react.
    void hear(std::uint64_t end);
    /// Up to the event that another is hearing.
    void hearSoFar();
    /// Everything, and then the key that is held, as often as it repeats in this step.
    void hear();
    /// Gives up what it has and leaves out what it has not heard yet: the user does not work the widget.
    void leaveOut();
    /// Leaves out what it has not heard yet of the mouse.
    void skipUnheard() { _heard = _KXNextEventNumber(); }
    /// The number of the first event that is yet to be heard.
    std::uint64_t firstUnheard();
    /// Whether an input method is at work, which takes the keys.
    static bool inputMethodIsAtWork();

    /// Takes the pointer, for as long as the left mouse button stays down. Within the hearing of a press.
    void takePointer();
    /// Whether it has it; while it hears, at the time of the event.
    bool hasPointer() const;

    /// For a widget that lies on top: keeps the event of the mouse that is being heard, and the pointer until
    /// the next step, from all that is polled later. What another has claimed stays its own, unless this is a
    /// part of it, in its turn. Outside of the hearing of an event it claims the pointer alone.
    static void claimPointer(const _KXUIWidget& widget);
    /// Whether the pointer is claimed, in this step or the last, by another than a widget or whose turn it
    /// is, or where that is not to be seen. While an event is heard it is not claimed: whose that is has been
    /// asked before.
    static bool pointerIsKeptFrom(const _KXUIWidget& widget);
    /// A widget ends.
    static void forgetClaims(const _KXUIWidget& widget);
    /// While it lives, a widget is polled or drawn with all its parts, which what it has claimed is not kept
    /// from.
    class Turn {
    public:
        /// @param view where alone it is to be seen, and so under the pointer; null for everywhere.
        explicit Turn(const _KXUIWidget& whose, const KXRect* view = nullptr);
        ~Turn();
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

    private:
        friend class _KXFocus;
        const _KXUIWidget* _whose;
        const KXRect* _view;
        const Turn* _outer;
    };

    /// Whether nobody may learn what is typed while this has the keyboard.
    virtual bool isSecret() const { return false; }
    /// The same of who will hear what comes next: the keyboard may change hands within a step, which is known
    /// once the step is heard.
    static bool nextTypingMayBeSecret();

    /// Is asked first about each key that goes down, to keep it from the widget; null for nobody.
    struct KeyFilter {
        virtual ~KeyFilter() = default;
        virtual bool keepsKey(const KXInputEvent& key, const _KXModifiers& modifiers) = 0;
        /// Whether all keys are its own, or its widgets', so that none is a shortcut of a menu.
        virtual bool needsAllKeys() const { return false; }
    };
    KeyFilter* filter = nullptr;
    /// Whether a key is for this alone while it has the keyboard, and no shortcut of a menu: by itself each
    /// that is neither a function key nor held with Control, Command or Alt.
    virtual bool needsKey(int key, const _KXModifiers& modifiers) const;

    /// Hands the keyboard on at Tab and back at Shift and Tab, by itself.
    bool passesTabOn = false;
    /// Means Tab for its text: in a panel Control and Tab hands the keyboard on instead.
    bool keepsTab = false;
    /// Leaves Return to its panel as well, which presses a button then.
    bool leavesReturn = false;
    /// Whether the keyboard came by a key, so that where it is wants to be shown.
    bool arrivedByKeyboard = false;

protected:
    /// A button went down or up, or the mouse moved or its wheel turned. Meanwhile the pointer's variables
    /// tell where it was.
    virtual void heardMouse(const KXInputEvent&, const _KXModifiers&) {}
    /// A key went down or repeats, in the game's time.
    virtual void heardKey(const KXInputEvent&, const _KXModifiers&) {}
    virtual void heardText(const char*) {}
    /// What an input method is composing has changed; empty when it ends.
    virtual void heardComposition(const char*) {}
    /// The keyboard has come.
    virtual void keyboardTaken() {}
    /// The keyboard goes; all that was for this widget has been heard.
    virtual void keyboardLost() {}
    /// Anything but the mouse, whoever has the keyboard, before that one is told of it.
    virtual void overheard(const KXInputEvent&, const _KXModifiers&) {}
    /// A key went down while nobody has the keyboard, or one who is not polled.
    virtual void heardKeyOfNobody(const KXInputEvent&, const _KXModifiers&) {}
    /// Whether the keyboard is for typing, with what the platform does for that.
    virtual bool takesText() const { return true; }

private:
    void takeKeyboard(std::uint64_t from);
    bool mayHearKey(std::uint64_t number) const;
    static bool isAnothers(const _KXUIWidget* claimer);
    void hearEvent(std::uint64_t number, bool pointerMovedOn);
    void hearKeyboard(const _KXPastEvent& past);
    void hearMouse(const _KXPastEvent& past, bool pointerMovedOn);
    void hearRepeats();
    void skipUnpolled();
    static bool nobodyHears();

    std::uint64_t _heard;     // the first event of the mouse that was not heard
    std::uint64_t _lentUntil; // keys before that event are for this widget though another has them since
    std::uint32_t _polledStep;
    std::uint32_t _attendedStep; // in which it heard or got the keyboard last
};
