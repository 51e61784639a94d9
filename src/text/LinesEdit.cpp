#include "text/LinesEdit.h"

#include "text/LineBreaks.h"
#include "util/Utf8.h"

#include <algorithm>

// A well-formed text whose lines end with line feeds. Nearly all of it is so already.
std::string _KXLinesEdit::fit(const char* given) const {
    const _KXLegibleText legible(given);
    std::string_view text = legible.get();
    std::string lines;
    lines.reserve(text.size());
    for (char32_t before = 0, c = 0; !text.empty(); before = c) {
        const std::string_view character = _KXCharacterAt(text, 0);
        c = _KXCodePoint(character);
        if (_KXIsLineBreak(c))
            lines.append(before == '\r' && c == '\n' ? 0 : 1, '\n');
        else if (c == '\t' || !_KXIsControl(c))
            lines += character;
        text.remove_prefix(character.size());
        const auto plain =
            std::find_if_not(text.begin(), text.end(), [](char byte) { return byte >= ' ' && byte < 0x7F; });
        if (plain != text.begin()) { // most of a text, at once
            c = 0;
            lines.append(text.begin(), plain);
            text.remove_prefix(static_cast<std::size_t>(plain - text.begin()));
        }
    }
    return lines;
}

void _KXLinesEdit::exchange(std::size_t begin, std::size_t end, std::string_view text) {
    _blocks.exchange(begin, end, text);
    _isPutTogether = false;
}

char32_t _KXLinesEdit::codePoint(std::size_t position) const {
    return _KXCodePoint(_blocks.character(position));
}

const std::string& _KXLinesEdit::text() const {
    if (_isPutTogether)
        return _text;
    _text.clear();
    _text.reserve(size());
    copyTo(_text, 0, size());
    _isPutTogether = true;
    return _text;
}

void _KXLinesEdit::setText(const char* text) {
    setFittedText(fit(text ? text : ""));
    select(0, 0);
}

void _KXLinesEdit::selectLines(std::size_t anchor, std::size_t cursor) {
    const std::size_t from = lineOf(anchor), to = lineOf(cursor);
    if (to < from)
        select(lineStart(from + 1), lineStart(to));
    else
        select(lineStart(from), lineStart(to + 1));
}
