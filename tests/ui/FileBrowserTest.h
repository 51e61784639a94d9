#pragma once

#include "UITest.h"
#include "support/TemporaryFolder.h"

#include "util/KXString.h"

#include <filesystem>
#include <map>

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
        EXPECT_TRUE(std::filesystem::create_directories(_KXFilePath(path)));
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
        const std::string where = browser.folder();
        std::string all = browser.isShown() ? "" : "hidden ";
        all += (where.ends_with(":/") ? "/" : where) + "/"; // the root of any drive
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
