// The examples as a visitor starts them. docs/gallery shows the very pictures they are compared with.

#include "support/Golden.h"
#include "support/Program.h"

#include <Kobaltrix/KXMap.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {
/// Runs an example in a folder of the test's own and without a display.
/// @param variables more of them, as a shell sets them.
Outcome runExample(const std::string& name, const TemporaryFolder& folder, const std::string& arguments,
                   const std::string& variables = "") {
    for (const char* const display : {"DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER"})
        unsetVariable(display);
    return runProgram(folder, "KOBALTRIX_USER_FOLDER=user " + variables + " '" EXAMPLES "/" + name + "' " +
                                  arguments);
}

// Those that react to a user are run as NAME_played, the same with somebody who uses it.
const std::string played[] = {PLAYED};

struct Examples : testing::TestWithParam<const char*> {};

TEST_P(Examples, ShowWhatTheGalleryShows) {
    const std::string name = GetParam(), gallery = contentOf(ROOT "/docs/gallery.md"),
                      source = contentOf(ROOT "/examples/" + name + ".cpp");
    const bool isPlayed = std::ranges::find(played, name) != std::end(played);
    const TemporaryFolder folder;
    // The path that is shown begins at the user's own folder, which is not another one on each machine.
    const std::string home = name == "44_files" ? "HOME='" EXAMPLES "'" : "";
    const Outcome run = runExample(name + (isPlayed ? "_played" : ""), folder, "--screenshot shot.png", home);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "");
    // Edges of 3D and of scaled pixels may be rounded otherwise by another driver.
    const Image shot = Image::fromFile(folder / "shot.png");
    EXPECT_EQ(KXTestGallery(ROOT "/docs/gallery").compare(shot, name, {2, 200}).message, "");
    EXPECT_LT(std::ranges::count(source, '\n'), 85) << "it stays short";
    EXPECT_NE(gallery.find("(../examples/" + name + ".cpp)"), std::string::npos);
    EXPECT_NE(gallery.find("(gallery/" + name + ".png)"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(All, Examples, testing::Values(ALL),
                         [](const auto& example) { return std::string(example.param); });

// A recording paints and fills, takes back, adds a layer, answers a question and saves; it ends with an open
// menu.
TEST(LevelEditor, MakesALevelInAReplayedSession) {
    const TemporaryFolder folder;
    for (const char* file : {"meadow.tmj", "tiles.tsj", "tiles.png", "hills.png"})
        folder.write(file, contentOf(std::string(ROOT "/examples/assets/") + file));
    const Outcome run = runExample("level_editor", folder, "--screenshot shot.png --frames 310 meadow.tmj",
                                   "KOBALTRIX_REPLAY='" ROOT "/examples/level_editor/session.txt'");
    EXPECT_EQ(run.status, 0) << run.output;
    const Image shot = Image::fromFile(folder / "shot.png");
    EXPECT_EQ(KXTestGallery(ROOT "/docs/gallery").compare(shot, "level_editor", {2, 200}).message, "");
    KXMap made;
    ASSERT_TRUE(made.load((folder / "meadow.tmj").c_str()));
    ASSERT_EQ(made.layers().size(), 3u);
    EXPECT_TRUE(made.layers()[0].name == "plants" && made.layers()[2].name == "ground");
    EXPECT_TRUE(made.layers()[1].name == "night \"1\"" && !made.layers()[1].visible);
    const int ground = made.layerNamed("ground");
    EXPECT_EQ(made.tileAt(ground, 25, 4).id, 8) << "filled";
    EXPECT_EQ(made.tileAt(ground, 25, 6).id, 8) << "erased, and that taken back";
    EXPECT_EQ(made.tileAt(ground, 30, 4).tileset, -1);
}

TEST(Example, EndsAfterSomeFramesAndSaysWhatIsWrong) {
    const TemporaryFolder folder;
    EXPECT_EQ(runExample("01_window", folder, "--frames 3").status, 0);
    for (const char* arguments : {"--nonsense", "--frames", "--frames x", "--frames 0", "--screenshot"}) {
        const Outcome run = runExample("01_window", folder, arguments);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_NE(run.output.find("usage: [--frames N] [--screenshot FILE]"), std::string::npos)
            << run.output;
    }
    const Outcome run = runExample("01_window", folder, "--screenshot no/such/folder/shot.png");
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.output.starts_with("The screenshot cannot be saved.")) << run.output;
}

TEST(Example, SaysThatThereIsNoDisplay) {
    const Outcome unseen = runExample("01_window", TemporaryFolder(), "");
    EXPECT_EQ(unseen.status, 1);
    EXPECT_EQ(unseen.output,
              "There is no display to open a window on. --screenshot FILE does without one.\n");
}
} // namespace
