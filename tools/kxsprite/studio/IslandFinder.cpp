#include "IslandFinder.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <numeric>

namespace {
struct Box {
    int left, top, right, bottom; ///< The last two behind it.

    void take(const Box& other) {
        left = std::min(left, other.left), top = std::min(top, other.top);
        right = std::max(right, other.right), bottom = std::max(bottom, other.bottom);
    }
};

/// Goes through a picture once, row by row, and keeps pieces of islands: which of them are one shows only
/// when a row below joins them.
class Search {
public:
    Search(const KXImage& picture, int gap)
        : _picture(picture), _gap(gap), _columns(static_cast<std::size_t>(picture.width())) {}

    std::vector<Box> islands();

private:
    /// The lowest pixel of a column so far.
    struct Column {
        int row = INT_MIN / 2, piece = -1;
    };
    struct Piece {
        Box box;
        int part; ///< Of which other piece it is a part; its own number for none.
    };

    void readRow(int y);
    void takeRun(int y, int begin, int end);
    int root(int piece);
    int join(int one, int other);
    void settle(int y);

    const KXImage& _picture;
    int _gap;
    std::vector<Column> _columns;
    std::vector<Piece> _pieces;
    std::vector<Box> _done; ///< That no row below can add to.
};

int Search::root(int piece) {
    while (_pieces[piece].part != piece)
        piece = _pieces[piece].part = _pieces[_pieces[piece].part].part;
    return piece;
}

int Search::join(int one, int other) {
    one = root(one), other = root(other);
    if (one != other) {
        _pieces[one].box.take(_pieces[other].box);
        _pieces[other].part = one;
    }
    return one;
}

// Pixels side by side, and those that the gap lets count as such.
void Search::takeRun(int y, int begin, int end) {
    const int from = std::max(0, begin - 1 - _gap), to = std::min(_picture.width(), end + 1 + _gap);
    int piece = -1, last = -1;
    for (int x = from; x < to; ++x) {
        const Column& above = _columns[x];
        if (above.piece == last || above.row < y - 1 - _gap)
            continue;
        last = above.piece;
        piece = piece < 0 ? root(last) : join(piece, last);
    }
    const Box box = {begin, y, end, y + 1};
    if (piece < 0) {
        piece = static_cast<int>(_pieces.size());
        _pieces.push_back({box, piece});
    }
    _pieces[piece].box.take(box);
    std::fill(_columns.begin() + begin, _columns.begin() + end, Column{y, piece});
}

void Search::readRow(int y) {
    const KXPixel* const pixels = _picture.row(y);
    int begin = -1, end = 0;
    for (int x = 0; x < _picture.width(); ++x) {
        if (pixels[x].a == 0)
            continue;
        if (begin >= 0 && x - end > _gap) {
            takeRun(y, begin, end);
            begin = -1;
        }
        begin = begin < 0 ? x : begin;
        end = x + 1;
    }
    if (begin >= 0)
        takeRun(y, begin, end);
}

// Keeps the pieces that the row below y can still join, and numbers them anew.
void Search::settle(int y) {
    std::vector<int> numbers(_pieces.size(), -1);
    std::vector<Piece> kept;
    for (Column& column : _columns) {
        if (column.piece < 0 || column.row < y - _gap) {
            column = {};
            continue;
        }
        const int piece = root(column.piece);
        if (numbers[piece] < 0) {
            numbers[piece] = static_cast<int>(kept.size());
            kept.push_back({_pieces[piece].box, numbers[piece]});
        }
        column.piece = numbers[piece];
    }
    for (int i = 0; i < static_cast<int>(_pieces.size()); ++i)
        if (_pieces[i].part == i && numbers[i] < 0)
            _done.push_back(_pieces[i].box);
    _pieces = std::move(kept);
}

std::vector<Box> Search::islands() {
    const std::size_t many = mostIslands + _columns.size();
    for (int y = 0; y < _picture.height() && _done.size() <= mostIslands; ++y) {
        readRow(y);
        if (_pieces.size() > 2 * many)
            settle(y);
    }
    settle(INT_MAX);
    return std::move(_done);
}
} // namespace

// What stands beside another in a row is not exactly as high: one belongs to a row if its middle does.
static void sortAsRead(std::vector<Box>& boxes) {
    std::sort(boxes.begin(), boxes.end(),
              [](const Box& a, const Box& b) { return a.top != b.top ? a.top < b.top : a.left < b.left; });
    for (auto row = boxes.begin(); row != boxes.end();) {
        auto end = row;
        for (int bottom = row->bottom; end != boxes.end() && end->top + end->bottom <= 2 * bottom; ++end)
            bottom = std::max(bottom, end->bottom);
        std::stable_sort(row, end, [](const Box& a, const Box& b) { return a.left < b.left; });
        row = end;
    }
}

std::vector<Area> findIslands(const KXImage& picture, int gap) {
    std::vector<Box> boxes = Search(picture, std::clamp(gap, 0, 1024)).islands();
    if (boxes.size() > mostIslands)
        return {};
    sortAsRead(boxes);
    std::vector<Area> areas;
    areas.reserve(boxes.size());
    for (const Box& box : boxes)
        areas.push_back({static_cast<float>(box.left), static_cast<float>(box.top), box.right - box.left,
                         box.bottom - box.top});
    return areas;
}

int islandAt(const std::vector<Area>& islands, int x, int y) {
    int found = -1;
    std::int64_t least = INT64_MAX;
    for (std::size_t i = 0; i < islands.size(); ++i) {
        const auto& [left, top, width, height] = islands[i];
        const bool isIn = static_cast<float>(x) >= left && static_cast<float>(y) >= top &&
                          static_cast<float>(x) < left + static_cast<float>(width) &&
                          static_cast<float>(y) < top + static_cast<float>(height);
        const std::int64_t size = std::int64_t{width} * height;
        if (isIn && size < least) {
            found = static_cast<int>(i);
            least = size;
        }
    }
    return found;
}
