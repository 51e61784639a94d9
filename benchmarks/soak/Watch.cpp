#include "Watch.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <malloc.h>

// Pages of its own, in use; what the allocator keeps for later is given back first.
static long kilobytesHeld() {
    malloc_trim(0);
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("RssAnon:"))
            return std::atol(line.c_str() + 8);
    return 0;
}

static long descriptorsHeld() {
    const std::filesystem::directory_iterator open("/proc/self/fd");
    return std::distance(begin(open), end(open));
}

void Watch::stepEnds() {
    ++_done;
    _longest = std::max(_longest, Clock::now() - _began);
}

void Watch::look() {
    Held& held = _tenths[isOver() ? 9 : _done * 10 / _steps];
    held.kilobytes = std::min(held.kilobytes, kilobytesHeld());
    held.descriptors = std::max(held.descriptors, descriptorsHeld());
}

Watch::Held Watch::inTenths(int first, int last) const {
    Held held;
    for (int i = first; i <= last; ++i) {
        held.kilobytes = std::min(held.kilobytes, _tenths[i].kilobytes);
        held.descriptors = std::max(held.descriptors, _tenths[i].descriptors);
    }
    return held;
}

bool Watch::report(const char* name) const {
    const auto milliseconds = [](Clock::duration time) {
        return std::chrono::duration<double, std::milli>(time).count();
    };
    const Held early = inTenths(1, 3), late = inTenths(7, 9);
    const bool seen = early.descriptors && late.descriptors;
    const bool flat =
        seen && late.kilobytes - early.kilobytes <= 1024 && late.descriptors == early.descriptors;
    std::printf("%s: %llu steps in %.0f s, the longest %.1f ms; %ld KB, at last %ld KB; %ld descriptors, at "
                "last %ld%s\n",
                name, static_cast<unsigned long long>(_done), milliseconds(Clock::now() - _first) / 1000,
                milliseconds(_longest), early.kilobytes, late.kilobytes, early.descriptors, late.descriptors,
                flat   ? ""
                : seen ? ": it grows"
                       : ": too few steps to tell");
    return flat;
}
