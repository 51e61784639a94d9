#include "text/TextView.h"

#include "render/GraphicsContext.h"

#include <Kobaltrix/KXFont.h>

#include <algorithm>
#include <cstring>

// More than any screen shows; a font without widths would otherwise never fill a box.
static constexpr std::size_t mostCharacters = 4096;

void _KXTextView::update(const _KXTextEdit& edit, KXFont* font, float width, bool masked, bool follows) {
    const Key key = {edit.revision(),
                     font,
                     font ? font->_currentRevision() : 0,
                     _KXCurrentGraphicsContext,
                     width > 0 ? width : 0,
                     masked,
                     follows};
    _edit = &edit;
    if (_isLaidOut && key == _key)
        return;
    _isLaidOut = false;
    _key = key;
    if (font && follows)
        scroll();
    else
        _first = 0;
    layOut();
    _isLaidOut = true;
}

// The width of the character at a position, drawn closer to its successor where the font says so.
float _KXTextView::advance(std::size_t position) const {
    if (_key.masked)
        return std::max(0.0f, _key.font->advance("**") - _key.font->advance("*"));
    const std::size_t next = _edit->after(position), end = _edit->after(next);
    char pair[9];
    std::memcpy(pair, _edit->text().data() + position, end - position);
    pair[end - position] = 0;
    const float both = _key.font->advance(pair);
    return std::max(0.0f, end == next ? both : both - _key.font->advance(pair + (next - position)));
}

// The earliest character from which a text up to a position fits into a width.
std::size_t _KXTextView::startBefore(std::size_t position, float width) const {
    for (std::size_t count = 0; position > 0 && count < mostCharacters; ++count) {
        const std::size_t before = _edit->before(position);
        width -= advance(before);
        if (width < 0)
            break;
        position = before;
    }
    return position;
}

void _KXTextView::scroll() {
    const std::size_t cursor = _edit->cursor(), end = _edit->text().size();
    const std::size_t earliest = startBefore(cursor, _key.width);
    const std::size_t latest = std::max(earliest, _edit->before(cursor)); // one character is seen before it
    _first = std::clamp(_first, earliest, latest);
    _first = std::min(_first, startBefore(end, _key.width));
}

void _KXTextView::layOut() {
    _stops.assign(1, {_first, 0, 0});
    _shown.clear();
    if (!_key.font)
        return;
    const std::string& text = _edit->text();
    while (_stops.back().position < text.size() && _stops.back().x <= _key.width &&
           _stops.size() < mostCharacters) {
        const Stop& last = _stops.back();
        const std::size_t next = _edit->after(last.position);
        if (_key.masked)
            _shown += '*';
        else
            _shown.append(text, last.position, next - last.position);
        _stops.push_back({next, _shown.size(), last.x + advance(last.position)});
    }
}

_KXTextView::Hit _KXTextView::hit(float x) const {
    const std::size_t end = _edit->text().size();
    if (!_key.font)
        return {end, end};
    std::size_t position = _first;
    if (x < 0) {
        position = startBefore(position, -x);
        return {position, position};
    }
    for (std::size_t count = 0; position < end && count < mostCharacters; ++count) {
        const float width = advance(position);
        const std::size_t next = _edit->after(position);
        if (x < width)
            return {position, x < width / 2 ? position : next};
        x -= width;
        position = next;
    }
    return {position, position};
}

float _KXTextView::xOf(std::size_t position) const {
    const auto stop = std::lower_bound(_stops.begin(), _stops.end(), position,
                                       [](const Stop& s, std::size_t p) { return s.position < p; });
    if (_stops.empty())
        return 0;
    return stop == _stops.end() ? _stops.back().x : stop->x;
}
