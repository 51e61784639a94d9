#include <Kobaltrix/KXVector3D.h>

#include <Kobaltrix/KXString.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {
using V = KXVector3D;
constexpr V xAxis = {1, 0, 0}, yAxis = {0, 1, 0}, zAxis = {0, 0, 1};

TEST(Vector3D, Arithmetic) {
    constexpr V a = {1, 2, 3}, b = {4, -5, 6};
    V c = a;
    EXPECT_TRUE(a + b == (V{5, -3, 9}) && (c += b) == a + b);
    EXPECT_TRUE(a - b == (V{-3, 7, -3}) && (c -= a) == b && -a == (V{-1, -2, -3}));
    EXPECT_TRUE(a * 2 == (V{2, 4, 6}) && -2 * a == (V{-2, -4, -6}) && (c *= 2) == (V{8, -10, 12}));
    EXPECT_TRUE(b / 2 == (V{2, -2.5f, 3}) && (c /= 4) == b / 2);
    EXPECT_STREQ(KXVector3DToString(c), "(2.000000, -2.500000, 3.000000)");
    for (const V& other : {V{0, 2, 3}, V{1, 0, 3}, V{1, 2, 0}})
        EXPECT_TRUE(a != other && !(a == other));
    EXPECT_FALSE(a != a);
    EXPECT_EQ(a.dot(b), 12);
    EXPECT_TRUE(a.cross(b) == (V{27, 6, -13}) && xAxis.cross(yAxis) == zAxis);
}

TEST(Vector3D, LengthAndDirection) {
    EXPECT_EQ((V{2, -3, 6}).length(), 7);
    EXPECT_TRUE((V{2, -3, 6}).normalized() == (V{2 / 7.0f, -3 / 7.0f, 6 / 7.0f}));
    EXPECT_TRUE((V{0, 0, 0}).normalized() == (V{0, 0, 0}));
    for (const float size : {1e-45f, 1e38f}) // whose squares leave the floats
        EXPECT_FLOAT_EQ((V{size, size, size}).normalized().y, 0.57735027f);
    EXPECT_FLOAT_EQ((V{1e38f, 1e38f, 1e38f}).length(), 1.7320508e38f);
    EXPECT_TRUE(std::isinf((V{3e38f, 3e38f, 0}).length()) && std::isnan((V{INFINITY, 1, 1}).normalized().x));
}

TEST(Vector3D, RotationsAreRightHandedInDegrees) {
    const V v = {1, 2, 3};
    EXPECT_TRUE(v.rotX(90) == (V{1, -3, 2}) && v.rotX(180) == (V{1, -2, -3}) && v.rotX(720) == v);
    EXPECT_TRUE(v.rotY(90) == (V{3, 2, -1}) && v.rotY(-90) == (V{-3, 2, 1}) && v.rotZ(270) == (V{2, -1, 3}));
    // Against the plain formula, through every octant and far beyond one turn.
    for (float degrees = -1000; degrees < 1000; degrees += 33.25f) {
        const double angle = degrees * M_PI / 180, c = std::cos(angle), s = std::sin(angle);
        EXPECT_NEAR(v.rotZ(degrees).x, 1 * c - 2 * s, 1e-5) << degrees;
        EXPECT_NEAR(v.rotZ(degrees).y, 1 * s + 2 * c, 1e-5) << degrees;
    }
    EXPECT_TRUE(std::isnan(v.rotX(INFINITY).y) && v.rotX(NAN).x == 1);
}
} // namespace
