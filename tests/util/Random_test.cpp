#include <Kobaltrix/KXRandom.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <set>

namespace {
TEST(Random, WholeNumbersFollowTheGeneratorsSequence) {
    EXPECT_EQ(KXRandomize(6, 5), 0);
    EXPECT_EQ(KXRandomize(INT_MAX, INT_MIN), 0);
    const int ranges[][2] = {{5, 5}, {3, 9}, {-9, -3}, {-4, 4}, {INT_MAX, INT_MAX}, {INT_MIN, INT_MIN + 9}};
    for (const auto& [min, max] : ranges)
        for (unsigned seed = 0; seed < 50; ++seed) {
            std::srand(seed);
            const int expected = std::rand() % (max - min + 1) + min;
            const int next = std::rand();
            std::srand(seed);
            EXPECT_EQ(KXRandomize(min, max), expected) << min << " to " << max;
            EXPECT_EQ(std::rand(), next); // one draw each
        }
}

TEST(Random, TheWidestRangesAreReachedEverywhere) {
    std::srand(1);
    std::set<unsigned> eighths;
    bool negativeOdd = false;
    for (int i = 0; i < 2000; ++i) {
        const int value = KXRandomize(INT_MIN, INT_MAX);
        eighths.insert(static_cast<unsigned>(value) >> 29);
        negativeOdd = negativeOdd || (value < 0 && value % 2);
        EXPECT_GE(KXRandomize(0, INT_MAX), 0);
        EXPECT_LE(KXRandomize(INT_MIN, -2), -2);
    }
    EXPECT_EQ(eighths.size(), 8u);
    EXPECT_TRUE(negativeOdd);
}

TEST(Random, FractionsStayWithinBounds) {
    std::srand(2);
    const float bounds[] = {-INFINITY, -FLT_MAX, -3e9f, -2.5f, -0.9999f, 0,        0.5f,
                            0.7f,      1.25f,    2048,  1e6f,  3e38f,    INFINITY, NAN};
    for (float min : bounds)
        for (float max : bounds)
            for (int i = 0; i < 100; ++i) {
                const float value = KXRandomizef(min, max);
                ASSERT_TRUE(min <= max ? min <= value && value <= max : value == 0)
                    << value << " from " << min << " to " << max;
            }
    // Bounds are rounded toward zero.
    const float rows[][2] = {{1.23456f, 1.2345f}, {-1.23456f, -1.2345f},    {0.00009f, 0},
                             {0.7f, 0.7f},        {8191.9995f, 8191.9995f}, {16777216, 16777216}};
    for (const auto& [bound, expected] : rows)
        EXPECT_EQ(KXRandomizef(bound, bound), expected);
}

TEST(Random, FractionsAreSpreadEvenly) {
    const float ranges[][2] = {{0, 1}, {0.5f, 0.6f}, {-2.5f, 1.25f}, {-0.9f, 0.9f}, {-3e38f, 3e38f}};
    std::srand(3);
    for (const auto& [min, max] : ranges) {
        int tenths[10] = {};
        const double width = static_cast<double>(max) - min;
        for (int i = 0; i < 5000; ++i)
            ++tenths[static_cast<int>((static_cast<double>(KXRandomizef(min, max)) - min) / width * 9.999)];
        for (int count : tenths)
            EXPECT_NEAR(count, 500, 120) << min << " to " << max;
    }
    // Every step of a small range comes up, both ends included; uneven ends stand for the step beyond them.
    std::set<float> drawn, uneven;
    for (int i = 0; i < 500; ++i) {
        drawn.insert(KXRandomizef(-0.0002f, 0.0002f));
        uneven.insert(KXRandomizef(0.00005f, 0.0002f));
        uneven.insert(KXRandomizef(-0.0001f, -0.00005f));
    }
    EXPECT_EQ(drawn, (std::set<float>{-0.0002f, -0.0001f, 0, 0.0001f, 0.0002f}));
    EXPECT_EQ(uneven, (std::set<float>{-0.0001f, -0.00005f, 0.00005f, 0.0001f, 0.0002f}));
}

TEST(Random, PercentChanceDrawsOneOf101) {
    std::set<int> outcomes;
    for (unsigned seed = 0; seed < 2000; ++seed) {
        std::srand(seed);
        const int outcome = std::rand() % 101;
        outcomes.insert(outcome);
        for (int percent : {INT_MIN, -1, 0, 1, 50, 100, 101, INT_MAX}) {
            std::srand(seed);
            const bool expected = percent > 100 || (percent > 0 && outcome >= 101 - percent);
            ASSERT_EQ(KXRandomPercentChance(percent), expected ? -1 : 0) << percent << " " << outcome;
        }
    }
    EXPECT_EQ(outcomes.size(), 101u); // the failure at 100 percent was among them
}

TEST(Random, Directions) {
    constexpr KXDirection cardinals[] = {KXDirectionUp, KXDirectionLeft, KXDirectionRight, KXDirectionDown};
    std::set<int> drawn;
    for (unsigned seed = 0; seed < 200; ++seed) {
        std::srand(seed);
        const int number = std::rand();
        std::srand(seed);
        EXPECT_EQ(KXRandomCardinalDirection(), cardinals[number % 4]);
        drawn.insert(KXRandomDirection());
    }
    EXPECT_EQ(drawn, (std::set<int>{-1, 0, 1, 2, 3, 4, 5, 6, 7}));
}
} // namespace
