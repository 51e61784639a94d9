#include "render/KXTexture.h"

#include "core/ground/ErrorSlot.h"
#include "core/ground/Truncate.h"
#include "render/Clip.h"
#include "render/DrawBatch.h"
#include "render/DrawOptions.h"
#include "render/Framebuffer.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "render/KXRenderContext.h"
#include "render/Pen.h"
#include "render/QuadStream.h"
#include "render/View.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <new>

static int limited(int value, int low, int high) { return std::max(low, std::min(value, high)); }

KXTexture::KXTexture() { _commonInit(); }

KXTexture::KXTexture(const char* path) {
    _commonInit();
    if (!_loadImage(path))
        throw std::bad_alloc();
}

KXTexture::KXTexture(int width, int height) {
    _commonInit();
    _loadFromData(width, height, 4, GL_RGBA, nullptr); // a failure leaves it empty
}

KXTexture::~KXTexture() {
    if (_KXCurrentRenderContext == this)
        unsetRenderContext();
    _clearFBOID();
    _clearTextureID();
}

void KXTexture::_commonInit() {
    _textureID = 0;
    _framebufferID = 0;
    _size = KXZeroSize;
    _tint = {1, 1, 1, 1};
    _internalFormat = 0;
    _format = 0;
    _forgetPixels();
    _graphicsContext = 0;
}

void KXTexture::_clearTextureID() {
    if (_textureID) {
        _KXFlushBatch(KXDrawFlushTextureChange);
        const _KXGraphicsContextScope scope(_graphicsContext);
        if (scope)
            glDeleteTextures(1, &_textureID);
    }
    _textureID = 0;
}

void KXTexture::_clearFBOID() {
    if (_framebufferID) {
        const _KXGraphicsContextScope scope(_graphicsContext);
        if (scope)
            _KXDeleteFramebuffer(_framebufferID);
    }
    _framebufferID = 0;
}

bool KXTexture::_isUsableHere() const { return _textureID && _graphicsContext == _KXCurrentGraphicsContext; }

void KXTexture::bind() {
    _KXFlushBatch(KXDrawFlushRequest);
    if (_KXCurrentGraphicsContext)
        glBindTexture(GL_TEXTURE_2D, _isUsableHere() ? _textureID : 0);
}

KXSize KXTexture::size() { return _size; }

void KXTexture::setTint(KXColor tint) { _tint = tint; }

KXColor KXTexture::tint() { return _tint; }

// @param part in pixels. @param size what it is stretched to before it is placed.
void KXTexture::_drawQuad(const KXRect& part, const KXDrawOptions& options, const _KXAffine& placement,
                          KXSize size) {
    const auto& [origin, extent] = part;
    const _KXTextureRect source = {origin.x / _size.width, origin.y / _size.height,
                                   (origin.x + extent.width) / _size.width,
                                   (origin.y + extent.height) / _size.height};
    const KXColor tint = options.tint;
    const KXColor color = {_tint.r * tint.r, _tint.g * tint.g, _tint.b * tint.b, tint.a};
    if (!_premultiplied && options.blend == KXBlendInherited && !options.shader)
        return _KXDrawTexturedQuad(_textureID, source, color, placement, size.width, size.height);
    const _KXPenScope pen(options.blend, _premultiplied, options.shader);
    const float product = _premultiplied ? color.a : 1;
    _KXDrawTexturedQuad(_textureID, source,
                        {color.r * product, color.g * product, color.b * product, color.a}, placement,
                        size.width, size.height);
}

void KXTexture::draw(const KXDrawOptions& options) {
    KX_GL_CHECK("KXTexture::draw");
    KXRect part;
    _KXAffine placement;
    if (_isUsableHere() && _KXCutSource(options.source, _size, part, _wrap != KXWrapNone) &&
        _KXPlacePart(options, part.size, placement))
        _drawQuad(part, options, placement, part.size);
}

void KXTexture::setPremultiplied(int premultiplied) {
    _premultiplied = premultiplied != 0;
    if (_KXCurrentRenderContext == this)
        _KXSetTargetPremultiplied(_premultiplied);
}

int KXTexture::isPremultiplied() const { return _premultiplied ? -1 : 0; }

KXPlacedBox KXTexture::placed(const KXDrawOptions& options) const {
    KXRect part;
    _KXAffine placement;
    if (!_KXCutSource(options.source, _size, part, _wrap != KXWrapNone) ||
        !_KXPlacePart(options, part.size, placement))
        return {};
    return _KXPlacedBoxOf(placement, {KXZeroPoint, part.size});
}

void KXTexture::draw(int x, int y, int transformed) { draw(x, y, 1.0f, 1.0f, 0, 0, transformed); }

void KXTexture::draw(int x, int y, float opacity, float scale, int rotation, int flips, int transformed) {
    draw(0, 0, static_cast<int>(_size.width), static_cast<int>(_size.height), -1, -1, x, y, opacity, scale,
         rotation, flips, transformed);
}

void KXTexture::draw(int sx1, int sy1, int sx2, int sy2, int x, int y, int transformed) {
    if (sx2 < sx1 || sy2 < sy1)
        _KXReportError(
            "KXTexture::draw: seven integers draw the part from (%d, %d) to (%d, %d), which is empty; "
            "an opacity and a scale are written as 1.0f",
            sx1, sy1, sx2, sy2);
    draw(sx1, sy1, sx2, sy2, -1, -1, x, y, 1.0f, 1.0f, 0, 0, transformed);
}

void KXTexture::draw(int sx1, int sy1, int sx2, int sy2, int x, int y, float opacity, float scale,
                     int rotation, int flips, int transformed) {
    draw(sx1, sy1, sx2, sy2, -1, -1, x, y, opacity, scale, rotation, flips, transformed);
}

void KXTexture::draw(int sx1, int sy1, int sx2, int sy2, int width, int height, int x, int y, float opacity,
                     float scale, int rotation, int flips, int transformed) {
    KX_GL_CHECK("KXTexture::draw");
    if (!_isUsableHere())
        return;
    const int textureWidth = static_cast<int>(_size.width), textureHeight = static_cast<int>(_size.height);
    sx1 = limited(sx1, 0, textureWidth);
    sy1 = limited(sy1, 0, textureHeight);
    sx2 = limited(sx2, sx1, textureWidth);
    sy2 = limited(sy2, sy1, textureHeight);
    const int sourceWidth = sx2 - sx1, sourceHeight = sy2 - sy1;
    const KXRect part = {{static_cast<float>(sx1), static_cast<float>(sy1)},
                         {static_cast<float>(sourceWidth), static_cast<float>(sourceHeight)}};
    const _KXAffine placement = transformed
                                    ? _KXPlacement(x, y, sourceWidth, sourceHeight, scale, rotation, flips)
                                    : _KXAffine{1, 0, static_cast<float>(x), 0, 1, static_cast<float>(y)};
    KXDrawOptions options;
    options.tint.a = opacity;
    _drawQuad(part, options, placement,
              {width < 0 ? part.size.width : static_cast<float>(width),
               height < 0 ? part.size.height : static_cast<float>(height)});
}

void KXTexture::drawingPosition(int x, int y, int width, int height, float scale, int rotation, int flips) {
    KX_GL_CHECK("KXTexture::drawingPosition");
    if (!_KXCurrentGraphicsContext)
        return;
    _KXFlushBatch(KXDrawFlushRequest);
    glTranslatef(static_cast<float>(x), static_cast<float>(y), 0);
    glScalef(scale, scale, 0);
    if (rotation == 0 && flips == 0)
        return;
    const int middleX = width / 2, middleY = height / 2; // rounded toward zero
    const auto centreX = static_cast<float>(middleX), centreY = static_cast<float>(middleY);
    glTranslatef(centreX, centreY, 0);
    const int flip = flips & KXFlipDiagonal;
    if (flip == KXFlipDiagonal)
        glRotatef(180, 1, 1, 0);
    else if (flip == KXFlipLeftRight)
        glRotatef(180, 0, 1, 0);
    else if (flip == KXFlipTopBottom)
        glRotatef(180, 1, 0, 0);
    if (rotation != 0)
        glRotatef(static_cast<float>(rotation), 0, 0, 1);
    glTranslatef(-centreX, -centreY, 0);
}

void KXTexture::drawNineSlice(KXPoint position, KXSize size, int corner) {
    drawNineSlice(position, size, corner, 1);
}

void KXTexture::drawNineSlice(KXPoint position, KXSize size, int corner, float opacity) {
    const auto edge = static_cast<float>(corner);
    // Three columns and three rows: where each begins and ends on the texture, where it is drawn, how large.
    struct Band {
        int from, to, position, extent;
    };
    const auto bands = [corner, edge](float textureExtent, float start, float extent) {
        const int last = static_cast<int>(textureExtent);
        const int inner = static_cast<int>(std::max(static_cast<long long>(last) - corner, -1LL << 31));
        return std::array<Band, 3>{
            {{0, corner, _KXTruncate(start), -1},
             {corner, inner, _KXTruncate(start + edge), _KXTruncate(extent - 2 * edge)},
             {inner, last, _KXTruncate(start + extent - edge), -1}}};
    };
    const auto columns = bands(_size.width, position.x, size.width);
    const auto rows = bands(_size.height, position.y, size.height);
    const auto slice = [&](int column, int row) {
        const Band &horizontal = columns[column], &vertical = rows[row];
        // Corners keep the size they have on the texture; an edge is as thick as they ought to be.
        const int thickness = column == 1 || row == 1 ? corner : -1;
        draw(horizontal.from, vertical.from, horizontal.to, vertical.to,
             column == 1 ? horizontal.extent : thickness, row == 1 ? vertical.extent : thickness,
             horizontal.position, vertical.position, opacity, 1, 0, 0, -1);
    };
    constexpr int order[9][2] = {{0, 0}, {2, 0}, {0, 2}, {2, 2}, {1, 0}, {1, 2}, {0, 1}, {2, 1}, {1, 1}};
    for (const auto& [column, row] : order)
        slice(column, row);
}

// Half a turn about the x axis and up by the height: a target's first row is its top, as in an image.
static void projectUpright(int width, int height) {
    glViewport(0, 0, width, height);
    _KXPixelsPerUnit = 1;
    _KXTargetHasSharpText = false;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, width, height, 0, -1, 1);
    const GLfloat upright[16] = {1, 0, 0, 0, 0, -1, 0, 0, 0, 0, -1, 0, 0, static_cast<float>(height), 0, 1};
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixf(upright);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
}

void KXTexture::setRenderContext() {
    KX_GL_CHECK("KXTexture::setRenderContext");
    if (!_textureID ||
        (_graphicsContext != _KXCurrentGraphicsContext && !_KXMakeGraphicsContextCurrent(_graphicsContext))) {
        _KXReportError("Unable to draw into a texture that is empty or whose window is closed");
        return;
    }
    if (_KXCurrentWindowRenderContext) // a texture of another window takes drawing there
        _KXCurrentWindowRenderContext = _KXWindowOfGraphicsContext(_graphicsContext);
    _KXFlushBatch(KXDrawFlushTarget);
    _clearFBOID();
    unsigned status = 0;
    _framebufferID = _KXCreateFramebuffer(_textureID, &status);
    if (status != GL_FRAMEBUFFER_COMPLETE) {
        std::printf("Fatal error. Framebutter not complete! texID: %d -> fboID: %d (%x)\n",
                    static_cast<int>(_textureID), static_cast<int>(_framebufferID), status);
        _KXReportError("The driver cannot draw into the texture: its framebuffer is not complete (%x)",
                       status);
    }
    _forgetPixels();

    projectUpright(static_cast<int>(_size.width), static_cast<int>(_size.height));
    _KXSetTarget(this, _premultiplied);
}

void KXTexture::unsetRenderContext() {
    KX_GL_CHECK("KXTexture::unsetRenderContext");
    _KXFlushBatch(KXDrawFlushTarget);
    const bool isTarget = _KXCurrentRenderContext == this;
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (scope && isTarget) {
        _KXBindSurface();
        glBindTexture(GL_TEXTURE_2D, 0);
        // As a target the texture had replaced the model-view matrix, so there is none of the game's to
        // return to.
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
    }
    _clearFBOID();
    if (isTarget)
        _KXSetTarget(nullptr, false);
}

void KXTexture::setClipTo(KXRect rect) {
    KX_GL_CHECK("KXTexture::setClipTo");
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (scope)
        _KXSetClip({_KXTruncate(rect.origin.x), _KXTruncate(rect.origin.y), _KXTruncate(rect.size.width),
                    _KXTruncate(rect.size.height), true});
}

void KXTexture::unsetClip() {
    KX_GL_CHECK("KXTexture::unsetClip");
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (scope)
        _KXSetClip({0, 0, static_cast<int>(_size.width), static_cast<int>(_size.height), false});
}
