// Recordings: what they hold, that a replay is the run again, and what becomes of damaged ones.

#include <Kobaltrix/Kobaltrix.h>
#include <KobaltrixTest/KXTestPad.h>
#include <KobaltrixTest/KXTestUser.h>

#include "core/dispatch/EventDispatch.h"
#include "core/roof/RecordedEvents.h"
#include "support/Image.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <SDL.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <sstream>

namespace {
TEST(RecordedEvents, ReadBackAsTheyWere) {
    const char* const lines[] = {
        "quit 5",
        "window 1 46 5 640 480",
        "key-down 1 1520 0 4 97 4096",
        "key-up* 1 1521 1 73 1073741897 0",
        "text 2 7 \"\xc3\xa9 \\\" \\\\ \\x0a\"",
        "composition 1 7 -1 2147483647 \"ka\"",
        "long-composition 1 7 0 0 \"longer than the field of others, and that is quite a few bytes\"",
        "mouse-move 1 9 4294967295 1 -5 2147483647 0 -1",
        "mouse-down 1 9 0 3 2 10 20",
        "wheel 1 9 0 1 -1 2 -0.1 0.001",
        "finger-move* 1 9 -7 9223372036854775807 0.3 0.33333334 0 0 1",
        "finger-down 1 9 1 2 nan -inf 1e-45 3.4028235e+38 -0",
        "joystick-axis 3 9 5 -32768",
        "joystick-hat 3 9 0 8",
        "joystick-down 3 9 255",
        "pad-added 0 9",
        "pad-axis 3 9 5 32767",
        "pad-up 3 9 14",
        "drop-file 1 9 \"/home/a b\"",
        "drop-text 1 9 \"\"",
    };
    SDL_Event event;
    bool counts = false;
    for (const std::string line : lines) {
        ASSERT_TRUE(_KXReadEvent(line, event, counts)) << line;
        EXPECT_EQ(_KXLineOfEvent(event, counts), line);
        _KXFreeEvent(event);
        for (std::size_t size = 0; size < line.size(); ++size) // a shorter number is a number, too
            if (_KXReadEvent(line.substr(0, size), event, counts)) {
                EXPECT_TRUE(std::isdigit(line[size]) || line[size] == '.') << line.substr(0, size);
                _KXFreeEvent(event);
            }
        EXPECT_FALSE(_KXReadEvent(line + " 1", event, counts)) << line;
    }
    for (const char* damaged :
         {"", " ", "quit", "quit 99999999999", "key-down 1 1520 0 4 x 0", "nothing 1 2", "text 1 7 \"a\\z\"",
          "text 1 7 \"a\\x0", "text 1 7 \"0123456789012345678901234567890123\"", "wheel 1 9 0 1 -1 2 - 1",
          "pad-axis 3 9 256 0"})
        EXPECT_FALSE(_KXReadEvent(damaged, event, counts)) << damaged;
    event.type = SDL_USEREVENT;
    EXPECT_EQ(_KXLineOfEvent(event, true), "");
}

/// A game in a window whose picture and numbers follow from all that a recording holds.
struct Game {
    Game() { window.setRenderContext(); }

    void step() {
        for (const KXInputEvent& event : KXInputEvents())
            sum = sum * 31 + event.type + event.key + event.button + event.pad +
                  (event.text ? event.text[0] : 0);
        at.x += static_cast<float>(KXRandomize(-3, 3)) + 4 * KXPadStick(0, KXPadLeftSide).x;
        at.y += KXKeyHeld(KXKeyA) ? 1.0f : dice.range(-1.0f, 1.0f);
        sum +=
            static_cast<int>(at.x) + KXMouseX + KXKey(KXKeyB, 1) + KXFingerDown() + (KXFingers().count << 3);
        if (KXKeyWentDown(KXKeyC))
            dice.seed(static_cast<std::uint64_t>(KXTime() * 1e9)); // another one each time
        if (sums.size() == cheatsAt)
            KXRandomize(0, 1);
        sums.push_back(sum);
    }
    void frame() {
        KXPreLogicLoop();
        for (; KXLogicLoop(); KXLogicUpdate())
            step();
        window.setRenderContext();
        KXClear(KXBlueColor);
        KXDrawRectFill({at, {4, 4}}, KXRedColor);
        window.swapBuffers();
        KXPostLogicLoop();
        sum += static_cast<unsigned>(static_cast<std::uint64_t>(KXTime() * 1e6));
        KXWaitForLogicStep();
    }

    KXWindow window{"Recorded", {64, 48}, 1};
    KXRandomGenerator dice{1};
    KXPoint at = {30, 20};
    unsigned sum = 0;
    std::vector<unsigned> sums;
    std::size_t cheatsAt = 1000000; ///< Step in which it draws a number more.
};

struct RecordingTest : testing::Test {
    RecordingTest() {
        EXPECT_EQ(KXInit(), -1);
        KXSetLogicInterval(1000);
        KXSetLogicExact(-1);
        SDL_setenv("KOBALTRIX_RECORD_PIXELS", "7", 1);
    }
    ~RecordingTest() override {
        KXEndRecording();
        KXSetLogicExact(0);
        KXDeInit();
    }

    /// Records a game that somebody plays at random. @return the sums of its steps.
    std::vector<unsigned> record(unsigned seed, unsigned frames) {
        EXPECT_EQ(KXBeginRecording(file.c_str()), -1) << KXError();
        Game game;
        KXTestUser user(game.window);
        KXTestPad pad;
        KXInitPads();
        std::mt19937 random(seed);
        const auto number = [&random](int n) {
            return static_cast<int>(random() % static_cast<unsigned>(n));
        };
        const KXKeyNumber keys[] = {KXKeyA, KXKeyB, KXKeyC, KXKeySpace};
        for (unsigned frame = 0; frame < frames; ++frame) {
            const KXKeyNumber key = keys[number(4)];
            switch (number(9)) {
            case 0:
                user.hold(key);
                break;
            case 1:
                user.release(key);
                break;
            case 2:
                user.move({float(number(64)), float(number(48))});
                break;
            case 3:
                number(2) ? user.hold(KXMouseLeft) : user.release(KXMouseLeft);
                break;
            case 4:
                user.type("t\xc3\xa9xt");
                break;
            case 5:
                number(2) ? user.touch(0, {20, 15}) : user.lift(0);
                break;
            case 6:
                pad.setAxis(number(2), number(65536) - 32768);
                break;
            case 7:
                user.resize({float(40 + number(24)), float(30 + number(18))});
                break;
            default:
                user.wheel(float(number(3) - 1));
            }
            game.frame();
        }
        KXEndRecording();
        KXDeInitPads();
        return game.sums;
    }

    /// Replays it in a game without a user.
    std::vector<unsigned> replay(std::size_t cheatsAt = 1000000) {
        EXPECT_EQ(KXBeginReplay(file.c_str()), -1) << KXError();
        Game game;
        game.cheatsAt = cheatsAt;
        KXInitPads();
        while (KXRecordingStateNow() == KXRecordingReplays) {
            game.frame();
        }
        KXDeInitPads();
        return game.sums;
    }

    void write(const std::string& text) { std::ofstream(_KXFilePath(file), std::ios::binary) << text; }
    std::string text() {
        std::ifstream in(_KXFilePath(file));
        return {std::istreambuf_iterator<char>(in), {}};
    }

    TemporaryFolder folder;
    std::string file = folder / "run.txt";
};

TEST_F(RecordingTest, IsReplayedStepByStep) {
    for (unsigned seed = 1; seed <= 3; ++seed) {
        const std::vector<unsigned> recorded = record(seed, 400);
        std::vector<unsigned> replayed = replay();
        EXPECT_EQ(KXRecordingStateNow(), KXRecordingReplayed) << KXError() << text();
        replayed.resize(recorded.size()); // the frame that finds the end goes on by the clock
        EXPECT_EQ(replayed, recorded) << seed << KXError();
        EXPECT_NE(text().find("\npixels "), std::string::npos);
    }
}

TEST_F(RecordingTest, TellsWhereAReplayGoesApart) {
    record(1, 60);
    replay(20);
    EXPECT_EQ(KXRecordingStateNow(), KXRecordingApart);
    EXPECT_TRUE(std::string(KXError()).starts_with("The replay goes apart at step 22 (line ")) << KXError();
    EXPECT_TRUE(std::string(KXError()).ends_with("other random numbers were drawn")) << KXError();
    // One line less, and one changed.
    const std::string whole = text();
    const std::size_t at = whole.find(' ', whole.find("\npixels ", whole.size() / 2) + 8) + 1;
    std::string changed = whole;
    changed[at] = changed[at] == '0' ? '1' : '0';
    write(changed);
    replay();
    EXPECT_TRUE(std::string(KXError()).ends_with("the picture is another")) << KXError() << changed;
    changed = whole;
    changed.erase(changed.rfind("\nstep "), changed.size());
    write(changed + '\n');
    replay();
    EXPECT_EQ(KXRecordingStateNow(), KXRecordingReplayed) << "the game had fallen there";
}

TEST_F(RecordingTest, HoldsSettingsAndLeavesThePlayersFilesAlone) {
    const std::string kept = folder / "settings.txt", gone = folder / "no folder/settings.txt";
    const auto play = [&] {
        std::string seen;
        KXSettings settings;
        for (const std::string& path : {kept, kept, gone, folder.path()}) {
            seen += std::to_string(settings.load(path.c_str()));
            seen += settings.text("name", "fresh");
            settings.setText("name", "Ada \"\n");
            seen += settings.save() ? " saved. " : std::string(KXError()) + ". ";
        }
        return seen;
    };
    KXBeginRecording(file.c_str());
    const std::string recorded = play();
    KXEndRecording();
    EXPECT_TRUE(recorded.starts_with("0fresh saved. 1Ada \"\n saved. 0fresh" + gone)) << recorded;
    folder.write("settings.txt", "of somebody else");
    KXBeginReplay(file.c_str());
    EXPECT_EQ(play(), recorded) << KXError();
    KXEndRecording();
    EXPECT_EQ(contentOf(kept), "of somebody else");
}

// Whatever is cut off or written over, a recording is refused with its line or replayed as far as it goes.
TEST_F(RecordingTest, DamagedFilesAreRefusedWithTheirLine) {
    record(2, 12);
    const std::string whole = text();
    std::mt19937 random(5);
    for (int i = 0; i < 300; ++i) {
        std::string damaged = whole;
        if (i % 2)
            damaged.resize(random() % damaged.size());
        else
            damaged[random() % damaged.size()] = "\0\n 9x\"\\\xff"[random() % 8];
        write(damaged);
        if (KXBeginReplay(file.c_str()))
            KXEndRecording();
        else
            EXPECT_TRUE(std::string(KXError()).starts_with(file + ":1: the recording is none of a kind") ||
                        (std::string(KXError()).starts_with(file + ":") &&
                         (std::string(KXError()).ends_with("damaged") ||
                          std::string(KXError()).ends_with("cut off"))))
                << KXError();
    }
    const std::string head = "kobaltrix recording 1\nprogram \"nothing\"\n";
    write(head);
    EXPECT_EQ(KXBeginReplay(file.c_str()), 0) << "it never began";
    for (const char* impossible :
         {"begin 1 0", "= w16385", "= h-1", "= n-1", "= n4611686018427387904", "= n9223372036854775807 n1",
          "step 2 0", "step 1 x", "pixels 0 0 \"\"", "end 1", "end\nend", "key-down 1 1 0 4 97"}) {
        write(head + "begin 1 0\n" + impossible + "\n");
        EXPECT_EQ(KXBeginReplay(file.c_str()), 0) << impossible;
        EXPECT_TRUE(std::string(KXError()).ends_with("damaged")) << KXError();
    }
    for (const char* nothing : {"", static_cast<const char*>(nullptr), "/"})
        EXPECT_EQ(KXBeginReplay(nothing) | KXBeginRecording(nothing), 0);
    EXPECT_EQ(KXRecordingStateNow(), KXRecordingNone);
}

TEST_F(RecordingTest, WhatItHeldAndItsPadsEndWithIt) {
    int held = 0;
    KXTestUser user(0, [&held] { held |= KXPadConnected(1) & KXKeyHeld(KXKeyA); });
    const auto replayToItsEnd = [&, this] {
        held = 0;
        EXPECT_EQ(KXBeginReplay(file.c_str()), -1) << KXError();
        for (int i = 0; i < 100 && KXRecordingStateNow() == KXRecordingReplays; ++i)
            user.step();
    };
    EXPECT_EQ(KXInitPads() & KXBeginRecording(file.c_str()), -1);
    {
        KXTestPad first, second;
        user.hold(KXKeyA);
        user.step(3);
        EXPECT_EQ(KXPadConnected(1), -1);
        KXEndRecording();
    }
    user.release(KXKeyA);
    user.step();
    EXPECT_EQ(KXPadConnected(KXAnyPad), 0);
    KXTestPad pad; // comes where nobody listens
    replayToItsEnd();
    EXPECT_EQ(held, -1);
    user.step();
    EXPECT_EQ(KXPadConnected(1) | KXKeyHeld(KXKeyA) | KXKey(KXKeyA, 1), 0);
    EXPECT_STREQ(KXPadName(0), "Test Pad") << "the one that is there";
    // A game may fall in the middle of an answer about pads.
    const std::string whole = text();
    write(whole.substr(0, whole.find('\n', whole.find("pad-added")) + 1));
    replayToItsEnd();
    EXPECT_EQ(KXRecordingStateNow(), KXRecordingReplayed);
}

TEST_F(RecordingTest, ReplacesAnotherWhenItIsWhole) {
    const std::string path = file, before = path + ".before";
    std::ofstream(_KXFilePath(path)) << "kept";
    EXPECT_EQ(KXBeginRecording(path.c_str()), -1);
    EXPECT_EQ(contentOf(before), "kept");
    KXEndRecording();
    EXPECT_FALSE(KXFileExists(before.c_str()));
    EXPECT_EQ(contentOf(path).substr(0, 9), "kobaltrix");
    EXPECT_EQ(KXBeginRecording((path + "/in a file").c_str()), 0);
    EXPECT_EQ(contentOf(path).substr(0, 9), "kobaltrix");
}

TEST_F(RecordingTest, EndsWhereTheDiskIsFull) {
    const char* const full = "/dev/full";
    if (!KXFileExists(full))
        return; // a system without one
    EXPECT_EQ(KXBeginRecording(full), -1) << KXError();
    KXTestUser user;
    user.step();
    EXPECT_EQ(KXRecordingStateNow(), KXRecordingNone);
    EXPECT_STREQ(KXError(), "The recording cannot be written any more at step 1");
    user.step();
    EXPECT_EQ(KXKeyPressed(), 0) << "the game goes on";
}

TEST_F(RecordingTest, HidesWhatIsTypedIntoAMaskedEntry) {
    EXPECT_EQ(KXBeginRecording(file.c_str()), -1);
    KXUITextEntry entry;
    entry.setMasked(1);
    entry.focus();
    KXTestUser user(0, [&entry] { entry.poll(); });
    user.hold(KXKeyS);
    user.type("secr\xc3\xa9t");
    user.release(KXKeyS);
    user.compose("tiara");
    user.step();
    user.compose("");
    user.step(2); // keys are an input method's until then
    KXSetClipboardText("hoard");
    user.hold(KXKeyLeftControl);
    user.hold(KXKeyV);
    user.step(2);
    EXPECT_STREQ(entry.text(), "secr\xc3\xa9thoard");
    user.release(KXKeyLeftControl);
    user.hold(KXKeyQ);
    user.hold(KXKeySpace);
    user.hold(KXKeyPad7);
    user.step();
    entry.unfocus();
    user.release(KXKeyQ); // tells as little
    user.step();
    user.hold(KXMouseLeft); // gives it the keyboard within the step
    user.type("gem");
    user.step();
    KXEndRecording();
    for (const char* hidden :
         {"gem", "secr", "\xc3\xa9", "tiara", " 115 ", "hoard", " 113 ", " 32 ", " 1073741919 "})
        EXPECT_EQ(text().find(hidden), std::string::npos) << hidden;
    std::map<std::string, int> held; // by the key's number: what comes up is what went down
    std::istringstream lines(text());
    for (std::string line; std::getline(lines, line);)
        if (std::string name, window, time, repeat, place, key; line.starts_with("key-")) {
            std::istringstream(line) >> name >> window >> time >> repeat >> place >> key;
            held[key] += name == "key-down" ? 1 : -1;
        }
    EXPECT_EQ(std::ranges::count_if(held, [](const auto& key) { return key.second == 1; }), 3) << text();
    EXPECT_EQ(std::ranges::count_if(held, [](const auto& key) { return key.second < 0; }), 0) << text();
    EXPECT_NE(text().find("\"xxxxxx\""), std::string::npos) << text();
}
} // namespace
