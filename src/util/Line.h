#pragma once

#include "util/Span.h"

/// The part of a line that runs inside a shape, in lengths of its way: from 0 where it starts to 1.
struct _KXStretch {
    double enter, leave;
    bool isVertical = false; ///< Whether it comes in through the top or the bottom edge of a box,
    bool isCorner = false;   ///< and whether that is at a corner.

    /// Whether anything of it is on the way.
    bool isOnWay() const { return enter < leave && enter < 1 && leave > 0; }
};

inline constexpr double _KXForever = std::numeric_limits<double>::infinity();
inline constexpr _KXStretch _KXNever = {_KXForever, -_KXForever}, _KXAlways = {-_KXForever, _KXForever};

/// A way from a point. What is found of it is found for the whole line, before its start and beyond its end.
struct _KXLine {
    double x, y, dx, dy;

    bool isFinite() const {
        return std::isfinite(x) && std::isfinite(y) && std::isfinite(dx) && std::isfinite(dy);
    }

    /// Where it runs inside a box. One that runs along an edge does not.
    _KXStretch inBox(const _KXSpan& width, const _KXSpan& height) const {
        const _KXStretch across = between(width, x, dx), down = between(height, y, dy);
        return {std::max(across.enter, down.enter), std::min(across.leave, down.leave),
                down.enter >= across.enter, down.enter == across.enter};
    }

    /// Where it runs inside a circle.
    _KXStretch inCircle(double centreX, double centreY, double radius) const {
        const double fromX = x - centreX, fromY = y - centreY;
        const double a = dx * dx + dy * dy, b = fromX * dx + fromY * dy;
        const double c = fromX * fromX + fromY * fromY - radius * radius, root = b * b - a * c;
        if (a == 0)
            return c < 0 ? _KXAlways : _KXNever;
        if (!(root > 0))
            return _KXNever;
        return {(-b - std::sqrt(root)) / a, (-b + std::sqrt(root)) / a};
    }

private:
    static _KXStretch between(const _KXSpan& span, double at, double way) {
        if (way == 0)
            return span.low < at && at < span.high ? _KXAlways : _KXNever;
        const double low = (span.low - at) / way, high = (span.high - at) / way;
        return {std::min(low, high), std::max(low, high)};
    }
};

/// How far a point lies from a shape, less than 0 inside, and which way leads away from the nearest edge.
struct _KXAway {
    double distance, x, y;

    static _KXAway fromBox(const _KXSpan& width, const _KXSpan& height, double x, double y) {
        const double dx = std::max(width.low - x, x - width.high);
        const double dy = std::max(height.low - y, y - height.high);
        const double toRight = x + x < width.low + width.high ? -1 : 1;
        const double toBottom = y + y < height.low + height.high ? -1 : 1;
        if (dx > 0 && dy > 0) {
            const double distance = std::sqrt(dx * dx + dy * dy);
            return {distance, toRight * dx / distance, toBottom * dy / distance};
        }
        return dx > dy ? _KXAway{dx, toRight, 0} : _KXAway{dy, 0, toBottom};
    }

    static _KXAway fromPoint(double centreX, double centreY, double x, double y) {
        const double dx = x - centreX, dy = y - centreY, distance = std::sqrt(dx * dx + dy * dy);
        return distance == 0 ? _KXAway{0, 0, -1} : _KXAway{distance, dx / distance, dy / distance};
    }
};
