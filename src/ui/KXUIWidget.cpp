#include <Kobaltrix/KXUIWidget.h>

#include "core/ground/ErrorSlot.h"
#include "input/PressEdge.h"
#include "text/FontCache.h"
#include "text/KXUIGlobalFont.h"
#include "ui/Caption.h"
#include "ui/Description.h"
#include "ui/Focus.h"
#include "ui/Theme.h"
#include "ui/Tooltip.h"
#include "ui/WholePixels.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXInputEvents.h>
#include <Kobaltrix/KXKeyboard.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXUILabel.h>
#include <Kobaltrix/KXUILayout.h>
#include <Kobaltrix/KXUIPanel.h>

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
    : _rect(KXZeroRect), _natural(KXZeroSize), _asked(KXZeroSize), _sizeChanges(0), _isBeingPlaced(false),
      _windowID(0), _isDisabled(0), _isHidden(0), _wasActivated(0), _mnemonic(0), _buttons{},
      _pairedWith(nullptr), _layout(nullptr), _inPanel(nullptr), _fontAliasMode(KXAliasModeTexture),
      _fontSize(10), _font(_KXUIGlobalFont), _fontGeneration(_KXGlobalFontGeneration) {}

_KXUIWidget::~_KXUIWidget() {
    _pairWith(nullptr);
    _KXForgetTooltipOwner(this);
    if (_layout)
        _layout->_forget(*this);
    if (_inPanel)
        _inPanel->remove(*this);
    _KXFocus::forgetClaims(*this);
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

/// To be called first by setSize() of widgets that fit their size to a text where it is -1.
void _KXUIWidget::_noteAskedSize(KXSize size) {
    if (!_isBeingPlaced)
        _asked = size;
}

/// The size that it has outside of a layout.
KXSize _KXUIWidget::_naturalSize() const { return _natural; }

/// Grows with each time that it was given a natural size.
unsigned _KXUIWidget::_sizeChangeCount() const { return _sizeChanges; }

/// Takes the place that a layout has for it.
void _KXUIWidget::_place(KXRect rect) {
    _isBeingPlaced = true;
    try {
        setRect(rect.origin, rect.size);
        setOrigin(rect.origin); // by which a slider places its track
    } catch (...) {
        _isBeingPlaced = false;
        throw;
    }
    _isBeingPlaced = false;
}

bool _KXUIWidget::_mouseIsElsewhere() const {
    return _KXIsElsewhere(_windowID, KXMouseWindowID) || _KXFocus::pointerIsKeptFrom(*this);
}

bool _KXUIWidget::_keyboardIsElsewhere() const { return _KXIsElsewhere(_windowID, KXKeyboardWindowID); }

int _KXUIWidget::mouseOver() { return _takesInput() && _isInRect() ? -1 : 0; }

/// Whether the pointer is over it, also while it is disabled.
bool _KXUIWidget::_isUnderPointer() { return _takesInput() ? mouseOver() : !_isHidden && _isInRect(); }

bool _KXUIWidget::_isInRect() const {
    return !_mouseIsElsewhere() &&
           _KXContains(_rect, {static_cast<float>(KXMouseX), static_cast<float>(KXMouseY)});
}

int _KXUIWidget::containsPoint(KXPoint point) const { return _KXContains(_rect, point) ? -1 : 0; }

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

int _KXUIWidget::activated() const { return _wasActivated; }
void _KXUIWidget::_setActivated(int activated) { _wasActivated = activated ? -1 : 0; }
KXUIPanel* _KXUIWidget::_panel() const { return _inPanel; }
void _KXUIWidget::_setPanel(KXUIPanel* panel) { _inPanel = panel; }

static char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

/// The key that reaches it with Alt in its panel, 0 for none.
void _KXUIWidget::_setMnemonic(int key) {
    const char* const name = key ? KXKeyName(key) : "";
    _mnemonic = name[0] && !name[1] ? upper(name[0]) : 0; // a letter or a digit
}

/// The index of the letter in its caption that stands for that key, -1 for none.
int _KXUIWidget::_mnemonicIn(const char* text) const {
    for (int i = 0; _mnemonic && text[i]; ++i)
        if (upper(text[i]) == _mnemonic)
            return i;
    return -1;
}

int _KXUIWidget::pollInPanel() { return clicked(KXMouseLeft); }
int _KXUIWidget::takesKeyboard() const { return -1; }
void _KXUIWidget::handleMouse(const KXUIMouse&) {}
KXRect _KXUIWidget::focusRect() const { return rect(); }
int _KXUIWidget::takesWheel() const { return 0; }
int _KXUIWidget::hasPopup() const { return 0; }
void _KXUIWidget::drawPopup() {}
void _KXUIWidget::refit() {
    if (_asked.width == -1 || _asked.height == -1)
        setSize(_asked);
}
_KXFocus* _KXUIWidget::keyboardPart() { return nullptr; }

int _KXUIWidget::handleKey(const KXUIKey& key) {
    const bool presses = key.key == KXKeyReturn || key.key == KXKeyPadEnter || key.key == KXKeySpace;
    if (!presses || key.control || key.alt || key.command)
        return 0;
    if (!key.isRepeat)
        click(KXMouseLeft);
    return -1;
}

KXUIDescription _KXUIWidget::description() const { return _described("", nullptr); }

/// What all widgets say of themselves. @param caption null for one that has none.
KXUIDescription _KXUIWidget::_described(const char* role, const char* caption) const {
    const auto* const label = dynamic_cast<const KXUILabel*>(_pair());
    const bool isLabel = dynamic_cast<const KXUILabel*>(this);
    KXUIDescription said = {role, caption ? caption : "", "", ""};
    if (said.name.empty() && label && !isLabel)
        said.name = label->text();
    if (said.name.empty() && tooltip())
        said.name = tooltip();
    said.name = _KXSpokenText(said.name.c_str());
    if (_isDisabled)
        _KXAddState(said, "disabled");
    if (_isHidden)
        _KXAddState(said, "hidden");
    if (_inPanel && _inPanel->focused() == this)
        _KXAddState(said, "focused");
    return said;
}

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
    if (font == _KXUIGlobalFont || font == _KXThemeFont()) {
        _KXReportError("Widget(%p) is using the global UI font. Its size is not changeable.",
                       static_cast<void*>(this));
        return 0;
    }
    font->setSize(size);
    return -1;
}

/// The font, its own or that of all, or null once the cache has deleted it.
KXFont* _KXUIWidget::_fontInUse() const {
    if (_KXTheme.font && _fontPath.empty())
        if (KXFont* const font = _KXThemeFont())
            return font;
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
