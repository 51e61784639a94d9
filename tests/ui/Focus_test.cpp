#include "ui/Focus.h"

#include "UITest.h"

#include <random>

namespace {
/// Three entries below one another and two lists beside them, polled in one order or the other.
struct Focus : UITest {
    Focus() {
        for (std::size_t i = 0; i < 5; ++i) {
            _KXUIWidget* const each = i < 3 ? static_cast<_KXUIWidget*>(&entries[i]) : &lists[i - 3];
            each->setRect(corners[i], {100, 20});
        }
        poll();
    }
    int poll() override {
        int told = 0;
        for (int i = 0; i < 5; ++i) {
            const int which = backwards ? 4 - i : i;
            told |= which < 3 ? entries[which].poll() : lists[which - 3].poll();
        }
        return told;
    }
    KXPoint place(const std::string& name) const override {
        const std::size_t i = names.find(name);
        return i == names.npos ? UITest::place(name) : KXPoint{corners[i].x + 10, corners[i].y + 10};
    }
    /// The name of the widget that has the keyboard, "-" for none.
    std::string state() override {
        std::string owner;
        for (std::size_t i = 0; i < 5; ++i)
            if (i < 3 ? entries[i].isFocused() : lists[i - 3].hasFocus())
                owner += names[i];
        return owner.empty() ? "-" : owner;
    }

    static constexpr KXPoint corners[] = {{10, 10}, {10, 50}, {10, 90}, {200, 10}, {200, 50}};
    const std::string names = "abcLM"; // entries and lists
    KXUITextEntry entries[3];
    KXUIListBox lists[2];
    KXUITextEntry &first = entries[0], &second = entries[1];
    bool backwards = false;
};

TEST_F(Focus, ThePressDecides) {
    for (bool order : {false, true}) {
        backwards = order;
        expectEach("click a -> a; click b -> b; click L -> L; click M -> M; click a -> a; "
                   "click 5 195 -> -; click M -> M; click 5 195 -> -; click b -> b; "
                   "hold Left Ctrl, click 5 195, let Left Ctrl -> b"); // a right click
    }
    // A press that goes on while an entry gets the focus is none elsewhere.
    moveMouse(5, 195);
    press();
    first.focus();
    expectEach("at 5 195 -> a; release -> a");
    // Nor is one in the entry a press of what it holds.
    first.unfocus();
    first.setText("abc");
    moveMouse(12, 20);
    press();
    first.focus();
    expectEach("poll 1 -> a");
    EXPECT_EQ(first.cursor(), 3);
    release();
}

TEST_F(Focus, WhatIsTypedGoesToItsOwnerAlone) {
    first.focus();
    act("type x");
    type("y"); // typed before the focus goes elsewhere
    second.focus();
    EXPECT_EQ(second.poll(), 0);
    EXPECT_EQ(first.poll(), -1);
    EXPECT_EQ(first.changed(), -1);
    hands.type("z");
    hands.move({5, 195});
    press();
    EXPECT_EQ(poll(), -1);
    EXPECT_EQ(KXUIFocusedTextEntry(), nullptr);
    lists[0].add("row");
    lists[0].setFocus(-1);
    expectEach("release -> L; type r -> told L; Down -> L");
    EXPECT_STREQ(first.text(), "xy");
    EXPECT_STREQ(second.text(), "z");

    lists[1].setFocus(0); // takes nothing from the other one
    second.unfocus();
    EXPECT_EQ(state(), "L");
    first.focus();
    EXPECT_EQ(KXUIFocusedTextEntry(), &first);
    first.unfocus();
    EXPECT_EQ(state(), "-") << "what is given up goes to nobody";
}

TEST_F(Focus, TabGoesRound) {
    first.focus();
    for (const char* goes : {"Tab -> b", "Left Alt+Tab -> b; Tab -> c; Tab -> a; Left Shift+Tab -> c; "
                                         "Left Shift+Tab -> b"}) {
        second.setText("all");
        expectEach(goes);
        EXPECT_EQ(second.selectionLength(), 3) << "all is selected";
    }
    EXPECT_EQ(KXKey(KXKeyTab, 1), 0);

    // The only one that is polled keeps the focus.
    keyDown(KXKeyTab);
    for (int i = 0; i < 3; ++i)
        second.poll();
    EXPECT_EQ(state(), "b");
    keyUp(KXKeyTab);
    keyDown(KXKeyTab);
    second.poll();
    second.unfocus(); // takes the offer back
    expectEach("at 5 195 -> -");
}

TEST_F(Focus, KeysThatOpenedItAreNotForIt) {
    first.setText("kept");
    for (const KXKeyNumber key : {KXKeyReturn, KXKeyEscape, KXKeyTab, KXKeyBackspace, KXKeyLeft}) {
        keyDown(key);
        KXKeyWithDelayedRepeat(KXKeyLeft);
        type("t");
        first.focus();
        for (int held = 0; held < 40; ++held, step())
            EXPECT_EQ(poll(), 0) << key;
        EXPECT_EQ(state(), "a") << key;
        EXPECT_EQ(first.cursor(), 4);
        EXPECT_EQ(KXKeyWithDelayedRepeat(KXKeyLeft), key == KXKeyLeft ? -1 : 0) << "goes on for the game";
        keyUp(key);
        first.unfocus();
    }
    EXPECT_STREQ(first.text(), "kept");
}

TEST_F(Focus, NeverIsADestroyedWidgets) {
    auto one = std::make_unique<KXUITextEntry>(), two = std::make_unique<KXUITextEntry>();
    auto list = std::make_unique<KXUIListBox>();
    list->setFocus(-1);
    list.reset();
    EXPECT_EQ(_KXFocus::keyboardOwner(), nullptr);
    one->focus();
    keyDown(KXKeyTab);
    one->poll(); // offers the focus
    one.reset();
    two->poll();
    EXPECT_EQ(_KXFocus::keyboardOwner(), nullptr);
    first.focus();
    two.reset(); // the one that Shift and Tab would go to
    keyDown(KXKeyLeftShift);
    keyUp(KXKeyTab);
    keyDown(KXKeyTab);
    first.poll();
    EXPECT_EQ(state(), "a");

    // One that destroys the focused entry while it is polled itself.
    struct Destroyer : KXUITextEntry {
        std::unique_ptr<KXUITextEntry> victim = std::make_unique<KXUITextEntry>();
        int mouseOver() override { return victim.reset(), KXUITextEntry::mouseOver(); }
    } destroyer;
    destroyer.victim->focus();
    press();
    destroyer.poll();
    EXPECT_EQ(_KXFocus::keyboardOwner(), nullptr);
}

TEST_F(Focus, OutlivesTheLibrary) {
    first.focus();
    act("type a");
    window.reset();
    KXDeInit();
    first.unfocus();
    first.focus();
    for (const char* typed : {"type b", "type c"}) {
        poll();
        first.draw(); // without its font
        ASSERT_EQ(KXInit(), -1);
        poll();
        EXPECT_EQ(act(typed), -1);
        KXDeInit(); // without unfocus()
    }
    ASSERT_EQ(KXInit(), -1);
    EXPECT_STREQ(first.text(), "abc");
}

// What widgets hear goes by the order in which it came, whichever is polled first and however much comes in a
// step. Each act alone in a step is what the others are compared with.
TEST_F(Focus, StepsOfAnyLengthTellTheSame) {
    const char* const acts[] = {"click a",
                                "click b",
                                "click c",
                                "click L",
                                "click M",
                                "click 5 195",
                                "press a & at b & release",
                                "type xy",
                                "type \u00e9",
                                "Left",
                                "Backspace",
                                "Delete",
                                "Home",
                                "Left Shift+Left",
                                "Return",
                                "Left Ctrl+A",
                                "Left Ctrl+Z",
                                "Left Ctrl+Y",
                                "Down",
                                "Up",
                                "End",
                                "Escape",
                                "Tab",
                                "Left Shift+Tab",
                                "at L & wheel -1"};
    const auto after = [&](unsigned seed, unsigned most) {
        for (KXUITextEntry& entry : entries)
            entry.setText("one two");
        for (KXUIListBox& list : lists)
            list.setSelectedIndex(0), list.scrollTo(0);
        poll();
        first.unfocus();
        first.focus();
        std::minstd_rand chooses(seed), divides(seed + most);
        std::string all;
        unsigned entered = 0;
        bool tabbed = false;
        const unsigned now = _KXLogicCurrentTime + 1000;
        const auto end = [&] {
            step();
            _KXLogicCurrentTime = now; // steps take no time here: clicks are as near to one another
            poll();
            for (const KXUITextEntry& entry : entries)
                entered += entry.entered() ? 1 : 0;
        };
        for (int act = 0; act < 10; ++act) {
            const std::string does = acts[chooses() % std::size(acts)];
            all += does + ", ";
            // Who comes next is known once it is polled, so nothing else must move the keyboard before that.
            const bool moves =
                does.ends_with("Tab") || does.starts_with("click") || does.starts_with("press");
            if (tabbed && moves)
                end(), end(), tabbed = false;
            tabbed |= does.ends_with("Tab");
            for (std::size_t at = 0, next; at != does.npos; at = next == does.npos ? next : next + 3) {
                next = does.find(" & ", at);
                doAtOnce(does.substr(at, next - at));
            }
            if (divides() % most == 0)
                end();
        }
        end(), end(), end();
        for (const KXUITextEntry& entry : entries)
            all += entry.text() + ("|" + std::to_string(entry.cursor())) + " " +
                   std::to_string(entry.selectionLength()) + ", ";
        for (KXUIListBox& list : lists)
            all +=
                std::to_string(list.selectedIndex()) + "@" + std::to_string(list.firstVisibleIndex()) + " ";
        return all + state() + (most > 1 ? "" : " " + std::to_string(entered));
    };
    for (KXUIListBox& list : lists)
        for (int row = 0; row < 20; ++row)
            list.add("xyz");
    for (unsigned seed = 0; seed < 300; ++seed) {
        backwards = seed % 2;
        const std::string alone = after(seed, 1);
        for (unsigned most : {3u, 100u})
            ASSERT_EQ(after(seed, most), alone.substr(0, alone.rfind(' '))) << seed;
    }
}

TEST_F(Focus, LeavesThePlatformsTextInputAsItWas) {
    for (bool active : {false, true}) {
        active ? SDL_StartTextInput() : SDL_StopTextInput();
        first.focus();
        EXPECT_TRUE(SDL_IsTextInputActive());
        lists[0].setFocus(-1);
        EXPECT_TRUE(SDL_IsTextInputActive());
        lists[0].setFocus(0);
        EXPECT_EQ(SDL_IsTextInputActive() == SDL_TRUE, active);
    }
}

TEST_F(Focus, ThePointerStaysWithTheWidgetThatIsDragged) {
    first.setText("some text");
    for (int i = 0; i < 30; ++i)
        lists[0].add("row");
    act("press a, at 295 12, at 295 25"); // over the list's scroll bar
    EXPECT_EQ(lists[0].firstVisibleIndex(), 0);
    const int selected = first.selectionLength();
    EXPECT_GT(selected, 0);
    act("release, press 295 12, at 295 25");
    EXPECT_GT(lists[0].firstVisibleIndex(), 0);
    act("at a");
    EXPECT_EQ(first.selectionLength(), selected);
}
} // namespace
