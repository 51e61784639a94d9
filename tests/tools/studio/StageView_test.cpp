// The stage, worked by mouse and keys, and what it plays.

#include "StudioTest.h"

#include "studio/StageView.h"

#include <random>

namespace {
struct StageTest : StudioTest {
    StageTest() {
        session.cut({{0, 0, 16, 16}, {16, 0, 16, 14}, {32, 16, 10, 16}});
        session.chooseFrame(0);
        show(view); // 16 points a pixel
        EXPECT_EQ(view.zoom(), 16);
        view.setTool(StageTool::Boxes);
    }
    /// The middle of a pixel of the frame, which lies in the middle of the window.
    static KXPoint at(float x, float y) { return {208 + 16 * (x - 8), 158 + 16 * (y - 8)}; }
    void drag(KXPoint from, KXPoint to) { user.drag(at(from.x, from.y), at(to.x, to.y), 3); }
    std::string boxes() const {
        std::string text;
        for (const NamedBox& box : session.project().boxes)
            text += std::to_string(int(box.area.x)) + "," + std::to_string(int(box.area.y)) + " " +
                    std::to_string(box.area.width) + "x" + std::to_string(box.area.height) + " ";
        return text + std::to_string(session.selection().box);
    }

    Player player;
    StageView view{session, sheet, player};
};
} // namespace

TEST_F(StageTest, DrawsMovesAndResizesBoxes) {
    drag({2, 2}, {9, 11});
    EXPECT_EQ(boxes(), "2,2 8x10 0");
    EXPECT_EQ(session.undoName(), "Add box");
    drag({12, 12}, {19, 13}); // beyond the frame
    EXPECT_EQ(boxes(), "2,2 8x10 12,12 8x2 1");
    const struct {
        KXPoint from, to;
        std::string after;
    } drags[] = {
        {{6, 6}, {3, 5}, "-1,1 8x10 12,12 8x2 0"},     // chooses it first
        {{9.4f, 6}, {11, 6}, "2,2 10x10 12,12 8x2 0"}, // by its right edge
        {{1.6f, 1.6f}, {4, 30}, "4,11 6x1 12,12 8x2 0"},
    };
    for (const auto& [from, to, after] : drags) {
        drag(from, to);
        EXPECT_EQ(boxes(), after);
        session.undo();
        EXPECT_EQ(session.undoName(), "Add box");
        session.chooseBox(0);
    }
    user.move(at(6, 6)), user.hold(KXMouseLeft), user.step(), user.move(at(9, 9)), user.step();
    EXPECT_EQ(boxes(), "5,5 8x10 12,12 8x2 0");
    user.press(KXKeyEscape);
    user.release(KXMouseLeft), user.step();
    EXPECT_EQ(boxes(), "2,2 8x10 12,12 8x2 0");
    session.addBox({3, 3, 4, 4}); // on the first
    for (const int chosen : {0, 2, 0}) {
        user.click(at(5, 5));
        EXPECT_EQ(session.selection().box, chosen);
    }
}

TEST_F(StageTest, IsWorkedByKeysAlone) {
    press({KXKeyReturn});
    press({KXKeyReturn});
    press({KXKeyRight});
    press({KXKeyLeftShift, KXKeyDown});
    press({KXKeyLeftAlt, KXKeyUp});
    press({KXKeyLeftShift, KXKeyLeftAlt, KXKeyLeft});
    press({KXKeyPageUp});
    press({KXKeyPageUp});
    EXPECT_EQ(boxes(), "0,0 16x16 1,8 8x15 0");
    press({KXKeyPageDown});
    EXPECT_EQ(view.description().value, "frame 1 of 3, box box 2 at 1, 8, 8 by 15");
    user.hold(KXKeyLeft), user.step(40), user.release(KXKeyLeft), user.step(); // repeats
    session.undo();                                                            // as one
    EXPECT_EQ(boxes(), "0,0 16x16 1,8 8x15 1");
}

TEST_F(StageTest, LooksWithTheLeftButton) {
    view.setTool(StageTool::Look);
    session.addBox({0, 0, 5, 5});
    user.drag({200, 150}, {232, 150}, 3);
    EXPECT_EQ(boxes(), "0,0 5x5 0");
    press({KXKeyLeft}); // by 48 points
    view.setTool(StageTool::Boxes);
    user.drag({at(6, 6).x + 80, at(6, 6).y}, {at(7, 7).x + 80, at(7, 7).y}, 3);
    EXPECT_EQ(boxes(), "0,0 5x5 6,6 2x2 1");
}

TEST_F(StageTest, ShowsFramesBoxesAndWhatLiesAround) {
    session.addBox({3, 2, 10, 12});
    session.addBox({9, 9, 9, 4});
    session.chooseFrame(1);
    view.showsOnion = true;
    view.zoomBy(-1);
    EXPECT_EQ(KXTestGallery(GOLDEN).compare(user.look(), "studio_stage").message, "");
    KXUISetTheme(KXUILightTheme());
    view.backgroundColor = {0.2f, 0.5f, 0.35f, 1};
    player.play(session.animation()->animation, 2);
    EXPECT_EQ(KXTestGallery(GOLDEN).compare(user.look(), "studio_stage_light").message, "");
    expectSteady();
    session.begin({});
    EXPECT_EQ(view.description().value, "no frame");
    user.look();
}

// Whatever durations there are, loops or not: the player and a sprite in a game never differ.
TEST_F(StageTest, PlaysAsASpriteDoes) {
    std::mt19937 random(3);
    for (int round = 0; round < 40; ++round) {
        Animation animation;
        animation.loops = round % 2;
        KXSprite sprite;
        for (auto i = 1 + random() % 5; i > 0; --i) {
            animation.frames.push_back({int(random() % 5) - 1, {0, 0, 1, 1}});
            sprite.addFrameInfo("a", KXZeroRect, animation.frames.back().duration);
        }
        sprite.setAnimationLoops("a", animation.loops);
        sprite.setAnimation("a");
        player.play(animation, 0);
        for (int step = 0; step < 40; ++step) {
            player.step(animation);
            sprite.poll();
            ASSERT_EQ(player.frame(), sprite.currentFrameIndex()) << "round " << round << " step " << step;
        }
        EXPECT_EQ(player.isPlaying(), animation.loops != 0);
    }
}

TEST_F(StageTest, PlaysAtOtherSpeedsAndBearsChanges) {
    Animation animation = {-1, {{4, {}}, {4, {}}, {4, {}}}};
    const auto after = [&](float speed, int steps) {
        player.setSpeed(speed);
        player.play(animation, 0);
        for (; steps > 0; --steps)
            player.step(animation);
        return player.frame();
    };
    EXPECT_EQ(std::tuple(after(0.125f, 31), after(0.125f, 32), after(4, 2), after(99, 2), after(0.5f, 8)),
              std::tuple(0, 1, 2, 2, 1));
    animation.frames.resize(1);
    player.show(2);
    player.step(animation);
    EXPECT_EQ(player.frame(), 0);
    animation.loops = 0;
    player.setSpeed(1);
    player.step(animation);
    EXPECT_FALSE(player.isPlaying());
    animation.frames.clear();
    player.play(animation, 0);
    EXPECT_FALSE(player.isPlaying() || player.step(animation));
}
