// Where a game's user keeps things, on systems where the environment says it.

#include <Kobaltrix/KXPlaces.h>

#include "support/System.h"
#include "support/TemporaryFolder.h"
#include "util/KXString.h"

#include <gtest/gtest.h>

namespace {
namespace fs = std::filesystem;

std::string orNone(const char* text) { return text ? text : "none"; }

struct UserFolder : testing::Test {
    UserFolder() {
        for (const char* variable : {"KOBALTRIX_USER_FOLDER", "XDG_DATA_HOME"})
            unsetVariable(variable);
        setVariable("HOME", folder / "home");
        KXSetGameName(nullptr, "a game");
    }
    ~UserFolder() override {
        setVariable("HOME", home);
        unsetVariable("XDG_DATA_HOME");
        _KXCleanTempStrings();
    }

    const std::string home = orNone(std::getenv("HOME"));
    const TemporaryFolder folder;
};

TEST_F(UserFolder, IsMadeAndHisAlone) {
    const std::string data = folder / "data";
    EXPECT_EQ(orNone(KXUserFolder()), folder / "home/.local/share/a game");
    setVariable("XDG_DATA_HOME", data);
    KXSetGameName("Ada's", "game");
    EXPECT_EQ(orNone(KXUserPath("saves/a/1.txt")), data + "/Ada's/game/saves/a/1.txt");
    EXPECT_TRUE(fs::is_directory(data + "/Ada's/game/saves/a"));
    EXPECT_EQ(fs::status(data + "/Ada's/game").permissions(), fs::perms::owner_all);
    EXPECT_FALSE(fs::exists(data + "/Ada's/game/saves/a/1.txt"));
    KXSetGameName("", "other");
    EXPECT_EQ(orNone(KXUserFolder()), data + "/other");
    setVariable("XDG_DATA_HOME", "here"); // one that depends on the working folder does not count
    EXPECT_EQ(orNone(KXUserFolder()), folder / "home/.local/share/other");
    EXPECT_EQ(KXSetGameName(nullptr, nullptr) | KXSetGameName("", "a/b"), 0);
    EXPECT_EQ(orNone(KXUserFolder()), folder / "home/.local/share/other") << "no name is lost";
}
} // namespace
