#include "Editor.h"

#include "GridFinder.h"
#include "IslandFinder.h"
#include "ProjectText.h"

// What Copy and its kind are about: what the keyboard is with.
std::string Editor::subject() const {
    if (_side.isAboutAnimations())
        return "animation";
    return _side.isAboutBoxes() || (_panel.focused() == &_stage && _stage.tool() == StageTool::Boxes)
               ? "boxes"
               : "frames";
}

void Editor::copy(const std::string& what) {
    ProjectText text = {what, _path, {}};
    text.project.texture = _session.project().texture;
    if (what == "boxes" && _session.box() && subject() == what)
        text.project.boxes = {*_session.box()};
    else if (what == "boxes")
        text.project.boxes = _session.project().boxes;
    else if (const NamedAnimation* animation = _session.animation()) {
        NamedAnimation copied = *animation;
        if (what == "frames") {
            copied.animation.frames.clear();
            for (const int i : _session.selection().frames)
                copied.animation.frames.push_back(animation->animation.frames[static_cast<std::size_t>(i)]);
        }
        text.project.animations.push_back(std::make_shared<NamedAnimation>(std::move(copied)));
    }
    if (text.project.boxes.empty() && text.project.animations.empty())
        return say("There is nothing to copy.");
    try {
        if (!KXSetClipboardText(textOf(text).c_str()))
            say(KXError());
    } catch (const Fault& fault) {
        say(fault.what());
    }
}

void Editor::paste() {
    try {
        const std::optional<ProjectText> text = projectOfText(KXClipboardText());
        if (!text)
            return say("There is nothing of a sprite on the clipboard.");
        const Project& pasted = text->project;
        std::vector<NamedAnimation> animations;
        for (const auto& each : pasted.animations)
            animations.push_back(*each);
        if (text->what == "frames" && !animations.empty())
            _session.addFrames(animations.front().animation.frames, "Paste frames");
        else
            _session.addAnimations(animations, "Paste animation");
        _session.addBoxes(pasted.boxes, "Paste boxes");
        if (!animations.empty() && pasted.texture != _session.project().texture)
            say("What was pasted was cut from " + quoted(pasted.texture) +
                ": it has the same places on this sheet.");
    } catch (const Fault& fault) {
        say("What is on the clipboard cannot be pasted: it " + std::string(fault.what()));
    }
}

// As large as the frame, to be made smaller.
void Editor::addBox() {
    const Frame* frame = _session.frame();
    _session.addBox(frame ? Area{0, 0, frame->bounds.width, frame->bounds.height} : Area{0, 0, 16, 16});
    useStageTool(StageTool::Boxes);
    _side.nameBox();
}

void Editor::removeChosen() {
    const std::string what = subject();
    what == "animation" ? _session.removeAnimation()
    : what == "boxes"   ? _session.removeBox()
                        : _session.removeFrames();
}

void Editor::duplicateChosen() {
    const std::string what = subject();
    what == "animation" ? _session.duplicateAnimation()
    : what == "boxes"   ? _session.duplicateBox()
                        : _session.duplicateFrames();
}

void Editor::findGrid() {
    if (const std::optional<Grid> grid = ::findGrid(_sheet.image())) {
        _session.setGrid(*grid);
        _side.showPage(SidePanel::Page::Grid);
        _settings.showsGrid = true;
        say(KXTempString("Cells of %d x %d pixels.", grid->width, grid->height));
    } else {
        say("No grid was found: type its numbers.");
    }
}

void Editor::cutCells() {
    const Grid& grid = _session.project().grid;
    const auto [columns, rows] = cellCount(grid, _sheet.width(), _sheet.height());
    const std::vector<Area> cells = filledCells(_sheet.image(), grid, {0, 0}, {columns - 1, rows - 1});
    _session.cut(cells);
    say(cells.empty() ? "No cell shows anything." : KXTempString("%zu frames were cut.", cells.size()));
}

void Editor::cutIslands() {
    const std::vector<Area>& islands = _sheet.islands();
    _session.cut(islands);
    say(islands.empty() ? "There are no islands." : KXTempString("%zu frames were cut.", islands.size()));
}
