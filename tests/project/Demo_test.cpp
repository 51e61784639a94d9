// The demo as ./play starts it.

#include "support/Golden.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>

#include <sys/wait.h>

namespace {
struct Outcome {
    int status;
    std::string output;
};

/// Runs the demo in a folder of the test's own; its output on both channels.
Outcome runDemo(const TemporaryFolder& folder, const std::string& arguments) {
    const std::string command = "cd '" + folder.path() + "' && '" DEMO "' " + arguments + " 2>&1";
    Outcome run = {};
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 256> buffer;
    while (fgets(buffer.data(), buffer.size(), pipe))
        run.output += buffer.data();
    const int status = pclose(pipe);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

TEST(Demo, PlaysItsScriptAndShowsWhatItOughtTo) {
    const TemporaryFolder folder;
    const std::string shot = folder / "shot.png";
    const Outcome run = runDemo(folder, "--headless --screenshot '" + shot + "'");
    EXPECT_EQ(run.status, 0) << run.output;
    EXPECT_EQ(run.output, "Screenshot: " + shot + "\n");

    // One step a frame makes the pictures the same everywhere, but for edges that another driver may round
    // otherwise.
    expectGolden(Image::fromFile(shot), "demo", 2, 200);
}

TEST(Demo, EndsAfterSomeFramesAndWritesBMP) {
    const TemporaryFolder folder;
    const Outcome run = runDemo(folder, "--headless --frames 3 --screenshot shot.bmp");
    EXPECT_EQ(run.status, 0) << run.output;
    EXPECT_EQ(Image::fromFile(folder / "shot.bmp").width, 800);
    EXPECT_EQ(runDemo(folder, "--headless --frames 1").output,
              "Screenshot: " + folder.path() + "/kobaltrix-demo.png\n");
}

TEST(Demo, SaysWhatItDoesNotUnderstand) {
    const TemporaryFolder folder;
    for (const char* arguments :
         {"--nonsense", "--frames", "--frames x", "--frames 0", "--frames 3x", "--screenshot"}) {
        const Outcome run = runDemo(folder, arguments);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_EQ(run.output.rfind("play: '", 0), 0u) << run.output;
    }
    const Outcome help = runDemo(folder, "--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.output.find("--screenshot FILE"), std::string::npos);
    EXPECT_EQ(runDemo(folder, "--headless --screenshot no/such/folder/shot.png").status, 1);
}
} // namespace
