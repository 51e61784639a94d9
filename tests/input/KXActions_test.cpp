// Actions: their edges are those of "any of the inputs is held", and files of them are read whole or not.

#include "support/Allocations.h"
#include "support/TemporaryFolder.h"

#include "InputTest.h"
#include "input/InputText.h"
#include "input/StepInput.h"

#include <Kobaltrix/KXError.h>

#include <random>

namespace {
struct Actions : InputTest {
    /// A key with its position, a button of the mouse or of a pad goes down or up.
    static void take(const KXInput& input, bool down) {
        KXInputEvent event = {};
        event.button = input.number;
        event.pad = input.pad;
        switch (input.kind) {
        case KXInputKindPosition:
            event.type = down ? KXInputEventKeyDown : KXInputEventKeyUp;
            event.position = static_cast<KXKeyPosition>(input.number);
            return _KXTakeKey(event, SDL_GetKeyFromScancode(static_cast<SDL_Scancode>(input.number)));
        case KXInputKindMouseButton:
            event.type = down ? KXInputEventMouseDown : KXInputEventMouseUp;
            break;
        default:
            event.type = down ? KXInputEventPadDown : KXInputEventPadUp;
        }
        _KXTakeButton(event);
    }

    /// "held 1 down 2 up 1 value 1"
    std::string tells(const char* action) const {
        return "held " + std::to_string(-actions.held(action)) + " down " +
               std::to_string(actions.wentDown(action)) + " up " + std::to_string(actions.wentUp(action)) +
               " value " + std::to_string(static_cast<int>(actions.value(action)));
    }
    std::string saved() const {
        EXPECT_EQ(actions.save((folder / "saved").c_str()), -1) << KXError();
        return contentOf(folder / "saved");
    }
    int load(const std::string& content) { return actions.load(folder.write("file", content).c_str()); }

    const TemporaryFolder folder;
    KXActions actions;
};

// Everything goes down and up at random; an action's edges are those of a model that knows nothing of steps.
TEST_F(Actions, TellTheEdgesOfAnyOfTheirInputs) {
    const KXInput things[] = {KXInputOfPosition(KXPositionW), KXInputOfPosition(KXPositionSpace),
                              KXInputOfMouse(KXMouseLeft),    KXInputOfMouse(KXMouseForward),
                              KXInputOfPad(KXPadA, 0),        KXInputOfPad(KXPadA, 1),
                              KXInputOfPad(KXPadB, 1)};
    struct Model {
        const char* name;
        std::vector<std::pair<KXInput, std::vector<std::size_t>>> inputs; ///< And the things that hold each.
        bool isHeld = false;
        int downs = 0, ups = 0;
    } models[] = {
        {"one", {{KXInputOfKey(KXKeySpace), {1}}}},
        {"any pad", {{KXInputOfPad(KXPadA, KXAnyPad), {4, 5}}}},
        {"second pad", {{KXInputOfPad(KXPadA, 1), {5}}, {things[6], {6}}}},
        {"all", {{things[0], {0}}, {things[2], {2}}, {things[4], {4}}, {KXInputOfKey(KXKeyW), {0}}}},
        {"none", {}}};
    for (const Model& model : models) {
        actions.bind(model.name, KXInputOfMouse(KXMouseRight)); // which is never pressed
        for (const auto& [input, by] : model.inputs)
            EXPECT_EQ(actions.bind(model.name, input), -1) << KXError();
    }
    bool held[std::size(things)] = {};
    const auto told = [&](const Model& model) {
        return "held " + std::to_string(model.isHeld) + " down " + std::to_string(model.downs) + " up " +
               std::to_string(model.ups) + " value " + std::to_string(model.isHeld);
    };
    const auto set = [&](std::size_t thing, bool down) {
        held[thing] = down;
        for (Model& model : models) {
            bool any = false;
            for (const auto& [input, by] : model.inputs)
                for (const std::size_t i : by)
                    any |= held[i];
            model.downs += any && !model.isHeld;
            model.ups += !any && model.isHeld;
            model.isHeld = any;
        }
    };
    std::mt19937 random(1);
    for (int step = 0; step < 3000; ++step) {
        for (auto events = random() % 5; events > 0; --events) {
            const std::size_t thing = random() % std::size(things);
            const bool down = random() % 8 ? !held[thing] : held[thing];
            take(things[thing], down);
            set(thing, down);
        }
        if (step % 100 == 99) {
            _KXTakeFocus(1, 0, false);
            for (std::size_t thing = 0; thing < std::size(things); ++thing)
                set(thing, false);
        }
        _KXBeginInputStep();
        for (Model& model : models) {
            ASSERT_EQ(tells(model.name), told(model)) << model.name << " in step " << step;
            model.downs = model.ups = 0;
        }
        EXPECT_EQ(allocationsOf([&] { return actions.wentDown("all") + actions.held("all"); }), 0u);
        _KXEndInputStep();
        EXPECT_EQ(actions.wentDown("all") + actions.wentUp("all"), 0) << "between steps";
    }
}

TEST_F(Actions, AreKeptInAFileThatPeopleCanRead) {
    const std::string text = "# What each action is bound to, one input a line.\n"
                             "jump: key Space\njump: position W\njump: mouse Left\njump: pad A\n"
                             "duck: pad2 B\nduck: key ö\nduck: key :\nduck: key Insert\nduck: position #104\n"
                             "rest:\n";
    ASSERT_EQ(load("  jump :key Space \r\n\n#jump: key A\nrest:\n" + text), -1) << KXError();
    const KXInput jump[] = {KXInputOfKey(KXKeySpace), KXInputOfPosition(KXPositionW),
                            KXInputOfMouse(KXMouseLeft), KXInputOfPad(KXPadA, KXAnyPad)};
    ASSERT_EQ(actions.inputs("jump").count, 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(KXInputsAreEqual(actions.inputs("jump").first[i], jump[i])) << i;
    actions = KXActions();
    ASSERT_EQ(load(text), -1);
    EXPECT_EQ(saved(), text);
    KXActions copy(actions);
    ASSERT_EQ(load("duck: mouse #9\nclimb: key up\n"), -1) << KXError();
    EXPECT_STREQ(actions.action(3), "climb");
    EXPECT_EQ(actions.inputs("jump").count, 4) << "what the file does not name stays";
    EXPECT_EQ(actions.inputs("duck").count, 1);
    EXPECT_EQ(copy.inputs("duck").count, 5);
    EXPECT_EQ(copy.count(), 3);
}

TEST_F(Actions, EveryInputHasATextOfItsOwn) {
    std::set<std::string> texts;
    const auto check = [&](const KXInput& input) {
        const std::string text = _KXInputToText(input);
        EXPECT_TRUE(texts.insert(text).second) << text;
        EXPECT_TRUE(KXInputsAreEqual(_KXInputFromText(text), input)) << text;
    };
    for (int position = 1; position < 512; ++position)
        check(KXInputOfPosition(position));
    for (int button = 0; button < 32; ++button)
        if (button < KXMouseWheelDown || button > KXMouseWheelRight)
            check(KXInputOfMouse(button));
    for (const int pad : {-1, 0, 7})
        check(KXInputOfPad(KXPadY, pad));
    const std::pair<KXInput, const char*> shown[] = {{KXInputOfPosition(KXPositionQuote), "\""},
                                                     {KXInputOfPosition(511), "#511"},
                                                     {KXInputOfKey(KXKeyPad7), "Num Pad 7"},
                                                     {KXInputOfMouse(KXMouseBack), "Mouse Back"},
                                                     {KXInputOfPad(KXPadA, KXAnyPad), "Pad A"},
                                                     {KXInputOfPad(KXPadA, 1), "Pad 2 A"},
                                                     {{}, "None"}};
    for (const auto& [input, name] : shown)
        EXPECT_STREQ(KXInputName(input), name);
    const KXInput place = KXInputOfPosition(KXPositionIntlBackslash); // where not every layout has a key
    const int key = KXKeyAtPosition(KXPositionIntlBackslash);
    EXPECT_STREQ(KXInputName(place), key ? KXKeyName(key) : "Beside Left Shift");
}

TEST_F(Actions, BadFilesChangeNothing) {
    load("jump: key Space\nfire: mouse Left\nfire: key F5\n");
    const std::string before = saved();
    std::string manyInputs, manyActions;
    for (int i = 0; i < 300; ++i) {
        manyInputs += "a: position #" + std::to_string(i + 110) + '\n';
        manyActions += 'a' + std::to_string(i) + ":\n";
    }
    const std::pair<std::string, const char*> rows[] = {{"jump\n", "line 1:"},
                                                        {"jump: key\n", "line 1:"},
                                                        {"\njump: key Nothing\n", "line 2:"},
                                                        {"jump: key Space, key A\n", "line 1:"},
                                                        {"jump: mouse #3\n", "line 1:"},
                                                        {"jump: pad9 A\n", "line 1:"},
                                                        {"jump: pad0 A\n", "line 1:"},
                                                        {"jump: pad Z\n", "line 1:"},
                                                        {"jump: position #512\n", "line 1:"},
                                                        {"jump: key A\n: key B\n", "line 2:"},
                                                        {"jump: key F", "line 1:"},
                                                        {"", "line 1:"},
                                                        {std::string("jump: key A\0B\n", 14), "line 1:"},
                                                        {std::string("ju\0mp: key A\n", 13), "line 1:"},
                                                        {std::string(64, 'x') + ":\n", "line 1:"},
                                                        {manyInputs, "line 17:"},
                                                        {manyActions, "line 255:"},
                                                        {std::string(2'000'000, '\n'), "too large"}};
    for (const auto& [content, error] : rows) {
        EXPECT_EQ(load(content), 0) << content.substr(0, 40);
        EXPECT_NE(std::string(KXError()).find(error), std::string::npos) << KXError();
        EXPECT_EQ(saved(), before);
    }
    for (std::size_t length = 0; length < before.size(); ++length) // only a whole line can be missed
        EXPECT_EQ(load(before.substr(0, length)), length && before[length - 1] == '\n' ? -1 : 0) << length;
    for (const char* path : {static_cast<const char*>(nullptr), "", "no/such/file", folder.path().c_str()})
        EXPECT_EQ(actions.load(path) + actions.save(path), 0);
}

TEST_F(Actions, WhatCannotBeIsRefused) {
    const KXInput a = KXInputOfKey(KXKeyA);
    for (const KXInput& input :
         {KXInput{}, KXInputOfKey(0), KXInputOfKey(-1), KXInputOfKey(50), KXInputOfKey(1010),
          KXInputOfKey(1032), KXInputOfKey(1097), KXInputOfPosition(0), KXInputOfPosition(-7),
          KXInputOfMouse(KXMouseWheelUp), KXInputOfMouse(1 << 30), KXInputOfPad(KXPadA, 8),
          KXInputOfPad(KXPadA, -2), KXInputOfPad(1000, 0), KXInput{KXInputKindKey, KXKeyA, 1},
          KXInput{static_cast<KXInputKind>(9), 1, 0}})
        EXPECT_EQ(actions.bind("jump", input), 0) << input.kind << ' ' << input.number;
    for (const char* name : {static_cast<const char*>(nullptr), "", " ", " a", "a ", "a:b", "#a", "a\nb"})
        EXPECT_EQ(actions.bind(name, a) + actions.held(name), 0);
    EXPECT_EQ(actions.count(), 0);
    EXPECT_EQ(actions.held("jmup"), 0);
    EXPECT_NE(std::string(KXError()).find("jmup"), std::string::npos);
    EXPECT_EQ(actions.wentDown("x") + actions.wentUp("x") + actions.unbind("x") + actions.unbind("x", a) +
                  actions.inputs("x").count,
              0);
    EXPECT_EQ(actions.value("x"), 0);
    EXPECT_EQ(actions.action(0), nullptr);
    EXPECT_EQ(actions.action(-1), nullptr);
    EXPECT_EQ(actions.bind("jump", a) + actions.bind("jump", a), -2);
    EXPECT_EQ(actions.inputs("jump").count, 1);
    actions.bind("duck", KXInputOfPad(KXPadA, KXAnyPad));
    EXPECT_STREQ(actions.actionOf(a), "jump");
    EXPECT_STREQ(actions.actionOf(KXInputOfPad(KXPadA, 3)), "duck");
    EXPECT_EQ(actions.actionOf(KXInputOfPosition(KXPositionA)), nullptr);
    EXPECT_EQ(actions.unbind("jump", a), -1);
    EXPECT_EQ(actions.unbind("jump", a), 0);
    EXPECT_EQ(actions.unbind("duck"), -1);
    EXPECT_EQ(actions.count(), 2);
}

TEST_F(Actions, TheNextPressIsTheFirstOfTheStep) {
    const auto next = [](KXInputKind keys) {
        KXInput input = {};
        const int pressed = KXNextPress(&input, keys);
        EXPECT_EQ(pressed, input.kind == KXInputKindNone ? 0 : -1);
        return (input.kind == KXInputKindPosition ? "place of " : "") + std::string(KXInputName(input));
    };
    const auto inStep = [&](KXInputKind keys) {
        _KXBeginInputStep();
        const std::string name = next(keys);
        EXPECT_EQ(KXNextPress(nullptr), 0);
        _KXEndInputStep();
        return name;
    };
    take(KXInputOfPosition(KXPositionW), true);
    take(KXInputOfMouse(KXMouseLeft), true);
    EXPECT_EQ(inStep(KXInputKindKey), "W");
    take(KXInputOfPosition(KXPositionW), false);
    take(KXInputOfPad(KXPadB, 1), true);
    take(KXInputOfPosition(KXPositionW), true);
    EXPECT_EQ(inStep(KXInputKindPosition), "Pad 2 B");
    EXPECT_EQ(inStep(KXInputKindKey), "None");
    take(KXInputOfPosition(KXPositionA), true);
    EXPECT_EQ(inStep(KXInputKindPosition), "place of A");
    take(KXInputOfPosition(KXPositionIntlBackslash), true); // where not every layout has a key
    EXPECT_EQ(inStep(KXInputKindPosition),
              std::string("place of ") + KXInputName(KXInputOfPosition(KXPositionIntlBackslash)));
}
} // namespace
