#include <Kobaltrix/KXTimer.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <set>
#include <vector>

namespace {
// How many ticks the timer needs to fire, counted up to a limit.
int ticksToFire(KXTimer& timer, int limit = 1000) {
    for (int ticks = 1; ticks <= limit; ++ticks)
        if (timer.tick())
            return ticks;
    return 0;
}

TEST(Timer, FiresOnEveryTimeoutthTick) {
    struct {
        int timeout, period;
    } const rows[] = {{INT_MIN, 1}, {-3, 1}, {0, 1}, {1, 1}, {2, 2}, {3, 3}, {60, 60}, {INT_MAX, 0}};
    for (const auto& row : rows) {
        KXTimer timer(row.timeout);
        for (int round = 0; round < 3; ++round)
            EXPECT_EQ(ticksToFire(timer), row.period) << row.timeout;
    }
    KXTimer three(3);
    std::vector<int> results;
    for (int i = 0; i < 6; ++i)
        results.push_back(three.tick());
    EXPECT_EQ(results, (std::vector<int>{0, 0, -1, 0, 0, -1}));
}

TEST(Timer, ChangesOfTheTimeoutKeepTheCount) {
    KXTimer timer(5);
    timer.tick();
    timer.tick();
    timer.setTimeout(2);
    EXPECT_EQ(timer.tick(), -1);
    timer.tick();
    timer.setMinMaxTimeout(4, 4);
    EXPECT_EQ(ticksToFire(timer), 3);
    timer.tick();
    timer.reset();
    EXPECT_EQ(ticksToFire(timer), 4);
    timer.setTimeout(-7);
    EXPECT_EQ(ticksToFire(timer), 1);
}

TEST(Timer, DrawsTimeoutsFromItsRange) {
    std::srand(4);
    KXTimer timer;
    timer.setMinMaxTimeout(2, 4);
    std::set<int> fired, afterReset;
    for (int i = 0; i < 100; ++i)
        fired.insert(ticksToFire(timer));
    EXPECT_EQ(fired, (std::set<int>{2, 3, 4}));
    for (int i = 0; i < 100; ++i) {
        timer.reset();
        KXTimer copy = timer; // a copy goes on alone
        afterReset.insert(ticksToFire(copy));
    }
    EXPECT_EQ(afterReset, fired);

    for (int i = 0; i < 20; ++i) {
        timer.setMinMaxTimeout(5, 3); // not swapped
        EXPECT_EQ(ticksToFire(timer), 3);
        timer.setTimeout(9); // switches the range off
        timer.reset();
        EXPECT_EQ(ticksToFire(timer), 9);
    }

    // A negative end: one timeout is drawn and kept.
    std::set<int> first;
    for (int round = 0; round < 100; ++round) {
        KXTimer fresh;
        fresh.setMinMaxTimeout(-2, 5);
        const int drawn = ticksToFire(fresh);
        first.insert(drawn);
        fresh.reset();
        for (int i = 0; i < 5; ++i)
            ASSERT_EQ(ticksToFire(fresh), drawn);
    }
    EXPECT_EQ(first, (std::set<int>{1, 2, 3, 4, 5}));
}

TEST(Timer, ProgressIsClamped) {
    KXTimer timer(4);
    EXPECT_EQ(timer.progress(), 0);
    for (int i = 0; i < 3; ++i)
        timer.tick();
    EXPECT_EQ(timer.progress(), 0.75f);
    timer.setTimeout(2);
    EXPECT_EQ(timer.progress(), 1);
    timer.setTimeout(0);
    EXPECT_EQ(timer.progress(), 1);
    EXPECT_EQ(KXTimer(-5).progress(), 0);
}
} // namespace
