#include <Kobaltrix/KXDrawing.h>

#include "core/ground/Truncate.h"
#include "render/DrawBatch.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "render/QuadStream.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <vector>

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
        if (_KXIsBatching()) // filled, then
            return;
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

// The corners of a circle. 6.28 and not two pi: the last segment stops just short of the full turn.
const std::vector<KXPoint>& perimeter(KXPoint centre, int radius, int segments) {
    constexpr double fullTurn = 6.28;
    constexpr int mostSegments = 65536;
    const int count = segments < -mostSegments ? mostSegments : std::min(std::abs(segments), mostSegments);
    const double step = count ? fullTurn / count : std::numeric_limits<double>::infinity();

    // Kept, since circles are drawn in every frame; never destroyed, since a static object of the game may
    // draw one while the process ends.
    static constinit std::vector<KXPoint>* kept = nullptr;
    if (!kept)
        kept = new std::vector<KXPoint>;
    std::vector<KXPoint>& points = *kept;
    points.clear();
    double angle = 0;
    do {
        points.push_back({static_cast<float>(centre.x + std::sin(angle) * radius),
                          static_cast<float>(centre.y + std::cos(angle) * radius)});
        angle += step;
    } while (angle < fullTurn);
    return points;
}

// Lines run from whole pixel to whole pixel.
KXPoint truncated(KXPoint point) {
    return {static_cast<float>(_KXTruncate(point.x)), static_cast<float>(_KXTruncate(point.y))};
}
} // namespace

void KXDrawLine(KXPoint from, KXPoint to, KXColor color) {
    KX_GL_CHECK("KXDrawLine");
    if (!_KXCurrentGraphicsContext)
        return;
    _KXDrawLine(truncated(from), truncated(to), 1, color);
}

void KXDrawRect(KXRect rect, KXColor color) {
    KX_GL_CHECK("KXDrawRect");
    if (!_KXCurrentGraphicsContext)
        return;
    _KXLeaveLineWidth(1);
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
    const std::vector<KXPoint>& points = perimeter(centre, radius, segments);
    _KXDrawLineLoop(points.data(), static_cast<int>(points.size()), 1, color);
}

void KXDrawCircleFill(KXPoint centre, int radius, int segments, KXColor color) {
    KX_GL_CHECK("KXDrawCircleFill");
    if (!_KXCurrentGraphicsContext)
        return;
    const std::vector<KXPoint>& points = perimeter(centre, radius, segments);
    _KXDrawFan(points.data(), static_cast<int>(points.size()), 1, color);
}

void KXDrawTriangle(KXPoint a, KXPoint b, KXPoint c, KXColor color) {
    KX_GL_CHECK("KXDrawTriangle");
    if (!_KXCurrentGraphicsContext)
        return;
    const KXPoint corners[] = {a, b, c};
    _KXDrawLineLoop(corners, 3, 2, color);
}

void KXDrawTriangleFill(KXPoint a, KXPoint b, KXPoint c, KXColor color) {
    KX_GL_CHECK("KXDrawTriangleFill");
    if (!_KXCurrentGraphicsContext)
        return;
    const KXPoint corners[] = {a, b, c};
    _KXDrawFan(corners, 3, 1, color);
}
