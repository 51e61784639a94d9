#include "core/dispatch/EventDispatch.h"

#include "input/InputState.h"
#include "support/PlatformEvents.h"
#include "support/WindowTest.h"

#include <Kobaltrix/KXApplication.h>
#include <KobaltrixTest/KXTestPad.h>
#include <KobaltrixTest/KXTestUser.h>

#include <SDL.h>

#include <functional>
#include <vector>

namespace {
struct EventDispatch : WindowTest {
    EventDispatch() { forgetPlatformEvents(); }
    ~EventDispatch() override {
        KXSetWindowResizedCallback(nullptr);
        KXSetTouchMovesMouse(-1);
        KXApplicationCancelQuitRequest();
        _KXPutInputState({});
    }

    KXTestUser user{window->id()};
    const int fingersAlone = KXSetTouchMovesMouse(0);
};

TEST_F(EventDispatch, EachKindOfEventReachesItsPlaceWithinTheStepAndAnyStateCanBePutBack) {
    KXTestPad pad;
    EXPECT_EQ(KXInitGamePad(), -1);
    bool (*seen)() = nullptr;
    bool wasSeen = false;
    std::vector<_KXInputState> states;
    KXTestUser hands(window->id(), [&] {
        states.push_back(_KXTakeInputState());
        wasSeen = seen();
    });
    SDL_Event lifted = {}; // elsewhere than it was
    lifted.tfinger = {SDL_FINGERUP, 0, 1, 0, 0.5f, 0.5f, 0, 0, 0, window->id()};
    const std::pair<std::function<void()>, bool (*)()> rows[] = {
        {[&] { hands.hold(KXKeyA); }, [] { return KXKey(KXKeyA) == -1; }},
        {[&] { hands.release(KXKeyA); }, [] { return KXKey(KXKeyA) == 0; }},
        {[&] { hands.hold(KXKeyB); }, [] { return KXKey(KXKeyB, 1) == -1; }},
        {[&] { hands.hold(KXKeyC); }, // and of the other key the game has been told
         [] { return KXKey(KXKeyC) && !KXKey(KXKeyB, 1); }},
        {[&] {
             hands.move({11, -3});
         },
         [] { return KXMouseX == 11 && KXMousePoint.y == -3 && KXMouseYRelative == -3; }},
        {[&] { hands.hold(KXMouseRight); }, [] { return KXMouse(KXMouseRight) == -1; }},
        {[&] { hands.release(KXMouseRight); },
         [] { return !KXMouse(KXMouseRight) && KXMousePointRelative.x == 11; }},
        {[&] { hands.wheel(1, -1); },
         [] { return KXMouse(KXMouseWheelUp) == -1 && KXMouse(KXMouseWheelLeft) == -1; }},
        {[&] { hands.wheel(-1, 1); },
         [] {
             return KXMouse(KXMouseWheelDown) && KXMouse(KXMouseWheelRight) && !KXMouse(KXMouseWheelUp) &&
                    !KXMouse(KXMouseWheelLeft);
         }},
        {[&] { pad.setAxis(1, -20000); }, [] { return KXGamePadAxis(KXGamePadLeftStickY) == -20000; }},
        {[&] { pad.setHat(0, SDL_HAT_RIGHT); }, [] { return KXGamePadHat(KXHatRight, 1) == 1; }},
        {[&] { pad.setButton(5, 1); },
         [] { return KXGamePadPressedButton() == KXGamePadButton6 && !KXGamePadHat(KXHatRight, 1); }},
        {[&] { pad.setButton(5, 0); }, [] { return KXGamePadPressedButton() == -1; }},
        {[&] {
             hands.touch(0, {32.64f, 47.52f});
         },
         [] { return KXFingerDown() && KXTouchX == 32 && KXTouchY == 47 && KXTouchPoint.x == 32; }},
        {[&] {
             hands.slide(0, {16, 0});
         },
         [] { return KXFingerDown() && KXTouchX == 16; }},
        {[&] { SDL_PushEvent(&lifted); }, [] { return !KXFingerDown() && KXTouchX == 16; }},
        {[&] { hands.quit(); }, [] { return KXApplicationQuitRequested() == -1; }},
    };
    for (const auto& row : rows) {
        seen = row.second;
        row.first();
        EXPECT_FALSE(seen()) << states.size();
        hands.step();
        EXPECT_TRUE(wasSeen) << states.size();
    }
    ASSERT_EQ(states.size(), std::size(rows));
    for (std::size_t i = std::size(rows); i-- > 0;) {
        _KXPutInputState(states[i]);
        EXPECT_EQ(_KXTakeInputState(), states[i]) << i;
        EXPECT_TRUE(rows[i].second()) << i;
    }
    _KXPutInputState({});
    EXPECT_EQ(_KXTakeInputState(), _KXInputState());
}

TEST_F(EventDispatch, WindowsAndTheirCallback) {
    static std::vector<float> told; // identifier, width and height
    KXSetWindowResizedCallback([](unsigned id, KXSize size) {
        told.insert(told.end(), {static_cast<float>(id), size.width, size.height});
    });
    EXPECT_EQ(window->size().width, 64);
    SDL_SetWindowSize(SDL_GetWindowFromID(window->id()), 90, 70);
    SDL_FlushEvent(SDL_WINDOWEVENT);
    SDL_Event changed = {};
    changed.window = {SDL_WINDOWEVENT, 0, window->id(), SDL_WINDOWEVENT_SIZE_CHANGED, 0, 0, 0, 90, 70};
    SDL_PushEvent(&changed);
    user.step();
    EXPECT_EQ(window->size().width, 64) << "only the kind resized counts";
    user.resize({90, 70});
    KXTestUser(12345).resize({3, 4}); // no window of the library: told all the same
    user.step();
    EXPECT_EQ(window->size().width, 90);
    KXSetWindowResizedCallback(nullptr);
    user.resize({5, 6});
    user.step();
    EXPECT_EQ(told, (std::vector<float>{static_cast<float>(window->id()), 90, 70, 12345, 3, 4}));
}

TEST_F(EventDispatch, TouchesInWindowsOnlyAndOneForEachEvent) {
    KXTestUser(4711).touch(0, {0.5f, 0.5f});
    user.step();
    EXPECT_EQ(KXFingerDown(), -1);
    EXPECT_EQ(KXTouchX, 0);
    user.slide(0, {16, 0});
    user.slide(0, {32, 0});
    user.lift(0);
    user.hold(KXKeyB);
    user.step();
    EXPECT_EQ(KXTouchX, 16) << "of a burst the first";
    EXPECT_EQ(KXFingerDown(), -1);
    EXPECT_EQ(KXKey(KXKeyB), -1) << "other events are not lost";
}

TEST_F(EventDispatch, WhatAnEventCarriesBesides) {
    SDL_Event finger = {};
    finger.tfinger.type = SDL_FINGERMOTION;
    finger.tfinger.touchId = 0x700000009;
    SDL_PushEvent(&finger);
    user.step();
    EXPECT_EQ(KXCurrentEventWindowID, 9u) << "the low half of the device's identifier";
    user.hold(KXKeyA);
    SDL_PushEvent(&finger);
    user.step();
    EXPECT_EQ(KXCurrentEventWindowID, window->id()) << "a touch behind another event is no event";
    // Texts that the platform gives away are freed.
    const int allocations = SDL_GetNumAllocations();
    for (Uint32 type : {SDL_DROPFILE, SDL_DROPTEXT}) {
        SDL_Event dropped = {};
        dropped.drop = {type, 0, SDL_strdup("text"), window->id()};
        SDL_PushEvent(&dropped);
        user.step();
    }
    user.compose("longer than the field for texts of most events");
    user.step();
    EXPECT_EQ(SDL_GetNumAllocations(), allocations);
}
} // namespace
