#include "Game.h"
#include "Start.h"

int main(int argc, char** argv) {
    KXSetGameName("Kobaltrix", "ember-night");
    Options options;
    if (!options.read(argc, argv))
        return 2;
    if (options.help) {
        printUsage();
        return 0;
    }
    if (options.headless && options.isEndless() && !std::getenv("KOBALTRIX_REPLAY")) {
        options.replay = showBeginning({"keys.txt", "600", "ember-night.png"}, options);
        options.night = Options::secondsRecorded;
    }
    if (!startLibrary(argv[0], options))
        return 1;
    const int result = play<Game>(options);
    KXDeInit();
    return result;
}
