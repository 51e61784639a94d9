#include "text/TextEdit.h"

#include "text/LineBreaks.h"
#include "util/Utf8.h"

// A well-formed text on one line. Nearly always it is on one already.
std::string _KXTextEdit::fit(const char* given) const {
    const _KXLegibleText legible(given);
    std::string_view text = legible.get();
    std::string line;
    line.reserve(text.size());
    std::size_t breaks = 0; // not written yet: those at the end never are
    for (char32_t before = 0, c; !text.empty(); before = c) {
        c = _KXTakeCharacter(text);
        if (_KXIsLineBreak(c)) {
            const bool second = before == '\r' && c == '\n';
            breaks += line.empty() || second ? 0 : 1;
        } else if (c == '\t' || !_KXIsControl(c)) {
            line.append(breaks, ' ');
            breaks = 0;
            _KXAppendCharacter(line, c == '\t' ? ' ' : c);
        }
    }
    return line;
}

void _KXTextEdit::exchange(std::size_t begin, std::size_t end, std::string_view text) {
    const std::string_view old = std::string_view(_text).substr(begin, end - begin);
    const std::size_t length = _length + _KXCountCharacters(text) - _KXCountCharacters(old);
    _text.replace(begin, end - begin, text); // throws if memory is exhausted
    _length = length;
}

char32_t _KXTextEdit::codePoint(std::size_t position) const {
    return _KXCodePoint(_KXCharacterAt(_text, position));
}

std::size_t _KXTextEdit::before(std::size_t position) const { return _KXPreviousCharacter(_text, position); }

std::size_t _KXTextEdit::after(std::size_t position) const { return _KXNextCharacter(_text, position); }

std::size_t _KXTextEdit::characterStart(std::size_t position) const {
    return _KXCharacterStart(_text, position);
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
    return _KXCountCharacters(std::string_view(_text).substr(0, position));
}
