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
    struct {
        KXPoint from, to;
        KXDirection direction, cardinal;
    } const rows[] = {
        {{0, 0}, {0.9f, 5}, KXDirectionDown, KXDirectionDown},
        {{5, 5}, {4, 5.9f}, KXDirectionLeft, KXDirectionLeft},
        {{5, 5}, {6, 4.1f}, KXDirectionRight, KXDirectionRight},
        {{5, 5}, {5.9f, 4.1f}, KXDirectionNone, KXDirectionNone},
        {{0, 0}, {3, 3}, KXDirectionDownRight, KXDirectionDown}, // ties are vertical
        {{0, 0}, {3, -3}, KXDirectionUpRight, KXDirectionUp},
        {{0, 0}, {-3, -3}, KXDirectionUpLeft, KXDirectionUp},
        {{0, 0}, {3.5f, 3.4f}, KXDirectionDownRight, KXDirectionRight}, // fractions decide
        {{0, 0}, {3.5f, -3.4f}, KXDirectionUpRight, KXDirectionRight},
        {{0, 0}, {-3.5f, -3.4f}, KXDirectionUpLeft, KXDirectionLeft},
        {{0, 0}, {-3.4f, -3.5f}, KXDirectionUpLeft, KXDirectionUp},
        {{-3e38f, 0}, {3e38f, -1e30f}, KXDirectionUpRight, KXDirectionRight}, // beyond what ints hold
        {{0, 0}, {-INFINITY, INFINITY}, KXDirectionDownLeft, KXDirectionDown},
        {{NAN, 0}, {0, 4}, KXDirectionDown, KXDirectionDown},
        {{NAN, NAN}, {0, 4}, KXDirectionNone, KXDirectionNone},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(KXDirectionBetween(row.from, row.to), row.direction) << row.to.x << "," << row.to.y;
        EXPECT_EQ(KXCardinalDirectionBetween(row.from, row.to), row.cardinal) << row.to.x << "," << row.to.y;
    }
}

TEST(Geometry, ParametricLineAndCircle) {
    const KXPoint a = {10, 20}, b = {20, 0};
    EXPECT_TRUE(KXParametricLine(0, a, b) == a);
    EXPECT_TRUE(KXParametricLine(1, a, b) == b);
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
    struct {
        KXPoint point;
        float radius;
        bool inside;
    } const rows[] = {
        {{3, 4}, 5, false},           // on the circle
        {{3.9f, -4.9f}, 5.01f, true}, // whole pixels count
        {{0.9f, 0.9f}, 0.1f, true},
        {{-3, -4}, -6, true},
        {{40000, 40000}, 50000, false}, // squares beyond an int
        {{40000, 40000}, 60000, true},
        {{1e12f, 0}, 1e11f, false}, // distances beyond an int
        {{1e12f, 0}, 1e13f, true},
        {{3e38f, -3e38f}, 1e20f, false}, // squares beyond a float
        {{3e36f, 3e36f}, 3e38f, true},
        {{INFINITY, 0}, INFINITY, false},
        {{5, 5}, INFINITY, true},
        {{NAN, 0}, 5, false},
        {{0, 0}, NAN, false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(KXPointInCircle({row.point.x, row.point.y}, KXZeroPoint, row.radius), row.inside)
            << row.point.x << "," << row.point.y << " radius " << row.radius;
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
