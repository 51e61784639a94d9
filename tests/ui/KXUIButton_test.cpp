#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXUIButton.h>

#include "UITest.h"

#include <climits>
#include <cmath>

namespace {
/// A user who presses, looks, and lets go: whether the poll after the release reports a click.
int clickAt(UITest& user, _KXUIWidget& widget, int x, int y) {
    user.moveMouse(x, y);
    widget.clicked(0);
    user.press();
    widget.clicked(0);
    user.release();
    return widget.clicked(0);
}

struct Button : UITest {
    Button() { button.setOrigin({10, 10}); }
    /// The colour between border and caption.
    Pixel background(_KXUIWidget& widget) {
        widget.draw();
        const KXRect box = widget.rect();
        return Image::of(*window).at(static_cast<int>(box.origin.x) + 1, static_cast<int>(box.origin.y) + 1);
    }
    KXUIButton button;
};

constexpr Pixel normal = {128, 128, 128, 255}, dark = {64, 64, 64, 255};

TEST_F(Button, FitsItsCaption) {
    ASSERT_EQ(button.setText("Caption"), -1);
    const KXSize caption = KXUIGlobalFontStringBounds("Caption");
    const KXSize fit = {caption.width + 6, std::ceil(button._fontInUse()->ascender()) + 6};
    const struct {
        KXSize given, result;
    } rows[] = {{{-1, -1}, fit},
                {{100, -1}, {100, fit.height}},
                {{-1, 5}, {fit.width, 5}},
                {{-2, -0.5f}, {-2, -0.5f}},
                {{0, 1e9f}, {0, 1e9f}}};
    for (const auto& [given, result] : rows) {
        button.setSize(given);
        EXPECT_EQ(button.rect().size.width, result.width) << given.width;
        EXPECT_EQ(button.rect().size.height, result.height) << given.height;
    }
    EXPECT_EQ(button.setText(nullptr), 0);
    EXPECT_EQ(button.rect().size.height, 1e9f);

    EXPECT_EQ(button.setFontSize(30), 0); // the user-interface font is everyone's, but the caption fits again
    EXPECT_EQ(button.rect().size.width, fit.width);
    EXPECT_EQ(button.setText("Longer caption than before"), -1);
    EXPECT_GT(button.rect().size.width, fit.width);
    EXPECT_EQ(button.rect().origin.x, 10);
}

TEST_F(Button, AFontOfItsOwn) {
    ASSERT_EQ(button.setFont(testFont(), KXAliasModeTexture), -1);
    EXPECT_EQ(button._fontInUse()->getSize(), 9);
    button.setText("Caption");
    const KXSize small = button.rect().size;
    EXPECT_EQ(button.setFontSize(18), -1);
    EXPECT_GT(button.rect().size.width, small.width * 1.5f);

    KXClearGUIFontCache();
    const KXSize size = button.rect().size;
    EXPECT_EQ(button.setText("No font"), 0);
    EXPECT_EQ(button.setFontSize(9), 0);
    EXPECT_EQ(button.rect().size.width, size.width);
    EXPECT_EQ(background(button), normal);
    button.setSize({-1, -1}); // nothing to fit to
    EXPECT_EQ(button.rect().size.width, -1);
}

TEST_F(Button, IsClickedByThePressThatShows) {
    button.setText("OK");
    EXPECT_EQ(background(button), normal);
    for (const auto& [mouse, number] : {std::pair(SDL_BUTTON_LEFT, 0), std::pair(SDL_BUTTON_MIDDLE, 2)}) {
        moveMouse(15, 15);
        button.clicked(number);
        EXPECT_EQ(background(button), normal); // hovering does not show
        press(mouse);
        EXPECT_EQ(button.clicked(number), 0);
        EXPECT_EQ(background(button), dark);
        moveMouse(200, 100);
        EXPECT_EQ(button.clicked(number), 0);
        EXPECT_EQ(background(button), normal);
        moveMouse(15, 15);
        EXPECT_EQ(button.clicked(number), 0);
        release(mouse);
        EXPECT_EQ(button.clicked(number), -1);
        EXPECT_EQ(button.clicked(number), 0);
        EXPECT_EQ(background(button), normal);
    }
}

TEST_F(Button, ColoursAreCopiedWhenItIsMade) {
    button.setSize({30, 20});
    KXSetUIColor(KXRedColor, KXGreenColor, KXBlueColor, KXRedColor, KXRedColor, KXRedColor);
    KXUIButton later;
    KXSetUIColor({0, 0, 0, 1}, {0.5f, 0.5f, 0.5f, 1}, {0.25f, 0.25f, 0.25f, 1}, {0.25f, 0.25f, 1, 1},
                 {0.75f, 0, 0.75f, 1}, {1, 1, 1, 1});
    EXPECT_EQ(background(button), normal);
    later.setRect({50, 10}, {30, 20});
    EXPECT_EQ(background(later), (Pixel{0, 255, 0, 255}));
    EXPECT_EQ(Image::of(*window).at(50, 10), (Pixel{255, 0, 0, 255}));
    EXPECT_EQ(later.depressedBackgroundColor().b, 1);
    EXPECT_EQ(later.normalBackgroundColor().g, 1);
}

TEST_F(Button, CaptionsAreFormatsWithoutArguments) {
    const auto drawn = [&](const char* text) {
        return draw([&] {
            KXUIButton fresh;
            fresh.setText(text);
            fresh.setSize({200, 20});
            fresh.draw();
        });
    };
    EXPECT_EQ(differingPixels(drawn("50%% of all"), drawn("50% of all")), 0);
    EXPECT_GT(differingPixels(drawn("50% of all"), drawn("50 of all")), 0);
    EXPECT_GT(differingPixels(drawn("%s%n%d"), drawn("")), 20);
    EXPECT_GT(differingPixels(drawn("{C1,0,0,1}OK{EC}"), drawn("OK")), 0);
    drawn(std::string(100000, 'W').c_str());
    drawn("\xff\xc3");
}

TEST_F(Button, AToggleTurnsOnAndOff) {
    KXUIToggleButton toggle;
    toggle.setRect({10, 10}, {40, 20});
    EXPECT_EQ(toggle.state(), KXUIToggleButtonStateOff);
    EXPECT_EQ(background(toggle), normal);
    for (KXUIToggleButtonState state : {KXUIToggleButtonStateOn, KXUIToggleButtonStateOff}) {
        EXPECT_EQ(clickAt(*this, toggle, 20, 20), -1);
        EXPECT_EQ(toggle.state(), state);
        EXPECT_EQ(clickAt(*this, toggle, 100, 20), 0);
        EXPECT_EQ(toggle.state(), state);
    }
    toggle.click(0);
    EXPECT_EQ(toggle.clicked(0), -1);
    EXPECT_EQ(background(toggle), dark); // shows that it is on although no colour was chosen

    toggle.setOnBackgroundColor(KXGreenColor);
    toggle.setOnDepressedBackgroundColor(KXBlueColor);
    EXPECT_EQ(background(toggle), (Pixel{0, 255, 0, 255}));
    moveMouse(20, 20);
    toggle.clicked(0);
    press();
    toggle.clicked(0);
    EXPECT_EQ(background(toggle), (Pixel{0, 0, 255, 255}));
    release();
    toggle.clicked(0);
    EXPECT_EQ(background(toggle), dark); // the step of the click still shows the press
    toggle.clicked(0);
    EXPECT_EQ(background(toggle), normal);

    for (int other : {5, INT_MIN}) {
        toggle.setState(KXUIToggleButtonState(other));
        EXPECT_EQ(clickAt(*this, toggle, 20, 20), -1);
        EXPECT_EQ(toggle.state(), other);
        toggle.clicked(0);
        EXPECT_EQ(background(toggle), normal);
    }
}

TEST_F(Button, Looks) {
    KXUIButton plain, held, coloured, fixed, bare;
    KXUIToggleButton off, on;
    KXUIButton* const all[] = {&plain, &held, &coloured, &fixed, &bare, &off, &on};
    const char* const captions[] = {
        "New game", "Held", "{C1,0.8,0,1}Gold{EC} & 50%%", "Fixed size", nullptr, "Off", "Switched on"};
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
    moveMouse(155, 25);
    held.clicked(0);
    press();
    held.clicked(0);
    for (KXUIButton* each : all)
        each->draw();
    expectGolden(Image::of(*window), "ui/button");
}
} // namespace
