#include "input/InputState.h"

_KXInputState _KXTakeInputState() {
    return {_KXKeyboard,
            _KXMouseHeld,
            {KXMouseX, KXMouseY, KXMousePoint.x, KXMousePoint.y},
            {KXMouseXRelative, KXMouseYRelative, KXMousePointRelative.x, KXMousePointRelative.y},
            _KXTouch,
            {KXTouchX, KXTouchY, KXTouchPoint.x, KXTouchPoint.y},
            _KXPad};
}

static void put(const _KXExportedPoint& exported, int& x, int& y, KXPoint& point) {
    x = exported.x;
    y = exported.y;
    point = {exported.pointX, exported.pointY};
}

void _KXPutInputState(const _KXInputState& state) {
    _KXKeyboard = state.keyboard;
    _KXMouseHeld = state.mouse;
    put(state.mousePosition, KXMouseX, KXMouseY, KXMousePoint);
    put(state.mouseMotion, KXMouseXRelative, KXMouseYRelative, KXMousePointRelative);
    _KXTouch = state.touch;
    put(state.touchPosition, KXTouchX, KXTouchY, KXTouchPoint);
    _KXPad = state.pad;
}
