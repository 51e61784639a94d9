#include <Kobaltrix/Kobaltrix.h>
#include <KobaltrixTest/KXTestClock.h>

#include "core/ground/Endianness.h"
#include "core/ground/ErrorSlot.h"
#include "core/ground/UIColors.h"
#include "input/Keyboard.h"
#include "support/System.h"

#include <gtest/gtest.h>

#include <SDL.h>

#include <cstdlib>

namespace {
TEST(Lifecycle, StartsTheWholeLibraryAndEndsIt) {
    const KXTestClock clock(0, 12345);
    _KXKeys[KXKeyE] = -1;
    _KXEndianness = 0;
    _KXSetError("stale");
    char path[] = "/opt/games/jump";
    EXPECT_EQ(KXInit(path), -1) << KXError();
    const int random = std::rand();
    std::srand(12345);
    EXPECT_EQ(random, std::rand()) << "seeded with the time of day";
    constexpr Uint32 systems = SDL_INIT_TIMER | SDL_INIT_VIDEO | SDL_INIT_JOYSTICK;
    EXPECT_EQ(SDL_WasInit(systems | SDL_INIT_AUDIO), systems) << "audio is started by KXInitAudio only";
    EXPECT_EQ(SDL_JoystickEventState(SDL_QUERY), SDL_ENABLE);
    EXPECT_TRUE(_KXKeys[KXKeyE] == 0 && _KXEndianness == -1 && KXLogicInterval() == 60);
    EXPECT_STREQ(KXError(), "");
    EXPECT_STREQ(KXApplicationName, "jump");
    _KXSetError("something");
    KXDeInit();
    EXPECT_STREQ(KXError(), "");
    EXPECT_TRUE(SDL_WasInit(0) == 0 && !KXApplicationName && !KXExecutablePath);
}

TEST(Lifecycle, ToleratesAnyOrder) {
    KXDeInit(); // without a start
    EXPECT_EQ(KXInit(), -1);
    EXPECT_EQ(KXInit(nullptr), -1);
    KXDeInit();
    KXDeInit();
    KXClearGUIFontCache();
    EXPECT_EQ(KXGUIFontCacheSize(), 0);
    KXApplicationRequestQuit();
    EXPECT_EQ(KXApplicationQuitRequested(), -1);
    KXApplicationCancelQuitRequest();
    EXPECT_EQ(KXApplicationQuitRequested(), 0);
}

TEST(Lifecycle, SaysWhyThePlatformDoesNotStart) {
    const std::string driver = getenv("SDL_VIDEODRIVER");
    setVariable("SDL_VIDEODRIVER", "100%s");
    EXPECT_EQ(KXInit(), 0);
    EXPECT_EQ(std::string(KXError()).rfind("Error initializing SDL: ", 0), 0u) << KXError();
    setVariable("SDL_VIDEODRIVER", driver);
    KXDeInit();
}

TEST(UIColors, AreStoredInOrder) {
    KXColor* const colors[] = {&_KXUIBorderColor,    &_KXUIBackroundColor, &_KXUIBackgroundColor_Interaction,
                               &_KXUISelectionColor, &_KXUIFocusColor,     &_KXUITextColor};
    KXSetUIColor({1, 0, 0, 0}, {2, 0, 0, 0}, {3, 0, 0, 0}, {4, 0, 0, 0}, {5, 0, 0, 0}, {6, 0, 0, 0});
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(colors[i]->r, i + 1);
}
} // namespace
