#pragma once

#include "Packer.h"

/// One picture of a sprite as it was drawn: what is seen of it, and where that is on its canvas.
struct LoosePicture {
    KXImage seen; ///< Empty if nothing is.
    int x = 0, y = 0;
    int width = 0, height = 0; ///< Of the canvas.
};

/// A sprite whose pictures lie on no sheet yet.
struct LooseSprite {
    struct Frame {
        std::size_t picture;
        std::int32_t duration; ///< In polls.
    };
    struct Animation {
        std::int32_t loops = -1;
        std::vector<Frame> frames;
    };

    std::vector<LoosePicture> pictures;
    std::int64_t pixels = 0; ///< Of all pictures, as far as they are seen.
    std::map<std::string, Animation> animations;
    std::map<std::string, Area> boxes; ///< On the canvas.

    /// Adds a picture. @return its number. Throws a Fault once there are more than any sheet can hold.
    std::size_t add(LoosePicture picture);
    /// Adds another sprite's animations and boxes. Throws a Fault where a name is there already.
    void add(LooseSprite other);
};

/// What is seen of a picture.
LoosePicture loosePicture(const KXImage& canvas);

/// How many pixels of a sprite's canvas are cut off, since no frame of it uses them.
struct Cut {
    int left = 0, top = 0, right = 0, bottom = 0;
};

/// Sprites on one sheet.
struct SpriteSheet {
    KXImage image;
    int percentFull = 0;
    std::size_t pictures = 0;        ///< That are different.
    std::vector<Document> documents; ///< As many as there were sprites, in their order.
    std::vector<Cut> cuts;           ///< Of each.
};

struct SheetSettings {
    PackSettings packing;
    bool trim = true; ///< Frames never move against each other or against the boxes: all are cut alike.
};

/// Puts the pictures of all sprites on one sheet. @param texture its bare name. Throws a Fault if they do not
/// fit, or if there are none.
SpriteSheet makeSheet(const std::vector<LooseSprite>& sprites, const std::string& texture,
                      const SheetSettings& settings);
