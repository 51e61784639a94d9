#include <Kobaltrix/KXTextLayout.h>

#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "render/TextScopes.h"
#include "text/ColorEscapes.h"
#include "text/TextRows.h"
#include "util/Utf8.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <tuple>

static constexpr std::size_t longestText = 1'000'000;

namespace {
/// Bytes of the text in a colour of their own.
struct Span {
    std::uint32_t begin, end;
    KXColor color;
};

/// How a text is drawn just now.
struct DrawnText {
    const _KXGlyphScope& scope;
    const _KXGlyphRaster& raster;
    std::uint32_t before; // only what is before this index
};

/// Quads in one colour.
struct Stretch {
    std::size_t end;
    const Span* span; // null for the colour that is drawn with
};

/// The quads of all glyphs, as they are or grown, in their pixels.
struct Layer {
    std::vector<_KXGlyphQuad> quads = {};
    std::vector<std::uint32_t> offsets = {}; // of each in the text
    std::vector<Stretch> stretches = {};
    std::vector<_KXGlyphPlace> places = {}; // each page once

    void clear();
    bool usePages(_KXGlyphStore& store) const;
    void draw(const DrawnText& text, KXPoint at, KXColor color, bool takesSpans) const;
};
} // namespace

struct _KXTextParts {
    std::string given;
    KXTextOptions options;
    _KXTypefaces typefaces;
    std::string text = {};
    std::vector<Span> spans = {};
    _KXPlacedText placed = {};
    int size = 0;         // of the font
    float scale = 0;      // that the layers were made for
    bool isWhole = false; // they lack no glyph
    Layer letters = {}, outlines = {};

    const _KXTextRow* rowOf(int index) const;
    const _KXTextRow& rowAt(float y) const;
    bool fill(Layer& layer, float grown);
    void makeLayers(float wantedScale);
};

static constexpr float farthest = 1e6f;

static bool isOver(float value, float most) { return !(value > 0) || value > most; }

static float outlineOf(const KXTextOptions& options) {
    constexpr float most = 64, least = 1.0f / 64;
    return options.outline >= least ? std::min(options.outline, most) : 0;
}

static KXTextOptions soundOptions(const KXTextOptions& given, const _KXTypeface& typeface) {
    constexpr float widestSpacing = 100;
    KXTextOptions options = given;
    if (isOver(options.width, farthest))
        options.width = 0;
    if (isOver(options.height, farthest))
        options.height = 0;
    if (isOver(options.lineSpacing, widestSpacing))
        options.lineSpacing = 1;
    if (isOver(options.tabWidth, farthest))
        options.tabWidth = 8 * typeface.blankWidth();
    return options;
}

static bool areEqual(const KXTextOptions& a, const KXTextOptions& b) {
    const auto tie = [](const KXTextOptions& o) {
        return std::tie(o.width, o.height, o.align, o.verticalAlign, o.direction, o.lineSpacing, o.maxLines,
                        o.tabWidth, o.plain, o.outline, o.outlineColor.r, o.outlineColor.g, o.outlineColor.b,
                        o.outlineColor.a, o.shadow.x, o.shadow.y, o.shadowColor.r, o.shadowColor.g,
                        o.shadowColor.b, o.shadowColor.a);
    };
    return tie(a) == tie(b);
}

// Takes the codes of colour spans out of what is shown.
static void readText(_KXTextParts& parts) {
    const _KXLegibleText legible(parts.given.c_str());
    const char* position = legible.get();
    _KXColorSpan span;
    while (!parts.options.plain && _KXNextColorSpan(position, span)) {
        parts.text += span.plain;
        const auto begin = static_cast<std::uint32_t>(parts.text.size());
        parts.text += span.text;
        parts.spans.push_back({begin, static_cast<std::uint32_t>(parts.text.size()), span.color});
    }
    parts.text += position;
}

KXTextLayout::KXTextLayout() = default;
KXTextLayout::KXTextLayout(const KXFont& font, const char* text, const KXTextOptions& options) {
    layOut(font, text, options);
}
KXTextLayout::~KXTextLayout() {
    KX_GL_CHECK("KXTextLayout::~KXTextLayout");
    _parts.reset(); // the last one with a font deletes its glyphs
}
KXTextLayout::KXTextLayout(KXTextLayout&&) noexcept = default;
KXTextLayout& KXTextLayout::operator=(KXTextLayout&&) noexcept = default;

void KXTextLayout::layOut(const KXFont& font, const char* text, const KXTextOptions& options) {
    const _KXTypefaces& typefaces = font._typefacesInUse();
    if (!text)
        text = "";
    if (_parts && _parts->given == text && areEqual(_parts->options, options) &&
        _parts->typefaces == typefaces)
        return;
    auto parts = std::make_unique<_KXTextParts>(_KXTextParts{
        std::strlen(text) > longestText ? _KXFirstBytes(text, longestText) : text, options, typefaces});
    parts->size = font.getSize();
    readText(*parts);
    if (!typefaces.empty())
        parts->placed = _KXPlaceText(_KXShapeText(parts->text, typefaces, options.direction), typefaces,
                                     soundOptions(options, *typefaces.front()));
    _parts = std::move(parts);
}

static _KXGlyphQuad quadOf(const _KXGlyphInk& ink, KXPoint pen) {
    // On whole pixels, where the glyph is sharp.
    const float left = std::floor(pen.x + ink.leftTop.x), top = std::ceil(pen.y - ink.leftTop.y);
    const float right = left + ink.size.width, bottom = top + ink.size.height;
    return {ink.page, {{left, top}, {left, bottom}, {right, bottom}, {right, top}}, ink.source};
}

void Layer::clear() {
    quads.clear();
    offsets.clear();
    stretches.clear();
    places.clear();
}

bool Layer::usePages(_KXGlyphStore& store) const {
    return std::all_of(places.begin(), places.end(),
                       [&store](const _KXGlyphPlace& place) { return store.use(place); });
}

// False if a glyph is lacking for which the driver has no room now.
bool _KXTextParts::fill(Layer& layer, float grown) {
    bool hasAll = true;
    for (const _KXPlacedGlyph& glyph : placed.glyphs) {
        const _KXGlyphInk* const ink =
            typefaces[glyph.typeface]->ink(_KXGlyphsHere(), glyph.index, scale, grown);
        hasAll = hasAll && ink;
        if (!ink || !ink->page.smooth)
            continue;
        layer.quads.push_back(quadOf(*ink, {glyph.pen.x * scale, glyph.pen.y * scale}));
        layer.offsets.push_back(glyph.offset);
        if (std::find(layer.places.begin(), layer.places.end(), ink->place) == layer.places.end())
            layer.places.push_back(ink->place);
        const auto behind =
            std::upper_bound(spans.begin(), spans.end(), glyph.offset,
                             [](std::uint32_t offset, const Span& span) { return offset < span.begin; });
        const Span* const span =
            behind != spans.begin() && glyph.offset < behind[-1].end ? &behind[-1] : nullptr;
        if (layer.stretches.empty() || layer.stretches.back().span != span)
            layer.stretches.push_back({0, span});
        layer.stretches.back().end = layer.quads.size();
    }
    return hasAll;
}

// Once for each window and scale that it is drawn in, and again when a page has left. Pages of another window
// are not to be had here.
void _KXTextParts::makeLayers(float wantedScale) {
    _KXGlyphStore& store = _KXGlyphsHere();
    if (isWhole && scale == wantedScale && letters.usePages(store) && outlines.usePages(store))
        return;
    isWhole = false; // until there are all
    scale = wantedScale;
    letters.clear();
    outlines.clear();
    const float outline = outlineOf(options);
    const bool isOutlined = !(outline > 0) || fill(outlines, outline);
    isWhole = fill(letters, 0) && isOutlined;
}

void Layer::draw(const DrawnText& text, KXPoint at, KXColor color, bool takesSpans) const {
    constexpr int most = 64;
    _KXGlyphQuad moved[most];
    const bool isSharp = text.scope.settle(at, text.raster);
    const KXPoint unit = text.raster.unit;
    std::size_t i = 0;
    for (const Stretch& stretch : stretches) {
        const KXColor paint = takesSpans && stretch.span ? stretch.span->color : color;
        int taken = 0;
        const auto handOn = [&] {
            const bool isPicture = takesSpans && taken > 0 && moved[0].page.isColored;
            _KXDrawGlyphQuads(moved, taken, isPicture ? KXColor{1, 1, 1, paint.a} : paint, isSharp);
            taken = 0;
        };
        for (; i < stretch.end; ++i) {
            if (offsets[i] >= text.before)
                continue;
            if (taken > 0 && moved[0].page.isColored != quads[i].page.isColored)
                handOn();
            _KXGlyphQuad& quad = moved[taken] = quads[i];
            for (KXPoint& corner : quad.corners)
                corner = {corner.x * unit.x + at.x, corner.y * unit.y + at.y};
            if (++taken == most)
                handOn();
        }
        handOn();
    }
}

void KXTextLayout::draw(KXPoint p, KXColor c) const { drawUpTo(p, c, std::numeric_limits<int>::max()); }

void KXTextLayout::drawUpTo(KXPoint p, KXColor c, int index) const {
    KX_GL_CHECK("KXTextLayout::drawUpTo");
    if (!_parts || !_KXCurrentGraphicsContext || !std::isfinite(p.x) || !std::isfinite(p.y))
        return;
    const KXTextOptions& options = _parts->options;
    const auto faded = [&](KXColor color) { return KXColor{color.r, color.g, color.b, color.a * c.a}; };
    const _KXGlyphScope scope;
    const _KXGlyphRaster raster = scope.rasterFor(_parts->size);
    _parts->makeLayers(raster.scale);
    const DrawnText drawn = {scope, raster, static_cast<std::uint32_t>(std::max(0, index))};
    if (options.shadowColor.a > 0 && std::isfinite(options.shadow.x) && std::isfinite(options.shadow.y)) {
        const KXPoint at = {p.x + options.shadow.x, p.y + options.shadow.y};
        const Layer& layer = outlineOf(options) > 0 ? _parts->outlines : _parts->letters;
        layer.draw(drawn, at, faded(options.shadowColor), false);
    }
    _parts->outlines.draw(drawn, p, faded(options.outlineColor), false);
    _parts->letters.draw(drawn, p, c, true);
    _KXLeaveColor(c);
}

KXSize KXTextLayout::size() const { return _parts ? _parts->placed.size : KXZeroSize; }
const char* KXTextLayout::text() const { return _parts ? _parts->text.c_str() : ""; }
int KXTextLayout::isCut() const { return _parts && _parts->placed.isCut ? -1 : 0; }
int KXTextLayout::lineCount() const { return _parts ? static_cast<int>(_parts->placed.rows.size()) : 0; }

KXTextLine KXTextLayout::line(int index) const {
    if (index < 0 || index >= lineCount())
        return {KXZeroRect, 0, 0, 0};
    return _parts->placed.rows[static_cast<std::size_t>(index)].line;
}

// The row that a caret at an index stands on. There must be one.
const _KXTextRow* _KXTextParts::rowOf(int index) const {
    const auto behind =
        std::upper_bound(placed.rows.begin(), placed.rows.end(), index,
                         [](int wanted, const _KXTextRow& row) { return wanted < row.line.begin; });
    return behind == placed.rows.begin() ? placed.rows.data() : &behind[-1];
}

const _KXTextRow& _KXTextParts::rowAt(float y) const {
    const auto behind =
        std::upper_bound(placed.rows.begin(), placed.rows.end(), y,
                         [](float wanted, const _KXTextRow& row) { return wanted < row.line.rect.origin.y; });
    return behind == placed.rows.begin() ? placed.rows.front() : behind[-1];
}

KXTextHit KXTextLayout::hit(KXPoint point) const {
    if (lineCount() == 0)
        return {0, 0, 0};
    const _KXTextRow& row = _parts->rowAt(point.y);
    const auto& stops = _parts->placed.stops;
    const auto distance = [&](const _KXTextStop& stop) {
        return std::max({0.0f, stop.left - point.x, point.x - stop.right});
    };
    const auto nearest = std::min_element(
        stops.begin() + row.firstStop, stops.begin() + row.endStop,
        [&](const _KXTextStop& a, const _KXTextStop& b) { return distance(a) < distance(b); });
    if (row.firstStop == row.endStop)
        return {row.line.begin, row.line.begin, 0};
    const float y = point.y - row.line.rect.origin.y;
    const bool isInside =
        point.x >= nearest->left && point.x <= nearest->right && y >= 0 && y <= row.line.rect.size.height;
    const bool isLeft = point.x < (nearest->left + nearest->right) / 2;
    return {nearest->begin, isLeft == nearest->isRightToLeft ? nearest->end : nearest->begin,
            isInside ? -1 : 0};
}

KXRect KXTextLayout::caret(int index) const {
    if (lineCount() == 0)
        return KXZeroRect;
    const _KXTextRow& row = *_parts->rowOf(index);
    const auto first = _parts->placed.stops.begin() + row.firstStop,
               last = _parts->placed.stops.begin() + row.endStop;
    // The one that the index is in; those of a line lie in the order of the text.
    const auto behind = std::upper_bound(
        first, last, index, [](int wanted, const _KXTextStop& stop) { return wanted < stop.begin; });
    float x = row.edge;
    if (first != last) {
        const _KXTextStop& stop = behind == first ? *first : behind[-1];
        const bool isBehind = index >= stop.end;
        x = isBehind == stop.isRightToLeft ? stop.left : stop.right;
    }
    if (!isOver(_parts->options.width, farthest))
        x = std::clamp(x, 0.0f, _parts->options.width); // blanks at a line's end stand outside
    return {{x, row.line.rect.origin.y}, {0, row.line.rect.size.height}};
}

int KXTextLayout::selection(int begin, int end, KXRect* rects, int most) const {
    if (lineCount() == 0 || begin >= end)
        return 0;
    int count = 0;
    KXRect open = KXZeroRect;
    const auto close = [&] {
        if (open.size.width <= 0)
            return;
        if (rects && count < most)
            rects[count] = open;
        ++count;
        open = KXZeroRect;
    };
    const auto isNear = [](float a, float b) { return std::fabs(a - b) < 0.01f; };
    const _KXTextRow* const behind = _parts->placed.rows.data() + _parts->placed.rows.size();
    for (const _KXTextRow* row = _parts->rowOf(begin); row != behind && row->line.begin < end; ++row) {
        for (std::uint32_t i = row->firstStop; i < row->endStop; ++i) {
            const _KXTextStop& stop = _parts->placed.stops[i];
            if (stop.end <= begin || stop.begin >= end)
                continue;
            const KXRect rect = {{stop.left, row->line.rect.origin.y},
                                 {stop.right - stop.left, row->line.rect.size.height}};
            const bool follows = open.size.width > 0 && isNear(stop.left, open.origin.x + open.size.width);
            const bool precedes = open.size.width > 0 && isNear(stop.right, open.origin.x);
            if (!follows && !precedes) {
                close();
                open = rect;
                continue;
            }
            open.origin.x = std::min(open.origin.x, rect.origin.x);
            open.size.width += rect.size.width;
        }
        close();
    }
    return count;
}
