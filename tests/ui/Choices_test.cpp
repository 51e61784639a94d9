// Check boxes, radio groups, progress bars and buttons with pictures.

#include "UITest.h"

namespace {
struct Choices : UITest {
    Choices() {
        box.setText("Loop");
        box.setOrigin({10, 10});
        for (const char* name : {"Low", "Middle of them", "High"})
            group.add(name);
        group.setOrigin({10, 50});
    }
    int poll() override { return box.clicked(KXMouseLeft) | group.poll(); }
    std::string state() override {
        return (box.isChecked() ? "on " : "off ") + std::to_string(group.selectedIndex());
    }
    KXUICheckBox box;
    KXUIRadioGroup group;
};

TEST_F(Choices, FollowClicks) {
    const float row = group.option(0)->rect().size.height;
    const auto at = [&](int index) {
        return "click 15 " + std::to_string(int(50 + row * (float(index) + 0.5f)));
    };
    expectEach("click 15 15, at 300 190 -> told on -1; click 40 15, at 300 190 -> told off -1; " + at(1) +
               " -> told off 1; " + at(1) + " -> off 1; " + at(2) + " -> told off 2; click 200 60 -> off 2");
    EXPECT_TRUE(!group.option(1)->isChecked() && group.option(2)->isChecked());
    group.option(0)->setEnabled(0);
    expectEach(at(0) + " -> off 2; " + at(1) + " -> told off 1");
    group.setEnabled(0);
    box.setVisible(0);
    expectEach(at(2) + " -> off 1; click 15 15, at 300 190 -> off 1");
    group.setEnabled(-1);
    group.setSelectedIndex(7);
    expectEach(at(2) + " -> told off 2; " + at(2) + " -> off 2");
    EXPECT_NE(group.option(2)->isChecked(), 0); // the click that chose it again took no mark away
    group.setSelectedIndex(-1);
    EXPECT_EQ(group.option(2)->isChecked(), 0);
    for (const int none : {-1, 3, INT_MIN, INT_MAX})
        EXPECT_EQ(group.option(none), nullptr);
}

TEST_F(Choices, FitTheirCaptions) {
    const KXTextLayout text(*box._fontInUse(), "Loop");
    const float side = std::ceil(box._fontInUse()->ascender());
    expectSize(box, side + 6 + std::ceil(text.size().width), side + 6);
    expectSize(group, group.option(1)->rect().size.width, 3 * (side + 6));
    group.setOrigin({100, 20});
    expectOrigin(*group.option(2), 100, 20 + 2 * (side + 6));
    ASSERT_EQ(group.setFont(testFont(), KXAliasModeTexture), -1);
    ASSERT_EQ(group.setFontSize(24), -1);
    group.add("Own");
    EXPECT_GT(group.rect().size.height, 4 * 24);
    EXPECT_EQ(group.option(3)->_fontInUse()->getSize(), 24);
    box.setText(nullptr);
    expectSize(box, side, side + 6);
}

TEST_F(Choices, AProgressBarTellsTheTimeLeft) {
    KXUIProgressBar bar;
    bar.setShowsTimeLeft(-1);
    bar.setRect({10, 10}, {100, 20});
    EXPECT_EQ(bar.secondsLeft(), -1);
    steps.advance(250); // of 16 ms: 4 seconds
    bar.setProgress(0.25f);
    EXPECT_NEAR(bar.secondsLeft(), 12, 0.01f);
    const Image twelve = picture([&] { bar.draw(); });
    bar.draw();
    EXPECT_EQ(allocationsOf([&] { bar.draw(); }), 0u);
    steps.advance(125);
    EXPECT_NEAR(bar.secondsLeft(), 18, 0.01f) << "the pace falls";
    EXPECT_GT(differingPixels(twelve, picture([&] { bar.draw(); })), 5);
    bar.setProgress(0.1f); // begins anew
    EXPECT_EQ(bar.secondsLeft(), -1);
    steps.advance(125);
    bar.setProgress(0.55f);
    EXPECT_NEAR(bar.secondsLeft(), 2, 0.01f);
    for (const auto& [given, kept] : {std::pair{2.0f, 1.0f}, {-1.0f, 0.0f}, {NAN, 0.0f}, {INFINITY, 1.0f}}) {
        bar.setProgress(given);
        EXPECT_EQ(bar.progress(), kept);
    }
    EXPECT_EQ(bar.secondsLeft(), 0);
}

TEST_F(Choices, Look) {
    KXImage image(8, 8);
    for (int i = 0; i < 64; ++i)
        image.setPixel(i % 8, i / 8,
                       {float(i % 8) / 7, 0.8f, float(i / 8) / 7, (i % 8 + i / 8) % 2 ? 1.0f : 0.3f});
    KXTexture texture(image);
    KXUIImageButton pictures[2];
    KXUIProgressBar bars[2];
    KXUICheckBox boxes[4];
    KXUIRadioGroup groups[2];
    const auto place = [](_KXUIWidget& widget, float x, float y, bool enabled) {
        widget.setOrigin({x, y});
        widget.setEnabled(enabled);
        widget.draw();
    };
    for (int i = 0; i < 4; ++i) {
        boxes[i].setText(i % 2 ? "With a mark" : "Without");
        boxes[i].setChecked(i % 2);
        place(boxes[i], i < 2 ? 10.0f : 170.0f, i % 2 ? 32.0f : 10.0f, i < 2);
    }
    for (int i = 0; i < 2; ++i) {
        const float x = i ? 170.0f : 10.0f;
        for (const char* name : {"Pencil", "\u041a\u0438\u0441\u0442\u044c", "\u0642\u0644\u0645"})
            groups[i].add(name);
        groups[i].setSelectedIndex(1);
        place(groups[i], x, 60, !i);
        bars[i].setSize({140, 20});
        bars[i].setProgress(0.6f);
        bars[i].setText("60 %");
        place(bars[i], x, 124, !i);
        pictures[i].setTexture(&texture);
        pictures[i].setScale(3);
        place(pictures[i], x, 156, !i);
    }
    expectSize(pictures[0], 30, 30);
    pictures[0].setTexture(&texture, {{0, 0}, {4, 8}});
    expectSize(pictures[0], 18, 30);
    const auto frame = [&] {
        for (_KXUIWidget* each :
             std::initializer_list<_KXUIWidget*>{&boxes[1], &groups[1], &bars[1], &pictures[1]})
            each->draw();
    };
    expectGolden(Image::of(*window), "ui/choices");
    frame();
    EXPECT_EQ(allocationsOf(frame), 0u);
}
} // namespace
