#include "UITest.h"

#include "text/KXUIGlobalFont.h"

#include <stdexcept>
#include <tuple>

namespace {
float widthOf(const std::string& text) {
    return std::trunc(_KXUIGlobalFont->stringBounds(text.c_str()).width);
}

/// A menu and the hands that use it.
struct Menu : UITest {
    Menu() : menu(std::make_unique<KXUIMenu>("File")) { menu->setOrigin({20, 10}); }

    int poll() override { return menu ? menu->poll(), 0 : 0; }
    /// Which menus are open, and what was called since it was asked last.
    std::string state() override {
        const int called = std::exchange(calls, 0);
        return open() + (called ? " " + std::to_string(called) : "");
    }
    virtual std::string open() { return menu->isOpen() ? "o" : "-"; }
    /// "title" and "row 1" of the menu.
    KXPoint place(const std::string& name) const override { return placeIn(*menu, name); }
    KXPoint placeIn(const KXUIMenu& of, const std::string& name) const {
        if (std::isdigit(name[0]))
            return UITest::place(name);
        const auto [corner, size] = of.rect();
        const float row = name.starts_with("row") ? std::stof(name.substr(4)) : 0;
        const bool beside = of.getParent() && row > 0;
        return {corner.x + (beside ? size.width : 0) + 8,
                corner.y + size.height * (beside ? row - 1 : row) + 8};
    }
    /// An entry whose calls count as @a much.
    template<int much = 1>
    void addCounter(KXUIMenu& to, const char* name, int modifier = 0, int key = 0) {
        to.addMenuItemWithName(
            name, [](void* count) { *static_cast<int*>(count) += much; }, &calls, modifier, key);
    }

    std::unique_ptr<KXUIMenu> menu;
    int calls = 0;
};

TEST_F(Menu, CaptionsNameTheShortcut) {
    const std::string longest(254, 'i'), tooLong = longest + "iiii", uncut = longest.substr(1),
                                         cut = uncut + "\xc3\xa9", full = longest.substr(2) + "\xc3\xa9";
    const std::tuple<const char*, int, int, std::string> rows[] = {
        {"Open", 0, 0, "Open"},
        {"Open", 0, KXKeyK, "Open (K)"},
        {"Open", KXKeyLeftControl, KXKeyK, "Open (Left Control - K)"},
        {"Open", KXKeyLeftControl, 0, "Open"},
        {nullptr, KXKeyLeftControl, KXKeyK, ""},
        {tooLong.c_str(), 0, 0, longest},
        {cut.c_str(), 0, KXKeyK, uncut},
        {full.c_str(), 0, KXKeyK, full}};
    for (const auto& [name, modifier, key, caption] : rows) {
        _KXUIMenuItem item(name, nullptr, nullptr, modifier, key);
        EXPECT_EQ(static_cast<float>(item.itemWidth()), widthOf(caption)) << caption;
    }
}

TEST_F(Menu, EntriesActWhileItIsOpen) {
    addCounter(*menu, "Open");
    menu->addDivider();
    addCounter<10>(*menu, "Quit");
    expectEach("click row 1 -> -; click title -> o; click 300 190 -> o; click title -> -; "
               "click title, click row 1 -> - 1; click title, click row 2 -> -; "
               "click title, click row 3 -> - 10");
    // The last line of the title belongs to the first row, too.
    moveMouse(25, static_cast<int>(menu->rect().origin.y + menu->rect().size.height));
    expectEach("click -> o; click -> -");
    menu->click(KXMouseLeft);
    expectEach("at 0 0 -> o");
}

TEST_F(Menu, ShortcutsActOnceForEachTimeTheKeysMeet) {
    addCounter(*menu, "With a modifier", KXKeyLeftControl, KXKeyK);
    addCounter<10>(*menu, "Alone", 0, KXKeyA);
    addCounter<100>(*menu, "The same key alone", 0, KXKeyK);
    for (int twice = 0; twice < 2; ++twice)
        expectEach("hold Left Ctrl -> -; hold K -> - 1; at 0 0, wait 40, at 0 0 -> -; let K -> -; "
                   "hold K -> - 1; let Left Ctrl, at 0 0 -> -; hold Left Ctrl -> - 1; at 0 0 -> -; "
                   "let Left Ctrl -> -; let K -> -; hold K -> - 100; at 0 0 -> -; let K -> -; "
                   "Right Ctrl+K -> - 100; hold Left Ctrl, let Left Ctrl, hold A -> - 10; "
                   "at 0 0, let A -> -");
    // Let go and pressed again between two polls, the key is still the one of before.
    act("hold Left Ctrl, hold K");
    keyUp(KXKeyK);
    expectEach("hold K -> - 1; let K, let Left Ctrl -> -");

    // An entry can be clicked while its keys stay held.
    addCounter(*menu, "Shifted", KXKeyLeftShift, KXKeyA);
    act("click title, hold Left Shift");
    keyDown(KXKeyA);
    KXKey(KXKeyA, -1); // the press is the game's, so no shortcut acts
    expectEach("click row 4 -> - 1");
}

/// The same with menus on three levels; places are "title sub" and "row 1 deep".
struct DeepMenu : Menu {
    DeepMenu() { make(); }
    void make() {
        menu = std::make_unique<KXUIMenu>("File");
        menu->setOrigin({20, 10});
        menu->addSubMenu(sub = new KXUIMenu("Sub"));
        sub->addMenuItemWithName("Before", nullptr, nullptr);
        sub->addSubMenu(deep = new KXUIMenu("Deep"));
        deep->addMenuItemWithName("Before", nullptr, nullptr);
    }
    std::string open() override {
        std::string levels;
        for (KXUIMenu* each : {menu.get(), sub, deep})
            levels += each->isOpen() ? 'o' : '-';
        return levels;
    }
    KXPoint place(const std::string& name) const override {
        return placeIn(name.ends_with("deep") ? *deep : name.ends_with("sub") ? *sub : *menu, name);
    }
    KXUIMenu *sub, *deep;
    std::function<void()>
        does; ///< What the last entry does that was added as a caller of it. It counts as 100.
    static void call(void* test) {
        static_cast<DeepMenu*>(test)->calls += 100;
        static_cast<DeepMenu*>(test)->does();
    }
    const std::string openAll = "click title, click title sub, click title deep";
};

TEST_F(DeepMenu, EntriesAreAsWideAsTheWidestBelowTheTitleAndBesideASubMenusRow) {
    const float height = std::ceil(_KXUIGlobalFont->ascender()) + 6 + 2;
    expectSize(*sub, widthOf("Sub") + 8, height);
    menu->addMenuItemWithName("A much longer entry", nullptr, nullptr);
    menu->addDivider();
    menu->addSubMenu(sub); // a second time: to the end
    menu->setOrigin({20.75f, 10.5f});
    poll();
    expectSize(*menu, widthOf("File") + 8, height);
    expectSize(*sub, widthOf("A much longer entry") + 8, height);
    expectSize(*deep, widthOf("Before") + 8, height);
    expectOrigin(*sub, 20, std::trunc(9.5f + 3 * height));
    expectOrigin(*deep, 20 + sub->rect().size.width, sub->rect().origin.y - 1 + height);
    KXUIMenu untitled;
    expectSize(untitled, 0, 0);
    untitled.addDivider();
    expectSize(untitled, 8, height);
}

TEST_F(DeepMenu, OpensLevelByLevelAndClosesAtOnce) {
    addCounter(*deep, "Bottom", KXKeyLeftControl, KXKeyK);
    poll();
    expectEach("click title sub, click title deep -> ---; " + openAll + // whose rows were not on screen
               " -> ooo; click row 2 deep -> --- 1; " + openAll + ", click title -> ---; " + openAll +
               ", click title sub -> o--; Left Ctrl+K -> --- 1"); // at the bottom of a menu that is not open
}

TEST_F(DeepMenu, ASubMenuThatOpensMayCloseThoseBesideIt) {
    auto* const other = new KXUIMenu("Other");
    sub->addSubMenu(other);
    for (const int closes : {0, -1}) { // said of the menu at the top
        menu->setClosesSiblings(closes);
        act(openAll + ", click row 3 sub");
        EXPECT_EQ(other->isOpen(), -1);
        EXPECT_EQ(open(), closes ? "oo-" : "ooo");
        menu->close();
    }
}

TEST_F(DeepMenu, CallbacksMayDoAnything) {
    const std::pair<const char*, std::function<void()>> rows[] = {
        {"clear its menu", [&] { deep->clearMenuItems(); }},
        {"delete its menu", [&] { delete deep; }},
        {"delete everything", [&] { menu.reset(); }},
        {"add entries",
         [&] {
             for (int i = 0; i < 300; ++i)
                 addCounter(i % 2 ? *deep : *sub, "New");
         }},
        {"replace its menu's entries",
         [&] {
             deep->clearMenuItems();
             addCounter(*deep, "New", KXKeyLeftControl, KXKeyK);
         }},
        {"run a loop of its own",
         [&] {
             poll();
             menu->draw();
             menu.reset(); // also for the poll that this one runs within
         }},
        {"throw", [&] {
             deep->clearMenuItems();
             throw std::runtime_error("callback");
         }}};
    for (const auto& [what, doing] : rows)
        for (const std::string& choose :
             {std::string("hold Left Ctrl, hold K"), openAll + ", click row 2 deep"}) {
            SCOPED_TRACE(what);
            make();
            does = doing;
            deep->addMenuItemWithName("Does", call, this, KXKeyLeftControl, KXKeyK);
            for (KXUIMenu* each : {deep, sub, menu.get()})
                addCounter(*each, "After");
            try {
                act(choose);
            } catch (const std::runtime_error&) {
                EXPECT_STREQ(what, "throw");
            }
            act("let Left Ctrl, let K");
            EXPECT_EQ(std::exchange(calls, 0), 100);
            EXPECT_EQ(menu ? menu->isOpen() : 0, 0);
        }
}

TEST_F(DeepMenu, AnEntryRemovedInAPollSkipsNoOther) {
    // One deletes its own sub-menu and those around it; the last is still polled in this step.
    KXUIMenu top("Top"), *const victims[] = {new KXUIMenu("1"), new KXUIMenu("2"), new KXUIMenu("3")};
    for (KXUIMenu* each : victims)
        top.addSubMenu(each);
    does = [&] {
        for (KXUIMenu* each : victims)
            delete each;
    };
    victims[1]->addMenuItemWithName("Deletes", call, this, 0, KXKeyK);
    addCounter(top, "Last", 0, KXKeyA);
    keyDown(KXKeyK);
    keyDown(KXKeyA);
    top.poll();
    EXPECT_EQ(calls, 101);
}

TEST_F(DeepMenu, OwnershipHasNoCircles) {
    for (KXUIMenu* each : {menu.get(), sub, deep}) {
        each->addSubMenu(nullptr);
        each->addSubMenu(each);
        deep->addSubMenu(each);
        menu->setParent(each);
    }
    EXPECT_EQ(menu->getParent(), nullptr);
    EXPECT_EQ(sub->getParent(), menu.get());
    EXPECT_EQ(deep->getParent(), sub);
    menu->addSubMenu(deep);
    EXPECT_EQ(deep->getParent(), menu.get());
    sub->clearMenuItems(); // deletes it no more
    KXUIMenu other("Other"), onStack("Deleted before its menu");
    other.addSubMenu(deep);
    act(openAll.substr(0, 11)); // polls what is left
    delete deep;
    other.poll();
    other.draw();
    other.addSubMenu(&onStack);
}

TEST_F(DeepMenu, ParentsThatGoLeaveNoTrace) {
    does = [] {};
    _KXUIMenuItem item("Loose", call, this, 0, KXKeyK);
    item.click(KXMouseLeft);
    item.poll();
    EXPECT_EQ(item.isOpen(), 0);
    EXPECT_EQ(calls, 0);
    item.setParent(deep);
    item.setParent(deep);
    for (KXUIMenu* each : {menu.get(), sub, deep})
        each->click(KXMouseLeft);
    poll(); // clicks by the game reach all levels at once
    EXPECT_EQ(item.isOpen(), -1);
    item.click(KXMouseLeft);
    item.poll();
    EXPECT_EQ(state(), "--- 100");
    menu.reset();
    EXPECT_EQ(item.getParent(), nullptr);
    keyDown(KXKeyK);
    item.poll();
    EXPECT_EQ(calls, 100);
}

TEST_F(DeepMenu, FontsReachEveryLevel) {
    const auto expectSizes = [&](int size) {
        for (_KXUIMenuBase* each : {menu.get(), sub, deep})
            EXPECT_EQ(each->_fontInUse()->getSize(), size);
        EXPECT_EQ(sub->rect().size.height, std::ceil(menu->_fontInUse()->ascender()) + 8);
    };
    EXPECT_EQ(menu->setFontSize(30), 0);
    expectSizes(12);
    ASSERT_EQ(menu->setFont(testFont(), KXAliasModeTexture, 24), -1);
    expectSizes(24);
    EXPECT_EQ(menu->setFontSize(18), -1);
    expectSizes(18);
    KXUIMenu current("Current"), *const late = new KXUIMenu("Late"), *const entry = new KXUIMenu("Entry");
    menu->addSubMenu(late);
    EXPECT_EQ(late->_fontInUse(), menu->_fontInUse());
    EXPECT_EQ(menu->setFont(testFont(), KXAliasModePolygon), -1); // keeps the size
    expectSizes(18);
    KXUISetGlobalFont(testFont(), KXAliasModeTexture, 15, KXZeroPoint);
    current.addSubMenu(entry); // has a font although the menu was never given one
    EXPECT_GT(entry->itemWidth(), 0);
}

TEST_F(DeepMenu, Looks) {
    menu->setTextColor(0.1f, 0.1f, 0.5f, 1); // of the title, and of entries added from now on
    menu->addMenuItemWithName("Save 50%%", nullptr, nullptr, KXKeyLeftControl, KXKeyS);
    menu->addDivider();
    menu->addMenuItemWithName("{C0.7,0,0,1}Quit{EC}", nullptr, nullptr);
    addCounter(*deep, "Bottom");
    KXUIMenu closed("Closed"), hovered("Hovered");
    closed.setOrigin({250, 10});
    hovered.setOrigin({250, 160});
    act(openAll + ", at 255 165");
    closed.draw();
    hovered.draw();
    act("at row 2");
    menu->draw();
    expectGolden(Image::of(*window), "ui/menu");
}
} // namespace
