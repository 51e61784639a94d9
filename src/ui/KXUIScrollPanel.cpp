#include <Kobaltrix/KXUIScrollPanel.h>

#include "ui/KXUIPanel.h"
#include "ui/ScrollBar.h"

#include <Kobaltrix/KXUILayout.h>

#include <algorithm>
#include <cmath>

struct _KXUIScrollParts final : _KXUIPanelParts {
    explicit _KXUIScrollParts(KXUIPanel& of) : _KXUIPanelParts(of) {}

    _KXScrollBar across{false}, down{true};
    KXRect seen = KXZeroRect;
    double wheelRest = 0; // pixels that fine wheels have not made whole yet

    void placeLayout() override;
    const KXRect* view() const override { return &seen; }
    void heardFreeWheel(const KXInputEvent& event) override;
};

static std::shared_ptr<_KXUIPanelParts> makeParts(KXUIPanel& panel) {
    return std::make_shared<_KXUIScrollParts>(panel);
}

KXUIScrollPanel::KXUIScrollPanel() : KXUIPanel(&makeParts) {
    _addFixed(_scroll().across);
    _addFixed(_scroll().down);
}

KXUIScrollPanel::~KXUIScrollPanel() = default;

_KXUIScrollParts& KXUIScrollPanel::_scroll() const { return static_cast<_KXUIScrollParts&>(_own()); }

// A bar takes room that the other may then need, too.
void _KXUIScrollParts::placeLayout() {
    const auto [corner, size] = panel->rect();
    const KXSize content = layout ? layout->size() : KXZeroSize;
    constexpr float bar = _KXScrollBar::thickness;
    bool needsDown = content.height > size.height;
    const bool needsAcross = content.width > size.width - (needsDown ? bar : 0);
    needsDown = needsDown || content.height > size.height - (needsAcross ? bar : 0);
    seen = {corner,
            {std::max(0.0f, size.width - (needsDown ? bar : 0)),
             std::max(0.0f, size.height - (needsAcross ? bar : 0))}};
    across.setVisible(needsAcross);
    down.setVisible(needsDown);
    across.setRect({corner.x, corner.y + seen.size.height}, {seen.size.width, bar});
    down.setRect({corner.x + seen.size.width, corner.y}, {bar, seen.size.height});
    across.setLengths(content.width, seen.size.width);
    down.setLengths(content.height, seen.size.height);
    if (layout)
        layout->setRect(
            {corner.x - across.offset(), corner.y - down.offset()},
            {std::max(content.width, seen.size.width), std::max(content.height, seen.size.height)});
}

void _KXUIScrollParts::heardFreeWheel(const KXInputEvent& event) {
    constexpr double notch = 48;
    const bool toTheSide = event.motion.y == 0 || _KXHeldModifiers().shift || !down.isVisible();
    const double turned = event.motion.y != 0 ? -event.motion.y : event.motion.x;
    wheelRest += turned * notch;
    const double whole = std::trunc(wheelRest);
    wheelRest -= whole;
    _KXScrollBar& bar = toTheSide ? across : down;
    bar.setOffset(bar.offset() + static_cast<float>(whole));
    placeLayout(); // what comes next in the step meets what the user sees
}

void KXUIScrollPanel::scrollTo(KXPoint offset) {
    _scroll().placeLayout();
    _scroll().across.setOffset(offset.x);
    _scroll().down.setOffset(offset.y);
    _scroll().placeLayout();
}

KXPoint KXUIScrollPanel::scrolled() const { return {_scroll().across.offset(), _scroll().down.offset()}; }

// The start of what does not fit is shown.
static float offsetToShow(float offset, float from, float to, float viewFrom, float viewTo) {
    if (to > viewTo)
        offset += std::min(to - viewTo, from - viewFrom);
    else if (from < viewFrom)
        offset += from - viewFrom;
    return offset;
}

void KXUIScrollPanel::reveal(KXRect rect) {
    const KXRect seen = _scroll().seen;
    const KXPoint now = scrolled();
    scrollTo({offsetToShow(now.x, rect.origin.x, rect.origin.x + rect.size.width, seen.origin.x,
                           seen.origin.x + seen.size.width),
              offsetToShow(now.y, rect.origin.y, rect.origin.y + rect.size.height, seen.origin.y,
                           seen.origin.y + seen.size.height)});
}

int KXUIScrollPanel::takesWheel() const { return -1; }

KXUIDescription KXUIScrollPanel::description() const { return _described("scroll panel", nullptr); }
