#include "text/TextView.h"

#include "text/TextTest.h"

#include <Kobaltrix/KXFont.h>

namespace {
struct TextView : TextTest {
    void look(float width, bool follows = true) { view.update(edit, &font, width, masked, follows); }
    float widthOf(std::size_t begin, std::size_t end) const {
        const std::string text = edit.text().substr(begin, end - begin);
        return font.advance(
            (masked ? std::string(edit.characterAt(end) - edit.characterAt(begin), '*') : text).c_str());
    }
    KXFont font{testFont(), KXAliasModeTexture};
    _KXTextEdit edit;
    _KXTextView view;
    bool masked = false;
};

TEST_F(TextView, PlacesCharactersWhereTheFontDoes) {
    edit.setText("AVAToé🙂{fi} i");
    for (const char* shown : {edit.text().c_str(), "*************"}) {
        masked = *shown == '*';
        look(1000);
        EXPECT_STREQ(view.shown(), shown);
        for (std::size_t p = 0; p < edit.text().size(); p = edit.after(p)) {
            const float begin = view.xOf(p), end = view.xOf(edit.after(p));
            EXPECT_NEAR(begin, widthOf(0, p), 1) << p;
            EXPECT_EQ(view.positionUnder((begin + end) / 2), p);
            EXPECT_EQ(view.positionNearest(begin + 0.1f), p);
            EXPECT_EQ(view.positionNearest(end - 0.1f), edit.after(p));
        }
        EXPECT_EQ(view.positionNearest(-50), 0u);
        EXPECT_EQ(view.positionNearest(3e38f), edit.text().size());
        EXPECT_EQ(view.positionUnder(3e38f), edit.text().size());
    }
}

// A text of any length, edited anywhere: the cursor is in view, and the box is not emptier than it must be.
TEST_F(TextView, FollowsTheCursor) {
    const auto below = [this](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    for (int round = 0; round < 3000; ++round) {
        const char* const pieces[] = {"a", "éW", "iiiii iiii", "🙂🙂", "the quick brown fox "};
        if (below(2))
            edit.move(static_cast<_KXCursorStep>(below(6)), below(2));
        else if (below(3))
            edit.insert(pieces[below(5)]);
        else
            edit.erase(static_cast<_KXCursorStep>(below(6)));
        masked = below(8) == 0;
        const float width = round % 500 < 400 ? 60.0f : static_cast<float>(below(40));
        look(width);
        const float cursor = view.xOf(edit.cursor());
        ASSERT_TRUE(cursor >= 0 && cursor <= width + 0.01f) << edit.text();
        const std::size_t first = view.positionUnder(0), end = edit.text().size();
        // What Backspace takes is seen. A character more in front would not have fitted.
        ASSERT_LE(first, first > 0 && width > 40 ? edit.before(edit.cursor()) : edit.cursor());
        ASSERT_TRUE(first == 0 || view.xOf(end) >= width || widthOf(edit.before(first), end) > width - 1)
            << edit.text();
    }
}

TEST_F(TextView, LooksAgainWhenSomethingChanged) {
    edit.setText("The quick brown fox jumps over the lazy dog");
    look(60);
    EXPECT_GT(view.positionUnder(0), 20u);
    look(60, false);
    EXPECT_EQ(view.positionUnder(0) + view.positionUnder(-1000), 0u);
    const float before = view.xOf(4);
    font.setSize(20);
    look(60);
    EXPECT_EQ(view.positionUnder(-1000), 0u); // dragged out of the box, far to the left
    look(60, false);
    EXPECT_GT(view.xOf(4), before);
    view.update(edit, nullptr, 60, false, true);
    EXPECT_STREQ(view.shown(), "");
}
} // namespace
