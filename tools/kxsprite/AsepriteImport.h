#pragma once

#include "Value.h"

/// How an Aseprite export becomes a sprite.
struct ImportSettings {
    int stepMilliseconds = 16;
    std::string animationWithoutTags; ///< The name of the only animation of a file without tags.
};

/// Whether a JSON text is an Aseprite export.
bool isAsepriteJson(const Value& root);

/// The document that an Aseprite export describes, its frames being an array or an object. Throws a Fault
/// that names the export option to change.
/// @param notes takes lines about what a sprite file cannot express.
Document documentFromAseprite(const Value& root, const ImportSettings& settings,
                              std::vector<std::string>& notes);
