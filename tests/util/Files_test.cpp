#include <Kobaltrix/KXFile.h>

#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXError.h>

#include <gtest/gtest.h>

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
    const std::string made = folder / "100%s%n%%", file = made + "/-rf !";
    EXPECT_EQ(KXMakeDirectory(made.c_str()), -1);
    EXPECT_EQ(KXFileExists(made.c_str()) & KXIsDirectory(made.c_str()) & KXRemoveFile(made.c_str()), -1);
    folder.write("100%s%n%%/-rf !");
    EXPECT_TRUE(KXFileExists(file.c_str()) && !KXIsDirectory(file.c_str()));
    EXPECT_EQ(KXRemoveDirectory(file.c_str()), -1) << "a file is no folder, nor the other way round";
    EXPECT_EQ(KXRemoveFile(file.c_str()) | KXRemoveDirectory(made.c_str()) | fs::exists(made), 0);
}

TEST_F(Files, StreamsHoldTheBytesThatWerePut) {
    const std::string path = folder / "\u00e9\U0001F525.bin", bytes = "a\r\nb\n\x1a\xff"s;
    const auto through = [&path](const char* mode, auto use) {
        const std::unique_ptr<FILE, int (*)(FILE*)> file(KXOpenFile(path.c_str(), mode), std::fclose);
        ASSERT_TRUE(file) << mode << KXError();
        use(file.get());
    };
    for (const char* mode : {"w", "a+"})
        through(mode, [&](FILE* file) { std::fwrite(bytes.data(), 1, bytes.size(), file); });
    for (const char* mode : {"r", "rb+"})
        through(mode, [&](FILE* file) {
            std::string read(100, '?');
            read.resize(std::fread(read.data(), 1, read.size(), file));
            EXPECT_EQ(read, bytes + bytes);
        });
    for (const char* mode :
         {"", "x", "wx", "rt", "r++", "rbb", "r,ccs=UTF-8", static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(KXOpenFile(path.c_str(), mode));
        EXPECT_EQ(KXError(), "There is no mode \""s + (mode ? mode : "(null)") + "\" to open a file in");
    }
    for (const char* none :
         {static_cast<const char*>(nullptr), "", "no folder/file", folder.path().c_str()}) {
        EXPECT_FALSE(KXOpenFile(none, "w"));
        EXPECT_TRUE(std::string(KXError()).starts_with("Unable to open "s + (none ? none : "(null)") + ": "));
    }
}

TEST_F(Files, NothingThere) {
    const std::string below = folder.write("file") + "/below";
    const std::string tooLong = folder / std::string(5000, 'x');
    for (const char* path : {"", static_cast<const char*>(nullptr), below.c_str(), tooLong.c_str()}) {
        SCOPED_TRACE(path ? path : "null");
        EXPECT_EQ(KXFileExists(path) | KXIsDirectory(path), 0);
        EXPECT_EQ(KXRemoveFile(path) & KXRemoveDirectory(path), -1);
        EXPECT_TRUE(KXDirectoryContents(path).empty());
        EXPECT_EQ(KXMakeDirectory(path), 0);
        EXPECT_EQ(KXError(), ("Unable to create directory at "s + (path ? path : "(null)")).substr(0, 511));
    }
    EXPECT_EQ(KXMakeDirectory(folder.write("100%% %d").c_str()), 0);
    EXPECT_EQ(KXError(), "File exists at " + (folder / "100% %d")) << "it is a format once more";
}

TEST_F(Files, ContentsAreFullPathsInByteOrder) {
    // Upper case before lower case, bytes above 127 last, "%" and "-" before the dot.
    for (const char* name : {"\u00e9", "a b", "c", "B b", "A", ".a", "..x", "-", "%s"})
        folder.write(name);
    for (const std::string slashes : {"", "/", "//"}) {
        std::string names;
        for (const std::string_view path : KXDirectoryContents((folder.path() + slashes).c_str())) {
            EXPECT_TRUE(path.starts_with(folder.path() + (slashes.empty() ? "/" : slashes)));
            names.append(path.substr(path.rfind('/')));
        }
        EXPECT_EQ(names, "/%s/-/./../..x/.a/A/B b/a b/c/\u00e9");
    }
}

TEST_F(Files, RemoveDirectoryTakesWhatIsInItAtAnyDepth) {
    std::string deep = folder / "tree";
    for (int level = 0; level < 12; ++level) { // longer than some systems' calls take
        ASSERT_EQ(KXMakeDirectory(deep.c_str()), -1) << KXError();
        deep += '/' + std::string(200, 'd');
    }
    folder.write("tree/.hidden");
    folder.write("bystander");
    EXPECT_EQ(KXRemoveDirectory((folder / "tree/").c_str()) | KXIsDirectory((folder / "tree").c_str()), 0);
    EXPECT_EQ(KXRemoveDirectory((folder / "tree").c_str()), -1) << "nothing went";
    EXPECT_TRUE(fs::exists(_KXFilePath(folder / "bystander")));
}
} // namespace
