#include "ui/KXUITextEntry.h"
#include "ui/Look.h"
#include "ui/Theme.h"
#include "ui/WidgetDrawing.h"

#include "core/ground/LogicClock.h"
#include "core/ground/Truncate.h"
#include "core/ground/UIColors.h"
#include "render/ClipScope.h"
#include "render/GLCheck.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXFont.h>

#include <algorithm>
#include <climits>
#include <cmath>

namespace {
KXColor halfOpaque(KXColor color) { return {color.r, color.g, color.b, color.a / 2}; }

int toInt(std::size_t number) { return static_cast<int>(std::min<std::size_t>(number, INT_MAX)); }
} // namespace

KXUITextEntry::KXUITextEntry()
    : _backgroundColor(_KXUIBackroundColor), _borderColor(_KXUIBorderColor), _focusColor(_KXUIFocusColor),
      _textColor(_KXUITextColor), _placeholderColor(halfOpaque(_KXUITextColor)),
      _selectionColor(halfOpaque(_KXUIFocusColor)), _editor(std::make_unique<_KXTextEntryEditor>(*this)),
      _masked(0), _changed(0), _entered(0) {}

void KXUITextEntry::setText(const char* text) { _editor->edit.setText(text); }

const char* KXUITextEntry::text() const { return _editor->edit.text().c_str(); }

int KXUITextEntry::length() const { return toInt(_editor->edit.length()); }

void KXUITextEntry::setMaximumLength(int characters) {
    _editor->edit.setMaximumLength(static_cast<std::size_t>(characters > 0 ? characters : -1));
}

int KXUITextEntry::maximumLength() const {
    const std::size_t characters = _editor->edit.maximumLength();
    return characters == static_cast<std::size_t>(-1) ? 0 : toInt(characters);
}

void KXUITextEntry::setMasked(int masked) {
    _masked = masked ? -1 : 0;
    _editor->edit.setSecret(masked);
}

int KXUITextEntry::isMasked() const { return _masked; }

void KXUITextEntry::setPlaceholder(const char* text) { _editor->placeholder = text ? text : ""; }

void KXUITextEntry::select(int start, int count) {
    _KXTextEdit& edit = _editor->edit;
    const auto first = static_cast<std::size_t>(std::max(0, start));
    const std::size_t anchor = edit.positionOfCharacter(first);
    edit.select(anchor, edit.positionOfCharacter(first + static_cast<std::size_t>(std::max(0, count))));
}

void KXUITextEntry::selectAll() { _editor->edit.selectAll(); }

int KXUITextEntry::cursor() const { return toInt(_editor->edit.characterAt(_editor->edit.cursor())); }

int KXUITextEntry::selectionStart() const {
    return toInt(_editor->edit.characterAt(_editor->edit.selectionStart()));
}

int KXUITextEntry::selectionLength() const {
    return toInt(_editor->edit.characterAt(_editor->edit.selectionEnd())) - selectionStart();
}

int KXUITextEntry::changed() const { return _changed; }

int KXUITextEntry::entered() const { return _entered; }

float KXUITextEntry::_textLeft() const {
    const KXFont* const font = _fontInUse();
    return static_cast<float>(_KXTruncate(rect().origin.x)) + KXUIWidgetInnerPadding.width +
           (font ? font->renderingOffsetForSize(font->getSize()).x : 0);
}

// In a box as high as a line the text begins where that of other widgets does; in others it is centred.
float KXUITextEntry::_textTop() const {
    const float spare = rect().size.height - _idealSizeForText("").height;
    return static_cast<float>(_KXTruncate(rect().origin.y)) + static_cast<float>(_KXTruncate(spare / 2)) +
           KXUIWidgetInnerPadding.height;
}

float KXUITextEntry::_textWidth() const { return rect().size.width - 2 * KXUIWidgetInnerPadding.width; }

// What a stretch of the line covers, from and to given as distances from its left edge.
KXRect KXUITextEntry::_lineRect(float from, float to) const {
    return {{_textLeft() + std::floor(from), _textTop() - 1},
            {std::floor(to) - std::floor(from), std::ceil(_fontInUse()->ascender()) + 2}};
}

void KXUITextEntry::_updateView() {
    _editor->view.update(_editor->shown(), _fontInUse(), _textWidth(), _masked, isFocused());
}

void KXUITextEntry::setSize(KXSize size) {
    if (size.height == -1 && _fontInUse())
        size.height = _idealSizeForText("").height;
    _KXUIWidget::setSize(size);
}

void KXUITextEntry::draw() {
    KX_GL_CHECK("KXUITextEntry::draw");
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    _KXDrawPart(KXUIPartField, rect(), isFocused() ? KXUIPartFocused : KXUIPartNormal, _ownColors());
    if (_fontInUse() && _fontInUse()->getSize() > 0)
        _drawText();
}

KXUIColors KXUITextEntry::_ownColors() const {
    return {_borderColor, _backgroundColor, _backgroundColor, _selectionColor, _focusColor, _textColor};
}

void KXUITextEntry::_drawText() {
    const float margin = std::max(1.0f, KXUIWidgetInnerPadding.width - 1);
    const KXRect box = rect();
    const _KXClipScope clip(
        {{box.origin.x + margin, box.origin.y + 1}, {box.size.width - 2 * margin, box.size.height - 2}});
    _updateView();
    const _KXTextEdit& shown = _editor->shown();
    const _KXTextView& view = _editor->view;
    // Printing adds the font's offset, which the left edge of the line includes already.
    const KXPoint origin = {static_cast<float>(_KXTruncate(box.origin.x)) + KXUIWidgetInnerPadding.width,
                            _textTop()};
    if (shown.text().empty())
        _fontInUse()->print(origin, _KXFaintText(_placeholderColor), "%s", _editor->placeholder.c_str());
    const bool showsSelection = isFocused() && shown.hasSelection();
    const KXRect selected = showsSelection
                                ? _lineRect(view.xOf(shown.selectionStart()), view.xOf(shown.selectionEnd()))
                                : KXZeroRect;
    if (showsSelection)
        _KXDrawPart(KXUIPartSelection, selected, KXUIPartNormal, _ownColors());
    _fontInUse()->_printPlain(origin, _KXPanelText(_textColor), view.shown());
    if (showsSelection && _KXTheme.usesPalette) { // whose selection wants a text of its own
        const _KXClipScope within(selected);
        _fontInUse()->_printPlain(origin, _KXPartText(KXUIPartSelection, KXUIPartNormal, _ownColors()),
                                  view.shown());
    }
    if (isFocused())
        _drawCursor();
}

// What is being composed is underlined; it lies before the cursor.
void KXUITextEntry::_drawCursor() {
    const _KXTextEdit& shown = _editor->shown();
    const float x = _editor->view.xOf(shown.cursor());
    if (!_editor->composition.empty()) {
        KXRect line = _lineRect(_editor->view.xOf(_editor->edit.selectionStart()), x);
        line.origin.y += line.size.height - 1;
        line.size.height = 1;
        KXDrawRectFill(line, _KXPanelText(_textColor));
    }
    if (_editor->blink.isOn(shown.revision()))
        KXDrawRectFill(_lineRect(x, x + 1), _KXPanelText(_textColor));
}

void KXUITextEntry::setBackgroundColor(KXColor color) { _backgroundColor = color; }
void KXUITextEntry::setBackgroundColor(float r, float g, float b, float a) {
    _backgroundColor = {r, g, b, a};
}

void KXUITextEntry::setBorderColor(KXColor color) { _borderColor = color; }
void KXUITextEntry::setBorderColor(float r, float g, float b, float a) { _borderColor = {r, g, b, a}; }

void KXUITextEntry::setFocusColor(KXColor color) { _focusColor = color; }
void KXUITextEntry::setFocusColor(float r, float g, float b, float a) { _focusColor = {r, g, b, a}; }

void KXUITextEntry::setTextColor(KXColor color) { _textColor = color; }
void KXUITextEntry::setTextColor(float r, float g, float b, float a) { _textColor = {r, g, b, a}; }

void KXUITextEntry::setPlaceholderColor(KXColor color) { _placeholderColor = color; }
void KXUITextEntry::setPlaceholderColor(float r, float g, float b, float a) {
    _placeholderColor = {r, g, b, a};
}

void KXUITextEntry::setSelectionColor(KXColor color) { _selectionColor = color; }
void KXUITextEntry::setSelectionColor(float r, float g, float b, float a) { _selectionColor = {r, g, b, a}; }
