#include <Kobaltrix/KXFont.h>

#include "render/ContextParts.h"
#include "text/TextTest.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXCamera.h>
#include <Kobaltrix/KXDrawBatch.h>
#include <Kobaltrix/KXTextLayout.h>

#include <FTGL/ftgl.h>
#include <SDL_video.h>

#include <climits>

namespace {
constexpr const char* sizeError = "Unable to set font face size";

// Each test is made with polygons and with textures.
struct Font : TextTest, testing::WithParamInterface<KXAliasMode> {
    std::unique_ptr<KXFont> open() const { return std::make_unique<KXFont>(testFont(), GetParam()); }
    Image printed(KXPoint p, const char* text, KXWindow* target = nullptr) {
        return picture([&] { font->print(p, white, "%s", text); }, target);
    }
    const bool polygons = GetParam() == KXAliasModePolygon;
    const char* const spans = "a{C1,1,0,1}b{EC}c";
    std::unique_ptr<KXFont> font = open();
    // FTGL's own font, which results are compared with.
    const std::unique_ptr<FTFont> face{polygons ? static_cast<FTFont*>(new FTPolygonFont(testFont()))
                                                : new FTTextureFont(testFont())};
};
const auto modes = testing::Values(KXAliasModePolygon, KXAliasModeTexture);
INSTANTIATE_TEST_SUITE_P(Modes, Font, modes);

TEST_P(Font, SizesAreSetOrRefused) {
    static_assert(!std::has_virtual_destructor_v<KXFont>);
    EXPECT_THROW(KXFont(), std::bad_alloc);
    for (const int mode : {-1, 0, 1, 2, 3, 1000})
        EXPECT_EQ(KXFont(testFont(), mode)._aliasModeInUse(),
                  mode == 1 ? KXAliasModePolygon : KXAliasModeTexture);
    EXPECT_EQ(font->getSize(), 10);
    for (const int size : {14, 14, 1, 0, 65535, 20, -1, 65536, INT_MAX, INT_MIN, 1 << 26}) {
        _KXClearError();
        const bool fits = size >= 0 && size < 65536;
        EXPECT_EQ(font->setSize(size), fits ? -1 : 0) << size;
        EXPECT_STREQ(KXError(), fits ? "" : sizeError);
        EXPECT_EQ(font->getSize(), fits ? size : 20);
    }
    EXPECT_GT(font->stringBounds("still there").width, 0);
}

TEST_P(Font, FilesThatAreNoFonts) {
    const TemporaryFolder folder;
    const std::string garbage = folder.write("garbage.ttf", std::string(5000, 'g')),
                      cut = folder.write("cut.ttf", {"\0\1\0\0\0\x13\1\0\0\4\0\x30", 12});
    for (const char* path : {garbage.c_str(), cut.c_str(), folder.path().c_str(), "/no/such/font.ttf",
                             "/dev/null", "", static_cast<const char*>(nullptr)}) {
        SCOPED_TRACE(path ? path : "null");
        _KXClearError();
        KXFont none(path, GetParam());
        EXPECT_STREQ(KXError(), sizeError);
        EXPECT_EQ(none.setSize(12), 0);
        EXPECT_EQ(none.setSize(0), -1); // the size it has
        EXPECT_EQ(none.stringBounds("x").width + none.stringBounds("x", 1).height + none.advance("x"), 0);
        EXPECT_EQ(none.lineHeight() + none.ascender() - none.descender() + none.fullHeight(), 0);
        EXPECT_EQ(boxOf(picture([&] { none.print({0, 0}, white, "text"); })), nothing);
    }
}

TEST_P(Font, MeasuresAreTheFacesOwn) {
    font->setSize(17);
    face->FaceSize(17);
    EXPECT_EQ(std::tuple(font->lineHeight(), font->ascender(), font->descender(), font->fullHeight()),
              std::tuple(face->LineHeight(), face->Ascender(), face->Descender(),
                         face->Ascender() + std::floor(-face->Descender())));
    const auto expectBox = [&](KXSize size, const std::string& text) {
        const FTBBox box = face->BBox(text.c_str());
        EXPECT_EQ(size.width, box.Upper().Xf() - box.Lower().Xf()) << text;
        EXPECT_EQ(size.height, box.Upper().Yf() - box.Lower().Yf()) << text;
    };
    // Only the beginning of a long text is measured, unless it is measured raw.
    const std::string longText(5000, 'm'),
        texts[] = {"A\nT.\t\u00c4\u20ac", "{C1,0,0,1}red{EC} rest", longText, "??"};
    const std::string visible[] = {texts[0], "red rest", longText.substr(0, 1023), "??"};
    for (int i = 0; i < 4; ++i) {
        const char* const text = i == 3 ? "\xE2\x82" : texts[i].c_str();
        expectBox(font->stringBounds(text), visible[i]);
        expectBox(font->stringBounds(text, 1), texts[i]);
        EXPECT_EQ(font->advance(text), face->Advance(texts[i].c_str()));
    }
    EXPECT_EQ(font->advance(nullptr) + font->stringBounds(nullptr).width, 0);
}

TEST_P(Font, OffsetsBelongToTheSizeInUse) {
    const Image plain = printed({14, 11}, "H");
    font->setRenderingOffsetForSize(12, {3, 4});
    font->setRenderingOffsetForSize(99, {5, 6});
    EXPECT_EQ(font->renderingOffsetForSize(12).x, 0); // the size is 10
    EXPECT_EQ(differingPixels(printed({14, 11}, "H"), plain), 0);
    font->setRenderingOffsetForSize(10, {4, -6});
    EXPECT_EQ(font->renderingOffsetForSize(99).x, 4);
    EXPECT_EQ(differingPixels(printed({10, 17}, "H"), plain), 0);
    font->setSize(99);
    EXPECT_EQ(font->renderingOffsetForSize(0).y, 6);
}

using Pieces = std::vector<std::pair<KXColor, const char*>>; // of one colour each

void printReference(FTFont& face, bool polygons, const Pieces& pieces) {
    glPushMatrix();
    (polygons ? glDisable : glEnable)(GL_TEXTURE_2D);
    glTranslatef(5, 8 + std::floor(face.Ascender()) + std::floor(face.Descender()), 0);
    glScalef(1, -1, -1);
    for (const auto& [color, text] : pieces) {
        glColor4fv(&color.r);
        glTranslatef(face.Render(text).Xf(), 0, 0);
    }
    glEnable(GL_TEXTURE_2D);
    glPopMatrix();
}

TEST_P(Font, PrintedPixelsMatchTheReference) {
    const KXColor half = {1, 1, 0, 0.5f}, faint = {0, 0, 1, 0.25f}, clear = {1, 0, 0, 0};
    const std::pair<const char*, Pieces> cases[] = {
        {"a {C1,0,0,1}red{EC} b{C0,0,1,.25}blue{EC}.",
         {{half, "a "}, {KXRedColor, "red"}, {half, " b"}, {faint, "blue"}, {half, "."}}},
        {"}{C1,0,0,1}x{EC}y%s", {{half, "}"}, {clear, "{C1,0,0,1}x"}, {half, "y%s"}}},
        {"gjpqy \u00c4 \u20ac cut \xF0\x9F", {{half, "gjpqy \u00c4 \u20ac cut ??"}}},
        {"plain {C1,0,0,1}%s{EC}%% \xF0\x9F", {{half, "plain {C1,0,0,1}%s{EC}%% ??"}}},
    };
    for (const unsigned size : {11u, 24u})
        for (const auto& row : cases) {
            face->FaceSize(size);
            font->setSize(static_cast<int>(size));
            const Image expected = picture([&] { printReference(*face, polygons, row.second); });
            const Image actual = picture([&, text = row.first] {
                if (std::string(text).starts_with("plain"))
                    font->_printPlain({5, 8}, half, text);
                else
                    font->print({5, 8}, half, "%s", text);
            });
            EXPECT_EQ(differingPixels(expected, actual, 1), 0) << row.first << " size " << size;
            EXPECT_NE(boxOf(actual), nothing);
        }
}

TEST_P(Font, LongTextIsCutBetweenCharacters) {
    const std::string blanks(1020, ' ');
    const KXPoint p = {10 - font->advance(blanks.c_str()), 10}; // the end is what shows
    const auto print = [&](const char* end) { return printed(p, (blanks + end).c_str()); };
    for (const auto& [end, kept] :
         {std::pair{"  mi", "  m"}, {"  \u00c4", ""}, {"\u20acm", "\u20ac"}, {" \u00c4", " \u00c4"}}) {
        EXPECT_EQ(differingPixels(print(end), print(kept)), 0) << end;
        EXPECT_EQ(differingPixels(print(end), print("")) > 0, *kept != 0) << end;
    }
    const auto plain = [&] { font->_printPlain(p, white, (blanks + "  mi").c_str()); };
    EXPECT_GT(differingPixels(picture(plain), print("  m")), 0);
    font->print({0, 0}, white, nullptr);
    font->_printPlain({0, 0}, white, nullptr);
}

// State that a game may have set and that neither measuring nor printing may change.
std::vector<float> openGLState() {
    std::vector<float> state(1);
    glGetTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, state.data());
    for (const GLenum name :
         {GL_MODELVIEW_MATRIX, GL_PROJECTION_MATRIX, GL_TEXTURE_BINDING_2D, GL_BLEND, GL_BLEND_SRC,
          GL_BLEND_DST, GL_TEXTURE_2D, GL_MATRIX_MODE, GL_MODELVIEW_STACK_DEPTH, GL_ATTRIB_STACK_DEPTH,
          GL_CLIENT_ATTRIB_STACK_DEPTH, GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_ROWS, GL_UNPACK_ALIGNMENT}) {
        state.resize(state.size() + 16);
        glGetFloatv(name, &state.end()[-16]);
    }
    return state;
}

TEST_P(Font, TheGamesStateIsLeftAlone) {
    const Image expected = printed({6, 5}, spans);
    void (*const states[])() = {[] {}, [] { glDisable(GL_TEXTURE_2D); },
                                [] { glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL); },
                                // Polygons are blended as the game blends.
                                [] { glDisable(GL_BLEND); },
                                [] { glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA); },
                                [] { glBlendFunc(GL_SRC_ALPHA, GL_ONE); }};
    glTranslatef(3, 4, 0);
    for (std::size_t i = 0; i < (polygons ? 3 : std::size(states)); ++i) {
        SCOPED_TRACE(i);
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glBindTexture(GL_TEXTURE_2D, 99);
        // Uploads that followed these would read far outside of their memory.
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 5000);
        glPixelStorei(GL_UNPACK_SKIP_ROWS, 700);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
        states[i]();
        const std::vector<float> before = openGLState();
        font = open(); // glyphs are made anew
        font->stringBounds("a");
        EXPECT_EQ(openGLState(), before);
        EXPECT_EQ(differingPixels(printed({3, 1}, spans), expected), 0);
        float color[4];
        glGetFloatv(GL_CURRENT_COLOR, color);
        EXPECT_EQ(color[2], 1); // the default colour, not the span's
        if (polygons) {         // they promise to leave texturing on
            EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
            states[i]();
        }
        EXPECT_EQ(openGLState(), before);
        glPopAttrib();
    }
}

TEST_P(Font, WithoutAContextGlyphsWait) {
    makeWindow().reset(); // the current window: no other takes its place
    EXPECT_GT(font->lineHeight(), 0);
    EXPECT_EQ(font->stringBounds("text").width + font->advance("text"), 0);
    font->print({5, 5}, white, "text");
    window->setRenderContext();
    EXPECT_EQ(font->advance("text"), open()->advance("text"));
    EXPECT_NE(boxOf(printed({5, 5}, "text")), nothing);
}

// Textures and display lists of the game in the first window: a font that deletes its glyphs while another
// context is current hits these.
struct FontContexts : Font {
    static constexpr int names = 40;
    FontContexts() {
        font->setSize(11); // which takes the glyphs away
        for (int name = 1; name <= names; ++name) {
            glBindTexture(GL_TEXTURE_2D, name);
            glNewList(name, GL_COMPILE);
            glEndList();
        }
    }
    void expectText(KXWindow& target) {
        target.setRenderContext();
        font->setSize(10);
        EXPECT_EQ(differingPixels(printed({5, 5}, spans, &target), expected), 0);
    }
    // The font lets go of its glyphs whatever is current.
    void expectNoGlyphs() {
        font->setSize(11);
        window->setRenderContext();
        int alive = 0;
        for (int name = 1; name < 1000; ++name)
            alive += glIsTexture(name) + glIsList(name);
        EXPECT_EQ(alive, 2 * names);
    }
    const Image expected = printed({5, 5}, spans);
};
INSTANTIATE_TEST_SUITE_P(Modes, FontContexts, modes);

TEST_P(FontContexts, GlyphsFollowTheContext) {
    expectText(*window);
    auto other = makeWindow(window->size());
    const SDL_GLContext current = SDL_GL_GetCurrentContext();
    font->setSize(11);
    EXPECT_EQ(SDL_GL_GetCurrentContext(), current);
    expectNoGlyphs();
    for (KXWindow* const target : {window.get(), other.get(), window.get(), other.get()})
        expectText(*target);
    other.reset(); // the context of a new window may have the address that this one's had
    other = makeWindow(window->size());
    expectText(*other);
    window->setRenderContext();
    expectNoGlyphs();
    expectText(*other);
    other.reset(); // none is current now, and the glyphs' own is gone
    expectNoGlyphs();
    expectText(*window);
    makeWindow().reset();
    font->setSize(11);
    EXPECT_EQ(SDL_GL_GetCurrentContext(), nullptr);
    other = makeWindow(window->size());
    expectText(*other);
    window->setRenderContext();
    other.reset(); // the glyphs' own is gone while another is current
    expectNoGlyphs();
    expectText(*window);
    font = open(); // the one before ends
    expectNoGlyphs();
}

struct GlyphTextures : TextTest {
    KXFont font{testFont(), KXAliasModeTexture};
};

TEST_F(GlyphTextures, NeighboursDoNotShow) {
    const std::string letters = "MWHj|gQ@#&%Zx[]{}ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    font._printPlain({0, 0}, white, letters.c_str());
    KXFont lonely(testFont(), KXAliasModeTexture);
    glScalef(4.3f, 4.3f, 1);
    for (const char c : letters) {
        const auto enlarged = [&](KXFont& by) {
            return picture([&] { by.print({3.4f, 0.3f}, white, "%c", c); });
        };
        EXPECT_EQ(differingPixels(enlarged(lonely), enlarged(font), 2), 0) << c;
    }
}

TEST_F(GlyphTextures, GlyphsOfEverySizeFindRoom) {
    std::string letters;
    for (char32_t c = 0x20; c < 0x250; ++c)
        _KXAppendCharacter(letters, c);
    for (const int size : {1, 2, 5, 13, 40, 200, 3000}) {
        font.setSize(size);
        font._printPlain({0, 0}, white, letters.substr(0, size > 200 ? 6 : letters.size()).c_str());
    }
    const auto print = [this] { font.print({0, 0}, white, "W"); };
    EXPECT_NE(boxOf(picture(print)), nothing);
    const int largest = state(GL_MAX_TEXTURE_SIZE)[0];
    font.setSize(largest + largest / 8); // what no texture holds is left out
    EXPECT_EQ(font.stringBounds("W").width, 0);
    EXPECT_EQ(boxOf(picture(print)), nothing);
}

TEST_F(GlyphTextures, AllFontsShareThemAndTheyGoWithTheirs) {
    const auto made = [](const auto& draw) {
        const int before = KXCurrentGlyphStatistics().made;
        draw();
        return KXCurrentGlyphStatistics().made - before;
    };
    const KXTextLayout layout(font, "shared");
    KXFont other(testFont(), KXAliasModeTexture);
    other.setSize(14);
    const auto draw = [&] {
        font.print({2, 2}, white, "shared");
        layout.draw({2, 30}, white);
        other._printPlain({100, 2}, white, "others");
    };
    EXPECT_EQ(made(draw), 12); // six letters in two sizes; no letter twice
    EXPECT_EQ(made([&] { font.setSize(9), font.setSize(10), draw(); }), 0);
    const KXGlyphStatistics before = KXCurrentGlyphStatistics();
    EXPECT_EQ(before.pages, 1);
    const auto another = makeWindow(window->size());
    EXPECT_EQ(KXCurrentGlyphStatistics().glyphs, 0);
    EXPECT_EQ(made(draw), 12);
    window->setRenderContext();
    EXPECT_EQ(made(draw), 0);
    {
        KXFont gone(testFont(), KXAliasModeTexture);
        gone.print({2, 2}, white, "gone");
        EXPECT_EQ(KXCurrentGlyphStatistics().glyphs, before.glyphs + 4);
    }
    const KXGlyphStatistics after = KXCurrentGlyphStatistics();
    EXPECT_EQ(std::tuple(after.glyphs, after.pages, after.dropped), std::tuple(before.glyphs, 1, 4));
}

TEST_F(GlyphTextures, MemoryIsBoundedAndWhatHasLeftIsMadeAgain) {
    const KXTextLayout layout(font, "A layout {C1,0,0,1}that{EC} is kept");
    const auto draw = [&] {
        font.print({2, 2}, white, "and a line that was printed");
        layout.draw({2, 30}, white);
    };
    const Image expected = picture(draw);
    const std::size_t page = KXCurrentGlyphStatistics().bytes, most = 2 * page;
    KXFont others[6]{{testFont(), 2}, {testFont(), 2}, {testFont(), 2},
                     {testFont(), 2}, {testFont(), 2}, {testFont(), 2}};
    const auto fillPage = [&](KXFont& by) { by.print({0, -300}, white, "ABCDEFGHKLMNOPQRSTUV"); };
    for (int i = 0; i < 6; ++i)
        others[i].setSize(96 + i);
    KXSetGlyphMemory(most);
    for (KXFont& other : others) {
        fillPage(other);
        window->swapBuffers();
        window->swapBuffers();
        EXPECT_LE(KXCurrentGlyphStatistics().bytes, most);
    }
    EXPECT_GT(KXCurrentGlyphStatistics().dropped, 50);
    EXPECT_EQ(differingPixels(picture(draw), expected), 0);
    // What a frame uses stays for it, whether it has left the batch or not.
    KXBeginDrawBatch();
    const Image crowded = picture([&] {
        draw();
        for (KXFont& other : others)
            fillPage(other);
        const int made = KXCurrentGlyphStatistics().made;
        EXPECT_GT(KXCurrentGlyphStatistics().bytes, most);
        draw();
        EXPECT_EQ(KXCurrentGlyphStatistics().made, made);
        KXEndDrawBatch();
    });
    KXSetGlyphMemory(std::size_t{16} << 20);
    EXPECT_EQ(differingPixels(crowded, picture([&] { draw(), draw(); })), 0);
}

struct SharpText : GlyphTextures {
    // Glyphs are filtered then, which shows whether they stand on whole pixels.
    SharpText() { _KXSetCurrentDriver(_KXDriver::Hardware); }
    /// Where a font prints to have its baseline begin at a point.
    static KXPoint topOf(const KXFont& by, KXPoint baseline) {
        return {baseline.x, baseline.y - std::floor(by.ascender()) - std::floor(by.descender())};
    }
    /// Prints and lays out a text by one font, beside each other.
    static void write(const KXFont& by, KXPoint at, float layoutX) {
        const_cast<KXFont&>(by).print(topOf(by, at), white, "ago we");
        const KXTextLayout layout(by, "ago {C1,0,0,1}we{EC}");
        layout.draw({layoutX, at.y - layout.line(0).baseline}, white);
    }
    void setScale(float scale) {
        KXLogicalSize logical;
        logical.size = {320 / scale, 64 / scale};
        window->setLogicalSize(logical);
        window->setRenderContext();
    }
    KXFont large{testFont(), KXAliasModeTexture};
};

TEST_F(SharpText, IsMadeOfTheTargetsPixels) {
    font.setSize(12);
    for (const float scale : {2.0f, 1.5f, 0.5f}) {
        SCOPED_TRACE(scale);
        large.setSize(static_cast<int>(12 * scale));
        setScale(1);
        const Image expected = picture([&] { write(large, KXPoint{12 * scale, 16 * scale}, 80 * scale); });
        const auto show = [&] { write(font, {12, 16}, 80); };
        const auto inBatch = [&] {
            KXBeginDrawBatch();
            write(font, {12.2f, 15.9f}, 80.1f); // comes to lie on whole pixels
            KXEndDrawBatch();
        };
        const auto seen = [&](int sharp) {
            return [&, sharp] {
                KXCamera camera;
                camera.zoom = scale;
                camera.centre = {160 / scale, 32 / scale};
                camera.sharpText = sharp;
                KXPushCamera(camera), show(), KXPopCamera();
            };
        };
        EXPECT_EQ(differingPixels(picture(seen(-1)), expected), 0);
        EXPECT_GT(differingPixels(picture(seen(0)), expected), 50);
        setScale(scale);
        EXPECT_GT(differingPixels(picture(show), expected), 50) << "it is enlarged unless it is asked for";
        window->setSharpText(-1);
        EXPECT_EQ(differingPixels(picture(show), expected), 0);
        EXPECT_EQ(differingPixels(picture(inBatch), expected), 0);
        const auto inTexture = [&] {
            KXTexture texture(320, 64);
            texture.setRenderContext();
            show();
            texture.unsetRenderContext();
            return Image::of(texture);
        };
        const Image sharp = inTexture();
        window->setSharpText(0);
        EXPECT_EQ(differingPixels(sharp, inTexture()), 0) << "which has pixels of its own";
    }
}

TEST_F(SharpText, AGlidingZoomMakesGlyphsAFewTimes) {
    KXCamera camera;
    camera.sharpText = -1;
    const auto madeUpTo = [&](float zoom) {
        for (; camera.zoom < zoom; camera.zoom *= 1.003f)
            KXPushCamera(camera), font.print(camera.centre, white, "W"), KXPopCamera();
        return KXCurrentGlyphStatistics().made;
    };
    EXPECT_EQ(madeUpTo(2), 5); // 1, 1.25, 1.5, 1.75 and 2 times
    const int made = madeUpTo(25);
    EXPECT_LE(made, 5 + 15);
    EXPECT_LE(madeUpTo(3000), made + 1) << "256 pixels are enough";
}
} // namespace
