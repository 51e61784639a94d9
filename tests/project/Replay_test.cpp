// Whole runs of games that know nothing of recordings.

#include "EmberNight.h"
#include "TitleScene.h"
#include "support/Golden.h"
#include "support/Program.h"
#include "support/System.h"

#include <cstdlib>
#include <filesystem>
#include <random>
#include <string_view>
#include <tuple>
#include <vector>

namespace {
/// A game whose player hits everything at random in each of its steps, but has no network.
class WildGame : public Game {
public:
    WildGame(const Options& options, unsigned seed) : Game(options), _user(app.window.id()), _random(seed) {
        resize();
    }

    void step() override {
        Game::step();
        if (++_steps == 10000)
            _user.quit();
        else if (dynamic_cast<const TitleScene*>(&scene()))
            goOn();
        else
            act();
    }

private:
    unsigned below(unsigned n) { return static_cast<unsigned>(_random() % n); }
    float place(unsigned n) { return static_cast<float>(below(n)); }

    // The first button begins a night; that of the widgets is the last but one.
    void goOn() {
        _user.move({0, 0});
        _user.release(KXMouseLeft);
        for (const KXKeyNumber key : keys)
            _user.release(key);
        for (const KXKeyNumber key : {KXKeyUp, KXKeyUp, KXKeyReturn})
            if (app.options.widgets || key == KXKeyReturn) {
                _user.hold(key);
                _user.release(key);
            }
    }
    void act() {
        const KXKeyNumber key = keys[below(12)];
        if (below(3) == 0)
            below(2) ? _user.hold(key) : _user.release(key);
        if (below(10) == 0)
            _user.move({place(400), place(250)});
        if (below(10) == 0)
            below(2) ? _user.hold(KXMouseLeft) : _user.release(KXMouseLeft);
        if (below(50) == 0)
            _user.type("x\xc3\xa9");
        if (below(300) == 0)
            resize();
    }
    // As a window manager does. Small pictures are soon drawn.
    void resize() { _user.resize({200 + place(200), 100 + place(150)}); }

    static constexpr KXKeyNumber keys[] = {KXKeyLeft, KXKeyRight, KXKeyUp, KXKeyDown, KXKeySpace, KXKeyReturn,
                                           KXKeyA,    KXKeyD,     KXKeyW,  KXKeyS,    KXKeyTab,   KXKeyP};

    KXTestUser _user;
    std::mt19937 _random;
    int _steps = 0;
};

struct WildReplay : EmberNightTest, testing::WithParamInterface<std::tuple<bool, unsigned>> {};

TEST_P(WildReplay, IsTheSameInEachStep) {
    const auto [widgets, seed] = GetParam();
    const TemporaryFolder folder, played; // which the file browser shows
    played.enter();
    // On a display what OpenGL draws on may take a new size later than the window, and show less until then.
    if (videoDriverOfTests == std::string_view("offscreen"))
        setVariable("KOBALTRIX_RECORD_PIXELS", "10");
    ASSERT_EQ(KXBeginRecording((folder / "run.txt").c_str()), -1) << KXError();
    {
        Options options;
        options.headless = true;
        options.widgets = widgets;
        WildGame game(options, seed);
        while (
            game.frame()) // a display so slow that there are as many steps for each picture as there may be
            clock.advance(250);
    }
    KXDeInit();
    KXEndRecording();
    const Outcome replay = runProgram(played, "KOBALTRIX_REPLAY_PACE=fast '" DEMO "' --headless --replay '" +
                                                  folder / "run.txt" + "'" + (widgets ? " --widgets" : ""));
    EXPECT_EQ(replay.status, 0);
    EXPECT_NE(replay.output.find("Replay: 100"), std::string::npos) << replay.output;
}

INSTANTIATE_TEST_SUITE_P(On, WildReplay, testing::Combine(testing::Bool(), testing::Values(1u, 2u)));

struct Nights : testing::Test, testing::WithParamInterface<const char*> {
#ifdef SIMULATED_DISPLAY
    static std::string display(int rate) {
        return "DISPLAY_RATE=" + std::to_string(rate) +
               " DISPLAY_SECONDS=100 KOBALTRIX_REPLAY_PACE=recorded LD_PRELOAD='" SIMULATED_DISPLAY "'";
    }
#endif
};

TEST_P(Nights, AreReplayedBitForBit) {
    const std::string device = GetParam(), file = NIGHTS "/" + device + ".txt";
    // On displays of two rates, at the pace it was played; where nothing can be put before the system's
    // clock, as fast as it goes.
#ifdef SIMULATED_DISPLAY
    std::vector displays = {display(device == "pad" ? 75 : 144)};
    if (device == "keys")
        displays.push_back(display(75));
#else
    const std::string displays[] = {"KOBALTRIX_REPLAY_PACE=fast"};
#endif
    const TemporaryFolder folder;
    useFolders(folder);
    for (const std::string& environment : displays) {
        const Outcome replay = runProgram(folder, environment + " '" DEMO "' --headless --night " +
                                                      std::to_string(Options::secondsRecorded) +
                                                      " --screenshot end.png --replay '" + file + "'");
        EXPECT_EQ(replay.status, 0);
        for (const char* line : {"Score: ", " steps as recorded\n"})
            EXPECT_NE(replay.output.find(line), std::string::npos) << environment << replay.output;
    }
    if (device == "keys") // edges that another driver rounds otherwise are allowed
        expectGolden(Image::fromFile(folder / "end.png"), "demo_scores");
}

INSTANTIATE_TEST_SUITE_P(By, Nights, testing::Values("keys", "mouse", "pad"),
                         [](const auto& device) { return std::string(device.param); });

#ifdef EXAMPLES
TEST(Replay, StopsForAPictureAndTellsWhatIsWrong) {
    const TemporaryFolder folder;
    const auto example = [&folder](const std::string& environment,
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
    EXPECT_NE(other.output.find(", which is of 08_timers_easing): "), std::string::npos) << other.output;

    const std::string text = contentOf(folder / "run.txt");
    folder.write("cut.txt", text.substr(0, text.rfind("\nstep ") + 7));
    // A game that fell leaves whole lines without an end.
    folder.write("fallen.txt", text.substr(0, text.rfind("\nstep ") + 1));
    const std::size_t renderer = text.find('"', text.find("\npixels "));
    folder.write("driver.txt", text.substr(0, renderer - 1) + "7 \"another" + text.substr(renderer + 1));
    const struct {
        const char *environment, *says;
        bool good;
    } runs[] = {
        {"KOBALTRIX_REPLAY=cut.txt", ": the recording is cut off", false},
        {"KOBALTRIX_REPLAY=none.txt", "Unable to read the recording at none.txt", false},
        {"KOBALTRIX_REPLAY=fallen.txt", "Replay: the recording ends at step ", true},
        {"KOBALTRIX_REPLAY=driver.txt", "another driver draws here, so pictures are not compared", true},
        {"KOBALTRIX_REPLAY=run.txt KOBALTRIX_RECORD=more.txt", "both set", false},
        {"KOBALTRIX_REPLAY=run.txt KOBALTRIX_REPLAY_PACE=slow", "neither recorded nor fast", false},
        {"KOBALTRIX_REPLAY=run.txt KOBALTRIX_REPLAY_STOP=-1", "no number", false},
        {"KOBALTRIX_REPLAY=run.txt KOBALTRIX_REPLAY_STOP=100000 KOBALTRIX_REPLAY_PICTURE=late.png",
         "there is no picture at late.png", false},
        {"KOBALTRIX_REPLAY=run.txt KOBALTRIX_REPLAY_STOP=9 KOBALTRIX_REPLAY_PICTURE=no/such/at.png",
         "there is no picture at no/such/at.png", false},
        {"KOBALTRIX_RECORD=no/such/run.txt", "Unable to write a recording at no/such/run.txt", false},
        {"KOBALTRIX_RECORD=/dev/full", "The recording cannot be written any more at step 1", true}};
    for (const auto& [environment, says, good] : runs) {
        const Outcome run = example(environment);
        EXPECT_EQ(run.status == 0, good) << environment << run.output;
        EXPECT_NE(run.output.find(says), std::string::npos) << environment << run.output;
    }
}
#endif
} // namespace
