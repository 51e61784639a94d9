#pragma once

#include <string>

/// What the command line asks for.
struct Options {
    bool headless = false;
    bool help = false;
    bool widgets = false;
    int frames = 0;   ///< Leave after so many; 0 for never.
    int night = 0;    ///< Seconds that a night lasts; 0 for the usual ones.
    int nights = 0;   ///< Leave when so many have ended; 0 for never.
    int hostPort = 0; ///< Wait for a second player at this port; 0 for no.
    std::string join; ///< HOST:PORT to play at.
    std::string screenshot;
    std::string replay; ///< A recording to replay.
    std::string record; ///< Where to record what is played.
    std::string save;   ///< Where settings and scores are kept.

    static constexpr int secondsRecorded = 12; ///< How long the nights are that come with the game.

    /// Whether nobody but a player would end it.
    bool isEndless() const { return replay.empty() && frames == 0 && nights == 0; }
    /// Whether the usual settings count: a recording has to be replayed with those that it was made with, so
    /// both begin without any.
    bool keepsSettings() const { return !headless && replay.empty() && record.empty(); }
};

/// Reads the command line. False, with a line on standard error, if it makes no sense.
bool readOptions(int argc, char** argv, Options& options);

/// Splits HOST:PORT. False if it is none.
bool splitAddress(const std::string& address, std::string& host, int& port);

/// Prints how to start the game.
void printUsage();
