#include "ProjectText.h"

#include "../Json.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace {
constexpr const char* studioMark = "kxsprite studio";
constexpr const char* textMark = "kxsprite project";

std::string colorText(std::uint32_t color) {
    char text[12];
    std::snprintf(text, sizeof text, "#%08X", static_cast<unsigned>(color));
    return text;
}

std::uint32_t colorOf(const Value& value) {
    const std::string& text = value.text();
    std::uint32_t color = 0;
    const auto [end, error] = std::from_chars(text.data() + 1, text.data() + text.size(), color, 16);
    if (text.size() != 9 || text[0] != '#' || error != std::errc() || end != text.data() + text.size())
        value.fail("must be a colour like #RRGGBBAA");
    return color;
}

std::string jsonOf(const Grid& grid) {
    char text[160];
    std::snprintf(text, sizeof text,
                  R"({"x": %d, "y": %d, "width": %d, "height": %d, "gapX": %d, "gapY": %d})", grid.x, grid.y,
                  grid.width, grid.height, grid.gapX, grid.gapY);
    return text;
}

Grid gridOf(const Value& value) {
    const auto side = [&](const char* key, int least) {
        const Value number = value.member(key);
        if (number.integer() < least || number.integer() > 1 << 15)
            number.fail("is too small or too large");
        return number.integer();
    };
    return {side("x", 0),      side("y", 0),    side("width", 1),
            side("height", 1), side("gapX", 0), side("gapY", 0)};
}

/// The elements of a list, a line each.
template<typename List, typename TextOf>
std::string listOf(const List& list, TextOf textOf) {
    std::string text = "[";
    for (const auto& each : list)
        text += (text.size() > 1 ? ",\n    {" : "\n    {") + textOf(each) + "}";
    return text + "]";
}

/// Brings the elements that have a place in the list to the front, in its order.
template<typename List, typename NameOf>
void order(List& list, const std::map<std::string, std::size_t>& places, NameOf nameOf) {
    const auto placeOf = [&](const auto& each) {
        const auto found = places.find(nameOf(each));
        return found == places.end() ? places.size() : found->second;
    };
    std::stable_sort(list.begin(), list.end(),
                     [&](const auto& a, const auto& b) { return placeOf(a) < placeOf(b); });
}

void applyStudio(Project& project, const Value& root) {
    if (root.member(studioMark).integer() != 1)
        root.member(studioMark).fail("must be 1: a later version of this program wrote the file");
    Project applied = project;
    applied.grid = gridOf(root.member("grid"));
    std::map<std::string, std::size_t> places, known;
    for (const auto& each : project.animations)
        known.emplace(each->name, 0);
    for (const Value& each : root.member("animations").elements()) {
        const std::string& name = each.member("name").name();
        const std::optional<Value> loops = each.find("loops");
        if (loops && known.emplace(name, 0).second)
            applied.animations.push_back(
                std::make_shared<NamedAnimation>(NamedAnimation{name, {loops->integer(), {}}}));
        places.emplace(name, places.size());
    }
    order(applied.animations, places, [](const auto& each) { return each->name; });
    places.clear();
    std::map<std::string, std::uint32_t> colors;
    for (const Value& each : root.member("boxes").elements()) {
        places.emplace(each.member("name").name(), places.size());
        colors.emplace(each.member("name").name(), colorOf(each.member("color")));
    }
    order(applied.boxes, places, [](const NamedBox& box) { return box.name; });
    for (NamedBox& box : applied.boxes)
        if (const auto found = colors.find(box.name); found != colors.end())
            box.color = found->second;
    project = std::move(applied);
}
} // namespace

std::string studioTextOf(const Project& project) {
    const auto animation = [](const std::shared_ptr<const NamedAnimation>& each) {
        std::string text = "\"name\": " + jsonFromText(each->name);
        if (each->animation.frames.empty()) // which a sprite file does not hold
            text += ", \"loops\": " + std::to_string(each->animation.loops);
        return text;
    };
    const auto box = [](const NamedBox& each) {
        return "\"name\": " + jsonFromText(each.name) + ", \"color\": \"" + colorText(each.color) + "\"";
    };
    return std::string("{\n  \"") + studioMark + "\": 1,\n  \"grid\": " + jsonOf(project.grid) +
           ",\n  \"animations\": " + listOf(project.animations, animation) +
           ",\n  \"boxes\": " + listOf(project.boxes, box) + "\n}\n";
}

void applyStudioText(Project& project, const std::string& text) {
    const ParsedJson json(text);
    applyStudio(project, json.root());
}

std::string textOf(const ProjectText& text) {
    Document document = documentOf(text.project);
    std::erase_if(document.animations, [](const auto& each) { return each.second.frames.empty(); });
    return std::string("{\"") + textMark + "\": " + jsonFromText(text.what) +
           ",\n\"path\": " + jsonFromText(text.path) + ",\n\"sprite\": " + jsonFromDocument(document) +
           ",\n\"studio\": " + studioTextOf(text.project) + "}\n";
}

std::optional<ProjectText> projectOfText(const std::string& text) {
    if (text.find(textMark) > 64) // at the beginning, or it is somebody else's text
        return std::nullopt;
    const ParsedJson json(text);
    const Value root = json.root();
    ProjectText read = {root.member(textMark).text(), root.member("path").text(),
                        projectOf(documentFromJson(root.member("sprite")))};
    applyStudio(read.project, root.member("studio"));
    return read;
}
