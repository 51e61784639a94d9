// The game's screen of widgets, used by mouse and keys.

#include "EmberNight.h"
#include "support/Golden.h"
#include "support/System.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <optional>

namespace {
struct Widgets : EmberNightTest {
    Widgets() {
        folder.enter();
        setVariable("HOME", folder.path()); // a place of the browser
        setVariable("TZ", "UTC");
        options.widgets = true;
        begin();
    }
    void begin() {
        testing::internal::CaptureStdout();
        user.reset();
        game.emplace(options);
        user.emplace(*game);
    }
    /// Gives the browser something to show.
    void fillFolder() const {
        folder.write("night.txt");
        folder.write("other.txt");
        std::filesystem::create_directory(_KXFilePath(folder / "moths"));
    }
    /// What the widgets have reported; goes on with a new screen.
    void expectReports(const std::string& reports) {
        EXPECT_EQ(testing::internal::GetCapturedStdout(), reports);
        begin();
    }
    ~Widgets() override { testing::internal::GetCapturedStdout(); }

    void withKey(KXKeyNumber modifier, KXKeyNumber key) {
        user->hold(modifier);
        user->press(key);
        user->release(modifier);
        user->step();
    }
    /// A part of what is seen.
    void expectShot(const std::string& name, int left = 0, int top = 0, int width = 800, int height = 500) {
        expectGolden(lookAt(*game).part(left, top, width, height), "demo_" + name);
    }

    const TemporaryFolder folder; ///< Which the file browser shows.
    Options options;
    std::optional<Game> game;
    std::optional<Keeper> user;
};

TEST_F(Widgets, ReportWhatTheMouseDoes) {
    user->clicks({{130, 90}, {130, 90}, {130, 122}, {130, 122}}); // the bell, the toggle button
    user->drag({134, 193}, {185, 300}, 1);                        // the slider's knob
    user->click({350, 110});                                      // the name
    user->types("& Grace %d");
    user->click({640, 137}); // the third row of the list
    user->wheel(-2);
    user->step();
    user->types("77778");
    user->move({400, 490});
    user->step();
    expectShot("widgets");
    expectReports(
        "Button: rung once\nButton: rung 2 times\nToggle button: off\nToggle button: on\nSlider: 75\n"
        "Name: Ada& Grace %d\nList: night 3 selected\nList: night 77,778 selected\n");
}

TEST_F(Widgets, ThreeLevelsOfMenusOpenAndOneClickElsewhereClosesThem) {
    user->clicks({{20, 13}, {75, 13}, {80, 110}, {180, 160}}); // File, which closes when Fire opens; Glow
    user->move({260, 184});
    user->step();
    expectShot("widgets_menus", 0, 0, 320, 240);
    user->clicks({{350, 90}, {130, 250}}); // closes them, and nothing below is meant
    user->press(KXKeyReturn);              // would be the question, but a menu is opened above it first
    user->clicks({{75, 13}, {90, 90}, {130, 90}});               // a divider
    user->clicks({{75, 13}, {80, 110}, {180, 160}, {260, 184}}); // Rose
    user->clicks({{75, 13}, {90, 36}, {130, 90}});               // Stoke
    expectReports("Dialog box: Put it out\nButton: rung once\nMenu: Fire, Glow, Rose\n"
                  "Menu: Stoke, so that the slider is at 60\nButton: rung 2 times\n");
}

TEST_F(Widgets, TheBrowserShowsFilesAndThePlacesOfTheUser) {
    fillFolder();
    for (const char* name : {"night.txt", "other.txt", "moths"}) // the picture tells
        std::filesystem::last_write_time(_KXFilePath(folder / name), std::filesystem::file_time_type());
    user->clicks({{130, 258}, {350, 250}, {180, 290}});
    user->press(KXKeyReturn);
    expectShot("widgets_browser", 160, 98, 482, 314); // without the folder's name
}

TEST_F(Widgets, WindowsAreAnsweredByMouseAndKeysAndNothingBelowThemActs) {
    fillFolder();
    user->click({130, 258});
    expectShot("widgets_dialog", 270, 180, 260, 120);
    user->click({130, 90}); // the bell is below the question
    user->press(KXKeyEscape);
    user->clicks({{130, 258}, {350, 250}}); // puts it out
    user->click({180, 290});                // to save; asks whether to replace
    user->press(KXKeyReturn);
    user->presses({KXKeyEscape, KXKeyEscape});
    withKey(KXKeyLeftControl, KXKeyS);
    user->presses({KXKeyReturn, KXKeyReturn});
    user->clicks({{80, 290}, {310, 181}, {532, 395}}); // to open a file below the folder and another file
    user->click({80, 290});
    user->press(KXKeyReturn);
    user->click({600, 395}); // says what to do
    expectReports("Dialog box: Keep it\nDialog box: Put it out\nFile browser: cancelled\n"
                  "File browser: night.txt was chosen\nFile browser: other.txt was chosen\n"
                  "File browser: cancelled\n");
}

TEST_F(Widgets, CanBeUsedWithoutAMouse) {
    user->press(KXKeyTab);
    user->types("Grace"); // the name, selected; f is a letter
    user->presses({KXKeyF, KXKeyReturn, KXKeyTab});
    user->types("12345678");
    user->press(KXKeyTab);
    user->types("0123456789012345678901234567890");
    user->presses({KXKeyTab, KXKeyDown, KXKeyF, KXKeyReturn, KXKeyTab}); // the list; no fullscreen; round
    withKey(KXKeyLeftShift, KXKeyTab);
    user->press(KXKeyUp);
    withKey(KXKeyLeftShift, KXKeyTab);
    user->presses({KXKeyBackspace, KXKeyF2, KXKeyF3, KXKeyF1, KXKeyF2, KXKeyEscape}); // all of the motto
    withKey(KXKeyLeftControl, KXKeyO);
    user->presses({KXKeyF2, KXKeyEscape}); // nothing below
    expectReports("Name: Grace\nName, entered: Grace\nPassword: 8 characters\n"
                  "Motto: 012345678901234567890123\nList: night 2 selected\nList: night 2 opened\n"
                  "List: night 1 selected\nMotto: \nMenu: Stoke, so that the slider is at 60\n"
                  "Menu: Damp, so that the slider is at 50\nDialog box: Good\nFile browser: cancelled\n");
}

TEST_F(Widgets, OfToolsAreWorkedByKeysAndSayThemselves) {
    user->press(KXKeyF4);
    for (const KXKeyNumber key :
         {KXKeyTab, KXKeyTab, KXKeyDown, KXKeyTab, KXKeyDown, KXKeyTab, KXKeyDown, KXKeyTab})
        user->press(key); // a light theme, the bucket, a square brush
    user->types("24");
    user->presses({KXKeyReturn, KXKeyTab, KXKeyEnd});
    for (int stamps = 0; stamps < 9; ++stamps) // out of sight at first
        user->press(KXKeyTab);
    user->press(KXKeySpace);
    expectShot("tools_choices");
    user->click({30, 61}); // the pages
    for (const char* page : {"tools_texts", "tools_rows", "tools_colors"}) {
        user->press(KXKeyRight);
        expectShot(page);
    }
    user->press(KXKeyEscape);
    user->press(KXKeyF2); // the screen that it came from
    expectReports("drop-down Theme: Light\ndrop-down Tool: Bucket\nradio group Brush: Square\n"
                  "spin box Size: 24 px\nslider Strength: 100\nbutton Spark 9\n"
                  "tab bar : Text\ntab bar : Rows\ntab bar : Colours\n"
                  "Menu: Stoke, so that the slider is at 60\n");
}

TEST_F(Widgets, EscapeLeavesOnlyWhenNothingElseIsMeant) {
    // The entry, the menu, the dialog and the browser are left first; F2 tells whether the screen is still
    // there.
    user->click({350, 110});
    user->presses({KXKeyEscape, KXKeyF2});
    user->click({75, 13});
    user->presses({KXKeyEscape, KXKeyF2, KXKeyF1, KXKeyEscape, KXKeyF2});
    withKey(KXKeyLeftControl, KXKeyS);
    user->presses({KXKeyEscape, KXKeyF2, KXKeyEscape, KXKeyF2});
    expectReports("Menu: Stoke, so that the slider is at 60\nMenu: Stoke, so that the slider is at 70\n"
                  "Dialog box: Good\nMenu: Stoke, so that the slider is at 80\n"
                  "File browser: cancelled\nMenu: Stoke, so that the slider is at 90\n");
    user->click({750, 465}); // Back
    user->press(KXKeyF2);
    expectReports("");
}
} // namespace
