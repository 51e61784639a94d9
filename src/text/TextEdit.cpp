#include "text/TextEdit.h"

#include "util/Utf8.h"

#include <algorithm>

static constinit std::uint64_t lastRevision = 0;

namespace {
enum class Kind { Blank, Word, Sign };

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// The bytes of the well-formed character at a position within a text.
std::string_view characterFrom(std::string_view text, std::size_t position) {
    std::size_t end = position + 1;
    while (end < text.size() && isContinuation(text[end]))
        ++end;
    return text.substr(position, end - position);
}

std::size_t countCharacters(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return !isContinuation(byte); }));
}

unsigned codePoint(std::string_view character) {
    constexpr unsigned leadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    unsigned value = static_cast<unsigned char>(character[0]) & leadBits[character.size()];
    for (char byte : character.substr(1))
        value = value << 6 | (static_cast<unsigned char>(byte) & 0x3F);
    return value;
}

bool isBetween(unsigned value, unsigned first, unsigned last) { return value >= first && value <= last; }

// Good for what names and sentences are made of, without the tables that tell the kinds of all characters:
// beyond ASCII only the well-known blanks and signs are none of a word.
Kind kindOf(std::string_view character) {
    const unsigned c = codePoint(character);
    if (c == ' ' || c == 0xA0 || isBetween(c, 0x2000, 0x200A) || c == 0x202F || c == 0x3000)
        return Kind::Blank;
    if (c < 0x80)
        return isBetween(c, '0', '9') || isBetween(c | 0x20, 'a', 'z') || c == '_' ? Kind::Word : Kind::Sign;
    const bool latinSign = isBetween(c, 0xA1, 0xBF) && c != 0xAA && c != 0xB5 && c != 0xBA;
    return latinSign || isBetween(c, 0x2010, 0x205E) || isBetween(c, 0x3001, 0x3003) ? Kind::Sign
                                                                                     : Kind::Word;
}

bool isLineBreak(unsigned c) { return isBetween(c, '\n', '\r') || c == 0x85 || c == 0x2028 || c == 0x2029; }

bool isControl(unsigned c) { return c < ' ' || isBetween(c, 0x7F, 0x9F); }

// A well-formed text on one line, see insert(). Nearly always it is on one already.
std::string onOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    std::size_t breaks = 0; // not written yet: those at the end never are
    for (std::size_t position = 0; position < text.size();) {
        const std::string_view character = characterFrom(text, position);
        const unsigned c = codePoint(character);
        position += character.size();
        if (isLineBreak(c)) {
            const bool second = c == '\n' && position >= 2 && text[position - 2] == '\r';
            breaks += line.empty() || second ? 0 : 1;
        } else if (c == '\t' || !isControl(c)) {
            line.append(breaks, ' ');
            breaks = 0;
            line.append(c == '\t' ? std::string_view(" ") : character);
        }
    }
    return line;
}
} // namespace

void _KXTextEdit::setText(const char* text) {
    const std::string line = onOneLine(_KXLegibleText(text ? text : "").get());
    replace(0, _text.size(), line);
    setMaximumLength(_maximumLength);
}

void _KXTextEdit::setMaximumLength(std::size_t characters) {
    _maximumLength = characters;
    if (_length <= characters)
        return;
    _text.resize(positionOfCharacter(characters));
    _length = characters;
    select(_anchor, _cursor);
}

bool _KXTextEdit::insert(const char* text) {
    if (!text || !*text)
        return false;
    const std::string line = onOneLine(_KXLegibleText(text).get());
    const std::size_t begin = selectionStart(), end = selectionEnd();
    const std::size_t selected = countCharacters(std::string_view(_text).substr(begin, end - begin));
    const std::size_t room = _maximumLength - std::min(_maximumLength, _length - selected);
    std::size_t bytes = 0;
    for (std::size_t count = 0; count < room && bytes < line.size(); ++count)
        bytes += characterFrom(line, bytes).size();
    return bytes > 0 && replace(begin, end, std::string_view(line).substr(0, bytes));
}

bool _KXTextEdit::erase(_KXCursorStep step) {
    if (hasSelection())
        return replace(selectionStart(), selectionEnd(), {});
    const std::size_t other = target(step);
    return replace(std::min(_cursor, other), std::max(_cursor, other), {});
}

// Puts the cursor behind the replacement.
bool _KXTextEdit::replace(std::size_t begin, std::size_t end, std::string_view text) {
    const std::string_view old = std::string_view(_text).substr(begin, end - begin);
    const bool changes = old != text;
    if (changes) {
        _length += countCharacters(text);
        _length -= countCharacters(old);
        _text.replace(begin, end - begin, text);
    }
    place(begin + text.size(), begin + text.size());
    return changes;
}

void _KXTextEdit::place(std::size_t anchor, std::size_t cursor) {
    _anchor = anchor;
    _cursor = cursor;
    _revision = ++lastRevision;
}

void _KXTextEdit::move(_KXCursorStep step, bool select) {
    std::size_t cursor = target(step);
    if (!select && hasSelection() && step == _KXCursorStep::Left)
        cursor = selectionStart();
    else if (!select && hasSelection() && step == _KXCursorStep::Right)
        cursor = selectionEnd();
    place(select ? _anchor : cursor, cursor);
}

void _KXTextEdit::select(std::size_t anchor, std::size_t cursor) { place(snapped(anchor), snapped(cursor)); }

void _KXTextEdit::selectWords(std::size_t anchor, std::size_t cursor) {
    const Word from = wordAt(snapped(anchor)), to = wordAt(snapped(cursor));
    if (to.begin < from.begin)
        select(from.end, to.begin);
    else
        select(from.begin, to.end);
}

std::size_t _KXTextEdit::before(std::size_t position) const {
    while (position > 0 && isContinuation(_text[--position])) {
    }
    return position;
}

std::size_t _KXTextEdit::after(std::size_t position) const {
    return position < _text.size() ? position + characterFrom(_text, position).size() : position;
}

std::size_t _KXTextEdit::positionOfCharacter(std::size_t index) const {
    if (index >= _length)
        return _text.size();
    std::size_t position = 0;
    while (index-- > 0)
        position = after(position);
    return position;
}

std::size_t _KXTextEdit::characterAt(std::size_t position) const {
    return countCharacters(std::string_view(_text).substr(0, position));
}

std::size_t _KXTextEdit::snapped(std::size_t position) const {
    position = std::min(position, _text.size());
    while (position > 0 && position < _text.size() && isContinuation(_text[position]))
        --position;
    return position;
}

std::size_t _KXTextEdit::target(_KXCursorStep step) const {
    switch (step) {
    case _KXCursorStep::Left:
        return before(_cursor);
    case _KXCursorStep::Right:
        return after(_cursor);
    case _KXCursorStep::WordLeft:
        return wordLeft(_cursor);
    case _KXCursorStep::WordRight:
        return wordRight(_cursor);
    case _KXCursorStep::Start:
        return 0;
    case _KXCursorStep::End:
        break;
    }
    return _text.size();
}

// To the beginning of a word or of a run of signs, over the blanks between.
std::size_t _KXTextEdit::wordLeft(std::size_t position) const {
    const auto kindBefore = [this](std::size_t p) { return kindOf(characterFrom(_text, before(p))); };
    if (_secret)
        return 0;
    while (position > 0 && kindBefore(position) == Kind::Blank)
        position = before(position);
    return position > 0 ? wordAt(before(position)).begin : 0;
}

// To the end of a word or of a run of signs.
std::size_t _KXTextEdit::wordRight(std::size_t position) const {
    if (_secret)
        return _text.size();
    while (position < _text.size() && kindOf(characterFrom(_text, position)) == Kind::Blank)
        position = after(position);
    return wordAt(position).end;
}

// The characters of one kind around the one behind a position, or at the end the one before it.
_KXTextEdit::Word _KXTextEdit::wordAt(std::size_t position) const {
    if (_text.empty() || _secret)
        return {0, _text.size()};
    if (position == _text.size())
        position = before(position);
    const Kind kind = kindOf(characterFrom(_text, position));
    const auto isMore = [this, kind](std::size_t p) { return kindOf(characterFrom(_text, p)) == kind; };
    Word word = {position, after(position)};
    while (word.begin > 0 && isMore(before(word.begin)))
        word.begin = before(word.begin);
    while (word.end < _text.size() && isMore(word.end))
        word.end = after(word.end);
    return word;
}
