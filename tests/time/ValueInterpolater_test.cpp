#include "core/LogicClock.h"

#include <Kobaltrix/KXInterpolation.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <string>

namespace {
constexpr auto linear = KXAnimationCurveTypeLinear;

// Game time with 4 steps per second: a run of one second has the values of four quarters, and a fifth step
// ends it.
struct ValueInterpolater : testing::Test {
    ValueInterpolater() { _KXLogicSpeed = 4; }
    ~ValueInterpolater() override { _KXLogicSpeed = 1; }
};

// The values of the next steps in quarters, one digit each; "!" follows a step that finished a run.
std::string trace(KXValueInterpolater& interpolater, int steps) {
    std::string text;
    for (int i = 0; i < steps; ++i) {
        const float value = interpolater.interpolate();
        EXPECT_EQ(interpolater.value(), value);
        text += std::to_string(static_cast<int>(value / 25)) + (interpolater.done() ? "!" : "");
    }
    return text;
}

void expectTrace(KXValueInterpolater& interpolater, const std::string& expected) {
    const auto steps = expected.size() - std::count(expected.begin(), expected.end(), '!');
    EXPECT_EQ(trace(interpolater, static_cast<int>(steps)), expected);
}

TEST_F(ValueInterpolater, RunsPausesAndRepeats) {
    struct {
        int stepTicks, repeatCount, repeatDelay, pingPong, pause;
        const char* expected;
    } const rows[] = {
        {1, 0, 0, 0, 0, "12344!4!4!4!4!"},          {1, -5, 0, 0, 0, "12344!4!4!4!4!"},
        {2, 0, 0, 0, 0, "022444!4!4!4!"},           {1, 1, 0, 0, 0, "12344!12344!4!4!"},
        {1, 1, 3, 0, 0, "12344!4412344!4!4!"},      {1, 2, 1, 0, 9, "12344!12344!12344!4!"},
        {1, -1, 2, 0, 0, "12344!412344!412344!41"}, {1, 0, 0, 1, 0, "1234432100!0!0!"},
        {1, 0, 0, -1, 3, "123444432100!0!0!"},      {1, 1, 2, 1, 2, "12344432100!012344432100!0!0!"},
        {1, INT_MAX, 0, 0, 0, "12344!12344!1"},
    };
    for (const auto& row : rows) {
        KXValueInterpolater interpolater(row.stepTicks, 1, 0, 0, 100, row.repeatCount, row.repeatDelay,
                                         row.pingPong, row.pause, linear);
        expectTrace(interpolater, row.expected);
    }
}

TEST_F(ValueInterpolater, ResetStartsOverFromEveryState) {
    // Way out, pause at the far end, way back, pause before the repeat, after the end.
    for (int steps : {0, 3, 6, 8, 13, 16, 40}) {
        KXValueInterpolater interpolater(1, 1, 0, 0, 100, 1, 4, 1, 2, linear);
        trace(interpolater, steps);
        const float before = interpolater.value();
        interpolater.reset();
        EXPECT_EQ(interpolater.value(), before) << steps;
        EXPECT_EQ(interpolater.done(), 0) << steps;
        KXValueInterpolater copy = interpolater;
        expectTrace(interpolater, "12344432100!00012344432100!0!0!0!0!");
        expectTrace(copy, "12344432100!000"); // a copy goes on by itself
    }
    KXValueInterpolater slow(2, 1, 0, 0, 100, 0, 0, 0, 0, linear);
    expectTrace(slow, "022");
    slow.reset();
    expectTrace(slow, "222444!"); // the count of ticks to the next change starts over, too
    KXValueInterpolater endless(1, 1, 0, 0, 100, -1, 0, 0, 0, linear);
    expectTrace(endless, "12344!1");
    endless.reset();
    expectTrace(endless, "12344!4!4!4!"); // the reset gave it an end
}

TEST_F(ValueInterpolater, TheSixtyFirstStepReachesTheEnd) {
    _KXLogicSpeed = 60;
    for (float end : {10.0f, -10.0f}) {
        KXValueInterpolater interpolater(1, 1, 0, 0, end, 0, 0, 0, 0, linear);
        for (int i = 0; i < 60; ++i)
            interpolater.interpolate();
        EXPECT_LT(std::fabs(interpolater.value()), 10);
        EXPECT_NEAR(interpolater.value(), end, 1e-5f);
        EXPECT_EQ(interpolater.done(), 0);
        EXPECT_EQ(interpolater.interpolate(), end);
        EXPECT_EQ(interpolater.done(), -1);
    }
}

TEST_F(ValueInterpolater, ByDefaultEasesFrom100To5ForEver) {
    _KXLogicSpeed = 60;
    KXValueInterpolater interpolater;
    EXPECT_EQ(interpolater.value(), 100);
    for (int run = 0; run < 3; ++run) {
        trace(interpolater, 30);
        EXPECT_NEAR(interpolater.value(), 100 - 95 * 0.516875f, 1e-3f);
        trace(interpolater, 31);
        EXPECT_NEAR(interpolater.value(), 5, 0.1f);
        EXPECT_EQ(interpolater.done(), -1);
    }
    EXPECT_GT(interpolater.interpolate(), 99);
}

TEST_F(ValueInterpolater, OddArguments) {
    struct {
        int stepTicks;
        float duration, start, end;
        float first; // value after one step
        int done;    // after three
    } const rows[] = {
        {1, 0, 100, 5, 5, -1}, // no time at all
        {1, NAN, 100, 5, 5, -1},
        {1, INFINITY, 100, 5, 100, 0},
        {1, -1, 100, 5, 100, -1},
        {1, 1e-30f, 0, 10, 10, -1},
        {0, 1, 0, 10, 0, 0}, // game time stands still
        {-1, 1, 0, 10, 0, 0},
        {1, 0.5f, NAN, 10, 10, -1},
        {1, 1, -FLT_MAX, FLT_MAX, FLT_MAX, 0}, // a distance no float holds is covered at once
    };
    for (const auto& row : rows) {
        KXValueInterpolater interpolater(row.stepTicks, row.duration, NAN, row.start, row.end, 0, -1, 0,
                                         INT_MIN, linear);
        EXPECT_EQ(interpolater.interpolate(), row.first) << row.duration;
        interpolater.interpolate();
        interpolater.interpolate();
        EXPECT_EQ(interpolater.done(), row.done) << row.duration;
    }
    KXValueInterpolater eased(1, 0, 0, 100, 5, 0, 0, 0, 0, KXAnimationCurveTypeEaseInOut);
    EXPECT_EQ(eased.interpolate(), 5); // also where the curve's own arithmetic has no answer
}
} // namespace
