#pragma once

#include <string>

/// What the command line asks for.
struct Options {
    bool headless = false;
    bool help = false;
    int frames = 0; ///< Leave after so many; 0 for never.
    std::string screenshot;
};

/// Reads the command line. False, with a line on standard error, if it makes no sense.
bool readOptions(int argc, char** argv, Options& options);

/// Prints how to start the demo.
void printUsage();
