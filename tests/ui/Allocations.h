#pragma once

#include <cstddef>

/// How often the test program has asked for memory by `new`.
inline constinit std::size_t allocations = 0;

/// How often @a work does.
template<class Work>
std::size_t allocationsOf(Work work) {
    const std::size_t before = allocations;
    work();
    return allocations - before;
}
