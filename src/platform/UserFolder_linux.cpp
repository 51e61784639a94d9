#include "platform/UserFolder.h"

#include "platform/Environment.h"

#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

// A path that depends on where the process was started would be another folder each time.
static const char* absolutePathIn(const char* variable) {
    const char* const path = std::getenv(variable);
    return path && *path == '/' ? path : nullptr;
}

std::string _KXUserDataRoot() {
    if (const char* const data = absolutePathIn("XDG_DATA_HOME"))
        return data;
    const char* home = absolutePathIn("HOME");
    if (const passwd* const user = home ? nullptr : getpwuid(getuid()))
        home = user->pw_dir;
    return home && *home == '/' ? std::string(home) + "/.local/share" : "";
}

std::string _KXUserHome() { return _KXEnvironment("HOME").value_or(""); }
