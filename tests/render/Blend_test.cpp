// How colours mix, and that a texture that was drawn into looks like what was drawn.

#include "RenderTest.h"

#include <Kobaltrix/KXDrawBatch.h>

namespace {
struct Blend : RenderTest {
    Blend() { loadNoise(noise, 20, 20); }

    /// @param top,bottom colours of 0 to 1 and an opacity. @return what the window shows.
    static std::array<float, 3> mixed(KXBlendMode mode, KXColor top, KXColor bottom) {
        const auto channel = [=, a = top.a](float t, float b) {
            switch (mode) {
            case KXBlendPremultiplied:
                return t + b * (1 - a);
            case KXBlendAdd:
                return b + t * a;
            case KXBlendMultiply:
                return b * (1 - a + a * t);
            case KXBlendScreen:
                return b + t * a * (1 - b);
            case KXBlendReplace:
                return t;
            case KXBlendErase:
                return b * (1 - a);
            default:
                return t * a + b * (1 - a);
            }
        };
        return {channel(top.r, bottom.r), channel(top.g, bottom.g), channel(top.b, bottom.b)};
    }

    KXTexture noise, layer{64, 48};
};

TEST_F(Blend, EachModeAsItsFormulaSays) {
    constexpr KXColor bottom = {0.2f, 0.5f, 0.7f, 1}, top = {0.6f, 0.3f, 0.1f, 0.4f};
    KXTexture texture;
    const Pixel texel = {204, 102, 51, 153}; // times the tint: the same colour
    load(texture, 1, 1, &texel);
    const KXColor tint = {0.75f, 0.75f, 0.5f, 0.4f / 0.6f};
    for (int mode = KXBlendInherited; mode <= KXBlendErase + 1; ++mode) {
        const auto blend = static_cast<KXBlendMode>(mode);
        const std::function<void()> ways[] = {
            [&] { paint(top); },
            [&] {
                texture.draw({.scale = {64, 48}, .tint = tint});
            },
            [&] {
                KXPushBlendMode(KXBlendErase); // what a draw says itself counts more
                texture.draw({.scale = {64, 48}, .tint = tint, .blend = mode % 8 ? blend : KXBlendAlpha});
                KXPopBlendMode();
            },
            [&] {
                KXDrawTriangleFill({-99, -99}, {300, -99}, {-99, 300}, top);
            },
            [&] {
                KXDrawLine({0, 24}, {64, 24}, top);
            },
        };
        for (const auto& way : ways) {
            const Pixel shown = picture([&] {
                                    paint(bottom);
                                    KXPushBlendMode(KXBlendReplace);
                                    KXPushBlendMode(blend);
                                    way();
                                    KXPopBlendMode();
                                    KXPopBlendMode();
                                    KXPopBlendMode(); // one too many
                                }).at(30, 24);
            const auto [r, g, b] = mixed(blend, top, bottom);
            EXPECT_NEAR(shown.r, 255 * r, 1.6f) << mode << ' ' << &way - ways;
            EXPECT_NEAR(shown.g, 255 * g, 1.6f) << mode << ' ' << &way - ways;
            EXPECT_NEAR(shown.b, 255 * b, 1.6f) << mode << ' ' << &way - ways;
        }
    }
    EXPECT_EQ(picture([&] {
                  KXPushBlendMode(KXBlendReplace), KXPushBlendMode(KXBlendAdd), KXPopBlendMode();
                  paint({0.2f, 0, 0, 0});
                  KXPopBlendMode();
              })
                  .at(0, 0)
                  .r,
              51);
    glBlendFunc(GL_ONE, GL_ZERO); // the game's own way, when nothing is pushed any more
    EXPECT_EQ(picture([&] { paint({0.2f, 0, 0, 0}); }).at(0, 0).r, 51);
    EXPECT_EQ(state(GL_BLEND_DST)[0], GL_ZERO);
}

TEST_F(Blend, ARunIsCutWhereTheModeChanges) {
    KXBeginDrawBatch();
    window->swapBuffers();
    for (int i = 0; i < 40; ++i) {
        if (i % 10 == 0)
            KXPushBlendMode(KXBlendAdd);
        noise.draw({.blend = i % 10 < 2 ? KXBlendScreen : KXBlendInherited});
        paint({1, 1, 1, 1});
        if (i % 10 == 4)
            KXPopBlendMode();
    }
    KXEndDrawBatch();
    const KXDrawStatistics counted = KXCurrentDrawStatistics();
    EXPECT_EQ(counted.flushes, 1);
    EXPECT_EQ(counted.blendChanges, 4 * 4);
}

TEST_F(Blend, ALayerShowsWhatWasDrawnIntoIt) {
    const auto fraction = [this] { return static_cast<float>(between(0, 255)) / 255; };
    const auto scene = [&](unsigned seed) { // of three, or of a dozen
        random.seed(seed);
        for (int i = between(1, seed < 200 ? 3 : 12); i > 0; --i) {
            const KXColor color = {fraction(), fraction(), fraction(), fraction()};
            const KXPoint point = {static_cast<float>(between(-10, 60)),
                                   static_cast<float>(between(-10, 40))};
            switch (i == 1 ? 1 : between(0, 4)) { // light comes last: beyond white it would be cut off early
            case 0:
                KXDrawRectFill({point, {25, 20}}, color);
                break;
            case 1:
                KXPushBlendMode(i == 1 ? KXBlendAdd : KXBlendAlpha);
                KXDrawRectFill({point, {30, 30}}, color);
                KXPopBlendMode();
                break;
            case 2:
                noise.draw(4, 4, fraction(), 2.0f, 90, 0, -1);
                break;
            default:
                noise.draw({.position = point, .scale = {2, 3}, .tint = color});
            }
        }
    };
    layer.setPremultiplied(-1);
    EXPECT_EQ(layer.isPremultiplied(), -1);
    int worst = 0;
    for (unsigned seed = 0; seed < 300; ++seed) {
        const KXColor ground = {0.1f * float(seed % 11), 0.6f, 0.3f, 1};
        seed % 2 ? KXBeginDrawBatch() : KXEndDrawBatch();
        window->setRenderContext();
        const Image straight = picture([&] { fill(ground), scene(seed); });
        layer.clear();
        layer.setRenderContext();
        scene(seed);
        layer.unsetRenderContext();
        window->setRenderContext();
        const Image layered = picture([&] {
            fill(ground);
            seed % 3 ? layer.draw(0, 0, 0) : layer.draw({});
        });
        for (int tolerance = worst; differingPixels(straight, layered, tolerance); ++tolerance)
            worst = tolerance + 1;
        ASSERT_LE(worst, seed < 200 ? 1 : 3) << seed;
    }
    KXEndDrawBatch();
    // Fainter as a whole: as opaque as told, and not darker.
    layer.setRenderContext();
    fill({0, 0, 0, 1});
    paint({1, 1, 1, 1});
    window->setRenderContext();
    EXPECT_NEAR(picture([&] {
                    fill({0, 1, 0, 1}), layer.draw({.tint = {1, 0, 0, 0.5f}});
                })
                    .at(5, 5)
                    .r,
                128, 1);
}
} // namespace
