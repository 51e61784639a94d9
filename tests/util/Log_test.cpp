#include "util/Log.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXPlaces.h>
#include <KobaltrixTest/KXTestClock.h>

#include "core/ground/Application.h"
#include "support/System.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <limits>

namespace {
const std::string stamp = "[03/07/2024 21:09:09]: ";

struct Log : testing::Test {
    Log() {
        setTimeZone("UTC");
        _KXFindApplicationPaths((folder / "game").data());
    }
    ~Log() override {
        KXDeinitializeLog();
        KXLogSetEnableSTDOut(0);
        _KXForgetApplicationPaths();
    }
    /// What has been written; all of it only when the log is closed.
    std::string content(const std::string& name = "log.txt") const { return contentOf(folder / name); }

    const TemporaryFolder folder;
    KXTestClock clock{0, 1709845749};
};

TEST_F(Log, WritesTimeCategoryAndTextCutToTheirLengths) {
    const std::string longText(5000, 'x'), longest(1023, 'x');
    KXInitializeLog("log.txt", -1);
    for (const char* category : {longText.c_str(), "net"})
        KXLogEnableCategory(category);
    KXLog(longText.c_str(), "%s", longText.c_str());
    KXLog(nullptr, "100%% of %s", (longest + "y").c_str());
    EXPECT_EQ(content(), "") << "messages are gathered";
    setTimeZone("XYZ-5:30"); // east of Greenwich, and past midnight there
    clock.setTimeOfDay(1709845749 + 3 * 3600 + 1);
    KXLog("net", "%s", "");
    clock.setTimeOfDay(std::numeric_limits<std::time_t>::max()); // a year beyond every calendar
    KXLog(nullptr, "later");
    KXDeinitializeLog();
    const std::string known =
        stamp + longest + longest + stamp + "100% of " + longest.substr(8) + "[03/08/2024 05:39:10]: net ";
    EXPECT_EQ(content().substr(0, known.size()), known);
    EXPECT_TRUE(content().ends_with("]: later"));
}

TEST_F(Log, CategoriesAreSwitchedOneByOneInAnyOrder) {
    for (const int round : {1, 2}) {
        KXDeinitializeLog();
        EXPECT_TRUE(_KXLogInitialized == 0 && !_KXLogFP && !_KXCategories);
        KXLogEnableCategory("net"); // too early to count
        KXLogDisableCategory("net");
        KXLog(nullptr, "early");
        KXInitializeLog("log.txt", 0);
        KXLog("net", "off");
        EXPECT_EQ(_KXCategories->at("net"), 0) << "remembered as off, in round " << round;
        for (const char* category : {"net", "", static_cast<const char*>(nullptr)})
            KXLogEnableCategory(category);
        KXLog("net", "1");
        KXLog("Net", "off");
        for (const char* category : {"net", "never seen", static_cast<const char*>(nullptr)})
            KXLogDisableCategory(category);
        EXPECT_EQ(_KXCategories->count("net"), 0u);
        KXLog("net", "off");
        KXInitializeLog("log.txt", 0); // without closing: the rest stays as it is
        KXLog("", "2");
    }
    KXDeinitializeLog();
    EXPECT_EQ(content(), stamp + "net 1" + stamp + " 2" + stamp + "net 1" + stamp + " 2");
}

TEST_F(Log, AppendsWholeMessagesBesideThoseOfOtherProcesses) {
    for (const int overwrite : {0, 1, -1}) {
        folder.write("log.txt", "old\n");
        std::string own = overwrite ? "" : "old\n";
        KXInitializeLog("log.txt", overwrite);
        EXPECT_FALSE(isInherited(fileno(_KXLogFP)));
        const long open = openFiles();
        for (int i = 0; i < 1000; ++i) { // many times the buffer
            const std::string text(static_cast<std::size_t>(i * 37 % 301), 'a');
            KXLog(nullptr, "%s\n", text.c_str());
            own += stamp + text + "\n";
            ASSERT_TRUE(i % 20 || ("\n" + content()).ends_with('\n')) << "a message is torn";
            if (i % 300 == 99)
                std::ofstream(_KXFilePath(folder / "log.txt"), std::ios::app | std::ios::binary) << "other\n";
        }
        KXInitializeLog(nullptr, 0); // which closes it
        EXPECT_EQ(openFiles(), open - 1);
        std::string all = content();
        int others = 0;
        for (std::size_t at; (at = all.find("other\n")) != std::string::npos; ++others)
            all.erase(at, 6);
        EXPECT_TRUE(all == own && others == 4) << others;
    }
}

TEST_F(Log, GoesWhereTheExecutableIsOrToTheWorkingDirectoryAndToStandardOutput) {
    testing::internal::CaptureStdout();
    KXLogSetEnableSTDOut(2);
    std::filesystem::create_directory(_KXFilePath(folder / "sub"));
    KXInitializeLog("sub/100%s.txt", 0);
    KXLog(nullptr, "a");
    KXLogSetEnableSTDOut(0);
    _KXForgetApplicationPaths();
    std::filesystem::current_path(_KXFilePath(folder / "sub"));
    KXInitializeLog("b.txt", 0);
    KXLog(nullptr, "b");
    KXLogSetEnableSTDOut(2);
    // No file, for three reasons; the log works all the same.
    for (const char* name : {static_cast<const char*>(nullptr), "no/such/folder/log.txt", ""}) {
        KXInitializeLog(name, 0);
        EXPECT_TRUE(_KXLogInitialized == -1 && !_KXLogFP);
        KXLog(nullptr, "c");
    }
    EXPECT_EQ(content("sub/100%s.txt") + content("sub/b.txt"), stamp + "a" + stamp + "b");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), stamp + "a" + stamp + "c" + stamp + "c" + stamp + "c");
}

TEST_F(Log, OpensAtAnyPathAndSaysWhereItCannot) {
    EXPECT_EQ(KXOpenLog((folder / "100%s.txt").c_str(), 0), -1);
    KXLog(nullptr, "a");
    EXPECT_EQ(KXOpenLog((folder / "100%s.txt").c_str(), 0), -1);
    KXLog(nullptr, "b");
    EXPECT_EQ(KXOpenLog("no/such/100%s.txt", 0), 0);
    EXPECT_NE(std::string(KXError()).find("no/such/100%s.txt"), std::string::npos) << KXError();
    EXPECT_EQ(content("100%s.txt"), stamp + "a" + stamp + "b") << "the one before is closed";
    EXPECT_EQ(KXOpenLog((folder / "100%s.txt").c_str(), -1), -1);
    KXDeinitializeLog();
    EXPECT_EQ(content("100%s.txt"), "");
    EXPECT_FALSE(KXUserPath("../log.txt"));
    const std::string why = KXError();
    EXPECT_EQ(KXOpenLog(nullptr, 0), 0);
    EXPECT_EQ(KXError(), why);
    EXPECT_EQ(_KXLogInitialized, -1) << "it goes on without a file";
}
} // namespace
