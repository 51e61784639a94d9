#include "SheetView.h"

#include "GridFinder.h"
#include "IslandFinder.h"

#include <Kobaltrix/KXDrawing.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <tuple>
#include <utility>

static constexpr KXColor white = {1, 1, 1, 0.85f};

static bool touch(const Area& one, const Area& other) {
    const auto along = [](float a, int length, float b, int otherLength) {
        return a < b + static_cast<float>(otherLength) && b < a + static_cast<float>(length);
    };
    return along(one.x, one.width, other.x, other.width) && along(one.y, one.height, other.y, other.height);
}

const std::vector<Frame>& SheetView::frames() const {
    static const std::vector<Frame> none;
    const NamedAnimation* const chosen = _session.animation();
    return chosen ? chosen->animation.frames : none;
}

void SheetView::setTool(SheetTool tool) {
    _tool = tool;
    _anchor.reset();
}

// ---- Mouse ----

// The middle of a pixel of the sheet.
KXPoint SheetView::clamped(KXPoint place) const {
    const auto along = [](float at, int length) {
        return std::clamp(std::floor(at), 0.0f, static_cast<float>(std::max(1, length) - 1)) + 0.5f;
    };
    return {along(place.x, _sheet.width()), along(place.y, _sheet.height())};
}

std::vector<int> SheetView::framesAt(KXPoint place) const {
    std::vector<int> found;
    for (std::size_t i = 0; i < frames().size(); ++i)
        if (isIn(frames()[i].bounds, place, 3 / zoom()))
            found.push_back(static_cast<int>(i));
    return found;
}

// Of several that lie on each other each click chooses another.
void SheetView::chooseNextAt(KXPoint place) {
    const int next = nextOf(framesAt(place), _session.selection().frame);
    if (next < 0)
        return;
    _session.chooseFrame(next);
    act();
}

void SheetView::pressed(KXPoint place, const KXUIMouse& mouse) {
    _showsCursor = _hasMoved = false;
    _anchor.reset();
    _from = _to = place;
    _act = Act::Rectangle;
    if (paints()) {
        const SheetTool tool = mouse.alt ? std::exchange(_tool, SheetTool::Pick) : _tool;
        _act = Act::Stroke;
        paint(place, place, Join::Begin);
        _tool = tool;
        if (mouse.alt)
            _act = Act::None;
    }
    if (_tool == SheetTool::Select)
        pressedFrame(place, mouse);
}

void SheetView::pressedFrame(KXPoint place, const KXUIMouse& mouse) {
    const std::vector<int> found = framesAt(place);
    if (mouse.control && !found.empty()) {
        Selection selection = _session.selection();
        if (!selection.frames.erase(found.front()))
            selection.frames.insert(selection.frame = found.front());
        else if (!selection.frames.count(selection.frame) && !selection.frames.empty())
            selection.frame = *selection.frames.begin();
        _session.choose(selection);
        _act = Act::None;
        return act();
    }
    const Frame* frame = _session.frame();
    unsigned grip = frame ? gripAt(seen(frame->bounds), mouse.point) : GripNone;
    _wasCurrent = grip != GripNone;
    if (!grip && !found.empty()) {
        chooseNextAt(place);
        frame = _session.frame();
        grip = GripAll;
    }
    if (!grip)
        return;
    _act = Act::Bounds;
    _drag = {frame->bounds, grip, place};
}

void SheetView::dragged(KXPoint place) {
    constexpr float least = 3; // points
    if (_act == Act::Stroke && _tool != SheetTool::Fill)
        paint(_to, place, Join::Continue);
    _hasMoved |= std::max(std::abs(place.x - _from.x), std::abs(place.y - _from.y)) * zoom() >= least;
    _to = place;
    if (_act != Act::Bounds || !_hasMoved)
        return;
    _session.setFrameBounds(_session.selection().frame, _drag.to(place),
                            std::exchange(_drag.hasBegun, true) ? Join::Continue : Join::Begin);
    act();
}

void SheetView::released(KXPoint place) {
    _to = place;
    const Act done = std::exchange(_act, Act::None);
    if (done == Act::Rectangle)
        cut(areasOf(_from, _to, !_hasMoved));
    else if (done == Act::Bounds && !_hasMoved && _wasCurrent)
        chooseNextAt(_from);
}

void SheetView::abandoned() {
    const Act given = std::exchange(_act, Act::None);
    if (given != Act::Stroke && (given != Act::Bounds || !_drag.hasBegun))
        return;
    _session.abandon();
    act();
}

KXCursor SheetView::cursorAt(KXPoint place) {
    if (_act == Act::Bounds)
        return cursorOf(_drag.grip);
    const Frame* const frame = _tool == SheetTool::Select ? _session.frame() : nullptr;
    const KXRect at = seen({place.x, place.y, 0, 0});
    const unsigned grip = frame && !isDragging() ? gripAt(seen(frame->bounds), at.origin) : GripNone;
    return grip ? cursorOf(grip) : _tool == SheetTool::Select ? KXCursorArrow : KXCursorCrosshair;
}

// ---- What is cut ----

// The pixels, or whole cells, from one place to another.
Area SheetView::markedArea(KXPoint from, KXPoint to) const {
    from = clamped(from), to = clamped(to);
    if (_tool != SheetTool::Cells)
        return areaBetween(from, to);
    const Grid& grid = _session.project().grid;
    const auto [columns, rows] = cellCount(grid, _sheet.width(), _sheet.height());
    if (columns == 0 || rows == 0)
        return {0, 0, 0, 0};
    const auto [x, y] = cellAt(grid, from.x, from.y);
    const auto [otherX, otherY] = cellAt(grid, to.x, to.y);
    const auto within = [](int at, int count) { return std::clamp(at, 0, count - 1); };
    const Area first = cellOf(grid, within(std::min(x, otherX), columns), within(std::min(y, otherY), rows)),
               last = cellOf(grid, within(std::max(x, otherX), columns), within(std::max(y, otherY), rows));
    return {first.x, first.y, static_cast<int>(last.x - first.x) + last.width,
            static_cast<int>(last.y - first.y) + last.height};
}

std::vector<Area> SheetView::areasOf(KXPoint from, KXPoint to, bool isClick) {
    if (_sheet.isEmpty())
        return {};
    const Area marked = markedArea(from, to);
    std::vector<Area> areas;
    switch (_tool) {
    case SheetTool::Select:
    case SheetTool::Cut:
        if (!isClick)
            areas.push_back(marked);
        break;
    case SheetTool::Cells: {
        if (marked.width == 0)
            break;
        const Grid& grid = _session.project().grid;
        areas = filledCells(_sheet.image(), grid, cellAt(grid, marked.x, marked.y),
                            cellAt(grid, marked.x + static_cast<float>(marked.width) - 1,
                                   marked.y + static_cast<float>(marked.height) - 1));
        break;
    }
    case SheetTool::Pencil:
    case SheetTool::Eraser:
    case SheetTool::Fill:
    case SheetTool::Pick:
        break;
    case SheetTool::Islands:
        if (const int at =
                isClick ? islandAt(_sheet.islands(), static_cast<int>(marked.x), static_cast<int>(marked.y))
                        : -1;
            at >= 0)
            areas.push_back(_sheet.islands()[static_cast<std::size_t>(at)]);
        for (const Area& island : _sheet.islands())
            if (!isClick && touch(island, marked))
                areas.push_back(island);
        break;
    }
    return areas;
}

void SheetView::cut(const std::vector<Area>& areas) {
    if (areas.empty())
        return;
    _session.cut(areas);
    act();
}

// What is painted along a line, or at its end.
void SheetView::paint(KXPoint from, KXPoint to, Join join) {
    if (_sheet.isEmpty())
        return;
    if (_tool == SheetTool::Pencil || _tool == SheetTool::Eraser)
        _session.paintLine(_sheet.image(), from, to, _tool == SheetTool::Pencil ? paintColor : KXPixel{},
                           join);
    else if (_tool == SheetTool::Fill)
        _session.paintFill(_sheet.image(), to, paintColor);
    else if (const KXColor picked = _sheet.image().getPixel(static_cast<int>(std::floor(to.x)),
                                                            static_cast<int>(std::floor(to.y)));
             picked.a >= 0)
        paintColor = KXPixelOf(picked);
    _sheet.show(_session.project().picture); // for what goes on from there
    act();
}

// ---- Keys ----

int SheetView::keyPressed(const KXUIKey& key) {
    if (key.control || key.command)
        return 0;
    const KXPoint way = wayOf(key.key);
    if (way.x != 0 || way.y != 0)
        return arrowPressed(key, way);
    if (key.alt)
        return 0;
    switch (key.key) {
    case KXKeyReturn:
    case KXKeyPadEnter:
        return returnPressed();
    case KXKeyEscape:
        return std::exchange(_anchor, std::nullopt) ? -1 : 0;
    case KXKeyPageUp:
    case KXKeyPageDown:
        _session.chooseFrame(_session.selection().frame + (key.key == KXKeyPageDown ? 1 : -1));
        if (_session.frame())
            reveal(_session.frame()->bounds);
        return act(), -1;
    case KXKeySpace: // which moves the sheet with the mouse
        return -1;
    default:
        return 0;
    }
}

int SheetView::arrowPressed(const KXUIKey& key, KXPoint way) {
    const bool isSelect = _tool == SheetTool::Select;
    if (key.alt && !isSelect)
        return 0;
    if (isSelect)
        nudge(key, way);
    else
        moveCursor(way, key.shift != 0);
    return -1;
}

void SheetView::nudge(const KXUIKey& key, KXPoint way) {
    if (!_session.frame())
        return;
    const Area bounds = nudged(_session.frame()->bounds, way, key.shift, key.alt);
    _session.setFrameBounds(_session.selection().frame, bounds, key.isRepeat ? Join::Continue : Join::Begin);
    reveal(bounds);
    act();
}

void SheetView::moveCursor(KXPoint way, bool isFast) {
    _showsCursor = true;
    if (_tool == SheetTool::Islands) {
        const std::vector<Area>& islands = _sheet.islands();
        if (islands.empty())
            return;
        _island = std::clamp(_island + static_cast<int>(way.x + way.y) * (isFast ? 8 : 1), 0,
                             static_cast<int>(islands.size()) - 1);
        return reveal(islands[static_cast<std::size_t>(_island)]);
    }
    const Grid& grid = _session.project().grid;
    const bool isCells = _tool == SheetTool::Cells;
    const float across = isCells ? static_cast<float>(grid.width + grid.gapX) : 1,
                down = isCells ? static_cast<float>(grid.height + grid.gapY) : 1;
    const float times = isFast ? (isCells ? 4.0f : 8.0f) : 1.0f;
    _cursor = clamped({_cursor.x + way.x * across * times, _cursor.y + way.y * down * times});
    reveal(markedArea(_cursor, _cursor));
}

int SheetView::returnPressed() {
    if (_tool == SheetTool::Select)
        return 0;
    _showsCursor = true;
    if (_tool == SheetTool::Islands) {
        if (_island >= 0 && _island < static_cast<int>(_sheet.islands().size()))
            cut({_sheet.islands()[static_cast<std::size_t>(_island)]});
    } else if (_tool == SheetTool::Fill || _tool == SheetTool::Pick) {
        paint(_cursor, _cursor, Join::No);
    } else if (_anchor && paints()) {
        paint(*std::exchange(_anchor, std::nullopt), _cursor, Join::No);
    } else if (_anchor) {
        cut(areasOf(*std::exchange(_anchor, std::nullopt), _cursor, false));
    } else {
        _anchor = _cursor;
    }
    return -1;
}

// ---- In words ----

// Where the pointer is, or the cursor of the keys.
std::optional<KXPoint> SheetView::place() const {
    const KXPoint at = _showsCursor ? _cursor : pointerPlace();
    const bool isOn = at.x >= 0 && at.y >= 0 && at.x < static_cast<float>(_sheet.width()) &&
                      at.y < static_cast<float>(_sheet.height());
    return isOn && (_showsCursor || hasPointer()) ? std::optional(at) : std::nullopt;
}

const char* SheetView::status() {
    const std::optional<KXPoint> at = place();
    const bool isCutting = (_act == Act::Rectangle && _hasMoved) || _anchor;
    if (isCutting) {
        const Area marked = markedArea(_anchor ? *_anchor : _from, _anchor ? _cursor : _to);
        std::snprintf(_status, sizeof _status, "%d, %d   %d × %d", static_cast<int>(marked.x),
                      static_cast<int>(marked.y), marked.width, marked.height);
    } else if (at) {
        const int x = static_cast<int>(at->x), y = static_cast<int>(at->y);
        const KXPixel pixel = _sheet.image().row(y)[x];
        std::snprintf(_status, sizeof _status, "%d, %d   #%02X%02X%02X%02X", x, y, pixel.r, pixel.g, pixel.b,
                      pixel.a);
    } else {
        _status[0] = '\0';
    }
    return _status;
}

KXUIDescription SheetView::description() const {
    constexpr const char* tools[] = {"select", "cut", "cells", "islands", "pencil", "eraser", "fill", "pick"};
    KXUIDescription said = {"canvas", "sheet", "", tools[static_cast<int>(_tool)]};
    said.value = std::to_string(_sheet.width()) + " by " + std::to_string(_sheet.height()) + " pixels";
    if (_tool == SheetTool::Select && _session.frame())
        said.value += ", frame " + std::to_string(_session.selection().frame + 1) + " of " +
                      std::to_string(frames().size());
    else if (_showsCursor && _tool != SheetTool::Islands)
        said.value += ", at " + std::to_string(static_cast<int>(_cursor.x)) + ", " +
                      std::to_string(static_cast<int>(_cursor.y));
    return said;
}

// ---- Drawing ----

void SheetView::drawPicture() {
    if (_sheet.isEmpty())
        return;
    const KXRect all = seen(extent());
    KXDrawOptions options;
    options.position = all.origin;
    options.size = all.size;
    _sheet.texture().draw(options);
}

void SheetView::drawMarks() {
    if (showsGrid || _tool == SheetTool::Cells)
        drawGrid();
    drawFrames();
    drawMarked();
}

// Both edges of each column and row that is in sight; where they would be all there is to be seen, none.
void SheetView::drawGrid() {
    const Grid& grid = _session.project().grid;
    const auto [columns, rows] = cellCount(grid, _sheet.width(), _sheet.height());
    constexpr float least = 6;
    if (columns == 0 || rows == 0 || static_cast<float>(std::min(grid.width, grid.height)) * zoom() < least)
        return;
    const KXRect view = rect();
    const auto [firstColumn, firstRow] = cellAt(grid, placeAt(view.origin).x, placeAt(view.origin).y);
    const KXPoint end = placeAt({view.origin.x + view.size.width, view.origin.y + view.size.height});
    const auto [lastColumn, lastRow] = cellAt(grid, end.x, end.y);
    const Area last = cellOf(grid, columns - 1, rows - 1);
    const KXRect all = seen({static_cast<float>(grid.x), static_cast<float>(grid.y),
                             static_cast<int>(last.x) - grid.x + last.width,
                             static_cast<int>(last.y) - grid.y + last.height});
    const KXColor color = faded(currentPalette().selection, 0.6f);
    for (int column = std::max(0, firstColumn); column <= std::min(lastColumn, columns - 1); ++column) {
        const KXRect cell = seen(cellOf(grid, column, 0));
        KXDrawRectFill({{cell.origin.x, all.origin.y}, {1, all.size.height}}, color);
        if (grid.gapX > 0 || column == columns - 1)
            KXDrawRectFill({{cell.origin.x + cell.size.width - 1, all.origin.y}, {1, all.size.height}},
                           color);
    }
    for (int row = std::max(0, firstRow); row <= std::min(lastRow, rows - 1); ++row) {
        const KXRect cell = seen(cellOf(grid, 0, row));
        KXDrawRectFill({{all.origin.x, cell.origin.y}, {all.size.width, 1}}, color);
        if (grid.gapY > 0 || row == rows - 1)
            KXDrawRectFill({{all.origin.x, cell.origin.y + cell.size.height - 1}, {all.size.width, 1}},
                           color);
    }
}

// From the top down, so that those in sight are found without looking at all.
void SheetView::sortFrames() {
    const int chosen = _session.selection().animation;
    const std::shared_ptr<const NamedAnimation> now =
        chosen < 0 ? nullptr : _session.project().animations[static_cast<std::size_t>(chosen)];
    if (std::exchange(_sorted, now) == now)
        return;
    _order.resize(frames().size());
    _highest = 0;
    for (std::size_t i = 0; i < _order.size(); ++i) {
        _order[i] = static_cast<int>(i);
        _highest = std::max(_highest, static_cast<float>(frames()[i].bounds.height));
    }
    std::sort(_order.begin(), _order.end(), [this](int a, int b) {
        const Area &one = frames()[static_cast<std::size_t>(a)].bounds,
                   &other = frames()[static_cast<std::size_t>(b)].bounds;
        return std::tuple(one.y, one.x, one.width, one.height, a) <
               std::tuple(other.y, other.x, other.width, other.height, b);
    });
}

void SheetView::drawFrames() {
    sortFrames();
    const KXRect view = rect();
    const float top = placeAt(view.origin).y - _highest,
                bottom = placeAt({0, view.origin.y + view.size.height}).y;
    const auto bounds = [this](int i) -> const Area& { return frames()[static_cast<std::size_t>(i)].bounds; };
    auto next =
        std::lower_bound(_order.begin(), _order.end(), top, [&](int i, float y) { return bounds(i).y < y; });
    while (next != _order.end() && bounds(*next).y <= bottom) {
        const auto first = next;
        char numbers[32] = "";
        int length = 0, shown = *first; // the chosen one of those that are the same
        for (; next != _order.end() && bounds(*next) == bounds(*first); ++next) {
            if (length < 20)
                length += std::snprintf(numbers + length, sizeof numbers - length, length ? ",%d" : "%d",
                                        *next + 1);
            const Selection& selection = _session.selection();
            if (*next == selection.frame || (selection.frames.count(*next) && shown != selection.frame))
                shown = *next;
        }
        const KXRect at = seen(bounds(*first));
        if (at.origin.x < view.origin.x + view.size.width && at.origin.x + at.size.width > view.origin.x)
            drawFrameMark(at, numbers, shown);
    }
    if (const Frame* const frame = _session.frame(); frame && _tool == SheetTool::Select)
        drawHandles(seen(frame->bounds), white, currentPalette().selection);
}

void SheetView::drawFrameMark(const KXRect& at, const char* numbers, int frame) {
    const KXUIPalette palette = currentPalette();
    const Selection& selection = _session.selection();
    const bool isCurrent = frame == selection.frame, isSelected = selection.frames.count(frame) != 0;
    const KXColor color = isSelected ? palette.focus : white;
    if (isSelected)
        KXDrawRectFill(at, faded(palette.selection, 0.18f));
    drawOutline(at, isCurrent ? 2 : 1, color);
    const float rim = isCurrent ? 2 : 1;
    if (textWidth(numbers) + 4 <= at.size.width && lineHeight() + 4 <= at.size.height)
        drawPlate({at.origin.x + rim, at.origin.y + rim},
                  isSelected ? palette.selection : KXColor{0, 0, 0, 0.7f},
                  isSelected ? palette.selectedText : KXColor{1, 1, 1, 1}, numbers);
}

// Looked for when the pointer has gone to another pixel, not in each frame.
int SheetView::islandUnder(KXPoint place) {
    const KXPoint pixel = {std::floor(place.x), std::floor(place.y)};
    const bool isSame = pixel.x == _hovered.x && pixel.y == _hovered.y && _hoveredIn == _sheet.version();
    if (!isSame)
        _hoveredIsland = islandAt(_sheet.islands(), static_cast<int>(pixel.x), static_cast<int>(pixel.y));
    _hovered = pixel;
    _hoveredIn = _sheet.version();
    return _hoveredIsland;
}

// What a click or the end of the drag would cut, with its numbers while it is drawn.
void SheetView::drawMarked() {
    const KXColor color = currentPalette().focus;
    const auto draw = [&](const Area& area, bool hasNumbers) {
        if (area.width == 0)
            return;
        const KXRect at = seen(area);
        KXDrawRectFill(at, faded(color, 0.15f));
        drawOutline(at, 1, color);
        char text[64];
        std::snprintf(text, sizeof text, "%d, %d   %d × %d", static_cast<int>(area.x),
                      static_cast<int>(area.y), area.width, area.height);
        if (hasNumbers)
            drawTag(rect(), {at.origin.x + at.size.width + 6, at.origin.y + at.size.height + 6}, text);
    };
    if (_sheet.isEmpty())
        return;
    if (_act == Act::Rectangle && _hasMoved)
        return draw(markedArea(_from, _to), true);
    if (_tool == SheetTool::Select || (!_showsCursor && !place()))
        return;
    const KXPoint at = _showsCursor ? _cursor : pointerPlace();
    if (_tool == SheetTool::Islands) {
        const int island = _showsCursor ? _island : islandUnder(at);
        if (island >= 0 && island < static_cast<int>(_sheet.islands().size()))
            draw(_sheet.islands()[static_cast<std::size_t>(island)], false);
    } else if (_showsCursor || _tool == SheetTool::Cells) {
        draw(markedArea(_anchor ? *_anchor : at, at), _anchor.has_value());
    }
}
