// What a text area does with mouse and keyboard.

#include "ui/KXUITextArea.h"

#include "core/ground/LogicClock.h"
#include "input/TextInput.h"
#include "ui/KXUITextEntry.h"
#include "ui/Shortcuts.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <cmath>
#include <utility>

_KXUIWidget* KXUIFocusedTextWidget() {
    const _KXFocus* const owner = _KXFocus::keyboardOwner();
    _KXUIWidget* widget = nullptr;
    if (const auto* const entry = dynamic_cast<const _KXTextEntryEditor*>(owner))
        widget = &entry->entry;
    else
        widget = KXUITextArea::_withFocus(owner);
    return widget && !widget->_keyboardIsElsewhere() ? widget : nullptr;
}

/// The area whose part in the focus this is, null for none.
KXUITextArea* KXUITextArea::_withFocus(const _KXFocus* owner) {
    const auto* const state = dynamic_cast<const State*>(owner);
    return state ? &state->area : nullptr;
}

void KXUITextArea::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    _state->windowID = id;
    _state->bar.setWindowID(id);
}

void KXUITextArea::focus() { _state->takeKeyboard(); }
void KXUITextArea::unfocus() { _state->giveUpKeyboard(); }
int KXUITextArea::isFocused() const { return _state->hasKeyboard() ? -1 : 0; }

_KXFocus* KXUITextArea::keyboardPart() { return _state.get(); }
int KXUITextArea::pollInPanel() { return poll(); }
int KXUITextArea::takesWheel() const { return -1; }

int KXUITextArea::poll() {
    State& state = *_state;
    if (_takesInput())
        state.pollTabStop();
    else
        state.leaveOut();
    state.followBar();
    state.hear();
    if (state.hasPointer() && !_mouseIsElsewhere()) {
        state.drag();
        state.scrollByDragging();
    }
    if (isFocused() && !_keyboardIsElsewhere())
        state.showInputMethodTheCursor();
    state.changed = std::exchange(state.changedNow, false);
    return changed();
}

void KXUITextArea::State::compose(const char* composed) {
    if (composition != composed)
        composition = _KXLegibleText(composed).get();
}

// With Control held the left button counts as the right one, as for an entry.
void KXUITextArea::State::heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) {
    if (event.type == KXInputEventMouseDown && event.button == KXMouseLeft && !modifiers.control) {
        if (area.mouseOver())
            press(modifiers.shift);
        else
            giveUpKeyboard();
    } else if (event.type == KXInputEventMouseMoved && hasPointer()) {
        drag();
    } else if (event.type == KXInputEventMouseWheel && area.mouseOver()) {
        turnWheel(event.motion, modifiers.shift);
    }
}

void KXUITextArea::State::press(bool extends) {
    compose("");
    takeKeyboard();
    look();
    if (hasBar() && bar.mouseOver())
        return;
    takePointer();
    const Box where = box();
    dragX = KXMouseX;
    dragY = KXMouseY;
    const _KXTextAreaView::Hit hit =
        view.hit({static_cast<float>(KXMouseX - where.left), static_cast<float>(KXMouseY - where.top)});
    pressPosition = hit.under;
    switch (clicks.press()) {
    case 1:
        edit.select(extends ? edit.anchor() : hit.nearest, hit.nearest);
        break;
    case 2:
        edit.selectWords(pressPosition, pressPosition);
        break;
    default:
        edit.selectLines(pressPosition, pressPosition);
    }
}

// A pointer that rests in the box changes nothing, even where the text has scrolled under it; one to the left
// or right of it scrolls on, the faster the further away it is.
void KXUITextArea::State::drag() {
    const Box where = box();
    const bool rests = KXMouseX == dragX && KXMouseY == dragY;
    if (rests && KXMouseX >= where.left && KXMouseX <= where.right)
        return;
    dragX = KXMouseX;
    dragY = KXMouseY;
    look();
    selectTo({static_cast<float>(KXMouseX - where.left), static_cast<float>(KXMouseY - where.top)});
}

// As far as it is in view: what is above and below is scrolled to by time.
void KXUITextArea::State::selectTo(KXPoint place) {
    const Box where = box();
    place.y = std::clamp(place.y, 0.0f, std::max(0.0f, static_cast<float>(where.bottom - where.top - 1)));
    const _KXTextAreaView::Hit hit = view.hit(place);
    if (clicks.count == 1)
        edit.select(edit.anchor(), hit.nearest);
    else if (clicks.count == 2)
        edit.selectWords(pressPosition, hit.under);
    else if (clicks.count == 3)
        edit.selectLines(pressPosition, hit.under);
}

// Once in a step, by rows.
void KXUITextArea::State::scrollByDragging() {
    constexpr int slowest = 100, fastest = 16; // milliseconds for a row
    if (std::exchange(dragStep, _KXStep().step) == _KXStep().step)
        return;
    const Box where = box();
    const int above = where.top - KXMouseY, below = KXMouseY - where.bottom + 1;
    const int outside = std::max(above, below);
    if (outside <= 0) {
        dragTime = slowest; // the first row comes at once
        return;
    }
    const auto pause = static_cast<unsigned>(std::clamp(slowest - outside, fastest, slowest));
    dragTime += 1000 / std::max(1u, _KXLogicSpeed);
    const auto rows = static_cast<int>(dragTime / pause);
    dragTime %= pause;
    if (rows == 0)
        return;
    look();
    view.scrollBy((above > 0 ? -rows : rows) * view.rowHeight());
    look();
    selectTo({static_cast<float>(KXMouseX - where.left), static_cast<float>(KXMouseY - where.top)});
}

// What the user does to the bar, which knows how far there is to go.
void KXUITextArea::State::followBar() {
    bar.setEnabled(area._takesInput() && hasBar());
    if (!bar.pollInPanel())
        return;
    const double offset =
        bar.offset() < bar.furthest() ? bar.offset() : bar.offset() + area.rect().size.height;
    view.scrollTo(offset / view.rowHeight());
    look();
}

// Notches toward the user go down.
void KXUITextArea::State::turnWheel(KXPoint notches, bool sideways) {
    constexpr int rowsPerNotch = 3;
    constexpr float most = 1e6f; // notches; no number becomes none
    look();
    const auto pixelsOf = [this](float turned) {
        return turned >= -most && turned <= most ? double{turned} * rowsPerNotch * view.rowHeight() : 0;
    };
    if (sideways)
        notches = {-notches.y, 0};
    const double down = -pixelsOf(notches.y), whole = std::trunc(wheelRest + down);
    wheelRest += down - whole;
    view.scrollBy(whole);
    view.scrollRightBy(static_cast<int>(pixelsOf(notches.x)));
    look();
}

// ---- keyboard

void KXUITextArea::State::heardText(const char* typed) {
    if (!isReadOnly)
        changedNow |= edit.type(typed);
}

void KXUITextArea::State::heardKey(const KXInputEvent& event, const _KXModifiers& modifiers) {
    const bool first = event.type == KXInputEventKeyDown;
    if (moveByKey(event.key, modifiers))
        return;
    if (event.key == KXKeyBackspace || event.key == KXKeyDelete)
        eraseByKey(event.key, modifiers);
    else if ((event.key == KXKeyReturn || event.key == KXKeyPadEnter) && !isReadOnly && !modifiers.alt &&
             !modifiers.control && !modifiers.command)
        changedNow |= edit.insert("\n");
    else
        changedNow |= _KXUseEditShortcut(edit, event, modifiers, isReadOnly);
    if (first && !modifiers.alt) // keys with Alt are for the desktop or the game
        passOn(event.key, modifiers);
}

void KXUITextArea::State::goTo(std::size_t position, bool select) {
    edit.select(select ? edit.anchor() : position, position);
}

void KXUITextArea::State::goByRows(int rows, bool select) {
    look();
    if (wantedAt != edit.revision())
        wantedX = view.xOf(edit.cursor());
    goTo(view.rowsBelow(edit.cursor(), rows, wantedX), select);
    wantedAt = edit.revision();
}

// False for other keys.
bool KXUITextArea::State::moveByKey(int key, const _KXModifiers& modifiers) {
    using Step = _KXCursorStep;
    const bool byWords = _KXGoesByWords(modifiers), toEnds = _KXGoesToEnds(modifiers),
               select = modifiers.shift;
    const bool isUp = key == KXKeyUp || key == KXKeyPageUp;
    if (key == KXKeyUp || key == KXKeyDown || key == KXKeyPageUp || key == KXKeyPageDown) {
        look();
        const int rows = key == KXKeyUp || key == KXKeyDown ? 1 : view.pageRows();
        if (toEnds)
            edit.move(isUp ? Step::Start : Step::End, select);
        else
            goByRows(isUp ? -rows : rows, select);
        return true;
    }
    const bool isLeft = key == KXKeyLeft || key == KXKeyHome, isRight = key == KXKeyRight || key == KXKeyEnd;
    if (!isLeft && !isRight)
        return false;
    const bool isArrow = key == KXKeyLeft || key == KXKeyRight;
    look();
    if (!isArrow && modifiers.control)
        edit.move(isLeft ? Step::Start : Step::End, select);
    else if (!isArrow || toEnds)
        goTo(isLeft ? view.rowStart(edit.cursor()) : view.rowEnd(edit.cursor()), select);
    else if (byWords)
        edit.move(isLeft ? Step::WordLeft : Step::WordRight, select);
    else
        edit.move(isLeft ? Step::Left : Step::Right, select);
    return true;
}

void KXUITextArea::State::eraseByKey(int key, const _KXModifiers& modifiers) {
    using Step = _KXCursorStep;
    if (isReadOnly)
        return;
    const bool isLeft = key == KXKeyBackspace;
    look();
    if (_KXGoesToEnds(modifiers))
        changedNow |= edit.eraseTo(isLeft ? view.rowStart(edit.cursor()) : view.rowEnd(edit.cursor()));
    else if (_KXGoesByWords(modifiers))
        changedNow |= edit.erase(isLeft ? Step::WordLeft : Step::WordRight);
    else
        changedNow |= edit.erase(isLeft ? Step::Left : Step::Right);
}

// A tab, or as many blanks as reach to the next stop.
void KXUITextArea::State::putTab() {
    const std::size_t start = edit.selectionStart(),
                      column = edit.characterAt(start) - edit.characterAt(edit.lineStart(edit.lineOf(start)));
    const auto width = static_cast<std::size_t>(tabWidth);
    changedNow |= edit.insert(tabsAreBlanks ? std::string(width - column % width, ' ').c_str() : "\t");
}

void KXUITextArea::State::passOn(int key, const _KXModifiers& modifiers) {
    if (key == KXKeyEscape)
        giveUpKeyboard();
    if (key != KXKeyTab || !hasKeyboard())
        return;
    if (keepsTab && !modifiers.control && !modifiers.shift && !modifiers.command)
        putTab();
    else
        modifiers.shift ? sendKeyboardBack() : sendKeyboardOn();
}

// Input methods open their lists below it.
void KXUITextArea::State::showInputMethodTheCursor() {
    look();
    const Box where = box();
    KXRect caret;
    if (!view.cursorRect(caret))
        return;
    caret.origin.x += static_cast<float>(where.left);
    caret.origin.y += static_cast<float>(where.top);
    caret.size.width = 1;
    _KXSetTextInputRect(caret);
}
