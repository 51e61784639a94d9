#include <Kobaltrix/KXRandomGenerator.h>

#include "util/RandomTrace.h"

#include <Kobaltrix/KXRandom.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <map>
#include <set>
#include <thread>
#include <vector>

namespace {
std::array<std::uint32_t, 4> fields(const KXRandomState& state) {
    return {state.a, state.b, state.c, state.d};
}

TEST(RandomGenerator, GivesThePublishedSequences) {
    KXRandomGenerator random(1234567); // by splitmix64 6457827717110365317 and 3203168211198807973
    EXPECT_EQ(fields(random.state()), (std::array{0xFB08FC85U, 0x599ED017U, 0x58540FA5U, 0x2C73F084U}));
    random.setState({1, 2, 3, 4});
    for (const std::uint32_t expected : {641U, 1573767U, 3222811527U, 3517856514U, 836907274U, 4247214768U,
                                         3867114732U, 1355841295U, 495546011U, 621204420U})
        EXPECT_EQ(random.number(), expected);
    // And what is made of them: a change here would change every game that was saved or recorded.
    random.seed(7);
    EXPECT_EQ(random.range(-1000, 1000), -810);
    EXPECT_EQ(random.range(-2.5f, 1e9f), 56333600.0f);
    EXPECT_EQ(random.fraction(), 0.37418354f);
}

TEST(RandomGenerator, GoesOnFromAStateAndFromACopy) {
    KXRandomGenerator random(UINT64_MAX);
    random.number();
    const KXRandomState state = random.state();
    KXRandomGenerator copy = random, other;
    other.setState(state);
    for (int i = 0; i < 100; ++i) {
        const std::uint32_t number = random.number();
        EXPECT_TRUE(copy.number() == number && other.number() == number);
    }
    other.setState({});
    EXPECT_EQ(fields(other.state()), fields(KXRandomGenerator().state()));

    std::srand(3);
    const std::uint64_t seed = KXRandomSeed();
    EXPECT_NE(KXRandomSeed(), seed);
    std::srand(3);
    EXPECT_EQ(KXRandomSeed(), seed);
}

TEST(RandomGenerator, RangesAreEvenToTheirEnds) {
    KXRandomGenerator random(1);
    const int small[][2] = {{5, 5}, {-3, 3}, {3, -3}, {INT_MAX - 2, INT_MAX}, {INT_MIN, INT_MIN + 9}};
    for (const auto& [first, second] : small) {
        std::map<int, int> counts;
        const auto [lowest, highest] = std::minmax(first, second);
        const int width = highest - lowest + 1;
        for (int i = 0; i < 1000 * width; ++i)
            ++counts[random.range(first, second)];
        EXPECT_TRUE(counts.begin()->first == lowest && counts.rbegin()->first == highest);
        for (const auto& [number, count] : counts)
            EXPECT_NEAR(count, 1000, 150) << number;
    }
    // Three quarters of all numbers: whoever lets some results have two numbers favours a third of them.
    int parts[3] = {}, remainders[3] = {}, eighths[8] = {};
    for (int i = 0; i < 30000; ++i) {
        const auto number = static_cast<unsigned>(random.range(INT_MIN, INT_MAX - (1 << 30))) + 0x80000000U;
        ++parts[number >> 30];
        ++remainders[number % 3];
        ++eighths[static_cast<unsigned>(random.range(INT_MIN, INT_MAX)) >> 29];
    }
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(std::abs(parts[i] - 10000) < 500 && std::abs(remainders[i] - 10000) < 500) << i;
    for (const int count : eighths)
        EXPECT_NEAR(count, 3750, 300);
}

TEST(RandomGenerator, FloatsStayWithinTheirBounds) {
    KXRandomGenerator random(2);
    const float bounds[] = {-INFINITY,    -FLT_MAX, -1,       -0.1f,   0,
                            FLT_TRUE_MIN, 0.7f,     16777216, FLT_MAX, INFINITY};
    for (const float a : bounds)
        for (const float b : bounds) {
            double sum = 0;
            const auto finite = [](float bound) { return std::clamp(bound, -FLT_MAX, FLT_MAX); };
            const double low = finite(std::min(a, b)), width = finite(std::max(a, b)) - low;
            for (int i = 0; i < 1000; ++i) {
                const double value = random.range(a, b);
                ASSERT_TRUE(low <= value && value <= low + width) << a << " to " << b;
                sum += width > 0 ? (value - low) / width : 0.5;
            }
            EXPECT_NEAR(sum / 1000, 0.5, width > FLT_TRUE_MIN ? 0.05 : 0.1) << a << " to " << b;
        }
    EXPECT_EQ(random.range(NAN, 1.0f), 0);
    EXPECT_EQ(random.range(1.0f, NAN), 0);
    for (int i = 0; i < 1000; ++i) {
        const float fraction = random.fraction();
        EXPECT_TRUE(fraction >= 0 && fraction < 1 && std::fmod(fraction, 1.0f / (1 << 24)) == 0);
        const KXPoint point = random.pointIn({{10, 20}, {-5, 1}});
        EXPECT_TRUE(point.x >= 5 && point.x <= 10 && point.y >= 20 && point.y <= 21);
    }
}

TEST(RandomGenerator, ChanceIsAsOftenAsItSays) {
    KXRandomGenerator random(3);
    const std::pair<float, int> cases[] = {
        {-INFINITY, 0}, {0, 0}, {0.25f, 2500}, {0.999f, 9990}, {1, 10000}, {INFINITY, 10000}, {NAN, 0}};
    for (const auto& [probability, expected] : cases) {
        int times = 0;
        for (int i = 0; i < 10000; ++i)
            times -= random.chance(probability);
        EXPECT_NEAR(times, expected, expected % 10000 ? 150 : 0) << probability;
    }
    random.setState({0, 1, 1, 0}); // its first number is 0
    EXPECT_EQ(random.chance(0), 0);
}

TEST(RandomGenerator, EachOrderAndEachItemComesUp) {
    KXRandomGenerator random(4);
    std::map<std::vector<int>, int> orders;
    std::map<int, int> picked;
    for (int i = 0; i < 24000; ++i) {
        std::vector<int> items = {0, 1, 2, 3};
        random.shuffle(items);
        ++orders[items];
        int array[] = {0, 1, 2, 3};
        i % 2 ? random.shuffle(array) : random.shuffle(array, 4);
        ++orders[{array, array + 4}];
        picked[*random.pick(items)] += 1;
        picked[*random.pick(array, 4)] += 1;
    }
    EXPECT_EQ(orders.size(), 24U);
    for (const auto& [order, count] : orders)
        EXPECT_TRUE(std::ranges::is_permutation(order, std::array{0, 1, 2, 3}) &&
                    std::abs(count - 2000) < 200);
    for (const auto& [item, count] : picked)
        EXPECT_NEAR(count, 12000, 500) << item;
    EXPECT_EQ(picked.size(), 4U);

    const auto before = fields(random.state());
    std::vector<int> none;
    int one = 5;
    random.shuffle(none);
    random.shuffle(&one, -1);
    random.shuffle(static_cast<int*>(nullptr), 3);
    EXPECT_TRUE(!random.pick(none) && !random.pick(&one, 0) && !random.pick(static_cast<int*>(nullptr), 3));
    EXPECT_TRUE(random.index(0) == -1 && random.index(INT_MIN) == -1);
    EXPECT_EQ(fields(random.state()), before);
}

TEST(RandomTrace, SeesWhatIsDrawnAndSetsWhereGeneratorsBegin) {
    std::vector<KXRandomState> begun;
    const auto traced = [&begun](auto play) {
        _KXRandomTrace trace;
        trace.begins = [&begun](KXRandomState& state) { begun.push_back(state); };
        _KXTraceOfRandom = &trace;
        std::srand(1);
        play();
        _KXTraceOfRandom = nullptr;
        return std::pair(trace.numbers, trace.hash);
    };
    KXRandomGenerator before(9);
    const auto play = [before] {
        KXRandomGenerator own(5), copy = before;
        own.setState({1, 2, 3, 4});
        std::thread([] { KXRandomGenerator(6).number(); }).join(); // another thread's are not seen
        KXRandomize(1, 6);
        KXRandomPercentChance(50);
        own.chance(0.5f);
        copy.number();
    };
    const auto first = traced(play);
    EXPECT_EQ(first.first, 4U);
    ASSERT_EQ(begun.size(), 2U);
    EXPECT_EQ(fields(begun[0]), fields(KXRandomGenerator(5).state()));
    EXPECT_EQ(begun[1].d, 4U);
    EXPECT_EQ(traced(play), first);
    before.seed(10); // its number comes last
    EXPECT_NE(traced([&] {
                  play();
                  before.number();
              }).second,
              first.second);
    EXPECT_NE(traced([] {
                  std::rand();
                  KXRandomize(1, 6);
              }),
              traced([] { KXRandomize(1, 6); }));

    _KXRandomTrace replay;
    replay.begins = [](KXRandomState& state) { state = {1, 2, 3, 4}; };
    _KXTraceOfRandom = &replay;
    EXPECT_EQ(KXRandomGenerator(77).number(), 641U);
    _KXTraceOfRandom = nullptr;
}
} // namespace
