#include <Kobaltrix/Kobaltrix.h>
#include <KobaltrixTest/KXTestClock.h>
#include <KobaltrixTest/KXTestUser.h>

#include "core/ground/LogicClock.h"
#include "util/KXString.h"

#include <gtest/gtest.h>

#include <utility>

namespace {
struct Loop : testing::Test {
    Loop() {
        EXPECT_EQ(KXInit(), -1);
        KXResetLogicLoop();
    }
    ~Loop() override { KXDeInit(); }

    /// Runs one frame as a game does and counts its logic steps.
    int frameAfter(
        std::uint64_t milliseconds, void (*draw)() = [] {}) {
        clock.advance(milliseconds);
        int steps = 0;
        KXPreLogicLoop();
        while (KXLogicLoop()) {
            ++steps;
            KXLogicUpdate();
        }
        draw();
        KXPostLogicLoop();
        return steps;
    }

    KXTestClock clock{(1ull << 32) - 100, 100}; // the tick counter wraps on the way
};

TEST_F(Loop, RunsTheStepsThatAreDue) {
    // Milliseconds and steps: the first frame runs one step at once; time owed adds up over frames without a
    // step; of 40 ms the 8 beyond two steps are dropped; every step owed is caught up with.
    const std::pair<std::uint64_t, int> frames[] = {{0, 1},  {0, 0}, {15, 0}, {1, 1},
                                                    {40, 2}, {8, 0}, {8, 1},  {160000, 10000}};
    for (const auto& [milliseconds, steps] : frames)
        EXPECT_EQ(frameAfter(milliseconds), steps) << milliseconds;
    KXLogicUpdate(); // out of order
    KXLogicUpdate();
    EXPECT_EQ(KXLogicLoop(), 0);
    EXPECT_EQ(frameAfter(16), 1);
}

TEST_F(Loop, ChangesSpeedWithinItsRange) {
    const unsigned rows[][3] = {{0, 1, 1000}, {60, 60, 16}, {999, 999, 1}, {5000, 1000, 1}, {~0u, 1000, 1}};
    for (const auto& [asked, speed, stepTime] : rows) {
        KXSetLogicInterval(asked);
        EXPECT_EQ(KXLogicInterval(), speed);
        EXPECT_EQ(_KXLogicTimeRequiredPerLogicCycle, stepTime);
    }
    KXSetLogicInterval(100);
    EXPECT_EQ(frameAfter(90), 10) << "one was owed";
    KXSetLogicInterval(50);
    EXPECT_EQ(frameAfter(100), 5);
    _KXLogicTimeRequiredPerLogicCycle = 0; // as it is before the library is started
    EXPECT_EQ(frameAfter(100), 0);
}

TEST_F(Loop, FreesTemporaryStringsAfterEachStepUnlessTold) {
    // Kept strings are compared by content: freed ones would be found by the sanitizers.
    KXDisableTemporaryStringCleanup();
    KXDisableTemporaryStringCleanup();
    const char* kept = KXTempString("kept");
    KXEnableTemporaryStringCleanup();
    KXLogicUpdate();
    EXPECT_STREQ(kept, "kept");
    KXEnableTemporaryStringCleanup();
    KXEnableTemporaryStringCleanup(); // one too many
    EXPECT_EQ(_KXTemporaryStringCleanupDisabledCount, 0);
    KXLogicUpdate();
    EXPECT_STREQ(KXTempString("new"), "new");
}

TEST_F(Loop, CountsAtMostOneSecondForEachStep) {
    KXResetElapsedTime();
    const int rows[][2] = {{100, 0}, {101, 1}, {150, 2}, {90, 3}, {90, 3}}; // the clock may be set back
    for (const auto& [timeOfDay, counted] : rows) {
        clock.setTimeOfDay(timeOfDay);
        frameAfter(16);
        EXPECT_EQ(KXElapsedTime(), counted) << timeOfDay;
    }
    KXResetElapsedTime();
    EXPECT_EQ(KXElapsedTime(), 0);
}

TEST_F(Loop, ReadsEventsInFramesThatRunLogicAndKeepsTheWheelForOne) {
    frameAfter(0);
    KXTestUser user;
    user.hold(KXKeyA);
    user.wheel(1);
    frameAfter(8);
    EXPECT_EQ(KXKey(KXKeyA), 0);
    frameAfter(8, [] { EXPECT_EQ(KXKey(KXKeyA) & KXMouse(KXMouseWheelUp), -1) << "while the frame draws"; });
    EXPECT_TRUE(KXKey(KXKeyA) && !KXMouse(KXMouseWheelUp));
}

TEST_F(Loop, CountsTheFramesOfAPeriod) {
    const auto tickAfter = [this](std::uint64_t milliseconds) {
        clock.advance(milliseconds);
        KXFPSTick();
        return KXFPS();
    };
    tickAfter(0);
    tickAfter(1001); // closes whatever was counted before
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(tickAfter(10), 1) << "1000 ms have passed, not more";
    EXPECT_EQ(tickAfter(10), 101);
    EXPECT_EQ(tickAfter(1ull << 31), 1) << "a pause longer than an int holds";
}
} // namespace
