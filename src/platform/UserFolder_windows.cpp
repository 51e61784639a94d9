#include "platform/UserFolder.h"

#include "platform/Wide.h"

#include <shlobj.h>

// What a game keeps goes with the user from one machine to the next.
std::string _KXUserDataRoot() {
    wchar_t* path = nullptr;
    const bool known = SHGetKnownFolderPath(FOLDERID_RoamingAppData, KF_FLAG_CREATE, nullptr, &path) == S_OK;
    const std::string folder = known ? _KXNarrowPath(path) : "";
    CoTaskMemFree(path);
    return folder;
}
