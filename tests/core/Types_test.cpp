#include <Kobaltrix/KXTypes.h>

#include "core/ground/Truncate.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

namespace {
TEST(Types, Colors) {
    const KXColor rows[][2] = {{KXMakeColori(255, 510, -255, 128), {1, 2, -1, 0.50196081f}},
                               {KXMakeColor(7, -7, 0, 0.5f), {7, -7, 0, 0.5f}},
                               {KXRedColor, {1, 0, 0, 1}},
                               {KXGreenColor, {0, 1, 0, 1}},
                               {KXBlueColor, {0, 0, 1, 1}}};
    for (const auto& [color, expected] : rows)
        for (float KXColor::*channel : {&KXColor::r, &KXColor::g, &KXColor::b, &KXColor::a})
            EXPECT_FLOAT_EQ(color.*channel, expected.*channel);
}

TEST(Types, ScalarsAtTheirEdges) {
    EXPECT_TRUE(std::signbit(KXMinf(0.0f, -0.0f))) << "equal: the second";
    EXPECT_FALSE(std::signbit(KXMaxf(-0.0f, 0.0f)));
    EXPECT_EQ(KXMinf(NAN, 3), 3);
    EXPECT_TRUE(std::isnan(KXMaxf(3, NAN)));
    EXPECT_EQ(KXMini(-2, 5), -2);
    EXPECT_EQ(KXMaxi(-2, 5), 5);

    const float clamps[][4] = {{5, 0, 10, 5}, {-1, 0, 10, 0}, {11, 0, 10, 10}, // value, low, high, expected
                               {1, 5, 2, 5},  {6, 5, 2, 2},   {NAN, 0, 10, 10}};
    for (const auto& [value, low, high, expected] : clamps) {
        float v = value;
        KXClampf(&v, low, high);
        EXPECT_EQ(v, expected) << value;
        if (int i = _KXTruncate(value); value == value) {
            KXClampi(&i, _KXTruncate(low), _KXTruncate(high));
            EXPECT_EQ(i, _KXTruncate(expected)) << value;
        }
    }
    KXClampf(nullptr, 0, 1);
    KXClampi(nullptr, 0, 1);

    const int powers[][2] = {{INT_MIN, 1},      {1, 1}, {2, 2}, {3, 4}, {256, 256}, {257, 512},
                             {INT_MAX, 1 << 30}};
    for (const auto& [n, power] : powers)
        EXPECT_EQ(KXNearestPowerOfTwo(n), power) << n;

    const std::pair<float, int> wholes[] = {
        {-1.9f, -1}, {1.9f, 1}, {NAN, 0}, {INFINITY, INT_MAX}, {-3e9f, INT_MIN}};
    for (const auto& [value, whole] : wholes)
        EXPECT_EQ(_KXTruncate(value), whole) << value;
}
} // namespace
