#include "render/KXWindow.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXTexture.h>

#include "core/ground/ErrorSlot.h"
#include "render/KXRenderContext.h"
#include "support/TemporaryFolder.h"
#include "support/WindowTest.h"

#include <SDL.h>
#include <SDL_opengl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <new>

namespace {
constexpr Pixel black = {0, 0, 0, 255}, red = {255, 0, 0, 255}, blue = {0, 0, 255, 255};

struct Window : WindowTest {};

TEST_F(Window, IsRegisteredWhileItLives) {
    EXPECT_EQ(_KXWindowWithID(window->id()), window.get());
    EXPECT_EQ(_KXWindowWithID(window->id() + 1), nullptr);
    {
        KXWindow second("Second", {10, 10}, -1);
        EXPECT_EQ(_windowsMap->size(), 2u);
    }
    window.reset();
    EXPECT_EQ(_windowsMap, nullptr);
    window = std::make_unique<KXWindow>("Again", KXSize{10, 10});
    EXPECT_EQ(_KXWindowWithID(window->id()), window.get());
}

TEST_F(Window, PassesPropertiesToThePlatform) {
    SDL_Window* platform = SDL_GetWindowFromID(window->id());
    EXPECT_STREQ(SDL_GetWindowTitle(platform), "Test");
    window->setTitle("Gr\u00fc\u00dfe");
    EXPECT_STREQ(SDL_GetWindowTitle(platform), "Gr\u00fc\u00dfe");
    window->setTitle(nullptr);
    EXPECT_STREQ(SDL_GetWindowTitle(platform), "");
    window->setPosition({12.9f, 34.9f});
    EXPECT_EQ(window->getPosition().x, 12);
    EXPECT_EQ(window->rect().origin.y, 34);
    window->setMinimumSize({20.5f, 30.5f});
    int width = 0, height = 0;
    SDL_GetWindowMinimumSize(platform, &width, &height);
    EXPECT_EQ(width, 20);
    EXPECT_EQ(height, 30);
    window->hide();
    EXPECT_TRUE(SDL_GetWindowFlags(platform) & SDL_WINDOW_HIDDEN);
    window->show();
    EXPECT_FALSE(SDL_GetWindowFlags(platform) & SDL_WINDOW_HIDDEN);
    EXPECT_GE(window->getDisplayIndex(), 0);
    EXPECT_EQ(window->isFullscreen(), 0);
    EXPECT_FALSE(SDL_GetWindowFlags(platform) & SDL_WINDOW_RESIZABLE);
    KXWindow resizable(nullptr, {10, 10}, 1);
    EXPECT_TRUE(SDL_GetWindowFlags(SDL_GetWindowFromID(resizable.id())) & SDL_WINDOW_RESIZABLE);
}

TEST_F(Window, CachesItsSize) {
    EXPECT_EQ(window->size().width, 64);
    SDL_SetWindowSize(SDL_GetWindowFromID(window->id()), 80, 60);
    EXPECT_EQ(window->size().width, 64) << "cached";
    EXPECT_EQ(window->rect().size.width, 80) << "asked of the platform";
    window->_invalidateSizeCache();
    EXPECT_EQ(window->size().height, 60);
    window->setSize({50.9f, 40.9f});
    EXPECT_EQ(window->size().width, 50);
    EXPECT_EQ(window->size().height, 40);
}

TEST_F(Window, IsNoTargetUntilTheGameSaysSo) {
    window.reset();
    window = std::make_unique<KXWindow>("Again", KXSize{64, 48});
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
    EXPECT_EQ(_KXCurrentWindowRenderContext, nullptr);
    // What belongs to it can be made, drawn and read already, whatever happens in between.
    const std::unique_ptr<KXTexture> copy(window->copyTexture());
    auto target = std::make_unique<KXTexture>(8, 8);
    {
        KXWindow second("Second", {32, 32});
        Image::of(second);
        second.setRenderContext();
    }
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
    EXPECT_EQ(target->size().width, 8);
    EXPECT_EQ(copy->size().width, 64);
    target->setRenderContext();
    window.reset();
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);

    KXWindow first("First", {64, 48}), other("Other", {32, 32});
    KXDrawRectFill({{0, 0}, {1, 1}}, KXRedColor);
    EXPECT_EQ(Image::of(first).at(0, 0), red);
    KXTexture texture(8, 8);
    texture.setRenderContext();
    fill(KXRedColor);
    texture.unsetRenderContext();
    EXPECT_EQ(Image::of(texture).at(0, 0), red);
    Image::of(other);
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
    EXPECT_EQ(_KXCurrentWindowRenderContext, nullptr) << "reading another window makes none current";
    first.setRenderContext();
    EXPECT_EQ(KXCurrentRenderContext(), &first);
    EXPECT_EQ(_KXCurrentWindowRenderContext, &first);
}

TEST_F(Window, TakesTheSmallestSizeThereIs) {
    for (const KXSize size : {KXSize{0.9f, 10}, {10, 0.5f}, {1e-6f, 1e-6f}}) {
        KXWindow tiny("Tiny", size);
        tiny.setRenderContext();
        EXPECT_EQ(tiny.size().width, std::max(1.0f, std::trunc(size.width)));
        EXPECT_EQ(tiny.size().height, std::max(1.0f, std::trunc(size.height)));
        KXDrawRectFill({{0, 0}, {10, 10}}, KXRedColor);
        EXPECT_EQ(Image::of(tiny).at(0, 0), red);
    }
}

TEST_F(Window, CannotBeMadeOfNothing) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const struct {
        KXSize size;
        const char* message;
    } cases[] = {
        {{0, 10}, "Couldn't set 0x10 video mode:"},
        {{10, -3}, "Couldn't set 10x-3 video mode:"},
        {{nan, 10}, "Couldn't set 0x10 video mode:"},
        {{1e9f, 1e9f}, "Couldn't set 1000000000x1000000000 video mode:"},
    };
    for (const auto& [size, message] : cases) {
        EXPECT_THROW(KXWindow("Bad", size), std::bad_alloc);
        EXPECT_STREQ(KXError(), message);
    }
    EXPECT_EQ(_windowsMap->size(), 1u);
    KXDrawRectFill({{0, 0}, {64, 48}}, KXRedColor); // the first window is still current
    EXPECT_EQ(Image::of(*window).at(0, 0), red);
}

TEST_F(Window, ClipsInPointsFromTheTop) {
    window->setClipTo({{10.9f, 20}, {5, 6}});
    std::array<GLint, 4> box = {};
    glGetIntegerv(GL_SCISSOR_BOX, box.data());
    EXPECT_EQ(box, (std::array<GLint, 4>{10, 22, 5, 6}));
    KXDrawRectFill({{0, 0}, {64, 48}}, KXRedColor);
    const Image image = Image::of(*window);
    EXPECT_EQ(image.at(10, 20), red);
    EXPECT_EQ(image.at(14, 25), red);
    EXPECT_EQ(image.at(9, 20), black);
    EXPECT_EQ(image.at(14, 26), black);
    window->setClipTo({{0, 0}, {-1, -1}}); // nothing, not an error
    KXDrawRectFill({{0, 0}, {64, 48}}, KXBlueColor);
    EXPECT_EQ(differingPixels(Image::of(*window), image), 0);
    window->unsetClip();
    EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
    glGetIntegerv(GL_SCISSOR_BOX, box.data());
    EXPECT_EQ(box, (std::array<GLint, 4>{0, 0, 64, 48}));
}

TEST_F(Window, SwitchesBetweenTwoAndThreeDimensions) {
    GLfloat projection[16];
    window->setRenderingMode(KXWindowRenderingMode3D);
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_TRUE(glIsEnabled(GL_CULL_FACE));
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    EXPECT_NEAR(projection[5], 2.41421356f, 1e-4) << "the cotangent of half of 45 degrees";
    EXPECT_NEAR(projection[0], 2.41421356f * 48 / 64, 1e-4);
    EXPECT_NEAR(projection[10], -1001.0f / 999, 1e-4);
    window->setRenderContext(); // the mode stays
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));

    KXTexture target(8, 8);
    target.setRenderContext();
    EXPECT_FALSE(glIsEnabled(GL_DEPTH_TEST));
    window->setRenderingMode(KXWindowRenderingMode2D); // must not disturb the target
    target.clear();
    KXDrawRectFill({{0, 0}, {8, 8}}, KXRedColor);
    EXPECT_EQ(Image::of(target).at(7, 0), red);
    target.unsetRenderContext();
    window->setRenderContext();
    EXPECT_FALSE(glIsEnabled(GL_DEPTH_TEST));
    KXDrawRectFill({{60, 0}, {4, 4}}, KXRedColor); // y grows downward, one unit is one point
    EXPECT_EQ(Image::of(*window).at(63, 0), red);
}

TEST_F(Window, SavesWhatItShows) {
    const TemporaryFolder folder;
    KXDrawRectFill({{3, 4}, {10, 10}}, KXRedColor);
    const Image shown = Image::of(*window);
    const std::string path = folder / "shot.bmp";
    EXPECT_EQ(window->saveBuffer(path.c_str(), 0), -1);
    const Image saved = Image::fromFile(path);
    ASSERT_EQ(saved.width, 64);
    ASSERT_EQ(saved.height, 48);
    EXPECT_EQ(saved.at(3, 4).r, 255);
    EXPECT_EQ(saved.at(2, 4).r, 0);
    EXPECT_EQ(saved.at(12, 13).r, 255);

    EXPECT_EQ(window->saveBuffer((folder / "100%s/none.bmp").c_str(), 0), 0);
    EXPECT_TRUE(std::string(KXError()).starts_with("Unable to save bitmap image (")) << KXError();
    EXPECT_NE(std::string(KXError()).find("100%s/none.bmp): "), std::string::npos) << KXError();
    EXPECT_EQ(window->saveBuffer(nullptr, 0), 0);
}

TEST_F(Window, SavesThePackedPowerOfTwoPicture) {
    const TemporaryFolder folder;
    KXWindow odd("Odd", {40, 20});
    odd.setRenderContext();
    fill({0, 0, 0, 1});
    for (int x = 0; x < 40; ++x)
        KXDrawRectFill({{static_cast<float>(x), 0}, {1, 20}}, KXMakeColori(6 * x, 0, 0, 255));
    const Image drawn = Image::of(odd);
    const std::string path = folder / "shot.bmp";
    EXPECT_EQ(odd.saveBuffer(path.c_str(), -1), -1);
    const Image saved = Image::fromFile(path);
    ASSERT_EQ(saved.width, 64);
    ASSERT_EQ(saved.height, 32);
    // The drawn rows lie packed at the start; each image row begins one drawn row behind the one before.
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 64; ++x) {
            const int packed = y * 40 + x;
            const int expected = packed < 40 * 20 ? drawn.pixels[static_cast<std::size_t>(packed)].r : 0;
            ASSERT_EQ(saved.at(x, y).r, expected) << x << ',' << y;
        }
}

TEST_F(Window, CopiesItselfIntoATexture) {
    KXDrawRectFill({{3, 4}, {10, 10}}, KXRedColor);
    GLint framebuffer = 0;
    const std::unique_ptr<KXTexture> copy(window->copyTexture());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->size().width, 64);
    EXPECT_EQ(copy->size().height, 48);
    EXPECT_EQ(copy->getPixel({3, 4}, -1).r, 1);
    EXPECT_EQ(copy->getPixel({3, 3}, -1).r, 0);
    EXPECT_EQ(KXCurrentRenderContext(), window.get());

    // Also while a texture is the target, and in the middle of the game's own matrices.
    KXTexture target(8, 8);
    target.setRenderContext();
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &framebuffer);
    const std::unique_ptr<KXTexture> second(window->copyTexture());
    EXPECT_EQ(second->getPixel({12, 13}, 0).r, 1);
    GLint after = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &after);
    EXPECT_EQ(after, framebuffer);
    EXPECT_EQ(KXCurrentRenderContext(), &target);
    target.unsetRenderContext();
}

TEST_F(Window, LoadsDataIntoTextures) {
    const Pixel pixels[2] = {{1, 2, 3, 255}, {4, 5, 6, 255}};
    KXTexture texture;
    EXPECT_EQ(_KXWindowTextureLoadFromData(&texture, {2.9f, 1.9f}, 4, GL_RGBA,
                                           reinterpret_cast<const char*>(pixels)),
              -1);
    EXPECT_EQ(texture.size().width, 2);
    EXPECT_EQ(texture.size().height, 1);
    EXPECT_EQ(Image::of(texture).at(1, 0), pixels[1]);
}

TEST_F(Window, ReadsOnlyTheFormatsItKnows) {
    std::vector<char> buffer(64 * 48 * 4);
    constexpr auto message = "Assertion failed: format == GL_RGBA \\|\\| format == GL_RGB, module KXWindow";
    EXPECT_DEATH(window->_readPixels(buffer.data(), GL_BGRA), message);
    EXPECT_DEATH(window->_flipPixels(buffer.data(), GL_LUMINANCE), message);
    KXDrawRectFill({{0, 0}, {64, 1}}, KXRedColor);
    glPixelStorei(GL_PACK_ROW_LENGTH, 200);
    window->_readPixels(buffer.data(), GL_RGB);
    window->_flipPixels(buffer.data(), GL_RGB);
    GLint rowLength = 0;
    glGetIntegerv(GL_PACK_ROW_LENGTH, &rowLength);
    EXPECT_EQ(rowLength, 200) << "the game's own setting";
    EXPECT_EQ(static_cast<unsigned char>(buffer[63 * 3]), 255);
    EXPECT_EQ(buffer[64 * 3], 0);
}

struct Windows : WindowTest {
    Windows() : second(std::make_unique<KXWindow>("Second", KXSize{32, 32})) {}

    std::unique_ptr<KXWindow> second;
};

TEST_F(Windows, AreDrawnInTurn) {
    EXPECT_EQ(KXCurrentRenderContext(), window.get()) << "opening a window does not take the drawing over";
    KXDrawRectFill({{0, 0}, {64, 48}}, KXRedColor);
    for (int i = 0; i < 3; ++i) {
        second->setRenderContext();
        fill({0, 0, 0, 1});
        KXDrawRectFill({{0, 0}, {32, 32}}, KXBlueColor);
        EXPECT_EQ(Image::of(*second).at(31, 31), blue);
        EXPECT_EQ(Image::of(*window).at(0, 0), red) << "reading a window that is not current";
        EXPECT_EQ(KXCurrentRenderContext(), second.get());
        window->setClipTo({{0, 0}, {1, 1}}); // must not clip the current window
        KXDrawRectFill({{31, 31}, {1, 1}}, KXRedColor);
        EXPECT_EQ(Image::of(*second).at(31, 31), red);
        window->unsetClip();
        window->setRenderContext();
        fill({0, 0, 0, 1});
        KXDrawRectFill({{0, 0}, {64, 48}}, KXRedColor);
        second->swapBuffers();
        window->swapBuffers();
        KXDrawRectFill({{0, 0}, {64, 48}}, KXRedColor);
    }
}

TEST_F(Windows, CloseInAnyOrder) {
    KXTexture ofFirst(4, 4);
    second->setRenderContext();
    KXTexture ofSecond(4, 4);
    window.reset(); // not the current one
    EXPECT_EQ(KXCurrentRenderContext(), second.get());
    KXDrawRectFill({{0, 0}, {32, 32}}, KXBlueColor);
    EXPECT_EQ(Image::of(*second).at(0, 0), blue);
    ofSecond.setRenderContext();
    second.reset(); // the current one, while a texture of it is the target
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
    EXPECT_EQ(_KXCurrentWindowRenderContext, nullptr);
    window = std::make_unique<KXWindow>("Third", KXSize{16, 16});
    window->setRenderContext();
    ofFirst.draw(0, 0, -1);
    ofSecond.setRenderContext();
    EXPECT_EQ(KXCurrentRenderContext(), window.get());
}

TEST_F(Windows, DeletingATextureNeverHitsAnotherWindows) {
    // Names of textures are small numbers that start anew in every context.
    auto ofFirst = std::make_unique<KXTexture>(4, 4);
    second->setRenderContext();
    KXTexture ofSecond(4, 4);
    const std::vector<char> white(4 * 4 * 4, '\xff');
    ofSecond._loadFromData(4, 4, 4, GL_RGBA, white.data());
    ofFirst.reset();
    ofSecond.draw(0, 0, -1);
    EXPECT_EQ(Image::of(*second).at(3, 3).g, 255);
}

TEST_F(Windows, OutliveTheLibrarySafely) {
    KXDeInit();
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
    EXPECT_EQ(_windowsMap, nullptr);
    EXPECT_EQ(KXInit(), -1);
    for (KXWindow* closed : {window.get(), second.get()}) {
        closed->setRenderContext();
        closed->setRenderingMode(KXWindowRenderingMode3D);
        closed->setSize({5, 5});
        closed->setTitle("closed");
        closed->setClipTo({{0, 0}, {5, 5}});
        closed->unsetClip();
        closed->enterFullscreen();
        closed->exitFullscreen();
        closed->swapBuffers();
        closed->hide();
        EXPECT_EQ(closed->size().width, 0);
        EXPECT_EQ(closed->saveBuffer("never", 0), 0);
        EXPECT_EQ(closed->copyTexture(), nullptr);
    }
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
}

TEST(WindowWithoutTheLibrary, IsRefused) {
    EXPECT_THROW(KXWindow("Early", {20, 10}), std::bad_alloc);
    EXPECT_STREQ(KXError(), "Couldn't set 20x10 video mode:");
}
} // namespace
