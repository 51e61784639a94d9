#include <Kobaltrix/KXUILabel.h>

#include "core/ground/UIColors.h"
#include "ui/Caption.h"
#include "ui/Focus.h"
#include "ui/Look.h"
#include "ui/WidgetDrawing.h"

#include <cmath>

KXUILabel::KXUILabel() : _textColor(_KXUITextColor), _wanted{-1, -1} {}

KXUILabel::~KXUILabel() = default;

void KXUILabel::setText(const char* text) {
    _KXChangeCaption(_text, std::make_unique<_KXCaption>(text ? text : ""), [this] { _fit(); });
}

const char* KXUILabel::text() const { return _text ? _text->text() : ""; }

void KXUILabel::setOptions(const KXTextOptions& options) {
    _options = options;
    _fit();
}

void KXUILabel::setTextColor(KXColor color) { _textColor = color; }

void KXUILabel::setSize(KXSize size) {
    _wanted = size;
    _fit();
}

int KXUILabel::setFont(const char* path, KXAliasMode mode) {
    const int result = _KXUIWidget::setFont(path, mode);
    _fit();
    return result;
}

int KXUILabel::setFontSize(int size) {
    const int result = _KXUIWidget::setFontSize(size);
    _fit();
    return result;
}

// The text in a box; null without text or font.
const KXTextLayout* KXUILabel::_laidOut(KXSize size) {
    const KXFont* const font = _fontInUse();
    if (!_text || !font)
        return nullptr;
    KXTextOptions options = _options;
    options.width = size.width;
    options.height = size.height;
    return &_text->layOut(*font, options);
}

/// What its text takes up, in whole pixels, wrapped at a width if that is positive.
KXSize KXUILabel::_sizeAt(float width) {
    const KXTextLayout* const layout = _laidOut({width, 0});
    if (!layout || !*layout->text())
        return KXZeroSize;
    return {std::ceil(layout->size().width), std::ceil(layout->size().height)};
}

void KXUILabel::_fit() {
    KXSize size = _wanted;
    if (size.width == -1 || size.height == -1) {
        const KXSize text = _sizeAt(size.width);
        if (size.width == -1)
            size.width = text.width;
        if (size.height == -1)
            size.height = text.height;
    }
    _KXUIWidget::setSize(size);
}

void KXUILabel::setWidget(_KXUIWidget* widget) { _pairWith(widget); }

_KXUIWidget* KXUILabel::widget() const { return _pair(); }

int KXUILabel::clicked(int button) {
    const int result = _KXUIWidget::clicked(button);
    _KXUIWidget* const named = widget();
    if (!result || button != KXMouseLeft || !named)
        return result;
    if (_KXFocus* const focus = named->keyboardPart())
        focus->takeKeyboard();
    else
        named->click(KXMouseLeft);
    return result;
}

int KXUILabel::takesKeyboard() const { return 0; }

void KXUILabel::refit() { _fit(); }

KXUIDescription KXUILabel::description() const { return _described("label", text()); }

void KXUILabel::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    const KXRect box = rect();
    const KXTextLayout* const layout = _laidOut(box.size);
    if (!layout)
        return;
    const KXPoint corner = {std::floor(box.origin.x), std::floor(box.origin.y)};
    layout->draw(corner, _KXPanelText(_textColor));
    _KXUnderline(*layout, _mnemonicIn(layout->text()), corner, _KXPanelText(_textColor));
}
