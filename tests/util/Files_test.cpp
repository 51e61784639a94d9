#include <Kobaltrix/KXFile.h>

#include "core/ground/ErrorSlot.h"
#include "support/TemporaryFolder.h"
#include "util/KXString.h"

#include <Kobaltrix/KXCore.h>

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <utility>
#include <vector>

namespace {
struct Files : testing::Test {
    ~Files() override { _KXCleanTempStrings(); }
    TemporaryFolder folder;
};

// Names that a careless path handling stumbles over.
const std::vector<std::string> awkwardNames = {
    "two words", "na\u00efve \u00fc\u00df", "\U0001F680\U0001F9D1", "100%s%n%%", "-rf *",
    "...",       "tab\tand\nline"};

std::string take(char* text) {
    const std::string copy = text ? text : "-";
    std::free(text);
    return copy;
}

TEST_F(Files, PathsAreSplitAndJoined) {
    // The path, and its last name, the folder it is in and the extension; "-" where there is none.
    const std::pair<const char*, std::string> splits[] = {
        {"a/b/c", "c|a/b/|-"},
        {"x/", "-|-|-"},
        {"", "|-|-"},
        {"/", "-|-|-"},
        {"a//", "-|a/|-"},
        {"dir.d/file", "file|dir.d/|d/file"},
        {"file.", "file.|-|-"},
        {".hidden.tar.gz", ".hidden.tar.gz|-|gz"},
        {"d \u00e9/\U0001F3AE 1.\u00fc", "\U0001F3AE 1.\u00fc|d \u00e9/|\u00fc"},
        {nullptr, "-|-|-"}};
    for (const auto& [path, parts] : splits)
        EXPECT_EQ(take(KXGetFilename(path)) + "|" + take(KXGetContainingPathOf(path)) + "|" +
                      take(KXGetExtension(path)),
                  parts);
    const char* const joins[][3] = {{"a/", "/b", "a/b"},     {"a", "b", "a/b"},      {"a/", "b", "a/b"},
                                    {"a", "/b", "a/b"},      {"", "b", "/b"},        {"a", "", "a/"},
                                    {"", "", "/"},           {"/", "/", "/"},        {"%d/", "/%s", "%d/%s"},
                                    {nullptr, "b", nullptr}, {"a", nullptr, nullptr}};
    for (const auto& [first, second, joined] : joins)
        EXPECT_STREQ(KXAppendPath(first, second), joined);
    // A path is no temporary string: it is split at any length.
    const std::string longName(5000, 'n');
    EXPECT_EQ(take(KXGetFilename(("d/" + longName).c_str())), longName);
    EXPECT_EQ(take(KXGetContainingPathOf((longName + "/f").c_str())), longName + "/");
}

TEST_F(Files, MakeTestAndRemoveWithAnyName) {
    for (const std::string& name : awkwardNames) {
        SCOPED_TRACE(name);
        const std::string made = folder / name, file = made + "/" + name;
        EXPECT_EQ(KXMakeDirectory(made.c_str()), -1);
        EXPECT_EQ(KXFileExists(made.c_str()) & KXIsDirectory(made.c_str()), -1);
        EXPECT_EQ(KXRemoveFile(made.c_str()), -1) << "a folder is no file";
        for (auto remove : {KXRemoveFile, KXRemoveDirectory}) {
            folder.write(name + "/" + name);
            EXPECT_EQ(KXFileExists(file.c_str()), -1);
            EXPECT_EQ(KXIsDirectory(file.c_str()), 0);
            EXPECT_EQ(remove((remove == KXRemoveFile ? file : made).c_str()), 0);
            EXPECT_EQ(KXFileExists(file.c_str()), 0);
        }
        EXPECT_EQ(KXFileExists(made.c_str()), 0);
    }
}

TEST_F(Files, NothingThere) {
    const std::string file = folder.write("file"), below = file + "/below", missing = folder / "missing";
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    const std::string dangling = folder / "dangling", tooLong = folder / std::string(5000, 'x');
    for (const char* path : {static_cast<const char*>(nullptr), "", missing.c_str(), below.c_str(),
                             dangling.c_str(), tooLong.c_str()}) {
        SCOPED_TRACE(path ? path : "a null path");
        EXPECT_EQ(KXFileExists(path), 0);
        EXPECT_EQ(KXIsDirectory(path), 0);
        EXPECT_EQ(KXRemoveFile(path), -1);
        EXPECT_EQ(KXRemoveDirectory(path), -1);
        EXPECT_TRUE(KXDirectoryContents(path).empty());
    }
    EXPECT_TRUE(KXDirectoryContents(file.c_str()).empty());
    EXPECT_EQ(KXRemoveDirectory(file.c_str()), -1) << "a file is no folder";
    EXPECT_EQ(KXFileExists(file.c_str()), -1);
}

TEST_F(Files, MakeDirectoryReportsWhy) {
    const std::string file = folder.write("100%% %d"), orphan = folder / "no/parent", below = file + "/x";
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    const std::string dangling = folder / "dangling";
    const std::string unable = "Unable to create directory at ",
                      escaped = folder / "100% %d"; // a format once more
    const std::pair<const char*, std::string> failures[] = {
        {folder.path().c_str(), "File exists at " + folder.path()},
        {file.c_str(), "File exists at " + escaped},
        {orphan.c_str(), unable + orphan},
        {dangling.c_str(), unable + dangling},
        {below.c_str(), unable + escaped + "/x"},
        {"", unable},
        {nullptr, unable + "(null)"}};
    for (const auto& [path, message] : failures) {
        _KXClearError();
        EXPECT_EQ(KXMakeDirectory(path), 0);
        EXPECT_EQ(KXError(), message);
    }
    const mode_t before = umask(027);
    const std::string made = folder / "made";
    EXPECT_EQ(KXMakeDirectory(made.c_str()), -1);
    umask(before);
    struct stat information;
    ASSERT_EQ(stat(made.c_str(), &information), 0);
    EXPECT_EQ(information.st_mode & 0777u, 0750u);
}

TEST_F(Files, ContentsAreFullPathsInByteOrder) {
    // Upper case before lower case, bytes above 127 last, "%" and "-" before the dot.
    const std::vector<std::string> order = {"%s",  "-", ".",   "..", "...", ".a",     "A",
                                            "B b", "a", "a b", "aa", "b",   "\u00e9", "\U0001F3AE"};
    const std::string full = folder / "full";
    ASSERT_EQ(KXMakeDirectory(full.c_str()), -1);
    for (auto name = order.rbegin(); name != order.rend(); ++name)
        if (*name != "." && *name != "..")
            folder.write("full/" + *name);
    for (const std::string slashes : {"", "/", "//"}) {
        std::vector<std::string> expected;
        for (const std::string& name : order)
            expected.push_back(full + (slashes.empty() ? "/" : slashes) + name);
        const std::list<char*> contents = KXDirectoryContents((full + slashes).c_str());
        EXPECT_EQ(std::vector<std::string>(contents.begin(), contents.end()), expected);
    }
}

TEST_F(Files, RemoveDirectoryStaysInItsTree) {
    folder.write("bystander");
    std::filesystem::create_directories(folder / "outside/kept");
    folder.write("outside/kept/file");
    std::filesystem::create_directories(folder / "tree/\u00e9 \U0001F3AE/.deep/er");
    folder.write("tree/.hidden");
    folder.write("tree/\u00e9 \U0001F3AE/.deep/er/file");
    std::filesystem::create_symlink("../outside", folder / "tree/link to folder");
    std::filesystem::create_symlink("../bystander", folder / "tree/link to file");
    std::filesystem::create_symlink("nowhere", folder / "tree/dangling");
    std::filesystem::create_symlink("..", folder / "tree/\u00e9 \U0001F3AE/loop");
    ASSERT_EQ(mkfifo((folder / "tree/pipe").c_str(), 0666), 0);
    EXPECT_EQ(KXRemoveDirectory((folder / "tree/").c_str()), 0);
    EXPECT_EQ(KXFileExists((folder / "tree").c_str()), 0);

    // A link handed over is removed itself, however it is written.
    for (const char* handed : {"link", "link/", "link//"}) {
        std::filesystem::create_symlink("outside", folder / "link");
        EXPECT_EQ(KXRemoveDirectory((folder / handed).c_str()), 0) << handed;
        EXPECT_FALSE(std::filesystem::is_symlink(folder / "link")) << handed;
    }
    std::filesystem::create_symlink("bystander", folder / "link");
    EXPECT_EQ(KXRemoveDirectory((folder / "link").c_str()), -1) << "it leads to no folder";
    EXPECT_EQ(KXFileExists((folder / "outside/kept/file").c_str()), -1);
    EXPECT_EQ(KXFileExists((folder / "bystander").c_str()), -1);
}

TEST_F(Files, RemoveDirectoryTellsWhetherAnythingWentAtAnyDepth) {
    // The working directory named "." can be emptied but not removed.
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::create_directories(folder / "work/inner");
    std::filesystem::current_path(folder / "work");
    EXPECT_EQ(KXRemoveDirectory("."), 0) << "something in it was removed";
    EXPECT_EQ(KXRemoveDirectory("."), -1) << "there was nothing left to remove";

    // Deeper than the longest path the system takes, built by walking down.
    const std::string name(200, 'd');
    std::filesystem::create_directory(folder / "deep");
    std::filesystem::current_path(folder / "deep");
    for (int level = 0; level < 60; ++level) {
        ASSERT_EQ(KXMakeDirectory(name.c_str()), -1);
        ASSERT_EQ(chdir(name.c_str()), 0);
    }
    ASSERT_EQ(chdir(before.c_str()), 0);
    const std::string inside = folder.write("deep/" + name + "/" + name + "/" + name + "/file");
    // Out of file handles it does what it can and tells truly whether anything went, however deep that was.
    rlimit limit;
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit few = {30, limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    EXPECT_EQ(KXRemoveDirectory((folder / "deep").c_str()), 0) << "the file went";
    EXPECT_FALSE(std::filesystem::exists(inside));
    EXPECT_EQ(KXRemoveDirectory((folder / "deep").c_str()), -1);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
    EXPECT_EQ(KXRemoveDirectory((folder / "deep").c_str()), 0);
    EXPECT_EQ(KXFileExists((folder / "deep").c_str()), 0);
}
} // namespace
