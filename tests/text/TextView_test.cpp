#include "text/TextView.h"

#include "ui/UITest.h"

#include "text/KXUIGlobalFont.h"

#include <Kobaltrix/KXFont.h>

#include <random>

namespace {
struct TextView : UITest {
    void look(float width, bool follows = true) {
        view.update(edit, _KXUIGlobalFont, width, masked, follows);
    }
    float widthOf(std::size_t begin, std::size_t end) const {
        const std::string text = masked ? std::string(edit.characterAt(end) - edit.characterAt(begin), '*')
                                        : edit.text().substr(begin, end - begin);
        return _KXUIGlobalFont->advance(text.c_str());
    }
    _KXTextEdit edit;
    _KXTextView view;
    bool masked = false;
};

TEST_F(TextView, PlacesCharactersWhereTheFontDoes) {
    edit.setText("AVAToé🙂{fi} i");
    for (bool asterisks : {false, true}) {
        masked = asterisks;
        look(1000);
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
    std::mt19937 random(3);
    const auto below = [&random](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    constexpr const char* pieces[] = {"a", "éW", "iiiii iiii", "🙂🙂", "the quick brown fox "};
    for (int round = 0; round < 3000; ++round) {
        const auto step = static_cast<_KXCursorStep>(below(6));
        if (below(2))
            edit.move(step, below(2));
        else if (below(3))
            edit.insert(pieces[below(std::size(pieces))]);
        else
            edit.erase(step);
        masked = below(8) == 0;
        const float width = round % 500 < 400 ? 60.0f : static_cast<float>(below(40));
        look(width);
        const float cursor = view.xOf(edit.cursor());
        ASSERT_GE(cursor, 0);
        ASSERT_LE(cursor, width + 0.01f) << edit.text();
        const std::size_t first = view.positionUnder(0), end = edit.text().size();
        ASSERT_LE(first, edit.cursor());
        // A character more in front would not have fitted.
        if (first > 0 && view.xOf(end) < width) {
            ASSERT_GT(widthOf(edit.before(first), end), width - 1) << edit.text();
        }
        if (first > 0 && width > 40) {
            ASSERT_LT(first, edit.cursor()); // what Backspace takes is seen
        }
    }
}

TEST_F(TextView, StaysAtTheStartUnlessItFollows) {
    edit.setText("The quick brown fox jumps over the lazy dog");
    look(60);
    EXPECT_GT(view.positionUnder(0), 20u);
    look(60, false);
    EXPECT_EQ(view.positionUnder(0), 0u);
    EXPECT_EQ(view.positionUnder(-1000), 0u);
    look(60);
    EXPECT_EQ(view.positionUnder(-1000), 0u); // dragged out of the box, far to the left
}
} // namespace
