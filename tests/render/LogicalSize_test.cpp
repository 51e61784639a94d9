// Windows that are drawn in units of the game's own, and what a replayed or moved window tells of its
// density.

#include "RenderTest.h"
#include "render/PictureFit.h"

#include <Kobaltrix/KXGeometry.h>
#include <Kobaltrix/KXInputEvents.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXTouch.h>
#include <KobaltrixTest/KXTestUser.h>

#include <SDL.h>

#include <limits>
#include <optional>

namespace {
struct LogicalSize : RenderTest {
    LogicalSize() : RenderTest({100, 60}) {}
    void use(const KXLogicalSize& logical) {
        window->setLogicalSize(logical);
        window->setRenderContext();
    }
};

TEST_F(LogicalSize, FillsTheWindowInEachWay) {
    constexpr float huge = std::numeric_limits<float>::max();
    const struct {
        KXSize wanted;
        KXScaling scaling;
        KXSize window;
        float density;
        KXRect part;
        KXSize units;
    } rows[] = {{{32, 24}, KXScalingLetterbox, {100, 60}, 1, rect(10, 0, 80, 60), {32, 24}},
                {{40, 10}, KXScalingLetterbox, {100, 60}, 1, {{0, 17}, {100, 25}}, {40, 10}},
                {{32, 24}, KXScalingStretch, {100, 60}, 1, rect(0, 0, 100, 60), {32, 24}},
                {{32, 24}, KXScalingWholeMultiples, {100, 60}, 1, rect(18, 6, 64, 48), {32, 24}},
                {{32, 24}, KXScalingWholeMultiples, {100, 60}, 2, rect(10, 0, 80, 60), {32, 24}},
                {{32, 24}, KXScalingWholeMultiples, {99, 60}, 2, {{9.5f, 0}, {80, 60}}, {32, 24}},
                {{64, 48}, KXScalingWholeMultiples, {32, 24}, 1, rect(0, 0, 32, 24), {64, 48}},
                {{32, 24}, KXScalingExpand, {100, 60}, 1, rect(0, 0, 100, 60), {40, 24}},
                {{32, 24}, KXScalingExpand, {64, 96}, 1, rect(0, 0, 64, 96), {32, 48}},
                {{0, 24}, KXScalingLetterbox, {100, 60}, 1, rect(0, 0, 100, 60), {100, 60}},
                {{NAN, 24}, KXScalingStretch, {100, 60}, 1, rect(0, 0, 100, 60), {100, 60}},
                {{huge, -1}, KXScalingExpand, {0, 0}, 1, rect(0, 0, 1, 1), {1, 1}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        const _KXPictureFit fit = _KXFitPicture({row.wanted, row.scaling}, row.window, row.density);
        EXPECT_TRUE(KXEqualRects(fit.part, row.part)) << fit.part.origin.x << ' ' << fit.part.origin.y;
        EXPECT_EQ(sides(fit.units), sides(row.units));
    }
    for (const KXSize odd : {KXSize{huge, 1e-30f}, {1e-30f, huge}, {huge, huge}})
        for (int scaling = 0; scaling < 5; ++scaling) {
            const _KXPictureFit fit = _KXFitPicture({odd, static_cast<KXScaling>(scaling)}, {100, 60}, 1);
            const _KXPixelBox box = _KXPixelsOf(fit.part, {100, 60}, 200, 120);
            EXPECT_TRUE(box.left >= 0 && box.bottom >= 0 && box.width <= 200 && box.height <= 120);
        }
}

TEST_F(LogicalSize, DrawsAndClipsAndClearsInUnitsAndLeavesTheBars) {
    use({{20, 20}, KXScalingLetterbox, {0, 0, 1, 1}}); // 3 pixels to a unit, 20 to both sides
    EXPECT_EQ(sides(window->logicalSize()), (Sides{20, 20}));
    EXPECT_EQ(sides(window->size()), (Sides{100, 60}));
    KXClear({0, 0, 0, 1});
    EXPECT_EQ(boxOf(Image::of(*window), blue), (Box{20, 0, 80, 60}));
    const auto drawn = [this](Box box) {
        Image image = Image::of(*window);
        for (int y = 0; y < 60; ++y)
            for (int x = 0; x < 100; ++x)
                if (x < 20 || x >= 80) {
                    EXPECT_EQ(image.at(x, y), blue) << x;
                    image.pixels[static_cast<std::size_t>(y * 100 + x)] = black;
                }
        expectBox(image, box);
    };
    paint(KXRedColor, rect(2, 3, 4, 5));
    drawn({26, 9, 38, 24});
    KXClear({0, 0, 0, 1});
    window->setClipTo(rect(15, 15, 100, 3));
    paint(KXRedColor);
    drawn({65, 45, 80, 54});
    for (const KXRect none : {rect(30, 30, 5, 5), rect(5, 5, -1, 3), KXRect{{NAN, 5}, {3, NAN}}}) {
        window->setClipTo(none);
        paint({0, 1, 0, 1});
    }
    drawn({65, 45, 80, 54});
    window->unsetClip();
    KXTexture target(16, 16); // has its own pixels
    target.setRenderContext();
    target.clear();
    KXClear({0, 0, 0, 1});
    paint(KXRedColor, rect(1, 1, 2, 2));
    expectBox(Image::of(target), {1, 1, 3, 3});
    target.unsetRenderContext();
    use({});
    EXPECT_EQ(boxOf(picture([] { paint(KXRedColor, rect(2, 3, 4, 5)); })), (Box{2, 3, 6, 8}));
}

TEST_F(LogicalSize, MouseAndFingersAreInUnits) {
    KXSetTouchMovesMouse(0);
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    use({{40, 40}, KXScalingLetterbox}); // 1.5 points to a unit, 20 to both sides
    std::vector<KXInputEvent> seen;
    std::optional<KXFinger> finger;
    KXTestUser user(*window, [&] {
        for (const KXInputEvent& event : KXInputEvents())
            seen.push_back(event);
        for (const KXFinger& each : KXFingers())
            finger = each;
    });
    user.move({20, 0});
    user.step();
    user.move({30, 10});
    user.step();
    ASSERT_EQ(seen.size(), 2U);
    const auto place = [](KXPoint point) { return Sides{point.x, point.y}; };
    EXPECT_EQ(place(seen[0].point), (Sides{0, 0}));
    EXPECT_NEAR(seen[1].point.x, 10 / 1.5f, 1e-5f);
    EXPECT_NEAR(seen[1].motion.y, 10 / 1.5f, 1e-5f);
    EXPECT_EQ(place(KXMousePoint), place(seen[1].point));
    EXPECT_EQ(KXMouseX, 6);
    user.move({19, 59});
    user.step();
    EXPECT_EQ(KXMouseX, -1) << "a bar is outside";
    user.touch(0, {50, 30});
    user.step();
    ASSERT_TRUE(finger);
    EXPECT_EQ(place(finger->point), (Sides{20, 20}));
    EXPECT_EQ(place(KXTouchPoint), (Sides{20, 20}));
    EXPECT_EQ(place(window->pointFromUnits({20, 20})), (Sides{50, 30}));
    EXPECT_EQ(place(window->unitsFromPoint({50, 30})), (Sides{20, 20}));
    user.lift(0);
    user.step();
    KXSetTouchMovesMouse(-1);
}

// What a display of another density does, as the dispatch tells it.
TEST_F(LogicalSize, TellsOfAnotherDensity) {
    EXPECT_EQ(window->density(), 1);
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    window->_rememberDensity(500); // as if it came from a display of half as many pixels
    std::vector<float> told;
    KXTestUser user(*window, [&] {
        for (const KXInputEvent& event : KXInputEvents())
            if (event.type == KXInputEventDensityChanged)
                told.push_back(event.density);
    });
    for (int i = 0; i < 2; ++i) {
        user.resize({100, 60});
        user.step();
    }
    EXPECT_EQ(told, std::vector<float>{1});
    EXPECT_EQ(window->density(), 1);
}
} // namespace
