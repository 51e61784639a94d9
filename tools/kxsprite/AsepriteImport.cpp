#include "AsepriteImport.h"

#include "Tags.h"

namespace {
Area area(const Value& value) {
    return {static_cast<float>(value.member("x").integer()), static_cast<float>(value.member("y").integer()),
            value.member("w").integer(), value.member("h").integer()};
}

int polls(const Value& duration, int stepMilliseconds) {
    if (duration.integer() < 0)
        duration.fail("is negative");
    return stepsOf(duration.integer(), stepMilliseconds);
}

bool isTrimmed(const Value& frame, const Area& bounds) {
    if (const std::optional<Value> trimmed = frame.find("trimmed"); trimmed && trimmed->flag())
        return true;
    if (const std::optional<Value> part = frame.find("spriteSourceSize"))
        if (part->member("x").integer() != 0 || part->member("y").integer() != 0)
            return true;
    const std::optional<Value> source = frame.find("sourceSize");
    return source &&
           (source->member("w").integer() > bounds.width || source->member("h").integer() > bounds.height);
}

bool isPadded(const Value& frame, const Area& bounds) {
    const std::optional<Value> source = frame.find("sourceSize");
    return source &&
           (source->member("w").integer() < bounds.width || source->member("h").integer() < bounds.height);
}

Frame readFrame(const std::string& name, const Value& frame, int stepMilliseconds) {
    const Area bounds = area(frame.member("frame"));
    if (const std::optional<Value> rotated = frame.find("rotated"); rotated && rotated->flag())
        throw Fault("frame " + quoted(name) +
                    " is rotated; export with frames left upright (--sheet-type rows, without rotation)");
    if (isTrimmed(frame, bounds))
        throw Fault("frame " + quoted(name) +
                    " is trimmed; export without --trim, --trim-sprite and --trim-by-grid (Trim off)");
    if (isPadded(frame, bounds))
        throw Fault("frame " + quoted(name) +
                    " is larger than the picture; export without --inner-padding and --extrude");
    return {polls(frame.member("duration"), stepMilliseconds), bounds};
}

std::vector<Frame> readFrames(const Value& root, int stepMilliseconds) {
    std::vector<Frame> frames;
    for (const auto& [key, frame] : root.member("frames").children()) {
        const std::optional<Value> filename = frame.find("filename");
        frames.push_back(readFrame(filename ? filename->text() : key, frame, stepMilliseconds));
    }
    if (frames.empty())
        throw Fault("has no frames; export without --ignore-empty and with the layers visible");
    return frames;
}

TagDirection directionOf(const Value& direction) {
    const std::string& way = direction.text();
    if (way == "forward")
        return TagDirection::Forward;
    if (way == "reverse")
        return TagDirection::Reverse;
    if (way == "pingpong")
        return TagDirection::PingPong;
    if (way == "pingpong_reverse")
        return TagDirection::PingPongReverse;
    direction.fail("is " + quoted(way) +
                   "; it must be forward, reverse, pingpong or pingpong_reverse: choose one of them as the "
                   "tag's animation direction and export again with --list-tags");
}

/// How often a tag is played; 0 for ever. It is written as a text.
int repeats(const Value& tag) {
    const std::optional<Value> repeat = tag.find("repeat");
    if (!repeat)
        return 0;
    const std::string& text = repeat->text();
    if (text.empty() || text.size() > 9 || text.find_first_not_of("0123456789") != std::string::npos)
        repeat->fail("must be a text of digits");
    return std::stoi(text);
}

Animation readTag(const Value& json, const std::vector<Frame>& frames, std::vector<std::string>& notes) {
    const Tag tag = {json.member("name").name(), json.member("from").integer(), json.member("to").integer(),
                     directionOf(json.member("direction")), repeats(json)};
    if (tag.from < 0 || tag.to < tag.from || tag.to >= static_cast<std::int64_t>(frames.size()))
        throw Fault("tag " + quoted(tag.name) + " covers the frames " + std::to_string(tag.from) + " to " +
                    std::to_string(tag.to) + ", but the export holds " + std::to_string(frames.size()) +
                    "; export all frames, without --ignore-empty, --tag, --frame-tag and --frame-range");
    const TagOrder order = layOut(tag, notes);
    Animation animation = {order.loops, {}};
    for (const int frame : order.frames)
        animation.frames.push_back(frames[static_cast<std::size_t>(frame)]);
    return animation;
}

Area readSlice(const Value& slice) {
    const std::vector<Value> keys = slice.member("keys").elements();
    if (keys.empty())
        slice.member("keys").fail("is empty");
    const Area bounds = area(keys.front().member("bounds"));
    for (const Value& key : keys)
        if (area(key.member("bounds")) != bounds)
            throw Fault(
                "slice " + quoted(slice.member("name").text()) +
                " moves between frames, which a box cannot; give it one place in all frames, or export "
                "without --list-slices");
    return bounds;
}

/// The file name alone: the sheet lies beside the sprite file wherever the game is installed.
std::string bareName(const std::string& path) { return path.substr(path.find_last_of("/\\") + 1); }
} // namespace

bool isAsepriteJson(const Value& root) { return root.find("frames") && root.find("meta"); }

Document documentFromAseprite(const Value& root, const ImportSettings& settings,
                              std::vector<std::string>& notes) {
    const Value meta = root.member("meta");
    const std::vector<Frame> frames = readFrames(root, settings.stepMilliseconds);
    Document document;
    if (const std::optional<Value> image = meta.find("image"))
        document.texture = bareName(image->name());
    if (document.texture.empty())
        throw Fault("names no picture; export with --sheet");
    if (const std::optional<Value> tags = meta.find("frameTags"))
        for (const Value& tag : tags->elements())
            if (!document.animations.emplace(tag.member("name").name(), readTag(tag, frames, notes)).second)
                throw Fault("two tags have the name " + quoted(tag.member("name").text()) +
                            "; rename one of them and export again with --list-tags");
    if (document.animations.empty())
        document.animations[settings.animationWithoutTags] = {-1, frames};
    if (const std::optional<Value> slices = meta.find("slices"))
        for (const Value& slice : slices->elements())
            if (!document.boxes.emplace(slice.member("name").name(), readSlice(slice)).second)
                throw Fault("two slices have the name " + quoted(slice.member("name").text()) +
                            "; rename one of them and export again with --list-slices");
    return document;
}
