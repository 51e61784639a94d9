#include <Kobaltrix/KXUIRadioGroup.h>

#include "ui/Description.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXKeys.h>
#include <Kobaltrix/KXUICheckBox.h>

#include <algorithm>
#include <iterator>
#include <utility>

KXUIRadioGroup::KXUIRadioGroup() : _selected(-1), _changedByKey(0) {}

KXUIRadioGroup::~KXUIRadioGroup() = default;

void KXUIRadioGroup::add(const char* text) {
    auto option = std::make_unique<KXUICheckBox>();
    option->_beRound();
    if (const KXFont* const font = _fontInUse(); font && !_fontPath.empty()) {
        option->setFont(_fontPath.c_str(), _fontAliasMode);
        option->setFontSize(font->getSize());
    }
    option->setText(text ? text : "");
    option->setWindowID(windowID());
    _options.push_back(std::move(option));
    _layOut();
}

int KXUIRadioGroup::count() const { return static_cast<int>(_options.size()); }

KXUICheckBox* KXUIRadioGroup::option(int index) {
    return index >= 0 && index < count() ? _options[static_cast<std::size_t>(index)].get() : nullptr;
}

void KXUIRadioGroup::setSelectedIndex(int index) {
    _selected = index >= 0 && index < count() ? index : -1;
    for (int i = 0; i < count(); ++i)
        option(i)->setChecked(i == _selected);
}

int KXUIRadioGroup::selectedIndex() const { return _selected; }

// Options below each other, each as wide as the widest.
void KXUIRadioGroup::_layOut() {
    const KXPoint corner = rect().origin;
    KXSize all = KXZeroSize;
    for (const auto& option : _options) {
        option->setOrigin({corner.x, corner.y + all.height});
        const KXSize size = option->rect().size;
        all = {std::max(all.width, size.width), all.height + size.height};
    }
    for (const auto& option : _options)
        option->setSize({all.width, option->rect().size.height});
    setSize(all);
}

void KXUIRadioGroup::setOrigin(KXPoint origin) {
    _KXUIWidget::setOrigin(origin);
    float y = origin.y;
    for (const auto& option : _options) {
        option->setOrigin({origin.x, y});
        y += option->rect().size.height;
    }
}

int KXUIRadioGroup::setFont(const char* path, KXAliasMode mode) {
    const int result = _KXUIWidget::setFont(path, mode);
    for (const auto& option : _options) {
        option->setFont(path, mode);
        option->setSize({-1, -1});
    }
    _layOut();
    return result;
}

int KXUIRadioGroup::setFontSize(int size) {
    const int result = _KXUIWidget::setFontSize(size);
    for (const auto& option : _options) {
        if (result)
            option->setFontSize(size);
        option->setSize({-1, -1});
    }
    _layOut();
    return result;
}

void KXUIRadioGroup::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    for (const auto& option : _options)
        option->setWindowID(id);
}

int KXUIRadioGroup::poll() {
    int chosen = _selected;
    for (int i = 0; i < count(); ++i)
        if (!_takesInput())
            option(i)->_letGo(KXMouseLeft);
        else if (option(i)->clicked(KXMouseLeft))
            chosen = i;
    const bool changes = chosen != _selected;
    setSelectedIndex(chosen); // a click has taken the mark of what was chosen before
    return changes ? -1 : 0;
}

int KXUIRadioGroup::pollInPanel() {
    const int changed = poll();
    return std::exchange(_changedByKey, 0) || changed ? -1 : 0;
}

// Disabled options are passed over.
int KXUIRadioGroup::handleKey(const KXUIKey& key) {
    const bool back = key.key == KXKeyUp || key.key == KXKeyLeft || key.key == KXKeyEnd;
    const bool moves = back || key.key == KXKeyDown || key.key == KXKeyRight || key.key == KXKeyHome ||
                       (key.key == KXKeySpace && _selected == -1);
    if (!moves || key.alt || key.control || key.command)
        return 0;
    const bool toEnd = key.key == KXKeyHome || key.key == KXKeyEnd || _selected == -1;
    int next = toEnd ? (back ? count() : -1) : _selected;
    do
        next += back ? -1 : 1;
    while (option(next) && !option(next)->isEnabled());
    if (!option(next) || next == _selected)
        return -1;
    setSelectedIndex(next);
    _changedByKey = -1;
    return -1;
}

KXRect KXUIRadioGroup::focusRect() const {
    return _selected >= 0 && _selected < count() ? _options[static_cast<std::size_t>(_selected)]->rect()
                                                 : rect();
}

void KXUIRadioGroup::refit() {
    for (const auto& option : _options)
        option->setSize({-1, -1});
    _layOut();
}

KXUIDescription KXUIRadioGroup::description() const {
    KXUIDescription said = _described("radio group", nullptr);
    if (_selected >= 0 && _selected < count())
        said.value = _KXSpokenText(_options[static_cast<std::size_t>(_selected)]->text());
    return said;
}

void KXUIRadioGroup::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    for (const auto& option : _options)
        option->draw();
}
