#pragma once

#include <Kobaltrix/KXUIPanel.h>

#include <memory>

/// @file
/// A colour, chosen by eye or typed.

/// Chooses a colour: a square of saturation and value, a bar of hue, one of opacity if there is one, a line
/// for the colour's digits, and the old colour beside the new one.
///
/// @code
/// KXUIColorPicker picker;
/// picker.setColor(lamp.color);
/// picker.setSize({-1, -1});
/// if (picker.poll()) // in a logic step
///     lamp.color = picker.color();
/// @endcode
///
/// It is a panel of these parts, which Tab goes through. In square and bars, arrows go by one of the 256
/// steps or by a degree of the hue, Page Up and Page Down by ten, Home and End to the ends. The line takes
/// six hexadecimal digits, or eight with opacity, with and without #; the colour follows them at once, and
/// what is no colour leaves the old one when the keyboard goes. A click on the old colour takes it back.
///
/// Colours have 256 steps of each channel: any of these that is set is what color() gives, to the bit.
class KX_API KXUIColorPicker : public KXUIPanel {
public:
    /// White, without opacity.
    KXUIColorPicker();
    ~KXUIColorPicker() override;

    /// Sets the colour, which is also the old one from now on. Channels are rounded to the nearest of 256
    /// steps; what is no number is 0.
    void setColor(KXColor color);
    /// The colour that is chosen; its opacity is what setColor() gave where the user cannot change it.
    KXColor color() const;
    /// The colour before the user's doing.
    KXColor oldColor() const;
    /// Lets the user choose the opacity as well for a non-zero @a shows; at first 0.
    void setShowsOpacity(int shows);

    /// Follows mouse and keyboard. Call it once per logic step. @return -1 when the user changed the colour
    /// in this call, else 0.
    int poll();
    /// Moves it.
    void setOrigin(KXPoint origin) override;
    /// Sets the extent in pixels. -1 becomes a width of 200 and a height that goes with it.
    void setSize(KXSize size) override;
    /// Like _KXUIWidget::setFont(), for the line.
    int setFont(const char* path, KXAliasMode mode) override;
    /// Like _KXUIWidget::setFontSize(), for the line.
    int setFontSize(int size) override;
    /// Its colours where the theme has no palette; at first those of KXCurrentUIColors().
    void setColors(const KXUIColors& colors);

    int pollInPanel() override;                   ///< poll().
    void refit() override;                        ///< Where its size is its own.
    KXUIDescription description() const override; ///< With the digits as its value.

private:
    struct KX_INTERNAL State;
    KX_INTERNAL float _footHeight() const;
    KX_INTERNAL void _placeParts();

    std::unique_ptr<State> _state;
};
