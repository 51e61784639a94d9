// Folders without rights, names that are no text, and a home that a variable names, which not all systems
// have.

#include "FileBrowserTest.h"

#include "support/Denied.h"
#include "support/System.h"
#include "text/KXUIGlobalFont.h"

#include <sys/stat.h>

namespace {
TEST_F(FileBrowser, AFolderThatMayNotBeRead) {
    mkdir((folder / "Locked").c_str(), 0);
    chmod(folder.path().c_str(), 0755);
    const Unprivileged user; // a superuser may read everything
    expectEach("open, click row 1, click row 1 -> /Locked/ This folder cannot be read: Permission denied; "
               "Tab, type x, Return -> /Locked/ Permission denied: \"x\"");
}

TEST_F(FileBrowser, NamesKeepTheirBytes) {
    const std::string inside = folder / "Levels";
    for (const std::string name :
         {"caf\xe9.txt", "\xff\xfe", "tab\tand\nline", "{C1,0,0,1}red{EC}", "100%s%n", "  blanks  "}) {
        SCOPED_TRACE(name);
        std::filesystem::remove_all(inside);
        makeFolder(inside);
        folder.write("Levels/" + name);
        folder.write("Levels/~~");
        browser.show(KXUIFileBrowserModeOpen, inside.c_str());
        act("click row 0");
        EXPECT_EQ(*browser.message() != 0, name.find_first_of("\xe9\xff") != name.npos) << "said";
        browser.draw();
        EXPECT_EQ(act("click Confirm"), -1);
        EXPECT_EQ(browser.path(), inside + "/" + name);
        browser.show(KXUIFileBrowserModeSave, inside.c_str(), name.c_str()); // given by the game
        EXPECT_EQ(act("click Confirm"), 0);
        EXPECT_TRUE(std::string(browser.message()).ends_with("Replace it?"));
        EXPECT_EQ(act("click Confirm"), -1);
        EXPECT_EQ(browser.path(), inside + "/" + name);
    }
    // A folder of such a name is entered, and come back from.
    const std::string odd = folder / "\xff";
    makeFolder(odd);
    folder.write("\xff/f");
    browser.show(KXUIFileBrowserModeOpen, odd.c_str());
    expectEach("wait 100, click Up, Return -> /\xff/; Down, Return -> told hidden /\xff/ chose /\xff/f");
}

TEST_F(FileBrowser, Looks) {
    // What comes before differs from run to run, so it must not be in view.
    const std::string here = folder / "All that is drawn in this picture lies in here",
                      empty = here + "/a very long name of a folder in which nobody would look";
    for (const std::string& name : {here + "/Levels", here + "/music", empty})
        makeFolder(name);
    for (const char* name : {"caf\xe9.png", "Track 9.ogg", "track 10.ogg", "{C1,0,0,1}red{EC}.txt",
                             "\u00c4rger \u0416\u0443\u043a.txt", "z"})
        std::ofstream(_KXFilePath(here + "/" + name)) << "x";
    browser.setRect({4, 4}, {312, 192});
    browser.show(KXUIFileBrowserModeOpen, here.c_str());
    act("Down, Down, Down, Down, Down");
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
    std::ofstream(_KXFilePath(empty + "/z.txt")) << "x";
    browser.show(KXUIFileBrowserModeSave, empty.c_str(), "z.txt");
    act("Return");
    browser.draw();
    expectGolden(Image::of(*window), "ui/file_browser_save");
    browser.hide();
    EXPECT_EQ(boxOf(picture([&] { browser.draw(); })), nothing);
}

TEST_F(FileBrowser, PlacesAndCrumbs) {
    const char* const home = std::getenv("HOME");
    const std::string before = home ? home : "";
    setVariable("HOME", folder / "music");
    expectEach("open, End, Return -> told hidden / chose /Track 10.ogg");
    browser.setRect({4, 4}, {500, 180});
    EXPECT_EQ(browser.addPlace("Mine", (folder / "Levels").c_str()), -1);
    EXPECT_EQ(browser.addPlace(nullptr, "/") | browser.addPlace("x", nullptr), 0);
    expectEach("open, click 40 40 -> /music/; click 40 75 -> /Levels/ This folder is empty.; "
               "Home, Return, Tab, type song, Return -> told hidden /music/ chose /music/song.ogg; "
               "open, click 40 75, click 40 92 -> /"); // where a file was chosen last
    browser.setFolder((folder / "music/loud").c_str());
    browser.draw();
    expectEach("click 38 15 -> /music/"); // it is the user's own
    setVariable("HOME", before);
    // Each name of the path leads to its folder.
    browser.setFolder((folder / "Levels").c_str());
    browser.draw();
    browser.setFolder((folder / "music/loud").c_str());
    browser.draw();
    std::string line = "/";
    for (const std::filesystem::path& part : std::filesystem::path(folder / "mu").relative_path())
        line += " > " + part.string();
    const float x = 12 + browser._idealSizeForText("Up").width + _KXUIGlobalFont->advance(line.c_str());
    expectEach("click " + std::to_string(x) + " 15 -> /music/; click 35 15 -> //");
}
} // namespace
