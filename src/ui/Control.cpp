#include "ui/Control.h"

#include "core/ground/Truncate.h"
#include "ui/Look.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXKeys.h>
#include <Kobaltrix/KXUIListBox.h>
#include <Kobaltrix/KXUITextEntry.h>

#include <algorithm>
#include <cmath>
#include <utility>

int _KXControl::poll() {
    windowID = widget.windowID();
    if (widget._takesInput()) {
        if (stopsTab())
            pollTabStop();
    } else {
        leaveOut();
        leftOut();
    }
    hear();
    stepHeard();
    return std::exchange(changed, false) ? -1 : 0;
}

unsigned _KXControl::states() const {
    return (widget.mouseOver() ? KXUIPartHovered : KXUIPartNormal) |
           (hasKeyboard() ? KXUIPartFocused : KXUIPartNormal);
}

void _KXControl::drawRing() const {
    if (hasKeyboard() && arrivedByKeyboard)
        _KXDrawFocusRing(widget.focusRect(), nullptr, colors);
}

// With Control held the left button counts as the right one.
void _KXControl::heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) {
    const bool left = event.button == KXMouseLeft;
    if (event.type == KXInputEventMouseDown && left && !modifiers.control) {
        if (!widget.mouseOver())
            return giveUpKeyboard();
        takeKeyboard();
        takePointer();
        pressed(modifiers);
    } else if (event.type == KXInputEventMouseMoved && hasPointer()) {
        dragged();
    } else if (event.type == KXInputEventMouseUp && left && hasPointer()) {
        released();
    } else if (event.type == KXInputEventMouseWheel && widget.mouseOver()) {
        wheelTurned(event.motion.y);
    }
}

int _KXNotches::add(float notches) {
    constexpr float most = 1000; // no number becomes none
    _rest += notches >= -most && notches <= most ? notches : 0;
    const int whole = _KXTruncate(_rest);
    _rest -= static_cast<float>(whole);
    return whole;
}

void _KXHeldButton::begin() { _since = _told = _KXStep().step; }

int _KXHeldButton::due() {
    const bool again = std::exchange(_told, _KXStep().step) == _KXStep().step;
    return again ? 0 : _KXRepeatsSince(_since);
}

void _KXDrawArrow(KXRect box, KXDirection direction, KXColor color) {
    const float half = std::clamp(std::floor(std::min(box.size.width, box.size.height) / 4), 2.0f, 5.0f);
    const float x = std::floor(box.origin.x + box.size.width / 2),
                y = std::floor(box.origin.y + box.size.height / 2), reach = std::ceil(half / 2);
    const float sign = direction == KXDirectionUp || direction == KXDirectionLeft ? -1 : 1;
    const float tip = sign * reach, back = -sign * reach;
    const bool upright = direction == KXDirectionUp || direction == KXDirectionDown;
    const auto at = [&](float along, float across) {
        return upright ? KXPoint{x + across, y + along} : KXPoint{x + along, y + across};
    };
    KXDrawTriangleFill(at(tip, 0), at(back, half), at(back, -half), color);
}

void _KXColorList(KXUIListBox& list, const KXUIColors& of) {
    list.setBackgroundColor(of.background);
    list.setBorderColor(of.border);
    list.setTextColor(of.text);
    list.setSelectionColor(of.selection);
    list.setFocusColor(of.focus);
    list.setTrackColor(of.interaction);
    list.setKnobColor(of.background);
}

void _KXColorEntry(KXUITextEntry& entry, const KXUIColors& colors) {
    entry.setBackgroundColor(colors.background);
    entry.setBorderColor(colors.border);
    entry.setFocusColor(colors.focus);
    entry.setTextColor(colors.text);
    entry.setSelectionColor(colors.selection);
}
