#include "ui/ScrollBar.h"

#include "ui/Look.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <cmath>
#include <utility>

_KXScrollBar::_KXScrollBar(bool isVertical) : _isVertical(isVertical) {}

void _KXScrollBar::setLengths(float content, float seen) {
    _content = content > 0 ? content : 0;
    _seen = seen > 0 ? seen : 0;
    setOffset(_offset);
}

void _KXScrollBar::setOffset(float offset) {
    _offset = offset > 0 ? std::round(std::min(offset, furthest())) : 0;
}

void _KXScrollBar::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    _hand.windowID = id;
}

float _KXScrollBar::knobLength() const {
    constexpr float smallest = 16;
    const float share = _content > 0 ? length() * _seen / _content : length();
    return std::round(std::clamp(share, std::min(smallest, length()), length()));
}

float _KXScrollBar::knobStart() const {
    const float travel = length() - knobLength();
    return along(rect().origin) + (furthest() > 0 ? std::round(travel * _offset / furthest()) : 0);
}

void _KXScrollBar::Hand::heardMouse(const KXInputEvent& event, const _KXModifiers&) {
    const float place = bar.along(KXMousePoint);
    if (event.type == KXInputEventMouseDown && event.button == KXMouseLeft && bar.mouseOver()) {
        takePointer();
        bar.press(place);
    } else if (event.type == KXInputEventMouseMoved && hasPointer()) {
        bar.drag(place);
    } else if (event.type == KXInputEventMouseUp && event.button == KXMouseLeft) {
        bar._grip = bar._pageGoal = -1;
    }
}

void _KXScrollBar::press(float place) {
    const float start = knobStart();
    if (place >= start && place < start + knobLength()) {
        _grip = place - start;
        return;
    }
    _pageGoal = std::max(0.0f, place);
    _pageStep = _KXStep().step;
    turnPage();
}

void _KXScrollBar::drag(float place) {
    const float travel = length() - knobLength(), before = _offset;
    if (_grip < 0 || travel <= 0)
        return;
    setOffset((place - _grip - along(rect().origin)) / travel * furthest());
    _moved |= _offset != before;
}

// Towards the press, until the knob is there.
void _KXScrollBar::turnPage() {
    const float start = knobStart(), before = _offset;
    if (_pageGoal < start)
        setOffset(_offset - _seen);
    else if (_pageGoal >= start + knobLength())
        setOffset(_offset + _seen);
    _moved |= _offset != before;
}

int _KXScrollBar::pollInPanel() {
    if (!_takesInput()) {
        _hand.leaveOut();
        _grip = _pageGoal = -1;
    }
    _hand.hear();
    if (_pageGoal >= 0 && _hand.hasPointer())
        for (int pages = _KXRepeatsSince(_pageStep); pages > 0; --pages)
            turnPage();
    return std::exchange(_moved, false) ? -1 : 0;
}

void _KXScrollBar::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    const KXRect all = rect();
    _KXDrawPart(KXUIPartTrack, all, KXUIPartNormal, _colors);
    const float start = knobStart(), length = knobLength();
    const KXRect knob = _isVertical ? KXRect{{all.origin.x, start}, {all.size.width, length}}
                                    : KXRect{{start, all.origin.y}, {length, all.size.height}};
    const unsigned states = (_grip >= 0 ? KXUIPartPressed : 0U) | (mouseOver() ? KXUIPartHovered : 0U);
    _KXDrawPart(KXUIPartKnob, knob, states, _colors);
}

KXUIDescription _KXScrollBar::description() const {
    KXUIDescription said = _described("scroll bar", _isVertical ? "vertical" : "horizontal");
    said.value = std::to_string(furthest() > 0 ? std::lround(100 * _offset / furthest()) : 0) + "%";
    return said;
}
