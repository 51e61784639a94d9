#pragma once

#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// @file
/// A number that is typed, or counted up and down.

/// The numbers of a spin box. What is no number counts as 0, and one further from 0 than a thousand million
/// million as that.
struct KXUISpinBoxOptions {
    double from = 0;         ///< The least number.
    double to = 100;         ///< The largest one; less than the least counts as that.
    double step = 1;         ///< What the buttons and keys add; 0 and less for nothing.
    int decimals = 0;        ///< Digits behind the point, 0 to 9. Numbers are rounded to them.
    const char* suffix = ""; ///< What stands behind the number, such as " px"; copied, null for nothing.
};

/// A number in a line to type into, beside two buttons that count.
///
/// @code
/// KXUISpinBoxOptions pixels;
/// pixels.from = 1;
/// pixels.to = 4096;
/// pixels.suffix = " px";
/// KXUISpinBox width(pixels);
/// width.setNumber(640);
/// width.setSize({-1, -1}); // as its numbers need
/// if (width.poll()) // in a logic step
///     resizeTo(width.number());
/// @endcode
///
/// The line is a KXUITextEntry with all that one does. What is typed counts once Return is pressed or the
/// keyboard leaves: a number beyond an end becomes that end, what is no number leaves the old one, and
/// Escape takes it back. Point and comma are both decimal signs, and the suffix may be left out. Up and Down
/// count by a step, Page Up and Page Down by ten, and the wheel over a box that has the keyboard by a step a
/// notch. A button that is held counts on after 500 ms, and then every 33 ms.
class KX_API KXUISpinBox : public _KXUIWidget {
public:
    /// At 0, or the number that is nearest to it.
    explicit KXUISpinBox(const KXUISpinBoxOptions& options = KXUISpinBoxOptions());
    ~KXUISpinBox() override;

    /// Gives it other numbers; the one it has moves to the nearest of them.
    void setOptions(const KXUISpinBoxOptions& options);
    /// Sets the number, rounded and moved to the nearest end as a typed one; what is no number changes
    /// nothing. What is being typed is dropped.
    void setNumber(double number);
    /// The number: never one outside of the options.
    double number() const;

    /// Gives it the keyboard for a non-zero @a focus, takes it for 0.
    void setFocus(int focus);
    /// -1 while it has the keyboard, else 0.
    int hasFocus() const;

    /// Follows mouse and keyboard. Call it once per logic step. @return -1 when the user changed the number
    /// in this call, else 0.
    int poll();
    /// Moves it.
    void setOrigin(KXPoint origin) override;
    /// Sets the extent in pixels. A width of -1 becomes that of the longest number with its suffix and the
    /// buttons, a height of -1 that of a line.
    void setSize(KXSize size) override;
    /// Like _KXUIWidget::setFont(), and fits what setSize() was given -1 for.
    int setFont(const char* path, KXAliasMode mode) override;
    /// Like _KXUIWidget::setFontSize(), and fits what setSize() was given -1 for.
    int setFontSize(int size) override;
    /// See _KXUIWidget::setWindowID().
    void setWindowID(unsigned id) override;
    /// Its colours where the theme has no palette; at first those of KXCurrentUIColors().
    void setColors(const KXUIColors& colors);
    /// Draws the line and the buttons.
    void draw() override;

    int takesWheel() const override;              ///< hasFocus().
    int pollInPanel() override;                   ///< poll().
    KXUIDescription description() const override; ///< With what stands in the line as its value.
    _KXFocus* keyboardPart() override;

private:
    struct KX_INTERNAL State;

    std::unique_ptr<State> _state;
};
