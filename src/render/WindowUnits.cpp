// The units that a window is drawn in, the points that it has, and its pixels.

#include "core/ground/Tape.h"
#include "core/ground/Truncate.h"
#include "render/Clip.h"
#include "render/DrawBatch.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "render/KXRenderContext.h"
#include "render/KXWindow.h"
#include "render/PictureFit.h"

#include <SDL_opengl.h>
#include <SDL_video.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

KXWindow* _KXLogicalWindowWithID(unsigned id) {
    KXWindow* const window = _KXWindowWithID(id);
    return window && window->_isLogical() ? window : nullptr;
}

bool _KXTargetHasBars(_KXPixelBox& picture) {
    KXRenderContext* const target = _KXCurrentRenderContext;
    return target && target == _KXCurrentWindowRenderContext &&
           static_cast<KXWindow*>(target)->_hasBars(picture);
}

bool KXWindow::_isLogical() const { return _KXIsLogical(_logical); }

void KXWindow::setLogicalSize(const KXLogicalSize& logical) { _logical = logical; }

_KXPictureFit KXWindow::_fit() {
    const bool countsPixels = _logical.scaling == KXScalingWholeMultiples && _isLogical();
    return _KXFitPicture(_logical, size(), countsPixels ? density() : 1);
}

KXSize KXWindow::logicalSize() { return _isLogical() ? _fit().units : size(); }

KXRect KXWindow::pictureRect() { return _fit().part; }

KXPoint KXWindow::unitsFromPoint(KXPoint point) { return _fit().toUnits(point); }

KXPoint KXWindow::pointFromUnits(KXPoint units) { return _fit().toPoints(units); }

float KXWindow::density() {
    if (_density == 0)
        _setDensity(_KXAnswerTo(_KXQuestion::Density, [this] { return _densityNow(); }));
    return static_cast<float>(_density) / 1000;
}

int KXWindow::_densityNow() {
    int width = 0, height = 0, points = 0;
    _drawableSize(&width, &height);
    SDL_GetWindowSize(_window, &points, nullptr);
    return points > 0 ? static_cast<int>(std::lround(1000.0 * width / points)) : 1000;
}

// What rounding does to odd sizes is no other density.
bool KXWindow::_seesOtherDensity() {
    const int now = _densityNow();
    if (50 * std::abs(now - _seenDensity) <= now)
        return false;
    _seenDensity = now;
    return true;
}

// A recording may tell anything.
void KXWindow::_setDensity(int thousandths) { _density = std::clamp(thousandths, 1, 64000); }

_KXPixelBox KXWindow::_pictureInPixels() {
    int width = 0, height = 0;
    _drawableSize(&width, &height);
    if (!_isLogical())
        return {0, 0, width, height};
    return _KXPixelsOf(_fit().part, size(), width, height);
}

// Only what a logical size leaves: else the game may have a viewport of its own.
bool KXWindow::_hasBars(_KXPixelBox& picture) {
    if (!_isLogical())
        return false;
    int width = 0, height = 0;
    _drawableSize(&width, &height);
    picture = _pictureInPixels();
    return picture.width < width || picture.height < height;
}

void KXWindow::_drawBars() {
    _KXPixelBox picture;
    if (!_hasBars(picture))
        return;
    int width = 0, height = 0;
    _drawableSize(&width, &height);
    const int right = picture.left + picture.width, top = picture.bottom + picture.height;
    glPushAttrib(GL_SCISSOR_BIT | GL_COLOR_BUFFER_BIT);
    glEnable(GL_SCISSOR_TEST);
    glClearColor(_logical.bars.r, _logical.bars.g, _logical.bars.b, _logical.bars.a);
    const auto clear = [](int left, int bottom, int wide, int high) {
        if (wide <= 0 || high <= 0)
            return;
        glScissor(left, bottom, wide, high);
        glClear(GL_COLOR_BUFFER_BIT);
    };
    clear(0, 0, picture.left, height);
    clear(right, 0, width - right, height);
    clear(picture.left, 0, picture.width, picture.bottom);
    clear(picture.left, top, picture.width, height - top);
    glPopAttrib();
}

void KXWindow::setClipTo(KXRect rect) {
    KX_GL_CHECK("KXWindow::setClipTo");
    const _KXGraphicsContextScope scope(_graphicsContext);
    const KXSize points = size();
    if (!scope || !(points.width > 0))
        return;
    int width = 0, height = 0;
    _drawableSize(&width, &height);
    if (_isLogical()) { // within the picture: the bars are not the game's
        const _KXPixelBox box = _KXPixelsOf(_fit().toPoints(rect), points, width, height);
        return _KXSetClip({box.left, box.bottom, box.width, box.height, true});
    }
    const float scale = static_cast<float>(width) / points.width;
    const float bottom = scale * points.height - rect.origin.y * scale - rect.size.height * scale;
    _KXSetClip({_KXTruncate(rect.origin.x * scale), _KXTruncate(bottom), _KXTruncate(rect.size.width * scale),
                _KXTruncate(rect.size.height * scale), true});
}

void KXWindow::unsetClip() {
    KX_GL_CHECK("KXWindow::unsetClip");
    const _KXGraphicsContextScope scope(_graphicsContext);
    const KXSize points = size();
    if (scope)
        _KXSetClip({0, 0, static_cast<int>(points.width), static_cast<int>(points.height), false});
}
