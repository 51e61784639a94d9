#include "ui/Look.h"

#include "ui/Theme.h"
#include "ui/WholePixels.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXTexture.h>

#include <algorithm>
#include <array>
#include <climits>

static const KXUISkin* skinOf(KXUIPart part, unsigned states) {
    const KXUIPartSkins& skins = _KXTheme.skins[part];
    const bool isPressed = states & (KXUIPartPressed | KXUIPartOn);
    for (const KXUISkin* skin : {isPressed ? &skins.pressed : nullptr,
                                 states & KXUIPartHovered ? &skins.hovered : nullptr, &skins.normal})
        if (skin && skin->texture)
            return skin;
    return nullptr;
}

// Nine pieces: corners are no larger than half the box, and edges lie on whole pixels.
static void drawSkin(const KXUISkin& skin, KXRect box) {
    KXSize whole = skin.source.size;
    const KXSize texture = skin.texture->size();
    if (whole.width < 0)
        whole.width = texture.width - skin.source.origin.x;
    if (whole.height < 0)
        whole.height = texture.height - skin.source.origin.y;
    const float corner = std::clamp(skin.corner, 0.0f, std::min(whole.width, whole.height) / 2);
    const float drawn = static_cast<float>(
        _KXWholePixel(std::min({corner * skin.scale, box.size.width / 2, box.size.height / 2})));
    const auto cuts = [](float start, float length, float edge) {
        return std::array<float, 4>{start, start + edge, start + length - edge, start + length};
    };
    const auto fromX = cuts(skin.source.origin.x, whole.width, corner),
               fromY = cuts(skin.source.origin.y, whole.height, corner),
               toX = cuts(box.origin.x, box.size.width, drawn),
               toY = cuts(box.origin.y, box.size.height, drawn);
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column) {
            KXDrawOptions piece;
            piece.position = {toX[column], toY[row]};
            piece.size = {toX[column + 1] - toX[column], toY[row + 1] - toY[row]};
            piece.source = {{fromX[column], fromY[row]},
                            {fromX[column + 1] - fromX[column], fromY[row + 1] - fromY[row]}};
            piece.tint = _KXWidgetColor({1, 1, 1, 1});
            if (piece.size.width > 0 && piece.size.height > 0)
                skin.texture->draw(piece);
        }
}

static KXColor paletteFill(KXUIPart part, unsigned states) {
    const KXUIPalette& palette = _KXTheme.palette;
    switch (part) {
    case KXUIPartButton:
    case KXUIPartKnob:
        return states & (KXUIPartPressed | KXUIPartOn) ? palette.buttonPressed
               : states & KXUIPartHovered              ? palette.buttonHovered
                                                       : palette.button;
    case KXUIPartField:
        return palette.field;
    case KXUIPartMenu:
        return palette.menu;
    case KXUIPartHeader:
        return states & (KXUIPartPressed | KXUIPartOn) ? palette.selection
               : states & KXUIPartHovered              ? palette.buttonHovered
                                                       : palette.header;
    case KXUIPartTrack:
        return palette.track;
    case KXUIPartSelection:
        return palette.selection;
    default:
        return palette.panel;
    }
}

static KXColor ownFill(KXUIPart part, unsigned states, const KXUIColors& own) {
    if (part == KXUIPartSelection)
        return own.selection;
    return part == KXUIPartTrack || states & (KXUIPartPressed | KXUIPartOn) ? own.interaction
                                                                            : own.background;
}

_KXPartColors _KXColorsOf(KXUIPart part, unsigned states, const KXUIColors& own) {
    const bool rings = part == KXUIPartField && states & KXUIPartFocused;
    if (!_KXTheme.usesPalette)
        return {_KXWidgetColor(ownFill(part, states, own)), _KXWidgetColor(rings ? own.focus : own.border)};
    const KXUIPalette& palette = _KXTheme.palette;
    return {_KXWidgetColor(paletteFill(part, states)),
            _KXWidgetColor(rings ? palette.focus : palette.border)};
}

void _KXDrawPart(KXUIPart part, KXRect box, unsigned states, const KXUIColors& own) {
    if (const KXUISkin* const skin = skinOf(part, states))
        return drawSkin(*skin, box);
    const _KXPartColors colors = _KXColorsOf(part, states, own);
    KXDrawRectFill(box, colors.fill);
    if (part != KXUIPartSelection)
        KXDrawRect(box, colors.border);
}

KXColor _KXPartText(KXUIPart part, unsigned states, const KXUIColors& own) {
    if (!_KXTheme.usesPalette)
        return _KXWidgetColor(own.text);
    const bool isSelected =
        part == KXUIPartSelection || (part == KXUIPartHeader && states & (KXUIPartPressed | KXUIPartOn));
    return _KXWidgetColor(isSelected ? _KXTheme.palette.selectedText : _KXTheme.palette.text);
}

KXColor _KXFaintText(KXColor own) {
    return _KXWidgetColor(_KXTheme.usesPalette ? _KXTheme.palette.faintText : own);
}

KXColor _KXPanelText(KXColor own) {
    return _KXWidgetColor(_KXTheme.usesPalette ? _KXTheme.palette.text : own);
}

void _KXDrawFocusRing(KXRect box, const KXRect* view, const KXUIColors& own) {
    const KXColor color = _KXWidgetColor(_KXTheme.usesPalette ? _KXTheme.palette.focus : own.focus);
    const int rings = std::clamp(_KXWholePixel(_KXTheme.ringWidth), 1, 8);
    const int limits[] = {view ? _KXWholePixel(view->origin.x) : INT_MIN,
                          view ? _KXWholePixel(view->origin.y) : INT_MIN,
                          view ? _KXWholePixel(view->origin.x + view->size.width) : INT_MAX,
                          view ? _KXWholePixel(view->origin.y + view->size.height) : INT_MAX};
    const int left = std::max(_KXWholePixel(box.origin.x) - rings, limits[0]),
              top = std::max(_KXWholePixel(box.origin.y) - rings, limits[1]),
              right = std::min(_KXWholePixel(box.origin.x + box.size.width) + rings, limits[2]),
              bottom = std::min(_KXWholePixel(box.origin.y + box.size.height) + rings, limits[3]);
    for (int i = 0; i < rings; ++i)
        KXDrawRect(_KXRectBetween(left + i, top + i, right - i, bottom - i), color);
}
