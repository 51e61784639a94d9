#include "Assets.h"

#include <new>

KXTexture& Assets::picture(const char* name) const {
    return *KXTextureCacheLoad(KXTempString("%s/%s.png", _folder.c_str(), name));
}

void Assets::load(KXSprite& sprite, const char* name) const {
    sprite.load(KXTempString("%s/%s.spr", _folder.c_str(), name));
    if (sprite.numberOfAnimations() == 0)
        throw std::bad_alloc();
}
