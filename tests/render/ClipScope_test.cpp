#include "render/ClipScope.h"

#include "RenderTest.h"

namespace {
struct ClipScope : RenderTest {
    /// What a fill covers within a scope; the game's clip must be as before.
    Box covered(KXRect where, bool game = false, KXTexture* texture = nullptr) {
        fill({0, 0, 0, 1});
        if (game)
            KXCurrentRenderContext()->setClipTo(rect(10, 10, 20, 20));
        const auto before = state(GL_SCISSOR_BOX);
        auto scope = std::make_unique<_KXClipScope>(where);
        paint(KXRedColor);
        scope.reset();
        EXPECT_EQ(state(GL_SCISSOR_BOX), before);
        EXPECT_EQ(glIsEnabled(GL_SCISSOR_TEST), game);
        KXCurrentRenderContext()->unsetClip();
        return boxOf(texture ? Image::of(*texture) : Image::of(*window));
    }
};

TEST_F(ClipScope, LimitsDrawingWithinTheGamesLimitInEveryTarget) {
    KXTexture texture(64, 48);
    const std::tuple<KXRect, Box, Box> rows[] = {
        {rect(5, 6, 10, 20), {5, 6, 15, 26}, {10, 10, 15, 26}},
        {rect(-5, -5, 1000, 1000), {0, 0, 64, 48}, {10, 10, 30, 30}},
        {rect(31, 31, 5, 5), {31, 31, 36, 36}, nothing},
        {rect(12, 12, 0, 4), nothing, nothing},
        {{{NAN, 0}, {INFINITY, 10}}, nothing, nothing},
        {{{-3e38f, -3e38f}, {3e38f, 3e38f}}, nothing, nothing},
    };
    for (KXTexture* target : {static_cast<KXTexture*>(nullptr), &texture}) {
        if (target)
            target->setRenderContext();
        for (const auto& [where, alone, withinTheGames] : rows) {
            EXPECT_EQ(covered(where, false, target), alone) << KXRectToString(where);
            EXPECT_EQ(covered(where, true, target), withinTheGames) << KXRectToString(where);
        }
    }
}

TEST_F(ClipScope, FollowsTheGamesMatrices) {
    constexpr KXRect small = rect(1, 2, 10, 10);
    glTranslatef(20, 4, 0);
    EXPECT_EQ(covered(small), (Box{21, 6, 31, 16}));
    glScalef(2, 2, 1); // as on a display of two pixels to a point
    EXPECT_EQ(covered(small), (Box{22, 8, 42, 28}));
    window->setRenderContext();
    glViewport(0, 0, 128, 96); // its lower left quarter is the window
    EXPECT_EQ(covered(rect(1, 30, 10, 10)), (Box{2, 12, 22, 32}));

    window->setRenderingMode(KXWindowRenderingMode3D);
    window->setRenderContext();
    glDisable(GL_CULL_FACE);
    EXPECT_EQ(covered(small), nothing); // at the eye
    glTranslatef(-32, 24, -24 / std::tan(0.3926991f));
    glScalef(1, -1, 1);
    EXPECT_EQ(covered(small), (Box{1, 2, 11, 12}));
    window.reset();
    const _KXClipScope needsNoWindow(small);
}

} // namespace
