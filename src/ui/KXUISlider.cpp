#include <Kobaltrix/KXUISlider.h>

#include "core/ground/Truncate.h"
#include "core/ground/UIColors.h"
#include "input/PressEdge.h"
#include "ui/Look.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>

static constexpr float knobWidth = 16, smallestWidth = 32, heightWithoutFont = 16;

static bool contains(KXRect rect, KXPoint point) {
    return rect.origin.x <= point.x && point.x <= rect.origin.x + rect.size.width &&
           rect.origin.y <= point.y && point.y <= rect.origin.y + rect.size.height;
}

// The width of a range does not always fit the type of its ends.
static std::int64_t widthOf(int minimum, int maximum) { return std::int64_t(maximum) - minimum; }

KXUISlider::KXUISlider()
    : _knobFillColor(_KXUIBackroundColor), _knobPressedFillColor(_KXUIBackgroundColor_Interaction),
      _knobBorderColor(_KXUIBorderColor), _trackFillColor(_KXUIBackroundColor),
      _trackBorderColor(_KXUIBorderColor), _knob(KXZeroRect), _track(KXZeroRect), _pressed(0), _dragging(0),
      _changedByKey(0), _minimum(0), _maximum(100), _value(50) {
    _layOutKnob();
}

KXUISlider::~KXUISlider() = default;

void KXUISlider::_layOutKnob() {
    const auto [origin, size] = rect();
    const std::int64_t range = widthOf(_minimum, _maximum);
    const float share = range ? static_cast<float>(_value) / static_cast<float>(range) : 0;
    float x = static_cast<float>(_KXTruncate(origin.x + size.width * share - 8.0));
    if (origin.x > x)
        x = origin.x;
    else if (x + knobWidth > origin.x + size.width)
        x = origin.x + size.width - knobWidth;
    _knob = {{x, origin.y}, {knobWidth, size.height}};
}

void KXUISlider::setOrigin(KXPoint origin) {
    _KXUIWidget::setOrigin(origin);
    const KXSize size = rect().size;
    const double height = _KXTruncate(std::ceil(size.height / 3.0));
    _track = {{origin.x, static_cast<float>(size.height * 0.5 + origin.y - height * 0.5)},
              {size.width, static_cast<float>(height)}};
    _layOutKnob();
}

void KXUISlider::setSize(KXSize size) {
    const float smallestHeight = _fontInUse() ? _idealSizeForText("Slider").height : heightWithoutFont;
    _KXUIWidget::setSize({KXMaxf(size.width, smallestWidth), KXMaxf(size.height, smallestHeight)});
    _layOutKnob();
}

void KXUISlider::setKnobFillColor(KXColor color) { _knobFillColor = color; }
void KXUISlider::setKnobPressedFillColor(KXColor color) { _knobPressedFillColor = color; }
void KXUISlider::setKnobBorderColor(KXColor color) { _knobBorderColor = color; }
void KXUISlider::setTrackFillColor(KXColor color) { _trackFillColor = color; }
void KXUISlider::setTrackBorderColor(KXColor color) { _trackBorderColor = color; }

void KXUISlider::setValueRange(int min, int max) {
    _minimum = min;
    _maximum = max;
    const std::int64_t half = widthOf(min, max) / 2;
    if (min <= half && half <= max)
        setValue(static_cast<int>(half));
}

void KXUISlider::setValue(int v) {
    if (v < _minimum || v > _maximum)
        return;
    _value = v;
    _layOutKnob();
}

int KXUISlider::value() const { return _value; }

int KXUISlider::poll() {
    if (!_takesInput()) {
        _KXPressBegins(_pressed, KXMouse(KXMouseLeft)); // nor is it a drag when it is enabled
        _dragging = 0;
        return 0;
    }
    const int before = _value;
    if (_KXPressBegins(_pressed, KXMouse(KXMouseLeft)))
        _dragging = !_mouseIsElsewhere() && (contains(_track, KXMousePoint) || contains(_knob, KXMousePoint))
                        ? -1
                        : 0;
    if (!_pressed)
        _dragging = 0;
    if (_dragging && !_mouseIsElsewhere())
        _dragTo(KXMousePoint.x);
    return _value != before ? -1 : 0;
}

int KXUISlider::pollInPanel() {
    const int changed = poll();
    return std::exchange(_changedByKey, 0) || changed ? -1 : 0;
}

int KXUISlider::handleKey(const KXUIKey& key) {
    if (key.alt || key.control || key.command)
        return 0;
    const std::int64_t page = std::max<std::int64_t>(1, widthOf(_minimum, _maximum) / 10);
    const struct {
        int key;
        std::int64_t value;
    } keys[] = {{KXKeyLeft, _value - std::int64_t{1}},
                {KXKeyRight, _value + std::int64_t{1}},
                {KXKeyPageDown, _value - page},
                {KXKeyPageUp, _value + page},
                {KXKeyHome, _minimum},
                {KXKeyEnd, _maximum}};
    for (const auto& row : keys) {
        if (row.key != key.key)
            continue;
        const int before = _value;
        if (_minimum <= _maximum)
            setValue(static_cast<int>(std::clamp<std::int64_t>(row.value, _minimum, _maximum)));
        _changedByKey |= _value != before;
        return -1;
    }
    return 0;
}

KXUIDescription KXUISlider::description() const {
    KXUIDescription said = _described("slider", nullptr);
    said.value = std::to_string(_value);
    return said;
}

void KXUISlider::_dragTo(float mouseX) {
    const auto [origin, size] = rect();
    const float left = origin.x, right = origin.x + size.width;
    const float whole = static_cast<float>(_KXTruncate(mouseX));
    const float pinned = whole < left ? left : whole > right ? right : mouseX;
    const int distance = _KXTruncate(static_cast<float>(_KXTruncate(pinned)) - left);
    // Multiplied before it is divided: 53 of 100 pixels are 53 of 100 values, which the fraction 0.53 misses.
    const double value = distance < 1 ? 0.0
                                      : static_cast<double>(distance) *
                                            static_cast<double>(widthOf(_minimum, _maximum)) /
                                            static_cast<double>(size.width);
    setValue(_KXTruncate(value));
}

void KXUISlider::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    KXUIColors own = {};
    own.border = _trackBorderColor;
    own.interaction = _trackFillColor;
    _KXDrawPart(KXUIPartTrack, _track, KXUIPartNormal, own);
    own.border = _knobBorderColor;
    own.background = _knobFillColor;
    own.interaction = _knobPressedFillColor;
    _KXDrawPart(KXUIPartKnob, _knob, _dragging ? KXUIPartPressed : KXUIPartNormal, own);
}
