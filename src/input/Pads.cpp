#include "input/Pads.h"

#include "core/ground/ErrorSlot.h"
#include "core/ground/LogicClock.h"
#include "core/ground/Tape.h"
#include "input/StepInput.h"

#include <Kobaltrix/KXString.h>

#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {
constexpr int axisCount = 6, sideCount = 2;
constexpr float downFrom = 0.5f, upBelow = 0.4f; // of an axis's way; a stick that trembles stays as it is
constexpr int firstWay = KXPadLeftStickLeft, lastWay = KXPadRightTrigger;

struct Pad {
    bool connected = false;
    SDL_GameController* controller = nullptr; // a pad of a replay has none
    SDL_JoystickID instance = -1;
    float axes[axisCount] = {}; // -1 to 1, or a little beyond it; before the dead zone
    float deadZones[sideCount] = {0.2f, 0.2f};
};

constinit Pad pads[KXMaximumPads];
constinit bool started = false;

bool isRunning() { return started && SDL_WasInit(SDL_INIT_GAMECONTROLLER); }

Pad* padWith(SDL_JoystickID instance) {
    if (!isRunning())
        return nullptr;
    Pad* const found =
        std::ranges::find_if(pads, [=](const Pad& pad) { return pad.connected && pad.instance == instance; });
    return found == std::end(pads) ? nullptr : found;
}

int numberOf(const Pad& pad) { return static_cast<int>(&pad - pads); }

/// The pads that a game's number means, whether they are there or not.
struct Meant {
    Pad *first, *last;
    explicit Meant(int number) : first(pads), last(std::end(pads)) {
        if (number == KXAnyPad)
            return;
        first += std::clamp<int>(number, 0, KXMaximumPads);
        last = number >= 0 && number < KXMaximumPads ? first + 1 : first;
    }
    Pad* begin() const { return first; }
    Pad* end() const { return last; }
};

// The one pad of that number, null if it is not there.
Pad* connectedPad(int number) {
    if (number != KXAnyPad && isRunning())
        for (Pad& pad : Meant(number))
            if (pad.connected)
                return &pad;
    return nullptr;
}

void take(const Pad& pad, KXInputEventType type, std::uint32_t time, int button = 0) {
    KXInputEvent event = {};
    event.type = type;
    event.time = time;
    event.pad = numberOf(pad);
    event.button = button;
    type == KXInputEventPadDown || type == KXInputEventPadUp ? _KXTakeButton(event) : _KXTakeEvent(event);
}

float lengthOf(KXPoint way) { return std::hypot(way.x, way.y); }

KXPoint wayOf(const Pad& pad, int side) { return {pad.axes[2 * side], pad.axes[2 * side + 1]}; }

// A stick beyond its dead zone, which it begins at 0 at; one with a square way counts as if it were round.
KXPoint stickOf(const Pad& pad, int side) {
    const KXPoint way = wayOf(pad, side);
    const float length = lengthOf(way), deadZone = pad.deadZones[side];
    if (length <= deadZone)
        return KXZeroPoint;
    const float scale = (std::min(length, 1.0f) - deadZone) / (1 - deadZone) / length;
    return {way.x * scale, way.y * scale};
}

bool isTrigger(int axis) { return axis >= KXPadLeftTriggerAxis; }

float axisOf(const Pad& pad, int axis) {
    if (isTrigger(axis))
        return pad.axes[axis];
    const KXPoint stick = stickOf(pad, axis / 2);
    return axis % 2 ? stick.y : stick.x;
}

/// A way that counts as a button: an axis, and whether to its end or to its beginning.
struct Way {
    int axis;
    float sign;
};

Way wayWith(int button) {
    if (button >= KXPadLeftTrigger)
        return {button - KXPadLeftTrigger + KXPadLeftTriggerAxis, 1};
    const int i = button - firstWay; // left, right, up, down of either stick
    return {i / 2, i % 2 ? 1.0f : -1.0f};
}

bool isWay(int button) { return button >= firstWay && button <= lastWay; }

bool isHeld(const Pad& pad, int button) {
    const _KXPress* const press = _KXFindPress(_KXHoldable::PadButton, button, numberOf(pad));
    return press && press->held;
}

// Presses a way or lets go of it, as its axis is now.
void pressWay(const Pad& pad, int button, std::uint32_t time) {
    const auto [axis, sign] = wayWith(button);
    const bool rests = !isTrigger(axis) && lengthOf(wayOf(pad, axis / 2)) <= pad.deadZones[axis / 2];
    const float value = rests ? 0 : sign * pad.axes[axis];
    const bool held = isHeld(pad, button);
    if (held ? value < upBelow : value >= downFrom)
        take(pad, held ? KXInputEventPadUp : KXInputEventPadDown, time, button);
}

void pressStick(const Pad& pad, int axis, std::uint32_t time) {
    const int first = firstWay + 2 * axis, towards = pad.axes[axis] > 0 ? 1 : 0;
    pressWay(pad, first + 1 - towards, time); // where it has left comes up before anything goes down
    pressWay(pad, first + towards, time);
}

void openPad(int device, SDL_JoystickID instance, std::uint32_t time) {
    Pad* const free = std::ranges::find(pads, false, &Pad::connected);
    if (free == std::end(pads))
        return;
    free->connected = _KXAnswerTo(_KXQuestion::Pad, [=] {
        free->controller = SDL_GameControllerOpen(device);
        return free->controller != nullptr;
    });
    if (!free->connected)
        return;
    free->instance = instance;
    take(*free, KXInputEventPadConnected, time);
}

void rest(Pad& pad) {
    std::ranges::fill(pad.axes, 0.0f);
    _KXReleasePad(numberOf(pad));
}

void closePad(Pad& pad, std::uint32_t time) {
    if (isRunning()) // else the platform has closed it already
        SDL_GameControllerClose(pad.controller);
    pad.controller = nullptr;
    pad.connected = false;
    rest(pad);
    take(pad, KXInputEventPadDisconnected, time);
}

} // namespace

int KXInitPads() {
    if (!SDL_WasInit(SDL_INIT_JOYSTICK)) {
        _KXReportError("Pads cannot be had before KXInit()");
        return 0;
    }
    if (!isRunning()) {
        KXDeInitPads();
        if (SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) < 0) {
            _KXReportError("Pads cannot be had: %s", SDL_GetError());
            return 0;
        }
        SDL_GameControllerEventState(SDL_ENABLE);
        started = true;
    }
    _KXTakePads(_KXTicks());
    return -1;
}

// What pads have said and nobody has read yet must not be taken for words of the one pad of KXInitGamePad().
static void forgetWaitingEvents() {
    SDL_FilterEvents(
        [](void*, SDL_Event* event) {
            const Pad* const pad = std::ranges::find(pads, event->jbutton.which, &Pad::instance);
            return _KXIsOfJoystick(*event) && pad != std::end(pads) ? 0 : 1;
        },
        nullptr);
}

void KXDeInitPads() {
    for (Pad& pad : pads) {
        if (!pad.connected)
            continue;
        closePad(pad, _KXTicks());
        if (isRunning() && SDL_JoystickFromInstanceID(pad.instance)) // somebody else listens to it
            pad.instance = -1;
    }
    if (isRunning()) {
        forgetWaitingEvents();
        SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
    }
    started = false;
    std::ranges::fill(pads, Pad());
}

bool _KXIsPad(std::int32_t instance) { return padWith(instance) != nullptr; }

void _KXTakePads(std::uint32_t time) {
    const int devices = isRunning() ? _KXAnswerTo(_KXQuestion::Pad, SDL_NumJoysticks) : 0;
    for (int device = 0; device < devices; ++device) {
        const SDL_JoystickID instance = _KXAnswerTo(_KXQuestion::Pad, [device] {
            return SDL_IsGameController(device) ? SDL_JoystickGetDeviceInstanceID(device) : -1;
        });
        if (instance >= 0 && !_KXIsPad(instance))
            openPad(device, instance, time);
    }
}

void _KXLookForPads(std::uint32_t time) {
    if (!isRunning())
        return;
    for (Pad& pad : pads)
        if (pad.connected && !(pad.controller && SDL_GameControllerGetAttached(pad.controller)))
            closePad(pad, time);
    _KXTakePads(time);
}

void _KXLosePad(std::int32_t instance, std::uint32_t time) {
    Pad* const pad = padWith(instance);
    if (!pad)
        return;
    closePad(*pad, time);
    _KXTakePads(time); // one that waits for a number
}

void _KXRestPad(std::int32_t instance) {
    if (Pad* const pad = padWith(instance))
        rest(*pad);
}

void _KXRestPadAxes() {
    for (Pad& pad : pads)
        std::ranges::fill(pad.axes, 0.0f);
}

void _KXTakePadButton(std::int32_t instance, int button, bool down, std::uint32_t time) {
    if (const Pad* const pad = padWith(instance); pad && button < firstWay)
        take(*pad, down ? KXInputEventPadDown : KXInputEventPadUp, time, button);
}

void _KXTakePadAxis(std::int32_t instance, int axis, int value, std::uint32_t time) {
    Pad* const pad = padWith(instance);
    if (!pad || axis < 0 || axis >= axisCount)
        return;
    pad->axes[axis] = static_cast<float>(value) / 32767;
    if (isTrigger(axis))
        return pressWay(*pad, axis - KXPadLeftTriggerAxis + KXPadLeftTrigger, time);
    pressStick(*pad, axis, time);
    pressStick(*pad, axis ^ 1, time); // its other axis may be out of the dead zone now, or in it
}

int KXPadConnected(int pad) {
    const Meant meant(pad);
    return isRunning() && std::ranges::any_of(meant.first, meant.last, &Pad::connected) ? -1 : 0;
}

const char* KXPadName(int pad) {
    const Pad* const found = connectedPad(pad);
    return found ? KXTempString("%s", _KXTextAnswer(SDL_GameControllerName(found->controller)).c_str()) : "";
}

KXPoint KXPadStick(int pad, KXPadSide side) {
    KXPoint furthest = KXZeroPoint;
    if (side == KXPadLeftSide || side == KXPadRightSide)
        for (const Pad& meant : Meant(pad))
            if (const KXPoint stick = stickOf(meant, side); lengthOf(stick) > lengthOf(furthest))
                furthest = stick;
    return furthest;
}

float KXPadAxis(int pad, KXPadAxisNumber axis) {
    float furthest = 0;
    if (axis >= 0 && axis < axisCount)
        for (const Pad& meant : Meant(pad))
            if (const float value = axisOf(meant, axis); std::abs(value) > std::abs(furthest))
                furthest = value;
    return furthest;
}

float KXPadValue(int pad, int button) {
    if (!isWay(button))
        return KXPadHeld(pad, button) ? 1.0f : 0.0f;
    const Way way = wayWith(button);
    float furthest = 0;
    for (const Pad& meant : Meant(pad))
        furthest = std::max(furthest, way.sign * axisOf(meant, way.axis));
    return furthest;
}

int KXSetPadDeadZone(int pad, KXPadSide side, float part) {
    const Meant meant(pad);
    const bool isSide = side == KXPadLeftSide || side == KXPadRightSide;
    if (meant.first == meant.last || !isSide || !(part >= 0 && part < 1)) {
        _KXReportError("A dead zone of %g cannot be set for side %d of pad %d", static_cast<double>(part),
                       static_cast<int>(side), pad);
        return 0;
    }
    for (Pad& one : meant)
        one.deadZones[side] = part;
    return -1;
}

static Uint16 strengthOf(float part) {
    return part > 0 ? static_cast<Uint16>(std::min(part, 1.0f) * 65535) : Uint16(0);
}

int KXRumblePad(int pad, float low, float high, unsigned milliseconds) {
    int shaking = 0;
    if (KXPadConnected(pad)) {
        const bool stops = milliseconds == 0;
        for (const Pad& meant : Meant(pad))
            if (meant.controller &&
                SDL_GameControllerRumble(meant.controller, stops ? Uint16(0) : strengthOf(low),
                                         stops ? Uint16(0) : strengthOf(high), milliseconds) == 0)
                shaking = -1;
    }
    shaking = _KXAnswerTo(_KXQuestion::Pad, [shaking] { return shaking; });
    if (!shaking)
        _KXReportError("Pad %d is not there or cannot shake", pad);
    return shaking;
}

KXPadBattery KXPadBatteryLevel(int pad) {
    const Pad* const found = connectedPad(pad);
    if (!found)
        return KXPadBatteryUnknown;
    switch (_KXAnswerTo(_KXQuestion::Pad, [found] {
        return SDL_JoystickCurrentPowerLevel(SDL_GameControllerGetJoystick(found->controller));
    })) {
    case SDL_JOYSTICK_POWER_EMPTY:
        return KXPadBatteryEmpty;
    case SDL_JOYSTICK_POWER_LOW:
        return KXPadBatteryLow;
    case SDL_JOYSTICK_POWER_MEDIUM:
        return KXPadBatteryMedium;
    case SDL_JOYSTICK_POWER_FULL:
        return KXPadBatteryFull;
    case SDL_JOYSTICK_POWER_WIRED:
        return KXPadBatteryWired;
    default:
        return KXPadBatteryUnknown;
    }
}
