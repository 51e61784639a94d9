#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Where the cursor of a text goes from where it is.
enum class _KXCursorStep { Left, Right, WordLeft, WordRight, Start, End };

/// One line of text that is being edited: the text, its cursor and its selection.
///
/// The text is UTF-8 at all times, whatever it is given: bytes that are no part of a character become
/// question marks. Positions are byte offsets that always lie between two characters; a character is a code
/// point. The selection lies between the cursor and the anchor, which is where it was begun.
class _KXTextEdit {
public:
    const std::string& text() const { return _text; }
    /// Number of characters.
    std::size_t length() const { return _length; }
    std::size_t cursor() const { return _cursor; }
    std::size_t anchor() const { return _anchor; }
    std::size_t selectionStart() const { return _cursor < _anchor ? _cursor : _anchor; }
    std::size_t selectionEnd() const { return _cursor < _anchor ? _anchor : _cursor; }
    bool hasSelection() const { return _cursor != _anchor; }
    std::string selectedText() const {
        return _text.substr(selectionStart(), selectionEnd() - selectionStart());
    }
    /// A number that no other state of text, cursor and selection has had, of this or another object.
    std::uint64_t revision() const { return _revision; }

    /// Replaces everything and puts the cursor at the end. Null is the empty text. What was done before can
    /// not be taken back.
    void setText(const char* text);
    /// Limits the number of characters; a longer text is cut.
    void setMaximumLength(std::size_t characters);
    std::size_t maximumLength() const { return _maximumLength; }
    /// Whether the text is hidden. Word steps and selections then take the whole of it, so that they do not
    /// tell where its blanks are.
    /// Nothing of it is kept that could be taken back.
    void setSecret(bool secret);
    bool isSecret() const { return _secret; }

    /// Puts a text in the place of the selection, as much of it as the maximum length allows, on one line:
    /// line breaks around it are dropped, each of those within and each tab becomes a blank, other control
    /// characters are dropped. @return whether the text changed.
    bool insert(const char* text) { return insert(text, Act::Other); }
    /// The same for what is typed: taken back together with what was typed just before it.
    bool type(const char* text) { return insert(text, Act::Type); }
    /// Takes the last change of the text back, or makes it again, with the selection as it was. Of very many
    /// changes, and of very long ones, only the later ones are kept. @return whether the text changed.
    bool undo();
    bool redo();
    /// Removes the selection or, without one, what lies between the cursor and @a step. @return whether the
    /// text changed.
    bool erase(_KXCursorStep step);
    /// Moves the cursor. Without @a select, a selection ends, and a step of one character to the left or
    /// right goes to its edge instead.
    void move(_KXCursorStep step, bool select);
    /// Selects from @a anchor to @a cursor; positions behind the end or within a character are moved back.
    void select(std::size_t anchor, std::size_t cursor);
    void selectAll() { select(0, _text.size()); }
    /// Selects the words, or the blanks or signs between words, from the one at @a anchor to the one at
    /// @a cursor.
    void selectWords(std::size_t anchor, std::size_t cursor);

    /// The position one character before or after a position; the ends stay.
    std::size_t before(std::size_t position) const;
    std::size_t after(std::size_t position) const;
    /// The byte offset of a character, the end for numbers beyond it; and the reverse.
    std::size_t positionOfCharacter(std::size_t index) const;
    std::size_t characterAt(std::size_t position) const;

private:
    struct Word {
        std::size_t begin, end;
    };
    // Changes of one kind after one another are one.
    enum class Act { Other, Type, EraseLeft, EraseRight };
    struct Change {
        std::size_t at;
        std::string removed, added;
        std::size_t anchor, cursor; // before it
    };
    bool insert(const char* text, Act act);
    bool change(std::size_t begin, std::size_t end, std::string_view text, Act act);
    bool joins(std::size_t begin, std::size_t end, Act act) const;
    void forgetOldChanges();
    void forgetChanges();
    bool replace(std::size_t begin, std::size_t end, std::string_view text);
    void place(std::size_t anchor, std::size_t cursor);
    std::size_t target(_KXCursorStep step) const;
    std::size_t wordLeft(std::size_t position) const;
    std::size_t wordRight(std::size_t position) const;
    Word wordAt(std::size_t position) const;

    std::string _text;
    std::size_t _length = 0; // of the text in characters, so that typing into a long one counts nothing anew
    std::size_t _maximumLength = static_cast<std::size_t>(-1);
    std::size_t _cursor = 0;
    std::size_t _anchor = 0;
    std::uint64_t _revision = 0;
    bool _secret = false;
    std::vector<Change> _done, _undone;
    std::size_t _doneBytes = 0;
    Act _lastAct = Act::Other;
};
