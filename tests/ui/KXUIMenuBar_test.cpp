#include "UITest.h"

#include "platform/Desktop.h"
#include "ui/KXUIMenuTree.h"

#include <random>

namespace {
enum Command { New = 1, Open, Recent, Quit, Undo, Delete, Grid, Small, Large, Zoom, In, Copy, First = 20 };

template<class Menu>
struct Seen : Menu {
    using State = typename Menu::State;
    State& in() const { return *this->_state; }
};

/// A bar over the whole width, an entry and a button below it, and a context menu.
struct MenuBar : UITest {
    MenuBar() {
        bar.addMenu("&File", {{"&New", New, {KXKeyN, KXUICommand}},
                              {"&Open...", Open, {KXKeyO, KXUICommand | KXUIShift}},
                              {"Open &recent", Recent},
                              {},
                              {"&Quit", Quit, {KXKeyQ, KXUICommand}}});
        bar.addSubMenu(Recent, {{"meadow.lvl", First}, {"cave.lvl", First + 1}});
        bar.addMenu("&Edit", {{"&Undo", Undo, {KXKeyZ, KXUICommand}}, {"Delete", Delete, {KXKeyDelete}}});
        const KXUIMenuEntry view[] = {{"&Grid", Grid, {KXKeyF5}, KXUIMenuEntryCheck},
                                      {"Small", Small, {}, KXUIMenuEntryRadio, -1},
                                      {"Large", Large, {}, KXUIMenuEntryRadio},
                                      {"Zoom", Zoom}};
        bar.addMenu("&View", view, 4);
        bar.addSubMenu(Zoom, {{"In", In}});
        bar.setSize({320, -1});
        context.add({{"Copy", Copy, {KXKeyC, KXUICommand}}, {}, {"&Erase", Delete}});
        entry.setRect({10, 150}, {100, 20});
        button.setRect({200, 150}, {50, 20});
        poll();
    }
    int poll() override {
        int told = 0;
        for (_KXUIMenuTree* each : {static_cast<_KXUIMenuTree*>(&bar), static_cast<_KXUIMenuTree*>(&context)})
            while (each->poll())
                said += " " + std::to_string(each->chosen()), told = -1;
        told |= entry.poll();
        clicks += button.clicked(KXMouseLeft) ? 1 : 0;
        return told;
    }
    /// What is lit innermost, "-" while nothing is open, and what was chosen since it was asked last.
    std::string state() override {
        const bool isBar = !context.isOpen();
        const KXUIDescription of = isBar ? bar.description() : context.description();
        std::string words = isBar && !bar.isOpen() ? "-" : of.name.empty() ? "none" : of.name;
        return words + (entry.isFocused() ? " typing" : "") + std::exchange(said, "");
    }
    /// The middle of an entry that is seen, by its caption.
    KXPoint place(const std::string& name) const override {
        for (auto* state : {&bar.in(), &context.in()})
            for (int level = state->innermost(); level >= 0; --level)
                if (const auto at = placeIn(*state, level, name); at.x >= 0)
                    return at;
        const _KXMenuRows& titles = bar.in().rows(bar.in().root);
        for (std::size_t i = 0; i < bar.in().root.entries.size(); ++i)
            if (bar.in().root.entries[i]->caption->text() == name)
                return {bar.rect().origin.x + float(titles.starts[i]) + 5, bar.rect().origin.y + 5};
        return UITest::place(name);
    }
    template<class State>
    static KXPoint placeIn(State& state, int level, const std::string& name) {
        const auto& at = state.levels[level];
        if (!state.isBar(level))
            for (std::size_t i = 0; i < at.entry->entries.size(); ++i)
                if (const auto& caption = at.entry->entries[i]->caption;
                    name == (caption ? caption->text() : "line"))
                    return {float(at.left) + 10,
                            float(at.top + 5 + state.rows(*at.entry).starts[i] - at.scrolled)};
        return {-1, -1};
    }

    Seen<KXUIMenuBar> bar;
    Seen<KXUIContextMenu> context;
    KXUITextEntry entry;
    KXUIButton button;
    std::string said;
    int clicks = 0;
};

TEST_F(MenuBar, IsWorkedByTheMouse) {
    expectEach(
        "click File -> File; at New -> New; at 300 120 -> File; click New -> told - 1; "
        "press File, at Quit -> Quit; release -> told - 4; press File, release -> File; click File -> -; "
        "press File, at 300 120, release -> -; "
        "click File, at Edit -> Edit; click Delete -> told - 6; click File, at New, at 5 5 -> File; "
        // A sub-menu opens after a moment or at once, and stays while the pointer passes others.
        "at Open recent, poll 17, at 300 120 -> File; at Open recent, poll 20, at meadow.lvl -> meadow.lvl; "
        "at New, poll 10, at cave.lvl, poll 30 -> cave.lvl; click cave.lvl -> told - 21; "
        "click File, click Open recent, at cave.lvl -> cave.lvl; at New, poll 20, at 300 120 -> File; "
        // What cannot be chosen keeps it open.
        "press line, release -> File");
    // A press elsewhere closes it and is for nobody else; the next one is.
    expectEach("click 210 160 -> -");
    EXPECT_EQ(clicks, 0);
    expectEach("click 210 160 -> -; click 20 160 -> - typing; click File -> File; click 210 160 -> - typing");
    EXPECT_EQ(clicks, 1);
    expectEach("click File, at Quit & press & release & press 210 160 & release -> told - 4");
    EXPECT_EQ(button.mouseDownInside(KXMouseLeft), 0);
}

TEST_F(MenuBar, IsWorkedByKeys) {
    entry.focus();
    expectEach("F10 -> File; Right -> Edit; Left, Left -> View; Escape -> - typing; Left Alt -> File; Left "
               "Alt -> - typing; "
               "hold Left Alt, press 300 120, release, let Left Alt -> -");
    entry.focus();
    expectEach(
        "Left Alt+F -> New; Up -> Quit; Up -> Open recent; Right -> meadow.lvl; End -> cave.lvl; "
        "Down -> meadow.lvl; Left -> Open recent; Return -> meadow.lvl; Escape -> Open recent; "
        "Escape -> - typing; F10, Down -> New; F10, F10, Up -> Quit; Home, Left -> Grid; Left -> Undo; "
        "Right -> Grid; S -> Small; L -> Large; S -> Small; Space -> told - typing 8; "
        "F10, F, R -> meadow.lvl; C -> cave.lvl; Return -> told - typing 21; F10, V, Z -> Zoom; "
        "Right, Right -> New; N -> told - typing 1; Left Alt+X -> - typing; "
        "F10, Down, hold Down, poll 40 -> Open recent"); // repeats every 33 ms after 500
    EXPECT_STREQ(entry.text(), "");
    expectEach("let Down, Left Alt -> - typing; type x -> told - typing");
    hands.hold(KXKeyLeftAlt);
    hands.loseFocus(); // as when somebody goes to another program
    step();
    expectEach("poll 1 -> - typing");
}

TEST_F(MenuBar, HearsShortcuts) {
    expectEach(
        "Left Ctrl+N -> told - 1; hold Left Ctrl, hold N, poll 60 -> told - 1; let N, N -> told - 1; "
        "let Left Ctrl, N -> -; Left Ctrl+Left Shift+N -> -; Left Ctrl+O -> -; "
        "Left Ctrl+Left Shift+O -> told - 2; Delete -> told - 6; F5 -> told - 7; Left Ctrl+Z -> told - 5; "
        "hold Right Alt, Left Ctrl+Q -> -; let Right Alt, hold Left Ctrl, N & Q & N -> told - 1 4 1; "
        "let Left Ctrl, click File, Left Ctrl+Q -> told - 4; Left Ctrl+C -> -");
    EXPECT_TRUE(bar.isEntryChecked(Grid));
    // What a widget means for itself is its own.
    entry.focus();
    expectEach("Delete, type n -> told - typing; F5 -> told - typing 7; Left Ctrl+N -> told - typing 1; "
               "Left Ctrl+Z -> told - typing; compose k, Left Ctrl+N, F10 -> - typing");
    EXPECT_STREQ(entry.text(), "");
    for (const int id : {int{New}, int{Recent}, 0, -1, 77})
        EXPECT_EQ(bar.setEntryEnabled(id, 0), id == New || id == Recent ? -1 : 0);
    expectEach(
        "compose , Left Ctrl+N -> - typing; Left Alt+F -> Open...; Down -> Quit; End, Home -> Open...");
    hands.hold(KXKeyQ), hands.hold(KXKeyLeftControl);
    bar.setEnabled(0);
    expectEach("poll 2 -> - typing");
}

TEST_F(MenuBar, SeveralOfAStepAreToldOneByOne) {
    act("hold Left Ctrl");
    for (const KXKeyNumber key : {KXKeyN, KXKeyQ})
        hands.hold(key);
    step();
    EXPECT_TRUE(bar.poll() == -1 && bar.chosen() == New);
    step(); // a game that asks once a step
    EXPECT_TRUE(bar.poll() == -1 && bar.chosen() == Quit);
    EXPECT_TRUE(bar.poll() == 0 && bar.chosen() == 0);
}

TEST_F(MenuBar, EntriesChangeWhileTheyAreSeen) {
    expectEach("click View, click Large -> told - 9");
    EXPECT_TRUE(bar.isEntryChecked(Large) && !bar.isEntryChecked(Small));
    bar.setEntryChecked(Small, -1);
    EXPECT_TRUE(bar.isEntryChecked(Small) && !bar.isEntryChecked(Large) && !bar.isEntryChecked(Grid));
    EXPECT_EQ(bar.setEntryChecked(New, -1), 0);
    expectEach("click File, click Open recent, at cave.lvl -> cave.lvl");
    bar.setEntryText(First + 1, "c&&f&e {C1,0,0,1}&hut{EC}");
    EXPECT_EQ(state(), "c&fe hut");
    bar.setEntryShortcut(First, {KXKeyF6});
    bar.addSubMenu(Recent, {{"more", First + 2}});
    expectEach(
        "at more -> more; E -> told - 21; F6 -> told - 20; click File, click Open recent, at more -> more");
    bar.removeEntries(Recent); // the column under the pointer
    expectEach("poll 2 -> File; at Open recent, poll 30 -> File; Down, Down, Down -> Quit");
    bar.setEntryEnabled(Quit, 0);
    expectEach("poll 1 -> File; Up -> Open...; Left Alt -> -");
    EXPECT_EQ(bar.addSubMenu(77, {{"none"}}), 0);
    bar.addMenu(nullptr, nullptr, 0, 50);
    expectEach("F10, Left -> View; Escape -> -");

    auto gone = std::make_unique<KXUIMenuBar>();
    gone->addMenu("Gone", {{"x", 1}});
    gone->setSize({-1, -1});
    EXPECT_LT(gone->rect().size.width, 100);
    gone->setOrigin({0, 100});
    entry.focus();
    hands.move({5, 105}), press();
    gone->poll();
    EXPECT_TRUE(gone->isOpen() && !entry.isFocused());
    gone.reset();
    expectEach("release, type x -> -; click 20 160, type y -> told - typing");
}

TEST_F(MenuBar, AColumnOpensAtThePointer) {
    entry.focus();
    context.open({100, 50});
    expectEach(
        "poll 1 -> none; Down -> Copy; Down, Down -> Copy; E -> told - typing 6; Left Ctrl+C -> - typing");
    const auto openAt = [&](KXPoint point) {
        context.open(point);
        act("poll 1");
        const auto& at = context.in().levels[0];
        return KXRect{{float(at.left), float(at.top)},
                      {float(at.right - at.left), float(at.bottom - at.top)}};
    };
    const KXRect middle = openAt({100, 50});
    EXPECT_EQ(middle.origin.x, 100);
    for (const auto& [x, y] :
         {std::pair{320.0f, 200.0f}, {-5.0f, 1e9f}, {3e38f, NAN}, {-INFINITY, INFINITY}}) {
        const KXRect box = openAt({x, y});
        EXPECT_TRUE(KXEqualRects(box, {box.origin, middle.size}));
        EXPECT_TRUE(box.origin.x >= 0 && box.origin.y >= 0 && box.origin.x + box.size.width <= 320 &&
                    box.origin.y + box.size.height <= 200);
    }
    // Hands off the bar while it is open, and the other way round.
    openAt({100, 50});
    expectEach("click 20 5 -> - typing; Left Ctrl+N -> told - typing 1");
    openAt({100, 50});
    expectEach("F10 -> - typing; F10 -> File");
    context.open({100, 50});
    EXPECT_FALSE(bar.isOpen());
    expectEach("Left Ctrl+C -> told - typing 12; click File, Escape -> - typing");
    context.clear();
    context.open({100, 50});
    EXPECT_FALSE(context.isOpen());
}

TEST_F(MenuBar, WhatIsHigherThanTheWindowScrolls) {
    std::vector<KXUIMenuEntry> many(40);
    std::vector<std::string> names;
    for (int i = 0; i < 40; ++i)
        names.push_back("number " + std::to_string(i));
    for (int i = 0; i < 40; ++i)
        many[i].text = names[i].c_str(), many[i].id = 100 + i;
    bar.addSubMenu(Recent, many.data(), 40);
    expectEach("click File, click Open recent, Up -> number 39; click number 39 -> told - 139; "
               "click File, click Open recent, Down, wheel 1 -> meadow.lvl");
    const auto& column = bar.in().levels[2];
    EXPECT_TRUE(column.top == 0 && column.bottom == 200 && column.scrolled == 0);
    const std::string end = std::to_string(column.left + 20) + " 195";
    act("at " + end + ", poll 20");
    EXPECT_GE(column.scrolled, 5 * 20);
    expectEach("press " + end + ", release, wheel 1000, at cave.lvl -> cave.lvl; wheel 1001 -> cave.lvl");
    EXPECT_EQ(column.scrolled, 0);
    act("wheel -900");
    EXPECT_EQ(column.scrolled + column.room(), bar.in().rows(*column.entry).starts.back());
    // At the bottom of the window columns go up.
    act("Escape, Escape");
    bar.setOrigin({250, 180});
    expectEach("click View, at Grid -> Grid; click Zoom, at In -> In");
    for (const auto& level : bar.in().levels)
        EXPECT_TRUE(level.left >= 0 && level.top >= 0 && level.bottom <= 200);
    EXPECT_LE(bar.in().levels[1].bottom, 180);
    EXPECT_LT(bar.in().levels[2].left, bar.in().levels[1].left) << "no room at its right";
}

TEST_F(MenuBar, Looks) {
    KXImage image(12, 12);
    for (int i = 0; i < 144; ++i)
        image.setPixel(i % 12, i / 12, {float(i % 12) / 11, 0.8f, float(i / 12) / 11, 1});
    KXTexture texture(image);
    KXUIMenuEntry entries[] = {{"&Checked", 60, {KXKeyC, KXUICommand | KXUIShift}, KXUIMenuEntryCheck, -1},
                               {"One", 61, {KXKeyDelete}, KXUIMenuEntryRadio},
                               {"{C0,0.6,0,1}An&other{EC}", 62, {}, KXUIMenuEntryRadio, -1},
                               {},
                               {"With an icon", 63},
                               {"Its mark", 64, {KXKeyF11}, KXUIMenuEntryCheck, -1},
                               {"Not now", 65, {KXKeyX, KXUIAlt}}};
    entries[4].icon = entries[5].icon = &texture;
    entries[5].iconSource = {{0, 0}, {8, 8}};
    entries[6].enabled = 0;
    bar.addMenu("&Looks", entries, 7);
    bar.addMenu("Empty", nullptr, 0);
    bar.addSubMenu(63, {{"\u0642\u0644\u0645"}, {"\u041a\u0438\u0441\u0442\u044c"}});
    KXUIContextMenu tall;
    tall.add({{"&One", 1}, {"Two", 2}, {"Three", 3}, {"Four", 4}, {"Five", 5}, {"Six", 6}});
    bar.setRect({124, 0}, {196, -1});
    KXUISetTheme(KXUILightTheme());
    act("click Looks, click With an icon, Down");
    const auto frame = [&] { tall.poll(), poll(), bar.draw(), tall.draw(); };
    for (int i = 0; i < 2; ++i)
        frame();
    EXPECT_EQ(allocationsOf(frame), 0u);
    KXUISetTheme(KXUITheme());
    window->setSize({320, 86}); // for as long as there is room for some of it
    step();
    tall.open({0, 0});
    tall.poll();
    for (int i = 0; i < 3; ++i)
        keyDown(KXKeyDown), tall.poll(), keyUp(KXKeyDown), tall.poll();
    hands.move({10, 80});
    for (int i = 0; i < 4; ++i)
        step(), tall.poll();
    for (int i = 0; i < 2; ++i)
        tall.draw();
    EXPECT_EQ(allocationsOf([&] { tall.poll(), tall.draw(); }), 0u);
    window->setSize({320, 200});
    expectGolden(Image::of(*window), "ui/menu_bar");
    tall.close();

    constexpr KXUIShortcut keys = {KXKeyS, KXUICommand | KXUIShift | KXUIAlt};
    EXPECT_STREQ(KXUIShortcutName(keys), "Ctrl+Alt+Shift+S");
    _KXIsMac = true;
    EXPECT_STREQ(KXUIShortcutName(keys), "\u2325\u21e7\u2318S");
    expectEach("hold Left Command, Q -> told - 4; let Left Command, Left Ctrl+Q -> -; Left Alt -> -; Left "
               "Alt+F -> -");
    _KXIsMac = false;
    EXPECT_STREQ(KXUIShortcutName({}), "");
}
} // namespace
