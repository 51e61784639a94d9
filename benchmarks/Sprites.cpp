#include "Drawing.h"

#include <SDL_opengl.h>

#include <memory>
#include <string>

#include <unistd.h>

static constexpr int count = 20000;

// One matrix for each sprite, as every introduction to OpenGL has it.
static void drawTextbook(KXTexture& texture, const std::vector<Place>& all, int side) {
    const auto length = static_cast<float>(side), middle = static_cast<float>(side / 2);
    for (const auto& [x, y, rotation] : all) {
        glPushMatrix();
        glTranslatef(static_cast<float>(x), static_cast<float>(y), 0);
        glScalef(1, 1, 0);
        if (rotation) {
            glTranslatef(middle, middle, 0);
            glRotatef(static_cast<float>(rotation), 0, 0, 1);
            glTranslatef(-middle, -middle, 0);
        }
        texture.bind();
        glColor4f(1, 1, 1, 1);
        glBegin(GL_QUADS);
        glTexCoord2f(0, 0);
        glVertex2f(0, 0);
        glTexCoord2f(1, 0);
        glVertex2f(length, 0);
        glTexCoord2f(1, 1);
        glVertex2f(length, length);
        glTexCoord2f(0, 1);
        glVertex2f(0, length);
        glEnd();
        glPopMatrix();
    }
    glFinish();
}

static void drawOwn(KXTexture& texture, const std::vector<Place>& all) {
    for (const auto& [x, y, rotation] : all)
        texture.draw(x, y, 1.0f, 1.0f, rotation, 0, -1);
    KXFlushDrawBatch();
    glFinish();
}

static void drawSprites(std::vector<std::unique_ptr<KXSprite>>& sprites, const std::vector<Place>& all) {
    for (std::size_t i = 0; i < sprites.size(); ++i) {
        sprites[i]->poll();
        sprites[i]->draw({static_cast<float>(all[i].x), static_cast<float>(all[i].y)});
    }
    KXFlushDrawBatch();
    glFinish();
}

static std::vector<std::unique_ptr<KXSprite>> animatedSprites() {
    const std::string sheet = KXTempString("/tmp/kobaltrix-bench-%d.png", static_cast<int>(getpid()));
    plainTexture(64)->writeToPNG(sheet.c_str());
    std::vector<std::unique_ptr<KXSprite>> sprites;
    for (int i = 0; i < count; ++i) {
        auto& sprite = *sprites.emplace_back(std::make_unique<KXSprite>());
        sprite.setTextureName(sheet.substr(5).c_str());
        sprite.setTexturePath("/tmp");
        for (float frame = 0; frame < 4; ++frame)
            sprite.addFrameInfo("walk", {{16 * frame, 0}, {16, 16}}, 5);
        sprite.setAnimation("walk");
        sprite.randomizeCurrentFrame();
    }
    KXTextureCacheLoad(sheet.c_str());
    KXRemoveFile(sheet.c_str());
    return sprites;
}

void benchSprites(Table& table) {
    const std::vector<Place> all = places(count, 4);
    for (int side : {1, 16}) {
        const std::unique_ptr<KXTexture> texture = plainTexture(side);
        const std::string size = std::to_string(side) + " x " + std::to_string(side);
        table.compare(
            "20,000 sprites " + size + ", a quarter rotated", "a matrix for each", side == 1 ? 0.35 : 0.7,
            count, [&] { drawOwn(*texture, all); }, [&] { drawTextbook(*texture, all, side); });
        const Floor floor(all, side);
        KXBeginDrawBatch();
        table.compare(
            "the same in a batch", "one prefilled array, one call", side == 1 ? 1.15 : 0, count,
            [&] { drawOwn(*texture, all); },
            [&] {
                texture->bind();
                floor.draw(true);
                glFinish();
            });
        KXEndDrawBatch();
    }
    // Where nothing is seen, only what the calls themselves cost is left.
    std::vector<Place> unseen = all;
    for (Place& place : unseen)
        place.x += 2 * static_cast<int>(benchWindow.width);
    const std::unique_ptr<KXTexture> dot = plainTexture(1);
    table.compare(
        "20,000 sprites out of view", "a matrix for each", 0, count, [&] { drawOwn(*dot, unseen); },
        [&] { drawTextbook(*dot, unseen, 1); });
    KXBeginDrawBatch();
    table.compare(
        "the same in a batch, not shown by a camera", "the same in a batch without one", 1, count,
        [&] {
            KXPushCamera({{benchWindow.width / 2, benchWindow.height / 2}, 1, 0, {{0, 0}, {-1, -1}}});
            drawOwn(*dot, unseen);
            KXPopCamera();
        },
        [&] { drawOwn(*dot, unseen); });
    KXEndDrawBatch();
    const std::unique_ptr<KXTexture> sheet = plainTexture(64);
    std::vector<std::unique_ptr<KXSprite>> sprites = animatedSprites();
    KXBeginDrawBatch();
    table.compare(
        "20,000 animated sprites in a batch", "KXTexture::draw in a batch", 1.4, count,
        [&] { drawSprites(sprites, all); },
        [&] {
            for (const auto& [x, y, rotation] : all)
                sheet->draw(0, 0, 16, 16, x, y, -1);
            KXFlushDrawBatch();
            glFinish();
        });
    KXEndDrawBatch();
}

void benchRectangles(Table& table) {
    const std::vector<Place> all = places(count, 0);
    constexpr int side = 1;
    const auto own = [&] {
        for (const auto& [x, y, rotation] : all)
            KXDrawRectFill({{static_cast<float>(x), static_cast<float>(y)}, {side, side}}, {1, 1, 1, 1});
        KXFlushDrawBatch();
        glFinish();
    };
    table.compare("20,000 filled rectangles", "a matrix for each", 0.35, count, own, [&] {
        for (const auto& [x, y, rotation] : all) {
            glPushMatrix();
            glTranslatef(static_cast<float>(x), static_cast<float>(y), 0);
            glDisable(GL_TEXTURE_2D);
            glColor4f(1, 1, 1, 1);
            glBegin(GL_QUADS);
            glVertex2f(0, 0);
            glVertex2f(side, 0);
            glVertex2f(side, side);
            glVertex2f(0, side);
            glEnd();
            glEnable(GL_TEXTURE_2D);
            glPopMatrix();
        }
        glFinish();
    });
    const Floor floor(all, side);
    KXBeginDrawBatch();
    table.compare("the same in a batch", "one prefilled array, one call", 1.15, count, own, [&] {
        floor.draw(false);
        glFinish();
    });
    KXEndDrawBatch();
}
