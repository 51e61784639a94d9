// What holds for widgets of every kind.

#include "UITest.h"

#include <memory>
#include <vector>

namespace {
struct EveryWidget : UITest {
    EveryWidget() {
        static constexpr const char* text =
            "\u00c5\u00c5jjWW texts that are too long for any of the boxes gg";
        button.setText(text);
        menu.addMenuItemWithName(text, nullptr, nullptr);
        menu.click(KXMouseLeft);
        dialog.setMessage(text);
        dialog.addButton(text);
        entry.setText(text);
        for (int i = 0; i < 50; ++i)
            list.add(text);
        browser.show(KXUIFileBrowserModeOpen, "/usr");
        area.setText(KXTempString("%s\n\t%s\n\n\n\n", text, text));
        for (std::size_t i = 0; i < std::size(all); ++i)
            place(*all[i], i);
    }
    /// Into three columns.
    static void place(_KXUIWidget& widget, std::size_t i, KXSize size = {90, 60}) {
        widget.setSize(size);
        widget.setOrigin({10 + 100 * static_cast<float>(i % 3), 5 + 65 * static_cast<float>(i / 3)});
    }
    int poll() override {
        button.clicked(KXMouseLeft);
        slider.poll();
        menu.poll();
        dialog.poll();
        list.poll();
        entry.poll();
        browser.poll();
        area.poll();
        return 0;
    }
    void drawAll() {
        for (_KXUIWidget* each : all)
            each->draw();
    }

    KXUIButton button;
    KXUISlider slider;
    KXUIMenu menu{"Menu"};
    KXUIDialogBox dialog;
    KXUIListBox list;
    KXUITextEntry entry;
    KXUIFileBrowser browser;
    KXUITextArea area;
    _KXUIWidget* const all[8] = {&button, &slider, &menu, &dialog, &list, &entry, &browser, &area};
};

TEST_F(EveryWidget, BearsAnyPlaceSizeAndPadding) {
    const auto use = [&] {
        dialog.resize();
        slider.setValue(100);
        list.setSelectedIndex(49);
        act("at 15 15, press, at -30 15, wheel -1, release");
        entry.focus();
        act("type x, Left");
        area.setWraps(!area.wraps());
        area.setShowsLineNumbers(area.wraps());
        area.focus();
        act("type x, Down, PageDown, End");
        list.setFocus(-1);
        act("PageDown");
        drawAll();
    };
    constexpr float wild[] = {0, -1, -500, 5, 1e9f, -1e30f, 3e38f, INFINITY, -INFINITY, NAN};
    constexpr int count = std::size(wild);
    for (int i = 0; i < count * count; ++i) {
        for (_KXUIWidget* each : all)
            each->setRect({wild[(i + 3) % count], wild[i / count]}, {wild[i % count], wild[(i + 7) % count]});
        use();
    }
    for (int padding : {INT_MAX, INT_MIN, -3, 0, 2}) {
        dialog.setPadding(padding);
        _KXUIWidget::KXUIWidgetInnerPadding = {wild[padding & 7], wild[padding & 7]};
        use();
    }
    _KXUIWidget::KXUIWidgetInnerPadding = {3, 3};
    EXPECT_TRUE(slider.value() >= 0 && slider.value() <= 100);
}

// Those of tools, in a panel, which may be anywhere and of any size, too.
TEST_F(EveryWidget, OfToolsBearsAnyPlaceSizeAndPadding) {
    KXUIPanel panel;
    KXUILayout column(KXUIColumn);
    KXUIScrollPanel scroll;
    std::vector<std::unique_ptr<_KXUIWidget>> made;
    const auto add = [&](auto widget) {
        panel.add(*widget);
        made.push_back(std::move(widget));
    };
    auto box = std::make_unique<KXUIDropDown>();
    auto lines = std::make_unique<KXUITextArea>();
    auto tree = std::make_unique<KXUITreeList>();
    auto table = std::make_unique<KXUITable>();
    auto tabs = std::make_unique<KXUITabBar>();
    auto menus = std::make_unique<KXUIMenuBar>();
    auto toast = std::make_unique<KXUIToast>();
    for (int i = 0; i < 30; ++i) {
        box->add("row");
        tree->add(i / 2, "node");
        tabs->add("tab");
    }
    lines->setText("some text\nin lines");
    lines->setShowsLineNumbers(-1);
    table->addColumn({"Name", 60});
    table->addRow({"cell"});
    menus->addMenu("File", {{"New", 1}, {"Old", 2}});
    toast->show("A message");
    add(std::move(box));
    add(std::move(lines));
    add(std::move(tree));
    add(std::move(table));
    add(std::move(tabs));
    add(std::move(menus));
    add(std::move(toast));
    add(std::make_unique<KXUISpinBox>());
    add(std::make_unique<KXUINumberSlider>());
    add(std::make_unique<KXUISplitPanel>());
    add(std::make_unique<KXUIColorPicker>());
    add(std::make_unique<KXUIProgressBar>());
    KXUIButton inside;
    inside.setSize({50, 400});
    column.add(inside);
    scroll.add(inside);
    scroll.setLayout(&column);
    panel.add(scroll);
    constexpr float wild[] = {0, -1, -500, 5, 90, 1e9f, -1e30f, 3e38f, INFINITY, -INFINITY, NAN};
    constexpr int count = std::size(wild);
    for (int i = 0; i < count * count; ++i) {
        _KXUIWidget::KXUIWidgetInnerPadding = {wild[i % 7 == 0 ? i / 7 % count : 4], 3};
        for (int each = 0; each < panel.count(); ++each)
            panel.widget(each)->setRect({wild[(i + 3) % count], wild[i / count]},
                                        {wild[i % count], wild[(i + 7) % count]});
        hands.move({float(i % 160) * 2, float(i % 100) * 2});
        hands.hold(KXMouseLeft);
        step();
        panel.poll();
        hands.wheel(i % 2 ? 1.0f : -1.0f);
        hands.release(KXMouseLeft);
        act("Tab");
        panel.poll();
        panel.draw();
    }
    _KXUIWidget::KXUIWidgetInnerPadding = {3, 3};
}

TEST_F(EveryWidget, DrawsNothingOutsideOfABoxThatScrollsNorOfTheGamesClip) {
    for (std::size_t i = 0; i < 6; ++i) {
        _KXUIWidget& each = *all[4 + i % 3];
        place(each, i, {60, 25});
        const auto [x, y] = each.rect().origin;
        if (i >= 3)
            window->setClipTo({{x + 10, y}, {20, 20}});
        each.draw();
        KXDrawRectFill({{0, y + 15}, {320, 1}}, KXRedColor); // the clip holds still
        window->unsetClip();
    }
    expectGolden(Image::of(*window), "ui/clipped");
}

TEST_F(EveryWidget, WithoutAFontIsABoxUntilItIsGivenOne) {
    KXClearGUIFontCache();
    menu.resize();
    dialog.button(0)->setRect({20, 90}, {30, 20});
    dialog.addButton("Ignored");
    dialog.setMessage("Not drawn");
    entry.setPlaceholder(nullptr);
    entry.setText("text");
    entry.focus();
    act("type s, click 120 75, click 20 160");
    EXPECT_STREQ(entry.text(), "texts");
    EXPECT_EQ(dialog.button(1), nullptr);
    EXPECT_EQ(menu.itemWidth(), 0);
    EXPECT_EQ(list.indexAt({120, 70 + 1 + 16}), 1) << "rows of 16 pixels";
    drawAll();
    expectGolden(Image::of(*window), "ui/no_font");
    for (_KXUIWidget* each : all) {
        EXPECT_EQ(each->setFontSize(12), 0);
        const Image bare = picture([&] { each->draw(); });
        EXPECT_EQ(each->setFont(testFont(), KXAliasModeTexture), -1);
        EXPECT_EQ(each->setFontSize(10), -1); // of all of them, since it is one font
        const Image own = picture([&] { each->draw(); });
        EXPECT_EQ(each->setFontSize(20), -1);
        const int least = each == &slider || each == &button ? 0 : 50; // which have no text now
        EXPECT_GE(differingPixels(bare, own), least);
        EXPECT_GE(differingPixels(own, picture([&] { each->draw(); })), least);
    }
}

/// All of them, in two windows of one size; what somebody does in one of them is seen by each.
struct WidgetsOfAWindow : EveryWidget {
    WidgetsOfAWindow() {
        entry.setText("a");
        browser.show(KXUIFileBrowserModeOpen, "/usr/lib");
        poll(); // the menu opens
    }
    int poll() override {
        clicks += button.clicked(KXMouseLeft) ? 1 : 0;
        return EveryWidget::poll();
    }
    std::string state() override {
        std::string words = KXUIFocusedTextEntry() ? "typing" : "";
        for (const int number : {clicks, slider.value(), menu.isOpen(), chosen, dialog.buttonIndexClicked(),
                                 list.selectedIndex(), list.firstVisibleIndex()})
            words += ' ' + std::to_string(number);
        const std::string_view folder = browser.folder();
        return words + ' ' + entry.text() + ' ' +
               std::string(folder.substr(folder.find('/'))); // of any drive
    }
    std::string after(unsigned windowID, const std::string& acts) {
        hands = KXTestUser(windowID);
        act(acts);
        return state();
    }
    void setWindowID(unsigned id) {
        for (_KXUIWidget* each : all)
            each->setWindowID(id);
        dialog.addButton("made later");
        dialog.button(1)->setRect({20, 90}, {30, 20});
        menu.addMenuItemWithName(
            "Q", [](void* times) { ++*static_cast<int*>(times); }, &chosen, 0, KXKeyQ);
    }

    const std::string everything =
        "Backspace, click 15 15, press 155 35, at 180 35, release, click 215 %, Q, click 25 95, "
        "at 120 80, wheel -1, click 120 100, Down, click 25 145, click 220 90, End, type x";
    KXWindow other{"Other", {320, 200}};
    int clicks = 0, chosen = 0;
};

TEST_F(WidgetsOfAWindow, OneIsWorkedInItsOwnAlone) {
    EXPECT_EQ(state(), " 0 50 -1 0 -1 -1 0 a /usr/lib");
    setWindowID(window->id());
    std::string acts = everything;
    const KXRect title = menu.rect();
    acts.replace(acts.find('%'), 1,
                 std::to_string(static_cast<int>(title.origin.y + 2.5f * title.size.height)));
    EXPECT_EQ(after(other.id(), acts), " 0 50 -1 0 -1 -1 0 a /usr/lib");
    EXPECT_EQ(after(window->id(), acts), "typing 1 77 0 2 1 5 3 ax /");

    // What is typed in the other meanwhile is for nobody, and a press there takes nothing away.
    EXPECT_EQ(after(other.id(), "press 20 20, type lost, Backspace, Tab, hold Backspace, release"),
              " 1 77 0 2 1 5 3 ax /");
    EXPECT_EQ(after(window->id(), "poll 60, type y"), "typing 1 77 0 2 1 5 3 axy /");

    // A press goes on where it began: the pointer of the other window drags nothing and lets nothing go.
    after(window->id(), "press 180 35");
    EXPECT_EQ(after(other.id(), "at 120 35"), " 1 77 0 2 1 5 3 axy /");
    EXPECT_EQ(after(window->id(), "at 155 35, release"), " 1 50 0 2 1 5 3 axy /");
    setWindowID(0);
    EXPECT_EQ(after(other.id(), "click 15 15, click 220 90, End, type z"), "typing 2 50 0 2 1 5 3 axyz /");
}

TEST_F(WidgetsOfAWindow, OneThatIsDisabledOrHiddenIsNotWorked) {
    const auto setEach = [&](void (_KXUIWidget::*set)(int), int value) {
        for (_KXUIWidget* each : all)
            (each->*set)(value);
    };
    const std::string untouched = " 0 50 0 0 -1 -1 0 a /usr/lib";
    entry.focus();
    const Image bright = picture([&] { drawAll(); });
    for (const auto set : {&_KXUIWidget::setEnabled, &_KXUIWidget::setVisible}) {
        setEach(set, 0);
        button.click(KXMouseLeft);
        EXPECT_EQ(after(window->id(), everything.substr(0, everything.find(", click 215"))), untouched);
        EXPECT_EQ(after(window->id(), everything.substr(everything.find("click 25 95"))), untouched);
        const int shown = differingPixels(picture([] {}), picture([&] { drawAll(); }));
        EXPECT_TRUE(set == &_KXUIWidget::setVisible ? shown == 0 : shown > 10000);
        EXPECT_GT(differingPixels(bright, picture([&] { drawAll(); })), 10000);
        // What is pressed before they come back stays nothing to them.
        for (const char* press : {"press 15 15", "press 155 35", "press 25 95"}) {
            act(press);
            setEach(set, -1);
            act("poll 1, at 180 35, release");
            setEach(set, 0);
        }
        setEach(set, -1);
        EXPECT_EQ(state(), untouched);
    }
}

TEST_F(EveryWidget, ASteadyFrameAllocatesNothing) {
    entry.focus();
    const auto frame = [&] { poll(), drawAll(); };
    for (const KXUICaptions captions : {KXUICaptionsLaidOut, KXUICaptionsPrinted}) {
        KXUITheme theme;
        theme.captions = captions;
        KXUISetTheme(theme);
        frame();
        frame();
        EXPECT_EQ(allocationsOf(frame), 0u);
    }
}
} // namespace
