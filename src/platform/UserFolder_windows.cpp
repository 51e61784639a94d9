#include "platform/UserFolder.h"

#include "platform/Wide.h"

#include <shlobj.h>

static std::string knownFolder(const KNOWNFOLDERID& which) {
    wchar_t* path = nullptr;
    const bool known = SHGetKnownFolderPath(which, KF_FLAG_CREATE, nullptr, &path) == S_OK;
    const std::string folder = known ? _KXNarrowPath(path) : "";
    CoTaskMemFree(path);
    return folder;
}

// What a game keeps goes with the user from one machine to the next.
std::string _KXUserDataRoot() { return knownFolder(FOLDERID_RoamingAppData); }

std::string _KXUserHome() { return knownFolder(FOLDERID_Profile); }
