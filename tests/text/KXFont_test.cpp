#include <Kobaltrix/KXCore.h>
#include <Kobaltrix/KXFont.h>

#include "core/ground/ErrorSlot.h"
#include "support/TemporaryFolder.h"
#include "text/TextTest.h"

#include <FTGL/ftgl.h>
#include <SDL_opengl.h>

#include <cmath>
#include <fstream>
#include <string>
#include <type_traits>

namespace {
constexpr const char* sizeError = "Unable to set font face size";

struct Font : TextTest {};

std::unique_ptr<FTFont> referenceFace(int mode, unsigned size) {
    std::unique_ptr<FTFont> face;
    if (mode == KXAliasModePolygon)
        face = std::make_unique<FTPolygonFont>(testFont());
    else
        face = std::make_unique<FTTextureFont>(testFont());
    face->FaceSize(size, 72);
    return face;
}

float inkWidth(FTFont& face, const char* text) {
    const FTBBox box = face.BBox(text);
    return box.Upper().Xf() - box.Lower().Xf();
}

// What printing must look like, put together by hand from FTGL's own fonts.
struct Piece {
    KXColor color;
    const char* text;
};
void printReference(FTFont& face, bool polygons, KXPoint p, const std::vector<Piece>& pieces) {
    glPushMatrix();
    (polygons ? glDisable : glEnable)(GL_TEXTURE_2D);
    glTranslatef(p.x, p.y + std::floor(face.Ascender()) + std::floor(face.Descender()), 0);
    glScalef(1, -1, -1);
    for (const Piece& piece : pieces) {
        glColor4f(piece.color.r, piece.color.g, piece.color.b, piece.color.a);
        glTranslatef(face.Render(piece.text).Xf(), 0, 0);
    }
    glEnable(GL_TEXTURE_2D);
    glPopMatrix();
}

TEST_F(Font, ModesAndSizes) {
    static_assert(!std::has_virtual_destructor_v<KXFont>);
    EXPECT_THROW(KXFont(), std::bad_alloc);
    for (const int mode : {-1, 0, 1, 2, 3, 1000}) {
        KXFont font(testFont(), mode);
        EXPECT_EQ(font._aliasModeInUse(), mode == 1 ? KXAliasModePolygon : KXAliasModeTexture) << mode;
        EXPECT_EQ(font.getSize(), 10);
        for (const int size : {14, 14, 1, 0, 65535, 20}) {
            EXPECT_EQ(font.setSize(size), -1) << size;
            EXPECT_EQ(font.getSize(), size);
        }
        for (const int size : {-1, -20, 65536, INT32_MAX, INT32_MIN, 1 << 26}) {
            _KXClearError();
            EXPECT_EQ(font.setSize(size), 0) << size;
            EXPECT_STREQ(KXError(), sizeError);
            EXPECT_EQ(font.getSize(), 20);
        }
        EXPECT_GT(font.stringBounds("still there").width, 0);
    }
}

TEST_F(Font, FilesThatAreNoFonts) {
    const TemporaryFolder folder;
    const std::string garbage = folder / "garbage.ttf", cut = folder / "cut.ttf", itself = folder / "";
    std::ofstream(garbage) << std::string(5000, 'g');
    std::ofstream(cut, std::ios::binary) << std::string("\0\1\0\0\0\x13\1\0\0\4\0\x30", 12);
    for (const char* path : {garbage.c_str(), cut.c_str(), itself.c_str(), "/no/such/font.ttf", "/dev/null",
                             "", static_cast<const char*>(nullptr)})
        for (const int mode : {1, 2}) {
            SCOPED_TRACE(path ? path : "null");
            _KXClearError();
            KXFont font(path, mode);
            EXPECT_STREQ(KXError(), sizeError);
            EXPECT_EQ(font.setSize(12), 0);
            EXPECT_EQ(font.getSize(), 0);
            EXPECT_EQ(font.setSize(0), -1); // the size it has
            EXPECT_EQ(font.stringBounds("text").width, 0);
            EXPECT_EQ(font.stringBounds("text", 1).height, 0);
            EXPECT_EQ(font.advance("text"), 0);
            EXPECT_EQ(font.lineHeight() + font.ascender() + font.descender() + font.fullHeight(), 0);
            font.setRenderingOffsetForSize(0, {1, 2});
            EXPECT_EQ(font.renderingOffsetForSize(0).y, 2);
            EXPECT_EQ(drawnPixels([&] { font.print({0, 0}, white, "text"); }), 0);
        }
}

TEST_F(Font, MeasuresAreTheFacesOwn) {
    for (const int mode : {1, 2}) {
        KXFont font(testFont(), mode);
        font.setSize(17);
        const auto face = referenceFace(mode, 17);
        EXPECT_EQ(font.lineHeight(), face->LineHeight());
        EXPECT_EQ(font.ascender(), face->Ascender());
        EXPECT_EQ(font.descender(), face->Descender());
        EXPECT_EQ(font.fullHeight(), face->Ascender() + std::floor(-face->Descender()));
        // Only what would be printed of a long text is measured, unless it is measured raw.
        const std::string longText(5000, 'm'), shown(1023, 'm');
        const struct {
            const char *text, *visible, *raw;
        } texts[] = {{"", "", ""},
                     {"A\nText.\t\xC3\x84\xE2\x82\xAC", "A\nText.\t\xC3\x84\xE2\x82\xAC",
                      "A\nText.\t\xC3\x84\xE2\x82\xAC"},
                     {"{C1,0,0,1}red{EC} rest", "red rest", "{C1,0,0,1}red{EC} rest"},
                     {"broken \xE2\x82", "broken ??", "broken ??"},
                     {longText.c_str(), shown.c_str(), longText.c_str()}};
        for (const auto& t : texts) {
            SCOPED_TRACE(t.text);
            const FTBBox box = face->BBox(t.visible);
            for (const KXSize size : {font.stringBounds(t.text), font.stringBounds(t.text, 0)}) {
                EXPECT_EQ(size.width, box.Upper().Xf() - box.Lower().Xf());
                EXPECT_EQ(size.height, box.Upper().Yf() - box.Lower().Yf());
            }
            EXPECT_EQ(font.stringBounds(t.text, 1).width, inkWidth(*face, t.raw));
            EXPECT_EQ(font.advance(t.text), face->Advance(t.raw));
        }
        EXPECT_EQ(font.advance(nullptr), 0);
        EXPECT_EQ(font.stringBounds(nullptr).width, 0);
        EXPECT_EQ(font.stringBounds(nullptr, 1).width, 0);
    }
}

TEST_F(Font, OffsetsBelongToTheSizeInUse) {
    KXFont font(testFont(), 2);
    const auto print = [&](KXPoint p) { return draw([&] { font.print(p, white, "%c", 'H'); }); };
    const Image plain = print({14, 11});
    font.setRenderingOffsetForSize(12, {3, 4});
    font.setRenderingOffsetForSize(99, {5, 6});
    EXPECT_EQ(font.renderingOffsetForSize(12).x, 0); // the size is 10
    EXPECT_EQ(differingPixels(print({14, 11}), plain), 0);
    font.setRenderingOffsetForSize(10, {3, 3});
    font.setRenderingOffsetForSize(10, {4, -6});
    EXPECT_EQ(font.renderingOffsetForSize(99).x, 4);
    EXPECT_EQ(differingPixels(print({10, 17}), plain), 0);
    font.setSize(99);
    EXPECT_EQ(font.renderingOffsetForSize(0).y, 6);
}

TEST_F(Font, PrintedPixelsMatchTheReference) {
    constexpr KXColor half = {1, 1, 0, 0.5f}, red = {1, 0, 0, 1}, blue = {0, 0, 1, 0.25f},
                      clear = {1, 0, 0, 0};
    const struct {
        const char* text;
        std::vector<Piece> pieces;
    } cases[] = {
        {"Text, gjpqy \xC3\x84 \xE2\x82\xAC 5", {{half, "Text, gjpqy \xC3\x84 \xE2\x82\xAC 5"}}},
        {"a {C1,0,0,1}red{EC} b{C0,0,1,.25}blue{EC}.",
         {{half, "a "}, {red, "red"}, {half, " b"}, {blue, "blue"}, {half, "."}}},
        {"}{C1,0,0,1}x{EC}y", {{half, "}"}, {clear, "{C1,0,0,1}x"}, {half, "y"}}},
        {"cut \xF0\x9F", {{half, "cut ??"}}},
    };
    for (const int mode : {1, 2})
        for (const unsigned size : {11u, 24u}) {
            KXFont font(testFont(), mode);
            font.setSize(static_cast<int>(size));
            const auto face = referenceFace(mode, size);
            for (const auto& c : cases) {
                SCOPED_TRACE(testing::Message() << c.text << " mode " << mode << " size " << size);
                const Image expected = draw([&] { printReference(*face, mode == 1, {5, 8}, c.pieces); });
                const Image actual = draw([&] { font.print({5, 8}, half, "%s", c.text); });
                EXPECT_EQ(differingPixels(expected, actual, 1), 0);
                EXPECT_GT(differingPixels(actual, draw([] {})), 0);
            }
        }
}

TEST_F(Font, LongTextIsCutBetweenCharacters) {
    KXFont font(testFont(), 2);
    const std::string blanks(1020, ' ');
    const struct {
        const char *end, *printed;
    } cases[] = {
        {"  mi", "  m"}, {"  \xC3\xA4", ""}, {"\xE2\x82\xACm", "\xE2\x82\xAC"}, {" \xC3\xA4", " \xC3\xA4"}};
    const float x = 10 - font.advance(blanks.c_str()); // the cut end is what shows
    for (const auto& c : cases) {
        SCOPED_TRACE(c.end);
        const auto print = [&](const char* end) {
            return draw([&] { font.print({x, 10}, white, "%s%s", blanks.c_str(), end); });
        };
        const Image actual = print(c.end);
        EXPECT_EQ(differingPixels(actual, print(c.printed)), 0);
        EXPECT_EQ(differingPixels(actual, print("")) > 0, *c.printed != 0);
    }
    font.print({0, 0}, white, nullptr);
}

TEST_F(Font, AnyBytesAreSafe) {
    for (const int mode : {1, 2}) {
        KXFont font(testFont(), mode);
        font.setSize(9);
        for (int first = 1; first < 256; ++first)
            for (const char* rest : {"", "\x80", "\x80\x80", "\xBF\xBF\xBF", "\xFF", "a", "{C,,,}"}) {
                const std::string text = static_cast<char>(first) + std::string(rest);
                EXPECT_GE(font.stringBounds(text.c_str(), 1).width, 0);
                EXPECT_GE(font.stringBounds(text.c_str(), 0).width, 0);
                EXPECT_GE(font.advance(text.c_str()), 0);
                font.print({5, 5}, white, "%s", text.c_str());
            }
    }
}

TEST_F(Font, GlyphsOfEverySizeFindRoom) {
    std::string text;
    for (unsigned c = 0x20; c < 0x250; ++c)
        text += c < 0x80
                    ? std::string(1, static_cast<char>(c))
                    : std::string{static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F))};
    for (const int size : {1, 2, 5, 13, 40, 200, 3000}) {
        KXFont font(testFont(), 2);
        font.setSize(size);
        const std::string some = size > 200 ? "W" : text;
        font.print({0, 0}, white, "%s", some.c_str());
        EXPECT_EQ(font.stringBounds(some.c_str(), 1).width,
                  inkWidth(*referenceFace(1, static_cast<unsigned>(size)), some.c_str()))
            << size;
    }
    // Beyond what a texture holds a glyph is left out.
    KXFont font(testFont(), 2);
    font.setSize(65000);
    EXPECT_EQ(font.stringBounds("W").width, 0);
    EXPECT_EQ(drawnPixels([&] { font.print({0, 0}, white, "W"); }), 0);
}
} // namespace
