#include "text/ScarceMemory.h"

#include <cstdlib>
#include <new>

static void* allocate(std::size_t bytes) {
    if (allocationsLeft == 0)
        return nullptr;
    if (allocationsLeft > 0)
        --allocationsLeft;
    return std::malloc(bytes ? bytes : 1);
}

void* operator new(std::size_t bytes) {
    if (void* block = allocate(bytes))
        return block;
    throw std::bad_alloc();
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept { return allocate(bytes); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
