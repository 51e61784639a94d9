#include <Kobaltrix/KXDrawing.h>

#include "core/ground/HeapGlobal.h"
#include "core/ground/Truncate.h"
#include "render/Clip.h"
#include "render/DrawBatch.h"
#include "render/DrawSink.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "render/KXWindow.h"
#include "render/PictureFit.h"

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

_KXQuad rectangle(int x1, int y1, int x2, int y2) {
    const auto left = static_cast<float>(x1), top = static_cast<float>(y1);
    const auto right = static_cast<float>(x2), bottom = static_cast<float>(y2);
    return {{{{left, top}, 0, 0}, {{right, top}, 0, 0}, {{right, bottom}, 0, 0}, {{left, bottom}, 0, 0}}};
}

// The corners of a circle. 6.28 and not two pi: the last segment stops just short of the full turn.
const std::vector<KXPoint>& perimeter(KXPoint centre, int radius, int segments) {
    constexpr double fullTurn = 6.28;
    constexpr int mostSegments = 65536;
    const int count = segments < -mostSegments ? mostSegments : std::min(std::abs(segments), mostSegments);
    const double step = count ? fullTurn / count : std::numeric_limits<double>::infinity();

    static constinit _KXHeapGlobal<std::vector<KXPoint>> kept; // circles are drawn in every frame
    std::vector<KXPoint>& points = kept.get();
    points.clear();
    double angle = 0;
    do {
        points.push_back({static_cast<float>(centre.x + std::sin(angle) * radius),
                          static_cast<float>(centre.y + std::cos(angle) * radius)});
        angle += step;
    } while (angle < fullTurn);
    return points;
}

void fill(const KXPoint* points, int count, KXColor color) {
    _KXDrawSink& sink = _KXCurrentSink();
    sink.leaveLineWidth(1);
    sink.fan(points, count, color);
}

// Lines run from whole pixel to whole pixel.
KXPoint truncated(KXPoint point) {
    return {static_cast<float>(_KXTruncate(point.x)), static_cast<float>(_KXTruncate(point.y))};
}
// The bars beside a window's picture are not the game's.
void clearPicture() {
    constexpr GLbitfield all = GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT;
    const _KXClip clip = _KXCurrentClip();
    _KXPixelBox picture;
    if (clip.limits || !_KXTargetHasBars(picture))
        return glClear(all);
    glPushAttrib(GL_SCISSOR_BIT);
    glScissor(picture.left, picture.bottom, picture.width, picture.height);
    glEnable(GL_SCISSOR_TEST);
    glClear(all);
    glPopAttrib();
}
} // namespace

void KXClear(KXColor color) {
    KX_GL_CHECK("KXClear");
    if (!_KXCurrentGraphicsContext)
        return;
    _KXFlushBatch(KXDrawFlushClear);
    ++_KXDrawStatistics.drawCalls;
    GLfloat previous[4] = {};
    glGetFloatv(GL_COLOR_CLEAR_VALUE, previous);
    glClearColor(color.r, color.g, color.b, color.a);
    clearPicture();
    glClearColor(previous[0], previous[1], previous[2], previous[3]);
}

void KXDrawLine(KXPoint from, KXPoint to, KXColor color) {
    KX_GL_CHECK("KXDrawLine");
    if (!_KXCurrentGraphicsContext)
        return;
    const KXPoint ends[] = {truncated(from), truncated(to)};
    _KXCurrentSink().lines(ends, 2, false, 1, color);
}

void KXDrawRect(KXRect rect, KXColor color) {
    KX_GL_CHECK("KXDrawRect");
    if (!_KXCurrentGraphicsContext)
        return;
    const auto [left, top, right, bottom] = edgesOf(rect);
    const _KXQuad strips[] = {rectangle(left, top, before(right), behind(top)),
                              rectangle(before(right), top, right, bottom),
                              rectangle(before(right), before(bottom), left, bottom),
                              rectangle(left, before(bottom), behind(left), top)};
    _KXCurrentSink().leaveLineWidth(1);
    _KXDrawQuads(strips, 4, _KXFill::Solid, 0, color, true);
}

void KXDrawRectFill(KXRect rect, KXColor color) {
    KX_GL_CHECK("KXDrawRectFill");
    if (!_KXCurrentGraphicsContext)
        return;
    const auto [left, top, right, bottom] = edgesOf(rect);
    const _KXQuad quad = rectangle(left, top, right, bottom);
    _KXDrawQuads(&quad, 1, _KXFill::Solid, 0, color);
}

void KXDrawCircle(KXPoint centre, int radius, int segments, KXColor color) {
    KX_GL_CHECK("KXDrawCircle");
    if (!_KXCurrentGraphicsContext)
        return;
    const std::vector<KXPoint>& points = perimeter(centre, radius, segments);
    _KXCurrentSink().lines(points.data(), static_cast<int>(points.size()), true, 1, color);
}

void KXDrawCircleFill(KXPoint centre, int radius, int segments, KXColor color) {
    KX_GL_CHECK("KXDrawCircleFill");
    if (!_KXCurrentGraphicsContext)
        return;
    const std::vector<KXPoint>& points = perimeter(centre, radius, segments);
    fill(points.data(), static_cast<int>(points.size()), color);
}

void KXDrawTriangle(KXPoint a, KXPoint b, KXPoint c, KXColor color) {
    KX_GL_CHECK("KXDrawTriangle");
    if (!_KXCurrentGraphicsContext)
        return;
    const KXPoint corners[] = {a, b, c};
    _KXCurrentSink().lines(corners, 3, true, 2, color);
}

void KXDrawTriangleFill(KXPoint a, KXPoint b, KXPoint c, KXColor color) {
    KX_GL_CHECK("KXDrawTriangleFill");
    if (!_KXCurrentGraphicsContext)
        return;
    const KXPoint corners[] = {a, b, c};
    fill(corners, 3, color);
}
