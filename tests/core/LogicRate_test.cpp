// How many steps come in how much time, on simulated displays.

#include <Kobaltrix/Kobaltrix.h>
#include <KobaltrixTest/KXTestClock.h>
#include <KobaltrixTest/KXTestUser.h>

#include <gtest/gtest.h>

#include <SDL_events.h>
#include <SDL_timer.h>

#include <random>

namespace {
/// Time alone, so the platform is not started.
struct LogicRate : testing::Test {
    ~LogicRate() override {
        KXSetLogicExact(0);
        KXSetMaximumLogicSteps(0);
    }

    void begin(int exact) {
        KXSetLogicInterval(60);
        KXSetLogicExact(exact);
        KXResetLogicLoop();
    }

    /// A frame that comes so much later; counts its steps.
    int frameAfter(double seconds) {
        clock.advanceNanoseconds(static_cast<std::uint64_t>(seconds * 1e9));
        int steps = 0;
        for (KXPreLogicLoop(); KXLogicLoop(); KXLogicUpdate())
            ++steps;
        KXPostLogicLoop();
        return steps;
    }

    KXTestClock clock;
};
} // namespace

TEST_F(LogicRate, IsExactOnEveryDisplay) {
    begin(-1);
    std::mt19937 random(7);
    for (const int display : {24, 60, 75, 90, 100, 120, 144, 165, 240, 360})
        for (const double jitter : {0.0, 0.4}) { // of a frame, early or late
            KXResetLogicLoop();
            std::uniform_real_distribution<double> late(-jitter, jitter);
            int steps = 0;
            double offset = 0;
            const int frames = 600 * display;
            for (int frame = 0; frame < frames; ++frame) {
                const double previous = offset;
                offset = late(random);
                steps += frameAfter((1 + offset - previous) / display);
            }
            EXPECT_NEAR(steps, 600 * 60 + 1, 1) << display << " Hz, jitter " << jitter;
        }
}

// A display as fast as the logic, trembling: each frame has its step.
TEST_F(LogicRate, MeetsTheStepsOfAnEqualDisplayInTheirMiddle) {
    begin(-1);
    EXPECT_FLOAT_EQ(KXLogicFraction(), 0.5f) << "whole steps that are owed do not count";
    EXPECT_EQ(frameAfter(0), 1);
    EXPECT_FLOAT_EQ(KXLogicFraction(), 0.5f);
    for (int frame = 0; frame < 1000; ++frame)
        ASSERT_EQ(frameAfter((1 + (frame % 2 ? 0.4 : -0.4)) / 60), 1) << frame;
}

TEST_F(LogicRate, TellsTheFractionOfTheNextStep) {
    begin(-1);
    KXSetLogicInterval(10);
    frameAfter(0);
    EXPECT_EQ(frameAfter(0.025), 0);
    EXPECT_FLOAT_EQ(KXLogicFraction(), 0.75f);
    EXPECT_EQ(frameAfter(0.0249999999), 0);
    EXPECT_LT(KXLogicFraction(), 1.0f);
    EXPECT_EQ(frameAfter(0.0350000001), 1);
    EXPECT_NEAR(KXLogicFraction(), 0.35f, 1e-6f);
}

TEST_F(LogicRate, DropsAndCountsWhatIsBeyondTheLimitOfAFrame) {
    for (const int exact : {0, -1}) {
        begin(exact);
        KXSetMaximumLogicSteps(5);
        KXSetLogicInterval(100);
        EXPECT_EQ(frameAfter(0), 1);
        EXPECT_EQ(frameAfter(1), 5) << "a stall";
        EXPECT_EQ(KXDroppedLogicSteps(), 95u);
        EXPECT_EQ(frameAfter(0.02), 2) << "goes on where it was";
        EXPECT_EQ(frameAfter(1e7), 5) << "months";
        KXResetLogicLoop();
        EXPECT_EQ(KXDroppedLogicSteps(), 0u);
    }
}

// Steps that a game leaves undone are done in the next frame, as they are without exact time.
TEST_F(LogicRate, KeepsTheStepsThatAFrameLeaves) {
    begin(-1);
    KXSetLogicInterval(10);
    frameAfter(0);
    clock.advance(400);
    KXPreLogicLoop();
    EXPECT_EQ(KXLogicLoop(), -1);
    KXLogicUpdate();
    KXPostLogicLoop();
    EXPECT_EQ(frameAfter(0.1), 4);
}

TEST_F(LogicRate, WaitsUntilAStepIsDue) {
    for (const int exact : {0, -1}) {
        begin(exact);
        frameAfter(0);
        const double start = KXTime();
        int steps = 0;
        for (int frame = 0; frame < 600; ++frame) {
            EXPECT_EQ(KXWaitForLogicStep(), -1);
            steps += frameAfter(0);
        }
        EXPECT_EQ(steps, 600) << "a step in each frame";
        EXPECT_NEAR(KXTime() - start, exact ? 10.0 : 9.6, 0.02);
    }
}

// On the system's clock: what comes meanwhile ends the wait, what is there already does not.
TEST(LogicWait, EndsWithAnEvent) {
    ASSERT_EQ(KXInit(), -1);
    KXSetLogicInterval(4);
    KXTestUser().step(); // so that none is owed
    const auto timer = SDL_AddTimer(
        20,
        [](Uint32, void*) -> Uint32 {
            SDL_Event event = {};
            event.type = SDL_USEREVENT;
            SDL_PushEvent(&event);
            return 0;
        },
        nullptr);
    EXPECT_EQ(KXWaitForLogicStep(), 0);
    const double start = KXTime();
    EXPECT_EQ(KXWaitForLogicStep(), -1);
    EXPECT_GT(KXTime() - start, 0.1);
    SDL_RemoveTimer(timer);
    KXDeInit();
}
