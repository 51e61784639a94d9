#pragma once

#include "../LooseSprite.h"
#include "AseSprite.h"

struct AseSettings {
    int stepMilliseconds = 16;
    std::string animationWithoutTags; ///< The name of the only animation of a file without tags.
};

/// What an .aseprite file shows, as animations and boxes. Throws a Fault for what a sprite cannot be.
/// @param notes takes lines about what a sprite file cannot express.
LooseSprite loosen(const AseSprite& sprite, const AseSettings& settings, std::vector<std::string>& notes);

/// The sprite and the sheet that the bytes of an .aseprite file become, without files. Throws a Fault.
SpriteSheet makeFromAseprite(std::string_view bytes, const AseSettings& settings, const std::string& texture,
                             const SheetSettings& sheet, std::vector<std::string>& notes);
