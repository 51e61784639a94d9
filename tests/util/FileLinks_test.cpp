// Links, pipes and rights, which not all systems have.

#include <Kobaltrix/KXFile.h>

#include "support/Denied.h"
#include "support/TemporaryFolder.h"
#include "util/FolderListing.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXSettings.h>

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
namespace fs = std::filesystem;

struct FileLinks : testing::Test {
    TemporaryFolder folder;
};

TEST_F(FileLinks, AreRemovedThemselvesAndLeadNowhere) {
    fs::create_symlink(".", folder / "link");
    EXPECT_EQ(KXRemoveFile((folder / "link").c_str()), 0) << "though it leads to a folder";
    const std::string dangling = folder / "dangling";
    fs::create_symlink("nowhere", dangling);
    EXPECT_EQ(KXFileExists(dangling.c_str()) | KXIsDirectory(dangling.c_str()), 0);
    EXPECT_EQ(KXRemoveFile(dangling.c_str()) & KXRemoveDirectory(dangling.c_str()), -1);
    EXPECT_EQ(KXMakeDirectory(dangling.c_str()), 0);
    EXPECT_TRUE(_KXNameIsTaken(dangling.c_str()));
    const mode_t before = umask(027);
    EXPECT_EQ(KXMakeDirectory((folder / "made").c_str()), -1);
    umask(before);
    EXPECT_EQ(fs::status(folder / "made").permissions(), fs::perms(0750));
}

TEST_F(FileLinks, AreFollowedInPaths) {
    fs::create_directories(folder / "a/b");
    fs::create_symlink("a/b", folder / "link");
    fs::current_path(folder.path());
    for (const auto& [path, absolute] : {std::pair{"link", "/link"}, {"link/..", "/a"}, {"...", "/..."}})
        EXPECT_EQ(_KXAbsolutePath(path), folder.path() + absolute);
    EXPECT_EQ(_KXAbsolutePath("/") + _KXAbsolutePath("/../..") + _KXAbsolutePath("/gone/../../x/"), "///x");
}

TEST_F(FileLinks, AreListedAsWhatTheyLeadTo) {
    const auto names = [&](const char* extensions) {
        _KXFolderListing listing =
            _KXReadFolder(folder.path(), {_KXFileFilter::extensionsIn(extensions), false});
        EXPECT_EQ(listing.error, 0);
        _KXSortListing(listing.entries, _KXListingOrder::Name, false);
        std::string all;
        for (const auto& entry : listing.entries)
            all += entry.name + (entry.isFolder ? "/|" : "|");
        return all + (listing.hasOthers ? "..." : "");
    };
    fs::create_directory(folder / "z");
    folder.write("bad\xff.png");
    fs::create_symlink("z", folder / "link to z");
    fs::create_symlink("nowhere", folder / "lost.png");
    fs::create_symlink("loop", folder / "loop");
    EXPECT_EQ(names(""), "link to z/|z/|bad\xff.png|loop|lost.png|");
    mkfifo((folder / "pipe.png").c_str(), 0666);
    EXPECT_EQ(names(""), "link to z/|z/|bad\xff.png|loop|lost.png|...");
    EXPECT_EQ(names("png"), "link to z/|z/|bad\xff.png|lost.png|...");
}

TEST_F(FileLinks, RemoveDirectoryStaysInItsTree) {
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

TEST_F(FileLinks, RemoveDirectoryTellsWhetherAnythingWentAtAnyDepth) {
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

TEST_F(FileLinks, NeverReplaceWhatTheyCouldNotRead) {
    KXSettings settings;
    const auto told = [] { return std::string(KXError()); };
    const std::string locked = folder.write("locked"), pipe = folder / "pipe";
    fs::permissions(locked, fs::perms(0));
    mkfifo(pipe.c_str(), 0600);
    fs::create_directory(folder / "closed");
    fs::create_symlink("closed", folder / "link");
    const std::string inside = folder.write("closed/broken", "what there was");
    fs::permissions(folder.path(), fs::perms(0755)); // who has no rights may look, but not rename
    for (const std::string& path : {locked, pipe, folder.path(), folder / "link", inside, std::string()}) {
        const Unprivileged nobody;
        EXPECT_EQ(settings.load(path.c_str()), KXSettingsUnreadable) << path;
        EXPECT_TRUE(told().starts_with(path)) << told();
        EXPECT_EQ(settings.save(), 0) << path;
        EXPECT_EQ(told(), path + ": is not replaced, because it could not be read");
    }
    EXPECT_EQ(contentOf(inside), "what there was");
}

TEST_F(FileLinks, SettingsStayAsTheyWereOnAFullDisk) {
    const std::string file = folder / "settings.txt";
    KXSettings settings;
    settings.load(file.c_str());
    EXPECT_EQ(settings.save(), -1);
    const std::string before = contentOf(file);
    settings.setText("a", std::string(5000, 'x').c_str());
    EXPECT_EQ((FullDisk(1000), settings.save()), 0);
    EXPECT_EQ(contentOf(file), before);
    EXPECT_EQ(settings.save(), -1);
}
} // namespace
