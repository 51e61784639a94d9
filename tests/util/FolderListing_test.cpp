#include "util/FolderListing.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace {
struct FolderListing : testing::Test {
    std::string names(const char* extensions, bool hidden) const {
        const _KXFolderListing listing =
            _KXReadFolder(folder.path(), {_KXFileFilter::extensionsIn(extensions), hidden});
        EXPECT_EQ(listing.error, 0);
        std::string all;
        for (const auto& entry : listing.entries)
            all += entry.name + (entry.isFolder ? "/|" : "|");
        return all + (listing.hasOthers ? "..." : "");
    }
    TemporaryFolder folder;
};

TEST_F(FolderListing, ListsFoldersFirstAndWhatTheFilterLetsThrough) {
    EXPECT_EQ(names("", false), "");
    for (const char* name :
         {"b10.png", "B9.PNG", "a.txt", ".hidden.png", "png", ".png", "x.tar.gz", "bad\xff.png"})
        folder.write(name);
    for (const char* name : {"z", "Y", ".secret", "a.png"})
        mkdir((folder / name).c_str(), 0777);
    mkfifo((folder / "pipe.png").c_str(), 0666);
    symlink("z", (folder / "link to z").c_str());
    symlink("nowhere", (folder / "dangling.png").c_str());
    symlink("loop", (folder / "loop").c_str());
    const std::string folders = "a.png/|link to z/|Y/|z/|";
    const struct {
        const char* extensions;
        bool hidden;
        std::string listed;
    } rows[] = {
        {nullptr, true,
         ".secret/|" + folders +
             ".hidden.png|.png|a.txt|B9.PNG|b10.png|bad\xff.png|dangling.png|loop|png|x.tar.gz|..."},
        {" ,;", false, folders + "a.txt|B9.PNG|b10.png|bad\xff.png|dangling.png|loop|png|x.tar.gz|..."},
        {"png", false, folders + "B9.PNG|b10.png|bad\xff.png|dangling.png|..."},
        {"*.GZ", true, ".secret/|" + folders + "x.tar.gz|..."},
        {".tar.gz;txt", false, folders + "a.txt|x.tar.gz|..."},
        {"gif", false, folders + "..."}};
    for (const auto& [extensions, hidden, listed] : rows)
        EXPECT_EQ(names(extensions, hidden), listed) << (extensions ? extensions : "null");
}

TEST_F(FolderListing, SaysWhyNothingIsRead) {
    const std::pair<std::string, int> rows[] = {{folder / "missing", ENOENT},
                                                {folder.write("file"), ENOTDIR},
                                                {folder / std::string(300, 'x'), ENAMETOOLONG},
                                                {"", ENOENT}};
    for (const auto& [path, error] : rows)
        EXPECT_EQ(_KXReadFolder(path, {}).error, error) << path;
    EXPECT_EQ(_KXKindOf(folder / "missing"), _KXPathKind::Nothing);
    EXPECT_EQ(_KXKindOf(folder / "file"), _KXPathKind::File);
    EXPECT_EQ(_KXKindOf(folder.path()), _KXPathKind::Folder);
}

TEST_F(FolderListing, PathsAreMadeAbsolute) {
    mkdir((folder / "a").c_str(), 0777);
    mkdir((folder / "a/b").c_str(), 0777);
    symlink("a/b", (folder / "link").c_str());
    const std::string before = _KXAbsolutePath(nullptr);
    ASSERT_EQ(chdir(folder.path().c_str()), 0);
    const std::string root = folder.path();
    const std::pair<std::string, std::string> rows[] = {{"", root},
                                                        {".", root},
                                                        {"a//b/", root + "/a/b"},
                                                        {"./a/.", root + "/a"},
                                                        {"link", root + "/link"},
                                                        {"link/..", root + "/a"},
                                                        {"gone/../a", root + "/a"},
                                                        {"/", "/"},
                                                        {"/../..", "/"},
                                                        {"/gone/../../x/", "/x"},
                                                        {"...", root + "/..."}};
    for (const auto& [path, absolute] : rows)
        EXPECT_EQ(_KXAbsolutePath(path.c_str()), absolute) << path;
    EXPECT_EQ(chdir(before.c_str()), 0);
    const char* const parts[][3] = {{"/a/b", "/a", "b"}, {"/a", "/", "a"}, {"/", "/", ""}};
    for (const auto& [path, parent, last] : parts) {
        EXPECT_EQ(_KXParentOf(path), parent);
        EXPECT_EQ(_KXLastPart(path), last);
    }
    EXPECT_EQ(_KXPathIn("/", "x"), "/x");
    EXPECT_EQ(_KXPathIn("/a", "/x"), "/x");
}
} // namespace
