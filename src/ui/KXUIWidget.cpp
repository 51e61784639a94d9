#include <Kobaltrix/KXUIWidget.h>

#include "core/ground/ErrorSlot.h"
#include "input/PressEdge.h"
#include "text/FontCache.h"
#include "text/KXUIGlobalFont.h"
#include "ui/Caption.h"
#include "ui/Focus.h"
#include "ui/Theme.h"
#include "ui/Tooltip.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXInputEvents.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXUILayout.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <utility>

const int _KXUIWidget::KXUIWidgetStateNormal;
const int _KXUIWidget::KXUIWidgetStateHover;
const int _KXUIWidget::KXUIWidgetStateDepressed;
constinit KXSize _KXUIWidget::KXUIWidgetInnerPadding = {3, 3};

_KXUIWidget::_KXUIWidget()
    : _rect(KXZeroRect), _natural(KXZeroSize), _sizeChanges(0), _isBeingPlaced(false), _windowID(0),
      _isDisabled(0), _isHidden(0), _buttons{}, _pairedWith(nullptr), _layout(nullptr),
      _fontAliasMode(KXAliasModeTexture), _fontSize(10), _font(_KXUIGlobalFont),
      _fontGeneration(_KXGlobalFontGeneration) {}

_KXUIWidget::~_KXUIWidget() {
    _pairWith(nullptr);
    _KXForgetTooltipOwner(this);
    if (_layout)
        _layout->_forget(*this);
}

void _KXUIWidget::setOrigin(KXPoint origin) { _rect.origin = origin; }

void _KXUIWidget::setSize(KXSize size) {
    _rect.size = size;
    if (_isBeingPlaced)
        return;
    _natural = size;
    ++_sizeChanges;
}

void _KXUIWidget::setRect(KXPoint origin, KXSize size) {
    setOrigin(origin);
    setSize(size);
}

KXRect _KXUIWidget::rect() const { return _rect; }

_KXUIWidget::ButtonRecord* _KXUIWidget::_record(int button) {
    return button >= 0 && button < std::ssize(_buttons) ? &_buttons[button] : nullptr;
}

void _KXUIWidget::setWindowID(unsigned id) { _windowID = id; }

unsigned _KXUIWidget::windowID() const { return _windowID; }

/// The size that it has outside of a layout.
KXSize _KXUIWidget::_naturalSize() const { return _natural; }

/// Grows with each time that it was given a natural size.
unsigned _KXUIWidget::_sizeChangeCount() const { return _sizeChanges; }

/// Takes the place that a layout has for it.
void _KXUIWidget::_place(KXRect rect) {
    _isBeingPlaced = true;
    try {
        setRect(rect.origin, rect.size);
    } catch (...) {
        _isBeingPlaced = false;
        throw;
    }
    _isBeingPlaced = false;
}

bool _KXUIWidget::_mouseIsElsewhere() const { return _KXIsElsewhere(_windowID, KXMouseWindowID); }

bool _KXUIWidget::_keyboardIsElsewhere() const { return _KXIsElsewhere(_windowID, KXKeyboardWindowID); }

int _KXUIWidget::mouseOver() { return _takesInput() && _isInRect() ? -1 : 0; }

/// Whether the pointer is over it, also while it is disabled.
bool _KXUIWidget::_isUnderPointer() { return _takesInput() ? mouseOver() : !_isHidden && _isInRect(); }

bool _KXUIWidget::_isInRect() const {
    if (_mouseIsElsewhere())
        return false;
    const float x = static_cast<float>(KXMouseX), y = static_cast<float>(KXMouseY);
    return _rect.origin.x < x && x <= _rect.origin.x + _rect.size.width && _rect.origin.y < y &&
           y <= _rect.origin.y + _rect.size.height;
}

int _KXUIWidget::mouseDownInside(int button) {
    const ButtonRecord* record = _record(button);
    return record ? record->pressedInside : 0;
}

int _KXUIWidget::clicked(int button) {
    ButtonRecord* const record = _record(button);
    if (!record)
        return 0;
    if (!_takesInput())
        return _letGo(button), 0;
    if (record->pendingClick) {
        record->pendingClick = 0;
        return -1;
    }
    const int down = KXMouse(button), over = mouseOver();
    if (_KXPressBegins(record->held, down)) {
        if (over)
            record->pressedInside = -1;
    } else if (!down) {
        const bool released = record->pressedInside && record->state == KXUIWidgetStateDepressed;
        record->pressedInside = 0;
        if (released)
            return -1; // wherever the pointer is now: the user saw the button held when letting go
    }
    if (!over)
        record->state = KXUIWidgetStateNormal;
    else
        record->state = record->pressedInside && down ? KXUIWidgetStateDepressed : KXUIWidgetStateHover;
    return 0;
}

/// Instead of clicked() while the user does not work it. A press that is held on is none for it afterwards.
void _KXUIWidget::_letGo(int button) {
    ButtonRecord* const record = _record(button);
    _KXPressBegins(record->held, KXMouse(button));
    record->pendingClick = record->pressedInside = 0;
    record->state = KXUIWidgetStateNormal;
}

void _KXUIWidget::click(int button) {
    if (ButtonRecord* record = _record(button))
        record->pendingClick = -1;
}

void _KXUIWidget::draw() { static_cast<void>(_KXWidgetDrawing(*this)); }

void _KXUIWidget::setEnabled(int enabled) { _isDisabled = enabled ? 0 : -1; }
int _KXUIWidget::isEnabled() const { return _isDisabled ? 0 : -1; }
void _KXUIWidget::setVisible(int visible) { _isHidden = visible ? 0 : -1; }
int _KXUIWidget::isVisible() const { return _isHidden ? 0 : -1; }
bool _KXUIWidget::_takesInput() const { return !_isDisabled && !_isHidden; }

void _KXUIWidget::setTooltip(const char* text) {
    _tooltip = text && *text ? std::make_unique<_KXCaption>(text) : nullptr;
}
const char* _KXUIWidget::tooltip() const { return _tooltip ? _tooltip->text() : nullptr; }
_KXCaption* _KXUIWidget::_tooltipCaption() const { return _tooltip.get(); }

/// The other of a label and the widget that it names.
_KXUIWidget* _KXUIWidget::_pair() const { return _pairedWith; }

/// Ends the pairs that both are in; null or the widget itself for no new one.
void _KXUIWidget::_pairWith(_KXUIWidget* other) {
    for (_KXUIWidget* each : {this, other})
        if (each && each->_pairedWith)
            std::exchange(each->_pairedWith, nullptr)->_pairedWith = nullptr;
    if (!other || other == this)
        return;
    _pairedWith = other;
    other->_pairedWith = this;
}

_KXWidgetDrawing::_KXWidgetDrawing(_KXUIWidget& widget)
    : _isVisible(widget.isVisible()), _before(_KXWidgetOpacity) {
    if (!widget.isEnabled())
        _KXWidgetOpacity *= _KXTheme.disabledOpacity;
    if (_isVisible)
        _KXTooltipOwnerIsDrawn(widget);
}

int _KXUIWidget::setFont(const char* path, KXAliasMode mode) {
    std::string copy = path ? path : ""; // before the old one goes: it may be the same
    _font = _KXGlobalFontCache ? _KXGlobalFontCache->fontAtPath(copy.c_str(), mode, _fontSize) : nullptr;
    _fontPath = std::move(copy);
    _fontAliasMode = mode;
    _fontGeneration = _KXGlobalFontGeneration;
    return _font ? -1 : 0;
}

int _KXUIWidget::setFontSize(int size) {
    KXFont* const font = _fontInUse();
    if (!font)
        return 0;
    if (font == _KXUIGlobalFont) {
        _KXReportError("Widget(%p) is using the global UI font. Its size is not changeable.",
                       static_cast<void*>(this));
        return 0;
    }
    font->setSize(size);
    return -1;
}

/// The font, or null once the cache has deleted it.
KXFont* _KXUIWidget::_fontInUse() const {
    return _fontGeneration == _KXGlobalFontGeneration ? _font : nullptr;
}

/// The size of a widget around one line of text; zero without a font.
KXSize _KXUIWidget::_idealSizeForText(const char* text) const {
    KXFont* const font = _fontInUse();
    if (!font)
        return KXZeroSize;
    const float width = _KXCaptionsAreLaidOut() ? _KXCaption::widthOf(*font, text)
                                                : std::ceil(font->stringBounds(text).width);
    return {width + 2 * KXUIWidgetInnerPadding.width,
            std::ceil(font->ascender()) + 2 * KXUIWidgetInnerPadding.height};
}

/// -1 while any mouse button is held on the widget, else 0.
int _KXUIWidget::_isDepressed() const {
    return std::any_of(std::begin(_buttons), std::end(_buttons),
                       [](const ButtonRecord& record) { return record.state == KXUIWidgetStateDepressed; })
               ? -1
               : 0;
}
