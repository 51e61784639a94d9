// Files of settings.

#include "Fuzz.h"
#include "util/SettingsText.h"

void fuzz(FuzzBytes bytes) {
    _KXSettingsText text, again;
    int line = 0;
    if (text.read(bytes.rest(), line))
        return require(line > 0 && text.write() == again.write(), "a file that is refused changes nothing");
    const std::string saved = text.write();
    require(!again.read(saved, line) && again.write() == saved, "what was read is read again");
    require(!text.set("key", " 1 \"a\" no") && !again.read(text.write(), line), "whatever stood there");
    require(again.values("key") == " 1 \"a\" no" && text.remove("key") && !text.has("key"), "and changed");
}
