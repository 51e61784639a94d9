#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXUISlider.h>

#include "UITest.h"

#include <climits>
#include <cmath>
#include <limits>

namespace {
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

struct Slider : UITest {
    Slider() { place({10, 20}, {200, 24}); }
    void place(KXPoint origin, KXSize size) {
        slider.setSize(size);
        slider.setOrigin(origin); // again, for the track
    }
    int pollAt(int x, int y) {
        moveMouse(x, y);
        return slider.poll();
    }
    /// The left edges of what is drawn in the knob's border colour, which nothing else has.
    int knobLeft() {
        slider.setKnobBorderColor(KXRedColor);
        const Image image = draw([&] { slider.draw(); });
        for (int x = 0; x < image.width; ++x)
            for (int y = 0; y < image.height; ++y)
                if (image.at(x, y) == Pixel{255, 0, 0, 255})
                    return x;
        return -1;
    }
    KXUISlider slider;
};

TEST_F(Slider, SizesHaveALeast) {
    const float line = slider._idealSizeForText("Slider").height;
    ASSERT_GT(line, 10);
    const auto expectSize = [&](KXSize given, KXSize result) {
        slider.setSize(given);
        EXPECT_EQ(slider.rect().size.width, result.width) << given.width;
        EXPECT_EQ(slider.rect().size.height, result.height) << given.height;
    };
    expectSize({10, 4}, {32, line});
    expectSize({-5, -INFINITY}, {32, line});
    expectSize({notANumber, notANumber}, {32, line});
    expectSize({300, 80}, {300, 80});
    KXClearGUIFontCache();
    expectSize({10, 4}, {32, 16});
}

TEST_F(Slider, RangesAndValues) {
    EXPECT_EQ(slider.value(), 50);
    for (int outside : {-1, 101, 150, INT_MIN, INT_MAX}) {
        slider.setValue(outside);
        EXPECT_EQ(slider.value(), 50);
    }
    // The value that a new range leaves when it was 50.
    const int rows[][3] = {{0, 9, 4},
                           {10, 20, 50},
                           {-10, 10, 10},
                           {20, 10, 50},
                           {5, 5, 50},
                           {0, 0, 0},
                           {INT_MIN, INT_MAX, INT_MAX},
                           {0, INT_MAX, INT_MAX / 2},
                           {INT_MIN, 0, 50},
                           {INT_MAX, INT_MIN, 50}};
    for (const auto& [min, max, value] : rows) {
        slider.setValueRange(0, 100);
        slider.setValue(50);
        slider.setValueRange(min, max);
        EXPECT_EQ(slider.value(), value) << min << " " << max;
        slider.draw();
    }
    slider.setValueRange(-10, 10);
    for (int edge : {-10, 10, 0}) {
        slider.setValue(edge);
        EXPECT_EQ(slider.value(), edge);
    }
}

TEST_F(Slider, TheKnobStandsAtTheValueWithinTheSlider) {
    place({0, 20}, {200, 24});
    const int rows[][2] = {{50, 92}, {0, 0}, {100, 184}, {1, 0}, {10, 12}, {97, 184}, {95, 182}};
    for (const auto& [value, left] : rows) {
        slider.setValue(value);
        EXPECT_EQ(knobLeft(), left) << value;
    }
    slider.setValueRange(100, 200); // measured from 0, not from the minimum
    slider.setValue(150);
    EXPECT_EQ(knobLeft(), 184);
    slider.setValueRange(0, 0);
    EXPECT_EQ(knobLeft(), 0);
}

TEST_F(Slider, IsDragged) {
    EXPECT_EQ(pollAt(60, 30), 0); // hovering does nothing
    press();
    EXPECT_EQ(slider.poll(), -1); // the track takes the knob along
    EXPECT_EQ(slider.value(), 25);
    EXPECT_EQ(slider.poll(), 0);
    const std::pair<std::pair<int, int>, int> rows[] = {
        {{110, 30}, 50}, {{210, 30}, 100}, {{5000, 199}, 100}, {{11, 0}, 0},
        {{-300, 30}, 0}, {{12, 30}, 1},    {{209, -50}, 99},   {{68, 30}, 29}};
    for (const auto& [point, value] : rows) {
        const int before = slider.value();
        EXPECT_EQ(pollAt(point.first, point.second), value != before ? -1 : 0) << point.first;
        EXPECT_EQ(slider.value(), value) << point.first;
    }
    release();
    EXPECT_EQ(pollAt(150, 30), 0);
    EXPECT_EQ(slider.value(), 29);
}

TEST_F(Slider, OnlyAPressOnTrackOrKnobDrags) {
    slider.setValue(50); // the knob from (102, 20) to (118, 44), the track from (10, 28) to (210, 36)
    const std::pair<std::pair<int, int>, bool> rows[] = {
        {{10, 28}, true},   {{210, 36}, true},  {{102, 20}, true}, {{118, 44}, true},
        {{9, 30}, false},   {{211, 30}, false}, {{50, 27}, false}, {{50, 37}, false},
        {{119, 44}, false}, {{110, 45}, false}, {{110, 19}, false}};
    for (const auto& [point, drags] : rows) {
        slider.setValue(50);
        moveMouse(point.first, point.second);
        press();
        slider.poll();
        pollAt(60, 30); // a press elsewhere does not begin to drag on the track
        EXPECT_EQ(slider.value(), drags ? 25 : 50) << point.first << " " << point.second;
        release();
        slider.poll();
    }
    moveMouse(60, 30);
    press(SDL_BUTTON_RIGHT);
    EXPECT_EQ(slider.poll(), 0);
}

TEST_F(Slider, EachRangeIsDraggedToItsEnds) {
    const struct {
        int min, max, atLeft, atRight;
    } rows[] = {{0, 100, 0, 100},           {-10, 10, 0, 0},          {0, 1, 0, 1},
                {0, 99999999, 0, 99999999}, {0, INT_MAX, 0, INT_MAX}, {0, 0, 0, 0}};
    for (const auto& row : rows) {
        slider.setValueRange(row.min, row.max);
        moveMouse(20, 32);
        press();
        slider.poll();
        pollAt(-400, 32);
        pollAt(400, 32); // for a range from -10 this asks for 20, which is refused
        EXPECT_EQ(slider.value(), row.atRight);
        pollAt(-400, 32);
        EXPECT_EQ(slider.value(), row.atLeft);
        release();
        slider.poll();
    }
    slider.setValueRange(500, 600); // out of reach: a drag offers 0 to 100
    slider.setValue(510);
    moveMouse(20, 32);
    press();
    EXPECT_EQ(slider.poll(), 0);
    EXPECT_EQ(slider.value(), 510);
}

TEST_F(Slider, TheTrackMovesWithTheOriginAlone) {
    KXUISlider fresh;
    fresh.setRect({10, 100}, {100, 24}); // origin first, so the track has the size of before
    fresh.setTrackFillColor(KXGreenColor);
    fresh.setTrackBorderColor(KXGreenColor);
    const auto green = [&](int x, int y) {
        return draw([&] { fresh.draw(); }).at(x, y) == Pixel{0, 255, 0, 255};
    };
    EXPECT_FALSE(green(20, 112));
    fresh.setOrigin({10, 100});
    EXPECT_TRUE(green(20, 112));
    EXPECT_TRUE(green(20, 108));
    EXPECT_FALSE(green(20, 107));
    EXPECT_TRUE(green(20, 115));
    EXPECT_FALSE(green(20, 116));
    fresh.setSize({300, 60});
    EXPECT_TRUE(green(20, 112));
    EXPECT_FALSE(green(250, 112));
}

TEST_F(Slider, WildPlacesAreHarmless) {
    for (float wild : {notANumber, INFINITY, -INFINITY, 3e38f, -3e38f, 1e10f}) {
        place({wild, wild}, {wild, wild});
        moveMouse(50, 50);
        press();
        slider.poll();
        slider.draw();
        release();
        slider.poll();
        place({0, 0}, {wild, 20});
        slider.setValue(100);
        slider.draw();
    }
    EXPECT_GE(slider.value(), 0);
    EXPECT_LE(slider.value(), 100);
}

TEST_F(Slider, Looks) {
    KXUISlider low, high, dragged, coloured;
    KXUISlider* const all[] = {&slider, &low, &high, &dragged, &coloured};
    for (std::size_t i = 0; i < std::size(all); ++i) {
        all[i]->setSize({i == 4 ? 120.0f : 240.0f, i == 4 ? 40.0f : 20.0f});
        all[i]->setOrigin({20, 10 + 34 * static_cast<float>(i)});
    }
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
