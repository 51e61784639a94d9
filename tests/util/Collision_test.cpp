// Points, shapes and sweeps, most of it against slow ways to find the same.

#include <Kobaltrix/KXCollision.h>
#include <Kobaltrix/KXGeometry.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace {
const KXPoint none = KXZeroPoint;
const float nan = std::nanf("");

TEST(PointMath, Operators) {
    constexpr KXPoint a = {1, 2}, b = {4, -6};
    static_assert(a + b == KXPoint{5, -4} && b - a == KXPoint{3, -8} && -a == KXPoint{-1, -2});
    static_assert(a * 2 == KXPoint{2, 4} && 2 * a == a * 2 && b / 2 == KXPoint{2, -3} && a != b);
    constexpr KXSize s = {1, 2}, t = {4, -6};
    static_assert(s + t == KXSize{5, -4} && t - s == KXSize{3, -8} && s * 2 == KXSize{2, 4} && s != t);
    static_assert(2 * s == s * 2 && t / 2 == KXSize{2, -3} && KXDot(a, b) == -8 && KXCross(a, b) == -14);
    KXPoint p = a;
    EXPECT_EQ(((((p += b) -= a) *= 3) /= 2), (KXPoint{6, -9}));
    p += {1, 1};
    EXPECT_EQ(p, (KXPoint{7, -8}));
    KXSize q = s;
    EXPECT_EQ(((((q += t) -= s) *= 3) /= 2), (KXSize{6, -9}));
}

TEST(PointMath, LengthsAndAngles) {
    EXPECT_EQ(KXLength({3, -4}), 5);
    EXPECT_EQ(KXSquaredLength({3, -4}), 25);
    EXPECT_EQ(KXDistance({1, 1}, {4, 5}), 5);
    for (const float size : {1e-45f, 3e38f}) // whose squares leave the floats
        EXPECT_FLOAT_EQ(KXNormalized({size, size}).y, 0.70710678f);
    for (const KXPoint way : {none, {nan, 1}, {INFINITY, 1}})
        EXPECT_EQ(KXNormalized(way), none);
    // A way, its angle, and the way a quarter turn on.
    const float rows[][5] = {
        {1, 0, 0, 0, 1}, {0, 2, 90, -2, 0}, {-1, -0.0f, 180, 0, -1}, {-3, -3, -135, 3, -3}, {0, 0, 0, 0, 0}};
    for (const auto& [x, y, angle, turnedX, turnedY] : rows) {
        EXPECT_FLOAT_EQ(KXAngle({x, y}), angle);
        EXPECT_EQ(KXTurned({x, y}, 90), (KXPoint{turnedX, turnedY}));
        EXPECT_EQ(KXTurned({x, y}, nan), (KXPoint{x, y}));
    }
    EXPECT_EQ(KXAngle({nan, 1}), 0);
    EXPECT_EQ(KXLerp({0.1f, 1}, {0.7f, 3}, 1), (KXPoint{0.7f, 3}));
    EXPECT_EQ(KXLerp(2.0f, 4.0f, 1.5f), 5);
    EXPECT_EQ(KXMinPoint({1, 5}, {2, 3}), (KXPoint{1, 3}));
    EXPECT_EQ(KXMaxPoint({1, nan}, {2, 3}), (KXPoint{2, 3}));
}

/// A small world of quarters, where things often touch.
struct World {
    std::mt19937 random{7};
    float number(int low, int high) {
        return static_cast<float>(std::uniform_int_distribution<int>(4 * low, 4 * high)(random)) / 4;
    }
    KXPoint point() { return {number(-6, 6), number(-6, 6)}; }
    KXRect rect() { return {point(), {number(0, 4), number(0, 4)}}; }
};

/// Counts the middles of the grid's cells that have some quality: shapes on the grid are made of whole ones.
template<class Quality>
int cells(const Quality& quality) {
    int count = 0;
    for (float x = -12 + 0.125f; x < 12; x += 0.25f)
        for (float y = -12 + 0.125f; y < 12; y += 0.25f)
            count += quality(KXPoint{x, y}) ? 1 : 0;
    return count;
}

TEST(Collision, RectanglesAreMadeOfTheirPoints) {
    World world;
    for (int i = 0; i < 300; ++i) {
        const KXRect a = world.rect(), b = world.rect(), both = KXIntersection(a, b), around = KXUnion(a, b);
        const auto inA = [a](KXPoint p) { return KXPointInRect(p, a); };
        const auto inB = [b](KXPoint p) { return KXPointInRect(p, b); };
        const int shared = cells([&](KXPoint p) { return inA(p) && inB(p); });
        EXPECT_EQ(KXRectsOverlap(a, b) != 0, shared > 0);
        EXPECT_EQ(cells([&](KXPoint p) { return KXPointInRect(p, both); }), shared);
        EXPECT_EQ(cells([&](KXPoint p) { return (inA(p) || inB(p)) && !KXPointInRect(p, around); }), 0);
        const bool isInside = cells(inB) > 0 && shared == cells(inB);
        EXPECT_TRUE(!isInside || (KXRectInRect(b, a) && KXEqualRects(around, a)));
        EXPECT_TRUE(isInside || cells(inB) == 0 || !KXRectInRect(b, a));
        const KXSize little = {0.0625f, 0.0625f}; // with which what touches overlaps
        EXPECT_EQ(KXRectsMeet(a, b), KXRectsOverlap(KXGrownRect(a, little), KXGrownRect(b, little)));
        const KXPoint p = world.point(), nearest = KXClampedToRect(p, a);
        EXPECT_TRUE(KXRectInRect({nearest, {0, 0}}, KXGrownRect(a, {1, 1})));
        EXPECT_TRUE(!KXPointInRect(p, a) || nearest == p);
    }
    // At no size does rounding let an edge slip.
    const KXRect wide = {{0.1f, 0}, {16777216, 1}}, thin = {{0.3f, 0}, {1e-6f, 1}};
    EXPECT_TRUE(KXRectInRect(wide, KXUnion(wide, thin)) && KXRectInRect(KXIntersection(wide, thin), wide));
    EXPECT_TRUE(KXPointInRect({2, 1}, KXRectBetween({5, 1}, {2, 7})) &&
                !KXPointInRect({5, 7}, KXRectBetween({5, 1}, {2, 7})));
    EXPECT_TRUE(KXEqualRects(KXRectAround(KXRectCentre(wide), {2, 2}), {{8388607, -0.5f}, {2, 2}}));
    EXPECT_TRUE(KXEqualRects(KXGrownRect({{0, 0}, {4, 8}}, {-3, -3}), {{2, 3}, {0, 2}}));
    EXPECT_EQ(KXRectEnd(KXMovedRect(thin, {1, 1})).y, 2);
}

TEST(Collision, LinesAndCircles) {
    World world;
    for (int i = 0; i < 2000; ++i) {
        const KXPoint from = world.point(), to = world.point(), centre = world.point();
        const KXRect box = world.rect();
        const float radius = world.number(-3, 3), size = std::fabs(radius);
        bool crossesBox = false, crossesCircle = false;
        for (float t = 0.0005f; t < 1; t += 0.001f) {
            const KXPoint p = KXLerp(from, to, t), away = p - KXRectCentre(box);
            crossesBox |= std::fabs(away.x) < box.size.width / 2 - 1e-3f &&
                          std::fabs(away.y) < box.size.height / 2 - 1e-3f;
            crossesCircle |= KXDistance(p, centre) < size - 1e-3f;
        }
        // A corner may be cut between two samples.
        EXPECT_TRUE(!crossesBox || KXLineOverlapsRect(from, to, box));
        EXPECT_TRUE(crossesBox || !KXLineOverlapsRect(from, to, KXGrownRect(box, {-0.02f, -0.02f})));
        EXPECT_EQ(KXLineOverlapsCircle(from, to, centre, radius) != 0, crossesCircle);
        const float apart = box.size.width * box.size.height > 0
                                ? KXDistance(centre, KXClampedToRect(centre, box))
                                : INFINITY;
        EXPECT_EQ(KXCircleOverlapsRect(centre, radius, box) != 0, size > 0 && apart < size) << apart;
        EXPECT_EQ(KXCirclesOverlap(from, radius, to, 0.5f) != 0,
                  size > 0 && KXDistance(from, to) < size + 0.5f);
    }
}

/// Whether two rectangles overlap by more than a little, one of them after some of its way.
bool overlapAt(double time, const KXRect& moving, KXPoint by, const KXRect& still, double little = 0) {
    const double x = moving.origin.x + by.x * time, y = moving.origin.y + by.y * time;
    const auto& [at, size] = still;
    return x < at.x + size.width - little && x + moving.size.width > at.x + little &&
           y < at.y + size.height - little && y + moving.size.height > at.y + little;
}

/// When a moving rectangle first overlaps another: between two moments at which edges meet nothing changes.
double firstOverlap(const KXRect& moving, KXPoint by, const KXRect& still) {
    std::vector<double> times = {0, 1};
    const auto add = [&times](double from, double extent, double way, double low, double high) {
        if (way == 0)
            return;
        for (const double time : {(low - from - extent) / way, (high - from) / way})
            if (time > 0 && time < 1)
                times.push_back(time);
    };
    const auto& [from, size] = moving;
    add(from.x, size.width, by.x, still.origin.x, still.origin.x + still.size.width);
    add(from.y, size.height, by.y, still.origin.y, still.origin.y + still.size.height);
    std::ranges::sort(times);
    for (std::size_t i = 1; i < times.size(); ++i)
        if (times[i] - times[i - 1] > 1e-9 && overlapAt((times[i - 1] + times[i]) / 2, moving, by, still))
            return times[i - 1];
    return 1;
}

TEST(Collision, ASweepStopsAtTheFirstTouch) {
    World world;
    for (int i = 0; i < 20000; ++i) {
        // On the grid, and where hardly a sum of floats is exact.
        const float scale = i % 2 ? 1 : 0.1f;
        const auto scaled = [scale](KXRect rect) { return KXRect{rect.origin * scale, rect.size * scale}; };
        const KXRect moving = scaled(world.rect()), still = scaled(world.rect());
        const KXPoint by = world.point() * (2 * scale);
        const KXSweep sweep = KXSweepRect(moving, by, still);
        const bool hasArea = still.size.width > 0 && still.size.height > 0;
        if (hasArea && overlapAt(0, moving, by, still, 1e-5)) {
            EXPECT_TRUE(sweep.hit && sweep.time == 0 && sweep.normal == none);
            EXPECT_EQ(sweep.position, moving.origin);
            continue;
        }
        const double time = hasArea ? firstOverlap(moving, by, still) : 1;
        if (scale == 1) {
            EXPECT_NEAR(sweep.time, time, 1e-6);
            EXPECT_EQ(sweep.hit, time < 1 ? -1 : 0);
        }
        // What floats cannot tell apart may overlap by that much from the start.
        EXPECT_FALSE(scale == 1 && KXRectsOverlap({sweep.position, moving.size}, still));
        EXPECT_FALSE(hasArea && overlapAt(0, {sweep.position, moving.size}, none, still, 1e-6));
        if (!sweep.hit) {
            EXPECT_TRUE(sweep.position == moving.origin + by && sweep.normal == none);
            continue;
        }
        const KXPoint into = sweep.normal * -0.001f, along = {into.y * 100, into.x * 100};
        EXPECT_LT(KXDot(sweep.normal, by), 0);
        EXPECT_FALSE(sweep.time > 0.001f && overlapAt(0, {sweep.position, moving.size}, none, still));
        EXPECT_TRUE(KXSweepRect({sweep.position, moving.size}, along, still).hit == 0);
        const KXPoint inside = sweep.position + into + by * 1e-4f;
        EXPECT_TRUE(scale != 1 || KXRectsMeet({inside, moving.size}, still));
    }
}

TEST(Collision, ASlideGetsIntoNothing) {
    World world;
    for (int i = 0; i < 100; ++i) {
        const float scale = i % 2 ? 1 : 0.1f;
        KXRect boxes[12];
        for (KXRect& box : boxes)
            box = {world.point() * scale, KXSize{world.number(1, 3), world.number(1, 3)} * scale};
        KXRect player = {KXPoint{world.number(-9, -8), world.number(-6, 6)} * scale, {scale, scale}};
        for (int step = 0; step < 100; ++step) {
            const KXPoint by = (world.point() + KXPoint{0.5f, 0.25f}) * scale * (step % 4 ? 0.3f : 2);
            const KXSlide slide = KXSlideRect(player, by, boxes, 12);
            const KXPoint moved = slide.position - player.origin;
            EXPECT_TRUE(moved.x * by.x >= -1e-6f && std::fabs(moved.x) <= std::fabs(by.x) + 1e-5f);
            EXPECT_TRUE(moved.y * by.y >= -1e-6f && std::fabs(moved.y) <= std::fabs(by.y) + 1e-5f);
            for (float t = 0; slide.normal == none && t <= 1; t += 0.01f)
                for (const KXRect& box : boxes)
                    EXPECT_FALSE(
                        KXRectsOverlap(KXGrownRect(KXMovedRect(player, by * t), {-1e-4f, -1e-4f}), box));
            player.origin = slide.position;
            for (const KXRect& box : boxes)
                EXPECT_FALSE(overlapAt(0, player, none, box, 1e-6));
        }
    }
    // A seam in a wall is no floor, one in a floor no wall; what it is in does not hold it.
    const KXRect tiles[] = {
        {{16, 0}, {16, 16}}, {{16, 16}, {16, 16}}, {{0, 32}, {16, 16}}, {{16, 32}, {16, 16}}};
    KXSlide slide = KXSlideRect({{6, 6}, {10, 10}}, {3, 3}, tiles, 4);
    EXPECT_TRUE(slide.position == (KXPoint{6, 9}) && slide.normal == (KXPoint{-1, 0}));
    slide = KXSlideRect({{-4, 22}, {10, 10}}, {8, 3}, tiles + 2, 2);
    EXPECT_TRUE(slide.position == (KXPoint{4, 22}) && slide.normal == (KXPoint{0, -1}));
    slide = KXSlideRect({{20, 2}, {4, 4}}, {0, -9}, tiles, 4);
    EXPECT_TRUE(slide.position == (KXPoint{20, -7}) && slide.normal == none);
    EXPECT_EQ(KXSlideRect(tiles[0], {1, 1}, nullptr, 4).position, (KXPoint{17, 1}));
}

TEST(Collision, ACircleSweepsRoundCorners) {
    World world;
    for (int i = 0; i < 3000; ++i) {
        const KXRect box = {world.point(), {world.number(1, 4), world.number(1, 4)}};
        const KXPoint from = world.point(), by = world.point() * 2, other = world.point();
        const float radius = world.number(0, 2);
        const auto check = [&](const KXSweep& sweep, const auto& distance) {
            const auto at = [&](float t) { return distance(from + by * t); };
            if (at(0) < -1e-4f) {
                EXPECT_TRUE(sweep.hit && sweep.time == 0 && sweep.normal == none);
                return;
            }
            for (float t = 0.001f; t < sweep.time; t += 0.01f)
                EXPECT_GT(at(t), -1e-4f);
            EXPECT_GT(distance(sweep.position), -1e-4f);
            if (!sweep.hit) {
                EXPECT_TRUE(sweep.position == from + by && sweep.normal == none);
                return;
            }
            EXPECT_LT(distance(sweep.position), 1e-4f);
            EXPECT_LT(KXDot(sweep.normal, by), 0);
            EXPECT_NEAR(KXLength(sweep.normal), 1, 1e-5f);
            EXPECT_NEAR(distance(sweep.position + sweep.normal), 1, 1e-3f) << "straight away from it";
        };
        check(KXSweepCircle(from, radius, by, box), [&](KXPoint p) {
            const KXPoint away = p - KXClampedToRect(p, box);
            const KXPoint inner = KXMinPoint(p - box.origin, KXRectEnd(box) - p);
            return (away == none ? -std::min(inner.x, inner.y) : KXLength(away)) - radius;
        });
        check(KXSweepCircle(from, radius, by, other, -0.75f),
              [&](KXPoint p) { return KXDistance(p, other) - radius - 0.75f; });
    }
    EXPECT_EQ(KXSweepCircle({5, 0}, 2, {0, 9}, {{0, 4}, {9, 9}}).position, (KXPoint{5, 2}));
    EXPECT_EQ(KXSweepCircle({5, 2}, 2, {9, 0}, {{0, 4}, {99, 9}}).hit, 0) << "it rolls";
}

TEST(Collision, WhatIsNowhereMeetsNothing) {
    const KXRect box = {{0, 0}, {4, 4}};
    for (const float bad : {nan, INFINITY, -INFINITY}) {
        for (const KXRect& rect : {KXRect{{bad, 0}, {9, 9}}, KXRect{{0, bad}, {9, 9}},
                                   KXRect{{-1, -1}, {bad, 9}}, KXRect{{-1, -1}, {9, bad}}}) {
            EXPECT_FALSE(KXRectsOverlap(rect, box) || KXRectsMeet(box, rect) || KXRectInRect(box, rect) ||
                         KXPointInRect(none, rect) || KXCircleOverlapsRect(none, 5, rect) ||
                         KXLineOverlapsRect({-9, 1}, {9, 1}, rect));
            EXPECT_TRUE(KXEqualRects(KXUnion(rect, box), box) &&
                        KXEqualRects(KXIntersection(rect, box), KXZeroRect));
            EXPECT_EQ(KXSweepRect(box, {9, 9}, rect).hit, 0);
            EXPECT_EQ(KXSweepRect(rect, {9, 9}, box).hit, 0);
            EXPECT_EQ(KXSlideRect(box, {9, 9}, &rect, 1).position, (KXPoint{9, 9}));
        }
        EXPECT_EQ(KXSlideRect({{9, 9}, {1, 1}}, {1, bad}, &box, 1).position, (KXPoint{9, 9}));
        EXPECT_FALSE(KXCirclesOverlap({bad, 0}, 1, none, 1) || KXCirclesOverlap(none, bad, none, 1) ||
                     KXLineOverlapsCircle({-9, 0}, {9, bad}, none, 2) ||
                     KXLineOverlapsCircle({-9, 0}, {9, 0}, none, bad));
        EXPECT_EQ(KXSweepCircle({-9, 1}, bad, {9, 0}, box).position, (KXPoint{-9, 1}));
        EXPECT_EQ(KXSweepCircle({-9, 1}, 1, {9, 0}, none, bad).hit, 0);
    }
}
} // namespace
