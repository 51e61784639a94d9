#include "core/ground/LogicClock.h"

#include <Kobaltrix/KXInterpolation.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cfloat>
#include <climits>
#include <cmath>
#include <string>
#include <tuple>

namespace {
constexpr auto linear = KXAnimationCurveTypeLinear;

// Game time with 4 steps per second: a run of one second has the values of four quarters, and a fifth step
// ends it.
struct ValueInterpolater : testing::Test {
    ValueInterpolater() { _KXLogicSpeed = 4; }
    ~ValueInterpolater() override { _KXLogicSpeed = 1; }
};

// The values of the next steps in quarters, one digit each; "!" follows a step that finished a run.
std::string trace(KXValueInterpolater& interpolater, std::ptrdiff_t steps) {
    std::string text;
    for (; steps > 0; --steps) {
        const float value = interpolater.interpolate();
        EXPECT_EQ(interpolater.value(), value);
        text += std::to_string(static_cast<int>(value / 25)) + (interpolater.done() ? "!" : "");
    }
    return text;
}

// Of a copy, which goes on by itself.
void expectTrace(KXValueInterpolater interpolater, const std::string& expected) {
    EXPECT_EQ(trace(interpolater, std::ranges::count_if(expected, isdigit)), expected);
}

TEST_F(ValueInterpolater, RunsPausesAndRepeats) {
    // Step ticks, repeats, their delay, whether to come back, the pause before it, and the values.
    const std::tuple<int, int, int, int, int, const char*> cases[] = {
        {1, 0, 0, 0, 0, "12344!4!4!4!"},
        {1, -5, 0, 0, 0, "12344!4!4!4!"},
        {2, 0, 0, 0, 0, "022444!4!4!4!"},
        {1, 1, 3, 0, 0, "12344!4412344!4!4!"},
        {1, 2, 1, 0, 9, "12344!12344!12344!4!"}, // a delay of 1 is none, like one of 0
        {1, -1, 2, 0, 0, "12344!412344!412344!41"},
        {1, 0, 0, 1, 0, "1234432100!0!0!"},
        {1, 0, 0, -1, 3, "123444432100!0!0!"},
        {1, 1, 2, 1, 2, "12344432100!012344432100!0!0!"},
        {1, INT_MAX, 0, 0, 0, "12344!12344!1"}};
    for (const auto& [stepTicks, repeats, delay, pingPong, pause, values] : cases)
        expectTrace({stepTicks, 1, 0, 0, 100, repeats, delay, pingPong, pause, linear}, values);
}

TEST_F(ValueInterpolater, ResetStartsOverFromEveryState) {
    const auto resetAfter = [](int steps, KXValueInterpolater interpolater) {
        trace(interpolater, steps);
        const float before = interpolater.value();
        interpolater.reset();
        EXPECT_EQ(interpolater.value(), before) << steps;
        EXPECT_EQ(interpolater.done(), 0) << steps;
        return interpolater;
    };
    // Way out, pause at the far end, way back, pause before the repeat, after the end.
    for (int steps : {0, 3, 6, 8, 13, 16, 40})
        expectTrace(resetAfter(steps, {1, 1, 0, 0, 100, 1, 4, 1, 2, linear}),
                    "12344432100!00012344432100!0!0!0!0!");
    // The count of ticks to the next change starts over too; and what ran for ever gets an end.
    expectTrace(resetAfter(3, {2, 1, 0, 0, 100, 0, 0, 0, 0, linear}), "222444!");
    expectTrace(resetAfter(6, {1, 1, 0, 0, 100, -1, 0, 0, 0, linear}), "12344!4!4!4!");
}

TEST_F(ValueInterpolater, ByDefaultEasesFrom100To5ForEver) {
    _KXLogicSpeed = 60;
    KXValueInterpolater interpolater;
    for (int run = 0; run < 3; ++run) {
        EXPECT_NEAR(interpolater.value(), run ? 5 : 100, 0.1f);
        trace(interpolater, 30);
        EXPECT_NEAR(interpolater.value(), 100 - 95 * 0.516875f, 1e-3f);
        trace(interpolater, 30);
        EXPECT_EQ(interpolater.done(), 0); // a step more than the time has
        trace(interpolater, 1);
        EXPECT_EQ(interpolater.done(), -1);
    }
}

TEST_F(ValueInterpolater, OddArguments) {
    // Without time the end is reached at once, as is a distance that no float holds; with stepTicks below 1
    // game time stands still. Step ticks, duration, start, end, the value after one step, and whether it is
    // done after three.
    const float rows[][6] = {
        {1, 0, 100, 5, 5, -1},    {1, NAN, 100, 5, 5, -1},    {1, INFINITY, 100, 5, 100, 0},
        {1, -1, 100, 5, 100, -1}, {1, 1e-30f, 0, 10, 10, -1}, {0, 1, 0, 10, 0, 0},
        {-1, 1, 0, 10, 0, 0},     {1, 0.5f, NAN, 10, 10, -1}, {1, 1, -FLT_MAX, FLT_MAX, FLT_MAX, 0}};
    for (const auto& [stepTicks, duration, start, end, first, done] : rows) {
        KXValueInterpolater interpolater(static_cast<int>(stepTicks), duration, NAN, start, end, 0, -1, 0,
                                         INT_MIN, KXAnimationCurveTypeEaseIn);
        EXPECT_EQ(interpolater.interpolate(), first) << duration;
        interpolater.interpolate();
        interpolater.interpolate();
        EXPECT_EQ(interpolater.done(), done) << duration;
    }
}
} // namespace
