#include "text/GlyphInk.h"

#include <freetype/ftsizes.h>
#include <freetype/ftstroke.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

namespace {
struct Extent {
    long width, height;
};

// Has a face in another size for as long as the scope lasts.
class SizeScope {
public:
    SizeScope(FT_Face face, std::uint32_t size) : _own(face->size) {
        if (FT_Pos{_own->metrics.y_ppem} * 64 == static_cast<FT_Pos>(size))
            return;
        if (FT_New_Size(face, &_other) != 0)
            throw std::bad_alloc();
        FT_Activate_Size(_other);
        _isSized = FT_Set_Char_Size(face, 0, static_cast<FT_F26Dot6>(size), 72, 72) == 0;
    }
    ~SizeScope() {
        if (!_other)
            return;
        FT_Activate_Size(_own);
        FT_Done_Size(_other);
    }
    SizeScope(const SizeScope&) = delete;
    SizeScope& operator=(const SizeScope&) = delete;

    explicit operator bool() const { return _isSized; }

private:
    FT_Size _own, _other = nullptr;
    bool _isSized = true;
};

struct DoneGlyph {
    void operator()(FT_Glyph glyph) const { FT_Done_Glyph(glyph); }
};
using Glyph = std::unique_ptr<FT_GlyphRec_, DoneGlyph>;
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

// Whether a texture holds what covers so many pixels, grown all around.
static bool fitsTexture(Extent extent, long grown) {
    return std::max(extent.width, extent.height) <= _KXLargestTextureSide() - 2 * (_KXGlyphBorder + grown);
}

// Draws a stroke around a glyph and fills both.
static FT_Error grow(FT_Glyph& glyph, FT_Library library, std::uint32_t grown) {
    FT_Stroker stroker = nullptr;
    if (const FT_Error error = FT_Stroker_New(library, &stroker); error != 0)
        return error;
    FT_Stroker_Set(stroker, grown, FT_STROKER_LINECAP_ROUND, FT_STROKER_LINEJOIN_ROUND, 0);
    const FT_Error error = FT_Glyph_StrokeBorder(&glyph, stroker, 0, 1);
    FT_Stroker_Done(stroker);
    return error;
}

// The pixels of the glyph that was loaded.
static FT_Error render(FT_GlyphSlot slot, std::uint32_t grown, Glyph& rendered) {
    FT_Glyph glyph = nullptr;
    FT_Error error = FT_Get_Glyph(slot, &glyph);
    if (error == 0 && grown)
        error = grow(glyph, slot->library, grown);
    if (error == 0)
        error = FT_Glyph_To_Bitmap(&glyph, FT_RENDER_MODE_NORMAL, nullptr, 1);
    rendered.reset(glyph);
    return error;
}

std::uint32_t _KXInkSize(int size, float scale) {
    return static_cast<std::uint32_t>(std::lround(static_cast<float>(size) * scale * 64));
}

static unsigned char toByte(float value) {
    return static_cast<unsigned char>(std::clamp(value + 0.5f, 0.0f, 255.0f));
}

// A picture in another size: each pixel is the mean of what it covers.
static std::vector<unsigned char> scaledPicture(const FT_Bitmap& from, int width, int height) {
    std::vector<unsigned char> pixels;
    pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    const float across = static_cast<float>(from.width) / static_cast<float>(width),
                down = static_cast<float>(from.rows) / static_cast<float>(height);
    const auto overlap = [](int i, float begin, float end) {
        return std::min(static_cast<float>(i + 1), end) - std::max(static_cast<float>(i), begin);
    };
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const float left = static_cast<float>(x) * across, top = static_cast<float>(y) * down;
            const int right =
                          std::min(static_cast<int>(std::ceil(left + across)), static_cast<int>(from.width)),
                      bottom = std::min(static_cast<int>(std::ceil(top + down)), static_cast<int>(from.rows));
            float sums[4] = {};
            for (int row = static_cast<int>(top); row < bottom; ++row)
                for (int column = static_cast<int>(left); column < right; ++column) {
                    const float weight = overlap(row, top, top + down) * overlap(column, left, left + across);
                    for (int i = 0; i < 4; ++i)
                        sums[i] += weight * from.buffer[row * from.pitch + column * 4 + i];
                }
            // FreeType's colours are multiplied by their opacity.
            const float opacity = sums[3] / (across * down);
            for (int i = 0; i < 3; ++i)
                pixels.push_back(toByte(sums[3] > 0 ? 255 * sums[i] / sums[3] : 0));
            pixels.push_back(toByte(opacity));
        }
    return pixels;
}

// A glyph that is a picture in colour, from the size that the face has to the one that is wanted.
static const _KXGlyphInk* pictureOf(_KXGlyphStore& store, FT_Face face, const _KXGlyphKey& key) {
    static constexpr _KXGlyphInk blank = {};
    if (FT_Load_Glyph(face, key.index, FT_LOAD_COLOR) != 0)
        return nullptr;
    const FT_Bitmap& bitmap = face->glyph->bitmap;
    if (key.grown || bitmap.pixel_mode != FT_PIXEL_MODE_BGRA || bitmap.width == 0 || bitmap.rows == 0)
        return &blank;
    const float scale = static_cast<float>(key.size) / 64 / static_cast<float>(face->size->metrics.y_ppem);
    const auto scaled = [scale](auto length) { return std::round(static_cast<float>(length) * scale); };
    const float width = std::max(1.0f, scaled(bitmap.width)), height = std::max(1.0f, scaled(bitmap.rows));
    if (!fitsTexture({std::lround(width), std::lround(height)}, 0))
        return &blank;
    const int wide = static_cast<int>(width), high = static_cast<int>(height);
    const std::vector<unsigned char> pixels = scaledPicture(bitmap, wide, high);
    return store.add(key, {pixels.data(), wide, high, 4 * wide, true},
                     {scaled(face->glyph->bitmap_left), scaled(face->glyph->bitmap_top)});
}

const _KXGlyphInk* _KXInkOf(_KXGlyphStore& store, FT_Face face, const _KXGlyphKey& key) {
    static constexpr _KXGlyphInk blank = {};
    if (const _KXGlyphInk* const found = store.find(key))
        return found;
    if (!FT_IS_SCALABLE(face))
        return pictureOf(store, face, key);
    const SizeScope size(face, key.size);
    if (!size || FT_Load_Glyph(face, key.index, _KXGlyphLoadFlags) != 0)
        return nullptr;
    if (face->glyph->format != FT_GLYPH_FORMAT_OUTLINE ||
        !fitsTexture(extentOf(face->glyph), (static_cast<long>(key.grown) + 63) / 64))
        return &blank;
    Glyph glyph;
    if (render(face->glyph, key.grown, glyph) != 0)
        return nullptr;
    const auto& [root, left, top, bitmap] = *reinterpret_cast<FT_BitmapGlyph>(glyph.get());
    if (bitmap.width == 0 || bitmap.rows == 0 || bitmap.pixel_mode != FT_PIXEL_MODE_GRAY)
        return &blank;
    return store.add(
        key, {bitmap.buffer, static_cast<int>(bitmap.width), static_cast<int>(bitmap.rows), bitmap.pitch},
        {static_cast<float>(left), static_cast<float>(top)});
}

namespace {
class StoredGlyph final : public FTGlyph {
public:
    /// @a slot holds the outline; its box and its advance are taken from that.
    StoredGlyph(FT_GlyphSlot slot, std::uint32_t font)
        : FTGlyph(slot),
          _advance(static_cast<double>(slot->advance.x) / 64, static_cast<double>(slot->advance.y) / 64),
          _face(slot->face), _key{font, slot->glyph_index, 0, 0} {}

    const FTPoint& Render(const FTPoint& pen, int) override {
        if (_KXCurrentGlyphRun && hasInk(*_KXCurrentGlyphRun) && _ink.page.smooth)
            addQuad(pen, *_KXCurrentGlyphRun);
        return _advance;
    }

private:
    bool hasInk(const _KXGlyphRun& run) {
        if (_isKnown && _key.size == run.size && (!_ink.page.smooth || run.store.use(_ink.place)))
            return true;
        _key.size = run.size;
        const _KXGlyphInk* const ink = _KXInkOf(run.store, _face, _key);
        _isKnown = ink != nullptr;
        if (ink)
            _ink = *ink;
        return _isKnown;
    }

    void addQuad(const FTPoint& pen, const _KXGlyphRun& run) const {
        // On whole pixels, where the glyph is sharp.
        const float left = std::floor(pen.Xf() * run.scale + _ink.leftTop.x),
                    top = std::floor(pen.Yf() * run.scale + _ink.leftTop.y);
        const float right = left + _ink.size.width, bottom = top - _ink.size.height;
        run.quads.push_back(
            {_ink.page, {{left, top}, {left, bottom}, {right, bottom}, {right, top}}, _ink.source});
    }

    FTPoint _advance;
    FT_Face _face;
    _KXGlyphKey _key;
    _KXGlyphInk _ink;
    bool _isKnown = false;
};
} // namespace

FTGlyph* _KXMakeFTGLGlyph(FT_GlyphSlot slot, std::uint32_t font) {
    return fitsTexture(extentOf(slot), 0) ? new StoredGlyph(slot, font) : nullptr;
}
