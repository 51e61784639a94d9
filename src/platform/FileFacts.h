#pragma once

#include <cstdint>
#include <ctime>

/// What a listing tells of a file; of a link, of what it leads to.
struct _KXFileFacts {
    std::uint64_t size = 0; ///< Bytes.
    std::time_t changed = 0;
};

/// Both 0 where it cannot be told.
_KXFileFacts _KXFactsOfFile(const char* path);
/// Whether there is something of that name, be it a link that leads nowhere.
bool _KXNameIsTaken(const char* path);
