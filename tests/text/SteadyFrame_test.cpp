// A game that runs asks for no more memory: a frame like the one before needs none.

#include "support/Allocations.h"
#include "text/TextTest.h"

#include <Kobaltrix/KXDrawBatch.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXSprite.h>

TEST_F(TextTest, ASteadyFrameNeedsNoMemory) {
    const TemporaryFolder folder;
    KXTexture texture(8, 8);
    texture.clear();
    texture.writeToPNG((folder / "sheet.png").c_str());
    KXSprite sprite;
    sprite.setTexturePath(folder.path().c_str());
    sprite.setTextureName("sheet.png");
    sprite.addFrameInfo("spin", {{0, 0}, {4, 8}}, 1);
    sprite.setAnimation("spin");
    KXFont font(testFont(), KXAliasModeTexture);
    const auto frame = [&] {
        texture.setRenderContext();
        KXDrawRectFill({{0, 0}, {4, 4}}, white);
        texture.unsetRenderContext();
        window->setRenderContext();
        window->setClipTo({{0, 0}, {300, 60}});
        for (int i = 0; i < 100; ++i) {
            sprite.poll();
            sprite.draw({static_cast<float>(i), 0});
            KXDrawCircleFill({20, 20}, 10, 30, white);
            KXDrawCircle({20, 20}, 10, 30, white);
            texture.drawNineSlice({0, 0}, {50, 50}, 2);
            font.print({0, 20}, white, "Score {C1,0,0,1}%d{EC} points", i);
            font._printPlain({0, 40}, white, "{EC}");
        }
        window->unsetClip();
        window->swapBuffers();
        KXPostLogicLoop();
    };
    // Six at once and six in a batch; the first three of each may still ask for some.
    for (int i = 0; i < 12; ++i) {
        if (i == 6)
            KXBeginDrawBatch();
        const std::size_t asked = allocationsOf(frame);
        EXPECT_TRUE(i % 6 < 3 || asked == 0) << asked << " in frame " << i;
    }
    KXEndDrawBatch();
}
