// Somebody who uses the examples: linked into those that react to a user, this presses keys and moves the
// mouse step by step, as real events.

#include "example.h"
#include "testkit/KXTestInput.h"
#include "testkit/KXTestPad.h"

#include <SDL_joystick.h>
#include <SDL_keycode.h>

#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

namespace {
KXTestInput user(1); // in the first window
std::optional<KXTestPad> pad;

/// A click that takes some steps from @a start on.
void click(int step, int start, int x, int y) {
    if (step == start)
        user.moveMouse(x, y);
    if (step == start + 2)
        user.mouseDown();
    if (step == start + 4)
        user.mouseUp();
}

/// A key pressed at @a start and let go some steps later.
void tap(int step, int start, int keycode) {
    if (step == start)
        user.keyDown(keycode);
    if (step == start + 3)
        user.keyUp(keycode);
}

void paintAndSwim(int step) {
    if (step <= 84) {
        const float x = 30 + 4 * static_cast<float>(step);
        user.moveMouse(static_cast<int>(x), static_cast<int>(80 + 40 * std::sin(x / 40)));
    }
    if (step == 6)
        user.mouseDown();
    if (step > 30 && step < 40)
        user.turnWheel(1);
    if (step > 60 && step < 66)
        user.turnWheel(-1);
    if (step == 40)
        user.keyDown(SDLK_RIGHT);
    if (step == 90)
        user.keyDown(SDLK_DOWN);
}

void holdPad(int step) {
    if (step != 10)
        return;
    for (const auto& [axis, value] : {std::pair{0, 26000}, {1, -20000}, {3, 30000}, {4, 12000}, {5, 28000}})
        pad->setAxis(axis, value);
    pad->setButton(0, 1);
    pad->setButton(3, 1);
    pad->setHat(0, SDL_HAT_LEFT);
}

void useWidgets(int step) {
    click(step, 10, 60, 40); // another colour, and another
    click(step, 20, 60, 40);
    if (step == 40)
        user.moveMouse(79, 148); // the knob for the corners
    if (step == 42)
        user.mouseDown();
    if (step > 42 && step < 60)
        user.moveMouse(79 - (step - 42), 148);
    if (step == 62)
        user.mouseUp();
    if (step == 80)
        user.moveMouse(60, 40);
    if (step == 82)
        user.mouseDown(); // held to the end
}

void openMenus(int step) {
    tap(step, 4, SDLK_s); // the stars off, and on
    tap(step, 10, SDLK_s);
    click(step, 20, 40, 28);
    click(step, 30, 40, 50);
    click(step, 40, 120, 72); // the sky at dusk
    click(step, 50, 40, 28);
    click(step, 60, 40, 50);
    if (step == 70)
        user.moveMouse(120, 72);
}

void answer(int step) {
    click(step, 10, 155, 136);
    if (step == 30)
        user.moveMouse(250, 136);
    if (step == 32)
        user.mouseDown(); // held to the end
}

void makeList(int step) {
    if (step == 5)
        user.type("Candles");
    tap(step, 8, SDLK_RETURN);
    click(step, 20, 60, 160); // a row
    tap(step, 30, SDLK_RETURN);
    click(step, 40, 60, 60); // back into the entry
    if (step == 50)
        user.type("Dried app");
    click(step, 60, 60, 130);
}

void playPiano(int step) {
    constexpr int tune[] = {SDLK_a, SDLK_d, SDLK_g, SDLK_f, SDLK_k};
    for (int i = 0; i < 5; ++i)
        tap(step, 30 + 16 * i, tune[i]);
}

struct Script {
    const char* program;
    void (*play)(int step);
};

constexpr Script scripts[] = {
    {"09_keyboard_mouse", paintAndSwim},
    {"10_game_pad", holdPad},
    {"12_widgets", useWidgets},
    {"13_menu", openMenus},
    {"14_dialog", answer},
    {"15_list_entry", makeList},
    {"16_sound_music", playPiano},
};

void play(int step) {
    const std::string_view program = KXApplicationName;
    for (const Script& script : scripts)
        if (program.starts_with(script.program))
            script.play(step);
}

const bool ready = [] {
    afterEachStep = play;
    return pad.emplace().plugged();
}();
} // namespace
