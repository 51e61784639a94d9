#include <Kobaltrix/KXDrawing.h>

#include "core/Truncate.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "render/QuadStream.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace {
struct Edges {
    int left, top, right, bottom;
};

Edges edgesOf(KXRect rect) {
    const int left = _KXTruncate(rect.origin.x), top = _KXTruncate(rect.origin.y);
    return {left, top, _KXTruncate(rect.size.width + static_cast<float>(left)),
            _KXTruncate(rect.size.height + static_cast<float>(top))};
}

// Keeps "one pixel before" and "one pixel behind" within the range of an int.
int before(int value) { return value - (value > std::numeric_limits<int>::min()); }
int behind(int value) { return value + (value < std::numeric_limits<int>::max()); }

// Switches edge flags on for outlines. They only show where the game fills polygons as lines or points, and
// reading the present flag would end the driver's batch, so nothing is done when polygons are filled.
class EdgeFlagScope {
public:
    EdgeFlagScope() {
        GLint mode[2] = {GL_FILL, GL_FILL};
        glGetIntegerv(GL_POLYGON_MODE, mode);
        _changed = mode[0] != GL_FILL || mode[1] != GL_FILL;
        if (!_changed)
            return;
        glGetBooleanv(GL_EDGE_FLAG, &_previous);
        glEdgeFlag(GL_TRUE);
    }
    ~EdgeFlagScope() {
        if (_changed)
            glEdgeFlag(_previous);
    }
    EdgeFlagScope(const EdgeFlagScope&) = delete;
    EdgeFlagScope& operator=(const EdgeFlagScope&) = delete;

private:
    bool _changed = false;
    GLboolean _previous = GL_TRUE;
};

// 6.28 and not two pi: the last segment stops just short of the full turn.
void drawPerimeter(GLenum primitive, KXPoint centre, int radius, int segments, KXColor color) {
    constexpr double fullTurn = 6.28;
    constexpr int mostSegments = 65536;
    const int count = segments < -mostSegments ? mostSegments : std::min(std::abs(segments), mostSegments);
    const double step = count ? fullTurn / count : std::numeric_limits<double>::infinity();

    const _KXSolidDrawingScope solid(color);
    glBegin(primitive);
    double angle = 0;
    do {
        glVertex2f(static_cast<float>(centre.x + std::sin(angle) * radius),
                   static_cast<float>(centre.y + std::cos(angle) * radius));
        angle += step;
    } while (angle < fullTurn);
    glEnd();
}

void drawTriangle(GLenum primitive, KXPoint a, KXPoint b, KXPoint c, KXColor color) {
    const _KXSolidDrawingScope solid(color);
    glBegin(primitive);
    glVertex2f(a.x, a.y);
    glVertex2f(b.x, b.y);
    glVertex2f(c.x, c.y);
    glEnd();
}
} // namespace

void KXDrawLine(KXPoint from, KXPoint to, KXColor color) {
    KX_GL_CHECK("KXDrawLine");
    if (!_KXCurrentGraphicsContext)
        return;
    glLineWidth(1);
    const _KXSolidDrawingScope solid(color);
    glBegin(GL_LINES);
    glVertex2i(_KXTruncate(from.x), _KXTruncate(from.y));
    glVertex2i(_KXTruncate(to.x), _KXTruncate(to.y));
    glEnd();
}

void KXDrawRect(KXRect rect, KXColor color) {
    KX_GL_CHECK("KXDrawRect");
    if (!_KXCurrentGraphicsContext)
        return;
    glLineWidth(1);
    const EdgeFlagScope edgeFlags;
    const auto [left, top, right, bottom] = edgesOf(rect);
    const _KXSolidQuad strips[] = {{left, top, before(right), behind(top)},
                                   {before(right), top, right, bottom},
                                   {before(right), before(bottom), left, bottom},
                                   {left, before(bottom), behind(left), top}};
    _KXDrawSolidQuads(strips, 4, color);
}

void KXDrawRectFill(KXRect rect, KXColor color) {
    KX_GL_CHECK("KXDrawRectFill");
    if (!_KXCurrentGraphicsContext)
        return;
    const auto [left, top, right, bottom] = edgesOf(rect);
    const _KXSolidQuad quad = {left, top, right, bottom};
    _KXDrawSolidQuads(&quad, 1, color);
}

void KXDrawCircle(KXPoint centre, int radius, int segments, KXColor color) {
    KX_GL_CHECK("KXDrawCircle");
    if (!_KXCurrentGraphicsContext)
        return;
    glLineWidth(1);
    drawPerimeter(GL_LINE_LOOP, centre, radius, segments, color);
}

void KXDrawCircleFill(KXPoint centre, int radius, int segments, KXColor color) {
    KX_GL_CHECK("KXDrawCircleFill");
    if (!_KXCurrentGraphicsContext)
        return;
    glLineWidth(1);
    drawPerimeter(GL_TRIANGLE_FAN, centre, radius, segments, color);
}

void KXDrawTriangle(KXPoint a, KXPoint b, KXPoint c, KXColor color) {
    KX_GL_CHECK("KXDrawTriangle");
    if (!_KXCurrentGraphicsContext)
        return;
    glLineWidth(2);
    drawTriangle(GL_LINE_LOOP, a, b, c, color);
}

void KXDrawTriangleFill(KXPoint a, KXPoint b, KXPoint c, KXColor color) {
    KX_GL_CHECK("KXDrawTriangleFill");
    if (!_KXCurrentGraphicsContext)
        return;
    glLineWidth(1);
    drawTriangle(GL_TRIANGLES, a, b, c, color);
}
