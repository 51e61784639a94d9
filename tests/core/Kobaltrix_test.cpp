#include <Kobaltrix/KXCore.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXString.h>
#include <Kobaltrix/KXTextureCache.h>

#include "core/ground/Endianness.h"
#include "core/ground/ErrorSlot.h"
#include "core/ground/LogicClock.h"
#include "core/ground/UIColors.h"
#include "input/KXMouse.h"
#include "input/Keyboard.h"
#include "support/TestClock.h"
#include "util/KXString.h"

#include <gtest/gtest.h>

#include <SDL.h>

#include <cstdlib>

namespace {
TEST(Lifecycle, StartsTheWholeLibrary) {
    _KXKeys[5] = -1;
    _KXEndianness = 0;
    _KXSetError("stale");
    EXPECT_EQ(KXInit(), -1) << KXError();
    EXPECT_STREQ(KXError(), "");
    EXPECT_EQ(SDL_WasInit(SDL_INIT_TIMER | SDL_INIT_VIDEO | SDL_INIT_JOYSTICK),
              static_cast<Uint32>(SDL_INIT_TIMER | SDL_INIT_VIDEO | SDL_INIT_JOYSTICK));
    EXPECT_FALSE(SDL_WasInit(SDL_INIT_AUDIO)) << "audio is started by KXInitAudio only";
    EXPECT_EQ(SDL_JoystickEventState(SDL_QUERY), SDL_ENABLE);
    EXPECT_EQ(_KXKeys[5], 0);
    EXPECT_EQ(_KXEndianness, -1);
    EXPECT_EQ(KXLogicInterval(), 60u);
    EXPECT_EQ(KXGUIFontCacheSize(), 0);
    _KXSetError("something");
    KXDeInit();
    EXPECT_STREQ(KXError(), "");
    EXPECT_EQ(SDL_WasInit(0), 0u);
}

TEST(Lifecycle, SeedsTheRandomGeneratorWithTheTimeOfDay) {
    const TestClock clock(0, 12345);
    EXPECT_EQ(KXInit(), -1);
    const int first = std::rand();
    std::srand(12345);
    EXPECT_EQ(first, std::rand());
    KXDeInit();
}

TEST(Lifecycle, ToleratesAnyOrder) {
    KXDeInit(); // without a start
    KXDeInit();
    EXPECT_EQ(KXInit(), -1);
    EXPECT_EQ(KXInit(), -1); // twice
    KXDeInit();
    char path[] = "/opt/games/jump";
    EXPECT_EQ(KXInit(path), -1);
    EXPECT_STREQ(KXApplicationName, "jump");
    KXDeInit();
    EXPECT_EQ(KXApplicationName, nullptr);
    EXPECT_EQ(KXExecutablePath, nullptr);
    EXPECT_EQ(KXInit(nullptr), -1);
    KXDeInit();
    KXClearGUIFontCache();
    EXPECT_EQ(KXGUIFontCacheSize(), 0);
}

TEST(Lifecycle, SaysWhyThePlatformDoesNotStart) {
    const std::string driver = getenv("SDL_VIDEODRIVER");
    setenv("SDL_VIDEODRIVER", "100%s", 1);
    EXPECT_EQ(KXInit(), 0);
    EXPECT_EQ(std::string(KXError()).rfind("Error initializing SDL: ", 0), 0u) << KXError();
    setenv("SDL_VIDEODRIVER", driver.c_str(), 1);
    KXDeInit();
}

TEST(QuitRequest, StaysUntilItIsTakenBack) {
    EXPECT_EQ(KXApplicationQuitRequested(), 0);
    KXApplicationRequestQuit();
    EXPECT_EQ(KXApplicationQuitRequested(), -1);
    KXApplicationCancelQuitRequest();
    EXPECT_EQ(KXApplicationQuitRequested(), 0);
}

TEST(UIColors, AreStoredInOrder) {
    const KXColor colors[] = {_KXUIBorderColor,    _KXUIBackroundColor, _KXUIBackgroundColor_Interaction,
                              _KXUISelectionColor, _KXUIFocusColor,     _KXUITextColor};
    KXSetUIColor({1, 0, 0, 0}, {2, 0, 0, 0}, {3, 0, 0, 0}, {4, 0, 0, 0}, {5, 0, 0, 0}, {6, 0, 0, 0});
    EXPECT_EQ(_KXUIBorderColor.r, 1);
    EXPECT_EQ(_KXUIBackroundColor.r, 2);
    EXPECT_EQ(_KXUIBackgroundColor_Interaction.r, 3);
    EXPECT_EQ(_KXUISelectionColor.r, 4);
    EXPECT_EQ(_KXUIFocusColor.r, 5);
    EXPECT_EQ(_KXUITextColor.r, 6);
    KXSetUIColor(colors[0], colors[1], colors[2], colors[3], colors[4], colors[5]);
}

struct Loop : testing::Test {
    Loop() { EXPECT_EQ(KXInit(), -1); }
    ~Loop() override { KXDeInit(); }

    /// Runs one frame as a game does and counts its logic steps.
    static int frame() {
        int steps = 0;
        KXPreLogicLoop();
        while (KXLogicLoop()) {
            ++steps;
            KXLogicUpdate();
        }
        KXPostLogicLoop();
        return steps;
    }

    int frameAfter(std::uint64_t milliseconds) {
        clock.advance(milliseconds);
        return frame();
    }

    TestClock clock{5000, 100};
};

TEST_F(Loop, RunsTheStepsThatAreDue) {
    KXResetLogicLoop();
    EXPECT_EQ(frame(), 1) << "the first frame runs one step at once";
    EXPECT_EQ(frame(), 0);
    EXPECT_EQ(frameAfter(15), 0);
    EXPECT_EQ(frameAfter(1), 1) << "time owed adds up over frames without a step";
    EXPECT_EQ(frameAfter(40), 2);
    EXPECT_EQ(frameAfter(8), 0) << "the 8 ms beyond two steps were dropped";
    EXPECT_EQ(frameAfter(8), 1);
    EXPECT_EQ(frameAfter(160000), 10000) << "every step owed is caught up with";
}

TEST_F(Loop, SurvivesTheWrapOfTheTickCounter) {
    TestClock late((1ull << 32) - 10);
    KXResetLogicLoop();
    frame();
    late.advance(32); // beyond the wrap
    EXPECT_EQ(frame(), 2);
    late.advance(16);
    EXPECT_EQ(frame(), 1);
}

TEST_F(Loop, ChangesSpeedWithinItsRange) {
    const unsigned cases[][3] = {{0, 1, 1000},    {1, 1, 1000},    {60, 60, 16},  {999, 999, 1},
                                 {1000, 1000, 1}, {5000, 1000, 1}, {~0u, 1000, 1}};
    for (const auto& [asked, speed, stepTime] : cases) {
        KXSetLogicInterval(asked);
        EXPECT_EQ(KXLogicInterval(), speed);
        EXPECT_EQ(_KXLogicTimeRequiredPerLogicCycle, stepTime);
    }
    KXSetLogicInterval(100);
    KXResetLogicLoop();
    EXPECT_EQ(frame(), 1);
    EXPECT_EQ(frameAfter(100), 10);
    KXSetLogicInterval(50);
    EXPECT_EQ(frameAfter(100), 5);
}

TEST_F(Loop, UpdatesOutOfOrderAreHarmless) {
    KXResetLogicLoop();
    KXLogicUpdate();
    KXLogicUpdate();
    EXPECT_EQ(KXLogicLoop(), 0);
    EXPECT_EQ(frameAfter(16), 1);
}

TEST_F(Loop, FreesTemporaryStringsAfterEachStepUnlessTold) {
    // Kept strings are compared by content: freed ones would be found by the sanitizers.
    KXDisableTemporaryStringCleanup();
    KXDisableTemporaryStringCleanup();
    const char* kept = KXTempString("kept");
    KXLogicUpdate();
    KXEnableTemporaryStringCleanup();
    KXLogicUpdate();
    EXPECT_STREQ(kept, "kept");
    KXEnableTemporaryStringCleanup();
    KXEnableTemporaryStringCleanup(); // one too many
    EXPECT_EQ(_KXTemporaryStringCleanupDisabledCount, 0);
    KXLogicUpdate();
    KXDisableTemporaryStringCleanup();
    EXPECT_EQ(_KXTemporaryStringCleanupDisabledCount, 1);
    KXEnableTemporaryStringCleanup();
}

TEST_F(Loop, CountsAtMostOneSecondForEachStep) {
    KXResetLogicLoop();
    KXResetElapsedTime();
    frame();
    EXPECT_EQ(KXElapsedTime(), 0);
    clock.setTimeOfDay(101);
    frameAfter(16);
    EXPECT_EQ(KXElapsedTime(), 1);
    clock.setTimeOfDay(150);
    frameAfter(16);
    EXPECT_EQ(KXElapsedTime(), 2);
    clock.setTimeOfDay(90); // the clock was set back
    frameAfter(32);
    EXPECT_EQ(KXElapsedTime(), 3);
    KXResetElapsedTime();
    EXPECT_EQ(KXElapsedTime(), 0);
}

TEST_F(Loop, WheelNotchesLastForOneFrame) {
    KXResetLogicLoop();
    _KXMouseButtonWheelUp = _KXMouseButtonWheelDown = _KXMouseButtonWheelLeft = _KXMouseButtonWheelRight = -1;
    KXPreLogicLoop();
    while (KXLogicLoop()) {
        EXPECT_EQ(KXMouse(4), -1);
        KXLogicUpdate();
    }
    EXPECT_EQ(KXMouse(3), -1) << "still there while the frame draws";
    KXPostLogicLoop();
    for (int button = 3; button <= 6; ++button)
        EXPECT_EQ(KXMouse(button), 0);
}

TEST(LoopWithoutTheLibrary, DoesNothing) {
    const std::uint32_t stepTime = _KXLogicTimeRequiredPerLogicCycle;
    _KXLogicTimeRequiredPerLogicCycle = 0; // as it is before the library is started
    KXResetLogicLoop();
    KXPreLogicLoop();
    EXPECT_EQ(KXLogicLoop(), 0);
    KXLogicUpdate();
    KXPostLogicLoop();
    _KXLogicTimeRequiredPerLogicCycle = stepTime;
}

TEST(FrameRate, CountsTheFramesOfAPeriod) {
    TestClock clock((1ull << 32) - 300); // the counter wraps on the way
    KXFPSTick();                         // closes whatever was counted before
    clock.advance(1001);
    KXFPSTick();
    for (int i = 0; i < 100; ++i) {
        clock.advance(10);
        KXFPSTick();
    }
    EXPECT_EQ(KXFPS(), 1) << "1000 ms have passed, not more";
    clock.advance(10);
    KXFPSTick();
    EXPECT_EQ(KXFPS(), 101);
    clock.advance(1ull << 31); // a pause longer than an int holds
    KXFPSTick();
    EXPECT_EQ(KXFPS(), 1);
}
} // namespace
