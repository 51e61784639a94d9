// Files that are saved whole or not at all.

#include "SaveFileTest.h"

#include <tuple>

namespace {
using SaveFile = SaveFileTest;

TEST_F(SaveFile, TakesThePlaceOfWhatIsThere) {
    for (const std::string name : {"old", "new", "old"}) {
        EXPECT_EQ(save(folder / name, std::string("\0of ", 4) + name), "");
        EXPECT_EQ(contentOf(folder / name), std::string("\0of ", 4) + name);
    }
    EXPECT_EQ(entries(), 2);
    folder.enter();
    EXPECT_EQ(save("old", ""), "");
    EXPECT_EQ(fs::file_size(_KXFilePath(old)), 0u);
}

TEST_F(SaveFile, OrLeavesItWhenItFails) {
    // Windows has reasons of its own: 3 that there is no such folder, 5 that it is denied.
    for (const auto& [path, reason, onWindows] : {std::tuple{old + "/inside", "Not a directory", 3},
                                                  {folder / "no/folder", "No such file or directory", 3},
                                                  {folder.path(), "Is a directory", 5},
                                                  {"", "No such file or directory", 3}}) {
        const std::string said = save(path);
        EXPECT_TRUE(said == reason || said == std::system_category().message(onWindows)) << path << said;
    }
    EXPECT_EQ(contentOf(old), "as it was");
    EXPECT_EQ(entries(), 1);
    EXPECT_EQ(KXSaveFile(nullptr).commit(), 0);

    KXSaveFile twice(old.c_str()), never(old.c_str());
    EXPECT_EQ(twice.commit() + twice.commit(), -1);
    EXPECT_EQ(twice.stream(), nullptr);
    fputs("never", never.stream());
    EXPECT_EQ(contentOf(old), "");
}
} // namespace
