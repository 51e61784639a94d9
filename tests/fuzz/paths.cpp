// Paths and names of files, taken apart and put together.

#include "Fuzz.h"

#include <Kobaltrix/KXFile.h>
#include <Kobaltrix/KXKeyboard.h>
#include <Kobaltrix/KXString.h>

#include <algorithm>
#include <cstdlib>

static std::string take(char* text) {
    const std::string taken = text ? text : "";
    std::free(text);
    return taken;
}

void fuzz(FuzzBytes bytes) {
    const std::string a = bytes.text().c_str(), b = bytes.rest().c_str();
    const std::string name = take(KXGetFilename(a.c_str()));
    require(a.ends_with(name) && name.find('/') == name.npos, "a file's name is the end of its path");
    require(a.ends_with(take(KXGetExtension(a.c_str()))), "an extension is the end of the path");
    take(KXGetContainingPathOf(a.c_str()));
    const std::string joined = KXAppendPath(a.c_str(), b.c_str());
    require(joined.size() <= 1023, "a temporary string has room");
    KXFileExists(b.c_str());
    KXIsDirectory(b.c_str());
    for (const char* const entry : KXDirectoryContents(b.c_str()))
        require(b.starts_with(std::string(entry, std::min(b.size(), std::strlen(entry)))),
                "what is in a folder has the folder's path");
    KXTempString("%s", b.c_str());
    KXKeyFromName(a.c_str());
}
