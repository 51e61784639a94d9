#include "Handles.h"

#include <Kobaltrix/KXDrawing.h>

#include <algorithm>
#include <cmath>

static constexpr float reach = 5; // points on either side of an edge in which it is taken hold of
static constexpr float side = 7;  // of a handle

// In small rectangles the edges leave the middle third to the whole.
static unsigned gripAlong(float begin, float length, float at, unsigned low, unsigned high) {
    const float inner = std::min(reach, length / 3);
    if (at < begin - reach || at > begin + length + reach)
        return GripNone;
    return at < begin + inner ? low : at > begin + length - inner ? high : low | high;
}

unsigned gripAt(const KXRect& seen, KXPoint point) {
    const unsigned across = gripAlong(seen.origin.x, seen.size.width, point.x, GripLeft, GripRight),
                   down = gripAlong(seen.origin.y, seen.size.height, point.y, GripTop, GripBottom);
    if (!across || !down)
        return GripNone;
    const bool isMiddleAcross = across == (GripLeft | GripRight),
               isMiddleDown = down == (GripTop | GripBottom);
    return isMiddleAcross && isMiddleDown ? GripAll
                                          : (isMiddleAcross ? 0 : across) | (isMiddleDown ? 0 : down);
}

Area movedBy(const Area& area, unsigned grip, KXPoint pixels) {
    const auto edge = [&](float at, unsigned which, float by) {
        return grip & which ? std::round(at + by) : at;
    };
    float left = edge(area.x, GripLeft, pixels.x), top = edge(area.y, GripTop, pixels.y);
    if (grip == GripAll)
        return {left, top, area.width, area.height};
    const float oldRight = area.x + static_cast<float>(area.width),
                oldBottom = area.y + static_cast<float>(area.height);
    const float right = std::max(edge(oldRight, GripRight, pixels.x), area.x + 1),
                bottom = std::max(edge(oldBottom, GripBottom, pixels.y), area.y + 1);
    left = std::min(left, oldRight - 1);
    top = std::min(top, oldBottom - 1);
    return {left, top, static_cast<int>(std::lround(right - left)),
            static_cast<int>(std::lround(bottom - top))};
}

KXCursor cursorOf(unsigned grip) {
    switch (grip) {
    case GripNone:
        return KXCursorArrow;
    case GripLeft:
    case GripRight:
        return KXCursorWidth;
    case GripTop:
    case GripBottom:
        return KXCursorHeight;
    default:
        return KXCursorMove;
    }
}

void drawHandles(const KXRect& seen, KXColor fill, KXColor rim) {
    const auto [origin, size] = seen;
    const bool hasMiddleAcross = size.width >= 4 * side, hasMiddleDown = size.height >= 4 * side;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) {
            if ((row == 1 && (column == 1 || !hasMiddleDown)) || (column == 1 && !hasMiddleAcross))
                continue;
            const KXRect box = {
                {std::round(origin.x + size.width * static_cast<float>(column) / 2 - side / 2),
                 std::round(origin.y + size.height * static_cast<float>(row) / 2 - side / 2)},
                {side, side}};
            KXDrawRectFill(box, rim);
            KXDrawRectFill({{box.origin.x + 1, box.origin.y + 1}, {side - 2, side - 2}}, fill);
        }
}

Area areaBetween(KXPoint one, KXPoint other) {
    const float left = std::floor(std::min(one.x, other.x)), top = std::floor(std::min(one.y, other.y)),
                right = std::floor(std::max(one.x, other.x)) + 1,
                bottom = std::floor(std::max(one.y, other.y)) + 1;
    return {left, top, static_cast<int>(right - left), static_cast<int>(bottom - top)};
}

Area nudged(const Area& area, KXPoint way, bool isFast, bool resizes) {
    const float by = isFast ? 8.0f : 1.0f;
    return movedBy(area, resizes ? GripRight | GripBottom : GripAll, {way.x * by, way.y * by});
}

bool isIn(const Area& area, KXPoint place, float rim) {
    const auto along = [rim](float at, float begin, int length) {
        return at >= begin - rim && at < begin + static_cast<float>(length) + rim;
    };
    return along(place.x, area.x, area.width) && along(place.y, area.y, area.height);
}

int nextOf(const std::vector<int>& numbers, int present) {
    const auto next = std::upper_bound(numbers.begin(), numbers.end(), present);
    return next != numbers.end() ? *next : numbers.empty() ? -1 : numbers.front();
}
