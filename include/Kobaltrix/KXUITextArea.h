#pragma once

#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// @file
/// A box in which the user types many lines of text, and the function that tells whether anything is typed
/// into.

class _KXFocus;

/// A place in a text of many lines. Both are counted from 0; the column is in characters.
struct KXTextPosition {
    int line;   ///< Which line.
    int column; ///< Characters of it that lie before.
};

/// Lines of text that the user edits: by keyboard once the area has the focus, and with the mouse.
///
/// It is worked as a #KXUITextEntry is, focus, selection, clipboard, input methods and taking back included,
/// and what is different with more than one line is this. Return begins a new line, Up and Down go to the
/// next row and keep to the column, Page Up and Page Down go by what is in view, Home and End to the ends of
/// a row, with Control to those of the text. A third press selects a line, and dragging beyond an edge goes
/// on scrolling. The wheel scrolls the area under the pointer by three rows a notch, with Shift sideways; the
/// bar's knob can be dragged, and a press beside it turns pages. Tab hands the focus on unless setTakesTabs()
/// keeps it for the text; Control and Tab do so always. What is typed in one go on a line is one change;
/// changes can be taken back as far as 16 MB of them reach.
///
/// The text is UTF-8 at all times; of other bytes each becomes a question mark. Each line break that is set,
/// typed or pasted is a line feed from then on, whatever it was; other control characters but tabs are
/// dropped. A character is a Unicode code point, and numbers of characters count a line feed as one.
///
/// Ten megabytes may be edited as ten lines: only rows in view are laid out, and a change moves a few
/// kilobytes. A row is a line or, where lines are wrapped, what fits in the width. A line of more than 1024
/// bytes is shown in pieces of so many, one below the other, so that no frame has to lay out all of a line
/// that a program wrote. Since nobody has counted the rows out of view, the bar shows about where one is.
///
/// Without a font it draws its box only; typing
/// goes on, and rows are pieces of lines then.
class KX_API KXUITextArea : public _KXUIWidget {
public:
    /// An empty area without a limit that wraps nothing.
    KXUITextArea();
    /// Gives the focus up.
    ~KXUITextArea() override;

    /// Replaces the text, cut to the maximum length, and puts the cursor at its beginning. changed() does not
    /// report it, and what was done before can not be taken back. @param text copied; null for none.
    void setText(const char* text);
    /// The whole text. It belongs to the area and is valid until it changes or the area goes. The first call
    /// after a change copies all of it: to look at a line, ask line().
    const char* text() const;
    /// Puts a text in the place of the selection, or where the cursor is, as the user's paste does: cut to
    /// the maximum length, the cursor behind it, to be taken back, and also into an area that is read-only.
    /// changed() does not report it. @param text copied; null does nothing.
    void insert(const char* text);
    /// Number of characters.
    int length() const;
    /// Number of lines, at least one.
    int lineCount() const;
    /// The text of a line, without its line feed; null if there is no such line. It belongs to the area and
    /// is valid until the next call.
    const char* line(int index) const;
    /// Limits the number of characters and cuts a longer text; 0 and less removes the limit.
    void setMaximumLength(int characters);
    /// The most characters, 0 without a limit.
    int maximumLength() const;

    /// For a non-zero @a wraps, lines that are too wide for the box are wrapped at words; at first, and for
    /// 0, the text scrolls sideways.
    void setWraps(int wraps);
    /// -1 if lines are wrapped, else 0.
    int wraps() const;
    /// A non-zero @a shows numbers the lines, from 1 on, to the left of the text.
    void setShowsLineNumbers(int shows);
    /// -1 if the lines are numbered, else 0.
    int showsLineNumbers() const;
    /// With a non-zero @a readOnly the user can move, select and copy but change nothing.
    void setReadOnly(int readOnly);
    /// -1 if the user can change nothing, else 0.
    int isReadOnly() const;
    /// With a non-zero @a takes Tab is for the text: it puts a tab in, or blanks up to the next stop, see
    /// setTabsAreBlanks().
    void setTakesTabs(int takes);
    /// -1 if Tab is for the text, else 0.
    int takesTabs() const;
    /// With a non-zero @a blanks, Tab puts blanks in. Tabs in the text stay tabs.
    void setTabsAreBlanks(int blanks);
    /// -1 if Tab puts blanks in, else 0.
    int tabsAreBlanks() const;
    /// Sets from how many blanks to how many tabs reach; 4 at first. @param blanks moved into 1 to 64.
    void setTabWidth(int blanks);
    /// The blanks from one stop to the next.
    int tabWidth() const;
    /// Sets what an empty area shows, at half the text's opacity and with colour spans as in KXFont::print().
    /// @param text copied; null for none.
    void setPlaceholder(const char* text);

    /// Selects @a count characters from number @a start on, puts the cursor behind them and scrolls to it;
    /// with 0 it only places the cursor. Numbers outside of the text mean its nearest end.
    void select(int start, int count);
    /// Selects the whole text.
    void selectAll();
    /// Number of characters before the cursor.
    int cursor() const;
    /// Number of characters before the selection; cursor() without one.
    int selectionStart() const;
    /// Number of characters selected.
    int selectionLength() const;
    /// The line and column of a number of characters, moved to the nearest end of the text.
    KXTextPosition positionOf(int characters) const;
    /// The number of characters before a line and column, each moved to the nearest that there is.
    int charactersBefore(KXTextPosition position) const;

    /// Takes what was done last back, as Control and Z do. @return -1 if the text changed, else 0.
    int undo();
    /// Makes it again. @return -1 if the text changed, else 0.
    int redo();

    /// Scrolls so that a line is the first in view, as far as there are lines enough below it.
    /// @return -1, or 0 if there is no such line.
    int scrollTo(int line);
    /// The line that the first row in view is of.
    int firstVisibleLine();

    /// Takes the focus, from the widget that has it if there is one. Keys that are held and text that was
    /// typed before do not reach this area.
    void focus();
    /// Gives the focus up; nothing happens if the area does not have it.
    void unfocus();
    /// -1 while the area has the focus, else 0.
    int isFocused() const;

    /// Reads mouse and keyboard; call it once per logic step. An area keeps the focus while it is not polled.
    /// @return -1 if the user changed the text in this call, else 0.
    int poll();
    /// -1 if the user changed the text in the last poll().
    int changed() const;

    /// See _KXUIWidget::setWindowID().
    void setWindowID(unsigned id) override;
    /// Its colours where the theme has no palette; at first those of KXCurrentUIColors(). Placeholder and
    /// numbers are in the text's, at half its opacity; the bar's track in that of interaction.
    void setColors(const KXUIColors& colors);
    /// Draws the area into the current target, its text cut to its box. Laying out text that comes into view
    /// asks for memory: throws std::bad_alloc, with nothing but boxes drawn, when that is exhausted.
    void draw() override;
    int pollInPanel() override;                   ///< poll().
    int takesWheel() const override;              ///< -1.
    KXUIDescription description() const override; ///< The line of the cursor is its value.
    _KXFocus* keyboardPart() override;

    // Used by the library itself.
    KX_INTERNAL unsigned long long _layoutsMade() const;
    KX_INTERNAL static KXUITextArea* _withFocus(const _KXFocus* owner);

private:
    struct KX_INTERNAL State;
    std::unique_ptr<State> _state;
};

/// The text entry or text area that has the keyboard; null if none has, or if the user types in another
/// window than the widget's. Never one that was destroyed. A game whose letters are keys, too, asks it before
/// it polls its widgets, or KXUIFocusedTextEntry() where it has entries only.
KX_API _KXUIWidget* KXUIFocusedTextWidget();
