#include "ui/Focus.h"

#include "input/KXMouse.h"
#include "input/Keyboard.h"
#include "input/TextInput.h"

#include <Kobaltrix/KXInputEvents.h>

#include <utility>

namespace {
struct Owners {
    _KXFocus* keyboard = nullptr;
    _KXFocus* pointer = nullptr;
    // Stops of Tab: the one that is polled or was polled last, and the one before it.
    _KXFocus *stop = nullptr, *stopBefore = nullptr;
    bool keyboardIsOnItsWay = false; // to the next of them
    bool composing = false;          // an input method was at work when typed text was taken last
};
} // namespace

static constinit Owners owners;

static void letGoOfKeyboard() {
    owners.keyboard = nullptr;
    owners.keyboardIsOnItsWay = owners.composing = false;
}

_KXFocus::~_KXFocus() {
    if (hasKeyboard()) {
        letGoOfKeyboard();
        _KXEndTextInput();
    }
    for (_KXFocus** owner : {&owners.pointer, &owners.stop, &owners.stopBefore})
        if (*owner == this)
            *owner = nullptr;
}

_KXFocus* _KXFocus::keyboardOwner() { return owners.keyboard; }

void _KXFocus::takeKeyboard() {
    if (hasKeyboard())
        return;
    if (owners.keyboard)
        owners.keyboard->giveUpKeyboard();
    owners.keyboard = this;
    _KXBeginWidgetKeys();
    _KXBeginTextInput();
    keyboardTaken();
}

void _KXFocus::giveUpKeyboard() {
    if (!hasKeyboard())
        return;
    const std::string typed = _KXTakeTypedText();
    letGoOfKeyboard();
    _KXEndTextInput();
    keyboardLost(typed);
}

bool _KXFocus::isTypedTo() {
    if (!hasKeyboard())
        return false;
    if (!_KXIsElsewhere(windowID, KXKeyboardWindowID))
        return true;
    takeTyped();
    _KXBeginWidgetKeys();
    return false;
}

void _KXFocus::pollTabStop() {
    if (_KXIsElsewhere(windowID, KXKeyboardWindowID))
        return;
    owners.stopBefore = std::exchange(owners.stop, this);
    if (!std::exchange(owners.keyboardIsOnItsWay, false))
        return;
    takeKeyboard();
    tabArrived();
}

void _KXFocus::sendKeyboardOn() { owners.keyboardIsOnItsWay = true; }

void _KXFocus::sendKeyboardBack() {
    if (!owners.stopBefore)
        return;
    owners.stopBefore->takeKeyboard();
    owners.stopBefore->tabArrived();
}

_KXFocus::Typed _KXFocus::takeTyped() {
    _KXKeepTextInput();
    Typed typed = {_KXTakeTypedText(), _KXComposedText()};
    if (inputMethodIsAtWork())
        _KXBeginWidgetKeys();
    owners.composing = !typed.composition.empty();
    return typed;
}

bool _KXFocus::inputMethodIsAtWork() { return owners.composing || !_KXComposedText().empty(); }

void _KXFocus::takePointer() { owners.pointer = this; }

void _KXFocus::keyboardLost(const std::string&) {}

bool _KXFocus::hasPointer() const { return owners.pointer == this && _KXMouseButtonLeft; }
