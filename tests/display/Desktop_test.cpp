// A real window on a real desktop: a person's keys and clicks, and fullscreen.

#include <Kobaltrix/KXCore.h>
#include <Kobaltrix/KXCursor.h>
#include <Kobaltrix/KXDisplay.h>
#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXImage.h>
#include <Kobaltrix/KXKeyboard.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXWindow.h>

#include "support/Image.h"

#include <gtest/gtest.h>

#include <SDL.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

namespace {
struct Desktop : testing::Test {
    Desktop() {
        EXPECT_EQ(KXInit(), -1) << KXError();
        window = std::make_unique<KXWindow>("A window to click", KXSize{320, 240}, -1);
        window->setPosition({100, 50});
        window->setRenderContext();
        window->swapBuffers();
        KXResetLogicLoop();
        person("search --name 'A window to click' windowfocus --sync");
        EXPECT_TRUE(becomes([this] { return window->isFocused() != 0; }));
    }
    ~Desktop() override {
        window.reset();
        KXDeInit();
    }

    /// Runs the logic loop until something holds that the window system has to bring about; false if it never
    /// does.
    static bool becomes(const std::function<bool()>& condition) {
        bool holds = false;
        for (const Uint64 end = SDL_GetTicks64() + 20000; !holds && SDL_GetTicks64() < end; SDL_Delay(1)) {
            KXPreLogicLoop();
            for (; KXLogicLoop(); KXLogicUpdate())
                holds = holds || condition();
            KXPostLogicLoop();
        }
        return holds;
    }
    bool becomesSized(float width, float height) const {
        return becomes(
            [=, this] { return window->size().width == width && window->rect().size.height == height; });
    }

    static void person(const std::string& does) {
        EXPECT_EQ(std::system(("xdotool " + does).c_str()), 0) << does; // NOLINT(cert-env33-c)
    }

    std::unique_ptr<KXWindow> window;
};

TEST_F(Desktop, KeysAreTyped) {
    person("keydown k");
    EXPECT_TRUE(becomes([] { return KXKey(KXKeyK) != 0; }));
    EXPECT_EQ(KXCurrentEventWindowID, window->id());
    EXPECT_EQ(KXKey(KXKeyK, 1), -1);
    person("keyup k keydown Left");
    EXPECT_TRUE(becomes([] { return KXKey(KXKeyK) == 0 && KXKey(KXKeyLeft) != 0; }));
    person("keyup Left");
    EXPECT_TRUE(becomes([] { return KXKeyPressed() == 0; }));
}

// Each is over before a step can see the key held. (Taken quicker, one after another is a repeat to the
// system.)
TEST_F(Desktop, NoTapIsLost) {
    person("key --delay 0 --repeat 50 --repeat-delay 20 k");
    int downs = 0, ups = 0;
    EXPECT_TRUE(becomes([&] {
        downs += KXKeyWentDown(KXKeyK);
        ups += KXKeyWentUp(KXKeyK);
        return downs >= 50 && ups >= 50;
    }));
    EXPECT_EQ(downs, 50);
    EXPECT_EQ(ups, 50);
    EXPECT_EQ(KXKeyHeld(KXKeyK), 0);
}

TEST_F(Desktop, ThePointerHasShapes) {
    KXTexture texture(16, 16), empty;
    texture.clear();
    EXPECT_EQ(KXSetCursor(KXCursorHand), -1);
    EXPECT_EQ(KXSetCursor(texture, {1, 1}), -1);
    SDL_Cursor* const own = SDL_GetCursor();
    EXPECT_EQ(KXSetCursor(texture, {1, 1000}), 0) << "it would point from outside";
    EXPECT_STRNE(KXError(), "");
    EXPECT_EQ(KXSetCursor(empty, {0, 0}), 0);
    EXPECT_EQ(SDL_GetCursor(), own);
    EXPECT_EQ(KXSetCursor(KXCursorArrow), -1) << "the one before is freed";
}

TEST_F(Desktop, TheMouseMovesWithoutThePointer) {
    EXPECT_EQ(KXSetMouseRelative(-1), -1);
    float x = 0;
    person("mousemove_relative 40 0");
    EXPECT_TRUE(becomes([&x] { return (x += KXMouseMotion().x) >= 40; })) << x;
    EXPECT_EQ(KXSetMouseRelative(0), -1);
}

TEST_F(Desktop, TheMouseMovesClicksAndTurnsItsWheel) {
    const int left = static_cast<int>(window->getPosition().x),
              top = static_cast<int>(window->getPosition().y);
    person("mousemove 1 1 mousemove " + std::to_string(left + 50) + ' ' + std::to_string(top + 30));
    EXPECT_TRUE(becomes([] { return KXMouseX == 50 && KXMouseY == 30; })) << KXMouseX << ' ' << KXMouseY;
    EXPECT_EQ(KXMousePointAbsolute().x, static_cast<float>(left + 50));
    EXPECT_EQ(KXMousePointAbsolute().y, static_cast<float>(top + 30));
    person("mousedown 1");
    EXPECT_TRUE(becomes([] { return KXMouse(KXMouseLeft) != 0; }));
    person("mouseup 1 mousedown 3");
    EXPECT_TRUE(becomes([] { return KXMouse(KXMouseLeft) == 0 && KXMouse(KXMouseRight) != 0; }));
    person("mouseup 3 click 4");
    EXPECT_TRUE(becomes([] { return KXMouse(KXMouseWheelUp) != 0; }));
    EXPECT_EQ(KXMouse(KXMouseWheelUp), 0) << "a notch lasts for one frame";
    person("click 5");
    EXPECT_TRUE(becomes([] { return KXMouse(KXMouseWheelDown) != 0; }));
    EXPECT_EQ(KXShowMouse(0), SDL_ENABLE);
    EXPECT_EQ(KXShowMouse(-1), SDL_DISABLE);
}

TEST_F(Desktop, FullscreenFillsTheScreenAndComesBack) {
    EXPECT_EQ(window->isFullscreen(), 0);
    window->enterFullscreen(); // without the focus the platform would give the screen back at once
    EXPECT_NE(window->isFullscreen(), 0);
    EXPECT_TRUE(becomesSized(1280, 1024)) << window->size().width;
    // Not only the platform's word for it: the last pixel of the screen can be drawn.
    window->setRenderContext();
    KXDrawRectFill({{0, 0}, {1280, 1024}}, KXRedColor);
    const Pixel red = {255, 0, 0, 255};
    EXPECT_EQ(Image::of(*window).at(1279, 0), red);
    window->exitFullscreen();
    EXPECT_EQ(window->isFullscreen(), 0);
    EXPECT_TRUE(becomesSized(320, 240));
    // And a resize by someone else reaches the window.
    person("search --name 'A window to click' windowsize 400 200");
    EXPECT_TRUE(becomesSized(400, 200));
}

TEST_F(Desktop, AWindowCoversItsDisplayWithoutABorderAndIsMaximised) {
    const KXDisplay display = KXDisplayAt(window->getDisplayIndex());
    EXPECT_EQ(KXNumberOfDisplays(), 1);
    EXPECT_EQ(display.mode.width, 1280);
    EXPECT_EQ(display.bounds.size.height, 1024);
    EXPECT_STRNE(display.name, "");
    ASSERT_GT(display.numberOfModes, 0);
    EXPECT_EQ(KXDisplayModeAt(0, 0).width, 1280);
    EXPECT_EQ(KXDisplayModeAt(0, 9999).width + KXDisplayAt(7).numberOfModes + KXDisplayAt(-1).mode.width, 0);
    EXPECT_STRNE(KXError(), "");
    EXPECT_EQ(window->setFullscreen(KXFullscreenBorderless), -1) << KXError();
    EXPECT_TRUE(becomesSized(1280, 1024)) << window->size().width;
    EXPECT_NE(window->isFullscreen(), 0);
    EXPECT_EQ(window->setFullscreen(KXFullscreenOff), -1) << KXError();
    EXPECT_TRUE(becomesSized(320, 240));
    window->maximize();
    EXPECT_TRUE(becomes([this] { return window->isMaximized() && window->size().width > 1000; }));
    window->restore();
    EXPECT_TRUE(becomesSized(320, 240));
    EXPECT_EQ(window->isMaximized(), 0);
    window->setMaximumSize({250.5f, 200});
    window->setSize({900, 900});
    EXPECT_TRUE(becomesSized(250, 200)) << window->size().width;
}

TEST_F(Desktop, AWindowHasAnIcon) {
    EXPECT_EQ(window->setIcon(KXImage()), 0);
    EXPECT_STRNE(KXError(), "");
    EXPECT_EQ(window->setIcon(KXImage(3, 2, KXRedColor)), -1) << KXError();
    EXPECT_TRUE(becomes([] {
        return std::system("xprop -name 'A window to click' _NET_WM_ICON | grep -q 'Icon (3 x 2)'") == 0;
    }));
}

TEST_F(Desktop, SeveralWindowsAreVisibleAtOnce) {
    KXWindow second("The other", {100, 80});
    second.setRenderContext();
    second.swapBuffers();
    window->setRenderContext();
    window->swapBuffers();
    person("search --onlyvisible --name 'The other' windowfocus --sync");
    EXPECT_TRUE(becomes([&second] { return second.isFocused() != 0; }));
    person("keydown z");
    EXPECT_TRUE(becomes([] { return KXKey(KXKeyZ) != 0; }));
    EXPECT_EQ(KXCurrentEventWindowID, second.id());
    person("keyup z");
    EXPECT_TRUE(becomes([] { return KXKey(KXKeyZ) == 0; }));
}
} // namespace
