// Where the parts of a file browser are, and how they look.

#include "ui/KXUIFileBrowser.h"

#include "core/ground/UIColors.h"
#include "render/ClipScope.h"
#include "render/GraphicsContext.h"
#include "ui/Look.h"
#include "ui/WholePixels.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXFont.h>

#include <algorithm>
#include <array>
#include <cmath>

static constexpr int gap = 4;
static constexpr int placesFrom = 392, leastPlaces = 92; // of the width within the border
static constexpr int previewFrom = 492, previewWidth = 112;
static constexpr int scrollBar = 12;
static constexpr int lineHeightWithoutFont = 18, buttonWidthWithoutFont = 40;

KXUIFileBrowser::State::State(KXUIFileBrowser& shown)
    : browser(shown), backgroundColor(_KXUIBackgroundColor_Interaction), borderColor(_KXUIBorderColor),
      textColor(_KXUITextColor) {
    list._showTextsAsTheyAre();
    places._showTextsAsTheyAre();
    list._focus().filter = name._focus().filter = places._focus().filter = this;
    caption();
}

/// Writes the buttons' captions, which sizes them.
void KXUIFileBrowser::State::caption() {
    up.setText("Up");
    newFolder.setText("New folder");
    hidden.setText("Hidden");
    constexpr const char* titles[] = {"Name", "Size", "Changed"};
    for (int i = 0; i < 3; ++i)
        columns[i].setText(titles[i]);
    confirm.setText(task == Task::MakeFolder ? "Make"
                    : task == Task::Rename   ? "Rename"
                    : !asked.empty()         ? "Replace"
                    : saves                  ? "Save"
                                             : "Open");
    dismiss.setText("Cancel");
    layOut();
}

static int widthOf(const KXUIButton& button) {
    const int width = _KXWholePixel(button.rect().size.width);
    return width < 0 ? buttonWidthWithoutFont : width;
}

/// Fits the buttons to their captions. @return how high a line is in which each of the parts fits.
int KXUIFileBrowser::State::fitLine() {
    name.setSize({0, -1});
    int line = name._fontInUse() ? _KXWholePixel(name.rect().size.height) : lineHeightWithoutFont;
    for (KXUIButton* button : buttons) {
        button->setSize({-1, -1});
        line = std::max(line, _KXWholePixel(button->rect().size.height));
    }
    return line;
}

void KXUIFileBrowser::State::layOut() {
    const int line = fitLine();
    const int left = _KXWholePixel(box.origin.x) + gap, top = _KXWholePixel(box.origin.y) + gap;
    const int right = left + std::max(0, _KXWholePixel(box.size.width) - 2 * gap);
    const int bottom = top + std::max(0, _KXWholePixel(box.size.height) - 2 * gap);
    const auto place = [left, top](int x1, int y1, int x2, int y2) {
        return _KXRectBetween(std::max(x1, left), std::max(y1, top), x2, y2); // also where there is no room
    };
    const auto put = [&place](_KXUIWidget& part, int x1, int y1, int x2, int y2) {
        const KXRect rect = place(x1, y1, x2, y2);
        part.setRect(rect.origin, rect.size);
    };
    const int upRight = left + widthOf(up), hiddenLeft = right - widthOf(hidden), topEnd = top + line;
    const int newLeft = hiddenLeft - gap - widthOf(newFolder);
    put(up, left, top, upRight, topEnd);
    crumbsPlace = place(upRight + gap, top, newLeft - gap, topEnd);
    put(newFolder, newLeft, top, hiddenLeft - gap, topEnd);
    put(hidden, hiddenLeft, top, right, topEnd);

    const int nameTop = bottom - line, messageTop = nameTop - gap - line;
    const int middle = topEnd + gap, middleEnd = messageTop - gap, width = right - left;
    const int wanted = _KXWholePixel(name._idealSizeForText("Computer").width) + 3;
    const int placesWidth = std::clamp(wanted, leastPlaces, std::max(leastPlaces, width / 3));
    const int listLeft = width < placesFrom ? left : left + placesWidth + gap;
    const int listRight = width < previewFrom ? right : right - previewWidth - gap;
    put(places, left, middle, listLeft - gap, middleEnd);
    previewPlace = place(listRight + gap, middle, right, middleEnd);
    layOutColumns(listLeft, middle, listRight, line);
    put(list, listLeft, middle + (columns[0].rect().size.width > 0 ? line - 1 : 0), listRight, middleEnd);
    messagePlace = place(left, messageTop, right, messageTop + line);

    const int cancelLeft = right - widthOf(dismiss), confirmLeft = cancelLeft - gap - widthOf(confirm);
    put(name, left, nameTop, confirmLeft - gap, bottom);
    put(confirm, confirmLeft, nameTop, cancelLeft - gap, bottom);
    put(dismiss, cancelLeft, nameTop, right, bottom);
}

/// The titles above the list, which end where the columns below them do; a column for which there is no room
/// is left out.
void KXUIFileBrowser::State::layOutColumns(int left, int top, int right, int line) {
    constexpr int leastName = 130;
    KXFont* const font = name._fontInUse();
    std::array<int, 2> widths = {0, 0};
    int room = font ? right - left - leastName : 0;
    constexpr const char* widest[] = {"0.00 MB", "0000-00-00 00:00"};
    for (int i = 0; i < 2 && room > 0; ++i) {
        const int width = static_cast<int>(std::ceil(font->advance(widest[i]))) + 4 * gap;
        room -= width;
        widths[i] = room >= 0 ? width : 0;
    }
    list._setDetailWidths(widths);
    const int sizeLeft = right - widths[1] - widths[0] - (widths[0] ? scrollBar : 0);
    const int dateLeft = right - widths[1] - (widths[1] ? scrollBar : 0);
    const int edges[] = {left, sizeLeft, dateLeft, right};
    for (int i = 0; i < 3; ++i) {
        const bool isThere = widths[0] > 0 && (i == 0 || widths[i - 1] > 0);
        const KXRect rect =
            _KXRectBetween(edges[i], top, isThere ? edges[i + 1] + (i < 2) : edges[i], top + line);
        columns[i].setRect(rect.origin, rect.size);
        columns[i].setVisible(isThere);
    }
}

/// A triangle in the title of the column that is sorted by.
void KXUIFileBrowser::State::drawSortMark() {
    const KXRect title = columns[static_cast<int>(order)].rect();
    constexpr int rows = 4;
    for (int row = 0; row < rows; ++row) {
        const auto half = static_cast<float>(isReversed ? row : rows - 1 - row);
        KXDrawRectFill(
            {{title.origin.x + title.size.width - 10 - half,
              std::floor(title.origin.y + title.size.height / 2) - rows / 2 + static_cast<float>(row)},
             {2 * half + 1, 1}},
            _KXPanelText(textColor));
    }
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
    _state->places.setFont(path, mode);
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

static void printLine(KXFont& font, KXRect place, KXColor color, const char* text) {
    if (place.size.width <= 0)
        return;
    place.origin.y += _KXUIWidget::KXUIWidgetInnerPadding.height;
    font._printPlain(place.origin, color, text);
}

void KXUIFileBrowser::State::printTexts(KXFont& font) {
    crumbs.update(font, folder, crumbsPlace);
    crumbs.draw(font, _KXPanelText(textColor));
    const auto beginning = [&font](const char* text, float width) {
        return _KXTextThatFits(font, text, width, _KXSpans::Plain);
    };
    printLine(font, messagePlace, _KXPanelText(textColor),
              messageShown.of(font, message, messagePlace.size.width, beginning));
}

void KXUIFileBrowser::State::drawPreview() {
    const int row = list.selectedIndex();
    const bool isFile = row != -1 && !entries[row].isFolder;
    if (!isFile || shownPreview != entries[row].name || previewFolder != folder) {
        previewFolder = folder;
        shownPreview = isFile ? entries[row].name : "";
        previewPath = isFile ? _KXPathIn(folder, shownPreview) : "";
    }
    preview.draw(previewPath, isFile ? entries[row].facts.size : 0, previewPlace);
}

void KXUIFileBrowser::draw() {
    State& state = *_state;
    if (!state.isShown || !_KXCurrentGraphicsContext)
        return;
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    const _KXClipScope clip(rect());
    KXUIColors own = {};
    own.border = state.borderColor;
    own.background = state.backgroundColor;
    _KXDrawPart(KXUIPartPanel, rect(), KXUIPartNormal, own);
    if (KXFont* const font = _fontInUse())
        state.printTexts(*font);
    if (state.places.rect().size.width > 0)
        state.places.draw();
    for (KXUIButton* button : state.buttons)
        button->draw();
    if (_fontInUse() && state.columns[static_cast<int>(state.order)].isVisible())
        state.drawSortMark();
    state.list.draw();
    state.name.draw();
    if (state.previewPlace.size.width > 0)
        state.drawPreview();
    KXDrawRect(rect(), _KXColorsOf(KXUIPartPanel, KXUIPartNormal, own).border); // over parts that stick out
}

void KXUIFileBrowser::setBackgroundColor(KXColor color) { _state->backgroundColor = color; }

void KXUIFileBrowser::setControlColor(KXColor color) {
    for (KXUIListBox* each : {&_state->list, &_state->places}) {
        each->setBackgroundColor(color);
        each->setKnobColor(color);
    }
    _state->name.setBackgroundColor(color);
    for (KXUIButton* button : _state->buttons)
        button->setNormalBackgroundColor(color);
    _state->hidden.setOnDepressedBackgroundColor(color);
}

void KXUIFileBrowser::setDepressedColor(KXColor color) {
    _state->list.setTrackColor(color);
    _state->places.setTrackColor(color);
    for (KXUIButton* button : _state->buttons)
        button->setDepressedBackgroundColor(color);
    _state->hidden.setOnBackgroundColor(color);
}

void KXUIFileBrowser::setTrackColor(KXColor color) {
    _state->list.setTrackColor(color);
    _state->places.setTrackColor(color);
}

void KXUIFileBrowser::setKnobColor(KXColor color) {
    _state->list.setKnobColor(color);
    _state->places.setKnobColor(color);
}

void KXUIFileBrowser::setBorderColor(KXColor color) {
    _state->borderColor = color;
    _state->list.setBorderColor(color);
    _state->places.setBorderColor(color);
    _state->name.setBorderColor(color);
    for (KXUIButton* button : _state->buttons)
        button->setBorderColor(color);
}

void KXUIFileBrowser::setTextColor(KXColor color) {
    _state->textColor = color;
    _state->list.setTextColor(color);
    _state->places.setTextColor(color);
    _state->name.setTextColor(color);
    for (KXUIButton* button : _state->buttons)
        button->setTextColor(color);
}

void KXUIFileBrowser::setSelectionColor(KXColor color) {
    _state->list.setSelectionColor(color);
    _state->places.setSelectionColor(color);
    _state->name.setSelectionColor(color);
}

void KXUIFileBrowser::setFocusColor(KXColor color) {
    _state->list.setFocusColor(color);
    _state->places.setFocusColor(color);
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
