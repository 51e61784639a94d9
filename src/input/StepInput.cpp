#include "input/StepInput.h"

#include "core/ground/HeapGlobal.h"
#include "core/ground/LogicClock.h"

#include <Kobaltrix/KXKeyboard.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXPads.h>
#include <Kobaltrix/KXTouch.h>

#include <SDL_keycode.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

// More is held by no person; whoever sends more events than that presses nothing further.
static constexpr std::size_t maximumHeld = 256;

static constinit _KXHeapGlobal<_KXStepInput> stepInput;

_KXStepInput& _KXStep() { return stepInput.get(); }

_KXModifiers _KXHeldModifiers() {
    _KXModifiers held = {};
    for (const _KXPress& press : _KXStep().presses) {
        if (press.kind != _KXHoldable::Key || !press.held)
            continue;
        held.shift |= press.number == KXKeyLeftShift || press.number == KXKeyRightShift;
        held.control |= press.number == KXKeyLeftControl || press.number == KXKeyRightControl;
        held.alt |= press.number == KXKeyLeftAlt || press.number == KXKeyRightAlt;
        held.command |= press.number == KXKeyLeftCommand || press.number == KXKeyRightCommand;
    }
    return held;
}

static void take(const KXInputEvent& event, bool isOfShortcut) {
    _KXStepInput& step = _KXStep();
    const KXPoint pointer = event.type == KXInputEventMouseMoved ? event.point : KXMousePoint;
    step.past.push_back({event, _KXHeldModifiers(), pointer, isOfShortcut, nullptr});
    (step.reads ? step.events : step.laterEvents).push_back(event);
}

void _KXTakeEvent(const KXInputEvent& event) { take(event, false); }

// The edges that something new belongs to.
template<class Held>
static _KXEdges& edgesOf(Held& held) {
    return _KXStep().reads ? held.now : held.later;
}

void _KXTakeEvent(KXInputEvent event, std::string_view text, bool isOfShortcut) {
    if ((event.type == KXInputEventText || event.type == KXInputEventComposition) && event.windowID)
        _KXStep().keyboardWindowID = event.windowID;
    event.text = _KXStep().texts.emplace_back(text).c_str();
    take(event, isOfShortcut);
}

static _KXPress* find(_KXHoldable kind, int number, int pad) {
    auto& presses = _KXStep().presses;
    const auto found = std::ranges::find_if(presses, [=](const _KXPress& press) {
        return press.kind == kind && press.number == number && press.pad == pad;
    });
    return found == presses.end() ? nullptr : &*found;
}

const _KXPress* _KXFindPress(_KXHoldable kind, int number, int pad) { return find(kind, number, pad); }

// False if it was held already.
static bool press(_KXHoldable kind, int number, const KXInputEvent& event) {
    _KXStepInput& step = _KXStep();
    _KXPress* found = find(kind, number, event.pad);
    if (!found) {
        if (step.presses.size() == maximumHeld)
            return false;
        found = &step.presses.emplace_back(
            _KXPress{kind, event.pad, number, event.position, event.windowID, false, {}, {}, 0});
    }
    if (found->held)
        return false;
    found->position = event.position;
    found->windowID = event.windowID;
    found->held = true;
    found->step = step.step;
    step.rest.isBroken = true;
    ++edgesOf(*found).downs;
    return true;
}

// False if it was not held.
static bool release(_KXHoldable kind, int number, int pad) {
    _KXPress* const found = find(kind, number, pad);
    if (!found || !found->held)
        return false;
    found->held = false;
    ++edgesOf(*found).ups;
    return true;
}

// The key that a position holds, which may be another than the layout has there now.
static int keyHeldBy(KXKeyPosition position, int otherwise) {
    for (const _KXPress& press : _KXStep().presses)
        if (press.kind == _KXHoldable::Key && press.held && press.position == position)
            return press.number;
    return otherwise;
}

static bool isKeyHeld(const KXInputEvent& key) {
    const _KXPress* const place = find(_KXHoldable::Position, key.position, 0);
    const _KXPress* const number = find(_KXHoldable::Key, key.key, 0);
    return (place && place->held) || (number && number->held);
}

void _KXTakeKey(const KXInputEvent& event, int keycode) {
    _KXStepInput& step = _KXStep();
    step.keyboardWindowID = event.windowID;
    KXInputEvent key = event;
    key.key = _KXKeyNumberOf(keycode);
    const bool placed = key.position != KXPositionNone;
    if (key.type == KXInputEventKeyUp) {
        if (placed)
            key.key = keyHeldBy(key.position, key.key);
        const bool positionUp = placed && release(_KXHoldable::Position, key.position, 0);
        if (release(_KXHoldable::Key, key.key, 0) || positionUp)
            _KXTakeEvent(key);
        return;
    }
    if (key.type == KXInputEventKeyRepeat && !isKeyHeld(key))
        return; // it was down before anybody listened
    const bool positionDown = placed && press(_KXHoldable::Position, key.position, key);
    const bool keyDown = key.key != KXKeyNone && press(_KXHoldable::Key, key.key, key);
    key.type = keyDown || positionDown ? KXInputEventKeyDown : KXInputEventKeyRepeat;
    if (placed || key.key != KXKeyNone)
        _KXTakeEvent(key);
}

void _KXTakeButton(const KXInputEvent& event) {
    const bool ofMouse = event.type == KXInputEventMouseDown || event.type == KXInputEventMouseUp;
    const _KXHoldable kind = ofMouse ? _KXHoldable::MouseButton : _KXHoldable::PadButton;
    if (ofMouse)
        _KXStep().mouseWindowID = event.windowID;
    const bool down = event.type == KXInputEventMouseDown || event.type == KXInputEventPadDown;
    if (down ? press(kind, event.button, event) : release(kind, event.button, event.pad))
        _KXTakeEvent(event);
}

static void add(KXPoint& sum, KXPoint amount) {
    sum.x += amount.x;
    sum.y += amount.y;
}

static void moveFromRest(const KXInputEvent& event) {
    constexpr float trembling = 3;
    _KXPointerRest& rest = _KXStep().rest;
    if (rest.windowID != event.windowID || !(std::abs(event.point.x - rest.point.x) <= trembling) ||
        !(std::abs(event.point.y - rest.point.y) <= trembling))
        rest = {false, event.windowID, event.point, _KXStep().step};
}

void _KXTakeMouseMotion(const KXInputEvent& event) {
    _KXStep().mouseWindowID = event.windowID;
    moveFromRest(event);
    add(_KXStep().mouseMotion, event.motion);
    _KXTakeEvent(event);
}

void _KXTakeWheel(const KXInputEvent& event) {
    _KXStep().mouseWindowID = event.windowID;
    add(_KXStep().wheel, event.motion);
    _KXTakeEvent(event);
}

// The lowest number that no finger has.
static int freeFingerNumber() {
    const auto& fingers = _KXStep().fingers;
    int number = 0;
    while (std::ranges::find(fingers, number, &_KXFingerOnScreen::number) != fingers.end())
        ++number;
    return number;
}

void _KXTakeFinger(KXInputEvent event, std::int64_t device, std::int64_t id) {
    auto& fingers = _KXStep().fingers;
    auto finger = std::ranges::find_if(fingers, [=](const _KXFingerOnScreen& known) {
        return known.held && known.device == device && known.id == id;
    });
    const bool known = finger != fingers.end(), up = event.type == KXInputEventFingerUp;
    if (!known) {
        if (up || fingers.size() == maximumHeld)
            return;
        fingers.push_back({device, id, freeFingerNumber(), event.windowID, event.point, 0, true, {}, {}});
        finger = fingers.end() - 1;
        ++edgesOf(*finger).downs;
    }
    if (!up)
        event.type = known ? KXInputEventFingerMoved : KXInputEventFingerDown;
    if (event.type == KXInputEventFingerMoved)
        event.motion = {event.point.x - finger->point.x, event.point.y - finger->point.y};
    finger->point = event.point;
    finger->pressure = event.pressure;
    finger->held = !up;
    edgesOf(*finger).ups += up;
    event.finger = finger->number;
    _KXTakeEvent(event);
}

// Lets go of what `belongs` says of the presses. The list of events grows, that of presses does not.
template<class Belongs>
static void releaseWhere(Belongs belongs) {
    for (const _KXPress& press : _KXStep().presses) {
        if (!press.held || !belongs(press))
            continue;
        KXInputEvent event = {};
        event.windowID = press.windowID;
        event.time = _KXTicks();
        event.pad = press.pad;
        switch (press.kind) {
        case _KXHoldable::Position: // comes before its key, and takes it along
            event.type = KXInputEventKeyUp;
            event.position = press.position;
            event.key = keyHeldBy(press.position, KXKeyNone);
            release(_KXHoldable::Key, event.key, 0);
            release(_KXHoldable::Position, press.number, 0);
            _KXTakeEvent(event);
            break;
        case _KXHoldable::Key:
            event.type = KXInputEventKeyUp;
            event.position = press.position;
            event.key = press.number;
            release(_KXHoldable::Key, press.number, 0);
            _KXTakeEvent(event);
            break;
        case _KXHoldable::MouseButton:
            event.type = KXInputEventMouseUp;
            event.button = press.number;
            event.point = KXMousePoint;
            _KXTakeButton(event);
            break;
        case _KXHoldable::PadButton:
            event.type = KXInputEventPadUp;
            event.button = press.number;
            _KXTakeButton(event);
            break;
        }
    }
}

void _KXReleaseKeys() {
    releaseWhere([](const _KXPress& press) {
        return press.kind == _KXHoldable::Key || press.kind == _KXHoldable::Position;
    });
}

void _KXReleasePad(int pad) {
    releaseWhere(
        [pad](const _KXPress& press) { return press.kind == _KXHoldable::PadButton && press.pad == pad; });
}

static void releaseFingers(unsigned windowID) {
    for (const _KXFingerOnScreen& finger : std::vector(_KXStep().fingers)) {
        if (windowID && finger.windowID != windowID)
            continue;
        KXInputEvent event = {};
        event.type = KXInputEventFingerUp;
        event.windowID = finger.windowID;
        event.time = _KXTicks();
        event.point = finger.point;
        _KXTakeFinger(event, finger.device, finger.id);
    }
}

void _KXReleaseEverything() {
    releaseWhere([](const _KXPress&) { return true; });
    releaseFingers(0);
}

void _KXReleaseWindow(unsigned windowID) {
    releaseWhere([windowID](const _KXPress& press) {
        return press.windowID == windowID && press.kind != _KXHoldable::PadButton;
    });
    releaseFingers(windowID);
}

void _KXTakeFocus(unsigned windowID, std::uint32_t time, bool gained) {
    if (!gained)
        _KXReleaseEverything();
    _KXStep().keyboardWindowID = gained ? windowID : 0;
    KXInputEvent event = {};
    event.type = gained ? KXInputEventFocusGained : KXInputEventFocusLost;
    event.windowID = windowID;
    event.time = time;
    _KXTakeEvent(event);
}

int _KXRepeatsSince(std::uint32_t step) {
    if (!_KXStep().underWay)
        return 0;
    const auto repeatsWithin = [](std::uint64_t steps) {
        constexpr std::uint64_t delay = 500, interval = 33; // milliseconds
        const std::uint64_t time = steps * 1000 / _KXLogicSpeed;
        return time < delay ? 0 : 1 + (time - delay) / interval;
    };
    const std::uint32_t steps = _KXStep().step - step;
    return steps ? static_cast<int>(repeatsWithin(steps) - repeatsWithin(steps - 1)) : 0;
}

int _KXPointerRestTime() {
    constexpr std::uint64_t longest = std::numeric_limits<int>::max();
    const _KXPointerRest& rest = _KXStep().rest;
    const std::uint64_t steps = _KXStep().step - rest.step;
    return rest.isBroken ? -1 : static_cast<int>(std::min(longest, steps * 1000 / _KXLogicSpeed));
}

int _KXRepeats(const _KXPress& press) { return press.held ? _KXRepeatsSince(press.step) : 0; }

template<class Held>
static void tellLaterEdges(std::vector<Held>& list) {
    for (Held& held : list)
        held.now = std::exchange(held.later, {});
}

template<class Held>
static void forgetEdges(std::vector<Held>& list) {
    for (Held& held : list)
        held.now = {};
    std::erase_if(list, [](const Held& held) { return !held.held && !held.later.any(); });
}

// The first of what widgets may still be told of, and the texts of these.
static void forgetPast(std::size_t count) {
    _KXStepInput& step = _KXStep();
    const auto end = step.past.begin() + static_cast<std::ptrdiff_t>(count);
    const auto texts = std::count_if(step.past.begin(), end,
                                     [](const _KXPastEvent& past) { return past.event.text != nullptr; });
    step.texts.erase(step.texts.begin(), step.texts.begin() + texts);
    step.past.erase(step.past.begin(), end);
    step.pastNumber += count;
}

void _KXBeginInputStep() {
    _KXStepInput& step = _KXStep();
    if (step.underWay) // the game left out to end the last one: it sees nothing twice
        _KXEndInputStep();
    step.underWay = step.reads = true;
    forgetPast(step.pastBefore);
    step.pastBefore = step.past.size();
    std::swap(step.events, step.laterEvents);
    tellLaterEdges(step.presses);
    tellLaterEdges(step.fingers);
}

void _KXTellInputStep() { _KXStep().reads = false; }

void _KXEndInputStep() {
    _KXStepInput& step = _KXStep();
    step.underWay = step.reads = false;
    step.events.clear();
    forgetEdges(step.presses);
    forgetEdges(step.fingers);
    step.wheel = step.mouseMotion = KXZeroPoint;
    ++step.step;
}

void _KXForgetInput() {
    const std::uint64_t number = _KXNextEventNumber();
    _KXStep() = {};
    _KXStep().pastNumber = number; // widgets go on from there
}

KXInputEventList KXInputEvents() {
    const _KXStepInput& step = _KXStep();
    return {step.events.data(), step.underWay ? static_cast<int>(step.events.size()) : 0};
}

unsigned KXKeyboardWindowID() { return _KXStep().keyboardWindowID; }
unsigned KXMouseWindowID() { return _KXStep().mouseWindowID; }

static int isHeld(const _KXPress* press) { return press && press->held ? -1 : 0; }
static int downsOf(const _KXPress* press) { return press && _KXStep().underWay ? press->now.downs : 0; }
static int upsOf(const _KXPress* press) { return press && _KXStep().underWay ? press->now.ups : 0; }

static const _KXPress* key(int number) { return _KXFindPress(_KXHoldable::Key, number); }
static const _KXPress* position(int number) { return _KXFindPress(_KXHoldable::Position, number); }
static const _KXPress* mouseButton(int number) { return _KXFindPress(_KXHoldable::MouseButton, number); }

int KXKeyHeld(int number) { return isHeld(key(number)); }
int KXKeyWentDown(int number) { return downsOf(key(number)); }
int KXKeyWentUp(int number) { return upsOf(key(number)); }
int KXKeyTyped(int number) {
    const _KXPress* const press = key(number);
    return downsOf(press) + (press ? _KXRepeats(*press) : 0);
}

int KXPositionHeld(int number) { return isHeld(position(number)); }
int KXPositionWentDown(int number) { return downsOf(position(number)); }
int KXPositionWentUp(int number) { return upsOf(position(number)); }

int KXMouseHeld(int button) { return isHeld(mouseButton(button)); }
int KXMouseWentDown(int button) { return downsOf(mouseButton(button)); }
int KXMouseWentUp(int button) { return upsOf(mouseButton(button)); }
KXPoint KXMouseWheel() { return _KXStep().wheel; }
KXPoint KXMouseMotion() { return _KXStep().mouseMotion; }

// Of one pad, or summed up over all.
static int ofPads(int pad, int button, int (*answer)(const _KXPress*)) {
    int sum = 0;
    for (const _KXPress& press : _KXStep().presses)
        if (press.kind == _KXHoldable::PadButton && press.number == button &&
            (pad == KXAnyPad || press.pad == pad))
            sum += answer(&press);
    return sum;
}

int KXPadHeld(int pad, int button) { return ofPads(pad, button, isHeld) ? -1 : 0; }
int KXPadWentDown(int pad, int button) { return ofPads(pad, button, downsOf); }
int KXPadWentUp(int pad, int button) { return ofPads(pad, button, upsOf); }
