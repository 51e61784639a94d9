#include <Kobaltrix/KXCollision.h>
#include <Kobaltrix/KXGeometry.h>

#include <gtest/gtest.h>

#include <cmath>

bool operator==(KXPoint a, KXPoint b) { return a.x == b.x && a.y == b.y; }

namespace {
TEST(Geometry, DirectionTables) {
    // A direction, its opposite, the next clockwise, and where it leads.
    const float rows[][5] = {{-2, -1, -1, 0, 0}, {-1, -1, -1, 0, 0}, {0, 3, 1, -3, 0}, {1, 2, 3, 0, -3},
                             {2, 1, 0, 0, 3},    {3, 0, 2, 3, 0},    {4, 7, 0, -3, 3}, {5, 6, 2, 3, 3},
                             {6, 5, 1, -3, -3},  {7, 4, 3, 3, -3},   {8, -1, -1, 0, 0}};
    for (const auto& [value, opposite, clockwise, x, y] : rows) {
        const auto direction = static_cast<KXDirection>(value);
        EXPECT_EQ(KXOppositeDirection(direction), opposite) << value;
        EXPECT_EQ(KXNextClockwiseCardinalDirection(direction), clockwise) << value;
        EXPECT_TRUE(KXAddDirectionToPoint(direction, {10, 20}, 3) == (KXPoint{10 + x, 20 + y})) << value;
    }
    EXPECT_TRUE(KXAddDirectionToPoint(KXDirectionRight, {1, 2}, INFINITY) == (KXPoint{INFINITY, 2}));
}

TEST(Geometry, DirectionBetweenPoints) {
    // The way to the other point, the direction and the cardinal one. Only whole pixels lead anywhere,
    // fractions decide between the axes, and ties are vertical.
    const float rows[][4] = {{0.9f, 5, 2, 2},       {-1, 0.9f, 0, 0},     {1, -0.9f, 3, 3},
                             {0.9f, -0.9f, -1, -1}, {300, 300, 5, 2},     {300, -300, 7, 1},
                             {3.5f, 3.4f, 5, 3},    {-3.5f, -3.4f, 6, 0}, {-3.4f, -3.5f, 6, 1},
                             {-1e30f, 3e38f, 4, 2}, {NAN, 400, 2, 2}};
    for (const auto& [x, y, direction, cardinal] : rows) {
        EXPECT_EQ(KXDirectionBetween({1, 1}, {x + 1, y + 1}), direction) << x << "," << y;
        EXPECT_EQ(KXCardinalDirectionBetween({1, 1}, {x + 1, y + 1}), cardinal) << x << "," << y;
    }
}

TEST(Geometry, ParametricLineAndCircle) {
    const KXPoint a = {10, 20}, b = {20, 0};
    EXPECT_TRUE(KXParametricLine(0.25f, a, b) == (KXPoint{12.5f, 15}));
    EXPECT_TRUE(KXParametricLine(2, a, b) == (KXPoint{30, -20}));
    EXPECT_NEAR(KXParametricCircle(0.25f, 8, a).x, 10, 1e-5f);
    float points[4];
    KXParametricLine(0.5f, a, b, points, nullptr);
    KXParametricLine(0.5f, a, b, nullptr, points + 1);
    KXParametricCircle(0.5f, 8, a, points + 2, nullptr);
    KXParametricCircle(-0.25f, 8, a, nullptr, points + 3);
    EXPECT_TRUE(points[0] == 15 && points[1] == 10 && points[2] == 2 && points[3] == 12);
}

TEST(Geometry, PointInCircle) {
    // The point, the radius and whether it is inside. On the circle is not, and only whole pixels count.
    // Squares and distances may lie beyond what ints and floats hold.
    const float rows[][4] = {{3.9f, -4.9f, 5.01f, 1}, {0.9f, 0.9f, 0.1f, 1},    {-3, -4, -6, 1},
                             {1e12f, 0, 1e13f, 1},    {3e36f, 3e36f, 3e38f, 1}, {5, 5, INFINITY, 1},
                             {300, 400, 500, 0},      {40000, 40000, 50000, 0}, {1e12f, 0, 1e11f, 0},
                             {3e38f, 0, 1e20f, 0},    {NAN, 100, 500, 0},       {100, 0, NAN, 0}};
    for (const auto& [x, y, radius, inside] : rows)
        EXPECT_EQ(KXPointInCircle({1, y}, {1 - x, 0}, radius), inside != 0)
            << x << "," << y << " radius " << radius;
}

TEST(Geometry, EqualRectsComparesEveryNumberExactly) {
    EXPECT_TRUE(KXEqualRects({{1, 2}, {3, 4}}, {{1, 2}, {3, 4}}));
    const KXRect others[] = {
        {{9, 2}, {3, 4}}, {{1, 9}, {3, 4}}, {{1, 2}, {9, 4}}, {{1, 2}, {3, std::nextafter(4.0f, 5.0f)}}};
    for (const KXRect& other : others)
        EXPECT_FALSE(KXEqualRects({{1, 2}, {3, 4}}, other));
}
} // namespace
