// The colour picker, and messages that go by themselves.

#include "UITest.h"

#include "ui/HsvColor.h"

namespace {
TEST(HsvColor, KeepsEachColorOf256Steps) {
    _KXHsv hsv;
    constexpr int steps[] = {0, 1, 2, 63, 84, 127, 128, 170, 200, 253, 254, 255};
    for (const int red : steps)
        for (const int green : steps)
            for (int blue = 0; blue < 256; ++blue) {
                const _KXColorBytes bytes = {std::uint8_t(red), std::uint8_t(green), std::uint8_t(blue), 7};
                hsv = _KXHsvOf(bytes, hsv);
                ASSERT_EQ(_KXBytesOf(hsv, 7), bytes);
                ASSERT_EQ(_KXBytesOfColor(_KXColorOfBytes(bytes)), bytes);
            }
    hsv = {200, 0.5, 1};
    EXPECT_EQ(_KXHsvOf({9, 9, 9, 0}, hsv).hue, 200) << "grey has none of its own";
    EXPECT_EQ(_KXHsvOf({0, 0, 0, 0}, hsv).saturation, 0.5);
    EXPECT_EQ(_KXBytesOf({360, 1, 1}, 0), (_KXColorBytes{255, 0, 0, 0}));
    EXPECT_EQ(_KXBytesOfColor({NAN, INFINITY, -1e30f, 0.5f}), (_KXColorBytes{0, 255, 0, 128}));
}

struct ColorPicker : UITest {
    ColorPicker() {
        picker.setRect({10, 10}, {124, 144}); // a square of 100 and 2 around it, the hue at 119
        picker.setColor(KXMakeColori(255, 0, 0, 255));
        picker.setShowsOpacity(-1);
        // what is below: 18 for the line, 16 for the opacity, and 6 above each
    }
    int poll() override { return picker.poll(); }
    std::string state() override {
        const _KXColorBytes bytes = _KXBytesOfColor(picker.color());
        return KXTempString("%02x%02x%02x%02x", bytes[0], bytes[1], bytes[2], bytes[3]);
    }
    KXUIColorPicker picker;
};

TEST_F(ColorPicker, FollowsThePointer) {
    picker.setShowsOpacity(0);
    picker.setSize({124, 126}); // the square is one: its colours lie from 11 to 110
    expectEach("press 11 11 -> told ffffffff; at 11 110 -> told 000000ff; at 110 110 -> 000000ff; "
               "at 300 -20 -> told ff0000ff; at 60 11, release -> told ff8181ff; "
               "press 125 110, release, at 1 1 -> ff8181ff; press 125 60, release -> told 81fffbff; "
               "at 60 60 -> 81fffbff; click 30 125 -> 81fffbff; click 120 125, at 1 1 -> told ff0000ff");
    EXPECT_EQ(picker.oldColor().r, 1);
    picker.setEnabled(0);
    expectEach("click 60 60 -> ff0000ff");
}

TEST_F(ColorPicker, GoesByKeys) {
    const auto focus = [&](int part) { EXPECT_EQ(picker.focus(*picker.widget(part)), -1); };
    focus(0);
    expectEach("Left -> told ff0101ff; Home -> told ffffffff; End & Down -> told fe0000ff; "
               "PageDown -> told f40000ff; Up & Up -> told f60000ff; Left Ctrl+Left -> f60000ff");
    focus(1);
    expectEach(
        "PageDown -> told f62900ff; Home -> told f60000ff; Right -> told f60400ff; End -> told f60000ff");
    focus(2);
    expectEach(
        "Left -> told f60000fe; PageDown -> told f60000f4; Home -> told f6000000; Up -> told f6000001; "
        "End -> told f60000ff");
    act("Tab, Left Ctrl+A, Backspace");
    EXPECT_STREQ(KXUIFocusedTextEntry()->text(), "");
    expectEach(
        "type 12345 -> f60000ff; type 6 -> told 123456ff; type 7 -> 123456ff; type 8 -> told 12345678; "
        "type 9 -> 12345678; Return, Left Ctrl+A -> 12345678; type #ABCDEF -> told abcdef78; "
        "Left Ctrl+A & type -12345 -> abcdef78; Tab & Space -> told ff0000ff");
    EXPECT_EQ(picker.description().value, "#FF0000FF");
    EXPECT_EQ(picker.descriptions()[3].value, "#FF0000FF") << "what is no colour is gone";
    EXPECT_EQ(picker.descriptions()[1].value, "0");
}

TEST_F(ColorPicker, BearsAnySizeAndLooks) {
    for (const float side : {0.0f, 20.0f, -50.0f, 1e30f, NAN, INFINITY}) {
        picker.setRect({side, side}, {side, side});
        act("press 10 10, at 50 50, release");
        picker.draw();
    }
    fill({0.2f, 0.3f, 0.4f, 1});
    KXUIColorPicker off;
    picker.setRect({10, 10}, {-1, 180});
    picker.setColor(KXMakeColori(220, 120, 40, 128));
    off.setColor(KXMakeColori(40, 120, 90, 255));
    off.setRect({220, 10}, {90, 100});
    off.setEnabled(0);
    act("click 80 30");
    const auto frame = [&] { picker.draw(), off.draw(), poll(); };
    frame();
    expectGolden(Image::of(*window), "ui/color_picker");
    EXPECT_EQ(allocationsOf(frame), 0u);
}

struct Toast : UITest {
    Toast() { toast.setRect({20, 0}, {200, 100}); }
    int poll() override { return toast.poll(); }
    std::string state() override {
        std::string all = KXTempString("%d %d", toast.current(), toast.count());
        return toast.chosen() == -1 ? all : all + KXTempString(" !%d", toast.chosen());
    }
    KXPoint place(const std::string& name) const override {
        const auto [origin, size] = toast.messageRect();
        return name == "text"     ? KXPoint{origin.x + 4, origin.y + 4}
               : name == "action" ? KXPoint{origin.x + size.width - 4, origin.y + 4}
                                  : UITest::place(name);
    }
    int show(const char* text, int milliseconds, const char* action = nullptr) {
        KXUIToastOptions options;
        options.milliseconds = milliseconds;
        options.action = action;
        return toast.show(text, options);
    }
    KXUIToast toast;
};

TEST_F(Toast, ShowsMessagesOneAfterTheOther) {
    EXPECT_EQ(toast.show(nullptr), -1);
    EXPECT_STREQ(toast.text(), "");
    expectEach("poll 200 -> -1 0");
    EXPECT_TRUE(show("A", 320) == 0 && show("B", 160) == 1 && show("C", -1) == 2);
    EXPECT_STREQ(toast.text(), "A");
    expectEach("poll 20 -> 0 3; poll 1 -> 1 2; at text, poll 50 -> 1 2; at 1 1, poll 11 -> 2 1; "
               "poll 1000 -> 2 1; click 1 1 -> 2 1; click text -> -1 0");
    show("D", 100);
    show("E", INT_MAX);
    toast.dismiss();
    expectEach("wait 1000, poll 1 -> 4 1");
    toast.clear();
    expectEach("poll 1 -> -1 0");
}

TEST_F(Toast, TellsWhoseButtonWasPressed) {
    KXUITextEntry entry;
    entry.focus();
    show("Deleted", 320, "Undo");
    show("Saved", 320, "Show");
    expectEach(
        "press action -> 0 2; at text, release -> 0 2; press action, release -> told 1 1 !0; poll 2 -> 1 1");
    EXPECT_TRUE(entry.isFocused());
    entry.unfocus();
    KXUIPanel panel;
    panel.add(toast);
    EXPECT_EQ(panel.focus(toast), -1);
    expectEach("at 1 1, poll 30 -> 1 1; Return & at 1 1 -> told -1 0 !1");
    EXPECT_FALSE(panel.focused() || toast.takesKeyboard());
    show("Moved", 320, "Undo");
    panel.focus(toast);
    expectEach("Escape -> -1 0");
    show("Moved", 320, "Undo");
    toast.setEnabled(0);
    expectEach("click action -> 3 1");
}

TEST_F(Toast, FadesAndLooks) {
    KXUIToast others[3];
    const char* const texts[] = {"A {C1,0.8,0,1}longer{EC} message than there is room for", "Fading",
                                 "\u0421\u043e\u0445\u0440\u0430\u043d\u0435\u043d\u043e"};
    for (int i = 0; i < 3; ++i) {
        KXUIToastOptions options;
        options.action = i == 0 ? "Undo" : nullptr;
        options.milliseconds = i == 1 ? 400 : 0;
        others[i].show(texts[i], options);
        others[i].setRect({20, 40.0f * float(i)}, {i == 0 ? 160.0f : 250.0f, 60});
    }
    step(16);
    const auto frame = [&] {
        for (KXUIToast& each : others)
            each.poll(), each.draw();
    };
    frame();
    expectGolden(Image::of(*window), "ui/toast");
    EXPECT_EQ(allocationsOf(frame), 0u);
    for (const float side : {0.0f, -50.0f, 1e30f, NAN, INFINITY}) {
        others[0].setRect({side, side}, {side, side});
        others[0].poll();
        others[0].draw();
    }
}
} // namespace
