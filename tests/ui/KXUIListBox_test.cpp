#include "ui/KXUIListBox.h"

#include "support/Allocations.h"
#include "UITest.h"

#include "text/KXUIGlobalFont.h"
#include "util/KXString.h"

#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXUITextEntry.h>

#include <SDL_opengl.h>

#include <array>
#include <climits>
#include <cmath>

namespace {
struct ListBox : UITest {
    ListBox() {
        rowHeight = static_cast<int>(list._idealSizeForText("x").height);
        list.setRect({10, 10}, {120, static_cast<float>(5 * rowHeight + 2)}); // five rows and the border
    }
    ~ListBox() override { _KXCleanTempStrings(); }

    void fillWith(int count) {
        for (int i = 0; i < count; ++i)
            list.add(("Row " + std::to_string(i)).c_str());
    }
    void pointAtRow(int rowInView) { moveMouse(20, 11 + rowInView * rowHeight + rowHeight / 2); }
    int click(int rowInView) {
        pointAtRow(rowInView);
        press();
        const int result = list.poll();
        release();
        list.poll();
        return result;
    }
    int tap(int key) {
        keyDown(key);
        const int result = list.poll();
        keyUp(key);
        list.poll();
        return result;
    }
    void typeAndPoll(const char* text) {
        type(text);
        list.poll();
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
    enum Doing { Insert, Remove };
    const struct {
        Doing doing;
        int index, selectedBefore, result;
        const char* rows;
        int selected;
    } rows[] = {
        {Insert, 0, 1, 0, "xabc", 2},  {Insert, 1, 1, 1, "axbc", 2},   {Insert, 2, 1, 2, "abxc", 1},
        {Insert, 3, 1, 3, "abcx", 1},  {Insert, 1, -1, 1, "axbc", -1}, {Insert, 4, 1, -1, "abc", 1},
        {Insert, -1, 1, -1, "abc", 1}, {Remove, 0, 1, -1, "bc", 0},    {Remove, 1, 1, -1, "ac", -1},
        {Remove, 2, 1, -1, "ab", 1},   {Remove, 3, 1, 0, "abc", 1},    {Remove, INT_MIN, 1, 0, "abc", 1}};
    for (const auto& row : rows) {
        list.clear();
        EXPECT_EQ(list.selectedIndex(), -1);
        for (const char* text : {"a", "b", "c"})
            list.add(text);
        EXPECT_EQ(list.setSelectedIndex(row.selectedBefore), -1);
        EXPECT_EQ(row.doing == Insert ? list.insert(row.index, "x") : list.remove(row.index), row.result);
        EXPECT_EQ(contents(), row.rows);
        EXPECT_EQ(list.selectedIndex(), row.selected) << contents();
    }
    EXPECT_EQ(list.poll(), 0) << "what the game selects is no news to it";
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
    EXPECT_EQ(list.rename(0, "%s{C"), -1);
    EXPECT_EQ(contents(), "%s{C");
    std::string endless = "x";
    for (int i = 0; i < 1000; ++i)
        endless += "\u00e9";
    list.rename(0, endless.c_str());
    EXPECT_EQ(list.text(0), endless.substr(0, 1023));
    list.rename(0, ("x" + endless).c_str());
    EXPECT_EQ(list.text(0), "x" + endless.substr(0, 1021)) << "cut within a character";
    list.clear();
    EXPECT_EQ(list.firstVisibleIndex(), -1);
    EXPECT_EQ(list.indexAt({20, 20}), -1);
    EXPECT_EQ(click(0), 0);
    for (int key : {SDLK_UP, SDLK_END, SDLK_RETURN, SDLK_PAGEDOWN})
        EXPECT_EQ(tap(key), 0);
    typeAndPoll("x");
    EXPECT_EQ(list.selectedIndex(), -1);
}

TEST_F(ListBox, APressSelectsAndASecondOneActivates) {
    fillWith(3);
    EXPECT_EQ(click(1), -1);
    EXPECT_EQ(list.selectedIndex(), 1);
    // The step after the press, and whether it is a second one for the row.
    const struct {
        int row;
        unsigned stepsLater;
        int activated, polled;
    } rows[] = {{1, 0, 1, -1},  {1, 0, -1, 0}, {1, 40, -1, 0}, {2, 0, -1, -1}, {2, 29, -1, 0},
                {2, 20, 2, -1}, {2, 0, -1, 0}, {0, 0, -1, -1}, {4, 0, -1, 0},  {0, 0, 0, -1}};
    for (const auto& row : rows) {
        steps.advance(row.stepsLater);
        pointAtRow(row.row);
        press();
        EXPECT_EQ(list.poll(), row.polled) << &row - rows;
        EXPECT_EQ(list.activatedIndex(), row.activated) << &row - rows;
        release();
        EXPECT_EQ(list.poll(), 0);
        EXPECT_EQ(list.activatedIndex(), -1);
        EXPECT_EQ(list.selectionChanged(), 0);
    }
    // A row that is partly in view comes into view whole, and the second press still finds it.
    fillWith(7);
    list.setSize({120, static_cast<float>(2 * rowHeight + rowHeight / 2 + 2)});
    moveMouse(20, 11 + 2 * rowHeight + 3);
    for (int activated : {-1, 2}) {
        press();
        list.poll();
        EXPECT_EQ(list.activatedIndex(), activated);
        release();
        list.poll();
    }
    EXPECT_EQ(list.indexAt({20, 12 + 1.5f * static_cast<float>(rowHeight)}), 2);
    list.setSize({120, static_cast<float>(rowHeight / 2)}); // lower than a row: its top is what is seen
    list.scrollTo(5);
    EXPECT_EQ(list.indexAt({20, 11}), 5);
    EXPECT_EQ(list.indexAt({20, 10 + static_cast<float>(rowHeight / 2) - 2}), 5);
    list.setSize({120, static_cast<float>(5 * rowHeight + 2)});
    while (list.count() > 3)
        list.remove(3);
    click(0);
    list.insert(0, "new"); // the row under the pointer is another one now
    EXPECT_EQ(click(0), -1);
    EXPECT_EQ(list.activatedIndex(), -1);

    // What is no press on a row: other buttons, a press that began elsewhere, the edges of the box.
    list.setSelectedIndex(-1);
    pointAtRow(0);
    press(SDL_BUTTON_RIGHT);
    EXPECT_EQ(list.poll(), 0);
    release(SDL_BUTTON_RIGHT);
    moveMouse(300, 20);
    press();
    list.poll();
    pointAtRow(0);
    EXPECT_EQ(list.poll(), 0);
    release();
    for (const auto& [x, y] : {std::pair{10, 20}, {20, 10}, {131, 20}, {20, 13 + 5 * rowHeight}}) {
        moveMouse(x, y);
        press();
        EXPECT_EQ(list.poll(), 0) << x << " " << y;
        release();
        list.poll();
    }
}

TEST_F(ListBox, TheWheelScrollsUnderThePointer) {
    fillWith(20);
    moveMouse(300, 190);
    wheel(-1);
    list.poll();
    EXPECT_EQ(list.firstVisibleIndex(), 0);
    pointAtRow(0);
    const int rows[][2] = {{-1, 3}, {-1, 6}, {1, 3}, {1, 0}, {1, 0}};
    for (const auto& [notch, first] : rows) {
        wheel(notch);
        list.poll();
        EXPECT_EQ(list.firstVisibleIndex(), first);
        list.poll(); // a second logic step of the same frame
        EXPECT_EQ(list.firstVisibleIndex(), first);
    }
    for (int i = 0; i < 9; ++i) {
        wheel(-1);
        list.poll();
    }
    EXPECT_EQ(list.firstVisibleIndex(), 15);
    EXPECT_EQ(list.selectedIndex(), -1);
    EXPECT_EQ(click(4), -1);
    EXPECT_EQ(list.selectedIndex(), 19);
    while (list.count() > 10) // fewer rows than the distance scrolled
        list.remove(0);
    EXPECT_EQ(list.firstVisibleIndex(), 5);
    EXPECT_EQ(list.indexAt({20, 12}), 5);
}

TEST_F(ListBox, TheKnobIsDraggedAndTheTrackTurnsPages) {
    fillWith(100);
    const int bar = 124, top = 11, height = 5 * rowHeight;
    const auto pointAt = [&](int y) {
        moveMouse(bar, y);
        list.poll();
    };
    // The knob keeps its grip wherever the pointer goes, and both ends are reached.
    pointAt(top + 5);
    press();
    list.poll();
    EXPECT_EQ(list.firstVisibleIndex(), 0);
    const std::pair<int, int> drags[] = {{top + 5 + (height - 16) / 2, 47},
                                         {top + height + 500, 95},
                                         {top + height - 11, 95},
                                         {INT_MAX, 95},
                                         {INT_MIN, 0},
                                         {top + 5, 0}};
    for (const auto& [y, first] : drags) {
        pointAt(y);
        EXPECT_NEAR(list.firstVisibleIndex(), first, y == drags[0].first ? 2 : 0) << y;
    }
    moveMouse(300, top + height);
    list.poll();
    EXPECT_EQ(list.firstVisibleIndex(), 95) << "dragged beside the list";
    release();
    list.poll();
    pointAt(top + 5);
    EXPECT_EQ(list.firstVisibleIndex(), 95) << "let go";

    press();
    list.poll();
    EXPECT_EQ(list.firstVisibleIndex(), 90);
    for (int i = 0; i < 29; ++i, step())
        list.poll();
    EXPECT_EQ(list.firstVisibleIndex(), 90);
    for (int i = 0; i < 60; ++i, step())
        list.poll();
    const int reached = list.firstVisibleIndex();
    EXPECT_LT(reached, 12) << "a held press turns pages";
    step();
    list.poll();
    EXPECT_EQ(list.firstVisibleIndex(), reached) << "until the knob is under the pointer";
    release();
    list.poll();
    pointAt(top + height - 2);
    press();
    list.poll();
    EXPECT_EQ(list.firstVisibleIndex(), reached + 5);
    release();
    EXPECT_EQ(list.poll(), 0);
    EXPECT_EQ(list.selectedIndex(), -1);

    while (list.count() > 5)
        list.remove(5);
    pointAt(top + 5); // no bar: the row goes to the edge
    press();
    EXPECT_EQ(list.poll(), -1);
    EXPECT_EQ(list.selectedIndex(), 0);
}

TEST_F(ListBox, KeysMoveTheSelectionAndRepeat) {
    fillWith(30);
    EXPECT_EQ(tap(SDLK_DOWN), 0) << "without focus";
    list.setFocus(-1);
    const struct {
        int key, selected, first;
    } rows[] = {{SDLK_DOWN, 0, 0},      {SDLK_DOWN, 1, 0},       {SDLK_UP, 0, 0},     {SDLK_PAGEDOWN, 5, 1},
                {SDLK_PAGEDOWN, 10, 6}, {SDLK_UP, 9, 6},         {SDLK_PAGEUP, 4, 4}, {SDLK_END, 29, 25},
                {SDLK_DOWN, 29, 25},    {SDLK_PAGEDOWN, 29, 25}, {SDLK_UP, 28, 25},   {SDLK_HOME, 0, 0},
                {SDLK_PAGEUP, 0, 0}};
    for (const auto& [key, selected, first] : rows) {
        const int before = list.selectedIndex();
        EXPECT_EQ(tap(key), before == selected ? 0 : -1);
        EXPECT_EQ(list.selectedIndex(), selected) << &key - &rows[0].key;
        EXPECT_EQ(list.firstVisibleIndex(), first);
    }
    keyDown(SDLK_DOWN);
    for (int i = 0; i < 29; ++i, step())
        list.poll();
    EXPECT_EQ(list.selectedIndex(), 1);
    for (int i = 0; i < 6; ++i, step())
        list.poll();
    EXPECT_GE(list.selectedIndex(), 5);
    EXPECT_LE(list.selectedIndex(), 7);
    keyUp(SDLK_DOWN);

    for (int key : {SDLK_RETURN, SDLK_KP_ENTER}) {
        keyDown(key);
        EXPECT_EQ(list.poll(), -1);
        EXPECT_EQ(list.activatedIndex(), list.selectedIndex());
        for (int i = 0; i < 40; ++i, step())
            EXPECT_EQ(list.poll(), 0) << "activation does not repeat";
        keyUp(key);
        list.poll();
    }
    list.setSelectedIndex(-1);
    EXPECT_EQ(tap(SDLK_RETURN), 0);
    EXPECT_EQ(tap(SDLK_END), -1);
}

TEST_F(ListBox, LeavesTheGamesKeysAlone) {
    constexpr int down = 102, enter = 53;
    fillWith(3);
    keyDown(SDLK_RETURN); // opens the list in the game, and is held
    list.setFocus(-1);
    EXPECT_EQ(KXKey(enter, -1), -1);
    list.setSelectedIndex(0);
    EXPECT_EQ(list.poll(), 0);
    keyUp(SDLK_RETURN);
    list.poll();
    EXPECT_EQ(tap(SDLK_RETURN), -1);
    for (bool gameAsksFirst : {true, false}) {
        keyDown(SDLK_DOWN);
        const int before = list.selectedIndex();
        if (gameAsksFirst) {
            EXPECT_EQ(KXKey(down, -1), -1);
        }
        list.poll();
        if (!gameAsksFirst) {
            EXPECT_EQ(KXKey(down, -1), -1);
        }
        EXPECT_EQ(list.selectedIndex(), before + 1);
        keyUp(SDLK_DOWN);
        list.poll();
        KXKey(down, -1);
    }
}

TEST_F(ListBox, FocusComesAndGoes) {
    fillWith(3);
    auto other = std::make_unique<KXUIListBox>();
    other->setRect({200, 10}, {100, 100});
    const auto pressAt = [&](int x, int y, bool listFirst) {
        moveMouse(x, y);
        press();
        (listFirst ? list : *other).poll();
        (listFirst ? *other : list).poll();
        release();
        list.poll();
        other->poll();
        return list.hasFocus() * 1 + other->hasFocus() * 10;
    };
    for (bool listFirst : {true, false}) {
        EXPECT_EQ(pressAt(20, 100, listFirst), -1);
        EXPECT_EQ(pressAt(250, 50, listFirst), -10);
        EXPECT_EQ(pressAt(20, 20, listFirst), -1);
        EXPECT_EQ(pressAt(160, 150, listFirst), 0);
    }
    list.setFocus(-1);
    other->setFocus(1);
    EXPECT_EQ(list.hasFocus(), 0);
    list.setFocus(0); // takes nothing from the other one
    EXPECT_EQ(other->hasFocus(), -1);
    other.reset();
    EXPECT_EQ(_KXFocus::keyboardOwner(), nullptr);

    // An entry that is typed into has the keyboard alone, whoever is polled first.
    KXUITextEntry entry;
    entry.setRect({200, 10}, {100, 20});
    for (bool listFirst : {true, false}) {
        list.setFocus(-1);
        moveMouse(250, 20);
        press();
        for (bool second : {false, true})
            second != listFirst ? static_cast<void>(list.poll()) : static_cast<void>(entry.poll());
        EXPECT_EQ(list.hasFocus(), 0);
        EXPECT_EQ(entry.isFocused(), -1);
        release();
        type("r");
        tap(SDLK_DOWN);
        EXPECT_EQ(list.selectedIndex(), 0);
        entry.poll();
        EXPECT_STREQ(entry.text(), "r");
        entry.setText("");
        list.setFocus(-1);
        EXPECT_EQ(entry.isFocused(), 0);
        typeAndPoll("row 2");
        EXPECT_EQ(list.selectedIndex(), 2);
        list.setSelectedIndex(0);
        entry.focus(); // by the game
        EXPECT_EQ(list.hasFocus(), 0);
        list.poll();
        type("e");
        entry.poll();
        EXPECT_STREQ(entry.text(), "e");
        entry.setText("");
        entry.unfocus();
        EXPECT_EQ(list.hasFocus(), 0) << "what is given up goes to nobody";
    }
}

TEST_F(ListBox, TypingFindsRows) {
    for (const char* text : {"apple", "Apricot", "banana", "{C1,0,0,1}Blue{EC}berry", "cherry", "\u00dcbung",
                             "\u0416\u0443\u043a", "aardvark"})
        list.add(text);
    type("b");
    list.poll();
    EXPECT_EQ(list.selectedIndex(), -1);
    list.setFocus(-1);
    // What is typed after how many steps, and the row that is selected then.
    const struct {
        const char* typed;
        unsigned pause;
        int selected;
    } rows[] = {{"b", 0, 2},   {"l", 0, 3},    {"B", 100, 2},      {"b", 0, 3},
                {"b", 0, 2},   {"zz", 0, 2},   {"\u00fc", 100, 5}, {"\u0436\u0443", 100, 6},
                {"a", 100, 7}, {"a", 0, 7},    {"a", 100, 0},      {"p", 0, 0},
                {"r", 60, 1},  {"ap", 100, 0}, {"q", 100, 0},      {"blueb", 100, 3}};
    for (const auto& row : rows) {
        steps.advance(row.pause);
        typeAndPoll(row.typed);
        EXPECT_EQ(list.selectedIndex(), row.selected) << &row - rows;
    }
    steps.advance(100);
    for (int i = 0; i < 100; ++i)
        type("0123456789"); // nobody polls
    EXPECT_EQ(list.poll(), 0);
}

// Measuring a row takes memory, so that what a frame measures can be counted.
TEST_F(ListBox, OnlyRowsThatComeIntoViewCost) {
    for (int i = 0; i < 100000; ++i)
        list.add("A row that is a little too long for its list");
    const auto costOfFrame = [&] {
        return allocationsOf([&] {
            list.poll();
            list.draw();
        });
    };
    costOfFrame(); // makes the glyphs, too
    pointAtRow(1);
    for (int notch = 0; notch < 10; ++notch) {
        EXPECT_EQ(costOfFrame(), 0u);
        wheel(-1); // three rows
        EXPECT_GT(costOfFrame(), 0u);
    }
    wheel(-1);
    const std::size_t three = costOfFrame();
    list.setSelectedIndex(99999);
    EXPECT_LE(costOfFrame(), 2 * three) << "five rows";
    EXPECT_EQ(list.firstVisibleIndex(), 99995);
    list.rename(99997, "A list that is a little too long for its row");
    EXPECT_GT(costOfFrame(), 0u);
    EXPECT_EQ(costOfFrame(), 0u);

    // What is remembered is what a list that has drawn nothing yet would show.
    list.insert(0, "new");
    list.remove(99996);
    list.setSelectedIndex(-1);
    const Image remembered = draw([&] { list.draw(); });
    KXUIListBox fresh;
    fresh.setRect(list.rect().origin, list.rect().size);
    for (int i = 0; i < list.count(); ++i) {
        fresh.add(list.text(i));
        _KXCleanTempStrings();
    }
    fresh.scrollTo(list.count() - 1);
    EXPECT_EQ(differingPixels(remembered, draw([&] { fresh.draw(); })), 0);
}

std::array<int, 5> clipState() {
    std::array<int, 5> state = {};
    glGetIntegerv(GL_SCISSOR_BOX, state.data());
    state[4] = glIsEnabled(GL_SCISSOR_TEST);
    return state;
}

TEST_F(ListBox, RowsStayInTheBoxAndTheGamesClipHolds) {
    list.setSize({120, static_cast<float>(3 * rowHeight + rowHeight / 2)});
    fillWith(20);
    list.setSelectedIndex(3); // one of the rows that do not fit whole
    list.setSelectedIndex(10);
    KXTexture texture(320, 200);
    const KXRect half = {{0, 0}, {60, 200}};
    for (KXRenderContext* target :
         {static_cast<KXRenderContext*>(window.get()), static_cast<KXRenderContext*>(&texture)})
        for (const bool clipped : {false, true})
            for (const bool moved : {false, true}) {
                SCOPED_TRACE(testing::Message() << (target == &texture) << clipped << moved);
                target->setRenderContext();
                target->unsetClip();
                fill({0, 0, 0, 1});
                if (moved) { // by the game's own matrix
                    glTranslatef(30, 20, 0);
                    glScalef(1.5f, 1.5f, 1);
                }
                if (clipped)
                    target->setClipTo(half);
                const auto before = clipState();
                list.draw();
                EXPECT_EQ(clipState(), before);
                target->unsetClip();
                const Image image = target == &texture ? Image::of(texture) : Image::of(*window);
                const int scale = moved ? 3 : 2, left = moved ? 45 : 10, top = moved ? 35 : 10; // in halves
                const int right = left + 120 * scale / 2,
                          bottom = top + static_cast<int>(list.rect().size.height) * scale / 2;
                int outside = 0, inside = 0, text = 0;
                for (int y = 0; y < 200; ++y)
                    for (int x = 0; x < 320; ++x) {
                        const Pixel p = image.at(x, y);
                        if (p.r + p.g + p.b == 0)
                            continue;
                        const bool in = x >= left && x < right && y >= top && y <= bottom;
                        (in && !(clipped && x >= 60) ? inside : outside)++;
                        text += p.r > 200;
                    }
                EXPECT_EQ(outside, 0);
                EXPECT_GT(inside, 1000);
                EXPECT_GT(text, 50);
                texture.unsetRenderContext();
                window->setRenderContext();
            }
}

TEST_F(ListBox, HasNoUseForStrangeGeometryOrAMissingFont) {
    fillWith(50);
    list.setSelectedIndex(49);
    const KXSize padding = _KXUIWidget::KXUIWidgetInnerPadding;
    for (const KXRect& rect :
         {KXRect{{NAN, NAN}, {NAN, NAN}}, KXRect{{0, 0}, {INFINITY, INFINITY}}, KXRect{{5, 5}, {-20, -20}},
          KXRect{{-1e30f, 1e30f}, {1e30f, 1e30f}}, KXRect{{5, 5}, {1, 1}}, KXRect{{5, 5}, {30, 3}},
          KXRect{{5, 5}, {3, 90}}, KXRect{{0, 0}, {0, 0}}})
        for (const float space : {3.0f, NAN, -1000.0f, INFINITY}) {
            list.setRect(rect.origin, rect.size);
            _KXUIWidget::KXUIWidgetInnerPadding = {space, space};
            list.draw();
            moveMouse(15, 15);
            press();
            list.poll();
            wheel(-1);
            list.poll();
            list.setFocus(-1);
            tap(SDLK_PAGEDOWN);
            list.draw();
            release();
            list.poll();
        }
    _KXUIWidget::KXUIWidgetInnerPadding = padding;
    list.setRect({10, 10}, {100, 82});
    list.setSelectedIndex(0);
    KXClearGUIFontCache();
    const Image bare = draw([&] { list.draw(); });
    EXPECT_EQ(bare.at(50, 50), (Pixel{128, 128, 128, 255})) << "a plain box";
    EXPECT_EQ(click(1), -1);
    EXPECT_EQ(list.selectedIndex(), 1);
    EXPECT_EQ(list.setFont(testFont(), KXAliasModeTexture), -1);
    EXPECT_GT(differingPixels(bare, draw([&] { list.draw(); })), 100);
}

TEST_F(ListBox, LooksLikeAList) {
    for (const char* text : {"Short", "100% {C1,0.8,0,1}golden{EC} text",
                             "A text that is too long for the box", "\u00c4rger \u0416\u0443\u043a \xff\xfe",
                             "{C0,1,0,1}A span that is cut somewhere{EC}", "gjpqy", "The last row"})
        list.add(text);
    list.setSize({140, static_cast<float>(5 * rowHeight)}); // the last one in view is cut
    list.setSelectedIndex(1);
    list.draw();

    KXUIListBox focused; // scrolled to its end, knob in hand
    focused.setRect({165, 10}, {145, 90});
    for (int i = 0; i < 30; ++i)
        focused.add(("Row number " + std::to_string(i)).c_str());
    focused.setSelectedIndex(29);
    focused.draw();
    moveMouse(305, 95);
    press();
    focused.poll();
    focused.draw();

    KXUIListBox colored;
    colored.setRect({165, 110}, {145, 80});
    colored.setBackgroundColor(1, 1, 1, 1);
    colored.setBorderColor(0.4f, 0.4f, 0.4f, 1);
    colored.setTextColor(0, 0, 0, 1);
    colored.setSelectionColor(1, 0.8f, 0.4f, 1);
    colored.setTrackColor(0.9f, 0.9f, 0.9f, 1);
    colored.setKnobColor(0.7f, 0.8f, 0.7f, 1);
    for (int i = 0; i < 6; ++i)
        colored.add(("On white " + std::to_string(i)).c_str());
    colored.setSelectedIndex(0);
    colored.draw();

    KXUIListBox empty;
    empty.setRect({10, 130}, {140, 60});
    empty.setFocusColor(1, 1, 0, 1);
    empty.setFocus(-1);
    empty.draw();
    expectGolden(Image::of(*window), "ui/list_box");
}
} // namespace
