#include "ui/KXUIMenuTree.h"

#include "ui/Description.h"

#include <utility>

_KXUIMenuTree::_KXUIMenuTree(bool hasTitles) : _state(std::make_unique<State>(*this, hasTitles)) {}

_KXUIMenuTree::~_KXUIMenuTree() = default;

_KXUIMenuTree::State::State(_KXUIMenuTree& owner, bool isBar)
    : menu(owner), hasTitles(isBar), colors(KXCurrentUIColors()) {
    levels.reserve(8);
    waiting.reserve(8);
}

int _KXUIMenuTree::addSubMenu(int id, const KXUIMenuEntry* entries, int count) {
    _KXMenuEntry* parent = nullptr;
    _KXMenuEntry* const entry = _state->root.find(id, parent);
    if (!entry || entry->isLine())
        return 0;
    entry->add(entries, count);
    parent->forgetMeasures(); // it has an arrow now
    return -1;
}

int _KXUIMenuTree::removeEntries(int id) {
    _KXMenuEntry* parent = nullptr;
    _KXMenuEntry* const entry = _state->root.find(id, parent);
    if (!entry || !entry->isMenu)
        return 0;
    entry->entries.clear();
    entry->forgetMeasures();
    _state->forgetRemoved();
    return -1;
}

int _KXUIMenuTree::setEntryText(int id, const char* text) {
    _KXMenuEntry* parent = nullptr;
    _KXMenuEntry* const entry = _state->root.find(id, parent);
    if (!entry || entry->isLine())
        return 0;
    if (entry->setText(text ? text : ""))
        parent->forgetMeasures();
    return -1;
}

int _KXUIMenuTree::setEntryShortcut(int id, KXUIShortcut shortcut) {
    _KXMenuEntry* parent = nullptr;
    _KXMenuEntry* const entry = _state->root.find(id, parent);
    if (!entry || entry->isLine())
        return 0;
    entry->setShortcut(shortcut);
    parent->forgetMeasures();
    return -1;
}

int _KXUIMenuTree::setEntryEnabled(int id, int enabled) {
    _KXMenuEntry* parent = nullptr;
    _KXMenuEntry* const entry = _state->root.find(id, parent);
    if (!entry)
        return 0;
    entry->isEnabled = enabled;
    _state->forgetRemoved();
    return -1;
}

int _KXUIMenuTree::isEntryEnabled(int id) const {
    _KXMenuEntry* parent = nullptr;
    const _KXMenuEntry* const entry = _state->root.find(id, parent);
    return entry && entry->isEnabled ? -1 : 0;
}

int _KXUIMenuTree::setEntryChecked(int id, int checked) {
    _KXMenuEntry* parent = nullptr;
    _KXMenuEntry* const entry = _state->root.find(id, parent);
    if (!entry || entry->kind == KXUIMenuEntryPlain)
        return 0;
    parent->setChecked(*entry, checked);
    return -1;
}

int _KXUIMenuTree::isEntryChecked(int id) const {
    _KXMenuEntry* parent = nullptr;
    const _KXMenuEntry* const entry = _state->root.find(id, parent);
    return entry && entry->isChecked ? -1 : 0;
}

void _KXUIMenuTree::setColors(const KXUIColors& colors) { _state->colors = colors; }

void _KXUIMenuTree::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    _state->windowID = id;
}

int _KXUIMenuTree::isOpen() const { return _state->isOpen() ? -1 : 0; }

void _KXUIMenuTree::close() { _state->dismiss(); }

int _KXUIMenuTree::poll() {
    State& state = *_state;
    const _KXFocus::Turn turn(*this);
    if (!_takesInput()) {
        state.skipUnheard();
        state.dismiss();
        state.leaveOut();
        state.waiting.clear();
    }
    state.place();
    state.hear();
    state.passTime();
    state.told = 0;
    if (!state.waiting.empty()) {
        state.told = state.waiting.front();
        state.waiting.erase(state.waiting.begin());
    }
    return state.told ? -1 : 0;
}

int _KXUIMenuTree::chosen() const { return _state->told; }

int _KXUIMenuTree::pollInPanel() { return poll(); }
int _KXUIMenuTree::takesKeyboard() const { return 0; }
int _KXUIMenuTree::hasPopup() const { return isOpen(); }
_KXFocus* _KXUIMenuTree::keyboardPart() { return _state.get(); }

/// What is lit is said as the widget itself while something is open.
KXUIDescription _KXUIMenuTree::description() const {
    const State& state = *_state;
    KXUIDescription said = _described(state.hasTitles ? "menu bar" : "menu", nullptr);
    const _KXMenuEntry* lit = nullptr;
    for (int level = state.innermost(); level >= 0 && !lit; --level)
        lit = state.lit(level);
    if (!lit)
        return said;
    said.role = lit->isMenu                       ? "menu"
                : lit->kind == KXUIMenuEntryCheck ? "check menu item"
                : lit->kind == KXUIMenuEntryRadio ? "radio menu item"
                                                  : "menu item";
    said.name = _KXSpokenText(lit->caption->text());
    if (lit->shortcutName)
        said.value = lit->shortcutName->text();
    if (lit->kind != KXUIMenuEntryPlain)
        _KXAddState(said, lit->isChecked ? "checked" : "not checked");
    return said;
}
