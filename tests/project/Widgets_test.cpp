// The game's screen of widgets, used by a person whose hands are a script.

#include "support/Golden.h"
#include "support/Program.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>

namespace {
struct Widgets : testing::Test {
    /// Adds acts to the script, which stand between semicolons. Each takes two logic steps, so that every
    /// press is seen before it ends. "click X Y", "key NAME" and "with MODIFIER+NAME" are several acts, and
    /// "shot NAME" goes where expectShot() finds it.
    void act(std::string acts) {
        const std::pair<const char*, std::string> meanings[] = {
            {"with ([^;+]*)\\+([^;]*)", "down $1;key $2;up $1"},
            {"key ([^;]*)", "down $1;up $1"},
            {"click ([^;]*)", "move $1;press;release"},
            {"shot ", "shot " + out.path() + "/"}};
        for (const auto& [one, several] : meanings)
            acts = std::regex_replace(acts, std::regex(one), several);
        std::istringstream text(acts);
        for (std::string one; std::getline(text >> std::ws, one, ';');)
            script += std::to_string(step += 2) + ' ' + one + '\n';
    }

    /// Plays the script in a folder that holds what the test has put there, and expects what the widgets
    /// report.
    void expectReports(const std::string& reports) {
        const Outcome run = runProgram(folder, "'" DEMO "' --headless --widgets --script '" +
                                                   out.write("script.txt", script) + "' --screenshot '" +
                                                   out / "end.png" + "'");
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(std::regex_replace(run.output, std::regex("Screenshot: .*\n"), ""), reports);
        script.clear();
        step = -1;
    }

    /// A part of a screenshot; the same everywhere but for edges that another driver rounds otherwise.
    void expectShot(const std::string& name, int left = 0, int top = 0, int width = 800,
                    int height = 500) const {
        const Image whole = Image::fromFile(out / name);
        Image shown = {width, height, {}};
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                shown.pixels.push_back(whole.at(left + x, top + y));
        expectGolden(shown, "demo_" + name.substr(0, name.find('.')), 3, 200);
    }

    const TemporaryFolder folder, out;
    std::string script;
    int step = -1;
};

TEST_F(Widgets, ReportWhatTheMouseDoes) {
    act("click 130 90; click 130 90; click 130 122; click 130 122"); // the bell, the toggle button
    act("move 134 193; press; move 185 300; release");               // the slider's knob
    act("click 350 110; text  & Grace %d");                          // the name
    act("click 640 137; wheel -2; text 77778");                      // the third row of the list
    act("move 400 490; shot widgets.png");
    expectReports(
        "Button: rung once\nButton: rung 2 times\nToggle button: off\nToggle button: on\nSlider: 75\n"
        "Name: Ada& Grace %d\nList: night 3 selected\nList: night 77,778 selected\n");
    expectShot("widgets.png");
}

TEST_F(Widgets, ThreeLevelsOfMenusOpenAndOneClickElsewhereClosesThem) {
    act("click 20 13; click 75 13; click 80 110; click 180 160"); // File, which closes when Fire opens; Glow
    act("move 260 184; shot widgets_menus.png");
    act("click 350 90");              // closes them, and nothing below is meant
    act("click 130 250; key Return"); // would be the question, but a menu is opened above it first
    act("click 75 13; click 90 90; click 130 90");                  // a divider
    act("click 75 13; click 80 110; click 180 160; click 260 184"); // Rose
    act("click 75 13; click 90 36; click 130 90");                  // Stoke
    expectReports("Dialog box: Put it out\nButton: rung once\nMenu: Fire, Glow, Rose\n"
                  "Menu: Stoke, so that the slider is at 60\nButton: rung 2 times\n");
    expectShot("widgets_menus.png", 0, 0, 320, 240);
}

TEST_F(Widgets, WindowsAreAnsweredByMouseAndKeysAndNothingBelowThemActs) {
    folder.write("night.txt");
    folder.write("other.txt");
    std::filesystem::create_directory(folder / "moths");
    act("click 130 258; shot widgets_dialog.png; click 130 90; key Escape"); // the bell is below the question
    act("click 130 258; click 350 263");                                     // puts it out
    act("click 180 290; key Return; shot widgets_browser.png"); // to save; asks whether to replace
    act("key Escape; key Escape; with Left Ctrl+s; key Return; key Return");
    act("click 80 290; click 250 160; click 532 395"); // to open a file below the folder and another file
    act("click 80 290; key Return; click 600 395");    // says what to do
    expectReports("Dialog box: Keep it\nDialog box: Put it out\nFile browser: cancelled\n"
                  "File browser: night.txt was chosen\nFile browser: other.txt was chosen\n"
                  "File browser: cancelled\n");
    expectShot("widgets_dialog.png", 270, 180, 260, 120);
    expectShot("widgets_browser.png", 160, 98, 482, 314); // without the folder's name
}

TEST_F(Widgets, CanBeUsedWithoutAMouse) {
    act("key Tab; text Grace; key f; key Return"); // the name, selected; f is a letter
    act("key Tab; text 12345678");
    act("key Tab; text 0123456789012345678901234567890");
    act("key Tab; key Down; key f; key Return"); // the list; no fullscreen
    act("key Tab; with Left Shift+Tab; key Up"); // round
    act("with Left Shift+Tab; key Backspace");   // all of the motto
    act("key F2; key F3; key F1; key F2; key Escape; with Left Ctrl+o; key F2; key Escape"); // nothing below
    expectReports("Name: Grace\nName, entered: Grace\nPassword: 8 characters\n"
                  "Motto: 012345678901234567890123\nList: night 2 selected\nList: night 2 opened\n"
                  "List: night 1 selected\nMotto: \nMenu: Stoke, so that the slider is at 60\n"
                  "Menu: Damp, so that the slider is at 50\nDialog box: Good\nFile browser: cancelled\n");
}

TEST_F(Widgets, EscapeLeavesOnlyWhenNothingElseIsMeant) {
    // The entry, the menu, the dialog and the browser are left first; F2 tells whether the screen is still
    // there.
    act("click 350 110; key Escape; key F2; click 75 13; key Escape; key F2; key F1; key Escape; key F2");
    act("with Left Ctrl+s; key Escape; key F2; key Escape; key F2");
    expectReports("Menu: Stoke, so that the slider is at 60\nMenu: Stoke, so that the slider is at 70\n"
                  "Dialog box: Good\nMenu: Stoke, so that the slider is at 80\n"
                  "File browser: cancelled\nMenu: Stoke, so that the slider is at 90\n");
    act("click 750 465; key F2"); // Back
    expectReports("");
}
} // namespace
