#pragma once

#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// @file
/// Boxes with a mark that each click sets or takes away.

class _KXCaption;

/// A box with a mark or without one, and a caption to its right that belongs to what is clicked.
///
/// Poll it with clicked(KXMouseLeft) and draw it with draw(). The caption is laid out whatever the theme
/// says: it is no format, and ends with an ellipsis where it does not fit.
class KX_API KXUICheckBox : public _KXUIWidget {
public:
    /// A box without a mark, in the colours of KXSetUIColor(): background, border, and texts for the mark.
    KXUICheckBox();
    ~KXUICheckBox() override;

    /// Sets the caption and fits the size to it. @param text copied, with colour spans; null for none.
    void setText(const char* text);
    /// The caption; empty without one.
    const char* text() const;
    /// Sets the extent in pixels. A width or height of -1 is fitted to box and caption, whose font it takes
    /// to be as high as a button.
    void setSize(KXSize size) override;

    /// Sets the mark with a non-zero @a checked, takes it away with 0.
    void setChecked(int checked);
    /// -1 with a mark, 0 without.
    int isChecked() const;

    void setBoxColor(KXColor color);    ///< Of the box.
    void setBorderColor(KXColor color); ///< Around the box.
    void setMarkColor(KXColor color);   ///< Of the mark.
    void setTextColor(KXColor color);   ///< Of the caption.

    /// Like _KXUIWidget::clicked(); a click of any button that is asked for sets the mark or takes it away.
    int clicked(int button) override;
    /// Draws the box, its mark and the caption. Throws std::bad_alloc as KXTextLayout::draw() does.
    void draw() override;
    KXUIDescription description() const override; ///< Says whether it is checked.

    // Used by the library itself.
    KX_INTERNAL void _beRound();
    KX_INTERNAL KXSize _fit() const;

private:
    KX_INTERNAL float _side() const;
    KX_INTERNAL void _drawMark(KXRect box) const;

    std::unique_ptr<_KXCaption> _caption; // null without one
    KXColor _boxColor, _borderColor, _markColor, _textColor;
    int32_t _isChecked, _isRound;
};
