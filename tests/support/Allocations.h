#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>
#include <string_view>

// For test programs that kobaltrix_test() builds with ALLOCATIONS.

/// The file name of the library that some code belongs to, empty for the program.
std::string_view libraryOf(void* address);

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

/// How many more requests of the library and the test itself are granted until one is refused: those by
/// `new`, malloc(), calloc(), realloc() and strdup(), but not those of other libraries. Negative for all.
inline constinit long requestsUntilRefusal = -1;

/// What came of a request that was refused.
struct Refusal {
    bool happened; ///< There were as many requests.
    bool threw;    ///< The work ended with std::bad_alloc.
};

/// The next to refuse after one: with KOBALTRIX_DEEP each, or else the first eight and a few of the others.
inline long nextToRefuse(long granted) {
    static const bool isThorough = std::getenv("KOBALTRIX_DEEP") != nullptr;
    return granted + (isThorough || granted < 8 ? 1 : 7);
}

/// Does something that is refused one request for memory, or whatever else is counted, after so many that are
/// granted.
template<class Work>
Refusal refuse(long& untilRefusal, long granted, Work work) {
    Refusal refusal = {};
    untilRefusal = granted;
    try {
        work();
    } catch (const std::bad_alloc&) {
        refusal.threw = true;
    }
    refusal.happened = untilRefusal < 0;
    untilRefusal = -1;
    return refusal;
}
