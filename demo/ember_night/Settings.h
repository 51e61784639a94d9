#pragma once

#include <string>
#include <vector>

/// What the game remembers from one time to the next.
struct Settings {
    struct Score {
        std::string name;
        int points;
    };
    static constexpr std::size_t mostScores = 10;

    int soundVolume = 96; ///< 0 to 128.
    int musicVolume = 64; ///< 0 to 128.
    bool shakes = true;   ///< Whether the world shakes when a keeper is hurt.
    std::string name = "Keeper";
    std::vector<Score> scores; ///< The best first.

    /// Enters a score. @return its place, -1 if it is not among the best.
    int enterScore(const std::string& who, int points);
    /// Reads the file; one that is missing or broken leaves all as it was. What an older game wrote becomes
    /// a file of today.
    void load(const std::string& path);
    /// Writes the file.
    void save(const std::string& path) const;
};
