#include <Kobaltrix/KXTimer.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <set>

namespace {
// How many ticks the timer needs to fire; 0 beyond a limit.
int ticksToFire(KXTimer& timer) {
    for (int ticks = 1; ticks <= 1000; ++ticks)
        if (const int fired = timer.tick())
            return fired == -1 ? ticks : 0;
    return 0;
}

TEST(Timer, FiresOnEveryTimeoutthTick) {
    const int rows[][2] = {{-3, 1}, {0, 1}, {1, 1}, {2, 2}, {60, 60}, {INT_MAX, 0}};
    for (const auto& [timeout, period] : rows) {
        KXTimer timer(timeout);
        for (int round = 0; round < 3; ++round)
            EXPECT_EQ(ticksToFire(timer), period) << timeout;
    }
}

TEST(Timer, ChangesOfTheTimeoutKeepTheCount) {
    KXTimer timer(5);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(timer.tick(), 0);
    timer.setTimeout(2);
    EXPECT_EQ(timer.progress(), 1); // no more than that
    EXPECT_EQ(timer.tick(), -1);
    timer.tick();
    timer.setMinMaxTimeout(4, 4);
    EXPECT_EQ(timer.progress(), 0.25f);
    EXPECT_EQ(ticksToFire(timer), 3);
    timer.tick();
    timer.reset();
    EXPECT_EQ(timer.progress(), 0);
    timer.setTimeout(-7);
    EXPECT_EQ(timer.progress(), 1) << "set as 0";
}

TEST(Timer, DrawsTimeoutsFromItsRange) {
    std::srand(4);
    KXTimer timer;
    std::set<int> fired, kept;
    timer.setMinMaxTimeout(2, 4);
    for (int round = 0; round < 100; ++round)
        fired.insert(ticksToFire(timer));
    for (int round = 0; round < 100; ++round) {
        timer.setMinMaxTimeout(5, 3); // not swapped
        EXPECT_EQ(ticksToFire(timer), 3);
        timer.setTimeout(9); // switches the range off
        timer.reset();
        EXPECT_EQ(ticksToFire(timer), 9);
        timer.setMinMaxTimeout(-2, 5); // a negative end: one timeout is drawn and kept
        const int drawn = ticksToFire(timer);
        kept.insert(drawn);
        timer.reset();
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(ticksToFire(timer), drawn);
    }
    EXPECT_EQ(fired, (std::set<int>{2, 3, 4}));
    EXPECT_EQ(kept, (std::set<int>{1, 2, 3, 4, 5}));
}
} // namespace
