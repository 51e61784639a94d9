#pragma once

#include "Stage.h"

#include <array>
#include <string>

/// What the player has set and done, which outlives the game.
struct Progress {
    struct Best {
        int steps = 0;   ///< Of the fastest way home; 0 before the first.
        int flowers = 0; ///< The most that were brought home.
    };

    int soundVolume = 128, musicVolume = 90; ///< 0 to 128.
    int open = 1;                            ///< How many levels may be played.
    std::array<Best, Stage::count> best;

    /// Reads a file; what it lacks stays as it is. A broken one is put aside.
    void load(const std::string& path);
    /// Writes it, and keeps in it what it does not know.
    void save(const std::string& path) const;
    /// A level was finished. @return whether it was faster than ever before.
    bool enter(int level, int steps, int flowers);
};

/// Steps as minutes, seconds and hundredths: "0:41.30".
std::string timeText(int steps);
