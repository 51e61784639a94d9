#include <Kobaltrix/KXUIButton.h>

#include "core/ground/UIColors.h"
#include "text/KXUIGlobalFont.h"

#include <Kobaltrix/KXDrawing.h>

#include <cstdlib>
#include <cstring>

KXUIButton::KXUIButton()
    : _normalBackgroundColor(_KXUIBackroundColor),
      _depressedBackgroundColor(_KXUIBackgroundColor_Interaction), _borderColor(_KXUIBorderColor),
      _textColor(_KXUITextColor), _text(nullptr) {
    _fontSize = 9;
}

KXUIButton::~KXUIButton() { std::free(_text); }

int KXUIButton::setText(const char* text) {
    if (!text || !_fontInUse())
        return 0;
    if (text != _text) {
        char* const copy = strdup(text); // before the old one goes: it may be a part of it
        std::free(_text);
        _text = copy;
    }
    setSize({-1, -1});
    return -1;
}

void KXUIButton::setSize(KXSize size) {
    if (_text && _fontInUse() && (size.width == -1 || size.height == -1)) {
        const KXSize ideal = _idealSizeForText(_text);
        if (size.width == -1)
            size.width = ideal.width;
        if (size.height == -1)
            size.height = ideal.height;
    }
    _KXUIWidget::setSize(size);
}

int KXUIButton::setFontSize(int size) {
    const int result = _KXUIWidget::setFontSize(size);
    setText(_text); // does nothing without a font or a text
    return result;
}

KXColor KXUIButton::normalBackgroundColor() const { return _normalBackgroundColor; }
KXColor KXUIButton::depressedBackgroundColor() const { return _depressedBackgroundColor; }

void KXUIButton::setNormalBackgroundColor(KXColor color) { _normalBackgroundColor = color; }
void KXUIButton::setNormalBackgroundColor(float r, float g, float b, float a) {
    setNormalBackgroundColor({r, g, b, a});
}

void KXUIButton::setDepressedBackgroundColor(KXColor color) { _depressedBackgroundColor = color; }
void KXUIButton::setDepressedBackgroundColor(float r, float g, float b, float a) {
    setDepressedBackgroundColor({r, g, b, a});
}

void KXUIButton::setBorderColor(KXColor color) { _borderColor = color; }
void KXUIButton::setBorderColor(float r, float g, float b, float a) { setBorderColor({r, g, b, a}); }

void KXUIButton::setTextColor(KXColor color) { _textColor = color; }
void KXUIButton::setTextColor(float r, float g, float b, float a) { setTextColor({r, g, b, a}); }

void KXUIButton::draw() {
    _drawWithBackgroundColor(_isDepressed() ? _depressedBackgroundColor : _normalBackgroundColor);
}

void KXUIButton::_drawWithBackgroundColor(KXColor background) {
    const KXRect box = rect();
    KXDrawRectFill(box, background);
    KXDrawRect(box, _borderColor);
    const KXPoint text = {box.origin.x + KXUIWidgetInnerPadding.width,
                          box.origin.y + KXUIWidgetInnerPadding.height};
    _KXUIGlobalFontPrint(_fontInUse(), text, _textColor, _text);
}

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

void KXUIToggleButton::draw() {
    if (_state == KXUIToggleButtonStateOn)
        _drawWithBackgroundColor(_isDepressed() ? _onDepressedBackgroundColor : _onBackgroundColor);
    else
        KXUIButton::draw();
}
