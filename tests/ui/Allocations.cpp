#include "Allocations.h"

#include <cstdlib>
#include <new>

void* operator new(std::size_t bytes) {
    ++allocations;
    if (void* block = std::malloc(bytes ? bytes : 1))
        return block;
    throw std::bad_alloc();
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
