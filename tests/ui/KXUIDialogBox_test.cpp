#include "UITest.h"

namespace {
struct Dialog : UITest {
    Dialog() { dialog.setOrigin({100, 50}); }
    int poll() override { return dialog.poll(), 0; }
    std::string state() override { return std::to_string(dialog.buttonIndexClicked()); }
    void addButtons(std::initializer_list<KXSize> sizes) {
        for (KXSize size : sizes) {
            dialog.addButton("");
            dialog.button(count++)->setSize(size);
        }
        dialog.resize();
    }
    KXUIDialogBox dialog;
    int count = 0;
};

TEST_F(Dialog, FitsItsMessageAndButtons) {
    expectSize(dialog, 0, 0);
    dialog.setMessage("Save the game?");
    const KXSize bounds = dialog._fontInUse()->stringBounds("Save the game?");
    const KXSize text = {std::trunc(bounds.width), std::trunc(bounds.height)};
    ASSERT_GT(text.width, 40);
    expectSize(dialog, text.width + 4, text.height + 4);
    addButtons({{20, 20}, {15, 10}});
    expectSize(dialog, text.width + 4, 24 + text.height + 4); // 20 + 2, then 22 + 2
    addButtons({{50.75f, 30.5f}, {99, 7}});
    const float row = 20 + 15 + 50 + 99;
    expectSize(dialog, row + 4 * 2 + 4, 34 + text.height + 4); // 24 + 2, 30.5 + 2 truncated, 32 + 2
    dialog.setPadding(5);
    expectSize(dialog, row + 4 * 5 + 10, 40 + text.height + 10); // 25, 30, 35.5 truncated, 40
    dialog.setMessage(nullptr);
    expectSize(dialog, row + 4 * 5 + 10, 40 + 10);

    // A message is cut at 512 bytes, and never within a character.
    const auto widthOf = [&](const std::string& message) {
        dialog.setMessage(message.c_str());
        return dialog.rect().size.width;
    };
    const std::string longest(512, 'i'), shorter(511, 'i');
    EXPECT_GT(widthOf(longest), widthOf(shorter));
    EXPECT_EQ(widthOf(longest + "iii"), widthOf(longest));
    EXPECT_EQ(widthOf(shorter + "\xc3\xa9"), widthOf(shorter));
}

TEST_F(Dialog, PlacesItsButtonsBesideItselfAndOnlyWhenLaidOut) {
    addButtons({{50, 20}, {50, 20}, {30, 10}});
    const float width = dialog.rect().size.width;
    const auto expectOrigins = [&](float first, float later) {
        for (int i = 0; i < 3; ++i)
            expectOrigin(*dialog.button(i), i == 0 ? first : later, 48);
    };
    EXPECT_EQ(width, 50 + 50 + 30 + 6 + 4);
    expectOrigins(98, 98 - width);
    dialog.setOrigin({200.75f, 50});
    expectOrigins(98, 98 - width);
    dialog.resize();
    expectOrigins(std::trunc(200.75f + width) - width - 2, 200 - width - 2);
}

TEST_F(Dialog, RemembersTheButtonClickedLast) {
    addButtons({{50, 20}, {50, 20}, {30, 10}});
    for (int i = 0; i < 3; ++i)
        dialog.button(i)->setOrigin({60 * static_cast<float>(i), 100});
    expectEach("click 5 5 -> -1; click 80 110 -> 1; click 80 190 -> 1; click 20 110 -> 0");
    dialog.setOrigin({200, 50});
    dialog.resize(); // two of them now share a corner: the one drawn last takes the click
    moveMouse(static_cast<int>(dialog.button(1)->rect().origin.x) + 5, 52);
    expectEach("click -> 2");
    for (int none : {-1, 3, INT_MIN, INT_MAX})
        EXPECT_EQ(dialog.button(none), nullptr);
}

TEST_F(Dialog, GivesItsButtonsItsOwnFont) {
    dialog.setMessage("Message");
    dialog.addButton("Shares the font of the user interface");
    EXPECT_EQ(dialog.setFontSize(20), 0);
    const float before = dialog.rect().size.height;
    ASSERT_EQ(dialog.setFont(testFont(), KXAliasModeTexture), -1);
    EXPECT_LT(dialog.rect().size.height, before); // 10 points instead of 12
    EXPECT_EQ(dialog.setFontSize(20), -1);
    EXPECT_GT(dialog.rect().size.height, before);
    dialog.addButton("Own");
    EXPECT_EQ(dialog.button(0)->_fontInUse()->getSize(), 12);
    EXPECT_EQ(dialog.button(1)->_fontInUse()->getSize(), 20);
    const float ownWidth = dialog.button(1)->rect().size.width;
    EXPECT_EQ(dialog.setFontSize(40), -1);
    EXPECT_GT(dialog.button(1)->rect().size.width, ownWidth * 1.7f);
}

TEST_F(Dialog, Looks) {
    const auto ask = [](KXUIDialogBox& box, const char* message, std::initializer_list<const char*> answers) {
        box.setMessage(message);
        for (const char* answer : answers)
            box.addButton(answer);
    };
    dialog.setButtonTextColor(1, 0, 0, 1); // reaches no button: there is none
    ask(dialog, "Save {C0.8,0,0,1}changes{EC} before leaving?", {"Save", "Leave", "Cancel"});
    KXUIDialogBox coloured;
    coloured.setOrigin({90, 130});
    coloured.setPadding(8);
    ask(coloured, "Delete 50%% of all?", {"Yes", "No"});
    coloured.setBackgroundColor(0.1f, 0.1f, 0.2f, 1);
    coloured.setTextColor(1, 1, 0.6f, 1);
    coloured.setBorderColor(1, 1, 1, 1);
    coloured.setButtonNormalBackgroundColor(0, 0.4f, 0, 1);
    coloured.setButtonDepressedBackgroundColor(0, 0.8f, 0, 1);
    coloured.setButtonBorderColor(1, 1, 0, 1);
    coloured.setButtonTextColor(0.8f, 1, 0.8f, 1);
    coloured.button(0)->setOrigin({98, 155});
    coloured.button(1)->setOrigin({148, 155});
    moveMouse(105, 160);
    press();
    coloured.poll();
    dialog.draw();
    coloured.draw();
    expectGolden(Image::of(*window), "ui/dialog");
}
} // namespace
