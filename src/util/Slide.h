#pragma once

#include "util/Line.h"

#include <Kobaltrix/KXCollision.h>

/// A rectangle on its way from one place to another, both floats: a way that is added up anew at each stop
/// would end elsewhere.
class _KXMovingRect {
public:
    /// @param size negative sides count as 0.
    _KXMovingRect(KXPoint from, KXPoint to, KXSize size);

    /// What it meets of a rectangle that stands still.
    struct Hit {
        enum Kind { None, Inside, Edge, Corner } kind;
        double time;
        bool isVertical; ///< Whether a horizontal edge stops it.

        /// Of hits at the same time those at an edge come first: a seam in a wall is no floor.
        bool isBefore(const Hit& other) const {
            return time < other.time || (time == other.time && kind < other.kind);
        }
    };
    Hit hit(const KXRect& obstacle) const;
    /// Where it is then: it touches the obstacle, and where no float is equal to that, it is just before.
    KXPoint positionAt(const Hit& hit, const KXRect& obstacle) const;
    /// Towards it from what it hits.
    KXPoint normal(const Hit& hit) const;
    /// Whether all of it is numbers that are finite.
    bool isFinite() const { return _isFinite; }

    KXPoint from() const { return _from; }
    KXPoint to() const { return _to; }
    KXSize size() const { return _size; }

private:
    KXPoint _from, _to;
    KXSize _size;
    bool _isFinite;
};

/// Moves a rectangle up to what stops it, and from there along it.
/// @param eachNear called with a rectangle and a function: calls that one for each obstacle that may overlap
/// or touch the rectangle.
template<class EachNear>
KXSlide _KXSlideAmong(KXRect moving, KXPoint by, const EachNear& eachNear) {
    KXSlide slide = {moving.origin, KXZeroPoint};
    _KXMovingRect rect(moving.origin, moving.origin + by, moving.size);
    if (!rect.isFinite())
        return slide;
    for (int turn = 0; turn < 2; ++turn) { // each hit ends the way along one axis
        _KXMovingRect::Hit first = {_KXMovingRect::Hit::None, 2, false};
        KXRect obstacle = KXZeroRect;
        const KXPoint low = KXMinPoint(rect.from(), rect.to()), high = KXMaxPoint(rect.from(), rect.to());
        const KXRect swept = {low, {high.x - low.x + rect.size().width, high.y - low.y + rect.size().height}};
        eachNear(swept, [&](const KXRect& near) {
            const _KXMovingRect::Hit hit = rect.hit(near);
            if (hit.kind <= _KXMovingRect::Hit::Inside || !hit.isBefore(first))
                return;
            first = hit;
            obstacle = near;
        });
        if (first.kind == _KXMovingRect::Hit::None)
            break;
        const KXPoint at = rect.positionAt(first, obstacle);
        slide.normal += rect.normal(first);
        rect = first.isVertical ? _KXMovingRect(at, {rect.to().x, at.y}, rect.size())
                                : _KXMovingRect(at, {at.x, rect.to().y}, rect.size());
    }
    slide.position = rect.to();
    return slide;
}
