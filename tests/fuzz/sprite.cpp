// Sprite files: whatever is loaded plays, and is the same when it is saved and loaded again.

#include "Fuzz.h"
#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXSprite.h>

#include <cstdlib>

static void play(KXSprite& sprite) {
    for (int i = 0; i < sprite.numberOfAnimations() && i < 8; ++i) {
        char* const name = sprite.animationAtIndex(i);
        sprite.setAnimation(name);
        for (int step = 0; step < 40; ++step)
            sprite.poll();
        sprite.fullSize(name);
        std::free(name);
    }
    delete sprite.clone();
}

void fuzz(FuzzBytes bytes) {
    KXSprite sprite, again;
    if (!sprite.load(fuzzFile(bytes.rest(), ".spr")))
        return;
    play(sprite);
    const char* const path = fuzzFile("", "saved.spr");
    sprite.save(path);
    const std::string saved = contentOf(path);
    again.load(path);
    again.save(path);
    require(contentOf(path) == saved, "a sprite that was saved and loaded is saved as the same bytes");
}
