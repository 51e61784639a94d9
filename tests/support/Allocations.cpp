#include "support/Allocations.h"

#include <cstdlib>
#include <new>

void* operator new(std::size_t bytes) {
    ++allocations;
    void* const block = allocationsLeft == 0 ? nullptr : std::malloc(bytes ? bytes : 1);
    allocationsLeft -= allocationsLeft > 0;
    return block ? block : throw std::bad_alloc();
}
// The driver asks this way too, and gives back by the same delete.
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return std::malloc(bytes ? bytes : 1);
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
