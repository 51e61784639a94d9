// A test of a game as its own project has it: with the kit, and without a header of the platform.

#include <Kobaltrix/Kobaltrix.h>
#include <KobaltrixTest/KobaltrixTest.h>

int main() {
    KXTest test;
    KXWindow window("Game", {64, 48});
    float x = 0;
    KXTestUser user(
        window, [&] { x += KXKeyHeld(KXKeyRight) ? 1.0f : 0.0f; },
        [&] {
            KXClear(KXMakeColori(0, 0, 0, 255));
            KXDrawRectFill({{x, 0}, {1, 48}}, KXMakeColori(74, 154, 166, 255));
        });
    KXTestPad pad;
    KXInitPads();
    user.press(KXKeyRight, 20);
    pad.hold(KXPadStart);
    user.step();
    test.expect(KXPadHeld(0, KXPadStart) == -1, "a pad can be held");
    test.expect(user.look().at(20, 0).g == 154, "the line went along");
    test.expect(KXTime() < 1, "time is the test's");
    return test.result();
}
