
#include <Kobaltrix/KXTimer.h>
#include <KobaltrixTest/KXTestClock.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

namespace {
TEST(RealTimeTimer, FiresStrictlyAfterItsTimeoutAndDropsTheRest) {
    KXTestClock clock(0xFFFFFF00u); // the counter wraps on the way
    KXRealTimeTimer timer(0.5f);
    clock.advance(500);
    EXPECT_EQ(timer.tick(), 0);
    EXPECT_EQ(timer.progress(), 1);
    clock.advance(1251); // far too late
    EXPECT_EQ(timer.elapsedTime(), 1.751f);
    EXPECT_EQ(timer.tick(), -1);
    clock.advance(500);
    EXPECT_EQ(timer.tick(), 0);
    timer.reset();
    EXPECT_EQ(timer.elapsedTime(), 0);
    clock.advance(0x80000000u); // past what a signed count holds it reads as negative
    EXPECT_EQ(timer.elapsedTime(), -2147483.648f);
}

TEST(RealTimeTimer, NegativeTimeoutsAreNone) {
    KXTestClock clock;
    for (float timeout : {0.0f, -3.0f, NAN}) {
        KXRealTimeTimer built(timeout), set(9);
        clock.advance(5);
        set.setTimeout(timeout); // starts again
        EXPECT_TRUE(set.tick() == 0 && std::isnan(set.progress())) << timeout;
        EXPECT_TRUE(built.progress() == INFINITY && built.tick() == -1) << timeout;
    }
}

TEST(RealTimeTimer, DrawsTimeoutsFromItsRange) {
    std::srand(5);
    KXTestClock clock;
    KXRealTimeTimer timer;
    clock.advance(700);
    timer.setMinMaxTimeout(1, 2);
    int early = 0;
    for (int i = 0; i < 200; ++i) {
        clock.advance(999);
        EXPECT_EQ(timer.tick(), 0);
        clock.advance(501); // half of the timeouts have passed now
        early -= timer.tick();
        timer.reset();
    }
    EXPECT_NEAR(early, 100, 40);

    // The timeout of a range shows in how far the timer is.
    const float rows[][3] = {{3, 2, 0.75f}, {NAN, 2, 0.75f}, {2, NAN, INFINITY}, {-3, -3, -0.5f}};
    for (const auto& [min, max, progress] : rows) {
        timer.setMinMaxTimeout(min, max);
        clock.advance(1500);
        EXPECT_EQ(timer.progress(), progress) << min << " to " << max;
    }
    timer.setTimeout(4); // switches the range off
    timer.reset();
    clock.advance(1000);
    EXPECT_EQ(timer.progress(), 0.25f);
}
} // namespace
