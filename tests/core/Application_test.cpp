#include "core/ground/Application.h"

#include <Kobaltrix/KXCore.h>

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {
struct ApplicationPaths : testing::Test {
    ~ApplicationPaths() override { _KXForgetApplicationPaths(); }
};

std::string orNone(const char* text) { return text ? text : "(none)"; }

TEST_F(ApplicationPaths, OutsideABundle) {
    const struct {
        const char *path, *name, *folder, *left;
    } cases[] = {
        {"/usr/local/bin/game", "game", "/usr/local/bin", "/usr/local/bin"},
        {"./game", "game", ".", "."},
        {"folder with spaces/sp\u00efel", "sp\u00efel", "folder with spaces", "folder with spaces"},
        {"folder/", "", "folder", "folder"},
        {"game", "game", "(none)", "game"},
        {"/game", "/game", "(none)", "/game"}, // the first character is never looked at
        {"", "", "(none)", ""},
    };
    for (const auto& [path, name, folder, left] : cases) {
        std::string text = path;
        testing::internal::CaptureStdout();
        _KXFindApplicationPaths(text.data());
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(orNone(KXApplicationName), name);
        EXPECT_EQ(orNone(KXExecutablePath), folder);
        EXPECT_EQ(KXBundlePath, nullptr);
        EXPECT_STREQ(text.c_str(), left) << "the caller's text is cut in place";
    }
    _KXFindApplicationPaths(nullptr);
    EXPECT_EQ(KXApplicationName, nullptr);
}

TEST_F(ApplicationPaths, InABundle) {
    const struct {
        const char *path, *name, *folder, *printed;
    } cases[] = {
        {"/Users/a/Games/Game.app/Contents/MacOS/Game", "Game", "/Users/a/Games/",
         "/Users/a/Games/Game.app/Contents/Resources/Game\n"},
        {"Contents/MacOS/Game", "Game", "Contents/MacOS/Game", "Contents/Resources/Game\n"},
        {"x/Contents/MacOS", "MacOS", "x/Contents/MacOS", "x/Resources/MacOS\n"},
        {"Contents/MacOS", "MacOS", "Contents/MacOS", ""}, // no second slash
    };
    for (const auto& [path, name, folder, printed] : cases) {
        std::string text = path;
        testing::internal::CaptureStdout();
        _KXFindApplicationPaths(text.data());
        EXPECT_EQ(testing::internal::GetCapturedStdout(), printed);
        EXPECT_EQ(orNone(KXApplicationName), name);
        EXPECT_EQ(orNone(KXExecutablePath), folder);
        EXPECT_EQ(KXBundlePath, nullptr);
        EXPECT_EQ(text, path) << "a bundle's path is not cut";
    }
}

TEST_F(ApplicationPaths, ABundlesResourcesBecomeTheWorkingDirectory) {
    namespace fs = std::filesystem;
    const TemporaryFolder folder;
    const fs::path before = fs::current_path();
    const fs::path contents = folder / "Game.app/Contents";
    fs::create_directories(contents / "Resources/Game");
    std::string text = (contents / "MacOS/Game").string();
    testing::internal::CaptureStdout();
    _KXFindApplicationPaths(text.data());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), (contents / "Resources/Game").string() + "\n");
    EXPECT_EQ(orNone(KXBundlePath), (contents / "Resources/Game").string());
    EXPECT_EQ(fs::canonical(fs::current_path()), fs::canonical(contents / "Resources/Game"));
    EXPECT_EQ(orNone(KXExecutablePath), folder.path() + "/");
    fs::current_path(before);
}
} // namespace
