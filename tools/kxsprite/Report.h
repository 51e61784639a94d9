#pragma once

#include "Document.h"

#include <cstdio>
#include <new>

/// Says something about a file on standard error.
inline void complain(const std::string& path, const char* what) {
    std::fprintf(stderr, "kxsprite: %s: %s\n", path.c_str(), what);
}

/// Does something with a file; false, with a line about that file, if it has a fault.
template<typename Action>
bool tryWith(const std::string& path, Action action) {
    try {
        return action();
    } catch (const Fault& fault) {
        complain(fault.file.empty() ? path : fault.file, fault.what());
    } catch (const std::bad_alloc&) {
        complain(path, "there is not enough memory for it");
    } catch (const std::exception& error) {
        complain(path, error.what());
    }
    return false;
}
