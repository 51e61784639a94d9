#include <Kobaltrix/KXUILayout.h>

#include "ui/WholePixels.h"

#include <Kobaltrix/KXGeometry.h>
#include <Kobaltrix/KXUILabel.h>

#include <algorithm>
#include <cmath>
#include <vector>

static float soundLength(float length) {
    constexpr float longest = 1e6f;
    return length > 0 ? std::min(length, longest) : 0;
}

namespace {
/// What stands in a cell: one of both, or neither for space.
struct Cell {
    _KXUIWidget* widget = nullptr;
    _KXUILayoutParts* layout = nullptr;
    KXUILayoutItem item = {};
    unsigned sizeChanges = 0; // of the widget, up to now
    bool wasVisible = false;

    bool isVisible() const;
    bool hasChanged() const;
    float width() const;
    float heightAt(float width) const;
    void place(KXRect room);

private:
    KXSize natural() const { return widget ? widget->_naturalSize() : KXZeroSize; }
};

/// The columns or the rows of a layout.
class Tracks {
public:
    void clear(std::size_t count) { _all.assign(count, {}); }
    void take(std::size_t index, float length, float stretch) {
        Track& track = _all[index];
        track.isUsed = true;
        track.length = std::max(track.length, length);
        track.stretch = std::max(track.stretch, stretch);
    }
    float length(float gap) const {
        float sum = 0;
        for (const Track& track : _all)
            if (track.isUsed)
                sum += track.length + gap;
        return sum > 0 ? sum - gap : 0;
    }
    /// Shares a length out from a place on. @param isSole a single track that takes all of it.
    void place(float start, float available, float gap, bool isSole);
    float begin(std::size_t index) const { return _all[index].begin; }
    float extent(std::size_t index) const { return _all[index].end - _all[index].begin; }

private:
    struct Track {
        bool isUsed = false; // one without anything to be seen has not even a gap
        float length = 0, stretch = 0, begin = 0, end = 0;
    };
    std::vector<Track> _all;
};
} // namespace

struct _KXUILayoutParts {
    KXUILayoutKind kind;
    std::size_t gridColumns;
    float gap = 4, padding = 0;
    std::vector<Cell> cells = {};
    _KXUILayoutParts* parent = nullptr;
    KXUILayout* owner = nullptr;
    KXRect rect = KXZeroRect;
    bool isPlaced = false;
    Tracks columns = {}, rows = {};

    std::size_t columnCount() const {
        return kind == KXUIRow      ? std::max<std::size_t>(1, cells.size())
               : kind == KXUIColumn ? 1
                                    : gridColumns;
    }
    std::size_t rowCount() const { return (cells.size() + columnCount() - 1) / columnCount(); }
    bool holds(const _KXUILayoutParts& other) const;
    bool isEmpty() const;
    bool hasChanged() const;
    float width();
    float heightAt(float width);
    void place(KXRect room);
    KXUILayoutItem itemOf(float stretch) const;
    void measureColumns();
    void measureRows();
    void add(const Cell& cell) {
        cells.push_back(cell);
        isPlaced = false;
    }
    template<class Found>
    void remove(Found found) {
        if (std::erase_if(cells, found) > 0)
            isPlaced = false;
    }
};

bool Cell::isVisible() const { return widget ? widget->isVisible() != 0 : !layout || !layout->isEmpty(); }

bool Cell::hasChanged() const {
    return isVisible() != wasVisible || (widget && widget->_sizeChangeCount() != sizeChanges) ||
           (layout && layout->hasChanged());
}

float Cell::width() const {
    if (const float width = soundLength(item.width))
        return width;
    if (auto* const label = dynamic_cast<KXUILabel*>(widget))
        return label->_sizeAt(0).width;
    return layout ? layout->width() : soundLength(natural().width);
}

float Cell::heightAt(float width) const {
    if (const float height = soundLength(item.height))
        return height;
    if (auto* const label = dynamic_cast<KXUILabel*>(widget))
        return label->_sizeAt(std::max(1.0f, width)).height;
    return layout ? layout->heightAt(width) : soundLength(natural().height);
}

// Where something of a length begins between two places.
static float startIn(float begin, float end, float length, KXUIPlace place) {
    const float rest = end - begin - length;
    return place == KXUIPlaceCentre ? begin + std::floor(rest / 2)
           : place == KXUIPlaceEnd  ? begin + rest
                                    : begin;
}

void Cell::place(KXRect room) {
    wasVisible = isVisible();
    if (!wasVisible || (!widget && !layout))
        return;
    KXRect rect = room;
    if (item.horizontal != KXUIPlaceFill)
        rect.size.width = std::min(width(), room.size.width);
    auto* const label = dynamic_cast<KXUILabel*>(widget);
    const bool fills = item.vertical == KXUIPlaceFill;
    if (!fills || label)
        rect.size.height = heightAt(rect.size.width);
    rect.origin.x = startIn(room.origin.x, room.origin.x + room.size.width, rect.size.width, item.horizontal);
    rect.origin.y = startIn(room.origin.y, room.origin.y + room.size.height, rect.size.height,
                            fills && label ? KXUIPlaceCentre : item.vertical);
    if (layout)
        return layout->place(rect);
    if (label)
        rect.size.height = -1; // it follows its text
    widget->_place(rect);
    sizeChanges = widget->_sizeChangeCount();
}

// What is left over goes to those that stretch, and what is missing is taken from them. Edges are rounded and
// not lengths, so that the last one is where the layout ends.
void Tracks::place(float start, float available, float gap, bool isSole) {
    const float rest = available - length(gap);
    float stretch = 0, stretching = 0;
    for (const Track& track : _all) {
        stretch += track.stretch;
        stretching += track.stretch > 0 ? track.length : 0;
    }
    for (Track& track : _all) {
        float length = track.length;
        if (isSole)
            length = std::max(0.0f, available);
        else if (rest > 0 && stretch > 0)
            length += rest * (track.stretch / stretch);
        else if (rest < 0 && track.stretch > 0 && stretching > 0)
            length *= std::max(0.0f, 1 + rest / stretching);
        track.begin = std::round(start);
        track.end = std::round(start + length);
        if (track.isUsed)
            start += length + gap;
    }
}

bool _KXUILayoutParts::holds(const _KXUILayoutParts& other) const {
    for (const _KXUILayoutParts* each = &other; each; each = each->parent)
        if (each == this)
            return true;
    return false;
}

bool _KXUILayoutParts::isEmpty() const {
    return std::none_of(cells.begin(), cells.end(), [](const Cell& cell) { return cell.isVisible(); });
}

bool _KXUILayoutParts::hasChanged() const {
    return !isPlaced ||
           std::any_of(cells.begin(), cells.end(), [](const Cell& cell) { return cell.hasChanged(); });
}

void _KXUILayoutParts::measureColumns() {
    const std::size_t count = columnCount();
    columns.clear(count);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (cells[i].isVisible())
            columns.take(i % count, cells[i].width(), soundLength(cells[i].item.stretchWidth));
    }
}

// The columns must have their places.
void _KXUILayoutParts::measureRows() {
    const std::size_t count = columnCount();
    rows.clear(rowCount());
    for (std::size_t i = 0; i < cells.size(); ++i)
        if (cells[i].isVisible())
            rows.take(i / count, cells[i].heightAt(columns.extent(i % count)),
                      soundLength(cells[i].item.stretchHeight));
}

float _KXUILayoutParts::width() {
    measureColumns();
    return columns.length(gap) + 2 * padding;
}

float _KXUILayoutParts::heightAt(float width) {
    measureColumns();
    columns.place(padding, width - 2 * padding, gap, kind == KXUIColumn);
    measureRows();
    return rows.length(gap) + 2 * padding;
}

void _KXUILayoutParts::place(KXRect room) {
    isPlaced = false; // should memory run out meanwhile
    heightAt(room.size.width);
    rows.place(padding, room.size.height - 2 * padding, gap, kind == KXUIRow);
    const std::size_t count = columnCount();
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::size_t column = i % count, row = i / count;
        cells[i].place({{room.origin.x + columns.begin(column), room.origin.y + rows.begin(row)},
                        {columns.extent(column), rows.extent(row)}});
    }
    rect = room;
    isPlaced = true;
}

KXUILayoutItem _KXUILayoutParts::itemOf(float stretch) const {
    KXUILayoutItem item;
    (kind == KXUIColumn ? item.stretchHeight : item.stretchWidth) = stretch;
    return item;
}

KXUILayout::KXUILayout(KXUILayoutKind kind, int columns)
    : _parts(std::make_unique<_KXUILayoutParts>(
          _KXUILayoutParts{kind, static_cast<std::size_t>(std::max(1, columns))})) {
    _parts->owner = this;
}

KXUILayout::~KXUILayout() {
    if (_parts->parent)
        _parts->parent->owner->remove(*this);
    for (const Cell& cell : _parts->cells)
        if (cell.widget)
            cell.widget->_layout = nullptr;
        else if (cell.layout)
            cell.layout->parent = nullptr;
}

void KXUILayout::add(_KXUIWidget& widget, float stretch) { add(widget, _parts->itemOf(stretch)); }

void KXUILayout::add(_KXUIWidget& widget, const KXUILayoutItem& item) {
    Cell cell;
    cell.widget = &widget;
    cell.item = item;
    if (widget._layout == this)
        remove(widget);
    _parts->add(cell);
    if (widget._layout)
        widget._layout->remove(widget);
    widget._layout = this;
}

void KXUILayout::add(KXUILayout& layout, float stretch) { add(layout, _parts->itemOf(stretch)); }

void KXUILayout::add(KXUILayout& layout, const KXUILayoutItem& item) {
    if (layout._parts->holds(*_parts))
        return;
    Cell cell;
    cell.layout = layout._parts.get();
    cell.item = item;
    if (layout._parts->parent == _parts.get())
        remove(layout);
    _parts->add(cell);
    if (layout._parts->parent)
        layout._parts->parent->owner->remove(layout);
    layout._parts->parent = _parts.get();
}

void KXUILayout::addSpace(float length, float stretch) {
    Cell cell;
    cell.item = _parts->itemOf(stretch);
    (_parts->kind == KXUIColumn ? cell.item.height : cell.item.width) = length;
    _parts->add(cell);
}

void KXUILayout::remove(_KXUIWidget& widget) {
    if (widget._layout != this)
        return;
    widget._layout = nullptr;
    _forget(widget);
}

void KXUILayout::remove(KXUILayout& layout) {
    if (layout._parts->parent != _parts.get())
        return;
    layout._parts->parent = nullptr;
    _parts->remove([&](const Cell& cell) { return cell.layout == layout._parts.get(); });
}

/// A widget ends, or is taken out.
void KXUILayout::_forget(const _KXUIWidget& widget) {
    _parts->remove([&](const Cell& cell) { return cell.widget == &widget; });
}

void KXUILayout::setGap(float gap) {
    _parts->gap = soundLength(gap);
    _parts->isPlaced = false;
}

void KXUILayout::setPadding(float padding) {
    _parts->padding = soundLength(padding);
    _parts->isPlaced = false;
}

KXSize KXUILayout::size() const {
    const float width = _parts->width();
    return {width, _parts->heightAt(width)};
}

void KXUILayout::setRect(KXPoint origin, KXSize size) {
    if (!std::isfinite(origin.x) || !std::isfinite(origin.y))
        return;
    const KXRect rect = _KXRectBetween(_KXWholePixel(origin.x), _KXWholePixel(origin.y),
                                       _KXWholePixel(origin.x + soundLength(size.width)),
                                       _KXWholePixel(origin.y + soundLength(size.height)));
    if (_parts->hasChanged() || !KXEqualRects(rect, _parts->rect))
        _parts->place(rect);
}
