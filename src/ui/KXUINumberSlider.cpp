#include <Kobaltrix/KXUINumberSlider.h>

#include "ui/Caption.h"
#include "ui/Control.h"
#include "ui/Description.h"
#include "ui/Look.h"
#include "ui/NumberRange.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

struct KXUINumberSlider::State : _KXControl {
    using _KXControl::_KXControl;

    _KXNumberRange range;
    bool isVertical = false;
    double number = 0;
    float grip = 0; ///< From the knob's beginning to the pointer.
    std::string typed;
    std::unique_ptr<_KXCaption> shown; ///< Of what is typed.
    _KXNotches notches;

    void setTo(double wanted);
    void type(std::string text);
    float start() const { return isVertical ? widget.rect().origin.y : widget.rect().origin.x; }
    float length() const { return isVertical ? widget.rect().size.height : widget.rect().size.width; }
    float knobLength() const { return std::clamp(length() / 2, 0.0f, 16.0f); }
    float knobStart() const;
    KXRect stretch(float from, float to, float thickness) const;
    static float pointer(bool vertical) { return vertical ? KXMousePoint.y : KXMousePoint.x; }

protected:
    bool takesText() const override { return true; }
    void pressed(const _KXModifiers&) override;
    void dragged() override;
    void wheelTurned(float turned) override;
    void heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
    void heardText(const char* text) override;
    void keyboardLost() override { type(""); }
};

void KXUINumberSlider::State::setTo(double wanted) {
    const double nearest = range.nearest(wanted);
    changed |= nearest != number;
    number = nearest;
}

// Return is the panel's unless it takes a number.
void KXUINumberSlider::State::type(std::string text) {
    typed = std::move(text);
    leavesReturn = typed.empty();
    shown.reset();
}

float KXUINumberSlider::State::knobStart() const {
    const double width = range.to - range.from, share = width > 0 ? (number - range.from) / width : 0;
    return std::round(start() +
                      (length() - knobLength()) * static_cast<float>(isVertical ? 1 - share : share));
}

// A part of the slider along the track, in the middle across it.
KXRect KXUINumberSlider::State::stretch(float from, float to, float thickness) const {
    const auto [origin, size] = widget.rect();
    const float across = isVertical ? size.width : size.height, inset = std::floor((across - thickness) / 2);
    return isVertical ? KXRect{{origin.x + inset, from}, {thickness, to - from}}
                      : KXRect{{from, origin.y + inset}, {to - from, thickness}};
}

void KXUINumberSlider::State::pressed(const _KXModifiers&) {
    const float at = pointer(isVertical) - knobStart();
    grip = at >= 0 && at <= knobLength() ? at : knobLength() / 2;
    type("");
    dragged();
}

void KXUINumberSlider::State::dragged() {
    const double travel = length() - knobLength();
    if (!(travel > 0))
        return;
    const double along = std::clamp((pointer(isVertical) - grip - start()) / travel, 0.0, 1.0);
    // A knob that is pressed and not moved has its number already, which no pixel may have.
    if (std::abs(static_cast<float>(along * travel) + start() - knobStart()) >= 0.5f)
        setTo(range.from + (isVertical ? 1 - along : along) * (range.to - range.from));
}

void KXUINumberSlider::State::wheelTurned(float turned) {
    if (hasKeyboard())
        setTo(number + notches.add(turned) * range.stepOrShare());
}

void KXUINumberSlider::State::heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    constexpr int page = 10;
    if (modifiers.alt || modifiers.control || modifiers.command)
        return;
    const struct {
        int key;
        double number;
    } keys[] = {{KXKeyLeft, number - range.stepOrShare()},
                {KXKeyDown, number - range.stepOrShare()},
                {KXKeyRight, number + range.stepOrShare()},
                {KXKeyUp, number + range.stepOrShare()},
                {KXKeyPageDown, number - page * range.stepOrShare()},
                {KXKeyPageUp, number + page * range.stepOrShare()},
                {KXKeyHome, range.from},
                {KXKeyEnd, range.to}};
    const auto* const moves = std::ranges::find(keys, key.key, [](const auto& row) { return row.key; });
    if (moves != std::end(keys))
        setTo(moves->number);
    else if (key.key == KXKeyBackspace && !typed.empty())
        return type(typed.substr(0, typed.size() - 1));
    else if (double wanted = number; key.key == KXKeyReturn || key.key == KXKeyPadEnter) {
        if (_KXReadNumber(typed.c_str(), "", wanted))
            setTo(wanted);
    } else if (key.key != KXKeyEscape)
        return;
    type("");
}

void KXUINumberSlider::State::heardText(const char* text) {
    constexpr std::size_t most = 20;
    std::string all = typed;
    for (; *text && all.size() < most; ++text)
        if (std::string("0123456789.,-+").find(*text) != std::string::npos)
            all += *text;
    if (all != typed)
        type(std::move(all));
}

KXUINumberSlider::KXUINumberSlider(const KXUINumberSliderOptions& options)
    : _state(std::make_unique<State>(*this)) {
    _state->type("");
    setOptions(options);
}

KXUINumberSlider::~KXUINumberSlider() = default;

void KXUINumberSlider::setOptions(const KXUINumberSliderOptions& options) {
    _state->range = _KXNumberRange::of(options.from, options.to, options.step);
    _state->isVertical = options.isVertical;
    setNumber(_state->number);
}

void KXUINumberSlider::setNumber(double number) {
    if (number == number)
        _state->number = _state->range.nearest(number);
}

double KXUINumberSlider::number() const { return _state->number; }

void KXUINumberSlider::setFocus(int focus) { focus ? _state->takeKeyboard() : _state->giveUpKeyboard(); }

int KXUINumberSlider::hasFocus() const { return _state->hasKeyboard() ? -1 : 0; }

int KXUINumberSlider::poll() { return _state->poll(); }

void KXUINumberSlider::setSize(KXSize size) {
    _noteAskedSize(size);
    constexpr float along = 120, leastAcross = 16;
    const float across = std::max(leastAcross, _idealSizeForText("").height);
    if (size.width == -1)
        size.width = _state->isVertical ? across : along;
    if (size.height == -1)
        size.height = _state->isVertical ? along : across;
    _KXUIWidget::setSize(size);
}

void KXUINumberSlider::setColors(const KXUIColors& colors) { _state->colors = colors; }

void KXUINumberSlider::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    State& state = *_state;
    const float across = state.isVertical ? rect().size.width : rect().size.height, knob = state.knobStart();
    const unsigned states = state.states() | (state.hasPointer() ? KXUIPartPressed : KXUIPartNormal);
    _KXDrawPart(KXUIPartTrack,
                state.stretch(state.start(), state.start() + state.length(), std::ceil(across / 3)),
                KXUIPartNormal, state.colors);
    _KXDrawPart(KXUIPartKnob, state.stretch(knob, knob + state.knobLength(), across), states, state.colors);
    state.drawRing();
    if (state.typed.empty() || !_fontInUse())
        return;
    if (!state.shown)
        state.shown = std::make_unique<_KXCaption>(state.typed);
    const KXSize box = _idealSizeForText(state.typed.c_str());
    const KXPoint corner = {std::floor(rect().origin.x + (rect().size.width - box.width) / 2),
                            std::floor(rect().origin.y + (rect().size.height - box.height) / 2)};
    _KXDrawPart(KXUIPartField, {corner, box}, KXUIPartFocused, state.colors);
    state.shown->drawLineLaidOut(_fontInUse(), {corner, box}, 0,
                                 _KXPartText(KXUIPartField, KXUIPartFocused, state.colors),
                                 KXTextAlignCentre);
}

int KXUINumberSlider::takesWheel() const { return hasFocus(); }
int KXUINumberSlider::pollInPanel() { return poll(); }

_KXFocus* KXUINumberSlider::keyboardPart() { return _state.get(); }

KXUIDescription KXUINumberSlider::description() const {
    KXUIDescription said = _described("slider", nullptr);
    said.value = _KXShortNumberText(number());
    return said;
}
