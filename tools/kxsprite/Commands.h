#pragma once

#include "Command.h"

// Every command, each in its own file; a new one is entered here and in Commands.cpp.
extern const Command checkCommand, editCommand, infoCommand, makeCommand, packCommand, previewCommand,
    watchCommand;
