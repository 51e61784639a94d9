#include "ui/ClipScope.h"

#include "core/Truncate.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace {
struct Box {
    int left, bottom, right, top; // pixels from the bottom left, as OpenGL counts them
};

struct Vector {
    double x, y, z, w;
};

// A column of a matrix for each component, as OpenGL stores it.
Vector times(const GLfloat (&m)[16], const Vector& v) {
    const auto row = [&](int i) { return m[i] * v.x + m[i + 4] * v.y + m[i + 8] * v.z + m[i + 12] * v.w; };
    return {row(0), row(1), row(2), row(3)};
}

int nearest(double value) { return _KXTruncate(std::floor(value + 0.5)); }

Box intersection(const Box& a, const Box& b) {
    return {std::max(a.left, b.left), std::max(a.bottom, b.bottom), std::min(a.right, b.right),
            std::min(a.top, b.top)};
}

// Where on the target a rectangle is drawn; the whole viewport for one that reaches behind the eye.
Box boxOnTarget(KXRect rect) {
    GLfloat modelView[16], projection[16];
    GLint viewport[4];
    glGetFloatv(GL_MODELVIEW_MATRIX, modelView);
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
    const Box whole = {viewport[0], viewport[1], viewport[0] + viewport[2], viewport[1] + viewport[3]};

    constexpr double infinity = std::numeric_limits<double>::infinity();
    double left = infinity, bottom = infinity, right = -infinity, top = -infinity;
    for (int corner = 0; corner < 4; ++corner) {
        const double x = rect.origin.x + (corner & 1 ? rect.size.width : 0);
        const double y = rect.origin.y + (corner & 2 ? rect.size.height : 0);
        const Vector clip = times(projection, times(modelView, {x, y, 0, 1}));
        if (!(clip.w > 0))
            return whole;
        const double onX = viewport[0] + (clip.x / clip.w + 1) / 2 * viewport[2];
        const double onY = viewport[1] + (clip.y / clip.w + 1) / 2 * viewport[3];
        left = std::min(left, onX);
        right = std::max(right, onX);
        bottom = std::min(bottom, onY);
        top = std::max(top, onY);
    }
    return intersection(whole, {nearest(left), nearest(bottom), nearest(right), nearest(top)});
}
} // namespace

_KXClipScope::_KXClipScope(KXRect rect) {
    KX_GL_CHECK("_KXClipScope");
    if (!_KXCurrentGraphicsContext)
        return;
    _active = true;
    glGetIntegerv(GL_SCISSOR_BOX, _previous);
    _wasEnabled = glIsEnabled(GL_SCISSOR_TEST);
    Box box = boxOnTarget(rect);
    if (_wasEnabled)
        box = intersection(
            box, {_previous[0], _previous[1], _previous[0] + _previous[2], _previous[1] + _previous[3]});
    glEnable(GL_SCISSOR_TEST);
    glScissor(box.left, box.bottom, std::max(0, box.right - box.left), std::max(0, box.top - box.bottom));
}

_KXClipScope::~_KXClipScope() {
    if (!_active)
        return;
    glScissor(_previous[0], _previous[1], _previous[2], _previous[3]);
    if (!_wasEnabled)
        glDisable(GL_SCISSOR_TEST);
}
