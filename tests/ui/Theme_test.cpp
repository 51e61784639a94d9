// Themes, and what scrolls.

#include "EveryState.h"
#include "UITest.h"

#include "support/TemporaryFolder.h"

#include <memory>
#include <vector>

namespace {
struct Theme : UITest {
    ~Theme() override { KXUISetTheme(plain()); }
    static KXUITheme plain() {
        KXUITheme theme;
        theme.padding = {3, 3};
        return theme;
    }
    std::string file(const char* text) { return folder.write("theme.json", text); }
    TemporaryFolder folder;
};

TEST_F(Theme, ComesFromAFileWithItsPicturesAndItsFont) {
    const KXColor white = {1, 1, 1, 1};
    KXImage image(24, 8); // pictures of 8 x 8: an edge of one pixel, and something else within
    for (int i = 0; i < 24 * 8; ++i) {
        const int x = i % 24 % 8, y = i / 24;
        const bool edge = x == 0 || y == 0 || x == 7 || y == 7;
        image.setPixel(i % 24, y, edge ? white : KXColor{0, i % 24 < 8 ? 1.0f : 0.0f, 1, 1});
    }
    ASSERT_TRUE(image.writeToPNG((folder / "skin.png").c_str()));
    folder.write("own.ttf", contentOf(testFont()));
    auto themes = std::make_unique<KXUIThemeFile>();
    ASSERT_TRUE(
        themes->load(file(R"({"base": "dark", "font": {"file": "own.ttf", "size": 20}, "padding": [7, 5],
        "ring": 4, "disabledOpacity": 1, "tooltipDelay": 20, "colors": {"text": "#FF0000", "menu": "#8000FF00"},
        "skins": {"image": "skin.png", "corner": 1, "button": {"normal": [0, 0, 8, 8], "pressed": [8, 0, 8, 8]}}})")
                         .c_str()))
        << KXError();
    KXUIPanel panel;
    KXUIButton button;
    button.setText("Wide");
    panel.add(button);
    const float before = button.rect().size.width;
    KXUISetTheme(themes->theme());
    panel.poll();
    EXPECT_GT(button.rect().size.width, before + 8) << "it is fitted to the larger font and padding";
    EXPECT_EQ(button._fontInUse()->getSize(), 20);
    EXPECT_EQ(button.setFontSize(30), 0) << "it is the font of all";
    button.setRect({20, 20}, {100, 60});
    const auto pixel = [&](int x, int y) { return picture([&] { panel.draw(); }).at(x, y); };
    const Pixel edge = {255, 255, 255, 255};
    EXPECT_TRUE(pixel(20, 40) == edge && pixel(119, 79) == edge && pixel(70, 20) == edge);
    EXPECT_EQ(pixel(21, 21), (Pixel{0, 255, 255, 255}));
    act("press 70 70");
    panel.poll();
    EXPECT_EQ(pixel(21, 78), (Pixel{0, 0, 255, 255}));
    EXPECT_EQ(KXUICurrentTheme().tooltip.delay, 20);
    themes.reset(); // its pictures are gone
    EXPECT_EQ(KXUICurrentTheme().skins[KXUIPartButton].normal.texture, nullptr);
    EXPECT_NE(pixel(20, 40), edge);
    KXClearGUIFontCache(); // and so is its font
    KXUISetGlobalFont(testFont(), KXAliasModeTexture, 12, KXZeroPoint);
    panel.draw();
    EXPECT_EQ(button._fontInUse(), nullptr);
}

TEST_F(Theme, EveryWidgetInEveryState) {
    window = nullptr;
    window = std::make_unique<KXWindow>("States", EveryState::size);
    window->setRenderContext();
    EveryState states(*window);
    for (const auto& [theme, name] :
         {std::pair{KXUILightTheme(), "ui/states_light"}, {KXUIDarkTheme(), "ui/states_dark"}}) {
        states.draw(theme);
        expectGolden(Image::of(*window), name);
        const Image atOnce = Image::of(*window);
        KXBeginDrawBatch();
        states.draw(theme);
        KXEndDrawBatch();
        EXPECT_EQ(differingPixels(atOnce, Image::of(*window)), 0) << "in a batch";
        EveryState::drawBrowser(theme);
        expectGolden(Image::of(*window).part(0, 0, 480, 300), name + std::string("_browser"));
    }
}

TEST_F(Theme, FilesThatAreWrongAreRefused) {
    const std::pair<const char*, const char*> wrong[] = {
        {"[]", "must be an object"},
        {R"({"base": "blue"})", "base: must be light"},
        {R"({"colors": {"windows": "#000000"}})", "colors.windows: is no colour"},
        {R"({"colors": {"text": "red"}})", "colors.text: must be a colour"},
        {R"({"ring": -1})", "ring: must be from 0"},
        {R"({"disabledOpacity": 1.5})", "disabledOpacity: must be"},
        {R"({"padding": [1]})", "padding: must be 2 numbers"},
        {R"({"padding": [1, 1e30]})", "padding[1]"},
        {R"({"font": {"file": "none.ttf"}})", "font.file: is no file"},
        {R"({"font": {"file": ".", "size": 0}})", "font.file: is no file"},
        {R"({"skins": {"image": "none.png", "knob": {"normal": [0, 0, 1, 1]}}})",
         "skins.image: cannot be loaded"},
        {R"({"skins": {"knob": {"normal": [0, 0, 1, 1]}}})", "skins.image is missing"},
        {R"({"skins": {"knob": {"normal": [0, 0, 1]}}})", "must be 4 numbers"},
        {R"({"ring": 3)", "no valid JSON"}};
    KXUIThemeFile themes;
    ASSERT_TRUE(themes.load(file(R"({"ring": 5})").c_str()));
    for (const auto& [text, said] : wrong) {
        EXPECT_EQ(themes.load(file(text).c_str()), 0) << text;
        EXPECT_NE(std::string(KXError()).find(said), std::string::npos) << KXError();
    }
    EXPECT_EQ(themes.load(nullptr) | themes.load("/nowhere"), 0);
    EXPECT_EQ(themes.theme().ringWidth, 5) << "it is as it was";
}

struct ScrollPanel : UITest {
    ScrollPanel() {
        for (int i = 0; i < 20; ++i) {
            rows.push_back(std::make_unique<KXUIButton>());
            rows.back()->setSize({150, 20});
            layout.add(*rows.back());
            scroll.add(*rows.back());
        }
        layout.setGap(0);
        scroll.setLayout(&layout);
        scroll.setRect({10, 10}, {100, 100});
        outer.add(scroll);
        poll();
    }
    int poll() override {
        const int told = outer.poll();
        for (int i = 0; i < 20; ++i)
            if (rows[i]->activated())
                clicked = i;
        return told;
    }
    std::string state() override {
        const auto [x, y] = scroll.scrolled();
        return std::to_string(int(x)) + " " + std::to_string(int(y)) + " row " + std::to_string(clicked);
    }
    int clicked = -1;
    KXUILayout layout{KXUIColumn};
    std::vector<std::unique_ptr<KXUIButton>> rows;
    KXUIScrollPanel scroll;
    KXUIPanel outer;
};

// Of 150 x 400, in 88 x 88 with two bars of 12.
TEST_F(ScrollPanel, FollowsWheelBarsAndKeyboard) {
    expectEach("click 20 15 -> told 0 0 row 0; at 20 15, wheel -1 & wheel -1 -> 0 96 row 0;"
               "click 20 15 -> told 0 96 row 5; wheel 1 -> 0 48 row 5; hold Left Shift, wheel -1, let Left "
               "Shift -> 48 48 row 5;"
               "wheel -100 -> 48 312 row 5; wheel 100 -> 48 0 row 5; click 103 50 -> told 48 88 row 5;"
               "press 103 30, at 103 60, release -> told 48 222 row 5; click 95 104 -> told 62 222 row 5;"
               "at 300 190, wheel 1 -> 62 222 row 5; Tab -> 0 120 row 5");
    EXPECT_EQ(outer.focused(), rows[6].get());
    for (int i = 0; i < 5; ++i)
        act("Tab");
    EXPECT_EQ(state(), "0 152 row 5");
    for (int i = 0; i < 12; ++i)
        act("Left Shift+Tab");
    EXPECT_EQ(outer.focused(), rows[19].get());
    EXPECT_EQ(state(), "0 312 row 5");
}

TEST_F(ScrollPanel, ShowsAndClicksNothingOutside) {
    scroll.scrollTo({0, 1000});
    act("poll 1");
    expectEach("click 20 5 -> 0 312 row -1; click 120 50 -> 0 312 row -1; click 104 104 -> 0 312 row -1");
    const Image drawn = picture([&] { outer.draw(); });
    scroll.setVisible(0);
    const Image empty = picture([&] { outer.draw(); });
    int outside = 0;
    for (int i = 0; i < 320 * 200; ++i) {
        const int x = i % 320, y = i / 320;
        outside += (x < 10 || y < 10 || x >= 110 || y >= 110) && drawn.at(x, y) != empty.at(x, y);
    }
    EXPECT_EQ(outside, 0);
    scroll.setVisible(-1);
    scroll.setRect({10, 10}, {300, 500}); // there is room for all
    act("poll 1");
    EXPECT_EQ(state(), "0 0 row -1");
    for (const float wild : {0.0f, -5.0f, NAN, INFINITY}) {
        scroll.setSize({wild, wild});
        scroll.scrollTo({wild, wild});
        act("click 20 20");
        outer.draw();
    }
}
} // namespace
