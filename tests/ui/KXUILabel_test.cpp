#include "UITest.h"

namespace {
struct Label : UITest {
    int poll() override {
        label.clicked(KXMouseLeft);
        clicks += button.clicked(KXMouseLeft) ? 1 : 0;
        entry.poll();
        list.poll();
        return 0;
    }
    KXUIButton button;
    KXUITextEntry entry;
    KXUIListBox list;
    KXUILabel label; // ends first
    int clicks = 0;
};

TEST_F(Label, FitsItsTextAndKeepsASizeOfItsOwn) {
    expectSize(label, 0, 0);
    const char* const text = "Some words that are wrapped somewhere";
    label.setText(text);
    const KXTextLayout line(*label._fontInUse(), text);
    expectSize(label, std::ceil(line.size().width), line.size().height);
    label.setSize({80, -1});
    EXPECT_EQ(label.rect().size.width, 80);
    EXPECT_GE(label.rect().size.height, 3 * line.size().height);
    KXTextOptions options;
    options.maxLines = 2;
    options.width = 1; // the label's counts
    label.setOptions(options);
    EXPECT_LT(label.rect().size.height, 3 * line.size().height);
    label.setText("One");
    expectSize(label, 80, line.size().height);
    ASSERT_EQ(label.setFont(testFont(), KXAliasModeTexture), -1);
    label.setFontSize(30);
    EXPECT_GT(label.rect().size.height, 30);
    label.setText(nullptr);
    EXPECT_STREQ(label.text(), "");
    expectFit(label, {-1, -1}, 0, 0);
    expectFit(label, {50, 7}, 50, 7);
}

TEST_F(Label, HandsAClickOnToWhatItNames) {
    label.setText("Name");
    label.setRect({10, 10}, {60, 20});
    entry.setRect({100, 10}, {100, -1});
    list.setRect({100, 50}, {100, 50});
    label.setWidget(&entry);
    act("click 20 20, type Ada");
    EXPECT_STREQ(entry.text(), "Ada");
    label.setWidget(&list);
    act("click 20 20");
    EXPECT_TRUE(list.hasFocus());
    EXPECT_FALSE(entry.isFocused());
    label.setWidget(&button);
    act("click 20 20, at 0 0");
    EXPECT_EQ(clicks, 1);
    button.setEnabled(0);
    act("click 20 20, at 0 0");
    button.setEnabled(-1);
    act("at 0 0");
    EXPECT_EQ(clicks, 1);

    // Each end of a pair may go first, and a widget has one label.
    auto gone = std::make_unique<KXUIButton>();
    auto other = std::make_unique<KXUILabel>();
    label.setWidget(gone.get());
    other->setWidget(gone.get());
    EXPECT_EQ(label.widget(), nullptr);
    gone.reset();
    EXPECT_EQ(other->widget(), nullptr);
    other->setWidget(&button);
    other.reset();
    label.setWidget(&label);
    EXPECT_EQ(label.widget(), nullptr);
    act("click 20 20");
}

TEST_F(Label, Looks) {
    const auto show = [](const char* text, KXRect box, KXTextAlign align, int lines, int enabled = -1) {
        KXUILabel one;
        KXTextOptions options;
        options.align = align;
        options.maxLines = lines;
        options.verticalAlign = KXTextMiddle;
        one.setOptions(options);
        one.setText(text);
        one.setRect(box.origin, box.size);
        one.setEnabled(enabled);
        one.draw();
        KXDrawRect(one.rect(), {1, 1, 1, 0.4f});
    };
    const char* const tale =
        "The owl had read {C1,0.85,0.3,1}every book in the old lighthouse{EC} twice, and "
        "100% of those about the sea.";
    show("Name:", {{10, 10}, {-1, -1}}, KXTextAlignStart, 0);
    show("In the middle", {{80, 10}, {110, 40}}, KXTextAlignCentre, 0);
    show("Disabled", {{210, 10}, {-1, -1}}, KXTextAlignStart, 0, 0);
    show(tale, {{10, 60}, {140, -1}}, KXTextAlignStart, 0);
    show(tale, {{170, 60}, {140, -1}}, KXTextAlignRight, 2);
    show(
        "\u0645\u0631\u062d\u0628\u0627 \u0628\u0643\u0645 \u0641\u064a \u0627\u0644\u0644\u0639\u0628\u0629",
        {{170, 110}, {140, -1}}, KXTextAlignStart, 0);
    expectGolden(Image::of(*window), "ui/label");
}
} // namespace
