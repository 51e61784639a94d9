#include "ui/KXUITextArea.h"

#include "render/ClipScope.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "ui/Description.h"
#include "ui/Look.h"
#include "ui/WholePixels.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXFont.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <utility>

static int toInt(std::size_t number) { return static_cast<int>(std::min<std::size_t>(number, INT_MAX)); }

static std::size_t atLeastNone(int number) { return static_cast<std::size_t>(std::max(0, number)); }

KXUITextArea::KXUITextArea() : _state(std::make_unique<State>(*this)) {}

KXUITextArea::~KXUITextArea() = default;

void KXUITextArea::setText(const char* text) { _state->edit.setText(text); }
const char* KXUITextArea::text() const { return _state->edit.text().c_str(); }
void KXUITextArea::insert(const char* text) { _state->edit.insert(text); }
int KXUITextArea::length() const { return toInt(_state->edit.length()); }
int KXUITextArea::lineCount() const { return toInt(_state->edit.lineCount()); }

const char* KXUITextArea::line(int index) const {
    if (index < 0 || index >= lineCount())
        return nullptr;
    const auto line = static_cast<std::size_t>(index);
    _state->lineAsked = _state->edit.part(_state->edit.lineStart(line), _state->edit.lineEnd(line));
    return _state->lineAsked.c_str();
}

void KXUITextArea::setMaximumLength(int characters) {
    _state->edit.setMaximumLength(static_cast<std::size_t>(characters > 0 ? characters : -1));
}

int KXUITextArea::maximumLength() const {
    const std::size_t characters = _state->edit.maximumLength();
    return characters == static_cast<std::size_t>(-1) ? 0 : toInt(characters);
}

void KXUITextArea::setWraps(int wraps) { _state->wraps = wraps; }
int KXUITextArea::wraps() const { return _state->wraps ? -1 : 0; }
void KXUITextArea::setShowsLineNumbers(int shows) { _state->showsNumbers = shows; }
int KXUITextArea::showsLineNumbers() const { return _state->showsNumbers ? -1 : 0; }
void KXUITextArea::setTakesTabs(int takes) {
    _state->takesTabs = takes;
    _state->keepsTab = takes && !_state->isReadOnly;
}
int KXUITextArea::takesTabs() const { return _state->takesTabs ? -1 : 0; }
void KXUITextArea::setTabsAreBlanks(int blanks) { _state->tabsAreBlanks = blanks; }
int KXUITextArea::tabsAreBlanks() const { return _state->tabsAreBlanks ? -1 : 0; }
void KXUITextArea::setTabWidth(int blanks) { _state->tabWidth = std::clamp(blanks, 1, 64); }
int KXUITextArea::tabWidth() const { return _state->tabWidth; }
void KXUITextArea::setPlaceholder(const char* text) { _state->placeholder = text ? text : ""; }

void KXUITextArea::setReadOnly(int readOnly) {
    _state->isReadOnly = readOnly;
    _state->keepsTab = _state->takesTabs && !readOnly;
    if (readOnly)
        _state->compose("");
}

int KXUITextArea::isReadOnly() const { return _state->isReadOnly ? -1 : 0; }

void KXUITextArea::select(int start, int count) {
    _KXLinesEdit& edit = _state->edit;
    const std::size_t first = atLeastNone(start), anchor = edit.positionOfCharacter(first);
    edit.select(anchor, edit.positionOfCharacter(first + atLeastNone(count)));
}

void KXUITextArea::selectAll() { _state->edit.selectAll(); }

int KXUITextArea::cursor() const { return toInt(_state->edit.characterAt(_state->edit.cursor())); }

int KXUITextArea::selectionStart() const {
    return toInt(_state->edit.characterAt(_state->edit.selectionStart()));
}

int KXUITextArea::selectionLength() const {
    return toInt(_state->edit.characterAt(_state->edit.selectionEnd())) - selectionStart();
}

KXTextPosition KXUITextArea::positionOf(int characters) const {
    const _KXLinesEdit& edit = _state->edit;
    const std::size_t position = edit.positionOfCharacter(atLeastNone(characters)),
                      line = edit.lineOf(position), start = edit.lineStart(line);
    return {toInt(line), toInt(edit.characterAt(position) - edit.characterAt(start))};
}

int KXUITextArea::charactersBefore(KXTextPosition position) const {
    const _KXLinesEdit& edit = _state->edit;
    const std::size_t line = std::min(atLeastNone(position.line), edit.lineCount() - 1);
    const std::size_t column =
        position.line >= lineCount() ? edit.length() : atLeastNone(position.line < 0 ? 0 : position.column);
    return toInt(
        std::min(edit.characterAt(edit.lineStart(line)) + column, edit.characterAt(edit.lineEnd(line))));
}

int KXUITextArea::undo() { return _state->edit.undo() ? -1 : 0; }
int KXUITextArea::redo() { return _state->edit.redo() ? -1 : 0; }

int KXUITextArea::scrollTo(int line) {
    if (line < 0 || line >= lineCount())
        return 0;
    _state->look();
    _state->view.scrollToRowOf(_state->edit.lineStart(static_cast<std::size_t>(line)));
    return -1;
}

int KXUITextArea::firstVisibleLine() {
    _state->look();
    return toInt(_state->view.topLine());
}

void KXUITextArea::setColors(const KXUIColors& colors) {
    _state->colors = colors;
    _state->bar.setColors(colors);
}

KXUIDescription KXUITextArea::description() const {
    KXUIDescription said = _described("text area", nullptr);
    if (said.name.empty())
        said.name = _KXSpokenText(_state->placeholder.c_str());
    const _KXLinesEdit& edit = _state->edit;
    const std::size_t line = edit.lineOf(edit.cursor()), start = edit.lineStart(line),
                      enough = edit.characterStart(start + _KXTextAreaView::longestPiece);
    said.value = edit.part(start, std::min(enough, edit.lineEnd(line)));
    if (_state->isReadOnly)
        _KXAddState(said, "read only");
    return said;
}

int KXUITextArea::changed() const { return _state->changed ? -1 : 0; }

unsigned long long KXUITextArea::_layoutsMade() const { return _state->view.layoutsMade(); }

// The column of the bar is kept free, so that the text is as wide with it as without.
KXUITextArea::State::Box KXUITextArea::State::box() {
    const KXRect rect = area.rect();
    const int left = _KXWholePixel(rect.origin.x), top = _KXWholePixel(rect.origin.y);
    const int right = left + _KXWholePixel(rect.size.width), bottom = top + _KXWholePixel(rect.size.height);
    const int paddingWidth = _KXWholePixel(KXUIWidgetInnerPadding.width),
              paddingHeight = _KXWholePixel(KXUIWidgetInnerPadding.height);
    Box box = {left + paddingWidth,    top + paddingHeight, right - paddingWidth,
               bottom - paddingHeight, left + paddingWidth, KXZeroRect};
    if (constexpr int thickness = static_cast<int>(_KXScrollBar::thickness); right - left > 4 * thickness) {
        box.bar = _KXRectBetween(right - 1 - thickness, top + 1, right - 1, bottom - 1);
        box.right -= thickness;
    }
    if (const KXFont* const font = area._fontInUse(); showsNumbers && font) {
        char widest[24] = "8";
        for (std::size_t i = 1, lines = edit.lineCount(); (lines /= 10) > 0; ++i)
            widest[i] = '8';
        widestNumber.layOut(*font, widest);
        box.left += static_cast<int>(std::ceil(widestNumber.size().width)) + 2 * paddingWidth;
    }
    box.right = std::max(box.left, box.right);
    box.bottom = std::max(box.top, box.bottom);
    return box;
}

// Brings the view, and the bar, to where things are now.
void KXUITextArea::State::look() {
    const Box where = box();
    view.update({area._fontInUse(), static_cast<float>(where.right - where.left),
                 static_cast<float>(where.bottom - where.top), wraps, tabWidth},
                composition);
    const _KXTextAreaView::Extent& extent = view.extent();
    const auto pixels = [this](double rows) { return static_cast<float>(rows * view.rowHeight()); };
    bar.setRect(where.bar.origin, where.bar.size);
    bar.setLengths(pixels(extent.total), pixels(extent.inView));
    bar.setOffset(pixels(extent.before));
}

void KXUITextArea::draw() {
    KX_GL_CHECK("KXUITextArea::draw");
    const _KXWidgetDrawing drawing(*this);
    if (!drawing || !_KXCurrentGraphicsContext)
        return;
    State& state = *_state;
    const KXRect whole = rect();
    _KXDrawPart(KXUIPartField, whole, isFocused() ? KXUIPartFocused : KXUIPartNormal, state.colors);
    const State::Box box = state.box();
    state.look();
    const _KXClipScope clip(
        {{whole.origin.x + 1, whole.origin.y + 1}, {whole.size.width - 2, whole.size.height - 2}});
    if (!state.view.shown().empty()) {
        state.drawNumbers(box);
        state.drawText(box);
    }
    if (state.hasBar())
        state.bar.draw();
}

static KXColor halfOpaque(KXColor color) { return {color.r, color.g, color.b, color.a / 2}; }

// Right-aligned before the lines' first rows.
void KXUITextArea::State::drawNumbers(const Box& box) {
    if (!showsNumbers)
        return;
    const int right = box.left - 2 * (box.numbersLeft - _KXWholePixel(area.rect().origin.x));
    std::size_t i = 0;
    for (const _KXTextAreaView::Shown& shown : view.shown()) {
        if (!shown.piece.beginsLine)
            continue;
        if (i == numbers.size())
            numbers.emplace_back();
        KXTextLayout& number = numbers[i++];
        char digits[24];
        std::snprintf(digits, sizeof digits, "%zu", shown.piece.line + 1);
        number.layOut(*area._fontInUse(), digits);
        number.draw({static_cast<float>(right) - std::ceil(number.size().width),
                     static_cast<float>(box.top + shown.top)},
                    _KXFaintText(halfOpaque(colors.text)));
    }
}

// In whole pixels, a pixel wide at least.
static KXRect onPixels(KXRect rect, KXPoint origin) {
    const float left = std::floor(rect.origin.x), right = std::floor(rect.origin.x + rect.size.width);
    return {{origin.x + left, origin.y + rect.origin.y}, {std::max(1.0f, right - left), rect.size.height}};
}

void KXUITextArea::State::drawText(const Box& box) {
    const KXPoint origin = {static_cast<float>(box.left), static_cast<float>(box.top)};
    const KXRect whole = area.rect();
    const _KXClipScope clip({{origin.x - 1, whole.origin.y + 1},
                             {static_cast<float>(box.right - box.left) + 2, whole.size.height - 2}});
    for (const _KXTextAreaView::Shown& shown : view.shown())
        shown.layout->draw(
            {origin.x - static_cast<float>(view.scrolledRight()), origin.y + static_cast<float>(shown.top)},
            _KXPartText(KXUIPartField, KXUIPartNormal, colors));
    if (edit.size() == 0 && composition.empty() && !placeholder.empty()) {
        KXTextOptions options;
        options.width = wraps ? static_cast<float>(box.right - box.left) : 0;
        placeholderLayout.layOut(*area._fontInUse(), placeholder.c_str(), options);
        placeholderLayout.draw(origin, _KXFaintText(halfOpaque(colors.text)));
    }
    drawSelection(origin);
    drawCursor(origin);
}

static constexpr int mostRects = 64; // of a paragraph, whose directions may mix

// Over the text: a theme may have another colour for what is selected.
void KXUITextArea::State::drawSelection(KXPoint origin) {
    KXRect rects[mostRects];
    for (const _KXTextAreaView::Shown& shown : view.shown())
        for (int i = 0, count = view.selectionRects(shown, rects, mostRects); i < count; ++i) {
            const KXRect rect = onPixels(rects[i], origin);
            const _KXClipScope clip(rect);
            _KXDrawPart(KXUIPartSelection, rect, KXUIPartNormal, colors);
            shown.layout->draw({origin.x - static_cast<float>(view.scrolledRight()),
                                origin.y + static_cast<float>(shown.top)},
                               _KXPartText(KXUIPartSelection, KXUIPartNormal, colors));
        }
}

// With a line below what is composed.
void KXUITextArea::State::drawCursor(KXPoint origin) {
    const KXColor color = _KXPartText(KXUIPartField, KXUIPartNormal, colors);
    KXRect rects[mostRects], caret;
    for (int i = 0, count = view.compositionRects(rects, mostRects); i < count; ++i) {
        rects[i].origin.y += std::floor(rects[i].size.height) - 1;
        rects[i].size.height = 1;
        KXDrawRectFill(onPixels(rects[i], origin), color);
    }
    if (area.isFocused() && view.cursorRect(caret) && blink.isOn(edit.revision()))
        KXDrawRectFill(onPixels({caret.origin, {1, std::ceil(caret.size.height)}}, origin), color);
}
