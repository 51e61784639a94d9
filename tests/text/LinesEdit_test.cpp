#include "text/LinesEdit.h"

#include "text/TextAreaView.h"
#include "text/TextTest.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXFont.h>

#include <algorithm>
#include <random>

namespace {
// What a text of many lines is to be, in the plainest way.
struct Plain {
    std::string text;
    std::size_t cursor = 0, anchor = 0;

    void put(const std::string& added) {
        const std::size_t begin = std::min(cursor, anchor);
        text.replace(begin, std::max(cursor, anchor) - begin, added);
        cursor = anchor = begin + added.size();
    }
    std::size_t lineStart(std::size_t position) const {
        return position == 0 ? 0 : text.rfind('\n', position - 1) + 1;
    }
};

struct LinesEdit : testing::Test {
    std::size_t below(std::size_t n) { return random() % n; }
    std::size_t anywhere() { return _KXCharacterStart(plain.text, below(plain.text.size() + 1)); }

    // Some character's width of everything, and pieces as long as several blocks.
    std::string someText() {
        static const char* const pieces[] = {"a", "\n", "é", "🙂\n", "word and ", "\tx", "\n\n\n", "ß_ß,."};
        std::string text;
        for (std::size_t count = below(10) ? 1 + below(3) : below(4000); count > 0; --count)
            text += pieces[below(std::size(pieces))];
        return text;
    }
    void change() {
        if (below(3) == 0) {
            plain.anchor = anywhere();
            plain.cursor = below(8) ? _KXNextCharacter(plain.text, plain.anchor) : anywhere();
            if (plain.text.size() > 40000)
                plain.anchor = 0, plain.cursor = plain.text.size() / 2;
            plain.anchor = _KXCharacterStart(plain.text, plain.anchor);
            plain.cursor = _KXCharacterStart(plain.text, plain.cursor);
            edit.select(plain.anchor, plain.cursor);
        }
        const std::size_t act = below(4);
        if (act == 0) {
            if (plain.anchor == plain.cursor)
                plain.anchor = _KXPreviousCharacter(plain.text, plain.cursor);
            plain.put("");
            edit.erase(_KXCursorStep::Left);
        } else if (act == 1) {
            if (plain.anchor == plain.cursor)
                plain.cursor = _KXNextCharacter(plain.text, plain.cursor);
            plain.put("");
            edit.erase(_KXCursorStep::Right);
        } else {
            const std::string added = someText();
            plain.put(added);
            act == 2 ? edit.insert(added.c_str()) : edit.type(added.c_str());
        }
    }
    void expectLookups() {
        const std::size_t position = anywhere(), line = edit.lineOf(position);
        EXPECT_EQ(line,
                  static_cast<std::size_t>(std::count(
                      plain.text.begin(), plain.text.begin() + static_cast<std::ptrdiff_t>(position), '\n')));
        EXPECT_EQ(edit.lineStart(line), plain.lineStart(position));
        EXPECT_EQ(edit.lineEnd(line), std::min(plain.text.find('\n', position), plain.text.size()));
        const std::size_t character = edit.characterAt(position);
        EXPECT_EQ(character, _KXCountCharacters(plain.text.substr(0, position)));
        EXPECT_EQ(edit.positionOfCharacter(character), position);
        EXPECT_EQ(edit.before(position), _KXPreviousCharacter(plain.text, position));
        EXPECT_EQ(edit.after(position), _KXNextCharacter(plain.text, position));
        EXPECT_EQ(edit.length(), _KXCountCharacters(plain.text));
        const std::size_t other = anywhere(), end = std::max(position, other);
        const std::size_t begin = std::min({position, other, end});
        EXPECT_EQ(edit.part(begin, end), plain.text.substr(begin, end - begin));
    }
    std::mt19937 random{7};
    _KXLinesEdit edit;
    Plain plain;
};

TEST_F(LinesEdit, IsAPlainTextThatAnyChangesAreMadeTo) {
    for (int round = 0; round < 20; ++round) {
        const std::string before = edit.text();
        edit.setText(before.c_str()); // what was done cannot be taken back
        plain.cursor = plain.anchor = 0;
        for (int i = 0; i < 150; ++i) {
            change();
            expectLookups();
            ASSERT_EQ(edit.cursor(), plain.cursor);
            ASSERT_TRUE(edit.text() == plain.text) << round << ' ' << i;
        }
        std::vector<std::string> states;
        while (states.push_back(edit.text()), edit.undo())
            EXPECT_NE(edit.text(), states.back());
        EXPECT_EQ(edit.text(), before);
        for (; states.size() > 1; states.pop_back())
            ASSERT_TRUE(edit.redo());
        EXPECT_FALSE(edit.redo());
        EXPECT_EQ(edit.text(), plain.text);
    }
}

TEST_F(LinesEdit, HoldsLinesOfWhateverIsPutIn) {
    edit.setMaximumLength(8);
    for (const auto& [given, lines] : {std::pair{"a\r\nb\rc\n\rd", "a\nb\nc\n\nd"},
                                       {"\xC2\x85 \xE2\x80\xA8\v\f", "\n \n\n\n"},
                                       {"\x1b\t\x7f\xff\xc3", "\t??"},
                                       {"é🙂\n3456789", "é🙂\n34567"},
                                       {nullptr, ""}}) {
        edit.setText(given);
        EXPECT_EQ(edit.text(), lines);
        EXPECT_EQ(edit.cursor(), 0u);
    }
    edit.insert("12\n4");
    edit.selectAll();
    edit.insert("123456789\n");
    EXPECT_EQ(edit.text(), "12345678") << "what is replaced makes room";
    edit.setMaximumLength(3);
    EXPECT_EQ(edit.text(), "123");
    EXPECT_FALSE(edit.undo()) << "it would be longer again";
}

TEST_F(LinesEdit, WordsAndLinesAreSelected) {
    edit.setText("one, two\n\n  three\n");
    const std::tuple<std::size_t, std::size_t, bool, const char*> rows[] = {
        {5, 5, false, "two"},
        {8, 8, false, ""},
        {9, 9, false, ""},
        {10, 10, false, "  "},
        {13, 6, false, "two\n\n  three"},
        {3, 3, true, "one, two\n"},
        {9, 9, true, "\n"},
        {99, 99, true, ""},
        {12, 0, true, "one, two\n\n  three\n"}};
    for (const auto& [from, to, byLines, selected] : rows) {
        byLines ? edit.selectLines(from, to) : edit.selectWords(from, to);
        EXPECT_EQ(edit.selectedText(), selected) << from;
    }
    edit.select(5, 5);
    for (const std::size_t end : {8u, 17u, 18u}) { // by words, over the ends of lines
        edit.move(_KXCursorStep::WordRight, false);
        EXPECT_EQ(edit.cursor(), end);
    }
    edit.setText(std::string(400'000, 'x').c_str());
    edit.move(_KXCursorStep::WordRight, false);
    EXPECT_LT(edit.cursor(), 200'000u) << "nobody waits for the end of such a word";
}

TEST_F(LinesEdit, WhatCanBeTakenBackIsBounded) {
    const std::string megabyte(1 << 20, 'x');
    for (int i = 0; i < 40; ++i)
        edit.insert(megabyte.c_str());
    int times = 0;
    while (edit.undo())
        ++times;
    EXPECT_TRUE(times >= 12 && times <= 16) << times;
}
} // namespace
