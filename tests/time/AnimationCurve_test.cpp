#include "time/AnimationCurve.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {
TEST(AnimationCurve, EndsAndMiddleOfEveryType) {
    struct {
        int type;
        float quarter, half, threeQuarters;
    } const rows[] = {
        {0, 0.25f, 0.5f, 0.75f},
        {1, 0.0655469f, 0.216875f, 0.509765f}, // ease in
        {2, 0.4135938f, 0.72875f, 0.929531f},  // ease out
        {3, 0.175234f, 0.516875f, 0.850078f},  // ease in and out
        {4, 0.25f, 0.5f, 0.75f},
        {-1, 0.25f, 0.5f, 0.75f},
    };
    for (const auto& row : rows) {
        const auto type = static_cast<KXAnimationCurveType>(row.type);
        EXPECT_EQ(KXAnimationCurve(type, 0), 0) << row.type;
        EXPECT_EQ(KXAnimationCurve(type, 1), 1) << row.type;
        EXPECT_NEAR(KXAnimationCurve(type, 0.25f), row.quarter, 2e-6f) << row.type;
        EXPECT_NEAR(KXAnimationCurve(type, 0.5f), row.half, 2e-6f) << row.type;
        EXPECT_NEAR(KXAnimationCurve(type, 0.75f), row.threeQuarters, 2e-6f) << row.type;
        KXAnimationCurve(type, 1e30f);
        EXPECT_TRUE(std::isnan(KXAnimationCurve(type, NAN))) << row.type;
    }
    EXPECT_EQ(KXAnimationCurve(KXAnimationCurveTypeLinear, 1.5f), 1.5f);
    EXPECT_FLOAT_EQ(KXAnimationCurve(KXAnimationCurveTypeEaseIn, 2), 6.05f); // not clamped
}

TEST(AnimationCurve, BezierCurve) {
    const KXPoint p[] = {{10, 1}, {20, 5}, {-30, 9}, {40, 13}};
    const KXPoint middle = KXBezierCurve(p[0], p[1], p[2], p[3], 0.5f);
    const KXPoint beyond = KXBezierCurve(p[0], p[1], p[2], p[3], 2);
    EXPECT_EQ(middle.x, 2.5f); // (10 + 3 * 20 - 3 * 30 + 40) / 8
    EXPECT_EQ(middle.y, 7);    // evenly spaced control points make a line
    EXPECT_EQ(beyond.x, 790);  // -10 + 6 * 20 + 12 * 30 + 8 * 40
    EXPECT_EQ(beyond.y, 25);
    EXPECT_EQ(_KXAnimationCurve({7, 0}, {-7, 1}, 0.5f), 0.5f);
}
} // namespace
