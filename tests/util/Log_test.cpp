#include "util/Log.h"

#include "core/ground/Application.h"
#include "support/TemporaryFolder.h"
#include "support/TestClock.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <limits>
#include <sstream>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
constexpr std::time_t evening = 1709845749;
const std::string stamp = "[03/07/2024 21:09:09]: ";

void useTimeZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
}

struct Log : testing::Test {
    Log() {
        useTimeZone("UTC");
        std::string executable = folder / "game";
        _KXFindApplicationPaths(executable.data());
    }
    ~Log() override {
        KXDeinitializeLog();
        KXLogSetEnableSTDOut(0);
        _KXForgetApplicationPaths();
    }

    /// What is in a file of the folder; the log must be closed, or it may still hold some of it back.
    std::string content(const std::string& name = "log.txt") const {
        std::ifstream file(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::string closedContent() const {
        KXDeinitializeLog();
        return content();
    }

    TemporaryFolder folder;
    TestClock clock{0, evening};
};

TEST_F(Log, WritesTimeCategoryAndText) {
    KXInitializeLog("log.txt", -1);
    KXLogEnableCategory("net");
    KXLog("net", "Connected to peer %d\n", 2);
    KXLog(nullptr, "100%% of %s, no line end", "it");
    KXLog(nullptr, "; ");
    EXPECT_EQ(content(), "") << "messages are gathered";
    useTimeZone("XYZ-5:30"); // east of Greenwich, and past midnight there
    clock.setTimeOfDay(evening + 3 * 3600 + 1);
    KXLog("net", "%s", "");
    clock.setTimeOfDay(std::numeric_limits<std::time_t>::max()); // a year beyond every calendar
    KXLog(nullptr, "later");
    const std::string all = closedContent();
    const std::string known = stamp + "net Connected to peer 2\n" + stamp + "100% of it, no line end" +
                              stamp + "; [03/08/2024 05:39:10]: net ";
    EXPECT_EQ(all.substr(0, known.size()), known);
    EXPECT_TRUE(all.ends_with("]: later"));
}

TEST_F(Log, CategoriesAreSwitchedOneByOne) {
    KXLogEnableCategory("net"); // too early to count
    KXInitializeLog("log.txt", 0);
    KXLog("net", "1");
    EXPECT_EQ(_KXCategories->at("net"), 0) << "remembered as off";
    KXLogEnableCategory("net");
    KXLogEnableCategory("");
    KXLog("net", "2");
    KXLog("Net", "3");
    KXLog("", "4");
    KXLogDisableCategory("net");
    EXPECT_EQ(_KXCategories->count("net"), 0u);
    KXLogDisableCategory("never seen");
    KXLog("net", "5");
    KXInitializeLog("log.txt", 0); // without closing: the rest stays as it is
    KXLog("", "6");
    KXDeinitializeLog();
    KXLogEnableCategory("net");
    KXLog(nullptr, "7");
    KXInitializeLog("log.txt", 0);
    KXLog("", "8");
    EXPECT_EQ(closedContent(), stamp + "net 2" + stamp + " 4" + stamp + " 6");
}

TEST_F(Log, AppendsOrBeginsAnew) {
    folder.write("log.txt", "old\n");
    const std::pair<int, std::string> openings[] = {{0, "old\n" + stamp + "a"},
                                                    {0, "old\n" + stamp + "a" + stamp + "a"},
                                                    {1, stamp + "a"},
                                                    {-1, stamp + "a"}};
    for (const bool closedBetween : {true, false}) {
        folder.write("log.txt", "old\n");
        for (const auto& [overwrite, expected] : openings) {
            KXInitializeLog("log.txt", overwrite);
            KXLog(nullptr, "a");
            if (closedBetween)
                KXDeinitializeLog();
            else
                KXInitializeLog("other.txt", 0);
            EXPECT_EQ(content(), expected);
        }
    }
}

TEST_F(Log, CutsWhatIsTooLong) {
    const std::string longText(5000, 'x'), longest(1023, 'x');
    KXInitializeLog("log.txt", 0);
    KXLogEnableCategory(longText.c_str());
    for (int i = 0; i < 40; ++i) // many times the buffer
        KXLog(longText.c_str(), "%s", longText.c_str());
    KXLog(nullptr, "%s", (longest + "y").c_str());
    std::string expected;
    for (int i = 0; i < 40; ++i)
        expected += stamp + longest + longest;
    EXPECT_EQ(closedContent(), expected + stamp + longest);
}

TEST_F(Log, GoesWhereTheExecutableIs) {
    std::filesystem::create_directory(folder / "sub");
    KXInitializeLog("sub/log.txt", 0);
    KXLog(nullptr, "beside the executable");
    KXDeinitializeLog();
    EXPECT_EQ(content("sub/log.txt"), stamp + "beside the executable");

    _KXForgetApplicationPaths();
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder / "sub");
    KXInitializeLog("here 100%s.txt", 0);
    std::filesystem::current_path(before);
    KXLog(nullptr, "in the working directory");
    KXDeinitializeLog();
    EXPECT_EQ(content("sub/here 100%s.txt"), stamp + "in the working directory");
}

TEST_F(Log, EchoesToStandardOutput) {
    testing::internal::CaptureStdout();
    KXLogSetEnableSTDOut(2);
    KXLog(nullptr, "not initialised");
    // No file, for three reasons; the log works all the same.
    for (const char* name : {static_cast<const char*>(nullptr), "no/such/folder/log.txt", ""}) {
        KXInitializeLog(name, 0);
        EXPECT_EQ(_KXLogInitialized, -1);
        EXPECT_EQ(_KXLogFP, nullptr);
        KXLog(nullptr, "%s\n", "echo");
    }
    KXInitializeLog("log.txt", 0);
    KXLog(nullptr, "both");
    KXLogSetEnableSTDOut(0);
    KXLog(nullptr, "file");
    KXDeinitializeLog();
    const std::string line = stamp + "echo\n";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), line + line + line + stamp + "both");
    EXPECT_EQ(content(), stamp + "both" + stamp + "file");
}

TEST_F(Log, ToleratesAnyOrderAndNull) {
    const char* nothing = nullptr;
    KXDeinitializeLog();
    KXLogDisableCategory("net");
    KXInitializeLog("log.txt", 0);
    KXLogEnableCategory(nothing);
    KXLogDisableCategory(nothing);
    KXLog(nothing, nullptr);
    KXLog("net", nullptr);
    EXPECT_EQ(closedContent(), "");
    KXDeinitializeLog();
    EXPECT_EQ(_KXLogInitialized, 0);
    EXPECT_EQ(_KXLogFP, nullptr);
    EXPECT_EQ(_KXCategories, nullptr);
    KXLog("net", "closed");
    KXInitializeLog("log.txt", 0);
    KXLog(nothing, "open");
    EXPECT_EQ(closedContent(), stamp + "open");
}

TEST_F(Log, LeavesNoFileOpen) {
    const int before = open("/dev/null", O_RDONLY);
    close(before);
    for (int i = 0; i < 50; ++i)
        KXInitializeLog(i % 3 ? "log.txt" : nullptr, i % 2);
    KXDeinitializeLog();
    const int after = open("/dev/null", O_RDONLY);
    close(after);
    EXPECT_EQ(after, before);
}

// Logs numbered messages of many lengths once the other process is ready too.
void logALot(const char* process, int ready, int go) {
    char byte = 0;
    if (::write(ready, &byte, 1) != 1 || read(go, &byte, 1) != 1)
        return;
    for (int i = 0; i < 20000; ++i)
        KXLog(process, "%d %s.\n", i, std::string(static_cast<std::size_t>(i * 37 % 301), *process).c_str());
}

TEST_F(Log, TwoProcessesShareAFileMessageByMessage) {
    folder.write("log.txt", "old\n");
    std::array<int, 2> ready, go;
    ASSERT_EQ(pipe(ready.data()) | pipe(go.data()), 0);
    std::vector<pid_t> processes;
    for (const char* process : {"a", "b"}) {
        const pid_t pid = fork();
        if (pid == 0) {
            KXInitializeLog("log.txt", *process == 'a'); // one of them begins the file anew
            KXLogEnableCategory(process);
            logALot(process, ready[1], go[0]);
            KXDeinitializeLog();
            _exit(0);
        }
        processes.push_back(pid);
    }
    std::array<char, 2> bytes = {};
    for (char& byte : bytes)
        ASSERT_EQ(read(ready[0], &byte, 1), 1);
    ASSERT_EQ(::write(go[1], bytes.data(), bytes.size()), 2);
    for (const pid_t pid : processes) {
        int status = -1;
        waitpid(pid, &status, 0);
        EXPECT_EQ(status, 0);
    }
    for (const int end : {ready[0], ready[1], go[0], go[1]})
        close(end);

    std::map<char, int> next;
    int turns = 0, broken = 0;
    char before = 0;
    std::istringstream lines(content());
    for (std::string line; std::getline(lines, line);) {
        const char process = line.size() > stamp.size() ? line[stamp.size()] : '?';
        const int i = next[process]++;
        const std::string expected = stamp + process + " " + std::to_string(i) + " " +
                                     std::string(static_cast<std::size_t>(i * 37 % 301), process) + ".";
        broken += line != expected;
        turns += process != before;
        before = process;
    }
    EXPECT_EQ(broken, 0);
    EXPECT_EQ(next, (std::map<char, int>{{'a', 20000}, {'b', 20000}}));
    EXPECT_GT(turns, 2) << "they did not write at the same time";
}
} // namespace
