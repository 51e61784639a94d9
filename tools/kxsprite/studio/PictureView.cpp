#include "PictureView.h"

#include <Kobaltrix/KXCamera.h>
#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXImage.h>
#include <Kobaltrix/KXKeyboard.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIGlobalFont.h>

#include <algorithm>
#include <cmath>
#include <utility>

// ---- Colours and marks ----

KXUIPalette currentPalette() {
    const KXUITheme theme = KXUICurrentTheme();
    if (theme.usesPalette)
        return theme.palette;
    const KXUIColors colors = KXCurrentUIColors();
    KXUIPalette palette;
    palette.panel = palette.button = palette.buttonHovered = palette.field = palette.menu = palette.header =
        colors.background;
    palette.buttonPressed = palette.track = colors.interaction;
    palette.border = colors.border;
    palette.text = palette.faintText = palette.selectedText = colors.text;
    palette.selection = colors.selection;
    palette.focus = colors.focus;
    return palette;
}

KXColor faded(KXColor color, float opacity) { return {color.r, color.g, color.b, color.a * opacity}; }

KXColor colorOf(std::uint32_t rgba) {
    const auto channel = [rgba](int shift) { return static_cast<float>(rgba >> shift & 0xFF) / 255; };
    return {channel(24), channel(16), channel(8), channel(0)};
}

// Texts are formats with colour spans there.
void drawText(KXPoint place, KXColor color, const char* text) {
    char plain[256];
    std::size_t length = 0;
    for (; *text && length + 2 < sizeof plain; ++text) {
        plain[length++] = *text == '{' ? '(' : *text;
        if (*text == '%')
            plain[length++] = '%';
    }
    plain[length] = '\0';
    KXUIGlobalFontPrint({std::round(place.x), std::round(place.y)}, color, plain);
}

void drawTag(const KXRect& within, KXPoint place, const char* text) {
    constexpr float rim = 3;
    const KXUIPalette palette = currentPalette();
    const KXSize size = {KXUIGlobalFontStringBounds(text).width + 2 * rim + 2,
                         static_cast<float>(KXUIGlobalFontLineHeight()) + 2};
    const auto kept = [](float at, float length, float from, float room) {
        return std::round(std::max(from, std::min(at, from + room - length)));
    };
    const KXRect plate = {{kept(place.x, size.width, within.origin.x, within.size.width),
                           kept(place.y, size.height, within.origin.y, within.size.height)},
                          size};
    KXDrawRectFill(plate, faded(palette.menu, 0.9f));
    drawFrame(plate, 1, palette.border);
    drawText({plate.origin.x + rim + 1, plate.origin.y + 1}, palette.text, text);
}

void drawFrame(const KXRect& rect, float width, KXColor color) {
    const auto [origin, size] = rect;
    const float across = std::min(width, size.width), down = std::min(width, size.height);
    const float inner = std::max(0.0f, size.height - 2 * down);
    KXDrawRectFill({origin, {size.width, down}}, color);
    KXDrawRectFill({{origin.x, origin.y + size.height - down}, {size.width, down}}, color);
    KXDrawRectFill({{origin.x, origin.y + down}, {across, inner}}, color);
    KXDrawRectFill({{origin.x + size.width - across, origin.y + down}, {across, inner}}, color);
}

void drawOutline(const KXRect& rect, float width, KXColor color) {
    const auto [origin, size] = rect;
    drawFrame({{origin.x - 1, origin.y - 1}, {size.width + 2, size.height + 2}}, 1, {0, 0, 0, 0.55f});
    drawFrame(rect, width, color);
}

// ---- The view ----

PictureView::PictureView() = default;
PictureView::~PictureView() = default;

void PictureView::zoomBy(int steps) {
    const auto [origin, size] = rect();
    _zoom.zoomAt(rect(), {origin.x + size.width / 2, origin.y + size.height / 2}, steps);
}

void PictureView::showActualSize() { _zoom.showActualSize(); }

// What is held when the widget is disabled, or the window left, comes up without being told.
int PictureView::pollInPanel() {
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
                      (mouse.button == KXMouseLeft && KXKeyHeld(KXKeySpace));
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

bool isPlus(int key) {
    return key == KXKeyEquals || key == KXKeyPadPlus || key == KXKeyFromName("+"); // as layouts have it
}

KXPoint wayOf(int key) {
    return {static_cast<float>((key == KXKeyRight) - (key == KXKeyLeft)),
            static_cast<float>((key == KXKeyDown) - (key == KXKeyUp))};
}

int PictureView::handleKey(const KXUIKey& key) {
    constexpr float far = 48;
    const KXPoint way = wayOf(key.key);
    if (key.key == KXKeyEscape && _drag != Drag::None)
        return endDrag(true), -1;
    if (key.control && !key.alt && !key.command && (way.x != 0 || way.y != 0)) {
        _zoom.pan({-way.x * far, -way.y * far});
        _zoom.stayOn(extent());
        return -1;
    }
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
    if (_showsWhole && extent().width > 0) {
        _zoom.fit(rect(), extent());
        _showsWhole = false;
    }
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
    drawFrame(rect(), 1, palette.border);
    KXPopCamera();
}

// Squares of so many points, whatever the zoom, beginning with the picture's corner.
void PictureView::drawBackground(const KXUIPalette& palette) {
    constexpr int square = 8;
    KXDrawRectFill(rect(), palette.track);
    const KXRect all = seen(extent());
    if (background().a > 0)
        return KXDrawRectFill(all, background());
    if (!_checkers) {
        KXImage image(2 * square, 2 * square, {0.75f, 0.75f, 0.75f, 1});
        image.fill({{0, 0}, {square, square}}, {1, 1, 1, 1});
        image.fill({{square, square}, {square, square}}, {1, 1, 1, 1});
        _checkers = std::make_unique<KXTexture>(image);
        _checkers->setWrap(KXWrapRepeat);
    }
    const float light = 0.3f * palette.field.r + 0.6f * palette.field.g + 0.1f * palette.field.b;
    const float tint = light > 0.5f ? 1 : 0.42f;
    const float left = std::max(all.origin.x, rect().origin.x), top = std::max(all.origin.y, rect().origin.y),
                right = std::min(all.origin.x + all.size.width, rect().origin.x + rect().size.width),
                bottom = std::min(all.origin.y + all.size.height, rect().origin.y + rect().size.height);
    if (right <= left || bottom <= top)
        return;
    KXDrawOptions options;
    options.position = {left, top};
    options.source = {
        {std::fmod(left - all.origin.x, 2.0f * square), std::fmod(top - all.origin.y, 2.0f * square)},
        {right - left, bottom - top}};
    options.tint = {tint, tint, tint, 1};
    _checkers->draw(options);
}

void PictureView::drawPixelLines() {
    constexpr KXColor color = {0.5f, 0.5f, 0.5f, 0.25f};
    const KXRect all = seen(extent());
    const float left = std::max(all.origin.x, rect().origin.x), top = std::max(all.origin.y, rect().origin.y),
                right = std::min(all.origin.x + all.size.width, rect().origin.x + rect().size.width),
                bottom = std::min(all.origin.y + all.size.height, rect().origin.y + rect().size.height);
    const auto first = [this](float from, float begin) {
        return begin + std::ceil((from - begin) / zoom()) * zoom();
    };
    for (float x = first(left, all.origin.x); x < right; x += zoom())
        KXDrawRectFill({{x, top}, {1, bottom - top}}, color);
    for (float y = first(top, all.origin.y); y < bottom; y += zoom())
        KXDrawRectFill({{left, y}, {right - left, 1}}, color);
}
