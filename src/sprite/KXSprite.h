#pragma once

#include "util/FollowedFile.h"

#include <Kobaltrix/KXSprite.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

/// What a sprite owns. The maps are ordered byte by byte, which is the order of the indices and of the file.
struct KXSprite::Contents {
    using Text = std::optional<std::string>;

    static Text copyOf(const char* text) { return text ? Text(text) : std::nullopt; }
    static const char* pointerTo(const Text& text) { return text ? text->c_str() : nullptr; }
    static const char* printable(const char* text) { return text ? text : "(null)"; }

    std::map<std::string, KXSpriteAnimationInfo, std::less<>> animations;
    std::map<std::string, KXRect, std::less<>> boundingBoxes;
    Text currentAnimation;
    Text texturePath;
    Text textureName;

    // Of load(), for when the file changes.
    Text path;
    _KXFollowedFile file;
    bool hasOwnTexture = false; // a name that the game has set
    bool leavesBoxesOut = false;
};
