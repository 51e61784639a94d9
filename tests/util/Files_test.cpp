#include <Kobaltrix/KXFile.h>

#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXError.h>

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
namespace fs = std::filesystem;
using namespace std::string_literals;

struct Files : testing::Test {
    TemporaryFolder folder;
};

std::string take(char* text) {
    const std::unique_ptr<char, decltype(&std::free)> owned(text, std::free);
    return text ? text : "-";
}

TEST_F(Files, PathsAreSplitAndJoined) {
    const auto parts = [](const char* path) {
        return take(KXGetFilename(path)) + "|" + take(KXGetContainingPathOf(path)) + "|" +
               take(KXGetExtension(path));
    };
    const char* const splits[][2] = {{"a/b/c", "c|a/b/|-"},  {"x/", "-|-|-"},
                                     {"", "|-|-"},           {"/", "-|-|-"},
                                     {"a//", "-|a/|-"},      {"dir.d/file", "file|dir.d/|d/file"},
                                     {"file.", "file.|-|-"}, {"/.a.\u00fc", ".a.\u00fc|/|\u00fc"},
                                     {nullptr, "-|-|-"}};
    for (const auto& [path, expected] : splits)
        EXPECT_EQ(parts(path), expected);
    const std::string longName(5000, 'n'); // no temporary string
    EXPECT_EQ(parts((longName + "/." + longName).c_str()), "." + longName + "|" + longName + "/|" + longName);
    const char* const joins[][3] = {{"a/", "/b", "a/b"},     {"a", "b", "a/b"},       {"a/", "b", "a/b"},
                                    {"a", "/b", "a/b"},      {"%d/", "/%s", "%d/%s"}, {"", "", "/"},
                                    {nullptr, "b", nullptr}, {"a", nullptr, nullptr}};
    for (const auto& [first, second, joined] : joins)
        EXPECT_STREQ(KXAppendPath(first, second), joined);
}

TEST_F(Files, MakeTestAndRemove) {
    const std::string made = folder / "100%s%n%%", file = made + "/-rf *";
    EXPECT_EQ(KXMakeDirectory(made.c_str()), -1);
    EXPECT_EQ(KXFileExists(made.c_str()) & KXIsDirectory(made.c_str()) & KXRemoveFile(made.c_str()), -1);
    folder.write("100%s%n%%/-rf *");
    EXPECT_TRUE(KXFileExists(file.c_str()) && !KXIsDirectory(file.c_str()));
    EXPECT_EQ(KXRemoveDirectory(file.c_str()), -1) << "a file is no folder, nor the other way round";
    EXPECT_EQ(KXRemoveFile(file.c_str()) | KXRemoveDirectory(made.c_str()) | fs::exists(made), 0);
    fs::create_symlink(".", folder / "link");
    EXPECT_EQ(KXRemoveFile((folder / "link").c_str()), 0) << "though it leads to a folder";
}

TEST_F(Files, NothingThere) {
    const std::string below = folder.write("file") + "/below", dangling = folder / "dangling";
    fs::create_symlink("nowhere", dangling);
    const std::string tooLong = folder / std::string(5000, 'x');
    for (const char* path :
         {"", static_cast<const char*>(nullptr), below.c_str(), dangling.c_str(), tooLong.c_str()}) {
        SCOPED_TRACE(path ? path : "null");
        EXPECT_EQ(KXFileExists(path) | KXIsDirectory(path), 0);
        EXPECT_EQ(KXRemoveFile(path) & KXRemoveDirectory(path), -1);
        EXPECT_TRUE(KXDirectoryContents(path).empty());
        EXPECT_EQ(KXMakeDirectory(path), 0);
        EXPECT_EQ(KXError(), ("Unable to create directory at "s + (path ? path : "(null)")).substr(0, 511));
    }
    EXPECT_EQ(KXMakeDirectory(folder.write("100%% %d").c_str()), 0);
    EXPECT_EQ(KXError(), "File exists at " + (folder / "100% %d")) << "it is a format once more";
    const mode_t before = umask(027);
    EXPECT_EQ(KXMakeDirectory((folder / "made").c_str()), -1);
    umask(before);
    EXPECT_EQ(fs::status(folder / "made").permissions(), fs::perms(0750));
}

TEST_F(Files, ContentsAreFullPathsInByteOrder) {
    // Upper case before lower case, bytes above 127 last, "%" and "-" before the dot.
    for (const char* name : {"\u00e9", "a b", "a", "B b", "A", ".a", "...", "-", "%s"})
        folder.write(name);
    for (const std::string slashes : {"", "/", "//"}) {
        std::string names;
        for (const std::string_view path : KXDirectoryContents((folder.path() + slashes).c_str())) {
            EXPECT_TRUE(path.starts_with(folder.path() + (slashes.empty() ? "/" : slashes)));
            names.append(path.substr(path.rfind('/')));
        }
        EXPECT_EQ(names, "/%s/-/./../.../.a/A/B b/a/a b/\u00e9");
    }
}

TEST_F(Files, RemoveDirectoryStaysInItsTree) {
    fs::create_directories(folder / "outside/kept");
    fs::create_directories(folder / "tree/a/.deep/er");
    for (const char* file : {"bystander", "outside/kept/file", "tree/.hidden", "tree/a/.deep/er/file"})
        folder.write(file);
    for (const char* target : {"../outside", "../bystander", "nowhere", ".."})
        fs::create_symlink(target, folder / ("tree/" + std::to_string(std::string(target).size())));
    ASSERT_EQ(mkfifo((folder / "tree/pipe").c_str(), 0666), 0);
    EXPECT_EQ(KXRemoveDirectory((folder / "tree/").c_str()) | fs::exists(folder / "tree"), 0);
    for (const char* handed : {"link", "link/", "link//"}) { // is removed itself
        fs::create_symlink("outside", folder / "link");
        EXPECT_EQ(KXRemoveDirectory((folder / handed).c_str()) | fs::is_symlink(folder / "link"), 0)
            << handed;
    }
    fs::create_symlink("bystander", folder / "link");
    EXPECT_EQ(KXRemoveDirectory((folder / "link").c_str()), -1) << "it leads to no folder";
    EXPECT_TRUE(fs::exists(folder / "outside/kept/file") && fs::exists(folder / "bystander"));
}

TEST_F(Files, RemoveDirectoryTellsWhetherAnythingWentAtAnyDepth) {
    // Deeper than the longest path the system takes, built by walking down.
    const std::string name(200, 'd'), deep = folder / "deep";
    fs::create_directory(deep);
    fs::current_path(deep);
    for (int level = 0; level < 60; ++level)
        ASSERT_TRUE(KXMakeDirectory(name.c_str()) && chdir(name.c_str()) == 0);
    fs::current_path(folder.path());
    folder.write("deep/" + name + "/" + name + "/" + name + "/file");
    // Out of file handles it does what it can and tells truly whether anything went, however deep that was.
    rlimit limit;
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit few = {30, limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    EXPECT_EQ(KXRemoveDirectory(deep.c_str()), 0) << "the file went";
    EXPECT_EQ(KXRemoveDirectory(deep.c_str()), -1);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
    EXPECT_EQ(KXRemoveDirectory(deep.c_str()) | fs::exists(deep), 0);
}
} // namespace
