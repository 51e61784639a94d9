// Captions and messages that are laid out.

#include "UITest.h"

namespace {
struct Captions : UITest {
    Captions() { setCaptions(KXUICaptionsLaidOut); }
    ~Captions() override { KXUISetTheme({}); }
    static void setCaptions(KXUICaptions captions) {
        KXUITheme theme;
        theme.captions = captions;
        KXUISetTheme(theme);
    }
    /// The room around what is red within a box, in whole pixels: left, top, right, bottom.
    std::array<int, 4> roomAround(KXRect box) const {
        const Image image = Image::of(*window);
        const int right = int(box.size.width), bottom = int(box.size.height);
        std::array<int, 4> room = {right, bottom, right, bottom};
        for (int y = 0; y < bottom; ++y)
            for (int x = 0; x < right; ++x)
                if (image.at(int(box.origin.x) + x, int(box.origin.y) + y).r > 150)
                    room = {std::min(room[0], x), std::min(room[1], y), std::min(room[2], right - 1 - x),
                            std::min(room[3], bottom - 1 - y)};
        return room;
    }
    std::array<int, 4> roomOf(KXUIButton& button) const {
        button.setNormalBackgroundColor(KXGreenColor);
        button.setTextColor(KXRedColor);
        button.draw();
        return roomAround(button.rect());
    }
};

TEST_F(Captions, StandInTheMiddle) {
    KXUIButton button;
    button.setText("HEMH");
    const KXSize fit = button.rect().size;
    EXPECT_EQ(fit.height, button._idealSizeForText("").height);
    for (const KXSize size : {fit, KXSize{100, 30}, {101, 31}, {61, 12}, {60, 13}}) {
        button.setRect({10, 20}, size);
        const auto [left, top, right, bottom] = roomOf(button);
        EXPECT_LE(std::abs(left - right), 1) << size.width;
        EXPECT_LE(std::abs(top - bottom), 1) << size.height;
        EXPECT_LT(top, size.height / 2);
    }
    setCaptions(KXUICaptionsPrinted); // as it always was: at the padding
    button.setRect({10, 20}, {100, 30});
    EXPECT_LE(roomOf(button)[0], 5);
}

TEST_F(Captions, AreNoFormatAndEndWhereTheirWidgetDoes) {
    KXUIButton button;
    for (const char* text : {"100%% of %d", "\u0645\u0644\u0641 \u062c\u062f\u064a\u062f"}) {
        button.setText(text);
        const KXTextLayout layout(*button._fontInUse(), text);
        EXPECT_EQ(button.rect().size.width, std::ceil(layout.size().width) + 6);
    }
    button.setText("Much too long for this");
    for (const float width : {80.0f, 40.0f, 25.0f}) {
        button.setRect({10, 20}, {width, 20});
        EXPECT_GE(roomOf(button)[0], 3);
        EXPECT_GE(roomOf(button)[2], 3);
        EXPECT_LT(roomOf(button)[2], 16) << "what fits is shown";
    }
    button.setSize({6, 20});
    EXPECT_EQ(roomOf(button)[0], 6) << "no room for anything";

    // The mark of a sub-menu has room beside the widest caption.
    KXUIMenu menu("Menu");
    menu.addMenuItemWithName("Short", nullptr, nullptr);
    auto* const sub = new KXUIMenu("The widest of them");
    menu.addSubMenu(sub);
    EXPECT_EQ(sub->rect().size.width, static_cast<float>(sub->itemWidth()) + 2 * 3 + 2 + 6);
}

TEST_F(Captions, OfADialogAreWrappedAboveARowOfButtons) {
    KXUIDialogBox dialog;
    dialog.setPadding(8);
    dialog.setMessage("Do you really want to leave before the night is over?");
    const KXSize wide = dialog.rect().size;
    dialog.setMessageWidth(100);
    const KXSize narrow = dialog.rect().size;
    EXPECT_LE(narrow.width, 116);
    EXPECT_GT(narrow.height - 16, 2.5f * (wide.height - 16));
    dialog.addButton("Stay");
    dialog.addButton("Leave");
    const KXSize stay = dialog.button(0)->rect().size, leave = dialog.button(1)->rect().size;
    expectSize(dialog, narrow.width, narrow.height + 8 + stay.height);
    const auto expectRow = [&](float right, float bottom) {
        expectOrigin(*dialog.button(1), right - 8 - leave.width, bottom - 8 - leave.height);
        expectOrigin(*dialog.button(0), right - 16 - leave.width - stay.width, bottom - 8 - stay.height);
    };
    dialog.setOrigin({50, 30});
    expectRow(50 + narrow.width, 30 + dialog.rect().size.height);
    dialog.setSize({200, 150});
    expectRow(250, 180);
    dialog.setMessageWidth(1); // the row is wider than that
    EXPECT_EQ(dialog.rect().size.width, stay.width + 8 + leave.width + 16);
    const std::string longer(2000, 'i');
    dialog.setMessageWidth(0);
    dialog.setMessage(longer.c_str());
    EXPECT_GT(dialog.rect().size.width, 2000) << "all of it";
}

TEST_F(Captions, Look) {
    KXUIButton fitted, wide, cut, right, coloured;
    KXUIToggleButton on;
    KXUIButton* const all[] = {&fitted, &wide, &cut, &right, &coloured, &on};
    const char* const captions[] = {"New game",
                                    "Wide",
                                    "Too long for its button",
                                    "\u0645\u0644\u0641 \u062c\u062f\u064a\u062f",
                                    "{C1,0.8,0,1}Gold{EC} & 50%",
                                    "\u0412\u043a\u043b\u044e\u0447\u0435\u043d\u043e"};
    for (std::size_t i = 0; i < std::size(all); ++i) {
        all[i]->setText(captions[i]);
        all[i]->setOrigin({10, 10 + 31 * static_cast<float>(i)});
    }
    wide.setSize({90, 26});
    cut.setSize({90, -1});
    on.setState(KXUIToggleButtonStateOn);
    KXUIMenu menu("File");
    menu.addMenuItemWithName("Save 50%", nullptr, nullptr, KXKeyLeftControl, KXKeyS);
    menu.addSubMenu(new KXUIMenu("The recent ones, of this week"));
    menu.addMenuItemWithName("\u05e9\u05dc\u05d5\u05dd", nullptr, nullptr);
    menu.setOrigin({125, 10});
    menu.click(KXMouseLeft);
    menu.poll();
    KXUIDialogBox dialog;
    dialog.setPadding(8);
    dialog.setMessageWidth(150);
    dialog.setMessageAlign(KXTextAlignCentre);
    dialog.setMessage("Do you {C0.8,0,0,1}really{EC} want to leave before dawn?");
    dialog.addButton("Stay");
    dialog.addButton("Leave");
    dialog.setOrigin({125, 105});
    for (KXUIButton* each : all)
        each->draw();
    menu.draw();
    dialog.draw();
    expectGolden(Image::of(*window), "ui/captions");
}
} // namespace
