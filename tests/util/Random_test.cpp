#include "util/RandomTrace.h"

#include <Kobaltrix/KXRandom.h>

#include <gtest/gtest.h>

#include <array>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <set>
#include <utility>

namespace {
TEST(Random, DrawsFollowTheGeneratorsSequence) {
    const int ranges[][2] = {{5, 5}, {3, 9}, {-9, -3}, {-4, 4}, {INT_MAX, INT_MAX}, {INT_MIN, INT_MIN + 9}};
    constexpr KXDirection cardinals[] = {KXDirectionUp, KXDirectionLeft, KXDirectionRight, KXDirectionDown};
    std::set<int> directions;
    for (unsigned seed = 0; seed < 2000; ++seed) {
        std::srand(seed);
        const int number = std::rand(), next = std::rand();
        const auto drawn = [seed](auto draw) {
            std::srand(seed);
            return draw();
        };
        for (const auto& [min, max] : ranges) {
            EXPECT_EQ(drawn([&] { return KXRandomize(min, max); }), number % (max - min + 1) + min);
            EXPECT_EQ(std::rand(), next); // one draw each
        }
        for (const int percent : {INT_MIN, 0, 1, 50, 100, 101, INT_MAX}) {
            const bool expected = percent > 100 || (percent > 0 && number % 101 >= 101 - percent);
            ASSERT_EQ(drawn([&] { return KXRandomPercentChance(percent); }), expected ? -1 : 0) << percent;
        }
        EXPECT_EQ(drawn(KXRandomCardinalDirection), cardinals[number % 4]);
        directions.insert(KXRandomDirection());
    }
    EXPECT_EQ(directions, (std::set<int>{-1, 0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(KXRandomize(6, 5) | KXRandomize(INT_MAX, INT_MIN), 0);
    std::set<unsigned> eighths; // of the widest range, each with odd numbers and even ones
    for (int i = 0; i < 2000; ++i) {
        const auto value = static_cast<unsigned>(KXRandomize(INT_MIN, INT_MAX));
        eighths.insert(value >> 29 | (value & 1) << 3);
        EXPECT_TRUE(KXRandomize(0, INT_MAX) >= 0 && KXRandomize(INT_MIN, -2) <= -2);
    }
    EXPECT_EQ(eighths.size(), 16u);
}

TEST(Random, RecordingsDrawTheSameOnEverySystem) {
    // The first three and the 1000th after srand() of the GNU C library.
    const std::pair<unsigned, std::array<int, 4>> recorded[] = {
        {0, {1804289383, 846930886, 1681692777, 1143565421}},
        {1, {1804289383, 846930886, 1681692777, 1143565421}},
        {0x80000000, {1336741213, 1210407648, 1447044896, 193932953}},
        {0xFFFFFFFF, {254925627, 1205188300, 366127624, 1892540048}}};
    _KXRandomTrace trace;
    _KXTraceOfRandom = &trace;
    for (const auto& [seed, numbers] : recorded) {
        trace.instead.emplace(seed);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(KXRandomize(0, INT_MAX), numbers[static_cast<std::size_t>(i)]) << seed;
        for (int i = 3; i < 999; ++i)
            KXRandomDirection();
        EXPECT_EQ(KXRandomPercentChance(50) != 0, numbers[3] % 101 > 50) << seed;
    }
    EXPECT_EQ(trace.numbers, 4000u);
    _KXTraceOfRandom = nullptr;
}

TEST(Random, FractionsStayWithinBoundsAndAreSpreadEvenly) {
    const float bounds[] = {-INFINITY, -FLT_MAX, -2.5f, -0.9999f, 0, 0.7f, 1.25f, 2048, 3e38f, INFINITY, NAN};
    for (float min : bounds)
        for (float max : bounds)
            for (int i = 0; i < 100; ++i) {
                const float value = KXRandomizef(min, max);
                ASSERT_TRUE(min <= max ? min <= value && value <= max : value == 0) << min << " to " << max;
            }
    // Bounds are rounded toward zero.
    for (const auto& [bound, rounded] : {std::pair(1.23456f, 1.2345f), std::pair(-1.23456f, -1.2345f),
                                         std::pair(0.7f, 0.7f), std::pair(8191.9995f, 8191.9995f)})
        EXPECT_EQ(KXRandomizef(bound, bound), rounded);
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
        uneven.insert({KXRandomizef(0.00005f, 0.0002f), KXRandomizef(-0.0001f, -0.00005f)});
    }
    EXPECT_EQ(drawn, (std::set<float>{-0.0002f, -0.0001f, 0, 0.0001f, 0.0002f}));
    EXPECT_EQ(uneven, (std::set<float>{-0.0001f, -0.00005f, 0.00005f, 0.0001f, 0.0002f}));
}
} // namespace
