#include "input/KXTouch.h"

#include "core/ground/HeapGlobal.h"
#include "core/ground/Truncate.h"
#include "input/StepInput.h"

#include <SDL_hints.h>

#include <vector>

constinit int KXTouchX = 0;
constinit int KXTouchY = 0;
constinit KXPoint KXTouchPoint = {0, 0};

int KXFingerDown() { return _KXTouching; }

void _KXSetTouching(int touching) { _KXTouching = touching; }

void _KXSetTouchPosition(float x, float y, KXSize windowSize) {
    KXTouchX = _KXTruncate(x * windowSize.width);
    KXTouchY = _KXTruncate(y * windowSize.height);
    KXTouchPoint = {static_cast<float>(KXTouchX), static_cast<float>(KXTouchY)};
}

KXFingerList KXFingers() {
    static constinit _KXHeapGlobal<std::vector<KXFinger>> list;
    auto& fingers = list.get();
    fingers.clear();
    const auto asFlag = [](int value) { return value ? -1 : 0; };
    for (const _KXFingerOnScreen& finger : _KXStep().fingers)
        fingers.push_back({finger.number, finger.windowID, finger.point, finger.pressure, asFlag(finger.held),
                           asFlag(finger.now.downs), asFlag(finger.now.ups)});
    return {fingers.data(), static_cast<int>(fingers.size())};
}

int KXSetTouchMovesMouse(int moves) {
    return SDL_SetHint(SDL_HINT_TOUCH_MOUSE_EVENTS, moves ? "1" : "0") ? -1 : 0;
}
