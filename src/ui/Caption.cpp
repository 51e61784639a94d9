#include "ui/Caption.h"

#include "text/KXUIGlobalFont.h"
#include "ui/Theme.h"
#include "ui/WholePixels.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXDrawing.h>

#include <algorithm>
#include <cmath>

float _KXCaption::widthOf(const KXFont& font, const char* text) {
    return text && *text ? std::ceil(KXTextLayout(font, text).size().width) : 0;
}

KXSize _KXCaption::sizeOfLines(const KXFont& font, float width) const {
    if (_text.empty())
        return KXZeroSize;
    KXTextOptions options;
    options.width = width;
    const KXSize size = KXTextLayout(font, text(), options).size();
    return {std::ceil(size.width), std::ceil(size.height)};
}

const KXTextLayout& _KXCaption::layOut(const KXFont& font, const KXTextOptions& options) {
    _layout.layOut(font, text(), options);
    return _layout;
}

const KXTextLayout& _KXCaption::lines(const KXFont& font, float width, KXTextAlign align) {
    KXTextOptions options;
    options.width = width;
    options.align = align;
    return layOut(font, options);
}

void _KXCaption::drawLine(KXFont* font, KXRect box, KXSize inset, KXColor color, KXTextAlign align,
                          int underlined) {
    if (_KXCaptionsAreLaidOut())
        return drawLineLaidOut(font, box, inset.width, color, align, underlined);
    const auto [left, top] = box.origin;
    _KXUIGlobalFontPrint(font, {left + inset.width, top + inset.height}, color, text());
}

void _KXUnderline(const KXTextLayout& layout, int index, KXPoint corner, KXColor color) {
    const KXTextLine line = layout.line(0);
    if (index < 0 || index < line.begin || index >= line.end)
        return;
    const int next = static_cast<int>(_KXNextCharacter(layout.text(), static_cast<std::size_t>(index)));
    KXRect parts[4];
    const int count = std::min(layout.selection(index, next, parts, 4), 4);
    for (int i = 0; i < count; ++i)
        KXDrawRectFill({{std::floor(corner.x + parts[i].origin.x), std::floor(corner.y + line.baseline) + 1},
                        {std::max(1.0f, std::floor(parts[i].size.width)), 1}},
                       color);
}

void _KXCaption::drawLineLaidOut(const KXFont* font, KXRect box, float inset, KXColor color,
                                 KXTextAlign align, int underlined) {
    const KXRect room = _KXRectBetween(_KXWholePixel(box.origin.x + inset), _KXWholePixel(box.origin.y),
                                       _KXWholePixel(box.origin.x + box.size.width - inset),
                                       _KXWholePixel(box.origin.y + box.size.height));
    if (!font || room.size.width <= 0 || room.size.height <= 0)
        return;
    KXTextOptions options;
    options.width = room.size.width;
    options.height = room.size.height;
    options.align = align;
    options.verticalAlign = KXTextMiddle;
    options.maxLines = 1;
    layOut(*font, options).draw(room.origin, color);
    _KXUnderline(_layout, underlined, room.origin, color);
}

void _KXCaption::drawLines(KXFont* font, KXPoint corner, float width, KXColor color, KXTextAlign align) {
    if (!_KXCaptionsAreLaidOut())
        return _KXUIGlobalFontPrint(font, corner, color, text());
    if (font && width > 0)
        lines(*font, width, align).draw({std::floor(corner.x), std::floor(corner.y)}, color);
}
