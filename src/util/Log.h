#pragma once

#include <Kobaltrix/KXLog.h>

#include <cstdio>
#include <functional>
#include <map>
#include <string>

/// -1 for an enabled category; anything else, or no entry, for a disabled one.
using _KXCategoryStates = std::map<std::string, int, std::less<>>;

inline constinit int _KXLogInitialized = 0;     ///< -1 between initialising and de-initialising.
inline constinit std::FILE* _KXLogFP = nullptr; ///< The log file; null when it could not be opened.
inline constinit int _KXLogToSTDOut = 0;        ///< Whether messages are printed as well.
inline constinit _KXCategoryStates* _KXCategories =
    nullptr; ///< Owned; null while the log is not initialised. Not freed at the end: static objects may log.
