// Tooltips: when they come and go, and where they stand.

#include "UITest.h"

namespace {
struct Tooltip : UITest {
    Tooltip() {
        save.setText("Save");
        save.setOrigin({20, 20});
        save.setTooltip("Writes the level");
        plain.setText("Plain");
        plain.setOrigin({100, 20});
    }
    ~Tooltip() override { KXUISetTheme({}); }
    int poll() override { return save.clicked(KXMouseLeft) | plain.clicked(KXMouseLeft); }
    void drawAll() {
        fill({0.2f, 0.3f, 0.4f, 1});
        save.draw();
        plain.draw();
        if (over)
            over->draw();
        KXUIDrawTooltip();
    }
    /// Where the background of a tooltip is seen after a frame; an empty rectangle for none.
    KXRect tip() {
        drawAll();
        const Image image = Image::of(*window);
        background = 0;
        KXPoint least = {1e6f, 1e6f}, most = {-1, -1};
        for (int y = 0; y < image.height; ++y)
            for (int x = 0; x < image.width; ++x)
                if (image.at(x, y).isNear({255, 255, 224, 255}, 2)) {
                    ++background;
                    least = {std::min(least.x, float(x)), std::min(least.y, float(y))};
                    most = {std::max(most.x, float(x)), std::max(most.y, float(y))};
                }
        return most.x < 0 ? KXZeroRect : KXRect{least, {most.x - least.x + 1, most.y - least.y + 1}};
    }
    std::string state() override { return tip().size.width > 0 ? "tip" : "-"; }

    KXUIButton save, plain;
    _KXUIWidget* over = nullptr;
    float background = 0; // pixels of it that tip() has seen
};

// Half a second is 30 steps.
TEST_F(Tooltip, ComesWhereThePointerRestsAndGoesWithWhatTheUserDoes) {
    expectEach("wait 99 -> -; at 30 30 -> -; wait 29 -> -; wait 1 -> tip; at 32 31 -> tip; at 110 30 -> -;"
               "wait 99 -> -; at 30 30 -> -; wait 29 -> -; at 36 30 -> -; wait 29 -> -; wait 1 -> tip;"
               "press -> -; release -> told -; wait 99 -> -; at 300 150 -> -; at 30 30 -> -; wait 30 -> tip;"
               "Left Shift -> -; wait 99 -> -; at 300 150 -> -; press -> -; at 30 30 -> -; wait 99 -> -");
    release();
    KXUITheme theme;
    theme.tooltip.delay = -5;
    KXUISetTheme(theme);
    expectEach("at 300 150 -> -; at 30 30 -> tip");
    save.setEnabled(0); // why not is what one wants to know
    expectEach("wait 1 -> tip");
    save.setVisible(0);
    expectEach("wait 1 -> -");
    save.setVisible(-1);
    KXUIButton cover; // what was drawn last is on top
    cover.setRect({0, 0}, {320, 100});
    over = &cover;
    expectEach("wait 1 -> -");
    over = nullptr;
    expectEach("wait 1 -> tip");
    save.setTooltip("");
    EXPECT_EQ(save.tooltip(), nullptr);
    expectEach("wait 1 -> -");
}

TEST_F(Tooltip, StaysInsideWhatIsDrawnInto) {
    static constexpr const char* longOne =
        "A tooltip that is long enough for more than a single line of its box";
    save.setTooltip(longOne);
    save.setRect({0, 0}, {640, 400});
    const auto tipAt = [&](int x, int y) {
        moveMouse(-1, -1);
        tip();
        moveMouse(x, y);
        tip();
        step(40);
        return tip();
    };
    const float wide = tipAt(30, 30).size.width;
    save.setTooltip("\u0645\u0644\u0641"); // from right to left, in a box of its own width
    const KXRect narrow = tipAt(30, 30);
    EXPECT_LT(narrow.size.width, wide / 4);
    EXPECT_LT(background, narrow.size.width * narrow.size.height - 20) << "there is ink in it";
    save.setTooltip(longOne);
    for (const KXSize logical : {KXSize{320, 200}, {160, 400}}) {
        window->setLogicalSize({logical, KXScalingStretch});
        window->setRenderContext();
        for (const KXPoint at : {KXPoint{30, 30}, {310, 30}, {310, 190}, {5, 195}}) {
            const KXRect tip = tipAt(int(at.x), int(at.y));
            EXPECT_GT(tip.size.height, 20) << at.x;
            EXPECT_TRUE(tip.origin.x >= 1 && tip.origin.x + tip.size.width <= 319) << at.x;
            EXPECT_TRUE(tip.origin.y >= 1 && tip.origin.y + tip.size.height <= 199) << at.y;
            EXPECT_FALSE(at.y >= tip.origin.y && at.y <= tip.origin.y + tip.size.height) << at.y;
        }
    }
}

TEST_F(Tooltip, IsTheOneOfTheWindowThatThePointerIsIn) {
    KXWindow other("Other", {320, 200});
    const auto tipsAfter = [&](unsigned count) {
        step(count);
        other.setRenderContext();
        fill({0, 0, 0, 1});
        save.draw();
        KXUIDrawTooltip();
        const bool inOther = Image::of(other).at(40, 55).r > 200;
        window->setRenderContext();
        return state() + (inOther ? " other" : "");
    };
    moveMouse(30, 30);
    EXPECT_EQ(tipsAfter(0), "-");
    EXPECT_EQ(tipsAfter(32), "tip") << "the other window's frames change nothing";
    hands = KXTestUser(other.id());
    moveMouse(31, 30);
    EXPECT_EQ(tipsAfter(0), "-");
    EXPECT_EQ(tipsAfter(40), "- other");
}

TEST_F(Tooltip, CostsNothingInASteadyFrameAndEndsWithItsWidget) {
    auto gone = std::make_unique<KXUIButton>();
    gone->setRect({200, 20}, {50, 20});
    gone->setTooltip("Going");
    over = gone.get();
    act("at 210 30");
    drawAll();
    step(40);
    EXPECT_EQ(state(), "tip");
    EXPECT_EQ(allocationsOf([&] { drawAll(); }), 0u);
    over = nullptr;
    gone->draw();
    gone.reset();
    KXUIDrawTooltip();
    EXPECT_EQ(state(), "-");
}
} // namespace
