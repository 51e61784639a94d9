#include "core/ground/Application.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {
namespace fs = std::filesystem;

std::string orNone(const char* text) { return text ? text : "(none)"; }

struct ApplicationPaths : testing::Test {
    ~ApplicationPaths() override { _KXForgetApplicationPaths(); }

    /// Finds the paths from a copy of @a path; what becomes of the copy, and what was printed.
    std::string find(const std::string& path) {
        std::string text = path;
        testing::internal::CaptureStdout();
        _KXFindApplicationPaths(text.data());
        printed = testing::internal::GetCapturedStdout();
        return text.c_str();
    }

    std::string printed;
};

TEST_F(ApplicationPaths, ComeFromHowTheProcessWasStarted) {
    // The path; the name and the folder in it, what is left of the path, and what is printed.
    const char* const rows[][5] = {
        {"/usr/local/bin/game", "game", "/usr/local/bin", "/usr/local/bin", ""},
        {"folder with spaces/sp\u00efel", "sp\u00efel", "folder with spaces", "folder with spaces", ""},
        {"folder/", "", "folder", "folder", ""},
        {"game", "game", "(none)", "game", ""},
        {"/game", "/game", "(none)", "/game", ""}, // the first character is never looked at
        {"", "", "(none)", "", ""},
        // A bundle's path is not cut.
        {"/Users/a/Games/Game.app/Contents/MacOS/Game", "Game", "/Users/a/Games/",
         "/Users/a/Games/Game.app/Contents/MacOS/Game", "/Users/a/Games/Game.app/Contents/Resources/Game\n"},
        {"Contents/MacOS/G", "G", "Contents/MacOS/G", "Contents/MacOS/G", "Contents/Resources/G\n"},
        {"Contents/MacOS", "MacOS", "Contents/MacOS", "Contents/MacOS", ""}, // no second slash
    };
    for (const auto& [path, name, folder, left, print] : rows) {
        EXPECT_EQ(find(path), left);
        EXPECT_EQ(printed, print);
        EXPECT_EQ(orNone(KXApplicationName), name);
        EXPECT_EQ(orNone(KXExecutablePath), folder);
        EXPECT_EQ(orNone(KXBundlePath), "(none)");
    }
    _KXFindApplicationPaths(nullptr);
    EXPECT_EQ(KXApplicationName, nullptr);
}

TEST_F(ApplicationPaths, ABundlesResourcesBecomeTheWorkingDirectory) {
    const TemporaryFolder folder;
    const fs::path contents = folder / "Game.app/Contents", resources = contents / "Resources/Game";
    fs::create_directories(resources);
    find((contents / "MacOS/Game").generic_string());
    EXPECT_EQ(orNone(KXBundlePath), resources.generic_string());
    EXPECT_EQ(fs::canonical(fs::current_path()), fs::canonical(resources));
}
} // namespace
