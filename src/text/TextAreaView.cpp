#include "text/TextAreaView.h"

#include <algorithm>
#include <cmath>
#include <limits>

// Weights of the scroll bar: a line is one, and so are that many bytes of a line that is shown in many rows.
static constexpr double bytesOfUnwrappedRow = 4 * _KXTextAreaView::longestPiece;

static int whole(float pixels) { return static_cast<int>(std::ceil(pixels)); }

// ---- pieces

// The piece that a position is in; where one ends and another begins, the latter.
_KXTextAreaView::Piece _KXTextAreaView::pieceAt(std::size_t position) const {
    const std::size_t line = _edit.lineOf(position), start = _edit.lineStart(line), end = _edit.lineEnd(line);
    const auto cut = [&](std::size_t number) {
        return std::min(end, _edit.characterStart(start + number * longestPiece));
    };
    std::size_t number = (position - start) / longestPiece;
    if (position < end && cut(number + 1) == position) // moved back to where a character begins
        ++number;
    while (number > 0 && cut(number) == end)
        --number;
    const std::size_t begin = cut(number), pieceEnd = cut(number + 1);
    return {line, begin, pieceEnd, begin == start, pieceEnd == end};
}

bool _KXTextAreaView::pieceAfter(Piece& piece) const {
    const std::size_t next = piece.endsLine ? piece.end + 1 : piece.end;
    if (next > _edit.size())
        return false;
    piece = pieceAt(next);
    return true;
}

bool _KXTextAreaView::pieceBefore(Piece& piece) const {
    if (piece.begin == 0)
        return false;
    piece = pieceAt(_edit.before(piece.begin)); // in the piece before, or the line feed at its end
    return true;
}

bool _KXTextAreaView::composesIn(const Piece& piece) const {
    return !_composition.empty() && pieceAt(_edit.cursor()) == piece;
}

// The layout of what a piece says, found or made. It stays until others are asked for.
_KXTextAreaView::Kept& _KXTextAreaView::keptLayout(const Piece& piece) {
    _scratch.clear();
    _edit.copyTo(_scratch, piece.begin, piece.end);
    if (composesIn(piece))
        _scratch.insert(_edit.cursor() - piece.begin, _composition);
    const auto found =
        std::find_if(_kept.begin(), _kept.end(), [&](const auto& kept) { return kept->text == _scratch; });
    if (found != _kept.end()) {
        Kept& kept = **found;
        kept.layout.layOut(*_look.font, kept.text.c_str(), _options);
        kept.used = ++_uses;
        return kept;
    }
    const std::size_t enough = 4 * _shown.size() + 32;
    Kept* oldest = nullptr;
    if (_kept.size() >= enough)
        for (const auto& kept : _kept)
            if (!kept->isShown && (!oldest || kept->used < oldest->used))
                oldest = kept.get();
    if (!oldest) {
        _kept.push_back(std::make_unique<Kept>());
        oldest = _kept.back().get();
    }
    ++_layoutsMade;
    oldest->layout.layOut(*_look.font, _scratch.c_str(), _options);
    oldest->text = _scratch;
    oldest->used = ++_uses;
    return *oldest;
}

int _KXTextAreaView::heightOf(const Piece& piece) {
    const KXTextLayout& layout = layoutOf(piece);
    const KXTextLine last = layout.line(layout.lineCount() - 1);
    return whole(last.rect.origin.y) + std::max(_rowHeight, whole(last.rect.size.height));
}

// What a position is in the text of a layout, and the reverse: it may hold what is composed.
int _KXTextAreaView::indexOf(const Piece& piece, std::size_t position) const {
    const std::size_t added =
        position >= _edit.cursor() && composesIn(piece) ? _composition.size() : std::size_t{0};
    return static_cast<int>(position - piece.begin + added);
}

std::size_t _KXTextAreaView::positionOf(const Piece& piece, int index) const {
    std::size_t position = piece.begin + static_cast<std::size_t>(index);
    if (position > _edit.cursor() && composesIn(piece))
        position = std::max(_edit.cursor(), position - std::min(position, _composition.size()));
    return _edit.characterStart(std::min(position, piece.end));
}

// ---- rows

_KXTextAreaView::Row _KXTextAreaView::rowOf(std::size_t position) {
    const Piece piece = pieceAt(position);
    const KXTextLayout& layout = layoutOf(piece);
    const int index = indexOf(piece, position);
    int row = layout.lineCount() - 1;
    while (row > 0 && layout.line(row).begin > index)
        --row;
    return {piece, row};
}

// A caret behind a row that goes on in the next one would stand there.
std::size_t _KXTextAreaView::lastPositionIn(const Row& row) {
    const KXTextLayout& layout = layoutOf(row.piece);
    const KXTextLine line = layout.line(row.index);
    const std::size_t end = positionOf(row.piece, line.end);
    const bool goesOn = row.index + 1 < layout.lineCount() || !row.piece.endsLine;
    return goesOn && line.end > line.begin ? std::max(_edit.before(end), positionOf(row.piece, line.begin))
                                           : end;
}

std::size_t _KXTextAreaView::hitInRow(const Row& row, float x) {
    const KXTextLine line = lineOfRow(row);
    const int caret = layoutOf(row.piece).hit({x, line.rect.origin.y + 1}).caret;
    return std::min(positionOf(row.piece, caret), lastPositionIn(row));
}

std::size_t _KXTextAreaView::rowsBelow(std::size_t position, int rows, float x) {
    if (!_look.font)
        return position;
    Row row = rowOf(position);
    for (; rows > 0; --rows) {
        if (row.index + 1 < layoutOf(row.piece).lineCount())
            ++row.index;
        else if (pieceAfter(row.piece))
            row.index = 0;
        else
            return _edit.size();
    }
    for (; rows < 0; ++rows) {
        if (row.index > 0)
            --row.index;
        else if (pieceBefore(row.piece))
            row.index = layoutOf(row.piece).lineCount() - 1;
        else
            return 0;
    }
    return hitInRow(row, x);
}

float _KXTextAreaView::xOf(std::size_t position) {
    if (!_look.font)
        return 0;
    const Piece piece = pieceAt(position);
    return layoutOf(piece).caret(indexOf(piece, position)).origin.x;
}

std::size_t _KXTextAreaView::rowStart(std::size_t position) {
    if (!_look.font)
        return pieceAt(position).begin;
    const Row row = rowOf(position);
    return positionOf(row.piece, lineOfRow(row).begin);
}

std::size_t _KXTextAreaView::rowEnd(std::size_t position) {
    return _look.font ? lastPositionIn(rowOf(position)) : pieceAt(position).end;
}

int _KXTextAreaView::pageRows() const { return std::max(1, static_cast<int>(_look.height) / _rowHeight - 1); }

_KXTextAreaView::Hit _KXTextAreaView::hit(KXPoint place) {
    if (_shown.empty())
        return {_edit.cursor(), _edit.cursor()};
    auto at = std::find_if(_shown.rbegin(), _shown.rend(),
                           [&](const Shown& shown) { return static_cast<float>(shown.top) <= place.y; });
    const Shown& shown = at == _shown.rend() ? _shown.front() : *at;
    const KXTextLayout& layout = *shown.layout;
    const KXPoint point = {place.x + static_cast<float>(_right), place.y - static_cast<float>(shown.top)};
    const KXTextHit found = layout.hit(point);
    Row row = {shown.piece, layout.lineCount() - 1};
    while (row.index > 0 && layout.line(row.index).rect.origin.y > point.y)
        --row.index;
    return {positionOf(shown.piece, found.character),
            std::min(positionOf(shown.piece, found.caret), lastPositionIn(row))};
}

// ---- scrolling

void _KXTextAreaView::scrollBy(double pixels) {
    if (pixels == 0 || !(std::fabs(pixels) < 1e15))
        return;
    _isSettled = false;
    if (std::fabs(pixels) <= 20.0 * std::max(_look.height, 100.0f))
        _hidden += pixels;
    else // so far that nobody sees how far exactly
        scrollTo(_extent.before + pixels / _rowHeight);
}

void _KXTextAreaView::scrollRightBy(int pixels) {
    const int furthest = std::max(0, _widest + whole(_blank) - static_cast<int>(_look.width));
    _right = _look.wraps ? 0 : std::clamp(_right + pixels, 0, furthest);
}

// The weight before a position never falls from one to the next, so it is searched.
void _KXTextAreaView::scrollTo(double before) {
    _isSettled = false;
    std::size_t from = 0, behind = _edit.size() + 1;
    while (behind - from > 1) {
        const std::size_t middle = from + (behind - from) / 2;
        if (weightBefore(pieceAt(_edit.characterStart(middle))) <= before)
            from = middle;
        else
            behind = middle;
    }
    const Piece piece = pieceAt(_edit.characterStart(from));
    _top = piece.begin;
    _hidden = 0;
    if (!_look.font || !(before > 0))
        return;
    const double weight = weightBehind(piece) - weightBefore(piece);
    const double part = std::clamp((before - weightBefore(piece)) / weight, 0.0, 1.0);
    _hidden = std::floor(part * heightOf(piece));
}

void _KXTextAreaView::scrollToRowOf(std::size_t position) {
    const Piece piece = pieceAt(position);
    _isSettled = false;
    _revision = _edit.revision(); // the cursor stays where it is
    _top = piece.begin;
    _hidden = _look.font ? std::floor(layoutOf(piece).caret(indexOf(piece, position)).origin.y) : 0;
}

double _KXTextAreaView::weightBefore(const Piece& piece) const {
    const double bytesOfRow =
        _look.wraps ? std::max(1.0, static_cast<double>(_look.width / std::max(1.0f, 2 * _blank)))
                    : bytesOfUnwrappedRow;
    return static_cast<double>(piece.line) + static_cast<double>(piece.begin) / bytesOfRow;
}

double _KXTextAreaView::weightBehind(const Piece& piece) const {
    const std::size_t next = piece.endsLine ? piece.end + 1 : piece.end;
    return weightBefore({piece.line + (piece.endsLine ? 1 : 0), next, next, false, false});
}

// Makes the piece of the top the one that the upper edge lies in.
void _KXTextAreaView::settleTop() {
    Piece piece = pieceAt(_edit.characterStart(_top));
    while (_hidden < 0 && pieceBefore(piece))
        _hidden += heightOf(piece);
    _hidden = std::max(0.0, _hidden);
    for (int height; _hidden > 0 && _hidden >= (height = heightOf(piece));) {
        if (!pieceAfter(piece)) { // the end comes to the lower edge afterwards
            _hidden = height - 1;
            break;
        }
        _hidden -= height;
    }
    _top = piece.begin;
}

// Scrolls by as little as brings the cursor's row into view.
void _KXTextAreaView::revealCursor() {
    settleTop();
    const Piece wanted = pieceAt(_edit.cursor());
    const KXRect caret = layoutOf(wanted).caret(indexOf(wanted, _edit.cursor()));
    const double top = std::floor(caret.origin.y), view = _look.height;
    const double bottom = top + std::max(_rowHeight, whole(caret.size.height));
    double y = -_hidden;
    Piece piece = pieceAt(_top);
    while (piece != wanted && y < view) {
        y += heightOf(piece);
        if (!pieceAfter(piece))
            break;
    }
    if (piece != wanted) { // it is far away, above or below
        y = wanted.begin < _top ? -1 - bottom : view;
    }
    if (y + top < 0 || bottom - top > view)
        _hidden = top;
    else if (y + bottom > view)
        _hidden = bottom - std::floor(view);
    else
        return;
    _top = wanted.begin;
}

// Lays out what is in view, from the top on. @return how much of the box is left below it.
int _KXTextAreaView::show() {
    for (const auto& kept : _kept)
        kept->isShown = false;
    _shown.clear();
    const int view = static_cast<int>(_look.height);
    int y = -static_cast<int>(_hidden);
    Piece piece = pieceAt(_top);
    do {
        Kept& kept = keptLayout(piece);
        kept.isShown = true;
        _shown.push_back({piece, &kept.layout, y});
        _widest = std::max(_widest, whole(kept.layout.size().width));
        y += heightOf(piece);
    } while (y < view && pieceAfter(piece));
    return view - y;
}

void _KXTextAreaView::measure() {
    const auto weightAt = [this](const Shown& shown, double y) {
        const double height = heightOf(shown.piece), before = weightBefore(shown.piece);
        return before + (weightBehind(shown.piece) - before) * std::clamp(y / height, 0.0, 1.0);
    };
    const Shown &first = _shown.front(), &last = _shown.back();
    _extent.total = weightBehind(pieceAt(_edit.size()));
    _extent.before = weightAt(first, -first.top);
    _extent.inView = weightAt(last, static_cast<double>(_look.height) - last.top) - _extent.before;
}

void _KXTextAreaView::useFont() {
    _fontRevision = _look.font->_currentRevision();
    const KXTextLayout blank(*_look.font, " \n");
    _blank = blank.caret(1).origin.x;
    _rowHeight = std::max(1, whole(blank.line(1).rect.origin.y));
}

void _KXTextAreaView::update(const Look& look, const std::string& composition) {
    Look wanted = look;
    if (wanted.font && wanted.font->_typefacesInUse().empty())
        wanted.font = nullptr;
    const bool fontChanged =
        wanted.font && (wanted.font != _look.font || wanted.font->_currentRevision() != _fontRevision);
    const bool moved = _edit.revision() != _revision || composition != _composition;
    if (_isSettled && !moved && !fontChanged && wanted == _look)
        return;
    _isSettled = false; // for as long as memory may lack
    _look = wanted;
    if (!_look.font) {
        _shown.clear();
        _extent = {1, 0, 1};
        return;
    }
    if (fontChanged)
        useFont();
    _options.plain = -1;
    _options.width = _look.wraps ? std::max(1.0f, _look.width) : 0;
    _options.tabWidth = static_cast<float>(_look.tabWidth) * _blank;
    _composition = composition;
    if (_edit.size() == 0)
        _widest = 0;
    if (moved)
        revealCursor();
    settleTop();
    if (const int left = show(); left > 0 && (_top > 0 || _hidden > 0)) {
        _hidden -= left;
        settleTop();
        show();
    }
    scrollRightBy(0);
    if (moved)
        revealColumn();
    measure();
    _revision = _edit.revision();
    _isSettled = true;
}

void _KXTextAreaView::revealColumn() {
    const int x = static_cast<int>(std::floor(xOf(_edit.cursor()))),
              view = std::max(1, static_cast<int>(_look.width));
    if (!_look.wraps)
        _right = std::max(0, std::clamp(_right, x + 1 - view, x));
}

// ---- what is drawn

KXRect _KXTextAreaView::placeIn(const Shown& shown, KXRect rect) const {
    return {{rect.origin.x - static_cast<float>(_right), rect.origin.y + static_cast<float>(shown.top)},
            rect.size};
}

const _KXTextAreaView::Shown* _KXTextAreaView::shownCursor() const {
    const auto found = std::ranges::find(_shown, pieceAt(_edit.cursor()), &Shown::piece);
    return found == _shown.end() ? nullptr : &*found;
}

bool _KXTextAreaView::cursorRect(KXRect& rect) const {
    const Shown* const shown = shownCursor();
    if (shown)
        rect = placeIn(*shown, shown->layout->caret(indexOf(shown->piece, _edit.cursor())));
    return shown;
}

int _KXTextAreaView::rectsOf(const Shown& shown, int begin, int end, KXRect* rects, int most) const {
    const int count = std::min(most, shown.layout->selection(begin, end, rects, most));
    for (int i = 0; i < count; ++i)
        rects[i] = placeIn(shown, rects[i]);
    return count;
}

int _KXTextAreaView::compositionRects(KXRect* rects, int most) const {
    const Shown* const shown = shownCursor();
    if (!shown || _composition.empty())
        return 0;
    const int end = indexOf(shown->piece, _edit.cursor());
    return rectsOf(*shown, end - static_cast<int>(_composition.size()), end, rects, most);
}

int _KXTextAreaView::selectionRects(const Shown& shown, KXRect* rects, int most) const {
    const Piece& piece = shown.piece;
    const std::size_t begin = _edit.selectionStart(), end = _edit.selectionEnd();
    if (begin == end || begin > piece.end || end < piece.begin || most < 1)
        return 0;
    int count = rectsOf(shown, indexOf(piece, std::max(begin, piece.begin)),
                        indexOf(piece, std::min(end, piece.end)), rects, most - 1);
    if (piece.endsLine && end > piece.end) { // the line feed, too
        rects[count] = placeIn(shown, shown.layout->caret(indexOf(piece, piece.end)));
        rects[count++].size.width = std::max(1.0f, _blank);
    }
    return count;
}
