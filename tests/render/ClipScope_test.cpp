#include "render/ClipScope.h"

#include "support/WindowTest.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXTexture.h>

#include <SDL_opengl.h>

#include <array>
#include <cmath>

namespace {
constexpr KXColor white = {1, 1, 1, 1};
constexpr KXRect everything = {{-1000, -1000}, {2000, 2000}};

// left, top, right and bottom of what is white; all -1 if nothing is.
std::array<int, 4> whiteBox(const Image& image) {
    std::array<int, 4> box = {-1, -1, -1, -1};
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x)
            if (image.at(x, y) == Pixel{255, 255, 255, 255})
                box = {box[0] < 0 ? x : std::min(box[0], x), box[1] < 0 ? y : box[1], std::max(box[2], x + 1),
                       y + 1};
    return box;
}

struct ClipScope : WindowTest {
    static std::array<GLint, 5> clip() {
        std::array<GLint, 5> state;
        glGetIntegerv(GL_SCISSOR_BOX, state.data());
        state[4] = glIsEnabled(GL_SCISSOR_TEST);
        return state;
    }
    /// What a fill covers within a scope; the game's clip must be as before.
    template<class Target>
    std::array<int, 4> covered(KXRect rect, Target& target, bool game = false) {
        target.unsetClip();
        fill({0, 0, 0, 1});
        if (game)
            target.setClipTo({{10, 10}, {20, 20}});
        const auto before = clip();
        {
            const _KXClipScope scope(rect);
            KXDrawRectFill(everything, white);
        }
        EXPECT_EQ(clip(), before);
        target.unsetClip();
        return whiteBox(Image::of(target));
    }
};

using Box = std::array<int, 4>;
constexpr Box nothing = {-1, -1, -1, -1};

TEST_F(ClipScope, LimitsDrawingWithinTheGamesLimitInEveryTarget) {
    KXTexture texture(64, 48);
    const struct {
        KXRect rect;
        Box alone, withinTheGames;
    } rows[] = {
        {{{5, 6}, {10, 20}}, {5, 6, 15, 26}, {10, 10, 15, 26}},
        {{{12, 12}, {4, 4}}, {12, 12, 16, 16}, {12, 12, 16, 16}},
        {{{-5, -5}, {1000, 1000}}, {0, 0, 64, 48}, {10, 10, 30, 30}},
        {{{31, 31}, {5, 5}}, {31, 31, 36, 36}, nothing},
        {{{12, 12}, {0, 4}}, nothing, nothing},
        {{{100, 100}, {5, 5}}, nothing, nothing},
        {{{NAN, 0}, {INFINITY, 10}}, nothing, nothing},
        {{{-3e38f, -3e38f}, {3e38f, 3e38f}}, nothing, nothing},
    };
    for (const auto& row : rows)
        for (bool game : {false, true}) {
            const Box& expected = game ? row.withinTheGames : row.alone;
            window->setRenderContext();
            EXPECT_EQ(covered(row.rect, *window, game), expected) << &row - rows << game;
            texture.setRenderContext();
            EXPECT_EQ(covered(row.rect, texture, game), expected) << &row - rows << game;
            texture.unsetRenderContext();
        }
}

TEST_F(ClipScope, FollowsTheGamesMatrices) {
    glTranslatef(20, 4, 0);
    EXPECT_EQ(covered({{1, 2}, {10, 10}}, *window), (Box{21, 6, 31, 16}));
    glScalef(2, 2, 1); // as on a display of two pixels to a point
    EXPECT_EQ(covered({{1, 2}, {10, 10}}, *window), (Box{22, 8, 42, 28}));
    window->setRenderContext();
    glViewport(0, 0, 128, 96); // its lower left quarter is the window
    EXPECT_EQ(covered({{1, 30}, {10, 10}}, *window), (Box{2, 12, 22, 32}));

    window->setRenderingMode(KXWindowRenderingMode3D);
    window->setRenderContext();
    glDisable(GL_CULL_FACE);
    EXPECT_EQ(covered({{1, 2}, {10, 10}}, *window), nothing); // at the eye
    glTranslatef(-32, 24, -24 / std::tan(0.3926991f));
    glScalef(1, -1, 1);
    EXPECT_EQ(covered({{1, 2}, {10, 10}}, *window), (Box{1, 2, 11, 12}));
}

TEST_F(ClipScope, NeedsNoWindow) {
    window.reset();
    const _KXClipScope scope({{0, 0}, {1, 1}});
}
} // namespace
