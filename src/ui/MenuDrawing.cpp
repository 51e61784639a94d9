// How menus look.

#include "ui/KXUIMenuTree.h"

#include "render/ClipScope.h"
#include "ui/Control.h"
#include "ui/Look.h"
#include "ui/Marks.h"
#include "ui/Theme.h"
#include "ui/WholePixels.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXTexture.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace {
/// What is drawn while it lives is that of an entry that cannot be chosen.
class Dimmed {
public:
    explicit Dimmed(bool dims) {
        if (dims)
            _KXWidgetOpacity *= _KXTheme.disabledOpacity;
    }
    ~Dimmed() { _KXWidgetOpacity = _before; }
    Dimmed(const Dimmed&) = delete;
    Dimmed& operator=(const Dimmed&) = delete;

private:
    float _before = _KXWidgetOpacity;
};
} // namespace

// The part of a row between two distances from its left.
static KXRect part(KXRect row, int from, int to) {
    return {{row.origin.x + static_cast<float>(from), row.origin.y},
            {static_cast<float>(to - from), row.size.height}};
}

// In the middle of a box, on whole pixels.
static KXPoint middle(KXRect box, KXSize size) {
    return {std::floor(box.origin.x + (box.size.width - size.width) / 2),
            std::floor(box.origin.y + (box.size.height - size.height) / 2)};
}

static void drawMark(const _KXMenuEntry& entry, KXRect cell, float line, KXColor color) {
    const float side = std::max(1.0f, std::floor(line * 2 / 3));
    const KXRect box = {middle(cell, {side, side}), {side, side}};
    if (entry.icon) {
        const KXSize size = _KXMenuIconSize(entry);
        KXDrawOptions options;
        options.source = entry.iconSource;
        options.position = middle(cell, size);
        options.tint = _KXWidgetColor({1, 1, 1, 1});
        entry.icon->draw(options);
        if (entry.isChecked) // around it, since there is no room beside it
            KXDrawRect({{options.position.x - 1, options.position.y - 1}, {size.width + 2, size.height + 2}},
                       color);
    } else if (entry.isChecked) {
        if (entry.kind == KXUIMenuEntryRadio)
            _KXDrawDisc(box, std::max(2, _KXWholePixel(side / 3)), color);
        else
            _KXDrawHook(box, color);
    }
}

static void drawRow(_KXMenuEntry& entry, const _KXMenuRows& rows, KXRect box, bool isLit, const KXFont* font,
                    const KXUIColors& colors) {
    if (entry.isLine()) {
        const float y = std::floor(box.origin.y + box.size.height / 2);
        KXDrawRectFill({{box.origin.x, y}, {box.size.width, 1}},
                       _KXColorsOf(KXUIPartMenu, KXUIPartNormal, colors).border);
        return;
    }
    if (isLit)
        _KXDrawPart(KXUIPartSelection, box, KXUIPartNormal, colors);
    const Dimmed dimmed(!entry.isSelectable());
    const KXColor text = _KXPartText(isLit ? KXUIPartSelection : KXUIPartMenu, KXUIPartNormal, colors);
    const int width = _KXWholePixel(box.size.width);
    const int past = std::max(0, rows.width - width); // of a window that is narrower than the column
    const int shortcutLeft = rows.shortcutLeft - past, arrowLeft = rows.arrowLeft - past;
    drawMark(entry, part(box, 0, rows.textLeft), static_cast<float>(rows.line), text);
    entry.caption->drawLineLaidOut(font, part(box, rows.textLeft, std::max(rows.textLeft, shortcutLeft)), 0,
                                   text, KXTextAlignLeft, entry.mnemonicAt);
    if (entry.shortcutName)
        entry.shortcutName->drawLineLaidOut(font, part(box, shortcutLeft, arrowLeft - rows.gap), 0,
                                            isLit ? text : _KXFaintText(colors.text), KXTextAlignRight);
    if (entry.isMenu)
        _KXDrawArrow(part(box, arrowLeft - rows.line / 4, arrowLeft + rows.line * 3 / 4), KXDirectionRight,
                     text);
}

void _KXUIMenuTree::_drawColumn(int level) {
    const State& state = *_state;
    const State::Level& at = state.levels[level];
    const _KXMenuRows& rows = state.rows(*at.entry);
    _KXDrawPart(KXUIPartMenu, _KXRectBetween(at.left, at.top, at.right, at.bottom), KXUIPartNormal,
                state.colors);
    const int left = at.left + 1, right = at.right - 1, top = at.top + 1, bottom = at.bottom - 1;
    const bool scrolls = rows.starts.back() > at.room();
    std::optional<_KXClipScope> clip;
    if (scrolls)
        clip.emplace(_KXRectBetween(left, top, right, bottom));
    const auto first = std::ranges::upper_bound(rows.starts, at.scrolled) - rows.starts.begin() - 1;
    const int count = static_cast<int>(at.entry->entries.size());
    for (int i = static_cast<int>(first); i < count && rows.starts[i] - at.scrolled < at.room(); ++i)
        drawRow(*at.entry->entries[i], rows,
                _KXRectBetween(left, top + rows.starts[i] - at.scrolled, right,
                               top + rows.starts[i + 1] - at.scrolled),
                i == at.lit, _fontInUse(), state.colors);
    const KXColor text = _KXPartText(KXUIPartMenu, KXUIPartNormal, state.colors);
    for (const bool down : {false, true}) {
        const int y = down ? bottom - State::endHeight : top;
        const KXRect end = _KXRectBetween(left, y, right, y + State::endHeight);
        if (!scrolls || !state.moreAt(at, y))
            continue;
        KXDrawRectFill(end, _KXColorsOf(KXUIPartMenu, KXUIPartNormal, state.colors).fill);
        _KXDrawArrow(end, down ? KXDirectionDown : KXDirectionUp, text);
    }
}

void _KXUIMenuTree::drawPopup() {
    State& state = *_state;
    state.place();
    for (int level = state.hasTitles ? 1 : 0; level <= state.innermost(); ++level)
        _drawColumn(level);
}

void _KXUIMenuTree::_drawTitles() {
    State& state = *_state;
    const KXRect bar = rect();
    const _KXMenuRows& rows = state.rows(state.root);
    _KXDrawPart(KXUIPartHeader, bar, KXUIPartNormal, state.colors);
    const int left = _KXWholePixel(bar.origin.x), top = _KXWholePixel(bar.origin.y),
              right = left + _KXWholePixel(bar.size.width), bottom = top + _KXWholePixel(bar.size.height);
    const int hovered = mouseOver() && !state.isOpen() ? state.titleAt(KXMouseX) : -1;
    for (int i = 0; i < static_cast<int>(state.root.entries.size()) && left + rows.starts[i] < right; ++i) {
        _KXMenuEntry& title = *state.root.entries[i];
        const bool isOn = state.isOpen() && state.levels[0].lit == i;
        const unsigned states = isOn                                   ? KXUIPartOn
                                : i == hovered && title.isSelectable() ? KXUIPartHovered
                                                                       : KXUIPartNormal;
        const KXRect box =
            _KXRectBetween(left + rows.starts[i], top, std::min(right, left + rows.starts[i + 1]), bottom);
        if (states != KXUIPartNormal)
            _KXDrawPart(KXUIPartHeader, box, states, state.colors);
        const Dimmed dimmed(!title.isSelectable());
        title.caption->drawLineLaidOut(_fontInUse(), box, static_cast<float>(rows.gap),
                                       _KXPartText(KXUIPartHeader, states, state.colors), KXTextAlignLeft,
                                       title.mnemonicAt);
    }
}
