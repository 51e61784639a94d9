// What lies over, on and in what: rectangles, circles and lines that stand still.

#include <Kobaltrix/KXCollision.h>

#include "util/Line.h"

namespace {
constexpr float infinity = std::numeric_limits<float>::infinity();

// The floats next to a number, if none is equal to it.
float floatAtMost(double value) {
    const auto nearest = static_cast<float>(value);
    return nearest > value ? std::nextafter(nearest, -infinity) : nearest;
}

float floatAtLeast(double value) { return -floatAtMost(-value); }

// Grows or shrinks a span, but not to less than nothing.
void grow(float& origin, float& extent, float by) {
    const double grown = double{extent} + 2.0 * by;
    origin = grown < 0 ? origin + extent / 2 : origin - by;
    extent = grown < 0 ? 0 : static_cast<float>(grown);
}

float clamped(float value, float origin, float extent) {
    const float end = extent > 0 ? floatAtMost(double{origin} + extent) : origin;
    return !(value > origin) ? origin : std::min(value, end);
}

bool hasSides(const _KXSpans& rect) {
    return rect.isFinite && rect.x.low <= rect.x.high && rect.y.low <= rect.y.high;
}

int truth(bool value) { return value ? -1 : 0; }
} // namespace

KXRect KXRectBetween(KXPoint corner, KXPoint opposite) {
    const KXPoint origin = KXMinPoint(corner, opposite), end = KXMaxPoint(corner, opposite);
    return {origin, {end.x - origin.x, end.y - origin.y}};
}

KXRect KXRectAround(KXPoint centre, KXSize size) {
    return {{centre.x - size.width / 2, centre.y - size.height / 2}, size};
}

KXPoint KXRectCentre(KXRect rect) {
    return {rect.origin.x + rect.size.width / 2, rect.origin.y + rect.size.height / 2};
}

KXPoint KXRectEnd(KXRect rect) { return {rect.origin.x + rect.size.width, rect.origin.y + rect.size.height}; }

KXRect KXMovedRect(KXRect rect, KXPoint by) { return {rect.origin + by, rect.size}; }

KXRect KXGrownRect(KXRect rect, KXSize by) {
    grow(rect.origin.x, rect.size.width, by.width);
    grow(rect.origin.y, rect.size.height, by.height);
    return rect;
}

int KXRectsOverlap(KXRect a, KXRect b) {
    const _KXSpans first(a), second(b);
    return truth(first.hasArea() && second.hasArea() && first.x.overlaps(second.x) &&
                 first.y.overlaps(second.y));
}

int KXRectsMeet(KXRect a, KXRect b) {
    const _KXSpans first(a), second(b);
    return truth(hasSides(first) && hasSides(second) && first.x.meets(second.x) && first.y.meets(second.y));
}

KXRect KXIntersection(KXRect a, KXRect b) {
    if (!KXRectsOverlap(a, b))
        return KXZeroRect;
    const _KXSpans first(a), second(b);
    const KXPoint origin = KXMaxPoint(a.origin, b.origin);
    return {origin,
            {floatAtMost(std::min(first.x.high, second.x.high) - origin.x),
             floatAtMost(std::min(first.y.high, second.y.high) - origin.y)}};
}

KXRect KXUnion(KXRect a, KXRect b) {
    const _KXSpans first(a), second(b);
    if (!first.hasArea() || !second.hasArea())
        return first.hasArea() ? a : second.hasArea() ? b : KXZeroRect;
    const KXPoint origin = KXMinPoint(a.origin, b.origin);
    return {origin,
            {floatAtLeast(std::max(first.x.high, second.x.high) - origin.x),
             floatAtLeast(std::max(first.y.high, second.y.high) - origin.y)}};
}

int KXPointInRect(KXPoint point, KXRect rect) {
    const _KXSpans area(rect);
    return truth(area.isFinite && area.x.low <= point.x && point.x < area.x.high && area.y.low <= point.y &&
                 point.y < area.y.high);
}

int KXRectInRect(KXRect inner, KXRect rect) {
    const _KXSpans outside(rect), inside(inner);
    return truth(outside.hasArea() && hasSides(inside) && outside.x.covers(inside.x) &&
                 outside.y.covers(inside.y));
}

KXPoint KXClampedToRect(KXPoint point, KXRect rect) {
    return {clamped(point.x, rect.origin.x, rect.size.width),
            clamped(point.y, rect.origin.y, rect.size.height)};
}

int KXCirclesOverlap(KXPoint a, float radiusA, KXPoint b, float radiusB) {
    const double reach = std::fabs(double{radiusA}) + std::fabs(double{radiusB});
    return truth(radiusA != 0 && radiusB != 0 && std::isfinite(reach) &&
                 _KXAway::fromPoint(b.x, b.y, a.x, a.y).distance < reach);
}

int KXCircleOverlapsRect(KXPoint centre, float radius, KXRect rect) {
    const _KXSpans area(rect);
    return truth(radius != 0 && std::isfinite(radius) && area.hasArea() &&
                 _KXAway::fromBox(area.x, area.y, centre.x, centre.y).distance < std::fabs(radius));
}

static _KXLine lineBetween(KXPoint from, KXPoint to) {
    return {from.x, from.y, double{to.x} - from.x, double{to.y} - from.y};
}

int KXLineOverlapsRect(KXPoint from, KXPoint to, KXRect rect) {
    const _KXSpans area(rect);
    const _KXLine line = lineBetween(from, to);
    return truth(line.isFinite() && area.hasArea() && line.inBox(area.x, area.y).isOnWay());
}

int KXLineOverlapsCircle(KXPoint from, KXPoint to, KXPoint centre, float radius) {
    const _KXLine line = lineBetween(from, to);
    return truth(line.isFinite() && std::isfinite(radius) &&
                 line.inCircle(centre.x, centre.y, radius).isOnWay());
}
