// What a user does to a list box.

#include "ui/KXUIListBox.h"

#include "core/ground/LogicClock.h"
#include "input/Keyboard.h"
#include "input/PressEdge.h"
#include "input/StepInput.h"
#include "text/ColorEscapes.h"
#include "util/TextOrder.h"

#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace {
constexpr std::uint32_t secondPressWithin = 500; // milliseconds
constexpr std::uint32_t wordEndsAfter = 1000;
constexpr int rowsPerNotch = 3;
constexpr int wheelDown = 3, wheelUp = 4; // buttons of KXMouse()

std::uint32_t millisecondsSince(std::uint32_t time) { return _KXLogicCurrentTime - time; }
} // namespace

int KXUIListBox::hasFocus() const { return _state->hasKeyboard() ? -1 : 0; }

void KXUIListBox::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    _state->windowID = id;
}

void KXUIListBox::setFocus(int focus) { focus ? _state->takeKeyboard() : _state->giveUpKeyboard(); }

KXUIListBox::State::State() : buttonHeld(anyButtonHeld()) {}

bool KXUIListBox::State::anyButtonHeld() {
    return KXMouse(KXMouseLeft) || KXMouse(KXMouseRight) || KXMouse(KXMouseMiddle);
}

int KXUIListBox::poll() {
    const int selected = _state->selected;
    _state->activated = -1;
    if (!_takesInput())
        setFocus(0);
    _pollMouse();
    if (_state->isTypedTo()) {
        _findTyped(_KXFocus::takeTyped().text);
        _pollKeys();
    }
    _state->changed = _state->selected != selected;
    return _state->changed || _state->activated != -1 ? -1 : 0;
}

void KXUIListBox::_pollMouse() {
    const Layout layout = _settledLayout();
    const bool pressed = _KXPressBegins(_state->buttonHeld, State::anyButtonHeld());
    if (_mouseIsElsewhere())
        return;
    if (pressed)
        setFocus(mouseOver());
    if (pressed && KXMouse(KXMouseLeft) && mouseOver())
        _press(layout);
    if (_state->holds(State::Press::Knob) && layout.knobTravel() > 0)
        _state->scrolled = std::clamp<std::int64_t>(std::int64_t{KXMouseY} - _state->grip - layout.top, 0,
                                                    layout.knobTravel()) *
                           layout.furthest / layout.knobTravel();
    if (_state->holds(State::Press::Track))
        for (int pages = _KXRepeatsSince(_state->pageStep); pages > 0; --pages)
            _turnPage(_settledLayout());
    _pollWheel(layout);
}

void KXUIListBox::_press(const Layout& layout) {
    const bool inView = KXMouseY >= layout.top && KXMouseY < layout.bottom;
    _state->takePointer();
    if (!layout.scrolls || !inView || KXMouseX < layout.rowsRight) {
        _state->press = State::Press::Row;
        const int row = indexAt(KXMousePoint);
        if (row != -1)
            _pressRow(row);
    } else if (KXMouseY >= layout.knobTop && KXMouseY < layout.knobBottom) {
        _state->press = State::Press::Knob;
        _state->grip = KXMouseY - layout.knobTop;
    } else {
        _state->press = State::Press::Track;
        _state->pageStep = _KXStep().step;
        _turnPage(layout);
    }
}

void KXUIListBox::_pressRow(int row) {
    const bool second =
        row == _state->lastPressed && millisecondsSince(_state->lastPressTime) <= secondPressWithin;
    setSelectedIndex(row);
    if (second)
        _state->activated = row;
    _state->lastPressed = second ? -1 : row; // a third press begins anew
    _state->lastPressTime = _KXLogicCurrentTime;
}

// Turns a page towards the pointer, until the knob is under it.
void KXUIListBox::_turnPage(const Layout& layout) {
    const std::int64_t page = static_cast<std::int64_t>(layout.pageRows()) * layout.rowHeight;
    if (KXMouseY < layout.knobTop)
        _state->scrolled -= page;
    else if (KXMouseY >= layout.knobBottom)
        _state->scrolled += page;
}

// A notch counts once, though every logic step of its frame sees it.
void KXUIListBox::_pollWheel(const Layout& layout) {
    const int notch = (KXMouse(wheelDown) ? 1 : 0) - (KXMouse(wheelUp) ? 1 : 0);
    if (notch == 0 || !mouseOver() || (_state->wheelSeen && _state->wheelTime == _KXLogicCurrentTime))
        return;
    _state->wheelSeen = true;
    _state->wheelTime = _KXLogicCurrentTime;
    _state->scrolled += static_cast<std::int64_t>(notch) * rowsPerNotch * layout.rowHeight;
}

void KXUIListBox::_pollKeys() {
    const auto typed = [](int key) { return _KXWidgetKey(key, true); };
    const bool enter = _KXWidgetKey(KXKeyReturn) | _KXWidgetKey(KXKeyPadEnter);
    const int page = _layout().pageRows();
    const std::int64_t selected = _state->selected;
    std::int64_t row = selected;
    row += typed(KXKeyDown) - typed(KXKeyUp);
    row += static_cast<std::int64_t>(typed(KXKeyPageDown) - typed(KXKeyPageUp)) * page;
    if (typed(KXKeyHome))
        row = std::numeric_limits<int>::min();
    if (typed(KXKeyEnd))
        row = std::numeric_limits<int>::max();
    if (row != selected && count() > 0)
        setSelectedIndex(static_cast<int>(std::clamp<std::int64_t>(row, 0, count() - 1)));
    if (enter)
        _state->activated = _state->selected;
}

// The next row that begins with a word, from row @a from on to the end and on from the first; -1 for none.
int KXUIListBox::_nextBeginningWith(const char* word, int from) const {
    for (std::size_t i = 0, rows = _state->rows.size(); i < rows; ++i) {
        const std::size_t row = (from + i) % rows;
        const char* text = _state->rows[row].c_str();
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

void KXUIListBox::_findTyped(const std::string& text) {
    const std::string typed = _KXFoldedText(text.c_str());
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
        setSelectedIndex(row);
}
