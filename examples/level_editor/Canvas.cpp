#include "Canvas.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

KXCamera Canvas::camera() const {
    KXCamera camera;
    camera.centre = _centre;
    camera.zoom = _zoom;
    camera.area = rect();
    return camera;
}

// What is under a point stays there.
void Canvas::zoomAt(KXPoint point, float factor) {
    const KXPoint before = KXCameraToWorld(camera(), point);
    _zoom = std::clamp(_zoom * factor, 0.25f, 8.0f);
    const KXPoint after = KXCameraToWorld(camera(), point);
    _centre = {_centre.x + before.x - after.x, _centre.y + before.y - after.y};
}

void Canvas::showWhole() {
    const Level& level = _history.level;
    const float width = level.columns * tileSide, height = level.rows * tileSide;
    _centre = {width / 2, height / 2};
    _zoom = std::clamp(std::min(rect().size.width / width, rect().size.height / height) * 0.95f, 0.25f, 8.0f);
}

// The brush at the cell.
void Canvas::use() {
    Level& level = _history.level;
    if (!level.has(_column, _row) || layer >= static_cast<int>(level.layers.size()))
        return;
    int& cell = level.at(layer, _column, _row);
    const int wanted = tool == Tool::Erase ? -1 : tile;
    if (tool == Tool::Pick)
        tile = cell >= 0 ? cell : tile;
    else if (tool == Tool::Fill)
        level.fill(layer, _column, _row, wanted);
    else
        cell = wanted;
    _acted = true;
}

// Along a line, so that a quick hand leaves no gaps.
void Canvas::goTo(int column, int row) {
    const int fromColumn = _column, fromRow = _row;
    const int steps = std::max(std::abs(column - _column), std::abs(row - _row));
    for (int i = 1; i <= steps; ++i) {
        _column =
            fromColumn + static_cast<int>(std::lround(static_cast<float>((column - fromColumn) * i) / steps));
        _row = fromRow + static_cast<int>(std::lround(static_cast<float>((row - fromRow) * i) / steps));
        if (_isPainting)
            use();
    }
}

int Canvas::pollInPanel() {
    clicked(KXMouseLeft);
    const bool over = mouseOver();
    if (over && KXMouseWheel().y != 0)
        zoomAt(KXMousePoint, std::pow(1.25f, KXMouseWheel().y));
    if (over && (KXMouseHeld(KXMouseMiddle) || KXMouseHeld(KXMouseRight)))
        _centre = {_centre.x - KXMouseMotion().x / _zoom, _centre.y - KXMouseMotion().y / _zoom};
    const bool isPressed = mouseDownInside(KXMouseLeft), begins = isPressed && !_isPainting;
    if (over && (begins || KXMouseMotion().x != 0 || KXMouseMotion().y != 0)) {
        const KXPoint place = KXCameraToWorld(camera(), KXMousePoint);
        if (begins && tool != Tool::Pick)
            _history.note(); // a stroke is one change
        goTo(static_cast<int>(std::floor(place.x / tileSide)),
             static_cast<int>(std::floor(place.y / tileSide)));
        if (begins)
            use();
    }
    _isPainting = isPressed;
    const bool acted = _acted;
    _acted = false;
    return acted ? -1 : 0;
}

int Canvas::handleKey(const KXUIKey& key) {
    if (key.control || key.alt || key.command)
        return 0;
    const int across = (key.key == KXKeyRight) - (key.key == KXKeyLeft),
              down = (key.key == KXKeyDown) - (key.key == KXKeyUp);
    if (across || down) {
        const Level& level = _history.level;
        goTo(std::clamp(_column + across, 0, level.columns - 1), std::clamp(_row + down, 0, level.rows - 1));
        return -1;
    }
    if (key.key != KXKeySpace && key.key != KXKeyReturn)
        return 0;
    if (tool != Tool::Pick)
        _history.note();
    use();
    return -1;
}

KXUIDescription Canvas::description() const {
    return {"canvas", "level", KXTempString("column %d, row %d", _column + 1, _row + 1), ""};
}

void Canvas::drawLayers(const Level& level, KXRect bounds) {
    const int left = std::max(0, static_cast<int>(bounds.origin.x) / tileSide),
              top = std::max(0, static_cast<int>(bounds.origin.y) / tileSide),
              right = std::min(level.columns,
                               static_cast<int>(bounds.origin.x + bounds.size.width) / tileSide + 1),
              bottom =
                  std::min(level.rows, static_cast<int>(bounds.origin.y + bounds.size.height) / tileSide + 1);
    for (const Layer& each : level.layers)
        for (int row = top; row < bottom && each.isVisible; ++row)
            for (int column = left; column < right; ++column)
                if (const int number = each.tiles[row * level.columns + column]; number >= 0) {
                    KXDrawOptions options;
                    options.position = {float(column * tileSide), float(row * tileSide)};
                    options.source = {
                        {float(number % tilesInRow * tileSide), float(number / tilesInRow * tileSide)},
                        {tileSide, tileSide}};
                    _tiles.draw(options);
                }
}

void Canvas::draw() {
    const Level& level = _history.level;
    KXDrawRectFill(rect(), KXMakeColori(20, 20, 40, 255));
    KXPushCamera(camera());
    const KXRect all = {{0, 0}, {float(level.columns * tileSide), float(level.rows * tileSide)}};
    KXDrawRectFill(all, KXMakeColori(43, 43, 86, 255));
    drawLayers(level, KXCameraBounds(camera()));
    const KXColor faint = {1, 1, 1, 0.12f};
    for (int column = 0; showsGrid && column <= level.columns; ++column)
        KXDrawLine({float(column * tileSide), 0}, {float(column * tileSide), all.size.height}, faint);
    for (int row = 0; showsGrid && row <= level.rows; ++row)
        KXDrawLine({0, float(row * tileSide)}, {all.size.width, float(row * tileSide)}, faint);
    if (level.has(_column, _row))
        KXDrawRect({{float(_column * tileSide), float(_row * tileSide)}, {tileSide, tileSide}},
                   {1, 0.85f, 0.5f, 1});
    KXPopCamera();
}
