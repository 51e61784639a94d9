#include "render/ClipSink.h"

#include "render/CameraMap.h"
#include "render/CornerBox.h"
#include "render/CuttingClip.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {
using Box = _KXCornerBox;

enum class Place { Inside, Outside, Across };

Box cutOf(const KXRect& cut) {
    const auto [origin, size] = cut;
    return {origin.x, origin.y, origin.x + size.width, origin.y + size.height};
}

/// @param margin how far beyond its corners it may be seen.
Place placeOf(const Box& box, const Box& cut, float margin) {
    if (box.left - margin >= cut.left && box.right + margin <= cut.right && box.top - margin >= cut.top &&
        box.bottom + margin <= cut.bottom)
        return Place::Inside;
    const bool isApart = box.left - margin >= cut.right || box.right + margin <= cut.left ||
                         box.top - margin >= cut.bottom || box.bottom + margin <= cut.top;
    return isApart ? Place::Outside : Place::Across;
}

bool isUpright(const _KXQuad& quad, const Box& box) {
    return std::all_of(std::begin(quad.corners), std::end(quad.corners), [&](const _KXCorner& corner) {
        const auto [x, y] = corner.position;
        return (x == box.left || x == box.right) && (y == box.top || y == box.bottom);
    });
}

/// Moves the corners of an upright quad into a box; each shows what was drawn at its new place.
void cutTo(_KXQuad& quad, const Box& box, const Box& cut) {
    const auto at = [&](float x, float y) {
        return *std::find_if(std::begin(quad.corners), std::end(quad.corners), [&](const _KXCorner& corner) {
            return corner.position.x == x && corner.position.y == y;
        });
    };
    const _KXCorner start = at(box.left, box.top), across = at(box.right, box.top),
                    down = at(box.left, box.bottom);
    for (_KXCorner& corner : quad.corners) {
        auto& [x, y] = corner.position;
        x = std::clamp(x, cut.left, cut.right);
        y = std::clamp(y, cut.top, cut.bottom);
        const float share = (x - box.left) / (box.right - box.left),
                    lower = (y - box.top) / (box.bottom - box.top);
        corner.u = start.u + (across.u - start.u) * share + (down.u - start.u) * lower;
        corner.v = start.v + (across.v - start.v) * share + (down.v - start.v) * lower;
    }
}

class ClipSink final : public _KXDrawSink {
public:
    void quads(const _KXQuad* quads, int count, const _KXPaint& paint) override;
    void lines(const KXPoint* points, int count, bool closed, float width, KXColor color) override;
    void fan(const KXPoint* points, int count, KXColor color) override;
    void leaveColor(KXColor color) override { _KXSinkBehindClips().leaveColor(color); }
    void leaveLineWidth(float width) override { _KXSinkBehindClips().leaveLineWidth(width); }
};

/// Where something lies, which OpenGL cuts from now on if it lies across the edge.
Place placed(const Box& box, float margin) {
    if (_KXHasCamera) { // the scope does not know it
        _KXLeaveCutsToOpenGL();
        return Place::Inside;
    }
    const Place place = placeOf(box, cutOf(*_KXCut), margin);
    if (place != Place::Across)
        return place;
    _KXLeaveCutsToOpenGL();
    return Place::Inside;
}

KXPoint itself(KXPoint point) { return point; }

void ClipSink::quads(const _KXQuad* quads, int count, const _KXPaint& paint) {
    if (_KXHasCamera)
        _KXLeaveCutsToOpenGL();
    constexpr int most = 64;
    _KXQuad kept[most];
    int taken = 0;
    const auto handOn = [&] {
        if (taken > 0)
            _KXSinkBehindClips().quads(kept, std::exchange(taken, 0), paint);
    };
    for (int i = 0; i < count; ++i) {
        if (!_KXCut) { // OpenGL does it now
            handOn();
            return _KXSinkBehindClips().quads(quads + i, count - i, paint);
        }
        const Box cut = cutOf(*_KXCut);
        const Box box =
            _KXBoxAround(quads[i].corners, 4, [](const _KXCorner& corner) { return corner.position; });
        const Place place = placeOf(box, cut, 0);
        if (place == Place::Outside || box.left == box.right || box.top == box.bottom)
            continue;
        if (place == Place::Across && !isUpright(quads[i], box)) {
            handOn();
            _KXLeaveCutsToOpenGL();
            --i; // it again
            continue;
        }
        kept[taken] = quads[i];
        if (place == Place::Across)
            cutTo(kept[taken], box, cut);
        if (++taken == most)
            handOn();
    }
    handOn();
    leaveColor(paint.color);
}

void ClipSink::lines(const KXPoint* points, int count, bool closed, float width, KXColor color) {
    if (count > 0 && placed(_KXBoxAround(points, count, itself), width) == Place::Inside)
        return _KXSinkBehindClips().lines(points, count, closed, width, color);
    leaveLineWidth(width);
    leaveColor(color);
}

void ClipSink::fan(const KXPoint* points, int count, KXColor color) {
    if (count > 0 && placed(_KXBoxAround(points, count, itself), 0) == Place::Inside)
        return _KXSinkBehindClips().fan(points, count, color);
    leaveColor(color);
}
} // namespace

static constinit ClipSink clipSink;

_KXDrawSink& _KXClipSink() { return clipSink; }

void _KXDrawMeshCut(const _KXMeshCorner* corners, int count) {
    const auto positionOf = [](const _KXMeshCorner& corner) { return corner.position; };
    if (count > 0 && placed(_KXBoxAround(corners, count, positionOf), 0) == Place::Inside)
        _KXDrawMeshBehindClips(corners, count);
}
