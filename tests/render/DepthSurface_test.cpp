// Windows have no depth buffer until they are in 3D mode, and then one that nobody need know of.

#include "RenderTest.h"
#include "render/DepthSurface.h"
#include "render/Framebuffer.h"
#include "render/GLFunctions.h"

namespace {
struct DepthSurface : RenderTest {
    static constexpr Pixel nearer = {0, 255, 0, 255};

    /// A triangle that covers the middle, at a distance from the camera.
    static void triangle(KXColor color, float distance) {
        glDisable(GL_TEXTURE_2D);
        glColor4f(color.r, color.g, color.b, color.a);
        glBegin(GL_TRIANGLES);
        for (const auto& [x, y] : {std::pair(-0.3f, -0.3f), {0.3f, -0.3f}, {0.0f, 0.3f}})
            glVertex3f(x * distance, y * distance, -distance);
        glEnd();
        glEnable(GL_TEXTURE_2D);
    }
    /// The nearer one first: without depth the other one would hide it.
    static void twoTriangles() {
        triangle({0, 1, 0, 1}, 2);
        triangle(KXBlueColor, 3);
    }
    Pixel middle() { return Image::of(*window).at(32, 24); }
};

TEST_F(DepthSurface, ComesWithThe3DModeAndStays) {
    // Where the driver has no framebuffer objects, windows come with it.
    const int from = _KXGL.blitFramebuffer ? 0 : 24;
    EXPECT_EQ(state(GL_DEPTH_BITS)[0], from);
    paint(KXRedColor, rect(1, 2, 5, 4));
    window->setRenderingMode(KXWindowRenderingMode3D);
    EXPECT_GE(state(GL_DEPTH_BITS)[0], 16);
    EXPECT_EQ(state(GL_ALPHA_BITS)[0], 0) << "as the window itself";
    twoTriangles();
    EXPECT_EQ(middle(), nearer);
    EXPECT_EQ(Image::of(*window).at(1, 2), red) << "drawn before";
    window->setRenderingMode(KXWindowRenderingMode2D);
    glClear(GL_DEPTH_BUFFER_BIT); // in 2D mode, of what is in 3D
    window->setRenderingMode(KXWindowRenderingMode3D);
    triangle(KXBlueColor, 3);
    EXPECT_EQ(middle(), blue);

    // In another window all of it is separate.
    const auto other = makeWindow();
    EXPECT_EQ(state(GL_DEPTH_BITS)[0], from);
    window->setRenderingMode(KXWindowRenderingMode2D);
    EXPECT_EQ(state(GL_FRAMEBUFFER_BINDING)[0], 0);
    window->setRenderContext();
    EXPECT_GE(state(GL_DEPTH_BITS)[0], 16) << "it may be in 3D mode again";
    EXPECT_EQ(middle(), blue);
}

TEST_F(DepthSurface, ChangesNoPixelOf2D) {
    const auto shapes = [] {
        for (int i = 0; i < 8; ++i) {
            const auto at = static_cast<float>(4 * i + 2);
            KXDrawLine({at, at}, {at + 20, at + static_cast<float>(i)}, {0.3f, 1, 0.9f, 0.7f});
            KXDrawCircle({60 - at, 20}, i, 9, KXRedColor);
            KXDrawCircleFill({50, at}, 3 * i, 7, {1, 0, 1, 0.1f});
            KXDrawRectFill(rect(6 * i, 30, 9, 9), {0.7f, 0.1f, 0.5f, 0.3f});
        }
    };
    const Image plain = picture(shapes);
    window->setRenderingMode(KXWindowRenderingMode3D);
    window->setRenderingMode(KXWindowRenderingMode2D);
    EXPECT_EQ(differingPixels(plain, picture(shapes)), 0);
}

TEST_F(DepthSurface, IsWhatTheWindowShows) {
    window->setRenderingMode(KXWindowRenderingMode3D);
    KXTexture target(8, 8);
    for (int frame = 0; frame < 2; ++frame) {
        window->setRenderContext();
        window->setClipTo(rect(0, 0, 64, 48));
        fill({0, 0, 0, 1});
        target.setRenderContext(); // among the 3D
        fill({1, 0, 0, 1});
        target.unsetRenderContext();
        window->setRenderContext();
        twoTriangles();
        window->setClipTo(rect(0, 0, 2, 2)); // whatever is clipped, all of it is shown
        const auto bound = state(GL_FRAMEBUFFER_BINDING);
        window->swapBuffers();
        EXPECT_EQ(state(GL_FRAMEBUFFER_BINDING), bound);
        EXPECT_TRUE(glIsEnabled(GL_SCISSOR_TEST));
        _KXBindFramebuffer(0);
        Pixel shown = {};
        glReadPixels(32, 24, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, &shown);
        EXPECT_EQ(shown, nearer);
    }
    expectBox(Image::of(target), {0, 0, 8, 8}, red, transparent);
}

TEST_F(DepthSurface, LeavesTheGamesFramebufferBound) {
    KXTexture target(64, 48);
    target.setRenderContext();
    const auto ofTheGame = state(GL_FRAMEBUFFER_BINDING);
    window->setRenderContext();
    _KXBindFramebuffer(static_cast<unsigned>(ofTheGame[0]));
    window->setRenderingMode(KXWindowRenderingMode3D);
    delete window->copyTexture();
    window->swapBuffers();
    EXPECT_EQ(state(GL_FRAMEBUFFER_BINDING), ofTheGame);
}

TEST_F(DepthSurface, FollowsTheWindowsSize) {
    window->setRenderingMode(KXWindowRenderingMode3D);
    for (const KXSize size : {KXSize{30, 20}, {80, 60}}) {
        window->setSize(size);
        window->setRenderContext();
        if (size.width > 64 && !_KXSurfaceFramebuffer())
            break; // without a display a window's own pixels do not grow
        fill({0, 0, 0, 1});
        twoTriangles();
        window->setRenderingMode(KXWindowRenderingMode2D);
        paint(KXRedColor, {{size.width - 2, size.height - 3}, {2, 3}});
        window->setRenderingMode(KXWindowRenderingMode3D);
        const Image drawn = Image::of(*window);
        ASSERT_EQ(std::pair(float(drawn.width), float(drawn.height)), std::pair(size.width, size.height));
        EXPECT_EQ(count(drawn, red), 6);
        EXPECT_EQ(drawn.at(drawn.width / 2, drawn.height / 2), nearer);
    }
}
} // namespace
