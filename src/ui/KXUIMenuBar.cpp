#include "ui/KXUIMenuTree.h"
#include "ui/WidgetDrawing.h"

KXUIMenuBar::KXUIMenuBar() : _KXUIMenuTree(true) {}

KXUIMenuBar::~KXUIMenuBar() = default;

void KXUIMenuBar::addMenu(const char* text, const KXUIMenuEntry* entries, int count, int id) {
    KXUIMenuEntry title;
    title.text = text ? text : "";
    title.id = id;
    auto made = std::make_unique<_KXMenuEntry>(title);
    made->add(entries, count);
    _state->root.entries.push_back(std::move(made));
    _state->root.forgetMeasures();
}

void KXUIMenuBar::setSize(KXSize size) {
    _noteAskedSize(size);
    const _KXMenuRows& titles = _state->rows(_state->root);
    if (size.width == -1)
        size.width = static_cast<float>(titles.width);
    if (size.height == -1)
        size.height = static_cast<float>(titles.line);
    _KXUIWidget::setSize(size);
}

int KXUIMenuBar::setFont(const char* path, KXAliasMode mode) {
    const int result = _KXUIWidget::setFont(path, mode);
    refit();
    return result;
}

int KXUIMenuBar::setFontSize(int size) {
    const int result = _KXUIWidget::setFontSize(size);
    refit();
    return result;
}

void KXUIMenuBar::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    _drawTitles();
    if (!_panel())
        drawPopup();
}
