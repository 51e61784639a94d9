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
        if (panel) {
            if (!bar._panel())
                bar.poll();
            told = panel->poll();
            said += bar.activated() ? " " + std::to_string(bar.chosen()) : "";
            for (const _KXUIWidget* each : {&button, &cancel})
                clicks += each->activated() ? each == &cancel ? 100 : 1 : 0;
            return told;
        }
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
    KXUIButton button, cancel;
    KXUIPanel* panel = nullptr; ///< With some of them.
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
        "F10, Down, Q -> told - typing 4; F10, Down, G -> New; Escape, F10, Down, hold Down, poll 40 -> Open "
        "recent"); // repeats every 33 ms after 500
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

TEST_F(MenuBar, SaysWhatIsLit) {
    const std::pair<const char*, const char*> rows[] = {{"wait 1", "menu bar"},
                                                        {"F10", "menu"},
                                                        {"Down", "menu item, Ctrl+N"},
                                                        {"R, Escape", "menu"},
                                                        {"Left, Home", "check menu item, F5, not checked"},
                                                        {"Down", "radio menu item, checked"}};
    for (const auto& [acts, words] : rows) {
        act(acts);
        const KXUIDescription of = bar.description();
        std::string all = of.role;
        for (const std::string& each : {of.value, of.state})
            all += each.empty() ? "" : ", " + each;
        EXPECT_EQ(all, words) << acts;
    }
    act("Escape");
    // Its size follows its font, as far as it was asked to.
    EXPECT_EQ(bar.setFont(testFont(), KXAliasModeTexture), -1);
    const float height = bar.rect().size.height;
    EXPECT_EQ(bar.setFontSize(30), -1);
    EXPECT_GT(bar.rect().size.height, height + 10);
    EXPECT_EQ(bar.rect().size.width, 320);
    bar.setFontSize(10);
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

TEST_F(MenuBar, LiesAboveAPanelAndKeepsItsKeys) {
    KXUIPanel all;
    panel = &all;
    button.setRect({5, 25}, {100, 100});
    for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&bar, &button, &cancel, &entry})
        all.add(*each);
    all.setCancelButton(&cancel);
    all.setDefaultButton(&button);
    expectEach(
        "click 20 60 -> told -; click File, click Quit -> told - 4; press File, at New, release -> told - 1; "
        "click File, click 20 130 -> -; click 20 160 -> - typing; F10, Tab -> File; Down, Return -> told - "
        "typing 1; "
        "F10, Escape -> - typing; Left Ctrl+Q -> told - typing 4");
    EXPECT_EQ(clicks, 1);
    all.remove(bar); // polled by itself, before the panel
    act("click 300 180, F10, Escape");
    EXPECT_EQ(clicks, 1) << "an Escape that closed the bar is nothing to the panel";
    act("Escape, Return");
    EXPECT_EQ(clicks, 102);
    panel = nullptr;
}

TEST_F(MenuBar, IsWorkedInItsOwnWindowAlone) {
    KXWindow other("Other", {320, 200});
    bar.setWindowID(window->id());
    act("click File");
    hands = KXTestUser(other.id());
    expectEach("at New, click 300 150, Down, Escape, N -> File; hold Left Ctrl, N, let Left Ctrl -> File");
    hands = KXTestUser(window->id());
    expectEach("click Quit -> told - 4");
    hands = KXTestUser(other.id());
    expectEach("click File, F10, Left Ctrl+N, Left Alt -> -; click 20 160 -> - typing");
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

/// An entry of a bar as a reader has it in mind. A capital letter is its mnemonic.
struct Node {
    std::string text; ///< Empty for a line.
    std::vector<Node> kids = {};
    bool isOff = false;

    bool isSelectable() const { return !text.empty() && !isOff; }
    std::string marked() const { return std::isupper(text[0]) ? "&" + text : text; }
};

/// What a bar is expected to do, without any place, time or widget.
struct Model {
    struct Level {
        const Node* node;
        int place = -1, lit = -1;
    };
    struct Spot {
        int level, index; // -1: beside all of it, or on nothing
        KXPoint point;
    };
    const Node& root;
    std::vector<Level> levels = {};
    std::string chosen = "";
    bool held = false, heldInside = false;
    KXPoint heldAt = {0, 0};

    int inner() const { return static_cast<int>(levels.size()) - 1; }
    std::string lit() const {
        for (auto level = levels.rbegin(); level != levels.rend(); ++level)
            if (level->lit != -1)
                return level->node->kids[level->lit].text;
        return "";
    }
    template<class Holds>
    static int next(const Node& node, int from, int step, Holds holds) {
        const int count = static_cast<int>(node.kids.size());
        for (int i = from == -1 && step < 0 ? count : from, tries = 0; tries < count; ++tries)
            if (i = (i + step + count) % count; node.kids[i].isSelectable() && holds(node.kids[i]))
                return i;
        return -1;
    }
    static int next(const Node& node, int from, int step) {
        return next(node, from, step, [](const Node&) { return true; });
    }
    void closeTo(int level) {
        if (level < inner())
            levels[level].lit = levels[level + 1].place;
        while (level < inner())
            levels.pop_back();
    }
    void open(int level, int index) {
        closeTo(level);
        levels[level].lit = index;
        levels.push_back({&levels[level].node->kids[index], index});
    }
    void enter(int step) {
        if (levels.back().lit == -1)
            return;
        open(inner(), levels.back().lit);
        levels.back().lit = next(*levels.back().node, -1, step);
    }
    void goTo(int title) {
        const bool wasOpen = inner() > 0;
        closeTo(0);
        levels[0].lit = title;
        if (wasOpen)
            enter(1);
    }
    void choose(const Node& node) {
        chosen += " " + node.text;
        end();
    }
    void end() { levels.clear(), held = false; }

    void rest(const Spot& at) { // the pointer comes somewhere, and stays
        if (levels.empty())
            return;
        if (at.level < inner() && inner() > 0)
            levels.back().lit = -1;
        if (at.level == -1 || (at.level == 0 && at.index == -1))
            return;
        for (int level = 0; level < at.level; ++level)
            levels[level].lit = levels[level + 1].place;
        levels[at.level].lit = at.index;
        const bool isOpen = at.level < inner() && levels[at.level + 1].place == at.index;
        if (at.index == -1 || isOpen || (at.level == 0 && inner() == 0))
            return;
        if (!levels[at.level].node->kids[at.index].kids.empty())
            return open(at.level, at.index);
        closeTo(at.level);
        levels[at.level].lit = at.index;
    }
    void press(const Spot& at) {
        if (levels.empty() && (at.level != 0 || at.index == -1))
            return;
        const bool toggles = at.level == 0 && inner() > 0 && levels[1].place == at.index;
        if (at.level == -1 || (at.level == 0 && at.index == -1) || toggles)
            return end();
        if (levels.empty())
            levels.push_back({&root});
        if (at.index == -1)
            return;
        held = true, heldInside = at.level > 0, heldAt = at.point;
        if (at.level == 0)
            return open(0, at.index);
        rest(at);
    }
    void release(const Spot& at) {
        const bool moved = std::abs(at.point.x - heldAt.x) >= 4 || std::abs(at.point.y - heldAt.y) >= 4;
        if (!std::exchange(held, false) || levels.empty() || (!heldInside && !moved))
            return;
        if (at.level == -1)
            return end();
        if (at.level > 0 && at.index != -1)
            if (const Node& node = levels[at.level].node->kids[at.index]; node.kids.empty())
                choose(node);
    }
    void key(const std::string& key) {
        if (levels.empty()) {
            if (key == "F10" || key == "Left Alt")
                levels.push_back({&root, -1, next(root, -1, 1)});
            return;
        }
        const Node& column = *levels.back().node;
        const int step = key == "Up" || key == "Left" || key == "End" ? -1 : 1;
        const int title = inner() > 0 ? levels[1].place : levels[0].lit;
        const Node* const lit = levels.back().lit == -1 ? nullptr : &column.kids[levels.back().lit];
        if (key == "F10" || key == "Left Alt" || (key == "Escape" && inner() < 2))
            end();
        else if (key == "Escape" || (key == "Left" && inner() > 1))
            closeTo(inner() - 1);
        else if ((key == "Right" && inner() > 0 && lit && !lit->kids.empty()) ||
                 ((key == "Up" || key == "Down") && inner() == 0))
            enter(step);
        else if (key == "Left" || key == "Right")
            goTo(next(root, title, step));
        else if (key == "Up" || key == "Down" || key == "Home" || key == "End")
            levels.back().lit = next(column, key == "Home" || key == "End" ? -1 : levels.back().lit, step);
        else if (key == "Return" || key == "Space")
            !lit ? void() : lit->kids.empty() ? choose(*lit) : enter(1);
        else
            letter(column, key[0]);
    }
    void letter(const Node& column, char letter) {
        const int lit = levels.back().lit;
        const auto isMnemonic = [=](const Node& node) { return node.text[0] == letter; };
        const int mnemonic = next(column, lit, 1, isMnemonic);
        if (mnemonic != -1) {
            levels.back().lit = mnemonic;
            if (next(column, mnemonic, 1, isMnemonic) == mnemonic)
                column.kids[mnemonic].kids.empty() ? choose(column.kids[mnemonic]) : enter(1);
            return;
        }
        const int first =
            next(column, lit, 1, [=](const Node& node) { return std::toupper(node.text[0]) == letter; });
        if (first != -1)
            levels.back().lit = first;
    }
};

struct RandomHands : UITest {
    RandomHands() {
        window->setSize({640, 400}); // all columns beside one another
        for (const Node& title : tree.kids) {
            const int id = nameOf(title);
            bar.addMenu(title.marked().c_str(), {}, id);
            bar.setEntryEnabled(id, !title.isOff);
            fill(title);
        }
        bar.setSize({640, -1});
        entry.setRect({-1, 19}, {650, 400}); // all that is not the bar
        act("at 600 390");
        entry.focus();
    }
    int nameOf(const Node& node) {
        names.push_back(node.text);
        return static_cast<int>(names.size());
    }
    void fill(const Node& node) {
        const int parent = static_cast<int>(std::ranges::find(names, node.text) - names.begin()) + 1;
        for (const Node& kid : node.kids) {
            const std::string text = kid.text.empty() ? "" : kid.marked();
            KXUIMenuEntry made = {kid.text.empty() ? nullptr : text.c_str(), nameOf(kid)};
            made.enabled = !kid.isOff;
            bar.addSubMenu(parent, &made, 1);
            fill(kid);
        }
    }
    /// Somewhere in the bar, in a column that is open, or beside them.
    KXPoint anyPoint() {
        auto& state = bar.in();
        const int level = pick(std::max(1, state.innermost() + 1));
        if (pick(12) == 0)
            return {600, 390};
        const auto& starts = state.rows(level ? *state.levels[level].entry : state.root).starts;
        const int index = pick(static_cast<int>(starts.size()) - 1),
                  middle = (starts[index] + starts[index + 1]) / 2;
        if (level == 0)
            return {float(middle), 5};
        return {float(state.levels[level].left + 6), float(state.levels[level].top + middle)};
    }
    /// What a point is on now: columns come and go by keys, too.
    Model::Spot spotAt(KXPoint point) {
        auto& state = bar.in();
        for (int level = std::max(0, state.innermost()); level >= 0; --level) {
            const auto& starts = state.rows(level ? *state.levels[level].entry : state.root).starts;
            const float left = level ? float(state.levels[level].left) : 0,
                        top = level ? float(state.levels[level].top) : 0;
            const KXRect box = {{left, top},
                                {level ? float(state.levels[level].right) - left : 640,
                                 level ? float(state.levels[level].bottom) - top : bar.rect().size.height}};
            if (point.x < left || point.y < top || point.x >= left + box.size.width ||
                point.y >= top + box.size.height)
                continue;
            const int along = int(level ? point.y - top - 1 : point.x);
            const auto index = std::ranges::upper_bound(starts, along) - starts.begin() - 1;
            const Node& node = level ? *model.levels[level].node : tree;
            const bool is = index < int(node.kids.size()) && node.kids[index].isSelectable();
            return {level, is ? int(index) : -1, point};
        }
        return {-1, -1, point};
    }
    int pick(int below) { return std::uniform_int_distribution<>(0, below - 1)(random); }
    int poll() override {
        while (bar.poll())
            said += " " + names[bar.chosen() - 1];
        return entry.poll();
    }
    void doSomething() {
        static constexpr const char* keys[] = {"Up",   "Down",     "Down",   "Left",   "Right", "Right",
                                               "Home", "End",      "Return", "Return", "Space", "Escape",
                                               "F10",  "Left Alt", "N",      "O",      "S"};
        const int kind = pick(10);
        const bool opens = model.levels.empty() && pick(2) == 0;
        if (kind < 4 || opens) {
            done = opens ? (pick(2) ? "F10" : "Left Alt") : keys[pick(std::size(keys))];
            act(done);
            return model.key(done);
        }
        if (kind < 7) {
            done = isDown ? "release" : "press";
            at = spotAt(at.point);
            act(done);
            isDown ? model.release(at) : model.press(at);
            isDown = !isDown;
            return;
        }
        at = spotAt(anyPoint());
        done = "at " + std::to_string(int(at.point.x)) + " " + std::to_string(int(at.point.y));
        act(done + ", poll 20");
        model.rest(at);
    }

    const Node tree = {
        "",
        {{"File",
          {{"New"}, {"open"}, {"often"}, {""}, {"Sort", {{"by name"}, {"by Size"}}}, {"stop", {}, true}}},
         {"Edit", {{"Not", {{"now"}, {"never", {{"Or"}, {"so"}}}}}, {"Some"}, {"Sum"}}},
         {"off", {{"hidden"}}, true},
         {"View", {{"", {}}, {"one"}, {"other"}}}}};
    Model model{tree};
    Seen<KXUIMenuBar> bar;
    KXUITextEntry entry;
    std::vector<std::string> names;
    std::string said, done;
    Model::Spot at = {-1, -1, {600, 390}};
    bool isDown = false;
    std::mt19937 random{4};
};

TEST_F(RandomHands, DoWhatAReaderExpects) {
    std::string before;
    int acted = 0;
    for (int i = 0; i < 5000; ++i) {
        doSomething();
        const std::string lit = bar.isOpen() ? bar.description().name : "",
                          now = std::to_string(bar.in().innermost());
        ASSERT_EQ(now + " " + lit + said, std::to_string(model.inner()) + " " + model.lit() + model.chosen)
            << "step " << i << ": " << done << ", after " << before;
        if (done == "Escape" && !bar.isOpen())
            entry.focus(); // which may have been for the entry
        ASSERT_NE(entry.isFocused(), bar.isOpen()) << done << ", after " << before;
        before = now + " " + lit;
        acted += said.empty() ? 0 : 1;
        said.clear(), model.chosen.clear();
    }
    EXPECT_GT(acted, 100);
}
} // namespace
