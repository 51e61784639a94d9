#pragma once

#include <filesystem>

/// SDL's video driver that draws without a display; null where no driver does.
extern const char* const _KXDriverWithoutDisplay;

/// Sets KOBALTRIX_USER_FOLDER; an empty path removes it.
void _KXSetUserFolderVariable(const std::filesystem::path& folder);
