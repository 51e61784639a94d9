#pragma once

#include "support/System.h"
#include "support/TemporaryFolder.h"

/// How a program ended, and what it wrote on both channels.
struct Outcome {
    int status; ///< -1 if it crashed.
    std::string output;
};

/// A program that runs beside the test, in a folder of the test's own.
class Program {
public:
    /// @param command as startProgram() takes it.
    Program(const TemporaryFolder& folder, const std::string& command)
        : _program(startProgram(folder.path(), command)) {}

    /// Waits for its end; once.
    Outcome finish() {
        Outcome outcome = {};
        outcome.status = endOfProgram(_program, outcome.output);
        return outcome;
    }

private:
    RunningProgram* _program;
};

/// Runs a program to its end.
inline Outcome runProgram(const TemporaryFolder& folder, const std::string& command) {
    return Program(folder, command).finish();
}
