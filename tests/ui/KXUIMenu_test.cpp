#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXUIDialogBox.h>
#include <Kobaltrix/KXUIMenu.h>

#include "UITest.h"

#include "text/KXUIGlobalFont.h"

#include <climits>
#include <cmath>
#include <memory>

namespace {
constexpr int keyA = 1, keyK = 11, leftShift = 122, leftControl = 135;

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
    void poll(KXUIMenu& other) { other.poll(); }
    /// An entry that counts its calls.
    void addCounter(KXUIMenu& to, const char* name, int modifier = 0, int key = 0) {
        to.addMenuItemWithName(
            name, [](void* count) { ++*static_cast<int*>(count); }, &calls, modifier, key);
    }
    int take() { return std::exchange(calls, 0); }

    std::unique_ptr<KXUIMenu> menu;
    int calls = 0;
};

float widthOf(const char* text) { return std::trunc(_KXUIGlobalFont->stringBounds(text).width); }

TEST_F(Menu, CaptionsNameTheShortcut) {
    const std::string longest(254, 'i'), tooLong = longest + "iiii", cut = longest.substr(1) + "\xc3\xa9",
                                         uncut = longest.substr(1), full = longest.substr(2) + "\xc3\xa9";
    const struct {
        const char* name;
        int modifier, key;
        const char* caption;
    } rows[] = {{"Open", 0, 0, "Open"},
                {"Open", 0, keyK, "Open (K)"},
                {"Open", leftControl, keyK, "Open (Left Control - K)"},
                {"Open", leftControl, 0, "Open"},
                {"Open", -5, 999, "Open (Unknown - Unknown)"},
                {"", 0, keyK, " (K)"},
                {nullptr, leftControl, keyK, ""},
                {"%s%n", 0, 0, "%s%n"},
                {tooLong.c_str(), 0, 0, longest.c_str()},
                {cut.c_str(), 0, 0, uncut.c_str()},
                {cut.c_str(), 0, keyK, uncut.c_str()},
                {full.c_str(), 0, keyK, full.c_str()}};
    for (const auto& row : rows) {
        _KXUIMenuItem item(row.name, nullptr, nullptr, row.modifier, row.key);
        EXPECT_EQ(static_cast<float>(item.itemWidth()), widthOf(row.caption)) << row.caption;
    }
}

TEST_F(Menu, SizesFollowTitleAndWidestEntry) {
    const float height = std::ceil(_KXUIGlobalFont->ascender()) + 6 + 2;
    const auto expectSize = [](const KXUIMenu& of, float width, float expectedHeight) {
        EXPECT_EQ(of.rect().size.width, width);
        EXPECT_EQ(of.rect().size.height, expectedHeight);
    };
    expectSize(*menu, widthOf("File") + 8, height);
    auto* const sub = new KXUIMenu("Sub");
    menu->addSubMenu(sub);
    expectSize(*sub, widthOf("Sub") + 8, height);
    menu->addMenuItemWithName("A much longer entry", nullptr, nullptr);
    menu->addDivider();
    expectSize(*sub, widthOf("A much longer entry") + 8, height);
    expectSize(*menu, widthOf("File") + 8, height);
    auto* const subSub = new KXUIMenu("Deeper");
    sub->addSubMenu(subSub);
    expectSize(*subSub, widthOf("Deeper") + 8, height);

    KXUIMenu untitled;
    expectSize(untitled, 0, 0);
    untitled.addDivider();
    expectSize(untitled, 8, height);
    KXClearGUIFontCache();
    menu->resize();
    expectSize(*menu, 100, 100);
    KXUIMenu bare("Bare");
    bare.addMenuItemWithName("Entry", nullptr, nullptr);
    expectSize(bare, 100, 100);
    EXPECT_EQ(bare.itemWidth(), 0);
    bare.click(0);
    bare.poll();
    bare.draw();
}

TEST_F(Menu, EntriesHangBelowTheTitleAndBesideASubMenusRow) {
    KXUIMenu *first = new KXUIMenu("First"), *second = new KXUIMenu("Second"), *deep = new KXUIMenu("Deep");
    menu->addSubMenu(first);
    menu->addSubMenu(second);
    second->addSubMenu(new KXUIMenu("Sibling"));
    second->addSubMenu(deep);
    menu->setOrigin({20.75f, 10.5f});
    poll();
    const float height = menu->rect().size.height, width = second->rect().size.width;
    const auto expectOrigin = [](const KXUIMenu& of, float x, float y) {
        EXPECT_EQ(of.rect().origin.x, x);
        EXPECT_EQ(of.rect().origin.y, y);
    };
    expectOrigin(*first, 20, std::trunc(9.5f + height));
    expectOrigin(*second, 20, std::trunc(9.5f + 2 * height));
    expectOrigin(*deep, 20 + width, second->rect().origin.y - 1 + height);
}

TEST_F(Menu, EntriesActWhileItIsOpen) {
    addCounter(*menu, "Open");
    menu->addDivider();
    addCounter(*menu, "Quit");
    poll();
    clickAt(row(*menu, 1));
    EXPECT_EQ(take(), 0);
    EXPECT_EQ(menu->isOpen(), 0);
    clickTitle(*menu);
    EXPECT_EQ(menu->isOpen(), -1);
    clickAt({300, 190}); // elsewhere changes nothing
    EXPECT_EQ(menu->isOpen(), -1);
    clickTitle(*menu);
    EXPECT_EQ(menu->isOpen(), 0);
    for (int entry : {1, 2, 3}) {
        clickTitle(*menu);
        clickAt(row(*menu, entry));
        EXPECT_EQ(take(), entry == 2 ? 0 : 1);
        EXPECT_EQ(menu->isOpen(), 0);
    }
    // The last line of the title belongs to the first row, too.
    const KXPoint shared = {25, menu->rect().origin.y + menu->rect().size.height};
    clickAt(shared);
    EXPECT_EQ(menu->isOpen(), -1);
    EXPECT_EQ(take(), 0);
    clickAt(shared);
    EXPECT_EQ(menu->isOpen(), 0);
    EXPECT_EQ(take(), 0);
    menu->click(0);
    poll();
    EXPECT_EQ(menu->isOpen(), -1);
}

TEST_F(Menu, ShortcutsActOnceForEachTimeTheKeysMeet) {
    addCounter(*menu, "With a modifier", leftControl, keyK);
    menu->addMenuItemWithName(
        "Alone", [](void* count) { *static_cast<int*>(count) += 10; }, &calls, 0, keyA);
    // What the user does, and what is called by the next three polls.
    const auto expectCalls = [&](const char* what, int expected) {
        poll();
        poll();
        step();
        poll();
        EXPECT_EQ(take(), expected) << what;
    };
    const auto down = [&](int code, int expected) { keyDown(code), expectCalls("down", expected); };
    const auto up = [&](int code) { keyUp(code), expectCalls("up", 0); };
    for (int twice = 0; twice < 2; ++twice) {
        down(SDLK_LCTRL, 0);
        down('k', 1);
        up('k'); // the key first
        down('k', 1);
        up(SDLK_LCTRL); // the modifier first
        down(SDLK_LCTRL, 1);
        up(SDLK_LCTRL);
        up('k');
        down('k', 0); // alone it does nothing
        up('k');
        down(SDLK_RCTRL, 0); // nor does another modifier
        down('k', 0);
        up(SDLK_RCTRL);
        up('k');
        down(SDLK_LCTRL, 0);
        up(SDLK_LCTRL);
        down('a', 10);
        up('a');
    }
    // Let go and pressed again between two polls, the key is still the one of before.
    keyDown(SDLK_LCTRL);
    down('k', 1);
    keyUp('k');
    down('k', 0);
    up('k');
    up(SDLK_LCTRL);

    // An entry can be clicked while its keys stay held.
    addCounter(*menu, "Shifted", leftShift, keyA);
    poll();
    clickTitle(*menu);
    keyDown(SDLK_LSHIFT);
    keyDown('a');
    KXKey(keyA, -1); // the press is the game's, so no shortcut acts
    clickAt(row(*menu, 3));
    EXPECT_EQ(take(), 1);
}

TEST_F(Menu, AReportedModifierIsNoPressForPlainEntries) {
    addCounter(*menu, "With a modifier", leftControl, keyK);
    menu->addMenuItemWithName(
        "Plain", [](void* count) { *static_cast<int*>(count) += 10; }, &calls, 0, keyK);
    keyDown(SDLK_LCTRL);
    keyDown('k');
    poll();
    EXPECT_EQ(take(), 1);
    keyUp(SDLK_LCTRL);
    poll();
    poll();
    EXPECT_EQ(take(), 0);
    keyUp('k');
    keyDown('k');
    poll();
    EXPECT_EQ(take(), 10);
}

/// A menu of three levels with a counting entry at the bottom, "Ctrl-K".
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

TEST_F(DeepMenu, OpensLevelByLevelAndClosesAtOnce) {
    addCounter(*deep, "Bottom", leftControl, keyK);
    poll();
    for (KXUIMenu* hidden : {sub, deep}) {
        clickTitle(*hidden); // its row is not on screen
        EXPECT_EQ(hidden->isOpen(), 0);
    }
    openAll();
    EXPECT_EQ(deep->isOpen(), -1);
    clickAt(row(*deep, 2));
    EXPECT_EQ(take(), 1);
    for (KXUIMenu* each : {menu.get(), sub, deep})
        EXPECT_EQ(each->isOpen(), 0);

    openAll();
    clickTitle(*menu);
    EXPECT_EQ(deep->isOpen(), 0);
    openAll();
    clickTitle(*sub);
    EXPECT_EQ(menu->isOpen(), -1);
    EXPECT_EQ(deep->isOpen(), 0);
    keyDown(SDLK_LCTRL);
    keyDown('k');
    poll(); // the shortcut reaches the bottom of a menu that is not open
    EXPECT_EQ(take(), 1);
    EXPECT_EQ(menu->isOpen(), 0);
}

TEST_F(DeepMenu, CallbacksMayDoAnything) {
    using Callback = void (*)(DeepMenu&);
    const std::pair<const char*, Callback> rows[] = {
        {"clear its menu", [](DeepMenu& t) { t.deep->clearMenuItems(); }},
        {"clear every menu", [](DeepMenu& t) { t.menu->clearMenuItems(); }},
        {"delete its menu", [](DeepMenu& t) { delete t.deep; }},
        {"delete the menu above", [](DeepMenu& t) { delete t.sub; }},
        {"delete everything", [](DeepMenu& t) { t.menu.reset(); }},
        {"add entries",
         [](DeepMenu& t) {
             for (KXUIMenu* each : {t.deep, t.sub, t.menu.get()})
                 for (int i = 0; i < 100; ++i)
                     each->addMenuItemWithName("New", nullptr, nullptr);
         }},
        {"replace its menu's entries",
         [](DeepMenu& t) {
             t.deep->clearMenuItems();
             for (int i = 0; i < 5; ++i)
                 t.addCounter(*t.deep, "New", leftControl, keyK);
         }},
        {"move its menu to the top", [](DeepMenu& t) { t.menu->addSubMenu(t.deep); }},
        {"run a loop with a dialog",
         [](DeepMenu& t) {
             KXUIDialogBox dialog;
             dialog.setMessage("Sure?");
             dialog.addButton("Yes");
             for (int i = 0; i < 3; ++i) {
                 t.poll();
                 t.menu->draw();
                 dialog.poll();
                 dialog.draw();
             }
             t.menu.reset(); // also for the poll that this one runs within
         }},
        {"throw", [](DeepMenu& t) {
             t.deep->clearMenuItems();
             throw std::runtime_error("callback");
         }}};
    for (const auto& [what, does] : rows)
        for (bool byShortcut : {true, false}) {
            SCOPED_TRACE(what);
            menu = std::make_unique<KXUIMenu>("Top");
            menu->setOrigin({20, 10});
            menu->addSubMenu(sub = new KXUIMenu("Sub"));
            sub->addSubMenu(deep = new KXUIMenu("Deep"));
            struct Context {
                DeepMenu* test;
                Callback does;
                int count;
            } context = {this, does, 0};
            const auto callback = [](void* given) {
                auto& that = *static_cast<Context*>(given);
                ++that.count;
                that.does(*that.test);
            };
            deep->addMenuItemWithName("Does", callback, &context, leftControl, keyK);
            for (KXUIMenu* each : {deep, sub, menu.get()})
                addCounter(*each, "After");
            poll();
            try {
                if (byShortcut) {
                    keyDown(SDLK_LCTRL);
                    keyDown('k');
                    poll();
                } else {
                    openAll();
                    clickAt(row(*deep, 1));
                }
            } catch (const std::runtime_error&) {
                EXPECT_STREQ(what, "throw");
            }
            keyUp(SDLK_LCTRL);
            poll();
            keyUp('k');
            poll();
            EXPECT_EQ(context.count, 1);
            EXPECT_EQ(take(), 0);
            if (menu) {
                EXPECT_EQ(menu->isOpen(), 0);
                menu->draw();
            }
        }
}

TEST_F(DeepMenu, AnEntryRemovedInAPollSkipsNoOther) {
    // The first deletes the sub-menu before it and the one after it; the last is still polled in this step.
    menu = std::make_unique<KXUIMenu>("Top");
    static KXUIMenu* victims[2];
    menu->addSubMenu(victims[0] = new KXUIMenu("Victim"));
    menu->addMenuItemWithName(
        "Deletes",
        [](void*) {
            for (KXUIMenu* victim : victims)
                delete victim;
        },
        nullptr, 0, keyK);
    menu->addSubMenu(victims[1] = new KXUIMenu("Victim"));
    addCounter(*menu, "Last", 0, keyA);
    keyDown('k');
    keyDown('a');
    poll();
    EXPECT_EQ(take(), 1);
}

TEST_F(DeepMenu, OwnershipHasNoCircles) {
    for (KXUIMenu* ignored : {static_cast<KXUIMenu*>(nullptr), deep, sub, menu.get()}) {
        deep->addSubMenu(ignored == deep ? nullptr : ignored);
        if (ignored)
            ignored->addSubMenu(ignored);
    }
    EXPECT_EQ(sub->getParent(), menu.get());
    EXPECT_EQ(deep->getParent(), sub);
    menu->setParent(deep);
    EXPECT_EQ(menu->getParent(), nullptr);
    menu->setParent(menu.get());
    EXPECT_EQ(menu->getParent(), nullptr);

    sub->addSubMenu(deep); // a second time: to the end
    menu->addSubMenu(deep);
    EXPECT_EQ(deep->getParent(), menu.get());
    sub->clearMenuItems(); // deletes it no more
    openAll();
    EXPECT_EQ(deep->isOpen(), -1);
    KXUIMenu other("Other");
    other.addSubMenu(deep);
    menu->draw();
    poll();
    delete deep;
    other.draw();
    other.poll();
}

TEST_F(DeepMenu, ParentsThatGoLeaveNoTrace) {
    _KXUIMenuItem item(
        "Loose", [](void* count) { ++*static_cast<int*>(count); }, &calls, 0, keyK);
    EXPECT_EQ(item.isOpen(), 0);
    item.click(0);
    item.poll();
    EXPECT_EQ(take(), 0);
    item.setParent(deep);
    item.setParent(deep);
    for (KXUIMenu* each : {menu.get(), sub, deep})
        each->click(0);
    poll(); // clicks by the game reach all levels at once
    EXPECT_EQ(item.isOpen(), -1);
    item.click(0);
    item.poll();
    EXPECT_EQ(take(), 1);
    EXPECT_EQ(menu->isOpen(), 0);
    menu.reset();
    EXPECT_EQ(item.getParent(), nullptr);
    keyDown('k');
    item.poll();
    EXPECT_EQ(take(), 1);

    KXUIMenu onStack("On the stack"); // deleted before its menu
    KXUIMenu holder("Holder");
    {
        KXUIMenu inner("Inner");
        holder.addSubMenu(&inner);
    }
    holder.poll();
    onStack.addSubMenu(new KXUIMenu("Owned"));
}

TEST_F(DeepMenu, FontsReachEveryLevel) {
    _KXUIMenuBase* const all[] = {menu.get(), sub, deep};
    const auto expectSizes = [&](int size) {
        for (_KXUIMenuBase* each : all)
            EXPECT_EQ(each->_fontInUse()->getSize(), size);
    };
    EXPECT_EQ(menu->setFontSize(30), 0);
    expectSizes(12);
    const float before = sub->rect().size.height;
    ASSERT_EQ(menu->setFont(testFont(), KXAliasModeTexture, 24), -1);
    expectSizes(24);
    EXPECT_GT(sub->rect().size.height, before * 1.5f);
    EXPECT_EQ(sub->rect().size.height, menu->rect().size.height);
    EXPECT_EQ(menu->setFontSize(18), -1);
    expectSizes(18);
    auto* const late = new KXUIMenu("Late");
    menu->addSubMenu(late);
    EXPECT_EQ(late->_fontInUse(), menu->_fontInUse());
    expectSizes(18);
    EXPECT_EQ(menu->setFont(testFont(), KXAliasModePolygon), -1); // keeps the size
    expectSizes(18);

    KXUISetGlobalFont(testFont(), KXAliasModeTexture, 14, KXZeroPoint);
    KXUIMenu current("Current");
    KXUISetGlobalFont(testFont(), KXAliasModeTexture, 15, KXZeroPoint);
    auto* const entry = new KXUIMenu("Entry");
    current.addSubMenu(entry); // has a font although the menu was never given one
    EXPECT_GT(entry->itemWidth(), 0);
}

TEST_F(DeepMenu, Looks) {
    fill({0.2f, 0.3f, 0.4f, 1});
    menu->setTextColor(0.1f, 0.1f, 0.5f, 1); // of the title, and of entries added from now on
    menu->addMenuItemWithName("Save 50%%", nullptr, nullptr, leftControl, 19);
    menu->addDivider();
    menu->addMenuItemWithName("{C0.7,0,0,1}Quit{EC}", nullptr, nullptr);
    addCounter(*deep, "Bottom");
    KXUIMenu closed("Closed"), hovered("Hovered");
    closed.setOrigin({250, 10});
    hovered.setOrigin({250, 160});
    openAll();
    moveMouse(255, 165);
    menu->draw();
    closed.draw();
    hovered.draw();
    const KXPoint hover = row(*menu, 2);
    moveMouse(static_cast<int>(hover.x), static_cast<int>(hover.y));
    menu->draw();
    expectGolden(Image::of(*window), "ui/menu");
}
} // namespace
