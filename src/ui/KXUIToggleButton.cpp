#include <Kobaltrix/KXUIButton.h>

#include "ui/Description.h"

KXUIToggleButton::KXUIToggleButton()
    : _onBackgroundColor(depressedBackgroundColor()), _onDepressedBackgroundColor(normalBackgroundColor()),
      _state(KXUIToggleButtonStateOff) {}

KXUIToggleButton::~KXUIToggleButton() = default;

KXUIToggleButtonState KXUIToggleButton::state() const { return _state; }
void KXUIToggleButton::setState(KXUIToggleButtonState state) { _state = state; }

void KXUIToggleButton::setOnBackgroundColor(KXColor color) { _onBackgroundColor = color; }
void KXUIToggleButton::setOnDepressedBackgroundColor(KXColor color) { _onDepressedBackgroundColor = color; }

int KXUIToggleButton::clicked(int button) {
    const int result = KXUIButton::clicked(button);
    if (result && _state == KXUIToggleButtonStateOff)
        _state = KXUIToggleButtonStateOn;
    else if (result && _state == KXUIToggleButtonStateOn)
        _state = KXUIToggleButtonStateOff;
    return result;
}

KXUIDescription KXUIToggleButton::description() const {
    KXUIDescription said = KXUIButton::description();
    said.role = "toggle button";
    if (_state == KXUIToggleButtonStateOn)
        _KXAddState(said, "on");
    return said;
}

void KXUIToggleButton::draw() {
    if (_state == KXUIToggleButtonStateOn)
        _drawWithBackgroundColor(_isDepressed() ? _onDepressedBackgroundColor : _onBackgroundColor, true);
    else
        KXUIButton::draw();
}
