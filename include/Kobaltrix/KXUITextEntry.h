#pragma once

#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIWidget.h>

#include <memory>
#include <stdint.h>

/// @file
/// A box in which the user types one line of text, and the function that tells which of them is typed into.

class _KXFocus;
struct _KXTextEntryEditor;

/// A line of text that the user edits: by keyboard once the entry has the focus, and with the mouse.
///
/// A press of the left mouse button in the entry gives it the focus and places the cursor, with Shift it
/// extends the selection to there, and dragging selects; a second press within half a second selects a word
/// and a third everything; a press elsewhere or Escape takes the focus away. Left, Right, Home and End move
/// the cursor, with Control Left and Right by words, with Shift selecting; Backspace and Delete erase, with
/// Control words. These six repeat while they are held, as KXKeyTyped() does. Control or Command with A, C, X
/// and V select all, copy, cut and paste, and with Z and Y, or Shift and Z, take the last change back and
/// make it again; what is typed in one go is one change. Return and the key pad's Enter report entered(). Tab
/// hands the focus to the next entry that is polled, with Shift to the one polled before, and selects all of
/// its text. With Alt held, Return, Enter, Escape, Tab and those letters are not the entry's. On macOS Option
/// goes by words and Command with Left and Right to the ends, and Control does neither.
///
/// What happens within a step counts in the order in which it came: "X", Backspace, "Y" and Return make "Y",
/// entered once.
///
/// The game's own key queries still report every key: a game asks KXUIFocusedTextEntry(), before it polls its
/// entries, whether a key is meant for one of them.
///
/// The text is UTF-8 at all times; of other bytes each becomes a question mark. It is one line: line breaks
/// and tabs that are set or pasted become blanks, line breaks around it and control characters are dropped.
/// A character is a Unicode code point, and positions count characters. A text that is longer than the box is
/// scrolled to where the cursor is; without the focus its start is in view. What an input method is composing
/// is shown underlined and is not in text() yet.
class KX_API KXUITextEntry : public _KXUIWidget {
public:
    /// An empty entry without a limit, in the user-interface colours.
    KXUITextEntry();
    /// Gives the focus up.
    ~KXUITextEntry() override;

    /// Replaces the text, cut to the maximum length, and puts the cursor at its end. changed() does not
    /// report it. @param text copied; null for none.
    void setText(const char* text);
    /// The text, of any length. It belongs to the entry and is valid until it changes or the entry goes.
    const char* text() const;
    /// Number of characters.
    int length() const;
    /// Limits the number of characters and cuts a longer text; 0 and less removes the limit.
    void setMaximumLength(int characters);
    /// The most characters, 0 without a limit.
    int maximumLength() const;
    /// A non-zero @a masked shows an asterisk for each character, keeps the text from the clipboard, takes it
    /// for one word and keeps nothing of what was erased, so that no change can be taken back.
    void setMasked(int masked);
    /// -1 if asterisks are shown, else 0.
    int isMasked() const;
    /// Sets what an empty entry shows; colour spans work as in KXFont::print(). @param text copied; null for
    /// none.
    void setPlaceholder(const char* text);

    /// Selects @a count characters from number @a start on and puts the cursor behind them; with 0 it only
    /// places the cursor. Numbers outside of the text mean its nearest end.
    void select(int start, int count);
    /// Selects the whole text.
    void selectAll();
    /// Number of characters before the cursor.
    int cursor() const;
    /// Number of characters before the selection; cursor() without one.
    int selectionStart() const;
    /// Number of characters selected.
    int selectionLength() const;

    /// Takes the focus, from the entry that has it if there is one. Keys that are held and text that was
    /// typed before do not reach this entry.
    void focus();
    /// Gives the focus up; nothing happens if the entry does not have it.
    void unfocus();
    /// -1 while the entry has the focus, else 0.
    int isFocused() const;

    /// Reads mouse and keyboard; call it once per logic step. An entry keeps the focus while it is not
    /// polled.
    /// @return -1 if the user changed the text or entered it in this call, else 0.
    int poll();
    /// -1 if the user changed the text in the last poll().
    int changed() const;
    /// -1 if the user pressed Return or the key pad's Enter in the last poll().
    int entered() const;

    /// Sets the extent in pixels. A height of -1 becomes that of one line of text, if there is a font.
    void setSize(KXSize size) override;
    /// See _KXUIWidget::setWindowID().
    void setWindowID(unsigned id) override;
    /// Draws the entry into the current target, its text cut to its box.
    void draw() override;
    int pollInPanel() override;                   ///< poll().
    KXUIDescription description() const override; ///< The text is its value, unless it is masked.
    _KXFocus* keyboardPart() override;

    void setBackgroundColor(KXColor color);                       ///< Fills the box.
    void setBackgroundColor(float r, float g, float b, float a);  ///< Fills the box.
    void setBorderColor(KXColor color);                           ///< Around it without the focus.
    void setBorderColor(float r, float g, float b, float a);      ///< Around it without the focus.
    void setFocusColor(KXColor color);                            ///< Around it with the focus.
    void setFocusColor(float r, float g, float b, float a);       ///< Around it with the focus.
    void setTextColor(KXColor color);                             ///< Text and cursor.
    void setTextColor(float r, float g, float b, float a);        ///< Text and cursor.
    void setPlaceholderColor(KXColor color);                      ///< At first the text's at half opacity.
    void setPlaceholderColor(float r, float g, float b, float a); ///< At first the text's at half opacity.
    void setSelectionColor(KXColor color);                        ///< At first the focus's at half opacity.
    void setSelectionColor(float r, float g, float b, float a);   ///< At first the focus's at half opacity.

    // Used by the library itself.
    KX_INTERNAL int _pollUntil(uint64_t event);
    KX_INTERNAL _KXFocus& _focus();

private:
    friend struct _KXTextEntryEditor;
    KX_INTERNAL void _press(bool extends);
    KX_INTERNAL void _drag();
    KX_INTERNAL int _told();
    KX_INTERNAL void _updateView();
    KX_INTERNAL float _textLeft() const;
    KX_INTERNAL float _textTop() const;
    KX_INTERNAL float _textWidth() const;
    KX_INTERNAL KXRect _lineRect(float from, float to) const;
    KX_INTERNAL KXUIColors _ownColors() const;
    KX_INTERNAL void _drawText();
    KX_INTERNAL void _drawCursor();
    KX_INTERNAL void _showInputMethodTheCursor();

    KXColor _backgroundColor;
    KXColor _borderColor;
    KXColor _focusColor;
    KXColor _textColor;
    KXColor _placeholderColor;
    KXColor _selectionColor;
    std::unique_ptr<_KXTextEntryEditor> _editor;
    int32_t _masked;
    int32_t _changed;
    int32_t _entered;
};

/// The entry that has the keyboard; null if none has, or if the user types in another window than the
/// entry's. Never one that was destroyed.
KX_API KXUITextEntry* KXUIFocusedTextEntry();
