#include "ui/Tooltip.h"

#include "input/StepInput.h"
#include "render/GraphicsContext.h"
#include "text/KXUIGlobalFont.h"
#include "ui/Caption.h"
#include "ui/TargetSize.h"
#include "ui/Theme.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXInputEvents.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXUIWidget.h>
#include <Kobaltrix/KXWindow.h>

#include <algorithm>
#include <cmath>
#include <utility>

// Under the pointer, the last one that was drawn. All else goes by the steps' input, so that a tooltip is
// there or not however many of them a frame has.
static constinit _KXUIWidget* owner = nullptr;

// Whether the pointer is in the window that is drawn into.
static bool pointerIsHere() {
    auto* const window = dynamic_cast<KXWindow*>(_KXWindowOfGraphicsContext(_KXCurrentGraphicsContext));
    return window && KXMouseWindowID() == window->id();
}

void _KXTooltipOwnerIsDrawn(_KXUIWidget& widget) {
    if (widget._isUnderPointer() && pointerIsHere())
        owner = &widget;
}

void _KXForgetTooltipOwner(const _KXUIWidget* widget) {
    if (owner == widget)
        owner = nullptr;
}

// Whether the user waits to be told something.
static bool isTime() {
    return _KXPointerRestTime() >= std::max(0, _KXTheme.tooltip.delay) && !KXMouse(KXMouseLeft) &&
           !KXMouse(KXMouseMiddle) && !KXMouse(KXMouseRight);
}

// Below the pointer, or above it where there is no room, and within the target as far as that goes.
static KXPoint placeFor(KXSize box, KXSize room) {
    constexpr float pointerHeight = 20, gap = 4;
    const KXPoint rest = _KXStep().rest.point, pointer = {std::floor(rest.x), std::floor(rest.y)};
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
    const KXSize room = _KXTargetSize();
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
    const _KXUIWidget* const widget = std::exchange(owner, nullptr);
    if (!widget || !widget->_tooltipCaption() || !pointerIsHere() || !isTime())
        return;
    const KXFont* const own = widget->_fontInUse();
    if (const KXFont* const font = own ? own : _KXUIGlobalFont)
        drawTip(*widget->_tooltipCaption(), *font);
}
