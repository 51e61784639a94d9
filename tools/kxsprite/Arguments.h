#pragma once

#include "Command.h"

/// Reads the command line. False, with a line on standard error, if it makes no sense.
bool readCommandLine(int argc, char** argv, CommandLine& line);
