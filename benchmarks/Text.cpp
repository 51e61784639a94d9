#include "Drawing.h"

#include <FTGL/ftgl.h>
#include <SDL_opengl.h>

#include <cstdio>

// Printed with FTGL as its manual has it.
static void renderWithFTGL(FTFont& font, const Place& place, const char* text) {
    glPushMatrix();
    glTranslatef(static_cast<float>(place.x), static_cast<float>(place.y), 0);
    glScalef(1, -1, 1);
    glColor4f(1, 1, 1, 1);
    font.Render(text);
    glPopMatrix();
}

void benchText(Table& table) {
    if (!benchFont()) {
        std::printf("text      left out: the package fonts-dejavu-core is missing\n");
        return;
    }
    constexpr int count = 2000;
    const std::vector<Place> all = places(count, 0);
    FTTextureFont plain(benchFont());
    plain.FaceSize(16, 72);
    KXFont font(benchFont(), KXAliasModeTexture);
    font.setSize(16);
    int frame = 0;
    const auto everyString = [&all, &frame](bool changes, const auto& print) {
        char text[64];
        frame += changes;
        for (int i = 0; i < count; ++i) {
            std::snprintf(text, sizeof text, "Player %04d has %07d p.", i,
                          changes ? i * 37 + frame * 1009 : i);
            print(all[static_cast<std::size_t>(i)], text);
        }
        KXFlushDrawBatch();
        glFinish();
    };
    for (bool batched : {false, true}) {
        if (batched)
            KXBeginDrawBatch();
        for (bool changes : {false, true})
            table.compare(
                std::string("2,000 strings of 24 characters, ") + (changes ? "changing" : "unchanging") +
                    (batched ? ", in a batch" : ""),
                "FTGL's Render", changes ? 1.0 : 0.7, count,
                [&] {
                    everyString(changes, [&font](const Place& place, const char* text) {
                        font.print({static_cast<float>(place.x), static_cast<float>(place.y)}, {1, 1, 1, 1},
                                   "%s", text);
                    });
                },
                [&] {
                    everyString(changes, [&plain](const Place& place, const char* text) {
                        renderWithFTGL(plain, place, text);
                    });
                });
    }
    KXEndDrawBatch();
}
