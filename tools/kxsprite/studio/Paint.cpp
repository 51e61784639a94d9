#include "Paint.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXImage.h>
#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIGlobalFont.h>

#include <algorithm>
#include <cmath>

static float lightOf(KXColor color) { return 0.3f * color.r + 0.6f * color.g + 0.1f * color.b; }

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

KXColor inkOn(KXColor color) { return lightOf(color) > 0.5f ? KXColor{0, 0, 0, 1} : KXColor{1, 1, 1, 1}; }

static constexpr float textRim = 4; // points around capitals, which descenders need below them

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
    KXUIGlobalFontPrint({std::round(place.x) + textRim, std::round(place.y) + textRim}, color, plain);
}

float lineHeight() { return std::ceil(KXUIGlobalFontStringBounds("0").height) + 2 * textRim; }
float textWidth(const char* text) { return KXUIGlobalFontStringBounds(text).width + 2 * textRim; }

void drawPlate(KXPoint place, KXColor plate, KXColor color, const char* text) {
    const KXPoint corner = {std::round(place.x), std::round(place.y)};
    KXDrawRectFill({corner, {textWidth(text), lineHeight()}}, plate);
    drawText(corner, color, text);
}

void drawTag(const KXRect& within, KXPoint place, const char* text) {
    const KXUIPalette palette = currentPalette();
    const KXSize size = {textWidth(text), lineHeight()};
    const auto kept = [](float at, float length, float from, float room) {
        return std::round(std::max(from, std::min(at, from + room - length)));
    };
    const KXPoint corner = {kept(place.x, size.width, within.origin.x, within.size.width),
                            kept(place.y, size.height, within.origin.y, within.size.height)};
    drawPlate(corner, faded(palette.menu, 0.9f), palette.text, text);
    drawFrame({corner, size}, 1, palette.border);
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

KXRect common(const KXRect& one, const KXRect& other) {
    const float left = std::max(one.origin.x, other.origin.x), top = std::max(one.origin.y, other.origin.y),
                right = std::min(one.origin.x + one.size.width, other.origin.x + other.size.width),
                bottom = std::min(one.origin.y + one.size.height, other.origin.y + other.size.height);
    return {{left, top}, {std::max(0.0f, right - left), std::max(0.0f, bottom - top)}};
}

Checkers::Checkers() = default;
Checkers::~Checkers() = default;

void Checkers::draw(const KXRect& all, const KXRect& within) {
    constexpr int square = 8; // points, whatever the zoom
    const KXRect part = common(all, within);
    if (part.size.width <= 0 || part.size.height <= 0)
        return;
    if (!_texture) {
        KXImage image(2 * square, 2 * square, {0.75f, 0.75f, 0.75f, 1});
        for (const float corner : {0.0f, static_cast<float>(square)})
            image.fill({{corner, corner}, {square, square}}, {1, 1, 1, 1});
        _texture = std::make_unique<KXTexture>(image);
        _texture->setWrap(KXWrapRepeat);
    }
    const auto begin = [](float at, float from) { return std::fmod(at - from, 2.0f * square); };
    const float tint = lightOf(currentPalette().field) > 0.5f ? 1 : 0.42f;
    KXDrawOptions options;
    options.position = part.origin;
    options.source = {{begin(part.origin.x, all.origin.x), begin(part.origin.y, all.origin.y)}, part.size};
    options.tint = {tint, tint, tint, 1};
    _texture->draw(options);
}
