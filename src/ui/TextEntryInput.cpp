// What an entry does with mouse and keyboard.

#include "ui/KXUITextEntry.h"

#include "core/ground/LogicClock.h"
#include "input/TextInput.h"
#include "ui/Description.h"
#include "ui/Shortcuts.h"

#include <Kobaltrix/KXClipboard.h>
#include <Kobaltrix/KXMouse.h>

#include <cstdlib>
#include <utility>

KXUITextEntry* KXUIFocusedTextEntry() {
    const auto* const editor = dynamic_cast<_KXTextEntryEditor*>(_KXFocus::keyboardOwner());
    return editor && !editor->entry._keyboardIsElsewhere() ? &editor->entry : nullptr;
}

void _KXTextEntryEditor::compose(std::string text) {
    if (text == composition && text.empty())
        return;
    if (!text.empty()) {
        _KXTextEdit together; // without what can be taken back
        together.setText(edit.text().c_str());
        together.setSecret(edit.isSecret());
        together.select(edit.anchor(), edit.cursor());
        together.insert(text.c_str());
        composed = std::move(together);
    }
    composition = std::move(text);
}

void _KXTextEntryEditor::keyboardTaken() { blink.begin(); }

// With Control held the left button counts as the right one, so pressing it then does nothing. Control that
// comes or goes while the button is held ends nothing.
void _KXTextEntryEditor::heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) {
    if (event.type == KXInputEventMouseDown && event.button == KXMouseLeft && !modifiers.control) {
        if (entry.mouseOver())
            entry._press(modifiers.shift);
        else
            giveUpKeyboard();
    } else if (event.type == KXInputEventMouseMoved && hasPointer()) {
        entry._drag();
    }
}

KXUITextEntry::~KXUITextEntry() = default;

void KXUITextEntry::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    _editor->windowID = id;
}

void KXUITextEntry::focus() { _editor->takeKeyboard(); }
void KXUITextEntry::unfocus() { _editor->giveUpKeyboard(); }
int KXUITextEntry::isFocused() const { return _editor->hasKeyboard() ? -1 : 0; }

_KXFocus& KXUITextEntry::_focus() { return *_editor; }
_KXFocus* KXUITextEntry::keyboardPart() { return _editor.get(); }
int KXUITextEntry::pollInPanel() { return poll(); }

KXUIDescription KXUITextEntry::description() const {
    KXUIDescription said = _described("text entry", nullptr);
    if (said.name.empty())
        said.name = _KXSpokenText(_editor->placeholder.c_str());
    if (isMasked())
        _KXAddState(said, "masked");
    else
        said.value = text();
    return said;
}

int KXUITextEntry::poll() {
    if (_takesInput())
        _editor->pollTabStop();
    else
        _editor->leaveOut();
    _editor->hear();
    if (_editor->hasPointer() && !_mouseIsElsewhere())
        _drag(); // which goes on scrolling while the pointer rests outside
    if (isFocused() && !_keyboardIsElsewhere())
        _showInputMethodTheCursor();
    return _told();
}

/// A poll for what came before an event; Tab does not stop there.
int KXUITextEntry::_pollUntil(std::uint64_t event) {
    _editor->hear(event);
    return _told();
}

int KXUITextEntry::_told() {
    _changed = std::exchange(_editor->changed, false) ? -1 : 0;
    _entered = std::exchange(_editor->entered, false) ? -1 : 0;
    return _changed || _entered ? -1 : 0;
}

void KXUITextEntry::_press(bool extends) {
    _editor->compose({});
    _updateView(); // as it was drawn; with the focus it would scroll to the cursor
    _KXTextEdit& edit = _editor->edit;
    const float x = static_cast<float>(KXMouseX) - _textLeft();
    const std::size_t nearest = _editor->view.positionNearest(x);
    focus();
    _editor->takePointer();
    _editor->pressPosition = _editor->view.positionUnder(x);
    _editor->dragX = KXMouseX;
    switch (_editor->clicks.press()) {
    case 1:
        edit.select(extends ? edit.anchor() : nearest, nearest);
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
    if (_editor->clicks.count == 1)
        edit.select(edit.anchor(), _editor->view.positionNearest(x));
    else if (_editor->clicks.count == 2)
        edit.selectWords(_editor->pressPosition, _editor->view.positionUnder(x));
}

void _KXTextEntryEditor::heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    using Step = _KXCursorStep;
    constexpr struct {
        int key;
        Step step, wordStep, endStep;
        bool erases;
    } keys[] = {{KXKeyLeft, Step::Left, Step::WordLeft, Step::Start, false},
                {KXKeyRight, Step::Right, Step::WordRight, Step::End, false},
                {KXKeyHome, Step::Start, Step::Start, Step::Start, false},
                {KXKeyEnd, Step::End, Step::End, Step::End, false},
                {KXKeyBackspace, Step::Left, Step::WordLeft, Step::Start, true},
                {KXKeyDelete, Step::Right, Step::WordRight, Step::End, true}};
    for (const auto& row : keys) {
        if (row.key != key.key)
            continue;
        const Step step = _KXGoesToEnds(modifiers)    ? row.endStep
                          : _KXGoesByWords(modifiers) ? row.wordStep
                                                      : row.step;
        if (row.erases)
            changed |= edit.erase(step);
        else
            edit.move(step, modifiers.shift);
        return;
    }
    const bool first = key.type == KXInputEventKeyDown;
    changed |= _KXUseEditShortcut(edit, key, modifiers, false);
    if (first && !modifiers.alt) // keys with Alt are for the desktop or the game
        passOn(key.key, modifiers);
}

bool _KXTextEntryEditor::needsKey(int key, const _KXModifiers& modifiers) const {
    return _KXFocus::needsKey(key, modifiers) || _KXIsEditKey(key, modifiers);
}

void _KXTextEntryEditor::passOn(int key, const _KXModifiers& modifiers) {
    if (key == KXKeyReturn || key == KXKeyPadEnter)
        entered = true;
    else if (key == KXKeyEscape)
        giveUpKeyboard();
    else if (key == KXKeyTab && hasKeyboard())
        modifiers.shift ? sendKeyboardBack() : sendKeyboardOn();
}

// Input methods open their lists below it.
void KXUITextEntry::_showInputMethodTheCursor() {
    _updateView();
    const KXRect box = rect();
    const float x = _textLeft() + _editor->view.xOf(_editor->shown().cursor());
    _KXSetTextInputRect({{x, box.origin.y}, {1, box.size.height}});
}
