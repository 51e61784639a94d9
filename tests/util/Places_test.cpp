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
    Places() { KXSetGameName(nullptr, "a game"); }
    ~Places() override {
        unsetVariable("KOBALTRIX_DATA_FOLDER");
        unsetVariable("KOBALTRIX_USER_FOLDER");
        _KXCleanTempStrings();
    }

    const TemporaryFolder folder;
};

TEST_F(Places, OfTheUserAreWhereTheEnvironmentSays) {
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
    const fs::path program = fs::canonical(testing::internal::GetArgvs()[0]).parent_path();
    EXPECT_EQ(orNone(KXProgramFolder()), program);
    EXPECT_EQ(orNone(KXDataPath("a")), "none");
    EXPECT_EQ(std::string(KXError()),
              "The game's files are not there. No folder: " + (program / "assets").generic_string() + ", " +
                  (program.parent_path() / "share/a game").generic_string() + ", " +
                  (program.parent_path() / "share/games/a game").generic_string());
    setVariable("KOBALTRIX_DATA_FOLDER", folder.path());
    EXPECT_EQ(orNone(KXDataFolder()), folder.path());
    EXPECT_EQ(orNone(KXDataPath("sounds/a..wav")), folder / "sounds/a..wav");
    setVariable("KOBALTRIX_DATA_FOLDER", folder / "no");
    EXPECT_EQ(orNone(KXDataFolder()), "none") << "another folder was taken than what was wanted";
}

TEST_F(Places, AreNeverLeft) {
    setVariable("KOBALTRIX_DATA_FOLDER", folder.path());
    setVariable("KOBALTRIX_USER_FOLDER", folder.path());
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
}
} // namespace
