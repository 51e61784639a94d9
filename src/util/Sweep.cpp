// What moving rectangles and circles meet on their way.

#include "util/Slide.h"

namespace {
constexpr float infinity = std::numeric_limits<float>::infinity();

// When a span comes to overlap another, and when it is past it.
_KXStretch passage(const _KXSpan& moving, double way, const _KXSpan& still) {
    const double step = _KXFloatStep(std::max(moving.magnitude(), still.magnitude()));
    // A gap is negative where they overlap; what floats cannot tell apart touches.
    const auto touching = [step](double gap) { return gap < 0 && gap >= -step ? 0 : gap; };
    const double before = touching(still.low - moving.high), behind = touching(moving.low - still.high);
    if (way == 0)
        return before < 0 && behind < 0 ? _KXAlways : _KXNever;
    return way > 0 ? _KXStretch{before / way, -behind / way} : _KXStretch{-behind / way, before / way, false};
}

// The origin of what touches an edge, at its own low or high end.
float touchingAt(double edge, double extent, bool isFromLow) {
    const double exact = isFromLow ? edge - extent : edge;
    const auto nearest = static_cast<float>(exact);
    if (isFromLow && nearest + extent > edge)
        return std::nextafter(nearest, -infinity);
    return !isFromLow && nearest < edge ? std::nextafter(nearest, infinity) : nearest;
}

float between(float from, float to, double time) {
    return static_cast<float>(from + (double{to} - from) * time);
}

KXSweep freeWay(KXPoint end) { return {0, 1, end, KXZeroPoint}; }
KXSweep startsInside(KXPoint start) { return {-1, 0, start, KXZeroPoint}; }
} // namespace

_KXMovingRect::_KXMovingRect(KXPoint from, KXPoint to, KXSize size)
    : _from(from), _to(to), _size{size.width < 0 ? 0 : size.width, size.height < 0 ? 0 : size.height},
      _isFinite(_KXSpans({from, size}).isFinite && std::isfinite(to.x) && std::isfinite(to.y)) {}

_KXMovingRect::Hit _KXMovingRect::hit(const KXRect& obstacle) const {
    const _KXSpans moving({_from, _size}), still(obstacle);
    if (!still.hasArea())
        return {Hit::None, 0, false};
    const _KXStretch across = passage(moving.x, double{_to.x} - _from.x, still.x);
    const _KXStretch down = passage(moving.y, double{_to.y} - _from.y, still.y);
    const bool isVertical = down.enter >= across.enter;
    const _KXStretch both = {std::max(across.enter, down.enter), std::min(across.leave, down.leave)};
    if (!both.isOnWay())
        return {Hit::None, 0, false};
    if (both.enter < 0)
        return {Hit::Inside, 0, false};
    return {across.enter == down.enter ? Hit::Corner : Hit::Edge, both.enter, isVertical};
}

KXPoint _KXMovingRect::normal(const Hit& hit) const {
    if (hit.isVertical)
        return {0, _to.y > _from.y ? -1.0f : 1.0f};
    return {_to.x > _from.x ? -1.0f : 1.0f, 0};
}

KXPoint _KXMovingRect::positionAt(const Hit& hit, const KXRect& obstacle) const {
    const _KXSpans still(obstacle);
    const bool isToRight = _to.x > _from.x, isToBottom = _to.y > _from.y;
    if (hit.isVertical)
        return {between(_from.x, _to.x, hit.time),
                touchingAt(isToBottom ? still.y.low : still.y.high, _size.height, isToBottom)};
    return {touchingAt(isToRight ? still.x.low : still.x.high, _size.width, isToRight),
            between(_from.y, _to.y, hit.time)};
}

KXSweep KXSweepRect(KXRect moving, KXPoint by, KXRect obstacle) {
    const _KXMovingRect rect(moving.origin, moving.origin + by, moving.size);
    if (!rect.isFinite())
        return {0, 0, moving.origin, KXZeroPoint};
    const _KXMovingRect::Hit hit = rect.hit(obstacle);
    if (hit.kind == _KXMovingRect::Hit::None)
        return freeWay(rect.to());
    if (hit.kind == _KXMovingRect::Hit::Inside)
        return startsInside(rect.from());
    return {-1, static_cast<float>(hit.time), rect.positionAt(hit, obstacle), rect.normal(hit)};
}

KXSlide KXSlideRect(KXRect moving, KXPoint by, const KXRect* obstacles, int count) {
    return _KXSlideAmong(moving, by, [obstacles, count](const KXRect&, const auto& visit) {
        for (int i = 0; obstacles && i < count; ++i)
            visit(obstacles[i]);
    });
}

namespace {
// A moving circle, as the line of its centre and the shape that this must not get into.
class MovingCircle {
public:
    MovingCircle(KXPoint from, float radius, KXPoint by)
        : _from(from), _to(from + by),
          _radius(std::fabs(double{radius})), _line{from.x, from.y, double{_to.x} - from.x,
                                                    double{_to.y} - from.y} {}

    bool isFinite() const { return _line.isFinite() && std::isfinite(_radius); }
    KXPoint end() const { return _to; }

    KXSweep sweep(const _KXSpans& box) const;
    KXSweep sweep(KXPoint centre, double radius) const;

private:
    // Where the line comes into the shape, and what stops it there.
    struct Entry {
        double time = 1;
        double x = 0, y = 0;

        bool takes(const _KXStretch& stretch) {
            const bool isFirst = stretch.isOnWay() && stretch.enter < time;
            if (isFirst)
                time = std::max(0.0, stretch.enter);
            return isFirst;
        }
    };
    void enterBox(Entry& entry, const _KXSpan& width, const _KXSpan& height, bool isWide) const;
    void enterCircle(Entry& entry, double x, double y, double radius) const;
    bool isDecided(const _KXAway& away, double reach, double magnitude, KXSweep& result) const;
    KXSweep resultOf(const Entry& entry) const;

    KXPoint _from, _to;
    double _radius;
    _KXLine _line;
};

// The corners of a box that is grown to both sides are on its left and right, in the other they are above and
// below.
void MovingCircle::enterBox(Entry& entry, const _KXSpan& width, const _KXSpan& height, bool isWide) const {
    const _KXStretch stretch = _line.inBox(width, height);
    if (!entry.takes(stretch))
        return;
    const bool isVertical = stretch.isVertical && !(isWide && stretch.isCorner);
    entry.x = isVertical ? 0 : _line.dx > 0 ? -1 : 1;
    entry.y = !isVertical ? 0 : _line.dy > 0 ? -1 : 1;
}

void MovingCircle::enterCircle(Entry& entry, double x, double y, double radius) const {
    if (!entry.takes(_line.inCircle(x, y, radius)))
        return;
    const _KXAway away =
        _KXAway::fromPoint(x, y, _line.x + _line.dx * entry.time, _line.y + _line.dy * entry.time);
    entry.x = away.x;
    entry.y = away.y;
}

// Whether what lies between start and shape tells enough. What is convex is never met by going away from it.
bool MovingCircle::isDecided(const _KXAway& away, double reach, double magnitude, KXSweep& result) const {
    const double depth = reach - away.distance;
    if (depth > _KXFloatStep(std::max({magnitude, std::fabs(_line.x), std::fabs(_line.y), reach}))) {
        result = startsInside(_from);
        return true;
    }
    if (away.x * _line.dx + away.y * _line.dy >= 0 && away.distance != 0) {
        result = freeWay(_to);
        return true;
    }
    if (depth <= 0)
        return false;
    result = {-1, 0, _from, {static_cast<float>(away.x), static_cast<float>(away.y)}};
    return true;
}

KXSweep MovingCircle::resultOf(const Entry& entry) const {
    if (entry.time >= 1)
        return freeWay(_to);
    return {-1,
            static_cast<float>(entry.time),
            {between(_from.x, _to.x, entry.time), between(_from.y, _to.y, entry.time)},
            {static_cast<float>(entry.x), static_cast<float>(entry.y)}};
}

KXSweep MovingCircle::sweep(const _KXSpans& box) const {
    KXSweep result;
    if (isDecided(_KXAway::fromBox(box.x, box.y, _line.x, _line.y), _radius,
                  std::max(box.x.magnitude(), box.y.magnitude()), result))
        return result;
    // The centre must keep out of the box grown by the radius, its corners round.
    Entry entry;
    enterBox(entry, box.x, {box.y.low - _radius, box.y.high + _radius}, false);
    enterBox(entry, {box.x.low - _radius, box.x.high + _radius}, box.y, true);
    for (const double x : {box.x.low, box.x.high})
        for (const double y : {box.y.low, box.y.high})
            enterCircle(entry, x, y, _radius);
    return resultOf(entry);
}

KXSweep MovingCircle::sweep(KXPoint centre, double radius) const {
    const double reach = _radius + radius;
    KXSweep result;
    if (isDecided(_KXAway::fromPoint(centre.x, centre.y, _line.x, _line.y), reach,
                  std::max(std::fabs(double{centre.x}), std::fabs(double{centre.y})), result))
        return result;
    Entry entry;
    enterCircle(entry, centre.x, centre.y, reach);
    return resultOf(entry);
}
} // namespace

KXSweep KXSweepCircle(KXPoint centre, float radius, KXPoint by, KXRect obstacle) {
    const MovingCircle circle(centre, radius, by);
    if (!circle.isFinite())
        return {0, 0, centre, KXZeroPoint};
    const _KXSpans box(obstacle);
    return box.hasArea() ? circle.sweep(box) : freeWay(circle.end());
}

KXSweep KXSweepCircle(KXPoint centre, float radius, KXPoint by, KXPoint other, float otherRadius) {
    const MovingCircle circle(centre, radius, by);
    if (!circle.isFinite())
        return {0, 0, centre, KXZeroPoint};
    const bool isThere =
        std::isfinite(other.x) && std::isfinite(other.y) && std::isfinite(otherRadius) && otherRadius != 0;
    return isThere ? circle.sweep(other, std::fabs(double{otherRadius})) : freeWay(circle.end());
}
