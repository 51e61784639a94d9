#include <Kobaltrix/KXFont.h>

#include "core/ground/ErrorSlot.h"
#include "core/ground/Truncate.h"
#include "render/DrawBatch.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "text/ColorEscapes.h"
#include "text/Face.h"
#include "text/GlyphAtlas.h"
#include "util/Utf8.h"

#include <SDL_opengl.h>

#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <new>
#include <string_view>
#include <vector>

struct KXFont::Offsets {
    std::map<float, KXPoint> bySize;
};

static constexpr std::size_t textSize = 1024;

KXFont::KXFont() { throw std::bad_alloc(); }

KXFont::KXFont(const char* path, int mode)
    : _font(nullptr), _offsets(nullptr), _size(0),
      _aliasMode(mode == KXAliasModePolygon ? KXAliasModePolygon : KXAliasModeTexture) {
    auto face = _KXOpenFace(path, _aliasMode);
    _offsets = new Offsets;
    _font = face.release();
    KXFont::setSize(10);
}

KXFont::~KXFont() {
    KX_GL_CHECK("KXFont::~KXFont");
    delete _font;
    delete _offsets;
}

int KXFont::setSize(int size) {
    KX_GL_CHECK("KXFont::setSize");
    // A face counts its pixels per em in 16 bits; FTGL would wrap what does not fit.
    constexpr int largest = 65535;
    if (size == _size)
        return -1;
    if (size < 0 || size > largest || !_font->FaceSize(static_cast<unsigned>(size), 72)) {
        _KXReportError("Unable to set font face size");
        return 0;
    }
    _size = size;
    return -1;
}

int KXFont::getSize() const { return _size; }

KXAliasMode KXFont::_aliasModeInUse() const { return _aliasMode; }

void KXFont::setRenderingOffsetForSize(int size, KXPoint offset) {
    _offsets->bySize[static_cast<float>(size)] = offset;
}

const KXPoint* KXFont::_offset() const {
    const auto found = _offsets->bySize.find(static_cast<float>(_size));
    return found == _offsets->bySize.end() ? nullptr : &found->second;
}

KXPoint KXFont::renderingOffsetForSize(int) const {
    const KXPoint* offset = _offset();
    return offset ? *offset : KXZeroPoint;
}

KXSize KXFont::stringBounds(const char* text) const { return stringBounds(text, 0); }

KXSize KXFont::stringBounds(const char* text, int raw) const {
    KX_GL_CHECK("KXFont::stringBounds");
    if (!text || _font->Error())
        return KXZeroSize;
    char visible[textSize];
    if (!raw) {
        _KXVisibleText(visible, sizeof visible, text);
        text = visible;
    }
    const FTBBox box = _font->BBox(text);
    return {box.Upper().Xf() - box.Lower().Xf(), box.Upper().Yf() - box.Lower().Yf()};
}

float KXFont::lineHeight() const { return _font->LineHeight(); }
float KXFont::ascender() const { return _font->Ascender(); }
float KXFont::descender() const { return _font->Descender(); }

float KXFont::advance(const char* text) const {
    KX_GL_CHECK("KXFont::advance");
    return _font->Advance(text);
}

float KXFont::fullHeight() const {
    return ascender() + static_cast<float>(std::abs(_KXTruncate(descender())));
}

// Calls @a piece with each stretch of one colour and that colour. FTGL reads to the terminator, so the
// stretch is terminated in place meanwhile. The last call, maybe with an empty stretch, is for @a color.
template<class Piece>
static void forEachPiece(char* text, KXColor color, Piece piece) {
    const auto terminated = [&](std::string_view part, KXColor partColor) {
        char* const start = text + (part.data() - text);
        const char behind = start[part.size()];
        start[part.size()] = 0;
        piece(start, partColor);
        start[part.size()] = behind;
    };
    const char* position = text;
    _KXColorSpan span;
    while (_KXNextColorSpan(position, span)) {
        terminated(span.plain, color);
        terminated(span.text, span.color);
    }
    terminated(position, color);
}

// FTGL draws polygons with a matrix of its own.
static void printPolygons(FTFont& font, char* text, KXPoint origin, KXColor color) {
    _KXFlushBatch(KXDrawFlushText);
    glPushMatrix();
    glDisable(GL_TEXTURE_2D);
    glRotatef(180, 1, 0, 0); // FTGL's y axis points up
    glTranslatef(origin.x, -origin.y, 0);
    forEachPiece(text, color, [&font](const char* piece, KXColor pieceColor) {
        glColor4f(pieceColor.r, pieceColor.g, pieceColor.b, pieceColor.a);
        glTranslatef(font.Render(piece).Xf(), 0, 0);
    });
    glEnable(GL_TEXTURE_2D);
    glPopMatrix();
}

namespace {
// Glyphs blend by their opacity and take their colour from the text, whatever the game draws with. Where it
// draws like that anyway, as most do, nothing is done and the glyphs may be collected.
class GlyphStateScope {
public:
    GlyphStateScope() : _changed(!isSuitable()) {
        if (!_changed)
            return;
        _KXFlushBatch(KXDrawFlushText);
        glPushAttrib(GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_TEXTURE_BIT);
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glEnable(GL_TEXTURE_2D);
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    }
    ~GlyphStateScope() {
        if (!_changed)
            return;
        _KXFlushBatch(KXDrawFlushText);
        glPopAttrib();
    }
    GlyphStateScope(const GlyphStateScope&) = delete;
    GlyphStateScope& operator=(const GlyphStateScope&) = delete;

private:
    static bool isSuitable() {
        GLint source = 0, destination = 0, environment = 0;
        glGetIntegerv(GL_BLEND_SRC, &source);
        glGetIntegerv(GL_BLEND_DST, &destination);
        glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &environment);
        return source == GL_SRC_ALPHA && destination == GL_ONE_MINUS_SRC_ALPHA &&
               environment == GL_MODULATE && glIsEnabled(GL_BLEND) && glIsEnabled(GL_TEXTURE_2D);
    }

    bool _changed;
};
} // namespace

static void printGlyphs(FTFont& font, char* text, KXPoint origin, KXColor color) {
    // Kept: text is printed in every frame. Never destroyed: a static object of the game may print at the
    // end.
    static constinit std::vector<_KXGlyphQuad>* glyphs = nullptr;
    if (!glyphs)
        glyphs = new std::vector<_KXGlyphQuad>;
    const GlyphStateScope state;
    forEachPiece(text, color, [&font, &origin](const char* piece, KXColor pieceColor) {
        glyphs->clear();
        _KXRenderedGlyphs = glyphs;
        const float advance = font.Render(piece).Xf();
        _KXRenderedGlyphs = nullptr;
        for (_KXGlyphQuad& glyph : *glyphs)
            for (KXPoint& corner : glyph.corners)
                corner = {origin.x + corner.x, origin.y - corner.y}; // FTGL's y axis points up
        _KXDrawGlyphQuads(glyphs->data(), static_cast<int>(glyphs->size()), pieceColor);
        origin.x += advance;
    });
    _KXLeaveColor(color);
}

void KXFont::print(KXPoint p, KXColor c, const char* format, ...) {
    KX_GL_CHECK("KXFont::print");
    if (!format || _font->Error() || !_KXCurrentGraphicsContext)
        return;
    char text[textSize];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    if (length < 0)
        return;
    if (static_cast<std::size_t>(length) >= sizeof text - 1) // also the full length: the arguments may be cut
        _KXDropCutCharacter(text, sizeof text - 1);

    KXPoint origin = {p.x, p.y - std::ceil(-ascender()) - std::ceil(-descender())};
    if (const KXPoint* offset = _offset())
        origin = {origin.x + offset->x, origin.y + offset->y};
    (_aliasMode == KXAliasModePolygon ? printPolygons : printGlyphs)(*_font, text, origin, c);
}
