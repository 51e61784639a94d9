#include "SpriteIO.h"

#include "SpriteFile.h"

#include <Kobaltrix/KXSprite.h>

#include <cstdlib>

// A sprite tells nobody whether it could be loaded, so the bytes are looked at before.

namespace {
StrictReading readFileStrictly(const std::string& path) {
    return readStrictly(readFile(path), [](const std::string&) { return std::nullopt; });
}

/// A copy of a text that the library hands over.
std::string take(char* text) {
    std::string copy = text ? text : "";
    std::free(text);
    return copy;
}

KXRect rectOf(const Area& area) {
    return {{area.x, area.y}, {static_cast<float>(area.width), static_cast<float>(area.height)}};
}

// What the library read from 32 bits is at most one rounding above what fits into them.
std::int32_t whole(float value) {
    return value >= 0x1p31f ? INT32_MAX : value <= -0x1p31f ? INT32_MIN : static_cast<std::int32_t>(value);
}

Area areaOf(const KXRect& rect) {
    return {rect.origin.x, rect.origin.y, whole(rect.size.width), whole(rect.size.height)};
}

Document documentOf(const KXSprite& sprite) {
    Document document;
    document.texture = take(sprite.textureName());
    for (int i = 0; i < sprite.numberOfBoundingBoxes(); ++i) {
        const std::string name = take(sprite.boundingBoxAtIndex(i));
        document.boxes[name] = areaOf(sprite.boundingBoxNamed(name.c_str()));
    }
    for (int i = 0; i < sprite.numberOfAnimations(); ++i) {
        const std::string name = take(sprite.animationAtIndex(i));
        Animation& animation = document.animations[name];
        animation.loops = sprite.animationLoops(name.c_str());
        for (int k = 0; k < sprite.numberOfFrames(name.c_str()); ++k) {
            KXRect bounds = KXZeroRect;
            int duration = 0;
            sprite.getFrameInfo(k, name.c_str(), &bounds, &duration);
            animation.frames.push_back({duration, areaOf(bounds)});
        }
    }
    return document;
}

void fill(KXSprite& sprite, const Document& document) {
    sprite.setTextureName(document.texture.empty() ? nullptr : document.texture.c_str());
    for (const auto& [name, box] : document.boxes)
        sprite.addBoundingBox(name.c_str(), rectOf(box));
    for (const auto& [name, animation] : document.animations) {
        for (const Frame& frame : animation.frames)
            sprite.addFrameInfo(name.c_str(), rectOf(frame.bounds), frame.duration);
        sprite.setAnimationLoops(name.c_str(), animation.loops);
    }
}
} // namespace

Document loadDocument(const std::string& path) {
    if (const StrictReading reading = readFileStrictly(path); !reading.readable) {
        const FaultAt& fault = reading.faults.back();
        throw Fault("byte " + std::to_string(fault.offset) + ": " + fault.what);
    }
    KXSprite sprite;
    sprite.load(path.c_str());
    return documentOf(sprite);
}

void saveDocument(const Document& document, const std::string& path) {
    KXSprite sprite;
    fill(sprite, document);
    if (!sprite.writeToFile(path.c_str()))
        throw libraryFault(path);
}
