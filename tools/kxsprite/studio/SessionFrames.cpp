#include "SessionParts.h"

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
