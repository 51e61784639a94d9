// What a user does to a list box.

#include "ui/KXUIListBox.h"

#include "core/ground/LogicClock.h"
#include "input/KXMouse.h"
#include "text/ColorEscapes.h"
#include "ui/ItemList.h"
#include "ui/Shortcuts.h"
#include "util/TextOrder.h"

#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {
constexpr std::uint32_t secondPressWithin = 500; // milliseconds
constexpr std::uint32_t wordEndsAfter = 1000;
constexpr int rowsPerNotch = 3;
constexpr int dragBegins = 4; // points

std::uint32_t millisecondsSince(std::uint32_t time) { return _KXLogicCurrentTime - time; }
} // namespace

int KXUIListBox::hasFocus() const { return _state->whole->hasKeyboard() ? -1 : 0; }

void KXUIListBox::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    _state->windowID = id;
}

void KXUIListBox::setFocus(int focus) { focus ? _state->takeKeyboard() : _state->giveUpKeyboard(); }

_KXFocus& KXUIListBox::_focus() { return *_state; }
_KXFocus* KXUIListBox::keyboardPart() { return _state.get(); }
int KXUIListBox::pollInPanel() { return poll(); }
int KXUIListBox::takesWheel() const { return -1; }

int KXUIListBox::poll() {
    if (!_takesInput())
        _state->leaveOut();
    _state->hear();
    _passTime();
    return _told();
}

// What goes on while a button is held. Once in a step.
void KXUIListBox::_passTime() {
    if (_state->holds(State::Press::Track))
        for (int pages = _KXRepeatsSince(_state->pageStep); pages > 0; --pages)
            _turnPage();
    _scrollByDragging();
}

/// A poll for what came before an event, without the doing of time.
int KXUIListBox::_pollUntil(std::uint64_t event) {
    _state->hear(event);
    return _told();
}

int KXUIListBox::_told() {
    _state->changed = std::exchange(_state->changedNow, false);
    _state->activated = std::exchange(_state->activatedNow, -1);
    return _state->changed || _state->activated != -1 ? -1 : 0;
}

// With Control held the left button counts as the right one, but where it selects several rows.
void KXUIListBox::State::heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) {
    const bool isButton =
        event.button == KXMouseLeft || event.button == KXMouseRight || event.button == KXMouseMiddle;
    if (event.type == KXInputEventMouseDown && isButton) {
        const bool over = box.mouseOver();
        over ? whole->takeKeyboard() : whole->giveUpKeyboard();
        if (over && event.button == KXMouseLeft && (!modifiers.control || (several && !_KXIsMac)))
            box._press(modifiers);
    } else if (event.type == KXInputEventMouseMoved) {
        box._dragKnob();
        box._dragRows(modifiers);
    } else if (event.type == KXInputEventMouseWheel && box.mouseOver()) {
        box._turnWheel(event.motion.y);
    }
}

void KXUIListBox::_press(const _KXModifiers& modifiers) {
    const Layout layout = _settledLayout();
    const bool inView = KXMouseY >= layout.top && KXMouseY < layout.bottom;
    _state->whole->takePointer();
    if (!layout.scrolls || !inView || KXMouseX < layout.rowsRight) {
        const int row = indexAt(KXMousePoint);
        _state->press = row == -1 ? State::Press::Nothing : State::Press::Row;
        if (row != -1)
            _pressRow(row, modifiers);
    } else if (KXMouseY >= layout.knobTop && KXMouseY < layout.knobBottom) {
        _state->press = State::Press::Knob;
        _state->grip = KXMouseY - layout.knobTop;
    } else {
        _state->press = State::Press::Track;
        _state->pageStep = _KXStep().step;
        _turnPage();
    }
}

void KXUIListBox::_pressRow(int row, const _KXModifiers& modifiers) {
    const bool alone = !_state->several || !(modifiers.shift || _KXIsShortcut(modifiers));
    const bool second =
        alone && row == _state->lastPressed && millisecondsSince(_state->lastPressTime) <= secondPressWithin;
    _select(row, modifiers, !alone && !modifiers.shift);
    if (second)
        _state->activatedNow = row;
    _state->lastPressed = second || !alone ? -1 : row; // a third press begins anew
    _state->lastPressTime = _KXLogicCurrentTime;
    _state->pressY = KXMouseY;
    if (!alone && !modifiers.shift)
        _state->press = State::Press::Nothing;
}

/// The user comes to a row: selects it alone, or of several rows all from the anchor on, or in or out.
void KXUIListBox::_select(int row, const _KXModifiers& modifiers, bool takesInOrOut) {
    State& state = *_state;
    const int anchor = state.anchor;
    if (state.several && takesInOrOut) {
        state.rows[row].isSelected = !state.rows[row].isSelected;
        state.selected = state.anchor = state.rowToReveal = row;
        state.changedNow = true;
    } else if (state.several && modifiers.shift && anchor != -1) {
        if (row != state.selected || !state.rows[row].isSelected)
            state.changedNow = true;
        _selectOnly(anchor, row);
        state.selected = state.rowToReveal = row;
    } else {
        const auto wasAlone = [&] { return nextSelectedIndex(-1) == row && nextSelectedIndex(row) == -1; };
        state.changedNow |= row != state.selected || (state.several && !wasAlone());
        setSelectedIndex(row);
    }
}

void KXUIListBox::_dragKnob() {
    const Layout layout = _settledLayout();
    if (_state->holds(State::Press::Knob) && layout.knobTravel() > 0)
        _state->scrolled = std::clamp<std::int64_t>(std::int64_t{KXMouseY} - _state->grip - layout.top, 0,
                                                    layout.knobTravel()) *
                           layout.furthest / layout.knobTravel();
}

// A hand that is not still must not select the row beside the one that it presses.
void KXUIListBox::_dragRows(const _KXModifiers& modifiers) {
    State& state = *_state;
    if (state.holds(State::Press::Row) && std::abs(std::int64_t{KXMouseY} - state.pressY) >= dragBegins)
        state.press = State::Press::Rows;
    if (!state.holds(State::Press::Rows))
        return;
    const Layout layout = _settledLayout();
    const int row = indexAt({static_cast<float>(layout.left), static_cast<float>(KXMouseY)});
    if (row == -1 || row == state.selected)
        return;
    _select(row, {true, modifiers.control, modifiers.alt, modifiers.command}, false);
    state.lastPressed = -1;
}

// Once in a step; the pointer may rest outside.
void KXUIListBox::_scrollByDragging() {
    State& state = *_state;
    constexpr unsigned slowest = 100, fastest = 16; // milliseconds for a row
    const Layout layout = _settledLayout();
    const std::int64_t above = std::int64_t{layout.top} - KXMouseY,
                       below = std::int64_t{KXMouseY} - layout.bottom + 1;
    const std::int64_t outside = std::max(above, below);
    if (std::exchange(state.dragStep, _KXStep().step) == _KXStep().step)
        return;
    if (!state.holds(State::Press::Rows) || outside <= 0 || _mouseIsElsewhere() || count() == 0) {
        state.dragTime = slowest; // the first row comes at once
        return;
    }
    const auto pause = static_cast<unsigned>(std::max<std::int64_t>(fastest, slowest - outside));
    state.dragTime += 1000 / std::max(1u, _KXLogicSpeed);
    const int rows = static_cast<int>(state.dragTime / pause), last = count() - 1;
    state.dragTime %= pause;
    const std::int64_t row = std::int64_t{state.selected} + (above > 0 ? -rows : rows);
    if (rows > 0)
        _select(static_cast<int>(std::clamp<std::int64_t>(row, 0, last)), {true, false, false, false}, false);
}

// Turns a page towards the pointer, until the knob is under it.
void KXUIListBox::_turnPage() {
    const Layout layout = _settledLayout();
    const std::int64_t page = static_cast<std::int64_t>(layout.pageRows()) * layout.rowHeight;
    if (KXMouseY < layout.knobTop)
        _state->scrolled -= page;
    else if (KXMouseY >= layout.knobBottom)
        _state->scrolled += page;
}

// Notches toward the user go down. Scrolled to its end, and by steps: ten notches beyond it are not kept.
void KXUIListBox::_turnWheel(float notches) {
    const Layout layout = _settledLayout();
    constexpr float most = 1e6f; // notches; no number becomes none
    const double pixels =
        notches >= -most && notches <= most ? -double{notches} * rowsPerNotch * layout.rowHeight : 0;
    const double whole = std::trunc(_state->wheelRest + pixels);
    _state->wheelRest += pixels - whole;
    _state->scrolled += static_cast<std::int64_t>(whole);
    _settledLayout();
}

void KXUIListBox::State::heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    box._typeKey(key, modifiers);
}

// What it means by itself of keys with Control.
bool KXUIListBox::State::needsKey(int key, const _KXModifiers& modifiers) const {
    return _KXFocus::needsKey(key, modifiers) ||
           (several &&
            (key == KXKeySpace || box._rowForKey(key) != -1 || (key == KXKeyA && _KXIsShortcut(modifiers))));
}

void KXUIListBox::_typeKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    State& state = *_state;
    const bool first = key.type == KXInputEventKeyDown, shortcut = _KXIsShortcut(modifiers);
    if (first && (key.key == KXKeyReturn || key.key == KXKeyPadEnter))
        state.activatedNow = state.selected;
    if (count() == 0)
        return;
    if (first && state.several && shortcut && key.key == KXKeyA) {
        _selectOnly(0, count() - 1);
        state.changedNow = true;
    } else if (first && state.several && modifiers.control && key.key == KXKeySpace && state.selected != -1) {
        _select(state.selected, modifiers, true);
    } else if (const int row = _rowForKey(key.key); row != -1 && row != state.selected) {
        if (state.several && shortcut && !modifiers.shift)
            state.selected = state.anchor = state.rowToReveal = row;
        else
            _select(row, modifiers, false);
    }
}

// The row that a key goes to from the selected one, -1 for other keys.
int KXUIListBox::_rowForKey(int key) const {
    const std::int64_t selected = _state->selected, last = count() - 1;
    const auto row = [last](std::int64_t wanted) {
        return static_cast<int>(std::clamp<std::int64_t>(wanted, 0, last));
    };
    switch (key) {
    case KXKeyUp:
        return row(selected - 1);
    case KXKeyDown:
        return row(selected + 1);
    case KXKeyPageUp:
        return row(selected - _layout().pageRows());
    case KXKeyPageDown:
        return row(selected + _layout().pageRows());
    case KXKeyHome:
        return 0;
    case KXKeyEnd:
        return static_cast<int>(last);
    default:
        return -1;
    }
}

const char* KXUIListBox::_rowText(int row) const {
    const _KXListItem* const item = _state->items ? _state->items->itemAt(row) : nullptr;
    return item ? _state->items->textOf(*item) : _state->rows[static_cast<std::size_t>(row)].text.c_str();
}

// The next row that begins with a word, from row @a from on to the end and on from the first; -1 for none.
int KXUIListBox::_nextBeginningWith(const char* word, int from) const {
    for (std::size_t i = 0, rows = _state->rows.size(); i < rows; ++i) {
        const std::size_t row = (from + i) % rows;
        const char* text = _rowText(static_cast<int>(row));
        char visible[1024];
        if (_state->spans == _KXSpans::Colored && std::strstr(text, "{C")) {
            _KXVisibleText(visible, sizeof visible, text);
            text = visible;
        }
        if (_KXBeginsWith(text, word))
            return static_cast<int>(row);
    }
    return -1;
}

void KXUIListBox::_findTyped(const char* text) {
    const std::string typed = _KXFoldedText(text);
    if (typed.empty())
        return;
    if (millisecondsSince(_state->wordTime) > wordEndsAfter)
        _state->word.clear();
    const bool same = typed == _state->word; // the letter that the word consists of, once more
    const bool begins = _state->word.empty();
    _state->wordTime = _KXLogicCurrentTime;
    if (count() == 0)
        return;
    const int current = std::max(0, _state->selected);
    const int next = _state->selected == -1 ? 0 : (_state->selected + 1) % count();
    int row = _nextBeginningWith((_state->word + typed).c_str(), begins ? next : current);
    if (row == -1 && same)
        row = _nextBeginningWith(typed.c_str(), next);
    else
        _state->word += typed;
    if (row != -1)
        _select(row, {}, false);
}
