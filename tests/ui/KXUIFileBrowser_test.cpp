#include "FileBrowserTest.h"

#include "platform/FileFacts.h"

#include <cerrno>
#include <system_error>

namespace {
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
    EXPECT_EQ(browser.folder(), _KXTextOf(std::filesystem::current_path()));
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
    EXPECT_FALSE(_KXNameIsTaken((folder / "a.png").c_str()) || _KXNameIsTaken((folder / "New").c_str()));
    // A name to save under is there again, and a row that is selected meanwhile ends it.
    expectEach("save mine.txt, Left Ctrl+N & type lost & Escape & Return -> told hidden / chose /mine.txt; "
               "save, Left Ctrl+N, click row 3, click Confirm -> / \"b.png\" is there already. Replace it?");
    act("Escape, open, type b.t");
    std::filesystem::remove(_KXFilePath(folder / "b.txt"));
    const std::string reason = std::system_category().message(ENOENT);
    expectEach("F2, type x, Return -> / " + reason + ": \"x.txt\"");
    browser.setAllowsChanges(0);
    EXPECT_EQ(browser.allowsChanges(), 0);
    expectEach("Left Ctrl+N -> /; click row 3, F2, click New -> /");
}

TEST_F(FileBrowser, Columns) {
    folder.write("a.png", "the largest of all");
    std::filesystem::last_write_time(_KXFilePath(folder / "Track 10.ogg"),
                                     std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    // Keys alone: the first of each order is chosen.
    expectEach("open, Left Ctrl+2, End, Up, Up, Up, Return -> told hidden / chose /a.png; "
               "open, Left Ctrl+3, Home, Down, Down, Return -> told hidden / chose /Track 10.ogg; "
               "open, Left Ctrl+3, End, Return -> told hidden / chose /Track 10.ogg; "
               "open, Left Ctrl+1, click row 2, Left Ctrl+1, Return -> told hidden / chose /a.png; "
               "open, at title & press & release, End, Return -> told hidden / chose /Track 10.ogg");
}

TEST_F(FileBrowser, SaysWhatIsWrongWithANameThatIsTyped) {
    const std::string name(300, 'n'), quoted = '"' + name + '"', tooLong = "File name too long: " + quoted;
    const std::error_code fault = _KXPathFault(name); // where the system is not asked for such a file
    const std::string toOpen = fault ? "There is no file " + quoted + "." : tooLong,
                      toSave = fault ? fault.message() + ": " + quoted : tooLong;
    makeFolder(folder / "taken.d");
    expectEach("open, Tab, type nobody, Return -> / There is no file \"nobody\".; "
               "open, Tab, type nobody/, Return -> / There is no folder \"nobody/\".; "
               "open, Tab, type a.png/x, Return -> / There is no file \"a.png/x\".; "
               "open, Tab, type %s%n{C1}x{EC}, Return -> / There is no file \"%s%n{C1}x{EC}\".; "
               "open, Tab, type " +
               name + ", Return -> / " + toOpen + "; save " + name + ", Return -> / " + toSave +
               "; save nowhere/x, Return -> / There is no folder \"/nowhere\".; "
               "save a.png/x, Return -> / There is no folder \"/a.png\".; "
               "save a.png/, Return -> / There is no folder \"a.png/\".");
    browser.draw();
    browser.setExtensions("d");
    expectEach("save taken, Return -> / There is a folder \"taken.d\".");
}

TEST_F(FileBrowser, SaysThatWhatWasListedIsGone) {
    const std::string noFolder = " There is no such folder.";
    act("open, click row 1");
    std::filesystem::remove_all(_KXFilePath(folder / "music"));
    expectEach("Return -> /music/" + noFolder + "; click Up, type a -> /");
    std::filesystem::remove(_KXFilePath(folder / "a.png"));
    expectEach("Return -> / There is no file \"a.png\".; wait 100, type b -> /");
    std::filesystem::remove_all(_KXFilePath(folder.path()));
    expectEach("Return -> /" + noFolder);
    browser.show(KXUIFileBrowserModeSave, (folder / "gone/far").c_str(), "x");
    EXPECT_EQ(state(), "/gone/far/" + noFolder);
    expectEach("Return -> /gone/far/ There is no folder \"/gone/far\".");
}

TEST_F(FileBrowser, PathsLongerThanTemporaryStringsAndManyEntries) {
    std::string deep = folder.path();
    while (deep.size() < 2000)
        makeFolder(deep += "/" + std::string(200, 'd'));
    for (int i = 0; i < 5000; ++i)
        ASSERT_TRUE(std::ofstream(_KXFilePath(deep + "/" + std::to_string(i))));
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
} // namespace
