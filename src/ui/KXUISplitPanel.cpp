#include <Kobaltrix/KXUISplitPanel.h>

#include "core/ground/LogicClock.h"
#include "render/Cursor.h"
#include "ui/Control.h"
#include "ui/Description.h"
#include "ui/Look.h"
#include "ui/WholePixels.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXGeometry.h>
#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <cmath>
#include <utility>

struct KXUISplitPanel::State : _KXControl {
    State(KXUISplitPanel& of, const KXUISplitPanelOptions& options);

    KXUISplitPanel& panel;
    KXUILayout first{KXUIColumn}, second{KXUIColumn};
    bool isColumn; ///< The parts lie below each other.
    int leastFirst, leastSecond, divider;
    float shareAtFirst, share;
    int grip = 0;             ///< From the divider's beginning to the pointer.
    bool mayBeDouble = false; ///< The next press, if it comes soon.
    bool drags = false;       ///< By the press that lasts.
    std::uint32_t pressTime = 0;

    /// Where the parts begin and end along the way of the divider.
    struct Cut {
        int begin, firstEnd, secondBegin, end;
        int room() const { return end - begin - (secondBegin - firstEnd); }
    };
    Cut cut() const;
    KXRect stretch(int from, int to) const;
    void place();
    void moveTo(int firstLength);
    void setShare(float other);

protected:
    void pressed(const _KXModifiers&) override;
    void dragged() override;
    void heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
    void stepHeard() override;

private:
    int pointer() const { return isColumn ? KXMouseY : KXMouseX; }
};

static int wholeLength(float length, float otherwise) {
    return std::max(0, _KXWholePixel(length >= 0 ? length : otherwise));
}

static float soundShare(float share, float otherwise) {
    return share == share ? std::clamp(share, 0.0f, 1.0f) : otherwise;
}

KXUISplitPanel::State::State(KXUISplitPanel& of, const KXUISplitPanelOptions& options)
    : _KXControl(of), panel(of), isColumn(options.kind == KXUIColumn),
      leastFirst(wholeLength(options.leastFirst, KXUISplitPanelOptions().leastFirst)),
      leastSecond(wholeLength(options.leastSecond, KXUISplitPanelOptions().leastSecond)),
      divider(wholeLength(options.divider, KXUISplitPanelOptions().divider)),
      shareAtFirst(soundShare(options.share, KXUISplitPanelOptions().share)), share(shareAtFirst) {
    for (KXUILayout* part : {&first, &second})
        part->setGap(0);
}

KXUISplitPanel::State::Cut KXUISplitPanel::State::cut() const {
    const auto [origin, size] = panel.rect();
    const float from = isColumn ? origin.y : origin.x, length = isColumn ? size.height : size.width;
    Cut cut = {};
    cut.begin = _KXWholePixel(from);
    cut.end = std::max(cut.begin, _KXWholePixel(from + length));
    const int all = cut.end - cut.begin, between = std::min(divider, all), room = all - between;
    int part = _KXWholePixel(std::round(share * static_cast<float>(room)));
    if (const int least = leastFirst + leastSecond; least <= room)
        part = std::clamp(part, leastFirst, room - leastSecond);
    else // both give way alike
        part = static_cast<int>(std::int64_t{room} * leastFirst / least);
    cut.firstEnd = cut.begin + part;
    cut.secondBegin = cut.firstEnd + between;
    return cut;
}

KXRect KXUISplitPanel::State::stretch(int from, int to) const {
    const auto [origin, size] = panel.rect();
    const float across = isColumn ? origin.x : origin.y;
    const int low = _KXWholePixel(across),
              high = _KXWholePixel(across + (isColumn ? size.width : size.height));
    return isColumn ? _KXRectBetween(low, from, high, to) : _KXRectBetween(from, low, to, high);
}

void KXUISplitPanel::State::place() {
    const KXRect one = panel.firstRect(), other = panel.secondRect();
    first.setRect(one.origin, one.size);
    second.setRect(other.origin, other.size);
}

void KXUISplitPanel::State::setShare(float other) {
    changed |= other != share;
    share = other;
    place();
}

/// No further than the parts' least sizes let it.
void KXUISplitPanel::State::moveTo(int firstLength) {
    const Cut now = cut();
    const int room = now.room();
    if (leastFirst + leastSecond > room || room <= 0)
        return;
    const int length = std::clamp(firstLength, leastFirst, room - leastSecond);
    if (length != now.firstEnd - now.begin)
        setShare(static_cast<float>(length) / static_cast<float>(room));
}

void KXUISplitPanel::State::pressed(const _KXModifiers&) {
    constexpr std::uint32_t quick = 500; // milliseconds
    grip = pointer() - cut().firstEnd;
    const bool isDouble = std::exchange(mayBeDouble, true) && _KXLogicCurrentTime - pressTime <= quick;
    pressTime = _KXLogicCurrentTime;
    drags = !isDouble;
    if (!isDouble)
        return;
    mayBeDouble = false;
    setShare(shareAtFirst);
}

void KXUISplitPanel::State::dragged() {
    mayBeDouble = false;
    if (drags)
        moveTo(pointer() - grip - cut().begin);
}

void KXUISplitPanel::State::heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    constexpr int step = 8; // pixels
    if (modifiers.alt || modifiers.control || modifiers.command)
        return;
    const int length = cut().firstEnd - cut().begin;
    if (key.key == (isColumn ? KXKeyUp : KXKeyLeft))
        moveTo(length - step);
    else if (key.key == (isColumn ? KXKeyDown : KXKeyRight))
        moveTo(length + step);
    else if (key.key == KXKeyHome)
        moveTo(0);
    else if (key.key == KXKeyEnd)
        moveTo(cut().room());
    else if (key.key == KXKeyReturn || key.key == KXKeyPadEnter)
        setShare(shareAtFirst);
}

void KXUISplitPanel::State::stepHeard() {
    place();
    if (panel._takesInput() && (hasPointer() || panel.mouseOver()))
        _KXLendCursor(isColumn ? KXCursorHeight : KXCursorWidth);
}

KXUISplitPanel::KXUISplitPanel(const KXUISplitPanelOptions& options)
    : _state(std::make_unique<State>(*this, options)) {}

KXUISplitPanel::~KXUISplitPanel() = default;

KXUILayout& KXUISplitPanel::first() { return _state->first; }
KXUILayout& KXUISplitPanel::second() { return _state->second; }

KXRect KXUISplitPanel::firstRect() const {
    const State::Cut cut = _state->cut();
    return _state->stretch(cut.begin, cut.firstEnd);
}

KXRect KXUISplitPanel::secondRect() const {
    const State::Cut cut = _state->cut();
    return _state->stretch(cut.secondBegin, cut.end);
}

KXRect KXUISplitPanel::dividerRect() const {
    const State::Cut cut = _state->cut();
    return _state->stretch(cut.firstEnd, cut.secondBegin);
}

void KXUISplitPanel::setShare(float share) {
    _state->share = soundShare(share, _state->share);
    _state->place();
}

float KXUISplitPanel::share() const { return _state->share; }

void KXUISplitPanel::setFocus(int focus) { focus ? _state->takeKeyboard() : _state->giveUpKeyboard(); }

int KXUISplitPanel::hasFocus() const { return _state->hasKeyboard() ? -1 : 0; }

int KXUISplitPanel::poll() { return _state->poll(); }

void KXUISplitPanel::setOrigin(KXPoint origin) {
    _KXUIWidget::setOrigin(origin);
    _state->place();
}

void KXUISplitPanel::setSize(KXSize size) {
    _KXUIWidget::setSize(size);
    _state->place();
}

int KXUISplitPanel::containsPoint(KXPoint point) const {
    const auto [origin, size] = dividerRect();
    return point.x >= origin.x && point.x < origin.x + size.width && point.y >= origin.y &&
                   point.y < origin.y + size.height
               ? -1
               : 0;
}

int KXUISplitPanel::mouseOver() {
    return _takesInput() && !_mouseIsElsewhere() ? containsPoint(KXMousePoint) : 0;
}

KXRect KXUISplitPanel::focusRect() const { return dividerRect(); }

void KXUISplitPanel::setColors(const KXUIColors& colors) { _state->colors = colors; }

void KXUISplitPanel::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    _state->place();
    const unsigned pressed = _state->hasPointer() ? KXUIPartPressed : KXUIPartNormal;
    _KXDrawPart(KXUIPartKnob, dividerRect(), _state->states() | pressed, _state->colors);
    _state->drawRing();
}

int KXUISplitPanel::pollInPanel() { return poll(); }

_KXFocus* KXUISplitPanel::keyboardPart() { return _state.get(); }

KXUIDescription KXUISplitPanel::description() const {
    KXUIDescription said = _described("divider", nullptr);
    said.value = std::to_string(_KXWholePixel(std::round(share() * 100))) + " %";
    return said;
}
