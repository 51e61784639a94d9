#include "core/ground/LogicClock.h"

#include <Kobaltrix/KXTween.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cfloat>
#include <climits>
#include <cmath>
#include <string>
#include <utility>

namespace {
struct Tween : testing::Test {
    ~Tween() override { _KXLogicSpeed = 1; }
};

KXEase ease(int number) { return static_cast<KXEase>(number); }

TEST_F(Tween, EveryCurveGoesFrom0To1InItsManner) {
    // Of each three: in at a quarter and at half of the time.
    const float in[][2] = {{1 / 16.0f, 0.25f},         {1 / 64.0f, 0.125f},     {1 / 256.0f, 0.0625f},
                           {1 / 1024.0f, 0.03125f},    {0.0761205f, 0.292893f}, {-0.0641366f, -0.0876975f},
                           {-0.0045522f, -0.0151515f}, {0.0273438f, 0.234375f}};
    for (int number = KXEaseLinear; number <= KXEaseInOutBounce; ++number) {
        const int curve = (number - 1) / 3, manner = number ? (number - 1) % 3 : -1;
        const bool leavesItsRange = curve == 5 || curve == 6;
        float before = 0;
        for (int i = 0; i <= 1024; ++i) {
            const float t = static_cast<float>(i) / 1024, eased = KXEased(ease(number), t);
            if (!leavesItsRange) {
                EXPECT_TRUE(eased >= 0 && eased <= 1) << number << ' ' << t;
                EXPECT_TRUE(curve == 7 || eased >= before) << number << ' ' << t;
            }
            EXPECT_NEAR(eased, before, 0.03f) << number << " jumps at " << t;
            before = eased;
            if (manner == 0) {
                EXPECT_NEAR(KXEased(ease(number + 1), 1 - t), 1 - eased, 1e-6f) << number;
                EXPECT_NEAR(KXEased(ease(number + 2), t / 2), eased / 2, 1e-6f) << number;
            } else if (manner != 1) {
                EXPECT_NEAR(KXEased(ease(number), 1 - t), 1 - eased, 1e-6f) << number;
            }
        }
        for (float t : {0.0f, -1.0f, -INFINITY, NAN})
            EXPECT_EQ(KXEased(ease(number), t), 0) << number;
        for (float t : {1.0f, 2.0f, INFINITY})
            EXPECT_EQ(KXEased(ease(number), t), 1) << number;
        if (manner == 0) {
            EXPECT_NEAR(KXEased(ease(number), 0.25f), in[curve][0], 1e-5f) << number;
            EXPECT_NEAR(KXEased(ease(number), 0.5f), in[curve][1], 1e-5f) << number;
        }
    }
    for (int none : {-1, KXEaseInOutBounce + 1, INT_MAX, INT_MIN})
        EXPECT_EQ(KXEased(ease(none), 0.3f), 0.3f);
}

TEST_F(Tween, EndsExactlyAtTheEndWithTheStepThatItsTimeSays) {
    for (unsigned speed : {1, 24, 30, 50, 60, 75, 90, 120, 144, 165, 240, 1000})
        for (float seconds : {0.0f, 0.1f, 0.26f, 1 / 3.0f, 1.0f, 7.77f})
            for (int number = KXEaseLinear; number <= KXEaseInOutBounce; ++number) {
                _KXLogicSpeed = speed;
                KXTween tween({.from = -3, .to = 91.2f, .seconds = seconds, .ease = ease(number)});
                EXPECT_EQ(tween.value(), -3);
                const int steps =
                    std::max(1, static_cast<int>(std::lround(static_cast<double>(seconds) * speed)));
                for (int step = 1; step < steps; ++step) {
                    tween.step();
                    ASSERT_TRUE(!tween.done() && !tween.arrived() && tween.progress() < 1)
                        << speed << ' ' << step;
                }
                EXPECT_EQ(tween.step(), 91.2f) << number << ' ' << speed << ' ' << seconds;
                EXPECT_TRUE(tween.done() && tween.arrived() && tween.progress() == 1);
                EXPECT_EQ(tween.step(), 91.2f);
                EXPECT_TRUE(tween.done() && !tween.arrived());
            }
}

// The values of the next steps at four steps a second, in quarters; "," follows an arrival, "!" the end.
std::string trace(KXTween& tween, int steps) {
    std::string text;
    for (; steps > 0; --steps) {
        const float value = tween.step();
        EXPECT_EQ(value, tween.value());
        text += std::to_string(static_cast<int>(value * 4)) + (tween.arrived() ? "," : "") +
                (tween.done() ? "!" : "");
    }
    return text;
}

TEST_F(Tween, WaitsReturnsAndRepeats) {
    _KXLogicSpeed = 4;
    const std::pair<KXTweenSettings, const char*> rows[] = {
        {{}, "1234,!4!4!"},
        {{.repeats = 1}, "1234,1234,!4!"},
        {{.repeats = -1, .pauseBeforeReturn = 9, .pauseBeforeRepeat = 0.25f}, "1234,41234,41234,41"},
        {{.backAndForth = 1}, "1234,3210,!0!"},
        {{.repeats = 1,
          .backAndForth = -1,
          .delay = 0.5f,
          .pauseBeforeReturn = 0.25f,
          .pauseBeforeRepeat = 0.5f},
         "001234,43210,001234,43210,!0!"},
        {{.seconds = 0, .repeats = -1, .backAndForth = 1}, "4,0,4,0,"},
        {{.seconds = 0.5f, .ease = KXEaseInQuadratic, .repeats = INT_MAX, .backAndForth = 1},
         "14,10,14,10,1"},
        // What is no length of time is none.
        {{.seconds = NAN, .delay = NAN}, "4,!4!"},
        {{.seconds = -INFINITY, .repeats = 1, .delay = -1, .pauseBeforeRepeat = -FLT_MAX}, "4,4,!4!"},
        {{.seconds = FLT_MAX}, "0000"},
        {{.seconds = INFINITY}, "0000"},
        {{.delay = INFINITY}, "0000"}};
    for (const auto& [settings, values] : rows) {
        const auto steps = static_cast<int>(std::ranges::count_if(std::string(values), isdigit));
        KXTween tween(settings);
        EXPECT_EQ(trace(tween, steps), values);
        KXTween copy = tween;
        copy.restart();
        EXPECT_EQ(copy.value(), 0);
        EXPECT_EQ(trace(copy, steps), values); // from whatever stage
        tween.finish();
        EXPECT_TRUE(tween.done());
        EXPECT_EQ(trace(tween, 1), settings.backAndForth ? "0!" : "4!");
    }
}

TEST_F(Tween, GoesOnWhereItIsWhenTheSpeedOfTheLogicChanges) {
    // Made before the library knew its speed, a third of the time at 60, and the rest at 144.
    KXTween tween({.to = 300, .seconds = 1.5f, .delay = 0.25f});
    _KXLogicSpeed = 60;
    for (int step = 0; step < 15 + 30; ++step)
        tween.step();
    EXPECT_NEAR(tween.value(), 100, 1e-3f);
    _KXLogicSpeed = 144;
    EXPECT_NEAR(tween.step(), 100 + 200 / 144.0f, 1e-3f);
    for (int step = 1; step < 143; ++step)
        tween.step();
    EXPECT_FALSE(tween.done());
    EXPECT_EQ(tween.step(), 300);
    EXPECT_TRUE(tween.done());
}

TEST_F(Tween, NumbersThatNoWayHolds) {
    _KXLogicSpeed = 2;
    const float rows[][4] = {
        {-FLT_MAX, FLT_MAX, 0, FLT_MAX}, {1e30f, 1e-30f, 5e29f, 1e-30f}, {0, INFINITY, INFINITY, INFINITY}};
    for (const auto& [from, to, middle, end] : rows) {
        KXTween tween({.from = from, .to = to});
        EXPECT_EQ(tween.value(), from);
        EXPECT_EQ(tween.step(), middle);
        EXPECT_EQ(tween.step(), end);
    }
}
} // namespace
