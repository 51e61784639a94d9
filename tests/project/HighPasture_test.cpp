// High Pasture: its levels, as somebody plays it, and as ./play starts it.

#include "Climber.h"
#include "level_editor/Level.h"
#include "support/Golden.h"
#include "support/Program.h"
#include "support/System.h"
#include "support/TemporaryFolder.h"

#include <KobaltrixTest/KXTestPad.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <iterator>
#include <optional>
#include <random>

namespace {
/// The library as the game starts it, in time that passes only where the game waits.
struct HighPasture : testing::Test {
    HighPasture() {
        setVariable("KOBALTRIX_DATA_FOLDER", DEMO_FOLDER "/assets");
        setVariable("KOBALTRIX_USER_FOLDER", folder.path());
        std::string path = DEMO;
        EXPECT_EQ(KXInit(path.data()), -1) << KXError();
        KXApplicationCancelQuitRequest();
    }
    ~HighPasture() override { KXDeInit(); }

    static const LevelScene* levelOf(const Game& game) {
        return dynamic_cast<const LevelScene*>(&game.scene());
    }
    Outcome run(const std::string& arguments) const {
        return runProgram(folder, "KOBALTRIX_REPLAY_PACE=fast '" DEMO "' --headless " + arguments);
    }

    const TemporaryFolder folder;
    KXTestClock clock;
    const Assets assets{DEMO_FOLDER "/assets"};
};

TEST_F(HighPasture, AClimbIsReplayedBitForBit) {
    const Outcome replay = run("--screenshot home.png --replay '" PASTURE "/recordings/meadow.txt'");
    EXPECT_EQ(replay.status, 0);
    for (const char* line : {"Home: 0:", " steps as recorded\n"})
        EXPECT_NE(replay.output.find(line), std::string::npos) << replay.output;
    expectGolden(Image::fromFile(folder / "home.png"), "pasture_home");
}

TEST_F(HighPasture, ShowsTheBeginningByItself) {
    const Outcome shown = run("");
    EXPECT_EQ(shown.status, 0) << shown.output;
    EXPECT_NE(shown.output.find("Replay: stopped at step 50"), std::string::npos) << shown.output;
    expectGolden(Image::fromFile(folder / "high-pasture.png"), "pasture_climb");
}

TEST_F(HighPasture, EachLevelCanBeFinished) {
    for (int number = 0; number < Stage::count; ++number) {
        const Stage stage(assets, number);
        World world(stage);
        const std::string way = contentOf(PASTURE "/recordings/way" + std::to_string(number + 1) + ".txt");
        for (const Input& input : inputsOf(way.substr(0, way.find('\n'))))
            world.step(input);
        EXPECT_TRUE(world.isHome()) << Stage::title(number)
                                    << ": scripts/record-nights looks for another way";
        EXPECT_EQ(world.tumbled(), 0);
        EXPECT_GT(stage.signs.size(), 1u);
        for (const Stage::Sign& sign : stage.signs)
            EXPECT_FALSE(sign.text.empty()) << number;
    }
}

TEST_F(HighPasture, TheMeadowIsALevelOfTheEditor) {
    Level level;
    const std::string meadow = PASTURE "/levels/meadow.tmj";
    ASSERT_TRUE(level.load(meadow.c_str())) << KXError();
    ASSERT_TRUE(level.save((folder / "saved.tmj").c_str())) << KXError();
    EXPECT_EQ(contentOf(folder / "saved.tmj"), contentOf(meadow));
}

// The smallest jump that there is and the largest, one after the edge, and one pressed before the ground.
TEST_F(HighPasture, JumpsForgive) {
    const Stage stage(assets, 0);
    const auto risenBy = [&stage](int held) {
        World world(stage);
        float highest = 0;
        for (int i = 0; i < 90; ++i) {
            world.step({0, i == 5, i >= 5 && i < 5 + held, false});
            highest = std::max(highest, stage.start.y + 1 - world.kid().body.origin.y);
        }
        return highest;
    };
    EXPECT_LT(risenBy(1), 20);
    EXPECT_GT(risenBy(30), 48) << "three tiles";
    EXPECT_LT(risenBy(30), 64);
    const auto jumpsAgain = [&stage](int pressed) { // a second time, in the air or after it
        World world(stage);
        int jumps = 0;
        for (int i = 0; i < 120; ++i) {
            world.step({0, i == 5 || i == pressed, i < 6 || i >= pressed, false});
            for (const Event& event : world.events())
                jumps += event.kind == Event::Jump;
        }
        return jumps == 2;
    };
    int lands = 6;
    for (World world(stage); lands < 90; ++lands) {
        world.step({0, lands == 6, lands == 6, false});
        if (lands > 8 && world.stands())
            break;
    }
    EXPECT_TRUE(jumpsAgain(lands - 4)) << "shortly before the ground";
    EXPECT_FALSE(jumpsAgain(lands - 14));
    const auto jumpsOff = [&stage](int late) { // from the edge of the first hill, which it has run over
        World world(stage);
        bool rose = false;
        int fallen = -1;
        for (int i = 0; i < 400 && !rose; ++i) {
            const bool isOff = world.kid().body.origin.x > 24 * Stage::tile && !world.stands();
            fallen = isOff || fallen >= 0 ? fallen + 1 : -1;
            const bool climbs = fallen < 0 && world.kid().body.origin.x > 13 * Stage::tile &&
                                world.kid().body.origin.x < 17 * Stage::tile;
            world.step({1, fallen == late || (climbs && world.stands()), climbs || fallen >= late, false});
            for (const Event& event : world.events())
                rose |= event.kind == Event::Jump && fallen >= 0;
        }
        return rose;
    };
    EXPECT_TRUE(jumpsOff(3));
    EXPECT_FALSE(jumpsOff(8));
}

TEST_F(HighPasture, ProgressIsKeptAndWhatIsBrokenIsPutAside) {
    const std::string file = folder / "progress.txt";
    Progress progress;
    EXPECT_TRUE(progress.enter(0, 1000, 12));
    EXPECT_FALSE(progress.enter(0, 1200, 20));
    progress.musicVolume = 7;
    progress.save(file);
    Options options;
    options.save = file;
    {
        Game game(options);
        const Progress& read = game.app.progress;
        EXPECT_TRUE(read.open == 2 && read.musicVolume == 7 && read.best[0].steps == 1000 &&
                    read.best[0].flowers == 20);
    }
    const std::string whole = contentOf(file);
    folder.write("progress.txt", whole.substr(0, whole.size() / 2));
    Game game(options);
    EXPECT_EQ(game.app.progress.open, 1);
    EXPECT_EQ(contentOf(folder / "progress.txt.broken"), whole.substr(0, whole.size() / 2));
    game.app.progress.enter(0, 900, 1);
    game.app.progressChanged();
    Progress again;
    again.load(file);
    EXPECT_EQ(again.best[0].steps, 900);
}

TEST_F(HighPasture, AKeyIsChosenAnewAndAnUnpluggedPadPauses) {
    Options options;
    options.save = folder / "progress.txt";
    {
        Game game(options);
        Climber player(game);
        for (const KXKeyNumber key :
             {KXKeyDown, KXKeyDown, KXKeyReturn, KXKeyDown, KXKeyDown, KXKeyReturn, KXKeyX})
            player.press(key); // the options; what jumps; X
        player.press(KXKeyEscape);
    }
    EXPECT_NE(contentOf(folder / "progress.controls").find("\njump: position X\n"), std::string::npos);
    options.level = 2;
    Game game(options);
    Climber player(game);
    std::optional<KXTestPad> pad;
    pad.emplace();
    player.step(4);
    pad->stick(KXPadLeftSide, {0.9f, 0});
    player.step(10);
    ASSERT_TRUE(levelOf(game));
    EXPECT_GT(levelOf(game)->world().speed().x, 1) << "the stick";
    player.hold(KXKeyX);
    player.step();
    EXPECT_LT(levelOf(game)->world().speed().y, 0) << "the new key";
    player.release(KXKeyX);
    pad.reset();
    player.step(2);
    EXPECT_TRUE(levelOf(game)->isPaused());
    player.press(KXKeyP);
    EXPECT_FALSE(levelOf(game)->isPaused());
}

TEST_F(HighPasture, WhoeverPressesAnythingDoesNoHarm) {
    constexpr KXKeyNumber keys[] = {KXKeyLeft,  KXKeyRight, KXKeyRight,  KXKeyRight, KXKeyUp,    KXKeyDown,
                                    KXKeySpace, KXKeySpace, KXKeyReturn, KXKeyP,     KXKeyEscape};
    std::mt19937 random(3);
    const auto below = [&random](unsigned n) { return static_cast<unsigned>(random() % n); };
    for (const int level : {0, 1, 2, 3}) {
        Options options;
        options.headless = true;
        options.level = level;
        Game game(options);
        KXTestUser user(game.app.window.id());
        user.resize({240, 150}); // small pictures are soon drawn
        for (int i = 0; i < 120; ++i) {
            const KXKeyNumber key = keys[below(std::size(keys))];
            below(3) ? user.hold(key) : user.release(key);
            if (below(8) == 0)
                user.move({static_cast<float>(below(240)), static_cast<float>(below(150))});
            if (below(8) == 0)
                below(2) ? user.hold(KXMouseLeft) : user.release(KXMouseLeft);
            clock.advance(250); // fifteen steps for each picture
            game.frame();
            KXApplicationCancelQuitRequest(); // one of the buttons leaves
        }
    }
}

TEST_F(HighPasture, SaysWhatItDoesNotUnderstand) {
    for (const char* arguments : {"--level 4", "--level", "--host 4000"}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_TRUE(outcome.output.starts_with("play: '--")) << outcome.output;
    }
    EXPECT_NE(run("--help").output.find("--level N"), std::string::npos);
    const Outcome games = runProgram(folder, "'" ROOT "/play' --list");
    EXPECT_TRUE(games.output.starts_with("ember-night ")) << games.output;
    EXPECT_NE(games.output.find("\nhigh-pasture "), std::string::npos) << games.output;
}
} // namespace
