// Draws the game's pictures into a folder.

#include "Pictures.h"

#include <Kobaltrix/KXError.h>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: kobaltrix_pasture_art FOLDER\n");
        return 2;
    }
    const struct {
        const char* name;
        Canvas (*draw)();
    } pictures[] = {
        {"sky", drawSky},        {"peaks", drawPeaks},    {"hills", drawHills},
        {"woods", drawWoods},    {"tiles", drawTiles},    {"tufts", drawTufts},
        {"hut", drawHut},        {"sign", drawSign},      {"basket", drawBasket},
        {"logo", drawLogo},      {"kid", drawKidSheet},   {"beetle", drawBeetleSheet},
        {"crow", drawCrowSheet}, {"bell", drawBellSheet}, {"flower", drawFlowerSheet},
    };
    for (const auto& [name, draw] : pictures) {
        const std::string path = std::string(argv[1]) + "/" + name + ".png";
        if (!draw().save(path)) {
            std::fprintf(stderr, "kobaltrix_pasture_art: %s\n", KXError());
            return 1;
        }
    }
    return 0;
}
