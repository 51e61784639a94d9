#include "platform/MemoryBudget.h"

#include <SDL_stdinc.h>

#include <cstdint>

static constinit thread_local _KXMemoryBudget* budget = nullptr;

// Stands between SDL and what gave it memory before: the C library, or functions of the game.
struct _KXBudgetedMemory {
    SDL_malloc_func malloc;
    SDL_calloc_func calloc;
    SDL_realloc_func realloc;
    SDL_free_func free;

    _KXBudgetedMemory();
    static bool grants(std::size_t bytes);
};

// Once for the whole program, and never taken back: other threads may be on their way through.
static const _KXBudgetedMemory& memory() {
    static const _KXBudgetedMemory memory;
    return memory;
}

bool _KXBudgetedMemory::grants(std::size_t bytes) {
    if (!budget)
        return true;
    if (bytes > budget->_left) {
        budget->_exceeded = true;
        return false;
    }
    budget->_left -= bytes;
    return true;
}

_KXBudgetedMemory::_KXBudgetedMemory() {
    SDL_GetMemoryFunctions(&malloc, &calloc, &realloc, &free);
    SDL_SetMemoryFunctions([](std::size_t bytes) { return grants(bytes) ? memory().malloc(bytes) : nullptr; },
                           [](std::size_t count, std::size_t bytes) -> void* {
                               const bool fits = bytes == 0 || count <= SIZE_MAX / bytes;
                               return fits && grants(count * bytes) ? memory().calloc(count, bytes) : nullptr;
                           },
                           [](void* block, std::size_t bytes) {
                               return grants(bytes) ? memory().realloc(block, bytes) : nullptr;
                           },
                           free);
}

_KXMemoryBudget::_KXMemoryBudget(std::size_t bytes) : _left(bytes) {
    memory();
    budget = this;
}

_KXMemoryBudget::~_KXMemoryBudget() { budget = nullptr; }
