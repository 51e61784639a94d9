#pragma once

#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// @file
/// Short messages that go by themselves.

/// What is shown in a message besides its text.
struct KXUIToastOptions {
    int milliseconds = 4000; ///< How long it is shown, by the logic's time; 0 and less until it is dismissed.
    /// The caption of a button, such as "Undo"; copied, null or empty for none.
    const char* action = nullptr;
};

/// A line with a message, at the bottom of its rectangle and in the middle, as wide as its text. Messages
/// that come while one is shown wait for their turn; each fades at its end.
///
/// @code
/// KXUIToast toast;
/// toast.setRect({0, 0}, window.size()); // in every frame
/// KXUIToastOptions undo;
/// undo.action = "Undo";
/// const int deleted = toast.show("A level was deleted.", undo);
/// toast.poll(); // in each logic step
/// if (toast.chosen() == deleted)
///     takeBack();
/// toast.draw(); // last, above all else
/// @endcode
///
/// Time stands still while the pointer rests on a message, or its button has the keyboard: Tab stops there,
/// Return and Space press it. A click on the message beside its button dismisses it, as Escape does while it
/// has the keyboard. Clicks take the keyboard from nobody.
class KX_API KXUIToast : public _KXUIWidget {
public:
    /// Without messages.
    KXUIToast();
    ~KXUIToast() override;

    /// Shows a message when those before it are done. @param text copied, one line, with colour spans, which
    /// ends with an ellipsis where there is no room. @param options for how long, and its button. @return its
    /// number, from 0 on; -1 for a null @a text.
    int show(const char* text, const KXUIToastOptions& options = KXUIToastOptions());
    /// The number of the message that is shown, -1 for none.
    int current() const;
    /// Its text, "" for none. It belongs to the toast and is valid until the next poll().
    const char* text() const;
    /// How many there are, with those that wait.
    int count() const;
    /// Ends the message that is shown.
    void dismiss();
    /// Ends all of them.
    void clear();

    /// Follows mouse, keyboard and time. Call it once per logic step. @return -1 when the user pressed a
    /// message's button in this call, else 0.
    int poll();
    /// The number of the message whose button the user pressed in the last poll(), -1 for none.
    int chosen() const;
    /// The box of the message, in the middle of the rectangle's bottom; empty without one.
    KXRect messageRect() const;
    /// -1 while the pointer is over the message, else 0.
    int mouseOver() override;
    /// Its colours where the theme has no palette; at first those of KXCurrentUIColors().
    void setColors(const KXUIColors& colors);
    /// Draws the message.
    void draw() override;

    int pollInPanel() override;                      ///< poll().
    int takesKeyboard() const override;              ///< -1 while there is a button.
    int containsPoint(KXPoint point) const override; ///< -1 on the message.
    KXRect focusRect() const override;               ///< That of the button.
    KXUIDescription description() const override;    ///< With the message as its name.
    _KXFocus* keyboardPart() override;

private:
    struct KX_INTERNAL State;

    std::unique_ptr<State> _state;
};
