#include "text/GlyphAtlas.h"

#include <Kobaltrix/KXTypes.h>

#include <algorithm>
#include <cmath>
#include <memory>

// Empty pixels around every glyph: filtering never reaches a neighbour.
static constexpr int padding = 2;

namespace {
struct Extent {
    long width, height;
};
} // namespace

// Pixels that the glyph's bitmap will cover once it is rendered.
static Extent extentOf(FT_GlyphSlot slot) {
    if (slot->format != FT_GLYPH_FORMAT_OUTLINE)
        return {static_cast<long>(slot->bitmap.width), static_cast<long>(slot->bitmap.rows)};
    const FT_Outline& outline = slot->outline;
    if (outline.n_points < 1)
        return {0, 0};
    FT_Vector low = outline.points[0], high = low; // of all points, also those that only steer a curve
    for (int i = 1; i < outline.n_points; ++i) {
        const FT_Vector& point = outline.points[i];
        low = {std::min(low.x, point.x), std::min(low.y, point.y)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y)};
    }
    const auto pixels = [](FT_Pos from, FT_Pos to) { return ((to + 63) >> 6) - (from >> 6); };
    return {pixels(low.x, high.x), pixels(low.y, high.y)};
}

namespace {
class AtlasGlyph final : public FTGlyph {
public:
    /// @a slot holds the outline; its box and its advance are taken from that.
    explicit AtlasGlyph(FT_GlyphSlot slot)
        : FTGlyph(slot),
          _advance(static_cast<double>(slot->advance.x) / 64, static_cast<double>(slot->advance.y) / 64) {}

    void setInk(const _KXGlyphInk& ink) { _ink = ink; }

    const FTPoint& Render(const FTPoint& pen, int) override {
        if (_ink.page.smooth && _KXRenderedGlyphs) {
            // On whole pixels, where the glyph is sharp.
            const float left = std::floor(pen.Xf() + _ink.leftTop.x),
                        top = std::floor(pen.Yf() + _ink.leftTop.y);
            const float right = left + _ink.size.width, bottom = top - _ink.size.height;
            _KXRenderedGlyphs->push_back(
                {_ink.page, {{left, top}, {left, bottom}, {right, bottom}, {right, top}}, _ink.source});
        }
        return _advance;
    }

private:
    FTPoint _advance;
    _KXGlyphInk _ink;
};
} // namespace

FTGlyph* _KXGlyphAtlas::makeGlyph(FT_GlyphSlot slot) {
    auto glyph = std::make_unique<AtlasGlyph>(slot); // before the slot holds pixels
    const std::optional<_KXGlyphInk> ink = makeInk(slot, nullptr);
    if (!ink)
        return nullptr;
    glyph->setInk(*ink);
    return glyph.release();
}

namespace {
struct DoneGlyph {
    void operator()(FT_Glyph glyph) const { FT_Done_Glyph(glyph); }
};
using Glyph = std::unique_ptr<FT_GlyphRec_, DoneGlyph>;
} // namespace

// A glyph grown by what the stroker draws around it. Null where it has no outline.
static Glyph grownGlyph(FT_GlyphSlot slot, FT_Stroker stroker) {
    FT_Glyph glyph = nullptr;
    if (slot->format != FT_GLYPH_FORMAT_OUTLINE || FT_Get_Glyph(slot, &glyph) != 0)
        return nullptr;
    if (FT_Glyph_StrokeBorder(&glyph, stroker, 0, 1) != 0 ||
        FT_Glyph_To_Bitmap(&glyph, FT_RENDER_MODE_NORMAL, nullptr, 1) != 0) {
        FT_Done_Glyph(glyph);
        return nullptr;
    }
    return Glyph(glyph);
}

std::optional<_KXGlyphInk> _KXGlyphAtlas::makeInk(FT_GlyphSlot slot, FT_Stroker stroker) {
    const Extent extent = extentOf(slot);
    if (std::max(extent.width, extent.height) > _KXGlyphPages::largestSide() - 2 * padding)
        return std::nullopt;
    const int fontSize = slot->face->size->metrics.y_ppem;
    if (stroker) {
        const Glyph glyph = grownGlyph(slot, stroker);
        if (!glyph)
            return _KXGlyphInk();
        const auto* pixels = reinterpret_cast<FT_BitmapGlyph>(glyph.get());
        return store(pixels->bitmap, {static_cast<float>(pixels->left), static_cast<float>(pixels->top)},
                     fontSize);
    }
    const FT_Error error = FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL);
    if (error == FT_Err_Out_Of_Memory)
        return std::nullopt;
    if (error != 0 || slot->bitmap.pixel_mode != FT_PIXEL_MODE_GRAY)
        return _KXGlyphInk();
    return store(slot->bitmap, {static_cast<float>(slot->bitmap_left), static_cast<float>(slot->bitmap_top)},
                 fontSize);
}

// Uploads a bitmap to the next free place. None if the driver has none.
std::optional<_KXGlyphInk> _KXGlyphAtlas::store(const FT_Bitmap& bitmap, KXPoint leftTop, int fontSize) {
    const int width = static_cast<int>(bitmap.width), height = static_cast<int>(bitmap.rows);
    if (width == 0 || height == 0)
        return _KXGlyphInk();
    if (!hasRoom(width, height) && !addPage(width, height, fontSize))
        return std::nullopt;
    _pages.upload(_x, _y, width, height, bitmap.buffer, bitmap.pitch);
    const auto texel = [side = static_cast<float>(_side)](int pixels) {
        return static_cast<float>(pixels) / side;
    };
    const _KXGlyphInk ink = {_pages.last(),
                             {texel(_x), texel(_y), texel(_x + width), texel(_y + height)},
                             leftTop,
                             {static_cast<float>(width), static_cast<float>(height)}};
    _x += width + padding;
    _shelfHeight = std::max(_shelfHeight, height);
    return ink;
}

// Whether the last page can hold the glyph at the pen, which moves to a new shelf where this one is full.
bool _KXGlyphAtlas::hasRoom(int width, int height) {
    if (_pages.empty())
        return false;
    if (_x + width + padding > _side) {
        _x = padding;
        _y += _shelfHeight + padding;
        _shelfHeight = 0;
    }
    return _x + width + padding <= _side && _y + height + padding <= _side;
}

// Adds a page for many glyphs of the usual size, or for one that is larger.
bool _KXGlyphAtlas::addPage(int width, int height, int fontSize) {
    constexpr int largestUsualSide = 1024;
    const int usual = std::min(10 * fontSize, largestUsualSide);
    const int needed = std::max({width + 2 * padding, height + 2 * padding, usual});
    const int side = std::min(KXNearestPowerOfTwo(needed), _KXGlyphPages::largestSide());
    if (!_pages.add(side))
        return false;
    _side = side;
    _x = _y = padding;
    _shelfHeight = 0;
    return true;
}
