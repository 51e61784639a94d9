// The game as ./play starts it.

#include "support/Golden.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
struct Outcome {
    int status;
    std::string output;
};

/// A run of the game, in a folder of the test's own; its output on both channels.
class GameRun {
public:
    GameRun(const TemporaryFolder& folder, const std::string& arguments)
        : _pipe(popen(("cd '" + folder.path() + "' && '" DEMO "' --headless " + arguments + " 2>&1").c_str(),
                      "r")) {}

    Outcome finish() {
        Outcome outcome = {};
        std::array<char, 256> buffer;
        while (fgets(buffer.data(), buffer.size(), _pipe))
            outcome.output += buffer.data();
        const int status = pclose(_pipe);
        outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        return outcome;
    }

private:
    FILE* _pipe;
};

Outcome run(const TemporaryFolder& folder, const std::string& arguments) {
    return GameRun(folder, arguments).finish();
}

/// The middle of all pixels of a colour; x is -1 where there are none.
KXPoint middleOf(const Image& image, Pixel color) {
    KXPoint sum = {0, 0};
    int count = 0;
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x)
            if (differingPixels({1, 1, {image.at(x, y)}}, {1, 1, {color}}, 3) == 0) {
                sum = {sum.x + static_cast<float>(x), sum.y + static_cast<float>(y)};
                ++count;
            }
    return count ? KXPoint{sum.x / static_cast<float>(count), sum.y / static_cast<float>(count)}
                 : KXPoint{-1, -1};
}

int freePort() {
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    socklen_t length = sizeof address;
    bind(listener, reinterpret_cast<sockaddr*>(&address), length);
    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
    close(listener);
    return ntohs(address.sin_port);
}

// Edges that another driver rounds otherwise.
constexpr int tolerance = 3, allowed = 300;

TEST(Demo, ANightIsPlayedToItsEnd) {
    const TemporaryFolder folder;
    const Outcome night = run(folder, "--script " SCRIPTS "/night.txt --screenshot end.png");
    EXPECT_EQ(night.status, 0);
    EXPECT_EQ(night.output, "Screenshot: " + folder.path() + "/night.png\nScore: 340\nScreenshot: " +
                                folder.path() + "/scores.png\nScreenshot: " + folder.path() + "/end.png\n");
    expectGolden(Image::fromFile(folder / "night.png"), "demo_night", tolerance, allowed);
    expectGolden(Image::fromFile(folder / "scores.png"), "demo_scores", tolerance, allowed);
}

TEST(Demo, HostAndGuestSeeEachOtherMove) {
    const TemporaryFolder folder;
    folder.write("left.txt", "1 down Left\n");
    folder.write("right.txt", "1 down Right\n");
    const std::string port = std::to_string(freePort()), limits = " --nights 1 --frames 6000 ";
    GameRun host(folder, "--night 10 --host " + port + limits + "--script left.txt --screenshot host.png");
    // The guest tries until the host waits.
    const Outcome guest =
        run(folder, "--join localhost:" + port + limits + "--script right.txt --screenshot guest.png");
    const Outcome hosted = host.finish();
    EXPECT_EQ(hosted.status, 0);
    EXPECT_EQ(guest.status, 0);
    const auto scoreOf = [](const Outcome& outcome) {
        return outcome.output.substr(0, outcome.output.find('\n'));
    };
    EXPECT_EQ(scoreOf(hosted), scoreOf(guest));
    EXPECT_EQ(scoreOf(hosted).rfind("Score: ", 0), 0u) << hosted.output;
    // At dawn coats have the colours they were painted in.
    for (const char* shot : {"host.png", "guest.png"}) {
        const Image image = Image::fromFile(folder / shot);
        const KXPoint teal = middleOf(image, {0x4a, 0x9a, 0xa6, 255}),
                      rose = middleOf(image, {0xc0, 0x5c, 0x74, 255});
        EXPECT_GT(teal.x, 0) << shot;
        EXPECT_LT(teal.x, 300) << shot;
        EXPECT_GT(rose.x, 520) << shot;
    }
}

TEST(Demo, WhatAPersonDoesCanBePlayedAgain) {
    const TemporaryFolder folder;
    folder.write("script.txt",
                 "# into the options\n3 down Down\n5 up Down\n\n8 move 400 380\n9 press\n11 release\n"
                 "15 move 400 166\n16 press\n18 move 520 166\n20 release\n24 shot first.png\n");
    EXPECT_EQ(run(folder, "--script script.txt --record record.txt --screenshot end.png").status, 0);
    std::ofstream(folder / "record.txt", std::ios::app) << "24 shot second.png\n";
    EXPECT_EQ(run(folder, "--script record.txt --screenshot end.png").status, 0);
    const Image first = Image::fromFile(folder / "first.png"),
                second = Image::fromFile(folder / "second.png");
    EXPECT_EQ(first.width, 800);
    EXPECT_EQ(differingPixels(first, second), 0);
}

TEST(Demo, SettingsAndScoresAreKept) {
    const TemporaryFolder folder;
    folder.write("name.txt", "3 move 400 380\n4 press\n6 release\n10 move 400 252\n11 press\n12 release\n"
                             "14 text ilse\n18 move 400 352\n19 press\n21 release\n30 quit\n");
    EXPECT_EQ(run(folder, "--script name.txt --save game.save --screenshot a.bmp").status, 0);
    std::ifstream file(folder / "game.save", std::ios::binary);
    const std::string kept{std::istreambuf_iterator<char>(file), {}};
    EXPECT_NE(kept.find("ilse"), std::string::npos);
    EXPECT_EQ(Image::fromFile(folder / "a.bmp").width, 800);
    for (std::size_t length : {std::size_t(0), std::size_t(5), kept.size() / 2, kept.size() - 1}) {
        folder.write("cut.save", kept.substr(0, length)); // what is cut off is forgotten, no more
        EXPECT_EQ(run(folder, "--script name.txt --save cut.save --screenshot a.png").status, 0) << length;
    }
    std::ifstream log(DEMO_FOLDER "/ember-night.log");
    EXPECT_TRUE(log.good());
}

TEST(Demo, SaysWhatItDoesNotUnderstand) {
    const TemporaryFolder folder;
    for (const char* arguments :
         {"--nonsense", "--frames", "--frames x", "--frames 0", "--frames 3x", "--screenshot", "--host 70000",
          "--join here", "--join :1", "--join a:b", "--night -1"}) {
        const Outcome outcome = run(folder, arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_EQ(outcome.output.rfind("play: '", 0), 0u) << outcome.output;
    }
    for (const char* script :
         {"down Left", "0 down Left", "3 down Nothing", "3 move 1", "3 jump", "3 shot"}) {
        folder.write("bad.txt", script);
        const Outcome outcome = run(folder, "--script bad.txt");
        EXPECT_EQ(outcome.status, 2) << script;
        EXPECT_EQ(outcome.output, "play: bad.txt: line 1 is not understood\n") << script;
    }
    EXPECT_EQ(run(folder, "--script none.txt").output, "play: none.txt: cannot be read\n");
    const Outcome help = run(folder, "--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.output.find("--screenshot FILE"), std::string::npos);
    folder.write("quit.txt", "1 quit\n");
    EXPECT_EQ(run(folder, "--script quit.txt --screenshot no/such/folder/shot.png").status, 1);
}
} // namespace
