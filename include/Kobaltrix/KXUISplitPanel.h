#pragma once

#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUILayout.h>
#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// @file
/// Two parts of a window with a divider between them, which the user moves.

/// How a split panel is divided. Numbers that make no sense count as their defaults.
struct KXUISplitPanelOptions {
    KXUILayoutKind kind =
        KXUIRow;            ///< #KXUIRow for parts beside each other, #KXUIColumn for below each other.
    float share = 0.5f;     ///< What the first part has of the room of both at first, 0 to 1.
    float leastFirst = 40;  ///< Pixels that the first part keeps at least,
    float leastSecond = 40; ///< and the second one.
    float divider = 6;      ///< Pixels between both.
};

/// Two rectangles with a divider between them, that is dragged, and moved by arrows while it has the
/// keyboard.
///
/// @code
/// KXUISplitPanel split;
/// split.first().add(list, 1); // which fills the left part
/// split.setRect({0, 0}, window.size()); // in every frame
/// split.poll(); // in a logic step
/// drawLevelIn(split.secondRect());
/// @endcode
///
/// Each part has a layout, a column, that fills it, for widgets, layouts and other split panels. When the
/// panel gets another size its parts keep their shares, as far as their least sizes let them; where those do
/// not fit both give way. A double click on the divider, or Return, takes it back to where it was at first,
/// and Home and End to its ends. Over it the pointer has the shape of what it does.
class KX_API KXUISplitPanel : public _KXUIWidget {
public:
    /// Two empty parts.
    explicit KXUISplitPanel(const KXUISplitPanelOptions& options = KXUISplitPanelOptions());
    ~KXUISplitPanel() override;

    /// What fills the left or upper part. It belongs to the panel.
    KXUILayout& first();
    /// What fills the right or lower part.
    KXUILayout& second();
    /// The left or upper part, in whole pixels.
    KXRect firstRect() const;
    /// The right or lower part.
    KXRect secondRect() const;
    /// What is between them.
    KXRect dividerRect() const;
    /// Gives the first part a share of the room of both, from 0 to 1; what is no number changes nothing.
    void setShare(float share);
    /// The share of the first part, as the user or setShare() has put it.
    float share() const;

    /// Gives the divider the keyboard for a non-zero @a focus, takes it for 0.
    void setFocus(int focus);
    /// -1 while it has the keyboard, else 0.
    int hasFocus() const;

    /// Follows mouse and keyboard. Call it once per logic step. @return -1 when the user moved the divider in
    /// this call, else 0.
    int poll();
    /// Moves it, with what is in its layouts.
    void setOrigin(KXPoint origin) override;
    /// Sets the extent in pixels, and places what is in its layouts.
    void setSize(KXSize size) override;
    /// -1 while the pointer is over the divider, else 0.
    int mouseOver() override;
    /// Its colours where the theme has no palette; at first those of KXCurrentUIColors().
    void setColors(const KXUIColors& colors);
    /// Draws the divider, and places what is in its layouts.
    void draw() override;

    int pollInPanel() override;                      ///< poll().
    int containsPoint(KXPoint point) const override; ///< -1 on the divider.
    KXRect focusRect() const override;               ///< dividerRect().
    KXUIDescription description() const override;    ///< With the share in per cent as its value.
    _KXFocus* keyboardPart() override;

private:
    struct KX_INTERNAL State;

    std::unique_ptr<State> _state;
};
