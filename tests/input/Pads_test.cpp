// Several pads: who comes and goes, what is pressed on which, and where sticks are.

#include <Kobaltrix/Kobaltrix.h>

#include "InputTest.h"
#include "support/TemporaryFolder.h"

#include <cmath>
#include <fstream>
#include <limits>
#include <set>
#include <string>
#include <vector>

namespace {
struct Pads : testing::Test {
    Pads() { EXPECT_EQ(KXInit(), -1); }
    ~Pads() override { KXDeInit(); }
    void SetUp() override {
        if (SDL_NumJoysticks() > 0)
            GTEST_SKIP() << "a real joystick would take a number";
    }

    static std::string events() {
        std::string all;
        for (const KXInputEvent& event : KXInputEvents()) {
            const std::string number = std::to_string(event.pad), button = KXPadButtonName(event.button);
            const bool presses = event.type == KXInputEventPadDown || event.type == KXInputEventPadUp;
            all += all.empty() ? "" : " ";
            all += event.type == KXInputEventPadConnected      ? "come" + number
                   : event.type == KXInputEventPadDisconnected ? "gone" + number
                   : presses ? number + (event.type == KXInputEventPadDown ? "+" : "-") + button
                             : "?";
        }
        return all;
    }
    // State and edges tell the same, of each pad and of all together.
    void compare() {
        for (int pad = KXAnyPad; pad < KXMaximumPads; ++pad)
            for (int button = 0; button <= KXPadRightTrigger; ++button) {
                int& down = held[pad + 1][button];
                down += KXPadWentDown(pad, button) - KXPadWentUp(pad, button);
                EXPECT_EQ(KXPadHeld(pad, button), down ? -1 : 0) << pad << ' ' << button;
            }
    }
    /// Runs a step, and gives what it tells.
    std::string step() {
        user.step();
        EXPECT_EQ(KXPadWentDown(KXAnyPad, KXPadA) + KXPadWentUp(KXAnyPad, KXPadA), 0) << "between steps";
        return told;
    }

    std::string told;
    int held[KXMaximumPads + 1][KXPadRightTrigger + 1] = {};
    KXTestUser user{0, [this] {
                        told = events();
                        compare();
                    }};
};

TEST_F(Pads, ComeAndGoInTheMiddleOfAPress) {
    auto first = std::make_unique<KXTestPad>();
    EXPECT_EQ(step(), "") << "nobody asked for pads";
    EXPECT_EQ(KXInitPads() & KXInitPads(), -1) << KXError();
    EXPECT_EQ(KXPadConnected(0) & KXPadConnected(KXAnyPad), -1);
    EXPECT_STREQ(KXPadName(0), "Test Pad");
    KXTestPad second;
    EXPECT_EQ(step(), "come0 come1");
    for (KXTestPad* pad : {first.get(), &second})
        pad->setButton(0, 1);
    second.setButton(3, 1);
    second.setButton(3, 0);
    EXPECT_EQ(step(), "0+A 1+A 1+Y 1-Y");
    first->setAxis(0, 32767);
    first->unplug();
    EXPECT_EQ(step(), "0+Left Stick Right 0-Left Stick Right 0-A gone0");
    EXPECT_EQ(KXPadConnected(0) | KXPadHeld(0, KXPadA), 0);
    EXPECT_EQ(KXPadStick(0, KXPadLeftSide).x, 0);
    EXPECT_EQ(KXPadHeld(1, KXPadA) & KXPadHeld(KXAnyPad, KXPadA), -1);

    std::vector<std::unique_ptr<KXTestPad>> more(8);
    for (auto& pad : more)
        pad = std::make_unique<KXTestPad>();
    EXPECT_EQ(step(), "come0 come2 come3 come4 come5 come6 come7");
    EXPECT_FALSE(more[7]->setButton(0, 1)) << "nobody listens to the ninth";
    more[2]->setButton(1, 1);
    more[2]->unplug();
    EXPECT_EQ(step(), "3+B 3-B gone3 come3") << "its number is the ninth's now";
    EXPECT_TRUE(more[7]->setButton(1, 1));
    EXPECT_EQ(step(), "3+B");
    KXDeInitPads();
    EXPECT_EQ(step(), "gone0 1-A gone1 gone2 3-B gone3 gone4 gone5 gone6 gone7");
    EXPECT_EQ(KXPadConnected(KXAnyPad), 0);
    EXPECT_FALSE(second.setButton(0, 0)) << "nobody listens";
    EXPECT_EQ(KXInitPads(), -1);
    SDL_Quit(); // and with it the pads
    EXPECT_EQ(KXPadConnected(0), 0);
    EXPECT_STREQ(KXPadName(0), "");
    KXDeInitPads();
}

TEST_F(Pads, SticksAndTriggersAreButtonsToo) {
    KXTestPad pad;
    KXInitPads();
    EXPECT_EQ(step(), "come0") << "triggers that rest at their end are up";
    const struct {
        int axis;
        std::vector<int> values; // between two steps
        const char* story;
    } rows[] = {
        {0, {16383}, ""},
        {0, {16384}, "0+Left Stick Right"},
        {0, {13200, 16000}, ""}, // trembles
        {0, {13000}, "0-Left Stick Right"},
        {0, {20000}, "0+Left Stick Right"},
        {0, {-32768, 0}, "0-Left Stick Right 0+Left Stick Left 0-Left Stick Left"},
        {1, {-32768, 32767, 0}, "0+Left Stick Up 0-Left Stick Up 0+Left Stick Down 0-Left Stick Down"},
        {2, {-32768, 0}, "0+Right Stick Left 0-Right Stick Left"},
        {3, {32767, 0}, "0+Right Stick Down 0-Right Stick Down"},
        {4, {32767, -32768, 32767}, "0+Left Trigger 0-Left Trigger 0+Left Trigger"},
        {5, {-10}, ""}, // half of its way, nearly
        {5, {10, -32768}, "0+Right Trigger 0-Right Trigger"},
    };
    for (const auto& [axis, values, story] : rows) {
        for (const int value : values)
            pad.setAxis(axis, value);
        EXPECT_EQ(step(), story) << axis << ' ' << values[0];
    }
    EXPECT_FLOAT_EQ(KXPadValue(0, KXPadLeftTrigger), 1);
    KXSetPadDeadZone(0, KXPadLeftSide, 0.8f);
    pad.setAxis(0, 20000);
    EXPECT_EQ(step(), "") << "in the dead zone nothing is pushed";
    pad.setAxis(1, 20000);
    EXPECT_EQ(step(), "0+Left Stick Down 0+Left Stick Right");
    pad.setAxis(1, 0);
    EXPECT_EQ(step(), "0-Left Stick Down 0-Left Stick Right");
}

TEST_F(Pads, DeadZonesAreRoundAndBeginAtNothing) {
    KXTestPad pad, other;
    KXInitPads();
    step();
    EXPECT_EQ(KXSetPadDeadZone(KXAnyPad, KXPadRightSide, 0), -1);
    const float all = 32767;
    const struct {
        float deadZone, x, y, length;
    } rows[] = {{0.2f, 0.2f, 0, 0},     {0.2f, 0, -0.6f, 0.5f},  {0.2f, 1, 0, 1},
                {0.2f, 1, -1, 1},       {0.2f, 0.14f, 0.14f, 0}, {0.2f, 0.6f, 0.6f, 0.8107f},
                {0, 0.01f, 0, 0.01f},   {0.9f, 0.95f, 0, 0.5f},  {0.5f, -0.45f, 0.6f, 0.5f},
                {0, -32768 / all, 0, 1}};
    for (const auto& [deadZone, x, y, length] : rows) {
        EXPECT_EQ(KXSetPadDeadZone(0, KXPadLeftSide, deadZone), -1);
        for (const int side : {0, 2}) {
            pad.setAxis(side, static_cast<int>(std::lround(x * all)));
            pad.setAxis(side + 1, static_cast<int>(std::lround(y * all)));
        }
        step();
        const KXPoint stick = KXPadStick(0, KXPadLeftSide), right = KXPadStick(0, KXPadRightSide);
        EXPECT_NEAR(std::hypot(stick.x, stick.y), length, 1e-3) << x << ' ' << y;
        EXPECT_NEAR(stick.x * y, stick.y * x, 1e-3) << "keeps its direction";
        EXPECT_NEAR(std::hypot(right.x, right.y), std::min(1.0f, std::hypot(x, y)), 1e-3);
        EXPECT_EQ(KXPadAxis(0, KXPadLeftStickX), stick.x);
        EXPECT_EQ(KXPadAxis(KXAnyPad, KXPadLeftStickY), stick.y);
        EXPECT_EQ(KXPadStick(KXAnyPad, KXPadLeftSide).x, stick.x);
        EXPECT_EQ(KXPadValue(KXAnyPad, KXPadLeftStickLeft), KXMaxf(0, -stick.x));
        EXPECT_EQ(KXPadValue(0, KXPadRightStickDown), KXMaxf(0, right.y));
    }
    for (const float bad : {-0.1f, 1.0f, std::numeric_limits<float>::quiet_NaN(), HUGE_VALF})
        EXPECT_EQ(KXSetPadDeadZone(0, KXPadLeftSide, bad), 0) << bad;
    EXPECT_EQ(KXPadStick(0, KXPadLeftSide).x, -1) << "the one before stays";
}

TEST_F(Pads, LetGoWhenAWindowLosesTheKeyboard) {
    KXTestPad pad;
    KXInitPads();
    pad.setButton(9, 1);
    pad.setAxis(2, 32767);
    EXPECT_EQ(step(), "come0 0+Left Shoulder 0+Right Stick Right");
    SDL_Event event = {};
    event.type = SDL_WINDOWEVENT;
    event.window.event = SDL_WINDOWEVENT_FOCUS_LOST;
    SDL_PushEvent(&event);
    EXPECT_EQ(step(), "0-Left Shoulder 0-Right Stick Right ?");
    EXPECT_EQ(KXPadAxis(0, KXPadRightStickX), 0);
    pad.setButton(9, 0);
    pad.setAxis(2, 32000);
    EXPECT_EQ(step(), "0+Right Stick Right");
}

TEST_F(Pads, TheOnePadHearsOfNoOther) {
    KXTestPad one, other;
    ASSERT_EQ(KXInitGamePad() & KXInitPads(), -1);
    for (KXTestPad* pad : {&one, &other}) {
        pad->setButton(2, 1);
        pad->setAxis(0, 30000);
        pad->setHat(0, SDL_HAT_UP);
        step();
        const bool isOne = pad == &one;
        EXPECT_EQ(KXGamePadPressedButton(), isOne ? 2 : -1);
        EXPECT_EQ(KXGamePadAxis(KXGamePadLeftStickX), isOne ? 30000 : 0);
        EXPECT_EQ(KXGamePadHat(KXHatUp), isOne ? 1 : 0);
        EXPECT_EQ(KXPadHeld(isOne ? 0 : 1, KXPadX), -1);
        pad->setButton(2, 0);
        pad->setAxis(0, 0);
        pad->setHat(0, 0);
        step();
    }
    one.setButton(4, 1);
    one.setAxis(3, -20000);
    one.setHat(0, SDL_HAT_LEFT);
    step();
    EXPECT_EQ(KXInitGamePad(), -1); // forgets what was held
    EXPECT_EQ(KXGamePadPressedButton(), -1);
    step();
    EXPECT_EQ(KXGamePadPressedButton(), 4) << "an opened pad tells how it is";
    EXPECT_EQ(KXGamePadAxis(KXGamePadRightStickY), -20000);
    EXPECT_EQ(KXGamePadAxis(KXGamePadLeftTriggerAxis), -32768);
    EXPECT_EQ(KXGamePadHat(KXHatLeft), 1);
    one.setButton(4, 0);
    one.setButton(5, 1);
    other.setButton(1, 1); // nobody reads it before it is let go
    KXDeInitPads();
    step();
    EXPECT_EQ(KXGamePadPressedButton(), 5);
}

TEST_F(Pads, LearnOtherLayouts) {
    KXTestPad pad;
    char guid[33];
    SDL_JoystickGetGUIDString(SDL_JoystickGetDeviceGUID(0), guid, sizeof guid);
    const std::string good = std::string(guid) + ",Mine,a:b1,b:b0,leftx:a1,",
                      here = std::string("platform:") + SDL_GetPlatform();
    KXInitPads();
    pad.setButton(0, 1);
    EXPECT_EQ(step(), "come0 0+A");
    for (const std::string& bad : {std::string("\n\n"), std::string("hello,world,a:b0"), "# " + good,
                                   good.substr(0, 38), good.substr(0, 32), "Z" + good.substr(1)})
        EXPECT_EQ(KXAddPadMappings(bad.c_str()), 0) << bad;
    EXPECT_EQ(KXAddPadMappings(nullptr), 0);
    EXPECT_STRNE(KXError(), "");
    EXPECT_EQ(step(), "");
    const std::string text = "# comment\r\n" + good + "platform:Elsewhere,\r\n\n" + good + here;
    EXPECT_EQ(KXAddPadMappings(text.c_str()), 1);
    EXPECT_EQ(step(), "0-A") << "what was held goes up with the old layout";
    pad.setButton(0, 0);
    pad.setButton(0, 1);
    pad.setAxis(1, 32767);
    EXPECT_EQ(step(), "0+B 0+Left Stick Right");

    for (const char* fields : {"a:b2,hint:", "a:b3,hint:!"})
        KXAddPadMappings((good.substr(0, 38) + fields + "SDL_GAMECONTROLLER_USE_BUTTON_LABELS:=1,").c_str());
    pad.setButton(3, 1);
    EXPECT_EQ(step(), "0-B 0-Left Stick Right 0+A") << "named for where it lies, not for its label";

    const TemporaryFolder folder;
    const std::string path = folder / "pads.txt";
    std::ofstream(_KXFilePath(path)) << text << '\n'
                                     << std::string(guid).replace(0, 8, "03000000") << ",Other,a:b0,";
    EXPECT_EQ(KXLoadPadMappings(path.c_str()), 2);
    for (const char* bad : {"", "/nowhere/pads.txt", "/", static_cast<const char*>(nullptr)})
        EXPECT_EQ(KXLoadPadMappings(bad), 0);
}

TEST_F(Pads, ShakeIfTheyCan) {
    KXTestPad still(false), shaker;
    KXInitPads();
    step();
    EXPECT_EQ(KXRumblePad(0, 1, 1, 100), 0);
    EXPECT_STRNE(KXError(), "");
    const auto shakes = [&](float low, float high, unsigned time) {
        EXPECT_EQ(KXRumblePad(1, low, high, time), -1);
        return std::pair(shaker.shaking().low, shaker.shaking().high);
    };
    EXPECT_EQ(shakes(0.5f, 7, 10), std::pair(32767 / 65535.0f, 1.0f));
    EXPECT_EQ(shakes(-1, std::numeric_limits<float>::quiet_NaN(), ~0u), std::pair(0.0f, 0.0f));
    EXPECT_EQ(KXRumblePad(KXAnyPad, 1, 0, 10), -1);
    EXPECT_EQ(shaker.shaking().low, 1);
    EXPECT_EQ(shakes(1, 1, 0), std::pair(0.0f, 0.0f)) << "no time";
    EXPECT_EQ(KXPadBatteryLevel(0), KXPadBatteryUnknown);
}

// Numbers that are none, with pads and without, and before there can be any.
TEST_F(Pads, TakeAnyNumber) {
    KXTestPad plugged;
    for (int times = 0; times < 2; ++times, KXInitPads())
        for (const int number : {-1 << 30, -2, 8, 1 << 30}) {
            EXPECT_EQ(KXPadConnected(number) | KXPadHeld(number, 0) | KXPadHeld(0, number) |
                          KXPadWentDown(number, number) | KXPadWentUp(number, number) |
                          KXRumblePad(number, 1, 1, 1) | KXSetPadDeadZone(number, KXPadLeftSide, 0) |
                          KXSetPadDeadZone(0, static_cast<KXPadSide>(number), 0),
                      0);
            EXPECT_EQ(KXPadValue(number, number) + KXPadStick(number, KXPadLeftSide).x +
                          KXPadStick(0, static_cast<KXPadSide>(number)).x +
                          KXPadAxis(0, static_cast<KXPadAxisNumber>(number)) +
                          KXPadAxis(number, KXPadLeftStickX),
                      0);
            EXPECT_STREQ(KXPadName(number), "");
            EXPECT_EQ(KXPadBatteryLevel(number), KXPadBatteryUnknown);
        }
    KXDeInit();
    KXDeInitPads();
    SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
    EXPECT_EQ(KXInitPads() | KXAddPadMappings("text"), 0);
    EXPECT_STRNE(KXError(), "");
    KXInit();
}

TEST(PadButtons, HaveNamesOfTheirOwn) {
    std::set<std::string> names;
    for (int button = -2; button < 50; ++button)
        if (const std::string name = KXPadButtonName(button); name != "Unknown") {
            EXPECT_EQ(KXPadButtonFromName(name.c_str()), button);
            EXPECT_TRUE(names.insert(name).second) << name;
        }
    EXPECT_EQ(names.size(), 31u);
    for (const char* none : {"", "Unknown", "a", static_cast<const char*>(nullptr)})
        EXPECT_EQ(KXPadButtonFromName(none), -1);
}
} // namespace
