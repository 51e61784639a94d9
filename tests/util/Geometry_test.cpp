#include <Kobaltrix/KXGeometry.h>

#include <gtest/gtest.h>

#include <cmath>

bool operator==(KXPoint a, KXPoint b) { return a.x == b.x && a.y == b.y; }

namespace {
TEST(Geometry, DirectionTables) {
    struct {
        int direction, opposite, clockwise;
        KXPoint moved;
    } const rows[] = {
        {-2, -1, -1, {10, 20}}, {-1, -1, -1, {10, 20}}, {0, 3, 1, {7, 20}},    {1, 2, 3, {10, 17}},
        {2, 1, 0, {10, 23}},    {3, 0, 2, {13, 20}},    {4, 7, 0, {7, 23}},    {5, 6, 2, {13, 23}},
        {6, 5, 1, {7, 17}},     {7, 4, 3, {13, 17}},    {8, -1, -1, {10, 20}}, {INT32_MIN, -1, -1, {10, 20}},
    };
    for (const auto& row : rows) {
        const auto direction = static_cast<KXDirection>(row.direction);
        EXPECT_EQ(KXOppositeDirection(direction), row.opposite) << row.direction;
        EXPECT_EQ(KXNextClockwiseCardinalDirection(direction), row.clockwise) << row.direction;
        EXPECT_TRUE(KXAddDirectionToPoint(direction, {10, 20}, 3) == row.moved) << row.direction;
    }
    EXPECT_TRUE(KXAddDirectionToPoint(KXDirectionRight, {1, 2}, INFINITY) == (KXPoint{INFINITY, 2}));
}

TEST(Geometry, DirectionBetweenPoints) {
    // From, to, the direction and the cardinal one. Fractions decide, ties are vertical, and differences may
    // lie beyond what ints hold.
    const float rows[][6] = {{0, 0, 0.9f, 5, 2, 2},
                             {5, 5, 4, 5.9f, 0, 0},
                             {5, 5, 6, 4.1f, 3, 3},
                             {5, 5, 5.9f, 4.1f, -1, -1},
                             {0, 0, 3, 3, 5, 2},
                             {0, 0, 3, -3, 7, 1},
                             {0, 0, -3, -3, 6, 1},
                             {0, 0, 3.5f, 3.4f, 5, 3},
                             {0, 0, 3.5f, -3.4f, 7, 3},
                             {0, 0, -3.5f, -3.4f, 6, 0},
                             {0, 0, -3.4f, -3.5f, 6, 1},
                             {-3e38f, 0, 3e38f, -1e30f, 7, 3},
                             {0, 0, -INFINITY, INFINITY, 4, 2},
                             {NAN, 0, 0, 4, 2, 2},
                             {NAN, NAN, 0, 4, -1, -1}};
    for (const auto& [fromX, fromY, toX, toY, direction, cardinal] : rows) {
        EXPECT_EQ(KXDirectionBetween({fromX, fromY}, {toX, toY}), direction) << toX << "," << toY;
        EXPECT_EQ(KXCardinalDirectionBetween({fromX, fromY}, {toX, toY}), cardinal) << toX << "," << toY;
    }
}

TEST(Geometry, ParametricLineAndCircle) {
    const KXPoint a = {10, 20}, b = {20, 0};
    EXPECT_TRUE(KXParametricLine(0.25f, a, b) == (KXPoint{12.5f, 15}));
    EXPECT_TRUE(KXParametricLine(2, a, b) == (KXPoint{30, -20}));
    float x = -1, y = -1;
    KXParametricLine(0.5f, a, b, &x, nullptr);
    EXPECT_EQ(x, 15);
    KXParametricLine(0.5f, a, b, nullptr, &y);
    EXPECT_EQ(y, 10);

    const KXPoint below = KXParametricCircle(0.25f, 8, a);
    EXPECT_NEAR(below.x, 10, 1e-5f);
    EXPECT_EQ(below.y, 28);
    KXParametricCircle(0.5f, 8, a, &x, nullptr);
    EXPECT_EQ(x, 2);
    KXParametricCircle(-0.25f, 8, a, nullptr, &y);
    EXPECT_EQ(y, 12);
}

TEST(Geometry, PointInCircle) {
    // The point, the radius, and whether it is inside: not on the circle, and only whole pixels count.
    // Squares and distances may lie beyond what ints and floats hold.
    const float rows[][4] = {{3, 4, 5, 0},
                             {3.9f, -4.9f, 5.01f, 1},
                             {0.9f, 0.9f, 0.1f, 1},
                             {-3, -4, -6, 1},
                             {40000, 40000, 50000, 0},
                             {40000, 40000, 60000, 1},
                             {1e12f, 0, 1e11f, 0},
                             {1e12f, 0, 1e13f, 1},
                             {3e38f, -3e38f, 1e20f, 0},
                             {3e36f, 3e36f, 3e38f, 1},
                             {INFINITY, 0, INFINITY, 0},
                             {5, 5, INFINITY, 1},
                             {NAN, 0, 5, 0},
                             {0, 0, NAN, 0}};
    for (const auto& [x, y, radius, inside] : rows)
        EXPECT_EQ(KXPointInCircle({x, y}, KXZeroPoint, radius), inside == 1)
            << x << "," << y << " radius " << radius;
    EXPECT_FALSE(KXPointInCircle({-3e38f, 0}, {3e38f, 0}, 3e38f));
}

TEST(Geometry, EqualRectsComparesEveryNumberExactly) {
    const KXRect rect = {{1, 2}, {3, 4}};
    EXPECT_TRUE(KXEqualRects(rect, {{1, 2}, {3, 4}}));
    EXPECT_TRUE(KXEqualRects({{0, 0}, {0, 0}}, {{-0.0f, 0}, {0, -0.0f}}));
    const float next = std::nextafter(4.0f, 5.0f);
    for (const KXRect& other : {KXRect{{9, 2}, {3, 4}}, KXRect{{1, 9}, {3, 4}}, KXRect{{1, 2}, {9, 4}},
                                KXRect{{1, 2}, {3, next}}, KXRect{{NAN, 2}, {3, 4}}})
        EXPECT_FALSE(KXEqualRects(rect, other));
}
} // namespace
