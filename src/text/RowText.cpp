#include "text/RowText.h"

#include "text/ColorEscapes.h"
#include "text/FontCache.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXFont.h>

#include <cmath>
#include <cstring>
#include <string_view>

// Three characters and not one: many fonts of games have letters and periods only.
static constexpr const char* ellipsis = "...";
// A font prints no more than that of one text.
static constexpr std::size_t printable = 1023;

static bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// The start of the character that holds the byte at @a position of a well-formed text.
static std::size_t characterStart(const std::string& text, std::size_t position) {
    while (position < text.size() && isContinuation(text[position]))
        --position;
    return position;
}

// Bytes of the longest beginning of a text that fits into @a width, whole characters only.
static std::size_t fittingBytes(KXFont& font, const std::string& text, float width) {
    std::size_t fits = 0, tooLong = text.size() + 1;
    while (tooLong - fits > 1) {
        const std::size_t middle = fits + (tooLong - fits) / 2;
        if (font.advance(text.substr(0, characterStart(text, middle)).c_str()) <= width)
            fits = middle;
        else
            tooLong = middle;
    }
    return characterStart(text, fits);
}

// The source of the first @a length visible bytes of a text with colour spans, with dots behind them.
static std::string cutColored(const char* text, std::size_t length) {
    const auto upTo = [text](const char* end) { return std::string(text, end) + ellipsis; };
    const char* position = text;
    _KXColorSpan span;
    while (_KXNextColorSpan(position, span)) {
        if (length <= span.plain.size())
            return upTo(span.plain.data() + length);
        length -= span.plain.size();
        if (length <= span.text.size())
            return upTo(span.text.data() + length) + "{EC}";
        length -= span.text.size();
    }
    return upTo(position + strnlen(position, length));
}

std::string _KXTextThatFits(KXFont& font, const char* original, float width, _KXSpans spans) {
    const _KXLegibleText legible(original);
    const char* text = legible.get();
    const bool colored = spans == _KXSpans::Colored && std::strstr(text, "{C");
    const bool shortened = !colored && strnlen(text, printable + 1) > printable;
    char visible[printable + 1];
    if (colored)
        _KXVisibleText(visible, sizeof visible, text);
    else
        visible[std::string_view(text, strnlen(text, printable)).copy(visible, printable)] = 0;
    if (shortened)
        _KXDropCutCharacter(visible, printable);
    if (!shortened && font.advance(visible) <= width)
        return text;
    const std::size_t fits = fittingBytes(font, visible, width - font.advance(ellipsis));
    return colored ? cutColored(text, fits) : std::string(text, fits) + ellipsis;
}

std::string _KXTextEndThatFits(KXFont& font, const char* original, float width) {
    const _KXLegibleText legible(original);
    std::string text = legible.get();
    std::size_t fits = text.size(), tooLong = text.size() < printable ? 0 : text.size() - printable;
    if (tooLong == 0 && font.advance(text.c_str()) <= width)
        return text;
    width -= font.advance(ellipsis);
    while (fits - tooLong > 1) {
        const std::size_t middle = tooLong + (fits - tooLong) / 2;
        if (font.advance(text.c_str() + characterStart(text, middle)) <= width)
            fits = middle;
        else
            tooLong = middle;
    }
    while (fits < text.size() && isContinuation(text[fits]))
        ++fits;
    return ellipsis + text.substr(fits);
}

bool _KXFittedText::isFor(const KXFont& font, const std::string& text, float width) {
    if (_font == &font && _fontSize == font.getSize() && _fontGeneration == _KXGlobalFontGeneration &&
        _width == width && _text == text)
        return true;
    _text = text;
    _width = width;
    _font = &font;
    _fontSize = font.getSize();
    _fontGeneration = _KXGlobalFontGeneration;
    return false;
}

void _KXPrintRow(KXFont& font, KXPoint p, KXColor color, const char* text, _KXSpans spans) {
    if (spans == _KXSpans::Plain) {
        // A span that is printed in two pieces is none.
        while (const char* brace = std::strstr(text, "{C")) {
            const std::string piece(text, brace + 1);
            font.print(p, color, "%s", piece.c_str());
            p.x += std::round(font.advance(piece.c_str())); // glyphs are sharp on whole pixels
            text = brace + 1;
        }
    }
    font.print(p, color, "%s", text);
}
