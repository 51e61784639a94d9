#pragma once

#include <cstdio>

/// Opens a file so that each write goes in one piece to what is its end by then, whoever else writes to it.
/// Programs started by the game do not inherit it. Null if it cannot be opened or created.
/// @param empties whether the file is emptied first.
std::FILE* _KXOpenToAppend(const char* path, bool empties);
