#pragma once

#include <string>

// What of macOS the library calls, as far as its own files for macOS need it. Of the real system it says
// nothing. The declarations are in the folder "macos", where the compiler looks for the system's.

/// What the stand-ins answer, and what they were told.
struct MacStandIns {
    std::string programFile;
    bool hasContext = true; ///< Of OpenGL.
    int swapInterval = 0;
};
extern MacStandIns macStandIns;
