#include "util/RandomTrace.h"

#include <Kobaltrix/KXRandom.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <map>
#include <string>
#include <thread>

namespace {
using Numbers = std::vector<std::uint32_t>;
Numbers in(const KXRandomState& state) { return {state.a, state.b, state.c, state.d}; }

TEST(RandomGenerator, GivesThePublishedSequencesAndGoesOnFromStates) {
    KXRandomGenerator random(1234567); // by splitmix64 6457827717110365317 and 3203168211198807973
    EXPECT_EQ(in(random.state()), (Numbers{0xFB08FC85, 0x599ED017, 0x58540FA5, 0x2C73F084}));
    random.setState({1, 2, 3, 4});
    for (const unsigned expected : {641U, 1573767U, 3222811527U, 3517856514U, 836907274U, 4247214768U}) {
        KXRandomGenerator copy = random, other;
        other.setState(random.state());
        EXPECT_EQ((Numbers{random.number(), copy.number(), other.number()}), Numbers(3, expected));
    }
    // What is made of them: a change here would change every game that was saved or recorded.
    random.seed(7);
    EXPECT_EQ(random.range(-1000, 1000), -810);
    EXPECT_EQ(random.range(-2.5f, 1e9f), 56333600.0f);
    EXPECT_EQ(random.fraction(), 0.37418354f);
    random.setState({});
    EXPECT_EQ(in(random.state()), in(KXRandomGenerator(0).state()));
    EXPECT_NE(KXRandomSeed(), KXRandomSeed());
}

TEST(RandomGenerator, RangesAreEvenToTheirEnds) {
    KXRandomGenerator random(1);
    std::map<std::string, int> counts; // all of them thirds
    for (int i = 0; i < 12000; ++i) {
        // Of three quarters of all numbers, whoever lets some results have two numbers favours a third.
        const unsigned most = static_cast<unsigned>(random.range(INT_MIN, INT_MAX - (1 << 30))) + 0x80000000U;
        const unsigned all = static_cast<unsigned>(random.range(INT_MIN, INT_MAX)) / 0x55555556U;
        for (const auto& [name, number] :
             {std::pair("most", most >> 30), {"remainder", most % 3}, {"all", all}})
            ++counts[name + std::to_string(number)];
        ++counts["around" + std::to_string(random.range(1, -1))];
        ++counts["end" + std::to_string(random.range(INT_MAX - 2, INT_MAX))];
        EXPECT_EQ(random.range(INT_MIN, INT_MIN), INT_MIN);
    }
    EXPECT_EQ(counts.size(), 5U * 3U);
    for (const auto& [name, count] : counts)
        EXPECT_NEAR(count, 4000, 300) << name;
}

TEST(RandomGenerator, FloatsAndChancesKeepWithinTheirBounds) {
    KXRandomGenerator random(0);
    const float ends[][2] = {
        {-INFINITY, 3e38f}, {0, FLT_TRUE_MIN}, {-0.1f, 0.7f}, {0.7f, 0.7f}, {1, INFINITY}};
    std::map<float, int> times;
    for (int i = 0; i < 10000; ++i) {
        for (const auto& [low, high] : ends)
            for (const float value : {random.range(low, high), random.range(high, low)})
                ASSERT_TRUE(low <= value && value <= high && std::isfinite(value)) << low << " to " << high;
        for (const float probability : {-INFINITY, 0.0f, 0.7f, 1.0f, INFINITY})
            times[probability] -= random.chance(probability);
        const KXPoint point = random.pointIn({{10, 20}, {-5, 1}});
        EXPECT_TRUE(point.x >= 5 && point.x <= 10 && point.y >= 20 && point.y <= 21);
    }
    EXPECT_TRUE(times[1] + times[INFINITY] == 20000 && std::abs(times[0.7f] - 7000) < 200);
    random.setState({0, 1, 1, 0}); // its first number is 0
    EXPECT_EQ(random.chance(0), 0);
    EXPECT_EQ(times[0] + times[-INFINITY] + random.chance(NAN), 0);
    EXPECT_EQ(random.range(NAN, 2.0f) + random.range(2.0f, NAN), 0);
}

TEST(RandomGenerator, EachOrderAndEachItemComesUp) {
    KXRandomGenerator random(4);
    std::map<std::vector<int>, int> counts; // of orders, and of items alone
    for (int i = 0; i < 24000; ++i) {
        std::vector<int> items = {0, 1, 2, 3};
        i % 2 ? random.shuffle(items) : random.shuffle(items.data(), 4);
        ++counts[items];
        ++counts[{*(i % 2 ? random.pick(items) : random.pick(items.data(), 4))}];
    }
    EXPECT_EQ(counts.size(), 24U + 4U);
    for (const auto& [items, count] : counts)
        EXPECT_NEAR(count, items.size() == 1 ? 6000 : 1000, items.size() == 1 ? 300 : 150);
    std::vector<int> none;
    int one = 5, *const null = nullptr;
    random.shuffle(none), random.shuffle(&one, -1), random.shuffle(null, 3);
    EXPECT_TRUE(!random.pick(none) && !random.pick(&one, 0) && !random.pick(null, 3));
}

TEST(RandomTrace, SeesWhatIsDrawnAndSetsWhereGeneratorsBegin) {
    KXRandomGenerator last(9);
    const auto hashOf = [&] {
        std::vector<Numbers> begun;
        _KXRandomTrace trace;
        trace.begins = [&](KXRandomState& state) {
            begun.push_back(in(state));
            state = {1, 2, 3, 4};
        };
        _KXTraceOfRandom = &trace;
        std::srand(1);
        EXPECT_EQ(KXRandomGenerator(1234567).number(), 641U);
        std::thread([] { KXRandomGenerator(6).number(); }).join(); // another thread's are not seen
        KXRandomize(1, 6), KXRandomPercentChance(50), KXRandomGenerator(last).number();
        _KXTraceOfRandom = nullptr;
        EXPECT_TRUE(trace.numbers == 4 && begun.size() == 1 && begun[0][0] == 0xFB08FC85);
        return trace.hash;
    };
    const std::uint64_t hash = hashOf();
    EXPECT_EQ(hashOf(), hash);
    last.seed(10);
    EXPECT_NE(hashOf(), hash);
}
} // namespace
