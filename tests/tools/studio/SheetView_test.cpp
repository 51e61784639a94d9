// The sheet, worked by mouse and keys.

#include "StudioTest.h"

#include "studio/SheetView.h"

#include <climits>
#include <cmath>
#include <cstring>

namespace {
struct SheetTest : StudioTest {
    SheetTest() {
        show(view);
        view.zoomBy(-20);
        view.zoomBy(5); // 3 points a pixel
    }
    /// The middle of a pixel, where the middle of the sheet is that of the window.
    static KXPoint at(float x, float y) { return {202 + 3 * (x - 32), 152 + 3 * (y - 16)}; }
    /// Drags with the left button, from the middle of a pixel to that of another.
    void drag(KXPoint from, KXPoint to) { user.drag(at(from.x, from.y), at(to.x, to.y), 3); }
    void cutTwo() {
        session.cut({{0, 0, 16, 16}, {16, 0, 16, 16}});
        session.chooseFrame(0);
    }

    SheetView view{session, sheet};
};
} // namespace

TEST_F(SheetTest, IsZoomedToThePointerAndMoved) {
    user.move(at(52, 25));
    user.step();
    EXPECT_STREQ(view.status(), "52, 25   #FFDF40FF"); // place and colour
    for (const auto& [notches, zoom] : {std::pair(4.0f, 12.0f), {0.5f, 12}, {0.5f, 16}, {-2, 8}, {99, 64}}) {
        user.wheel(notches);
        user.step();
        EXPECT_EQ(view.zoom(), zoom);
        EXPECT_STREQ(view.status(), "52, 25   #FFDF40FF");
    }
    user.wheel(-5); // 12 points a pixel
    const auto dragBy = [&](KXMouseButton button) { user.drag({100, 100}, {124, 100}, 3, button); };
    dragBy(KXMouseMiddle);
    dragBy(KXMouseRight);
    user.hold(KXKeySpace);
    user.step();
    dragBy(KXMouseLeft);
    user.release(KXKeySpace);
    press({KXKeyLeftControl, KXKeyLeft}); // back by 48 points
    press({KXKeyLeftControl, KXKeyRight});
    user.move({at(52, 25).x + 72, at(52, 25).y});
    user.step();
    EXPECT_STREQ(view.status(), "52, 25   #FFDF40FF");
    EXPECT_EQ(frames(), "");
    press({KXKeyMinus});
    press({KXKeyEquals});
    press({KXKeyPadPlus});
    EXPECT_EQ(view.zoom(), 16);
}

TEST_F(SheetTest, CutsWhatIsDragged) {
    drag({3, 2}, {12, 13});
    EXPECT_EQ(frames(), "3,2 10x12:6 ");
    EXPECT_EQ(session.undoName(), "Cut frame");
    drag({60, 30}, {99, 99}); // no further than the sheet
    EXPECT_EQ(frames(), "3,2 10x12:6 60,30 4x2:6 ");
    view.setTool(SheetTool::Cells);
    drag({20, 20}, {40, 20});
    EXPECT_EQ(frames(), "3,2 10x12:6 60,30 4x2:6 16,16 16x16:6 32,16 16x16:6 ");
    session.undo();
    session.setGrid({1, 1, 10, 10, 4, 4});
    user.click(at(14, 0)); // in the gap behind the first
    EXPECT_EQ(frames(), "3,2 10x12:6 60,30 4x2:6 1,1 10x10:6 ");
    session.undo();
    view.setTool(SheetTool::Islands);
    user.click(at(20, 20));
    drag({30, 0}, {55, 5});
    user.click(at(0, 0)); // none
    EXPECT_EQ(frames(), "3,2 10x12:6 60,30 4x2:6 19,18 10x12:6 35,2 10x12:6 51,2 10x12:6 ");
    view.setTool(SheetTool::Cut);
    user.click(at(5, 5));
    user.hold(KXMouseLeft), user.step(), user.move(at(9, 9)), user.step();
    EXPECT_STREQ(view.status(), "5, 5   5 × 5");
    user.press(KXKeyEscape);
    user.release(KXMouseLeft), user.step();
    EXPECT_EQ(session.undoName(), "Cut frames");
}

TEST_F(SheetTest, MovesAndResizesTheCurrentFrameAsOneStep) {
    cutTwo();
    const struct {
        KXPoint from, to;
        std::string after;
    } drags[] = {
        {{8, 8}, {10, 11}, "2,3 16x16:6 16,0 16x16:6 "},  {{0, 8}, {4, 20}, "4,0 12x16:6 16,0 16x16:6 "},
        {{15, 15}, {9, 17}, "0,0 10x18:6 16,0 16x16:6 "}, {{8, 0}, {9, 30}, "0,15 16x1:6 16,0 16x16:6 "},
        {{24, 8}, {25, 8}, "0,0 16x16:6 17,0 16x16:6 "}, // another one is chosen by it
    };
    for (const auto& [from, to, after] : drags) {
        drag(from, to);
        EXPECT_EQ(frames(), after);
        session.undo();
        EXPECT_EQ(frames(), "0,0 16x16:6 16,0 16x16:6 ");
        EXPECT_EQ(session.undoName(), "Cut frames");
        session.chooseFrame(0);
    }
    user.move(at(8, 8)), user.hold(KXMouseLeft), user.step(), user.move(at(20, 20)), user.step();
    EXPECT_EQ(frames(), "12,12 16x16:6 16,0 16x16:6 ");
    user.press(KXKeyEscape);
    user.release(KXMouseLeft), user.step();
    EXPECT_EQ(frames(), "0,0 16x16:6 16,0 16x16:6 ");
    EXPECT_FALSE(session.canRedo());
}

TEST_F(SheetTest, ChoosesFramesThatAreClicked) {
    cutTwo();
    session.cut({{0, 0, 16, 16}});
    const auto click = [&](float x, float y, int chosen, std::size_t count) {
        user.click(at(x, y));
        EXPECT_EQ(std::pair(session.selection().frame, session.selection().frames.size()),
                  std::pair(chosen, count));
    };
    click(24, 8, 2, 1);
    click(8, 8, 0, 1);
    click(8, 8, 1, 1); // below it
    click(8, 8, 0, 1);
    user.hold(KXKeyLeftControl);
    click(24, 8, 2, 2);
    click(24, 8, 0, 1);
    user.release(KXKeyLeftControl);
    EXPECT_EQ(session.undoName(), "Cut frame");
}

TEST_F(SheetTest, IsWorkedByKeysAlone) {
    cutTwo();
    press({KXKeyRight});
    press({KXKeyLeftShift, KXKeyDown});
    press({KXKeyLeftAlt, KXKeyLeft});
    press({KXKeyPageDown});
    press({KXKeyUp});
    EXPECT_EQ(frames(), "1,8 15x16:6 16,-1 16x16:6 ");
    session.removeFrames();
    view.setTool(SheetTool::Cut);
    for (const KXKeyNumber key :
         {KXKeyRight, KXKeyReturn, KXKeyDown, KXKeyDown, KXKeyReturn, KXKeyReturn, KXKeyEscape})
        press({key});
    EXPECT_EQ(frames(), "1,8 15x16:6 1,0 1x3:6 ");
    EXPECT_EQ(view.description().value, "64 by 32 pixels, at 1, 2");
    view.setTool(SheetTool::Cells);
    press({KXKeyRight});
    press({KXKeyReturn});
    press({KXKeyLeftShift, KXKeyRight});
    press({KXKeyReturn});
    EXPECT_EQ(frames(), "1,8 15x16:6 1,0 1x3:6 16,0 16x16:6 32,0 16x16:6 48,0 16x16:6 ");
    view.setTool(SheetTool::Islands);
    for (const KXKeyNumber key : {KXKeyRight, KXKeyRight, KXKeyReturn})
        press({key});
    EXPECT_EQ(frames().substr(frames().size() - 14), " 19,2 10x12:6 ");
}

TEST_F(SheetTest, ShowsFramesGridAndPixels) {
    cutTwo();
    session.cut({{32, 0, 16, 16}, {16, 0, 16, 16}, {48, 16, 10, 16}});
    session.chooseFrame(2);
    view.zoomBy(3);
    user.move(at(2, 2));
    user.step();
    const KXTestResult same = KXTestGallery(GOLDEN).compare(user.look(), "studio_sheet");
    EXPECT_EQ(same.message, "");
    expectSteady();
}

// A picture that is being written, or is gone, leaves the one that there was.
TEST_F(SheetTest, ReadsTheSheetAnewWhenItsFileChanges) {
    const auto poll = [&] {
        library.clock.advance(260);
        return sheet.pollChanged();
    };
    const std::uint64_t version = sheet.version();
    EXPECT_FALSE(poll());
    folder.write("sheet.png", "\x89PNG half of it");
    EXPECT_FALSE(poll() || poll());
    std::filesystem::remove(_KXFilePath(sheetPath));
    EXPECT_FALSE(poll());
    EXPECT_EQ(std::tuple(sheet.width(), sheet.version(), sheet.islands().size()),
              std::tuple(64, version, 8u));
    KXImage(20, 10, KXGreenColor).writeToPNG(sheetPath.c_str());
    EXPECT_FALSE(sheet.pollChanged()); // not so soon
    EXPECT_TRUE(poll());
    EXPECT_EQ(std::tuple(sheet.width(), sheet.islands().size()), std::tuple(20, 1u));
    user.move({200, 150});
    user.step();
    user.look();
    EXPECT_EQ(sheet.texture().size().width, 20);
    sheet.clear();
    drag({0, 0}, {5, 5});
    EXPECT_TRUE(user.look().width > 0 && !session.animation());
}

TEST_F(SheetTest, ShowsWhatIsPainted) {
    const auto isShown = [&] {
        const KXImage seen = sheet.texture().copyImage();
        const std::size_t bytes = sizeof(KXPixel) * 64 * 32;
        return seen.width() == 64 && std::memcmp(seen.row(0), sheet.image().row(0), bytes) == 0;
    };
    Pixels painted(sheet.image());
    sheet.show(painted);
    EXPECT_TRUE(isShown());
    for (const int x : {63, 2, 40}) {
        painted.set(x, x / 2, {1, 2, 3, 4});
        sheet.show(painted); // twice before it is seen
        painted.set(60 - x / 2, 31, {5, 6, 7, 8});
        sheet.show(painted);
        EXPECT_TRUE(isShown() && sheet.image().row(31)[60 - x / 2].r == 5);
    }
    sheet.show(std::nullopt);
    EXPECT_TRUE(isShown() && sheet.image().row(31)[63].a == 0);
}

// As a broken file may hold them.
TEST_F(SheetTest, BearsBadNumbers) {
    Project project;
    NamedAnimation odd = {"odd", {-1, {}}};
    for (int i = 0; i < 200; ++i)
        odd.animation.frames.push_back({-i, {i % 3 ? NAN : 1e30f, i % 5 ? -INFINITY : 3, -i, INT_MAX - i}});
    project.animations.push_back(std::make_shared<NamedAnimation>(odd));
    project.boxes.push_back({"odd", {NAN, 2, 0, -5}, 0xFFFFFFFF});
    session.begin(project);
    user.look();
    for (const Frame& frame : session.animation()->animation.frames)
        EXPECT_LE(std::abs(frame.bounds.x) + std::abs(frame.bounds.y), 1 << 22);
    user.click({200, 150});
    drag({0, 0}, {20, 20});
    user.look();
}

TEST_F(SheetTest, CostsNoMoreForWhatIsOutOfSight) {
    std::vector<Area> many;
    for (int i = 0; i < 10'000; ++i)
        many.push_back({0, float(40 + 20 * i), 16, 16});
    session.cut(many);
    session.chooseFrame(0);
    user.frame(16), user.frame(16);
    EXPECT_LT(KXLastDrawStatistics().quads + KXLastDrawStatistics().culled, 1500);
}
