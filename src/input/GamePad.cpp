#include "input/GamePad.h"

#include "core/ground/LogicClock.h"
#include "core/ground/Tape.h"
#include "input/Pads.h"

#include <Kobaltrix/KXTypes.h>

#include <SDL.h>

#include <algorithm>
#include <iterator>
#include <new>

namespace {
constexpr int pushed = 16384; // half of an axis's way

constexpr int leftTrigger = 4, rightTrigger = 5;

// Indexed by the number that games give; the platform's bits come in another order.
constexpr int hatBits[_KXGamePadHatCount] = {SDL_HAT_UP, SDL_HAT_DOWN, SDL_HAT_LEFT, SDL_HAT_RIGHT};

bool isInside(int index, int count) { return index >= 0 && index < count; }

bool isPushed(int value) { return value <= -pushed || value >= pushed; }

// Whether to tell of a held input now: the first time, and with repeat again after the delay. The first time
// leaves mark in the report.
bool tell(int& told, int& time, int mark, int repeat) {
    if (told)
        return repeat && _KXRepeatIsDue(time);
    told = mark;
    time = static_cast<int>(_KXLogicCurrentTime);
    return true;
}

// The report a push of the axis counts against; null where the axis does not go in that direction.
_KXGamePadState::Report* findReport(int axis, int direction) {
    if (axis >= leftTrigger)
        return &_KXPad.positive[axis];
    const bool isVertical = axis % 2 != 0;
    if (direction == (isVertical ? KXDirectionUp : KXDirectionLeft))
        return &_KXPad.negative[axis];
    if (direction == (isVertical ? KXDirectionDown : KXDirectionRight))
        return &_KXPad.positive[axis];
    return nullptr;
}

int asFlag(bool value) { return value ? -1 : 0; }

int stickX(int rightStick) { return rightStick ? 2 : 0; }
int stickY(int rightStick) { return rightStick ? 3 : 1; }
} // namespace

static void push(SDL_Event event, unsigned type) {
    event.type = type;
    SDL_PushEvent(&event);
}

// A joystick tells how it is when it is opened. One that KXInitPads() has opened before does it here.
static void tellAnew(SDL_Joystick* pad) {
    SDL_Event event = {};
    event.jaxis.which = SDL_JoystickInstanceID(pad);
    for (int axis = 0; axis < SDL_JoystickNumAxes(pad); ++axis) {
        event.jaxis.axis = static_cast<Uint8>(axis);
        event.jaxis.value = SDL_JoystickGetAxis(pad, axis);
        push(event, SDL_JOYAXISMOTION);
    }
    for (int button = 0; button < SDL_JoystickNumButtons(pad); ++button)
        if ((event.jbutton.state = SDL_JoystickGetButton(pad, button)) == SDL_PRESSED) {
            event.jbutton.button = static_cast<Uint8>(button);
            push(event, SDL_JOYBUTTONDOWN);
        }
    if (SDL_JoystickNumHats(pad) > 0) {
        event.jhat.hat = 0;
        event.jhat.value = SDL_JoystickGetHat(pad, 0);
        push(event, SDL_JOYHATMOTION);
    }
}

int KXInitGamePad() {
    KXDeInitGamePad();
    const auto open = [] {
        if (SDL_WasInit(SDL_INIT_JOYSTICK) && SDL_NumJoysticks() > 0)
            _KXGamePad = SDL_JoystickOpen(0);
        return _KXGamePad != nullptr;
    };
    if (!_KXAnswerTo(_KXQuestion::Pad, open))
        return 0;
    _KXPad = {};
    if (_KXGamePad && _KXIsPad(SDL_JoystickInstanceID(_KXGamePad)))
        tellAnew(_KXGamePad);
    return -1;
}

void KXDeInitGamePad() {
    if (!_KXGamePad && !_KXIsReplaying())
        return;
    // Shutting the joystick subsystem down has closed the pad already.
    if (_KXGamePad && SDL_WasInit(SDL_INIT_JOYSTICK))
        SDL_JoystickClose(_KXGamePad);
    _KXGamePad = nullptr;
    _KXPad = {}; // no release arrives from a closed pad
}

void _KXSetGamePadButton(int b) {
    if (isInside(b, _KXGamePadButtonCount))
        _KXPad.buttons[b] = -1;
}

void _KXUnsetGamePadButton(int b) {
    if (isInside(b, _KXGamePadButtonCount))
        _KXPad.buttons[b] = _KXPad.buttonsTold[b] = 0;
}

void _KXSetHat(int position) {
    _KXPad.hatPosition = position;
    for (int i = 0; i < _KXGamePadHatCount; ++i)
        if (!(position & hatBits[i]))
            _KXPad.hatTold[i] = 0;
}

void _KXSetAxis(int axis, int value) {
    if (isInside(axis, _KXGamePadAxisCount))
        _KXPad.axes[axis] = std::clamp(value, -32768, 32767);
    for (std::size_t i = 0; i < std::size(_KXPad.negative); ++i)
        if (_KXPad.axes[i] > -pushed)
            _KXPad.negative[i].told = 0;
    for (std::size_t i = 0; i < std::size(_KXPad.positive); ++i)
        if (_KXPad.axes[i] < pushed)
            _KXPad.positive[i].told = 0;
}

int _KXGamePadButton(int b, int once, int repeat) {
    if (!isInside(b, _KXGamePadButtonCount) || !_KXPad.buttons[b])
        return 0;
    return asFlag(!once || tell(_KXPad.buttonsTold[b], _KXPad.buttonsTime[b], -1, repeat));
}

int KXGamePadPressedButton() {
    const auto held = std::ranges::find_if(_KXPad.buttons, [](int button) { return button != 0; });
    return held == std::end(_KXPad.buttons) ? -1 : static_cast<int>(held - _KXPad.buttons);
}

int KXGamePadButton(int b) { return _KXGamePadButton(b, 0, 0); }
int KXGamePadButton(int b, int once) { return _KXGamePadButton(b, once, 0); }
int KXGamePadButtonWithDelayedRepeat(int b) { return _KXGamePadButton(b, -1, -1); }

const char* KXGamePadButtonToString(int b) {
    static constexpr const char* names[_KXGamePadButtonCount] = {
        "Button 1",  "Button 2",  "Button 3",  "Button 4",  "Button 5",  "Button 6",
        "Button 7",  "Button 8",  "Button 9",  "Button 10", "Button 11", "Button 12",
        "Button 13", "Button 14", "Button 15", "Button 16"};
    return isInside(b, _KXGamePadButtonCount) ? names[b] : "Unknown";
}

int _KXGamePadHat(int direction, int once, int repeat) {
    if (!isInside(direction, _KXGamePadHatCount + 1))
        return 0;
    const int i = direction % _KXGamePadHatCount; // one direction more than there are: up again
    int& told = _KXPad.hatTold[i];
    if (!(_KXPad.hatPosition & hatBits[i])) {
        told = 0;
        return 0;
    }
    if (!once)
        return 1;
    const int answer = told ? -1 : 1; // a repeat answers as a button's does
    return tell(told, _KXPad.hatTime[i], 1, repeat) ? answer : 0;
}

int KXGamePadHat(int direction) { return _KXGamePadHat(direction, 0, 0); }
int KXGamePadHat(int direction, int once) { return _KXGamePadHat(direction, once, 0); }
int KXGamePadHatWithDelayedRepeat(int direction) { return _KXGamePadHat(direction, -1, -1); }

int KXGamePadAxis(int axis) { return isInside(axis, _KXGamePadAxisCount) ? _KXPad.axes[axis] : 0; }

int _KXGamePadAxis(int axis, int direction, int once, int repeat) {
    const int value = KXGamePadAxis(axis);
    if (!isPushed(value))
        return value;
    if (axis > rightTrigger)
        throw std::bad_alloc();
    _KXGamePadState::Report* report = findReport(axis, direction);
    return !report || !once || tell(report->told, report->time, -1, repeat) ? value : 0;
}

int _KXGamePadStickLeft(int rightStick, int once, int repeat) {
    return asFlag(_KXGamePadAxis(stickX(rightStick), KXDirectionLeft, once, repeat) <= -pushed);
}
int _KXGamePadStickUp(int rightStick, int once, int repeat) {
    return asFlag(_KXGamePadAxis(stickY(rightStick), KXDirectionUp, once, repeat) <= -pushed);
}
int _KXGamePadStickRight(int rightStick, int once, int repeat) {
    return asFlag(_KXGamePadAxis(stickX(rightStick), KXDirectionRight, once, repeat) >= pushed);
}
int _KXGamePadStickDown(int rightStick, int once, int repeat) {
    return asFlag(_KXGamePadAxis(stickY(rightStick), KXDirectionDown, once, repeat) >= pushed);
}

int KXGamePadStickLeft(int rightStick, int once) { return _KXGamePadStickLeft(rightStick, once, 0); }
int KXGamePadStickUp(int rightStick, int once) { return _KXGamePadStickUp(rightStick, once, 0); }
int KXGamePadStickRight(int rightStick, int once) { return _KXGamePadStickRight(rightStick, once, 0); }
int KXGamePadStickDown(int rightStick, int once) { return _KXGamePadStickDown(rightStick, once, 0); }

// A held push to the left is told once and never repeats: games rely on it.
int KXGamePadStickLeftWithDelayedRepeat(int rightStick) { return _KXGamePadStickLeft(rightStick, -1, 0); }
int KXGamePadStickUpWithDelayedRepeat(int rightStick) { return _KXGamePadStickUp(rightStick, -1, -1); }
int KXGamePadStickRightWithDelayedRepeat(int rightStick) { return _KXGamePadStickRight(rightStick, -1, -1); }
int KXGamePadStickDownWithDelayedRepeat(int rightStick) { return _KXGamePadStickDown(rightStick, -1, -1); }

int _KXGamePadLeftTrigger(int once, int repeat) {
    return asFlag(_KXGamePadAxis(leftTrigger, KXDirectionNone, once, repeat) >= pushed);
}
int _KXGamePadRightTrigger(int once, int repeat) {
    return asFlag(_KXGamePadAxis(rightTrigger, KXDirectionNone, once, repeat) >= pushed);
}

int KXGamePadLeftTrigger(int once) { return _KXGamePadLeftTrigger(once, 0); }
int KXGamePadRightTrigger(int once) { return _KXGamePadRightTrigger(once, 0); }
int KXGamePadLeftTriggerWithDelayedRepeat() { return _KXGamePadLeftTrigger(-1, -1); }
int KXGamePadRightTriggerWithDelayedRepeat() { return _KXGamePadRightTrigger(-1, -1); }
