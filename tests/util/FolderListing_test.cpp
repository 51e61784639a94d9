#include "util/FolderListing.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <tuple>
#include <utility>

namespace {
namespace fs = std::filesystem;

TEST(FolderListing, ListsFoldersFirstAndWhatTheFilterLetsThrough) {
    const TemporaryFolder folder;
    const auto names = [&](const char* extensions, bool hidden) {
        _KXFolderListing listing =
            _KXReadFolder(folder.path(), {_KXFileFilter::extensionsIn(extensions), hidden});
        EXPECT_EQ(listing.error, 0);
        _KXSortListing(listing.entries, _KXListingOrder::Name, false);
        std::string all;
        for (const auto& entry : listing.entries)
            all += entry.name + (entry.isFolder ? "/|" : "|");
        return all + (listing.hasOthers ? "..." : "");
    };
    EXPECT_EQ(names("", false), "");
    for (const char* name : {"b10.png", "B9.PNG", "a.txt", ".png", "png", "x.tar.gz", "xpng", "B\u00e9.png"})
        folder.write(name);
    for (const char* name : {"z", "Y", ".secret", "a.png"})
        fs::create_directory(_KXFilePath(folder / name));
    const std::string folders = "a.png/|Y/|z/|", pictures = "B9.PNG|b10.png|B\u00e9.png|";
    EXPECT_EQ(names("", true), ".secret/|" + folders + ".png|a.txt|" + pictures + "png|x.tar.gz|xpng|");
    EXPECT_EQ(names(" ,;", false), folders + "a.txt|" + pictures + "png|x.tar.gz|xpng|...");
    EXPECT_EQ(names("png", false), folders + pictures + "...");
    EXPECT_EQ(names("z", false), folders + "...");
    EXPECT_EQ(names("*.GZ", true), ".secret/|" + folders + "x.tar.gz|...");
    EXPECT_EQ(names(".tar.gz;txt", false), folders + "a.txt|x.tar.gz|...");
}

TEST(FolderListing, FactsAreToldAndSortedBy) {
    const TemporaryFolder folder;
    for (const auto& [name, size, hours] : {std::tuple{"b", 999, 1}, {"a10", 1000, 3}, {"a9", 1500000, 2}}) {
        folder.write(name, std::string(static_cast<std::size_t>(size), 'x'));
        fs::last_write_time(_KXFilePath(folder / name),
                            fs::file_time_type::clock::now() - std::chrono::hours(hours));
    }
    fs::create_directory(_KXFilePath(folder / "z"));
    auto entries = _KXReadFolder(folder.path(), {}).entries;
    using enum _KXListingOrder;
    for (const auto& [order, reversed, names] : {std::tuple{Size, false, "z a9 1.5 MB a10 1.0 KB b 999 B "},
                                                 {Changed, true, "z a10 1.0 KB a9 1.5 MB b 999 B "},
                                                 {Size, true, "z b 999 B a10 1.0 KB a9 1.5 MB "},
                                                 {Name, false, "z a9 1.5 MB a10 1.0 KB b 999 B "}}) {
        _KXSortListing(entries, order, reversed);
        std::string all;
        for (const auto& entry : entries)
            all += entry.name + " " + (entry.isFolder ? "" : _KXSizeText(entry.facts.size) + " ");
        EXPECT_EQ(all, names);
    }
    EXPECT_EQ(_KXSizeText(999499) + _KXSizeText(999500) + _KXSizeText(~0ull), "999 KB1.0 MB18 EB");
    EXPECT_TRUE(_KXNameIsTaken((folder / "a9").c_str()) && !_KXNameIsTaken((folder / "none").c_str()));
}

TEST(FolderListing, PathsAreMadeAbsoluteAndWhatIsThereIsTold) {
    const TemporaryFolder folder;
    fs::create_directories(_KXFilePath(folder / "a/b"));
    const std::string file = folder.write("file"), missing = folder / "missing";
    EXPECT_TRUE(_KXReadFolder(missing, {}).error == ENOENT && _KXReadFolder(file, {}).error == ENOTDIR);
    EXPECT_TRUE(_KXKindOf(missing) == _KXPathKind::Nothing && _KXKindOf(file) == _KXPathKind::File);
    EXPECT_EQ(_KXKindOf(folder.path()), _KXPathKind::Folder);
    folder.enter();
    const char* const inside[][2] = {{"", ""},        {".", ""},           {"a//b/", "/a/b"},
                                     {"./a/.", "/a"}, {"gone/../a", "/a"}, {nullptr, ""}};
    for (const auto& [path, absolute] : inside)
        EXPECT_EQ(_KXAbsolutePath(path), folder.path() + absolute);
    EXPECT_EQ(_KXParentOf("/a/b") + _KXParentOf("/a") + _KXParentOf("/"), "/a//");
    EXPECT_EQ(_KXLastPart("/a/b") + _KXLastPart("/"), "b");
    EXPECT_EQ(_KXPathIn("/", "x") + _KXPathIn("/a", "/x") + _KXPathIn("/a", "x"), "/x/x/a/x");
}
} // namespace
