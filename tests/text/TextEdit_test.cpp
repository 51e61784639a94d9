#include "text/TextEdit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

namespace {
using Step = _KXCursorStep;

// Tables write a text with its cursor as a bar and, where something is selected, the anchor as a circumflex.
_KXTextEdit parse(const std::string& marked) {
    std::string text;
    std::size_t cursor = 0, anchor = std::string::npos;
    for (char c : marked)
        if (c == '|')
            cursor = text.size();
        else if (c == '^')
            anchor = text.size();
        else
            text += c;
    _KXTextEdit edit;
    edit.setText(text.c_str());
    edit.select(anchor == std::string::npos ? cursor : anchor, cursor);
    return edit;
}

std::string marked(const _KXTextEdit& edit) {
    std::string text = edit.text();
    const std::size_t cursor = edit.cursor(), anchor = edit.anchor();
    if (!edit.hasSelection())
        return text.insert(cursor, "|");
    text.insert(std::max(cursor, anchor), cursor > anchor ? "|" : "^");
    return text.insert(std::min(cursor, anchor), cursor > anchor ? "^" : "|");
}

TEST(TextEdit, TheCursorMoves) {
    const struct {
        const char* before;
        Step step;
        const char *moved, *selected;
    } rows[] = {
        {"a|bc", Step::Left, "|abc", "|a^bc"},
        {"|abc", Step::Left, "|abc", "|abc"},
        {"ab|c", Step::Right, "abc|", "ab^c|"},
        {"abc|", Step::Right, "abc|", "abc|"},
        {"a|bc", Step::Start, "|abc", "|a^bc"},
        {"a|bc", Step::End, "abc|", "a^bc|"},
        {"gré|🙂е", Step::Left, "gr|é🙂е", "gr|é^🙂е"},
        {"gré|🙂е", Step::Right, "gré🙂|е", "gré^🙂|е"},
        {"a^bcd|e", Step::Left, "a|bcde", "a^bc|de"}, // out of a selection to its edge
        {"a|bcd^e", Step::Right, "abcd|e", "ab|cd^e"},
        {"a^bcd|e", Step::End, "abcde|", "a^bcde|"},
        {"one two|", Step::WordLeft, "one |two", "one |two^"},
        {"one |two", Step::WordLeft, "|one two", "|one ^two"},
        {"one  t|wo", Step::WordLeft, "one  |two", "one  |t^wo"},
        {"  |", Step::WordLeft, "|  ", "|  ^"},
        {"|one two", Step::WordRight, "one| two", "^one| two"},
        {"one|  two.", Step::WordRight, "one  two|.", "one^  two|."},
        {"a.b|..c", Step::WordRight, "a.b..|c", "a.b^..|c"},
        {"x/y_2|", Step::WordLeft, "x/|y_2", "x/|y_2^"},
        {"|«Größe»", Step::WordRight, "«|Größe»", "^«|Größe»"},
        {"«|Größe»", Step::WordRight, "«Größe|»", "«^Größe|»"},
        {"мир | труд", Step::WordLeft, "|мир  труд", "|мир ^ труд"},
        {"a\u00A0|b", Step::WordLeft, "|a\u00A0b", "|a\u00A0^b"},
        {"|", Step::WordLeft, "|", "|"},
        {"|", Step::WordRight, "|", "|"},
    };
    for (const auto& row : rows)
        for (bool select : {false, true}) {
            _KXTextEdit edit = parse(row.before);
            edit.move(row.step, select);
            EXPECT_EQ(marked(edit), select ? row.selected : row.moved) << row.before << " " << select;
        }
}

TEST(TextEdit, Erasing) {
    const struct {
        const char* before;
        Step step;
        const char* after;
    } rows[] = {
        {"ab|c", Step::Left, "a|c"},           {"ab|c", Step::Right, "ab|"},
        {"|abc", Step::Left, "|abc"},          {"abc|", Step::Right, "abc|"},
        {"é🙂|", Step::Left, "é|"},         {"|é🙂", Step::Right, "|🙂"},
        {"a^bc|d", Step::Left, "a|d"},         {"a|bc^d", Step::WordRight, "a|d"},
        {"one two|", Step::WordLeft, "one |"}, {"|one two", Step::WordRight, "| two"},
    };
    for (const auto& row : rows) {
        _KXTextEdit edit = parse(row.before);
        const std::string old = edit.text();
        const bool changed = edit.erase(row.step);
        EXPECT_EQ(changed, edit.text() != old) << row.before;
        EXPECT_EQ(marked(edit), row.after) << row.before;
    }
}

TEST(TextEdit, InsertingReplacesTheSelectionWithinTheLimit) {
    const struct {
        const char *before, *text, *after;
        bool changes;
    } rows[] = {
        {"a|d", "bc", "abc|d", true},
        {"a^xy|d", "é", "aé|d", true},
        {"a|xy^d", "xy", "axy|d", false},
        {"abc|de", "fgh", "abcf|de", true}, // no more than six fit
        {"^abcdef|", "1234567", "123456|", true},
        {"äöüß|é🙂", "x", "äöüß|é🙂", false},
        {"äöü^ß|é🙂", "xy", "äöüx|é🙂", true},
        {"a^b|c", "", "a^b|c", false},
        {"a^b|c", "\x07\x1b", "a^b|c", false},
        {"|", "a\tb", "a b|", true},
        {"|", "\na\r\nb\rc\n", "a b c|", true},
        {"|", "a\n\nb", "a  b|", true},
        {"|", "a\u2028b\u0085c\vd", "a b c |", true},
        {"|", "\x7f\u0080\u009fq", "q|", true},
        {"|", "\n\r\n", "|", false},
        {"|", "\xff\xc3", "?\?|", true},
        {"|", "\xed\xa0\x80x", "?\?\?x|", true},
        {"|", "\xe2\x82", "?\?|", true},
        {"|", nullptr, "|", false},
    };
    for (const auto& row : rows) {
        _KXTextEdit edit = parse(row.before);
        edit.setMaximumLength(6);
        EXPECT_EQ(edit.insert(row.text), row.changes) << row.before;
        EXPECT_EQ(marked(edit), row.after) << row.before;
    }
}

TEST(TextEdit, TheWholeTextIsSetAndCut) {
    _KXTextEdit edit = parse("a^b|c");
    edit.setText("x\ny\xc3");
    EXPECT_EQ(marked(edit), "x y?|");
    edit.setText(edit.text().c_str());
    EXPECT_EQ(marked(edit), "x y?|");
    edit.select(1, 4);
    edit.setMaximumLength(2);
    EXPECT_EQ(marked(edit), "x^ |");
    EXPECT_EQ(edit.length(), 2u);
    edit.setText("🙂éa");
    EXPECT_EQ(marked(edit), "🙂é|");
    edit.setText(nullptr);
    EXPECT_EQ(marked(edit), "|");
}

TEST(TextEdit, WordsAreSelected) {
    const struct {
        const char* text;
        std::size_t from, to;
        const char *selected, *secretly;
    } rows[] = {
        {"one two  three", 5, 5, "one ^two|  three", "^one two  three|"},
        {"one two  three", 7, 7, "one two^  |three", "^one two  three|"},
        {"one two  three", 14, 14, "one two  ^three|", "^one two  three|"},
        {"one two  three", 5, 10, "one ^two  three|", "^one two  three|"},
        {"one two  three", 10, 1, "|one two  three^", "^one two  three|"},
        {"one two  three", 5, 1, "|one two^  three", "^one two  three|"},
        {"(größe)", 4, 4, "(^größe|)", "^(größe)|"},
        {"(größe)", 0, 0, "^(|größe)", "^(größe)|"},
        {"", 5, 9, "|", "|"},
    };
    for (const auto& row : rows)
        for (bool secret : {false, true}) {
            _KXTextEdit edit;
            edit.setText(row.text);
            edit.setSecret(secret);
            edit.selectWords(row.from, row.to);
            EXPECT_EQ(marked(edit), secret ? row.secretly : row.selected) << row.text << row.from;
        }
    _KXTextEdit secret = parse("one two| three");
    secret.setSecret(true);
    secret.move(Step::WordLeft, false);
    EXPECT_EQ(marked(secret), "|one two three");
    secret.move(Step::WordRight, false);
    EXPECT_EQ(marked(secret), "one two three|");
}

TEST(TextEdit, PositionsAndCharacters) {
    const _KXTextEdit edit = parse("aé🙂z|");
    const std::size_t positions[] = {0, 1, 3, 7, 8};
    for (std::size_t character = 0; character < 5; ++character) {
        EXPECT_EQ(edit.positionOfCharacter(character), positions[character]);
        EXPECT_EQ(edit.characterAt(positions[character]), character);
    }
    EXPECT_EQ(edit.positionOfCharacter(1000), 8u);
    _KXTextEdit within = edit;
    within.select(2, 6); // both in the middle of a character
    EXPECT_EQ(marked(within), "a^é|🙂z");
    within.select(1000, 1000);
    EXPECT_EQ(marked(within), "aé🙂z|");
}

// Anything that a hand, a game or a clipboard does leaves a well-formed line and positions between
// characters.
TEST(TextEdit, NothingBreaksIt) {
    std::mt19937 random(7);
    const auto below = [&random](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    _KXTextEdit edit;
    const std::function<void()> doings[] = {
        [&] {
            std::string bytes(below(6), 0);
            std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(1 + below(255)); });
            edit.insert(bytes.c_str());
        },
        [&] { edit.insert("é🙂"); },
        [&] { edit.move(static_cast<Step>(below(6)), below(2)); },
        [&] { edit.erase(static_cast<Step>(below(4))); },
        [&] { edit.select(below(40), below(40)); },
        [&] { edit.selectWords(below(40), below(40)); },
        [&] { edit.setMaximumLength(10 + below(30)); },
    };
    for (int round = 0; round < 20000; ++round) {
        doings[below(std::size(doings))]();
        _KXTextEdit again;
        again.setText(edit.text().c_str());
        ASSERT_EQ(again.text(), edit.text());
        ASSERT_EQ(again.length(), edit.length());
        ASSERT_LE(edit.length(), edit.maximumLength());
        for (std::size_t position : {edit.cursor(), edit.anchor()})
            ASSERT_EQ(edit.positionOfCharacter(edit.characterAt(position)), position);
    }
}
} // namespace
