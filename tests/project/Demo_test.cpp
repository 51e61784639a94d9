// The game as ./play starts it.

#include "net/NetTest.h"
#include "support/Golden.h"
#include "support/Program.h"

namespace {
std::string game(const std::string& arguments) { return "'" DEMO "' --headless " + arguments; }

struct Demo : testing::Test {
    Outcome run(const std::string& arguments) const { return runProgram(folder, game(arguments)); }
    Image shot(const std::string& name) const { return Image::fromFile(folder / name); }

    const TemporaryFolder folder;
};

/// The mean column of all pixels of a colour; -1 where there are none.
int columnOf(const Image& image, Pixel color) {
    int sum = 0, count = 0;
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x)
            if (isNear(image.at(x, y), color, 3)) {
                sum += x;
                ++count;
            }
    return count ? sum / count : -1;
}

TEST_F(Demo, ANightIsPlayedToItsEnd) {
    const Outcome night = run("--script " SCRIPTS "/night.txt --screenshot end.png");
    EXPECT_EQ(night.status, 0);
    EXPECT_EQ(night.output, "Screenshot: " + folder / "night.png" + "\nScore: 360\nScreenshot: " +
                                folder / "scores.png" + "\nScreenshot: " + folder / "end.png" + "\n");
    // Edges that another driver rounds otherwise are allowed.
    expectGolden(shot("night.png"), "demo_night", 3, 300);
    expectGolden(shot("scores.png"), "demo_scores", 3, 300);
}

TEST_F(Demo, HostAndGuestSeeEachOtherMove) {
    folder.write("left.txt", "1 down Left\n");
    folder.write("right.txt", "1 down Right\n");
    const int free = portOf(KXNetworkServer("127.0.0.1", 0, 1, 0, 1));
    const std::string port = std::to_string(free), limits = " --nights 1 --frames 6000 ";
    Program host(folder,
                 game("--night 10 --host " + port + limits + "--script left.txt --screenshot host.png"));
    // The guest tries until the host waits.
    const Outcome guest =
        run("--join localhost:" + port + limits + "--script right.txt --screenshot guest.png");
    const Outcome hosted = host.finish();
    EXPECT_EQ(hosted.status + guest.status, 0);
    const std::string score = hosted.output.substr(0, hosted.output.find('\n') + 1);
    EXPECT_TRUE(score.starts_with("Score: ") && guest.output.starts_with(score))
        << hosted.output << guest.output;
    // At dawn coats have the colours they were painted in.
    for (const char* name : {"host.png", "guest.png"}) {
        const Image image = shot(name);
        const int teal = columnOf(image, {0x4a, 0x9a, 0xa6, 255});
        EXPECT_TRUE(0 < teal && teal < 300) << name << ' ' << teal;
        EXPECT_GT(columnOf(image, {0xc0, 0x5c, 0x74, 255}), 520) << name;
    }
}

TEST_F(Demo, WhatAPersonDoesCanBePlayedAgain) {
    folder.write("script.txt",
                 "# into the options\n3 down Down\n5 up Down\n\n8 move 400 380\n9 press\n11 release\n"
                 "15 move 400 166\n16 press\n18 move 520 166\n20 release\n24 shot first.png\n");
    EXPECT_EQ(run("--script script.txt --record record.txt --screenshot end.png").status, 0);
    folder.write("again.txt", contentOf(folder / "record.txt") + "24 shot second.png\n");
    EXPECT_EQ(run("--script again.txt --screenshot end.png").status, 0);
    EXPECT_EQ(shot("first.png").width, 800);
    EXPECT_EQ(differingPixels(shot("first.png"), shot("second.png")), 0);
}

TEST_F(Demo, SettingsAndScoresAreKept) {
    folder.write("name.txt", "3 move 400 380\n4 press\n6 release\n10 move 400 252\n11 press\n12 release\n"
                             "14 text ilse\n18 move 400 352\n19 press\n21 release\n30 quit\n");
    EXPECT_EQ(run("--script name.txt --save game.save --screenshot a.bmp").status, 0);
    const std::string kept = contentOf(folder / "game.save");
    EXPECT_NE(kept.find("ilse"), std::string::npos);
    EXPECT_EQ(shot("a.bmp").width, 800);
    for (std::size_t length : {std::size_t(0), std::size_t(5), kept.size() / 2, kept.size() - 1}) {
        folder.write("cut.save", kept.substr(0, length)); // what is cut off is forgotten, no more
        EXPECT_EQ(run("--script name.txt --save cut.save --screenshot a.png").status, 0) << length;
    }
    EXPECT_TRUE(std::filesystem::exists(DEMO_FOLDER "/ember-night.log"));
}

TEST_F(Demo, KeysAreChosenAnew) {
    const std::string intoControls =
        "3 move 400 380\n4 press\n6 release\n10 move 400 292\n12 press\n14 release\n";
    // The first player's hop gets what was the second's way up, in a tap; Escape leaves the left as it was.
    folder.write("choose.txt",
                 intoControls +
                     "20 move 200 284\n22 press\n24 release\n30 down W\n30 up W\n31 shot controls.png\n"
                     "32 down Down\n33 up Down\n34 down Down\n35 up Down\n"
                     "36 down Down\n37 up Down\n40 down Return\n44 up Return\n"
                     "46 down Escape\n47 up Escape\n50 quit\n");
    EXPECT_EQ(run("--script choose.txt --save game.save --screenshot end.png").status, 0);
    expectGolden(shot("controls.png"), "demo_controls", 3, 300);
    const std::string kept = contentOf(folder / "game.controls");
    for (const char* line :
         {"\nfirst hop: position W\n", "\nfirst left: position Left\n", "\nfirst hop: pad1 A\n"})
        EXPECT_NE(kept.find(line), std::string::npos) << line << kept;
    EXPECT_EQ(kept.find("second up: position W"), std::string::npos);
    folder.write("look.txt", intoControls + "30 shot look.png\n");
    const auto look = [&] {
        EXPECT_EQ(run("--script look.txt --save game.save --screenshot end.png").status, 0);
        return shot("look.png");
    };
    const Image chosen = look();
    folder.write("game.controls", "first hop: position\n"); // which is none: the defaults are used
    const Image damaged = look();
    std::filesystem::remove(folder / "game.controls");
    EXPECT_GT(differingPixels(chosen, damaged), 0);
    EXPECT_EQ(differingPixels(look(), damaged), 0);
}

TEST_F(Demo, SaysWhatItDoesNotUnderstand) {
    for (const char* arguments :
         {"--nonsense", "--frames", "--frames x", "--frames 0", "--frames 3x", "--screenshot", "--host 70000",
          "--join here", "--join :1", "--join a:b", "--night -1"}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_TRUE(outcome.output.starts_with("play: '")) << outcome.output;
    }
    for (const char* script :
         {"down Left", "0 down Left", "3 down Nothing", "3 move 1", "3 jump", "3 shot"}) {
        folder.write("bad.txt", script);
        const Outcome outcome = run("--script bad.txt");
        EXPECT_EQ(outcome.status, 2) << script;
        EXPECT_EQ(outcome.output, "play: bad.txt: line 1 is not understood\n") << script;
    }
    EXPECT_EQ(run("--script none.txt").output, "play: none.txt: cannot be read\n");
    const Outcome help = run("--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.output.find("--screenshot FILE"), std::string::npos);
    folder.write("quit.txt", "1 quit\n");
    EXPECT_EQ(run("--script quit.txt --screenshot no/such/folder/shot.png").status, 1);
}
} // namespace
