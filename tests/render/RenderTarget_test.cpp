#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXTexture.h>

#include "core/ground/ErrorSlot.h"
#include "support/WindowTest.h"

#include <SDL_opengl.h>

namespace {
struct RenderTarget : WindowTest {
    static constexpr Pixel red = {255, 0, 0, 255}, transparent = {0, 0, 0, 0};
};

TEST_F(RenderTarget, IsUprightAndDrawnBackUpright) {
    KXTexture target(16, 12);
    target.clear();
    target.setRenderContext();
    EXPECT_EQ(KXCurrentRenderContext(), &target);
    KXDrawRectFill({{2, 1}, {4, 3}}, KXRedColor); // near the top left
    target.unsetRenderContext();
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);

    const Image image = Image::of(target);
    EXPECT_EQ(image.at(2, 1), red);
    EXPECT_EQ(image.at(5, 3), red);
    EXPECT_EQ(image.at(5, 4), transparent);
    EXPECT_EQ(image.at(1, 1), transparent);

    window->setRenderContext();
    target.draw(20, 10, -1);
    const Image shown = Image::of(*window);
    EXPECT_EQ(shown.at(22, 11), red);
    EXPECT_EQ(shown.at(22, 10).r, 0);
}

TEST_F(RenderTarget, ClipsFromTheTop) {
    KXTexture target(16, 12);
    target.clear();
    target.setRenderContext();
    target.setClipTo({{2.9f, 1.9f}, {5, 4}});
    KXDrawRectFill({{0, 0}, {16, 12}}, KXRedColor);
    Image image = Image::of(target);
    for (int y = 0; y < 12; ++y)
        for (int x = 0; x < 16; ++x)
            EXPECT_EQ(image.at(x, y), x >= 2 && x < 7 && y >= 1 && y < 5 ? red : transparent)
                << x << ',' << y;
    target.setClipTo({{3, 3}, {-5, -5}}); // nothing, not an error
    KXDrawRectFill({{0, 0}, {16, 12}}, KXBlueColor);
    EXPECT_EQ(differingPixels(Image::of(target), image), 0);
    target.unsetClip();
    KXDrawRectFill({{0, 0}, {16, 12}}, KXRedColor);
    EXPECT_EQ(Image::of(target).at(15, 11), red);
    target.unsetRenderContext();
}

TEST_F(RenderTarget, ManyFramesWithoutUnsetNeitherLeakNorOverflow) {
    KXTexture target(8, 8);
    for (int frame = 0; frame < 100; ++frame) { // more than a matrix stack is deep
        target.setRenderContext();
        target.setRenderContext();
        KXDrawRectFill({{0, 0}, {8, 8}}, KXRedColor);
        window->setRenderContext();
        EXPECT_EQ(KXCurrentRenderContext(), window.get());
    }
    target.unsetRenderContext();
    EXPECT_EQ(KXCurrentRenderContext(), window.get()) << "it was not the target any more";
    GLint depth = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
    EXPECT_EQ(depth, 1);
    KXDrawRectFill({{0, 0}, {64, 48}}, KXBlueColor);
    EXPECT_EQ(Image::of(*window).at(63, 47).b, 255);
}

TEST_F(RenderTarget, LeavesNothingDanglingWhenDestroyed) {
    {
        KXTexture target(8, 8);
        target.setRenderContext();
    }
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
    GLint framebuffer = -1;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &framebuffer);
    EXPECT_EQ(framebuffer, 0);
    window->setRenderContext();
    KXDrawRectFill({{0, 0}, {64, 48}}, KXRedColor);
    EXPECT_EQ(Image::of(*window).at(0, 47), red);

    KXTexture survivor(8, 8);
    survivor.setRenderContext();
    window.reset();
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
    survivor.unsetRenderContext();
}

TEST_F(RenderTarget, OfAnotherWindowTakesDrawingThere) {
    KXTexture target(8, 8);
    target.clear();
    KXWindow other("Other", {32, 32});
    other.setRenderContext();
    fill({0, 0, 0, 1});
    target.setRenderContext();
    KXDrawRectFill({{0, 0}, {8, 8}}, KXRedColor);
    EXPECT_EQ(Image::of(target).at(7, 7), red);
    target.unsetRenderContext();
    other.setRenderContext();
    EXPECT_EQ(Image::of(other).at(3, 3).r, 0);
    KXDrawRectFill({{0, 0}, {8, 8}}, KXBlueColor);
    EXPECT_EQ(Image::of(other).at(3, 3).b, 255);
}

TEST_F(RenderTarget, PixelsThatAreReadShowWhatIsDrawn) {
    KXTexture target(4, 4);
    target.clear();
    const auto redOf = [&target] { return target.getPixel({0, 0}, -1).r; };
    EXPECT_EQ(redOf(), 0);
    target.setRenderContext();
    EXPECT_EQ(redOf(), 0);
    KXDrawRectFill({{0, 0}, {4, 4}}, {1, 0, 0, 1});
    EXPECT_EQ(redOf(), 1);
    KXDrawRectFill({{0, 0}, {4, 4}}, KXBlueColor);
    target.unsetRenderContext();
    window->setRenderContext();
    EXPECT_EQ(redOf(), 0);
    EXPECT_EQ(target.getPixel({0, 0}, 0).b, 1);
}

TEST_F(RenderTarget, EmptyTexturesAreRefused) {
    KXTexture empty;
    empty.setRenderContext();
    EXPECT_STRNE(KXError(), "");
    EXPECT_EQ(KXCurrentRenderContext(), window.get());
}

TEST_F(RenderTarget, ReplacingItsImageStopsDrawingIntoIt) {
    KXTexture target(8, 8);
    target.setRenderContext();
    const std::vector<char> zeros(4 * 4 * 4);
    EXPECT_EQ(target._loadFromData(4, 4, 4, GL_RGBA, zeros.data()), -1);
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
}
} // namespace
