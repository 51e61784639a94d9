#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXUIButton.h>
#include <Kobaltrix/KXUIDialogBox.h>

#include "UITest.h"

#include <climits>
#include <cmath>

namespace {
struct Dialog : UITest {
    Dialog() { dialog.setOrigin({100, 50}); }
    void addButtons(std::initializer_list<KXSize> sizes) {
        for (KXSize size : sizes) {
            dialog.addButton("");
            dialog.button(count++)->setSize(size);
        }
        dialog.resize();
    }
    void expectSize(KXSize expected) {
        EXPECT_EQ(dialog.rect().size.width, expected.width);
        EXPECT_EQ(dialog.rect().size.height, expected.height);
    }
    void clickAt(int x, int y) {
        moveMouse(x, y);
        dialog.poll();
        press();
        dialog.poll();
        release();
        dialog.poll();
    }
    KXUIDialogBox dialog;
    int count = 0;
};

TEST_F(Dialog, FitsItsMessageAndButtons) {
    expectSize({0, 0});
    dialog.setMessage("Save the game?");
    const KXSize bounds = dialog._fontInUse()->stringBounds("Save the game?");
    const KXSize text = {std::trunc(bounds.width), std::trunc(bounds.height)};
    ASSERT_GT(text.width, 40);
    expectSize({text.width + 4, text.height + 4});

    addButtons({{20, 20}, {15, 10}});
    expectSize({text.width + 4, 24 + text.height + 4}); // 20 + 2, then 22 + 2
    addButtons({{50.75f, 30.5f}, {99, 7}});
    const float row = 20 + 15 + 50 + 99 + 4 * 2;
    expectSize({row + 4, 34 + text.height + 4}); // 24 + 2, 30.5 + 2 truncated, 32 + 2
    dialog.setPadding(5);
    expectSize({row + 12 + 10, 40 + text.height + 10}); // 25, 30, 35.5 truncated, 40
    dialog.setMessage(nullptr);
    expectSize({row + 12 + 10, 40 + 10});
}

TEST_F(Dialog, PlacesItsButtonsBesideItselfAndOnlyWhenLaidOut) {
    addButtons({{50, 20}, {50, 20}, {30, 10}});
    const float width = dialog.rect().size.width;
    const auto expectOrigins = [&](float x) {
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(dialog.button(i)->rect().origin.x, i == 0 ? x - 2 : x - width - 2);
            EXPECT_EQ(dialog.button(i)->rect().origin.y, 48);
        }
    };
    EXPECT_EQ(width, 50 + 50 + 30 + 6 + 4);
    expectOrigins(100);
    dialog.setOrigin({200.75f, 50});
    expectOrigins(100);
    dialog.resize();
    EXPECT_EQ(dialog.button(0)->rect().origin.x, std::trunc(200.75f + width) - width - 2);
    EXPECT_EQ(dialog.button(1)->rect().origin.x, 200 - width - 2);
}

TEST_F(Dialog, RemembersTheButtonClickedLast) {
    addButtons({{50, 20}, {50, 20}, {30, 10}});
    EXPECT_EQ(dialog.buttonIndexClicked(), -1);
    dialog.poll();
    EXPECT_EQ(dialog.buttonIndexClicked(), -1);
    for (int i = 0; i < 3; ++i)
        dialog.button(i)->setOrigin({60 * static_cast<float>(i), 100});
    clickAt(80, 110);
    EXPECT_EQ(dialog.buttonIndexClicked(), 1);
    clickAt(80, 190);
    EXPECT_EQ(dialog.buttonIndexClicked(), 1);
    clickAt(20, 110);
    EXPECT_EQ(dialog.buttonIndexClicked(), 0);
    dialog.resize(); // two of them now share a corner: the one drawn last takes the click
    dialog.setOrigin({200, 50});
    dialog.resize();
    clickAt(static_cast<int>(dialog.button(1)->rect().origin.x) + 5, 52);
    EXPECT_EQ(dialog.buttonIndexClicked(), 2);
    for (int none : {-1, 3, INT_MIN, INT_MAX})
        EXPECT_EQ(dialog.button(none), nullptr);
}

TEST_F(Dialog, MessagesAreCopied) {
    char* const heap = strdup("From the heap");
    dialog.setMessage("A literal");
    dialog.setMessage(heap);
    dialog.setMessage("A literal");
    dialog.setMessage(nullptr);
    dialog.setMessage(heap);
    std::free(heap); // still the caller's
    const auto drawn = [&](const char* text) {
        dialog.setMessage(text);
        dialog.setRect({0, 0}, {320, 64});
        return draw([&] { dialog.draw(); });
    };
    EXPECT_EQ(differingPixels(drawn("50%% more"), drawn("50% more")), 0);
    EXPECT_GT(differingPixels(drawn("%s%n"), drawn("")), 10);

    // Cut at 512 bytes, and never within a character.
    const auto widthOf = [&](const std::string& text) {
        dialog.setMessage(text.c_str());
        return dialog.rect().size.width;
    };
    const std::string longest(512, 'i');
    EXPECT_GT(widthOf(longest), widthOf(longest.substr(1)));
    EXPECT_EQ(widthOf(longest + "iii"), widthOf(longest));
    EXPECT_EQ(widthOf(longest.substr(1) + "\xc3\xa9"), widthOf(longest.substr(1)));
    EXPECT_EQ(widthOf(std::string(100000, 'i')), widthOf(longest));
}

TEST_F(Dialog, GivesItsButtonsItsOwnFont) {
    dialog.setMessage("Message");
    dialog.addButton("Shares the font of the user interface");
    EXPECT_EQ(dialog.button(0)->_fontInUse(), dialog._fontInUse());
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
    dialog.addButton(nullptr);
    EXPECT_EQ(dialog.button(2)->rect().size.width, 6);
}

TEST_F(Dialog, WithoutAFontItIsABox) {
    dialog.addButton("Before");
    KXClearGUIFontCache();
    KXUIDialogBox bare;
    for (KXUIDialogBox* box : {&dialog, &bare}) {
        box->setRect({10, 10}, {40, 30});
        box->addButton("Ignored");
        box->setMessage("Not drawn");
        box->setPadding(9);
        EXPECT_EQ(box->setFontSize(20), 0);
        EXPECT_EQ(box->rect().size.width, 40);
        box->poll();
        box->draw();
        EXPECT_EQ(Image::of(*window).at(20, 20), (Pixel{255, 255, 255, 255}));
    }
    EXPECT_NE(dialog.button(0), nullptr);
    EXPECT_EQ(dialog.button(1), nullptr);
    EXPECT_EQ(bare.button(0), nullptr);
}

TEST_F(Dialog, WildPaddingsAreHarmless) {
    dialog.setMessage("Message");
    addButtons({{50, 20}, {INFINITY, NAN}, {-1e30f, 3e38f}});
    for (int wild : {INT_MAX, INT_MIN, -3, 0, INT_MAX / 2}) {
        dialog.setPadding(wild);
        clickAt(100, 50);
        dialog.draw();
        dialog.setOrigin({static_cast<float>(wild) * 1e30f, NAN});
        dialog.resize();
        dialog.draw();
    }
    EXPECT_EQ(dialog.buttonIndexClicked(), -1);
}

TEST_F(Dialog, Looks) {
    dialog.setButtonTextColor(1, 0, 0, 1); // reaches no button: there is none
    dialog.setMessage("Save {C0.8,0,0,1}changes{EC} before leaving?");
    for (const char* caption : {"Save", "Leave", "Cancel"})
        dialog.addButton(caption);
    KXUIDialogBox coloured;
    coloured.setOrigin({90, 130});
    coloured.setPadding(8);
    coloured.setMessage("Delete 50%% of all?");
    for (const char* caption : {"Yes", "No"})
        coloured.addButton(caption);
    coloured.setBackgroundColor(0.1f, 0.1f, 0.2f, 1);
    coloured.setTextColor(1, 1, 0.6f, 1);
    coloured.setBorderColor(1, 1, 1, 1);
    coloured.setButtonNormalBackgroundColor(0, 0.4f, 0, 1);
    coloured.setButtonDepressedBackgroundColor(0, 0.8f, 0, 1);
    coloured.setButtonBorderColor(1, 1, 0, 1);
    coloured.setButtonTextColor(0.8f, 1, 0.8f, 1);
    for (int i = 0; i < 2; ++i)
        coloured.button(i)->setOrigin({98 + 50 * static_cast<float>(i), 155});
    moveMouse(105, 160);
    coloured.poll();
    press();
    coloured.poll();
    dialog.draw();
    coloured.draw();
    expectGolden(Image::of(*window), "ui/dialog");
}
} // namespace
