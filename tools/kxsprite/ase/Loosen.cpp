#include "Loosen.h"

#include <algorithm>
#include <optional>
#include <tuple>

namespace {
constexpr std::uint64_t mostWork = std::uint64_t{1} << 32; // pixels: about a minute
constexpr std::size_t mostFrames = std::size_t{1} << 20;   // of all animations

/// A name that a sprite file can have.
const std::string& named(const std::string& name, const char* what) {
    if (name.find('\0') != std::string::npos)
        throw Fault(std::string(what) + " " + quoted(name) + " holds a zero byte, which no name can");
    return name;
}

LooseSprite::Animation animationOf(const TagOrder& order, const AseSprite& sprite, int stepMilliseconds) {
    LooseSprite::Animation animation = {order.loops, {}};
    for (const int i : order.frames) {
        const auto frame = static_cast<std::size_t>(i);
        animation.frames.push_back({frame, stepsOf(sprite.frames[frame].milliseconds, stepMilliseconds)});
    }
    return animation;
}

std::map<std::string, LooseSprite::Animation>
animationsOf(const AseSprite& sprite, const AseSettings& settings, std::vector<std::string>& notes) {
    std::vector<Tag> tags = sprite.tags;
    if (tags.empty())
        tags.push_back({settings.animationWithoutTags, 0, static_cast<int>(sprite.frames.size()) - 1});
    std::map<std::string, LooseSprite::Animation> animations;
    std::size_t frames = 0;
    for (const Tag& tag : tags) {
        const TagOrder order = layOut(tag, notes);
        frames += order.frames.size();
        if (frames > mostFrames)
            throw Fault("the tags show more than a million frames");
        if (!animations.emplace(named(tag.name, "tag"), animationOf(order, sprite, settings.stepMilliseconds))
                 .second)
            throw Fault("two tags have the name " + quoted(tag.name) + "; rename one of them");
    }
    return animations;
}

/// The box of a slice; none if it is hidden.
std::optional<Area> boxOf(const AseSlice& slice, std::vector<std::string>& notes) {
    const AseSlice::Key* shown = nullptr;
    bool always = !slice.keys.empty() && slice.keys.front().frame == 0;
    for (const AseSlice::Key& key : slice.keys) {
        if (key.width == 0 || key.height == 0) {
            always = false;
            continue;
        }
        if (shown && std::tie(shown->x, shown->y, shown->width, shown->height) !=
                         std::tie(key.x, key.y, key.width, key.height))
            throw Fault("slice " + quoted(slice.name) +
                        " moves between frames, which a box cannot; give it one place in all frames");
        shown = &key;
    }
    if (!shown || !always)
        notes.push_back("slice " + quoted(slice.name) +
                        (shown ? " is not there in all frames, but the box is" : " is hidden, and no box"));
    if (shown && (slice.hasPivot || slice.hasCentre))
        notes.push_back("slice " + quoted(slice.name) +
                        " has a pivot or a centre, which a box has not: they are left out");
    if (!shown)
        return std::nullopt;
    if (std::max(shown->width, shown->height) > INT32_MAX)
        throw Fault("slice " + quoted(slice.name) + " is too large");
    return Area{static_cast<float>(shown->x), static_cast<float>(shown->y),
                static_cast<std::int32_t>(shown->width), static_cast<std::int32_t>(shown->height)};
}

/// Adds the pictures of the frames that are shown, in their order; others would only take room. Frames of the
/// same cels are one picture.
void addPictures(LooseSprite& loose, const AseSprite& sprite) {
    std::map<std::size_t, std::size_t> pictures; // of frames
    for (const auto& [name, animation] : loose.animations)
        for (const LooseSprite::Frame& frame : animation.frames)
            pictures[frame.picture] = 0;
    std::map<std::pair<std::size_t, std::vector<AseCel>>, std::size_t> known;
    std::vector<std::size_t> composed;
    std::uint64_t work = 0;
    for (auto& [number, picture] : pictures) {
        const AseFrame& frame = sprite.frames[number];
        const auto [found, isNew] = known.try_emplace({frame.palette, frame.cels}, composed.size());
        picture = found->second;
        if (isNew) {
            composed.push_back(number);
            work += composingCost(sprite, number);
        }
    }
    if (work > mostWork)
        throw Fault("has too many frames of " + std::to_string(sprite.width) + " x " +
                    std::to_string(sprite.height) + " pixels to be drawn");
    for (const std::size_t number : composed)
        loose.add(loosePicture(composeFrame(sprite, number)));
    for (auto& [name, animation] : loose.animations)
        for (LooseSprite::Frame& frame : animation.frames)
            frame.picture = pictures[frame.picture];
}
} // namespace

LooseSprite loosen(const AseSprite& sprite, const AseSettings& settings, std::vector<std::string>& notes) {
    LooseSprite loose;
    loose.animations = animationsOf(sprite, settings, notes);
    for (const AseSlice& slice : sprite.slices)
        if (const std::optional<Area> box = boxOf(slice, notes))
            if (!loose.boxes.emplace(named(slice.name, "slice"), *box).second)
                throw Fault("two slices have the name " + quoted(slice.name) + "; rename one of them");
    addPictures(loose, sprite);
    return loose;
}

SpriteSheet makeFromAseprite(std::string_view bytes, const AseSettings& settings, const std::string& texture,
                             const SheetSettings& sheet, std::vector<std::string>& notes) {
    return makeSheet({loosen(readAseprite(bytes), settings, notes)}, texture, sheet);
}
