#pragma once

#include "Command.h"

/// A command line as it was understood.
struct CommandLine {
    const Command* command = nullptr; ///< Null where help is asked for.
    Arguments arguments;
};

/// Reads the command line. False, with a line on standard error, if it makes no sense.
bool readCommandLine(int argc, char** argv, CommandLine& line);
