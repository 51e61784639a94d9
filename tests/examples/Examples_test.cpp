// The examples as a visitor starts them. docs/gallery shows the very pictures they are compared with.

#include "support/Golden.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <sstream>

#include <sys/wait.h>

namespace {
struct Outcome {
    int status;
    std::string output;
};

/// Runs an example in a folder of the test's own and without a display; its output on both channels.
Outcome runExample(const std::string& name, const TemporaryFolder& folder, const std::string& arguments) {
    const std::string command = "cd '" + folder.path() +
                                "' && env -u DISPLAY -u WAYLAND_DISPLAY -u SDL_VIDEODRIVER '" EXAMPLES "/" +
                                name + "' " + arguments + " 2>&1";
    Outcome run = {};
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 256> buffer;
    while (fgets(buffer.data(), buffer.size(), pipe))
        run.output += buffer.data();
    const int status = pclose(pipe);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

struct Shown {
    const char* name;
    const char* program; ///< The example, or the same with somebody who uses it.
};

const Shown all[] = {
    {"01_window", "01_window"},
    {"02_shapes", "02_shapes"},
    {"03_texture", "03_texture"},
    {"04_nine_slice", "04_nine_slice"},
    {"05_clipping", "05_clipping"},
    {"06_render_target", "06_render_target"},
    {"07_sprite", "07_sprite"},
    {"08_timers_easing", "08_timers_easing"},
    {"09_keyboard_mouse", "09_keyboard_mouse_played"},
    {"10_game_pad", "10_game_pad_played"},
    {"11_text", "11_text"},
    {"12_widgets", "12_widgets_played"},
    {"13_menu", "13_menu_played"},
    {"14_dialog", "14_dialog_played"},
    {"15_list_entry", "15_list_entry_played"},
    {"16_sound_music", "16_sound_music_played"},
    {"17_network", "17_network"},
    {"18_draw_batch", "18_draw_batch"},
    {"19_opengl", "19_opengl"},
};

struct Examples : testing::TestWithParam<Shown> {};

TEST_P(Examples, ShowWhatTheGalleryShows) {
    const auto& [name, program] = GetParam();
    const TemporaryFolder folder;
    const std::string shot = folder / "shot.png";
    const Outcome run = runExample(program, folder, "--screenshot '" + shot + "'");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "");
    // Edges of 3D and of scaled pixels may be rounded otherwise by another driver.
    expectGolden(Image::fromFile(shot), std::string("../../docs/gallery/") + name, 2, 200);
}

INSTANTIATE_TEST_SUITE_P(All, Examples, testing::ValuesIn(all),
                         [](const auto& example) { return std::string(example.param.name + 3); });

TEST(Example, EndsAfterSomeFramesAndSaysWhatIsWrong) {
    const TemporaryFolder folder;
    EXPECT_EQ(runExample("01_window", folder, "--frames 3").status, 0);
    for (const char* arguments : {"--nonsense", "--frames", "--frames x", "--frames 0", "--screenshot"}) {
        const Outcome run = runExample("01_window", folder, arguments);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_NE(run.output.find("usage: [--frames N] [--screenshot FILE]"), std::string::npos)
            << run.output;
    }
    const Outcome unseen = runExample("01_window", folder, "");
    EXPECT_EQ(unseen.status, 1);
    EXPECT_EQ(unseen.output,
              "There is no display to open a window on. --screenshot FILE does without one.\n");
    const Outcome run = runExample("01_window", folder, "--screenshot no/such/folder/shot.png");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output.rfind("The screenshot cannot be saved.", 0), 0u) << run.output;
}

std::string contentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path).rdbuf();
    return content.str();
}

TEST(Example, EachStaysShortAndHasItsPlaceInTheGallery) {
    const std::string gallery = contentOf(ROOT "/docs/gallery.md");
    for (const Shown& example : all) {
        const std::string name = example.name, source = contentOf(ROOT "/examples/" + name + ".cpp");
        EXPECT_LT(std::count(source.begin(), source.end(), '\n'), 80) << name;
        EXPECT_NE(gallery.find("(../examples/" + name + ".cpp)"), std::string::npos) << name;
        EXPECT_NE(gallery.find("(gallery/" + name + ".png)"), std::string::npos) << name;
    }
}
} // namespace
