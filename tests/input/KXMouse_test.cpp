#include "input/KXMouse.h"
#include "input/KXTouch.h"
#include "input/Keyboard.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cmath>

namespace {
// The buttons that are down, a bit for each number of KXMouse().
int buttons() {
    for (int number : {INT_MIN, -1, 7, INT_MAX})
        EXPECT_EQ(KXMouse(number), 0) << number;
    int down = 0;
    for (int number = 0; number < 7; ++number)
        down |= KXMouse(number) & 1 << number;
    return down;
}

void button(int number, int state) {
    SDL_MouseButtonEvent event = {};
    event.button = static_cast<Uint8>(number);
    event.state = static_cast<Uint8>(state);
    _KXSetMouse(event);
}

void wheel(int x, int y, Uint32 direction) {
    SDL_MouseWheelEvent event = {};
    event.x = x;
    event.y = y;
    event.direction = direction;
    _KXSetMouseWheel(event);
}

struct Mouse : testing::Test {
    Mouse() { _KXInitKeys(); }
    ~Mouse() override {
        for (int number = 1; number <= 3; ++number)
            button(number, SDL_RELEASED);
        _KXUnsetMouseWheel();
        _KXInitKeys();
    }
};

TEST_F(Mouse, ButtonsAndTheControlKeys) {
    // The platform's number of the button, and what is down without and with a control key.
    const int rows[][3] = {{1, 1, 2}, {2, 4, 4}, {3, 2, 2}, {0, 0, 0}, {4, 0, 0}, {255, 0, 0}};
    for (const auto& [pressed, plain, withControl] : rows) {
        button(pressed, SDL_PRESSED);
        EXPECT_EQ(buttons(), plain) << pressed;
        for (int control : {SDLK_LCTRL, SDLK_RCTRL}) {
            _KXSetKey(control);
            EXPECT_EQ(buttons(), withControl) << pressed;
            _KXUnsetKey(control);
        }
        button(pressed, SDL_RELEASED);
        EXPECT_EQ(buttons(), 0) << pressed;
    }
}

TEST_F(Mouse, WheelNotchesStayUntilTheFrameEnds) {
    const int rows[][3] = {{0, 1, 16}, {0, -3, 8}, {-1, 0, 32}, {2, -1, 72}, {INT_MIN, INT_MAX, 48}};
    for (const auto& [x, y, expected] : rows)
        for (Uint32 direction : {SDL_MOUSEWHEEL_NORMAL, SDL_MOUSEWHEEL_FLIPPED}) {
            wheel(x, y, direction);
            wheel(0, 0, direction); // takes nothing back
            EXPECT_EQ(buttons(), expected) << x << " " << y;
            _KXUnsetMouseWheel();
            EXPECT_EQ(buttons(), 0) << x << " " << y;
        }
}

TEST_F(Mouse, Motion) {
    _KXSetMouseMotion({SDL_MOUSEMOTION, 0, 0, 0, 0, 10, -20, 3, -4});
    const KXPoint point = KXMousePoint, relative = KXMousePointRelative;
    EXPECT_EQ((std::array{KXMouseX, KXMouseY, KXMouseXRelative, KXMouseYRelative}),
              (std::array{10, -20, 3, -4}));
    EXPECT_EQ((std::array{point.x, point.y, relative.x, relative.y}), (std::array{10.f, -20.f, 3.f, -4.f}));
}

TEST_F(Mouse, CursorAndPositionOnTheDesktop) {
    ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_VIDEO), 0) << SDL_GetError();
    SDL_Window* window = SDL_CreateWindow("", 0, 0, 100, 100, 0);
    ASSERT_NE(window, nullptr) << SDL_GetError();
    SDL_WarpMouseInWindow(window, 30, 40);
    int x = -1, y = -1;
    SDL_GetGlobalMouseState(&x, &y);
    const KXPoint point = KXMousePointAbsolute();
    EXPECT_EQ((std::array{point.x, point.y}), (std::array{float(x), float(y)}));

    for (int show : {0, 7, -1, 0, 1}) {
        const int before = SDL_ShowCursor(SDL_QUERY);
        EXPECT_EQ(KXShowMouse(show), before) << show;
        EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), show ? SDL_ENABLE : SDL_DISABLE) << show;
    }
    SDL_DestroyWindow(window);
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

TEST(Touch, PositionIsScaledAndTruncated) {
    const struct {
        float x, y;
        KXSize window;
        int expectedX, expectedY;
    } rows[] = {{0.999f, 0.001f, {400, 300}, 399, 0},
                {-0.5f, -0.001f, {101, 300}, -50, 0},
                {1, 1, {400, 300}, 400, 300},
                {NAN, INFINITY, {400, 300}, 0, INT_MAX},
                {1e30f, -1e30f, {1e30f, 300}, INT_MAX, INT_MIN}};
    for (const auto& row : rows) {
        _KXSetTouchPosition(row.x, row.y, row.window);
        EXPECT_EQ((std::array{KXTouchX, KXTouchY}), (std::array{row.expectedX, row.expectedY}));
        EXPECT_EQ((std::array{KXTouchPoint.x, KXTouchPoint.y}),
                  (std::array{float(KXTouchX), float(KXTouchY)}));
    }
    for (int touching : {-1, 0}) {
        _KXSetTouching(touching);
        EXPECT_EQ(KXFingerDown(), touching);
    }
}
} // namespace
