#include "support/Allocations.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include <dlfcn.h>
#include <execinfo.h>
#include <link.h>

#ifdef __APPLE__
// Its linker has no --wrap, so requests by new alone are refused.
static void* __real_malloc(std::size_t bytes) { return std::malloc(bytes); }
#else
// The linker sends the program's own calls to __wrap_malloc() and so on, and calls of these to the system.
extern "C" {
void* __real_malloc(std::size_t);
void* __real_calloc(std::size_t, std::size_t);
void* __real_realloc(void*, std::size_t);
char* __real_strdup(const char*);
}
#endif

std::string_view libraryOf(void* address) {
    dl_find_object its = {};
    return _dl_find_object(address, &its) == 0 ? its.dlfo_link_map->l_name : "none";
}

static bool isStandardLibrary(void* address) {
    return libraryOf(address).find("c++") != std::string_view::npos;
}

// The standard library asks on behalf of whoever called it. A driver that is refused would end the program.
static bool isOwnRequest(void* caller) {
    if (!isStandardLibrary(caller))
        return libraryOf(caller).empty();
    void* callers[16];
    void** const end = callers + backtrace(callers, 16);
    void** const asker = std::find_if_not(std::find(callers, end, caller), end, isStandardLibrary);
    return asker != end && libraryOf(*asker).empty();
}

// Whether the request that is made now is the one to refuse.
static bool isRefused() { return requestsUntilRefusal >= 0 && --requestsUntilRefusal < 0; }

static void* ask(std::size_t bytes, void* caller) {
    if (requestsUntilRefusal >= 0 && isOwnRequest(caller) && isRefused())
        return nullptr;
    return __real_malloc(bytes ? bytes : 1);
}

void* operator new(std::size_t bytes) {
    ++allocations;
    void* const block = allocationsLeft == 0 ? nullptr : ask(bytes, __builtin_return_address(0));
    allocationsLeft -= allocationsLeft > 0;
    return block ? block : throw std::bad_alloc();
}
// The driver asks this way too, and gives back by the same delete.
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return ask(bytes, __builtin_return_address(0));
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }

#ifndef __APPLE__
extern "C" {
void* __wrap_malloc(std::size_t);
void* __wrap_calloc(std::size_t, std::size_t);
void* __wrap_realloc(void*, std::size_t);
char* __wrap_strdup(const char*);

void* __wrap_malloc(std::size_t bytes) { return isRefused() ? nullptr : __real_malloc(bytes); }
void* __wrap_calloc(std::size_t count, std::size_t bytes) {
    return isRefused() ? nullptr : __real_calloc(count, bytes);
}
void* __wrap_realloc(void* block, std::size_t bytes) {
    return isRefused() ? nullptr : __real_realloc(block, bytes);
}
char* __wrap_strdup(const char* text) { return isRefused() ? nullptr : __real_strdup(text); }
}
#endif
