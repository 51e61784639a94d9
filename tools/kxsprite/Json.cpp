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

namespace {
/// Equal cells in rows on the sheet, counted as one reads.
struct Grid {
    float x = 0, y = 0;
    std::int32_t width = 0, height = 0, gapX = 0, gapY = 0;
    std::int32_t columns = 0; ///< How many there are before the next row begins; 0 for no end.

    /// Cell number @a cell from the beginning of a row. In doubles, which hold every such product.
    Area area(double row, std::int32_t cell) const {
        const std::int32_t column = columns > 0 ? cell % columns : cell;
        if (columns > 0)
            row += cell / columns;
        return {place(x, column, width, gapX), place(y, row, height, gapY), width, height};
    }

private:
    static float place(float begin, double index, double extent, double gap) {
        return static_cast<float>(static_cast<double>(begin) + index * (extent + gap));
    }
};
} // namespace

static std::int32_t atLeast(std::int32_t least, const Value& value) {
    if (value.integer() < least)
        value.fail("must be at least " + std::to_string(least));
    return value.integer();
}

static Grid gridFromJson(const Value& value) {
    value.allowOnly({"x", "y", "width", "height", "gapX", "gapY", "columns"});
    Grid grid;
    grid.width = atLeast(1, value.member("width"));
    grid.height = atLeast(1, value.member("height"));
    if (const std::optional<Value> x = value.find("x"))
        grid.x = x->number();
    if (const std::optional<Value> y = value.find("y"))
        grid.y = y->number();
    if (const std::optional<Value> gap = value.find("gapX"))
        grid.gapX = atLeast(0, *gap);
    if (const std::optional<Value> gap = value.find("gapY"))
        grid.gapY = atLeast(0, *gap);
    if (const std::optional<Value> columns = value.find("columns"))
        grid.columns = atLeast(1, *columns);
    return grid;
}

/// Frames that are cells of a grid, with one duration for all or one for each.
static std::vector<Frame> framesFromCells(const Value& animation, const std::optional<Grid>& grid) {
    if (!grid)
        animation.fail("has cells, but there is no grid");
    const std::optional<Value> row = animation.find("row");
    const std::int32_t firstRow = row ? atLeast(0, *row) : 0;
    const std::vector<Value> cells = animation.member("cells").elements();
    const Value duration = animation.member("duration");
    std::vector<Value> durations(cells.size(), duration);
    if (duration.isArray())
        durations = duration.elements();
    if (durations.size() != cells.size())
        duration.fail("must be a number, or as many as there are cells");
    std::vector<Frame> frames;
    for (std::size_t i = 0; i < cells.size(); ++i)
        frames.push_back({durations[i].integer(), grid->area(firstRow, atLeast(0, cells[i]))});
    return frames;
}

static std::vector<Frame> framesFromJson(const Value& list) {
    std::vector<Frame> frames;
    for (const Value& frame : list.elements()) {
        frame.allowOnly({"duration", "x", "y", "width", "height"});
        frames.push_back({frame.member("duration").integer(), areaFromJson(frame)});
    }
    return frames;
}

static Animation animationFromJson(const Value& value, std::optional<Grid> grid) {
    const bool isOfCells = value.find("cells").has_value();
    if (isOfCells)
        value.allowOnly({"name", "loops", "grid", "row", "cells", "duration"});
    else
        value.allowOnly({"name", "loops", "frames"});
    Animation animation;
    if (const std::optional<Value> loops = value.find("loops"))
        animation.loops = loops->integer();
    if (const std::optional<Value> own = value.find("grid"))
        grid = gridFromJson(*own);
    animation.frames = isOfCells ? framesFromCells(value, grid) : framesFromJson(value.member("frames"));
    if (animation.frames.empty())
        value.fail("has no frames");
    return animation;
}

Document documentFromJson(const Value& root) {
    root.allowOnly({mark, "texture", "grid", "boxes", "animations"});
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
    std::optional<Grid> grid;
    if (const std::optional<Value> common = root.find("grid"))
        grid = gridFromJson(*common);
    if (const std::optional<Value> animations = root.find("animations"))
        for (const Value& animation : animations->elements())
            if (!document.animations
                     .emplace(animation.member("name").name(), animationFromJson(animation, grid))
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

static std::string written(const JsonTree& json, int indent) {
    try {
        return json.dump(indent);
    } catch (const JsonTree::type_error&) {
        throw Fault("a name is not UTF-8, which JSON cannot say");
    }
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
    return written(root, 2) + "\n";
}

std::string jsonFromText(const std::string& text) { return written(text, -1); }
