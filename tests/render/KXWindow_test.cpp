#include "render/KXWindow.h"

#include "RenderTest.h"

#include <SDL.h>

namespace {
struct Window : RenderTest {};

TEST_F(Window, PassesPropertiesToThePlatform) {
    SDL_Window* platform = SDL_GetWindowFromID(window->id());
    window->setTitle(nullptr);
    EXPECT_STREQ(SDL_GetWindowTitle(platform), "");
    window->setPosition({12.9f, 34.9f});
    EXPECT_EQ(window->getPosition().x + window->rect().origin.y, 12 + 34);
    window->hide();
    EXPECT_EQ(SDL_GetWindowFlags(platform) & (SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE), SDL_WINDOW_HIDDEN);
    KXWindow resizable(nullptr, {10, 10}, 1);
    EXPECT_TRUE(SDL_GetWindowFlags(SDL_GetWindowFromID(resizable.id())) & SDL_WINDOW_RESIZABLE);
}

TEST_F(Window, TellsWhichVerticalSyncIsGranted) {
    KXWindow other("Other", {32, 32});
    for (const KXVerticalSync sync : {KXVerticalSyncOff, KXVerticalSyncOn, KXVerticalSyncAdaptive}) {
        _KXClearError();
        if (other.setVerticalSync(sync)) // else the platform has none of that kind
            EXPECT_EQ(other.verticalSync(), sync);
        else
            EXPECT_STRNE(KXError(), "");
        EXPECT_EQ(KXCurrentRenderContext(), window.get());
    }
    KXDeInit();
    EXPECT_EQ(other.setVerticalSync(KXVerticalSyncOff) | other.verticalSync(), 0) << "a closed window";
}

TEST_F(Window, CachesItsSize) {
    SDL_SetWindowSize(SDL_GetWindowFromID(window->id()), 80, 60);
    EXPECT_EQ(sides(window->size()), (Sides{64, 48})) << "cached";
    EXPECT_EQ(sides(window->rect().size), (Sides{80, 60})) << "asked of the platform";
    window->_invalidateSizeCache();
    EXPECT_EQ(sides(window->size()), (Sides{80, 60}));
    window->setSize({50.9f, 40.9f});
    window->setSize({0, 10});
    EXPECT_EQ(sides(window->size()), (Sides{50, 40}));
    window->setMinimumSize({52.5f, 30.5f});
    window->_invalidateSizeCache();
    EXPECT_EQ(sides(window->size()), (Sides{52, 40}));
}

TEST_F(Window, TakesEverySizeAboveNothing) {
    EXPECT_EQ(sides(KXWindow("Small", {0.9f, 10}).size()), (Sides{1, 10}));
    EXPECT_EQ(sides(KXWindow("Small", {10, 1e-6f}).size()), (Sides{10, 1}));
    const auto refused = [](KXSize size) {
        EXPECT_THROW(KXWindow("Refused", size), std::bad_alloc);
        return std::string(KXError());
    };
    EXPECT_EQ(refused({0, 10}), "Couldn't set 0x10 video mode:");
    EXPECT_EQ(refused({NAN, 10}), "Couldn't set 0x10 video mode:");
    EXPECT_EQ(refused({1e9f, 1e9f}), "Couldn't set 1000000000x1000000000 video mode:");
    EXPECT_EQ(_windowsMap->size(), 1u);
    EXPECT_EQ(KXCurrentRenderContext(), window.get());
    expectBox(picture([] { paint(KXRedColor); }), {0, 0, 64, 48}); // it is still current
    window.reset();
    KXDeInit();
    EXPECT_EQ(refused({20, 10}), "Couldn't set 20x10 video mode:");
}

TEST_F(Window, IsNoTargetUntilTheGameSaysSo) {
    window.reset();
    window = std::make_unique<KXWindow>("Again", KXSize{64, 48});
    // What belongs to it can be made, drawn and read already.
    KXTexture texture(8, 8);
    EXPECT_EQ(boxOf(picture([] { paint(KXRedColor); })), (Box{0, 0, 64, 48}));
    KXWindow other("Other", {32, 32});
    Image::of(other);
    EXPECT_EQ(sides(std::unique_ptr<KXTexture>(window->copyTexture())->size()), (Sides{64, 48}));
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
    texture.setRenderContext();
    EXPECT_EQ(_KXCurrentWindowRenderContext, nullptr);
    window.reset(); // with the texture that is drawn into
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
    other.setRenderContext();
    EXPECT_EQ(KXCurrentRenderContext(), &other);
    EXPECT_EQ(_KXCurrentWindowRenderContext, &other);
}

TEST_F(Window, SwitchesBetweenTwoAndThreeDimensions) {
    GLfloat projection[16];
    window->setRenderingMode(KXWindowRenderingMode3D);
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    EXPECT_NEAR(projection[5], 2.41421356f, 1e-4) << "the cotangent of half of 45 degrees";
    EXPECT_NEAR(projection[0], 2.41421356f * 48 / 64, 1e-4);
    window->setRenderContext(); // the mode stays
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST) && glIsEnabled(GL_CULL_FACE));

    KXTexture target(8, 8);
    target.clear();
    target.setRenderContext();
    EXPECT_FALSE(glIsEnabled(GL_DEPTH_TEST) || glIsEnabled(GL_CULL_FACE));
    window->setRenderingMode(KXWindowRenderingMode2D); // must not disturb the target
    paint(KXRedColor, rect(1, 2, 3, 4));
    expectBox(Image::of(target), {1, 2, 4, 6}, red, transparent);
    window->setRenderContext();
    paint(KXRedColor, rect(60, 0, 4, 4)); // y grows downward, one unit is one point
    expectBox(Image::of(*window), {60, 0, 64, 4});
}

TEST_F(Window, SavesWhatWasDrawn) {
    const TemporaryFolder folder;
    KXWindow odd("Odd", {40, 20});
    odd.setRenderContext();
    fill({0, 0, 0, 1});
    for (int x = 0; x < 40; ++x)
        paint(KXMakeColori(6 * x, 5 * x, 0, 255), rect(x, x / 2, 1, 20));
    const Image drawn = Image::of(odd);
    const std::string path = folder / "shot.bmp";
    for (const int powerOfTwo : {0, -1}) {
        EXPECT_EQ(odd.saveBuffer(path.c_str(), powerOfTwo), -1);
        const Image saved = Image::fromFile(path);
        ASSERT_EQ(std::pair(saved.width, saved.height), powerOfTwo ? std::pair(64, 32) : std::pair(40, 20));
        // The drawn rows lie packed; each image row begins one drawn row behind the one before.
        for (int i = 0; i < saved.width * saved.height; ++i) {
            const int x = i % saved.width, y = i / saved.width, packed = 40 * y + x;
            const Pixel expected = packed < 40 * 20 ? drawn.at(packed % 40, packed / 40) : transparent;
            ASSERT_EQ(std::pair(saved.at(x, y).r, saved.at(x, y).g), std::pair(expected.r, expected.g)) << i;
        }
    }
    for (const char* wrong : {"no/such/100%s.bmp", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(odd.saveBuffer(wrong, 0), 0);
        const std::string start = KXTempString("Unable to save bitmap image (%s): ", wrong ? wrong : "");
        EXPECT_TRUE(std::string(KXError()).starts_with(start)) << KXError();
    }
}

TEST_F(Window, CopiesItselfIntoATexture) {
    paint(KXRedColor, rect(3, 4, 10, 20)); // to the middle
    KXTexture target(8, 8);
    for (KXRenderContext* current : targets(target)) {
        current->setRenderContext();
        const auto framebuffer = state(GL_FRAMEBUFFER_BINDING);
        expectBox(Image::of(*std::unique_ptr<KXTexture>(window->copyTexture())), {3, 4, 13, 24});
        EXPECT_EQ(state(GL_FRAMEBUFFER_BINDING), framebuffer);
        EXPECT_EQ(KXCurrentRenderContext(), current);
    }
    EXPECT_EQ(_KXWindowTextureLoadFromData(&target, {2.9f, 1.9f}, 4, GL_RGBA, "8 bytes."), -1);
    EXPECT_EQ(sides(target.size()), (Sides{2, 1}));
}

TEST_F(Window, ReadsOnlyTheFormatsItKnows) {
    char buffer[64 * 48 * 4];
    constexpr auto message = "Assertion failed: format == GL_RGBA \\|\\| format == GL_RGB, module KXWindow";
    EXPECT_DEATH(window->_readPixels(buffer, GL_BGRA), message);
    EXPECT_DEATH(window->_flipPixels(buffer, GL_LUMINANCE), message);
    paint(KXRedColor, rect(0, 0, 64, 1));
    glPixelStorei(GL_PACK_ROW_LENGTH, 200);
    window->_readPixels(buffer, GL_RGB);
    window->_flipPixels(buffer, GL_RGB);
    EXPECT_EQ(state(GL_PACK_ROW_LENGTH)[0], 200) << "the game's own setting";
    EXPECT_EQ(std::pair(buffer[63 * 3], buffer[64 * 3]), std::pair('\xff', '\0'));
}

struct Windows : RenderTest {
    std::unique_ptr<KXWindow> second = std::make_unique<KXWindow>("Second", KXSize{32, 32});
};

TEST_F(Windows, AreDrawnInTurn) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(KXCurrentRenderContext(), window.get()) << "a new window does not take the drawing over";
        picture([] { paint(KXRedColor); });
        second->setRenderContext();
        expectBox(Image::of(*window), {0, 0, 64, 48}); // reading a window that is not current
        EXPECT_EQ(KXCurrentRenderContext(), second.get());
        window->setClipTo(rect(0, 0, 1, 1)); // must not clip the current window
        fill({0, 0, 0, 1});
        paint(KXRedColor);
        expectBox(Image::of(*second), {0, 0, 32, 32});
        second->swapBuffers();
        window->unsetClip();
        window->swapBuffers();
        window->setRenderContext();
    }
}

TEST_F(Windows, CloseInAnyOrder) {
    // Names of textures are small numbers that start anew in every context.
    auto ofFirst = std::make_unique<KXTexture>(4, 4);
    second->setRenderContext();
    KXTexture ofSecond;
    load(ofSecond, 1, 1, &red);
    ofFirst.reset(); // must not hit the second window's
    window.reset();  // not the current one
    EXPECT_EQ(_KXWindowWithID(second->id()), second.get());
    EXPECT_EQ(KXCurrentRenderContext(), second.get());
    fill({0, 0, 0, 1});
    ofSecond.draw(3, 3, -1);
    expectBox(Image::of(*second), {3, 3, 4, 4});
    ofSecond.setRenderContext();
    second.reset(); // the current one, while a texture of it is the target
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
    EXPECT_EQ(_KXCurrentWindowRenderContext, nullptr);
    window = makeWindow();
    EXPECT_EQ(boxOf(picture([&] { ofSecond.draw(0, 0, -1); })), nothing);
}

TEST_F(Windows, AndTheirTexturesOutliveTheLibrarySafely) {
    KXTexture texture(4, 4);
    KXDeInit();
    EXPECT_EQ(_windowsMap, nullptr);
    EXPECT_EQ(KXInit(), -1);
    for (KXWindow* closed : {window.get(), second.get()}) {
        closed->setRenderContext();
        closed->setRenderingMode(KXWindowRenderingMode3D);
        closed->setClipTo(everything);
        closed->unsetClip();
        closed->enterFullscreen();
        closed->swapBuffers();
        EXPECT_EQ(closed->size().width, 0);
        EXPECT_EQ(closed->saveBuffer("never", 0), 0);
        EXPECT_EQ(closed->copyPixels(nullptr, nullptr), nullptr);
        EXPECT_EQ(closed->copyTexture(), nullptr);
    }
    texture.draw(0, 0, -1);
    texture.clear();
    texture.setRenderContext();
    texture.setClipTo(everything);
    texture.unsetRenderContext();
    EXPECT_EQ(texture.getPixel({0, 0}, -1).r, -1);
    EXPECT_EQ(KXTexture(4, 4).size().width, 0);
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
}
} // namespace
