// Drop-downs, spin boxes, sliders of any range, rows of tabs and split panels.

#include "UITest.h"

#include "render/Cursor.h"

#include <algorithm>

namespace {
struct DropDown : UITest {
    DropDown() {
        for (const char* text : {"Ash", "Birch", "Beech", "Cedar"})
            box.add(text);
        rowHeight = box._idealSizeForText("").height;
        box.setRect({20, 20}, {100, rowHeight});
    }
    int poll() override { return box.poll(); }
    /// Where "row 2" of the list is seen as its third, whether it opens downward or upward by some rows.
    KXPoint place(const std::string& name) const override {
        if (!name.starts_with("row"))
            return UITest::place(name);
        const float row = std::stof(name.substr(4)) - rowsAbove;
        const float top = rowsAbove > 0 ? box.rect().origin.y - 1 : 21 + rowHeight;
        return {40, top + std::floor((row + 0.5f) * rowHeight)};
    }
    std::string state() override {
        return std::to_string(box.selectedIndex()) + (box.isOpen() ? " open" : "") +
               (box.hasFocus() ? "" : " -");
    }
    KXUIDropDown box;
    float rowHeight, rowsAbove = 0;
};

TEST_F(DropDown, ChoosesByMouse) {
    expectEach(
        "click 30 25 -> -1 open; click row 1 -> told 1; click 30 25, click 30 25 -> 1; "
        "press 30 25 -> 1 open; at row 2 -> 1 open; release -> told 2; "
        "press 30 25, at row 3, at 300 190, release -> 2; press 30 25, at row 0, release -> told 0; "
        "click 30 25, press row 3, at row 2, release -> told 2; click 30 25, click 300 20 -> 2; "
        "click 300 20 -> 2 -; click row 1 -> 2 -; click 30 25, press row 1, at 300 190, release -> 2 open; "
        "at row 3, Return -> told 3; hold Left Ctrl, click 30 25, let Left Ctrl -> 3; "
        "click 30 25 & click row 0 -> told 0");
    for (int i = 4; i < 10000; ++i)
        box.add(("Tree " + std::to_string(i)).c_str());
    box.draw(); // so there is room for eight rows
    expectEach("click 30 25, at row 1, wheel -1 & wheel -1, click row 0 -> told 6; "
               "click 30 25, press 115 45, at 115 199, release, click row 7 -> told 9999; "
               "press 30 25, at row 0, at 60 10, poll 20, at row 0, release -> told 9987");
}

TEST_F(DropDown, ChoosesByKeyboard) {
    box.setFocus(-1);
    expectEach(
        "Down -> told 0; End -> told 3; Down -> 3; Up -> told 2; Home -> told 0; type b -> told 1; "
        "type b -> told 2; wait 63, type ce -> told 3; Escape -> 3; Space -> 3 open; "
        "type   -> 3 open; Up, Up, Escape -> 3; Return, Up, Up, Space -> told 1; "
        "Left Alt+Down, wait 63 -> 1 open; type c, Left Alt+Up -> told 3; Return, Home, Return -> told 0; "
        "hold Down, poll 60 -> told 3; let Down, Space, Up & Return & Up -> told 1; "
        "Space, Up -> 1 open");
    box.setEnabled(0);
    expectEach("poll 1 -> 1 -; click 30 25, Space -> 1 -");
}

TEST_F(DropDown, KeepsWhatIsChosenWhileTextsComeAndGo) {
    box.setSelectedIndex(1);
    box.insert(0, "Alder");
    EXPECT_EQ(box.selectedIndex(), 2);
    EXPECT_EQ(box.remove(4) & box.remove(0), -1);
    EXPECT_STREQ(box.text(box.selectedIndex()), "Birch");
    for (const int none : {-2, 3, INT_MIN, INT_MAX})
        EXPECT_EQ(box.setSelectedIndex(none) | box.remove(none) | (box.insert(none == 3 ? 4 : none, "") + 1),
                  0);
    EXPECT_TRUE(box.add(nullptr) == -1 && !box.text(3));
    expectEach("click 30 25 -> 1 open");
    EXPECT_EQ(box.remove(1), -1);
    expectEach("Return -> -1");
    expectEach("Space -> -1 open");
    box.clear();
    expectEach("Down, type b, Return, click 30 25 -> -1");
}

TEST_F(DropDown, OpensWhereThereIsRoom) {
    box.setSize({-1, -1});
    const float widest = std::ceil(box._fontInUse()->advance("Beech"));
    expectSize(box, widest + 6 + rowHeight, rowHeight);
    KXUIDropDown own;
    own.add("Text");
    own.setSize({-1, -1});
    EXPECT_TRUE(own.setFont(testFont(), KXAliasModeTexture) && own.setFontSize(24));
    EXPECT_GT(own.rect().size.height, 2 * 12.0f);
    box.setRect({20, 180 - rowHeight}, {100, rowHeight});
    box.draw();
    rowsAbove = 4;
    expectEach("click 30 170, click row 2 -> told 2");
    for (const float height : {10.0f, -50.0f, 1e9f, NAN, INFINITY}) {
        box.setRect({20, height}, {height, height});
        box.setFocus(-1);
        act("Space, Up, at 30 100");
        box.draw();
        act("Escape");
    }
}

TEST_F(DropDown, Look) {
    box.setSelectedIndex(2);
    KXUIDropDown narrow, off;
    for (KXUIDropDown* each : {&narrow, &off}) {
        each->add("A text that is {C1,1,0,1}much{EC} too long");
        each->setSelectedIndex(0);
    }
    narrow.setRect({180, 20}, {90, 18});
    off.setRect({180, 50}, {120, 30});
    off.setEnabled(0);
    for (int i = 0; i < 20; ++i)
        box.add("\u041a\u043b\u0451\u043d");
    act("click 30 25, Up");
    const auto frame = [&] { narrow.draw(), off.draw(), box.draw(), poll(); };
    frame();
    expectGolden(Image::of(*window), "ui/drop_down");
    EXPECT_EQ(allocationsOf(frame), 0u);
}

struct SpinBox : UITest {
    SpinBox() {
        box.setRect({20, 20}, {100, 20}); // the buttons begin at 102
        options.from = -2;
        options.to = 50.128;
        options.step = 0.5;
        options.decimals = 2;
        options.suffix = " px";
        box.setOptions(options);
    }
    int poll() override { return box.poll(); }
    std::string state() override { return KXTempString("%g%s", box.number(), box.hasFocus() ? "" : " -"); }
    KXUISpinBox box;
    KXUISpinBoxOptions options;
};

TEST_F(SpinBox, TakesWhatIsTyped) {
    const struct {
        const char* typed;
        double number;
    } rows[] = {{"12", 12},      {"3,5", 3.5}, {" -1.25 px ", -1.25},
                {"+7px", 7},     {".5", 0.5},  {"2.", 2},
                {"", 2},         {"-", 2},     {"px", 2},
                {"1.2.3", 2},    {"1e1", 2},   {"nan", 2},
                {"inf", 2},      {"0x10", 2},  {"3 4", 2},
                {"1.005", 1},    {"-99", -2},  {"99", 50.128},
                {"- 1", 50.128}, {"-0", 0},    {"99999999999999999999999999999999999999999", 50.128}};
    box.setFocus(-1);
    for (const auto& row : rows) {
        const double before = box.number();
        act("Left Ctrl+A, Backspace");
        type(row.typed);
        EXPECT_EQ(poll(), 0);
        EXPECT_EQ(box.number(), before) << "not before Return";
        EXPECT_EQ(act("Return"), before == row.number ? 0 : -1) << row.typed;
        EXPECT_EQ(box.number(), row.number) << row.typed;
    }
    expectEach(
        "Left Ctrl+A, type 8, Escape -> 50.128 -; press 30 30, release, Left Ctrl+A, type 8 -> 50.128; "
        "click 300 190 -> told 8 -; click 30 30, Left Ctrl+A & type 9 & click 110 22 -> told 9.5");
}

TEST_F(SpinBox, Counts) {
    box.setNumber(1);
    expectEach(
        "click 110 25 -> told 1.5; click 110 35 -> told 1; Up, Up & Up -> told 2.5; PageUp -> told 7.5; "
        "PageDown, PageDown -> told -2; Down -> -2; wheel 1 -> told -1.5; wheel 0.5 -> -1.5; "
        "wheel 0.5 -> told -1; at 300 20, wheel 1 -> -1; press 110 25 -> told -0.5; poll 30 -> -0.5; "
        "poll 4 -> told 0.5; at 110 35, poll 10 -> 0.5; release, hold Up, poll 36 -> told 2.5; let Up -> "
        "2.5; "
        "click 300 20 -> 2.5 -; at 110 25, wheel 1, Up -> 2.5 -; hold Left Ctrl, click 110 25 -> 2.5 -");
    box.setEnabled(0);
    expectEach("let Left Ctrl, click 110 25, Up -> 2.5 -");
}

TEST_F(SpinBox, HasNoNumberOutsideOfItsOptions) {
    for (const double number : {double{NAN}, double{INFINITY}, -double{INFINITY}, 1e300, 17.0}) {
        box.setNumber(number);
        EXPECT_EQ(box.number(), number != number ? 0 : std::clamp(number, -2.0, 50.128));
    }
    for (const double wild : {double{NAN}, double{INFINITY}, -double{INFINITY}, 1e300, -5.0, 0.0})
        for (const int decimals : {INT_MIN, 0, 3, INT_MAX})
            for (const double to : {wild, 20.0}) {
                options = {wild, to, wild, decimals, nullptr};
                box.setOptions(options);
                box.setSize({-1, -1});
                box.setFocus(-1);
                act("Up, Down, PageUp, type 1, Return");
                EXPECT_LE(std::abs(box.number()), 1e15);
                box.draw();
            }
}

TEST_F(SpinBox, Look) {
    KXUISpinBox wide({0, 1000, 1, 0, "%"}), off;
    box.setSize({-1, -1});
    wide.setRect({180, 20}, {120, 30});
    off.setRect({180, 60}, {60, 20});
    off.setEnabled(0);
    act("press 90 24");
    const auto frame = [&] { wide.draw(), off.draw(), box.draw(), poll(); };
    frame();
    expectGolden(Image::of(*window), "ui/spin_box");
    EXPECT_EQ(allocationsOf(frame), 0u);
}

struct NumberSlider : UITest {
    NumberSlider() {
        options.from = -1;
        options.to = 1.1;
        options.step = 0.25;
        slider.setOptions(options);
        slider.setNumber(-1);
        slider.setRect({20, 20}, {121, 20}); // 105 for the knob's way: 50 to a number
        standing.setRect({200, 20}, {20, 116});
    }
    int poll() override { return slider.poll() | standing.poll(); }
    std::string state() override {
        return KXTempString("%g %g%s", slider.number(), standing.number(), slider.hasFocus() ? "" : " -");
    }
    KXUINumberSlider slider, standing{[] {
        KXUINumberSliderOptions made;
        made.isVertical = -1;
        made.to = 100;
        return made;
    }()};
    KXUINumberSliderOptions options;
};

TEST_F(NumberSlider, FollowsThePointer) {
    expectEach("press 28 30 -> -1 0; at 33 30 -> -1 0; at 35 30 -> told -0.75 0; at 300 100 -> told 1.1 0; "
               "at 125 30 -> told 1 0; at -5 30 -> told -1 0; release, at 60 30 -> -1 0; "
               "click 78 30 -> told 0 0; press 85 30, release -> 0 0; click 15 30 -> 0 0 -; "
               "press 210 130, at 210 120 -> told 0 10 -; at 210 0 -> told 0 100 -; at 210 80, release -> "
               "told 0 50 -");
}

TEST_F(NumberSlider, IsWorkedByKeysAndTyping) {
    slider.setFocus(-1);
    expectEach(
        "Right -> told -0.75 0; Up & Up -> told -0.25 0; Left, Down -> told -0.75 0; "
        "PageUp -> told 1.1 0; Right -> 1.1 0; Left -> told 0.75 0; Home -> told -1 0; End -> told 1.1 0; "
        "type -x0.3 -> 1.1 0; Return -> told -0.25 0; type 12, Escape, Return -> -0.25 0; "
        "type 1.9, Backspace, Return -> told 1 0; type 0, Left -> told 0.75 0; Return -> 0.75 0; "
        "type --, Return -> 0.75 0; at 60 30, wheel 1 -> told 1 0; at 300 20, wheel -1 -> 1 0; "
        "at 60 30, wheel -0.5, wheel -0.5 -> told 0.75 0; type 0.5, click 300 20 -> 0.75 0 -; "
        "at 60 30, wheel 1, Right -> 0.75 0 -");
    standing.setFocus(-1);
    expectEach("Up -> told 0.75 1 -; PageUp -> told 0.75 11 -; hold Up, poll 33 -> told 0.75 14 -");
    standing.setEnabled(0);
    expectEach("poll 3, let Up, Up, click 210 40 -> 0.75 14 -");
}

TEST_F(NumberSlider, HasAnyRange) {
    for (const double from : {double{NAN}, double{INFINITY}, -1e300, -3.0, 5.0})
        for (const double to : {double{NAN}, -double{INFINITY}, 1e300, 5.0})
            for (const double step : {double{NAN}, double{INFINITY}, -1.0, 1e-300, 0.3}) {
                options = {};
                options.from = from, options.to = to, options.step = step;
                slider.setOptions(options);
                slider.setNumber(from);
                slider.setFocus(-1);
                act("click 90 30, PageUp, Left, type 99999999999999999999999999, Return");
                EXPECT_LE(std::abs(slider.number()), 1e15);
                slider.draw();
            }
    slider.setNumber(5);
    slider.setNumber(NAN);
    EXPECT_EQ(slider.number(), 5);
    for (const float side : {0.0f, -50.0f, 1e30f, NAN, INFINITY}) {
        slider.setRect({side, side}, {side, side});
        act("press 10 10, at 50 50, release");
        slider.draw();
    }
}

TEST_F(NumberSlider, Look) {
    standing.setNumber(75);
    KXUINumberSlider off;
    off.setRect({20, 60}, {-1, -1});
    off.setEnabled(0);
    act("click 60 30, type 0.5");
    const auto frame = [&] { slider.draw(), standing.draw(), off.draw(), poll(); };
    frame();
    expectGolden(Image::of(*window), "ui/number_slider");
    EXPECT_EQ(allocationsOf(frame), 0u);
}

struct TabBar : UITest {
    TabBar() {
        for (const char* title : {"A", "B", "C", "D"})
            bar.add(title);
        bar.setRect({20, 20}, {-1, -1});
    }
    int poll() override { return bar.poll(); }
    /// "tab 2" is in the middle of the third title, "mark 2" on its mark; as long as nothing is scrolled.
    KXPoint place(const std::string& name) const override {
        const bool isMark = name.starts_with("mark");
        if (!isMark && !name.starts_with("tab"))
            return UITest::place(name);
        float left = 20, width = 0;
        for (int i = 0, last = std::stoi(name.substr(4)); i <= last; ++i) {
            left += width;
            width = bar._idealSizeForText(bar.title(i)).width + 10 + (closable ? 16 : 0);
        }
        return {left + (isMark ? width - 12 : width / 2), 30};
    }
    std::string state() override {
        std::string all = KXTempString("%d%s ", bar.selectedIndex(), bar.hasFocus() ? "" : "-");
        for (int i = 0; i < bar.count(); ++i)
            all += bar.title(i);
        if (bar.closedIndex() != -1)
            all += KXTempString(" x%d", bar.closedIndex());
        return bar.movedFrom() == -1 ? all : all + KXTempString(" %d>%d", bar.movedFrom(), bar.movedTo());
    }
    KXUITabBar bar;
    bool closable = false;
};

TEST_F(TabBar, ChoosesTitles) {
    expectEach(
        "press tab 2 -> told 2 ABCD; at tab 0, release -> 2 ABCD; Right -> told 3 ABCD; Right -> 3 ABCD; "
        "Home -> told 0 ABCD; Left -> 0 ABCD; End, Left & Left -> told 1 ABCD; Delete -> 1 ABCD; "
        "Left Ctrl+Right -> 1 ABCD; click tab 1 -> 1 ABCD; click 300 30 -> 1- ABCD; Right -> 1- ABCD; "
        "hold Left Ctrl, click tab 3, let Left Ctrl -> 1- ABCD");
    EXPECT_EQ(bar.insert(1, "x"), 1);
    EXPECT_EQ(bar.remove(0), -1);
    EXPECT_EQ(state(), "1- xBCD");
    bar.remove(1);
    EXPECT_EQ(state(), "1- xCD");
    bar.setSelectedIndex(2);
    bar.remove(2);
    EXPECT_EQ(state(), "1- xC");
    for (const int none : {-1, 2, INT_MIN, INT_MAX})
        EXPECT_TRUE(!bar.remove(none) && !bar.setTitle(none, "") && !bar.title(none) &&
                    !bar.setSelectedIndex(none) && (none == 2 || bar.insert(none, "") == -1));
    EXPECT_TRUE(bar.add(nullptr) == -1 && !bar.setTitle(0, nullptr));
    bar.setEnabled(0);
    expectEach("click tab 0 -> 1- xC");
    bar.setEnabled(-1);
    bar.clear();
    bar.setFocus(-1);
    expectEach("Right, Delete, click 30 30, wheel 1 -> -1");
}

TEST_F(TabBar, AsksToCloseAndMovesTitles) {
    bar.setClosable(closable = true);
    bar.setReorderable(-1);
    bar.setSize({-1, -1});
    expectEach("press mark 2 -> 0 ABCD; release -> told 0 ABCD x2; wait 1, at 1 1 -> 0 ABCD; "
               "press mark 2, at tab 1, release -> 0 ABCD; Delete & at tab 1 -> told 0 ABCD x0; "
               "press tab 1, at tab 0 -> told 1 ABCD; at mark 2 -> 1 ABCD; release -> told 2 ACBD 1>2; "
               "press tab 3, at 1 30, release -> told 0 DACB 3>0; press tab 0, at mark 0, release -> 0 DACB; "
               "Left Ctrl+Left -> 0 DACB; Left Ctrl+Right & at 1 1 -> told 1 ADCB 0>1; End -> told 3 ADCB; "
               "press tab 0, at tab 1, release -> told 0 ADCB");
    bar.setSelectedIndex(1);
    hands.move(place("tab 3"));
    press(KXMouseMiddle);
    EXPECT_EQ(poll(), -1);
    EXPECT_EQ(state(), "1 ADCB x3");
    release(KXMouseMiddle);
    act("press tab 0");
    bar.setSelectedIndex(1); // while another is dragged
    expectEach("at mark 2, release -> told 0 DCAB 0>2");
    act("press tab 3");
    bar.remove(3); // while it is dragged
    expectEach("at tab 0, release -> 2 DCA");
}

TEST_F(TabBar, ScrollsTitlesThatDoNotFit) {
    for (int i = bar.count(); i < 10000; ++i)
        bar.add(("Page " + std::to_string(i)).c_str());
    bar.setRect({20, 20}, {200, 22});
    const auto under = [&](const char* at) { return act(at), bar.selectedIndex(); };
    bar.setSelectedIndex(5000);
    EXPECT_EQ(under("click 190 30"), 5000);
    EXPECT_EQ(under("at 100 30, wheel -10, click 190 30"), 5005);
    EXPECT_EQ(under("press 30 30, poll 60, release, click 45 30"), 4996);
    bar.setReorderable(-1);
    bar.setSelectedIndex(0);
    act("press 45 30, at 230 30, poll 100, release");
    EXPECT_EQ(bar.title(bar.selectedIndex()), std::string("A"));
    EXPECT_EQ(bar.selectedIndex(), 14);
    for (const float side : {0.0f, 30.0f, -50.0f, 1e30f, NAN, INFINITY}) {
        bar.setRect({side, side}, {side, side});
        act("press 10 10, at 50 50");
        bar.draw();
        act("release, End, wheel -1");
        bar.draw();
    }
}

TEST_F(TabBar, Look) {
    KXUITabBar full, off;
    for (KXUITabBar* each : {&full, &off})
        for (const char* title : {"Ground", "\u041a\u0430\u0440\u0442\u0430",
                                  "A very long title that takes all the room there is and more",
                                  "\u062e\u0631\u064a\u0637\u0629"})
            each->add(title);
    full.setClosable(-1);
    full.setRect({20, 60}, {260, -1});
    full.setSelectedIndex(1);
    off.setRect({20, 100}, {260, 30});
    off.setEnabled(0);
    bar.setReorderable(-1);
    act("press tab 1, at tab 3");
    const auto frame = [&] { bar.draw(), full.draw(), off.draw(), poll(), full.poll(); };
    frame();
    expectGolden(Image::of(*window), "ui/tab_bar");
    EXPECT_EQ(allocationsOf(frame), 0u);
}

struct SplitPanel : UITest {
    SplitPanel() {
        upper.first().add(left, 1);
        lower.first().add(upperRight, 1);
        lower.second().add(lowerRight, 1);
        upper.second().add(lower, 1);
        upper.setRect({10, 10}, {206, 146}); // 200 beside the divider at 110, 140 below each other
    }
    static KXUISplitPanelOptions below() {
        KXUISplitPanelOptions options;
        options.kind = KXUIColumn;
        options.share = 0.25f;
        options.leastFirst = 10;
        return options;
    }
    int poll() override {
        const int told = upper.poll() | lower.poll();
        _KXSettleCursor();
        return told;
    }
    /// How wide the first part is, and how high the upper one; the pointer's shape where it has another.
    std::string state() override {
        std::string all = KXTempString("%g %g", left.rect().size.width, upperRight.rect().size.height);
        if (_KXLentCursor() != -1)
            all += _KXLentCursor() == KXCursorWidth ? " wide" : " high";
        return all;
    }
    KXUISplitPanel upper, lower{below()};
    KXUIListBox left, upperRight, lowerRight;
};

TEST_F(SplitPanel, FollowsThePointerAndKeys) {
    expectEach(
        "at 112 20 -> 100 35 wide; press -> 100 35 wide; at 132 180 -> told 120 35 wide; "
        "at 0 0 -> told 40 35 wide; at 300 0 -> told 160 35 wide; release -> 160 35; "
        "press 170 20, release, press -> told 100 35 wide; at 112 20, release, wait 40 -> 100 35 wide; "
        "press 112 20, at 113 20 -> told 101 35 wide; release, press 112 20, release -> 101 35 wide; "
        "Left -> told 93 35; Down, Left Ctrl+Left -> 93 35; End -> told 160 35; "
        "Home -> told 40 35; Return -> told 100 35 wide");
    expectEach("press 150 47 -> 100 35 high; at 150 57, release -> told 100 45 high; Down -> told 100 53; "
               "Right -> 100 53; hold Up, poll 33 -> told 100 29; let Up, at 300 190 -> 100 29");
    expectOrigin(lowerRight, 116, 10 + 29 + 6);
    expectSize(lowerRight, 100, 146 - 29 - 6);
    upper.setEnabled(0);
    expectEach("press 112 20, at 150 20, release -> 100 29");
}

TEST_F(SplitPanel, KeepsItsShareInAnySize) {
    upper.setShare(0.7f);
    for (const auto& [width, first] : {std::pair{206.0f, 140.0f},
                                       {406.0f, 280.0f},
                                       {120.0f, 74.0f},
                                       {86.0f, 40.0f},
                                       {46.0f, 20.0f},
                                       {6.0f, 0.0f},
                                       {3.0f, 0.0f},
                                       {206.0f, 140.0f}}) {
        upper.setSize({width, 100});
        EXPECT_EQ(upper.firstRect().size.width, first) << width;
        EXPECT_EQ(left.rect().size.width, first) << width;
        EXPECT_EQ(first + upper.dividerRect().size.width + upper.secondRect().size.width, width);
    }
    for (const float share : {NAN, -1.0f, INFINITY}) {
        upper.setShare(share);
        EXPECT_EQ(upper.share(), share == share ? std::clamp(share, 0.0f, 1.0f) : 0.7f);
    }
    KXUISplitPanelOptions wild;
    wild.share = wild.leastFirst = wild.leastSecond = wild.divider = NAN;
    EXPECT_EQ(KXUISplitPanel(wild).share(), 0.5f);
    wild.leastFirst = wild.leastSecond = wild.divider = INFINITY;
    KXUISplitPanel full(wild);
    for (const float side : {0.0f, -50.0f, 3e38f, NAN, INFINITY}) {
        full.setRect({side, side}, {side, side});
        upper.setRect({side, side}, {side, side});
        upper.setFocus(-1);
        act("End, Left, press 112 20, at 50 50, release");
        full.draw();
        upper.draw();
    }
}

TEST_F(SplitPanel, Look) {
    for (KXUIListBox* list : {&left, &upperRight, &lowerRight})
        list->add("Row");
    lower.setFocus(-1);
    act("press 112 20");
    const auto frame = [&] {
        for (_KXUIWidget* each :
             std::initializer_list<_KXUIWidget*>{&left, &upperRight, &lowerRight, &upper, &lower})
            each->draw();
        poll();
    };
    frame();
    expectGolden(Image::of(*window), "ui/split_panel");
    EXPECT_EQ(allocationsOf(frame), 0u);
}

/// All of them in a panel, with a button below the list of the drop-down.
struct ControlsInAPanel : UITest {
    ControlsInAPanel() {
        for (const char* text : {"A", "B", "C"})
            choice.add(text), tabs.add(text);
        toast.show("Gone", [] {
            KXUIToastOptions options;
            options.action = "Undo";
            options.milliseconds = 0;
            return options;
        }());
        _KXUIWidget* const all[] = {&choice, &button, &number, &slider, &tabs, &split, &picker, &toast};
        for (int i = 0; i < 8; ++i) {
            all[i]->setRect({10 + 100 * float(i / 3), 10 + 30 * float(i % 3)}, {80, 24});
            panel.add(*all[i]);
        }
        picker.setRect({210, 10}, {100, 100});
        toast.setRect({10, 120}, {200, 60});
        panel.setDefaultButton(&button);
    }
    int poll() override {
        const int told = inPanel ? panel.poll() : choice.poll() | button.clicked(KXMouseLeft);
        clicks += inPanel ? button.activated() : 0;
        return told;
    }
    std::string state() override {
        const _KXUIWidget* const focused = panel.focused();
        return KXTempString("%d %d %s", choice.selectedIndex(), -clicks,
                            focused ? focused->description().role.c_str() : "none");
    }
    KXUIDropDown choice;
    KXUIButton button;
    KXUISpinBox number;
    KXUINumberSlider slider;
    KXUITabBar tabs;
    KXUISplitPanel split;
    KXUIColorPicker picker;
    KXUIToast toast;
    KXUIPanel panel;
    int clicks = 0;
    bool inPanel = true;
};

TEST_F(ControlsInAPanel, TakeTurnsAtMouseAndKeyboard) {
    expectEach(
        "click 20 20 -> -1 0 drop-down; click 30 62, at 1 1 -> told 1 0 drop-down; "
        "click 20 20, click 30 110 -> 1 0 drop-down; click 30 52, at 1 1 -> told 1 1 button; "
        "click 20 20, click 120 20 -> 1 1 drop-down; Escape, Tab -> 1 1 button; "
        "Tab, Up, PageUp -> told 1 1 spin box; type 5, Return -> told 1 2 spin box; "
        "Tab, Right -> told 1 2 slider; Return -> told 1 3 slider; type .5, Return -> told 1 3 slider; "
        "Tab, Right, Tab -> told 1 3 divider; Tab -> 1 3 slider; Tab, Tab -> 1 3 text entry; "
        "Tab -> 1 3 button; Tab, Return & at 1 2 -> told 1 3 none; Tab -> 1 3 drop-down; "
        "Left Shift+Tab -> 1 3 button");
    EXPECT_TRUE(number.number() == 5 && slider.number() == 0.5 && tabs.selectedIndex() == 1 &&
                toast.count() == 0);
    KXUILabel name;
    name.setText("Width");
    name.setOrigin({10, 180});
    name.setWidget(&number);
    panel.add(name);
    expectEach("click 20 185, at 1 1, Up -> told 1 3 spin box");
    panel.remove(number); // its keys are its own again
    number.setFocus(-1);
    step();
    hands.hold(KXKeyUp), step();
    EXPECT_TRUE(number.poll() && number.number() == 7);
    hands.release(KXKeyUp);
    number.setFocus(0);

    // Without a panel a list keeps what it covers from those that are polled later.
    inPanel = false;
    for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&choice, &button})
        panel.remove(*each);
    expectEach("click 20 20, click 30 44, at 1 1 -> told 0 3 none; click 30 52, at 1 1 -> told 0 3 none");
}
} // namespace
