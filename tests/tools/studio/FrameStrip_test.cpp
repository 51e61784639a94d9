// The strip of frames, worked by mouse and keys.

#include "StudioTest.h"

#include "studio/FrameStrip.h"

namespace {
struct StripTest : StudioTest {
    StripTest() {
        make(4);
        show(view, {{0, 100}, {400, 92}}); // 72 points each
    }
    void make(int count) {
        std::vector<Frame> all;
        for (int i = 0; i < count; ++i)
            all.push_back({5, {float(i % 4 * 16), float(i / 4 % 2 * 16), 16, 16}});
        session.addFrames(all);
        session.chooseFrame(0);
    }
    /// The middle of a frame, or other parts of it.
    static KXPoint at(float frame) { return {36 + 72 * frame, 130}; }
    /// Columns of the sheet in the order of frames, with stars behind chosen ones, two behind the current
    /// one.
    std::string order() const {
        std::string text;
        for (int i = 0; i < int(session.animation()->animation.frames.size()); ++i) {
            text += char('0' + int(session.animation()->animation.frames[i].bounds.x) / 16);
            text += std::string(session.selection().frames.count(i) + (i == session.selection().frame), '*');
        }
        return text;
    }
    std::string durations() const {
        std::string text;
        for (const Frame& frame : session.animation()->animation.frames)
            text += std::to_string(frame.duration) + " ";
        return text;
    }
    void click(float frame, KXKeyNumber with = KXKeyNone) {
        if (with)
            user.hold(with);
        user.click(at(frame));
        if (with)
            user.release(with), user.step();
    }
    /// Which frame is at the left edge, as a click there tells.
    int leftmost() {
        user.click({2, 130});
        return session.selection().frame;
    }

    Player player;
    FrameStrip view{session, sheet, player};
};
} // namespace

TEST_F(StripTest, ChoosesByMouse) {
    const struct {
        float frame;
        KXKeyNumber with;
        std::string after;
    } clicks[] = {
        {2, KXKeyNone, "012**3"},          {0, KXKeyLeftShift, "0**1*2*3"},  {3, KXKeyLeftShift, "012*3**"},
        {1, KXKeyLeftControl, "01**2*3*"}, {1, KXKeyLeftControl, "012**3*"}, {3, KXKeyNone, "0123**"},
        {3, KXKeyLeftControl, "0123**"},   {4.8f, KXKeyNone, "0123**"}, // at least one stays, beside them is
                                                                        // none
    };
    for (const auto& [frame, with, after] : clicks) {
        click(frame, with);
        EXPECT_EQ(order(), after) << frame;
    }
    EXPECT_EQ(session.undoName(), "Add frames");
}

TEST_F(StripTest, DragsTheChosenFramesToAnotherPlace) {
    click(0);
    click(1, KXKeyLeftControl);
    user.drag(at(0), {72 * 3 + 5, 130}, 3);
    EXPECT_EQ(order(), "20*1**3");
    session.undo();
    EXPECT_EQ(order(), "0*1**23");
    user.click(at(1)); // chosen alone now that it was not dragged
    EXPECT_EQ(order(), "01**23");
    user.drag(at(3), at(-0.4f), 3);
    EXPECT_EQ(order(), "3**012");
    user.move(at(0)), user.hold(KXMouseLeft), user.step(), user.move(at(2)), user.step();
    user.press(KXKeyEscape);
    user.release(KXMouseLeft), user.step();
    EXPECT_EQ(order(), "3**012");
    EXPECT_EQ(session.undoName(), "Move frames");
}

TEST_F(StripTest, ChangesDurationsAsOneStep) {
    user.drag({72 * 2 - 2, 130}, {72 * 2 + 31, 130}, 5); // the edge of the second, by four steps
    EXPECT_EQ(durations(), "5 9 5 5 ");
    user.drag({72 * 3 - 2, 130}, {0, 130}, 5);
    EXPECT_EQ(durations(), "5 9 1 5 ");
    session.undo();
    session.undo();
    EXPECT_EQ(durations(), "5 5 5 5 ");
    user.move({70, 130}), user.hold(KXMouseLeft), user.step(), user.move({200, 130}), user.step();
    user.press(KXKeyEscape);
    user.release(KXMouseLeft), user.step();
    EXPECT_EQ(durations(), "5 5 5 5 ");
    click(1);
    click(2, KXKeyLeftShift);
    user.hold(KXKeyLeftControl);
    for (const float notches : {1.0f, 0.5f, 0.5f, 1.0f})
        user.wheel(notches), user.step();
    user.release(KXKeyLeftControl), user.step();
    EXPECT_EQ(durations(), "5 8 8 5 ");
    press({KXKeyEquals});
    press({KXKeyMinus});
    press({KXKeyPadMinus});
    EXPECT_EQ(durations(), "5 7 7 5 ");
    for (int i = 0; i < 3; ++i)
        session.undo();
    EXPECT_EQ(durations(), "5 8 8 5 ");
    session.undo();
    EXPECT_EQ(durations(), "5 5 5 5 ");
    user.move({72 * 4 - 2, 130}), user.hold(KXMouseLeft), user.step();
    session.undo(); // takes the frames away meanwhile
    user.move({380, 130}), user.step(), user.release(KXMouseLeft), user.step();
    EXPECT_EQ(view.description().value, "no frame");
}

TEST_F(StripTest, IsWorkedByKeysAlone) {
    const struct {
        std::vector<KXKeyNumber> keys;
        std::string after;
    } presses[] = {
        {{KXKeyRight}, "01**23"},
        {{KXKeyLeftShift, KXKeyRight}, "01*2**3"},
        {{KXKeyLeftAlt, KXKeyRight}, "031*2**"},
        {{KXKeyHome}, "0**312"},
        {{KXKeyLeftShift, KXKeyEnd}, "0*3*1*2**"},
        {{KXKeyLeft}, "031**2"},
        {{KXKeyLeftAlt, KXKeyPageUp}, "1**032"},
        {{KXKeyPageDown}, "1032**"},
        {{KXKeyRight}, "1032**"},
    };
    for (const auto& [keys, after] : presses) {
        for (const KXKeyNumber key : keys)
            user.hold(key);
        user.step();
        for (const KXKeyNumber key : keys)
            user.release(key);
        user.step();
        EXPECT_EQ(order(), after);
    }
    EXPECT_EQ(view.description().value, "frame 4 of 4, 80 ms");
    session.begin({});
    press({KXKeyRight});
    press({KXKeyEquals});
    EXPECT_EQ(view.description().value, "no frame");
}

TEST_F(StripTest, ScrollsAndFollows) {
    session.chooseAllFrames();
    session.removeFrames();
    make(10'000);
    user.step();
    EXPECT_EQ(leftmost(), 0);
    press({KXKeyEnd});
    EXPECT_EQ(leftmost(), 9994); // 400 points show five and a half
    user.move({200, 130});
    user.wheel(-3), user.step(); // there is no more
    user.wheel(10), user.step();
    EXPECT_EQ(leftmost(), 9984);
    user.drag({200, 187}, {200, 187}, 1); // on the bar, before its knob: a page
    EXPECT_EQ(leftmost(), 9978);
    user.drag({390, 187}, {190, 187}, 3);
    EXPECT_NEAR(leftmost(), 4670, 60);
    player.play(session.animation()->animation, 7000);
    user.step();
    EXPECT_EQ(leftmost(), 6995);
    player.pause();
    user.move({5, 110});
    user.hold(KXMouseLeft), user.step(), user.move({-3, 110}), user.step(30);
    user.release(KXMouseLeft), user.step();
    EXPECT_LT(session.selection().frame, 6993); // dragged on while it scrolled
    user.frame(16), user.frame(16);
    EXPECT_LT(KXLastDrawStatistics().quads + KXLastDrawStatistics().culled, 600);
}

TEST_F(StripTest, ShowsPicturesNumbersAndDurations) {
    session.setDurations({1}, 12);
    click(1);
    click(2, KXKeyLeftControl);
    user.move(at(1)), user.hold(KXMouseLeft), user.step(), user.move({72 * 3, 130}), user.step();
    player.play(session.animation()->animation, 3);
    for (const char* name : {"studio_strip", "studio_strip_light"}) {
        EXPECT_EQ(KXTestGallery(GOLDEN).compare(user.look(), name).message, "");
        KXUISetTheme(KXUILightTheme());
    }
    expectSteady();
    user.release(KXMouseLeft), user.step();
}
