#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXUIButton.h>
#include <Kobaltrix/KXUIWidget.h>

#include "UITest.h"

#include "core/ground/ErrorSlot.h"
#include "text/KXUIGlobalFont.h"

#include <climits>
#include <cmath>

namespace {
struct Widget : UITest {
    Widget() { widget.setRect({10, 10}, {20, 20}); }
    _KXUIWidget widget;
};

TEST_F(Widget, TheRightAndBottomEdgesBelongToIt) {
    const int rows[][3] = {{10, 15, 0}, {15, 10, 0}, {11, 11, -1}, {30, 30, -1},
                           {31, 30, 0}, {30, 31, 0}, {10, 10, 0},  {-5, 15, 0}};
    for (const auto& [x, y, over] : rows) {
        moveMouse(x, y);
        EXPECT_EQ(widget.mouseOver(), over) << x << " " << y;
    }
    widget.setRect({NAN, 0}, {INFINITY, 100});
    EXPECT_EQ(widget.mouseOver(), 0);
}

TEST_F(Widget, AClickIsAPressOverItAndAReleaseAfterAPollOverIt) {
    const KXPoint in = {20, 20}, out = {50, 50};
    // Where the press is, where the pointer goes while held, where it is at the last poll and at the release.
    const struct {
        KXPoint press, drag, last, release;
        int clicked;
    } rows[] = {{in, in, in, in, -1},  {in, out, in, in, -1}, {in, in, out, out, 0},
                {in, in, in, out, -1}, {out, in, in, in, 0},  {in, out, out, in, 0}};
    for (const auto& row : rows) {
        const auto poll = [&] { return widget.clicked(0); };
        const auto moveTo = [&](KXPoint p) { moveMouse(static_cast<int>(p.x), static_cast<int>(p.y)); };
        moveTo(row.press);
        EXPECT_EQ(poll(), 0);
        press();
        EXPECT_EQ(poll(), 0);
        EXPECT_EQ(widget.mouseDownInside(0), row.press.x == in.x ? -1 : 0);
        for (KXPoint point : {row.drag, row.last}) {
            moveTo(point);
            EXPECT_EQ(poll(), 0);
            EXPECT_EQ(widget._isDepressed(), row.press.x == in.x && point.x == in.x ? -1 : 0);
        }
        moveTo(row.release);
        release();
        EXPECT_EQ(poll(), row.clicked) << &row - rows;
        EXPECT_EQ(poll(), 0);
        EXPECT_EQ(widget.mouseDownInside(0), 0);
        EXPECT_EQ(widget._isDepressed(), 0);
    }
}

TEST_F(Widget, ButtonsAreTrackedApart) {
    moveMouse(20, 20);
    press(SDL_BUTTON_RIGHT);
    for (int button = 0; button < 7; ++button)
        EXPECT_EQ(widget.clicked(button), 0);
    EXPECT_EQ(widget.mouseDownInside(1), -1);
    EXPECT_EQ(widget.mouseDownInside(0), 0);
    release(SDL_BUTTON_RIGHT);
    EXPECT_EQ(widget.clicked(0), 0);
    EXPECT_EQ(widget.clicked(1), -1);

    wheel(1); // a notch is a press of one step
    EXPECT_EQ(widget.clicked(4), 0);
    step();
    EXPECT_EQ(widget.clicked(4), -1);
    for (int none : {-1, 7, INT_MIN, INT_MAX}) {
        widget.click(none);
        EXPECT_EQ(widget.clicked(none), 0);
        EXPECT_EQ(widget.mouseDownInside(none), 0);
    }
}

TEST_F(Widget, TheGameCanClick) {
    moveMouse(20, 20);
    press();
    widget.clicked(0);
    widget.click(0);
    EXPECT_EQ(widget.clicked(0), -1);
    EXPECT_EQ(widget.mouseDownInside(0), -1); // the press in hand goes on
    release();
    EXPECT_EQ(widget.clicked(0), -1);
    EXPECT_EQ(widget.clicked(0), 0);
}

TEST_F(Widget, SetRectReachesAClassThatLaysItselfOut) {
    struct Derived : _KXUIWidget {
        std::string calls;
        void setOrigin(KXPoint) override { calls += "origin "; }
        void setSize(KXSize) override { calls += "size"; }
    } derived;
    derived.setRect({1, 2}, {3, 4});
    EXPECT_EQ(derived.calls, "origin size");
}

TEST_F(Widget, Fonts) {
    EXPECT_EQ(widget.setFontSize(20), 0);
    char expected[128];
    std::snprintf(expected, sizeof expected,
                  "Widget(%p) is using the global UI font. Its size is not changeable.",
                  static_cast<void*>(&widget));
    EXPECT_STREQ(KXError(), expected);

    const KXSize plain = widget._idealSizeForText("Caption");
    const KXSize bounds = KXUIGlobalFontStringBounds("Caption");
    EXPECT_EQ(plain.width, bounds.width + 6);
    EXPECT_EQ(plain.height, std::ceil(_KXUIGlobalFont->ascender()) + 6);
    EXPECT_EQ(widget._idealSizeForText("{C1,0,0,1}Cap{EC}tion").width, plain.width);

    ASSERT_EQ(widget.setFont(testFont(), KXAliasModeTexture), -1);
    EXPECT_EQ(widget._fontInUse()->getSize(), 10);
    _KXUIWidget sibling;
    sibling.setFont(testFont(), KXAliasModeTexture);
    EXPECT_EQ(widget.setFontSize(30), -1); // a font is shared, and so is its size
    EXPECT_EQ(sibling._fontInUse()->getSize(), 30);
    EXPECT_EQ(widget.setFontSize(-1), -1);
    EXPECT_EQ(sibling._fontInUse()->getSize(), 30);
}

TEST_F(Widget, OutlivesItsFont) {
    _KXUIWidget own;
    own.setFont(testFont(), KXAliasModeTexture);
    KXClearGUIFontCache();
    for (_KXUIWidget* bereft : {&widget, &own}) {
        EXPECT_EQ(bereft->_idealSizeForText("Caption").width, 0);
        EXPECT_EQ(bereft->setFontSize(12), 0);
    }
    EXPECT_EQ(own.setFont(testFont(), KXAliasModeTexture), -1);
    EXPECT_GT(own._idealSizeForText("Caption").width, 6);
    // A file that cannot be opened is a font that measures nothing.
    for (const char* path : {"no/such/font.ttf", static_cast<const char*>(nullptr)}) {
        KXUIButton button;
        EXPECT_EQ(button.setFont(path, KXAliasModeTexture), -1);
        EXPECT_EQ(button.setText("Caption"), -1);
        EXPECT_EQ(button.rect().size.width, 6);
        EXPECT_EQ(button.rect().size.height, 6);
    }
}
} // namespace
