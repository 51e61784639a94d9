#include "ui/Tooltip.h"

#include "core/ground/LogicClock.h"
#include "input/StepInput.h"
#include "render/GraphicsContext.h"
#include "text/KXUIGlobalFont.h"
#include "ui/Caption.h"
#include "ui/Theme.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXInputEvents.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXUIWidget.h>
#include <Kobaltrix/KXWindow.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace {
enum class Phase {
    Waiting, // for the pointer to rest
    Shown,
    Over // until the pointer comes anew
};

struct Tooltip {
    _KXUIWidget* drawn = nullptr; // under the pointer, the last of this frame
    _KXUIWidget* owner = nullptr; // where the pointer is, as of the last frame
    Phase phase = Phase::Waiting;
    KXPoint pointer = {0, 0};
    unsigned windowID = 0;     // that the pointer was in
    std::uint32_t since = 0;   // in milliseconds of the logic's clock
    std::uint32_t presses = 0; // of whatever there is to press, up to now
};
} // namespace

static constinit Tooltip tip;

// Whether the pointer is in the window that is drawn into. Until it has been anywhere it is in each.
static bool pointerIsHere() {
    auto* const window = dynamic_cast<KXWindow*>(_KXWindowOfGraphicsContext(_KXCurrentGraphicsContext));
    return window && (!KXMouseWindowID() || KXMouseWindowID() == window->id());
}

void _KXTooltipOwnerIsDrawn(_KXUIWidget& widget) {
    if (widget._isUnderPointer() && pointerIsHere())
        tip.drawn = &widget;
}

void _KXForgetTooltipOwner(const _KXUIWidget* widget) {
    for (_KXUIWidget** each : {&tip.drawn, &tip.owner})
        if (*each == widget)
            *each = nullptr;
}

static bool isAnythingHeld() {
    return KXMouse(KXMouseLeft) || KXMouse(KXMouseMiddle) || KXMouse(KXMouseRight);
}

static void watchPointer(_KXUIWidget* drawn) {
    const bool isSame = drawn == std::exchange(tip.owner, drawn);
    const bool stays = KXMouseWindowID() == std::exchange(tip.windowID, KXMouseWindowID()) && isSame;
    const bool isPressed = _KXStep().pressCount != std::exchange(tip.presses, _KXStep().pressCount);
    const KXPoint before = std::exchange(tip.pointer, KXMousePoint);
    const bool moved = before.x != tip.pointer.x || before.y != tip.pointer.y;
    if (!stays)
        tip.phase = Phase::Waiting;
    else if (isPressed)
        tip.phase = Phase::Over;
    if (tip.phase != Phase::Waiting)
        return;
    if (!stays || moved || isAnythingHeld())
        tip.since = _KXLogicCurrentTime;
    else if (_KXLogicCurrentTime - tip.since >=
             static_cast<std::uint32_t>(std::max(0, _KXTheme.tooltip.delay)))
        tip.phase = Phase::Shown;
}

// Of what is drawn into, in its units.
static KXSize targetSize() {
    KXRenderContext* const target = KXCurrentRenderContext();
    if (auto* const window = dynamic_cast<KXWindow*>(target))
        return window->logicalSize();
    auto* const texture = dynamic_cast<KXTexture*>(target);
    return texture ? texture->size() : KXZeroSize;
}

// Below the pointer, or above it where there is no room, and within the target as far as that goes.
static KXPoint placeFor(KXSize box, KXSize room) {
    constexpr float pointerHeight = 20, gap = 4;
    const KXPoint pointer = {std::floor(tip.pointer.x), std::floor(tip.pointer.y)};
    float y = pointer.y + pointerHeight;
    if (y + box.height > room.height)
        y = pointer.y - gap - box.height;
    return {std::max(0.0f, std::min(pointer.x, std::floor(room.width - box.width))), std::max(0.0f, y)};
}

static void drawTip(_KXCaption& caption, const KXFont& font) {
    constexpr float border = 1;
    const KXUITooltipTheme& theme = _KXTheme.tooltip;
    const KXSize padding = {_KXUIWidget::KXUIWidgetInnerPadding.width + border,
                            _KXUIWidget::KXUIWidgetInnerPadding.height + border};
    const KXSize room = targetSize();
    const float widest = std::max(1.0f, room.width - 2 * padding.width);
    const KXTextLayout& text =
        caption.lines(font, theme.width > 0 ? std::min(theme.width, widest) : widest, KXTextAlignStart);
    const KXSize size = {std::ceil(text.size().width) + 2 * padding.width,
                         std::ceil(text.size().height) + 2 * padding.height};
    const KXRect box = {placeFor(size, room), size};
    KXDrawRectFill(box, theme.background);
    KXDrawRect(box, theme.border);
    float left = widest; // where lines stand at the right, the box is no wider than they are
    for (int i = 0; i < text.lineCount(); ++i)
        left = std::min(left, text.line(i).rect.origin.x);
    text.draw({box.origin.x + padding.width - std::floor(left), box.origin.y + padding.height}, theme.text);
}

void KXUIDrawTooltip() {
    _KXUIWidget* const drawn = std::exchange(tip.drawn, nullptr);
    if (!pointerIsHere())
        return; // it may rest in another window
    watchPointer(drawn);
    if (tip.phase != Phase::Shown || !tip.owner || !tip.owner->_tooltipCaption())
        return;
    const KXFont* const own = tip.owner->_fontInUse();
    if (const KXFont* const font = own ? own : _KXUIGlobalFont)
        drawTip(*tip.owner->_tooltipCaption(), *font);
}
