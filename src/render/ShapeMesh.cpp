#include "render/ShapeMesh.h"

#include "render/CameraMap.h"
#include "render/DrawSink.h"
#include "render/Pen.h"
#include "render/Reach.h"
#include "render/View.h"

#include <Kobaltrix/KXPointMath.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

float _KXUnitsPerPixel() { return 1 / (_KXPixelsPerUnit * (_KXHasCamera ? _KXCurrentCamera.zoom() : 1)); }

// In a mode of another name two layers may be more than one.
bool _KXCoversWhatItOverlaps() { return _KXCurrentPen.isPlain(); }

int _KXCornersOfCircle(float radius) {
    constexpr float mostError = 0.2f; // of a pixel
    const float pixels = std::max(1.0f, radius / _KXUnitsPerPixel());
    const float corners = std::ceil(std::numbers::pi_v<float> / std::acos(1 - mostError / pixels));
    return static_cast<int>(std::clamp(corners, 8.0f, 512.0f));
}

_KXContour _KXArc(KXPoint centre, KXSize radii, float begin, float end, int pieces) {
    _KXContour line;
    for (int i = 0; i <= pieces; ++i) {
        const KXPoint way =
            KXTurned({1, 0}, KXLerp(begin, end, static_cast<float>(i) / static_cast<float>(pieces)));
        line.push_back(centre + KXPoint{way.x * radii.width, way.y * radii.height});
    }
    return line;
}

_KXContour _KXEllipse(KXPoint centre, KXSize radii) {
    const KXSize size = {std::abs(radii.width), std::abs(radii.height)};
    _KXContour line = _KXArc(centre, size, 0, 360, _KXCornersOfCircle(std::max(size.width, size.height)));
    line.pop_back(); // where it began
    return line;
}

_KXContour _KXWithoutRepeats(const _KXContour& line, bool closed) {
    _KXContour result;
    for (const KXPoint& point : line)
        if (result.empty() || result.back() != point)
            result.push_back(point);
    while (closed && result.size() > 1 && result.front() == result.back())
        result.pop_back();
    return result;
}

bool _KXIsClockwise(const _KXContour& contour) {
    double area = 0;
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const KXPoint from = contour[i], to = contour[(i + 1) % contour.size()];
        area += static_cast<double>(from.x) * to.y - static_cast<double>(to.x) * from.y;
    }
    return area > 0;
}

namespace {
// A corner of a triangle and how much of a pixel is covered there.
struct Covered {
    KXPoint at;
    float coverage;
};
using Triangle = std::array<Covered, 3>;

Covered between(const Covered& a, const Covered& b, float t) {
    return {KXLerp(a.at, b.at, t), KXLerp(a.coverage, b.coverage, t)};
}

KXColor between(KXColor a, KXColor b, float t) {
    return {KXLerp(a.r, b.r, t), KXLerp(a.g, b.g, t), KXLerp(a.b, b.b, t), KXLerp(a.a, b.a, t)};
}

// Gives triangles their colours, and hands them on.
class Painter {
public:
    explicit Painter(const KXShapePaint& paint) : _paint(paint) {
        const KXPoint way = paint.to - paint.from;
        _length = KXLength(way);
        _isPlain = paint.gradient == KXGradientNone || !(_length > 0) || !_KXIsWithinReach(paint.from) ||
                   !_KXIsWithinReach(paint.to);
        if (_isPlain && paint.gradient != KXGradientNone)
            _paint.color = paint.endColor; // which begins at once
        _way = _length > 0 ? way / (_length * _length) : KXPoint{0, 0};
    }
    ~Painter() { _KXDrawMesh(_corners.data(), static_cast<int>(_corners.size())); }
    Painter(const Painter&) = delete;
    Painter& operator=(const Painter&) = delete;

    void add(const Triangle& triangle) {
        if (_isPlain)
            emit(triangle);
        else if (_paint.gradient == KXGradientLinear)
            cut(triangle, 0);
        else
            divide(triangle, 0);
    }
    void add(const Covered& a, const Covered& b, const Covered& c, const Covered& d) {
        add({a, b, c});
        add({a, c, d});
    }

private:
    // How far along the gradient a point lies: 0 at its beginning, 1 at its end.
    float along(KXPoint at) const {
        const KXPoint way = at - _paint.from;
        return _paint.gradient == KXGradientLinear ? KXDot(way, _way) : KXLength(way) / _length;
    }
    void emit(const Triangle& triangle) {
        for (const Covered& corner : triangle) {
            KXColor color =
                _isPlain ? _paint.color
                         : between(_paint.color, _paint.endColor, std::clamp(along(corner.at), 0.0f, 1.0f));
            color.a *= corner.coverage;
            _corners.push_back({corner.at, color});
        }
    }
    // Colours change evenly within a triangle: it must not reach across the beginning or the end.
    void cut(const Triangle& triangle, int end) {
        if (end > 1)
            return emit(triangle);
        const auto line = static_cast<float>(end);
        std::array<Covered, 4> sides[2];
        int counts[2] = {0, 0};
        for (std::size_t i = 0; i < 3; ++i) {
            const Covered &a = triangle[i], &b = triangle[(i + 1) % 3];
            const float from = along(a.at) - line, to = along(b.at) - line;
            const auto add = [&](int side, const Covered& corner) {
                sides[side][static_cast<std::size_t>(counts[side]++)] = corner;
            };
            if (from <= 0)
                add(0, a);
            if (from >= 0)
                add(1, a);
            if ((from < 0 && to > 0) || (from > 0 && to < 0)) {
                const Covered crossing = between(a, b, from / (from - to));
                add(0, crossing);
                add(1, crossing);
            }
        }
        for (int side = 0; side < 2; ++side)
            for (int i = 2; i < counts[side]; ++i)
                cut({sides[side][0], sides[side][static_cast<std::size_t>(i - 1)],
                     sides[side][static_cast<std::size_t>(i)]},
                    end + 1);
    }
    // Colours of a radial gradient change along no straight line: triangles are halved until they are small.
    void divide(const Triangle& triangle, int depth) {
        constexpr int mostHalvings = 12;
        std::size_t longest = 0;
        float length = -1;
        for (std::size_t i = 0; i < 3; ++i)
            if (const float side = KXDistance(triangle[i].at, triangle[(i + 1) % 3].at); side > length) {
                longest = i;
                length = side;
            }
        const float nearest = std::min({along(triangle[0].at), along(triangle[1].at), along(triangle[2].at)});
        const bool isBeyond = nearest > 1 && (nearest - 1) * _length > length;
        if (depth == mostHalvings || isBeyond || length <= std::max(_length / 16, 2 * _KXUnitsPerPixel()))
            return emit(triangle);
        const Covered &a = triangle[longest], &b = triangle[(longest + 1) % 3],
                      &c = triangle[(longest + 2) % 3], middle = between(a, b, 0.5f);
        divide({a, middle, c}, depth + 1);
        divide({middle, b, c}, depth + 1);
    }

    KXShapePaint _paint;
    float _length;
    KXPoint _way;
    bool _isPlain;
    std::vector<_KXMeshCorner> _corners;
};

// The place of a corner when both its edges move to the outside by a distance; sharp ones move less than they
// should.
KXPoint moved(const _KXContour& contour, std::size_t i, float distance) {
    const std::size_t count = contour.size();
    const KXPoint at = contour[i], in = KXNormalized(at - contour[(i + count - 1) % count]),
                  out = KXNormalized(contour[(i + 1) % count] - at);
    const KXPoint normal = KXNormalized(KXPoint{in.y + out.y, -in.x - out.x});
    const float cosine = KXDot(normal, KXPoint{out.y, -out.x});
    return at + normal * (distance / std::max(0.5f, cosine));
}

// The fringe of half a pixel to both sides of a border, and what is left within it.
_KXContour fringe(const _KXContour& border, Painter& painter) {
    const _KXContour contour = _KXWithoutRepeats(border, true); // else there are edges of no length
    const std::size_t count = contour.size();
    if (count < 3)
        return {};
    const float half = _KXUnitsPerPixel() / 2;
    _KXContour inner, outer;
    for (std::size_t i = 0; i < count; ++i) {
        inner.push_back(moved(contour, i, -half));
        outer.push_back(moved(contour, i, half));
    }
    for (std::size_t i = 0, next = 1; i < count; ++i, next = (i + 1) % count)
        painter.add({inner[i], 1}, {inner[next], 1}, {outer[next], 0}, {outer[i], 0});
    return inner;
}

void fan(const _KXContour& contour, Painter& painter) {
    for (std::size_t i = 2; i < contour.size(); ++i)
        painter.add({{{contour[0], 1}, {contour[i - 1], 1}, {contour[i], 1}}});
}
} // namespace

void _KXFillConvex(const _KXContour& contour, const KXShapePaint& paint) {
    if (contour.size() < 3)
        return;
    Painter painter(paint);
    if (!paint.smooth)
        return fan(contour, painter);
    _KXContour border = contour;
    if (!_KXIsClockwise(border))
        std::reverse(border.begin(), border.end());
    fan(fringe(border, painter), painter);
}

void _KXFillContours(const _KXContours& contours, const KXShapePaint& paint) {
    Painter painter(paint);
    std::vector<KXPoint> triangles;
    if (paint.smooth) {
        _KXContours inner;
        for (const _KXContour& border : _KXOutlines(contours, _KXInside::GoneRound))
            inner.push_back(fringe(border, painter));
        triangles = _KXTriangles(inner, _KXInside::GoneClockwise);
    } else {
        triangles = _KXTriangles(contours, _KXInside::GoneRound);
    }
    for (std::size_t i = 0; i + 2 < triangles.size(); i += 3)
        painter.add({{{triangles[i], 1}, {triangles[i + 1], 1}, {triangles[i + 2], 1}}});
}
