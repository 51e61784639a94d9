#include "render/ClipScope.h"

#include "core/ground/Truncate.h"
#include "render/CameraMap.h"
#include "render/CuttingClip.h"
#include "render/DrawBatch.h"
#include "render/GraphicsContext.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {
struct Pixels {
    int left, bottom, right, top;
};

// Column by column, as OpenGL keeps its matrices.
void multiply(const GLfloat (&matrix)[16], const GLfloat (&vector)[4], GLfloat (&product)[4]) {
    for (int row = 0; row < 4; ++row)
        product[row] = matrix[row] * vector[0] + matrix[4 + row] * vector[1] + matrix[8 + row] * vector[2] +
                       matrix[12 + row] * vector[3];
}

int nearestWithin(float value, int low, int high) {
    return std::clamp(_KXTruncate(std::floor(value + 0.5f)), low, high);
}

/// Where a rectangle comes to lie.
struct Projected {
    Pixels box;      // all of the viewport if part of it lies behind the eye
    bool isOnPixels; // upright, and its edges between pixels
};

bool isWhole(float pixel) { return std::abs(pixel - std::round(pixel)) < 0.01f; }

Projected projected(KXRect rect, const _KXCameraMap* camera) {
    GLint viewport[4];
    GLfloat modelView[16], projection[16];
    glGetIntegerv(GL_VIEWPORT, viewport);
    glGetFloatv(GL_MODELVIEW_MATRIX, modelView);
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    const Pixels all = {viewport[0], viewport[1], viewport[0] + viewport[2], viewport[1] + viewport[3]};
    Pixels box = {all.right, all.top, all.left, all.bottom};
    float pixels[4][2];
    for (int corner = 0; corner < 4; ++corner) {
        const KXPoint drawn = {rect.origin.x + (corner & 1 ? rect.size.width : 0),
                               rect.origin.y + (corner & 2 ? rect.size.height : 0)};
        const auto [x, y] = camera ? (*camera)(drawn) : drawn;
        const GLfloat point[4] = {x, y, 0, 1};
        GLfloat seen[4], clip[4];
        multiply(modelView, point, seen);
        multiply(projection, seen, clip);
        if (clip[3] <= 0)
            return {all, false};
        for (int axis = 0; axis < 2; ++axis)
            pixels[corner][axis] = static_cast<float>(viewport[axis]) +
                                   (clip[axis] / clip[3] + 1) / 2 * static_cast<float>(viewport[axis + 2]);
        const int column = nearestWithin(pixels[corner][0], all.left, all.right);
        const int row = nearestWithin(pixels[corner][1], all.bottom, all.top);
        box = {std::min(box.left, column), std::min(box.bottom, row), std::max(box.right, column),
               std::max(box.top, row)};
    }
    const bool isUpright =
        std::abs(pixels[0][0] - pixels[2][0]) < 0.01f && std::abs(pixels[0][1] - pixels[1][1]) < 0.01f;
    return {box, isUpright && isWhole(pixels[0][0]) && isWhole(pixels[0][1]) && isWhole(pixels[3][0]) &&
                     isWhole(pixels[3][1])};
}

_KXClip within(const _KXClip& limit, Pixels box) {
    if (limit.limits)
        box = {std::max(box.left, limit.x), std::max(box.bottom, limit.y),
               std::min(box.right, limit.x + limit.width), std::min(box.top, limit.y + limit.height)};
    return {box.left, box.bottom, box.right - box.left, box.top - box.bottom, true};
}

// What two rectangles share; of no area where they are apart.
KXRect shared(KXRect a, KXRect b) {
    const float left = std::max(a.origin.x, b.origin.x), top = std::max(a.origin.y, b.origin.y);
    const float right = std::min(a.origin.x + a.size.width, b.origin.x + b.size.width);
    const float bottom = std::min(a.origin.y + a.size.height, b.origin.y + b.size.height);
    return {{left, top}, {std::max(0.0f, right - left), std::max(0.0f, bottom - top)}};
}
} // namespace

static constinit _KXClipScope* innermost = nullptr; // of those that cut

_KXClip _KXClipWithin(const _KXClip& limit, KXRect rect) {
    return within(limit, projected(rect, nullptr).box);
}

_KXClipScope::_KXClipScope(KXRect rect) : _active(_KXCurrentGraphicsContext != 0) {
    if (!_active)
        return;
    const auto [box, isOnPixels] = projected(rect, _KXHasCamera ? &_KXCurrentCamera : nullptr);
    _pixels = {box.left, box.bottom, box.right, box.top};
    _cuts = isOnPixels && !_KXHasCamera && rect.size.width >= 0 && rect.size.height >= 0 && _KXIsCollecting();
    if (_cuts) {
        _outer = std::exchange(innermost, this);
        _cut = _outer ? shared(_outer->_cut, rect) : rect;
        _KXCut = &_cut;
    } else {
        _KXLeaveCutsToOpenGL(); // what is within is limited by both
        _previous = _KXCurrentClip();
        _KXSetClip(within(_previous, box));
    }
}

_KXClipScope::~_KXClipScope() {
    if (_cuts) {
        innermost = _outer;
        _KXCut = _outer ? &_outer->_cut : nullptr;
    } else if (_active) {
        _KXSetClip(_previous);
    }
}

void _KXLeaveCutsToOpenGL() {
    _KXCut = nullptr;
    _KXClipScope::leaveToOpenGL(std::exchange(innermost, nullptr));
}

// The outermost first.
void _KXClipScope::leaveToOpenGL(_KXClipScope* scope) {
    if (!scope)
        return;
    leaveToOpenGL(scope->_outer);
    scope->_cuts = false;
    scope->_previous = _KXCurrentClip();
    const auto [left, bottom, right, top] = scope->_pixels;
    _KXSetClip(within(scope->_previous, {left, bottom, right, top}));
}
