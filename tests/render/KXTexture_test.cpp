#include <Kobaltrix/KXTexture.h>

#include "core/ground/ErrorSlot.h"
#include "render/GraphicsContext.h"
#include "support/TemporaryFolder.h"
#include "support/WindowTest.h"

#include <SDL_image.h>
#include <SDL_opengl.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <new>

namespace {
struct Texture : WindowTest {
    /// Four pixels in two rows: red, green; blue, half-transparent white.
    static constexpr Pixel sample[4] = {
        {255, 0, 0, 255}, {0, 255, 0, 255}, {0, 0, 255, 255}, {255, 255, 255, 128}};

    static void load(KXTexture& texture) {
        ASSERT_EQ(texture._loadFromData(2, 2, 4, GL_RGBA, reinterpret_cast<const char*>(sample)), -1);
    }

    /// An image of 3 x 2 pixels in a format of the platform; the first row begins with red, green, blue.
    std::string writeImage(const std::string& name, Uint32 format) const {
        SDL_Surface* rgba = SDL_CreateRGBSurfaceWithFormat(0, 3, 2, 32, SDL_PIXELFORMAT_RGBA32);
        const Uint32 colors[] = {SDL_MapRGBA(rgba->format, 255, 0, 0, 255),
                                 SDL_MapRGBA(rgba->format, 0, 255, 0, 255),
                                 SDL_MapRGBA(rgba->format, 0, 0, 255, 255)};
        for (int x = 0; x < 3; ++x) {
            const SDL_Rect pixel = {x, 0, 1, 1};
            SDL_FillRect(rgba, &pixel, colors[x]);
        }
        SDL_Surface* surface = SDL_ConvertSurfaceFormat(rgba, format, 0);
        const std::string path = folder / name;
        const bool bmp = name.ends_with(".bmp");
        EXPECT_EQ(bmp ? SDL_SaveBMP(surface, path.c_str()) : IMG_SavePNG(surface, path.c_str()), 0)
            << SDL_GetError();
        SDL_FreeSurface(surface);
        SDL_FreeSurface(rgba);
        return path;
    }

    TemporaryFolder folder;
};

TEST_F(Texture, LoadsTruecolorImagesWithTheirChannelsInOrder) {
    const struct {
        const char* name;
        Uint32 format;
    } images[] = {
        {"rgb.png", SDL_PIXELFORMAT_RGB24},
        {"rgba.png", SDL_PIXELFORMAT_RGBA32},
        {"bgr.bmp", SDL_PIXELFORMAT_BGR24},
        {"bgra.bmp", SDL_PIXELFORMAT_BGRA32},
    };
    for (const auto& [name, format] : images) {
        KXTexture texture(writeImage(name, format).c_str());
        EXPECT_EQ(texture.size().width, 3) << name;
        EXPECT_EQ(texture.size().height, 2) << name;
        const Image image = Image::of(texture);
        const Pixel red = {255, 0, 0, 255}, green = {0, 255, 0, 255}, blue = {0, 0, 255, 255};
        EXPECT_EQ(image.at(0, 0), red) << name;
        EXPECT_EQ(image.at(1, 0), green) << name;
        EXPECT_EQ(image.at(2, 0), blue) << name;
    }
}

TEST_F(Texture, RefusesImagesItCannotDraw) {
    std::ifstream file(writeImage("whole.png", SDL_PIXELFORMAT_RGBA32), std::ios::binary);
    const std::string whole((std::istreambuf_iterator<char>(file)), {});
    const std::string silent[] = {
        folder / "missing.png",
        folder.write("empty.png", ""),
        folder.write("garbage.png", "no image at all"),
        folder.write("signature.png", whole.substr(0, 8)),
        folder.write("header.png", whole.substr(0, 20)),
        folder.path(),
        "",
    };
    for (const std::string& path : silent) {
        _KXSetError("untouched");
        EXPECT_THROW(KXTexture{path.c_str()}, std::bad_alloc) << path;
        EXPECT_STREQ(KXError(), "untouched") << path;
    }
    EXPECT_THROW(KXTexture{static_cast<const char*>(nullptr)}, std::bad_alloc);

    // A palette and a 16-bit surface are images, but not in true colour. The path is used as a format: its
    // percent signs are safe.
    const std::string odd = writeImage("100%s %n %%.png", SDL_PIXELFORMAT_INDEX8);
    EXPECT_THROW(KXTexture{odd.c_str()}, std::bad_alloc);
    EXPECT_TRUE(std::string(KXError()).ends_with("100%s %n %.png: not a truecolor image")) << KXError();

    const std::string gray = folder.write("gray.pgm", "P5 2 2 255\n\x01\x80\xff\x7f");
    // Two bytes a pixel: a header of 54 bytes, masks of 16-bit colour, one row.
    const char bmp[] =
        "BM\x4a\0\0\0\0\0\0\0\x42\0\0\0\x28\0\0\0\x02\0\0\0\x01\0\0\0\x01\0\x10\0\x03\0\0\0"
        "\x04\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\xf8\0\0\xe0\x07\0\0\x1f\0\0\0\0\xf8\x1f\0";
    const std::string sixteen = folder.write("16.bmp", std::string(bmp, sizeof bmp - 1));
    for (const std::string& path : {gray, sixteen}) {
        EXPECT_THROW(KXTexture{path.c_str()}, std::bad_alloc);
        EXPECT_TRUE(std::string(KXError()).ends_with(": not a truecolor image")) << path << ": " << KXError();
    }

    KXTexture texture;
    load(texture);
    EXPECT_EQ(texture._loadImage(odd.c_str()), 0);
    EXPECT_EQ(texture.getPixel({1, 0}, 0).g, 1) << "a failed load keeps what was there";
}

TEST_F(Texture, RefusesSizesTheDriverCannotHold) {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    const int sizes[][2] = {{0, 4}, {4, 0}, {-1, 4}, {4, -2147483647}, {largest + 1, 1}, {1, 2147483647}};
    for (const auto& [width, height] : sizes) {
        _KXClearError();
        KXTexture refused(width, height);
        EXPECT_EQ(refused.size().width + refused.size().height, 0) << width << " x " << height;
        EXPECT_STRNE(KXError(), "");
        refused.draw(0, 0, -1);
    }
    EXPECT_EQ(KXTexture(largest, 1).size().width, static_cast<float>(largest));
}

TEST_F(Texture, ReadsSinglePixels) {
    KXTexture texture;
    load(texture);
    EXPECT_EQ(texture.getPixel({1.9f, 0.2f}, 0).g, 1);
    EXPECT_NEAR(texture.getPixel({1, 1}, -1).a, 0.5, 0.01); // now kept
    EXPECT_EQ(texture.getPixel({0, 1}, 0).b, 1);
    for (const KXPoint outside : {KXPoint{2, 0}, {-1, 0}, {0, 2}, {0, -1}, {1e30f, 0}, {-1e30f, 1}}) {
        const KXColor color = texture.getPixel(outside, 0);
        EXPECT_EQ(color.r + color.g + color.b + color.a, -4) << outside.x << ',' << outside.y;
    }
    // Kept pixels do not outlive the contents they show.
    texture.clear();
    EXPECT_EQ(texture.getPixel({0, 1}, -1).b, 0);
    texture._loadFromData(1, 1, 4, GL_RGBA, reinterpret_cast<const char*>(sample));
    EXPECT_EQ(texture.getPixel({0, 0}, 0).r, 1);
    EXPECT_EQ(texture.getPixel({1, 1}, 0).r, -1);
    KXTexture empty;
    EXPECT_EQ(empty.getPixel({0, 0}, -1).a, -1);
}

TEST_F(Texture, ClearsEverySizeToTransparentBlack) {
    for (const int height : {1, 63, 64, 65, 130}) {
        KXTexture texture(5, height);
        texture.clear();
        const Image image = Image::of(texture);
        const Pixel transparent = {0, 0, 0, 0};
        for (const Pixel& pixel : image.pixels)
            ASSERT_EQ(pixel, transparent) << height;
    }
}

TEST_F(Texture, TintsWithoutTheTintsAlpha) {
    const Pixel white = {255, 255, 255, 255};
    KXTexture texture;
    texture._loadFromData(1, 1, 4, GL_RGBA, reinterpret_cast<const char*>(&white));
    EXPECT_EQ(texture.tint().a, 1);
    texture.setTint({1, 0, 0, 0.2f});
    texture.draw(0, 0, 1, 1, 10, 10, 5, 5, 1.0f, 1.0f, 0, 0, -1);
    texture.draw(0, 0, 1, 1, 10, 10, 25, 5, 0.5f, 1.0f, 0, 0, -1);
    const Image image = Image::of(*window);
    const Pixel red = {255, 0, 0, 255};
    EXPECT_EQ(image.at(8, 8), red);
    EXPECT_NEAR(image.at(28, 8).r, 128, 1);
}

TEST_F(Texture, FiltersAsTheModeAtUploadSays) {
    const Pixel pair[2] = {{0, 0, 0, 255}, {255, 255, 255, 255}};
    const struct {
        int mode;
        bool nearest;
    } modes[] = {{1, true}, {0, false}, {2, false}, {-1, false}, {1, true}};
    for (const auto& [mode, nearest] : modes) {
        KXSetTextureMode(mode);
        KXTexture texture;
        texture._loadFromData(2, 1, 4, GL_RGBA, reinterpret_cast<const char*>(pair));
        KXSetTextureMode(1);
        texture.draw(0, 0, 2, 1, 32, 8, 0, 0, 1.0f, 1.0f, 0, 0, -1);
        const int middle = Image::of(*window).at(14, 4).r;
        EXPECT_EQ(middle == 0, nearest) << mode;
    }
}

TEST_F(Texture, WritesPNG) {
    KXTexture texture;
    load(texture);
    const std::string path = folder / "out.png";
    EXPECT_EQ(texture.writeToPNG(path.c_str()), -1);
    EXPECT_EQ(differingPixels(Image::fromFile(path), Image::of(texture)), 0);

    KXTexture empty;
    for (const int result : {texture.writeToPNG((folder / "no/such/folder.png").c_str()),
                             texture.writeToPNG(nullptr), empty.writeToPNG(path.c_str())}) {
        EXPECT_EQ(result, 0);
        EXPECT_STRNE(KXError(), "");
    }
}

TEST_F(Texture, LeavesTheGamesOpenGLStateAlone) {
    KXTexture texture, other;
    load(texture);
    load(other);
    other.bind();
    GLint bound = 0, after = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 17);
    glPixelStorei(GL_PACK_ROW_LENGTH, 17);
    texture.clear();
    texture.getPixel({0, 0}, 0);
    texture.writeToPNG((folder / "out.png").c_str());
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &after);
    EXPECT_EQ(bound, after);
    glGetIntegerv(GL_UNPACK_ROW_LENGTH, &after);
    EXPECT_EQ(after, 17);
    glGetIntegerv(GL_PACK_ROW_LENGTH, &after);
    EXPECT_EQ(after, 17);
    // An odd row of three-byte pixels is uploaded whole under the game's settings.
    const unsigned char rgb[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18};
    KXTexture odd;
    odd._loadFromData(3, 2, 3, GL_RGB, reinterpret_cast<const char*>(rgb));
    EXPECT_NEAR(odd.getPixel({0, 1}, 0).r, 10 / 255.0, 1e-6);
    EXPECT_NEAR(odd.getPixel({2, 1}, 0).b, 18 / 255.0, 1e-6);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
}

TEST_F(Texture, NamesOfOpenGLAreGivenBack) {
    KXTexture texture;
    load(texture);
    GLint name = 0;
    texture.bind();
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &name);
    load(texture);
    EXPECT_FALSE(glIsTexture(static_cast<GLuint>(name))) << "replaced contents free the old ones";
}

TEST_F(Texture, WithoutAWindowNothingIsMadeAndNothingBreaks) {
    KXTexture orphan;
    load(orphan);
    window.reset();
    EXPECT_EQ(KXTexture(4, 4).size().width, 0);
    EXPECT_NE(std::string(KXError()).find("no window"), std::string::npos) << KXError();
    EXPECT_THROW(KXTexture(writeImage("a.png", SDL_PIXELFORMAT_RGB24).c_str()), std::bad_alloc);
    orphan.draw(0, 0, -1);
    orphan.drawNineSlice({0, 0}, {9, 9}, 1);
    orphan.drawingPosition(0, 0, 1, 1, 1, 90, 6);
    orphan.bind();
    orphan.clear();
    orphan.setRenderContext();
    orphan.setClipTo({{0, 0}, {1, 1}});
    orphan.unsetClip();
    orphan.unsetRenderContext();
    EXPECT_EQ(KXCurrentRenderContext(), nullptr);
    EXPECT_EQ(orphan.getPixel({0, 0}, -1).r, -1);
    EXPECT_EQ(orphan.writeToPNG((folder / "x.png").c_str()), 0);
}

TEST_F(Texture, AbsurdDrawsAreDefined) {
    KXTexture texture;
    load(texture);
    constexpr int most = 2147483647, least = -most - 1;
    texture.draw(least, least, most, most, most, most, most, least, 1.0f, 1e30f, most, most, -1);
    texture.draw(most, most, least, least, least, least, least, most, NAN, NAN, least, least, -1);
    texture.draw(most, least, 0);
    texture.drawNineSlice({NAN, INFINITY}, {-INFINITY, NAN}, least, NAN);
    texture.drawNineSlice({0, 0}, {10, 10}, most);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
} // namespace
