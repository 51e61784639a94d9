#include "time/AnimationCurve.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {
TEST(AnimationCurve, EndsMiddleAndBeyondOfEveryType) {
    // The type, and the values at a quarter, at half of the way and at twice of it. Unknown types are linear.
    const float rows[][4] = {{0, 0.25f, 0.5f, 2},
                             {1, 0.0655469f, 0.216875f, 6.05f},
                             {2, 0.4135938f, 0.72875f, -0.34f},
                             {3, 0.175234f, 0.516875f, -3.73f},
                             {-1, 0.25f, 0.5f, 2}};
    for (const auto& [number, quarter, half, twice] : rows) {
        const auto type = static_cast<KXAnimationCurveType>(static_cast<int>(number));
        const float points[][2] = {{0, 0}, {0.25f, quarter}, {0.5f, half}, {1, 1}, {2, twice}};
        for (const auto& [t, eased] : points)
            EXPECT_NEAR(KXAnimationCurve(type, t), eased, t == 0 || t == 1 ? 0 : 2e-6f) << number << ' ' << t;
        EXPECT_TRUE(std::isnan(KXAnimationCurve(type, NAN))) << number;
    }
    // 790 = -10 + 6 * 20 + 12 * 30 + 8 * 40; evenly spaced control points make a line.
    const KXPoint beyond = KXBezierCurve({10, 1}, {20, 5}, {-30, 9}, {40, 13}, 2);
    EXPECT_EQ(beyond.x, 790);
    EXPECT_EQ(beyond.y, 25);
}
} // namespace
