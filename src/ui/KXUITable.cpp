#include "ui/KXUITable.h"

#include "platform/Locale.h"
#include "render/GraphicsContext.h"
#include "ui/Description.h"
#include "ui/WidgetDrawing.h"
#include "util/TextOrder.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <new>
#include <utility>

KXUITable::State::Row* KXUITable::State::find(int id) {
    const auto found = rows.find(id);
    return found == rows.end() ? nullptr : &found->second;
}

const char* KXUITable::State::textOf(const _KXListItem& item) const {
    const auto& row = static_cast<const Row&>(item);
    const auto column = static_cast<std::size_t>(std::max(0, sort));
    return column < row.cells.size() ? row.cells[column].c_str() : "";
}

void KXUITable::State::forgetKeys() {
    for (Row* const row : order)
        row->hasKey = false;
    isShown = false;
}

// The number that a text begins with; the least of all for one that begins with none.
static double numberIn(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(" \t+-.");
    const bool isOne = begin != std::string::npos && text[begin] >= '0' && text[begin] <= '9';
    return isOne ? _KXNumberIn(text.c_str()) : -std::numeric_limits<double>::infinity();
}

void KXUITable::State::makeKey(Row& row) const {
    const std::string& text = row.cells[static_cast<std::size_t>(sort)];
    if (columns[static_cast<std::size_t>(sort)].isNumeric)
        row.value = numberIn(text);
    else
        row.key = _KXNaturalSortKey(text.c_str());
    row.hasKey = true;
}

void KXUITable::State::sortRows() {
    const bool isNumeric = sort != -1 && columnOf(sort).isNumeric;
    for (Row* const row : order)
        if (sort != -1 && !row->hasKey)
            makeKey(*row);
    const auto compare = [&](const Row& a, const Row& b) {
        return isNumeric ? (a.value < b.value ? -1 : a.value > b.value ? 1 : 0) : a.key.compare(b.key);
    };
    std::sort(order.begin(), order.end(), [&](const Row* a, const Row* b) {
        const int way = sort == -1 ? 0 : compare(*a, *b);
        return way == 0 ? a->id < b->id : (way < 0) != descending;
    });
}

/// Brings all to where it is now.
void KXUITable::State::look() {
    lay();
    if (isShown)
        return;
    sortRows();
    show({order.begin(), order.end()});
    isShown = true;
}

/// Sorts by a column. Where memory lacks for that it is sorted as before.
void KXUITable::State::sortTo(int column, bool descends) {
    const std::pair before = {sort, descending};
    const auto set = [this](int by, bool down) {
        if (by != sort)
            forgetKeys();
        sort = by;
        descending = down;
        isShown = false;
    };
    set(column, descends);
    try {
        look();
    } catch (const std::bad_alloc&) {
        set(before.first, before.second);
        throw;
    }
}

KXUITable::KXUITable() : _state(std::make_unique<State>(*this)) { setColors(_state->colors); }

KXUITable::~KXUITable() = default;

static float soundWidth(float width) {
    constexpr float least = 16, most = 10'000;
    return width > least ? std::round(std::min(width, most)) : least;
}

int KXUITable::addColumn(const KXUITableColumn& column) {
    State& state = *_state;
    State::Column made = {
        column.title ? column.title : "", soundWidth(column.width), column.align, column.numeric != 0, {}};
    state.columns.reserve(state.columns.size() + 1);
    for (State::Row* const row : state.order)
        row->cells.reserve(state.columns.size() + 1); // the last that may lack memory
    for (State::Row* const row : state.order)
        row->cells.emplace_back();
    state.columns.push_back(std::move(made));
    return columnCount() - 1;
}

int KXUITable::columnCount() const { return static_cast<int>(_state->columns.size()); }

int KXUITable::setColumnWidth(int column, float pixels) {
    if (!_state->isColumn(column))
        return 0;
    _state->columnOf(column).width = soundWidth(pixels);
    return -1;
}

float KXUITable::columnWidth(int column) const {
    return _state->isColumn(column) ? _state->columnOf(column).width : 0;
}

int KXUITable::fitColumn(int column) {
    if (!_state->isColumn(column))
        return 0;
    _state->look();
    _state->fit(column);
    return -1;
}

int KXUITable::addRow(std::initializer_list<const char*> cells) {
    State& state = *_state;
    if (state.lastID == INT_MAX)
        return 0;
    std::vector<std::string> texts(state.columns.size());
    for (std::size_t i = 0; i < std::min(texts.size(), cells.size()); ++i)
        texts[i] = cells.begin()[i] ? cells.begin()[i] : "";
    if (state.order.size() == state.order.capacity())
        state.order.reserve(2 * state.order.size() + 1);
    State::Row& row = state.rows[state.lastID + 1]; // the last that may lack memory
    row.id = ++state.lastID;
    row.cells = std::move(texts);
    state.order.push_back(&row);
    state.isShown = false;
    return row.id;
}

int KXUITable::setCell(int id, int column, const char* text) {
    State::Row* const row = _state->find(id);
    if (!row || !_state->isColumn(column) || !text)
        return 0;
    row->cells[static_cast<std::size_t>(column)] = std::string(text); // it may be part of the old one
    if (column == _state->sort) {
        row->hasKey = false;
        _state->isShown = false;
    }
    return -1;
}

const char* KXUITable::cell(int id, int column) const {
    const State::Row* const row = _state->find(id);
    return row && _state->isColumn(column) ? row->cells[static_cast<std::size_t>(column)].c_str() : nullptr;
}

int KXUITable::removeRow(int id) {
    State::Row* const row = _state->find(id);
    if (!row)
        return 0;
    std::erase(_state->order, row);
    _state->forget(*row);
    _state->rows.erase(id);
    _state->isShown = false;
    return -1;
}

void KXUITable::clear() {
    _state->show({});
    _state->rows.clear();
    _state->order.clear();
    _state->isShown = true;
}

int KXUITable::rowCount() const { return static_cast<int>(_state->rows.size()); }

int KXUITable::rowAt(int place) const {
    _state->look();
    const auto* const row = static_cast<const State::Row*>(_state->itemAt(place));
    return row ? row->id : 0;
}

int KXUITable::rowUnder(KXPoint point) {
    _state->look();
    return rowAt(_state->list.indexAt(point));
}

int KXUITable::sortBy(int column, int descending) {
    if (column != -1 && !_state->isColumn(column))
        return 0;
    _state->sortTo(column, column != -1 && descending);
    return -1;
}

int KXUITable::sortColumn() const { return _state->sort; }
int KXUITable::isDescending() const { return _state->descending ? -1 : 0; }

int KXUITable::selectedRow() const {
    _state->look(); // which may give it another place
    return rowAt(_state->list.selectedIndex());
}

int KXUITable::setSelectedRow(int id) {
    _state->look();
    const State::Row* const row = _state->find(id);
    return row || id == 0 ? _state->list.setSelectedIndex(row ? row->row : -1) : 0;
}

void KXUITable::setMultipleSelection(int multiple) {
    _state->look();
    _state->list.setMultipleSelection(multiple);
}

int KXUITable::isSelected(int id) const {
    _state->look();
    const State::Row* const row = _state->find(id);
    return row ? _state->list.isSelected(row->row) : 0;
}

int KXUITable::setSelected(int id, int selected) {
    _state->look();
    const State::Row* const row = _state->find(id);
    return row ? _state->list.setSelected(row->row, selected) : 0;
}

int KXUITable::nextSelectedRow(int after) const {
    _state->look();
    const State::Row* const row = _state->find(after);
    return row || after == 0 ? rowAt(_state->list.nextSelectedIndex(row ? row->row : -1)) : 0;
}

int KXUITable::scrollTo(int id) {
    _state->look();
    const State::Row* const row = _state->find(id);
    return row ? _state->list.scrollTo(row->row) : 0;
}

void KXUITable::setFocus(int focus) { focus ? _state->takeKeyboard() : _state->giveUpKeyboard(); }
int KXUITable::hasFocus() const { return _state->hasKeyboard() ? -1 : 0; }
int KXUITable::selectionChanged() const { return _state->list.selectionChanged(); }
int KXUITable::sortChanged() const { return _state->sorted ? -1 : 0; }
int KXUITable::activatedRow() const { return _state->activated; }

int KXUITable::setFont(const char* path, KXAliasMode mode) {
    _state->list.setFont(path, mode);
    return _KXUIWidget::setFont(path, mode);
}

int KXUITable::setFontSize(int size) {
    return _KXUIWidget::setFontSize(size) ? _state->list.setFontSize(size) : 0;
}

void KXUITable::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    _state->windowID = id;
    _state->list.setWindowID(id);
    _state->bar.setWindowID(id);
}

void KXUITable::setColors(const KXUIColors& colors) {
    _state->setColors(colors);
    _state->bar.setColors(colors);
}

void KXUITable::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing || !_KXCurrentGraphicsContext)
        return;
    State& state = *_state;
    state.look();
    state.list.draw();
    state.drawHeader();
    if (state.bar.rect().size.height > 0)
        state.bar.draw();
}

int KXUITable::pollInPanel() { return poll(); }
int KXUITable::takesWheel() const { return -1; }
_KXFocus* KXUITable::keyboardPart() { return _state.get(); }

KXUIDescription KXUITable::description() const {
    KXUIDescription said = _described("table", nullptr);
    if (const State::Row* const row = _state->find(selectedRow()))
        for (const std::string& cell : row->cells)
            said.value += (said.value.empty() || cell.empty() ? "" : ", ") + _KXSpokenText(cell.c_str());
    if (_state->sort != -1)
        _KXAddState(said,
                    ("sorted by " + _KXSpokenText(_state->columnOf(_state->sort).title.c_str())).c_str());
    return said;
}
