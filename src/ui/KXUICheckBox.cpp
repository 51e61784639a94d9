#include <Kobaltrix/KXUICheckBox.h>

#include "core/ground/UIColors.h"
#include "ui/Caption.h"
#include "ui/Description.h"
#include "ui/Look.h"
#include "ui/Marks.h"
#include "ui/WholePixels.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXDrawing.h>

#include <algorithm>
#include <cmath>

KXUICheckBox::KXUICheckBox()
    : _boxColor(_KXUIBackroundColor), _borderColor(_KXUIBorderColor), _markColor(_KXUITextColor),
      _textColor(_KXUITextColor), _isChecked(0), _isRound(0) {}

KXUICheckBox::~KXUICheckBox() = default;

/// Has it look like one of several, of which one is marked.
void KXUICheckBox::_beRound() { _isRound = -1; }

void KXUICheckBox::setText(const char* text) {
    _KXChangeCaption(_caption, text ? std::make_unique<_KXCaption>(text) : nullptr, [this] {
        setSize({-1, -1});
    });
}

const char* KXUICheckBox::text() const { return _caption ? _caption->text() : ""; }

// Of the box: as high as a letter may be.
float KXUICheckBox::_side() const {
    constexpr float withoutFont = 12;
    const KXFont* const font = _fontInUse();
    return font ? std::ceil(font->ascender()) : withoutFont;
}

/// What box and caption need.
KXSize KXUICheckBox::_fit() const {
    const KXFont* const font = _fontInUse();
    const float side = _side();
    const float caption =
        font && _caption ? 2 * KXUIWidgetInnerPadding.width + _KXCaption::widthOf(*font, _caption->text())
                         : 0;
    return {side + caption, side + 2 * KXUIWidgetInnerPadding.height};
}

void KXUICheckBox::setSize(KXSize size) {
    _noteAskedSize(size);
    if (size.width == -1 || size.height == -1) {
        const KXSize fit = _fit();
        if (size.width == -1)
            size.width = fit.width;
        if (size.height == -1)
            size.height = fit.height;
    }
    _KXUIWidget::setSize(size);
}

void KXUICheckBox::setChecked(int checked) { _isChecked = checked ? -1 : 0; }
int KXUICheckBox::isChecked() const { return _isChecked; }

void KXUICheckBox::setBoxColor(KXColor color) { _boxColor = color; }
void KXUICheckBox::setBorderColor(KXColor color) { _borderColor = color; }
void KXUICheckBox::setMarkColor(KXColor color) { _markColor = color; }
void KXUICheckBox::setTextColor(KXColor color) { _textColor = color; }

KXUIDescription KXUICheckBox::description() const {
    KXUIDescription said = _described(_isRound ? "radio button" : "check box", text());
    _KXAddState(said, _isChecked ? "checked" : "not checked");
    return said;
}

int KXUICheckBox::clicked(int button) {
    const int result = _KXUIWidget::clicked(button);
    if (result)
        _isChecked = _isChecked ? 0 : -1;
    return result;
}

void KXUICheckBox::_drawMark(KXRect box) const {
    const KXColor color = _KXPanelText(_markColor);
    if (_isRound)
        _KXDrawDisc(box, _KXWholePixel(box.size.width) / 4, color);
    else
        _KXDrawHook(box, color);
}

void KXUICheckBox::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    const KXRect all = rect();
    const float side = _side();
    const int left = _KXWholePixel(all.origin.x),
              top = _KXWholePixel(all.origin.y + std::floor((all.size.height - side) / 2)),
              pixels = _KXWholePixel(side);
    const KXRect box = _KXRectBetween(left, top, left + pixels, top + pixels);
    const unsigned states = (_isDepressed() ? KXUIPartPressed : 0U) | (mouseOver() ? KXUIPartHovered : 0U);
    const KXUIColors own = {_borderColor, _boxColor, _borderColor, _boxColor, _borderColor, _markColor};
    if (_isRound) {
        const _KXPartColors colors = _KXColorsOf(KXUIPartField, states, own);
        _KXDrawDisc(box, pixels / 2, colors.border);
        _KXDrawDisc(box, pixels / 2 - 1, colors.fill);
    } else {
        _KXDrawPart(KXUIPartField, box, states, own);
    }
    if (_isChecked)
        _drawMark(box);
    if (!_caption)
        return;
    const float inset = side + 2 * KXUIWidgetInnerPadding.width;
    _caption->drawLineLaidOut(
        _fontInUse(), {{all.origin.x + inset, all.origin.y}, {all.size.width - inset, all.size.height}}, 0,
        _KXPanelText(_textColor), KXTextAlignLeft, _mnemonicIn(_caption->text()));
}
