#include "FrameStrip.h"

#include "Handles.h"
#include "PictureView.h"

#include <Kobaltrix/KXCamera.h>
#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <utility>

static constexpr float rim = 5;        // points around a picture
static constexpr float barHeight = 10; // of the scroll bar

// ---- Where things are ----

int FrameStrip::count() const {
    return _session.animation() ? static_cast<int>(_session.animation()->animation.frames.size()) : 0;
}

const Frame& FrameStrip::frame(int i) const {
    return _session.animation()->animation.frames[static_cast<std::size_t>(i)];
}

// As wide as a picture is high, and as durations need.
float FrameStrip::itemWidth() const {
    const float side = rect().size.height - barHeight - lineHeight() - rim;
    return std::round(std::max(72.0f, side + 2 * rim));
}

KXRect FrameStrip::item(int i) const {
    const auto [origin, size] = rect();
    return {{origin.x + itemWidth() * static_cast<float>(i) - _offset, origin.y},
            {itemWidth(), std::max(0.0f, size.height - barHeight)}};
}

KXRect FrameStrip::bar() const {
    const auto [origin, size] = rect();
    return {{origin.x, origin.y + size.height - barHeight}, {size.width, barHeight}};
}

// As much of the bar as is seen of the frames; all of it where there is nothing to scroll.
KXRect FrameStrip::knob() const {
    constexpr float least = 24;
    const auto [origin, size] = bar();
    const float room = size.width, all = std::max(contentWidth(), room);
    const float width = std::min(room, std::max(least, room * room / all));
    const float share = all > room ? _offset / (all - room) : 0;
    return {{std::round(origin.x + share * (room - width)), origin.y}, {width, size.height}};
}

// -1 for none.
int FrameStrip::itemAt(float x) const {
    const float at = std::floor((x - rect().origin.x + _offset) / itemWidth());
    return at >= 0 && at < static_cast<float>(count()) ? static_cast<int>(at) : -1;
}

// Before which frame something is dropped at a place.
int FrameStrip::gapAt(float x) const {
    const float at = std::round((x - rect().origin.x + _offset) / itemWidth());
    return static_cast<int>(std::clamp(at, 0.0f, static_cast<float>(count())));
}

// Of the frame at a point, the right one.
bool FrameStrip::isAtEdge(KXPoint point) const {
    constexpr float reach = 6;
    const int i = itemAt(point.x);
    return i >= 0 && point.y < bar().origin.y && item(i).origin.x + itemWidth() - point.x < reach;
}

void FrameStrip::scrollTo(float offset) {
    _offset = std::round(std::clamp(offset, 0.0f, std::max(0.0f, contentWidth() - rect().size.width)));
}

void FrameStrip::reveal(int i) {
    const float begin = itemWidth() * static_cast<float>(i), room = rect().size.width;
    scrollTo(std::max(std::min(_offset, begin), begin + itemWidth() - room));
}

int FrameStrip::shown() const { return _player.isPlaying() ? _player.frame() : _session.selection().frame; }

// Keeps up with the frame on show, but lets the user scroll away from it.
void FrameStrip::follow() {
    const int chosen = _session.selection().animation;
    std::shared_ptr<const NamedAnimation> now =
        chosen < 0 ? nullptr : _session.project().animations[static_cast<std::size_t>(chosen)];
    const bool isSame = std::exchange(_followedIn, std::move(now)) == _followedIn;
    if ((std::exchange(_followed, shown()) != _followed || !isSame) && _act == Act::None && count() > 0)
        reveal(shown());
    scrollTo(_offset);
}

// ---- Mouse ----

// What is held when the widget is disabled, or the window left, comes up without being told.
int FrameStrip::pollInPanel() {
    constexpr float pace = 12; // points in a step
    if (_act != Act::None && (!isEnabled() || !KXMouseHeld(KXMouseLeft)))
        endDrag(false);
    if (_act == Act::Move) {
        const auto [origin, size] = rect();
        scrollTo(_offset + (_pointer.x < origin.x + rim                ? -pace
                            : _pointer.x > origin.x + size.width - rim ? pace
                                                                       : 0));
    }
    follow();
    showCursor();
    return std::exchange(_hasActed, false) ? -1 : 0;
}

void FrameStrip::showCursor() {
    const bool had = _hasCursor;
    _hasCursor = _act != Act::None || mouseOver();
    const bool isWidth = _act == Act::Duration || (_act == Act::None && mouseOver() && isAtEdge(_pointer));
    const KXCursor cursor = isWidth ? KXCursorWidth : _act == Act::Move ? KXCursorMove : KXCursorArrow;
    if ((had || _hasCursor) && std::exchange(_cursor, cursor) != cursor)
        KXSetCursor(cursor);
}

void FrameStrip::handleMouse(const KXUIMouse& mouse) {
    _pointer = mouse.point;
    if (mouse.type == KXInputEventMouseDown && mouse.button == KXMouseLeft)
        pressed(mouse);
    else if (mouse.type == KXInputEventMouseUp && mouse.button == KXMouseLeft)
        endDrag(false);
    else if (mouse.type == KXInputEventMouseMoved && _act != Act::None)
        dragged(mouse.point);
    else if (mouse.type == KXInputEventMouseWheel)
        turnWheel(mouse);
}

void FrameStrip::pressed(const KXUIMouse& mouse) {
    _from = mouse.point;
    _hasBegun = false;
    _offsetBefore = _offset;
    const KXRect held = knob();
    if (mouse.point.y < held.origin.y) {
        if (const int i = itemAt(mouse.point.x); i >= 0)
            pressedItem(i, mouse);
    } else if (mouse.point.x < held.origin.x) {
        scrollTo(_offset - rect().size.width);
    } else if (mouse.point.x >= held.origin.x + held.size.width) {
        scrollTo(_offset + rect().size.width);
    } else {
        _act = Act::Scroll;
    }
}

// One of several that are chosen is chosen alone only when it turns out that they are not dragged.
void FrameStrip::pressedItem(int i, const KXUIMouse& mouse) {
    const bool isChosen = _session.selection().frames.count(i) != 0;
    _pressed = i;
    if (mouse.control)
        return toggle(i);
    if (mouse.shift)
        return choose(i, true);
    if (!isChosen)
        choose(i, false);
    _act = isAtEdge(mouse.point) ? Act::Duration : Act::Click;
    _before = frame(i).duration;
}

void FrameStrip::dragged(KXPoint point) {
    constexpr float least = 4, forStep = 8; // points: of a drag, and for a step of the duration
    const float way = point.x - _from.x;
    if (_act == Act::Scroll) {
        const float room = rect().size.width - knob().size.width;
        if (room > 0)
            scrollTo(_offsetBefore + way * (contentWidth() - rect().size.width) / room);
    } else if (_act == Act::Duration && _pressed < count()) { // an undo may have taken it away
        const int duration = std::max(1, _before + static_cast<int>(std::lround(way / forStep)));
        if (duration != frame(_pressed).duration)
            setDuration(duration, std::exchange(_hasBegun, true) ? Join::Continue : Join::Begin);
    } else if (_act == Act::Click && std::abs(way) >= least) {
        _act = Act::Move;
    }
}

void FrameStrip::endDrag(bool isAbandoned) {
    const Act done = std::exchange(_act, Act::None);
    if (done == Act::Duration && _hasBegun && isAbandoned) {
        _session.abandon();
        _hasActed = true;
    } else if (done == Act::Scroll && isAbandoned) {
        scrollTo(_offsetBefore);
    } else if (done == Act::Move && !isAbandoned) {
        _session.moveFrames(gapAt(_pointer.x));
        _hasActed = true;
    } else if (done == Act::Click) {
        choose(_pressed, false);
    }
}

// Notches over one frame are one step of undo.
void FrameStrip::turnWheel(const KXUIMouse& mouse) {
    if (!mouse.control)
        return scrollTo(_offset - (mouse.motion.y - mouse.motion.x) * itemWidth());
    const int i = itemAt(mouse.point.x);
    _notches = std::clamp(_notches + mouse.motion.y, -1000.0f, 1000.0f);
    const int whole = static_cast<int>(_notches);
    _notches -= static_cast<float>(whole);
    if (i < 0 || whole == 0)
        return;
    if (!_session.selection().frames.count(i))
        choose(i, false);
    const bool goesOn = std::exchange(_turned, i) == i && _turnedVersion == _session.version();
    setDuration(std::max(1, frame(i).duration + whole), goesOn ? Join::Continue : Join::Begin);
    _turnedVersion = _session.version();
}

// ---- What is chosen and changed ----

void FrameStrip::choose(int i, bool extends) {
    Selection selection = _session.selection();
    i = std::clamp(i, 0, std::max(0, count() - 1));
    selection.frame = i;
    selection.frames.clear();
    if (!extends)
        _anchor = i;
    _anchor = std::clamp(_anchor, 0, std::max(0, count() - 1));
    for (int k = std::min(i, _anchor); k <= std::max(i, _anchor); ++k)
        selection.frames.insert(selection.frames.end(), k);
    _session.choose(std::move(selection));
    _hasActed = true;
}

void FrameStrip::toggle(int i) {
    Selection selection = _session.selection();
    _anchor = i;
    if (selection.frames.erase(i) == 0)
        selection.frames.insert(i), selection.frame = i;
    else if (selection.frame == i && !selection.frames.empty())
        selection.frame = *selection.frames.begin();
    _session.choose(std::move(selection));
    _hasActed = true;
}

void FrameStrip::setDuration(int duration, Join join) {
    _session.setDurations(_session.selection().frames, duration, join);
    _hasActed = true;
}

// ---- Keys ----

int FrameStrip::handleKey(const KXUIKey& key) {
    if (key.key == KXKeyEscape && _act != Act::None)
        return endDrag(true), -1;
    if (_act != Act::None) // not to be mixed with other changes
        return -1;
    const int page = std::max(1, static_cast<int>(rect().size.width / itemWidth()));
    const int by = (key.key == KXKeyRight) - (key.key == KXKeyLeft) + page * (key.key == KXKeyPageDown) -
                   page * (key.key == KXKeyPageUp);
    if (count() == 0 || key.command)
        return 0;
    if (by)
        return arrowPressed(key, by);
    if (key.control || key.alt)
        return 0;
    if (key.key == KXKeyHome || key.key == KXKeyEnd)
        return choose(key.key == KXKeyHome ? 0 : count() - 1, key.shift), -1;
    const int longer = isPlus(key.key) - (key.key == KXKeyMinus || key.key == KXKeyPadMinus);
    if (longer == 0)
        return 0;
    setDuration(std::max(1, _session.frame()->duration + longer),
                key.isRepeat ? Join::Continue : Join::Begin);
    return -1;
}

int FrameStrip::arrowPressed(const KXUIKey& key, int by) {
    if (key.control)
        return 0;
    if (key.alt) {
        _session.shiftFrames(by);
        _anchor = _session.selection().frame;
        _hasActed = true;
    } else {
        choose(_session.selection().frame + by, key.shift);
    }
    return -1;
}

KXUIDescription FrameStrip::description() const {
    KXUIDescription said = {"list", "frames", "no frame", ""};
    if (count() == 0)
        return said;
    const Selection& selection = _session.selection();
    said.value = "frame " + std::to_string(selection.frame + 1) + " of " + std::to_string(count()) + ", " +
                 std::to_string(std::max(1, frame(selection.frame).duration) * _stepMilliseconds) + " ms";
    if (selection.frames.size() > 1)
        said.state = std::to_string(selection.frames.size()) + " selected";
    return said;
}

// ---- Drawing ----

void FrameStrip::draw() {
    _KXUIWidget::draw();
    const auto [origin, size] = rect();
    if (!isVisible() || size.width < 1 || size.height < barHeight + 1)
        return;
    const KXUIPalette palette = currentPalette();
    KXCamera camera; // that changes nothing, but limits drawing
    camera.centre = {origin.x + size.width / 2, origin.y + size.height / 2};
    camera.area = rect();
    KXPushCamera(camera);
    KXDrawRectFill(rect(), palette.track);
    const int first = std::max(0, static_cast<int>(_offset / itemWidth())),
              end = std::min(count(), static_cast<int>((_offset + size.width) / itemWidth()) + 1);
    for (int i = first; i < end; ++i)
        drawItem(i, palette);
    if (count() == 0)
        drawText({origin.x + 10, origin.y + 10}, palette.faintText, "No frames yet: cut some on the sheet.");
    if (_act == Act::Move) {
        const float x = item(gapAt(_pointer.x)).origin.x;
        KXDrawRectFill(
            {{std::clamp(x - 2, origin.x, origin.x + size.width - 4), origin.y}, {4, item(0).size.height}},
            palette.focus);
    }
    drawBar(palette);
    drawFrame(rect(), 1, palette.border);
    KXPopCamera();
}

void FrameStrip::drawItem(int i, const KXUIPalette& palette) {
    const Selection& selection = _session.selection();
    const bool isSelected = selection.frames.count(i) != 0, isCurrent = i == selection.frame;
    const auto [origin, size] = item(i);
    const KXRect plate = {{origin.x + 1, origin.y + 1}, {size.width - 2, size.height - 2}};
    KXDrawRectFill(plate, isSelected ? palette.selection : palette.panel);
    if (isCurrent)
        drawFrame(plate, 2, isSelected ? palette.selectedText : palette.focus);
    const KXRect room = {{origin.x + rim, origin.y + rim},
                         {size.width - 2 * rim, size.height - rim - lineHeight()}};
    drawPicture(frame(i).bounds, room);
    char text[48];
    std::snprintf(text, sizeof text, "%d", i + 1);
    drawPlate(room.origin, {0, 0, 0, 0.7f}, {1, 1, 1, 1}, text);
    const int duration = frame(i).duration;
    std::snprintf(text, sizeof text, "%d · %lld ms", duration,
                  std::max(1, duration) * 1LL * _stepMilliseconds);
    drawText({origin.x + (size.width - textWidth(text)) / 2, origin.y + size.height - lineHeight()},
             isSelected ? palette.selectedText : palette.text, text);
    if (_player.isPlaying() && _player.frame() == i)
        KXDrawRectFill({origin, {size.width, 4}}, palette.focus);
}

// As large as there is room for; in whole steps where it is enlarged.
void FrameStrip::drawPicture(const Area& bounds, const KXRect& room) {
    if (bounds.width < 1 || bounds.height < 1 || room.size.width < 1 || room.size.height < 1)
        return;
    const float width = static_cast<float>(bounds.width), height = static_cast<float>(bounds.height);
    float scale = std::min(room.size.width / width, room.size.height / height);
    if (scale > 1)
        scale = std::floor(scale);
    KXDrawOptions options;
    options.position = {std::round(room.origin.x + (room.size.width - width * scale) / 2),
                        std::round(room.origin.y + (room.size.height - height * scale) / 2)};
    options.source = {{bounds.x, bounds.y}, {width, height}};
    options.scale = {scale, scale};
    const KXRect all = {options.position, {std::ceil(width * scale), std::ceil(height * scale)}};
    _checkers.draw(all, all);
    if (!_sheet.isEmpty())
        _sheet.texture().draw(options);
}

void FrameStrip::drawBar(const KXUIPalette& palette) {
    if (contentWidth() <= rect().size.width)
        return;
    KXDrawRectFill(bar(), palette.field);
    const auto [origin, size] = knob();
    const KXRect held = {{origin.x + 1, origin.y + 2}, {size.width - 2, size.height - 4}};
    KXDrawRectFill(held, _act == Act::Scroll ? palette.buttonPressed : palette.button);
    drawFrame(held, 1, palette.border);
}
