#include "ui/ItemList.h"

#include "ui/Control.h"
#include "ui/KXUIListBox.h"

#include <Kobaltrix/KXGeometry.h>

#include <algorithm>
#include <utility>

_KXItemList::_KXItemList(_KXUIWidget& of) : widget(of) {
    passesTabOn = true;
    list._state->whole = this;
    list._state->items = this;
}

_KXListItem* _KXItemList::itemAt(int row) const {
    return row >= 0 && row < static_cast<int>(_items.size()) ? _items[static_cast<std::size_t>(row)]
                                                             : nullptr;
}

void _KXItemList::forget(_KXListItem& item) {
    if (item.row != -1)
        _items[static_cast<std::size_t>(item.row)] = nullptr;
}

void _KXItemList::show(std::vector<_KXListItem*> items) {
    KXUIListBox::State& state = *list._state;
    decltype(state.rows) rows(items.size()); // all that may lack memory
    for (std::size_t i = 0; i < items.size(); ++i)
        rows[i].isSelected =
            items[i]->row != -1 && state.rows[static_cast<std::size_t>(items[i]->row)].isSelected;
    int* const kept[] = {&state.selected, &state.anchor, &state.rowToReveal, &state.activatedNow,
                         &state.lastPressed};
    const _KXListItem* of[std::size(kept)];
    for (std::size_t i = 0; i < std::size(kept); ++i)
        of[i] = itemAt(*kept[i]);
    for (_KXListItem* const item : _items)
        if (item)
            item->row = -1;
    for (std::size_t i = 0; i < items.size(); ++i)
        items[i]->row = static_cast<int>(i);
    list._rowsChanged();
    for (std::size_t i = 0; i < std::size(kept); ++i)
        *kept[i] = of[i] ? of[i]->row : -1;
    state.rows = std::move(rows);
    _items = std::move(items);
}

void _KXItemList::userSelects(const _KXListItem& item) {
    if (item.row != -1 && item.row != list.selectedIndex())
        list._select(item.row, {}, false);
}

void _KXItemList::place(KXRect rect) {
    if (!KXEqualRects(list.rect(), rect))
        list.setRect(rect.origin, rect.size);
}

void _KXItemList::setColors(const KXUIColors& of) {
    colors = of;
    _KXColorList(list, of);
}

int _KXItemList::poll() {
    const Turn turn(widget); // the list is a part of it
    if (widget._takesInput())
        pollTabStop();
    else
        leaveOut();
    hear();
    list._passTime();
    return list._told() | (std::exchange(_touched, false) ? -1 : 0);
}

int _KXItemList::rowHeight() const { return list._layout().rowHeight; }

KXTextLayout& _KXItemList::layoutOf(int row, int cell, int cells) {
    const KXUIListBox::Layout where = list._layout();
    const auto rows = static_cast<std::size_t>(where.viewHeight() / where.rowHeight + 2);
    const std::size_t needed = rows * static_cast<std::size_t>(cells);
    if (_layouts.size() != needed)
        _layouts.resize(needed);
    return _layouts[static_cast<std::size_t>(row) % rows * static_cast<std::size_t>(cells) +
                    static_cast<std::size_t>(cell)];
}

void _KXItemList::heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) {
    list._state->heardMouse(event, modifiers);
}

void _KXItemList::heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    list._state->heardKey(key, modifiers);
}

void _KXItemList::heardText(const char* text) { list._findTyped(text); }

void _KXItemList::keyboardTaken() { list._state->word.clear(); }

void _KXItemList::pressBeside() {
    takeKeyboard();
    takePointer();
    list._state->press = KXUIListBox::State::Press::Nothing;
    list._state->lastPressed = -1;
}
