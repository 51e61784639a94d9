#pragma once

#include "support/TemporaryFolder.h"

#include <array>
#include <cstdio>

#include <sys/wait.h>

/// How a program ended, and what it wrote on both channels.
struct Outcome {
    int status; ///< -1 if a signal ended it.
    std::string output;
};

/// A program that runs beside the test, in a folder of the test's own.
class Program {
public:
    /// @param command as a shell takes it, with its arguments.
    Program(const TemporaryFolder& folder, const std::string& command)
        : _pipe(popen(("cd '" + folder.path() + "' && " + command + " 2>&1").c_str(), "r")) {}

    /// Waits for its end; once.
    Outcome finish() {
        Outcome outcome = {};
        std::array<char, 4096> part;
        while (const std::size_t count = fread(part.data(), 1, part.size(), _pipe))
            outcome.output.append(part.data(), count);
        const int status = pclose(_pipe);
        outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        return outcome;
    }

private:
    FILE* _pipe;
};

/// Runs a program to its end.
inline Outcome runProgram(const TemporaryFolder& folder, const std::string& command) {
    return Program(folder, command).finish();
}
