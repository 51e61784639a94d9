#include "render/Stroke.h"

#include "render/Reach.h"
#include "render/ShapeMesh.h"

#include <Kobaltrix/KXPointMath.h>

#include <algorithm>
#include <cmath>

namespace {
// The pieces that a line consists of, each convex. Together they are the line; they overlap.
class Pieces {
public:
    Pieces(const KXStroke& stroke, float width) : _stroke(stroke), _half(width / 2) {}

    void addSegment(KXPoint from, KXPoint to) {
        const KXPoint side = sideOf(KXNormalized(to - from));
        add({from - side, to - side, to + side, from + side});
    }
    // Where two segments meet.
    void addJoin(KXPoint before, KXPoint at, KXPoint after) {
        const KXPoint in = KXNormalized(at - before), out = KXNormalized(after - at);
        const float turn = KXCross(in, out), ahead = KXDot(in, out);
        if (turn == 0 && ahead > 0)
            return;
        if (_stroke.join == KXJoinRound)
            return addCircle(at);
        // The side that the corner is on; where the line goes straight back it is either.
        const float outside = turn > 0 ? -1.0f : 1.0f;
        const KXPoint first = at + sideOf(in) * outside, second = at + sideOf(out) * outside;
        const float cosine = std::sqrt(std::max(0.0f, (1 + ahead) / 2)); // of half the turn
        if (_stroke.join == KXJoinBevel || !(cosine * _stroke.miterLimit >= 1))
            return add({at, first, second});
        const KXPoint tip = at + KXNormalized(first + second - at * 2) * (_half / cosine);
        add({at, first, tip, second});
    }
    void addCap(KXPoint at, KXPoint from) {
        const KXPoint way = KXNormalized(at - from);
        if (_stroke.cap == KXCapRound)
            addCircle(at);
        else if (_stroke.cap == KXCapSquare)
            addSegment(at, at + way * _half);
    }
    // A line that is a point.
    void addDot(KXPoint at) {
        if (_stroke.cap == KXCapRound)
            addCircle(at);
        else if (_stroke.cap == KXCapSquare)
            addSegment(at - KXPoint{_half, 0}, at + KXPoint{_half, 0});
    }

    const _KXContours& all() const { return _pieces; }

private:
    KXPoint sideOf(KXPoint way) const { return {-way.y * _half, way.x * _half}; }
    void addCircle(KXPoint centre) { add(_KXEllipse(centre, {_half, _half})); }
    // All go the same way round: then they are one where they overlap.
    void add(_KXContour piece) {
        if (!_KXIsClockwise(piece))
            std::reverse(piece.begin(), piece.end());
        _pieces.push_back(std::move(piece));
    }

    const KXStroke& _stroke;
    const float _half;
    _KXContours _pieces;
};
} // namespace

void _KXDrawStrokeOf(const _KXContour& points, const KXStroke& stroke) {
    if (!(stroke.width > 0) || !_KXIsWithinReach(stroke.width))
        return;
    const float thinnest = _KXUnitsPerPixel(), width = std::max(stroke.width, thinnest);
    KXShapePaint paint(stroke.color);
    paint.color.a *= stroke.width / width; // thinner than a pixel is paler
    paint.smooth = stroke.smooth;

    const _KXContour line = _KXWithoutRepeats(points, stroke.closed != 0);
    const std::size_t count = line.size();
    const bool closed = stroke.closed && count > 2;
    Pieces pieces(stroke, width);
    if (count == 1)
        pieces.addDot(line[0]);
    for (std::size_t i = 1; i < count; ++i)
        pieces.addSegment(line[i - 1], line[i]);
    for (std::size_t i = 1; i + 1 < count; ++i)
        pieces.addJoin(line[i - 1], line[i], line[i + 1]);
    if (closed) {
        pieces.addSegment(line[count - 1], line[0]);
        pieces.addJoin(line[count - 2], line[count - 1], line[0]);
        pieces.addJoin(line[count - 1], line[0], line[1]);
    } else if (count > 1) {
        pieces.addCap(line[0], line[1]);
        pieces.addCap(line[count - 1], line[count - 2]);
    }
    if (pieces.all().size() == 1)
        return _KXFillConvex(pieces.all()[0], paint);
    if (!paint.smooth && paint.color.a >= 1 && _KXCoversWhatItOverlaps())
        for (const _KXContour& piece : pieces.all()) // drawn twice is the same
            _KXFillConvex(piece, paint);
    else
        _KXFillContours(pieces.all(), paint);
}
