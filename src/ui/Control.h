#pragma once

#include "ui/Focus.h"

#include <Kobaltrix/KXUIColors.h>

class KXUIListBox;
class KXUITextEntry;
class _KXUIWidget;

/// What the smaller widgets have in common: a press of the left button over one takes the keyboard and the
/// pointer, a press elsewhere lets go of the keyboard, and poll() tells whether the user changed something.
class _KXControl : public _KXFocus {
public:
    explicit _KXControl(_KXUIWidget& control) : widget(control) { passesTabOn = true; }

    /// Hears the step. @return -1 if the user changed something, else 0.
    int poll();
    /// Of KXUIPartState those that hold for all of it.
    unsigned states() const;
    /// Draws the ring around it while the keyboard has come to it by a key.
    void drawRing() const;

    _KXUIWidget& widget;
    KXUIColors colors = KXCurrentUIColors();
    bool changed = false; ///< By what no poll has told of yet.

protected:
    bool takesText() const override { return false; }
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    virtual void pressed(const _KXModifiers&) {}
    /// The pointer moved while it is the control's, which it is from the press to the release.
    virtual void dragged() {}
    virtual void released() {}
    /// Notches away from the user, with the pointer over it.
    virtual void wheelTurned(float) {}
    /// Whether Tab stops at it.
    virtual bool stopsTab() const { return true; }
    /// What belongs to the time of a step, once it is heard.
    virtual void stepHeard() {}
    /// The user cannot work it.
    virtual void leftOut() {}
};

/// Whole notches of a wheel that also tells parts of them.
class _KXNotches {
public:
    int add(float notches);

private:
    float _rest = 0;
};

/// What is repeated while a button is held, as keys are.
class _KXHeldButton {
public:
    void begin();
    /// How often in this step; 0 when asked again.
    int due();

private:
    std::uint32_t _since = 0, _told = 0;
};

/// Gives a line to type into, a part of a control, the colours of it.
void _KXColorEntry(KXUITextEntry& entry, const KXUIColors& colors);
/// The same for a list.
void _KXColorList(KXUIListBox& list, const KXUIColors& colors);

/// A filled triangle that points in one of four directions, in the middle of a box, in a colour as
/// _KXPartText() gives it.
void _KXDrawArrow(KXRect box, KXDirection direction, KXColor color);
