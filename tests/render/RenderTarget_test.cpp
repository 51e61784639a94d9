#include "RenderTest.h"

namespace {
struct RenderTarget : RenderTest {
    RenderTarget() { target->clear(); }

    std::unique_ptr<KXTexture> target = std::make_unique<KXTexture>(16, 12);
};

TEST_F(RenderTarget, IsUprightAndDrawnBackUpright) {
    window->setRenderingMode(KXWindowRenderingMode3D); // whose depth test and culling a texture has not
    const auto other = makeWindow();
    target->setRenderContext(); // takes drawing to the texture's own window
    EXPECT_EQ(_KXCurrentWindowRenderContext, window.get());
    KXTexture(4, 4).unsetRenderContext(); // is not the target
    EXPECT_EQ(KXCurrentRenderContext(), target.get());
    paint(KXRedColor, rect(2, 1, 4, 3));
    target->unsetRenderContext();
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
    expectBox(Image::of(*target), {2, 1, 6, 4}, red, transparent);
    window->setRenderContext();
    window->setRenderingMode(KXWindowRenderingMode2D);
    target->draw(20, 10, -1);
    expectBox(Image::of(*window), {22, 11, 26, 14});
}

TEST_F(RenderTarget, ClipsFromTheTopAndSharesTheClipWithItsWindow) {
    using Values = std::array<GLint, 4>;
    window->setClipTo({{2.9f, 1}, {5, 4}});
    EXPECT_EQ(state(GL_SCISSOR_BOX), (Values{2, 43, 5, 4}));
    paint(KXRedColor);
    expectBox(Image::of(*window), {2, 1, 7, 5});
    target->setRenderContext();
    target->setClipTo({{2.9f, 1.9f}, {5, 4}});
    paint(KXRedColor);
    expectBox(Image::of(*target), {2, 1, 7, 5}, red, transparent);
    window->setRenderContext();
    paint(KXBlueColor, rect(0, 10, 64, 38));
    EXPECT_EQ(boxOf(Image::of(*window)), (Box{2, 1, 7, 47})) << "the same pixels from the bottom left";

    for (KXRenderContext* current : targets(*target)) {
        current->setRenderContext();
        current->setClipTo(rect(3, 3, -5, -5)); // nothing, not an error
        paint({0, 1, 0, 1});
        current->unsetClip();
        EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
        const bool isWindow = current == window.get();
        EXPECT_EQ(state(GL_SCISSOR_BOX), isWindow ? Values({0, 0, 64, 48}) : Values({0, 0, 16, 12}));
        EXPECT_EQ((isWindow ? Image::of(*window) : Image::of(*target)).at(3, 3), red);
    }
}

TEST_F(RenderTarget, ManyFramesWithoutUnsetNeitherLeakNorOverflow) {
    for (int frame = 0; frame < 100; ++frame) { // more than a matrix stack is deep
        target->setRenderContext();
        target->setRenderContext();
        window->setRenderContext();
    }
    target->unsetRenderContext();
    KXTexture().setRenderContext(); // empty: refused
    EXPECT_EQ(KXCurrentRenderContext(), window.get()) << "it was not the target any more";
    EXPECT_EQ(state(GL_MODELVIEW_STACK_DEPTH)[0], 1);
    expectBox(picture([] { paint(KXRedColor); }), {0, 0, 64, 48});
}

TEST_F(RenderTarget, LeavesNothingDangling) {
    const std::function<void()> ends[] = {[this] { target.reset(); }, [this] { load(*target, 1, 1, &red); },
                                          [this] { window.reset(); }};
    for (const auto& end : ends) {
        target = std::make_unique<KXTexture>(8, 8);
        target->setRenderContext();
        end();
        EXPECT_EQ(KXCurrentRenderContext(), nullptr);
        EXPECT_EQ(window ? state(GL_FRAMEBUFFER_BINDING)[0] : 0, 0);
    }
    target->setRenderContext(); // has no window any more
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
}

TEST_F(RenderTarget, PixelsThatAreReadShowWhatIsDrawn) {
    const auto redOf = [this] { return target->getPixel({0, 0}, -1).r; };
    EXPECT_EQ(redOf(), 0); // kept
    target->setRenderContext();
    EXPECT_EQ(redOf(), 0);
    paint(KXRedColor);
    EXPECT_EQ(redOf(), 1);
    paint(KXBlueColor);
    window->setRenderContext();
    EXPECT_EQ(redOf(), 0);
}

} // namespace
