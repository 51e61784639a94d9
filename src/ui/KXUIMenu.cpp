#include <Kobaltrix/KXUIMenu.h>

#include "core/ground/Truncate.h"
#include "text/KXUIGlobalFont.h"
#include "ui/Caption.h"
#include "ui/Description.h"
#include "ui/Theme.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXFont.h>

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

// What the mark of a sub-menu takes of its row.
static constexpr float markWidth = 6;

/// Goes through the entries that a menu has now while what it calls removes entries, adds some, deletes the
/// menu or goes through the same menu again. It lives on the stack of a poll; menus tell all walks of theirs.
struct KXUIMenu::Walk {
    explicit Walk(KXUIMenu* walked) : menu(walked), end(walked->_entries.size()), outer(innermost) {
        innermost = this;
    }
    ~Walk() { innermost = outer; }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;

    /// Null at the end, which is also where the menu was deleted.
    _KXUIMenuBase* next() { return menu && position < end ? menu->_entries[position++].get() : nullptr; }

    static void entryGoes(const KXUIMenu* menu, std::size_t index) {
        for (Walk* walk = innermost; walk; walk = walk->outer) {
            if (walk->menu != menu)
                continue;
            walk->position -= index < walk->position;
            walk->end -= index < walk->end;
        }
    }
    static void menuGoes(const KXUIMenu* menu) {
        for (Walk* walk = innermost; walk; walk = walk->outer)
            if (walk->menu == menu)
                walk->menu = nullptr;
    }

    KXUIMenu* menu;
    std::size_t position = 0, end;
    Walk* outer;
    static constinit Walk* innermost;
};
constinit KXUIMenu::Walk* KXUIMenu::Walk::innermost = nullptr;

KXUIMenu::KXUIMenu(const char* title) : KXUIMenu() {
    if (title)
        _setLabel(title);
    KXUIMenu::resize();
}

KXUIMenu::KXUIMenu() : _open(0), _closesSiblings(0) {}

KXUIMenu::~KXUIMenu() {
    Walk::menuGoes(this);
    clearMenuItems();
}

void KXUIMenu::clearMenuItems() {
    while (!_entries.empty())
        _takeOut(_entries.back().get());
}

/// Takes an entry out of the menu. From the end, because menus are cleared in that order.
std::unique_ptr<_KXUIMenuBase> KXUIMenu::_takeOut(_KXUIMenuBase* entry) {
    std::size_t index = _entries.size() - 1;
    while (_entries[index].get() != entry)
        --index;
    Walk::entryGoes(this, index);
    std::unique_ptr<_KXUIMenuBase> taken = std::move(_entries[index]);
    _entries.erase(_entries.begin() + static_cast<std::ptrdiff_t>(index));
    taken->_owner = nullptr;
    return taken;
}

int KXUIMenu::setFont(const char* path, KXAliasMode mode) {
    const KXFont* const font = _fontInUse();
    return setFont(path, mode, font && font != _KXUIGlobalFont ? font->getSize() : _fontSize);
}

int KXUIMenu::setFont(const char* path, KXAliasMode mode, int size) {
    const int result = _KXUIWidget::setFont(path, mode);
    if (result) {
        // Before the size: a sub-menu would set the shared font back to the size of the font it had.
        for (const auto& entry : _entries)
            entry->setFont(_fontPath.c_str(), _fontAliasMode);
        setFontSize(size);
    } else {
        resize();
    }
    return result;
}

int KXUIMenu::setFontSize(int size) {
    const int result = _KXUIWidget::setFontSize(size);
    if (const KXFont* font = _fontInUse())
        for (const auto& entry : _entries)
            entry->setFontSize(font->getSize());
    resize();
    return result;
}

void KXUIMenu::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    for (const auto& entry : _entries)
        entry->setWindowID(id);
}

/// Owns an entry from now on, unless memory runs out.
void KXUIMenu::_addEntry(_KXUIMenuBase& entry) {
    _KXUIMenuBase* const parent = entry._parent;
    _entries.emplace_back();
    try {
        entry.setParent(this);
        _entries.back().reset(&entry);
        entry._owner = this;
        entry.setWindowID(windowID());
        resize();
        entry.resize();
    } catch (const std::bad_alloc&) { // it was not measured
        static_cast<void>(_entries.back().release());
        _entries.pop_back();
        entry._owner = nullptr;
        entry.setParent(parent);
        throw;
    }
}

void KXUIMenu::addMenuItemWithName(const char* name, void (*callback)(void*), void* context) {
    addMenuItemWithName(name, callback, context, KXKeyNone, KXKeyNone);
}

void KXUIMenu::addMenuItemWithName(const char* name, void (*callback)(void*), void* context, int modifierKey,
                                   int key) {
    auto item = std::make_unique<_KXUIMenuItem>(name, callback, context, modifierKey, key);
    item->_colors = _colors;
    if (!_fontPath.empty() && _fontInUse() != _KXUIGlobalFont)
        item->setFont(_fontPath.c_str(), _fontAliasMode);
    _addEntry(*item);
    static_cast<void>(item.release());
}

void KXUIMenu::addSubMenu(KXUIMenu* subMenu) {
    if (!subMenu)
        return;
    for (const _KXUIMenuBase* above = this; above; above = above->_owner)
        if (above == subMenu)
            return;
    for (const _KXUIMenuBase* above = this; above; above = above->_parent)
        if (above == subMenu)
            return;
    const KXFont* const font = _fontInUse();
    if (!_fontPath.empty() && font && font != _KXUIGlobalFont) {
        const int size = font->getSize(); // of the font that the sub-menu will share, and set to its own size
        subMenu->setFont(_fontPath.c_str(), _fontAliasMode);
        subMenu->setFontSize(size);
    }
    KXUIMenu* const owner = subMenu->_owner;
    if (owner)
        static_cast<void>(owner->_takeOut(subMenu).release());
    try {
        _addEntry(*subMenu);
    } catch (const std::bad_alloc&) {
        if (owner) {
            owner->_entries.emplace_back(subMenu); // where there is a place for it
            subMenu->_owner = owner;
        }
        throw;
    }
}

void KXUIMenu::addDivider() { addMenuItemWithName(nullptr, nullptr, nullptr); }

void KXUIMenu::close() {
    _open = 0;
    for (const auto& entry : _entries)
        entry->close();
}

int KXUIMenu::isOpen() { return _open; }

void KXUIMenu::resize() {
    if (!_fontInUse())
        return setSize({100, 100});
    const float frame = 2 * KXUIWidgetInnerPadding.width + 2 * static_cast<float>(_borderSize);
    const float height =
        _idealSizeForText(_label ? _label->text() : "").height + 2 * static_cast<float>(_borderSize);
    if (!_parent)
        setSize({frame + static_cast<float>(itemWidth()), height});
    int widest = 0;
    for (const auto& entry : _entries)
        widest = std::max(widest, entry->itemWidth());
    const bool hasMark = std::any_of(_entries.begin(), _entries.end(), [](const auto& entry) {
        return dynamic_cast<const KXUIMenu*>(entry.get()) != nullptr;
    });
    const float mark = hasMark && _KXCaptionsAreLaidOut() ? markWidth : 0;
    for (const auto& entry : _entries)
        entry->setSize({frame + static_cast<float>(widest) + mark, height});
}

void KXUIMenu::layout() {
    const auto [corner, size] = rect();
    const float left = static_cast<float>(_KXTruncate(corner.x));
    float row = 0;
    for (const auto& entry : _entries) {
        ++row;
        const float y =
            static_cast<float>(_KXTruncate(corner.y + size.height * row - static_cast<float>(_borderSize)));
        if (!_parent)
            entry->setOrigin({left, y});
        else
            entry->setOrigin({static_cast<float>(_KXTruncate(left + size.width)),
                              static_cast<float>(_KXTruncate(y - size.height))});
        entry->layout();
    }
}

void KXUIMenu::poll() {
    if (!_takesInput()) {
        _letGo(KXMouseLeft);
        return close();
    }
    layout();
    _openOrCloseByClick();
    Walk walk(this);
    while (_KXUIMenuBase* entry = walk.next())
        entry->poll();
    if (walk.menu)
        _justOpened = 0;
}

void KXUIMenu::_openOrCloseByClick() {
    _justOpened = 0; // still set if a callback threw
    const int pressed = mouseDownInside(0);
    if (!clicked(KXMouseLeft))
        return;
    const bool byMouse = pressed && !mouseDownInside(0); // and not by click()
    if (byMouse && _parent && !_takesClicks())
        return; // the row is not on screen
    if (_open)
        return close();
    _open = _justOpened = -1;
    _closeSiblings();
}

void KXUIMenu::setClosesSiblings(int closes) { _closesSiblings = closes ? -1 : 0; }

void KXUIMenu::_closeSiblings() {
    bool closes = false;
    for (const KXUIMenu* above = _owner; above; above = above->_owner)
        closes = closes || above->_closesSiblings;
    if (closes)
        for (const auto& entry : _owner->_entries)
            if (entry.get() != this)
                entry->close();
}

void KXUIMenu::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    const auto [corner, size] = rect();
    const float border = static_cast<float>(_borderSize);
    const Colors colors = _drawnColors();
    KXDrawRectFill({{corner.x + border, corner.y}, {size.width - border, size.height}}, _open ? colors.open
                                                                                        : mouseOver()
                                                                                            ? colors.hover
                                                                                            : colors.normal);
    KXDrawRectFill({corner, {size.width, border}}, colors.border);
    KXDrawRectFill({corner, {border, size.height}}, colors.border);
    KXDrawRectFill({{corner.x + size.width - border, corner.y}, {border, size.height}}, colors.border);
    _drawLabel(_parent ? markWidth : 0);
    if (_parent)
        KXDrawRectFill({{corner.x + size.width - markWidth, corner.y}, {5, size.height}}, colors.border);
    if (_open)
        _drawEntries();
    else if (!_parent)
        KXDrawRectFill({{static_cast<float>(_KXTruncate(corner.x)),
                         static_cast<float>(_KXTruncate(corner.y + size.height - border))},
                        {size.width, border}},
                       colors.border);
}

void KXUIMenu::_drawEntries() {
    for (const auto& entry : _entries)
        entry->draw();
    if (_entries.empty())
        return;
    const float border = static_cast<float>(_borderSize);
    const Colors colors = _drawnColors();
    const KXRect first = _entries.front()->rect(), last = _entries.back()->rect();
    KXDrawRectFill({first.origin, {first.size.width, border}}, colors.border);
    KXDrawRectFill({{last.origin.x, last.origin.y + last.size.height - border}, {last.size.width, border}},
                   colors.border);
}

int KXUIMenu::pollInPanel() {
    poll();
    return 0;
}

int KXUIMenu::takesKeyboard() const { return 0; }

int KXUIMenu::containsPoint(KXPoint point) const {
    const auto contains = [&](const auto& entry) { return entry->containsPoint(point); };
    return _KXUIWidget::containsPoint(point) ||
                   (_open && std::any_of(_entries.begin(), _entries.end(), contains))
               ? -1
               : 0;
}

KXUIDescription KXUIMenu::description() const {
    KXUIDescription said = _described("menu", _label ? _label->text() : nullptr);
    if (_open)
        _KXAddState(said, "open");
    return said;
}
