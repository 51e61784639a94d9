#include "platform/FileFacts.h"

#include "platform/Wide.h"

#include <windows.h>

// In ticks of 100 ns since 1601; a file that was changed before 1970 was changed then.
static std::time_t timeOf(const FILETIME& time) {
    constexpr std::uint64_t ticksPerSecond = 10'000'000, until1970 = 11'644'473'600;
    const std::uint64_t seconds =
        (std::uint64_t(time.dwHighDateTime) << 32 | time.dwLowDateTime) / ticksPerSecond;
    return static_cast<std::time_t>(seconds < until1970 ? 0 : seconds - until1970);
}

_KXFileFacts _KXFactsOfFile(const char* path) {
    const HANDLE file =
        CreateFileW(_KXWidePath(path).c_str(), FILE_READ_ATTRIBUTES,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                    FILE_FLAG_BACKUP_SEMANTICS, nullptr); // folders, too; links are followed
    if (file == INVALID_HANDLE_VALUE)
        return {};
    BY_HANDLE_FILE_INFORMATION facts = {};
    const bool known = GetFileInformationByHandle(file, &facts) != 0;
    CloseHandle(file);
    if (!known)
        return {};
    return {std::uint64_t(facts.nFileSizeHigh) << 32 | facts.nFileSizeLow, timeOf(facts.ftLastWriteTime)};
}

bool _KXNameIsTaken(const char* path) {
    return GetFileAttributesW(_KXWidePath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}
