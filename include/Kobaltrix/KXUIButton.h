#pragma once

#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// @file
/// Push buttons, and buttons that flip between off and on. Both are polled with clicked() and drawn with
/// draw(), and copy the user-interface colours of KXSetUIColor() when they are made.

class _KXCaption;

/// A rectangular push button with a one-line caption.
///
/// setText() fits the size to the caption, so give the button its font first: setFont() does not fit it
/// again. The size is that of the caption's ink and the padding on both sides, while the first letter stands
/// a little to the right of the padding, so captions nearly touch the right border. For more room make the
/// button wider with setSize({rect().size.width + 4, -1}), or widen KXUIWidgetInnerPadding for all widgets.
/// Captions in the middle of their button come with #KXUICaptionsLaidOut.
class KX_API KXUIButton : public _KXUIWidget {
public:
    /// A button without caption and size. setFont() fetches its font at 9 points.
    KXUIButton();
    ~KXUIButton() override;

    /// Sets the caption and fits the size to it. @param text copied. A caption is used as a format without
    /// arguments ("%%" prints one percent sign, but is measured as two), unless captions are laid out, and
    /// may hold colour spans, see KXFont.
    /// @return -1; 0 with nothing changed when @a text is null or the button has no font.
    int setText(const char* text);
    /// Sets the extent in pixels. A width or height of -1 is fitted to the caption; without a font or a
    /// caption it stays -1.
    void setSize(KXSize size) override;
    /// Like _KXUIWidget::setFontSize(). Also where that gives 0 the size is fitted to the caption, if there
    /// are a font and a caption.
    int setFontSize(int size) override;

    KXColor normalBackgroundColor() const;        ///< While it is not held.
    KXColor depressedBackgroundColor() const;     ///< While a mouse button is held on it.
    void setNormalBackgroundColor(KXColor color); ///< While it is not held.
    void setNormalBackgroundColor(float r, float g, float b, float a); ///< The same, 0.0 to 1.0 a channel.
    void setDepressedBackgroundColor(KXColor color); ///< While a mouse button is held on it.
    void setDepressedBackgroundColor(float r, float g, float b, float a); ///< The same, 0.0 to 1.0 a channel.
    void setBorderColor(KXColor color);                                   ///< The outline, one pixel thick.
    void setBorderColor(float r, float g, float b, float a);              ///< The same, 0.0 to 1.0 a channel.
    void setTextColor(KXColor color);                                     ///< The caption.
    void setTextColor(float r, float g, float b, float a);                ///< The same, 0.0 to 1.0 a channel.

    /// Draws the button, with the depressed background while any mouse button is held on it.
    void draw() override;
    KXUIDescription description() const override;

    // Used by the library itself.
    KX_INTERNAL void _drawWithBackgroundColor(KXColor background, bool isOn = false);

private:
    KXColor _normalBackgroundColor;
    KXColor _depressedBackgroundColor;
    KXColor _borderColor;
    KXColor _textColor;
    std::unique_ptr<_KXCaption> _caption; // null without a caption
};

/// What a toggle button shows.
enum KXUIToggleButtonState : int {
    KXUIToggleButtonStateOff = -1, ///< The button's normal colours.
    KXUIToggleButtonStateOn = 0    ///< The on colours.
};

/// A button that each click turns on or off.
class KX_API KXUIToggleButton : public KXUIButton {
public:
    /// A button that is off. Its on colours are those of a button with the roles exchanged: depressed while
    /// it is not held, normal while it is held.
    KXUIToggleButton();
    ~KXUIToggleButton() override;

    KXUIToggleButtonState state() const; ///< Off, on, or whatever was set.
    /// Sets the state. Any value is kept; one that is neither off nor on looks like off and no click changes
    /// it.
    void setState(KXUIToggleButtonState state);
    void setOnBackgroundColor(KXColor color);          ///< While it is on and not held.
    void setOnDepressedBackgroundColor(KXColor color); ///< While it is on and held.

    /// Like _KXUIWidget::clicked(); a click of any mouse button that is asked for turns the button on or off.
    int clicked(int button) override;
    /// Draws the button in the colours of its state.
    void draw() override;
    KXUIDescription description() const override; ///< Says whether it is on.

private:
    KXColor _onBackgroundColor;
    KXColor _onDepressedBackgroundColor;
    KXUIToggleButtonState _state;
};
