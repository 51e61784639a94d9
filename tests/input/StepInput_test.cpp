// What a step tells of its events: state, edges, their order, and nothing lost or told twice.

#include <Kobaltrix/Kobaltrix.h>

#include "InputTest.h"
#include "support/PlatformEvents.h"

#include <gtest/gtest.h>

#include <SDL.h>

#include <map>
#include <memory>
#include <random>
#include <string>

namespace {
/// Gives the platform's events to the library as a frame after another would read them.
struct StepInput : testing::Test {
    StepInput() { EXPECT_EQ(KXInit(), -1); }
    ~StepInput() override { KXDeInit(); }

    static SDL_Event eventOf(unsigned type) {
        SDL_Event event;
        SDL_zero(event);
        event.type = type;
        event.window.windowID = windowID;
        return event;
    }
    static void key(bool down, int keycode, SDL_Scancode position = SDL_SCANCODE_UNKNOWN,
                    bool repeat = false) {
        SDL_Event event = eventOf(down ? SDL_KEYDOWN : SDL_KEYUP);
        event.key.keysym.sym = keycode;
        event.key.keysym.scancode = position;
        event.key.repeat = repeat;
        SDL_PushEvent(&event);
    }
    static void button(bool down, KXMouseButton number) {
        KXTestUser user(windowID);
        down ? user.hold(number) : user.release(number);
    }
    static void finger(unsigned type, int id) {
        SDL_Event event = eventOf(type);
        event.tfinger.windowID = windowID;
        event.tfinger.fingerId = id;
        SDL_PushEvent(&event);
    }
    static void window(Uint8 what) {
        SDL_Event event = eventOf(SDL_WINDOWEVENT);
        event.window.event = what;
        SDL_PushEvent(&event);
    }

    /// Runs one step and gives the words that @a ask makes within it.
    template<class Ask>
    static auto inStep(Ask ask) {
        KXResetLogicLoop();
        KXPreLogicLoop();
        EXPECT_EQ(KXLogicLoop(), -1);
        const auto answer = ask();
        KXLogicUpdate();
        KXPostLogicLoop();
        return answer;
    }

    /// The step's events in short: "+A -A ~A" for keys, "+0 -0" for buttons, texts in quotes, and so on.
    static std::string story() {
        std::string story;
        for (const KXInputEvent& event : KXInputEvents()) {
            const std::string number = std::to_string(event.button), text = event.text ? event.text : "";
            const std::map<KXInputEventType, std::string> words = {
                {KXInputEventKeyDown, std::string("+") + KXKeyName(event.key)},
                {KXInputEventKeyRepeat, std::string("~") + KXKeyName(event.key)},
                {KXInputEventKeyUp, std::string("-") + KXKeyName(event.key)},
                {KXInputEventMouseDown, "+" + number},
                {KXInputEventMouseUp, "-" + number},
                {KXInputEventMouseMoved, "m"},
                {KXInputEventMouseWheel, "w"},
                {KXInputEventText, "'" + text + "'"},
                {KXInputEventComposition, "(" + text + ")"},
                {KXInputEventWindowClosed, "close"},
                {KXInputEventFileDropped, "file:" + text},
                {KXInputEventTextDropped, "drop:" + text}};
            const auto word = words.find(event.type);
            story += (story.empty() ? "" : " ") + (word == words.end() ? "?" : word->second);
        }
        return story;
    }

    static constexpr unsigned windowID = 77; // no window of the library's
};

TEST_F(StepInput, TellsTheEventsOfAStepInTheirOrder) {
    KXTestUser user(windowID);
    user.hold(KXKeyA);
    user.type("x");
    user.move({3, 4});
    user.hold(KXMouseLeft);
    user.release(KXKeyA);
    user.compose("ka");
    user.wheel(1);
    user.release(KXMouseLeft);
    for (const unsigned type : {SDL_DROPFILE, SDL_DROPTEXT}) {
        SDL_Event drop = eventOf(type);
        drop.drop.file = SDL_strdup("there");
        drop.drop.windowID = windowID;
        SDL_PushEvent(&drop);
    }
    window(SDL_WINDOWEVENT_CLOSE);
    const auto tell = [] {
        for (const KXInputEvent& event : KXInputEvents())
            EXPECT_EQ(event.windowID, windowID) << event.type;
        return story();
    };
    EXPECT_EQ(inStep(tell), "+A 'x' m +0 -A (ka) w -0 file:there drop:there close");
    EXPECT_EQ(KXInputEvents().count, 0) << "between steps";
}

// Keys in odd sequences, and what the step then tells of A and of the position of Q.
TEST_F(StepInput, KeysInOddSequences) {
    const auto answer = [] {
        return story() + (KXKeyHeld(KXKeyA) ? " held" : "") + (KXPositionHeld(KXPositionQ) ? " Q" : "");
    };
    key(true, SDLK_a, SDL_SCANCODE_A, true);
    EXPECT_EQ(inStep(answer), "") << "a repeat of what was down before anybody listened";
    key(true, SDLK_a, SDL_SCANCODE_Q);
    key(true, SDLK_a, SDL_SCANCODE_Q, true);
    key(true, SDLK_a, SDL_SCANCODE_Q);
    EXPECT_EQ(inStep(answer), "+A ~A ~A held Q") << "goes down once";
    key(false, SDLK_q, SDL_SCANCODE_Q);
    key(false, SDLK_a, SDL_SCANCODE_Q);
    EXPECT_EQ(inStep(answer), "-A") << "the layout changed meanwhile";
    key(true, SDLK_a);
    key(false, SDLK_a);
    EXPECT_EQ(inStep(answer), "+A -A") << "a key without a place";
    key(true, SDLK_a, SDL_SCANCODE_Q);
    key(true, SDLK_b);
    inStep(answer);
    KXUnsetKeys();
    EXPECT_EQ(inStep(answer), "-A -B");
    key(true, 0);
    key(false, 0x7FFFFFFF, SDL_SCANCODE_UNKNOWN);
    EXPECT_EQ(inStep(answer), "");
}

// What a game does itself in a step is told in the next, so the list that it walks stays.
TEST_F(StepInput, WhatTheGameLetsGoOfIsToldInTheNextStep) {
    key(true, SDLK_a);
    key(true, SDLK_b);
    inStep([] {
        const KXInputEvent* const first = KXInputEvents().first;
        for (int i = 0; i < 3; ++i)
            KXUnsetKeys();
        EXPECT_EQ(story(), "+A +B");
        EXPECT_EQ(KXInputEvents().first, first);
        EXPECT_EQ(KXKeyHeld(KXKeyA) | KXKeyWentUp(KXKeyA), 0);
        return 0;
    });
    EXPECT_EQ(inStep([] { return story() + std::to_string(KXKeyWentUp(KXKeyA)); }), "-A -B1");
    EXPECT_EQ(inStep(story), "");
}

TEST_F(StepInput, NothingStaysHeldInAWindowThatIsClosed) {
    auto window = std::make_unique<KXWindow>("Closed soon", KXSize{20, 20});
    forgetPlatformEvents();
    KXTestUser there(window->id()), elsewhere(windowID);
    there.hold(KXKeyA);
    there.hold(KXMouseLeft);
    there.touch(0, {10, 10});
    elsewhere.hold(KXKeyB);
    inStep(story);
    window.reset();
    forgetPlatformEvents(); // of where the focus went
    EXPECT_EQ(KXKeyHeld(KXKeyA) | KXMouseHeld(KXMouseLeft), 0);
    EXPECT_EQ(inStep([] { return story() + (KXFingers().first->wentUp ? " finger" : ""); }),
              "-A -0 ? finger");
    EXPECT_EQ(KXKeyHeld(KXKeyB), -1);
}

TEST_F(StepInput, EveryKeyHasANumberAndAName) {
    const std::tuple<int, int, const char*> rows[] = {{SDLK_INSERT, KXKeyInsert, "Insert"},
                                                      {SDLK_PAUSE, KXKeyPause, "Pause"},
                                                      {SDLK_APPLICATION, KXKeyMenu, "Menu"},
                                                      {SDLK_MENU, 318, "Other Menu"},
                                                      {SDLK_F24, KXKeyF24, "F24"},
                                                      {0xF6, 1246, "ö"},
                                                      {0x43A, 1000 + 0x43A, "к"},
                                                      {SDLK_SEMICOLON, KXKeySemicolon, ";"},
                                                      {SDLK_COLON, KXKeyColon, ":"},
                                                      {SDLK_KP_7, KXKeyPad7, "Num Pad 7"},
                                                      {SDLK_7, KXKey7, "7"}};
    for (const auto& [keycode, number, name] : rows) {
        key(true, keycode);
        EXPECT_EQ(inStep([number = number] { return KXKeyWentDown(number); }), 1) << name;
        EXPECT_EQ(KXKey(number), number <= 136 ? -1 : 0) << name;
        EXPECT_STREQ(KXKeyName(number), name);
        EXPECT_EQ(KXKeyFromName(name), number) << name;
    }
    for (int number = 1; number <= KXKeyRightControl; ++number)
        if (const std::string name = KXKeyName(number); name != "Unknown") {
            EXPECT_EQ(KXKeyFromName(name.c_str()), number) << name;
        }
    for (const char* name : {"", "Unknown", "nothing", "\xff", static_cast<const char*>(nullptr)})
        EXPECT_EQ(KXKeyFromName(name), 0) << name;
    EXPECT_EQ(KXKeyAtPosition(KXPositionW), KXKeyW);
    for (const int nowhere : {-1, 0, 511, 512, 1 << 30})
        EXPECT_EQ(KXKeyAtPosition(nowhere), 0) << nowhere;
}

TEST_F(StepInput, SumsUpWheelAndMotion) {
    KXTestUser user(windowID);
    for (int i = 1; i <= 3; ++i) {
        user.move({10.0f * float(i), -float(i)});
        user.wheel(1, -2);
    }
    SDL_Event fine = eventOf(SDL_MOUSEWHEEL);
    fine.wheel.preciseY = 0.25f;
    SDL_PushEvent(&fine);
    inStep([] {
        EXPECT_FLOAT_EQ(KXMouseWheel().y, 3.25f);
        EXPECT_FLOAT_EQ(KXMouseWheel().x, -6);
        EXPECT_FLOAT_EQ(KXMouseMotion().x, 30);
        EXPECT_FLOAT_EQ(KXMouseMotion().y, -3);
        return 0;
    });
    EXPECT_EQ(KXMouseWheel().y + KXMouseMotion().x, 0) << "between steps";
}

TEST_F(StepInput, RepeatsByTheTimeOfSteps) {
    for (const unsigned speed : {10u, 30u, 60u, 240u}) {
        KXSetLogicInterval(speed);
        key(true, SDLK_a);
        for (unsigned step = 0, typed = 0; step <= speed; ++step) { // a second
            typed += inStep([] { return KXKeyTyped(KXKeyA); });
            const unsigned time = step * 1000 / speed;
            EXPECT_EQ(typed, time < 500 ? 1 : 2 + (time - 500) / 33) << speed << ' ' << step;
        }
        key(false, SDLK_a);
        EXPECT_EQ(inStep([] { return KXKeyTyped(KXKeyA); }), 0);
    }
}

TEST_F(StepInput, FingersOfARealScreen) {
    const auto fingers = [] {
        std::string all;
        for (const KXFinger& finger : KXFingers())
            all += std::to_string(finger.number) + (finger.wentDown ? "+" : "") + (finger.held ? "h" : "") +
                   (finger.wentUp ? "-" : "") + " ";
        return all + (KXFingerDown() ? "down" : "up");
    };
    button(true, KXMouseLeft);
    finger(SDL_FINGERDOWN, 900);
    EXPECT_EQ(inStep(fingers), "0+h up") << "the one finger misses it";
    finger(SDL_FINGERMOTION, 900);
    finger(SDL_FINGERDOWN, 901);
    EXPECT_EQ(inStep(fingers), "0h 1+h up");
    finger(SDL_FINGERUP, 900);
    finger(SDL_FINGERDOWN, 902);
    EXPECT_EQ(inStep(fingers), "0- 1h 2+h up") << "a number is free after the step";
    finger(SDL_FINGERDOWN, 903);
    finger(SDL_FINGERUP, 903);
    finger(SDL_FINGERUP, 999);
    EXPECT_EQ(inStep(fingers), "1h 2h 0+- down") << "down and up in one step; the one finger misses the end";
    finger(SDL_FINGERMOTION, 904);
    window(SDL_WINDOWEVENT_FOCUS_LOST);
    EXPECT_EQ(inStep(fingers), "1- 2- 0+- down") << "moved without having gone down";
    EXPECT_EQ(inStep(fingers), "down");
}

// Random events, cut into steps and frames at random: what the steps tell, joined, is what was sent.
TEST_F(StepInput, LosesNothingHoweverItIsCut) {
    struct Model {
        bool held = false;
        int downs = 0, ups = 0;
        bool operator==(const Model&) const = default;
        void set(bool now) {
            if (now != held)
                ++(now ? downs : ups);
            held = now;
        }
    };
    const int keycodes[] = {SDLK_a, SDLK_SPACE, SDLK_INSERT, 0xF6};
    const int keys[] = {KXKeyA, KXKeySpace, KXKeyInsert, 1246};
    const KXMouseButton numbers[] = {KXMouseLeft, KXMouseRight, KXMouseForward};
    for (unsigned seed = 0; seed < 20; ++seed) {
        std::mt19937 random(seed);
        const auto chance = [&](unsigned n) { return random() % n == 0; };
        KXTestClock clock;
        KXInit();
        KXResetLogicLoop();
        Model sent[7];
        const auto send = [&] {
            for (int count = static_cast<int>(random() % 6); count > 0; --count) {
                const auto which = random() % 7;
                if (chance(40)) {
                    window(SDL_WINDOWEVENT_FOCUS_LOST);
                    for (Model& model : sent)
                        model.set(false);
                    continue;
                }
                const bool down = chance(8) ? chance(2) : !sent[which].held; // mostly what can happen
                which < 4 ? key(down, keycodes[which], SDL_GetScancodeFromKey(keycodes[which]))
                          : button(down, numbers[which - 4]);
                sent[which].set(down);
            }
        };
        for (int frame = 0; frame < 300; ++frame) {
            clock.advance(chance(10) ? 90 : random() % 25);
            send();
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                for (int i = 0; i < 7; ++i) {
                    const int number = i < 4 ? keys[i] : numbers[i - 4];
                    const Model seen =
                        i < 4
                            ? Model{KXKeyHeld(number) != 0, KXKeyWentDown(number), KXKeyWentUp(number)}
                            : Model{KXMouseHeld(number) != 0, KXMouseWentDown(number), KXMouseWentUp(number)};
                    ASSERT_EQ(seen, sent[i]) << "seed " << seed << ", frame " << frame << ", input " << i;
                    sent[i].downs = sent[i].ups = 0;
                }
                send(); // events come during a step, too
                KXLogicUpdate();
                EXPECT_EQ(KXKeyWentDown(KXKeyA) + KXMouseWentUp(KXMouseLeft), 0);
            }
            KXPostLogicLoop();
        }
        KXDeInit();
    }
}
} // namespace
