#pragma once

#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// @file
/// A slider for numbers of any range.

/// The numbers of a slider. What is no number counts as 0, and one further from 0 than a thousand million
/// million as that.
struct KXUINumberSliderOptions {
    double from = 0;    ///< The number at the left end, or at the bottom.
    double to = 1;      ///< The one at the other end; less than the first counts as that.
    double step = 0;    ///< From one number to the next, counted from the first; 0 and less for any number.
    int isVertical = 0; ///< Non-zero for a slider that stands.
};

/// Picks a number of a range, also one with fractions or below 0, by a knob on a track, lying or standing,
/// with the mouse and with the keyboard. KXUISlider is the plain one for whole numbers from 0 on.
///
/// @code
/// KXUINumberSliderOptions options;
/// options.from = -12;
/// options.to = 12;
/// options.step = 0.5;
/// KXUINumberSlider gain(options);
/// gain.setRect({20, 20}, {160, -1});
/// if (gain.poll()) // in a logic step
///     use(gain.number());
/// @endcode
///
/// A press on the track brings the knob there, and it follows the pointer until the button is let go. While
/// the slider has the keyboard, arrows go by a step, Page Up and Page Down by ten, Home and End to the ends,
/// and the wheel over it by a step a notch; without a step that is a hundredth of the range. A number can be
/// typed, with a point or a comma: it is shown meanwhile, Return takes the nearest one that there is, and
/// Escape drops it.
class KX_API KXUINumberSlider : public _KXUIWidget {
public:
    /// At 0, or the number that is nearest to it.
    explicit KXUINumberSlider(const KXUINumberSliderOptions& options = KXUINumberSliderOptions());
    ~KXUINumberSlider() override;

    /// Gives it other numbers; the one it has moves to the nearest of them.
    void setOptions(const KXUINumberSliderOptions& options);
    /// Sets the number to the nearest one that there is; what is no number changes nothing.
    void setNumber(double number);
    /// The number.
    double number() const;

    /// Gives it the keyboard for a non-zero @a focus, takes it for 0.
    void setFocus(int focus);
    /// -1 while it has the keyboard, else 0.
    int hasFocus() const;

    /// Follows mouse and keyboard. Call it once per logic step. @return -1 when the user changed the number
    /// in this call, else 0.
    int poll();
    /// Sets the extent in pixels. Along the track -1 becomes 120, across it the height of a line.
    void setSize(KXSize size) override;
    /// Its colours where the theme has no palette; at first those of KXCurrentUIColors().
    void setColors(const KXUIColors& colors);
    /// Draws track and knob, and what is being typed.
    void draw() override;

    int takesWheel() const override;              ///< hasFocus().
    int pollInPanel() override;                   ///< poll().
    KXUIDescription description() const override; ///< With the number as its value.
    _KXFocus* keyboardPart() override;

private:
    struct KX_INTERNAL State;

    std::unique_ptr<State> _state;
};
