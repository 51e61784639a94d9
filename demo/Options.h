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
    std::string script; ///< Play this file's part of a person.
    std::string record; ///< Write what a person does to this file.
    std::string save;   ///< Where settings and scores are kept.
};

/// Reads the command line. False, with a line on standard error, if it makes no sense.
bool readOptions(int argc, char** argv, Options& options);

/// Splits HOST:PORT. False if it is none.
bool splitAddress(const std::string& address, std::string& host, int& port);

/// Prints how to start the game.
void printUsage();
