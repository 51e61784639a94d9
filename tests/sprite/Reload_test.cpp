// Textures and sprites that follow their files.

#include <Kobaltrix/KXRecording.h>
#include <Kobaltrix/KXReload.h>
#include <Kobaltrix/KXSprite.h>
#include <Kobaltrix/KXTextureCache.h>

#include "render/RenderTest.h"
#include "support/Allocations.h"

#include <KobaltrixTest/KXTestClock.h>

#include <cstring>

namespace {
namespace fs = std::filesystem;

struct Reload : RenderTest {
    Reload() {
        KXReloadChangedFiles(-1);
        saveSheet("sheet.png", 8, 10);
    }
    ~Reload() override {
        KXReloadChangedFiles(0);
        KXTextureCachePurge();
    }

    /// Time to look at the files, some times.
    void look(int times = 1, unsigned milliseconds = 250) {
        for (; times > 0; --times) {
            clock.advance(milliseconds);
            KXPreLogicLoop();
            KXPostLogicLoop();
        }
    }
    /// A file that was written in a second of its own.
    void touch(const std::string& name) {
        fs::last_write_time(_KXFilePath(folder / name), _written += std::chrono::seconds(1));
    }
    void saveSheet(const std::string& name, int width, std::uint8_t blue) {
        Image{width, 8, std::vector<Pixel>(static_cast<std::size_t>(width) * 8, {0, 0, blue, 255})}.save(
            folder / name);
        touch(name);
    }
    void write(const std::string& name, const std::string& bytes) {
        folder.write(name, bytes);
        touch(name);
    }
    /// A sprite whose frames lie side by side, with a box as wide as a frame.
    void saveSprite(int frames, int duration, float width, const char* sheet = "sheet.png",
                    const char* name = "walk") {
        KXSprite sprite;
        sprite.setTextureName(sheet);
        for (int i = 0; i < frames; ++i)
            sprite.addFrameInfo(name, {{width * static_cast<float>(i), 0}, {width, 8}}, duration);
        sprite.addBoundingBox("box", {{0, 0}, {width, 8}});
        ASSERT_TRUE(sprite.writeToFile((folder / "hero.spr").c_str()));
        touch("hero.spr");
    }
    static int blueOf(KXTexture* texture) {
        return static_cast<int>(texture->getPixel({1, 1}, 0).b * 255 + 0.5f);
    }

    TemporaryFolder folder;
    KXTestClock clock{5000};

private:
    fs::file_time_type _written = fs::file_time_type::clock::now() - std::chrono::hours(1);
};

TEST_F(Reload, ATextureIsTheSameObjectWithOtherPixels) {
    const std::string path = folder / "sheet.png";
    KXTexture* const texture = KXTextureCacheLoad(path.c_str());
    texture->setTint({0.5f, 1, 1, 1});
    KXWindow other("other", {64, 48});
    other.setRenderContext();
    KXTexture* const elsewhere = KXTextureCacheLoad(path.c_str());
    ASSERT_NE(elsewhere, texture);

    saveSheet("sheet.png", 16, 20);
    look(1);
    EXPECT_EQ(blueOf(texture), 10) << "it may be written still";
    look(5, 10);
    EXPECT_EQ(blueOf(texture), 10) << "no time to look yet";
    look(1, 200);
    for (KXTexture* each : {texture, elsewhere}) {
        EXPECT_EQ(blueOf(each), 20);
        EXPECT_EQ(each->size().width, 16);
    }
    EXPECT_EQ(KXTextureCacheLoad(path.c_str()), elsewhere);
    EXPECT_EQ(texture->tint().r, 0.5f);
    EXPECT_EQ(KXCurrentRenderContext(), &other);
    window->setRenderContext();
    EXPECT_EQ(picture([&] { texture->draw(KXDrawOptions{}); }).at(15, 7), (Pixel{0, 0, 20, 255}));
}

TEST_F(Reload, WhatIsBrokenOrGoneLeavesWhatWasLoaded) {
    KXTexture* const texture = KXTextureCacheLoad((folder / "sheet.png").c_str());
    const std::string whole = contentOf(folder / "sheet.png");
    for (const std::string& bytes :
         {std::string("no picture"), whole.substr(0, whole.size() / 2), std::string()}) {
        write("sheet.png", bytes);
        look(3);
        EXPECT_EQ(blueOf(texture), 10);
        EXPECT_TRUE(std::strstr(KXError(), "sheet.png: no picture")) << KXError();
    }
    fs::rename(_KXFilePath(folder / "sheet.png"), _KXFilePath(folder / "away.png"));
    look(3);
    saveSheet("sheet.png", 8, 30);
    look(2);
    EXPECT_EQ(blueOf(texture), 30);
    EXPECT_EQ(allocationsOf([this] { look(3); }), 0u);
}

TEST_F(Reload, ASpriteGoesOnWithWhatItsFileHasNow) {
    saveSprite(4, 3, 2);
    KXSprite sprite;
    sprite.load((folder / "hero.spr").c_str());
    sprite.setAlpha(0.5f);
    sprite.setAnimation("walk");
    const std::unique_ptr<KXSprite> clone(sprite.clone());
    KXSprite copy = sprite;
    saveSheet("blue.png", 8, 99);
    copy.setTextureName("blue.png");
    for (int i = 0; i < 3 * 3 + 1; ++i) // two more steps to the end of the last frame
        sprite.poll();

    saveSprite(2, 2, 4);
    look(2);
    for (KXSprite* each : {&sprite, clone.get(), &copy}) {
        each->draw(KXPoint{});
        EXPECT_EQ(each->numberOfFrames("walk"), 2);
        EXPECT_EQ(each->boundingBoxNamed("box").size.width, each == clone.get() ? 0.f : 4.f);
    }
    EXPECT_EQ(sprite.currentFrameIndex(), 1);
    EXPECT_EQ(sprite.alpha(), 0.5f);
    sprite.poll();
    EXPECT_EQ(sprite.currentFrameIndex(), 0) << "the frame's own time goes on";
    const std::unique_ptr<char, decltype(&std::free)> sheet(copy.textureName(), std::free);
    EXPECT_STREQ(sheet.get(), "blue.png");

    const std::string whole = contentOf(folder / "hero.spr");
    for (const std::string& bytes :
         {whole.substr(0, whole.size() - 1), std::string("KXSPRITE"), std::string()}) {
        write("hero.spr", bytes);
        look(2);
        sprite.poll();
        EXPECT_EQ(sprite.numberOfFrames(), 2);
        EXPECT_TRUE(std::strstr(KXError(), "hero.spr: is no whole sprite file")) << KXError();
    }
    saveSprite(3, 1, 2, "missing.png");
    look(2);
    sprite.draw(KXPoint{});
    EXPECT_EQ(sprite.numberOfFrames(), 2) << "that sheet could not be drawn";
    saveSprite(3, 1, 2, "sheet.png", "run");
    look(2);
    sprite.poll();
    EXPECT_EQ(sprite.numberOfFrames(), -1);
    EXPECT_EQ(sprite.numberOfFrames("run"), 3);
    EXPECT_STREQ(sprite.currentAnimation(), "walk");
}

TEST_F(Reload, NeitherWhenOffNorInRecordings) {
    KXTexture* const texture = KXTextureCacheLoad((folder / "sheet.png").c_str());
    KXReloadChangedFiles(0);
    saveSheet("sheet.png", 8, 40);
    look(3);
    EXPECT_EQ(blueOf(texture), 10);
    KXReloadChangedFiles(-1);
    ASSERT_TRUE(KXBeginRecording((folder / "run").c_str()));
    look(3);
    EXPECT_EQ(blueOf(texture), 10);
    KXEndRecording();
    look(2);
    EXPECT_EQ(blueOf(texture), 40);
}
} // namespace
