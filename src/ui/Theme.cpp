#include "ui/Theme.h"

#include "text/FontCache.h"

#include <Kobaltrix/KXUIWidget.h>

static constinit unsigned fontGeneration = 0; // of the cache, when the theme was set

static KXColor grey(float value) { return {value, value, value, 1}; }

// What the themes that come with the library have in common.
static KXUITheme themeOf(const KXUIPalette& palette) {
    KXUITheme theme;
    theme.captions = KXUICaptionsLaidOut;
    theme.usesPalette = -1;
    theme.palette = palette;
    theme.tooltip.background = palette.menu;
    theme.tooltip.border = palette.border;
    theme.tooltip.text = palette.text;
    return theme;
}

KXUITheme KXUILightTheme() {
    KXUIPalette palette;
    palette.panel = grey(0.94f);
    palette.button = grey(0.98f);
    palette.buttonHovered = grey(1);
    palette.buttonPressed = {0.78f, 0.84f, 0.93f, 1};
    palette.field = palette.menu = grey(1);
    palette.header = grey(0.89f);
    palette.track = grey(0.84f);
    palette.border = grey(0.62f);
    palette.text = grey(0.1f);
    palette.faintText = grey(0.42f);
    palette.selection = {0.16f, 0.4f, 0.78f, 1};
    palette.selectedText = grey(1);
    palette.focus = {0.05f, 0.35f, 0.85f, 1};
    return themeOf(palette);
}

KXUITheme KXUIDarkTheme() {
    KXUIPalette palette;
    palette.panel = grey(0.15f);
    palette.button = grey(0.24f);
    palette.buttonHovered = grey(0.3f);
    palette.buttonPressed = {0.2f, 0.3f, 0.46f, 1};
    palette.field = grey(0.1f);
    palette.menu = grey(0.19f);
    palette.header = grey(0.2f);
    palette.track = grey(0.08f);
    palette.border = grey(0.38f);
    palette.text = grey(0.92f);
    palette.faintText = grey(0.62f);
    palette.selection = {0.2f, 0.42f, 0.75f, 1};
    palette.selectedText = grey(1);
    palette.focus = {0.45f, 0.7f, 1, 1};
    return themeOf(palette);
}

KXUITheme KXUIHighContrastTheme() {
    const KXColor black = grey(0), white = grey(1), yellow = {1, 1, 0, 1}, blue = {0, 0, 0.6f, 1};
    KXUIPalette palette;
    palette.panel = palette.button = palette.field = palette.menu = palette.header = palette.track = black;
    palette.buttonHovered = palette.buttonPressed = blue;
    palette.border = palette.text = palette.faintText = white;
    palette.selection = yellow;
    palette.selectedText = black;
    palette.focus = yellow;
    KXUITheme theme = themeOf(palette);
    theme.disabledOpacity = 0.6f;
    theme.ringWidth = 3;
    return theme;
}

void KXUISetTheme(const KXUITheme& theme) {
    _KXTheme = theme;
    ++_KXThemeRevision;
    fontGeneration = _KXGlobalFontGeneration;
    KXSize& padding = _KXUIWidget::KXUIWidgetInnerPadding;
    if (theme.padding.width >= 0)
        padding.width = theme.padding.width;
    if (theme.padding.height >= 0)
        padding.height = theme.padding.height;
}

KXFont* _KXThemeFont() { return fontGeneration == _KXGlobalFontGeneration ? _KXTheme.font : nullptr; }

KXUITheme KXUICurrentTheme() { return _KXTheme; }
