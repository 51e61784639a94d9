#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Where the cursor of a text goes from where it is.
enum class _KXCursorStep { Left, Right, WordLeft, WordRight, Start, End };

/// What is the same of every text that is being edited, of one line or of many: its cursor, its selection,
/// and the changes that can be taken back. Where the text is kept is the derived class's.
///
/// The text is UTF-8 at all times, whatever it is given: bytes that are no part of a character become
/// question marks. Positions are byte offsets that always lie between two characters; a character is a code
/// point. The selection lies between the cursor and the anchor, which is where it was begun.
class _KXTextEditing {
public:
    /// Number of characters, and of bytes.
    virtual std::size_t length() const = 0;
    virtual std::size_t size() const = 0;
    /// What lies between two positions.
    virtual std::string part(std::size_t begin, std::size_t end) const = 0;

    std::size_t cursor() const { return _cursor; }
    std::size_t anchor() const { return _anchor; }
    std::size_t selectionStart() const { return _cursor < _anchor ? _cursor : _anchor; }
    std::size_t selectionEnd() const { return _cursor < _anchor ? _anchor : _cursor; }
    bool hasSelection() const { return _cursor != _anchor; }
    std::string selectedText() const { return part(selectionStart(), selectionEnd()); }
    /// A number that no other state of text, cursor and selection has had, of this or another object.
    std::uint64_t revision() const { return _revision; }
    bool isSecret() const { return _secret; }

    /// Limits the number of characters; a longer text is cut.
    void setMaximumLength(std::size_t characters);
    std::size_t maximumLength() const { return _maximumLength; }

    /// Puts a text in the place of the selection, as much of it as the maximum length allows, and without
    /// what the text can not hold. @return whether the text changed.
    bool insert(const char* text) { return insert(text, Act::Other); }
    /// The same for what is typed: taken back together with what was typed just before it.
    bool type(const char* text) { return insert(text, Act::Type); }
    /// Takes the last change of the text back, or makes it again, with the selection as it was. Of very many
    /// changes, and of very long ones, only the later ones are kept. @return whether the text changed.
    bool undo();
    bool redo();
    /// Removes the selection or, without one, what lies between the cursor and @a step, or a position.
    /// @return whether the text changed.
    bool erase(_KXCursorStep step) { return eraseTo(target(step)); }
    bool eraseTo(std::size_t position);
    /// Moves the cursor. Without @a select, a selection ends, and a step of one character to the left or
    /// right goes to its edge instead.
    void move(_KXCursorStep step, bool select);
    /// Selects from @a anchor to @a cursor; positions behind the end or within a character are moved back.
    void select(std::size_t anchor, std::size_t cursor);
    void selectAll() { select(0, size()); }
    /// Selects the words, or the blanks or signs between words, from the one at @a anchor to the one at
    /// @a cursor.
    void selectWords(std::size_t anchor, std::size_t cursor);

    /// The position one character before or after a position; the ends stay.
    virtual std::size_t before(std::size_t position) const = 0;
    virtual std::size_t after(std::size_t position) const = 0;
    /// Where the character begins that the byte at a position belongs to; the end for positions behind it.
    virtual std::size_t characterStart(std::size_t position) const = 0;
    /// The byte offset of a character, the end for numbers beyond it; and the reverse.
    virtual std::size_t positionOfCharacter(std::size_t index) const = 0;
    virtual std::size_t characterAt(std::size_t position) const = 0;

protected:
    /// @param mostChanges,mostBytes what is kept of changes, but always the last.
    _KXTextEditing(std::size_t mostChanges, std::size_t mostBytes)
        : _mostChanges(mostChanges), _mostBytes(mostBytes) {}
    ~_KXTextEditing() = default;
    _KXTextEditing(const _KXTextEditing&) = default;
    _KXTextEditing(_KXTextEditing&&) = default;
    _KXTextEditing& operator=(const _KXTextEditing&) = default;
    _KXTextEditing& operator=(_KXTextEditing&&) = default;

    /// The code point behind a position.
    virtual char32_t codePoint(std::size_t position) const = 0;
    /// Puts a well-formed text where another was. Where memory lacks, which it throws, all is as it was.
    virtual void exchange(std::size_t begin, std::size_t end, std::string_view text) = 0;
    /// What of a text this one can hold.
    virtual std::string fit(const char* text) const = 0;

    /// Replaces everything and puts the cursor at the end. What was done before can not be taken back.
    void setFittedText(const std::string& text);
    void setSecret(bool secret);

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
        std::size_t bytes() const { return sizeof(Change) + removed.size() + added.size(); }
    };
    bool insert(const char* text, Act act);
    bool change(std::size_t begin, std::size_t end, std::string_view text, Act act);
    bool joins(std::size_t begin, std::size_t end, Act act) const;
    void keep(Change next, Act act, bool joined);
    void forgetOldChanges();
    void forgetChanges();
    void place(std::size_t anchor, std::size_t cursor);
    std::size_t target(_KXCursorStep step) const;
    std::size_t wordLeft(std::size_t position) const;
    std::size_t wordRight(std::size_t position) const;
    Word wordAt(std::size_t position) const;

    std::size_t _maximumLength = static_cast<std::size_t>(-1);
    std::size_t _cursor = 0;
    std::size_t _anchor = 0;
    std::uint64_t _revision = 0;
    bool _secret = false;
    std::vector<Change> _done, _undone;
    std::size_t _doneBytes = 0;
    std::size_t _mostChanges, _mostBytes;
    Act _lastAct = Act::Other;
};
