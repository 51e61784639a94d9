#include "Game.h"
#include "Start.h"

int main(int argc, char** argv) {
    KXSetGameName("Kobaltrix", "high-pasture");
    Options options;
    if (!options.read(argc, argv))
        return 2;
    if (options.help) {
        std::fputs(
#include "../Usage.inc"
            , stdout);
        return 0;
    }
    if (options.headless && options.isEndless() && !std::getenv("KOBALTRIX_REPLAY"))
        options.replay = showBeginning({"meadow.txt", "500", "high-pasture.png"}, options);
    if (!startLibrary(argv[0], options))
        return 1;
    const int result = play<Game>(options);
    KXDeInit();
    return result;
}
