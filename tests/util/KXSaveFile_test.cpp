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
    fs::current_path(folder.path());
    EXPECT_EQ(save("old", ""), "");
    EXPECT_EQ(fs::file_size(old), 0u);
}

TEST_F(SaveFile, OrLeavesItWhenItFails) {
    for (const auto& [path, reason] : {std::tuple{old + "/inside", "Not a directory"},
                                       {folder / "no/folder", "No such file or directory"},
                                       {folder.path(), "Is a directory"},
                                       {"", "No such file or directory"}})
        EXPECT_EQ(save(path), reason) << path;
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
