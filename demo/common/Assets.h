#pragma once

#include <Kobaltrix/Kobaltrix.h>

#include <string>

/// The folder of the game's pictures, sprite files, sounds and font, all made in the build. A picture or
/// sprite that cannot be loaded throws std::bad_alloc.
class Assets {
public:
    explicit Assets(const std::string& folder) : _folder(folder) {}

    /// The path of a file. A temporary string.
    const char* path(const char* file) const { return KXTempString("%s/%s", _folder.c_str(), file); }
    /// The picture NAME.png.
    KXTexture& picture(const char* name) const;
    /// Reads the sprite file NAME.spr.
    void load(KXSprite& sprite, const char* name) const;

private:
    std::string _folder;
};
