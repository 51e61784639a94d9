#include "Start.h"

std::string showBeginning(const Beginning& beginning, const CommonOptions& options) {
    setenv("KOBALTRIX_REPLAY_STOP", beginning.step, 1);
    setenv("KOBALTRIX_REPLAY_PICTURE",
           options.screenshot.empty() ? beginning.picture : options.screenshot.c_str(), 1);
    const char* const recording = KXDataPath(beginning.recording);
    return recording ? recording : "";
}

bool startLibrary(char* program, const CommonOptions& options) {
    // The library records and replays whatever the game does.
    if (!options.record.empty())
        setenv("KOBALTRIX_RECORD", options.record.c_str(), 1);
    if (!options.replay.empty())
        setenv("KOBALTRIX_REPLAY", options.replay.c_str(), 1);
    if (KXInit(program))
        return true;
    std::fprintf(stderr, "play: %s\n", KXError());
    return false;
}
