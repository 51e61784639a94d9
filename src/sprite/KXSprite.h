#pragma once

#include <Kobaltrix/KXSprite.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

// Ordered byte by byte, which is the order of the indices and of the file.
struct KXSprite::Animations {
    std::map<std::string, std::unique_ptr<KXSpriteAnimationInfo>, std::less<>> byName;
};

struct KXSprite::BoundingBoxes {
    std::map<std::string, KXRect, std::less<>> byName;
};
