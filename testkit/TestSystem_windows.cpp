#include "TestSystem.h"

#include <windows.h>

// The one that SDL has finds no OpenGL here.
const char* const _KXDriverWithoutDisplay = nullptr;

// SDL's call would lose the letters of a player's name that are not of the system's code page.
void _KXSetUserFolderVariable(const std::filesystem::path& folder) {
    SetEnvironmentVariableW(L"KOBALTRIX_USER_FOLDER", folder.empty() ? nullptr : folder.c_str());
}
