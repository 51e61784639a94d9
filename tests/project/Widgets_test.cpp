// The game's screen of widgets, used by a person whose hands are a script.

#include "support/Golden.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>

namespace {
/// Each act takes two logic steps, so that every press is seen before it ends.
struct Widgets : testing::Test {
    void act(const std::string& what) {
        script += std::to_string(step) + ' ' + what + '\n';
        step += 2;
    }
    void pointAt(int x, int y) { act("move " + std::to_string(x) + ' ' + std::to_string(y)); }
    void click(int x, int y) {
        pointAt(x, y);
        act("press");
        act("release");
    }
    void key(const std::string& name) {
        act("down " + name);
        act("up " + name);
    }
    void keyWith(const std::string& modifier, const std::string& name) {
        act("down " + modifier);
        key(name);
        act("up " + modifier);
    }

    void shoot(const std::string& name) { act("shot " + (out / (name + ".png"))); }

    /// Runs the game in a folder that holds what the test has put there. @return what the widgets reported, a
    /// line each.
    std::string run() {
        const std::string file = out.write("script.txt", script);
        FILE* const pipe = popen(("cd '" + folder.path() + "' && '" DEMO "' --headless --widgets --script '" +
                                  file + "' --screenshot '" + (out / "end.png") + "' 2>&1")
                                     .c_str(),
                                 "r");
        std::string reports;
        std::array<char, 4096> line;
        while (fgets(line.data(), line.size(), pipe))
            if (std::string(line.data()).rfind("Screenshot: ", 0) != 0)
                reports += line.data();
        EXPECT_EQ(pclose(pipe), 0) << reports;
        return reports;
    }

    /// A part of a screenshot; the same everywhere but for edges that another driver rounds otherwise.
    void expectShot(const std::string& name, KXRect part = {{0, 0}, {800, 500}}) const {
        const Image whole = Image::fromFile(out / (name + ".png"));
        ASSERT_EQ(whole.width, 800) << name;
        Image shown = {static_cast<int>(part.size.width), static_cast<int>(part.size.height), {}};
        for (int y = 0; y < shown.height; ++y)
            for (int x = 0; x < shown.width; ++x)
                shown.pixels.push_back(
                    whole.at(static_cast<int>(part.origin.x) + x, static_cast<int>(part.origin.y) + y));
        expectGolden(shown, "demo_" + name, 3, 200);
    }

    const TemporaryFolder folder, out;
    std::string script;
    int step = 1;
};

TEST_F(Widgets, ReportWhatTheMouseDoes) {
    click(130, 90); // the bell
    click(130, 90);
    click(130, 122); // the toggle button
    click(130, 122);
    pointAt(134, 193);
    act("press"); // the slider's knob
    pointAt(185, 300);
    act("release");
    click(350, 110); // the name
    act("text  & Grace %d");
    click(640, 137); // the third row
    act("wheel -2");
    act("text 77778");
    pointAt(400, 490);
    shoot("widgets");
    EXPECT_EQ(run(),
              "Button: rung once\nButton: rung 2 times\nToggle button: off\nToggle button: on\nSlider: 75\n"
              "Name: Ada& Grace %d\nList: night 3 selected\nList: night 77,778 selected\n");
    expectShot("widgets");
}

TEST_F(Widgets, ThreeLevelsOfMenusOpenAndOneClickElsewhereClosesThem) {
    click(20, 13);  // File, which closes when
    click(75, 13);  // Fire opens
    click(80, 110); // Glow
    click(180, 160);
    pointAt(260, 184);
    shoot("widgets_menus");
    click(350, 90);  // closes them, and nothing below is meant
    click(130, 250); // would be the question, but a menu is opened above it first
    key("Return");
    click(75, 13);
    click(90, 90); // a divider
    click(130, 90);
    click(75, 13);
    click(80, 110);
    click(180, 160);
    click(260, 184); // Rose
    click(75, 13);
    click(90, 36); // Stoke
    click(130, 90);
    EXPECT_EQ(run(), "Dialog box: Put it out\nButton: rung once\nMenu: Fire, Glow, Rose\n"
                     "Menu: Stoke, so that the slider is at 60\nButton: rung 2 times\n");
    expectShot("widgets_menus", {{0, 0}, {320, 240}});
}

TEST_F(Widgets, WindowsAreAnsweredByMouseAndKeysAndNothingBelowThemActs) {
    folder.write("night.txt");
    folder.write("other.txt");
    std::filesystem::create_directory(folder / "moths");
    click(130, 258); // the question
    shoot("widgets_dialog");
    click(130, 90); // the bell is below it
    key("Escape");
    click(130, 258);
    click(350, 263); // puts it out
    click(180, 290); // to save
    key("Return");
    shoot("widgets_browser"); // asks whether to replace
    key("Escape");
    key("Escape");
    keyWith("Left Ctrl", "s");
    key("Return");
    key("Return");
    click(80, 290);  // to open
    click(250, 160); // a file below the folder and another file
    click(532, 395); // opens it
    click(80, 290);
    key("Return"); // says what to do
    click(600, 395);
    EXPECT_EQ(run(), "Dialog box: Keep it\nDialog box: Put it out\nFile browser: cancelled\n"
                     "File browser: night.txt was chosen\nFile browser: other.txt was chosen\n"
                     "File browser: cancelled\n");
    expectShot("widgets_dialog", {{270, 180}, {260, 120}});
    expectShot("widgets_browser", {{160, 98}, {482, 314}}); // without the folder's name
}

TEST_F(Widgets, CanBeUsedWithoutAMouse) {
    key("Tab"); // the name, selected
    act("text Grace");
    key("f"); // is a letter
    key("Return");
    key("Tab");
    act("text 12345678");
    key("Tab");
    act("text 0123456789012345678901234567890");
    key("Tab"); // the list
    key("Down");
    key("f"); // no fullscreen
    key("Return");
    key("Tab"); // round
    keyWith("Left Shift", "Tab");
    key("Up");
    keyWith("Left Shift", "Tab");
    key("Backspace"); // all of the motto
    key("F2");
    key("F3");
    key("F1");
    key("F2"); // not in the dialog
    key("Escape");
    keyWith("Left Ctrl", "o");
    key("F2"); // not in the browser
    key("Escape");
    EXPECT_EQ(run(), "Name: Grace\nName, entered: Grace\nPassword: 8 characters\n"
                     "Motto: 012345678901234567890123\nList: night 2 selected\nList: night 2 opened\n"
                     "List: night 1 selected\nMotto: \nMenu: Stoke, so that the slider is at 60\n"
                     "Menu: Damp, so that the slider is at 50\nDialog box: Good\nFile browser: cancelled\n");
}

TEST_F(Widgets, EscapeLeavesOnlyWhenNothingElseIsMeant) {
    const auto isHere = [this] { key("F2"); };
    click(350, 110);
    key("Escape"); // leaves the entry
    isHere();
    click(75, 13);
    key("Escape"); // closes the menu
    isHere();
    key("F1");
    key("Escape"); // closes the dialog
    isHere();
    keyWith("Left Ctrl", "s");
    key("Escape"); // closes the browser
    isHere();
    key("Escape");
    isHere(); // not any more
    EXPECT_EQ(run(), "Menu: Stoke, so that the slider is at 60\nMenu: Stoke, so that the slider is at 70\n"
                     "Dialog box: Good\nMenu: Stoke, so that the slider is at 80\n"
                     "File browser: cancelled\nMenu: Stoke, so that the slider is at 90\n");
    script.clear();
    step = 1;
    click(750, 465); // Back
    isHere();
    EXPECT_EQ(run(), "");
}
} // namespace
