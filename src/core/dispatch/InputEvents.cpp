#include "core/dispatch/InputEvents.h"

#include "input/Keyboard.h"
#include "input/Pads.h"
#include "input/StepInput.h"
#include "render/KXWindow.h"
#include "render/PictureFit.h"
#include "util/KXString.h"

#include <SDL_events.h>

static KXInputEvent eventOf(KXInputEventType type, unsigned windowID, std::uint32_t time) {
    KXInputEvent event = {};
    event.type = type;
    event.windowID = windowID;
    event.time = time;
    return event;
}

static KXPoint toPoint(int x, int y) { return {static_cast<float>(x), static_cast<float>(y)}; }

static void takeKey(const SDL_KeyboardEvent& key) {
    const KXInputEventType type = key.type == SDL_KEYUP ? KXInputEventKeyUp
                                  : key.repeat          ? KXInputEventKeyRepeat
                                                        : KXInputEventKeyDown;
    KXInputEvent event = eventOf(type, key.windowID, key.timestamp);
    event.position = static_cast<KXKeyPosition>(key.keysym.scancode);
    _KXTakeKey(event, key.keysym.sym);
}

// What is in points of a window comes in the units of its logical size.
static void toUnits(KXInputEvent& event) {
    KXWindow* const window = _KXLogicalWindowWithID(event.windowID);
    if (!window)
        return;
    const _KXPictureFit fit = window->_fit();
    event.point = fit.toUnits(event.point);
    event.motion = fit.moveToUnits(event.motion);
}

static void takeMotion(const SDL_MouseMotionEvent& motion) {
    KXInputEvent event = eventOf(KXInputEventMouseMoved, motion.windowID, motion.timestamp);
    event.point = toPoint(motion.x, motion.y);
    event.motion = toPoint(motion.xrel, motion.yrel);
    toUnits(event);
    _KXTakeMouseMotion(event);
}

// The platform numbers left, middle, right and then the others, from 1.
static int mouseButton(int platformButton) {
    switch (platformButton) {
    case SDL_BUTTON_LEFT:
        return KXMouseLeft;
    case SDL_BUTTON_MIDDLE:
        return KXMouseMiddle;
    case SDL_BUTTON_RIGHT:
        return KXMouseRight;
    default:
        return platformButton - SDL_BUTTON_X1 + KXMouseBack;
    }
}

static void takeMouseButton(const SDL_MouseButtonEvent& button) {
    const KXInputEventType type =
        button.type == SDL_MOUSEBUTTONDOWN ? KXInputEventMouseDown : KXInputEventMouseUp;
    KXInputEvent event = eventOf(type, button.windowID, button.timestamp);
    event.button = mouseButton(button.button);
    event.point = toPoint(button.x, button.y);
    toUnits(event);
    _KXTakeButton(event);
}

static void takeWheel(const SDL_MouseWheelEvent& wheel) {
    KXInputEvent event = eventOf(KXInputEventMouseWheel, wheel.windowID, wheel.timestamp);
    // Whoever makes an event of whole notches may leave the fine amounts out.
    event.motion = {wheel.preciseX != 0 ? wheel.preciseX : static_cast<float>(wheel.x),
                    wheel.preciseY != 0 ? wheel.preciseY : static_cast<float>(wheel.y)};
    _KXTakeWheel(event);
}

static void takeFinger(const SDL_TouchFingerEvent& finger) {
    const KXInputEventType type = finger.type == SDL_FINGERDOWN ? KXInputEventFingerDown
                                  : finger.type == SDL_FINGERUP ? KXInputEventFingerUp
                                                                : KXInputEventFingerMoved;
    KXInputEvent event = eventOf(type, finger.windowID, finger.timestamp);
    if (KXWindow* window = _KXWindowWithID(finger.windowID)) {
        const KXSize size = window->size();
        event.point = {finger.x * size.width, finger.y * size.height};
        toUnits(event);
    }
    event.pressure = finger.pressure;
    _KXTakeFinger(event, finger.touchId, finger.fingerId);
}

static void takeWindowEvent(const SDL_WindowEvent& window) {
    switch (window.event) {
    case SDL_WINDOWEVENT_FOCUS_GAINED:
        _KXTakeFocus(window.windowID, window.timestamp, true);
        break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
        _KXTakeFocus(window.windowID, window.timestamp, false);
        _KXRestPadAxes();
        break;
    case SDL_WINDOWEVENT_CLOSE:
        _KXTakeEvent(eventOf(KXInputEventWindowClosed, window.windowID, window.timestamp));
        break;
    case _KXWindowEventDensity: {
        KXInputEvent event = eventOf(KXInputEventDensityChanged, window.windowID, window.timestamp);
        event.density = static_cast<float>(window.data1) / 1000;
        _KXTakeEvent(event);
        break;
    }
    default:
        break;
    }
}

static void takeText(KXInputEventType type, unsigned windowID, std::uint32_t time, std::string_view text) {
    _KXTakeEvent(eventOf(type, windowID, time), text, type == KXInputEventText && _KXIsShortcutHeld());
}

static std::string_view textOf(const char* text) { return text ? text : ""; }

void _KXTakePlatformEvent(const SDL_Event& event) {
    switch (event.type) {
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        return takeKey(event.key);
    case SDL_TEXTINPUT:
        return takeText(KXInputEventText, event.text.windowID, event.text.timestamp,
                        _KXTextIn(event.text.text, sizeof event.text.text));
    case SDL_TEXTEDITING:
        return takeText(KXInputEventComposition, event.edit.windowID, event.edit.timestamp,
                        _KXTextIn(event.edit.text, sizeof event.edit.text));
    case SDL_TEXTEDITING_EXT:
        return takeText(KXInputEventComposition, event.editExt.windowID, event.editExt.timestamp,
                        textOf(event.editExt.text));
    case SDL_MOUSEMOTION:
        return takeMotion(event.motion);
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        return takeMouseButton(event.button);
    case SDL_MOUSEWHEEL:
        return takeWheel(event.wheel);
    case SDL_FINGERDOWN:
    case SDL_FINGERMOTION:
    case SDL_FINGERUP:
        return takeFinger(event.tfinger);
    case SDL_CONTROLLERDEVICEADDED: // tells of a place among the joysticks that may have changed meanwhile
        return _KXTakePads(event.cdevice.timestamp);
    case SDL_CONTROLLERDEVICEREMOVED:
        return _KXLosePad(event.cdevice.which, event.cdevice.timestamp);
    case SDL_CONTROLLERDEVICEREMAPPED:
        return _KXRestPad(event.cdevice.which);
    case SDL_CONTROLLERBUTTONDOWN:
    case SDL_CONTROLLERBUTTONUP:
        return _KXTakePadButton(event.cbutton.which, event.cbutton.button,
                                event.type == SDL_CONTROLLERBUTTONDOWN, event.cbutton.timestamp);
    case SDL_CONTROLLERAXISMOTION:
        return _KXTakePadAxis(event.caxis.which, event.caxis.axis, event.caxis.value, event.caxis.timestamp);
    case SDL_DROPFILE:
        return takeText(KXInputEventFileDropped, event.drop.windowID, event.drop.timestamp,
                        textOf(event.drop.file));
    case SDL_DROPTEXT:
        return takeText(KXInputEventTextDropped, event.drop.windowID, event.drop.timestamp,
                        textOf(event.drop.file));
    case SDL_WINDOWEVENT:
        return takeWindowEvent(event.window);
    default:
        return;
    }
}
