// Whole runs of a game that knows nothing of recordings, by the environment alone.

#include "support/Image.h"
#include "support/Program.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>

namespace {
struct Replay : testing::Test {
    Outcome run(const std::string& environment, const std::string& arguments = "") const {
        return runProgram(folder, environment + " '" DEMO "' --headless " + arguments);
    }
    const TemporaryFolder folder;
};

// Somebody who hits everything at random, in the game and on the screen of widgets.
TEST_F(Replay, OfRandomInputIsTheSameInEachStep) {
    const char* const keys[] = {"Left", "Right", "Up", "Down", "Space", "Return",
                                "A",    "D",     "W",  "S",    "Tab",   "P"};
    for (const char* screen : {"--nights 50", "--widgets"})
        for (unsigned seed = 1; seed <= 2; ++seed) {
            std::mt19937 random(seed);
            const auto below = [&random](unsigned n) { return static_cast<unsigned>(random() % n); };
            std::string script;
            for (int step = 1; step <= 10000; ++step) {
                const std::string at = std::to_string(step) + " ";
                if (below(3) == 0)
                    script += at + (below(2) ? "down " : "up ") + keys[below(12)] + "\n";
                if (below(10) == 0)
                    script +=
                        at + "move " + std::to_string(below(800)) + " " + std::to_string(below(500)) + "\n";
                if (below(10) == 0)
                    script += at + (below(2) ? "press\n" : "release\n");
                if (below(50) == 0)
                    script += at + "text x\xc3\xa9\n";
            }
            folder.write("random.txt", script);
            const std::string arguments =
                std::string(screen) + " --script random.txt --frames 10000 --screenshot ";
            const Outcome recorded = run("KOBALTRIX_RECORD=run.txt", arguments + "recorded.png");
            const Outcome replayed = run("KOBALTRIX_REPLAY=run.txt", arguments + "replayed.png");
            EXPECT_EQ(recorded.status + replayed.status, 0) << replayed.output;
            EXPECT_NE(replayed.output.find(" steps as recorded\n"), std::string::npos) << replayed.output;
            EXPECT_EQ(differingPixels(Image::fromFile(folder / "recorded.png"),
                                      Image::fromFile(folder / "replayed.png")),
                      0)
                << screen << seed;
        }
}

TEST_F(Replay, StopsForAPictureAndTellsWhatIsWrong) {
    const auto example = [this](const std::string& environment,
                                const std::string& name = "08_timers_easing") {
        return runProgram(folder, environment + " '" EXAMPLES "/" + name + "' --frames 90");
    };
    EXPECT_EQ(example("KOBALTRIX_RECORD=run.txt").status, 0);
    const Outcome stopped =
        example("KOBALTRIX_REPLAY=run.txt KOBALTRIX_REPLAY_STOP=50 KOBALTRIX_REPLAY_PICTURE=at.bmp");
    EXPECT_EQ(stopped.status, 0);
    EXPECT_NE(stopped.output.find("Replay: stopped at step 50\n"), std::string::npos) << stopped.output;
    EXPECT_EQ(Image::fromFile(folder / "at.bmp").width, 400);

    const Outcome other = example("KOBALTRIX_REPLAY=run.txt", "02_shapes");
    EXPECT_EQ(other.status, 1) << "another game";
    EXPECT_NE(other.output.find("The replay goes apart at step "), std::string::npos) << other.output;

    const std::string text = contentOf(folder / "run.txt");
    folder.write("cut.txt", text.substr(0, text.rfind("\nstep ") + 7));
    const Outcome cut = example("KOBALTRIX_REPLAY=cut.txt");
    EXPECT_NE(cut.status, 0);
    EXPECT_NE(cut.output.find(": the recording is cut off"), std::string::npos) << cut.output;
    // A game that fell leaves whole lines without an end.
    folder.write("fallen.txt", text.substr(0, text.rfind("\nstep ") + 1));
    const Outcome fallen = example("KOBALTRIX_REPLAY=fallen.txt");
    EXPECT_EQ(fallen.status, 0);
    EXPECT_NE(fallen.output.find("Replay: the recording ends at step "), std::string::npos) << fallen.output;
}
} // namespace
