// Names that no file of this system can have reach neither a device nor a file of another name.

#include "support/TemporaryFolder.h"
#include "util/FolderListing.h"
#include "util/KXString.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXFile.h>
#include <Kobaltrix/KXImage.h>
#include <Kobaltrix/KXLog.h>
#include <Kobaltrix/KXPlaces.h>
#include <Kobaltrix/KXRecording.h>
#include <Kobaltrix/KXSaveFile.h>
#include <Kobaltrix/KXSettings.h>

#include <gtest/gtest.h>

namespace {
bool saysWhy() { return std::string(KXError()).find(": on Windows ") != std::string::npos; }

TEST(RefusedNames, MakeNothing) {
    const TemporaryFolder folder;
    for (const char* name :
         {"NUL", "nul.txt", "aux ", "ab:c", "a.", "a?", "|", "\xFF", "com\u00b9", "con/b"}) {
        SCOPED_TRACE(name);
        const std::string text = folder / name;
        const char* const path = text.c_str();
        KXSaveFile file(path);
        std::fputs("lost", file.stream());
        EXPECT_TRUE(file.commit() == 0 && saysWhy()) << KXError();
        KXSettings settings;
        EXPECT_EQ(settings.load(path), KXSettingsFresh);
        EXPECT_TRUE(settings.save() == 0 && saysWhy()) << KXError();
        EXPECT_TRUE(KXMakeDirectory(path) == 0 && saysWhy()) << KXError();
        EXPECT_TRUE(KXOpenLog(path, -1) == 0 && saysWhy()) << KXError();
        KXDeinitializeLog();
        EXPECT_TRUE(KXBeginRecording(path) == 0 && saysWhy()) << KXError();
        EXPECT_TRUE(KXImage(1, 1).writeToPNG(path) == 0 && saysWhy()) << KXError();
        EXPECT_TRUE(KXPutFileAside(path) == nullptr && saysWhy()) << KXError();
        EXPECT_TRUE(KXUserPath(name) == nullptr && saysWhy()) << KXError();
        EXPECT_EQ(KXSetGameName(nullptr, name), 0);
        EXPECT_EQ(KXFileExists(path) | KXIsDirectory(path), 0);
    }
    EXPECT_EQ(KXDirectoryContents(folder.path().c_str()).size(), 2U) << "nothing but . and ..";
    _KXCleanTempStrings();
}

TEST(RefusedNames, ThatLeaveAFolder) {
    for (const char* name : {"c:a", "C:/a", "/a", "\\a", "a\\..\\..\\b", "//host/share/a"})
        EXPECT_EQ(KXUserPath(name), nullptr) << name;
    for (const char* name : {"c:", "c:a", "a\\b"})
        EXPECT_EQ(KXSetGameName(nullptr, name), 0) << name;
}

// The working folder stays where it is: the system does not take a long one.
TEST(RefusedNames, AreNotThoseOfLongPaths) {
    const TemporaryFolder folder;
    std::string deep = folder.path();
    for (int i = 0; i < 8; ++i) {
        deep += '/' + std::string(60, 'd');
        EXPECT_EQ(KXMakeDirectory((deep + '/').c_str()), -1) << KXError();
    }
    EXPECT_EQ(_KXAbsolutePath(deep.c_str()), deep);
    EXPECT_EQ(_KXPathIn(deep, "a"), deep + "/a");
    EXPECT_EQ(_KXPathIn("a", deep), deep);
    EXPECT_EQ(_KXParentOf(deep + "/|"), deep);
    EXPECT_EQ(_KXLastPart(deep + "/nul"), "nul");
    KXImage written(3, 3);
    EXPECT_EQ(written.writeToPNG((deep + "/a.png").c_str()), -1) << KXError();
    EXPECT_EQ(KXImage((deep + "/a.png").c_str()).width(), 3);
    EXPECT_EQ(KXRemoveDirectory((folder / std::string(60, 'd') + "/").c_str()), 0);
    EXPECT_EQ(KXDirectoryContents(folder.path().c_str()).size(), 2U);
    _KXCleanTempStrings();
}
} // namespace
