#include "UITest.h"
#include "support/System.h"
#include "support/TemporaryFolder.h"

#include "text/KXUIGlobalFont.h"
#include "util/KXString.h"

#include <cerrno>
#include <filesystem>
#include <map>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace {
/// A browser of 300 x 180 points at (10, 10) and a folder in which it lists Levels/ music/ a.png b.txt
/// "track 9.ogg" "Track 10.ogg".
struct FileBrowser : UITest {
    FileBrowser() {
        makeFolder(folder / "Levels");
        makeFolder(folder / "music/loud");
        for (const char* name :
             {"a.png", "b.txt", "Track 10.ogg", "track 9.ogg", ".hidden.png", ".xpng", "music/song.ogg"})
            folder.write(name);
        browser.setRect({10, 10}, {300, 180});
        lineHeight = browser._idealSizeForText("x").height;
    }
    ~FileBrowser() override { _KXCleanTempStrings(); }

    static void makeFolder(const std::string& path) {
        EXPECT_TRUE(std::filesystem::create_directories(path));
    }
    int poll() override { return browser.poll(); }
    /// The buttons by their captions, "name" for the line, "row 2" for the third row.
    KXPoint place(const std::string& name) const override {
        static const std::map<std::string, KXPoint> parts = {
            {"Up", {20, 20}},        {"Hidden", {295, 20}},  {"New", {220, 20}},   {"title", {30, 40}},
            {"Confirm", {245, 180}}, {"Cancel", {290, 180}}, {"name", {100, 180}}, {"outside", {2, 2}}};
        if (name.starts_with("row"))
            return {40,
                    10 + 4 + lineHeight + 4 + lineHeight + (std::stof(name.substr(4)) + 0.5f) * lineHeight};
        const auto part = parts.find(name);
        return part == parts.end() ? UITest::place(name) : part->second;
    }
    /// "open", "save", and "save NAME" show the browser.
    int doAct(const std::string& act) override {
        if (act != "open" && !act.starts_with("save"))
            return UITest::doAct(act);
        browser.show(act == "open" ? KXUIFileBrowserModeOpen : KXUIFileBrowserModeSave, folder.path().c_str(),
                     act.size() > 5 ? act.substr(5).c_str() : nullptr);
        return 0;
    }
    /// Relative to the test's folder: the one that is listed, what the browser says, and what was chosen.
    std::string state() override {
        std::string all = std::string(browser.isShown() ? "" : "hidden ") + browser.folder() + "/";
        if (*browser.message())
            all += std::string(" ") + browser.message();
        if (browser.path())
            all += std::string(" chose ") + browser.path();
        for (std::size_t i; (i = all.find(folder.path() + "/")) != all.npos;)
            all.erase(i, folder.path().size());
        return all;
    }

    TemporaryFolder folder;
    KXUIFileBrowser browser;
    float lineHeight;
};

TEST_F(FileBrowser, AFileIsChosenOnce) {
    expectEach(
        "Return -> hidden //; open -> /; click row 2, click row 2 -> told hidden / chose /a.png; "
        "wait 100, Return -> hidden / chose /a.png; " // stays until the browser is shown again
        "open -> /; click row 4, click Confirm -> told hidden / chose /track 9.ogg; "
        "open, Tab, type b.txt, Return -> told hidden / chose /b.txt; "
        "open, Tab, type music/song.ogg, Return -> told hidden / chose /music/song.ogg; "
        "open, Tab, type " +
        folder / "b.txt" +
        ", Return -> told hidden / chose /b.txt; "
        "open, End, Return -> told hidden / chose /Track 10.ogg; "
        "open, type tr, Return -> told hidden / chose /track 9.ogg; "
        "open, click row 2, click name, type x, wait 100, click row 2, click Confirm -> "
        "told hidden / chose /a.png; open, click Cancel -> told hidden /; open, Escape -> told hidden /; "
        "open, Tab, Escape -> told hidden /; open, Left Alt+Escape -> /"); // the desktop's
    EXPECT_EQ(browser.isShown(), -1);
    browser.hide();
    expectEach("Return -> hidden /");
    EXPECT_EQ(KXUIFocusedTextEntry(), nullptr);
}

TEST_F(FileBrowser, PressesThatAreNoneOfItsBusiness) {
    // Shown while a button is held where "Cancel" comes to be.
    expectEach("press Cancel, open, release -> /");
    // Hidden by the game in the middle of a press.
    for (const char* button : {"press Cancel", "press Hidden"}) {
        act(button);
        browser.hide();
        release();
        expectEach("open, at outside -> /");
    }
    EXPECT_EQ(browser.showsHiddenFiles(), 0);
    // A button leaves the keyboard where it was, a press beside the browser takes it away.
    expectEach("open, Tab, type b.tx, click Confirm -> / There is no file \"b.tx\".; type t -> /; "
               "click outside, Return, Escape -> /; click Confirm -> told hidden / chose /b.txt");
    browser.setRect({100, 5}, {20, 150});
    expectEach("open, click 90 145 -> /"); // beside a browser that is too narrow for its buttons
}

TEST_F(FileBrowser, WalksThroughFolders) {
    const std::string empty = " -> /music/loud/ This folder is empty.; ";
    expectEach("open, click row 1, click row 1 -> /music/; click Up -> /; "
               "wait 100, click row 1, click Confirm -> /music/; Backspace -> /; "
               "Return -> /music/; " // the folder come from is selected
               "Tab, type loud, Return" +
               empty + "type ../.., Return -> /; type music//loud/, Return" + empty +
               "type x, Backspace -> /music/loud/");
    browser.setFolder((folder / "music").c_str());
    expectEach(
        "wait 100, click row 1, click Up, click Confirm -> /music/; " // the name was of the folder before
        "click row 1, click Confirm -> told hidden /music/ chose /music/song.ogg");
    browser.show(KXUIFileBrowserModeOpen, "/");
    expectEach("click Up -> //");
    browser.show(KXUIFileBrowserModeOpen, nullptr);
    browser.show(KXUIFileBrowserModeOpen, browser.folder(), browser.path());
    EXPECT_EQ(browser.folder(), std::filesystem::current_path().string());
}

TEST_F(FileBrowser, SavingAsksBeforeItReplaces) {
    const std::string asks = " -> / \"a.png\" is there already. Replace it?; ";
    expectEach("save new.png, Return -> told hidden / chose /new.png; "
               "save, Return -> / Type a name for the file.; type a.png, Return" +
               asks + "Return -> told hidden / chose /a.png");
    // Whatever is done instead of answering withdraws the question.
    for (const char* withdraws :
         {"End, type x, Backspace", "click Cancel", "Escape", "click row 0, click row 2"}) {
        expectEach("save a.png, click Confirm" + asks + "click name" + asks + withdraws +
                   " -> /; click name, Return" + asks + "at outside" + asks.substr(0, asks.size() - 2));
        browser.setFolder(folder.path().c_str());
        EXPECT_STREQ(browser.message(), "");
    }
    // A name stays on the way into another folder. A file may be picked from the list and answered for.
    expectEach("save b.txt, click row 1, click row 1 -> /music/; "
               "click Confirm -> told hidden /music/ chose /music/b.txt; "
               "save, click row 2, click row 2" +
               asks + "click row 2, click row 2" + asks + "click Confirm -> told hidden / chose /a.png; " +
               "save, click row 2, Return" + asks + "Return -> told hidden / chose /a.png");
    // The list has the keyboard, and no row is selected; all of it within a step.
    expectEach("save, type new.txt & Tab & Return -> told hidden / chose /new.txt; "
               "save, type . ., Return -> / A name needs more than blanks and dots.");
}

TEST_F(FileBrowser, ExtensionsAndHiddenFiles) {
    // Typing replaces a name but not its extension.
    expectEach("save old.tar.gz, type new, Return -> told hidden / chose /new.gz; "
               "save \u00e4\u00f6.txt, type new, Return -> told hidden / chose /new.txt; "
               "save plain, type new, Return -> told hidden / chose /new; "
               "save .profile, type new, Return -> told hidden / chose /new");
    browser.setExtensions("png");
    expectEach(
        "open, click row 3, click Confirm -> / Select a file or type its name.; " // only a.png is listed
        "click Hidden -> /; click row 2, click Confirm -> told hidden / chose /.hidden.png; "
        "open, Tab, type b.txt, Return -> told hidden / chose /b.txt; " // what is typed is meant
        "save, type x, Return -> told hidden / chose /x.png; "
        "save, type x.PNG, Return -> told hidden / chose /x.PNG; "
        "save, type x.txt, Return -> told hidden / chose /x.txt.png; "
        "save, type x., Return -> told hidden / chose /x.png; "
        "save, type  .png, Return -> / A name needs more than blanks and dots.; "
        "save, type .png, Return -> / A name needs more than blanks and dots.; "
        "save, type a, Return -> / \"a.png\" is there already. Replace it?"); // which it would become
    EXPECT_EQ(browser.showsHiddenFiles(), -1);
    browser.setFolder((folder / "music/loud").c_str());
    EXPECT_EQ(state(), "/music/loud/ This folder is empty.");
    folder.write("music/loud/x");
    browser.refresh();
    EXPECT_EQ(state(), "/music/loud/ Nothing in this folder is listed.");
    browser.setExtensions(nullptr);
    EXPECT_EQ(state(), "/music/loud/");
    browser.setShowsHiddenFiles(0);
    EXPECT_EQ(browser.showsHiddenFiles(), 0);
}

TEST_F(FileBrowser, FoldersAreMadeAndFilesRenamed) {
    const std::string asks = " -> / Name of the new folder:; ",
                      bad = "A name needs more than blanks and dots, and no slash.";
    expectEach("open, Left Ctrl+N" + asks + "Escape -> /; click New" + asks + "type ., Return -> / " + bad +
               "; type x/y, Return -> / " + bad +
               "; Left Ctrl+A, type music, Return -> / \"music\" is there already.; "
               "Left Ctrl+A & type New & Return -> /; Return -> /New/ This folder is empty.; Backspace -> /; "
               "F2 -> / New name for \"New\":; type a.png, click Confirm -> / \"a.png\" is there already.; "
               "Left Ctrl+A, type Old & Return & Return -> /Old/ This folder is empty.; Backspace -> /; "
               "type a.p, F2, type b, Return, Return -> told hidden / chose /b.png"); // its extension stays
    EXPECT_EQ(contentOf(folder / "b.png"), "content");
    EXPECT_FALSE(std::filesystem::exists(folder / "a.png") || std::filesystem::exists(folder / "New"));
    // A name to save under is there again, and a row that is selected meanwhile ends it.
    expectEach("save mine.txt, Left Ctrl+N & type lost & Escape & Return -> told hidden / chose /mine.txt; "
               "save, Left Ctrl+N, click row 3, click Confirm -> / \"b.png\" is there already. Replace it?");
    act("Escape, open, type b.t");
    std::filesystem::remove(folder / "b.txt");
    const std::string reason = std::system_category().message(ENOENT);
    expectEach("F2, type x, Return -> / " + reason + ": \"x.txt\"");
    browser.setAllowsChanges(0);
    EXPECT_EQ(browser.allowsChanges(), 0);
    expectEach("Left Ctrl+N -> /; click row 3, F2, click New -> /");
}

TEST_F(FileBrowser, PlacesCrumbsAndColumns) {
    const char* const home = std::getenv("HOME");
    const std::string before = home ? home : "";
    setVariable("HOME", folder / "music");
    folder.write("a.png", "the largest of all");
    std::filesystem::last_write_time(folder / "Track 10.ogg",
                                     std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    // Keys alone: the first of each order is chosen.
    expectEach("open, Left Ctrl+2, End, Up, Up, Up, Return -> told hidden / chose /a.png; "
               "open, Left Ctrl+3, Home, Down, Down, Return -> told hidden / chose /Track 10.ogg; "
               "open, Left Ctrl+3, End, Return -> told hidden / chose /Track 10.ogg; "
               "open, Left Ctrl+1, click row 2, Left Ctrl+1, Return -> told hidden / chose /a.png; "
               "open, at title & press & release, End, Return -> told hidden / chose /Track 10.ogg");
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

TEST_F(FileBrowser, SaysWhatIsWrongWithANameThatIsTyped) {
    const std::string name(300, 'n'), tooLong = name + ", Return -> / File name too long: \"" + name + "\"; ";
    makeFolder(folder / "taken.d");
    expectEach("open, Tab, type nobody, Return -> / There is no file \"nobody\".; "
               "open, Tab, type nobody/, Return -> / There is no folder \"nobody/\".; "
               "open, Tab, type a.png/x, Return -> / There is no file \"a.png/x\".; "
               "open, Tab, type %s%n{C1}x{EC}, Return -> / There is no file \"%s%n{C1}x{EC}\".; "
               "open, Tab, type " +
               tooLong + "save " + tooLong +
               "save nowhere/x, Return -> / There is no folder \"/nowhere\".; "
               "save a.png/x, Return -> / There is no folder \"/a.png\".; "
               "save a.png/, Return -> / There is no folder \"a.png/\".");
    browser.draw();
    browser.setExtensions("d");
    expectEach("save taken, Return -> / There is a folder \"taken.d\".");
}

TEST_F(FileBrowser, SaysThatWhatWasListedIsGone) {
    const std::string noFolder = " There is no such folder.";
    act("open, click row 1");
    std::filesystem::remove_all(folder / "music");
    expectEach("Return -> /music/" + noFolder + "; click Up, type a -> /");
    std::filesystem::remove(folder / "a.png");
    expectEach("Return -> / There is no file \"a.png\".; wait 100, type b -> /");
    std::filesystem::remove_all(folder.path());
    expectEach("Return -> /" + noFolder);
    browser.show(KXUIFileBrowserModeSave, (folder / "gone/far").c_str(), "x");
    EXPECT_EQ(state(), "/gone/far/" + noFolder);
    expectEach("Return -> /gone/far/ There is no folder \"/gone/far\".");
}

TEST_F(FileBrowser, AFolderThatMayNotBeRead) {
    mkdir((folder / "Locked").c_str(), 0);
    chmod(folder.path().c_str(), 0755);
    const uid_t user = geteuid();
    ASSERT_EQ(seteuid(user == 0 ? 65534 : user), 0) << "no superuser, who may read everything";
    expectEach("open, click row 1, click row 1 -> /Locked/ This folder cannot be read: Permission denied; "
               "Tab, type x, Return -> /Locked/ Permission denied: \"x\"");
    EXPECT_EQ(seteuid(user), 0);
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

TEST_F(FileBrowser, PathsLongerThanTemporaryStringsAndManyEntries) {
    std::string deep = folder.path();
    while (deep.size() < 2000)
        makeFolder(deep += "/" + std::string(200, 'd'));
    for (int i = 0; i < 5000; ++i)
        ASSERT_EQ(mknod((deep + "/" + std::to_string(i)).c_str(), S_IFREG | 0666, 0), 0);
    browser.setControlColor(1, 1, 1, 1);
    browser.setDepressedColor(1, 1, 1, 1);
    browser.setTrackColor(1, 0, 0, 1);
    browser.setKnobColor(0, 1, 0, 1);
    browser.show(KXUIFileBrowserModeOpen, deep.c_str());
    EXPECT_EQ(browser.folder(), deep);
    const Image image = picture([&] { browser.draw(); });
    EXPECT_EQ(image.at(300, 60), (Pixel{0, 255, 0, 255})) << "the bar's knob";
    EXPECT_EQ(image.at(300, 100), red) << "and its track";
    EXPECT_EQ(act("End, Up, Return"), -1);
    EXPECT_EQ(browser.path(), deep + "/4998");
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
} // namespace
