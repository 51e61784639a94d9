#pragma once

#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// @file
/// One of several texts, of which only that one is shown until the user looks for another.

/// A box that shows the chosen one of several texts, and opens a list of all of them.
///
/// @code
/// KXUIDropDown quality;
/// for (const char* name : {"Low", "Middle", "High"})
///     quality.add(name);
/// quality.setSelectedIndex(1);
/// quality.setSize({-1, -1}); // as its texts need
/// if (quality.poll()) // in a logic step
///     use(quality.selectedIndex());
/// @endcode
///
/// The mouse: a press opens the list and a click in it chooses, or both in one go: press, drag and let go.
/// The wheel scrolls the list, which shows ten texts at most and has a scroll bar beyond. A press elsewhere
/// closes it. The keyboard, while the box has it: Up, Down, Page Up, Page Down, Home, End and letters choose
/// at once, as they select in a KXUIListBox; Space, Return, Enter and Alt with Up or Down open the list, in
/// which those keys only go there until Return or Space chooses. Escape closes it and leaves what was chosen.
///
/// The list lies below the box, or above it where there is more room. While it is open the mouse is the
/// list's alone: for all widgets of its KXUIPanel, and without one for those that are polled after it; poll
/// drop-downs first then, and draw them last. Texts are numbered from 0; a number that is none changes
/// nothing. Texts may hold colour spans. Ten thousand of them cost a frame nothing.
class KX_API KXUIDropDown : public _KXUIWidget {
public:
    /// Without texts.
    KXUIDropDown();
    ~KXUIDropDown() override;

    /// Appends a text. @return its number; -1 for a null @a text.
    int add(const char* text);
    /// Puts a text before number @a index, or behind the last one for count(). What was chosen stays chosen.
    /// @return its number; -1 for another number or a null @a text.
    int insert(int index, const char* text);
    /// Removes a text; if it was chosen, none is then. @return -1 on success, 0 if there is no such text.
    int remove(int index);
    /// Removes all of them.
    void clear();
    /// Number of texts.
    int count() const;
    /// A text, null if there is no such. A temporary string (so cut to 1023 bytes).
    const char* text(int index) const;

    /// Chooses a text, -1 for none. @return -1 on success, 0 if there is no such text.
    int setSelectedIndex(int index);
    /// The chosen one, -1 for none.
    int selectedIndex() const;
    /// -1 while the list is open, else 0: keys such as Escape are then meant for it.
    int isOpen() const;

    /// Gives it the keyboard for a non-zero @a focus, takes it for 0.
    void setFocus(int focus);
    /// -1 while it has the keyboard, else 0.
    int hasFocus() const;

    /// Follows mouse and keyboard. Call it once per logic step. @return -1 when the user has chosen another
    /// text in this call, else 0.
    int poll();
    /// Sets the extent in pixels. A width of -1 becomes that of the widest text with the arrow, which
    /// measures all of them; a height of -1 that of a line.
    void setSize(KXSize size) override;
    /// Like _KXUIWidget::setFont(), also for the list, and fits what setSize() was given -1 for.
    int setFont(const char* path, KXAliasMode mode) override;
    /// Like _KXUIWidget::setFontSize(), also for the list, and fits what setSize() was given -1 for.
    int setFontSize(int size) override;
    /// See _KXUIWidget::setWindowID().
    void setWindowID(unsigned id) override;
    /// Its colours where the theme has no palette; at first those of KXCurrentUIColors().
    void setColors(const KXUIColors& colors);
    /// Draws the box, and the list while it is open unless a panel does that.
    void draw() override;

    int pollInPanel() override;                   ///< poll().
    int hasPopup() const override;                ///< isOpen().
    void drawPopup() override;                    ///< Draws the list while it is open.
    KXUIDescription description() const override; ///< With the chosen text as its value.
    _KXFocus* keyboardPart() override;

private:
    struct KX_INTERNAL State;

    std::unique_ptr<State> _state;
};
