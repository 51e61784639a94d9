// kxsprite watch, as a process that goes on beside the test.

#include "Tool.h"

#include "support/Image.h"

#include <csignal>
#include <functional>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace {
struct Watch : Tool {
    Watch() { Image{64, 16, std::vector<Pixel>(1024)}.save(folder / "hero.png"); }

    /// One animation of some cells, written in one go.
    void writeSource(const std::string& name, const std::string& cells) const {
        folder.write("new", R"({"kxsprite": 1, "texture": "hero.png", "grid": {"width": 16, "height": 16},
            "animations": [{"name": "a", "duration": 1, "cells": [)" +
                                cells + "]}]}");
        std::filesystem::rename(folder / "new", folder / name);
    }
    ~Watch() override {
        if (_process > 0)
            end(SIGKILL);
    }

    /// Two sprites; what it says goes into a file.
    void start() {
        _process = fork();
        if (_process != 0)
            return;
        std::filesystem::current_path(folder.path());
        if (std::freopen("said", "w", stdout) && dup2(1, 2) == 2)
            execl(KXSPRITE, "kxsprite", "watch", "make", "a.json", "-o", "a.spr", "--", "make", "b.json",
                  "-o", "b.spr", nullptr);
        _exit(127);
    }
    /// The exit status after a signal.
    int end(int signal) {
        int status = 0;
        kill(_process, signal);
        waitpid(_process, &status, 0);
        _process = 0;
        return status;
    }
    /// Not for ever.
    static bool waitUntil(const std::function<bool()>& isTrue) {
        for (int i = 0; i < 1000 && !isTrue(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return isTrue();
    }
    std::string lineOf(const std::string& beginning) const {
        const std::string said = contentOf(folder / "said");
        const std::size_t last = said.rfind("\nkxsprite: " + beginning);
        return last == said.npos ? said : said.substr(last + 1);
    }

private:
    pid_t _process = 0;
};

TEST_F(Watch, MakesAnewWhatHasChangedAndGoesOnAfterFaults) {
    writeSource("a.json", "0");
    writeSource("b.json", "0, 1");
    start();
    const auto hasFrames = [this](int count) {
        return [this, count] { return contentOf(folder / "a.spr").size() == std::size_t(45 + 20 * count); };
    };
    ASSERT_TRUE(
        waitUntil([&] { return lineOf("").starts_with("kxsprite: make b.json -o b.spr: done in "); }));
    EXPECT_TRUE(hasFrames(1)());
    EXPECT_EQ(contentOf(folder / "b.spr").size(), 45u + 40);

    writeSource("a.json", "0, 1, 2");
    EXPECT_TRUE(waitUntil(hasFrames(3)));
    EXPECT_TRUE(
        waitUntil([&] { return lineOf("").starts_with("kxsprite: make a.json -o a.spr: done in "); }));

    writeSource("a.json", "4"); // beyond the sheet
    ASSERT_TRUE(
        waitUntil([&] { return lineOf("").starts_with("kxsprite: make a.json -o a.spr: failed in "); }));
    EXPECT_TRUE(lineOf("a.json: ").find("outside the sheet of 64 x 16") != std::string::npos);
    EXPECT_TRUE(hasFrames(3)()) << "what was made stays";
    Image{80, 16, std::vector<Pixel>(1280)}.save(folder / "new.png");
    std::filesystem::rename(folder / "new.png", folder / "hero.png");
    EXPECT_TRUE(waitUntil(hasFrames(1))) << "the sheet has room for it now";

    EXPECT_EQ(end(SIGTERM), 0);
}

TEST_F(Watch, TakesCommandsThatWriteFilesAlone) {
    for (const char* arguments : {"watch", "watch make", "watch paint a", "watch make a -o b --",
                                  "watch check a.spr", "watch watch make a -o b"})
        EXPECT_EQ(kxsprite(arguments).status, 2) << arguments;
    EXPECT_EQ(kxsprite("watch --help").status, 0);
}
} // namespace
