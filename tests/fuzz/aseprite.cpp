// Files that may be drawings of .aseprite: read, laid out and composed.

#include "Fuzz.h"
#include "tools/kxsprite/ase/Loosen.h"

static void makeSprite(const AseSprite& sprite) {
    std::vector<std::string> notes;
    const SpriteSheet sheet = makeSheet({loosen(sprite, {16, "all"}, notes)}, "sheet.png", {{1, 1}, true});
    for (const auto& [name, animation] : sheet.documents.at(0).animations)
        for (const Frame& frame : animation.frames)
            require(frame.duration > 0 && frame.bounds.x >= 1 && frame.bounds.y >= 1 &&
                        static_cast<int>(frame.bounds.x) + frame.bounds.width < sheet.image.width() &&
                        static_cast<int>(frame.bounds.y) + frame.bounds.height < sheet.image.height(),
                    "a frame lies on the sheet, within its edges");
}

void fuzz(FuzzBytes bytes) {
    const std::string content = bytes.rest();
    AseSprite sprite;
    try {
        sprite = readAseprite(content);
    } catch (const Fault& fault) {
        require(*fault.what(), "a fault says what it is");
        return;
    }
    require(isAseprite(content) && !sprite.frames.empty(), "what is read is a sprite of frames");
    std::vector<std::string> notes;
    for (const Tag& tag : sprite.tags)
        for (const int frame : layOut(tag, notes).frames)
            require(frame >= tag.from && frame <= tag.to, "a tag shows its own frames");
    std::uint64_t work = 0;
    for (std::size_t i = 0; i < sprite.frames.size(); ++i)
        work += composingCost(sprite, i);
    if (work > 1 << 20)
        return;
    for (std::size_t i = 0; i < sprite.frames.size(); ++i) {
        const KXImage picture = composeFrame(sprite, i);
        require(picture.width() == sprite.width && picture.height() == sprite.height, "a frame is a canvas");
    }
    try {
        makeSprite(sprite);
    } catch (const Fault& fault) {
        require(*fault.what(), "a fault says what it is");
    }
}
