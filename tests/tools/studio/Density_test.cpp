#include "../Tool.h"

#include "support/Image.h"

#include <KobaltrixTest/KXTestPicture.h>

TEST_F(Tool, DrawsTheStudioInTheDisplaysOwnPixels) {
    for (const char* file : {"owl.png", "owl.json"})
        folder.write(file, contentOf(std::string(ROOT "/examples/assets/") + file));
    std::filesystem::create_directory(_KXFilePath(folder / "home"));
    folder.write("home/settings.txt", "kobaltrix settings 1\nwidth: 940\nheight: 560\nend\n");
    ASSERT_EQ(kxsprite("make owl.json -o owl.spr").status, 0);
    // The pointer rests where nothing answers to it: the window covers this display, wherever it comes up.
    ASSERT_EQ(runProgram(folder, "xdotool mousemove 990 700").status, 0);
    const Outcome run = kxsprite("edit owl.spr --settings home --screenshot shot.png");
    ASSERT_EQ(run.status, 0) << run.output;
    const Image shot = Image::fromFile(folder / "shot.png");
    EXPECT_EQ(shot.width, 2 * 940);
    EXPECT_EQ(KXTestGallery(ROOT "/docs/studio").compare(shot, "scale2", {2, 400}).message, "");
}
