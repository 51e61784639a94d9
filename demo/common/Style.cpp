#include "Style.h"

void Style::printCentred(float x, float y, int size, KXColor color, const char* text) {
    KXUIGlobalFontPrint({x - KXUIGlobalFontStringBounds(size, text).width / 2, y}, color, size, text);
}

void Style::fillRounded(KXRect rect, float radius, KXColor color) {
    KXDrawRoundedRect(rect, radius, KXShapePaint(color));
}

void Style::prepareWidgets() {
    KXSetUIColor(woodDark, ink, wood, faded(gold, 0.35f), gold, paper);
    _KXUIWidget::KXUIWidgetInnerPadding = {12, 5};
    KXUITheme theme;
    theme.captions = KXUICaptionsLaidOut;
    theme.tooltip.background = ink;
    theme.tooltip.border = gold;
    theme.tooltip.text = paper;
    KXUISetTheme(theme);
}
