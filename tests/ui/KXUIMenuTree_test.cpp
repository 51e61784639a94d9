#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXUIDialogBox.h>

#include "MenuTest.h"

#include <stdexcept>

namespace {
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

    KXUIMenu holder("Holder");
    {
        KXUIMenu onStack("Deleted before its menu");
        holder.addSubMenu(&onStack);
    }
    holder.poll();
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
