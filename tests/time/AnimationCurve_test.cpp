#include "time/AnimationCurve.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {
TEST(AnimationCurve, EndsAndMiddleOfEveryType) {
    // The type, and the values at a quarter and at half of the way. Unknown types are linear.
    const float rows[][3] = {{0, 0.25f, 0.5f},          {1, 0.0655469f, 0.216875f}, {2, 0.4135938f, 0.72875f},
                             {3, 0.175234f, 0.516875f}, {4, 0.25f, 0.5f},           {-1, 0.25f, 0.5f}};
    for (const auto& [number, quarter, half] : rows) {
        const auto type = static_cast<KXAnimationCurveType>(static_cast<int>(number));
        EXPECT_EQ(KXAnimationCurve(type, 0), 0) << number;
        EXPECT_EQ(KXAnimationCurve(type, 1), 1) << number;
        EXPECT_NEAR(KXAnimationCurve(type, 0.25f), quarter, 2e-6f) << number;
        EXPECT_NEAR(KXAnimationCurve(type, 0.5f), half, 2e-6f) << number;
        EXPECT_TRUE(std::isnan(KXAnimationCurve(type, NAN))) << number;
    }
    EXPECT_EQ(KXAnimationCurve(KXAnimationCurveTypeLinear, 1.5f), 1.5f);
    EXPECT_FLOAT_EQ(KXAnimationCurve(KXAnimationCurveTypeEaseIn, 2), 6.05f); // not clamped
}

TEST(AnimationCurve, BezierCurve) {
    // 790 = -10 + 6 * 20 + 12 * 30 + 8 * 40; evenly spaced control points make a line.
    const KXPoint beyond = KXBezierCurve({10, 1}, {20, 5}, {-30, 9}, {40, 13}, 2);
    EXPECT_EQ(beyond.x, 790);
    EXPECT_EQ(beyond.y, 25);
    EXPECT_EQ(_KXAnimationCurve({7, 0}, {-7, 1}, 0.5f), 0.5f);
}
} // namespace
