#include "UITest.h"

namespace {
struct Button : UITest {
    Button() {
        button.setOrigin({10, 10});
        toggle.setRect({10, 10}, {40, 20});
    }
    int poll() override { return polled->clicked(KXMouseLeft); }
    /// The colour between border and caption, and how a toggle button stands.
    std::string state() override {
        polled->draw();
        const auto [x, y] = polled->rect().origin;
        const auto [r, g, b, a] = Image::of(*window).at(static_cast<int>(x) + 1, static_cast<int>(y) + 1);
        std::string color = g == 255 ? "green" : b == 255 ? "blue" : g == 128 ? "grey" : "dark";
        return polled == &toggle ? color + " " + std::to_string(toggle.state()) : color;
    }
    KXUIButton button;
    KXUIToggleButton toggle;
    _KXUIWidget* polled = &button;
};

TEST_F(Button, FitsItsCaption) {
    ASSERT_EQ(button.setText("Caption"), -1);
    const KXSize fit = button._idealSizeForText("Caption");
    expectFit(button, {-1, -1}, fit.width, fit.height);
    expectFit(button, {100, -1}, 100, fit.height);
    expectFit(button, {-1, 5}, fit.width, 5);
    expectFit(button, {-2, 1e9f}, -2, 1e9f);
    EXPECT_EQ(button.setText(nullptr), 0);
    EXPECT_EQ(button.rect().size.height, 1e9f);
    EXPECT_EQ(button.setFontSize(30), 0); // the user-interface font is everyone's, but the caption fits again
    EXPECT_EQ(button.rect().size.width, fit.width);

    ASSERT_EQ(button.setFont(testFont(), KXAliasModeTexture), -1);
    EXPECT_EQ(button._fontInUse()->getSize(), 9);
    EXPECT_EQ(button.setFontSize(18), -1);
    const float large = button.rect().size.width;
    EXPECT_GT(large, fit.width * 1.2f);
    KXClearGUIFontCache();
    EXPECT_EQ(button.setText("No font"), 0);
    EXPECT_EQ(button.setFontSize(9), 0);
    EXPECT_EQ(button.rect().size.width, large);
    EXPECT_EQ(state(), "grey");
    button.setSize({-1, -1}); // nothing to fit to
    EXPECT_EQ(button.rect().size.width, -1);
}

TEST_F(Button, ShowsThePressThatClicksIt) {
    button.setText("OK");
    expectEach("at 15 15 -> grey; press -> dark; at 200 100 -> grey; at 15 15 -> dark; "
               "release -> told dark; at 16 15 -> grey");
    press(KXMouseMiddle);
    EXPECT_EQ(button.clicked(KXMouseMiddle), 0);
    EXPECT_EQ(state(), "dark") << "whatever button is held";
}

// Wherever the user has put the window's edges.
TEST_F(Button, IsClickedInTheUnitsOfALogicalSize) {
    button.setText("OK");
    window->setLogicalSize({{80, 100}}); // twice as large, in the middle
    window->setRenderContext();
    const KXPoint middle = window->pointFromUnits({15, 15});
    EXPECT_EQ(middle.x, 80 + 30);
    moveMouse(15, 15); // a bar
    press();
    EXPECT_EQ(button.clicked(KXMouseLeft), 0);
    release();
    EXPECT_EQ(button.clicked(KXMouseLeft), 0);
    moveMouse(static_cast<int>(middle.x), static_cast<int>(middle.y));
    press();
    EXPECT_EQ(button.clicked(KXMouseLeft), 0);
    release();
    EXPECT_EQ(button.clicked(KXMouseLeft), -1);
}

TEST_F(Button, AToggleTurnsOnAndOff) {
    polled = &toggle;
    // Shows that it is on although no colour was chosen.
    expectEach("at 20 20 -> grey -1; click 20 20, at 100 20 -> told dark 0; click 100 20 -> dark 0; "
               "click 20 20, at 100 20 -> told grey -1");
    toggle.click(KXMouseLeft);
    toggle.setOnBackgroundColor(KXGreenColor);
    toggle.setOnDepressedBackgroundColor(KXBlueColor);
    expectEach("at 20 20 -> told green 0; press -> blue 0; release -> told dark -1; at 20 20 -> grey -1");
    toggle.setState(KXUIToggleButtonState(5));
    expectEach("click 20 20, at 100 20 -> told grey 5");
}

TEST_F(Button, Looks) {
    KXUIButton plain, held, coloured, fixed, bare;
    KXUIToggleButton off, on;
    KXSetUIColor(KXRedColor, KXGreenColor, KXBlueColor, KXRedColor, KXRedColor, {0, 0, 0, 1});
    KXUIButton later; // colours are copied when it is made
    KXSetUIColor({0, 0, 0, 1}, {0.5f, 0.5f, 0.5f, 1}, {0.25f, 0.25f, 0.25f, 1}, {0.25f, 0.25f, 1, 1},
                 {0.75f, 0, 0.75f, 1}, {1, 1, 1, 1});
    EXPECT_EQ(later.depressedBackgroundColor().b, 1);
    EXPECT_EQ(later.normalBackgroundColor().g, 1);
    KXUIButton* const all[] = {&plain, &held, &coloured, &fixed, &bare, &off, &on, &later};
    const char* const captions[] = {"New game",    "Held",  "{C1,0.8,0,1}Gold{EC} & 50%%",
                                    "Fixed size",  nullptr, "Off",
                                    "Switched on", "Later"};
    for (std::size_t i = 0; i < std::size(all); ++i) {
        all[i]->setText(captions[i]);
        all[i]->setOrigin({i % 2 ? 150.0f : 20.0f, 20 + 40 * static_cast<float>(i / 2)});
    }
    coloured.setNormalBackgroundColor(0.1f, 0.2f, 0.5f, 1);
    coloured.setBorderColor(1, 1, 1, 1);
    coloured.setTextColor(0.6f, 0.9f, 1, 1);
    fixed.setSize({120, 30});
    bare.setSize({60, 20});
    on.setState(KXUIToggleButtonStateOn);
    polled = &held;
    act("press 155 25");
    for (KXUIButton* each : all)
        each->draw();
    expectGolden(Image::of(*window), "ui/button");
}
} // namespace
