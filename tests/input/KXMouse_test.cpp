#include "InputTest.h"

#include <climits>
#include <cmath>
#include <functional>
#include <tuple>

namespace {
TEST_F(InputTest, MouseButtonsAndTheWheel) {
    const auto far = static_cast<KXMouseButton>(258); // the last that the platform can tell of
    SDL_Event noButton = {};
    noButton.type = SDL_MOUSEBUTTONUP;
    // What is done, and what is down without and with a control key: a bit for each number of KXMouse().
    const std::tuple<std::function<void()>, int, int> rows[] = {
        {[&] { user.hold(KXMouseLeft); }, 1, 2},
        {[&] { user.release(KXMouseLeft), user.hold(KXMouseMiddle); }, 4, 4},
        {[&] {
             user.release(KXMouseMiddle), user.hold(KXMouseRight), user.hold(KXMouseBack), user.hold(far);
         },
         2, 2},
        {[&] { user.release(KXMouseRight), SDL_PushEvent(&noButton); }, 0, 0},
        {[&] { user.wheel(1), user.wheel(0); }, 16, 16}, // the second takes nothing back
        {[&] { user.wheel(-3); }, 8, 8},
        {[&] { user.wheel(0, -1); }, 32, 32},
        {[&] { user.wheel(-1, 2); }, 72, 72},
        {[&] { user.wheel(float(INT_MAX), float(INT_MIN)); }, 48, 48},
    };
    for (const auto& row : rows) {
        const auto& [act, plain, withControl] = row;
        act();
        _KXUnsetMouseWheel(); // of the row before
        _KXDispatchEvents();
        for (int control : {0, int{SDLK_LCTRL}, int{SDLK_RCTRL}}) {
            _KXSetKey(control);
            int down = KXMouse(INT_MIN) | KXMouse(-1) | KXMouse(7);
            for (int number = 0; number < 7; ++number)
                down |= KXMouse(number) & 1 << number;
            EXPECT_EQ(down, control ? withControl : plain) << &row - rows;
            _KXUnsetKey(control);
        }
    }
}

TEST_F(InputTest, CursorAndPositions) {
    user.move({7, -16});
    user.move({10, -20});
    _KXDispatchEvents();
    _KXSetTouchPosition(-0.5f, NAN, {101, 300});
    const _KXInputState told = _KXTakeInputState();
    EXPECT_EQ(told.mousePosition, (_KXExportedPoint{10, -20, 10, -20}));
    EXPECT_EQ(told.mouseMotion, (_KXExportedPoint{3, -4, 3, -4}));
    EXPECT_EQ(told.touchPosition, (_KXExportedPoint{-50, 0, -50, 0}));
    for (int show : {0, 7, -1, 0, 1}) {
        const int before = SDL_ShowCursor(SDL_QUERY);
        EXPECT_EQ(KXShowMouse(show), before) << show;
        EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), show ? SDL_ENABLE : SDL_DISABLE) << show;
    }
}
} // namespace
