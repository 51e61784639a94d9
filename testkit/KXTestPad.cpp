#include "testkit/KXTestPad.h"

#include <SDL.h>

#include <algorithm>

KXTestPad::KXTestPad(int axes, int buttons, int hats, bool shakes) {
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1"); // without a display no window has the focus
    SDL_InitSubSystem(SDL_INIT_JOYSTICK);
    SDL_VirtualJoystickDesc description = {};
    description.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
    description.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER;
    description.naxes = static_cast<Uint16>(axes);
    description.nbuttons = static_cast<Uint16>(buttons);
    description.nhats = static_cast<Uint16>(hats);
    description.name = "Test Pad";
    description.vendor_id = 0x1209; // for tests
    description.product_id = 1;
    description.userdata = this;
    if (shakes)
        description.Rumble = [](void* pad, Uint16 low, Uint16 high) {
            static_cast<KXTestPad*>(pad)->_shaking = {low, high};
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
