#pragma once

#include "util/KXString.h"

#include <Kobaltrix/KXSprite.h>

#include <cstdlib>
#include <string>

/// A text that the caller owns, as one that frees itself.
inline std::string take(char* text) {
    const std::string copy = text ? text : "(none)";
    std::free(text);
    return copy;
}

/// Everything a sprite file stores, in one line: the texture's name, [boxes] with their rectangles,
/// <animations> with the loops flag, durations and bounds of up to three frames.
inline std::string summary(const KXSprite& sprite) {
    std::string all = take(sprite.textureName());
    for (int i = 0; i < sprite.numberOfBoundingBoxes(); ++i) {
        const std::string name = take(sprite.boundingBoxAtIndex(i));
        all += " [" + name + "]" + KXRectToStringi(sprite.boundingBoxNamed(name.c_str()));
    }
    for (int i = 0; i < sprite.numberOfAnimations(); ++i) {
        const std::string name = take(sprite.animationAtIndex(i));
        const int frames = sprite.numberOfFrames(name.c_str());
        all += " <" + name + ">" + std::to_string(sprite.animationLoops(name.c_str()));
        KXRect bounds;
        int duration;
        for (int k = 0; k < frames && k < 3; ++k) {
            sprite.getFrameInfo(k, name.c_str(), &bounds, &duration);
            all += " " + std::to_string(duration) + KXRectToStringi(bounds);
        }
        if (frames > 3)
            all += " and " + std::to_string(frames - 3) + " more";
    }
    _KXCleanTempStrings();
    return all;
}
