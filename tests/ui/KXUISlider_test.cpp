#include "UITest.h"

namespace {
struct Slider : UITest {
    Slider() { lay({10, 20}, {200, 24}); }
    int poll() override { return slider.poll(); }
    std::string state() override { return std::to_string(slider.value()); }
    /// "value 5" and "range 0 9", which is set when the range is 0 to 100 and the value 50.
    int doAct(const std::string& act) override {
        int low, high;
        if (std::sscanf(act.c_str(), "value %d", &low) == 1)
            return slider.setValue(low), 0;
        if (std::sscanf(act.c_str(), "range %d %d", &low, &high) != 2)
            return UITest::doAct(act);
        slider.setValueRange(0, 100);
        return slider.setValueRange(low, high), 0;
    }
    void lay(KXPoint origin, KXSize size) {
        slider.setSize(size);
        slider.setOrigin(origin); // again, for the track
    }
    /// The left edge of what is drawn in the knob's border colour, which nothing else has.
    int knobLeft() {
        slider.setKnobBorderColor(KXRedColor);
        const Image image = picture([&] { slider.draw(); });
        const auto first = std::ranges::find(image.pixels, red);
        return first == image.pixels.end() ? -1
                                           : static_cast<int>(first - image.pixels.begin()) % image.width;
    }
    KXUISlider slider;
};

TEST_F(Slider, SizesHaveALeast) {
    const float line = slider._idealSizeForText("Slider").height;
    ASSERT_GT(line, 17);
    expectFit(slider, {10, 4}, 32, line);
    expectFit(slider, {NAN, -INFINITY}, 32, line);
    expectFit(slider, {300, 80}, 300, 80);
    KXClearGUIFontCache();
    expectFit(slider, {10, 4}, 32, 16);
}

TEST_F(Slider, RangesAndValues) {
    expectEach("value 101 -> 50; value -1 -> 50; value 150 -> 50; range 0 9 -> 4; range 10 20 -> 50; "
               "range -10 10 -> 10; range 20 10 -> 50; range 0 0 -> 0; "
               "range -2147483648 2147483647 -> 2147483647; range 0 2147483647 -> 1073741823; "
               "range -2147483648 0 -> 50; range 2147483647 -2147483648 -> 50; "
               "range -10 10, value -10 -> -10; value -11 -> -10; value 10 -> 10; value 11 -> 10; "
               "value 0 -> 0");
}

TEST_F(Slider, TheKnobStandsAtTheValueWithinTheSlider) {
    lay({0, 20}, {200, 24});
    const std::pair<const char*, int> rows[] = {
        {"value 50", 92}, {"value 0", 0},    {"value 100", 184}, {"value 1", 0},
        {"value 10", 12}, {"value 97", 184}, {"value 95", 182},  {"range 100 200, value 150", 184},
        {"range 0 0", 0}}; // measured from 0 in any range
    for (const auto& [does, left] : rows) {
        act(does);
        EXPECT_EQ(knobLeft(), left) << does;
    }
}

TEST_F(Slider, IsDraggedByAPressOnTrackOrKnob) {
    expectEach("at 60 30 -> 50; press -> told 25; at 110 30 -> told 50; at 5000 199 -> told 100; "
               "at 210 30 -> 100; at 11 0 -> told 0; at 12 30 -> told 1; at -300 30 -> told 0; "
               "at 209 -50 -> told 99; at 68 30 -> told 29; release, at 150 30 -> 29");
    // The knob lies from (102, 20) to (118, 44), the track from (10, 28) to (210, 36).
    const auto dragFrom = [&](const std::string& point) {
        slider.setValue(50);
        act("press " + point + ", at 60 30, release");
        return slider.value();
    };
    for (const char* inside : {"10 28", "210 36", "102 20", "118 44"})
        EXPECT_EQ(dragFrom(inside), 25) << inside;
    for (const char* beside : {"9 30", "211 30", "50 27", "50 37", "119 44", "110 45", "110 19"})
        EXPECT_EQ(dragFrom(beside), 50) << beside;
    press(KXMouseRight);
    EXPECT_EQ(poll(), 0);
}

TEST_F(Slider, EachRangeIsDraggedToItsEnds) {
    const char* const rows[][3] = {{"range 0 100", "told 0", "told 100"},
                                   {"range -10 10", "told 0", "0"}, // the right end asks for 20
                                   {"range 0 99999999", "told 0", "told 99999999"},
                                   {"range 0 2147483647", "told 0", "told 2147483647"},
                                   {"range 0 0", "0", "0"},
                                   {"range 500 600", "50", "50"}}; // a drag offers 0 to 100
    for (const auto& [range, atLeft, atRight] : rows)
        expectEach(range + (", press 20 32, at -400 32 -> " + std::string(atLeft)) +
                   "; at 400 32, release -> " + atRight);
}

TEST_F(Slider, Looks) {
    KXUISlider low, high, dragged, coloured, stale;
    KXUISlider* const all[] = {&slider, &low, &high, &dragged, &coloured, &stale};
    for (std::size_t i = 0; i < std::size(all); ++i) {
        all[i]->setSize(i == 4 ? KXSize{120, 40} : KXSize{240, 20});
        all[i]->setOrigin({20, 10 + 34 * static_cast<float>(i)});
    }
    stale.setRect({170, 170}, {100, 28}); // origin first, so the track has the size of before
    low.setValue(0);
    high.setValue(100);
    coloured.setKnobFillColor({1, 0.8f, 0, 1});
    coloured.setKnobBorderColor({1, 1, 1, 1});
    coloured.setTrackFillColor({0.1f, 0.1f, 0.3f, 1});
    coloured.setTrackBorderColor({0.6f, 0.6f, 1, 1});
    moveMouse(80, 122);
    press();
    dragged.poll();
    for (KXUISlider* each : all)
        each->draw();
    expectGolden(Image::of(*window), "ui/slider");
}
} // namespace
