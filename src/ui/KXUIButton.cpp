#include <Kobaltrix/KXUIButton.h>

#include "core/ground/UIColors.h"
#include "ui/Caption.h"
#include "ui/Look.h"
#include "ui/WidgetDrawing.h"

KXUIButton::KXUIButton()
    : _normalBackgroundColor(_KXUIBackroundColor),
      _depressedBackgroundColor(_KXUIBackgroundColor_Interaction), _borderColor(_KXUIBorderColor),
      _textColor(_KXUITextColor) {
    _fontSize = 9;
}

KXUIButton::~KXUIButton() = default;

int KXUIButton::setText(const char* text) {
    if (!text || !_fontInUse())
        return 0;
    _KXChangeCaption(_caption, std::make_unique<_KXCaption>(text), [this] { setSize({-1, -1}); });
    return -1;
}

void KXUIButton::setSize(KXSize size) {
    _noteAskedSize(size);
    if (_caption && _fontInUse() && (size.width == -1 || size.height == -1)) {
        const KXSize ideal = _idealSizeForText(_caption->text());
        if (size.width == -1)
            size.width = ideal.width;
        if (size.height == -1)
            size.height = ideal.height;
    }
    _KXUIWidget::setSize(size);
}

int KXUIButton::setFontSize(int size) {
    const int result = _KXUIWidget::setFontSize(size);
    if (_caption && _fontInUse())
        setSize({-1, -1});
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

KXUIDescription KXUIButton::description() const {
    return _described("button", _caption ? _caption->text() : nullptr);
}

void KXUIButton::draw() {
    _drawWithBackgroundColor(_isDepressed() ? _depressedBackgroundColor : _normalBackgroundColor);
}

void KXUIButton::_drawWithBackgroundColor(KXColor background, bool isOn) {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    const KXRect box = rect();
    const KXUIColors own = {_borderColor, background, background, background, _borderColor, _textColor};
    const unsigned states = (_isDepressed() ? KXUIPartPressed : 0U) | (isOn ? KXUIPartOn : 0U) |
                            (mouseOver() ? KXUIPartHovered : 0U);
    _KXDrawPart(KXUIPartButton, box, states, own);
    if (_caption)
        _caption->drawLine(_fontInUse(), box, KXUIWidgetInnerPadding,
                           _KXPartText(KXUIPartButton, states, own), KXTextAlignCentre,
                           _mnemonicIn(_caption->text()));
}
