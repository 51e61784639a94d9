#include "text/TextEditing.h"

#include "util/Utf8.h"

#include <algorithm>
#include <utility>

static constinit std::uint64_t lastRevision = 0;

namespace {
enum class Kind { Blank, Word, Sign, Break };

bool isBetween(char32_t value, char32_t first, char32_t last) { return value >= first && value <= last; }

// Enough for names and sentences, without tables of all characters: beyond ASCII everything but the common
// blanks and signs belongs to a word.
Kind kindOf(char32_t c) {
    if (c == '\n')
        return Kind::Break;
    if (c == ' ' || c == '\t' || c == 0xA0 || isBetween(c, 0x2000, 0x200A) || c == 0x202F || c == 0x3000)
        return Kind::Blank;
    if (c < 0x80)
        return isBetween(c, '0', '9') || isBetween(c | 0x20, 'a', 'z') || c == '_' ? Kind::Word : Kind::Sign;
    const bool latinSign = isBetween(c, 0xA1, 0xBF) && c != 0xAA && c != 0xB5 && c != 0xBA;
    return latinSign || isBetween(c, 0x2010, 0x205E) || isBetween(c, 0x3001, 0x3003) ? Kind::Sign
                                                                                     : Kind::Word;
}

bool isBetweenWords(char32_t c) { return kindOf(c) == Kind::Blank || kindOf(c) == Kind::Break; }

// Grows by more than one, as a vector does by itself.
template<class Element>
void makeRoomForOne(std::vector<Element>& in) {
    if (in.size() == in.capacity())
        in.reserve(2 * in.size() + 1);
}
} // namespace

void _KXTextEditing::setFittedText(const std::string& text) {
    exchange(0, size(), text);
    place(size(), size());
    forgetChanges();
    setMaximumLength(_maximumLength);
}

void _KXTextEditing::setSecret(bool secret) {
    if (_secret != secret)
        forgetChanges();
    _secret = secret;
}

void _KXTextEditing::setMaximumLength(std::size_t characters) {
    const bool isLonger = length() > characters;
    if (isLonger)
        exchange(positionOfCharacter(characters), size(), {});
    if (characters < _maximumLength)
        forgetChanges(); // they may have been longer
    _maximumLength = characters;
    if (isLonger)
        select(_anchor, _cursor);
}

bool _KXTextEditing::insert(const char* text, Act act) {
    if (!text || !*text)
        return false;
    const std::string fitted = fit(text);
    const std::size_t begin = selectionStart(), end = selectionEnd();
    const std::size_t selected = hasSelection() ? characterAt(end) - characterAt(begin) : 0;
    const std::size_t room = _maximumLength - std::min(_maximumLength, length() - selected);
    std::size_t bytes = fitted.size();
    if (room < bytes) {
        bytes = 0;
        for (std::size_t count = 0; count < room && bytes < fitted.size(); ++count)
            bytes = _KXNextCharacter(fitted, bytes);
    }
    return bytes > 0 && change(begin, end, std::string_view(fitted).substr(0, bytes), act);
}

bool _KXTextEditing::eraseTo(std::size_t other) {
    if (hasSelection())
        return change(selectionStart(), selectionEnd(), {}, Act::Other);
    return change(std::min(_cursor, other), std::max(_cursor, other), {},
                  other < _cursor ? Act::EraseLeft : Act::EraseRight);
}

bool _KXTextEditing::joins(std::size_t begin, std::size_t end, Act act) const {
    if (act == Act::Other || act != _lastAct || _done.empty() || hasSelection())
        return false;
    const Change& last = _done.back();
    return act == Act::Type        ? begin == last.at + last.added.size()
           : act == Act::EraseLeft ? end == last.at
                                   : begin == last.at;
}

// A change of the user's, which can be taken back. Where memory lacks there is none.
bool _KXTextEditing::change(std::size_t begin, std::size_t end, std::string_view text, Act act) {
    Change next = {begin, part(begin, end), std::string(text), _anchor, _cursor};
    const bool changes = next.removed != text, isKept = changes && !_secret;
    const bool joined = isKept && joins(begin, end, act);
    if (joined) {
        Change& last = _done.back();
        last.added.reserve(last.added.size() + text.size());
        last.removed.reserve(last.removed.size() + next.removed.size());
    } else if (isKept) {
        makeRoomForOne(_done);
    }
    if (changes)
        exchange(begin, end, text); // the last that may lack memory
    place(begin + text.size(), begin + text.size());
    if (isKept)
        keep(std::move(next), act, joined);
    return changes;
}

void _KXTextEditing::keep(Change next, Act act, bool joined) {
    _undone.clear();
    _lastAct = act;
    if (joined) {
        Change& last = _done.back();
        _doneBytes -= last.bytes();
        last.added += next.added;
        if (act == Act::EraseRight)
            last.removed += next.removed;
        else if (act == Act::EraseLeft)
            last.removed.insert(0, next.removed), last.at = next.at;
    } else {
        _done.push_back(std::move(next));
    }
    _doneBytes += _done.back().bytes();
    forgetOldChanges();
}

// An eighth more than must be, or else each change would move all that are kept.
void _KXTextEditing::forgetOldChanges() {
    if (_done.size() <= _mostChanges && _doneBytes <= _mostBytes)
        return;
    std::size_t old = 0;
    while (old + 1 < _done.size() &&
           (_done.size() - old > _mostChanges - _mostChanges / 8 || _doneBytes > _mostBytes - _mostBytes / 8))
        _doneBytes -= _done[old++].bytes();
    _done.erase(_done.begin(), _done.begin() + static_cast<std::ptrdiff_t>(old));
}

void _KXTextEditing::forgetChanges() {
    _done.clear();
    _undone.clear();
    _doneBytes = 0;
}

bool _KXTextEditing::undo() {
    if (_done.empty())
        return false;
    makeRoomForOne(_undone);
    const Change& last = _done.back();
    exchange(last.at, last.at + last.added.size(), last.removed);
    place(last.anchor, last.cursor);
    _doneBytes -= last.bytes();
    _undone.push_back(std::move(_done.back()));
    _done.pop_back();
    return true;
}

bool _KXTextEditing::redo() {
    if (_undone.empty())
        return false;
    makeRoomForOne(_done);
    const Change& next = _undone.back();
    exchange(next.at, next.at + next.removed.size(), next.added);
    place(next.at + next.added.size(), next.at + next.added.size());
    _doneBytes += next.bytes();
    _done.push_back(std::move(_undone.back()));
    _undone.pop_back();
    return true;
}

void _KXTextEditing::place(std::size_t anchor, std::size_t cursor) {
    _anchor = anchor;
    _cursor = cursor;
    _lastAct = Act::Other;
    _revision = ++lastRevision;
}

void _KXTextEditing::move(_KXCursorStep step, bool select) {
    std::size_t cursor = target(step);
    if (!select && hasSelection() && step == _KXCursorStep::Left)
        cursor = selectionStart();
    else if (!select && hasSelection() && step == _KXCursorStep::Right)
        cursor = selectionEnd();
    place(select ? _anchor : cursor, cursor);
}

void _KXTextEditing::select(std::size_t anchor, std::size_t cursor) {
    place(characterStart(anchor), characterStart(cursor));
}

void _KXTextEditing::selectWords(std::size_t anchor, std::size_t cursor) {
    const Word from = wordAt(characterStart(anchor)), to = wordAt(characterStart(cursor));
    if (to.begin < from.begin)
        select(from.end, to.begin);
    else
        select(from.begin, to.end);
}

std::size_t _KXTextEditing::target(_KXCursorStep step) const {
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
    return size();
}

// Nobody reads such a word; who has one does not wait for its end.
static constexpr int longestWord = 100'000;

// To the beginning of a word or of a run of signs, over the blanks between.
std::size_t _KXTextEditing::wordLeft(std::size_t position) const {
    if (_secret)
        return 0;
    for (int steps = longestWord; steps > 0 && position > 0; --steps) {
        const std::size_t left = before(position);
        if (!isBetweenWords(codePoint(left)))
            return wordAt(left).begin;
        position = left;
    }
    return position;
}

// To the end of a word or of a run of signs.
std::size_t _KXTextEditing::wordRight(std::size_t position) const {
    if (_secret)
        return size();
    for (int steps = longestWord; steps > 0 && position < size(); --steps) {
        if (!isBetweenWords(codePoint(position)))
            return wordAt(position).end;
        position = after(position);
    }
    return position;
}

// The characters of one kind around the one behind a position, or at the end the one before it. The end of a
// line is no word.
_KXTextEditing::Word _KXTextEditing::wordAt(std::size_t at) const {
    if (size() == 0 || _secret)
        return {0, size()};
    const std::size_t position = at == size() ? before(at) : at;
    const Kind kind = kindOf(codePoint(position));
    if (kind == Kind::Break)
        return {at, at};
    Word word = {position, after(position)};
    const auto isOfIt = [&](std::size_t other) { return kindOf(codePoint(other)) == kind; };
    for (int steps = longestWord; steps > 0 && word.begin > 0 && isOfIt(before(word.begin)); --steps)
        word.begin = before(word.begin);
    for (int steps = longestWord; steps > 0 && word.end < size() && isOfIt(word.end); --steps)
        word.end = after(word.end);
    return word;
}
