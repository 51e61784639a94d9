// Where the parts of a list box are, and how they look.

#include "ui/KXUIListBox.h"

#include "render/ClipScope.h"
#include "render/GraphicsContext.h"
#include "text/KXUIGlobalFont.h"
#include "ui/ItemList.h"
#include "ui/Look.h"
#include "ui/WholePixels.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXFont.h>

#include <algorithm>
#include <cmath>

static constexpr int barWidth = 12;
static constexpr int smallestKnob = 16;
static constexpr int rowHeightWithoutFont = 16;

static int rowHeight(const KXFont* font, float padding) {
    const float height = font ? std::ceil(font->ascender()) + 2 * padding : rowHeightWithoutFont;
    return std::max(1, _KXWholePixel(height));
}

KXUIListBox::Layout KXUIListBox::_layout() const {
    const KXRect box = rect();
    Layout layout = {};
    layout.left = _KXWholePixel(box.origin.x) + 1;
    layout.top = _KXWholePixel(box.origin.y) + 1;
    layout.right = std::max(layout.left, layout.left - 2 + _KXWholePixel(box.size.width));
    layout.bottom = std::max(layout.top, layout.top - 2 + _KXWholePixel(box.size.height));
    layout.rowHeight = ::rowHeight(_fontInUse(), KXUIWidgetInnerPadding.height);
    layout.contentHeight = static_cast<std::int64_t>(count()) * layout.rowHeight;
    layout.furthest = std::max<std::int64_t>(0, layout.contentHeight - layout.viewHeight());
    layout.scrolls = _fontInUse() && layout.furthest > 0 && layout.right - layout.left > 2 * barWidth;
    layout.rowsRight = layout.right - (layout.scrolls ? barWidth : 0);
    return layout;
}

// The layout with the box scrolled no further than there are rows, and to the row that wants to be seen.
KXUIListBox::Layout KXUIListBox::_settledLayout() {
    Layout layout = _layout();
    if (_state->rowToReveal != -1 && layout.viewHeight() > 0) {
        const std::int64_t top = static_cast<std::int64_t>(_state->rowToReveal) * layout.rowHeight;
        _state->scrolled = std::max(_state->scrolled, top + layout.rowHeight - layout.viewHeight());
        _state->scrolled = std::min(_state->scrolled, top); // where the row does not fit, its top is in view
        _state->rowToReveal = -1;
    }
    _state->scrolled = std::clamp<std::int64_t>(_state->scrolled, 0, layout.furthest);
    if (layout.scrolls) {
        const std::int64_t view = layout.viewHeight();
        const auto knob = std::clamp<std::int64_t>(view * view / layout.contentHeight,
                                                   std::min<std::int64_t>(smallestKnob, view), view);
        layout.knobTop = layout.top + static_cast<int>(_state->scrolled * (view - knob) / layout.furthest);
        layout.knobBottom = layout.knobTop + static_cast<int>(knob);
    }
    return layout;
}

int KXUIListBox::firstVisibleIndex() {
    const Layout layout = _settledLayout();
    return count() ? static_cast<int>(_state->scrolled / layout.rowHeight) : -1;
}

int KXUIListBox::indexAt(KXPoint point) {
    const Layout layout = _settledLayout();
    const int x = _KXTruncate(point.x), y = _KXTruncate(point.y);
    if (x < layout.left || x >= layout.rowsRight || y < layout.top || y >= layout.bottom)
        return -1;
    const std::int64_t row = (y - layout.top + _state->scrolled) / layout.rowHeight;
    return row < count() ? static_cast<int>(row) : -1;
}

// What a row shows. It is measured when it comes into view and when the font or the width changes.
const char* KXUIListBox::_shownText(int index, int width) {
    State::Shown& shown = _state->shown[index % _state->shown.size()];
    if (shown.row != index) {
        shown.text = _KXTextThatFits(*_fontInUse(), _state->rows[index].text.c_str(),
                                     static_cast<float>(width), _state->spans);
        if (!_state->details.empty())
            for (std::size_t i = 0; i < shown.detailWidths.size(); ++i)
                shown.detailWidths[i] = _fontInUse()->advance(_state->details[index][i].c_str());
        shown.row = index;
    }
    return shown.text.c_str();
}

void KXUIListBox::_drawRows(const Layout& layout) {
    KXFont& font = *_fontInUse();
    const int paddingWidth = std::max(0, _KXWholePixel(KXUIWidgetInnerPadding.width));
    const int details = _state->detailWidths[0] + _state->detailWidths[1];
    // Columns stay where they are when the scroll bar comes.
    const int textsRight = details ? layout.right - barWidth - details : layout.rowsRight;
    const int width = std::max(0, textsRight - layout.left - 2 * paddingWidth);
    const std::size_t rowsInView = layout.viewHeight() / layout.rowHeight + 2;
    State& state = *_state;
    if (state.shownFontRevision != font._currentRevision() || state.shownWidth != width ||
        state.shown.size() != rowsInView) {
        state.shown.assign(rowsInView, {});
        state.shownFontRevision = font._currentRevision();
        state.shownWidth = width;
    }
    const KXUIColors own = _ownColors();
    const _KXClipScope clip(_KXRectBetween(layout.left, layout.top, layout.rowsRight, layout.bottom));
    int row = static_cast<int>(state.scrolled / layout.rowHeight);
    int top = layout.top - static_cast<int>(state.scrolled % layout.rowHeight);
    for (; row < count() && top < layout.bottom; ++row, top += layout.rowHeight) {
        const KXRect whole = _KXRectBetween(layout.left, top, layout.rowsRight, top + layout.rowHeight);
        if (isSelected(row))
            _KXDrawPart(KXUIPartSelection, whole, KXUIPartNormal, own);
        if (state.several && row == state.selected && hasFocus())
            KXDrawRect(whole, _KXColorsOf(KXUIPartField, KXUIPartFocused, own)
                                  .border); // keys move from it, and it may not be selected
        const KXPoint place = {static_cast<float>(layout.left + paddingWidth),
                               static_cast<float>(top) + KXUIWidgetInnerPadding.height};
        const KXColor color =
            _KXPartText(isSelected(row) ? KXUIPartSelection : KXUIPartField, KXUIPartNormal, own);
        if (const _KXListItem* const item = state.items ? state.items->itemAt(row) : nullptr)
            state.items->drawRow(*item, whole, color);
        else if (state.spans == _KXSpans::Plain)
            font._printPlain(place, color, _shownText(row, width));
        else
            font.print(place, color, "%s", _shownText(row, width));
        _drawDetails(layout, row, place.y, color);
    }
}

void KXUIListBox::_drawDetails(const Layout& layout, int row, float y, KXColor color) {
    const State& state = *_state;
    if (state.details.empty())
        return;
    float right = static_cast<float>(layout.right - barWidth) - KXUIWidgetInnerPadding.width;
    for (std::size_t i = state.detailWidths.size(); i-- > 0;
         right -= static_cast<float>(state.detailWidths[i]))
        if (state.detailWidths[i] > 0) {
            const float width = state.shown[row % state.shown.size()].detailWidths[i];
            _fontInUse()->_printPlain({std::floor(right - width), y}, color, state.details[row][i].c_str());
        }
}

KXUIColors KXUIListBox::_ownColors() const {
    return {_borderColor, _backgroundColor, _trackColor, _selectionColor, _focusColor, _textColor};
}

void KXUIListBox::_drawScrollBar(const Layout& layout) {
    KXUIColors own = _ownColors();
    own.border = own.interaction = _trackColor;
    _KXDrawPart(KXUIPartTrack, _KXRectBetween(layout.rowsRight, layout.top, layout.right, layout.bottom),
                KXUIPartNormal, own);
    own.border = _borderColor;
    own.background = _knobColor;
    own.interaction = _selectionColor;
    const KXRect knob = _KXRectBetween(layout.rowsRight, layout.knobTop, layout.right, layout.knobBottom);
    _KXDrawPart(KXUIPartKnob, knob, _state->holds(State::Press::Knob) ? KXUIPartPressed : KXUIPartNormal,
                own);
}

void KXUIListBox::draw() {
    if (!_KXCurrentGraphicsContext)
        return;
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    const Layout layout = _settledLayout();
    _KXDrawPart(KXUIPartField, rect(), hasFocus() ? KXUIPartFocused : KXUIPartNormal, _ownColors());
    if (layout.right > layout.left && layout.bottom > layout.top) {
        if (_fontInUse())
            _drawRows(layout);
        if (layout.scrolls)
            _drawScrollBar(layout);
    }
}
