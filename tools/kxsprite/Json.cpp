#include "Json.h"

#include <nlohmann/json.hpp>

#include <cmath>

// Lists of objects with a name, not objects with names as keys: the order and a name used twice stay visible.

static constexpr const char* mark = "kxsprite";

bool isOwnJson(const Value& root) { return root.find(mark).has_value(); }

static Area areaFromJson(const Value& value) {
    return {value.member("x").number(), value.member("y").number(), value.member("width").integer(),
            value.member("height").integer()};
}

static Animation animationFromJson(const Value& value) {
    value.allowOnly({"name", "loops", "frames"});
    Animation animation;
    if (const std::optional<Value> loops = value.find("loops"))
        animation.loops = loops->integer();
    for (const Value& frame : value.member("frames").elements()) {
        frame.allowOnly({"duration", "x", "y", "width", "height"});
        animation.frames.push_back({frame.member("duration").integer(), areaFromJson(frame)});
    }
    if (animation.frames.empty())
        value.fail("has no frames");
    return animation;
}

Document documentFromJson(const Value& root) {
    root.allowOnly({mark, "texture", "boxes", "animations"});
    if (root.member(mark).integer() != 1)
        root.member(mark).fail("must be 1: a later version of this program wrote the file");
    Document document;
    if (const std::optional<Value> texture = root.find("texture"))
        document.texture = texture->name();
    if (const std::optional<Value> boxes = root.find("boxes"))
        for (const Value& box : boxes->elements()) {
            box.allowOnly({"name", "x", "y", "width", "height"});
            if (!document.boxes.emplace(box.member("name").name(), areaFromJson(box)).second)
                box.fail("has the name of another box");
        }
    if (const std::optional<Value> animations = root.find("animations"))
        for (const Value& animation : animations->elements())
            if (!document.animations.emplace(animation.member("name").name(), animationFromJson(animation))
                     .second)
                animation.fail("has the name of another animation");
    return document;
}

static void putArea(JsonTree& json, const Area& area) {
    if (!std::isfinite(area.x) || !std::isfinite(area.y))
        throw Fault("a position is not a finite number, which JSON cannot say; see kxsprite check");
    json["x"] = area.x;
    json["y"] = area.y;
    json["width"] = area.width;
    json["height"] = area.height;
}

std::string jsonFromDocument(const Document& document) {
    JsonTree root;
    root[mark] = 1;
    root["texture"] = document.texture.empty() ? JsonTree() : JsonTree(document.texture);
    JsonTree& boxes = root["boxes"] = JsonTree::array();
    for (const auto& [name, box] : document.boxes) {
        JsonTree json;
        json["name"] = name;
        putArea(json, box);
        boxes.push_back(std::move(json));
    }
    JsonTree animations = JsonTree::array();
    for (const auto& [name, animation] : document.animations) {
        JsonTree frames = JsonTree::array();
        for (const Frame& frame : animation.frames) {
            JsonTree json;
            json["duration"] = frame.duration;
            putArea(json, frame.bounds);
            frames.push_back(std::move(json));
        }
        JsonTree json;
        json["name"] = name;
        json["loops"] = animation.loops;
        json["frames"] = std::move(frames);
        animations.push_back(std::move(json));
    }
    root["animations"] = std::move(animations);
    try {
        return root.dump(2) + "\n";
    } catch (const JsonTree::type_error&) {
        throw Fault("a name is not UTF-8, which JSON cannot say");
    }
}
