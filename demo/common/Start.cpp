#include "Start.h"

static void setVariable(const char* name, const char* value) {
#ifdef _WIN32
    _putenv_s(name, value);
#else
    setenv(name, value, 1);
#endif
}

std::string showBeginning(const Beginning& beginning, const CommonOptions& options) {
    setVariable("KOBALTRIX_REPLAY_STOP", beginning.step);
    setVariable("KOBALTRIX_REPLAY_PICTURE",
                options.screenshot.empty() ? beginning.picture : options.screenshot.c_str());
    const char* const recording = KXDataPath(beginning.recording);
    return recording ? recording : "";
}

bool startLibrary(char* program, const CommonOptions& options) {
    // The library records and replays whatever the game does.
    if (!options.record.empty())
        setVariable("KOBALTRIX_RECORD", options.record.c_str());
    if (!options.replay.empty())
        setVariable("KOBALTRIX_REPLAY", options.replay.c_str());
    if (KXInit(program))
        return true;
    std::fprintf(stderr, "play: %s\n", KXError());
    return false;
}
