#include <Kobaltrix/KXUIMenu.h>

#include "core/ground/Truncate.h"
#include "ui/Caption.h"
#include "ui/Theme.h"
#include "ui/WidgetDrawing.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXKeyboard.h>

#include <algorithm>
#include <iterator>

_KXUIMenuBase::_KXUIMenuBase()
    : _parent(nullptr), _borderSize(1), _colors{{0.5f, 0.5f, 0.5f, 1},
                                                {0.8f, 0.8f, 0.8f, 1},
                                                {1, 1, 1, 1},
                                                {0, 0, 0, 1},
                                                {0, 0, 0, 1}},
      _owner(nullptr), _justOpened(0) {}

_KXUIMenuBase::~_KXUIMenuBase() {
    for (_KXUIMenuBase* child : _children)
        child->_parent = nullptr;
    setParent(nullptr);
    if (_owner)
        static_cast<void>(_owner->_takeOut(this).release()); // somebody else deletes it
}

int _KXUIMenuBase::borderSize() const { return _borderSize; }

int _KXUIMenuBase::itemWidth() const {
    const KXFont* const font = _fontInUse();
    if (!font || !_label)
        return 0;
    return _KXTruncate(_KXCaptionsAreLaidOut() ? _KXCaption::widthOf(*font, _label->text())
                                               : font->stringBounds(_label->text()).width);
}

void _KXUIMenuBase::setBackgroundNormalColor(float r, float g, float b, float a) {
    _colors.normal = {r, g, b, a};
}
void _KXUIMenuBase::setBackgroundHoverColor(float r, float g, float b, float a) {
    _colors.hover = {r, g, b, a};
}
void _KXUIMenuBase::setBackgroundOpenColor(float r, float g, float b, float a) {
    _colors.open = {r, g, b, a};
}
void _KXUIMenuBase::setBorderColor(float r, float g, float b, float a) { _colors.border = {r, g, b, a}; }
void _KXUIMenuBase::setTextColor(float r, float g, float b, float a) { _colors.text = {r, g, b, a}; }

_KXUIMenuBase* _KXUIMenuBase::getParent() const { return _parent; }

void _KXUIMenuBase::setParent(_KXUIMenuBase* parent) {
    for (const _KXUIMenuBase* above = parent; above; above = above->_parent)
        if (above == this)
            return; // parents in a circle would have no end
    if (parent)
        parent->_children.push_back(this);
    if (_parent) {
        auto& siblings = _parent->_children;
        // From the end, because menus delete their entries in that order. Given the same parent again it is
        // found twice, and one of the two goes.
        const auto found = std::find(siblings.rbegin(), siblings.rend(), this);
        siblings.erase(std::next(found).base());
    }
    _parent = parent;
}

void _KXUIMenuBase::_setLabel(const std::string& text) {
    constexpr std::size_t longest = 254;
    _label = std::make_unique<_KXCaption>(std::string(_KXFirstBytes(text.c_str(), longest)));
}

_KXUIMenuBase::Colors _KXUIMenuBase::_drawnColors() const {
    const KXUIPalette& palette = _KXTheme.palette;
    if (_KXTheme.usesPalette)
        return {_KXWidgetColor(palette.menu), _KXWidgetColor(palette.buttonHovered),
                _KXWidgetColor(palette.buttonPressed), _KXWidgetColor(palette.border),
                _KXWidgetColor(palette.text)};
    return {_KXWidgetColor(_colors.normal), _KXWidgetColor(_colors.hover), _KXWidgetColor(_colors.open),
            _KXWidgetColor(_colors.border), _KXWidgetColor(_colors.text)};
}

/// Draws the caption, which leaves a width free on the right if it is laid out.
void _KXUIMenuBase::_drawLabel(float free) const {
    if (!_label)
        return;
    KXRect box = rect();
    box.size.width -= free;
    const float border = static_cast<float>(_borderSize);
    _label->drawLine(_fontInUse(), box,
                     {border + KXUIWidgetInnerPadding.width, border + KXUIWidgetInnerPadding.height},
                     _drawnColors().text, KXTextAlignLeft);
}

/// Whether the row is on screen for a click that ends now. The title of a menu overlaps its first row by the
/// border, and the click that opens the menu there must not act on the row as well.
bool _KXUIMenuBase::_takesClicks() { return _parent && _parent->isOpen() && !_parent->_justOpened; }

_KXUIMenuItem::_KXUIMenuItem(const char* name, void (*callback)(void*), void* context, int modifierKey,
                             int key)
    : _callback(callback), _context(context), _modifierKey(key ? modifierKey : 0), _key(key), _latch(0),
      _modifierLetGo(0) {
    if (!name)
        return;
    std::string label = name;
    if (key && modifierKey)
        label = label + " (" + KXKeyToString(modifierKey) + " - " + KXKeyToString(key) + ")";
    else if (key)
        label = label + " (" + KXKeyToString(key) + ")";
    _setLabel(label);
}

_KXUIMenuItem::~_KXUIMenuItem() = default;

void _KXUIMenuItem::close() {}
void _KXUIMenuItem::resize() {}
void _KXUIMenuItem::layout() {}

int _KXUIMenuItem::isOpen() { return _parent ? _parent->isOpen() : 0; }

/// Whether the keys have come together since the last poll. A key that stayed held while its modifier was let
/// go and pressed again counts, although the keyboard reports its press only once.
bool _KXUIMenuItem::_isShortcutPressed() { return KXKey(_key, -1) || (_modifierLetGo && KXKey(_key)); }

void _KXUIMenuItem::poll() {
    const bool chosen = clicked(KXMouseLeft) && _takesClicks();
    if (_takesInput() && !_keyboardIsElsewhere() && (!_modifierKey || KXKey(_modifierKey))) {
        if (_isShortcutPressed() && !_latch) {
            _latch = -1;
            _modifierLetGo = 0;
            return _activate();
        }
        if (_modifierKey && KXKey(_key)) { // both stay held: the latch stays, too
            if (chosen)
                _activate();
            return;
        }
        _modifierLetGo = 0;
    } else {
        _modifierLetGo = (_latch || _modifierLetGo) && KXKey(_key) ? -1 : 0;
    }
    _latch = 0;
    if (chosen)
        _activate();
}

// The last thing that a poll does: the callback may have deleted the item when it returns.
void _KXUIMenuItem::_activate() {
    for (_KXUIMenuBase* menu = _parent; menu; menu = menu->_parent)
        menu->close();
    if (_callback)
        _callback(_context);
}

void _KXUIMenuItem::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    const auto [corner, size] = rect();
    const float border = static_cast<float>(_borderSize);
    const Colors colors = _drawnColors();
    KXDrawRectFill({corner, {border, size.height}}, colors.border);
    KXDrawRectFill({{corner.x + size.width - border, corner.y}, {border, size.height}}, colors.border);
    KXDrawRectFill({{corner.x + border, corner.y}, {size.width - 2 * border, size.height}},
                   _label && mouseOver() ? colors.hover : colors.normal);
    if (_label)
        return _drawLabel(0);
    const KXPoint line = {static_cast<float>(_KXTruncate(corner.x + border)),
                          static_cast<float>(_KXTruncate(corner.y + size.height * 0.5))};
    KXDrawRectFill({line, {size.width - 2 * border, 1}}, colors.text);
}
