#include <Kobaltrix/KXShapes.h>

#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "render/Reach.h"
#include "render/ShapeMesh.h"
#include "render/Stroke.h"

#include <Kobaltrix/KXPointMath.h>

#include <algorithm>
#include <cmath>

namespace {
constexpr int mostPoints = 65536;

bool areDrawn(const KXPoint* points, int count) {
    return points && count > 0 && count <= mostPoints &&
           std::all_of(points, points + count, [](KXPoint point) { return _KXIsWithinReach(point); });
}

int piecesOf(float radius, float degrees) {
    const auto whole = static_cast<float>(_KXCornersOfCircle(radius));
    return std::max(1, static_cast<int>(std::ceil(whole * std::min(1.0f, std::abs(degrees) / 360))));
}

void addArc(_KXContour& line, KXPoint centre, float radius, float begin, float end) {
    const _KXContour arc = _KXArc(centre, {radius, radius}, begin, end, piecesOf(radius, end - begin));
    line.insert(line.end(), arc.begin(), arc.end());
}

bool isEllipse(KXPoint centre, KXSize radii) {
    return _KXIsWithinReach(centre) && _KXIsWithinReach(radii.width) && _KXIsWithinReach(radii.height) &&
           radii.width != 0 && radii.height != 0;
}

_KXContour roundedRect(KXRect rect, float radius) {
    const float left = rect.origin.x, top = rect.origin.y, right = left + rect.size.width,
                bottom = top + rect.size.height;
    const float most = std::min(rect.size.width, rect.size.height) / 2;
    const float corner = radius > 0 ? std::min(radius, most) : 0;
    if (!(corner > 0))
        return {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
    _KXContour line;
    addArc(line, {right - corner, bottom - corner}, corner, 0, 90);
    addArc(line, {left + corner, bottom - corner}, corner, 90, 180);
    addArc(line, {left + corner, top + corner}, corner, 180, 270);
    addArc(line, {right - corner, top + corner}, corner, 270, 360);
    return line;
}

bool isRect(KXRect rect) {
    return _KXIsWithinReach(rect.origin) && rect.size.width > 0 && rect.size.height > 0 &&
           _KXIsWithinReach(rect.size.width) && _KXIsWithinReach(rect.size.height);
}

KXPoint onCurve(const KXPoint (&p)[4], float t) {
    const float s = 1 - t;
    return p[0] * (s * s * s) + p[1] * (3 * s * s * t) + p[2] * (3 * s * t * t) + p[3] * (t * t * t);
}

// A curve in straight pieces, without its first point: the sharper it bends, the more.
void addCurve(_KXContour& line, const KXPoint (&p)[4]) {
    constexpr float mostError = 0.2f; // of a pixel
    const float bend = std::max(KXLength(p[0] - p[1] * 2 + p[2]), KXLength(p[1] - p[2] * 2 + p[3]));
    const float pieces = std::ceil(std::sqrt(0.75f * bend / (mostError * _KXUnitsPerPixel())));
    const int count = static_cast<int>(std::clamp(pieces, 1.0f, 1000.0f));
    for (int i = 1; i <= count; ++i)
        line.push_back(onCurve(p, static_cast<float>(i) / static_cast<float>(count)));
}

KXStroke closed(const KXStroke& stroke) {
    KXStroke result = stroke;
    result.closed = 1;
    return result;
}
} // namespace

void KXDrawStroke(const KXPoint* points, int count, const KXStroke& stroke) {
    KX_GL_CHECK("KXDrawStroke");
    if (_KXCurrentGraphicsContext && areDrawn(points, count))
        _KXDrawStrokeOf(_KXContour(points, points + count), stroke);
}

void KXDrawStroke(KXPoint from, KXPoint to, const KXStroke& stroke) {
    const KXPoint ends[] = {from, to};
    KXDrawStroke(ends, 2, stroke);
}

void KXDrawCurve(KXPoint from, KXPoint control1, KXPoint control2, KXPoint to, const KXStroke& stroke) {
    KX_GL_CHECK("KXDrawCurve");
    const KXPoint points[] = {from, control1, control2, to};
    if (!_KXCurrentGraphicsContext || !areDrawn(points, 4))
        return;
    _KXContour line = {from};
    addCurve(line, points);
    _KXDrawStrokeOf(line, stroke);
}

void KXDrawSpline(const KXPoint* points, int count, const KXStroke& stroke) {
    KX_GL_CHECK("KXDrawSpline");
    if (!_KXCurrentGraphicsContext || !areDrawn(points, count))
        return;
    // Beyond its ends a spline goes on as if it came back.
    const bool isClosed = stroke.closed && count > 2;
    const auto at = [=](int i) {
        return points[isClosed ? (i + count) % count : std::clamp(i, 0, count - 1)];
    };
    _KXContour line = {points[0]};
    for (int i = 0; i < count - !isClosed; ++i) {
        const KXPoint from = at(i), to = at(i + 1);
        addCurve(line, {from, from + (to - at(i - 1)) / 6, to - (at(i + 2) - from) / 6, to});
    }
    _KXDrawStrokeOf(line, stroke);
}

void KXDrawArc(KXPoint centre, float radius, float begin, float end, const KXStroke& stroke) {
    KX_GL_CHECK("KXDrawArc");
    if (!_KXCurrentGraphicsContext || !isEllipse(centre, {radius, radius}) || !_KXIsWithinReach(begin) ||
        !_KXIsWithinReach(end))
        return;
    if (std::abs(end - begin) >= 360)
        return _KXDrawStrokeOf(_KXEllipse(centre, {radius, radius}), closed(stroke));
    KXStroke open = stroke;
    open.closed = 0;
    _KXContour line;
    addArc(line, centre, std::abs(radius), begin, end);
    _KXDrawStrokeOf(line, open);
}

void KXDrawPolygon(const KXPoint* points, int count, const KXShapePaint& paint) {
    KX_GL_CHECK("KXDrawPolygon");
    if (_KXCurrentGraphicsContext && areDrawn(points, count) && count > 2)
        _KXFillContours({_KXContour(points, points + count)}, paint);
}

void KXDrawRoundedRect(KXRect rect, float radius, const KXShapePaint& paint) {
    KX_GL_CHECK("KXDrawRoundedRect");
    if (_KXCurrentGraphicsContext && isRect(rect))
        _KXFillConvex(roundedRect(rect, radius), paint);
}

void KXDrawRoundedRect(KXRect rect, float radius, const KXStroke& stroke) {
    KX_GL_CHECK("KXDrawRoundedRect");
    if (_KXCurrentGraphicsContext && isRect(rect))
        _KXDrawStrokeOf(roundedRect(rect, radius), closed(stroke));
}

void KXDrawEllipse(KXPoint centre, KXSize radii, const KXShapePaint& paint) {
    KX_GL_CHECK("KXDrawEllipse");
    if (_KXCurrentGraphicsContext && isEllipse(centre, radii))
        _KXFillConvex(_KXEllipse(centre, radii), paint);
}

void KXDrawEllipse(KXPoint centre, KXSize radii, const KXStroke& stroke) {
    KX_GL_CHECK("KXDrawEllipse");
    if (_KXCurrentGraphicsContext && isEllipse(centre, radii))
        _KXDrawStrokeOf(_KXEllipse(centre, radii), closed(stroke));
}

void KXDrawSector(KXPoint centre, float innerRadius, float radius, float begin, float end,
                  const KXShapePaint& paint) {
    KX_GL_CHECK("KXDrawSector");
    if (!_KXCurrentGraphicsContext || !isEllipse(centre, {radius, radius}) ||
        !_KXIsWithinReach(innerRadius) || !_KXIsWithinReach(begin) || !_KXIsWithinReach(end) || begin == end)
        return;
    const float outer = std::abs(radius), inner = std::clamp(innerRadius, 0.0f, outer);
    if (inner >= outer)
        return;
    if (std::abs(end - begin) >= 360) {
        _KXContours rings = {_KXEllipse(centre, {outer, outer})};
        if (inner > 0)
            rings.push_back(_KXEllipse(centre, {inner, inner}));
        if (rings.size() == 2)
            std::reverse(rings[1].begin(), rings[1].end()); // a hole goes the other way round
        return _KXFillContours(rings, paint);
    }
    _KXContour line;
    addArc(line, centre, outer, begin, end);
    if (inner > 0)
        addArc(line, centre, inner, end, begin);
    else
        line.push_back(centre);
    _KXFillContours({line}, paint);
}
