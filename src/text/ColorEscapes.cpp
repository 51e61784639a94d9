#include "text/ColorEscapes.h"

#include "platform/Locale.h"
#include "util/Utf8.h"

#include <algorithm>
#include <cstring>

static std::string_view between(const char* begin, const char* end) {
    return {begin, begin < end ? static_cast<std::size_t>(end - begin) : 0};
}

// In no locale of the game's, which may expect a decimal comma where commas separate the components. A number
// ends at the comma or brace behind it, so the piece needs no copy.
static float component(const char* begin, const char* end) {
    return begin < end ? static_cast<float>(_KXNumberIn(begin)) : 0.0f;
}

bool _KXNextColorSpan(const char*& position, _KXColorSpan& span) {
    const char* s = std::strstr(position, "{C");
    const char* e = s ? std::strchr(position, '}') : nullptr;
    const char* c1 = e ? std::strchr(s, ',') : nullptr;
    const char* c2 = c1 ? std::strchr(c1 + 1, ',') : nullptr;
    const char* c3 = c2 ? std::strchr(c2 + 1, ',') : nullptr;
    const char* ec = c3 ? std::strstr(c3 + 1, "{EC}") : nullptr;
    if (!ec)
        return false;
    span.plain = between(position, s);
    span.text = between(e + 1, ec);
    span.color = {component(s + 2, c1), component(c1 + 1, c2), component(c2 + 1, c3), component(c3 + 1, e)};
    position = ec + 4;
    return true;
}

void _KXVisibleText(char* out, std::size_t size, const char* text) {
    if (size == 0)
        return;
    std::size_t length = 0;
    const auto append = [&](std::string_view piece) {
        const std::size_t bytes = std::min(piece.size(), size - 1 - length);
        std::memcpy(out + length, piece.data(), bytes);
        length += bytes;
        return bytes == piece.size();
    };
    _KXColorSpan span;
    bool room = true;
    while (room && _KXNextColorSpan(text, span))
        room = append(span.plain) && append(span.text);
    if (room)
        room = append(text);
    out[length] = 0;
    if (!room)
        _KXDropCutCharacter(out, length);
}
