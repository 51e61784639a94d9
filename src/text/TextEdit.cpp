#include "text/TextEdit.h"

#include "util/Utf8.h"

#include <algorithm>

static constinit std::uint64_t lastRevision = 0;

namespace {
enum class Kind { Blank, Word, Sign };

bool isBetween(char32_t value, char32_t first, char32_t last) { return value >= first && value <= last; }

// Enough for names and sentences, without tables of all characters: beyond ASCII everything but the common
// blanks and signs belongs to a word.
Kind kindOf(char32_t c) {
    if (c == ' ' || c == 0xA0 || isBetween(c, 0x2000, 0x200A) || c == 0x202F || c == 0x3000)
        return Kind::Blank;
    if (c < 0x80)
        return isBetween(c, '0', '9') || isBetween(c | 0x20, 'a', 'z') || c == '_' ? Kind::Word : Kind::Sign;
    const bool latinSign = isBetween(c, 0xA1, 0xBF) && c != 0xAA && c != 0xB5 && c != 0xBA;
    return latinSign || isBetween(c, 0x2010, 0x205E) || isBetween(c, 0x3001, 0x3003) ? Kind::Sign
                                                                                     : Kind::Word;
}

Kind kindAt(std::string_view text, std::size_t position) {
    return kindOf(_KXCodePoint(_KXCharacterAt(text, position)));
}

bool isLineBreak(char32_t c) { return isBetween(c, '\n', '\r') || c == 0x85 || c == 0x2028 || c == 0x2029; }

bool isControl(char32_t c) { return c < ' ' || isBetween(c, 0x7F, 0x9F); }

// A well-formed text on one line, see insert(). Nearly always it is on one already.
std::string onOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    std::size_t breaks = 0; // not written yet: those at the end never are
    for (char32_t before = 0, c; !text.empty(); before = c) {
        c = _KXTakeCharacter(text);
        if (isLineBreak(c)) {
            const bool second = before == '\r' && c == '\n';
            breaks += line.empty() || second ? 0 : 1;
        } else if (c == '\t' || !isControl(c)) {
            line.append(breaks, ' ');
            breaks = 0;
            _KXAppendCharacter(line, c == '\t' ? ' ' : c);
        }
    }
    return line;
}
} // namespace

void _KXTextEdit::setText(const char* text) {
    const std::string line = onOneLine(_KXLegibleText(text ? text : "").get());
    replace(0, _text.size(), line);
    forgetChanges();
    setMaximumLength(_maximumLength);
}

void _KXTextEdit::setSecret(bool secret) {
    if (_secret != secret)
        forgetChanges();
    _secret = secret;
}

void _KXTextEdit::setMaximumLength(std::size_t characters) {
    if (characters < _maximumLength)
        forgetChanges(); // they may have been longer
    _maximumLength = characters;
    if (_length <= characters)
        return;
    _text.resize(positionOfCharacter(characters));
    _length = characters;
    select(_anchor, _cursor);
}

bool _KXTextEdit::insert(const char* text, Act act) {
    if (!text || !*text)
        return false;
    const std::string line = onOneLine(_KXLegibleText(text).get());
    const std::size_t begin = selectionStart(), end = selectionEnd();
    const std::size_t selected = _KXCountCharacters(std::string_view(_text).substr(begin, end - begin));
    const std::size_t room = _maximumLength - std::min(_maximumLength, _length - selected);
    std::size_t bytes = 0;
    for (std::size_t count = 0; count < room && bytes < line.size(); ++count)
        bytes = _KXNextCharacter(line, bytes);
    return bytes > 0 && change(begin, end, std::string_view(line).substr(0, bytes), act);
}

bool _KXTextEdit::erase(_KXCursorStep step) {
    if (hasSelection())
        return change(selectionStart(), selectionEnd(), {}, Act::Other);
    const std::size_t other = target(step);
    return change(std::min(_cursor, other), std::max(_cursor, other), {},
                  other < _cursor ? Act::EraseLeft : Act::EraseRight);
}

bool _KXTextEdit::joins(std::size_t begin, std::size_t end, Act act) const {
    if (act == Act::Other || act != _lastAct || _done.empty() || hasSelection())
        return false;
    const Change& last = _done.back();
    return act == Act::Type        ? begin == last.at + last.added.size()
           : act == Act::EraseLeft ? end == last.at
                                   : begin == last.at;
}

// A change of the user's, which can be taken back. Where memory lacks there is none.
bool _KXTextEdit::change(std::size_t begin, std::size_t end, std::string_view text, Act act) {
    const std::string_view old = std::string_view(_text).substr(begin, end - begin);
    if (_secret || old == text)
        return replace(begin, end, text);
    const std::size_t bytes = old.size() + text.size();
    _text.reserve(_text.size() + text.size()); // from here on it only grows the change
    Change next = {begin, std::string(_text, begin, end - begin), std::string(text), _anchor, _cursor};
    if (joins(begin, end, act)) {
        Change& last = _done.back();
        last.added += next.added;
        if (act == Act::EraseRight)
            last.removed += next.removed;
        else if (act == Act::EraseLeft)
            last.removed.insert(0, next.removed), last.at = begin;
    } else {
        _done.push_back(std::move(next));
    }
    _doneBytes += bytes;
    _undone.clear();
    replace(begin, end, text);
    _lastAct = act;
    forgetOldChanges();
    return true;
}

void _KXTextEdit::forgetOldChanges() {
    constexpr std::size_t mostChanges = 1000, mostBytes = 1 << 20;
    std::size_t old = 0;
    for (; old + 1 < _done.size() && (_done.size() - old > mostChanges || _doneBytes > mostBytes); ++old)
        _doneBytes -= _done[old].removed.size() + _done[old].added.size();
    _done.erase(_done.begin(), _done.begin() + static_cast<std::ptrdiff_t>(old));
}

void _KXTextEdit::forgetChanges() {
    _done.clear();
    _undone.clear();
    _doneBytes = 0;
}

bool _KXTextEdit::undo() {
    if (_done.empty())
        return false;
    _undone.reserve(_undone.size() + 1);
    const Change& last = _done.back();
    replace(last.at, last.at + last.added.size(), last.removed);
    place(last.anchor, last.cursor);
    _doneBytes -= last.removed.size() + last.added.size();
    _undone.push_back(std::move(_done.back()));
    _done.pop_back();
    return true;
}

bool _KXTextEdit::redo() {
    if (_undone.empty())
        return false;
    _done.reserve(_done.size() + 1);
    const Change& next = _undone.back();
    replace(next.at, next.at + next.removed.size(), next.added);
    _doneBytes += next.removed.size() + next.added.size();
    _done.push_back(std::move(_undone.back()));
    _undone.pop_back();
    return true;
}

// Puts the cursor behind the replacement.
bool _KXTextEdit::replace(std::size_t begin, std::size_t end, std::string_view text) {
    const std::string_view old = std::string_view(_text).substr(begin, end - begin);
    const bool changes = old != text;
    if (changes) {
        const std::size_t length = _length + _KXCountCharacters(text) - _KXCountCharacters(old);
        _text.replace(begin, end - begin, text); // throws if memory is exhausted
        _length = length;
    }
    place(begin + text.size(), begin + text.size());
    return changes;
}

void _KXTextEdit::place(std::size_t anchor, std::size_t cursor) {
    _anchor = anchor;
    _cursor = cursor;
    _lastAct = Act::Other;
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

void _KXTextEdit::select(std::size_t anchor, std::size_t cursor) {
    place(_KXCharacterStart(_text, anchor), _KXCharacterStart(_text, cursor));
}

void _KXTextEdit::selectWords(std::size_t anchor, std::size_t cursor) {
    const Word from = wordAt(_KXCharacterStart(_text, anchor)), to = wordAt(_KXCharacterStart(_text, cursor));
    if (to.begin < from.begin)
        select(from.end, to.begin);
    else
        select(from.begin, to.end);
}

std::size_t _KXTextEdit::before(std::size_t position) const { return _KXPreviousCharacter(_text, position); }

std::size_t _KXTextEdit::after(std::size_t position) const { return _KXNextCharacter(_text, position); }

std::size_t _KXTextEdit::positionOfCharacter(std::size_t index) const {
    if (index >= _length)
        return _text.size();
    std::size_t position = 0;
    while (index-- > 0)
        position = after(position);
    return position;
}

std::size_t _KXTextEdit::characterAt(std::size_t position) const {
    return _KXCountCharacters(std::string_view(_text).substr(0, position));
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
    if (_secret)
        return 0;
    while (position > 0 && kindAt(_text, before(position)) == Kind::Blank)
        position = before(position);
    return position > 0 ? wordAt(before(position)).begin : 0;
}

// To the end of a word or of a run of signs.
std::size_t _KXTextEdit::wordRight(std::size_t position) const {
    if (_secret)
        return _text.size();
    while (position < _text.size() && kindAt(_text, position) == Kind::Blank)
        position = after(position);
    return wordAt(position).end;
}

// The characters of one kind around the one behind a position, or at the end the one before it.
_KXTextEdit::Word _KXTextEdit::wordAt(std::size_t position) const {
    if (_text.empty() || _secret)
        return {0, _text.size()};
    if (position == _text.size())
        position = before(position);
    const Kind kind = kindAt(_text, position);
    Word word = {position, after(position)};
    while (word.begin > 0 && kindAt(_text, before(word.begin)) == kind)
        word.begin = before(word.begin);
    while (word.end < _text.size() && kindAt(_text, word.end) == kind)
        word.end = after(word.end);
    return word;
}
