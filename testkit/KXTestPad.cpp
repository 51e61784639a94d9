#include "KobaltrixTest/KXTestPad.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>

KXTestPad::KXTestPad(bool shakes, KXTestPadParts parts) {
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1"); // without a display no window has the focus
    SDL_InitSubSystem(SDL_INIT_JOYSTICK);
    SDL_VirtualJoystickDesc description = {};
    description.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
    description.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER;
    description.naxes = static_cast<Uint16>(parts.axes);
    description.nbuttons = static_cast<Uint16>(parts.buttons);
    description.nhats = static_cast<Uint16>(parts.hats);
    description.name = "Test Pad";
    description.vendor_id = 0x1209; // for tests
    description.product_id = 1;
    description.userdata = this;
    if (shakes)
        description.Rumble = [](void* pad, Uint16 low, Uint16 high) {
            constexpr float strongest = 65535;
            static_cast<KXTestPad*>(pad)->_shaking = {static_cast<float>(low) / strongest,
                                                      static_cast<float>(high) / strongest};
            return 0;
        };
    const int device = SDL_JoystickAttachVirtualEx(&description);
    if (device >= 0)
        _instance = SDL_JoystickGetDeviceInstanceID(device);
}

KXTestPad::~KXTestPad() {
    unplug();
    SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
}

bool KXTestPad::plugged() const { return _instance >= 0; }
KXTestPad::Shaking KXTestPad::shaking() const { return _shaking; }

void KXTestPad::unplug() {
    const int instance = _instance;
    _instance = -1;
    for (int device = 0; instance >= 0 && device < SDL_NumJoysticks(); ++device)
        if (SDL_JoystickGetDeviceInstanceID(device) == instance) {
            SDL_JoystickDetachVirtual(device);
            return;
        }
}

_SDL_Joystick* KXTestPad::_open() const {
    return plugged() ? SDL_JoystickFromInstanceID(_instance) : nullptr;
}

// The platform looks at its joysticks before the next step, and reports all that moved then.
static bool report(int result) {
    SDL_JoystickUpdate();
    return result == 0;
}

bool KXTestPad::setButton(int button, int down) {
    _SDL_Joystick* const pad = _open();
    return pad && report(SDL_JoystickSetVirtualButton(pad, button, down != 0));
}

bool KXTestPad::setHat(int hat, int position) {
    _SDL_Joystick* const pad = _open();
    return pad && report(SDL_JoystickSetVirtualHat(pad, hat, static_cast<Uint8>(position)));
}

bool KXTestPad::setAxis(int axis, int value) {
    _SDL_Joystick* const pad = _open();
    return pad && report(SDL_JoystickSetVirtualAxis(pad, axis,
                                                    static_cast<Sint16>(std::clamp(value, -32768, 32767))));
}

// A part of an axis's way, -1 to 1.
static int valueOf(float part) {
    return part >= -1 ? static_cast<int>(std::lround(std::min(part, 1.0f) * 32767)) : -32768;
}

bool KXTestPad::_set(KXPadButton button, int down) {
    if (button == KXPadLeftTrigger || button == KXPadRightTrigger)
        return trigger(button == KXPadLeftTrigger ? KXPadLeftSide : KXPadRightSide, down ? 1 : 0);
    if (button < KXPadLeftStickLeft)
        return setButton(button, down);
    const int direction = (button - KXPadLeftStickLeft) % 4, stick = (button - KXPadLeftStickLeft) / 4;
    const float way = direction % 2 ? 1.0f : -1.0f;
    return setAxis(2 * stick + direction / 2, down ? valueOf(way) : 0);
}

bool KXTestPad::hold(KXPadButton button) { return _set(button, 1); }
bool KXTestPad::release(KXPadButton button) { return _set(button, 0); }

bool KXTestPad::stick(KXPadSide side, KXPoint place) {
    const bool right = setAxis(2 * side, valueOf(place.x)), down = setAxis(2 * side + 1, valueOf(place.y));
    return right && down;
}

bool KXTestPad::trigger(KXPadSide side, float way) { return setAxis(4 + side, valueOf(2 * way - 1)); }
