#include "StageView.h"

#include <Kobaltrix/KXDrawing.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <utility>

// The largest width and the largest height of its frames, measured once for each animation.
Area StageView::extent() const {
    const int chosen = _session.selection().animation;
    const std::shared_ptr<const NamedAnimation> now =
        chosen < 0 ? nullptr : _session.project().animations[static_cast<std::size_t>(chosen)];
    if (std::exchange(_measured, now) == now)
        return _extent;
    _extent = {0, 0, 0, 0};
    if (now)
        for (const Frame& frame : now->animation.frames) {
            _extent.width = std::max(_extent.width, frame.bounds.width);
            _extent.height = std::max(_extent.height, frame.bounds.height);
        }
    return _extent;
}

// -1 for none.
int StageView::frameOnShow() const {
    const NamedAnimation* const chosen = _session.animation();
    const int frame = _player.isPlaying() ? _player.frame() : _session.selection().frame;
    return chosen && frame < static_cast<int>(chosen->animation.frames.size()) ? frame : -1;
}

// ---- Mouse ----

bool StageView::isBoxAt(std::size_t box, KXPoint place) const {
    return showsBoxes && isIn(_session.project().boxes[box].area, place, 3 / zoom());
}

bool StageView::hasBoxAt(KXPoint place) const {
    for (std::size_t i = 0; i < _session.project().boxes.size(); ++i)
        if (isBoxAt(i, place))
            return true;
    return false;
}

unsigned StageView::gripOfBoxAt(KXPoint point) const {
    const NamedBox* const box = _session.box();
    return box && showsBoxes ? gripAt(seen(box->area), point) : GripNone;
}

// Of several that lie on each other each click chooses another.
void StageView::chooseNextAt(KXPoint place) {
    std::vector<int> found;
    for (std::size_t i = 0; i < _session.project().boxes.size(); ++i)
        if (isBoxAt(i, place))
            found.push_back(static_cast<int>(i));
    const int next = nextOf(found, _session.selection().box);
    if (next < 0)
        return;
    _session.chooseBox(next);
    act();
}

void StageView::pressed(KXPoint place, const KXUIMouse& mouse) {
    _from = _to = place;
    _hasMoved = false;
    unsigned grip = gripOfBoxAt(mouse.point);
    _wasChosen = grip != GripNone;
    if (!grip && hasBoxAt(place)) {
        chooseNextAt(place);
        grip = GripAll;
    }
    _act = grip ? Act::Drag : Act::Draw;
    if (grip)
        _drag = {_session.box()->area, grip, place};
}

void StageView::dragged(KXPoint place) {
    constexpr float least = 3; // points
    _hasMoved |= std::max(std::abs(place.x - _from.x), std::abs(place.y - _from.y)) * zoom() >= least;
    _to = place;
    if (_act != Act::Drag || !_hasMoved)
        return;
    _session.setBox(_session.selection().box, _drag.to(place),
                    std::exchange(_drag.hasBegun, true) ? Join::Continue : Join::Begin);
    act();
}

void StageView::released(KXPoint place) {
    _to = place;
    const Act done = std::exchange(_act, Act::None);
    if (done == Act::Draw && _hasMoved) {
        _session.addBox(areaBetween(_from, _to));
        act();
    } else if (done == Act::Drag && !_hasMoved && _wasChosen) {
        chooseNextAt(_from);
    }
}

void StageView::abandoned() {
    if (std::exchange(_act, Act::None) != Act::Drag || !_drag.hasBegun)
        return;
    _session.abandon();
    act();
}

KXCursor StageView::cursorAt(KXPoint place) {
    if (_tool == StageTool::Look)
        return KXCursorArrow;
    const unsigned grip = _act == Act::Drag ? _drag.grip : gripOfBoxAt(seen({place.x, place.y, 0, 0}).origin);
    return grip ? cursorOf(grip) : hasBoxAt(place) ? KXCursorHand : KXCursorCrosshair;
}

// ---- Keys ----

int StageView::keyPressed(const KXUIKey& key) {
    if (key.control || key.command)
        return 0;
    const KXPoint way = wayOf(key.key);
    if (way.x != 0 || way.y != 0)
        return arrowPressed(key, way);
    if (key.key == KXKeySpace) // which moves the picture with the mouse
        return -1;
    if (key.alt || _tool != StageTool::Boxes)
        return 0;
    switch (key.key) {
    case KXKeyPageUp:
    case KXKeyPageDown:
        _session.chooseBox(std::max(0, _session.selection().box + (key.key == KXKeyPageDown ? 1 : -1)));
        return act(), -1;
    case KXKeyReturn:
    case KXKeyPadEnter: {
        const Frame* const frame = _session.frame();
        _session.addBox({0, 0, frame ? frame->bounds.width : 16, frame ? frame->bounds.height : 16});
        return act(), -1;
    }
    default:
        return 0;
    }
}

int StageView::arrowPressed(const KXUIKey& key, KXPoint way) {
    if (_tool == StageTool::Look)
        return key.alt ? 0 : (pan(way), -1);
    if (_session.box()) {
        const Area area = nudged(_session.box()->area, way, key.shift, key.alt);
        _session.setBox(_session.selection().box, area, key.isRepeat ? Join::Continue : Join::Begin);
        reveal(area);
        act();
    }
    return -1;
}

KXUIDescription StageView::description() const {
    KXUIDescription said = {"canvas", "stage", "no frame", _tool == StageTool::Look ? "look" : "boxes"};
    if (frameOnShow() >= 0)
        said.value = "frame " + std::to_string(frameOnShow() + 1) + " of " +
                     std::to_string(_session.animation()->animation.frames.size());
    if (const NamedBox* const box = _session.box())
        said.value += ", box " + box->name + " at " + std::to_string(std::lround(box->area.x)) + ", " +
                      std::to_string(std::lround(box->area.y)) + ", " + std::to_string(box->area.width) +
                      " by " + std::to_string(box->area.height);
    if (_player.isPlaying())
        said.state += ", playing";
    return said;
}

// ---- Drawing ----

void StageView::drawFrameOf(int frame, KXColor tint) {
    const Area& bounds = _session.animation()->animation.frames[static_cast<std::size_t>(frame)].bounds;
    if (_sheet.isEmpty() || bounds.width < 1 || bounds.height < 1) // which would mean all of the sheet
        return;
    const KXRect at = seen({0, 0, bounds.width, bounds.height});
    KXDrawOptions options;
    options.position = at.origin;
    options.tint = tint;
    options.source = {{bounds.x, bounds.y},
                      {static_cast<float>(bounds.width), static_cast<float>(bounds.height)}};
    options.scale = {zoom(), zoom()};
    _sheet.texture().draw(options);
}

void StageView::drawPicture() {
    constexpr KXColor before = {1, 0.35f, 0.35f, 0.35f}, after = {0.35f, 0.55f, 1, 0.35f};
    const int frame = frameOnShow();
    if (frame < 0)
        return;
    const Animation& animation = _session.animation()->animation;
    const int count = static_cast<int>(animation.frames.size());
    const bool wraps = animation.loops != 0;
    if (showsOnion && count > 1 && (frame > 0 || wraps))
        drawFrameOf((frame + count - 1) % count, before);
    if (showsOnion && count > 1 && (frame + 1 < count || wraps))
        drawFrameOf((frame + 1) % count, after);
    drawFrameOf(frame, {1, 1, 1, 1});
}

void StageView::drawMarks() {
    if (showsFullSize && extent().width > 0) {
        const auto [origin, size] = seen(extent());
        drawFrame({{origin.x - 1, origin.y - 1}, {size.width + 2, size.height + 2}}, 1,
                  faded(currentPalette().text, 0.6f));
    }
    const std::size_t count = showsBoxes ? _session.project().boxes.size() : 0;
    const auto chosen = static_cast<std::size_t>(_session.selection().box);
    for (std::size_t i = 0; i < count; ++i)
        if (i != chosen)
            drawBox(i);
    if (chosen < count)
        drawBox(chosen); // above the others
    if (_act != Act::Draw || !_hasMoved)
        return;
    const Area area = areaBetween(_from, _to);
    const KXRect at = seen(area);
    const KXColor color = colorOf(boxColor(_session.project().boxes.size()));
    KXDrawRectFill(at, faded(color, 0.3f));
    drawOutline(at, 1, color);
    char text[64];
    std::snprintf(text, sizeof text, "%d, %d   %d × %d", static_cast<int>(area.x), static_cast<int>(area.y),
                  area.width, area.height);
    drawTag(rect(), {at.origin.x + at.size.width + 6, at.origin.y + at.size.height + 6}, text);
}

void StageView::drawBox(std::size_t box) {
    const auto& [name, area, rgba] = _session.project().boxes[box];
    const KXRect at = seen(area);
    const KXColor color = colorOf(rgba | 0xFF);
    const bool isChosen = static_cast<int>(box) == _session.selection().box;
    KXDrawRectFill(at, faded(color, isChosen ? 0.3f : 0.18f));
    drawOutline(at, isChosen ? 2 : 1, color);
    if (isChosen && _tool == StageTool::Boxes)
        drawHandles(at, color, inkOn(color));
    drawPlate({at.origin.x, at.origin.y - lineHeight() - 1}, faded(color, 0.9f), inkOn(color), name.c_str());
}
