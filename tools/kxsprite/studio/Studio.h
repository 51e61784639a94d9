#pragma once

#include <string>

/// How the studio is started.
struct StudioOptions {
    std::string file;       ///< To open, empty for none.
    std::string settings;   ///< The folder of the settings, empty for the user's.
    std::string record;     ///< A file to record into, empty for none.
    std::string replay;     ///< A recording to replay, empty for none.
    std::string screenshot; ///< Where to keep the last picture, empty for nowhere.
    int frames = 0;         ///< After which it ends, 0 for when the user quits; a screenshot needs 30.
};

/// Called after each step of the studio with the number of steps so far: here tests play its user.
inline void (*afterEachStudioStep)(int steps) = nullptr;

/// Opens the studio and stays until the user quits, or a replay is over. Throws a Fault, also for a replay
/// that went another way than its recording.
void runStudio(const StudioOptions& options);
