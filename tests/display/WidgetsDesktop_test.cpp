// The game's screen of widgets in a real window, used by a person's real keys and clicks.

#include "support/Image.h"
#include "support/Program.h"

#include <gtest/gtest.h>

#include <SDL_timer.h>

#include <cstdlib>
#include <functional>
#include <regex>

namespace {
struct WidgetsDesktop : testing::Test {
    static int person(const std::string& does) {
        return std::system(("xdotool " + does + " >/dev/null 2>&1").c_str()); // NOLINT(cert-env33-c)
    }
    static std::string at(int x, int y) {
        return "search --name '^Ember Night$' mousemove --window %1 " + std::to_string(x) + ' ' +
               std::to_string(y) + ' ';
    }
    // The game asks in each of its steps what is held, not what was pressed in between. A machine may be busy
    // just then, which is why everything is tried again, with longer WAITs, until it was seen.
    static std::string click(int x, int y) { return at(x, y) + "mousedown 1 WAIT mouseup 1 WAIT"; }

    /// Does something until the game has taken it in; false if it never does.
    static bool until(const std::function<bool()>& holds, const std::function<void()>& act) {
        for (const Uint64 end = SDL_GetTicks64() + 30'000; SDL_GetTicks64() < end;) {
            act();
            for (const Uint64 answer = SDL_GetTicks64() + 500; SDL_GetTicks64() < answer; SDL_Delay(10))
                if (holds())
                    return true;
        }
        return false;
    }
    bool untilReported(const std::string& text, const std::string& does) const {
        double seconds = 0.1;
        const auto act = [&] {
            person(std::regex_replace(does, std::regex("WAIT"), "sleep " + std::to_string(seconds)));
            seconds *= 1.5;
        };
        const auto reports = [this] { return contentOf(folder / "reports.txt"); };
        const bool reported = until([&] { return reports().find(text) != std::string::npos; }, act);
        EXPECT_TRUE(reported) << reports();
        return reported;
    }

    const TemporaryFolder folder;
    /// Writes what its widgets report into a file. It ends at some time, also if nobody closes it.
    Program game{folder,
                 "timeout 250 '" DEMO "' --widgets --save kept.save --screenshot shot.png >reports.txt"};
};

TEST_F(WidgetsDesktop, TakesClicksKeysAndTypedTextAndIsClosed) {
    ASSERT_TRUE(until([] { return person("search --onlyvisible --name '^Ember Night$'") == 0; }, [] {}));
    person("search --name '^Ember Night$' windowfocus");

    ASSERT_TRUE(untilReported("Button: rung", click(130, 90)));
    ASSERT_TRUE(untilReported("Toggle button: off", click(130, 122)));
    ASSERT_TRUE(untilReported("Slider: 75", at(134, 193) + "mousedown 1 WAIT mousemove --window %1 185 193 "
                                                           "WAIT mouseup 1 WAIT"));
    // A letter that comes before the entry has the focus is lost.
    ASSERT_TRUE(untilReported("Name: ", click(450, 110) + " type a"));
    EXPECT_EQ(person("type --delay 20 ' Lovelace, 1843'"), 0);
    ASSERT_TRUE(untilReported("Lovelace, 1843\n", "sleep 0"));
    ASSERT_TRUE(untilReported("Password: ", "keydown Tab WAIT keyup Tab WAIT type k"));
    // The menu's title opens or closes it; where its first row appears is nothing without it.
    ASSERT_TRUE(untilReported("Menu: Stoke", click(75, 13) + ' ' + click(90, 36)));
    ASSERT_TRUE(untilReported("List: night", click(640, 137)));
    ASSERT_TRUE(untilReported("List: night 9", "type 9"));
    ASSERT_TRUE(untilReported("Dialog box: Good", "keydown F1 WAIT keyup F1 WAIT keydown Return "
                                                  "WAIT keyup Return"));

    EXPECT_TRUE(
        until([] { return person("search --name '^Ember Night$'") != 0; }, [] { person("key alt+F4"); }));
    EXPECT_EQ(game.finish().status, 0) << "closed by its frame";
    const Image shot = Image::fromFile(folder / "shot.png");
    ASSERT_EQ(std::pair(shot.width, shot.height), std::pair(800, 500));
    const Pixel ink = {26, 22, 38, 255}, wood = {168, 105, 63, 255};
    EXPECT_EQ(shot.at(200, 122), ink) << "the toggle button is off";
    EXPECT_EQ(shot.at(761, 88), wood) << "the list's knob is at the top";
}
} // namespace
