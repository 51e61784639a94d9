#include "ui/KXUIListBox.h"

#include "core/ground/UIColors.h"
#include "ui/Description.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXString.h>

#include <algorithm>
#include <climits>
#include <utility>

KXUIListBox::KXUIListBox()
    : _backgroundColor(_KXUIBackroundColor), _borderColor(_KXUIBorderColor), _textColor(_KXUITextColor),
      _selectionColor(_KXUISelectionColor), _focusColor(_KXUIFocusColor),
      _trackColor(_KXUIBackgroundColor_Interaction), _knobColor(_KXUIBackroundColor),
      _state(std::make_unique<State>(*this)) {}

KXUIListBox::~KXUIListBox() = default;

KXUIDescription KXUIListBox::description() const {
    KXUIDescription said = _described("list", nullptr);
    if (const char* const row = text(selectedIndex()))
        said.value = _KXSpokenText(row);
    return said;
}

bool KXUIListBox::_isRow(int index) const { return index >= 0 && index < count(); }

// Row numbers mean other rows now, so nothing that was kept for a number holds.
void KXUIListBox::_rowsChanged() {
    _state->shown.clear();
    _state->lastPressed = _state->activatedNow = -1;
}

int KXUIListBox::count() const { return static_cast<int>(_state->rows.size()); }

int KXUIListBox::add(const char* text) {
    if (!text || count() == INT_MAX)
        return -1;
    _state->rows.push_back({text});
    return count() - 1;
}

int KXUIListBox::insert(int index, const char* text) {
    if (index == count())
        return add(text);
    if (!text || !_isRow(index) || count() == INT_MAX)
        return -1;
    _state->rows.insert(_state->rows.begin() + index, {text});
    for (int* row : {&_state->selected, &_state->anchor, &_state->rowToReveal})
        if (*row >= index)
            ++*row;
    _rowsChanged();
    return index;
}

int KXUIListBox::remove(int index) {
    if (!_isRow(index))
        return 0;
    _state->rows.erase(_state->rows.begin() + index);
    for (int* row : {&_state->selected, &_state->anchor, &_state->rowToReveal}) {
        if (*row == index)
            *row = -1;
        else if (*row > index)
            --*row;
    }
    _rowsChanged();
    return -1;
}

int KXUIListBox::rename(int index, const char* text) {
    if (!text || !_isRow(index))
        return 0;
    _state->rows[index].text = std::string(text); // the new text may be part of the old one
    for (State::Shown& shown : _state->shown)
        if (shown.row == index)
            shown.row = -1;
    return -1;
}

void KXUIListBox::clear() {
    _state->rows.clear();
    _state->selected = _state->anchor = _state->rowToReveal = -1;
    _state->scrolled = 0;
    _rowsChanged();
}

const char* KXUIListBox::text(int index) const {
    if (!_isRow(index))
        return nullptr;
    constexpr std::size_t longest = 1023; // that a temporary string can be
    return KXTempString("%s", _KXFirstBytes(_state->rows[index].text.c_str(), longest).c_str());
}

int KXUIListBox::selectedIndex() const { return _state->selected; }

int KXUIListBox::setSelectedIndex(int index) {
    if (index != -1 && !_isRow(index))
        return 0;
    _state->selected = _state->anchor = index;
    if (index != -1)
        _state->rowToReveal = index;
    if (_state->several)
        _selectOnly(index, index);
    return -1;
}

// Of several rows those from one to another, in either order; none for -1.
void KXUIListBox::_selectOnly(int from, int to) {
    for (State::Row& row : _state->rows)
        row.isSelected = false;
    if (from != -1)
        for (int row = std::min(from, to); row <= std::max(from, to); ++row)
            _state->rows[row].isSelected = true;
}

void KXUIListBox::setMultipleSelection(int multiple) {
    _state->several = multiple;
    _selectOnly(_state->several ? _state->selected : -1, _state->selected);
}

int KXUIListBox::hasMultipleSelection() const { return _state->several ? -1 : 0; }

int KXUIListBox::isSelected(int index) const {
    return _isRow(index) && (_state->several ? _state->rows[index].isSelected : index == _state->selected)
               ? -1
               : 0;
}

int KXUIListBox::setSelected(int index, int selected) {
    if (!_isRow(index))
        return 0;
    if (_state->several)
        _state->rows[index].isSelected = selected;
    else if (selected)
        setSelectedIndex(index);
    else if (index == _state->selected)
        setSelectedIndex(-1);
    return -1;
}

int KXUIListBox::nextSelectedIndex(int after) const {
    for (int row = std::max(after, -1); row < count() - 1;)
        if (isSelected(++row))
            return row;
    return -1;
}

int KXUIListBox::scrollTo(int index) {
    if (!_isRow(index))
        return 0;
    _state->rowToReveal = index;
    return -1;
}

int KXUIListBox::selectionChanged() const { return _state->changed ? -1 : 0; }

int KXUIListBox::activatedIndex() const { return _state->activated; }

/// Lists other rows than before, none of them selected.
void KXUIListBox::_setRows(std::vector<std::string> rows) {
    decltype(_state->rows) made;
    made.reserve(rows.size()); // all that may lack memory
    for (std::string& row : rows)
        made.push_back({std::move(row)});
    clear();
    _state->details.clear();
    _state->rows = std::move(made);
}

/// What stands behind the texts of the rows that were set last.
void KXUIListBox::_setDetails(std::vector<std::array<std::string, 2>> details) {
    _state->details = std::move(details);
    _state->shown.clear();
}

void KXUIListBox::_setDetailWidths(const std::array<int, 2>& widths) { _state->detailWidths = widths; }

/// Takes braces for text, for rows that are names of files.
void KXUIListBox::_showTextsAsTheyAre() {
    _state->spans = _KXSpans::Plain;
    _state->shown.clear();
}

void KXUIListBox::setBackgroundColor(KXColor color) { _backgroundColor = color; }
void KXUIListBox::setBorderColor(KXColor color) { _borderColor = color; }
void KXUIListBox::setTextColor(KXColor color) { _textColor = color; }
void KXUIListBox::setSelectionColor(KXColor color) { _selectionColor = color; }
void KXUIListBox::setFocusColor(KXColor color) { _focusColor = color; }
void KXUIListBox::setTrackColor(KXColor color) { _trackColor = color; }
void KXUIListBox::setKnobColor(KXColor color) { _knobColor = color; }

void KXUIListBox::setBackgroundColor(float r, float g, float b, float a) { setBackgroundColor({r, g, b, a}); }
void KXUIListBox::setBorderColor(float r, float g, float b, float a) { setBorderColor({r, g, b, a}); }
void KXUIListBox::setTextColor(float r, float g, float b, float a) { setTextColor({r, g, b, a}); }
void KXUIListBox::setSelectionColor(float r, float g, float b, float a) { setSelectionColor({r, g, b, a}); }
void KXUIListBox::setFocusColor(float r, float g, float b, float a) { setFocusColor({r, g, b, a}); }
void KXUIListBox::setTrackColor(float r, float g, float b, float a) { setTrackColor({r, g, b, a}); }
void KXUIListBox::setKnobColor(float r, float g, float b, float a) { setKnobColor({r, g, b, a}); }
