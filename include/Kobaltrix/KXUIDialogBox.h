#pragma once

#include <Kobaltrix/KXTextLayout.h>
#include <Kobaltrix/KXUIWidget.h>

#include <memory>
#include <vector>

/// @file
/// A message with buttons to answer it.

class KXUIButton;
class _KXCaption;

/// A box with a message and push buttons, sized to hold both.
///
/// Give it a font, unless there is a user-interface font, before its buttons. Poll it with poll() once per
/// logic step and read buttonIndexClicked(). The box does not keep other widgets from being clicked. Its own
/// colours do not follow KXSetUIColor(), those of its buttons do.
///
/// resize() puts the first button's corner at (X - padding, Y - padding) and that of every later one at
/// (X - W - padding, Y - padding), where (X, Y) is the box's corner and W its width: beside the box, one upon
/// another, where the topmost takes the click. To have them elsewhere, move them through button() once the
/// last is added; whatever calls resize() places them anew, and moving the box does not move them.
///
/// With #KXUICaptionsLaidOut the buttons stand in a row at the bottom right within the box, and go where it
/// goes, and the message may have lines.
class KX_API KXUIDialogBox : public _KXUIWidget {
public:
    /// A box without message and buttons: black on white, padding 2.
    KXUIDialogBox();
    /// Deletes the buttons.
    ~KXUIDialogBox() override;

    /// Like _KXUIWidget::setFont(), and lays the box out anew. Buttons keep their fonts.
    int setFont(const char* path, KXAliasMode mode) override;
    /// Like _KXUIWidget::setFontSize(), also for the buttons, and lays the box out anew, with any font.
    int setFontSize(int size) override;
    /// Moves the box.
    void setOrigin(KXPoint origin) override;
    /// Sets the extent in pixels, until something calls resize().
    void setSize(KXSize size) override;
    /// Also for the buttons. See _KXUIWidget::setWindowID().
    void setWindowID(unsigned id) override;

    /// Sets the message. @param text copied, the first 512 bytes of it; null for none. A message is used as a
    /// format without arguments ("%%" prints one percent sign, but is measured as two) and may hold colour
    /// spans, see KXFont. With captions that are laid out it is no format, and of any length.
    void setMessage(const char* text);
    /// Wraps a message that is laid out at a width, or that of the buttons' row where that is wider. The box
    /// is as wide as the widest line needs. 0, as at the start, wraps nothing.
    void setMessageWidth(float width);
    /// Where the lines of a message that is laid out stand; at first #KXTextAlignStart.
    void setMessageAlign(KXTextAlign align);
    /// Adds a button that belongs to the box; without a font does nothing. A font that was given to the box
    /// is the button's too, at the same size. @param text the caption, copied; null is an empty one.
    void addButton(const char* text);
    /// Sets the pixels around and between message and buttons.
    void setPadding(int padding);
    void setBackgroundColor(float r, float g, float b, float a); ///< The box, 0.0 to 1.0 a channel.
    void setTextColor(float r, float g, float b, float a);       ///< The message, 0.0 to 1.0 a channel.
    void setBorderColor(float r, float g, float b, float a);     ///< The outline, 0.0 to 1.0 a channel.
    /// Sets a colour of the buttons that there are now; for each see KXUIButton.
    void setButtonNormalBackgroundColor(float r, float g, float b, float a);
    /// Sets a colour of the buttons that there are now.
    void setButtonDepressedBackgroundColor(float r, float g, float b, float a);
    /// Sets a colour of the buttons that there are now.
    void setButtonBorderColor(float r, float g, float b, float a);
    /// Sets a colour of the buttons that there are now.
    void setButtonTextColor(float r, float g, float b, float a);

    /// The index of the button that was clicked last, from 0 in the order added; -1 before the first click.
    /// It stays until the next click.
    int buttonIndexClicked();
    /// A button, for what the box has no setter for; null for a bad index. It belongs to the box.
    KXUIButton* button(int index);

    /// Polls the buttons. Call it once per logic step. Of several that are clicked the last one counts.
    void poll();
    /// Draws the box, then its buttons in the order added.
    void draw() override;
    int pollInPanel() override; ///< poll(). @return -1 if a button was clicked in it.
    /// Left and Right go from button to button, Return and Space click.
    int handleKey(const KXUIKey& key) override;
    KXRect focusRect() const override;            ///< That of the button that the keys are with.
    KXUIDescription description() const override; ///< The message is its name, that button its value.

    /// Fits the box to message and buttons and places the buttons. Does nothing without a font. Everything
    /// that changes the layout calls it.
    void resize();

private:
    KX_INTERNAL void _placeButtons();
    KX_INTERNAL void _placeButtonsInside();
    KX_INTERNAL void _layOut(const KXFont& font);
    KX_INTERNAL KXSize _rowSize() const;

    std::unique_ptr<_KXCaption> _message;
    float _messageWidth;
    KXTextAlign _messageAlign;
    int32_t _buttonIndexClicked;
    std::vector<std::unique_ptr<KXUIButton>> _buttons;
    int32_t _keyButton; // that the keys are with
    unsigned _clicks;
    int32_t _padding;
    KXColor _backgroundColor;
    KXColor _textColor;
    KXColor _borderColor;
};
