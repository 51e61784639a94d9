#pragma once

#include <ctime>

/// The date and the time of day in the user's time zone; all zero if they cannot be told, as in a year that
/// no int holds.
std::tm _KXLocalTime(std::time_t time);
