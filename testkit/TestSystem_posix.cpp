#include "TestSystem.h"

#include <SDL_stdinc.h>

const char* const _KXDriverWithoutDisplay = "offscreen";

void _KXSetUserFolderVariable(const std::filesystem::path& folder) {
    SDL_setenv("KOBALTRIX_USER_FOLDER", folder.c_str(), 1);
}
