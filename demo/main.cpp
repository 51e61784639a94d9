#include "Game.h"

#include <cstdio>
#include <cstdlib>
#include <new>

// The beginning of a night that somebody has played, for a picture of it.
static void showBeginning(Options& options) {
    if (const char* const recording = KXDataPath("keys.txt"))
        options.replay = recording;
    options.night = Options::secondsRecorded;
    setenv("KOBALTRIX_REPLAY_STOP", "600", 1);
    setenv("KOBALTRIX_REPLAY_PICTURE",
           options.screenshot.empty() ? "ember-night.png" : options.screenshot.c_str(), 1);
}

static int play(const Options& options) {
    try {
        Game game(options);
        while (game.frame()) {
        }
        return game.isGood() ? 0 : 1;
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "play: a window, a picture or a sprite cannot be opened. %s\n", KXError());
        return 1;
    }
}

int main(int argc, char** argv) {
    KXSetGameName("Kobaltrix", "ember-night");
    Options options;
    if (!readOptions(argc, argv, options))
        return 2;
    if (options.help) {
        printUsage();
        return 0;
    }
    if (options.headless && options.isEndless() && !std::getenv("KOBALTRIX_REPLAY"))
        showBeginning(options);
    // The library records and replays whatever the game does.
    if (!options.record.empty())
        setenv("KOBALTRIX_RECORD", options.record.c_str(), 1);
    if (!options.replay.empty())
        setenv("KOBALTRIX_REPLAY", options.replay.c_str(), 1);
    if (!KXInit(argv[0])) {
        std::fprintf(stderr, "play: %s\n", KXError());
        return 1;
    }
    const int result = play(options);
    KXDeInit();
    return result;
}
