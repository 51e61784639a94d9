#include "UITest.h"

#include "core/ground/ErrorSlot.h"
#include "text/KXUIGlobalFont.h"

namespace {
struct Widget : UITest {
    Widget() { widget.setRect({10, 10}, {20, 20}); }
    int poll() override { return widget.clicked(KXMouseLeft); }
    KXPoint place(const std::string& name) const override {
        return name == "in" ? KXPoint{20, 20} : KXPoint{50, 50};
    }
    std::string state() override {
        return std::string(widget.mouseDownInside(0) ? "inside " : "") +
               (widget._isDepressed() ? "depressed" : "");
    }
    _KXUIWidget widget;
};

TEST_F(Widget, TheRightAndBottomEdgesBelongToIt) {
    const int rows[][3] = {{10, 15, 0}, {15, 10, 0}, {11, 11, -1}, {30, 30, -1}, {31, 30, 0}, {30, 31, 0}};
    for (const auto& [x, y, over] : rows) {
        moveMouse(x, y);
        EXPECT_EQ(widget.mouseOver(), over) << x << " " << y;
    }
}

TEST_F(Widget, AClickIsAPressOverItAndAReleaseAfterAPollOverIt) {
    expectEach("press in -> inside depressed; at out -> inside; at in -> inside depressed; "
               "release -> told depressed; at in -> ; press out -> ; at in -> ; release -> ; "
               "press in -> inside depressed");
    hands.move({50, 50}); // no poll sees it there
    expectEach("release -> told depressed; press in, at out -> inside");
    hands.move({20, 20});
    expectEach("release -> ");
}

TEST_F(Widget, ButtonsAreTrackedApartAndTheGameCanClick) {
    moveMouse(20, 20);
    press(KXMouseRight);
    for (int button = 0; button < 7; ++button) {
        EXPECT_EQ(widget.clicked(button), 0);
        EXPECT_EQ(widget.mouseDownInside(button), button == 1 ? -1 : 0);
    }
    release(KXMouseRight);
    EXPECT_EQ(widget.clicked(KXMouseLeft), 0);
    EXPECT_EQ(widget.clicked(KXMouseRight), -1);

    wheel(1); // a notch is a press of one step
    EXPECT_EQ(widget.clicked(KXMouseWheelUp), 0);
    step();
    EXPECT_EQ(widget.clicked(KXMouseWheelUp), -1);
    for (int clickedBefore : {1, 4})
        EXPECT_EQ(widget.clicked(clickedBefore), 0);
    for (int none : {-1, 7, INT_MIN, INT_MAX}) {
        widget.click(none);
        EXPECT_EQ(widget.clicked(none), 0);
        EXPECT_EQ(widget.mouseDownInside(none), 0);
    }
    act("press");
    widget.click(KXMouseLeft); // does not end the press in hand
    expectEach("at in -> told inside depressed; release -> told depressed; at in -> ");
}

TEST_F(Widget, Fonts) {
    EXPECT_EQ(widget.setFontSize(20), 0);
    EXPECT_STREQ(KXError(),
                 KXTempString("Widget(%p) is using the global UI font. Its size is not changeable.",
                              static_cast<void*>(&widget)));
    const KXSize plain = widget._idealSizeForText("Caption");
    EXPECT_EQ(plain.width, KXUIGlobalFontStringBounds("Caption").width + 6);
    EXPECT_EQ(plain.height, std::ceil(_KXUIGlobalFont->ascender()) + 6);

    _KXUIWidget own, sibling;
    ASSERT_EQ(own.setFont(testFont(), KXAliasModeTexture), -1);
    EXPECT_EQ(own._fontInUse()->getSize(), 10);
    sibling.setFont(testFont(), KXAliasModeTexture);
    EXPECT_EQ(own.setFontSize(30), -1); // a font is shared, and so is its size
    EXPECT_EQ(own.setFontSize(-1), -1);
    EXPECT_EQ(sibling._fontInUse()->getSize(), 30);
    KXClearGUIFontCache();
    for (_KXUIWidget* bereft : {&widget, &own}) {
        EXPECT_EQ(bereft->_idealSizeForText("Caption").width, 0);
        EXPECT_EQ(bereft->setFontSize(12), 0);
    }
    // A file that cannot be opened is a font that measures nothing.
    for (const char* path : {"no/such/font.ttf", static_cast<const char*>(nullptr)}) {
        KXUIButton button;
        EXPECT_EQ(button.setFont(path, KXAliasModeTexture), -1);
        EXPECT_EQ(button.setText("Caption"), -1);
        expectSize(button, 6, 6);
    }
}
} // namespace
