#pragma once

/// Removes everything in a folder, but not the folder, and nothing outside it: of symbolic links the links
/// are removed. What cannot be removed stays, and the rest goes all the same.
/// @return whether anything was removed. A path that leads through a link at its end is no folder.
bool _KXEmptyFolder(const char* path);
