#include "text/TextEdit.h"

#include "util/Utf8.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {
// Tables write a text with its cursor as a bar and, where something is selected, the anchor as a circumflex.
_KXTextEdit parse(std::string text) {
    const std::size_t anchor = text.find('^');
    if (anchor != std::string::npos)
        text.erase(anchor, 1);
    const std::size_t cursor = text.find('|');
    text.erase(cursor, 1);
    _KXTextEdit edit;
    edit.setText(text.c_str());
    edit.setMaximumLength(std::max<std::size_t>(6, edit.length()));
    edit.select(anchor == std::string::npos ? cursor : anchor - (cursor < anchor), cursor);
    return edit;
}

std::string marked(const _KXTextEdit& edit) {
    EXPECT_EQ(edit.length(), _KXCountCharacters(edit.text()));
    EXPECT_EQ(edit.positionOfCharacter(edit.characterAt(edit.cursor())), edit.cursor());
    const bool backward = edit.cursor() < edit.anchor() || !edit.hasSelection();
    std::string text = edit.text();
    if (edit.hasSelection())
        text.insert(edit.selectionEnd(), backward ? "^" : "|");
    return text.insert(edit.selectionStart(), backward ? "|" : "^");
}

// The letters move to the left and right, by words to either side, to the start and the end; capital ones
// select. The signs erase to the left and right, by words to either side. A plus sign puts a text in.
void press(_KXTextEdit& edit, char key, const char* text = nullptr) {
    const std::size_t step = std::string("lrwest<>()").find(static_cast<char>(key | ' '));
    const std::string old = edit.text();
    bool changes = false;
    if (step < 6)
        edit.move(static_cast<_KXCursorStep>(step), key < 'a');
    else
        changes = key == '+' ? edit.insert(text) : edit.erase(static_cast<_KXCursorStep>(step - 6));
    EXPECT_EQ(changes, edit.text() != old) << key;
}

TEST(TextEdit, KeysMoveSelectAndErase) {
    // Steps: a key and what it makes of the text, a new text behind an equals sign, or, behind a plus sign,
    // what is put in and what that makes of the text. No more than six characters fit, but for longer texts.
    const std::string script =
        R"(= a|bc / l |abc / l |abc / r a|bc / R a^b|c / R a^bc| / R a^bc| / r abc| / r abc| / L ab|c^ /
s |abc / S |abc / r a|bc / S |a^bc / t abc| / t abc| / S |abc^ / l |abc / T ^abc| / L ^ab|c / L ^a|bc /
= é|🙂е / l |é🙂е / R ^é|🙂е / R ^é🙂|е / l |é🙂е / = a|bc^d / L |abc^d / r abc|d / = a^bc|d / T a^bcd| / l a|bcd /
= on  two.| / w on  two|. / w on  |two. / w |on  two. / w |on  two. / e on|  two. / e on  two|. / E on  two^.| /
e on  two.| / e on  two.| / = on  t|w / W on  |t^w / W |on  t^w / e on|  tw / = a.b|..c / e a.b..|c / w a.b|..c /
w a.|b..c / w a|.b..c / = x/y_2| / w x/|y_2 / = |«Öß» / e «|Öß» / E «^Öß|» / E «^Öß»| / = до | на / W |до ^ на /
= | / w | / e | / W | / E | / < | / > | / ( | / ) | / = ab|c / < a|c / > a| / > a| / < | / < | / = aé🙂| /
< aé| / l a|é / > a| / = a^bc|d / < a|d / = a|bc^d / ) a|d / = on tw| / ( on | / ( | / = |on tw / ) | tw / ) | /
)"
        "=  a\u00A0|b / w  |a\u00A0b / w | a\u00A0b / = | / +a\u2028b\u0085c\vd = a b c | / = | / "
        "+a\tb = a b| / = | / +\na\r\nb\rc\n = a b c| / = | / +a\n\nb = a  b| / = a^b|c / "
        "+\x07\x1b = a^b|c / + = a^b|c / = | / +\x7f\u0080\u009fq = q| / +\n\r\n = q| / +\xff\xc3 = q?\?| / "
        "= a|d / +bc = abc|d / = a^xy|d / +é = aé|d / = a|xy^d / +xy = axy|d / = abc|de / +fgh = abcf|de / "
        "= ^abcdef| / +1234567 = 123456| / "
        "= äöüß|é🙂 / +x = äöüß|é🙂 / = äöü^ß|é🙂 / +xy = äöüx|é🙂";
    _KXTextEdit edit;
    for (std::size_t at = 0, end = 0; end != std::string::npos; at = end + 3) {
        end = script.find(" /", at);
        const std::string step = script.substr(at, end - at);
        const std::size_t result = step[0] == '+' ? step.find(" = ") + 3 : 2;
        if (step[0] == '=')
            edit = parse(step.substr(2));
        else
            press(edit, step[0], step.substr(1, result - 4).c_str());
        EXPECT_EQ(marked(edit), step.substr(result)) << script.substr(0, at);
    }
}

TEST(TextEdit, TheWholeTextIsSetAndCut) {
    _KXTextEdit edit = parse("a^b|c");
    for (const auto& [text, after] :
         {std::pair{"x\ny\xc3", "x y?|"}, {"", "|"}, {nullptr, "|"}, {"🙂éax", "🙂éax|"}}) {
        edit.setText(text);
        EXPECT_EQ(marked(edit), after);
    }
    edit.select(5, 7); // the first is within a character
    EXPECT_EQ(marked(edit), "🙂^éa|x");
    edit.setMaximumLength(2);
    EXPECT_EQ(marked(edit), "🙂^é|");
    edit.setText((edit.text() + "ab").c_str());
    EXPECT_EQ(marked(edit), "🙂é|");
}

TEST(TextEdit, WordsAreSelected) {
    const std::string whole = "^one two  (größe)|";
    for (const auto& [from, to, selected] : {std::tuple{5, 5, "one ^two|  (größe)"},
                                             {7, 7, "one two^  |(größe)"},
                                             {13, 5, "one |two  (größe^)"},
                                             {1, 14, "^one two  (größe|)"},
                                             {99, 99, "one two  (größe^)|"}}) {
        _KXTextEdit edit = parse(whole);
        edit.selectWords(from, to);
        EXPECT_EQ(marked(edit), selected);
        edit.setSecret(true);
        edit.selectWords(from, to);
        EXPECT_EQ(marked(edit), whole);
        for (const char key : {'w', 'e'}) {
            press(edit, key);
            EXPECT_EQ(edit.cursor(), key == 'w' ? 0 : edit.text().size());
        }
    }
}
} // namespace
