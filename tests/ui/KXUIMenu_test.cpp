#include <Kobaltrix/KXFont.h>

#include "MenuTest.h"

#include "text/KXUIGlobalFont.h"

#include <cmath>

namespace {
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
} // namespace
