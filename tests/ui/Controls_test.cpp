// Drop-downs, spin boxes, sliders of any range, rows of tabs and split panels.

#include "UITest.h"

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
    expectEach(
        "press 28 30 -> -1 0; at 33 30 -> -1 0; at 35 30 -> told -0.75 0; at 300 100 -> told 1.1 0; "
        "at 125 30 -> told 1 0; at -5 30 -> told -1 0; release, at 60 30 -> -1 0; "
        "click 78 30 -> told 0 0; press 85 30, release -> 0 0; click 15 30 -> 0 0 -; "
        "press 210 130, at 210 120 -> told 0 10 -; at 210 0 -> told 0 100 -; at 210 80, release -> told 0 50 -");
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
} // namespace
