#pragma once

#include <Kobaltrix/KXUIPanel.h>

/// @file
/// More widgets than there is room for.

struct _KXUIScrollParts;

/// A panel that shows a part of its layout, with scroll bars where that is larger than the panel.
///
/// @code
/// KXUIScrollPanel scroll;
/// scroll.setLayout(&rows); // a column of many rows
/// for (Row& row : all)
///     scroll.add(row.button);
/// scroll.setRect({8, 8}, {200, 300});
/// @endcode
///
/// Its layout takes its natural size, or the panel's where that is larger. The wheel scrolls it, unless the
/// widget under the pointer has a use for the wheel, with Shift to the side; bars are dragged, and a press
/// beside a knob turns a page. When the keyboard comes to a widget that is out of sight it is scrolled there.
class KX_API KXUIScrollPanel : public KXUIPanel {
public:
    /// An empty panel without a background.
    KXUIScrollPanel();
    ~KXUIScrollPanel() override;

    /// Scrolls, as far as there is something: pixels of the content that lie left of the panel and above it.
    void scrollTo(KXPoint offset);
    /// How far it is scrolled.
    KXPoint scrolled() const;
    /// Scrolls as little as brings a rectangle of the window into view.
    void reveal(KXRect rect) override;
    int takesWheel() const override; ///< -1.
    KXUIDescription description() const override;

private:
    KX_INTERNAL _KXUIScrollParts& _scroll() const;
};
