// What a table does with mouse and keyboard, and how it looks.

#include "ui/KXUITable.h"

#include "core/ground/LogicClock.h"
#include "render/ClipScope.h"
#include "render/Cursor.h"
#include "ui/Control.h"
#include "ui/Look.h"
#include "ui/Shortcuts.h"
#include "ui/WholePixels.h"

#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

float KXUITable::State::left() const {
    return static_cast<float>(_KXWholePixel(widget.rect().origin.x) + 1) - scrolledRight;
}

float KXUITable::State::rightOf(int column) const {
    float right = left();
    for (int i = 0; i <= column; ++i)
        right += columns[static_cast<std::size_t>(i)].width;
    return right;
}

int KXUITable::State::titleAt(int x) const {
    for (int i = 0; isColumn(i); ++i)
        if (static_cast<float>(x) < rightOf(i))
            return static_cast<float>(x) >= left() ? i : -1;
    return -1;
}

int KXUITable::State::borderAt(int x) const {
    constexpr float near = 4; // points
    for (int i = 0; isColumn(i); ++i)
        if (std::fabs(rightOf(i) - static_cast<float>(x)) <= near)
            return i;
    return -1;
}

bool KXUITable::State::isInHeader() {
    return widget.mouseOver() && static_cast<float>(KXMouseY) < list.rect().origin.y;
}

/// Header, list and bar share the rectangle.
void KXUITable::State::lay() {
    const KXRect box = widget.rect();
    const float header = headerHeight(), thickness = _KXScrollBar::thickness;
    float whole = 0;
    for (const Column& column : columns)
        whole += column.width;
    const float view = std::max(0.0f, box.size.width - 2 - thickness); // beside the list's bar
    const bool isWider = whole > view;
    const float bottom = isWider ? thickness : 0;
    place({{box.origin.x, box.origin.y + header},
           {box.size.width, std::max(0.0f, box.size.height - header - bottom)}});
    bar.setRect({box.origin.x, box.origin.y + box.size.height - bottom}, {box.size.width, bottom});
    bar.setLengths(whole, view);
    bar.setOffset(scrolledRight);
    scrolledRight = bar.offset();
    bar.setEnabled(isWider && widget._takesInput());
}

void KXUITable::State::scrollRight(float pixels) {
    scrolledRight += pixels;
    lay();
}

void KXUITable::State::pressHeader() {
    constexpr std::uint32_t quick = 500; // milliseconds
    pressBeside();
    const int border = borderAt(KXMouseX);
    const bool isSecond =
        border != -1 && border == lastBorder && _KXLogicCurrentTime - lastBorderTime <= quick;
    lastBorder = isSecond ? -1 : border;
    lastBorderTime = _KXLogicCurrentTime;
    if (isSecond)
        return fit(border);
    if (border == -1) {
        pressed = titleAt(KXMouseX);
        return;
    }
    dragged = border;
    grip = KXMouseX - static_cast<int>(rightOf(border));
}

void KXUITable::State::userSorts(int column) {
    sortTo(column, column == sort && !descending);
    sortedNow = true;
    touched();
}

void KXUITable::State::heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) {
    look();
    const bool isLeft = event.button == KXMouseLeft, down = event.type == KXInputEventMouseDown,
               up = event.type == KXInputEventMouseUp;
    if (down && isLeft && !modifiers.control) {
        pressed = dragged = -1;
        if (isInHeader())
            return pressHeader();
        if (bar.isEnabled() && bar.mouseOver())
            return takeKeyboard();
    }
    if (event.type == KXInputEventMouseMoved && dragged != -1 && hasPointer()) {
        const float start = rightOf(dragged) - columnOf(dragged).width;
        static_cast<KXUITable&>(widget).setColumnWidth(dragged, static_cast<float>(KXMouseX - grip) - start);
        lastBorder = -1;
        return;
    }
    if (up && isLeft && hasPointer()) {
        const int column = std::exchange(pressed, -1);
        dragged = -1;
        if (column != -1 && isInHeader() && titleAt(KXMouseX) == column)
            userSorts(column);
    }
    if (event.type == KXInputEventMouseWheel && widget.mouseOver()) {
        constexpr float pixelsOfNotch = 48, most = 1000;
        const float notches = modifiers.shift ? -event.motion.y : event.motion.x;
        if (notches >= -most && notches <= most)
            scrollRight(notches * pixelsOfNotch);
        if (modifiers.shift)
            return;
    }
    _KXItemList::heardMouse(event, modifiers);
}

void KXUITable::State::heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    constexpr float pixelsOfKey = 24;
    look();
    const int column = key.key - KXKey1;
    if (key.key == KXKeyLeft || key.key == KXKeyRight)
        scrollRight(key.key == KXKeyLeft ? -pixelsOfKey : pixelsOfKey);
    else if (!_KXIsShortcut(modifiers) || column < 0 || column > 8 || !isColumn(column))
        _KXItemList::heardKey(key, modifiers);
    else if (key.type == KXInputEventKeyDown)
        modifiers.shift ? fit(column) : userSorts(column);
}

/// As wide as the title and the rows in view need.
void KXUITable::State::fit(int column) {
    const KXFont* const font = widget._fontInUse();
    if (!font)
        return;
    const float padding = 2 * KXUIWidgetInnerPadding.width;
    const auto widthOf = [&](const std::string& text) {
        return std::ceil(KXTextLayout(*font, text.c_str()).size().width) + padding + 1;
    };
    float widest = widthOf(columnOf(column).title) + static_cast<float>(rowHeight()); // with the arrow
    const int first = std::max(0, list.firstVisibleIndex());
    const int inView = static_cast<int>(list.rect().size.height) / rowHeight() + 1;
    for (int row = first; row < first + inView && itemAt(row); ++row)
        widest = std::max(widest,
                          widthOf(static_cast<Row*>(itemAt(row))->cells[static_cast<std::size_t>(column)]));
    static_cast<KXUITable&>(widget).setColumnWidth(column, widest);
    look();
}

// ---- looks

static KXTextOptions cellOptions(float width, float height, KXTextAlign align) {
    KXTextOptions options;
    options.width = std::max(1.0f, width);
    options.height = height;
    options.verticalAlign = KXTextMiddle;
    options.align = align;
    options.maxLines = 1;
    return options;
}

void KXUITable::State::drawRow(const _KXListItem& item, KXRect box, KXColor text) {
    const auto& row = static_cast<const Row&>(item);
    const float padding = KXUIWidgetInnerPadding.width;
    const int count = static_cast<int>(columns.size());
    float x = left();
    for (int i = 0; i < count && x < box.origin.x + box.size.width; ++i) {
        const Column& column = columnOf(i);
        const float begin = std::exchange(x, x + column.width);
        const std::string& cell = row.cells[static_cast<std::size_t>(i)];
        if (x <= box.origin.x || cell.empty())
            continue;
        KXTextLayout& layout = layoutOf(row.row, i, count);
        layout.layOut(*widget._fontInUse(), cell.c_str(),
                      cellOptions(column.width - 2 * padding, box.size.height, column.align));
        layout.draw({begin + padding, box.origin.y}, text);
    }
}

void KXUITable::State::drawHeader() {
    const KXRect box = {widget.rect().origin, {widget.rect().size.width, headerHeight()}};
    KXUIColors own = colors;
    own.background = colors.interaction;
    own.interaction = colors.selection;
    _KXDrawPart(KXUIPartHeader, box, KXUIPartNormal, own);
    const KXFont* const font = widget._fontInUse();
    if (!font)
        return;
    const _KXClipScope clip({{box.origin.x + 1, box.origin.y}, {box.size.width - 2, box.size.height}});
    const float padding = KXUIWidgetInnerPadding.width, arrow = box.size.height - 4;
    for (int i = 0; isColumn(i); ++i) {
        Column& column = columnOf(i);
        const float right = rightOf(i), begin = right - column.width;
        if (right <= box.origin.x || begin >= box.origin.x + box.size.width)
            continue;
        const unsigned state = i == pressed && hasPointer() ? KXUIPartPressed : KXUIPartNormal;
        _KXDrawPart(KXUIPartHeader, {{begin - 1, box.origin.y}, {column.width + 1, box.size.height}}, state,
                    own);
        const KXColor text = _KXPartText(KXUIPartHeader, state, own);
        column.layout.layOut(
            *font, column.title.c_str(),
            cellOptions(column.width - 2 * padding - (i == sort ? arrow : 0), box.size.height, column.align));
        column.layout.draw({begin + padding, box.origin.y}, text);
        if (i == sort)
            _KXDrawArrow({{right - arrow - 1, box.origin.y}, {arrow, box.size.height}},
                         descending ? KXDirectionUp : KXDirectionDown, text);
    }
}

int KXUITable::poll() {
    const _KXFocus::Turn turn(*this); // bar and list are parts of it
    State& state = *_state;
    state.look();
    if (state.bar.pollInPanel())
        state.scrolledRight = state.bar.offset();
    const int told = state.poll();
    if (_takesInput() && state.isInHeader() && (state.dragged != -1 || state.borderAt(KXMouseX) != -1))
        _KXLendCursor(KXCursorWidth);
    const auto* const row = static_cast<const State::Row*>(state.itemAt(state.list.activatedIndex()));
    state.activated = row ? row->id : 0;
    state.sorted = std::exchange(state.sortedNow, false);
    return told;
}
