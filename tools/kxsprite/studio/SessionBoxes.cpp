#include "SessionParts.h"

int Session::addBox(Area area, Join join) {
    change("Add box", join, [&](State& state) {
        auto& boxes = state.project.boxes;
        state.selection.box = countOf(boxes);
        boxes.push_back({freeBoxName("box"), sane(area), boxColor(boxes.size())});
    });
    return selection().box;
}

void Session::addBoxes(const std::vector<NamedBox>& boxes, const char* step) {
    if (boxes.empty())
        return;
    change(step, Join::No, [&](State& state) {
        auto& all = state.project.boxes;
        int at = state.selection.box + 1;
        state.selection.box = at;
        for (NamedBox each : boxes) {
            each.name = freeName(each.name,
                                 [&](const std::string& name) { return boxNamed(state.project, name) >= 0; });
            each.area = sane(each.area);
            all.insert(all.begin() + at++, std::move(each));
        }
    });
}

bool Session::renameBox(const std::string& name) {
    if (!box() || name.empty() || name.find('\0') != std::string::npos)
        return false;
    if (const int other = boxNamed(project(), name); other >= 0)
        return other == selection().box;
    change("Rename box", Join::No, [&](State& state) {
        state.project.boxes[static_cast<std::size_t>(state.selection.box)].name = name;
    });
    return true;
}

void Session::removeBox() {
    if (box())
        change("Delete box", Join::No, [](State& state) {
            auto& boxes = state.project.boxes;
            boxes.erase(boxes.begin() + state.selection.box);
            state.selection.box = std::min(state.selection.box, countOf(boxes) - 1);
        });
}

void Session::duplicateBox() {
    if (box())
        addBoxes({*box()}, "Duplicate box");
}

void Session::moveBox(int by) {
    if (box())
        change("Move box in list", Join::No, [&](State& state) {
            state.selection.box = moveBy(state.project.boxes, state.selection.box, by);
        });
}

void Session::setBox(int box, Area area, Join join) {
    if (box >= 0 && box < countOf(project().boxes))
        change("Change box", join,
               [&](State& state) { state.project.boxes[static_cast<std::size_t>(box)].area = sane(area); });
}

void Session::setBoxColor(std::uint32_t color, Join join) {
    if (box())
        change("Change colour", join, [&](State& state) {
            state.project.boxes[static_cast<std::size_t>(state.selection.box)].color = color;
        });
}
