#include "SessionParts.h"

#include <cstdlib>
#include <utility>

// ---- What there is, was and was to be ----

void Session::begin(Project project) {
    settlePlaces(project);
    _saved = project;
    _now = {std::move(project), {}};
    _before.clear();
    _after.clear();
    _joined.clear();
    chooseAnimation(0);
}

const NamedAnimation* Session::animation() const {
    const int i = selection().animation;
    return i >= 0 ? project().animations[static_cast<std::size_t>(i)].get() : nullptr;
}

const Frame* Session::frame() const {
    const NamedAnimation* chosen = animation();
    const auto i = static_cast<std::size_t>(selection().frame);
    return chosen && i < chosen->animation.frames.size() ? &chosen->animation.frames[i] : nullptr;
}

const NamedBox* Session::box() const {
    const int i = selection().box;
    return i >= 0 ? &project().boxes[static_cast<std::size_t>(i)] : nullptr;
}

void Session::settle(Selection& selection) const {
    const Project& project = _now.project;
    selection.animation = std::clamp(selection.animation, -1, countOf(project.animations) - 1);
    selection.box = std::clamp(selection.box, -1, countOf(project.boxes) - 1);
    const int frames =
        selection.animation < 0
            ? 0
            : countOf(project.animations[static_cast<std::size_t>(selection.animation)]->animation.frames);
    selection.frame = std::clamp(selection.frame, 0, std::max(0, frames - 1));
    selection.frames.erase(selection.frames.begin(), selection.frames.lower_bound(0));
    selection.frames.erase(selection.frames.lower_bound(frames), selection.frames.end());
    if (frames)
        selection.frames.insert(selection.frame);
}

void Session::choose(Selection selection) {
    settle(selection);
    if (selection == _now.selection)
        return;
    _now.selection = std::move(selection);
    ++_version;
}

void Session::chooseAnimation(int animation) { choose({animation, 0, {}, selection().box}); }
void Session::chooseFrame(int frame) { choose({selection().animation, frame, {}, selection().box}); }

void Session::chooseBox(int box) {
    Selection selection = _now.selection;
    selection.box = box;
    choose(std::move(selection));
}

void Session::chooseAllFrames() {
    Selection selection = _now.selection;
    if (animation())
        selection.frames = numbers(0, animation()->animation.frames.size());
    choose(std::move(selection));
}

void Session::change(const char* name, Join join, const std::function<void(State&)>& edit) {
    const bool goesOn = join == Join::Continue && _joined == name;
    _joined = join == Join::No ? "" : name;
    State edited = _now;
    edit(edited);
    std::swap(_now, edited); // edited is what was
    settle(_now.selection);
    ++_version;
    if (goesOn && _isPushed) {
        if (_now.project == _before.back().state.project) { // there and back again
            _before.pop_back();
            _isPushed = false;
        }
        return;
    }
    _isPushed = !(_now.project == edited.project);
    if (!_isPushed)
        return;
    _before.push_back({name, std::move(edited)});
    _after.clear();
}

void Session::go(std::vector<Step>& from, std::vector<Step>& to) {
    _joined.clear();
    if (from.empty())
        return;
    Step step = std::move(from.back());
    from.pop_back();
    std::swap(_now, step.state);
    to.push_back(std::move(step));
    ++_version;
}

void Session::undo() { go(_before, _after); }
void Session::redo() { go(_after, _before); }

void Session::abandon() {
    if (_joined.empty() || !_isPushed)
        return;
    undo();
    _after.clear();
}

void Session::setTexture(const std::string& name) {
    change("Change sheet", Join::No, [&](State& state) { state.project.texture = name; });
}

void Session::setGrid(Grid grid, Join join) {
    change("Change grid", join, [&](State& state) { state.project.grid = sane(grid); });
}

// ---- The picture ----

static int whole(float value) { return static_cast<int>(std::floor(place(value))); }

/// Paints on the picture, which stays the file's where that changes nothing.
static void paint(Project& project, const KXImage& sheet, const std::function<void(Pixels&)>& act) {
    const Pixels before = project.picture ? *project.picture : Pixels(sheet);
    Pixels painted = before;
    act(painted);
    if (!(painted == before))
        project.picture = std::move(painted);
}

void Session::paintLine(const KXImage& sheet, KXPoint from, KXPoint to, KXPixel color, Join join) {
    const int x = whole(from.x), y = whole(from.y), across = whole(to.x) - x, down = whole(to.y) - y;
    const int steps = std::max({std::abs(across), std::abs(down), 1});
    const auto part = [&](int length, int i) {
        return static_cast<int>(std::lround(static_cast<double>(length) * i / steps));
    };
    change(color.a ? "Paint" : "Erase", join, [&](State& state) {
        paint(state.project, sheet, [&](Pixels& picture) {
            for (int i = 0; i <= steps; ++i)
                picture.set(x + part(across, i), y + part(down, i), color);
        });
    });
}

void Session::paintFill(const KXImage& sheet, KXPoint at, KXPixel color) {
    const int x = whole(at.x), y = whole(at.y);
    change("Fill", Join::No, [&](State& state) {
        paint(state.project, sheet, [&](Pixels& picture) { picture.fill(x, y, color); });
    });
}

void Session::setPicture(const KXImage& picture, const char* step) {
    change(step, Join::No, [&](State& state) { state.project.picture.emplace(picture); });
}

// ---- Animations ----

std::string Session::freeAnimationName(const std::string& wished) const {
    return freeName(wished, [&](const std::string& name) { return animationNamed(project(), name) >= 0; });
}

std::string Session::freeBoxName(const std::string& wished) const {
    return freeName(wished, [&](const std::string& name) { return boxNamed(project(), name) >= 0; });
}

void Session::addAnimation(const std::string& name) {
    addAnimations({{name.empty() ? "animation" : name, {}}}, "Add animation");
}

void Session::addAnimations(const std::vector<NamedAnimation>& animations, const char* step) {
    if (animations.empty())
        return;
    change(step, Join::No, [&](State& state) {
        int at = state.selection.animation + 1;
        state.selection = {at, 0, {}, state.selection.box};
        for (NamedAnimation each : animations) {
            each.name = freeName(
                each.name, [&](const std::string& name) { return animationNamed(state.project, name) >= 0; });
            auto& all = state.project.animations;
            all.insert(all.begin() + at++, std::make_shared<NamedAnimation>(std::move(each)));
        }
    });
}

bool Session::renameAnimation(const std::string& name) {
    if (!animation() || name.empty() || name.find('\0') != std::string::npos)
        return false;
    if (const int other = animationNamed(project(), name); other >= 0)
        return other == selection().animation;
    change("Rename animation", Join::No, [&](State& state) {
        state.project.animations[static_cast<std::size_t>(state.selection.animation)] =
            std::make_shared<NamedAnimation>(NamedAnimation{name, animation()->animation});
    });
    return true;
}

void Session::removeAnimation() {
    if (!animation())
        return;
    change("Delete animation", Join::No, [](State& state) {
        auto& all = state.project.animations;
        all.erase(all.begin() + state.selection.animation);
        state.selection = {std::min(state.selection.animation, countOf(all) - 1), 0, {}, state.selection.box};
    });
}

void Session::duplicateAnimation() {
    if (animation())
        addAnimations({*animation()}, "Duplicate animation");
}

void Session::moveAnimation(int by) {
    if (animation())
        change("Move animation", Join::No, [&](State& state) {
            state.selection.animation = moveBy(state.project.animations, state.selection.animation, by);
        });
}

void Session::setLoops(bool loops) {
    if (!animation() || (animation()->animation.loops != 0) == loops)
        return;
    change("Change loop", Join::No, [&](State& state) {
        auto& animation = state.project.animations[static_cast<std::size_t>(state.selection.animation)];
        auto edited = std::make_shared<NamedAnimation>(*animation);
        edited->animation.loops = loops ? -1 : 0;
        animation = std::move(edited);
    });
}
