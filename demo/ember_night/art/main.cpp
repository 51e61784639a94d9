// Draws the demo's pictures into a folder.

#include "Pictures.h"

#include <Kobaltrix/KXError.h>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: kobaltrix_art FOLDER\n");
        return 2;
    }
    const struct {
        const char* name;
        Canvas (*draw)();
    } pictures[] = {
        {"background", drawBackground},
        {"panel", drawPanel},
        {"logo", drawLogo},
        {"glow", drawGlow},
        {"moon", drawMoon},
        {"logs", drawLogs},
        {"hero", drawHeroSheet},
        {"friend", drawFriendSheet},
        {"moth", drawMothSheet},
        {"bat", drawBatSheet},
        {"fire", drawFireSheet},
    };
    for (const auto& [name, draw] : pictures) {
        const std::string path = std::string(argv[1]) + "/" + name + ".png";
        if (!draw().save(path)) {
            std::fprintf(stderr, "kobaltrix_art: %s\n", KXError());
            return 1;
        }
    }
    return 0;
}
