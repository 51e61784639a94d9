#include <Kobaltrix/KXUISpinBox.h>

#include "ui/Control.h"
#include "ui/Description.h"
#include "ui/KXUITextEntry.h"
#include "ui/Look.h"
#include "ui/NumberRange.h"
#include "ui/Tooltip.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXKeyboard.h>
#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <cmath>
#include <new>
#include <string>
#include <utility>

static constexpr int stepsOfAPage = 10;

/// The buttons and the wheel; the keyboard is the entry's, whose keys it hears first.
struct KXUISpinBox::State : _KXControl, _KXFocus::KeyFilter {
    explicit State(KXUISpinBox& box) : _KXControl(box) {}

    KXUITextEntry entry;
    _KXFocus::KeyFilter* outer = nullptr; ///< That is asked before this: a panel's.
    _KXNumberRange range;
    int decimals = 0;
    std::string suffix;
    double number = 0;
    bool hadKeyboard = false;
    int heldKey = 0, heldSteps = 0; ///< What counts on while it is held: a key, or a button without one.
    _KXHeldButton repeats;
    _KXNotches notches;

    void show(double shown);
    void setTo(double wanted);
    void take();
    void count(int steps);
    void hold(int key, int steps);
    void countOn();
    void hearStep();
    KXRect button(bool up) const;
    int buttonUnderPointer() const;

protected:
    bool keepsKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
};

void KXUISpinBox::State::show(double shown) {
    entry.setText((_KXNumberText(shown, decimals) + suffix).c_str());
}

/// Rounded first, so that an end that has more digits is not passed.
void KXUISpinBox::State::setTo(double wanted) {
    double rounded = wanted;
    _KXReadNumber(_KXNumberText(range.within(wanted), decimals).c_str(), "", rounded);
    rounded = range.within(rounded);
    show(rounded); // which may lack memory
    number = rounded;
}

/// What was typed becomes the number, if it is one.
void KXUISpinBox::State::take() {
    const double before = number;
    double typed = number;
    _KXReadNumber(entry.text(), suffix.c_str(), typed);
    setTo(typed);
    changed |= number != before;
}

void KXUISpinBox::State::count(int steps) {
    take();
    const double before = number;
    setTo(number + steps * range.step);
    entry.selectAll();
    changed |= number != before;
}

void KXUISpinBox::State::hold(int key, int steps) {
    heldKey = key;
    heldSteps = steps;
    repeats.begin();
    count(steps);
}

/// What is held does so once in a step, and a button while the pointer is on it.
void KXUISpinBox::State::countOn() {
    const bool isHeld = heldKey ? KXKeyHeld(heldKey) && entry.isFocused() : hasPointer();
    if (!isHeld)
        heldSteps = 0;
    else if (heldKey || buttonUnderPointer() == heldSteps)
        for (int times = heldSteps ? repeats.due() : 0; times > 0; --times)
            count(heldSteps);
}

bool KXUISpinBox::State::keepsKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    if (outer && outer->keepsKey(key, modifiers))
        return true;
    if (modifiers.alt)
        return false;
    switch (key.key) {
    case KXKeyUp:
        return hold(key.key, 1), true;
    case KXKeyDown:
        return hold(key.key, -1), true;
    case KXKeyPageUp:
        return hold(key.key, stepsOfAPage), true;
    case KXKeyPageDown:
        return hold(key.key, -stepsOfAPage), true;
    case KXKeyEscape:
        show(number);
        return false;
    default:
        return false;
    }
}

KXRect KXUISpinBox::State::button(bool up) const {
    const auto [origin, size] = widget.rect();
    const float half = std::floor(size.height / 2),
                width = std::max(0.0f, size.width - entry.rect().size.width);
    return {{origin.x + size.width - width, up ? origin.y : origin.y + half},
            {width, up ? half : size.height - half}};
}

// What the button under the pointer adds, 0 without one.
int KXUISpinBox::State::buttonUnderPointer() const {
    if (!widget.mouseOver() || KXMousePoint.x < button(true).origin.x)
        return 0;
    return KXMousePoint.y < button(false).origin.y ? 1 : -1;
}

void KXUISpinBox::State::heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) {
    const int pressed = buttonUnderPointer();
    if (event.type == KXInputEventMouseDown && event.button == KXMouseLeft && !modifiers.control && pressed) {
        takePointer();
        entry.focus();
        hadKeyboard = true;
        hold(0, pressed);
    } else if (event.type == KXInputEventMouseWheel && entry.isFocused() && widget.mouseOver()) {
        if (const int steps = notches.add(event.motion.y))
            count(steps);
    }
}

/// Event by event, so that what was typed before a press counts before it.
void KXUISpinBox::State::hearStep() {
    if (_KXFocus::KeyFilter* const asked = std::exchange(entry._focus().filter, this); asked != this)
        outer = asked; // null where a panel has let go of it
    const auto settle = [this](int told) {
        if ((told && entry.entered()) || (hadKeyboard && !entry.isFocused()))
            take();
        hadKeyboard = entry.isFocused();
    };
    const std::uint64_t end = _KXNextEventNumber();
    std::uint64_t event = std::min(firstUnheard(), entry._focus().firstUnheard());
    while (event++ < end) {
        settle(entry._pollUntil(event));
        hear(event);
    }
    settle(entry.poll());
}

KXUISpinBox::KXUISpinBox(const KXUISpinBoxOptions& options) : _state(std::make_unique<State>(*this)) {
    setOptions(options);
}

KXUISpinBox::~KXUISpinBox() = default;

void KXUISpinBox::setOptions(const KXUISpinBoxOptions& options) {
    State& state = *_state;
    _KXNumberRange range = _KXNumberRange::of(options.from, options.to, options.step);
    int decimals = std::clamp(options.decimals, 0, 9);
    std::string suffix = options.suffix ? options.suffix : "";
    const auto exchange = [&] {
        std::swap(state.range, range);
        std::swap(state.decimals, decimals);
        state.suffix.swap(suffix);
    };
    exchange();
    try {
        state.setTo(state.number);
    } catch (const std::bad_alloc&) {
        exchange();
        throw;
    }
}

void KXUISpinBox::setNumber(double number) {
    if (number == number)
        _state->setTo(number);
}

double KXUISpinBox::number() const { return _state->number; }

void KXUISpinBox::setFocus(int focus) { focus ? _state->entry.focus() : _state->entry.unfocus(); }

int KXUISpinBox::hasFocus() const { return _state->entry.isFocused(); }

int KXUISpinBox::poll() {
    State& state = *_state;
    if (_takesInput()) {
        state.hearStep();
        state.hear();
        state.countOn();
    } else {
        state.entry._focus().leaveOut();
        state.leaveOut();
        if (std::exchange(state.hadKeyboard, false))
            state.show(state.number);
        state.heldSteps = 0;
    }
    return std::exchange(state.changed, false) ? -1 : 0;
}

void KXUISpinBox::setOrigin(KXPoint origin) {
    _KXUIWidget::setOrigin(origin);
    _state->entry.setOrigin(origin);
}

void KXUISpinBox::setSize(KXSize size) {
    _noteAskedSize(size);
    const float line = _idealSizeForText("").height, least = 12, buttons = std::max(least, line);
    if (size.height == -1)
        size.height = line;
    if (size.width == -1) {
        const auto widthOf = [&](double number) {
            return _idealSizeForText((_KXNumberText(number, _state->decimals) + _state->suffix).c_str())
                .width;
        };
        constexpr float cursor = 2;
        size.width = std::max(widthOf(_state->range.from), widthOf(_state->range.to)) + cursor + buttons;
    }
    _KXUIWidget::setSize(size);
    _state->entry.setSize({std::max(0.0f, size.width - buttons), size.height});
}

int KXUISpinBox::setFont(const char* path, KXAliasMode mode) {
    _state->entry.setFont(path, mode);
    const int result = _KXUIWidget::setFont(path, mode);
    refit();
    return result;
}

int KXUISpinBox::setFontSize(int size) {
    const int result = _KXUIWidget::setFontSize(size) ? _state->entry.setFontSize(size) : 0;
    refit();
    return result;
}

void KXUISpinBox::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    _state->windowID = id;
    _state->entry.setWindowID(id);
}

void KXUISpinBox::setColors(const KXUIColors& colors) {
    _state->colors = colors;
    _KXColorEntry(_state->entry, colors);
}

void KXUISpinBox::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    for (const bool up : {true, false}) {
        const int steps = up ? 1 : -1;
        const bool isHeld = !_state->heldKey && _state->heldSteps == steps;
        const unsigned states = (isHeld ? KXUIPartPressed : KXUIPartNormal) |
                                (_state->buttonUnderPointer() == steps ? KXUIPartHovered : KXUIPartNormal);
        _KXDrawPart(KXUIPartButton, _state->button(up), states, _state->colors);
        _KXDrawArrow(_state->button(up), up ? KXDirectionUp : KXDirectionDown,
                     _KXPartText(KXUIPartButton, states, _state->colors));
    }
    _state->entry.draw();
    _KXTooltipOwnerIsDrawn(*this); // also above the line
}

int KXUISpinBox::takesWheel() const { return hasFocus(); }
int KXUISpinBox::pollInPanel() { return poll(); }

_KXFocus* KXUISpinBox::keyboardPart() { return &_state->entry._focus(); }

KXUIDescription KXUISpinBox::description() const {
    KXUIDescription said = _described("spin box", nullptr);
    said.value = _state->entry.text();
    return said;
}
