#include "text/TextRows.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace {
// What stands on a line, in characters.
struct Row {
    std::uint32_t begin, end;
    std::uint32_t blanks; // where those at the end begin
    float width;          // without them
    std::uint8_t level;   // of its paragraph
    bool endsParagraph;
    bool isCut; // an ellipsis follows
};

// Characters of a run that stand on a line, or its ellipsis.
struct Piece {
    std::uint32_t begin, end;
    std::uint32_t run;
    std::uint8_t level;
    bool isEllipsis;
};

class Rows {
public:
    Rows(const _KXShapedText& shaped, const _KXTypefaces& typefaces, const KXTextOptions& options);

    _KXPlacedText place();

private:
    bool wraps() const { return _options.width > 0; }
    float widthAt(std::uint32_t character, float x) const;
    std::uint32_t nextRowEnd(std::uint32_t begin, std::uint32_t end) const;
    void addRow(std::uint32_t begin, std::uint32_t end, const _KXTextParagraph& paragraph);
    void findRows();
    void cutLastRow();

    void placeRow(Row row, float boxWidth);
    void findPieces(const Row& row);
    void orderPieces();
    float startOf(const Row& row, float boxWidth) const;
    void justify(Row& row);
    float placePiece(const Piece& piece, float x);
    float placeEllipsis(const Row& row, float x);
    void placeGlyphs(const Piece& piece, float x);
    void addStops(std::uint32_t begin, std::uint32_t end, float x, float width, bool isRightToLeft);
    void placeVertically(_KXTextRow& placed, std::size_t firstGlyph);
    void alignVertically();

    const _KXShapedText& _shaped;
    const _KXTypefaces& _typefaces;
    const KXTextOptions& _options;
    _KXShapedText _ellipsis;
    float _ellipsisWidth = 0;
    std::vector<Row> _rows;
    std::uint32_t _run = 0; // of the line that is being placed, the first
    std::vector<Piece> _pieces;
    std::vector<float> _widths; // of what each character begins, on its line
    float _y = 0;               // top of the line
    _KXPlacedText _placed;
};
} // namespace

static constexpr std::string_view ellipsis = "…", threeDots = "...";

Rows::Rows(const _KXShapedText& shaped, const _KXTypefaces& typefaces, const KXTextOptions& options)
    : _shaped(shaped), _typefaces(typefaces), _options(options), _widths(shaped.widths) {
    if (options.maxLines <= 0)
        return;
    const bool has = std::any_of(typefaces.begin(), typefaces.end(),
                                 [](const auto& typeface) { return typeface->has(0x2026); });
    _ellipsis = _KXShapeText(has ? ellipsis : threeDots, typefaces, KXTextDirectionLeftToRight);
    for (const float width : _ellipsis.widths)
        _ellipsisWidth += width;
}

// A tab reaches to the next stop.
float Rows::widthAt(std::uint32_t character, float x) const {
    if (_shaped.roles[character] != _KXTextRole::Tab)
        return _shaped.widths[character];
    const float tab = _options.tabWidth;
    return tab > 0 ? (std::floor(x / tab) + 1) * tab - x : 0;
}

static bool isBlank(_KXTextRole role) { return role == _KXTextRole::Blank || role == _KXTextRole::Tab; }

// Where the line that begins at a character ends: where its text fits, or else behind what is drawn as one.
std::uint32_t Rows::nextRowEnd(std::uint32_t begin, std::uint32_t end) const {
    float x = 0;
    std::uint32_t lastBreak = begin;
    for (std::uint32_t i = begin; i < end;) {
        if (_shaped.mayBreakBefore(i))
            lastBreak = i;
        const float width = widthAt(i, x);
        // A hundredth of a pixel is what sums of fractions may lack.
        const bool fits = !wraps() || isBlank(_shaped.roles[i]) || x + width <= _options.width + 0.01f;
        if (!fits && i > begin)
            return lastBreak > begin ? lastBreak : i;
        x += width;
        i = _shaped.afterCluster(i);
    }
    return end;
}

void Rows::addRow(std::uint32_t begin, std::uint32_t end, const _KXTextParagraph& paragraph) {
    Row row = {begin, end, begin, 0, paragraph.level, end == paragraph.end, false};
    float x = 0;
    for (std::uint32_t i = begin; i < end; i = _shaped.afterCluster(i)) {
        const float width = _widths[i] = widthAt(i, x);
        x += width;
        if (!isBlank(_shaped.roles[i])) {
            row.blanks = std::min(end, _shaped.afterCluster(i));
            row.width = x;
        }
    }
    _rows.push_back(row);
}

void Rows::findRows() {
    const auto isFull = [&] {
        return _options.maxLines > 0 && _rows.size() == static_cast<std::size_t>(_options.maxLines);
    };
    for (const _KXTextParagraph& paragraph : _shaped.paragraphs) {
        std::uint32_t begin = paragraph.begin;
        do {
            if (isFull())
                return cutLastRow();
            const std::uint32_t end = nextRowEnd(begin, paragraph.end);
            addRow(begin, end, paragraph);
            begin = end;
        } while (begin < paragraph.end);
    }
}

// The line takes what fits beside the ellipsis, also parts of words.
void Rows::cutLastRow() {
    _placed.isCut = true;
    Row& row = _rows.back();
    const auto paragraph = std::find_if(_shaped.paragraphs.begin(), _shaped.paragraphs.end(),
                                        [&](const _KXTextParagraph& one) { return row.end <= one.end; });
    float x = 0;
    std::uint32_t i = row.begin;
    while (i < paragraph->end) {
        const float width = widthAt(i, x);
        if (wraps() && x + width + _ellipsisWidth > _options.width)
            break;
        x += width;
        i = _shaped.afterCluster(i);
    }
    const _KXTextParagraph whole = *paragraph;
    const std::uint32_t begin = row.begin;
    _rows.pop_back();
    addRow(begin, i, whole);
    Row& cut = _rows.back();
    cut.end = cut.blanks;
    cut.width += _ellipsisWidth;
    cut.endsParagraph = cut.isCut = true;
}

// The parts of runs on a line. Blanks at its end stand where the paragraph ends, whatever they follow.
void Rows::findPieces(const Row& row) {
    _pieces.clear();
    while (_run < _shaped.runs.size() && _shaped.runs[_run].end <= row.begin)
        ++_run;
    for (std::uint32_t i = _run; i < _shaped.runs.size() && _shaped.runs[i].begin < row.end; ++i) {
        const _KXTextRun& run = _shaped.runs[i];
        const std::uint32_t begin = std::max(run.begin, row.begin), end = std::min(run.end, row.end);
        const std::uint32_t blanks = std::clamp(row.blanks, begin, end);
        if (begin < blanks)
            _pieces.push_back({begin, blanks, i, run.level, false});
        if (blanks < end)
            _pieces.push_back({blanks, end, i, row.level, false});
    }
    if (row.isCut)
        _pieces.push_back({row.end, row.end, 0, row.level, true});
}

// From left to right: from the innermost level outward, what runs from right to left is reversed.
void Rows::orderPieces() {
    std::uint8_t highest = 0;
    for (const Piece& piece : _pieces)
        highest = std::max(highest, piece.level);
    for (std::uint8_t level = highest; level > 0; --level)
        for (auto first = _pieces.begin(); first != _pieces.end();) {
            const auto isDeep = [level](const Piece& piece) { return piece.level >= level; };
            first = std::find_if(first, _pieces.end(), isDeep);
            const auto last = std::find_if_not(first, _pieces.end(), isDeep);
            std::reverse(first, last);
            first = last;
        }
}

float Rows::startOf(const Row& row, float boxWidth) const {
    const bool isRightToLeft = row.level % 2;
    const KXTextAlign align = _options.align;
    const float rest = boxWidth - row.width;
    float x = 0;
    if (align == KXTextAlignCentre)
        x = std::round(rest / 2);
    else if (align == KXTextAlignRight || (isRightToLeft && align != KXTextAlignLeft))
        x = rest;
    // The blanks at its end stand outside, on the left where it runs from right to left.
    for (const Piece& piece : _pieces) {
        if (piece.begin < row.blanks || piece.isEllipsis || !isRightToLeft)
            break;
        for (std::uint32_t i = piece.begin; i < piece.end; ++i)
            x -= _widths[i];
    }
    return x;
}

// Widens blanks, or where there are none what a line may end with; none before the last tab.
void Rows::justify(Row& row) {
    const float rest = _options.width - row.width;
    if (_options.align != KXTextAlignJustified || row.endsParagraph || rest <= 0)
        return;
    std::uint32_t begin = row.begin;
    for (std::uint32_t i = row.begin; i < row.blanks; ++i)
        if (_shaped.roles[i] == _KXTextRole::Tab)
            begin = i + 1;
    const auto widen = [&](auto isGap) {
        std::vector<std::uint32_t> gaps;
        for (std::uint32_t i = begin, next; i < row.blanks; i = next) {
            next = _shaped.afterCluster(i);
            if (next < row.blanks && isGap(i, next))
                gaps.push_back(i);
        }
        for (const std::uint32_t gap : gaps)
            _widths[gap] += rest / static_cast<float>(gaps.size());
        return !gaps.empty();
    };
    if (widen([&](std::uint32_t i, std::uint32_t) { return _shaped.roles[i] == _KXTextRole::Blank; }) ||
        widen([&](std::uint32_t, std::uint32_t next) { return _shaped.mayBreakBefore(next); }))
        row.width = _options.width;
}

// Places for carets, evenly in the width of what is drawn as one.
void Rows::addStops(std::uint32_t begin, std::uint32_t end, float x, float width, bool isRightToLeft) {
    const auto stops = static_cast<float>(
        1 + std::count(_shaped.stops.begin() + begin + 1, _shaped.stops.begin() + end, std::uint8_t{1}));
    const float step = width / stops * (isRightToLeft ? -1.0f : 1.0f);
    float from = isRightToLeft ? x + width : x;
    for (std::uint32_t i = begin, next; i < end; i = next) {
        next = i + 1;
        while (next < end && !_shaped.stops[next])
            ++next;
        _placed.stops.push_back({static_cast<int>(_shaped.offsets[i]),
                                 static_cast<int>(_shaped.offsets[next]), std::min(from, from + step),
                                 std::max(from, from + step), isRightToLeft});
        from += step;
    }
}

void Rows::placeGlyphs(const Piece& piece, float x) {
    const _KXTextRun& run = _shaped.runs[piece.run];
    const auto end = _shaped.glyphs.begin() + run.endGlyph;
    // A long run stands on many lines: its part is searched, not walked to.
    const bool isRightToLeft = run.level % 2;
    auto glyph = std::partition_point(_shaped.glyphs.begin() + run.firstGlyph, end, [&](const auto& one) {
        return isRightToLeft ? one.character >= piece.end : one.character < piece.begin;
    });
    for (; glyph != end && glyph->character >= piece.begin && glyph->character < piece.end; ++glyph) {
        const std::uint32_t character = glyph->character;
        _placed.glyphs.push_back(
            {{x + glyph->x, glyph->y}, glyph->index, _shaped.offsets[character], run.typeface});
        x += glyph->advance;
        // What a justified line adds stands behind the last glyph of its character.
        if (glyph + 1 == end || glyph[1].character != character)
            x += _widths[character] - _shaped.widths[character];
    }
}

// Places the characters from left to right, and returns where the next piece begins.
float Rows::placePiece(const Piece& piece, float x) {
    const bool isRightToLeft = _shaped.runs[piece.run].level % 2;
    float width = 0;
    for (std::uint32_t i = piece.begin; i < piece.end; ++i)
        width += _widths[i];
    float at = isRightToLeft ? x + width : x;
    for (std::uint32_t i = piece.begin, next; i < piece.end; i = next) {
        next = std::min(piece.end, _shaped.afterCluster(i));
        at -= isRightToLeft ? _widths[i] : 0;
        addStops(i, next, at, _widths[i], isRightToLeft);
        at += isRightToLeft ? 0 : _widths[i];
    }
    placeGlyphs(piece, x);
    return x + width;
}

float Rows::placeEllipsis(const Row& row, float x) {
    for (const _KXTextRun& run : _ellipsis.runs)
        for (std::uint32_t i = run.firstGlyph; i < run.endGlyph; ++i) {
            const _KXShapedGlyph& glyph = _ellipsis.glyphs[i];
            _placed.glyphs.push_back(
                {{x + glyph.x, glyph.y}, glyph.index, _shaped.offsets[row.end], run.typeface});
            x += glyph.advance;
        }
    return x;
}

void Rows::placeRow(Row row, float boxWidth) {
    findPieces(row);
    orderPieces();
    justify(row);
    const std::size_t firstGlyph = _placed.glyphs.size();
    const auto firstStop = static_cast<std::uint32_t>(_placed.stops.size());
    const float start = startOf(row, boxWidth);
    float x = start, left = start;
    for (const Piece& piece : _pieces) {
        const bool hangs = !piece.isEllipsis && piece.begin >= row.blanks;
        x = piece.isEllipsis ? placeEllipsis(row, x) : placePiece(piece, x);
        if (hangs && row.level % 2)
            left = x;
    }
    std::sort(_placed.stops.begin() + firstStop, _placed.stops.end(),
              [](const _KXTextStop& a, const _KXTextStop& b) { return a.begin < b.begin; });
    _KXTextRow placed = {};
    placed.line = {{{left, 0}, {row.width, 0}},
                   0,
                   static_cast<int>(_shaped.offsets[row.begin]),
                   static_cast<int>(_shaped.offsets[row.end])};
    placed.edge = row.level % 2 ? left + row.width : left;
    placed.firstStop = firstStop;
    placed.endStop = static_cast<std::uint32_t>(_placed.stops.size());
    placeVertically(placed, firstGlyph);
    _placed.size.width = std::max(_placed.size.width, row.width);
    _placed.rows.push_back(placed);
}

// A line is as high as what stands on it needs, and at least as the first typeface has it.
void Rows::placeVertically(_KXTextRow& placed, std::size_t firstGlyph) {
    const _KXTypeface& first = *_typefaces.front();
    float ascent = first.ascent(), descent = first.descent();
    for (std::size_t i = firstGlyph; i < _placed.glyphs.size(); ++i)
        if (const std::uint16_t typeface = _placed.glyphs[i].typeface) {
            ascent = std::max(ascent, _typefaces[typeface]->ascent());
            descent = std::max(descent, _typefaces[typeface]->descent());
        }
    const float height = ascent + descent;
    placed.line.rect.origin.y = _y;
    placed.line.rect.size.height = height;
    placed.line.baseline = _y + ascent;
    for (std::size_t i = firstGlyph; i < _placed.glyphs.size(); ++i)
        _placed.glyphs[i].pen.y += placed.line.baseline;
    _placed.size.height = _y + height;
    _y += std::round((height + first.gap()) * _options.lineSpacing);
}

void Rows::alignVertically() {
    const float height = _options.height;
    float move = 0;
    if (height > 0 && _options.verticalAlign == KXTextBottom)
        move = height - _placed.size.height;
    if (height > 0 && _options.verticalAlign == KXTextMiddle) {
        const float top = _placed.rows.front().line.baseline - _typefaces.front()->capHeight();
        const float bottom = _placed.rows.back().line.baseline;
        move = (height - (bottom - top)) / 2 - top;
    }
    move = std::round(move);
    for (_KXTextRow& row : _placed.rows) {
        row.line.rect.origin.y += move;
        row.line.baseline += move;
    }
    for (_KXPlacedGlyph& glyph : _placed.glyphs)
        glyph.pen.y += move;
}

_KXPlacedText Rows::place() {
    findRows();
    float boxWidth = _options.width;
    if (!wraps())
        for (const Row& row : _rows)
            boxWidth = std::max(boxWidth, row.width);
    for (const Row& row : _rows)
        placeRow(row, boxWidth);
    alignVertically();
    return std::move(_placed);
}

_KXPlacedText _KXPlaceText(const _KXShapedText& shaped, const _KXTypefaces& typefaces,
                           const KXTextOptions& options) {
    return Rows(shaped, typefaces, options).place();
}
