#include "support/Allocations.h"

// Requests by new alone are counted and refused: all libraries are parts of the program here.

void* operator new(std::size_t bytes) {
    ++allocations;
    void* const block = allocationsLeft == 0 ? nullptr : std::malloc(bytes ? bytes : 1);
    allocationsLeft -= allocationsLeft > 0;
    return block ? block : throw std::bad_alloc();
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
