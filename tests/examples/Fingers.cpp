// Somebody who uses the examples: linked into those that react to a user, this presses keys and moves the
// mouse step by step, as real events.

#include "example.h"

#include <SDL.h>

#include <cmath>
#include <cstring>
#include <string_view>

namespace {
constexpr Uint32 window = 1; // the first one

SDL_Point mouse = {0, 0};

void push(SDL_Event event) { SDL_PushEvent(&event); }

void moveMouse(int x, int y) {
    mouse = {x, y};
    SDL_Event event = {};
    event.motion = {SDL_MOUSEMOTION, 0, window, 0, 0, x, y, 0, 0};
    push(event);
}

void leftButton(bool down) {
    SDL_Event event = {};
    event.button.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    event.button.windowID = window;
    event.button.button = SDL_BUTTON_LEFT;
    event.button.state = down ? SDL_PRESSED : SDL_RELEASED;
    event.button.x = mouse.x;
    event.button.y = mouse.y;
    push(event);
}

void turnWheel(int notches) {
    SDL_Event event = {};
    event.wheel = {SDL_MOUSEWHEEL, 0, window, 0, 0, notches, SDL_MOUSEWHEEL_NORMAL, 0, 0, 0, 0};
    push(event);
}

void key(int keycode, bool down) {
    SDL_Event event = {};
    event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.windowID = window;
    event.key.keysym.sym = keycode;
    push(event);
}

void type(const char* text) {
    SDL_Event event = {};
    event.text.type = SDL_TEXTINPUT;
    event.text.windowID = window;
    SDL_strlcpy(event.text.text, text, sizeof event.text.text);
    push(event);
}

/// A click that takes some steps from @a start on.
void click(int step, int start, int x, int y) {
    if (step == start)
        moveMouse(x, y);
    if (step == start + 2)
        leftButton(true);
    if (step == start + 4)
        leftButton(false);
}

/// A key pressed at @a start and let go some steps later.
void tap(int step, int start, int keycode) {
    if (step == start || step == start + 3)
        key(keycode, step == start);
}

void paintAndSwim(int step) {
    if (step <= 84) {
        const float x = 30 + 4 * static_cast<float>(step);
        moveMouse(static_cast<int>(x), static_cast<int>(80 + 40 * std::sin(x / 40)));
    }
    if (step == 6)
        leftButton(true);
    if (step > 30 && step < 40)
        turnWheel(1);
    if (step > 60 && step < 66)
        turnWheel(-1);
    if (step == 40)
        key(SDLK_RIGHT, true);
    if (step == 90)
        key(SDLK_DOWN, true);
}

void holdPad(int step) {
    if (step != 10)
        return;
    SDL_Joystick* pad = SDL_JoystickFromInstanceID(SDL_JoystickGetDeviceInstanceID(0));
    SDL_JoystickSetVirtualAxis(pad, 0, 26000);
    SDL_JoystickSetVirtualAxis(pad, 1, -20000);
    SDL_JoystickSetVirtualAxis(pad, 3, 30000);
    SDL_JoystickSetVirtualAxis(pad, 4, 12000);
    SDL_JoystickSetVirtualAxis(pad, 5, 28000);
    SDL_JoystickSetVirtualButton(pad, 0, 1);
    SDL_JoystickSetVirtualButton(pad, 3, 1);
    SDL_JoystickSetVirtualHat(pad, 0, SDL_HAT_LEFT);
}

void useWidgets(int step) {
    click(step, 10, 60, 40); // another colour, and another
    click(step, 20, 60, 40);
    if (step == 40)
        moveMouse(79, 148); // the knob for the corners
    if (step == 42)
        leftButton(true);
    if (step > 42 && step < 60)
        moveMouse(79 - (step - 42), 148);
    if (step == 62)
        leftButton(false);
    if (step == 80)
        moveMouse(60, 40);
    if (step == 82)
        leftButton(true); // held to the end
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
        moveMouse(120, 72);
}

void answer(int step) {
    click(step, 10, 155, 136);
    if (step == 30)
        moveMouse(250, 136);
    if (step == 32)
        leftButton(true); // held to the end
}

void makeList(int step) {
    if (step == 5)
        type("Candles");
    tap(step, 8, SDLK_RETURN);
    click(step, 20, 60, 160); // a row
    tap(step, 30, SDLK_RETURN);
    click(step, 40, 60, 60); // back into the entry
    if (step == 50)
        type("Dried app");
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
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1"); // no window has the focus
    SDL_InitSubSystem(SDL_INIT_JOYSTICK);
    return SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, 6, 16, 1) >= 0;
}();
} // namespace
