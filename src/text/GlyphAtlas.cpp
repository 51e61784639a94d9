#include "text/GlyphAtlas.h"

#include "render/DrawBatch.h"

#include <Kobaltrix/KXTypes.h>

#include <SDL_opengl.h>

#include <algorithm>
#include <cmath>
#include <memory>

// Empty pixels around every glyph: filtering never reaches a neighbour.
static constexpr int padding = 2;

namespace {
// Uploads read memory as the game's pixel-store state says, and bind textures: both are the game's own.
class UploadScope {
public:
    UploadScope() {
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &_texture);
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        for (const GLenum parameter : {GL_UNPACK_SWAP_BYTES, GL_UNPACK_LSB_FIRST, GL_UNPACK_ROW_LENGTH,
                                       GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS})
            glPixelStorei(parameter, 0);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    }
    ~UploadScope() {
        glPopClientAttrib();
        glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(_texture));
    }
    UploadScope(const UploadScope&) = delete;
    UploadScope& operator=(const UploadScope&) = delete;

private:
    GLint _texture = 0;
};

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

    /// Gives the glyph ink: a part of a page. @a left and @a top place it against the pen.
    void setInk(unsigned page, const _KXTextureRect& source, KXPoint leftTop, KXSize size) {
        _page = page;
        _source = source;
        _leftTop = leftTop;
        _size = size;
    }

    const FTPoint& Render(const FTPoint& pen, int) override {
        if (_page && _KXRenderedGlyphs) {
            // On whole pixels, where the glyph is sharp.
            const float left = std::floor(pen.Xf() + _leftTop.x), top = std::floor(pen.Yf() + _leftTop.y);
            const float right = left + _size.width, bottom = top - _size.height;
            _KXRenderedGlyphs->push_back(
                {_page, {{left, top}, {left, bottom}, {right, bottom}, {right, top}}, _source});
        }
        return _advance;
    }

private:
    FTPoint _advance;
    unsigned _page = 0; // 0 without ink
    _KXTextureRect _source = {};
    KXPoint _leftTop = {0, 0};
    KXSize _size = {0, 0};
};
} // namespace

FTGlyph* _KXGlyphAtlas::makeGlyph(FT_GlyphSlot slot) {
    const Extent extent = extentOf(slot);
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (std::max(extent.width, extent.height) > largest - 2 * padding)
        return nullptr;
    auto glyph = std::make_unique<AtlasGlyph>(slot);
    if (FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) != 0 || slot->bitmap.pixel_mode != FT_PIXEL_MODE_GRAY ||
        slot->bitmap.width == 0 || slot->bitmap.rows == 0)
        return glyph.release();
    const Place place = store(slot->bitmap, slot->face->size->metrics.y_ppem);
    glyph->setInk(place.page, place.rect,
                  {static_cast<float>(slot->bitmap_left), static_cast<float>(slot->bitmap_top)},
                  {static_cast<float>(slot->bitmap.width), static_cast<float>(slot->bitmap.rows)});
    return glyph.release();
}

// Uploads a bitmap to the next free place.
_KXGlyphAtlas::Place _KXGlyphAtlas::store(const FT_Bitmap& bitmap, int fontSize) {
    const int width = static_cast<int>(bitmap.width), height = static_cast<int>(bitmap.rows);
    const UploadScope scope;
    if (!hasRoom(width, height)) {
        GLint largest = 0;
        glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
        constexpr int largestUsualSide = 1024;
        const int usual = std::min(10 * fontSize, largestUsualSide);
        const int needed = std::max({width + 2 * padding, height + 2 * padding, usual});
        addPage(std::min(KXNearestPowerOfTwo(needed), static_cast<int>(largest)));
    }
    ++_KXDrawStatistics.textureUploads;
    glBindTexture(GL_TEXTURE_2D, _pages.back());
    glPixelStorei(GL_UNPACK_ROW_LENGTH, bitmap.pitch);
    glTexSubImage2D(GL_TEXTURE_2D, 0, _x, _y, width, height, GL_ALPHA, GL_UNSIGNED_BYTE, bitmap.buffer);
    const auto texel = [side = static_cast<float>(_side)](int pixels) {
        return static_cast<float>(pixels) / side;
    };
    const Place place = {_pages.back(), {texel(_x), texel(_y), texel(_x + width), texel(_y + height)}};
    _x += width + padding;
    _shelfHeight = std::max(_shelfHeight, height);
    return place;
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

void _KXGlyphAtlas::addPage(int side) {
    const std::vector<unsigned char> empty(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    _pages.reserve(_pages.size() + 1);
    GLuint page = 0;
    glGenTextures(1, &page);
    _pages.push_back(page);
    glBindTexture(GL_TEXTURE_2D, page);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA, side, side, 0, GL_ALPHA, GL_UNSIGNED_BYTE, empty.data());
    _side = side;
    _x = _y = padding;
    _shelfHeight = 0;
}

void _KXGlyphAtlas::clear() {
    if (_pages.empty())
        return;
    _KXFlushBatch(KXDrawFlushTextureChange);
    glDeleteTextures(static_cast<GLsizei>(_pages.size()), _pages.data());
    _pages.clear();
}
