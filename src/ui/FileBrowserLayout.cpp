// Where the parts of a file browser are, and how they look.

#include "ui/KXUIFileBrowser.h"

#include "core/ground/Truncate.h"
#include "core/ground/UIColors.h"
#include "render/ClipScope.h"
#include "render/GraphicsContext.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXFont.h>

#include <algorithm>

static constexpr int gap = 4;
static constexpr int lineHeightWithoutFont = 18, buttonWidthWithoutFont = 40;

KXUIFileBrowser::State::State()
    : backgroundColor(_KXUIBackgroundColor_Interaction), borderColor(_KXUIBorderColor),
      textColor(_KXUITextColor) {
    list._showTextsAsTheyAre();
    caption();
}

/// Writes the buttons' captions, which sizes them.
void KXUIFileBrowser::State::caption() {
    up.setText("Up");
    hidden.setText("Hidden");
    confirm.setText(!asked.empty() ? "Replace" : saves ? "Save" : "Open");
    cancel.setText("Cancel");
    layOut();
}

void KXUIFileBrowser::State::layOut() {
    const auto whole = [](float value) { return std::clamp(_KXTruncate(value), -(1 << 16), 1 << 16); };
    const int left = whole(box.origin.x) + gap, top = whole(box.origin.y) + gap;
    const int right = left + std::max(0, whole(box.size.width) - 2 * gap);
    const int bottom = top + std::max(0, whole(box.size.height) - 2 * gap);
    name.setSize({0, -1});
    int line = name._fontInUse() ? whole(name.rect().size.height) : lineHeightWithoutFont;
    for (KXUIButton* button : buttons) {
        button->setSize({-1, -1});
        line = std::max(line, whole(button->rect().size.height));
    }
    const auto place = [left, top](_KXUIWidget& part, int x1, int y1, int x2, int y2) {
        x1 = std::max(x1, left); // nothing reaches out of a small browser
        y1 = std::max(y1, top);
        part.setRect({static_cast<float>(x1), static_cast<float>(y1)},
                     {static_cast<float>(std::max(0, x2 - x1)), static_cast<float>(std::max(0, y2 - y1))});
    };
    const auto widthOf = [&](const KXUIButton& button) {
        const int width = whole(button.rect().size.width);
        return width < 0 ? buttonWidthWithoutFont : width;
    };

    const int upRight = left + widthOf(up), hiddenLeft = right - widthOf(hidden);
    place(up, left, top, upRight, top + line);
    place(hidden, hiddenLeft, top, right, top + line);
    folderLeft = upRight + gap;
    folderRight = hiddenLeft - gap;
    folderTop = top;
    const int bottomLine = bottom - line;
    messageTop = bottomLine - gap - line;
    place(list, left, top + line + gap, right, messageTop - gap);
    const int cancelLeft = right - widthOf(cancel), confirmLeft = cancelLeft - gap - widthOf(confirm);
    place(cancel, cancelLeft, bottomLine, right, bottom);
    place(confirm, confirmLeft, bottomLine, cancelLeft - gap, bottom);
    place(name, left, bottomLine, confirmLeft - gap, bottom);
    messageLeft = left;
    messageRight = right;
}

void KXUIFileBrowser::setOrigin(KXPoint origin) {
    _KXUIWidget::setOrigin(origin);
    _state->box = rect();
    _state->layOut();
}

void KXUIFileBrowser::setSize(KXSize size) {
    _KXUIWidget::setSize(size);
    _state->box = rect();
    _state->layOut();
}

int KXUIFileBrowser::setFont(const char* path, KXAliasMode mode) {
    if (!_KXUIWidget::setFont(path, mode))
        return 0;
    for (KXUIButton* button : _state->buttons)
        button->setFont(path, mode);
    _state->list.setFont(path, mode);
    _state->name.setFont(path, mode);
    _state->caption();
    return -1;
}

int KXUIFileBrowser::setFontSize(int size) {
    if (!_KXUIWidget::setFontSize(size))
        return 0;
    // The list and the name share the browser's font, but buttons are made with a smaller one.
    for (KXUIButton* button : _state->buttons)
        button->setFontSize(size);
    _state->caption();
    return -1;
}

static void printLine(KXFont& font, int left, int top, int right, KXColor color, const char* text) {
    if (right <= left)
        return;
    const float padding = _KXUIWidget::KXUIWidgetInnerPadding.height;
    _KXPrintRow(font, {static_cast<float>(left), static_cast<float>(top) + padding}, color, text,
                _KXSpans::Plain);
}

void KXUIFileBrowser::draw() {
    State& state = *_state;
    if (!state.isShown || !_KXCurrentGraphicsContext)
        return;
    const _KXClipScope clip(rect());
    KXDrawRectFill(rect(), state.backgroundColor);
    if (KXFont* const font = _fontInUse()) {
        const auto end = [font](const char* text, float width) {
            return _KXTextEndThatFits(*font, text, width);
        };
        const auto beginning = [font](const char* text, float width) {
            return _KXTextThatFits(*font, text, width, _KXSpans::Plain);
        };
        const auto width = [](int left, int right) { return static_cast<float>(right - left); };
        printLine(*font, state.folderLeft, state.folderTop, state.folderRight, state.textColor,
                  state.folderShown.of(*font, state.folder, width(state.folderLeft, state.folderRight), end));
        printLine(*font, state.messageLeft, state.messageTop, state.messageRight, state.textColor,
                  state.messageShown.of(*font, state.message, width(state.messageLeft, state.messageRight),
                                        beginning));
    }
    state.list.draw();
    state.name.draw();
    for (KXUIButton* button : state.buttons)
        button->draw();
    KXDrawRect(rect(), state.borderColor);
}

void KXUIFileBrowser::setBackgroundColor(KXColor color) { _state->backgroundColor = color; }

void KXUIFileBrowser::setControlColor(KXColor color) {
    _state->list.setBackgroundColor(color);
    _state->list.setKnobColor(color);
    _state->name.setBackgroundColor(color);
    for (KXUIButton* button : _state->buttons)
        button->setNormalBackgroundColor(color);
    _state->hidden.setOnDepressedBackgroundColor(color);
}

void KXUIFileBrowser::setDepressedColor(KXColor color) {
    _state->list.setTrackColor(color);
    for (KXUIButton* button : _state->buttons)
        button->setDepressedBackgroundColor(color);
    _state->hidden.setOnBackgroundColor(color);
}

void KXUIFileBrowser::setTrackColor(KXColor color) { _state->list.setTrackColor(color); }

void KXUIFileBrowser::setKnobColor(KXColor color) { _state->list.setKnobColor(color); }

void KXUIFileBrowser::setBorderColor(KXColor color) {
    _state->borderColor = color;
    _state->list.setBorderColor(color);
    _state->name.setBorderColor(color);
    for (KXUIButton* button : _state->buttons)
        button->setBorderColor(color);
}

void KXUIFileBrowser::setTextColor(KXColor color) {
    _state->textColor = color;
    _state->list.setTextColor(color);
    _state->name.setTextColor(color);
    for (KXUIButton* button : _state->buttons)
        button->setTextColor(color);
}

void KXUIFileBrowser::setSelectionColor(KXColor color) {
    _state->list.setSelectionColor(color);
    _state->name.setSelectionColor(color);
}

void KXUIFileBrowser::setFocusColor(KXColor color) {
    _state->list.setFocusColor(color);
    _state->name.setFocusColor(color);
}

void KXUIFileBrowser::setBackgroundColor(float r, float g, float b, float a) {
    setBackgroundColor({r, g, b, a});
}
void KXUIFileBrowser::setControlColor(float r, float g, float b, float a) { setControlColor({r, g, b, a}); }
void KXUIFileBrowser::setDepressedColor(float r, float g, float b, float a) {
    setDepressedColor({r, g, b, a});
}
void KXUIFileBrowser::setTrackColor(float r, float g, float b, float a) { setTrackColor({r, g, b, a}); }
void KXUIFileBrowser::setKnobColor(float r, float g, float b, float a) { setKnobColor({r, g, b, a}); }
void KXUIFileBrowser::setBorderColor(float r, float g, float b, float a) { setBorderColor({r, g, b, a}); }
void KXUIFileBrowser::setTextColor(float r, float g, float b, float a) { setTextColor({r, g, b, a}); }
void KXUIFileBrowser::setSelectionColor(float r, float g, float b, float a) {
    setSelectionColor({r, g, b, a});
}
void KXUIFileBrowser::setFocusColor(float r, float g, float b, float a) { setFocusColor({r, g, b, a}); }
