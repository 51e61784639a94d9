#pragma once

#include "core/ground/LogicClock.h"
#include "support/Allocations.h"
#include "support/Golden.h"
#include "text/TextTest.h"

#include <Kobaltrix/Kobaltrix.h>
#include <KobaltrixTest/KXTestUser.h>

#include <SDL.h>

#include <climits>

/// Owns the logic loop's clock while it lives: steps of 16 ms, starting shortly before the 32-bit time wraps.
struct LogicSteps {
    LogicSteps() {
        _KXLogicSpeed = 60;
        _KXLogicTimeRequiredPerLogicCycle = 16;
        _KXLogicCurrentTime = 0xFFFFFF00;
    }
    ~LogicSteps() {
        _KXLogicSpeed = 1;
        _KXLogicTimeRequiredPerLogicCycle = _KXLogicCurrentTime = 0;
    }
    LogicSteps(const LogicSteps&) = delete;
    LogicSteps& operator=(const LogicSteps&) = delete;

    static void advance(unsigned steps) { _KXLogicCurrentTime += steps * _KXLogicTimeRequiredPerLogicCycle; }
};

/// A test of a widget: a window of 320 x 200 points, the user-interface font, and a user whose hands are
/// real events.
struct UITest : TextTest {
    UITest();
    ~UITest() override;

    /// One logic step: wheel notches of the last one end, events are read.
    void step(unsigned count = 1);
    // What the user does, read by a step; the test polls.
    void moveMouse(int x, int y) { hands.move({float(x), float(y)}), step(); }
    void press(KXMouseButton button = KXMouseLeft) { hands.hold(button), step(); }
    void release(KXMouseButton button = KXMouseLeft) { hands.release(button), step(); }
    void wheel(float notches) { hands.wheel(notches), step(); } ///< Positive away from the user.
    void keyDown(KXKeyNumber key) { hands.hold(key), step(); }
    void keyUp(KXKeyNumber key) { hands.release(key), step(); }
    void type(const char* text) { hands.type(text), step(); }
    void compose(const char* text) { hands.compose(text), step(); }

    /// Does what is written, acts with commas between, each of which ends with a poll():
    ///
    ///     at 10 20           the pointer goes to a point, or to a place that the test has a name for
    ///     press 10 20        the left mouse button, there, or without a point where the pointer is
    ///     release
    ///     click 10 20        both
    ///     wheel -1           a notch towards the user
    ///     type some text     compose some text, by an input method
    ///     hold K, let K      a key goes down, and comes up
    ///     Left Shift+Home    any other name of a key: taps it while those before it are held
    ///     wait 20, poll 20   that many steps, without a poll or with one in each
    ///     type a & Home      all of these within one step
    ///
    /// @return -1 if a poll() told something, else 0.
    int act(const std::string& acts);

    virtual int poll() { return 0; }
    /// Does what a transcript says and expects what it saw: "acts -> state; acts -> state".
    void expectEach(const std::string& transcript);
    /// What a test looks at, in words. It begins with "told " where a poll() told something.
    virtual std::string state() { return ""; }
    /// Where something is that acts name: by itself a point.
    virtual KXPoint place(const std::string& name) const;

    static void expectOrigin(const _KXUIWidget& of, float x, float y) {
        EXPECT_EQ(std::pair(of.rect().origin.x, of.rect().origin.y), std::pair(x, y));
    }
    static void expectSize(const _KXUIWidget& of, float width, float height) {
        EXPECT_EQ(sides(of.rect().size), (Sides{width, height}));
    }
    static void expectFit(_KXUIWidget& of, KXSize given, float width, float height) {
        of.setSize(given);
        expectSize(of, width, height);
    }
    LogicSteps steps;
    KXTestUser hands;

    /// Does one of them; to be overridden by a test that has more.
    virtual int doAct(const std::string& act);

    /// Does without a step what lasts no longer than a moment.
    void doAtOnce(const std::string& act);
    int pollSteps(int count);

private:
    int tap(const std::string& keys);
};
