#pragma once

#include <Kobaltrix/Kobaltrix.h>

#include <string>

/// The folder of the demo's pictures and sprite files. What cannot be loaded throws std::bad_alloc.
class Assets {
public:
    explicit Assets(const std::string& folder) : _folder(folder) {}

    /// The picture NAME.png.
    KXTexture& picture(const char* name) const;
    /// Reads the sprite file NAME.spr.
    void load(KXSprite& sprite, const char* name) const;

private:
    std::string _folder;
};
