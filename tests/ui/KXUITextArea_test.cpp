#include "UITest.h"

#include "text/KXUIGlobalFont.h"

namespace {
/// A text area of eight rows of letters that are all as wide, and what a user does with it.
struct TextArea : UITest {
    TextArea() {
        area.setFont("/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf", KXAliasModeTexture);
        area.setFontSize(12);
        area.setRect({10, 10}, {200, 8 * rowHeight() + 6});
        poll();
    }
    int poll() override {
        const int told = area.poll();
        if (other)
            other->poll();
        return told;
    }
    static float rowHeight() { return 15; }
    /// "at 3 5" of the text is between the characters of a row in view, both counted from 0.
    KXPoint place(const std::string& name) const override {
        if (!name.starts_with("row"))
            return UITest::place(name);
        float row = 0, column = 0;
        std::sscanf(name.c_str(), "row %f column %f", &row, &column);
        return {13 + column * width, 13 + (row + 0.5f) * rowHeight()};
    }
    /// Line feeds are slashes.
    std::string state() override {
        std::string text = area.text();
        std::ranges::replace(text, '\n', '/');
        return (area.changed() ? "changed " : "") + text + "|" + selection();
    }
    std::string selection() const {
        const std::string start = std::to_string(area.selectionStart());
        return area.selectionLength() ? start + "+" + std::to_string(area.selectionLength()) : start;
    }
    void setLines(int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += "line " + std::to_string(i) + "\n";
        area.setText(text.c_str());
    }
    static constexpr float width = 7.22f;
    KXUITextArea area;
    std::unique_ptr<KXUITextEntry> other;
};

TEST_F(TextArea, TypingLinesAndMovingAmongThem) {
    expectEach(
        "type lost -> |0; click row 0 column 0, type one -> told changed one|3; Return -> told one/|4; "
        "type three & Return & type f\u00f6ur -> told changed one/three/f\u00f6ur|14; "
        "Up -> one/three/f\u00f6ur|8; Up -> one/three/f\u00f6ur|3; Down -> one/three/f\u00f6ur|8; "
        "End, Up, Down -> one/three/f\u00f6ur|9; Left Shift+Up -> one/three/f\u00f6ur|3+6; "
        "Down -> one/three/f\u00f6ur|9; "
        "Home -> one/three/f\u00f6ur|4; End -> one/three/f\u00f6ur|9; Up, Up -> one/three/f\u00f6ur|0; "
        "Left Ctrl+End, Down -> one/three/f\u00f6ur|14; Left Ctrl+Home -> one/three/f\u00f6ur|0; "
        "End, Delete -> told onethree/f\u00f6ur|3; Left Ctrl+Z -> told one/three/f\u00f6ur|3; "
        "Right, Backspace -> told onethree/f\u00f6ur|3; Left Ctrl+Y -> onethree/f\u00f6ur|3; "
        "Left Ctrl+Z, Left Ctrl+Z -> told one/three/|10; Left Ctrl+Z -> told one/three|9; "
        "Left Ctrl+Z -> told one/|4; "
        "Left Alt+Return, Left Ctrl+Return -> one/|4; Escape, type x -> one/|4");
    KXSetClipboardText("a\r\nb\tc");
    area.focus();
    expectEach("Left Ctrl+A, Left Ctrl+V -> told a/b\tc|5; Left Ctrl+A, Left Ctrl+X -> told |0");
    EXPECT_STREQ(KXClipboardText(), "a\nb\tc");
}

TEST_F(TextArea, TheMouseSelects) {
    area.setText("one two\nthree, four\n\nsix");
    expectEach("press row 1 column 2 -> one two/three, four//six|10; at row 0 column 4 -> one two/three, "
               "four//six|4+6; "
               "at row 0 column 30, release -> one two/three, four//six|7+3; wait 60, "
               "click row 1 column 1 & click row 1 column 1 -> one two/three, four//six|8+5; "
               "click row 1 column 1 -> one two/three, four//six|8+12; wait 60, "
               "press row 3 column 1 & release & press row 3 column 1 & at row 0 column 5 & release -> "
               "one two/three, four//six|4+20; wait 60, click row 2 column 0 -> one two/three, four//six|20; "
               "hold Left Shift, click row 7 column 9 -> one two/three, four//six|20+4; let Left Shift, "
               "click 300 190, type x -> one two/three, four//six|20+4");
}

TEST_F(TextArea, TabGoesOnUnlessItIsForTheText) {
    other = std::make_unique<KXUITextEntry>();
    const auto who = [&] {
        return KXUIFocusedTextWidget() == &area         ? "area"
               : KXUIFocusedTextWidget() == other.get() ? "other"
                                                        : "none";
    };
    EXPECT_STREQ(who(), "none");
    area.focus();
    area.setText("ab\n");
    EXPECT_EQ(KXUIFocusedTextEntry(), nullptr);
    EXPECT_STREQ((act("Tab"), who()), "other");
    EXPECT_EQ(KXUIFocusedTextEntry(), other.get());
    area.setTakesTabs(-1);
    area.focus();
    expectEach("End, Tab -> told ab\t/|3; Left Ctrl+Z -> told ab/|2");
    area.setTabsAreBlanks(-1);
    expectEach("Tab -> told ab  /|4; Tab -> told ab      /|8");
    EXPECT_STREQ((act("Left Ctrl+Tab"), who()), "other");
    area.focus();
    area.setReadOnly(-1);
    expectEach("Left Shift+Home, type x, Return, Backspace, Left Ctrl+X, Left Ctrl+V, Left Ctrl+Z -> "
               "ab      /|0+8");
    EXPECT_STREQ((act("Tab"), who()), "other");
    area.insert("game");
    EXPECT_STREQ(area.text(), "game\n");
}

TEST_F(TextArea, ScrollsToWhatIsDone) {
    setLines(100);
    const auto first = [&](const std::string& acts) { return act(acts), area.firstVisibleLine(); };
    EXPECT_EQ(first("at 50 50, wheel -1"), 3);
    EXPECT_EQ(first("wheel -1 & wheel -1"), 9);
    EXPECT_EQ(first("wheel 100"), 0);
    EXPECT_EQ(first("press 50 50, at 50 160, poll 14"), 4) << "a row each 100 ms or faster";
    EXPECT_EQ(area.positionOf(area.cursor()).line, 11);
    EXPECT_EQ(first("release"), 4);
    EXPECT_EQ(first("Left Ctrl+End"), 93);
    EXPECT_EQ(first("PageUp"), 93) << "as little as brings the cursor into view";
    EXPECT_EQ(first("PageUp"), 86);
    EXPECT_EQ(first("Left Ctrl+Home, PageDown"), 0);
    EXPECT_EQ(first("PageDown"), 7);
    // The bar.
    EXPECT_EQ(first("press 204 120"), 14) << "a page";
    EXPECT_EQ(first("poll 32"), 22);
    EXPECT_EQ(first("release, wheel 100, press 204 15, at 204 300"), 93);
    EXPECT_EQ(first("at 204 -50, release"), 0);
    EXPECT_EQ(area.scrollTo(50), -1);
    EXPECT_EQ(first("poll 1"), 50);
    EXPECT_EQ(area.scrollTo(100), -1);
    EXPECT_EQ(first("poll 1"), 93);
    EXPECT_EQ(area.scrollTo(101) + area.scrollTo(-1), 0);
    setLines(3);
    EXPECT_EQ(first("wheel -5"), 0);
}

TEST_F(TextArea, LinesAndColumnsAreNumbers) {
    area.setText("a\u00f6\n\nb");
    for (const auto& [characters, line, column, back] : {std::tuple{0, 0, 0, 0},
                                                         {2, 0, 2, 2},
                                                         {3, 1, 0, 3},
                                                         {4, 2, 0, 4},
                                                         {5, 2, 1, 5},
                                                         {INT_MAX, 2, 1, 5},
                                                         {INT_MIN, 0, 0, 0}}) {
        const KXTextPosition position = area.positionOf(characters);
        EXPECT_EQ(std::pair(position.line, position.column), std::pair(line, column));
        EXPECT_EQ(area.charactersBefore(position), back);
    }
    for (const auto& [line, column, characters] :
         {std::tuple{0, 99, 2}, {1, 99, 3}, {99, 0, 5}, {-1, 99, 0}, {2, INT_MIN, 4}, {INT_MAX, INT_MAX, 5}})
        EXPECT_EQ(area.charactersBefore({line, column}), characters);
    EXPECT_EQ(area.lineCount(), 3);
    EXPECT_STREQ(area.line(0), "a\u00f6");
    EXPECT_EQ(area.line(3), nullptr);
    EXPECT_EQ(area.line(-1), nullptr);
}

TEST_F(TextArea, WrappedRowsAreMovedThroughAndWhatIsComposedIsNoTextYet) {
    area.setWraps(-1);
    area.setText("some words that are too long for one row\nx"); // 24 characters fit
    area.focus();
    expectEach("End -> some words that are too long for one row/x|23; "
               "Down -> some words that are too long for one row/x|40; "
               "Home -> some words that are too long for one row/x|24; "
               "Down, Up -> some words that are too long for one row/x|24; "
               "press row 1 column 3, release -> some words that are too long for one row/x|27; "
               "compose \u00e4\u00f6 -> some words that are too long for one row/x|27");
    fill({});
    area.draw();
    expectGolden(Image::of(*window), "ui/text_area_composing");
    expectEach("Backspace -> some words that are too long for one row/x|27; " // the input method's
               "type \u00e9 -> told changed some words that are too lonég for one row/x|28");
}

// Letters that are all as wide make a model of a few lines.
TEST_F(TextArea, RandomKeysDoWhatTheyDoToAPlainText) {
    const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    std::string text;
    std::size_t cursor = 0, anchor = 0, wanted = 0;
    const auto startOf = [&](std::size_t at) { return at == 0 ? 0 : text.rfind('\n', at - 1) + 1; };
    const auto endOf = [&](std::size_t at) { return std::min(text.find('\n', at), text.size()); };
    const auto replace = [&](const std::string& by) {
        const std::size_t begin = std::min(cursor, anchor);
        text.replace(begin, std::max(cursor, anchor) - begin, by);
        cursor = anchor = begin + by.size();
    };
    const char* const keys[] = {"Left", "Right",     "Up",     "Down",  "Home",
                                "End",  "Backspace", "Delete", "Return"};
    area.focus();
    for (int i = 0; i < 3000; ++i) {
        const int key = below(16);
        const bool shift = below(3) == 0 && key < 6;
        if (key >= 9) {
            const std::string typed(1 + below(6), static_cast<char>('a' + below(26)));
            act("type " + typed);
            replace(typed);
        } else {
            act((shift ? "Left Shift+" : "") + std::string(keys[key]));
            const std::size_t start = startOf(cursor), end = endOf(cursor);
            const std::size_t left = std::min(cursor, anchor), right = std::max(cursor, anchor);
            const bool leaves = !shift && left != right && key < 2;
            if (key == 6 || key == 7) {
                if (left == right)
                    key == 6 ? cursor -= cursor > 0 : cursor += cursor < text.size();
                replace("");
            } else if (key == 8) {
                replace("\n");
            } else if (key == 2) {
                const std::size_t above = start == 0 ? 0 : startOf(start - 1);
                cursor = start == 0 ? 0 : std::min(above + wanted, start - 1);
            } else if (key == 3) {
                cursor = end == text.size() ? end : std::min(end + 1 + wanted, endOf(end + 1));
            } else {
                cursor = key == 0   ? (leaves ? left : cursor - (cursor > 0))
                         : key == 1 ? (leaves ? right : cursor + (cursor < text.size()))
                         : key == 4 ? start
                                    : end;
            }
            if (key < 6 && !shift)
                anchor = cursor;
        }
        if (key != 2 && key != 3)
            wanted = cursor - startOf(cursor);
        ASSERT_EQ(area.text(), text) << i;
        ASSERT_EQ(static_cast<std::size_t>(area.cursor()), cursor) << i << ' ' << key;
        ASSERT_EQ(static_cast<std::size_t>(area.selectionStart()), std::min(cursor, anchor)) << i;
        const int line = area.positionOf(area.cursor()).line - area.firstVisibleLine();
        ASSERT_TRUE(line >= 0 && line < 8) << "the cursor is in view";
    }
}

// A text of ten megabytes: of lines of any lengths, and one that is a single line.
TEST_F(TextArea, LongTextsCostNoMoreThanWhatIsInView) {
    std::string lines, line(10'000'000, 'x');
    for (int i = 0; lines.size() < 10'000'000; ++i)
        lines += i % 1000 == 0 ? std::string(5000, 'y') + "\n" : "short\n";
    for (const std::string& text : {lines, line}) {
        area.setText(text.c_str());
        area.focus();
        for (const char* where : {"Left Ctrl+End", "wheel 20", "Left Ctrl+Home", "Left Ctrl+Right"}) {
            act(where);
            unsigned long long before = area._layoutsMade();
            area.draw();
            EXPECT_LE(area._layoutsMade() - before, 0u) << "it was polled";
            before = area._layoutsMade();
            act("type z & Return & type z");
            area.draw();
            EXPECT_LE(area._layoutsMade() - before, 10u);
            before = area._layoutsMade();
            step();
            EXPECT_EQ(allocationsOf([&] { poll(), area.draw(); }), 0u);
            EXPECT_EQ(area._layoutsMade(), before);
        }
        EXPECT_EQ(area.length(), static_cast<int>(text.size()) + 12);
    }
}

TEST_F(TextArea, IsDrawn) {
    area.setText("Rows of text, a\ttab\n{C1,0,0,1}braces{EC}\n\u0627\u0644\u0644\u064a\u0644 "
                 "\u05dc\u05d9\u05dc\u05d4\nA line that is wider than its box\n5\n6\n7\n8\n9\n10");
    area.setShowsLineNumbers(-1);
    area.setFont(testFont(), KXAliasModeTexture);
    area.setFontSize(12);
    area.focus();
    area.select(10, 20);
    area.draw();
    KXUITextArea wrapped, empty;
    wrapped.setRect({220, 10}, {90, 110});
    wrapped.setWraps(-1);
    wrapped.setText("Words are wrapped, andsomeareverylong.\n\nMore");
    wrapped.draw();
    empty.setRect({220, 130}, {90, 60});
    empty.setPlaceholder("{C1,1,0,1}Nothing{EC} yet");
    empty.draw();
    expectGolden(Image::of(*window), "ui/text_area");
}
} // namespace
