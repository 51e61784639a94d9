#include <Kobaltrix/KXTypes.h>

#include "core/ground/Truncate.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstddef>

namespace {
TEST(Types, AreFloatsInTheOrderTheyAreStored) {
    static_assert(sizeof(KXRect) == 4 * sizeof(float) && offsetof(KXRect, size) == 2 * sizeof(float));
    static_assert(sizeof(KXColor) == 4 * sizeof(float) && offsetof(KXColor, a) == 3 * sizeof(float));
    static_assert(offsetof(KXPoint, y) == sizeof(float) && offsetof(KXSize, height) == sizeof(float));
    static_assert(sizeof(KXDirection) == 4 && sizeof(KXAliasMode) == 4);
    const KXColor red = KXMakeColori(255, 0, 0, 255);
    EXPECT_EQ(red.r, KXRedColor.r);
    EXPECT_EQ(red.g, KXRedColor.g);
    EXPECT_EQ(red.a, KXRedColor.a);
    const KXColor beyond = KXMakeColori(510, -255, 128, 0);
    EXPECT_EQ(beyond.r, 2);
    EXPECT_EQ(beyond.g, -1);
    EXPECT_FLOAT_EQ(beyond.b, 0.50196081f);
    EXPECT_EQ(KXMakeColor(7, -7, 0, 0).r, 7);
}

TEST(Types, MinimaAndMaximaPreferTheSecond) {
    EXPECT_TRUE(std::signbit(KXMinf(0.0f, -0.0f))) << "equal: the second";
    EXPECT_FALSE(std::signbit(KXMaxf(-0.0f, 0.0f)));
    EXPECT_EQ(KXMinf(NAN, 3), 3);
    EXPECT_TRUE(std::isnan(KXMinf(3, NAN)));
    EXPECT_EQ(KXMaxf(NAN, 3), 3);
    EXPECT_EQ(KXMini(-2, 5), -2);
    EXPECT_EQ(KXMaxi(-2, 5), 5);
}

TEST(Types, ClampsTestTheLowerBoundFirst) {
    const struct {
        float value, low, high, expected;
    } cases[] = {{5, 0, 10, 5},    {-1, 0, 10, 0}, {11, 0, 10, 10},
                 {NAN, 0, 10, 10}, {1, 5, 2, 5},   {6, 5, 2, 2}};
    for (const auto& [value, low, high, expected] : cases) {
        float v = value;
        KXClampf(&v, low, high);
        EXPECT_EQ(v, expected) << value;
        if (value == value) {
            int i = static_cast<int>(value);
            KXClampi(&i, static_cast<int>(low), static_cast<int>(high));
            EXPECT_EQ(i, static_cast<int>(expected)) << value;
        }
    }
    KXClampf(nullptr, 0, 1);
    KXClampi(nullptr, 0, 1);
}

TEST(Types, NearestPowerOfTwoEnds) {
    const int cases[][2] = {{INT_MIN, 1},
                            {-5, 1},
                            {0, 1},
                            {1, 1},
                            {2, 2},
                            {3, 4},
                            {256, 256},
                            {257, 512},
                            {1024, 1024},
                            {1025, 2048},
                            {1 << 30, 1 << 30},
                            {(1 << 30) + 1, 1 << 30},
                            {INT_MAX, 1 << 30}};
    for (const auto& [n, power] : cases)
        EXPECT_EQ(KXNearestPowerOfTwo(n), power) << n;
}

TEST(Types, TruncationSaturates) {
    EXPECT_EQ(_KXTruncate(-1.9f), -1);
    EXPECT_EQ(_KXTruncate(1.9f), 1);
    EXPECT_EQ(_KXTruncate(NAN), 0);
    EXPECT_EQ(_KXTruncate(INFINITY), INT_MAX);
    EXPECT_EQ(_KXTruncate(-3e9f), INT_MIN);
}
} // namespace
