#include "platform/UserFolder.h"

#include "platform/Environment.h"

#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

std::string _KXUserDataRoot() {
    const char* home = std::getenv("HOME");
    if (const passwd* const user = home && *home == '/' ? nullptr : getpwuid(getuid()))
        home = user->pw_dir;
    return home && *home == '/' ? std::string(home) + "/Library/Application Support" : "";
}

std::string _KXUserHome() { return _KXEnvironment("HOME").value_or(""); }
