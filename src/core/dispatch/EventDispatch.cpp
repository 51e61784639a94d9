#include "core/dispatch/EventDispatch.h"

#include "core/dispatch/InputEvents.h"
#include "core/ground/Application.h"
#include "core/ground/HeapGlobal.h"
#include "core/ground/Tape.h"
#include "input/GamePad.h"
#include "input/KXMouse.h"
#include "input/KXTouch.h"
#include "input/Keyboard.h"
#include "input/Pads.h"
#include "render/KXWindow.h"
#include "render/PictureFit.h"
#include "util/KXString.h"

#include <SDL_joystick.h>
#include <SDL_stdinc.h>

#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

constinit SDL_Event _KXMainEvent = {};
constinit unsigned KXCurrentEventWindowID = 0xFFFFFFFF;

void _KXNoOpWindowResizedCallback(unsigned, KXSize) {}

static constinit KXWindowResizedCallback _windowResizedCallback = _KXNoOpWindowResizedCallback;

void KXSetWindowResizedCallback(KXWindowResizedCallback callback) {
    _windowResizedCallback = callback ? callback : _KXNoOpWindowResizedCallback;
}

static void dispatchWindowEvent(const SDL_WindowEvent& event) {
    if (event.event == _KXWindowEventDensity)
        if (KXWindow* window = _KXWindowWithID(event.windowID))
            window->_setDensity(event.data1);
    if (event.event != SDL_WINDOWEVENT_RESIZED)
        return;
    if (KXWindow* window = _KXWindowWithID(event.windowID))
        window->_invalidateSizeCache();
    _windowResizedCallback(event.windowID,
                           {static_cast<float>(event.data1), static_cast<float>(event.data2)});
}

static void moveTouch(const SDL_TouchFingerEvent& event) {
    KXWindow* const window = _KXWindowWithID(event.windowID);
    if (!window)
        return;
    const KXSize size = window->rect().size;
    if (!window->_isLogical())
        return _KXSetTouchPosition(event.x, event.y, size);
    const KXPoint place = window->unitsFromPoint({event.x * size.width, event.y * size.height});
    _KXSetTouchPosition(place.x, place.y, {1, 1});
}

static void moveMouse(const SDL_MouseMotionEvent& event) {
    _KXSetMouseMotion(event);
    if (KXWindow* window = _KXLogicalWindowWithID(event.windowID))
        _KXSetMousePlace(window->unitsFromPoint(KXMousePoint),
                         window->_fit().moveToUnits(KXMousePointRelative));
}

static void dispatchKey(const SDL_KeyboardEvent& event) {
    _KXKeyboard.modifiers = event.keysym.mod;
    event.type == SDL_KEYDOWN ? _KXSetKey(event.keysym.sym) : _KXUnsetKey(event.keysym.sym);
}

// The text that the platform hands over with some events, for whoever reads them to free.
static char** textGivenWith(SDL_Event& event) {
    switch (event.type) {
    case SDL_TEXTEDITING_EXT:
        return &event.editExt.text;
    case SDL_DROPFILE:
    case SDL_DROPTEXT:
        return &event.drop.file;
    default:
        return nullptr;
    }
}

void _KXFreeEvent(SDL_Event& event) {
    if (char** text = textGivenWith(event))
        SDL_free(std::exchange(*text, nullptr));
}

static void dispatch(const SDL_Event& event) {
    switch (event.type) {
    case SDL_QUIT:
        _KXAppQuitRequested = -1;
        break;
    case SDL_WINDOWEVENT:
        dispatchWindowEvent(event.window);
        break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        dispatchKey(event.key);
        break;
    case SDL_MOUSEMOTION:
        moveMouse(event.motion);
        break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        _KXSetMouse(event.button);
        break;
    case SDL_MOUSEWHEEL:
        _KXSetMouseWheel(event.wheel);
        break;
    case SDL_JOYAXISMOTION:
        _KXSetAxis(event.jaxis.axis, event.jaxis.value);
        break;
    case SDL_JOYHATMOTION:
        _KXSetHat(event.jhat.value);
        break;
    case SDL_JOYBUTTONDOWN:
        _KXSetGamePadButton(event.jbutton.button);
        break;
    case SDL_JOYBUTTONUP:
        _KXUnsetGamePadButton(event.jbutton.button);
        break;
    case SDL_FINGERDOWN:
        _KXSetTouching(-1);
        moveTouch(event.tfinger);
        break;
    case SDL_FINGERMOTION:
        moveTouch(event.tfinger);
        break;
    case SDL_FINGERUP:
        _KXSetTouching(0);
        break;
    default:
        break;
    }
}

static bool isTouch(const SDL_Event& event) {
    return event.type >= SDL_FINGERDOWN && event.type <= SDL_MULTIGESTURE;
}

// The state of the one pad is not told of those that KXInitPads() has opened, unless it is one of them.
static bool isOfAnotherPad(const SDL_Event& event) {
    return _KXIsOfJoystick(event) && _KXIsPad(event.jbutton.which) &&
           !(_KXGamePad && SDL_JoystickInstanceID(_KXGamePad) == event.jbutton.which);
}

static void dispatchAsMain(const SDL_Event& event) {
    _KXMainEvent = event;
    // The field behind type and time stamp, whatever it is for this type of event.
    std::memcpy(&KXCurrentEventWindowID, reinterpret_cast<const char*>(&_KXMainEvent) + 2 * sizeof(Uint32),
                sizeof KXCurrentEventWindowID);
    dispatch(_KXMainEvent);
    _KXFreeEvent(_KXMainEvent);
}

namespace {
// What was taken from the platform and waits for its turn.
struct WaitingEvents {
    std::vector<SDL_Event> events;
    std::size_t taken = 0;

    bool isEmpty() const { return taken == events.size(); }
    SDL_Event takeFirst() {
        const SDL_Event first = events[taken++];
        if (isEmpty()) {
            events.clear();
            taken = 0;
        }
        return first;
    }
    void addAll() {
        for (SDL_Event event; SDL_PollEvent(&event);)
            events.push_back(event);
    }
    void addTouches() {
        for (SDL_Event event; SDL_PeepEvents(&event, 1, SDL_GETEVENT, SDL_FINGERDOWN, SDL_MULTIGESTURE) > 0;)
            events.push_back(event);
    }
};
} // namespace

// Functions of the game that are called meanwhile may run the loop, too: whoever is innermost goes on with
// it.
static constinit _KXHeapGlobal<WaitingEvents> waitingEvents;

static void take(const SDL_Event& event, bool counts) {
    _KXTakePlatformEvent(event);
    if (counts)
        dispatchAsMain(event);
}

// In place of the platform's events, but for the user's wish to see no more.
static void dispatchReplayed() {
    bool quits = false;
    for (SDL_Event event; SDL_PollEvent(&event); _KXFreeEvent(event))
        quits |= event.type == SDL_QUIT;
    bool counts = false;
    for (SDL_Event event; _KXRunningEventTape && _KXRunningEventTape->give(event, counts);)
        take(event, counts); // which asks the tape, and may end it
    if (quits)
        _KXAppQuitRequested = -1;
}

// The platform has no event for it. It goes on the tape like those that it has: a display of a replay has a
// density of its own.
static void tellOfDensity(const SDL_WindowEvent& event) {
    KXWindow* const window = _KXWindowWithID(event.windowID);
    if (!window || !window->_seesOtherDensity())
        return;
    SDL_Event told = {};
    told.window = event;
    told.window.event = _KXWindowEventDensity;
    told.window.data1 = window->_densityNow();
    told.window.data2 = 0;
    if (_KXRunningEventTape)
        _KXRunningEventTape->keep(told, true);
    take(told, true);
}

void _KXDispatchEvents() {
    if (_KXIsReplaying() && _KXRunningEventTape)
        return dispatchReplayed();
    WaitingEvents& waiting = waitingEvents.get();
    for (waiting.addAll(); !waiting.isEmpty(); waiting.addAll())
        // For the state of the one finger a burst of touches collapses to its first sample: no touch that
        // waits while another event is handled reaches it.
        for (bool isFirst = true; !waiting.isEmpty(); isFirst = false) {
            const SDL_Event event = waiting.takeFirst();
            const bool counts = (isFirst || !isTouch(event)) && !isOfAnotherPad(event);
            if (_KXRunningEventTape)
                _KXRunningEventTape->keep(event, counts);
            take(event, counts);
            if (event.type == SDL_WINDOWEVENT)
                tellOfDensity(event.window);
            waiting.addTouches();
        }
}
