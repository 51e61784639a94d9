#include <Kobaltrix/KXVector3D.h>

#include <Kobaltrix/KXString.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {
constexpr KXVector3D xAxis = {1, 0, 0}, yAxis = {0, 1, 0}, zAxis = {0, 0, 1};

TEST(Vector3D, Arithmetic) {
    constexpr KXVector3D a = {1, 2, 3}, b = {4, -5, 6};
    EXPECT_TRUE(a + b == (KXVector3D{5, -3, 9}));
    EXPECT_TRUE(a - b == (KXVector3D{-3, 7, -3}));
    EXPECT_TRUE(a * 2 == (KXVector3D{2, 4, 6}));
    EXPECT_TRUE(-2 * a == (KXVector3D{-2, -4, -6}));
    EXPECT_TRUE(-a == (KXVector3D{-1, -2, -3}));
    EXPECT_TRUE(b / 2 == (KXVector3D{2, -2.5f, 3}));
    KXVector3D c = a;
    EXPECT_EQ(&(c += b), &c);
    EXPECT_TRUE(c == (KXVector3D{5, -3, 9}));
    EXPECT_TRUE((c -= a) == b);
    EXPECT_TRUE((c *= 2) == (KXVector3D{8, -10, 12}));
    EXPECT_TRUE((c /= 4) == (KXVector3D{2, -2.5f, 3}));
    EXPECT_STREQ(KXVector3DToString(c), "(2.000000, -2.500000, 3.000000)");
    for (const KXVector3D& other : {KXVector3D{0, 2, 3}, KXVector3D{1, 0, 3}, KXVector3D{1, 2, 0}})
        EXPECT_TRUE(a != other && !(a == other));
    EXPECT_FALSE(a != a);
    EXPECT_EQ(a.dot(b), 12);
    EXPECT_TRUE(a.cross(b) == (KXVector3D{27, 6, -13}));
    EXPECT_TRUE(xAxis.cross(yAxis) == zAxis);
    EXPECT_EQ((KXVector3D{2, -3, 6}).length(), 7);
    EXPECT_FLOAT_EQ((KXVector3D{1e38f, 1e38f, 1e38f}).length(), 1.7320508e38f);
    EXPECT_FLOAT_EQ((KXVector3D{3e-40f, 4e-40f, 0}).length(), 5e-40f);
    EXPECT_TRUE(std::isinf((KXVector3D{3e38f, 3e38f, 3e38f}).length()));
}

TEST(Vector3D, Normalized) {
    EXPECT_TRUE((KXVector3D{2, -3, 6}).normalized() == (KXVector3D{2 / 7.0f, -3 / 7.0f, 6 / 7.0f}));
    EXPECT_TRUE((KXVector3D{0, 0, 0}).normalized() == (KXVector3D{0, 0, 0}));
    for (const float size : {1e-45f, 1e-40f, 3e38f}) // where squares, or the length itself, leave the floats
        EXPECT_FLOAT_EQ((KXVector3D{size, size, size}).normalized().y, 0.57735027f);
    EXPECT_TRUE(std::isnan((KXVector3D{INFINITY, 1, 1}).normalized().x));
}

TEST(Vector3D, RotationsAreRightHandedInDegrees) {
    EXPECT_TRUE(yAxis.rotX(90) == zAxis);
    EXPECT_TRUE(zAxis.rotY(90) == xAxis);
    EXPECT_TRUE(xAxis.rotZ(90) == yAxis);
    const KXVector3D v = {1, 2, 3};
    EXPECT_TRUE(v.rotX(180) == (KXVector3D{1, -2, -3}));
    EXPECT_TRUE(v.rotY(-90) == (KXVector3D{-3, 2, 1}));
    EXPECT_TRUE(v.rotZ(270) == (KXVector3D{2, -1, 3}));
    EXPECT_TRUE(v.rotX(720) == v);

    // Against the plain formula, through every octant and far beyond one turn.
    for (float degrees = -1000; degrees < 1000; degrees += 33.25f) {
        const double angle = degrees * M_PI / 180, c = std::cos(angle), s = std::sin(angle);
        EXPECT_NEAR(v.rotZ(degrees).x, 1 * c - 2 * s, 1e-5) << degrees;
        EXPECT_NEAR(v.rotZ(degrees).y, 1 * s + 2 * c, 1e-5) << degrees;
    }
    EXPECT_TRUE(std::isnan(v.rotX(INFINITY).y));
    EXPECT_EQ(v.rotX(NAN).x, 1);
}
} // namespace
