#pragma once

#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIWidget.h>

#include <memory>
#include <vector>

/// @file
/// The widgets of a window, polled and drawn together.
///
/// @code
/// KXUIPanel panel;
/// panel.add(name); // an entry; Tab goes in this order
/// panel.add(save); // a button
/// panel.setDefaultButton(&save); // Return in the entry
///
/// panel.poll(); // in a logic step
/// if (save.activated())
///     saveLevel(name.text());
///
/// panel.draw(); // in a frame
/// @endcode

class KXUILayout;
struct _KXUIPanelParts;

/// Widgets in an order: that in which Tab goes through them and in which they are drawn, so that later ones
/// lie above earlier ones.
///
/// The one on top gets the mouse: a press, a turn of the wheel and the pointer are nothing to those below,
/// nor to those that the game polls by itself after the panel. What a widget has opened, such as the list of
/// a drop-down or a menu, lies above all of them. What came in a step reaches the widgets in the order in
/// which it came, also a click within one step.
///
/// Tab takes the keyboard to the next widget that can have it, Shift and Tab to the one before, around the
/// ends; a press takes it to the widget under the pointer. The one that has it shows a ring, unless it came
/// by the mouse. Return and Space press buttons, arrows move what can be moved. Alt and a letter goes to the
/// widget with this setMnemonic() or presses it.
///
/// A panel is a widget and may be in another one. It owns nothing: a widget that ends leaves its panel, and a
/// widget is in one panel at most, the last it was added to. Widgets may be added, removed and deleted at any
/// time, also by what a poll calls. Do not poll a widget of a panel by itself: ask activated(), and after
/// that what it tells of its last poll, such as KXUITextEntry::entered().
class KX_API KXUIPanel : public _KXUIWidget {
public:
    /// An empty panel without a background, of no size, which it needs only for a background and for a
    /// layout.
    KXUIPanel();
    /// Lets go of its widgets.
    ~KXUIPanel() override;

    /// Adds a widget behind the others. One that is this panel, or holds it, is not added. Throws
    /// std::bad_alloc, with nothing changed, when memory is exhausted.
    void add(_KXUIWidget& widget);
    /// Takes a widget out, which gives up the keyboard. Does nothing with one that is not in it.
    void remove(_KXUIWidget& widget);
    /// How many widgets it has.
    int count() const;
    /// A widget, from 0 in the order added; null for a bad index.
    _KXUIWidget* widget(int index) const;

    /// Has a layout fill the panel's rectangle, now and in each poll(). @param layout not owned, it must live
    /// as long as the panel or until another is set; null for none.
    void setLayout(KXUILayout* layout);
    /// With a non-zero @a has it fills its rectangle as #KXUIPartPanel of the theme, and is not clicked
    /// through.
    void setHasBackground(int has);
    /// Its colours where the theme has no palette; at first those of KXCurrentUIColors().
    void setColors(const KXUIColors& colors);

    /// The widget that is clicked by Return, unless the keyboard is with another button or something that
    /// needs Return for itself. @param widget not owned, forgotten when it leaves the panel; null for none.
    void setDefaultButton(_KXUIWidget* widget);
    /// The widget that is clicked by Escape, unless something is open that Escape closes.
    void setCancelButton(_KXUIWidget* widget);
    /// Has Alt and a key click a widget, or take the keyboard to one that is typed into or chosen from. The
    /// letter is underlined in captions that are laid out.
    /// @param widget one of this panel; a label means the widget that it names. @param key a KXKeyNumber; 0
    /// for none.
    void setMnemonic(_KXUIWidget& widget, int key);

    /// Gives a widget of this panel, or of one within it, the keyboard. @return -1, or 0 with nothing changed
    /// for one that cannot have it or is disabled or hidden.
    int focus(_KXUIWidget& widget);
    /// The widget of this panel, or of one within it, that has the keyboard; null for none.
    _KXUIWidget* focused() const;

    /// Polls all widgets. Call it once per logic step. @return -1 if the user acted on one of them, see
    /// activated().
    int poll();
    /// Draws all widgets, the ring around the one that has the keyboard, and what is open above them.
    void draw() override;
    /// The widgets in words, in their order; those of panels within it stand behind their panel, and what is
    /// hidden is left out.
    std::vector<KXUIDescription> descriptions() const;

    /// Also for its widgets. See _KXUIWidget::setWindowID().
    void setWindowID(unsigned id) override;
    int pollInPanel() override;                      ///< poll().
    int takesKeyboard() const override;              ///< 0: its widgets do.
    int containsPoint(KXPoint point) const override; ///< -1 where one of its widgets is, or its background.
    int takesWheel() const override;                 ///< Whether the widget under the pointer does.
    int hasPopup() const override;                   ///< -1 while one of its widgets has.
    void drawPopup() override;                       ///< Draws what those have.
    void refit() override;                           ///< Of its widgets.
    /// Brings a rectangle into view, as the keyboard has come to it; for panels that scroll.
    virtual void reveal(KXRect rect);
    KXUIDescription description() const override;

    // Used by the library itself.
    KX_INTERNAL void _takeStops(std::vector<_KXUIWidget*>& stops) const;
    KX_INTERNAL _KXUIPanelParts& _own() const;
    KX_INTERNAL std::shared_ptr<_KXUIPanelParts> _shared() const;

protected:
    // For the panels of the library.
    KX_INTERNAL explicit KXUIPanel(std::shared_ptr<_KXUIPanelParts> (*makeParts)(KXUIPanel&));
    KX_INTERNAL void _addFixed(_KXUIWidget& widget);

private:
    KX_INTERNAL void _drawWidgets(bool fixed);
    std::shared_ptr<_KXUIPanelParts> _parts;
};
