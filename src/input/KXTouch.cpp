#include "input/KXTouch.h"

#include "core/ground/Truncate.h"

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
