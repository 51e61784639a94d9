#include <Kobaltrix/KXTexture.h>

#include "RenderTest.h"

#include <SDL_image.h>

#include <cstring>
#include <tuple>

namespace {
struct Texture : RenderTest {
    /// Four pixels in two rows: red, green; blue, half-transparent white.
    static constexpr Pixel sample[4] = {red, {0, 255, 0, 255}, blue, {255, 255, 255, 128}};

    Texture() { load(texture, 2, 2, sample); }

    /// An image of 3 x 2 pixels in a format of the platform: red, green, blue; nothing.
    std::string writeImage(const std::string& name, Uint32 format) const {
        Uint32 rgba[6] = {0xff0000ff, 0xff00ff00, 0xffff0000};
        SDL_Surface* source =
            SDL_CreateRGBSurfaceWithFormatFrom(rgba, 3, 2, 32, 12, SDL_PIXELFORMAT_ABGR8888);
        SDL_Surface* surface = SDL_ConvertSurfaceFormat(source, format, 0);
        const std::string path = folder / name;
        const bool bmp = name.ends_with(".bmp");
        EXPECT_EQ(bmp ? SDL_SaveBMP(surface, path.c_str()) : IMG_SavePNG(surface, path.c_str()), 0);
        SDL_FreeSurface(surface);
        SDL_FreeSurface(source);
        return path;
    }

    TemporaryFolder folder;
    KXTexture texture;
};

TEST_F(Texture, LoadsTruecolorImagesWithTheirChannelsInOrder) {
    for (const auto& [name, format] :
         {std::pair{"rgb.png", SDL_PIXELFORMAT_RGB24}, {"bgra.bmp", SDL_PIXELFORMAT_BGRA32}}) {
        KXTexture loaded(writeImage(name, format).c_str());
        const Image image = Image::of(loaded);
        EXPECT_EQ(sides(loaded.size()), (Sides{3, 2})) << name;
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(image.at(x, 0), sample[x]) << name;
    }
}

TEST_F(Texture, RefusesImagesItCannotDraw) {
    // A palette is an image, but not in true colour. The path is used as a format: its percent signs are
    // safe.
    const std::string odd = writeImage("100%s %n %%.png", SDL_PIXELFORMAT_INDEX8);
    for (const std::string& path : {folder / "missing.png", folder.write("empty.png", ""),
                                    folder.write("garbage.png", "no image at all"), folder.path(), odd}) {
        _KXSetError("untouched");
        EXPECT_THROW(KXTexture{path.c_str()}, std::bad_alloc) << path;
        const char* const message = path == odd ? "100%s %n %.png: not a truecolor image" : "untouched";
        EXPECT_TRUE(std::string(KXError()).ends_with(message)) << path << ": " << KXError();
    }
    EXPECT_THROW(KXTexture{static_cast<const char*>(nullptr)}, std::bad_alloc);
    EXPECT_EQ(texture._loadImage(odd.c_str()), 0);
    EXPECT_EQ(texture.getPixel({1, 0}, 0).g, 1) << "a failed load keeps what was there";
}

TEST_F(Texture, RefusesImagesThatClaimTooManyPixels) {
    std::string bomb(54, '\0'); // the head of a BMP file of 16384 x 32768 pixels, and nothing else
    const auto put = [&bomb](std::size_t at, std::uint32_t value) { std::memcpy(&bomb[at], &value, 4); };
    bomb.replace(0, 2, "BM");
    put(10, 54);
    put(14, 40);
    put(18, 16384);
    put(22, 32768);
    put(26, 24 << 16 | 1);
    const std::string small = writeImage("small.png", SDL_PIXELFORMAT_RGB24);
    const std::tuple<std::string, unsigned, bool> rows[] = {
        {folder.write("bomb.bmp", bomb), 1 << 27, false}, {small, 5, false}, {small, 6, true}};
    for (const auto& [path, most, loads] : rows) {
        _KXClearError();
        KXSetMaximumImagePixels(most);
        EXPECT_EQ(texture._loadImage(path.c_str()), loads ? -1 : 0);
        const std::string text = path + ": more than " + std::to_string(most) + " pixels";
        EXPECT_EQ(KXError(), loads ? "" : text);
    }
    KXSetMaximumImagePixels(1 << 27);
}

TEST_F(Texture, IsEmptyWhereTheDriverCannotHoldIt) {
    const int largest = state(GL_MAX_TEXTURE_SIZE)[0];
    const int sizes[][2] = {{0, 5}, {4, 0}, {-1, 4}, {4, -2147483647}, {largest + 1, 1}, {1, 2147483647}};
    for (const auto& [width, height] : sizes) {
        _KXClearError();
        KXTexture refused(width, height);
        EXPECT_EQ(sides(refused.size()), (Sides{0, 0})) << width << " x " << height;
        EXPECT_STRNE(KXError(), "");
    }
    EXPECT_EQ(KXTexture(largest, 1).size().width, static_cast<float>(largest));
}

TEST_F(Texture, ReadsSinglePixelsAndClears) {
    EXPECT_EQ(texture.getPixel({1.9f, 0.2f}, 0).g, 1);
    EXPECT_NEAR(texture.getPixel({1, 1}, -1).a, 0.5, 0.01); // now kept
    EXPECT_EQ(texture.getPixel({0, 1}, 0).b, 1);
    for (const KXPoint outside : {KXPoint{2, 0}, {-1, 0}, {0, 2}, {0, -1}, {1e30f, 0}, {-1e30f, 1}})
        EXPECT_EQ(texture.getPixel(outside, 0).a, -1) << outside.x << ',' << outside.y;
    for (const int height : {1, 64, 65, 130}) {
        KXTexture tall(5, height);
        tall.clear();
        EXPECT_EQ(boxOf(Image::of(tall), transparent), nothing) << height;
    }
    // Kept pixels do not outlive the contents they show.
    texture.clear();
    EXPECT_EQ(texture.getPixel({0, 1}, -1).b, 0);
    load(texture, 1, 1, sample);
    EXPECT_EQ(texture.getPixel({0, 0}, 0).r, 1);
    EXPECT_EQ(KXTexture().getPixel({0, 0}, -1).a, -1);
}

TEST_F(Texture, FiltersAsTheModeAtUploadSays) {
    const Pixel pair[2] = {{0, 0, 0, 255}, {255, 255, 255, 255}};
    for (const auto& [mode, nearest] : {std::pair{1, true}, {0, false}, {2, false}, {-1, false}}) {
        KXSetTextureMode(mode);
        load(texture, 2, 1, pair);
        KXSetTextureMode(1);
        texture.draw(0, 0, 2, 1, 32, 8, 0, 0, 1.0f, 1.0f, 0, 0, -1);
        EXPECT_EQ(Image::of(*window).at(14, 4).r == 0, nearest) << mode;
    }
}

TEST_F(Texture, WritesPNG) {
    const std::string path = folder / "out.png";
    EXPECT_EQ(texture.writeToPNG(path.c_str()), -1);
    EXPECT_EQ(differingPixels(Image::fromFile(path), Image::of(texture)), 0);

    const std::string nowhere = folder / "no/such/folder.png";
    EXPECT_EQ(texture.writeToPNG(nowhere.c_str()), 0);
    const std::string refused = "Unable to write a PNG file (" + nowhere + "): ", said = KXError();
    EXPECT_TRUE(said == refused + "No such file or directory" ||
                said == refused + std::system_category().message(3)) // the reason of Windows
        << said;
    EXPECT_EQ(KXTexture().writeToPNG(path.c_str()), 0);
}

TEST_F(Texture, LeavesTheGamesOpenGLStateAlone) {
    KXTexture other(2, 2), odd;
    other.bind();
    const GLint bound = state(GL_TEXTURE_BINDING_2D)[0];
    for (const GLenum setting : {GL_UNPACK_ROW_LENGTH, GL_PACK_ROW_LENGTH})
        glPixelStorei(setting, 17);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    texture.clear();
    texture.getPixel({0, 0}, 0);
    texture.writeToPNG((folder / "out.png").c_str());
    EXPECT_EQ(state(GL_TEXTURE_BINDING_2D)[0], bound);
    // An odd row of three-byte pixels is uploaded whole under the game's settings.
    const char rgb[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18};
    odd._loadFromData(3, 2, 3, GL_RGB, rgb);
    EXPECT_NEAR(odd.getPixel({0, 1}, 0).r, 10 / 255.0, 1e-6);
    EXPECT_NEAR(odd.getPixel({2, 1}, 0).b, 18 / 255.0, 1e-6);
    for (const GLenum setting : {GL_UNPACK_ROW_LENGTH, GL_PACK_ROW_LENGTH})
        EXPECT_EQ(state(setting)[0], 17);
    load(other, 2, 2, sample);
    EXPECT_FALSE(glIsTexture(static_cast<GLuint>(bound))) << "replaced contents free the old ones";
}

TEST_F(Texture, AbsurdDrawsAreDefined) {
    constexpr int most = 2147483647, least = -most - 1;
    texture.draw(least, least, most, most, most, most, most, least, 1.0f, 1e30f, most, most, -1);
    texture.draw(most, most, least, least, least, least, least, most, NAN, NAN, least, least, -1);
    texture.drawNineSlice({NAN, INFINITY}, {-INFINITY, NAN}, least, NAN);
    texture.drawNineSlice({0, 0}, {10, 10}, most);
}
} // namespace
