#include "Session.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {
constexpr float farthest = 1 << 20; // well beyond any sheet, and exact with every fraction that counts
constexpr std::int32_t largestExtent = 1 << 15;
constexpr int longestDuration = 1000000;

float place(float value) { return std::isfinite(value) ? std::clamp(value, -farthest, farthest) : 0; }

Area sane(Area area) {
    return {place(area.x), place(area.y), std::clamp(area.width, 1, largestExtent),
            std::clamp(area.height, 1, largestExtent)};
}

Grid sane(Grid grid) {
    const auto from = [](int value, int least) { return std::clamp(value, least, 1 << 15); };
    return {from(grid.x, 0),      from(grid.y, 0),    from(grid.width, 1),
            from(grid.height, 1), from(grid.gapX, 0), from(grid.gapY, 0)};
}

/// Files may hold places that are no numbers, by which nothing can be drawn or brought into an order.
void settlePlaces(Project& project) {
    const auto settle = [](Area& area) {
        const Area before = area;
        area.x = place(area.x), area.y = place(area.y);
        return !(area == before);
    };
    for (NamedBox& box : project.boxes)
        settle(box.area);
    for (std::shared_ptr<const NamedAnimation>& animation : project.animations) {
        auto settled = std::make_shared<NamedAnimation>(*animation);
        bool differs = false;
        for (Frame& frame : settled->animation.frames)
            differs |= settle(frame.bounds);
        if (differs)
            animation = std::move(settled);
    }
}

/// The name, or one with a number behind it that is not taken.
template<typename IsTaken>
std::string freeName(const std::string& wished, IsTaken isTaken) {
    if (!wished.empty() && !isTaken(wished))
        return wished;
    std::string stem = wished.substr(0, wished.find_last_not_of("0123456789") + 1);
    if (!stem.empty() && stem.back() != ' ' && stem.size() == wished.size())
        stem += ' ';
    for (int i = 2;; ++i)
        if (std::string name = stem + std::to_string(i); !isTaken(name))
            return name;
}

/// Moves one element by so many places, as far as there are any; its place afterwards.
template<typename List>
int moveBy(List& list, int from, int by) {
    const int to = static_cast<int>(
        std::clamp<std::int64_t>(std::int64_t{from} + by, 0, static_cast<std::int64_t>(list.size()) - 1));
    const auto first = list.begin() + std::min(from, to), last = list.begin() + std::max(from, to) + 1;
    std::rotate(first, from < to ? first + 1 : last - 1, last);
    return to;
}

std::set<int> numbers(int from, std::size_t count) {
    std::set<int> all;
    for (std::size_t i = 0; i < count; ++i)
        all.insert(all.end(), from + static_cast<int>(i));
    return all;
}

int countOf(const auto& list) { return static_cast<int>(list.size()); }
} // namespace

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

// ---- Frames ----

void Session::changeFrames(const char* name, Join join,
                           const std::function<void(std::vector<Frame>&, Selection&)>& edit) {
    if (animation())
        change(name, join, [&](State& state) {
            auto& animation = state.project.animations[static_cast<std::size_t>(state.selection.animation)];
            auto edited = std::make_shared<NamedAnimation>(*animation);
            edit(edited->animation.frames, state.selection);
            animation = std::move(edited);
        });
}

// All of them where one is chosen: what is done to an order means the whole then.
std::vector<int> Session::chosenFrames() const {
    if (selection().frames.size() > 1)
        return {selection().frames.begin(), selection().frames.end()};
    const std::set<int> all = numbers(0, animation() ? animation()->animation.frames.size() : 0);
    return {all.begin(), all.end()};
}

void Session::addFrames(const std::vector<Frame>& frames, const char* step) {
    if (frames.empty())
        return;
    const auto insert = [&](std::vector<Frame>& all, Selection& selection) {
        const int at = all.empty() ? 0 : selection.frame + 1;
        std::vector<Frame> added = frames;
        for (Frame& frame : added)
            frame = {std::clamp(frame.duration, 0, longestDuration), sane(frame.bounds)};
        all.insert(all.begin() + at, added.begin(), added.end());
        selection.frames = numbers(at, added.size());
        selection.frame = at + countOf(added) - 1;
    };
    if (animation())
        return changeFrames(step, Join::No, insert);
    NamedAnimation added = {freeAnimationName("animation"), {}};
    Selection selection;
    insert(added.animation.frames, selection);
    addAnimations({std::move(added)}, step);
    choose({this->selection().animation, selection.frame, selection.frames, this->selection().box});
}

void Session::cut(const std::vector<Area>& areas) {
    std::vector<Frame> frames;
    for (const Area& area : areas)
        frames.push_back({frame() ? frame()->duration : 6, area});
    addFrames(frames, areas.size() == 1 ? "Cut frame" : "Cut frames");
}

void Session::removeFrames() {
    if (frame())
        changeFrames("Delete frames", Join::No, [](std::vector<Frame>& all, Selection& selection) {
            int i = 0;
            const int first = *selection.frames.begin();
            std::erase_if(all, [&](const Frame&) { return selection.frames.count(i++) != 0; });
            selection.frame = std::max(0, std::min(first, countOf(all) - 1));
            selection.frames.clear();
        });
}

void Session::duplicateFrames() {
    if (frame())
        changeFrames("Duplicate frames", Join::No, [](std::vector<Frame>& all, Selection& selection) {
            std::vector<Frame> copies;
            for (const int i : selection.frames)
                copies.push_back(all[static_cast<std::size_t>(i)]);
            const int at = *selection.frames.rbegin() + 1;
            all.insert(all.begin() + at, copies.begin(), copies.end());
            selection.frames = numbers(at, copies.size());
            selection.frame = at;
        });
}

void Session::reverseFrames() {
    const std::vector<int> chosen = chosenFrames();
    changeFrames("Reverse frames", Join::No, [&](std::vector<Frame>& all, Selection&) {
        for (std::size_t i = 0, k = chosen.size(); i + 1 < k; ++i)
            std::swap(all[static_cast<std::size_t>(chosen[i])], all[static_cast<std::size_t>(chosen[--k])]);
    });
}

void Session::pingPongFrames() {
    const std::vector<int> chosen = chosenFrames();
    if (chosen.size() < 2 || !animation())
        return;
    // A loop begins again with the first frame by itself; played once, the way back ends where it began.
    const int last = animation()->animation.loops ? 1 : 0;
    changeFrames("Ping-pong", Join::No, [&](std::vector<Frame>& all, Selection& selection) {
        std::vector<Frame> back;
        for (int i = countOf(chosen) - 2; i >= last; --i)
            back.push_back(all[static_cast<std::size_t>(chosen[static_cast<std::size_t>(i)])]);
        all.insert(all.begin() + chosen.back() + 1, back.begin(), back.end());
        selection.frames = numbers(chosen.back() + 1, back.size());
        selection.frames.insert(selection.frame);
    });
}

void Session::moveFrames(int before) {
    if (!frame())
        return;
    changeFrames("Move frames", Join::No, [&](std::vector<Frame>& all, Selection& selection) {
        before = std::clamp(before, 0, countOf(all));
        std::vector<Frame> moved, kept;
        int to = 0, current = 0;
        for (int i = 0; i < countOf(all); ++i) {
            const bool isMoved = selection.frames.count(i) != 0;
            if (i == selection.frame)
                current = countOf(moved);
            if (!isMoved && i < before)
                ++to;
            (isMoved ? moved : kept).push_back(all[static_cast<std::size_t>(i)]);
        }
        kept.insert(kept.begin() + to, moved.begin(), moved.end());
        all = std::move(kept);
        selection.frames = numbers(to, moved.size());
        selection.frame = to + current;
    });
}

void Session::shiftFrames(int by) {
    if (!frame() || by == 0)
        return;
    const std::set<int>& chosen = selection().frames;
    const int count = countOf(animation()->animation.frames);
    by = std::clamp(by, -count, count);
    moveFrames(by < 0 ? *chosen.begin() + by : *chosen.rbegin() + 1 + by);
}

void Session::setFrameBounds(int frame, Area area, Join join) {
    changeFrames("Change bounds", join, [&](std::vector<Frame>& all, Selection&) {
        if (frame >= 0 && frame < countOf(all))
            all[static_cast<std::size_t>(frame)].bounds = sane(area);
    });
}

void Session::setDurations(const std::set<int>& frames, int duration, Join join) {
    changeFrames("Change duration", join, [&](std::vector<Frame>& all, Selection&) {
        for (const int i : frames)
            if (i >= 0 && i < countOf(all))
                all[static_cast<std::size_t>(i)].duration = std::clamp(duration, 0, longestDuration);
    });
}

// ---- Boxes ----

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
