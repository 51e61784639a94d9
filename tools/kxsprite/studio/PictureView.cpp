#include "PictureView.h"

#include <Kobaltrix/KXCamera.h>
#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXKeyboard.h>
#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <cmath>
#include <utility>

void PictureView::zoomBy(int steps) {
    const auto [origin, size] = rect();
    _zoom.zoomAt(rect(), {origin.x + size.width / 2, origin.y + size.height / 2}, steps);
}

void PictureView::showActualSize() { _zoom.showActualSize(); }

// In steps as well as in frames, so that a recording sees the same wherever its frames lie.
void PictureView::showWholeIfAsked() {
    if (!_showsWhole || extent().width == 0 || rect().size.width < 1)
        return;
    _zoom.fit(rect(), extent());
    _showsWhole = false;
}

// What is held when the widget is disabled, or the window left, comes up without being told.
int PictureView::pollInPanel() {
    showWholeIfAsked();
    if (_drag != Drag::None && (!isEnabled() || !KXMouseHeld(_button)))
        endDrag(false);
    _hasPointer = _drag != Drag::None || mouseOver();
    showCursor();
    return std::exchange(_hasActed, false) ? -1 : 0;
}

void PictureView::showCursor() {
    const bool had = std::exchange(_hasCursor, _hasPointer);
    const KXCursor cursor = _hasPointer ? cursorAt(pointerPlace()) : KXCursorArrow;
    if ((had || _hasPointer) && std::exchange(_cursor, cursor) != cursor)
        KXSetCursor(cursor);
}

void PictureView::handleMouse(const KXUIMouse& mouse) {
    _pointer = mouse.point;
    _hasPointer = true;
    switch (mouse.type) {
    case KXInputEventMouseDown:
        return pressedButton(mouse);
    case KXInputEventMouseUp:
        if (_drag != Drag::None && mouse.button == _button)
            endDrag(false);
        return;
    case KXInputEventMouseMoved:
        if (_drag == Drag::Pan) {
            _zoom.pan(mouse.motion);
            _zoom.stayOn(extent());
        } else if (_drag == Drag::Tool) {
            dragged(placeAt(mouse.point));
        }
        return;
    case KXInputEventMouseWheel:
        return turnWheel(mouse.motion.y);
    default:
        return;
    }
}

void PictureView::pressedButton(const KXUIMouse& mouse) {
    if (_drag != Drag::None)
        return;
    const bool pans = mouse.button == KXMouseMiddle || mouse.button == KXMouseRight ||
                      (mouse.button == KXMouseLeft && (leftPans() || KXKeyHeld(KXKeySpace)));
    if (!pans && mouse.button != KXMouseLeft)
        return;
    _button = mouse.button;
    _drag = pans ? Drag::Pan : Drag::Tool;
    if (!pans)
        pressed(placeAt(mouse.point), mouse);
}

void PictureView::endDrag(bool isAbandoned) {
    if (std::exchange(_drag, Drag::None) != Drag::Tool)
        return;
    if (isAbandoned)
        abandoned();
    else
        released(pointerPlace());
}

void PictureView::turnWheel(float notches) {
    _notches = std::clamp(_notches + notches, -16.0f, 16.0f);
    const int whole = static_cast<int>(_notches);
    _notches -= static_cast<float>(whole);
    _zoom.zoomAt(rect(), _pointer, whole);
}

// As layouts have it: on some the plus is a key of its own.
bool isPlus(int key) { return key == KXKeyEquals || key == KXKeyPadPlus || key == KXKeyFromName("+"); }

KXPoint wayOf(int key) {
    return {static_cast<float>((key == KXKeyRight) - (key == KXKeyLeft)),
            static_cast<float>((key == KXKeyDown) - (key == KXKeyUp))};
}

void PictureView::pan(KXPoint way) {
    constexpr float far = 48; // points
    _zoom.pan({-way.x * far, -way.y * far});
    _zoom.stayOn(extent());
}

int PictureView::handleKey(const KXUIKey& key) {
    const KXPoint way = wayOf(key.key);
    if (key.key == KXKeyEscape && _drag != Drag::None)
        return endDrag(true), -1;
    if (key.control && !key.alt && !key.command && (way.x != 0 || way.y != 0))
        return pan(way), -1;
    if (_drag == Drag::Tool) // which is not to be mixed with other changes
        return -1;
    const int nearer = isPlus(key.key) - (key.key == KXKeyMinus || key.key == KXKeyPadMinus);
    if (nearer && !key.control && !key.alt && !key.command)
        return zoomBy(nearer), -1;
    return keyPressed(key);
}

void PictureView::draw() {
    _KXUIWidget::draw();
    const auto [origin, size] = rect();
    if (!isVisible() || size.width < 1 || size.height < 1)
        return;
    showWholeIfAsked();
    const KXUIPalette palette = currentPalette();
    KXCamera camera; // that changes nothing, but limits drawing
    camera.centre = {origin.x + size.width / 2, origin.y + size.height / 2};
    camera.area = rect();
    KXPushCamera(camera);
    drawBackground(palette);
    drawPicture();
    if (hasPixelLines() && zoom() >= 8)
        drawPixelLines();
    drawMarks();
    if (extent().width == 0)
        drawText(
            {origin.x + (size.width - textWidth(hint())) / 2, origin.y + (size.height - lineHeight()) / 2},
            palette.faintText, hint());
    drawFrame(rect(), 1, palette.border);
    KXPopCamera();
}

void PictureView::drawBackground(const KXUIPalette& palette) {
    const KXRect all = seen(extent());
    KXDrawRectFill(rect(), palette.track);
    if (ground().a > 0)
        KXDrawRectFill(common(all, rect()), ground());
    else
        _checkers.draw(all, rect());
}

void PictureView::drawPixelLines() {
    constexpr KXColor color = {0.5f, 0.5f, 0.5f, 0.25f};
    const KXRect all = seen(extent());
    const auto [origin, size] = common(all, rect());
    const auto first = [this](float from, float begin) {
        return begin + std::ceil((from - begin) / zoom()) * zoom();
    };
    for (float x = first(origin.x, all.origin.x); x < origin.x + size.width; x += zoom())
        KXDrawRectFill({{x, origin.y}, {1, size.height}}, color);
    for (float y = first(origin.y, all.origin.y); y < origin.y + size.height; y += zoom())
        KXDrawRectFill({{origin.x, y}, {size.width, 1}}, color);
}
