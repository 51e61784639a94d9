#pragma once

#include <cstddef>

// For test programs that are linked with Allocations.cpp.

/// How often the test program has asked for memory by `new`.
inline constinit std::size_t allocations = 0;
/// How many more times it gets some; negative for always.
inline constinit long allocationsLeft = -1;

/// How often @a work asks for memory by `new`.
template<class Work>
std::size_t allocationsOf(Work work) {
    const std::size_t before = allocations;
    work();
    return allocations - before;
}
