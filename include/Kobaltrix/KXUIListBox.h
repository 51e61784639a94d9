#pragma once

#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIWidget.h>

#include <array>
#include <memory>
#include <stdint.h>
#include <string>
#include <vector>

class _KXFocus;
struct _KXModifiers;
struct KXInputEvent;

/// @file
/// A list of texts that scrolls and of which the user selects one.

/// A box of rows with a scroll bar where there are more rows than it shows.
///
/// The mouse: a press on a row selects it, a second press on it within half a second activates it, and
/// dragging selects what comes under the pointer; beyond the upper and the lower edge it scrolls, the faster
/// the further away. The wheel scrolls the box under the pointer by three rows a notch; the bar's knob can be
/// dragged, and a press beside it turns a page, again after 500 ms and then every 33 ms while it is held.
/// Times are those of the logic loop. What happens within a step counts in the order in which it came.
///
/// The keyboard, while the list has focus: Up, Down, Page Up, Page Down, Home and End select another row, and
/// repeat while they are held, as KXKeyTyped() does; Return and the key pad's Enter activate the selected
/// row. With setMultipleSelection(), Shift extends the selection, Control (Command on macOS) and a press
/// takes a row in or out, Control and an arrow moves without selecting, Control and Space takes in or out,
/// and Control and A selects all. Typing letters selects the next row that begins with them in any case, as
/// the user's keyboard layout writes them; a pause of a second begins a new word, and the same letter again
/// goes to the next row with it. A press of any mouse button on the list gives it focus, a press elsewhere
/// takes it; one list or text entry has focus at a time.
///
/// The keys are read beside the game's own queries, which still see every press: ask hasFocus() where a game
/// should not act on keys that are meant for a list. Keys that are held when a list gets focus count for it
/// only once they are pressed again.
///
/// Rows are numbered from 0. A number that is none changes nothing and gives the neutral result; nothing is
/// thrown but std::bad_alloc when memory is exhausted. Only the rows in view are measured and drawn, so that
/// a list of 100,000 scrolls as one of 10. Texts may hold colour spans as in KXFont::print(); a percent sign
/// is itself. One that is too long for the box ends in three dots.
///
/// Colours are those of KXSetUIColor() when the list is made. Without a font it draws its box only.
class KX_API KXUIListBox : public _KXUIWidget {
public:
    /// An empty list.
    KXUIListBox();
    ~KXUIListBox() override;

    /// Appends a row. @return its number; -1 for a null @a text.
    int add(const char* text);
    /// Puts a row before row @a index, or behind the last one for count(). What was selected stays selected.
    /// @return its number; -1 for another number or a null @a text.
    int insert(int index, const char* text);
    /// Removes a row; if it was selected, none is then. @return -1 on success, 0 if there is no such row.
    int remove(int index);
    /// Gives a row another text. @return -1 on success, 0 if there is no such row or @a text is null.
    int rename(int index, const char* text);
    /// Removes every row.
    void clear();
    /// Number of rows.
    int count() const;
    /// A row's text, null if there is no such row. A temporary string (so cut to 1023 bytes).
    const char* text(int index) const;

    /// The selected row, -1 for none. Where several can be, the one that the user came to last: keys move
    /// from it, and it may have been taken out again.
    int selectedIndex() const;
    /// Selects a row, alone, and scrolls to it; -1 selects none. Does not count as the user's doing in
    /// poll().
    /// @return -1 on success, 0 if there is no such row.
    int setSelectedIndex(int index);
    /// Lets the user select several rows for a non-zero @a multiple; at first, and for 0, one.
    void setMultipleSelection(int multiple);
    /// -1 if the user may select several rows, else 0.
    int hasMultipleSelection() const;
    /// -1 if a row is selected, else 0, also for a number that is no row.
    int isSelected(int index) const;
    /// Takes a row into the selection for a non-zero @a selected, out of it for 0; where only one can be
    /// selected it becomes that one. @return -1 on success, 0 if there is no such row.
    int setSelected(int index, int selected);
    /// The first selected row behind row @a after, -1 if there is none: to walk through them, from -1 on.
    int nextSelectedIndex(int after) const;
    /// The first row that is at least partly in view, -1 for an empty list.
    int firstVisibleIndex();
    /// Scrolls by as little as brings a row into view whole. @return -1, or 0 if there is no such row.
    int scrollTo(int index);
    /// The row at a position in pixels, -1 if there is none.
    int indexAt(KXPoint point);

    /// Gives the list the keyboard for a non-zero @a focus, takes it for 0.
    void setFocus(int focus);
    /// -1 while the list has the keyboard, else 0.
    int hasFocus() const;

    /// Takes the user's doing of one logic step in. @return -1 if the user changed what is selected or
    /// activated a row in this call, else 0.
    int poll();
    /// -1 if the user changed what is selected in the last poll(), else 0.
    int selectionChanged() const;
    /// The row that the user activated in the last poll(), -1 for none.
    int activatedIndex() const;

    /// See _KXUIWidget::setWindowID().
    void setWindowID(unsigned id) override;
    /// Draws the list into the current target, within the limit that the game has set there, which stays.
    void draw() override;
    int pollInPanel() override;                   ///< poll().
    int takesWheel() const override;              ///< -1.
    KXUIDescription description() const override; ///< The row that is selected is its value.
    _KXFocus* keyboardPart() override;

    void setBackgroundColor(KXColor color);                      ///< Behind the rows.
    void setBackgroundColor(float r, float g, float b, float a); ///< Behind the rows.
    void setBorderColor(KXColor color);                          ///< Around list and knob.
    void setBorderColor(float r, float g, float b, float a);     ///< Around list and knob.
    void setTextColor(KXColor color);                            ///< Of texts outside of colour spans.
    void setTextColor(float r, float g, float b, float a);       ///< Of texts outside of colour spans.
    void setSelectionColor(KXColor color);                       ///< Behind the selected row; the held knob.
    void setSelectionColor(float r, float g, float b, float a);  ///< Behind the selected row; the held knob.
    void setFocusColor(KXColor color);                           ///< Around the list that has the keyboard.
    void setFocusColor(float r, float g, float b, float a);      ///< Around the list that has the keyboard.
    void setTrackColor(KXColor color);                           ///< Of the scroll bar, behind its knob.
    void setTrackColor(float r, float g, float b, float a);      ///< Of the scroll bar, behind its knob.
    void setKnobColor(KXColor color);                            ///< Of the part of the bar that is dragged.
    void setKnobColor(float r, float g, float b, float a);       ///< Of the part of the bar that is dragged.

    // Used by the library itself.
    KX_INTERNAL void _setRows(std::vector<std::string> rows);
    KX_INTERNAL void _setDetails(std::vector<std::array<std::string, 2>> details);
    KX_INTERNAL void _setDetailWidths(const std::array<int, 2>& widths);
    KX_INTERNAL void _showTextsAsTheyAre();
    KX_INTERNAL int _pollUntil(uint64_t event);
    KX_INTERNAL _KXFocus& _focus();

private:
    friend class KXUIDropDown; // whose rows it shows
    friend class _KXItemList;  // the same
    struct KX_INTERNAL Layout;
    struct KX_INTERNAL State;
    KX_INTERNAL Layout _layout() const;
    KX_INTERNAL Layout _settledLayout();
    KX_INTERNAL bool _isRow(int index) const;
    KX_INTERNAL void _rowsChanged();
    KX_INTERNAL void _selectOnly(int from, int to);
    KX_INTERNAL void _passTime();
    KX_INTERNAL int _told();
    KX_INTERNAL void _select(int row, const _KXModifiers& modifiers, bool takesInOrOut);
    KX_INTERNAL void _press(const _KXModifiers& modifiers);
    KX_INTERNAL void _pressRow(int row, const _KXModifiers& modifiers);
    KX_INTERNAL void _dragKnob();
    KX_INTERNAL void _dragRows(const _KXModifiers& modifiers);
    KX_INTERNAL void _scrollByDragging();
    KX_INTERNAL void _turnPage();
    KX_INTERNAL void _turnWheel(float notches);
    KX_INTERNAL void _typeKey(const KXInputEvent& key, const _KXModifiers& modifiers);
    KX_INTERNAL int _rowForKey(int key) const;
    KX_INTERNAL void _findTyped(const char* text);
    KX_INTERNAL const char* _rowText(int row) const;
    KX_INTERNAL int _nextBeginningWith(const char* word, int from) const;
    KX_INTERNAL const char* _shownText(int index, int width);
    KX_INTERNAL void _drawDetails(const Layout& layout, int row, float y, KXColor color);
    KX_INTERNAL KXUIColors _ownColors() const;
    KX_INTERNAL void _drawRows(const Layout& layout);
    KX_INTERNAL void _drawScrollBar(const Layout& layout);

    KXColor _backgroundColor;
    KXColor _borderColor;
    KXColor _textColor;
    KXColor _selectionColor;
    KXColor _focusColor;
    KXColor _trackColor;
    KXColor _knobColor;
    std::unique_ptr<State> _state;
};
