#include "UITest.h"

#include "util/KXString.h"

namespace {
struct ListBox : UITest {
    ListBox() {
        rowHeight = static_cast<int>(list._idealSizeForText("x").height);
        list.setRect({10, 10}, {120, static_cast<float>(5 * rowHeight + 2)}); // five rows and the border
    }
    ~ListBox() override { _KXCleanTempStrings(); }

    int poll() override { return list.poll(); }
    /// "row 2" is in the middle of what is in view as the third row, "bar 8" 8 pixels below the bar's top.
    KXPoint place(const std::string& name) const override {
        const float number = name.size() > 4 ? std::stof(name.substr(4)) : 0;
        if (name.starts_with("row"))
            return {20, 11 + std::floor((number + 0.5f) * static_cast<float>(rowHeight))};
        return name.starts_with("bar") ? KXPoint{124, 11 + number} : UITest::place(name);
    }
    /// The selected row, the first one in view behind "@", and the row that was activated behind "!".
    std::string state() override {
        std::string seen =
            std::to_string(list.selectedIndex()) + "@" + std::to_string(list.firstVisibleIndex());
        return list.activatedIndex() == -1 ? seen : seen + "!" + std::to_string(list.activatedIndex());
    }
    void fillWith(int count) { addRows(list, "Row ", count); }
    static void addRows(KXUIListBox& of, const std::string& text, int count) {
        for (int i = 0; i < count; ++i)
            of.add((text + std::to_string(i)).c_str());
    }
    std::string contents() const {
        std::string all;
        for (int i = 0; i < list.count(); ++i)
            all += list.text(i);
        return all;
    }

    KXUIListBox list;
    int rowHeight;
};

TEST_F(ListBox, RowsAndTheSelectionThatFollowsThem) {
    constexpr bool insert = true, remove = false;
    const struct {
        bool inserts;
        int index, selectedBefore, result;
        const char* rows;
        int selected;
    } rows[] = {
        {insert, 0, 1, 0, "xabc", 2},  {insert, 1, 1, 1, "axbc", 2},   {insert, 2, 1, 2, "abxc", 1},
        {insert, 3, 1, 3, "abcx", 1},  {insert, 1, -1, 1, "axbc", -1}, {insert, 4, 1, -1, "abc", 1},
        {insert, -1, 1, -1, "abc", 1}, {remove, 0, 1, -1, "bc", 0},    {remove, 1, 1, -1, "ac", -1},
        {remove, 2, 1, -1, "ab", 1},   {remove, 3, 1, 0, "abc", 1},    {remove, INT_MIN, 1, 0, "abc", 1}};
    for (const auto& row : rows) {
        list.clear();
        EXPECT_EQ(list.selectedIndex(), -1);
        for (const char* text : {"a", "b", "c"})
            list.add(text);
        EXPECT_EQ(list.setSelectedIndex(row.selectedBefore), -1);
        EXPECT_EQ(row.inserts ? list.insert(row.index, "x") : list.remove(row.index), row.result);
        EXPECT_EQ(contents(), row.rows);
        EXPECT_EQ(list.selectedIndex(), row.selected) << contents();
    }
    EXPECT_EQ(poll(), 0) << "what the game selects is no news to it";
}

TEST_F(ListBox, WhatIsNoRowIsNeutral) {
    EXPECT_EQ(list.add("only"), 0);
    EXPECT_EQ(list.add(nullptr), -1);
    EXPECT_EQ(list.insert(0, nullptr), -1);
    EXPECT_EQ(list.rename(0, nullptr), 0);
    for (int none : {-1, 1, INT_MIN, INT_MAX}) {
        EXPECT_EQ(list.rename(none, "x"), 0);
        EXPECT_EQ(list.text(none), nullptr);
        EXPECT_EQ(list.scrollTo(none), 0);
        EXPECT_EQ(list.setSelectedIndex(none), none == -1 ? -1 : 0);
    }
    EXPECT_EQ(list.rename(0, (std::string(1022, '%') + "\u00e9").c_str()), -1);
    EXPECT_EQ(contents(), std::string(1022, '%')) << "no half a character";
    list.clear();
    EXPECT_EQ(list.indexAt({20, 20}), -1);
    expectEach("click row 0, Up, End, Return, PageDown, type x -> -1@-1");
}

TEST_F(ListBox, APressSelectsAndASecondOneActivates) {
    fillWith(3);
    expectEach("press row 1 -> told 1@0; release -> 1@0; press row 1 -> told 1@0!1; release -> 1@0; "
               "press row 1 -> 1@0; release, wait 40, press row 1 -> 1@0; "
               "release, press row 2 -> told 2@0; release, wait 29, press row 2 -> 2@0; "
               "release, wait 20, press row 2 -> told 2@0!2; release, press row 2 -> 2@0; "
               "release, press row 0 -> told 0@0; release, press row 4 -> 0@0; "
               "release, press row 0 -> told 0@0!0; release, click row 1 -> told 1@0");
    EXPECT_EQ(list.selectionChanged(), 0);
    list.insert(0, "new"); // the row under the pointer is another one now, whose first press this is
    expectEach("press row 2 -> 2@0; release, click row 1 -> told 1@0");

    // What is no press on a row: other buttons, a press that began elsewhere, the edges of the box.
    list.setSelectedIndex(-1);
    press(KXMouseRight);
    EXPECT_EQ(poll(), 0);
    release(KXMouseRight);
    expectEach("hold Left Ctrl, click row 0, let Left Ctrl -> -1@0; press 300 20, at row 0, release -> -1@0; "
               "click 10 20 -> -1@0; click 20 10 -> -1@0; click 131 20 -> -1@0; click row 5 -> -1@0");
}

TEST_F(ListBox, RowsThatAreCutComeIntoView) {
    fillWith(7);
    const float row = static_cast<float>(rowHeight);
    list.setSize({120, 2.5f * row + 2});
    moveMouse(20, 11 + 2 * rowHeight + 3);                // on what is seen of the third row
    expectEach("click -> told 2@0; press -> told 2@0!2"); // the second press still finds it
    EXPECT_EQ(list.indexAt({20, 12 + 1.5f * row}), 2) << "whole now";
    list.setSize({120, std::floor(row / 2)}); // lower than a row: its top is what is seen
    list.scrollTo(5);
    EXPECT_EQ(list.indexAt({20, 11}), 5);
    EXPECT_EQ(list.indexAt({20, 10 + std::floor(row / 2) - 2}), 5);
}

TEST_F(ListBox, TheWheelScrollsUnderThePointer) {
    fillWith(20);
    expectEach("at 300 190, wheel -1 -> -1@0; at row 0, wheel -1 -> -1@3; wheel -1 -> -1@6; "
               "wheel 1 -> -1@3; wheel 1 -> -1@0; wheel 1 -> -1@0; wheel -1, wheel -1 -> -1@6; "
               "wheel -1, wheel -1, wheel -1 -> -1@15; wheel -1 -> -1@15; click row 4 -> told 19@15; "
               "wheel 1 -> 19@12");
    poll(); // a second logic step of the same frame
    EXPECT_EQ(state(), "19@12");
    act("wheel 1");
    for (int tenth = 0; tenth < 10; ++tenth)
        act("wheel -0.1");
    expectEach("wheel 1 & wheel 1 & wheel 1 -> 19@3; wheel -0.5 -> 19@4; wheel -0.5 -> 19@6; "
               "wheel -1 & at 300 190 -> 19@9; wheel -1 -> 19@9; at row 0 & wheel -2 & wheel 1 -> 19@12");
    while (list.count() > 8) // fewer rows than the distance scrolled
        list.remove(0);
    EXPECT_EQ(state(), "7@3");
    EXPECT_EQ(list.indexAt({20, 12}), 3);
}

TEST_F(ListBox, TheKnobIsDraggedAndAPressOnTheTrackTurnsPages) {
    fillWith(100);
    const int height = 5 * rowHeight; // and the knob's is 16
    act("press bar 5");
    // The knob keeps its grip wherever the pointer goes, and both ends are reached.
    const int drags[][2] = {
        {5, 0},      {5 + (height - 16) / 2, 47}, {height + 500, 95}, {height - 11, 95}, {INT_MAX - 11, 95},
        {INT_MIN, 0}};
    for (const auto& [y, first] : drags) {
        moveMouse(124, 11 + y);
        poll();
        EXPECT_NEAR(list.firstVisibleIndex(), first, first == 47 ? 2 : 0) << y;
    }
    // Also beside the list, and with Control, which makes another button of the left one in games.
    expectEach(
        "at 300 1000 -> -1@95; hold Left Ctrl, at 300 0 -> -1@0; at 300 1000 -> -1@95; "
        "release, let Left Ctrl, at bar 5 -> -1@95; "
        "press bar 5 -> -1@90; poll 28 -> -1@90; poll 6 -> -1@80; poll 60 -> -1@5; poll 2 -> -1@5; " // until
                                                                                                     // under
                                                                                                     // the
                                                                                                     // knob
        "release, click bar 80 -> -1@10");
    while (list.count() > 5)
        list.remove(5);
    expectEach("press bar 5 -> told 0@0"); // no bar: the row goes to the edge
}

TEST_F(ListBox, KeysMoveTheSelectionAndRepeat) {
    fillWith(30);
    expectEach("Down, type R -> -1@0"); // without focus
    list.setFocus(-1);
    expectEach("Down -> told 0@0; Down -> told 1@0; Up -> told 0@0; PageDown -> told 5@1; "
               "PageDown -> told 10@6; Up -> told 9@6; PageUp -> told 4@4; End -> told 29@25; "
               "Down -> 29@25; PageDown -> 29@25; Up -> told 28@25; Home -> told 0@0; PageUp -> 0@0; "
               "hold Down -> told 1@0");
    EXPECT_EQ(KXKey(KXKeyDown, -1), -1) << "reads keys beside the game";
    expectEach("poll 28 -> 1@0; poll 6 -> told 3@0; let Down, Home -> told 0@0; hold Return -> told 0@0!0; "
               "poll 40 -> 0@0; hold Keypad Enter -> told 0@0!0; poll 40, let Return -> 0@0");
    list.setSelectedIndex(-1);
    expectEach("Return -> -1@0; End -> told 29@25");
}

TEST_F(ListBox, TypingFindsRows) {
    for (const char* text : {"apple", "Apricot", "banana", "{C1,0,0,1}Blue{EC}berry", "cherry", "\u00dcbung",
                             "\u0416\u0443\u043a", "aardvark"})
        list.add(text);
    list.setFocus(-1);
    list.setSize({120, static_cast<float>(8 * rowHeight + 2)});
    expectEach("type b -> told 2@0; type l -> told 3@0; wait 100, type B -> told 2@0; type b -> told 3@0; "
               "type b -> told 2@0; type zz -> 2@0; wait 100, type \u00fc -> told 5@0; "
               "wait 100, type \u0436\u0443 -> told 6@0; wait 100, type a -> told 7@0; type a -> 7@0; "
               "wait 100, type a -> told 0@0; type p -> 0@0; wait 60, type r -> told 1@0; "
               "wait 100, type ap -> told 0@0; wait 100, type q -> 0@0; wait 100, type blueb -> told 3@0");
}

TEST_F(ListBox, AStepIsHeardInTheOrderInWhichItCame) {
    fillWith(30);
    expectEach(
        "click row 1 & Down & Down & click row 0 & Return & at 300 190 -> told 0@0!0; "
        "End & Up & Return & Home -> told 0@0!28; click row 2 & click row 2 & at 9 9 -> told 2@0!2; "
        "press bar 5 & at bar 500 & release & at bar 5 -> 2@25; click bar 5 & type Row 1 -> told 10@10");
}

TEST_F(ListBox, DraggingSelectsAndScrollsBeyondTheEdges) {
    fillWith(30);
    expectEach("press row 1, at row 3 -> told 3@0; at 300 60 -> told 2@0; release, at row 1 -> 2@0");
    act("press row 1, at 20 " + std::to_string(15 + 5 * rowHeight));
    const int before = list.selectedIndex();
    EXPECT_EQ(act("poll 62"), -1);
    const int later = list.selectedIndex();
    EXPECT_NEAR(later - before, 10, 2) << "in a second";
    EXPECT_EQ(list.firstVisibleIndex(), later - 4);
    expectEach("at 20 500, poll 62 -> told 29@25; at 20 -500, poll 62 -> told 0@0; release, poll 9 -> 0@0");
    const std::string edge = std::to_string(10 + 2 * rowHeight), beside = std::to_string(12 + 2 * rowHeight);
    expectEach("wait 100, press 20 " + edge + " -> told 1@0; at 20 " + beside + " -> 1@0; release -> 1@0");
}

TEST_F(ListBox, SeveralRowsAreSelected) {
    const auto selected = [this] {
        std::string rows;
        for (int row = -1; (row = list.nextSelectedIndex(row)) != -1;)
            rows += std::to_string(row) + (list.isSelected(row) ? " " : "?");
        return rows + "from " + std::to_string(list.selectedIndex());
    };
    fillWith(12);
    list.setSelectedIndex(1);
    EXPECT_EQ(list.setSelected(2, -1), -1);
    EXPECT_EQ(selected(), "2 from 2") << "one at first";
    list.setMultipleSelection(-1);
    for (const auto& [acts, rows] :
         {std::pair{"click row 1", "1 from 1"},
          {"hold Left Shift, click row 4, let Left Shift", "1 2 3 4 from 4"},
          {"hold Left Ctrl, click row 2, click row 2, click row 3, let Left Ctrl", "1 2 4 from 3"},
          {"Left Shift+Down", "3 4 from 4"},
          {"Left Ctrl+Down, Left Ctrl+Down, Left Ctrl+Space", "3 4 6 from 6"},
          {"Left Shift+Home", "0 1 2 3 4 5 6 from 0"},
          {"Down", "1 from 1"},
          {"press row 0 & at row 2 & release & at 9 9", "0 1 2 from 2"},
          {"Left Ctrl+A", "0 1 2 3 4 5 6 7 8 9 10 11 from 2"},
          {"type Row 3", "3 from 3"}}) {
        EXPECT_EQ(act(acts), -1) << acts;
        EXPECT_EQ(selected(), rows) << acts;
    }
    list.setSelected(5, -1);
    list.insert(4, "New");
    list.remove(3);
    EXPECT_EQ(selected(), "5 from -1");
    list.setMultipleSelection(0);
    EXPECT_EQ(selected(), "from -1");
    EXPECT_EQ(list.isSelected(-1) | list.isSelected(12) | list.setSelected(12, -1), 0);
}

// Measuring a row takes memory, so that what a frame measures can be counted.
TEST_F(ListBox, OnlyRowsThatComeIntoViewCost) {
    list.setFont(testFont(), KXAliasModeTexture);
    list.setFontSize(12);
    for (int i = 0; i < 100000; ++i)
        list.add("A row that is a little too long for its list");
    const auto costOfFrame = [&] { return allocationsOf([&] { list.poll(), list.draw(); }); };
    costOfFrame(); // makes the glyphs, too
    moveMouse(20, 20);
    EXPECT_EQ(costOfFrame(), 0u);
    wheel(-1); // three rows
    const std::size_t three = costOfFrame();
    EXPECT_GT(three, 0u);
    EXPECT_EQ(costOfFrame(), 0u);
    list.setSelectedIndex(99999);
    EXPECT_LE(costOfFrame(), 2 * three) << "five rows";
    EXPECT_EQ(state(), "99999@99995");

    // What is remembered is what a list that has drawn nothing yet would show.
    const KXSize larger = {140, list.rect().size.height + 10};
    const std::function<void()> changes[] = {
        [&] { list.rename(99997, "Another row that is a little too long"); },
        [&] { list.insert(99996, "New"), list.remove(99998); }, [&] { list.setSize(larger); },
        [&] { list.setFontSize(11); }}; // as many rows
    for (const auto& change : changes) {
        change();
        EXPECT_GT(costOfFrame(), 0u);
        KXUIListBox fresh;
        fresh.setFont(testFont(), KXAliasModeTexture);
        fresh.setRect({10, 10}, list.rect().size);
        for (int i = 0; i < list.count(); ++i, _KXCleanTempStrings())
            fresh.add(list.text(i));
        fresh.setSelectedIndex(99999);
        EXPECT_EQ(differingPixels(picture([&] { list.draw(); }), picture([&] { fresh.draw(); })), 0);
    }
}

TEST_F(ListBox, Looks) {
    for (const char* text : {"Short", "100% {C1,0.8,0,1}golden{EC} text",
                             "A text that is too long for the box", "\u00c4rger \u0416\u0443\u043a \xff\xfe",
                             "{C0,1,0,1}A span that is cut somewhere{EC}", "gjpqy", "The last row"})
        list.add(text);
    list.setSize({140, static_cast<float>(5 * rowHeight)}); // the last one in view is cut
    list.setSelectedIndex(1);
    list.draw();

    KXUIListBox focused, colored, empty;
    focused.setRect({165, 10}, {145, 90}); // scrolled to its end, knob in hand
    addRows(focused, "Row number ", 30);
    focused.setSelectedIndex(29);
    focused.draw();
    moveMouse(305, 95);
    press();
    focused.poll();
    focused.draw();

    colored.setRect({165, 110}, {145, 80});
    colored.setBackgroundColor(1, 1, 1, 1);
    colored.setBorderColor(0.4f, 0.4f, 0.4f, 1);
    colored.setTextColor(0, 0, 0, 1);
    colored.setSelectionColor(1, 0.8f, 0.4f, 1);
    colored.setTrackColor(0.9f, 0.9f, 0.9f, 1);
    colored.setKnobColor(0.7f, 0.8f, 0.7f, 1);
    addRows(colored, "On white ", 6);
    colored.setSelectedIndex(0);
    colored.draw();

    empty.setRect({10, 130}, {140, 60});
    empty.setFocusColor(1, 1, 0, 1);
    empty.setFocus(-1);
    empty.draw();
    expectGolden(Image::of(*window), "ui/list_box");
}
} // namespace
