// What holds for widgets of every kind.

#include "UITest.h"

#include <Kobaltrix/Kobaltrix.h>

#include <climits>

namespace {
struct EveryWidget : UITest {
    EveryWidget() {
        static constexpr const char* text =
            "\u00c5\u00c5jjWW texts that are too long for any of the boxes gg";
        button.setText(text);
        menu.addMenuItemWithName(text, nullptr, nullptr);
        menu.click(0);
        dialog.setMessage(text);
        dialog.addButton(text);
        entry.setText(text);
        for (int i = 0; i < 50; ++i)
            list.add(text);
        browser.show(KXUIFileBrowserModeOpen, "/usr");
    }
    int poll() override {
        button.clicked(0);
        slider.poll();
        menu.poll();
        dialog.poll();
        list.poll();
        entry.poll();
        browser.poll();
        return 0;
    }
    void drawAll() {
        for (_KXUIWidget* each : all)
            each->draw();
    }

    KXUIButton button;
    KXUISlider slider;
    KXUIMenu menu{"Menu"};
    KXUIDialogBox dialog;
    KXUIListBox list;
    KXUITextEntry entry;
    KXUIFileBrowser browser;
    _KXUIWidget* const all[7] = {&button, &slider, &menu, &dialog, &list, &entry, &browser};
};

TEST_F(EveryWidget, BearsAnyPlaceSizeAndPadding) {
    const auto use = [&] {
        dialog.resize();
        slider.setValue(100);
        list.setSelectedIndex(49);
        act("at 15 15, press, at -30 15, wheel -1, release");
        entry.focus();
        act("type x, Left");
        list.setFocus(-1);
        act("PageDown");
        drawAll();
    };
    constexpr float wild[] = {0, -1, -500, 5, 1e9f, -1e30f, 3e38f, INFINITY, -INFINITY, NAN};
    constexpr int count = std::size(wild);
    for (int i = 0; i < count * count; ++i) {
        for (_KXUIWidget* each : all)
            each->setRect({wild[(i + 3) % count], wild[i / count]}, {wild[i % count], wild[(i + 7) % count]});
        use();
    }
    for (int padding : {INT_MAX, INT_MIN, -3, 0, 2}) {
        dialog.setPadding(padding);
        _KXUIWidget::KXUIWidgetInnerPadding = {wild[padding & 7], wild[padding & 7]};
        use();
    }
    _KXUIWidget::KXUIWidgetInnerPadding = {3, 3};
    EXPECT_TRUE(slider.value() >= 0 && slider.value() <= 100);
}

TEST_F(EveryWidget, DrawsNothingOutsideOfABoxThatScrollsNorOfTheGamesClip) {
    for (_KXUIWidget* each : {all[4], all[5], all[6]})
        for (bool clipped : {false, true}) {
            each->setRect({20, 20}, {60, 25});
            const Image image = draw([&] {
                if (clipped)
                    window->setClipTo({{30, 0}, {20, 40}});
                each->draw();
                KXDrawRectFill({{0, 199}, {320, 1}}, KXRedColor); // the clip holds still
                window->unsetClip();
            });
            int outside = 0, inside = 0;
            for (int y = 0; y < 200; ++y)
                for (int x = 0; x < 320; ++x) {
                    const bool in = clipped ? x >= 30 && x < 50 && y >= 20 && y < 40
                                            : (x >= 20 && x < 80 && y >= 20 && y < 45) || y == 199;
                    (in ? inside : outside) += image.at(x, y).r > 0;
                }
            EXPECT_EQ(outside, 0);
            EXPECT_GT(inside, 300);
        }
}

TEST_F(EveryWidget, ASteadyFrameAllocatesNothing) {
    for (std::size_t i = 0; i < std::size(all); ++i)
        all[i]->setRect({10 + 30 * static_cast<float>(i), 20}, {100, 100});
    entry.focus();
    const auto frame = [&] {
        poll();
        drawAll();
    };
    frame();
    frame();
    EXPECT_EQ(allocationsOf(frame), 0u);
}
} // namespace
