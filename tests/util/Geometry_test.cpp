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
    // The way to the other point, the direction and the cardinal one. Only whole pixels lead anywhere,
    // fractions decide between the axes, and ties are vertical.
    const float rows[][4] = {{0.9f, 5, 2, 2},       {-1, 0.9f, 0, 0},     {1, -0.9f, 3, 3},
                             {0.9f, -0.9f, -1, -1}, {300, 300, 5, 2},     {300, -300, 7, 1},
                             {-300, -300, 6, 1},    {3.5f, 3.4f, 5, 3},   {3.5f, -3.4f, 7, 3},
                             {-3.5f, -3.4f, 6, 0},  {-3.4f, -3.5f, 6, 1}, {-1e30f, 3e38f, 4, 2},
                             {NAN, 400, 2, 2},      {NAN, NAN, -1, -1}};
    for (const auto& [x, y, direction, cardinal] : rows) {
        EXPECT_EQ(KXDirectionBetween(KXZeroPoint, {x, y}), direction) << x << "," << y;
        EXPECT_EQ(KXCardinalDirectionBetween(KXZeroPoint, {x, y}), cardinal) << x << "," << y;
    }
    // Differences beyond what floats hold, and a start elsewhere.
    EXPECT_EQ(KXCardinalDirectionBetween({-3e38f, 0}, {3e38f, -1e30f}), KXDirectionRight);
    EXPECT_EQ(KXDirectionBetween({5, 5}, {4.5f, 3.9f}), KXDirectionUp);
}

TEST(Geometry, ParametricLineAndCircle) {
    const KXPoint a = {10, 20}, b = {20, 0};
    EXPECT_TRUE(KXParametricLine(0.25f, a, b) == (KXPoint{12.5f, 15}));
    EXPECT_TRUE(KXParametricLine(2, a, b) == (KXPoint{30, -20}));
    float x = -1, y = -1;
    KXParametricLine(0.5f, a, b, &x, nullptr);
    KXParametricLine(0.5f, a, b, nullptr, &y);
    EXPECT_TRUE((KXPoint{x, y}) == (KXPoint{15, 10}));
    const KXPoint below = KXParametricCircle(0.25f, 8, a);
    EXPECT_NEAR(below.x, 10, 1e-5f);
    EXPECT_EQ(below.y, 28);
    KXParametricCircle(0.5f, 8, a, &x, nullptr);
    KXParametricCircle(-0.25f, 8, a, nullptr, &y);
    EXPECT_TRUE((KXPoint{x, y}) == (KXPoint{2, 12}));
}

TEST(Geometry, PointInCircle) {
    // The point and the radius. On the circle is not inside, and only whole pixels count.
    // Squares and distances may lie beyond what ints and floats hold.
    const float inside[][3] = {{3.9f, -4.9f, 5.01f},  {0.9f, 0.9f, 0.1f}, {-3, -4, -6},
                               {40000, 40000, 60000}, {1e12f, 0, 1e13f},  {3e36f, 3e36f, 3e38f},
                               {5, 5, INFINITY}};
    const float outside[][3] = {{300, 400, 500},        {40000, 40000, 50000},   {1e12f, 0, 1e11f},
                                {3e38f, -3e38f, 1e20f}, {INFINITY, 0, INFINITY}, {NAN, 100, 500},
                                {100, 0, NAN}};
    for (const auto& [x, y, radius] : inside)
        EXPECT_TRUE(KXPointInCircle({x, y}, KXZeroPoint, radius)) << x << "," << y << " radius " << radius;
    for (const auto& [x, y, radius] : outside)
        EXPECT_FALSE(KXPointInCircle({x, y}, KXZeroPoint, radius)) << x << "," << y << " radius " << radius;
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
