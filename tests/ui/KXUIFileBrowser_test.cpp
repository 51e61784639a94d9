#include "ui/KXUIFileBrowser.h"

#include "UITest.h"
#include "support/TemporaryFolder.h"
#include "util/KXString.h"

#include <Kobaltrix/KXFont.h>

#include <cmath>
#include <filesystem>
#include <numeric>

#include <sys/stat.h>
#include <unistd.h>

namespace {
// A browser of 300 x 180 points at (10, 10) and a folder with a few things in it.
struct FileBrowser : UITest {
    FileBrowser() {
        for (const char* name : {"music", "Levels", "music/loud"})
            mkdir((folder / name).c_str(), 0777);
        for (const char* name :
             {"a.png", "b.txt", "Track 10.ogg", "track 9.ogg", ".hidden.png", "music/song.ogg"})
            folder.write(name);
        browser.setRect({10, 10}, {300, 180});
        lineHeight = static_cast<int>(browser._idealSizeForText("x").height);
    }
    ~FileBrowser() override { _KXCleanTempStrings(); }

    void open(const char* name = nullptr) {
        browser.show(KXUIFileBrowserModeOpen, folder.path().c_str(), name);
    }
    void save(const char* name = nullptr) {
        browser.show(KXUIFileBrowserModeSave, folder.path().c_str(), name);
    }
    // What several steps, in their order, have come to.
    static int each(std::initializer_list<int> results) {
        return std::accumulate(results.begin(), results.end(), 0);
    }
    int tap(int key) {
        keyDown(key);
        const int result = browser.poll();
        keyUp(key);
        return result | browser.poll();
    }
    int typeAndEnter(const std::string& text) {
        for (std::size_t i = 0; i < text.size(); i += 30) // an event holds 31 bytes
            type(text.substr(i, 30).c_str());
        browser.poll();
        return tap(SDLK_RETURN);
    }
    int clickAt(int x, int y) {
        moveMouse(x, y);
        int result = browser.poll();
        press();
        result |= browser.poll();
        release();
        return result | browser.poll();
    }
    int clickRow(int row) {
        return clickAt(40, 10 + 4 + lineHeight + 4 + 1 + row * lineHeight + lineHeight / 2);
    }
    int clickUp() { return clickAt(20, 20); }
    int clickHidden() { return clickAt(295, 20); }
    int clickConfirm() { return clickAt(245, 180); }
    int clickCancel() { return clickAt(290, 180); }
    std::string chosen() const { return browser.path() ? browser.path() : "-"; }
    std::string inFolder(const std::string& name) const { return folder / name; }

    TemporaryFolder folder;
    KXUIFileBrowser browser;
    int lineHeight;
};

TEST_F(FileBrowser, AFileIsChosenOnce) {
    EXPECT_EQ(browser.poll(), 0);
    EXPECT_EQ(browser.isShown(), 0);
    // Rows: Levels/ music/ a.png b.txt "track 9.ogg" "Track 10.ogg"
    const struct {
        const char* how;
        std::function<int()> choose;
        std::string chosen;
    } rows[] = {{"double click",
                 [&] {
                     return each({clickRow(2), clickRow(2)});
                 },
                 inFolder("a.png")},
                {"select and button",
                 [&] {
                     return each({clickRow(4), clickConfirm()});
                 },
                 inFolder("track 9.ogg")},
                {"typed",
                 [&] {
                     return each({tap(SDLK_TAB), typeAndEnter("b.txt")});
                 },
                 inFolder("b.txt")},
                {"typed below",
                 [&] {
                     return each({tap(SDLK_TAB), typeAndEnter("music/song.ogg")});
                 },
                 inFolder("music/song.ogg")},
                {"typed from the root",
                 [&] {
                     return each({tap(SDLK_TAB), typeAndEnter(inFolder("b.txt"))});
                 },
                 inFolder("b.txt")},
                {"keys",
                 [&] {
                     return each({tap(SDLK_END), tap(SDLK_RETURN)});
                 },
                 inFolder("Track 10.ogg")},
                {"letters",
                 [&] {
                     type("tr");
                     return each({browser.poll(), tap(SDLK_RETURN)});
                 },
                 inFolder("track 9.ogg")},
                {"cancel", [&] { return clickCancel(); }, "-"},
                {"Escape", [&] { return tap(SDLK_ESCAPE); }, "-"},
                {"Escape in the name",
                 [&] {
                     return each({tap(SDLK_TAB), tap(SDLK_ESCAPE)});
                 },
                 "-"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.how);
        open();
        EXPECT_EQ(browser.isShown(), -1);
        EXPECT_EQ(row.choose(), -1);
        EXPECT_EQ(chosen(), row.chosen);
        EXPECT_EQ(browser.isShown(), 0);
        EXPECT_EQ(browser.poll(), 0);
        EXPECT_EQ(tap(SDLK_RETURN), 0);
        EXPECT_EQ(chosen(), row.chosen) << "stays until the browser is shown again";
        EXPECT_EQ(KXUIFocusedTextEntry(), nullptr);
        steps.advance(100);
    }
    open(); // a row that is selected, but not what the name says any more, can be selected again
    EXPECT_EQ(each({clickRow(2), clickAt(100, 180)}), 0);
    type("x");
    steps.advance(100);
    EXPECT_EQ(each({browser.poll(), clickRow(2), clickConfirm()}), -1);
    EXPECT_EQ(chosen(), inFolder("a.png"));
    open();
    EXPECT_EQ(chosen(), "-");
    browser.hide();
    EXPECT_EQ(browser.poll(), 0);
}

TEST_F(FileBrowser, PressesOutsideOfItsTimeAndTheFocus) {
    // Shown while a button is held where "Cancel" comes to be: the release is none of its business.
    moveMouse(290, 180);
    press();
    open();
    EXPECT_EQ(browser.poll(), 0);
    release();
    EXPECT_EQ(browser.poll(), 0);
    // Hidden by the game in the middle of a press.
    press();
    browser.poll();
    browser.hide();
    release();
    open();
    EXPECT_EQ(browser.poll(), 0);
    moveMouse(295, 20);
    press();
    browser.poll();
    browser.hide();
    release();
    open();
    EXPECT_EQ(browser.poll(), 0);
    EXPECT_EQ(clickHidden(), 0);
    EXPECT_EQ(browser.showsHiddenFiles(), -1);

    // A press on a button leaves the keyboard where it was, one beside the browser takes it.
    tap(SDLK_TAB);
    type("b.tx");
    EXPECT_EQ(browser.poll(), 0);
    EXPECT_EQ(clickConfirm(), 0);
    EXPECT_STREQ(browser.message(), "There is no file \"b.tx\".");
    type("t");
    browser.poll();
    clickAt(2, 2);
    EXPECT_EQ(KXUIFocusedTextEntry(), nullptr);
    EXPECT_EQ(each({tap(SDLK_RETURN), tap(SDLK_ESCAPE)}), 0);
    EXPECT_EQ(clickConfirm(), -1);
    EXPECT_EQ(chosen(), inFolder("b.txt"));
}

TEST_F(FileBrowser, WalksThroughFolders) {
    const std::string root = folder.path(), music = root + "/music";
    const struct {
        const char* how;
        std::function<int()> walk;
        std::string folder;
    } rows[] = {{"double click",
                 [&] {
                     return each({clickRow(1), clickRow(1)});
                 },
                 music},
                {"button Up", [&] { return clickUp(); }, root},
                {"select and button",
                 [&] {
                     return each({clickRow(1), clickConfirm()});
                 },
                 music},
                {"Backspace, after a press on a button", [&] { return tap(SDLK_BACKSPACE); }, root},
                {"Return on the folder come from", [&] { return tap(SDLK_RETURN); }, music},
                {"typed",
                 [&] {
                     return each({tap(SDLK_TAB), typeAndEnter("loud")});
                 },
                 music + "/loud"},
                {"typed ..", [&] { return typeAndEnter("../.."); }, root},
                {"typed with slashes", [&] { return typeAndEnter("music//loud/"); }, music + "/loud"},
                {"from the root", [&] { return typeAndEnter("/"); }, "/"},
                {"above the root", [&] { return clickUp(); }, "/"}};
    open();
    for (const auto& row : rows) {
        EXPECT_EQ(row.walk(), 0) << row.how;
        EXPECT_EQ(browser.folder(), row.folder) << row.how;
        EXPECT_EQ(chosen(), "-");
        steps.advance(100);
    }
    browser.setFolder(music.c_str());
    EXPECT_EQ(browser.folder(), music);
    EXPECT_EQ(each({clickRow(1), clickUp(), clickConfirm()}), 0) << "the name was one of the folder before";
    EXPECT_EQ(browser.folder(), music);
    EXPECT_EQ(each({clickRow(1), clickConfirm()}), -1);
    EXPECT_EQ(chosen(), music + "/song.ogg");
    browser.show(KXUIFileBrowserModeOpen, nullptr);
    EXPECT_EQ(browser.folder(), std::filesystem::current_path().string());
    browser.show(KXUIFileBrowserModeOpen, browser.folder(), browser.path());
    EXPECT_EQ(browser.folder(), std::filesystem::current_path().string());
}

TEST_F(FileBrowser, SavingAsksBeforeItReplaces) {
    const std::string question = "Replace the file \"a.png\"?";
    save("new.png");
    EXPECT_EQ(tap(SDLK_RETURN), -1);
    EXPECT_EQ(chosen(), inFolder("new.png"));

    save();
    EXPECT_EQ(tap(SDLK_RETURN), 0);
    EXPECT_STREQ(browser.message(), "Type a name for the file.");
    EXPECT_EQ(typeAndEnter("a.png"), 0);
    EXPECT_EQ(browser.message(), question);
    EXPECT_EQ(tap(SDLK_RETURN), -1) << "asked once";
    EXPECT_EQ(chosen(), inFolder("a.png"));

    // Whatever is done instead of answering withdraws the question.
    const std::pair<const char*, std::function<int()>> others[] = {
        {"typing",
         [&] {
             type("x");
             const int r = browser.poll();
             return r + tap(SDLK_BACKSPACE);
         }},
        {"cancel", [&] { return clickCancel(); }},
        {"Escape", [&] { return tap(SDLK_ESCAPE); }},
        {"another folder",
         [&] {
             browser.setFolder(folder.path().c_str());
             return 0;
         }},
        {"another row", [&] {
             return each({clickRow(0), clickRow(2)});
         }}};
    for (const auto& [how, withdraw] : others) {
        SCOPED_TRACE(how);
        save("a.png");
        EXPECT_EQ(clickConfirm(), 0);
        EXPECT_EQ(browser.message(), question);
        browser.setSize({300, 180}); // the button has another width now
        clickAt(100, 180);
        moveMouse(0, 0);
        tap(SDLK_END);
        EXPECT_EQ(withdraw(), 0);
        EXPECT_STREQ(browser.message(), "");
        clickAt(100, 180);
        EXPECT_EQ(tap(SDLK_RETURN), 0);
        EXPECT_EQ(browser.message(), question) << "asked again";
    }
    // A name stays on the way into another folder.
    save("b.txt");
    EXPECT_EQ(each({clickRow(1), clickRow(1)}), 0);
    EXPECT_EQ(browser.folder(), inFolder("music"));
    EXPECT_EQ(clickConfirm(), -1);
    EXPECT_EQ(chosen(), inFolder("music/b.txt"));
    // An existing file is picked from the list by a double click, and answered for by another.
    save();
    EXPECT_EQ(each({clickRow(2), clickRow(2)}), 0);
    EXPECT_EQ(browser.message(), question);
    EXPECT_EQ(clickConfirm(), -1);
    EXPECT_EQ(chosen(), inFolder("a.png"));
}

TEST_F(FileBrowser, ExtensionsAndHiddenFiles) {
    browser.setExtensions("png");
    open();
    EXPECT_EQ(each({clickRow(3), clickConfirm()}), 0) << "only a.png is listed";
    EXPECT_STREQ(browser.message(), "Select a file or type its name.");
    EXPECT_EQ(clickHidden(), 0);
    EXPECT_EQ(browser.showsHiddenFiles(), -1);
    EXPECT_EQ(each({clickRow(2), clickConfirm()}), -1);
    EXPECT_EQ(chosen(), inFolder(".hidden.png"));
    open();
    EXPECT_EQ(each({tap(SDLK_TAB), typeAndEnter("b.txt")}), -1) << "what is typed is meant";

    const std::pair<const char*, const char*> saved[] = {{"level", "level.png"},
                                                         {"level.PNG", "level.PNG"},
                                                         {"level.txt", "level.txt.png"},
                                                         {"level.", "level..png"}};
    for (const auto& [typed, name] : saved) {
        save();
        EXPECT_EQ(typeAndEnter(typed), -1);
        EXPECT_EQ(chosen(), inFolder(name));
    }
    save();
    EXPECT_EQ(typeAndEnter("a"), 0) << "the file that it would become exists";
    EXPECT_STREQ(browser.message(), "Replace the file \"a.png\"?");
    browser.setExtensions("gif");
    browser.setFolder(inFolder("music/loud").c_str());
    EXPECT_STREQ(browser.message(), "This folder is empty.");
    folder.write("music/loud/x");
    browser.refresh();
    EXPECT_STREQ(browser.message(), "Nothing in this folder is listed.");
    browser.setExtensions(nullptr);
    EXPECT_STREQ(browser.message(), "");
    browser.setShowsHiddenFiles(0);
    EXPECT_EQ(browser.showsHiddenFiles(), 0);
}

TEST_F(FileBrowser, SaysWhatIsWrong) {
    const std::string longName(300, 'n');
    const struct {
        bool saves;
        std::string typed, message;
    } rows[] = {{false, "nobody", "There is no file \"nobody\"."},
                {false, "nobody/", "There is no folder \"nobody/\"."},
                {false, "a.png/x", "There is no file \"a.png/x\"."},
                {false, longName, "File name too long: \"" + longName + "\""},
                {true, longName, "File name too long: \"" + longName + "\""},
                {true, "nowhere/x", "There is no folder \"" + inFolder("nowhere") + "\"."},
                {true, "a.png/x", "There is no folder \"" + inFolder("a.png") + "\"."},
                {true, "a.png/", "There is no folder \"a.png/\"."},
                {false, "%s%n{C1,0,0,1}x{EC}", "There is no file \"%s%n{C1,0,0,1}x{EC}\"."}};
    for (const auto& row : rows) {
        row.saves ? save() : open();
        if (!row.saves)
            tap(SDLK_TAB);
        EXPECT_EQ(typeAndEnter(row.typed), 0);
        EXPECT_EQ(browser.message(), row.message);
        EXPECT_EQ(browser.folder(), folder.path());
        browser.draw();
    }
    browser.setExtensions("d");
    mkdir((folder / "taken.d").c_str(), 0777);
    save();
    EXPECT_EQ(typeAndEnter("taken"), 0);
    EXPECT_STREQ(browser.message(), "There is a folder \"taken.d\".");
    browser.setExtensions("");

    // Folders that are no more, or never were.
    open();
    ASSERT_EQ(clickRow(1), 0);
    std::filesystem::remove_all(folder / "music");
    EXPECT_EQ(tap(SDLK_RETURN), 0);
    EXPECT_STREQ(browser.message(), "There is no such folder.");
    EXPECT_EQ(clickUp(), 0);
    EXPECT_STREQ(browser.message(), "");
    type("a");
    browser.poll();
    ASSERT_EQ(unlink((folder / "a.png").c_str()), 0);
    EXPECT_EQ(tap(SDLK_RETURN), 0);
    EXPECT_STREQ(browser.message(), "There is no file \"a.png\".");
    steps.advance(100);
    type("b");
    browser.poll();
    std::filesystem::remove_all(folder.path());
    EXPECT_EQ(tap(SDLK_RETURN), 0);
    EXPECT_STREQ(browser.message(), "There is no such folder.");
    browser.show(KXUIFileBrowserModeSave, inFolder("gone/far").c_str(), "x");
    EXPECT_STREQ(browser.message(), "There is no such folder.");
    EXPECT_EQ(tap(SDLK_RETURN), 0);
    EXPECT_EQ(browser.message(), "There is no folder \"" + inFolder("gone/far") + "\".");
}

TEST_F(FileBrowser, AFolderThatMayNotBeRead) {
    const std::string locked = folder / "Locked";
    mkdir(locked.c_str(), 0);
    const uid_t user = geteuid();
    chmod(folder.path().c_str(), 0755);
    if (user == 0) { // who may read everything
        ASSERT_EQ(seteuid(65534), 0);
    }
    open();
    EXPECT_EQ(each({clickRow(1), clickRow(1)}), 0);
    EXPECT_EQ(browser.folder(), locked);
    EXPECT_STREQ(browser.message(), "This folder cannot be read: Permission denied");
    EXPECT_EQ(each({tap(SDLK_TAB), typeAndEnter("x")}), 0);
    EXPECT_STREQ(browser.message(), "Permission denied: \"x\"");
    EXPECT_EQ(seteuid(user), 0);
}

TEST_F(FileBrowser, NamesKeepTheirBytes) {
    const std::string names[] = {"caf\xe9.txt",       "\xff\xfe", "tab\tand\nline",
                                 "{C1,0,0,1}red{EC}", "100%s%n",  "  blanks  "};
    for (const bool saves : {false, true})
        for (const std::string& name : names) {
            SCOPED_TRACE(name);
            const std::string inside = folder / "Levels";
            std::filesystem::remove_all(inside);
            mkdir(inside.c_str(), 0777);
            folder.write("Levels/" + name);
            folder.write("Levels/~~");
            const auto show = [&](const char* initial) {
                browser.show(saves ? KXUIFileBrowserModeSave : KXUIFileBrowserModeOpen, inside.c_str(),
                             initial);
            };
            const bool isText = name.find('\xe9') == std::string::npos && name[0] != '\xff';
            show(nullptr);
            EXPECT_EQ(clickRow(0), 0);
            EXPECT_STREQ(browser.message(),
                         isText ? ""
                                : "This name has bytes that are no text; they are shown as question marks.");
            browser.draw();
            if (saves) {
                EXPECT_EQ(clickConfirm(), 0);
                EXPECT_TRUE(std::string(browser.message()).starts_with("Replace"));
            }
            EXPECT_EQ(clickConfirm(), -1);
            EXPECT_EQ(chosen(), inside + "/" + name);
            show(name.c_str()); // given by the game
            EXPECT_EQ(clickConfirm() + (saves ? clickConfirm() : 0), -1);
            EXPECT_EQ(chosen(), inside + "/" + name);
            steps.advance(100);
        }
    // A folder of such a name is entered, and come back from.
    const std::string odd = folder / "\xff";
    mkdir(odd.c_str(), 0777);
    folder.write("\xff/f");
    browser.show(KXUIFileBrowserModeOpen, odd.c_str());
    EXPECT_EQ(browser.folder(), odd);
    browser.draw();
    EXPECT_EQ(each({clickUp(), tap(SDLK_RETURN)}), 0);
    EXPECT_EQ(browser.folder(), odd);
    EXPECT_EQ(each({tap(SDLK_DOWN), tap(SDLK_RETURN)}), -1);
    EXPECT_EQ(chosen(), odd + "/f");
}

TEST_F(FileBrowser, PathsLongerThanTemporaryStrings) {
    std::string deep = folder.path();
    while (deep.size() < 2000) {
        deep += "/" + std::string(200, 'd');
        ASSERT_EQ(mkdir(deep.c_str(), 0777), 0);
    }
    std::ofstream(deep + "/file") << "x";
    browser.show(KXUIFileBrowserModeOpen, deep.c_str());
    EXPECT_EQ(browser.folder(), deep);
    EXPECT_EQ(each({tap(SDLK_DOWN), tap(SDLK_RETURN)}), -1);
    EXPECT_EQ(chosen(), deep + "/file");
}

TEST_F(FileBrowser, ManyEntries) {
    const std::string inside = folder / "music/loud";
    const int count = 5000;
    for (int i = 0; i < count; ++i)
        ASSERT_EQ(mknod((inside + "/" + std::to_string(i)).c_str(), S_IFREG | 0666, 0), 0);
    browser.show(KXUIFileBrowserModeOpen, inside.c_str());
    browser.draw();
    EXPECT_EQ(each({tap(SDLK_END), tap(SDLK_UP), tap(SDLK_RETURN)}), -1);
    EXPECT_EQ(chosen(), inside + "/" + std::to_string(count - 2));
}

TEST_F(FileBrowser, TrackAndKnobHaveColoursOfTheirOwn) {
    for (int i = 0; i < 30; ++i)
        folder.write(std::to_string(i));
    browser.setControlColor(1, 1, 1, 1);
    browser.setDepressedColor(1, 1, 1, 1);
    browser.setTrackColor(1, 0, 0, 1);
    browser.setKnobColor(0, 1, 0, 1);
    open();
    const Image image = draw([&] { browser.draw(); });
    const int bar = 300, top = 10 + 4 + lineHeight + 4;
    EXPECT_EQ(image.at(bar, top + 5), (Pixel{0, 255, 0, 255}));
    EXPECT_EQ(image.at(bar, top + 60), (Pixel{255, 0, 0, 255}));
}

TEST_F(FileBrowser, StrangeGeometryAndFonts) {
    open();
    for (const KXRect& rect :
         {KXRect{{NAN, NAN}, {NAN, NAN}}, KXRect{{0, 0}, {INFINITY, INFINITY}}, KXRect{{5, 5}, {-20, -20}},
          KXRect{{-1e30f, 1e30f}, {1e30f, 1e30f}}, KXRect{{5, 5}, {40, 30}}, KXRect{{0, 0}, {0, 0}}}) {
        browser.setRect(rect.origin, rect.size);
        browser.draw();
        EXPECT_EQ(clickAt(6, 6), 0);
    }
    browser.setRect({100, 5}, {20, 150});
    EXPECT_EQ(clickAt(90, 145), 0) << "beside a browser that is too narrow for its buttons";
    browser.setRect({10, 10}, {300, 180});
    KXClearGUIFontCache();
    browser.draw();
    KXUIFileBrowser bare; // made without a font, given one later
    bare.setRect({10, 10}, {300, 180});
    bare.show(KXUIFileBrowserModeOpen, folder.path().c_str());
    bare.draw();
    bare.poll();
    EXPECT_EQ(bare.setFontSize(12), 0);
    EXPECT_EQ(bare.setFont(testFont(), KXAliasModeTexture), -1);
    EXPECT_EQ(bare.setFontSize(12), -1);
    EXPECT_GT(drawnPixels([&] { bare.draw(); }), 50000);
    const Image before = draw([&] { bare.draw(); });
    bare.setFontSize(9);
    EXPECT_GT(differingPixels(before, draw([&] { bare.draw(); })), 500);
}

TEST_F(FileBrowser, Looks) {
    // What comes before differs from run to run, so it must not be in view.
    const std::string place = folder / "All that is drawn in this picture lies in here",
                      empty = place + "/a very long name of a folder in which nobody would look";
    for (const std::string& name : {place, place + "/Levels", place + "/music", empty})
        mkdir(name.c_str(), 0777);
    for (const char* name : {"caf\xe9.png", "Track 9.ogg", "track 10.ogg", "{C1,0,0,1}red{EC}.txt",
                             "\u00c4rger \u0416\u0443\u043a.txt", "z"})
        std::ofstream(place + "/" + name) << "x";
    browser.setRect({4, 4}, {312, 192});
    browser.show(KXUIFileBrowserModeOpen, place.c_str());
    for (int i = 0; i < 5; ++i)
        tap(SDLK_DOWN);
    browser.draw();
    expectGolden(Image::of(*window), "ui/file_browser_open");

    browser.setBackgroundColor(0.9f, 0.9f, 0.9f, 1);
    browser.setControlColor(1, 1, 1, 1);
    browser.setDepressedColor(0.7f, 0.8f, 0.9f, 1);
    browser.setBorderColor(0.4f, 0.4f, 0.5f, 1);
    browser.setTextColor(0, 0, 0, 1);
    browser.setSelectionColor(0.6f, 0.8f, 1, 1);
    browser.setFocusColor(1, 0.4f, 0, 1);
    browser.setShowsHiddenFiles(-1);
    std::ofstream(empty + "/z.txt") << "x";
    browser.show(KXUIFileBrowserModeSave, empty.c_str(), "z.txt");
    tap(SDLK_RETURN);
    browser.draw();
    expectGolden(Image::of(*window), "ui/file_browser_save");
    browser.hide();
    EXPECT_EQ(drawnPixels([&] { browser.draw(); }), 0);
}
} // namespace
