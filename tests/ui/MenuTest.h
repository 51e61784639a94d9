#pragma once

#include "UITest.h"

#include <Kobaltrix/KXUIMenu.h>

#include <memory>
#include <utility>

inline constexpr int keyA = _KXKeyA, keyK = _KXKeyK, leftShift = _KXKeyLeftShift,
                     leftControl = _KXKeyLeftControl;

/// A menu and the hands that use it.
struct Menu : UITest {
    Menu() : menu(std::make_unique<KXUIMenu>("File")) { menu->setOrigin({20, 10}); }

    void poll() {
        if (menu)
            menu->poll();
    }
    void clickAt(KXPoint point) {
        moveMouse(static_cast<int>(point.x), static_cast<int>(point.y));
        poll();
        press();
        poll();
        release();
        poll();
    }
    void clickTitle(const KXUIMenu& of) { clickAt(within(of.rect().origin)); }
    static KXPoint within(KXPoint corner) { return {corner.x + 8, corner.y + 8}; }
    /// A point in entry @a i, counted from 1.
    static KXPoint row(const KXUIMenu& of, int i) {
        const auto [corner, size] = of.rect();
        const float below = size.height * static_cast<float>(i) - 1;
        return within(of.getParent() ? KXPoint{corner.x + size.width, corner.y + below - size.height}
                                     : KXPoint{corner.x, corner.y + below});
    }
    /// An entry that counts its calls.
    void addCounter(KXUIMenu& to, const char* name, int modifier = 0, int key = 0) {
        to.addMenuItemWithName(
            name, [](void* count) { ++*static_cast<int*>(count); }, &calls, modifier, key);
    }
    int take() { return std::exchange(calls, 0); }

    std::unique_ptr<KXUIMenu> menu;
    int calls = 0;
};

/// The same with menus on three levels.
struct DeepMenu : Menu {
    DeepMenu() : sub(new KXUIMenu("Sub")), deep(new KXUIMenu("Deep")) {
        menu->addSubMenu(sub);
        sub->addMenuItemWithName("Before", nullptr, nullptr);
        sub->addSubMenu(deep);
        deep->addMenuItemWithName("Before", nullptr, nullptr);
    }
    void openAll() {
        for (KXUIMenu* each : {menu.get(), sub, deep})
            if (!each->isOpen())
                clickTitle(*each);
    }
    KXUIMenu *sub, *deep;
};
