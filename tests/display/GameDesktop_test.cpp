// The game in a real window, played by a person who is quicker than its steps.

#include "support/Program.h"

#include <gtest/gtest.h>

#include <SDL_timer.h>

#include <cstdlib>

namespace {
bool person(const std::string& does) {
    return std::system(("xdotool " + does + " >/dev/null 2>&1").c_str()) == 0; // NOLINT(cert-env33-c)
}

/// The window's title, which tells what the game shows; false if it does not become that in time.
bool showsTitle(const std::string& title, unsigned milliseconds = 20'000) {
    for (const Uint64 end = SDL_GetTicks64() + milliseconds; SDL_GetTicks64() < end; SDL_Delay(5))
        if (person("search --onlyvisible --name '^" + title + "$'"))
            return true;
    return false;
}

TEST(GameDesktop, EveryTapOfReturnOpensOrLeavesTheMenu) {
    const TemporaryFolder folder;
    Program game(folder, "timeout 250 '" DEMO "' --night 3600 --save kept.save");
    ASSERT_TRUE(showsTitle("Ember Night"));
    person("search --name '^Ember Night$' windowfocus --sync");
    const std::string tap = "key --delay 0 Return"; // pressed and released at once
    bool menu = false;
    for (int tries = 0; !menu && tries < 20;
         ++tries) // the first begins a night, once the game has the keyboard
        menu = person(tap) && showsTitle("Ember Night: pause", 1000);
    for (int taps = 0; taps < 100; ++taps) {
        ASSERT_TRUE(person(tap));
        ASSERT_TRUE(showsTitle(taps % 2 ? "Ember Night: pause" : "Ember Night")) << "a tap is lost: " << taps;
    }
    EXPECT_TRUE(person("key alt+F4"));
    EXPECT_EQ(game.finish().status, 0);
}
} // namespace
