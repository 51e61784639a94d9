#include "text/RowText.h"

#include "text/ColorEscapes.h"
#include "util/KXString.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXFont.h>

#include <algorithm>
#include <cstring>
#include <numeric>
#include <string_view>
#include <utility>

// Three periods and not the sign that holds all three, which many fonts of games lack.
static constexpr const char* ellipsis = "...";
// No more bytes of a row are measured and shown, so that a very long text costs no more than a long one.
static constexpr std::size_t printable = 1023;

// The last of the numbers from @a good toward @a bad that @a fits; those beyond it do not.
template<class Fits>
static std::size_t lastThatFits(std::size_t good, std::size_t bad, Fits fits) {
    while (std::max(good, bad) - std::min(good, bad) > 1) {
        const std::size_t middle = std::midpoint(good, bad);
        (fits(middle) ? good : bad) = middle;
    }
    return good;
}

// Bytes of the longest beginning of a text that fits into @a width, whole characters only.
static std::size_t fittingBytes(const KXFont& font, const std::string& text, float width) {
    const std::size_t bytes = lastThatFits(0, text.size() + 1, [&](std::size_t end) {
        return font.advance(text.substr(0, _KXCharacterStart(text, end)).c_str()) <= width;
    });
    return _KXCharacterStart(text, bytes);
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
    return upTo(position + _KXTextIn(position, length).size());
}

std::string _KXTextThatFits(const KXFont& font, const char* original, float width, _KXSpans spans) {
    const _KXLegibleText legible(original);
    const char* text = legible.get();
    const bool colored = spans == _KXSpans::Colored && std::strstr(text, "{C");
    const bool shortened = !colored && _KXTextIn(text, printable + 1).size() > printable;
    char visible[printable + 1];
    if (colored)
        _KXVisibleText(visible, sizeof visible, text);
    else
        visible[_KXTextIn(text, printable).copy(visible, printable)] = 0;
    if (shortened)
        _KXDropCutCharacter(visible, printable);
    if (!shortened && font.advance(visible) <= width)
        return text;
    const std::size_t fits = fittingBytes(font, visible, width - font.advance(ellipsis));
    return colored ? cutColored(text, fits) : std::string(text, fits) + ellipsis;
}

std::string _KXTextEndThatFits(const KXFont& font, const char* original, float width) {
    const std::string text = _KXLegibleText(original).get();
    const std::size_t tooLong = text.size() < printable ? 0 : text.size() - printable;
    if (tooLong == 0 && font.advance(text.c_str()) <= width)
        return text;
    width -= font.advance(ellipsis);
    const std::size_t begin = lastThatFits(text.size(), tooLong, [&](std::size_t from) {
        return font.advance(text.c_str() + _KXCharacterStart(text, from)) <= width;
    });
    const bool within = _KXCharacterStart(text, begin) != begin;
    return ellipsis + text.substr(within ? _KXNextCharacter(text, begin) : begin);
}

bool _KXFittedText::isFor(const KXFont& font, const std::string& text, float width) const {
    return _fontRevision == font._currentRevision() && _width == width && _text == text;
}

// Of the four only the text may lack memory, and then all stay as they were.
void _KXFittedText::keep(const KXFont& font, const std::string& text, float width, std::string shown) {
    _text = text;
    _shown = std::move(shown);
    _width = width;
    _fontRevision = font._currentRevision();
}
