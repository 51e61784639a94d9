#include "render/QuadStream.h"

#include "render/DrawSink.h"
#include "render/DrawStatistics.h"

#include <Kobaltrix/KXTexture.h>

#include <array>
#include <cmath>
#include <numbers>

namespace {
// One entry for each degree, exact at the quarter turns, where a sine that is almost zero would blur edges.
_KXRotation rotationBy(double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    return {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
}

std::array<_KXRotation, 360> makeRotations() {
    std::array<_KXRotation, 360> rotations;
    for (int degrees = 0; degrees < 360; ++degrees)
        rotations[degrees] = rotationBy(static_cast<double>(degrees));
    rotations[0] = {1, 0};
    rotations[90] = {0, 1};
    rotations[180] = {-1, 0};
    rotations[270] = {0, -1};
    return rotations;
}

_KXRotation rotationBy(int degrees) {
    static const std::array<_KXRotation, 360> rotations = makeRotations();
    const int turn = degrees % 360;
    return rotations[turn < 0 ? turn + 360 : turn];
}
} // namespace

_KXRotation _KXRotationBy(float degrees) {
    const double rest = std::fmod(static_cast<double>(degrees), 360);
    const double whole = std::trunc(rest);
    return rest == whole ? rotationBy(static_cast<int>(whole)) : rotationBy(rest);
}

_KXAffine _KXPlacement(int x, int y, int width, int height, float scale, int rotation, int flips) {
    const auto left = static_cast<float>(x), top = static_cast<float>(y);
    if (rotation == 0 && flips == 0)
        return {scale, 0, left, 0, scale, top};

    const auto [cosine, sine] = rotationBy(rotation);
    _KXAffine turn = {cosine, -sine, 0, sine, cosine, 0};
    switch (flips & KXFlipDiagonal) {
    case KXFlipLeftRight:
        turn = {-turn.xx, -turn.xy, 0, turn.yx, turn.yy, 0};
        break;
    case KXFlipTopBottom:
        turn = {turn.xx, turn.xy, 0, -turn.yx, -turn.yy, 0};
        break;
    case KXFlipDiagonal: // half a turn about the diagonal exchanges the axes
        turn = {turn.yx, turn.yy, 0, turn.xx, turn.xy, 0};
        break;
    default:
        break;
    }
    const int middleX = width / 2, middleY = height / 2; // rounded toward zero
    const auto centreX = static_cast<float>(middleX), centreY = static_cast<float>(middleY);
    const KXPoint moved = turn(centreX, centreY);
    return {scale * turn.xx, scale * turn.xy, left + scale * (centreX - moved.x),
            scale * turn.yx, scale * turn.yy, top + scale * (centreY - moved.y)};
}

void _KXDrawQuads(const _KXQuad* quads, int count, _KXFill fill, unsigned texture, KXColor color,
                  bool showsEdges) {
    const _KXPaint paint = {fill, texture, color, showsEdges};
    _KXDrawSink& sink = _KXCurrentSink();
    sink.quads(quads, count, paint);
    const KXColor left = paint.color;
    if (left.r != color.r || left.g != color.g || left.b != color.b || left.a != color.a)
        sink.leaveColor(color);
}

void _KXDrawTexturedQuad(unsigned texture, const _KXTextureRect& source, KXColor color,
                         const _KXAffine& placement, float width, float height) {
    const _KXQuad quad = {{{placement(0, 0), source.left, source.top},
                           {placement(width, 0), source.right, source.top},
                           {placement(width, height), source.right, source.bottom},
                           {placement(0, height), source.left, source.bottom}}};
    _KXDrawQuads(&quad, 1, _KXFill::Texture, texture, color);
}

static _KXQuad quadOf(const _KXGlyphQuad& glyph) {
    const _KXTextureRect& source = glyph.source;
    return {{{glyph.corners[0], source.left, source.top},
             {glyph.corners[1], source.left, source.bottom},
             {glyph.corners[2], source.right, source.bottom},
             {glyph.corners[3], source.right, source.top}}};
}

void _KXDrawGlyphQuads(const _KXGlyphQuad* glyphs, int count, KXColor color, bool sharp) {
    _KXDrawStatistics.glyphs += count;
    constexpr int most = 64; // as many at a time as most lines of text have
    _KXQuad quads[most];
    for (const _KXGlyphQuad* const end = glyphs + count; glyphs != end;) {
        const _KXGlyphPage page = glyphs->page;
        int taken = 0;
        for (; glyphs != end && glyphs->page.smooth == page.smooth && taken < most; ++glyphs)
            quads[taken++] = quadOf(*glyphs);
        _KXDrawQuads(quads, taken, _KXFill::Glyph, sharp ? page.sharp : page.smooth, color);
    }
}

void _KXLeaveColor(KXColor color) { _KXCurrentSink().leaveColor(color); }
