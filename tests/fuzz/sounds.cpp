// Files that may be sounds or music.

#include "Fuzz.h"

#include <Kobaltrix/KXMusic.h>
#include <Kobaltrix/KXSound.h>

#include <new>

void fuzz(FuzzBytes bytes) {
    fuzzWindow();
    KXSetMaximumSoundBytes(1 << 20);
    const char* const path = fuzzFile(bytes.rest());
    try {
        KXSound(path).play(0);
    } catch (const std::bad_alloc&) {
    }
    try {
        KXMusic(path).play(1);
    } catch (const std::bad_alloc&) {
    }
}
