#include "TextEntryTest.h"

#include <Kobaltrix/KXTexture.h>

#include <cmath>

namespace {
struct TextEntryPicture : TextEntryTest {
    /// Draws a new entry into the next free place, two in a row. @a prepare may focus it and more.
    template<class Prepare>
    void show(Prepare prepare, float height = -1) {
        KXUITextEntry shown;
        shown.setRect(
            {10.0f + 155.0f * static_cast<float>(count % 2), 10.0f + 30.0f * static_cast<float>(count / 2)},
            {145, height});
        prepare(shown);
        shown.poll();
        shown.draw();
        ++count;
    }
    int count = 0;
};

TEST_F(TextEntryPicture, States) {
    const char* const pangram = "The quick brown fox jumps over the lazy dog";
    show([](KXUITextEntry& e) { e.setPlaceholder("{C0.6,1,0.6,1}Name{EC} of the game"); });
    show([](KXUITextEntry& e) {
        e.setPlaceholder("Name");
        e.focus();
    });
    show([&](KXUITextEntry& e) { e.setText(pangram); });
    show([](KXUITextEntry& e) {
        e.setText("Typing égal");
        e.focus();
    });
    show([](KXUITextEntry& e) {
        e.setText("some of it is selected");
        e.select(5, 5);
        e.focus();
    });
    show([&](KXUITextEntry& e) {
        e.setText(pangram);
        e.focus();
    });
    show([&](KXUITextEntry& e) {
        e.setText(pangram);
        e.focus();
        e.poll();
        e.select(20, 1);
    });
    show([](KXUITextEntry& e) {
        e.setText("{C1,0,0,1}%s{EC}%%");
        e.focus();
    });
    show([](KXUITextEntry& e) {
        e.setText("secret");
        e.setMasked(-1);
        e.focus();
        e.select(1, 2);
    });
    show([this](KXUITextEntry& e) {
        e.setText("a b");
        e.select(2, 0);
        e.focus();
        SDL_Event event = {};
        event.type = SDL_TEXTEDITING;
        SDL_strlcpy(event.edit.text, "composed ", sizeof event.edit.text);
        send(event);
    });
    show(
        [](KXUITextEntry& e) {
            e.setText("Own colours");
            e.setBackgroundColor(1, 1, 0.8f, 1);
            e.setBorderColor(0.6f, 0.3f, 0, 1);
            e.setFocusColor(1, 0.5f, 0, 1);
            e.setTextColor(0, 0, 0.5f, 1);
            e.setSelectionColor(0.4f, 0.9f, 0.4f, 1);
            e.setPlaceholderColor(1, 0, 0, 1);
            e.selectAll();
            e.focus();
        },
        30);
    show(
        [](KXUITextEntry& e) {
            e.setFont("no/such/font.ttf", KXAliasModeTexture);
            e.setText("no font");
            e.focus();
        },
        30);
    expectGolden(Image::of(*window), "ui/text_entry");
}

TEST_F(TextEntryPicture, TheCursorBlinks) {
    entry.setText("blinking");
    entry.focus();
    const auto look = [this](unsigned milliseconds) {
        step(milliseconds / 16);
        poll();
        return draw([this] { entry.draw(); });
    };
    const Image on = look(0), off = look(512), again = look(512);
    EXPECT_EQ(differingPixels(on, again), 0);
    EXPECT_GT(differingPixels(on, off), 5);
    look(512);
    key(SDLK_LEFT); // a cursor that moves is seen
    key(SDLK_RIGHT);
    EXPECT_EQ(differingPixels(look(0), on), 0);
}

// Whatever the text, nothing is drawn outside of the box or of the game's clip, in a window or in a texture.
TEST_F(TextEntryPicture, IsCutToItsBoxInEveryTarget) {
    entry.setText("ÅÅÅjjjWWWWWWWWWWWWWWWWWWgggg");
    entry.setRect({20, 20}, {60, 12});
    entry.focus();
    entry.select(3, 3);
    poll();
    KXTexture texture(320, 200);
    KXTexture* const textures[] = {nullptr, &texture};
    Image first;
    for (KXTexture* target : textures) {
        target ? target->setRenderContext() : window->setRenderContext();
        fill({0, 0, 0, 1});
        entry.draw();
        Image image = target ? Image::of(*target) : Image::of(*window);
        for (int y = 0; y < image.height; ++y)
            for (int x = 0; x < image.width; ++x)
                if (x < 20 || x >= 80 || y < 20 || y >= 32) {
                    ASSERT_EQ(image.at(x, y), (Pixel{0, 0, 0, 255})) << x << " " << y;
                }
        for (Pixel& pixel : image.pixels)
            pixel.a = 255; // blended in a texture, of no account in a window
        if (target) {
            EXPECT_EQ(differingPixels(image, first, 2), 0);
        }
        first = image;

        KXRenderContext* const context = KXCurrentRenderContext();
        fill({0, 0, 0, 1});
        context->setClipTo({{30, 0}, {20, 26}});
        entry.draw();
        context->unsetClip();
        const Image clipped = target ? Image::of(*target) : Image::of(*window);
        for (int y = 20; y < 32; ++y)
            for (int x = 20; x < 80; ++x)
                ASSERT_EQ(clipped.at(x, y).r, x >= 30 && x < 50 && y < 26 ? image.at(x, y).r : 0);
    }
    texture.unsetRenderContext();
}

TEST_F(TextEntryPicture, DrawsAPlainBoxWithoutAFontAndBearsAnySize) {
    KXClearGUIFontCache();
    entry.setText("text");
    entry.setPlaceholder(nullptr);
    const Image plain = draw([this] { entry.draw(); });
    EXPECT_EQ(plain.at(11, 11), plain.at(50, 18));
    entry.focus();
    EXPECT_EQ(typed("s"), -1);
    clickAt(3);
    EXPECT_STREQ(entry.text(), "texts");
    entry.setSize({100, -1});
    EXPECT_EQ(entry.rect().size.height, -1);

    ASSERT_EQ(entry.setFont(testFont(), KXAliasModePolygon), -1);
    const float sizes[] = {0, -1, -500, 1, 5, 3e38f, NAN, INFINITY, -INFINITY};
    for (float width : sizes)
        for (float height : sizes)
            for (float origin : {0.0f, -1e9f, 3e38f, NAN}) {
                entry.setRect({origin, origin}, {width, height});
                moveMouse(3, 3);
                entry.poll();
                press();
                entry.poll();
                moveMouse(-30, 3);
                entry.poll();
                release();
                entry.focus();
                entry.poll();
                entry.draw();
            }
    EXPECT_STREQ(entry.text(), "texts");
}
} // namespace
