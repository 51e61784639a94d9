// The game: from the inside, as somebody plays it, and as ./play starts it.

#include "EmberNight.h"
#include "LevelScene.h"
#include "Wire.h"
#include "net/NetTest.h"
#include "support/Golden.h"
#include "support/Program.h"

#include <cstdlib>
#include <deque>

namespace {
struct Demo : EmberNightTest {
    Outcome run(const std::string& arguments) const {
        return runProgram(folder, "'" DEMO "' --headless " + arguments);
    }
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

TEST_F(Demo, ShowsTheBeginningOfANightByItself) {
    const Outcome shown = run("");
    EXPECT_EQ(shown.status, 0) << shown.output;
    EXPECT_NE(shown.output.find("Replay: stopped at step 600\n"), std::string::npos) << shown.output;
    expectGolden(shot("ember-night.png"), "demo_night");
}

/// Two of these programs play with each other, each by its own clock; the guest tries until the host waits.
TEST(Night, HostAndGuestSeeEachOtherMove) {
    const char* const host = std::getenv("HOST_OF_GUEST");
    const TemporaryFolder folder;
    useFolders(folder);
    std::string path = DEMO;
    ASSERT_EQ(KXInit(path.data()), -1);
    std::srand(1); // where bats come from is chance, and who meets one walks no further
    Options options;
    options.headless = true;
    options.night = 10;
    options.nights = 1;
    options.frames = 6000;
    options.screenshot = folder / "end.png";
    std::optional<Program> guest;
    if (host) {
        options.join = host;
    } else {
        options.hostPort = portOf(KXNetworkServer("127.0.0.1", 0, 1, 0, 1));
        guest.emplace(folder, "HOST_OF_GUEST=localhost:" + std::to_string(options.hostPort) +
                                  " '" SELF "' --gtest_filter='Night.*'");
        testing::internal::CaptureStdout();
    }
    {
        Game game(options);
        KXTestUser user(game.app.window.id());
        user.hold(host ? KXKeyRight : KXKeyLeft);
        while (game.frame()) {
        }
        EXPECT_TRUE(game.isGood());
    }
    KXDeInit();
    // At dawn coats have the colours they were painted in.
    const Image image = Image::fromFile(options.screenshot);
    const int teal = columnOf(image, {0x4a, 0x9a, 0xa6, 255});
    EXPECT_TRUE(0 < teal && teal < 300) << teal;
    EXPECT_GT(columnOf(image, {0xc0, 0x5c, 0x74, 255}), 520);
    if (host)
        return;
    const std::string output = testing::internal::GetCapturedStdout();
    const std::string score = output.substr(0, output.find('\n') + 1);
    const Outcome guested = guest->finish();
    EXPECT_TRUE(guested.status == 0 && score.starts_with("Score: ")) << output << guested.output;
    EXPECT_NE(guested.output.find(score), std::string::npos) << output << guested.output;
}

TEST_F(Demo, OnlyWhoGreetsTakesTheGuestsPlace) {
    Options options;
    options.hostPort = portOf(KXNetworkServer("127.0.0.1", 0, 1, 0, 1));
    Game game(options);
    Keeper keeper(game);
    const auto comesTrue = [&keeper](auto condition) {
        return eventually([&] {
            keeper.step();
            return condition();
        });
    };
    const RawPeer silent("127.0.0.1", options.hostPort), browser("127.0.0.1", options.hostPort),
        player("127.0.0.1", options.hostPort);
    browser.send("GET / HTTP/1.1\r\n\r\n" + marker);
    player.send(std::string(8, 0) + marker);
    EXPECT_TRUE(comesTrue([&] { return browser.isClosed() && player.isClosed(); }));
    EXPECT_FALSE(silent.isClosed());
    std::deque<RawPeer> crowd;
    for (int i = 2; i < 40; ++i) { // each from a machine of its own
        crowd.emplace_back("127.0.0." + std::to_string(i), options.hostPort);
        keeper.step();
    }
    EXPECT_TRUE(silent.isClosed() && crowd[0].isClosed() && !crowd.back().isClosed());
    KXNetworkClient guest;
    KXNetworkBuffer greeting;
    writeGreeting(greeting);
    EXPECT_TRUE(guest.connect("127.0.0.1", options.hostPort) && guest.send(&greeting) > 0);
    EXPECT_TRUE(comesTrue([&] { return dynamic_cast<const LevelScene*>(&game.scene()); }));
    EXPECT_TRUE(crowd.back().isClosed());
    EXPECT_TRUE(comesTrue([&] { return take(guest.receive()); })) << "a picture of the night";
}

TEST_F(Demo, RecordsAndReplays) {
    const Outcome recorded = run("--frames 60 --record night.txt --screenshot first.png");
    EXPECT_EQ(recorded.status, 0) << recorded.output;
    const Outcome replayed = run("--frames 60 --replay night.txt --screenshot second.png");
    EXPECT_EQ(replayed.status, 0) << replayed.output;
    EXPECT_NE(replayed.output.find(" steps as recorded\n"), std::string::npos) << replayed.output;
    EXPECT_EQ(differingPixels(shot("first.png"), shot("second.png")), 0);
}

TEST_F(Demo, SettingsAndScoresAreKept) {
    Options options;
    const auto enterName = [&options] {
        Game game(options);
        Keeper keeper(game);
        keeper.clicks({{400, 380}, {400, 252}}); // the options; the name
        keeper.types("ilse");
        keeper.clicks({{370, 320}, {400, 352}}); // whether the world shakes; back
    };
    options.save = folder / "game.save";
    enterName();
    const std::string kept = contentOf(folder / "game.save");
    EXPECT_NE(kept.find("ilse"), std::string::npos);
    Settings settings;
    settings.load(options.save);
    EXPECT_FALSE(settings.shakes);
    options.save = folder / "cut.save";
    for (std::size_t length : {std::size_t(0), std::size_t(5), kept.size() / 2, kept.size() - 1}) {
        folder.write("cut.save", kept.substr(0, length)); // what is cut off is forgotten, no more
        enterName();
        EXPECT_NE(contentOf(options.save).find("ilse"), std::string::npos) << length;
    }
    // What an older game wrote.
    const std::string old = folder / "old.save";
    FILE* const file = KXOpenFile(old.c_str(), "w");
    for (const long number : {2L, 300L, 12L})
        KXPutL(number, file);
    KXPutString("Ada", file);
    KXPutL(1, file);
    KXPutString("Bo", file);
    KXPutL(77, file);
    fclose(file);
    for (int times = 0; times < 2; ++times) { // which is a text from then on
        Settings loaded;
        loaded.load(old);
        EXPECT_EQ(loaded.name + std::to_string(loaded.soundVolume) + std::to_string(loaded.musicVolume),
                  "Ada12812");
        ASSERT_EQ(loaded.scores.size(), 1u);
        EXPECT_EQ(loaded.scores[0].name + std::to_string(loaded.scores[0].points), "Bo77");
        EXPECT_TRUE(contentOf(old).starts_with("kobaltrix settings 1\n"));
    }
    EXPECT_TRUE(KXFileExists((playersFolder / "log.txt").c_str()));
}

TEST_F(Demo, KeysAreChosenAnew) {
    Options options;
    options.save = folder / "game.save";
    const auto intoControls = [](Keeper& keeper) { keeper.clicks({{400, 380}, {400, 292}}); };
    {
        Game game(options);
        Keeper keeper(game);
        intoControls(keeper);
        // The first player's hop gets what was the second's way up, in a tap; Escape leaves the left as it
        // was.
        keeper.click({200, 284});
        keeper.hold(KXKeyW);
        keeper.release(KXKeyW);
        keeper.step(2);
        expectGolden(lookAt(game), "demo_controls");
        keeper.presses({KXKeyDown, KXKeyDown, KXKeyDown, KXKeyReturn, KXKeyEscape});
    }
    const std::string kept = contentOf(folder / "game.controls");
    for (const char* line :
         {"\nfirst hop: position W\n", "\nfirst left: position Left\n", "\nfirst hop: pad1 A\n"})
        EXPECT_NE(kept.find(line), std::string::npos) << line << kept;
    EXPECT_EQ(kept.find("second up: position W"), std::string::npos);
    const auto look = [&] {
        Game game(options);
        Keeper keeper(game);
        intoControls(keeper);
        return lookAt(game);
    };
    const Image chosen = look();
    folder.write("game.controls", "first hop: position\n"); // which is none: the defaults are used
    const Image damaged = look();
    std::filesystem::remove(_KXFilePath(folder / "game.controls"));
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
    for (const char* arguments : {"--replay none.txt", "--frames 1 --record no/such/folder/night.txt",
                                  "--frames 1 --screenshot no/such/folder/shot.png"}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 1) << arguments;
        EXPECT_TRUE(outcome.output.starts_with("play: Unable to ")) << outcome.output;
    }
    const Outcome help = run("--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.output.find("--screenshot FILE"), std::string::npos);
}
} // namespace
