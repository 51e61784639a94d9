#include "render/ClipScope.h"

#include "core/ground/Truncate.h"
#include "render/CameraMap.h"
#include "render/GraphicsContext.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <cmath>

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

// The pixels that a rectangle covers; all of the viewport if part of it lies behind the eye.
Pixels projected(KXRect rect, const _KXCameraMap* camera) {
    GLint viewport[4];
    GLfloat modelView[16], projection[16];
    glGetIntegerv(GL_VIEWPORT, viewport);
    glGetFloatv(GL_MODELVIEW_MATRIX, modelView);
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    const Pixels all = {viewport[0], viewport[1], viewport[0] + viewport[2], viewport[1] + viewport[3]};
    Pixels box = {all.right, all.top, all.left, all.bottom};
    for (int corner = 0; corner < 4; ++corner) {
        const KXPoint drawn = {rect.origin.x + (corner & 1 ? rect.size.width : 0),
                               rect.origin.y + (corner & 2 ? rect.size.height : 0)};
        const auto [x, y] = camera ? (*camera)(drawn) : drawn;
        const GLfloat point[4] = {x, y, 0, 1};
        GLfloat seen[4], clip[4];
        multiply(modelView, point, seen);
        multiply(projection, seen, clip);
        if (clip[3] <= 0)
            return all;
        const auto pixel = [&](int axis) {
            return static_cast<float>(viewport[axis]) +
                   (clip[axis] / clip[3] + 1) / 2 * static_cast<float>(viewport[axis + 2]);
        };
        const int column = nearestWithin(pixel(0), all.left, all.right);
        const int row = nearestWithin(pixel(1), all.bottom, all.top);
        box = {std::min(box.left, column), std::min(box.bottom, row), std::max(box.right, column),
               std::max(box.top, row)};
    }
    return box;
}

_KXClip within(const _KXClip& limit, Pixels box) {
    if (limit.limits)
        box = {std::max(box.left, limit.x), std::max(box.bottom, limit.y),
               std::min(box.right, limit.x + limit.width), std::min(box.top, limit.y + limit.height)};
    return {box.left, box.bottom, box.right - box.left, box.top - box.bottom, true};
}
} // namespace

_KXClip _KXClipWithin(const _KXClip& limit, KXRect rect) { return within(limit, projected(rect, nullptr)); }

_KXClipScope::_KXClipScope(KXRect rect) : _active(_KXCurrentGraphicsContext != 0) {
    if (!_active)
        return;
    _previous = _KXCurrentClip();
    _KXSetClip(within(_previous, projected(rect, _KXHasCamera ? &_KXCurrentCamera : nullptr)));
}

_KXClipScope::~_KXClipScope() {
    if (_active)
        _KXSetClip(_previous);
}
