#pragma once

#include <string>
#include <vector>

/// What the command line asks for.
struct Options {
    std::string command;
    std::vector<std::string> files;
    std::string output;
    int stepMilliseconds = 16;
    bool json = false;
    bool help = false;
};

/// Reads the command line. False, with a line on standard error, if it makes no sense.
bool readOptions(int argc, char** argv, Options& options);

/// Prints how to use the program.
void printUsage();
