#include <Kobaltrix/KXFont.h>

#include "core/ErrorSlot.h"
#include "core/Truncate.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "text/ColorEscapes.h"
#include "text/Face.h"
#include "text/Utf8.h"

#include <SDL_opengl.h>

#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <new>
#include <string_view>

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

namespace {
// FTGL's texture fonts bind their textures and set the texture environment without restoring them.
class TextureStateScope {
public:
    TextureStateScope() {
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &_texture);
        glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &_mode);
    }
    ~TextureStateScope() {
        glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(_texture));
        if (_mode != GL_MODULATE)
            glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, _mode);
    }
    TextureStateScope(const TextureStateScope&) = delete;
    TextureStateScope& operator=(const TextureStateScope&) = delete;

private:
    GLint _texture = 0;
    GLint _mode = GL_MODULATE;
};
} // namespace

// Renders a piece of a text and moves on by its advance. FTGL reads to the terminator, so the piece, which
// points into @a buffer, is terminated in place meanwhile.
static void renderPiece(FTFont& font, KXColor color, char* buffer, std::string_view piece) {
    if (piece.empty())
        return;
    char* text = buffer + (piece.data() - buffer);
    const char behind = text[piece.size()];
    text[piece.size()] = 0;
    glColor4f(color.r, color.g, color.b, color.a);
    glTranslatef(font.Render(text).Xf(), 0, 0);
    text[piece.size()] = behind;
}

static void renderSpans(FTFont& font, KXColor color, char* text) {
    const char* position = text;
    _KXColorSpan span;
    while (_KXNextColorSpan(position, span)) {
        renderPiece(font, color, text, span.plain);
        renderPiece(font, span.color, text, span.text);
    }
    glColor4f(color.r, color.g, color.b, color.a);
    renderPiece(font, color, text, position);
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

    glPushMatrix();
    if (_aliasMode == KXAliasModePolygon)
        glDisable(GL_TEXTURE_2D);
    glRotatef(180, 1, 0, 0); // FTGL's y axis points up
    glTranslatef(p.x, std::ceil(-ascender()) - p.y + std::ceil(-descender()), 0);
    if (const KXPoint* offset = _offset())
        glTranslatef(offset->x, -offset->y, 0);
    {
        const TextureStateScope scope;
        renderSpans(*_font, c, text);
    }
    if (_aliasMode == KXAliasModePolygon)
        glEnable(GL_TEXTURE_2D);
    glPopMatrix();
}
