#include "Assets.h"

#include <new>

KXTexture& Assets::picture(const char* name) const {
    return *KXTextureCacheLoad(path(KXTempString("%s.png", name)));
}

void Assets::load(KXSprite& sprite, const char* name) const {
    sprite.load(path(KXTempString("%s.spr", name)));
    if (sprite.numberOfAnimations() == 0)
        throw std::bad_alloc();
}
