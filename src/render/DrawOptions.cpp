#include "render/DrawOptions.h"

#include "render/Reach.h"

#include <algorithm>

bool _KXCutSource(const KXRect& source, KXSize picture, KXRect& part, bool goesOn) {
    const auto& [origin, size] = source;
    const auto start = [goesOn](float from) { return goesOn ? from : std::max(from, 0.0f); };
    const auto end = [goesOn](float from, float extent, float edge) {
        return extent < 0 ? edge : goesOn ? from + extent : std::min(from + extent, edge);
    };
    const float left = start(origin.x), right = end(origin.x, size.width, picture.width);
    const float top = start(origin.y), bottom = end(origin.y, size.height, picture.height);
    part = {{left, top}, {right - left, bottom - top}};
    constexpr float most = 1e9f; // false for what is no number, too
    return part.size.width > 0 && part.size.width < most && part.size.height > 0 && part.size.height < most;
}

// Mirrored within a rectangle of some size.
static _KXAffine flipped(KXFlip flip, float width, float height) {
    switch (flip & KXFlipDiagonal) {
    case KXFlipLeftRight:
        return {-1, 0, width, 0, 1, 0};
    case KXFlipTopBottom:
        return {1, 0, 0, 0, -1, height};
    case KXFlipDiagonal: // half a turn about the diagonal, through the middle
        return {0, 1, (width - height) / 2, 1, 0, (height - width) / 2};
    default:
        return {1, 0, 0, 0, 1, 0};
    }
}

static bool isWithinReach(const _KXAffine& placement, KXSize part) {
    for (const float x : {0.0f, part.width})
        for (const float y : {0.0f, part.height})
            if (!_KXIsWithinReach(placement(x, y)))
                return false;
    return true;
}

bool _KXPlacePart(const KXDrawOptions& options, KXSize part, _KXAffine& placement) {
    const auto& [flip, position, origin, rotation, scale, tint, blend, shader, source, size] = options;
    const float width = size.width < 0 ? part.width : size.width,
                height = size.height < 0 ? part.height : size.height;
    const float stretchX = width / part.width, stretchY = height / part.height;
    const _KXAffine mirror = flipped(flip, width, height);
    const auto [cosine, sine] = _KXRotationBy(rotation);
    const _KXAffine turn = {cosine * scale.width, -sine * scale.height,  position.x,
                            sine * scale.width,   cosine * scale.height, position.y};
    const KXPoint corner = turn(mirror.dx - origin.x * stretchX, mirror.dy - origin.y * stretchY);
    placement = {(turn.xx * mirror.xx + turn.xy * mirror.yx) * stretchX,
                 (turn.xx * mirror.xy + turn.xy * mirror.yy) * stretchY,
                 corner.x,
                 (turn.yx * mirror.xx + turn.yy * mirror.yx) * stretchX,
                 (turn.yx * mirror.xy + turn.yy * mirror.yy) * stretchY,
                 corner.y};
    return width > 0 && height > 0 && scale.width != 0 && scale.height != 0 && isWithinReach(placement, part);
}

KXPlacedBox _KXPlacedBoxOf(const _KXAffine& placement, const KXRect& box) {
    const auto& [origin, size] = box;
    const float right = origin.x + size.width, bottom = origin.y + size.height;
    KXPlacedBox placed = {{placement(origin.x, origin.y), placement(right, origin.y),
                           placement(right, bottom), placement(origin.x, bottom)},
                          {}};
    const auto [left, last] =
        std::minmax({placed.corners[0].x, placed.corners[1].x, placed.corners[2].x, placed.corners[3].x});
    const auto [top, lowest] =
        std::minmax({placed.corners[0].y, placed.corners[1].y, placed.corners[2].y, placed.corners[3].y});
    placed.bounds = {{left, top}, {last - left, lowest - top}};
    return placed;
}
