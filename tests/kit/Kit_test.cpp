// The kit that games are tested with: that its user does what a person does, and that it sees what was drawn.

#include <KobaltrixTest/KobaltrixTest.h>

#include <Kobaltrix/Kobaltrix.h>

#include "support/PlatformEvents.h"
#include "support/System.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>

namespace {
/// A test of a game as a game's own test would be, with the framework that it has.
struct Kit : testing::Test {
    void step() {
        ++steps;
        for (const KXInputEvent& event : KXInputEvents())
            told += (told.empty() ? "" : " ") + std::to_string(event.type) + (event.text ? event.text : "");
    }
    void draw() {
        KXDrawRectFill({{0, 0}, window.size()}, KXMakeColori(0, 0, 255, 255));
        KXDrawRectFill({{float(steps), 10}, {4, 4}}, KXMakeColori(255, 0, 0, 255));
    }
    std::string stepAndTell() {
        told.clear();
        user.step();
        return told;
    }

    KXTest test;
    KXWindow window{"Kit", {64, 48}};
    int steps = 0;
    std::string told;
    KXTestUser user{window, [this] { step(); }, [this] { draw(); }};
};

TEST_F(Kit, HoldsEveryKeyThatHasAName) {
    int keys = 0;
    for (int number = 1; number < 600; ++number) {
        const auto key = static_cast<KXKeyNumber>(number);
        if (KXKeyFromName(KXKeyName(number)) != number || std::string(KXKeyName(number)).ends_with("Super"))
            continue;
        ++keys;
        user.hold(key);
        user.step();
        EXPECT_EQ(KXKeyHeld(key), -1) << KXKeyName(key);
        user.release(key);
        user.step();
        EXPECT_EQ(KXKeyPressed() | KXKeyHeld(key), 0) << KXKeyName(key);
    }
    EXPECT_GT(keys, 120);
    user.hold(static_cast<KXKeyNumber>(1246)); // an umlaut, which this layout does not have
    user.hold(KXPositionQ);
    user.step();
    EXPECT_EQ(KXKeyHeld(1246) & KXPositionHeld(KXPositionQ) & KXKeyHeld(KXKeyQ), -1);
}

TEST_F(Kit, DoesWhatAUserDoes) {
    forgetPlatformEvents();
    // What is done, and what the step is told of it.
    const std::string down = std::to_string(KXInputEventKeyDown), up = std::to_string(KXInputEventKeyUp);
    const std::pair<std::function<void()>, std::vector<std::pair<KXInputEventType, const char*>>> rows[] = {
        {[&] { user.hold(KXKeyA), user.hold(KXKeyA), user.release(KXKeyA); },
         {{KXInputEventKeyDown, ""}, {KXInputEventKeyRepeat, ""}, {KXInputEventKeyUp, ""}}},
        {[&] { user.type("a text that is longer than one event"); },
         {{KXInputEventText, "a text that is longer than one "}, {KXInputEventText, "event"}}},
        {[&] { user.compose("k"), user.compose(""); },
         {{KXInputEventComposition, "k"}, {KXInputEventComposition, ""}}},
        {[&] {
             user.move({3, 4}), user.hold(KXMouseForward), user.release(KXMouseForward);
         },
         {{KXInputEventMouseMoved, ""}, {KXInputEventMouseDown, ""}, {KXInputEventMouseUp, ""}}},
        {[&] { user.hold(KXMouseWheelUp); }, {}},
        {[&] { user.dropFile("/tmp/a b"), user.dropText("c"); },
         {{KXInputEventFileDropped, "/tmp/a b"}, {KXInputEventTextDropped, "c"}}},
        {[&] {
             user.touch(7, {32, 24}), user.touch(8, {0, 0}), user.lift(7), user.lift(8);
         },
         {{KXInputEventMouseMoved, ""},
          {KXInputEventMouseDown, ""},
          {KXInputEventFingerDown, ""},
          {KXInputEventFingerDown, ""},
          {KXInputEventMouseUp, ""},
          {KXInputEventFingerUp, ""},
          {KXInputEventFingerUp, ""}}},
        {[&] { user.hold(KXKeyB), user.loseFocus(), user.gainFocus(), user.hold(KXKeyB); },
         {{KXInputEventKeyDown, ""},
          {KXInputEventKeyUp, ""},
          {KXInputEventFocusLost, ""},
          {KXInputEventFocusGained, ""},
          {KXInputEventKeyDown, ""}}},
        {[&] { user.close(); }, {{KXInputEventWindowClosed, ""}}}};
    for (const auto& [act, events] : rows) {
        std::string expected;
        for (const auto& [type, text] : events)
            expected += (expected.empty() ? "" : " ") + std::to_string(type) + text;
        act();
        EXPECT_EQ(stepAndTell(), expected) << &act - &rows[0].first;
    }
    KXSetTouchMovesMouse(0);
    user.touch(1, {16, 12});
    EXPECT_EQ(stepAndTell(), std::to_string(KXInputEventFingerDown));
    EXPECT_EQ(KXFingers().first->point.x, 16);
    KXSetTouchMovesMouse(-1);
    user.quit();
    user.step();
    EXPECT_EQ(KXApplicationQuitRequested(), -1);
}

TEST_F(Kit, TakesStepsForWhatTakesTime) {
    user.press(KXKeyRight, 5);
    EXPECT_EQ(steps, 6);
    user.click({10, 20}, KXMouseRight);
    EXPECT_EQ(steps, 9);
    EXPECT_EQ(KXMouseX, 10);
    user.drag({0, 0}, {40, 8}, 4);
    EXPECT_EQ(steps, 16);
    EXPECT_EQ(KXMousePoint.x + KXMousePoint.y, 48);
    float turned = 0;
    for (int i = 0; i < 4; ++i) {
        user.wheel(0.25f);
        turned += (user.step(), KXMouseWheel().y);
    }
    EXPECT_EQ(turned, 0) << "between steps nothing is turned";
    user.resize({40, 30});
    user.step();
    EXPECT_EQ(window.size().width, 40);
    EXPECT_EQ(user.look().width, 40);
}

TEST_F(Kit, PadsHoldWhatTheLayoutNames) {
    KXTestPad pad;
    ASSERT_TRUE(pad.plugged());
    EXPECT_FALSE(pad.hold(KXPadA)) << "nobody listens";
    KXInitPads();
    user.step();
    for (int button = 0; button <= KXPadRightTrigger; ++button) {
        if (button == KXPadGuide || KXPadButtonFromName(KXPadButtonName(button)) != button)
            continue;
        if (button == KXPadTouchpad) {
            EXPECT_FALSE(pad.hold(KXPadTouchpad));
            continue;
        }
        EXPECT_TRUE(pad.hold(static_cast<KXPadButton>(button)));
        user.step();
        for (int other = 0; other <= KXPadRightTrigger; ++other)
            EXPECT_EQ(KXPadHeld(0, other), other == button ? -1 : 0) << KXPadButtonName(button) << other;
        EXPECT_TRUE(pad.release(static_cast<KXPadButton>(button)));
    }
    EXPECT_TRUE(pad.stick(KXPadRightSide, {-1, 0}) && pad.trigger(KXPadLeftSide, 0.5f));
    user.step();
    EXPECT_EQ(KXPadStick(0, KXPadRightSide).x, -1);
    EXPECT_NEAR(KXPadAxis(0, KXPadLeftTriggerAxis), 0.5f, 0.001f);
    KXRumblePad(0, 1, 0, 100);
    EXPECT_EQ(pad.shaking().low, 1);
}

TEST_F(Kit, ASecondIsAsManyStepsAsItShouldBe) {
    for (const int exact : {0, -1}) {
        KXSetLogicExact(exact);
        KXResetLogicLoop();
        const double begun = KXTime();
        const std::int64_t seconds = KXElapsedTime();
        steps = 0;
        user.step(601);
        EXPECT_EQ(steps, 601);
        EXPECT_NEAR(KXTime() - begun, exact ? 10 : 9.6, 0.02);
        EXPECT_GE(KXElapsedTime() - seconds, 9);
        test.clock.advance(5000); // a stall
        user.step(2);
        EXPECT_EQ(steps, 603) << "what was stalled is not owed";
        EXPECT_EQ(user.frame(1000 / 60.0 * 3 + 0.1), 3);
        EXPECT_EQ(user.frame(0), 0);
        EXPECT_EQ(steps, 606);
    }
}

TEST_F(Kit, SeesWhatIsDrawnAndWhatItCosts) {
    user.step(10);
    const KXTestPicture shown = user.look();
    EXPECT_EQ(shown.at(10, 10), (KXTestPixel{255, 0, 0, 255}));
    EXPECT_EQ(shown.at(9, 10), (KXTestPixel{0, 0, 255, 255}));
    EXPECT_THROW(shown.at(64, 0), std::out_of_range);
    const std::unique_ptr<KXTexture> copy(window.copyTexture());
    EXPECT_EQ(KXTestPicture::of(*copy).differing(shown), 0);
    KXTexture empty;
    EXPECT_TRUE(KXTestPicture::of(empty).pixels.empty());
    user.frame(0);
    user.frame(0);
    EXPECT_EQ(KXLastDrawStatistics().quads, 2);
    EXPECT_EQ(KXTestUser(window.id()).look().width, 0) << "hands alone";
}

TEST_F(Kit, ComparesWithAGallery) {
    const TemporaryFolder folder;
    folder.enter();
    const KXTestPicture shown = user.look();
    KXTestPicture other = shown;
    other.pixels[3] = {9, 9, 249, 255};
    other.pixels[70].b = 252;
    setVariable("KOBALTRIX_UPDATE_GOLDEN", "1");
    EXPECT_EQ(KXTestGallery(folder / "kept").compare(shown, "in/menu").message, "");
    unsetVariable("KOBALTRIX_UPDATE_GOLDEN");

    const auto compare = [&](const KXTestPicture& picture) {
        return KXTestGallery(folder / "kept").compare(picture, "in/menu");
    };
    EXPECT_TRUE(compare(shown));
    EXPECT_EQ(compare(other).message,
              "in/menu: 2 of 3072 pixels differ by more than 2, of which 0 may, the first at 3 0: "
              "(9 9 249 255), not (0 0 255 255); see menu.actual.png and menu.difference.png");
    EXPECT_EQ(KXTestPicture::fromFile("menu.actual.png").differing(other), 0);
    EXPECT_EQ(KXTestPicture::fromFile("menu.expected.png").differing(shown), 0);
    const KXTestPicture difference = KXTestPicture::fromFile("menu.difference.png");
    EXPECT_EQ(difference.at(3, 0).g + difference.at(6, 1).g + difference.at(4, 0).g, 510);
    folder.write("kept/tolerances.txt", "# why\nin/menu 3 1 # edges\nbroken\n");
    EXPECT_EQ(compare(other).message, "");
    EXPECT_NE(compare(shown.part(0, 0, 64, 40)).message.find("it is 64 x 40, not 64 x 48"),
              std::string::npos);
    EXPECT_NE(KXTestGallery(folder.path()).compare(shown, "none").message.find("cannot be read"),
              std::string::npos);
    EXPECT_FALSE(KXTestPicture().save("/nowhere/a.png"));
}

TEST_F(Kit, CountsWhatDoesNotHold) {
    testing::internal::CaptureStderr();
    test.expect(true, "this");
    EXPECT_EQ(test.result(), 0);
    test.expect(false, "that");
    test.expect(KXTestResult{"a picture"});
    EXPECT_EQ(test.result(), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Not so: that\nNot so: a picture\n");
    const int first = std::rand();
    KXInit();
    EXPECT_EQ(std::rand(), first) << "chance is the same every time";
}
} // namespace
