// Many widgets in one panel.

#include "UITest.h"

#include "render/ContextParts.h"

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {
/// A widget as a game makes it: it opens something as large as the window, and closes it at the next press.
struct Opener : _KXUIWidget {
    int pollInPanel() override {
        if (!_KXUIWidget::pollInPanel())
            return 0;
        isOpen = !isOpen;
        return -1;
    }
    int hasPopup() const override { return isOpen; }
    int containsPoint(KXPoint point) const override { return isOpen || _KXUIWidget::containsPoint(point); }
    int mouseOver() override { return isOpen || _KXUIWidget::mouseOver(); }
    void drawPopup() override { KXDrawRectFill({{40, 60}, {60, 60}}, {1, 0, 0, 1}); }
    bool isOpen = false;
};

struct Panel : UITest {
    Panel() {
        name.setRect({10, 10}, {100, 20});
        save.setText("Save");
        box.setText("Grid");
        list.add("one");
        list.add("two");
        slider.setRect({120, 40}, {100, 20});
        const std::pair<_KXUIWidget*, KXPoint> places[] = {
            {&save, {10, 40}}, {&box, {60, 40}}, {&slider, {120, 40}}, {&opener, {240, 10}}};
        for (const auto& [widget, place] : places)
            widget->setOrigin(place);
        opener.setSize({40, 20});
        list.setRect({10, 80}, {100, 60});
        for (_KXUIWidget* each : all())
            panel.add(*each);
    }
    std::vector<_KXUIWidget*> all() { return {&name, &save, &box, &slider, &list, &opener}; }
    int poll() override {
        const int told = panel.poll();
        for (_KXUIWidget* each : all())
            if (each->activated())
                acted.insert(each);
        return told;
    }
    /// Who has the keyboard, what the entry holds, and who acted since this was asked last.
    std::string state() override {
        const std::vector<std::string> names = {"name", "save", "box", "slider", "list", "opener"};
        std::string has = "nobody", who;
        for (std::size_t i = 0; i < all().size(); ++i) {
            if (panel.focused() == all()[i])
                has = names[i];
            if (acted.contains(all()[i]))
                who += " " + names[i];
        }
        acted.clear();
        return has + " '" + name.text() + "'" + who;
    }
    KXPoint place(const std::string& of) const override {
        const std::pair<const char*, KXPoint> places[] = {{"name", {50, 20}},   {"save", {20, 48}},
                                                          {"box", {66, 48}},    {"list", {30, 90}},
                                                          {"away", {300, 190}}, {"opener", {250, 20}}};
        for (const auto& [known, point] : places)
            if (of == known)
                return point;
        return UITest::place(of);
    }
    KXUITextEntry name;
    KXUIButton save;
    KXUICheckBox box;
    KXUISlider slider;
    KXUIListBox list;
    Opener opener;
    KXUIPanel panel;
    std::set<_KXUIWidget*> acted;
};

TEST_F(Panel, TabGoesThroughEveryWidgetAndKeysWorkThem) {
    expectEach("Tab -> name ''; type ab & Tab -> told save 'ab' name; Space -> told save 'ab' save;"
               "Return -> told save 'ab' save; Tab & Space -> told box 'ab' box; Tab -> slider 'ab';"
               "Right -> told slider 'ab' slider; Tab & Down -> told list 'ab' list; Tab -> opener 'ab';"
               "Tab -> name 'ab'; Left Shift+Tab -> opener 'ab'; Left Shift+Tab & Left Shift+Tab, poll 1 -> "
               "slider 'ab'");
    EXPECT_TRUE(box.isChecked() && slider.value() == 51 && list.selectedIndex() == 0);
    slider.setEnabled(0); // what has the keyboard loses it
    list.setVisible(0);
    expectEach("wait 1, poll 1 -> nobody 'ab'; Left Shift+Tab -> opener 'ab'; Left Shift+Tab -> box 'ab'");
    for (_KXUIWidget* each : all())
        each->setEnabled(0);
    expectEach("poll 1 -> nobody 'ab'; Tab -> nobody 'ab'; Space -> nobody 'ab'");
}

TEST_F(Panel, WhatLiesOnTopGetsTheMouse) {
    KXUIButton above; // half over the entry, and a part of the list
    above.setRect({85, 10}, {30, 100});
    panel.add(above);
    expectEach("click 30 20 -> name ''; click 95 20, type x -> told nobody ''; wheel -1 -> nobody ''");
    EXPECT_EQ(panel.focused(), &above);
    for (int i = 0; i < 30; ++i)
        list.add("row");
    act("at 95 100, wheel -1");
    EXPECT_EQ(list.firstVisibleIndex(), 0);
    act("at 30 100, wheel -1");
    EXPECT_EQ(list.firstVisibleIndex(), 3);
    // One that is pressed keeps the pointer: no other is lit meanwhile.
    act("press save, at box, poll 1");
    EXPECT_FALSE(box.mouseOver());
    expectEach("release, poll 1 -> save ''");
    EXPECT_TRUE(box.mouseOver());
    // A game's own widget that is polled after the panel is below it.
    KXUIButton below;
    below.setRect({0, 0}, {320, 200});
    const auto polled = [&](const std::string& acts) {
        act(acts);
        return below.clicked(KXMouseLeft) != 0;
    };
    EXPECT_FALSE(polled("press save") || polled("release"));
    EXPECT_FALSE(polled("press away"));
    EXPECT_TRUE(polled("release"));
}

TEST_F(Panel, WhatIsOpenLiesAboveEverything) {
    expectEach(
        "click opener -> told opener '' opener; click name -> told opener '' opener; click name -> name ''");
    act("click opener");
    const Image open = picture([&] { panel.draw(); });
    expectEach("click away -> told opener '' opener");
    EXPECT_GT(differingPixels(open, picture([&] { panel.draw(); })), 3000);
    // Opened, pressed above another and closed, and that one pressed, all within one step.
    expectEach("press save & release & press list & release -> told list '' save list");
}

TEST_F(Panel, KeepsTheOrderOfWhatCameInAStep) {
    expectEach("press save & release -> told save '' save; press name & release & type ab & Tab & Space -> "
               "told save 'ab' name save; press name & release & type c & press box & release -> "
               "told box 'c' name box");
    EXPECT_TRUE(box.isChecked());
}

TEST_F(Panel, KeysForTheWholePanel) {
    KXUILabel label;
    label.setText("Name");
    label.setWidget(&name);
    panel.add(label);
    panel.setDefaultButton(&save);
    panel.setCancelButton(&box);
    panel.setMnemonic(label, KXKeyN);
    panel.setMnemonic(save, KXKeyS);
    expectEach(
        "Return, poll 1 -> told nobody '' save; Left Alt+N -> name ''; type q & Return -> told name 'q' name "
        "save;"
        "Escape -> told name 'q' box; Left Alt+S -> told save 'q' save; Tab & Return -> told box 'q' box;"
        "Tab & Return -> slider 'q'; poll 1 -> told slider 'q' save");
    panel.setMnemonic(save, 0);
    save.setEnabled(0);
    expectEach("Return -> slider 'q'; poll 1 -> slider 'q'; Left Alt+S -> slider 'q'");
}

TEST_F(Panel, MayBeInAnotherAndEndAtAnyTime) {
    KXUIPanel inner;
    auto left = std::make_unique<KXUIButton>();
    left->setRect({200, 100}, {40, 40});
    inner.add(*left);
    inner.add(name); // leaves the outer one
    panel.add(inner);
    inner.add(panel);
    inner.add(inner);
    EXPECT_EQ(std::pair(panel.count(), inner.count()), std::pair(6, 2));
    EXPECT_EQ(panel.widget(5), &inner);
    EXPECT_TRUE(!panel.widget(6) && !panel.widget(-1) && name._panel() == &inner);
    expectEach("Left Shift+Tab, type z -> told name 'z' name; Left Shift+Tab -> nobody 'z'");
    EXPECT_EQ(panel.focused(), left.get());
    EXPECT_EQ(panel.focus(list), -1);
    inner.setVisible(0);
    EXPECT_EQ(panel.focus(name) | panel.focus(panel) | inner.focus(list), 0);
    expectEach("Left Shift+Tab -> slider 'z'; click name -> slider 'z'");
    inner.setVisible(-1);
    expectEach("click 210 110 -> told nobody 'z'");
    left.reset();
    EXPECT_EQ(inner.count(), 1);
    expectEach("Tab -> save 'z'");

    struct Ender : KXUIButton {
        int handleKey(const KXUIKey&) override { return delete this, -1; }
    };
    auto* const ender = new Ender;
    panel.add(*ender);
    panel.focus(*ender);
    expectEach("Space & Space -> nobody 'z'; Tab -> save 'z'");
    KXUIPanel question; // that is answered, and not polled any more
    KXUIButton answer;
    question.add(answer);
    question.focus(answer);
    expectEach("poll 2, Tab -> save 'z'; Tab -> box 'z'");
    auto brief = std::make_unique<KXUIPanel>();
    brief->add(box);
    brief.reset();
    EXPECT_EQ(box._panel(), nullptr);
}

TEST_F(Panel, HandsTheMouseToTheWidgetOnTopEventByEvent) {
    struct Board : _KXUIWidget {
        void handleMouse(const KXUIMouse& mouse) override {
            heard += "mduw"[mouse.type - KXInputEventMouseMoved] + std::to_string(mouse.button) +
                     (mouse.control ? "c" : "") + " " + std::to_string(int(mouse.point.x)) + ", ";
            if (ends)
                delete this;
        }
        std::string& heard;
        bool ends = false;
        explicit Board(std::string& text) : heard(text) {}
    };
    std::string heard;
    auto* const board = new Board(heard);
    board->setRect({200, 100}, {100, 80});
    KXUIButton above;
    above.setRect({250, 100}, {50, 80});
    panel.add(*board);
    panel.add(above);
    const auto hears = [&](const char* acts, const char* what) {
        act(acts);
        EXPECT_EQ(std::exchange(heard, ""), what) << acts;
    };
    hears("at 210 110", "m0 210, ");
    hears("press 220 110 & at 270 110 & release & at 280 110", "m0 220, d0 220, m0 270, u0 270, ");
    hears("at 211 110 & wheel 1", "m0 211, w0 211, ");
    hears("press 260 110, at 205 110, release", "m0 205, ");
    hears("hold Left Control & press & release & let Left Control", "d0c 205, u0c 205, ");
    hands.hold(KXMouseMiddle), hands.hold(KXMouseLeft), hands.move({5, 5}), hands.release(KXMouseLeft);
    hands.wheel(1), hands.move({6, 6}), hands.release(KXMouseMiddle);
    hears("at 210 110", "d2 205, d0 205, m0 5, u0 5, m0 6, u2 6, m0 210, ");
    hears("press & at 10 10", "d0 210, m0 10, ");
    board->setEnabled(0);
    hears("release & press 210 110", "");
    board->setEnabled(-1);
    board->ends = true;
    hears("at 211 110 & at 212 110", "m0 211, ");
}

TEST_F(Panel, HearsOfItsOwnWindowAlone) {
    panel.setWindowID(window->id() + 1);
    KXUIButton late; // is told as well
    panel.add(late);
    EXPECT_EQ(late.windowID(), window->id() + 1);
    expectEach(
        "click save -> nobody ''; click name, type x -> nobody ''; Tab -> nobody ''; Return -> nobody ''");
    panel.setWindowID(window->id());
    expectEach("click save -> told save '' save; Tab & Space -> told box '' box");
}

TEST_F(Panel, SaysItselfInWords) {
    KXUILabel label;
    label.setText("Name of the level");
    label.setWidget(&name);
    name.setText("Cave");
    KXUIToggleButton toggle;
    toggle.setText("Snap");
    toggle.setState(KXUIToggleButtonStateOn);
    KXUIRadioGroup group;
    group.add("{C1,0,0,1}Low{EC}");
    group.setSelectedIndex(0);
    group.setTooltip("Detail");
    KXUIProgressBar bar;
    bar.setProgress(0.425f);
    for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&label, &toggle, &group, &bar})
        panel.add(*each);
    list.setSelectedIndex(1);
    save.setEnabled(0);
    slider.setVisible(0);
    panel.focus(box);
    std::string said;
    for (const KXUIDescription& each : panel.descriptions())
        said += each.role + "|" + each.name + "|" + each.value + "|" + each.state + "; ";
    EXPECT_EQ(said, "text entry|Name of the level|Cave|; button|Save||disabled; "
                    "check box|Grid||focused, not checked; list||two|; |||; label|Name of the level||; "
                    "toggle button|Snap||on; radio group|Detail|Low|; progress bar||42%|; ");
}

// A thousand widgets in a batch, in a frame in which nothing has changed.
TEST_F(Panel, CostsNoDrawCallForEachWidget) {
    _KXSetCurrentDriver(_KXDriver::Hardware); // the other one is given as many calls as suit it
    KXUISetTheme(KXUIDarkTheme());
    std::vector<std::unique_ptr<_KXUIWidget>> many;
    KXUIPanel crowd;
    for (int i = 0; i < 1000; ++i) {
        const auto make = [&](auto widget) {
            if constexpr (requires { widget->setText("x"); })
                widget->setText(i % 2 ? "Mg" : "other");
            many.push_back(std::move(widget));
        };
        i % 7 == 5   ? make(std::make_unique<KXUITextEntry>())
        : i % 7 == 6 ? make(std::make_unique<KXUIListBox>())
        : i % 5 == 0 ? make(std::make_unique<KXUIButton>())
        : i % 5 == 1 ? make(std::make_unique<KXUICheckBox>())
        : i % 5 == 2 ? make(std::make_unique<KXUILabel>())
        : i % 5 == 3 ? make(std::make_unique<KXUIProgressBar>())
                     : make(std::make_unique<KXUISlider>());
        if (auto* const rows = dynamic_cast<KXUIListBox*>(many.back().get()))
            for (const char* row : {"one", "two", "three"}) // more than it shows
                rows->add(row);
        many.back()->setRect({float(i % 25) * 12, float(i / 25) * 5}, {40, 16});
        crowd.add(*many.back());
    }
    const auto frame = [&] {
        KXBeginDrawBatch();
        crowd.draw();
        KXEndDrawBatch();
    };
    for (int i = 0; i < 4; ++i) { // texts are laid out, and the batch grows
        frame();
        step();
        crowd.poll();
    }
    EXPECT_EQ(allocationsOf([&] {
                  crowd.poll();
                  frame();
              }),
              0u);
    const int before = KXCurrentDrawStatistics().drawCalls;
    frame();
    EXPECT_LE(KXCurrentDrawStatistics().drawCalls - before, 8);
    KXUISetTheme({});
}
} // namespace
