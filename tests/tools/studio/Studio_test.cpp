#include "../Tool.h"

#include "support/Image.h"

#include <KobaltrixTest/KXTestPicture.h>

// The studio as it is started, without a display.

namespace {
struct Studio : Tool {
    Studio() {
        folder.write("owl.png", contentOf(ROOT "/examples/assets/owl.png"));
        std::filesystem::create_directory(_KXFilePath(folder / "home"));
    }

    Outcome edit(const std::string& arguments) const {
        for (const char* const display : {"DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER"})
            unsetVariable(display);
        return kxsprite("edit " + arguments);
    }
    /// Compares a screenshot with the one that the page shows.
    void expectLooks(const std::string& shot, const std::string& name) const {
        const Image picture = Image::fromFile(folder / shot);
        EXPECT_EQ(KXTestGallery(ROOT "/docs/studio").compare(picture, name, {2, 200}).message, "");
    }
};

Fields frame(int duration, float x, float width) { return {duration, x, 0.f, static_cast<int>(width), 16}; }
} // namespace

// Three animations and two boxes, by mouse and keyboard: cells and a rectangle are cut, a frame is timed and
// moved and that taken back, one is copied, boxes are named, dragged and nudged. See Played.cpp.
TEST_F(Studio, MakesASpriteInAReplayedSession) {
    const Outcome run = edit("owl.png --replay '" SESSION "' --screenshot shot.png");
    EXPECT_EQ(run.status, 0) << run.output;
    const Fields blink = Fields{"blink", 2} + frame(6, 16, 16) + frame(6, 16, 16) + Fields{0},
                 fly = Fields{"fly", 4} + frame(6, 32, 16) + frame(6, 48, 16) + frame(6, 64, 16) +
                       frame(6, 80, 16) + Fields{-1},
                 sit = Fields{"sit", 2} + frame(90, 0, 16) + frame(6, 16, 16) + Fields{-1};
    EXPECT_EQ(contentOf(folder / "owl.spr"),
              spriteFile(Fields{"owl.png", 2, "beak", 7.f, 6.f, 2, 3, "body", 0.f, 2.f, 15, 14, 3} + blink +
                         fly + sit));
    EXPECT_EQ(kxsprite("check owl.spr").status, 0);
    expectLooks("shot.png", "dark");

    // The order of the list, which the file cannot say, is there when it is opened again; in another theme.
    folder.write("home/settings.txt", "kobaltrix settings 1\ntheme: \"light\"\nwidth: 960\nheight: 640\n"
                                      "shows onion skin: yes\nend\n");
    EXPECT_EQ(edit("owl.spr --settings home --screenshot light.png").status, 0);
    expectLooks("light.png", "light");
}

TEST_F(Studio, GoesOnWithWorkThatWasNotSaved) {
    // The same session, which ends before it is saved.
    std::string session = contentOf(SESSION);
    session.resize(session.find("\nstep 200 "));
    folder.write("session.txt", session + "\n");
    const Outcome run = edit("owl.png --settings home --replay session.txt");
    EXPECT_EQ(run.status, 0) << run.output;
    EXPECT_FALSE(std::filesystem::exists(_KXFilePath(folder / "owl.spr")));
    EXPECT_EQ(edit("owl.png --settings home --screenshot asks.png").status, 0);
    expectLooks("asks.png", "recovery");
}

TEST_F(Studio, SaysWhatIsWrong) {
    folder.write("broken.spr", "KXSPRITE");
    folder.write("text.txt", "no picture");
    folder.write("session.txt", "kobaltrix recording 1\nprogram \"\"\nnonsense\n");
    expectFault(edit("broken.spr --screenshot a.png"), "broken.spr", "cut short");
    expectFault(edit("missing.spr --screenshot a.png"), "missing.spr", "opened");
    expectFault(edit("missing.png --screenshot a.png"), "missing.png", "not there");
    expectFault(edit("text.txt --screenshot a.png"), "text.txt", "no image");
    expectFault(edit("owl.png --replay session.txt"), "session.txt", "3");
    expectFault(edit("owl.png --replay missing.txt"), "missing.txt", "");
    expectFault(edit("owl.png --screenshot nowhere/a.png"), "nowhere/a.png", "");
}

TEST_F(Studio, SaysThatThereIsNoDisplay) { expectFault(edit("owl.png"), "owl.png", "no display"); }
