#include <Kobaltrix/KXGeometry.h>

#include "core/ground/Truncate.h"

#include <cmath>
#include <limits>

namespace {
// What each direction leads to, indexed by its value.
struct DirectionInfo {
    KXDirection opposite;
    KXDirection clockwise;
    int x; // sign of the movement along each axis
    int y;
};

constexpr DirectionInfo directions[] = {
    {KXDirectionRight, KXDirectionUp, -1, 0},       // left
    {KXDirectionDown, KXDirectionRight, 0, -1},     // up
    {KXDirectionUp, KXDirectionLeft, 0, 1},         // down
    {KXDirectionLeft, KXDirectionDown, 1, 0},       // right
    {KXDirectionUpRight, KXDirectionLeft, -1, 1},   // down left
    {KXDirectionUpLeft, KXDirectionDown, 1, 1},     // down right
    {KXDirectionDownRight, KXDirectionUp, -1, -1},  // up left
    {KXDirectionDownLeft, KXDirectionRight, 1, -1}, // up right
};

constexpr DirectionInfo noDirection = {KXDirectionNone, KXDirectionNone, 0, 0};

const DirectionInfo& infoOf(KXDirection direction) {
    return direction >= KXDirectionLeft && direction <= KXDirectionUpRight ? directions[direction]
                                                                           : noDirection;
}

// Indexed by the signs of the vertical and horizontal differences, each plus one.
constexpr KXDirection directionBySigns[3][3] = {
    {KXDirectionUpLeft, KXDirectionUp, KXDirectionUpRight},
    {KXDirectionLeft, KXDirectionNone, KXDirectionRight},
    {KXDirectionDownLeft, KXDirectionDown, KXDirectionDownRight},
};

int signOfWholePixels(float difference) {
    const int pixels = _KXTruncate(difference);
    return (pixels > 0) - (pixels < 0);
}

// Added rather than multiplied by the sign: an infinite distance leaves the other axis alone.
float move(float position, int sign, float distance) {
    if (sign == 0)
        return position;
    return sign < 0 ? position - distance : position + distance;
}
} // namespace

KXDirection KXOppositeDirection(KXDirection direction) { return infoOf(direction).opposite; }

KXDirection KXNextClockwiseCardinalDirection(KXDirection direction) { return infoOf(direction).clockwise; }

KXDirection KXDirectionBetween(KXPoint from, KXPoint to) {
    return directionBySigns[signOfWholePixels(to.y - from.y) + 1][signOfWholePixels(to.x - from.x) + 1];
}

KXDirection KXCardinalDirectionBetween(KXPoint from, KXPoint to) {
    const KXDirection direction = KXDirectionBetween(from, to);
    if (direction < KXDirectionDownLeft)
        return direction;
    const DirectionInfo& diagonal = infoOf(direction);
    if (std::fabs(from.x - to.x) <= std::fabs(to.y - from.y))
        return diagonal.y < 0 ? KXDirectionUp : KXDirectionDown;
    return diagonal.x < 0 ? KXDirectionLeft : KXDirectionRight;
}

KXPoint KXAddDirectionToPoint(KXDirection direction, KXPoint point, float distance) {
    const DirectionInfo& info = infoOf(direction);
    return {move(point.x, info.x, distance), move(point.y, info.y, distance)};
}

KXPoint KXParametricLine(float t, KXPoint a, KXPoint b) {
    return {(1 - t) * a.x + t * b.x, (1 - t) * a.y + t * b.y};
}

KXPoint KXParametricCircle(float t, int radius, KXPoint centre) {
    const float angle = t * 6.2831855f;
    const float distance = static_cast<float>(radius);
    return {centre.x + std::cos(angle) * distance, centre.y + std::sin(angle) * distance};
}

static void store(KXPoint point, float* x, float* y) {
    if (x)
        *x = point.x;
    if (y)
        *y = point.y;
}

void KXParametricLine(float t, KXPoint a, KXPoint b, float* x, float* y) {
    store(KXParametricLine(t, a, b), x, y);
}

void KXParametricCircle(float t, int radius, KXPoint centre, float* x, float* y) {
    store(KXParametricCircle(t, radius, centre), x, y);
}

bool KXPointInCircle(KXPoint point, KXPoint centre, float radius) {
    // Doubles hold whole numbers exactly as far as an int's squares reach, and go on where an int ends.
    const double dx = std::trunc(point.x - centre.x);
    const double dy = std::trunc(point.y - centre.y);
    const double squared = dx * dx + dy * dy;
    if (squared <= std::numeric_limits<int>::max())
        return radius * radius > static_cast<float>(squared);
    return static_cast<double>(radius) * radius > squared; // a float could overflow here
}

bool KXEqualRects(KXRect a, KXRect b) {
    return a.origin.x == b.origin.x && a.origin.y == b.origin.y && a.size.width == b.size.width &&
           a.size.height == b.size.height;
}
