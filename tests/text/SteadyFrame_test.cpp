// A game that runs asks for no more memory: a frame like the one before needs none.

#include "text/ScarceMemory.h"
#include "text/TextTest.h"

#include <Kobaltrix/KXDrawBatch.h>
#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXSprite.h>
#include <Kobaltrix/KXTexture.h>

#include "support/TemporaryFolder.h"

namespace {
struct SteadyFrame : TextTest {
    SteadyFrame() : texture(8, 8) {
        texture.clear();
        texture.writeToPNG((folder / "sheet.png").c_str());
        sprite.setTexturePath(folder.path().c_str());
        sprite.setTextureName("sheet.png");
        sprite.addFrameInfo("spin", {{0, 0}, {4, 8}}, 1);
        sprite.addFrameInfo("spin", {{4, 0}, {4, 8}}, 1);
        sprite.setAnimation("spin");
    }
    void frame() {
        texture.setRenderContext();
        KXDrawRectFill({{0, 0}, {4, 4}}, white);
        texture.unsetRenderContext();
        window->setRenderContext();
        window->setClipTo({{0, 0}, {300, 60}});
        for (int i = 0; i < 100; ++i) {
            sprite.poll();
            sprite.draw({static_cast<float>(i), 0});
            KXDrawRectFill({{0, 0}, {4, 4}}, white);
            KXDrawCircleFill({20, 20}, 10, 30, white);
            KXDrawCircle({20, 20}, 10, 30, white);
            texture.drawNineSlice({0, 0}, {50, 50}, 2);
            font.print({0, 20}, white, "Score {C1,0,0,1}%d{EC} points", i);
        }
        window->unsetClip();
        window->swapBuffers();
        KXPostLogicLoop();
    }

    TemporaryFolder folder;
    KXTexture texture;
    KXSprite sprite;
    KXFont font{testFont(), KXAliasModeTexture};
};

TEST_F(SteadyFrame, NeedsNoMemory) {
    constexpr long plenty = 1'000'000'000;
    for (bool batched : {false, true}) {
        if (batched)
            KXBeginDrawBatch();
        for (int i = 0; i < 3; ++i)
            frame();
        allocationsLeft = plenty;
        for (int i = 0; i < 3; ++i)
            frame();
        const long allocated = plenty - std::exchange(allocationsLeft, -1);
        EXPECT_EQ(allocated, 0) << (batched ? "in a batch" : "at once");
    }
    KXEndDrawBatch();
}
} // namespace
