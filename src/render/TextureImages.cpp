// Textures and images in memory: pixels that come and go, and how they are sampled.

#include "render/KXTexture.h"

#include "core/ground/ErrorSlot.h"
#include "image/Box.h"
#include "render/DrawBatch.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "render/PixelStore.h"
#include "render/TextureBinding.h"

#include <SDL_opengl.h>

KXTexture::KXTexture(const KXImage& image) {
    _commonInit();
    setImage(image); // a failure leaves it empty
}

int KXTexture::setImage(const KXImage& image) {
    if (!image.row(0)) {
        _KXReportError("Unable to make a texture of an empty image");
        return 0;
    }
    const bool fits = _internalFormat == 4 && static_cast<int>(_size.width) == image.width() &&
                      static_cast<int>(_size.height) == image.height();
    if (fits && setPart(image, 0, 0))
        return -1;
    return _loadFromData(image.width(), image.height(), 4, GL_RGBA,
                         reinterpret_cast<const char*>(image.row(0)));
}

int KXTexture::setPart(const KXImage& image, int x, int y) {
    KX_GL_CHECK("KXTexture::setPart");
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (!scope || !_textureID) {
        _KXReportError("Unable to set pixels of a texture that is empty or whose window is closed");
        return 0;
    }
    const _KXBox part = _KXBox::at(x, y, image.width(), image.height())
                            .within(static_cast<int>(_size.width), static_cast<int>(_size.height));
    if (part.isEmpty())
        return -1;
    _KXFlushBatch(KXDrawFlushTextureChange);
    ++_KXDrawStatistics.textureUploads;
    _forgetPixels();
    const _KXTextureBindingScope binding(_textureID);
    const _KXTightPixelStore tight;
    glPixelStorei(GL_UNPACK_ROW_LENGTH, image.width());
    glTexSubImage2D(GL_TEXTURE_2D, 0, part.left, part.top, part.right - part.left, part.bottom - part.top,
                    GL_RGBA, GL_UNSIGNED_BYTE, image.row(part.top - y) + (part.left - x));
    return -1;
}

KXImage KXTexture::copyImage() {
    KX_GL_CHECK("KXTexture::copyImage");
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (!scope || !_textureID) {
        _KXReportError("Unable to copy the pixels of a texture that is empty or whose window is closed");
        return {};
    }
    KXImage image(static_cast<int>(_size.width), static_cast<int>(_size.height));
    if (image.row(0))
        _readBack(GL_UNSIGNED_BYTE, image.row(0));
    return image;
}

void KXTexture::setFilter(KXFilter filter) {
    _filter = filter == KXFilterNearest ? KXFilterNearest : KXFilterLinear;
    _hasOwnFilter = true;
    _applySampling();
}

KXFilter KXTexture::filter() { return _filter; }

void KXTexture::setWrap(KXWrap wrap) {
    _wrap = wrap < KXWrapNone || wrap > KXWrapMirror ? KXWrapNone : wrap;
    _applySampling();
}

KXWrap KXTexture::wrap() { return _wrap; }

void KXTexture::_applySampling() {
    KX_GL_CHECK("KXTexture::_applySampling");
    const _KXGraphicsContextScope scope(_graphicsContext);
    if (!scope || !_textureID)
        return;
    _KXFlushBatch(KXDrawFlushTextureChange);
    const _KXTextureBindingScope binding(_textureID);
    const GLint filter = _filter == KXFilterNearest ? GL_NEAREST : GL_LINEAR;
    constexpr GLint wraps[] = {GL_REPEAT, GL_CLAMP_TO_EDGE, GL_REPEAT, GL_MIRRORED_REPEAT};
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wraps[_wrap]);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wraps[_wrap]);
}
