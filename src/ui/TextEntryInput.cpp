// What an entry does with mouse and keyboard.

#include "ui/KXUITextEntry.h"

#include "core/ground/LogicClock.h"
#include "input/Keyboard.h"
#include "input/PressEdge.h"
#include "input/TextInput.h"

#include <Kobaltrix/KXClipboard.h>
#include <Kobaltrix/KXMouse.h>

#include <cstdlib>
#include <utility>

KXUITextEntry* KXUIFocusedTextEntry() {
    const auto* const editor = dynamic_cast<_KXTextEntryEditor*>(_KXFocus::keyboardOwner());
    return editor && !editor->entry._keyboardIsElsewhere() ? &editor->entry : nullptr;
}

namespace {
// What was typed with a modifier in one step may have let go of it by now.
bool isHeldOrWas(int key) { return _KXKeyTextEntry(key, 0) || KXKeyWentDown(key); }
// A modifier is two keys with neighbouring numbers.
bool isEitherHeld(int key) { return isHeldOrWas(key) || isHeldOrWas(key + 1); }
bool isShiftHeld() { return isEitherHeld(KXKeyLeftShift); }
bool isAltHeld() { return isEitherHeld(KXKeyLeftAlt); }
bool isControlHeld() { return isEitherHeld(KXKeyLeftControl); }
bool isCommandHeld() { return (isControlHeld() || isEitherHeld(KXKeyRightCommand)) && !isAltHeld(); }
} // namespace

int _KXTextEntryEditor::countClicks() {
    constexpr std::uint32_t quick = 500; // milliseconds
    constexpr int near = 4;              // points
    const bool again = clicks > 0 && _KXLogicCurrentTime - pressTime <= quick &&
                       std::abs(KXMouseX - pressX) <= near && std::abs(KXMouseY - pressY) <= near;
    clicks = again ? clicks % 3 + 1 : 1;
    pressTime = _KXLogicCurrentTime;
    pressX = dragX = KXMouseX;
    pressY = KXMouseY;
    return clicks;
}

void _KXTextEntryEditor::compose(std::string text) {
    if (text == composition && text.empty())
        return;
    if (!text.empty()) {
        _KXTextEdit together = edit;
        together.setMaximumLength(static_cast<std::size_t>(-1));
        together.insert(text.c_str());
        composed = std::move(together);
    }
    composition = std::move(text);
}

void _KXTextEntryEditor::keyboardTaken() {
    mouseHeld = _KXMouseButtonLeft;
    blinkTime = _KXLogicCurrentTime;
}

void _KXTextEntryEditor::keyboardLost(const std::string& typed) {
    compose({});
    unreportedChange |= edit.insert(typed.c_str());
}

KXUITextEntry::~KXUITextEntry() = default;

void KXUITextEntry::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    _editor->windowID = id;
}

void KXUITextEntry::focus() { _editor->takeKeyboard(); }
void KXUITextEntry::unfocus() { _editor->giveUpKeyboard(); }
int KXUITextEntry::isFocused() const { return _editor->hasKeyboard() ? -1 : 0; }

int KXUITextEntry::poll() {
    _changed = _entered = 0;
    if (_takesInput())
        _editor->pollTabStop();
    else
        unfocus();
    if (_editor->isTypedTo())
        _pollTyping();
    _pollMouse();
    if (_editor->isTypedTo())
        _pollKeys();
    if (_editor->isTypedTo())
        _showInputMethodTheCursor();
    _noteChange(std::exchange(_editor->unreportedChange, false));
    return _changed || _entered ? -1 : 0;
}

// With Control held the left button counts as the right one, so pressing it then does nothing. Control that
// comes or goes while the button is held ends nothing.
void KXUITextEntry::_pollMouse() {
    const bool pressed = _KXPressBegins(_editor->mouseHeld, _KXMouseButtonLeft) && KXMouse(KXMouseLeft);
    if (_mouseIsElsewhere())
        return;
    if (pressed && mouseOver())
        _press();
    else if (pressed)
        unfocus();
    else if (_editor->hasPointer())
        _drag();
}

void KXUITextEntry::_press() {
    _editor->compose({});
    _updateView(); // as it was drawn; with the focus it would scroll to the cursor
    _KXTextEdit& edit = _editor->edit;
    const float x = static_cast<float>(KXMouseX) - _textLeft();
    const std::size_t nearest = _editor->view.positionNearest(x);
    focus();
    _editor->takePointer();
    _editor->pressPosition = _editor->view.positionUnder(x);
    switch (_editor->countClicks()) {
    case 1:
        edit.select(isShiftHeld() ? edit.anchor() : nearest, nearest);
        break;
    case 2:
        edit.selectWords(_editor->pressPosition, _editor->pressPosition);
        break;
    default:
        edit.selectAll();
    }
}

// A pointer that rests in the box changes nothing, even where the text has scrolled under it; one outside
// scrolls on, the faster the further away it is.
void KXUITextEntry::_drag() {
    const float pointer = static_cast<float>(KXMouseX), left = rect().origin.x;
    if (KXMouseX == _editor->dragX && pointer >= left && pointer <= left + rect().size.width)
        return;
    _editor->dragX = KXMouseX;
    _updateView();
    const float x = pointer - _textLeft();
    _KXTextEdit& edit = _editor->edit;
    if (_editor->clicks == 1)
        edit.select(edit.anchor(), _editor->view.positionNearest(x));
    else if (_editor->clicks == 2)
        edit.selectWords(_editor->pressPosition, _editor->view.positionUnder(x));
}

void KXUITextEntry::_pollTyping() {
    _KXFocus::Typed typed = _KXFocus::takeTyped();
    _noteChange(_editor->edit.insert(typed.text.c_str()));
    _editor->compose(std::move(typed.composition));
}

void KXUITextEntry::_pollKeys() {
    using Step = _KXCursorStep;
    constexpr struct {
        int key;
        Step step, wordStep;
        bool erases;
    } keys[] = {{KXKeyLeft, Step::Left, Step::WordLeft, false},
                {KXKeyRight, Step::Right, Step::WordRight, false},
                {KXKeyHome, Step::Start, Step::Start, false},
                {KXKeyEnd, Step::End, Step::End, false},
                {KXKeyBackspace, Step::Left, Step::WordLeft, true},
                {KXKeyDelete, Step::Right, Step::WordRight, true}};
    for (const auto& row : keys) {
        const Step step = isControlHeld() ? row.wordStep : row.step;
        for (int times = _KXWidgetKey(row.key, true); times > 0; --times) {
            if (row.erases)
                _noteChange(_editor->edit.erase(step));
            else
                _editor->edit.move(step, isShiftHeld());
        }
    }
    _pollClipboardKeys();
    _pollFocusKeys();
}

// Every key is read, so that none counts later because Control comes down while it is held.
void KXUITextEntry::_pollClipboardKeys() {
    const bool all = _KXWidgetKey(KXKeyA), copy = _KXWidgetKey(KXKeyC), cut = _KXWidgetKey(KXKeyX),
               paste = _KXWidgetKey(KXKeyV);
    if (!isCommandHeld())
        return;
    _KXTextEdit& edit = _editor->edit;
    if (all)
        edit.selectAll();
    const bool copied =
        (copy || cut) && !_masked && edit.hasSelection() && KXSetClipboardText(edit.selectedText().c_str());
    if (cut && copied)
        _noteChange(edit.erase(_KXCursorStep::Left));
    if (paste)
        _noteChange(edit.insert(KXClipboardText()));
}

void KXUITextEntry::_pollFocusKeys() {
    const bool enter = _KXWidgetKey(KXKeyReturn), padEnter = _KXWidgetKey(KXKeyPadEnter),
               escape = _KXWidgetKey(KXKeyEscape), tab = _KXWidgetKey(KXKeyTab);
    if (isAltHeld())
        return; // keys with Alt are for the desktop or the game
    if (enter || padEnter)
        _entered = -1;
    if (escape)
        unfocus();
    else if (tab)
        isShiftHeld() ? _KXFocus::sendKeyboardBack() : _KXFocus::sendKeyboardOn();
}

void KXUITextEntry::_noteChange(bool changed) {
    if (changed)
        _changed = -1;
}

// Input methods open their lists below it.
void KXUITextEntry::_showInputMethodTheCursor() {
    _updateView();
    const KXRect box = rect();
    const float x = _textLeft() + _editor->view.xOf(_editor->shown().cursor());
    _KXSetTextInputRect({{x, box.origin.y}, {1, box.size.height}});
}
