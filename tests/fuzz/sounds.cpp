// Files that may be sounds or music.

#include "Fuzz.h"

#include <Kobaltrix/KXMusic.h>
#include <Kobaltrix/KXSound.h>

#include <new>

void fuzz(FuzzBytes bytes) {
    fuzzWindow();
    KXSetMaximumSoundBytes(1 << 20);
    const std::string content = bytes.rest();
#ifdef KOBALTRIX_FUZZ // each file of notes takes half a second to fetch the same instruments anew
    if (content.find("MThd") != content.npos)
        return;
#endif
    const char* const path = fuzzFile(content);
    try {
        KXSound(path).play(0);
    } catch (const std::bad_alloc&) {
    }
    try {
        KXMusic(path).play(1);
    } catch (const std::bad_alloc&) {
    }
}
