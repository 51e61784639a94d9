#pragma once

#include <cstdio>
#include <cstdlib>

/// Stops the program, in optimised builds too, when a rule between the library's own rooms is broken.
#define _KXAssert(condition, module)                                                                         \
    do {                                                                                                     \
        if (!(condition)) {                                                                                  \
            std::fprintf(stderr, "Assertion failed: %s, module %s\n", #condition, module);                   \
            std::abort();                                                                                    \
        }                                                                                                    \
    } while (0)
