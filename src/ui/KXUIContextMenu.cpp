#include "ui/KXUIMenuTree.h"

#include "ui/WidgetDrawing.h"

KXUIContextMenu::KXUIContextMenu() : _KXUIMenuTree(false) {}

KXUIContextMenu::~KXUIContextMenu() = default;

void KXUIContextMenu::add(const KXUIMenuEntry* entries, int count) { _state->root.add(entries, count); }

void KXUIContextMenu::clear() {
    _state->dismiss();
    _state->root.entries.clear();
    _state->root.forgetMeasures();
}

void KXUIContextMenu::open(KXPoint point) {
    if (!_takesInput() || _state->root.entries.empty())
        return;
    _state->begin();
    _state->closeTo(0);
    _state->levels[0].lit = -1;
    _state->corner = point;
    _state->place();
}

void KXUIContextMenu::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (drawing && !_panel())
        drawPopup();
}
