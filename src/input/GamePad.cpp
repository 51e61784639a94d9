#include "input/GamePad.h"

#include "core/ground/LogicClock.h"

#include <Kobaltrix/KXTypes.h>

#include <SDL.h>

#include <algorithm>
#include <iterator>
#include <new>

namespace {
constexpr int pushed = 16384; // half of an axis's way

// Where it stands whether the game was told of an input, and when.
struct Report {
    int* told;
    int* time;
};

// Indexed by axis; triggers, which have one way only, are pushed the positive way.
constexpr Report negativeReports[] = {
    {&_KXGamePadLeftStickDown_Left, &_KXGamePadLeftStickDown_Left_Time},
    {&_KXGamePadLeftStickDown_Up, &_KXGamePadLeftStickDown_Up_Time},
    {&_KXGamePadRightStickDown_Left, &_KXGamePadRightStickDown_Left_Time},
    {&_KXGamePadRightStickDown_Up, &_KXGamePadRightStickDown_Up_Time},
};
constexpr Report positiveReports[] = {
    {&_KXGamePadLeftStickDown_Right, &_KXGamePadLeftStickDown_Right_Time},
    {&_KXGamePadLeftStickDown_Down, &_KXGamePadLeftStickDown_Down_Time},
    {&_KXGamePadRightStickDown_Right, &_KXGamePadRightStickDown_Right_Time},
    {&_KXGamePadRightStickDown_Down, &_KXGamePadRightStickDown_Down_Time},
    {&_KXGamePadLeftTriggerDown, &_KXGamePadLeftTriggerDownTime},
    {&_KXGamePadRightTriggerDown, &_KXGamePadRightTriggerDownTime},
};
constexpr int leftTrigger = 4, rightTrigger = 5;

// Indexed by the number that games give; the platform's bits come in another order.
constexpr int hatBits[_KXGamePadHatCount] = {SDL_HAT_UP, SDL_HAT_DOWN, SDL_HAT_LEFT, SDL_HAT_RIGHT};

bool isInside(int index, int count) { return index >= 0 && index < count; }

bool isPushed(int value) { return value <= -pushed || value >= pushed; }

// Whether to tell of a held input now: the first time, and with repeat again after the delay. The first time
// leaves mark in the report.
bool tell(Report report, int mark, int repeat) {
    if (*report.told)
        return repeat && _KXRepeatIsDue(*report.time);
    *report.told = mark;
    *report.time = static_cast<int>(_KXLogicCurrentTime);
    return true;
}

// The report a push of the axis counts against; null where the axis does not go in that direction.
const Report* findReport(int axis, int direction) {
    if (axis >= leftTrigger)
        return &positiveReports[axis];
    const bool isVertical = axis % 2 != 0;
    if (direction == (isVertical ? KXDirectionUp : KXDirectionLeft))
        return &negativeReports[axis];
    if (direction == (isVertical ? KXDirectionDown : KXDirectionRight))
        return &positiveReports[axis];
    return nullptr;
}

int asFlag(bool value) { return value ? -1 : 0; }

int stickX(int rightStick) { return rightStick ? 2 : 0; }
int stickY(int rightStick) { return rightStick ? 3 : 1; }

void forgetEverything() {
    std::fill(std::begin(_KXGamePadButtons), std::end(_KXGamePadButtons), 0);
    std::fill(std::begin(_KXGamePadButtonsDown), std::end(_KXGamePadButtonsDown), 0);
    std::fill(std::begin(_KXGamePadButtonsDownTime), std::end(_KXGamePadButtonsDownTime), 0);
    _KXGamePadHatPosition = 0;
    std::fill(std::begin(_KXGamePadHatDown), std::end(_KXGamePadHatDown), 0);
    std::fill(std::begin(_KXGamePadHatDownTime), std::end(_KXGamePadHatDownTime), 0);
    std::fill(std::begin(_KXGamePadAxes), std::end(_KXGamePadAxes), 0);
    for (const Report& report : negativeReports)
        *report.told = *report.time = 0;
    for (const Report& report : positiveReports)
        *report.told = *report.time = 0;
}
} // namespace

int KXInitGamePad() {
    KXDeInitGamePad();
    if (SDL_WasInit(SDL_INIT_JOYSTICK) && SDL_NumJoysticks() > 0)
        _KXGamePad = SDL_JoystickOpen(0);
    if (!_KXGamePad)
        return 0;
    forgetEverything();
    return -1;
}

void KXDeInitGamePad() {
    if (!_KXGamePad)
        return;
    // Shutting the joystick subsystem down has closed the pad already.
    if (SDL_WasInit(SDL_INIT_JOYSTICK))
        SDL_JoystickClose(_KXGamePad);
    _KXGamePad = nullptr;
    forgetEverything(); // no release arrives from a closed pad
}

void _KXSetGamePadButton(int b) {
    if (isInside(b, _KXGamePadButtonCount))
        _KXGamePadButtons[b] = -1;
}

void _KXUnsetGamePadButton(int b) {
    if (isInside(b, _KXGamePadButtonCount))
        _KXGamePadButtons[b] = _KXGamePadButtonsDown[b] = 0;
}

void _KXSetHat(int position) {
    _KXGamePadHatPosition = position;
    for (int i = 0; i < _KXGamePadHatCount; ++i)
        if (!(position & hatBits[i]))
            _KXGamePadHatDown[i] = 0;
}

void _KXSetAxis(int axis, int value) {
    if (isInside(axis, _KXGamePadAxisCount))
        _KXGamePadAxes[axis] = std::clamp(value, -32768, 32767);
    for (int i = 0; i < static_cast<int>(std::size(negativeReports)); ++i)
        if (_KXGamePadAxes[i] > -pushed)
            *negativeReports[i].told = 0;
    for (int i = 0; i < static_cast<int>(std::size(positiveReports)); ++i)
        if (_KXGamePadAxes[i] < pushed)
            *positiveReports[i].told = 0;
}

int _KXGamePadButton(int b, int once, int repeat) {
    if (!isInside(b, _KXGamePadButtonCount) || !_KXGamePadButtons[b])
        return 0;
    return asFlag(!once || tell({&_KXGamePadButtonsDown[b], &_KXGamePadButtonsDownTime[b]}, -1, repeat));
}

int KXGamePadPressedButton() {
    const auto* held = std::find_if(std::begin(_KXGamePadButtons), std::end(_KXGamePadButtons),
                                    [](int button) { return button != 0; });
    return held == std::end(_KXGamePadButtons) ? -1 : static_cast<int>(held - _KXGamePadButtons);
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
    int& told = _KXGamePadHatDown[i];
    if (!(_KXGamePadHatPosition & hatBits[i])) {
        told = 0;
        return 0;
    }
    if (!once)
        return 1;
    const int answer = told ? -1 : 1; // a repeat answers as a button's does
    return tell({&told, &_KXGamePadHatDownTime[i]}, 1, repeat) ? answer : 0;
}

int KXGamePadHat(int direction) { return _KXGamePadHat(direction, 0, 0); }
int KXGamePadHat(int direction, int once) { return _KXGamePadHat(direction, once, 0); }
int KXGamePadHatWithDelayedRepeat(int direction) { return _KXGamePadHat(direction, -1, -1); }

int KXGamePadAxis(int axis) { return isInside(axis, _KXGamePadAxisCount) ? _KXGamePadAxes[axis] : 0; }

int _KXGamePadAxis(int axis, int direction, int once, int repeat) {
    const int value = KXGamePadAxis(axis);
    if (!isPushed(value))
        return value;
    if (axis > rightTrigger)
        throw std::bad_alloc();
    const Report* report = findReport(axis, direction);
    return !report || !once || tell(*report, -1, repeat) ? value : 0;
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
