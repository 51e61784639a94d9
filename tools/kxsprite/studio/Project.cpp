#include "Project.h"

#include <algorithm>

bool Project::operator==(const Project& other) const {
    const auto isSame = [](const auto& a, const auto& b) { return a == b || *a == *b; };
    return texture == other.texture && boxes == other.boxes && grid == other.grid &&
           picture == other.picture &&
           std::equal(animations.begin(), animations.end(), other.animations.begin(), other.animations.end(),
                      isSame);
}

Document documentOf(const Project& project) {
    Document document;
    document.texture = project.texture;
    for (const NamedBox& box : project.boxes)
        document.boxes[box.name] = box.area;
    for (const auto& animation : project.animations)
        document.animations[animation->name] = animation->animation;
    return document;
}

Project projectOf(const Document& document) {
    Project project;
    project.texture = document.texture;
    for (const auto& [name, area] : document.boxes)
        project.boxes.push_back({name, area, boxColor(project.boxes.size())});
    for (const auto& [name, animation] : document.animations)
        project.animations.push_back(std::make_shared<NamedAnimation>(NamedAnimation{name, animation}));
    return project;
}

int animationNamed(const Project& project, const std::string& name) {
    const auto& all = project.animations;
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const auto& each) { return each->name == name; });
    return found == all.end() ? -1 : static_cast<int>(found - all.begin());
}

int boxNamed(const Project& project, const std::string& name) {
    const auto& all = project.boxes;
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const auto& each) { return each.name == name; });
    return found == all.end() ? -1 : static_cast<int>(found - all.begin());
}

std::uint32_t boxColor(std::size_t index) {
    constexpr std::uint32_t colors[] = {0xff5a5aff, 0x5ac8ffff, 0xffd24aff,
                                        0x7adf7aff, 0xd88cffff, 0xff9a4aff};
    return colors[index % std::size(colors)];
}
