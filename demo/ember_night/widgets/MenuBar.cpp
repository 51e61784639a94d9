#include "MenuBar.h"

#include <algorithm>

static constexpr float height = 26;

// Entries take over the colours that their menu has when they are added.
static void dress(KXUIMenu& menu) {
    const auto apply = [&menu](void (_KXUIMenuBase::*set)(float, float, float, float), KXColor color) {
        (menu.*set)(color.r, color.g, color.b, color.a);
    };
    apply(&_KXUIMenuBase::setBackgroundNormalColor, Style::woodDark);
    apply(&_KXUIMenuBase::setBackgroundHoverColor, Style::wood);
    apply(&_KXUIMenuBase::setBackgroundOpenColor, Style::wood);
    apply(&_KXUIMenuBase::setBorderColor, Style::ink);
    apply(&_KXUIMenuBase::setTextColor, Style::paper);
}

MenuBar::MenuBar() : _file("File"), _fire("Fire"), _help("Help"), _all(_titles.begin(), _titles.end()) {
    float x = 0;
    for (KXUIMenu* menu : _titles) {
        dress(*menu);
        menu->setOrigin({x, 0});
        x += menu->rect().size.width - 1;
    }
    add(_file, "Open...", Command::Open, KXKeyLeftControl, KXKeyO);
    add(_file, "Save as...", Command::Save, KXKeyLeftControl, KXKeyS);
    _file.addDivider();
    add(_file, "Back to the title", Command::Title);
    add(_fire, "Stoke", Command::Stoke, 0, KXKeyF2);
    add(_fire, "Damp", Command::Damp, 0, KXKeyF3);
    _fire.addDivider();
    addGlowMenu();
    add(_help, "About this screen", Command::About, 0, KXKeyF1);
    add(_help, "More widgets", Command::Tools, 0, KXKeyF4);
}

// A menu in a menu in a menu. They belong to the menus that they are added to.
void MenuBar::addGlowMenu() {
    auto* const glow = new KXUIMenu("Glow");
    dress(*glow);
    _fire.addSubMenu(glow);
    add(*glow, "None", Command::Dark);
    glow->addDivider();
    auto* const color = new KXUIMenu("In colour");
    dress(*color);
    glow->addSubMenu(color);
    add(*color, "Gold", Command::Gold);
    add(*color, "Rose", Command::Rose);
    add(*color, "Teal", Command::Teal);
    _all.insert(_all.end(), {glow, color});
}

void MenuBar::add(KXUIMenu& menu, const char* name, Command command, int modifierKey, int key) {
    menu.addMenuItemWithName(name, chosen, &_entries.emplace_back(Entry{this, command}), modifierKey, key);
}

void MenuBar::chosen(void* entry) {
    const auto& [bar, command] = *static_cast<const Entry*>(entry);
    bar->_command = command;
}

bool MenuBar::isOpen() { return openMenus() > 0; }

int MenuBar::openMenus() {
    return static_cast<int>(
        std::count_if(_all.begin(), _all.end(), [](KXUIMenu* menu) { return menu->isOpen() != 0; }));
}

void MenuBar::close() {
    for (KXUIMenu* menu : _titles)
        menu->close();
}

bool MenuBar::switchMenus(const std::array<bool, 3>& wasOpen) {
    bool opened = false;
    for (std::size_t i = 0; i < _titles.size(); ++i)
        opened |= _titles[i]->isOpen() && !wasOpen[i];
    for (std::size_t i = 0; opened && i < _titles.size(); ++i)
        if (wasOpen[i])
            _titles[i]->close();
    return opened;
}

Command MenuBar::step() {
    _command = Command::None;
    std::array<bool, 3> wasOpen = {};
    std::transform(_titles.begin(), _titles.end(), wasOpen.begin(),
                   [](KXUIMenu* menu) { return menu->isOpen() != 0; });
    const int before = openMenus();
    for (KXUIMenu* menu : _titles)
        menu->poll();
    const bool switched = switchMenus(wasOpen);
    const bool letGo = _held && !KXMouse(KXMouseLeft);
    _held = KXMouse(KXMouseLeft) != 0;
    // A click on a menu opens or closes one.
    if (letGo && !switched && openMenus() == before)
        close();
    return _command;
}

void MenuBar::draw() {
    KXDrawRectFill({{0, 0}, {Style::windowSize.width, height}}, Style::woodDark);
    KXDrawRectFill({{0, height - 1}, {Style::windowSize.width, 1}}, Style::ink);
    for (KXUIMenu* menu : _titles)
        menu->draw();
}
