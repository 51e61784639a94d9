// Where a game's files are, told by what lies around the program of this test.

#include <Kobaltrix/KXPlaces.h>

#include "support/System.h"
#include "support/TemporaryFolder.h"
#include "util/KXString.h"

#include <Kobaltrix/KXError.h>
#include <gtest/gtest.h>

namespace {
namespace fs = std::filesystem;

std::string orNone(const char* text) { return text ? text : "none"; }

struct Places : testing::Test {
    Places() {
        for (const char* variable : {"KOBALTRIX_DATA_FOLDER", "KOBALTRIX_USER_FOLDER", "XDG_DATA_HOME"})
            unsetVariable(variable);
        setVariable("HOME", folder / "home");
        KXSetGameName(nullptr, "a game");
    }
    ~Places() override {
        setVariable("HOME", home);
        unsetVariable("KOBALTRIX_DATA_FOLDER");
        unsetVariable("KOBALTRIX_USER_FOLDER");
        _KXCleanTempStrings();
    }

    const std::string home = orNone(std::getenv("HOME"));
    const TemporaryFolder folder;
};

TEST_F(Places, OfTheUserAreMadeAndHisAlone) {
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
    setVariable("KOBALTRIX_USER_FOLDER", folder / "mine");
    EXPECT_EQ(orNone(KXUserPath("a%d")), folder / "mine/a%d");
    std::string deep = folder / "mine";
    for (int i = 0; i < 8; ++i)
        deep += '/' + std::string(200, 'd');
    setVariable("KOBALTRIX_USER_FOLDER", deep);
    EXPECT_EQ(orNone(KXUserPath("file")), deep + "/file") << "longer than other temporary strings";

    setVariable("KOBALTRIX_USER_FOLDER", folder.write("taken"));
    EXPECT_EQ(orNone(KXUserFolder()), "none");
    EXPECT_TRUE(std::string(KXError()).starts_with(folder / "taken: cannot be made: ")) << KXError();
}

TEST_F(Places, OfTheGameAreWhereTheProgramIs) {
    const fs::path program = fs::read_symlink("/proc/self/exe").parent_path();
    EXPECT_EQ(orNone(KXProgramFolder()), program);
    EXPECT_EQ(orNone(KXDataPath("a")), "none");
    EXPECT_EQ(std::string(KXError()),
              "The game's files are not there. No folder: " + (program / "assets").string() + ", " +
                  (program.parent_path() / "share/a game").string() + ", " +
                  (program.parent_path() / "share/games/a game").string());
    setVariable("KOBALTRIX_DATA_FOLDER", folder.path());
    EXPECT_EQ(orNone(KXDataFolder()), folder.path());
    EXPECT_EQ(orNone(KXDataPath("sounds/a..wav")), folder / "sounds/a..wav");
    setVariable("KOBALTRIX_DATA_FOLDER", folder / "no");
    EXPECT_EQ(orNone(KXDataFolder()), "none") << "another folder was taken than what was wanted";
}

TEST_F(Places, AreNeverLeft) {
    setVariable("KOBALTRIX_DATA_FOLDER", folder.path());
    for (const char* name : {"", "/etc/passwd", "..", "../a", "a/../../b", "a/.."}) {
        EXPECT_EQ(orNone(KXDataPath(name)) + orNone(KXUserPath(name)), "nonenone") << name;
        EXPECT_EQ(std::string(KXError()),
                  '"' + std::string(name) + "\" names no file in a folder of the game");
    }
    EXPECT_EQ(orNone(KXDataPath(nullptr)), "none");
    for (const auto& [maker, name] :
         {std::pair{"", ""}, {"", "."}, {"", ".."}, {"", "a/b"}, {"..", "a"}, {"", "a\n"}})
        EXPECT_EQ(KXSetGameName(maker, name), 0) << name;
    EXPECT_EQ(KXSetGameName(nullptr, nullptr), 0);
    EXPECT_EQ(orNone(KXUserFolder()), folder / "home/.local/share/a game");
}
} // namespace
