#include "render/QuadStream.h"

#include "render/DrawBatch.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {
struct Rotation {
    float cosine, sine;
};

// One entry for each degree, exact at the quarter turns, where a sine that is almost zero would blur edges.
std::array<Rotation, 360> makeRotations() {
    std::array<Rotation, 360> rotations;
    for (int degrees = 0; degrees < 360; ++degrees) {
        const double angle = degrees * std::numbers::pi / 180;
        rotations[degrees] = {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
    }
    rotations[0] = {1, 0};
    rotations[90] = {0, 1};
    rotations[180] = {-1, 0};
    rotations[270] = {0, -1};
    return rotations;
}

Rotation rotationBy(int degrees) {
    static const std::array<Rotation, 360> rotations = makeRotations();
    const int turn = degrees % 360;
    return rotations[turn < 0 ? turn + 360 : turn];
}
} // namespace

_KXAffine _KXPlacement(int x, int y, int width, int height, float scale, int rotation, int flips) {
    const auto left = static_cast<float>(x), top = static_cast<float>(y);
    if (rotation == 0 && flips == 0)
        return {scale, 0, left, 0, scale, top};

    const auto [cosine, sine] = rotationBy(rotation);
    _KXAffine turn = {cosine, -sine, 0, sine, cosine, 0};
    constexpr int mirrorX = 2, mirrorY = 4;
    switch (flips & (mirrorX | mirrorY)) {
    case mirrorX:
        turn = {-turn.xx, -turn.xy, 0, turn.yx, turn.yy, 0};
        break;
    case mirrorY:
        turn = {turn.xx, turn.xy, 0, -turn.yx, -turn.yy, 0};
        break;
    case mirrorX | mirrorY: // half a turn about the diagonal exchanges the axes
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

// Drivers merge draws of one texture, without end where nothing else is drawn. One that draws in software is
// then slower than with calls of a few hundred quads, which stay in the processor's cache: so every now and
// then the texture changes for a moment, which ends the merging.
static void bindToDraw(unsigned texture) {
    constexpr unsigned drawsToMerge = 512;
    static constinit unsigned draws = 0;
    if (++draws % drawsToMerge == 0)
        glBindTexture(GL_TEXTURE_2D, 0);
    ++_KXDrawStatistics.textureBinds;
    glBindTexture(GL_TEXTURE_2D, texture);
}

void _KXDrawTexturedQuad(unsigned texture, const _KXTextureRect& source, KXColor color,
                         const _KXAffine& placement, float width, float height) {
    const KXPoint corners[] = {placement(0, 0), placement(width, 0), placement(width, height),
                               placement(0, height)};
    if (_KXIsBatching()) {
        constexpr auto fill = static_cast<float>(_KXFill::Texture);
        _KXVertex* const vertices = _KXBatchQuads(1, _KXFill::Texture, texture);
        vertices[0] = {corners[0], source.left, source.top, fill, color};
        vertices[1] = {corners[1], source.right, source.top, fill, color};
        vertices[2] = {corners[2], source.right, source.bottom, fill, color};
        vertices[3] = {corners[3], source.left, source.bottom, fill, color};
        _KXBatchLeavesTexture(texture);
        _KXBatchLeavesColor(color);
        return;
    }
    ++_KXDrawStatistics.quads;
    ++_KXDrawStatistics.drawCalls;
    bindToDraw(texture);
    glColor4f(color.r, color.g, color.b, color.a);
    glBegin(GL_QUADS);
    glTexCoord2f(source.left, source.top);
    glVertex2f(corners[0].x, corners[0].y);
    glTexCoord2f(source.right, source.top);
    glVertex2f(corners[1].x, corners[1].y);
    glTexCoord2f(source.right, source.bottom);
    glVertex2f(corners[2].x, corners[2].y);
    glTexCoord2f(source.left, source.bottom);
    glVertex2f(corners[3].x, corners[3].y);
    glEnd();
}

// Which corner of its page's part belongs to which corner of a glyph.
static void texelsOf(const _KXGlyphQuad& quad, KXPoint (&texels)[4]) {
    const _KXTextureRect& source = quad.source;
    texels[0] = {source.left, source.top};
    texels[1] = {source.left, source.bottom};
    texels[2] = {source.right, source.bottom};
    texels[3] = {source.right, source.top};
}

static void drawGlyphsNow(const _KXGlyphQuad* quads, int count, KXColor color) {
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    glColor4f(color.r, color.g, color.b, color.a);
    _KXDrawStatistics.quads += count;
    for (const _KXGlyphQuad* const end = quads + count; quads != end;) {
        const unsigned page = quads->page;
        ++_KXDrawStatistics.drawCalls;
        bindToDraw(page);
        glBegin(GL_QUADS);
        for (; quads != end && quads->page == page; ++quads) {
            KXPoint texels[4];
            texelsOf(*quads, texels);
            for (int i = 0; i < 4; ++i) {
                glTexCoord2f(texels[i].x, texels[i].y);
                glVertex2f(quads->corners[i].x, quads->corners[i].y);
            }
        }
        glEnd();
    }
    glBindTexture(GL_TEXTURE_2D, static_cast<unsigned>(bound));
}

void _KXDrawGlyphQuads(const _KXGlyphQuad* quads, int count, KXColor color) {
    _KXDrawStatistics.glyphs += count;
    if (!_KXIsBatching()) {
        drawGlyphsNow(quads, count, color);
        return;
    }
    for (const _KXGlyphQuad* quad = quads; quad != quads + count; ++quad) {
        KXPoint texels[4];
        texelsOf(*quad, texels);
        _KXVertex* const vertices = _KXBatchQuads(1, _KXFill::Glyph, quad->page);
        for (int i = 0; i < 4; ++i)
            vertices[i] = {quad->corners[i], texels[i].x, texels[i].y, static_cast<float>(_KXFill::Glyph),
                           color};
    }
    _KXBatchLeavesColor(color);
}

namespace {
// Turns 2D texturing off and sets the colour for as long as the scope lasts, then turns texturing on.
class SolidDrawingScope {
public:
    explicit SolidDrawingScope(KXColor color) {
        ++_KXDrawStatistics.drawCalls;
        glDisable(GL_TEXTURE_2D);
        glColor4f(color.r, color.g, color.b, color.a);
    }
    ~SolidDrawingScope() { glEnable(GL_TEXTURE_2D); }
    SolidDrawingScope(const SolidDrawingScope&) = delete;
    SolidDrawingScope& operator=(const SolidDrawingScope&) = delete;
};
} // namespace

static _KXVertex solidVertex(KXPoint position, KXColor color) {
    return {position, 0, 0, static_cast<float>(_KXFill::Solid), color};
}

void _KXDrawSolidQuads(const _KXSolidQuad* quads, int count, KXColor color) {
    if (_KXIsBatching()) {
        _KXVertex* vertex = _KXBatchQuads(count, _KXFill::Solid, 0);
        for (const _KXSolidQuad* quad = quads; quad != quads + count; ++quad) {
            const auto x1 = static_cast<float>(quad->x1), y1 = static_cast<float>(quad->y1);
            const auto x2 = static_cast<float>(quad->x2), y2 = static_cast<float>(quad->y2);
            for (const KXPoint corner : {KXPoint{x1, y1}, KXPoint{x2, y1}, KXPoint{x2, y2}, KXPoint{x1, y2}})
                *vertex++ = solidVertex(corner, color);
        }
        _KXBatchLeavesColor(color);
        return;
    }
    _KXDrawStatistics.quads += count;
    const SolidDrawingScope solid(color);
    glBegin(GL_QUADS);
    for (const _KXSolidQuad* quad = quads; quad != quads + count; ++quad) {
        glVertex2i(quad->x1, quad->y1);
        glVertex2i(quad->x2, quad->y1);
        glVertex2i(quad->x2, quad->y2);
        glVertex2i(quad->x1, quad->y2);
    }
    glEnd();
}

static void drawPointsNow(GLenum primitive, const KXPoint* points, int count, float lineWidth,
                          KXColor color) {
    glLineWidth(lineWidth);
    const SolidDrawingScope solid(color);
    glBegin(primitive);
    for (const KXPoint* point = points; point != points + count; ++point)
        glVertex2f(point->x, point->y);
    glEnd();
}

static void batchLine(KXPoint from, KXPoint to, float width, KXColor color) {
    _KXVertex* const ends = _KXBatchLines(1, width);
    ends[0] = solidVertex(from, color);
    ends[1] = solidVertex(to, color);
}

void _KXDrawLineLoop(const KXPoint* points, int count, float width, KXColor color) {
    if (!_KXIsBatching()) {
        _KXDrawStatistics.lines += count;
        drawPointsNow(GL_LINE_LOOP, points, count, width, color);
        return;
    }
    // A loop of one point has no line, one of two goes there and back.
    for (int i = 0; i < count && count > 1; ++i)
        batchLine(points[i], points[i + 1 < count ? i + 1 : 0], width, color);
    _KXBatchLeavesLineWidth(width);
    _KXBatchLeavesColor(color);
}

void _KXDrawLine(KXPoint from, KXPoint to, float width, KXColor color) {
    if (_KXIsBatching()) {
        batchLine(from, to, width, color);
        _KXBatchLeavesLineWidth(width);
        _KXBatchLeavesColor(color);
        return;
    }
    ++_KXDrawStatistics.lines;
    const KXPoint points[] = {from, to};
    drawPointsNow(GL_LINES, points, 2, width, color);
}

void _KXDrawFan(const KXPoint* points, int count, float lineWidth, KXColor color) {
    if (!_KXIsBatching()) {
        _KXDrawStatistics.quads += std::max(0, count - 2);
        drawPointsNow(GL_TRIANGLE_FAN, points, count, lineWidth, color);
        return;
    }
    // The fan's own triangles, as quads whose second half is empty: other halves would cut the shape along
    // other lines.
    for (int i = 1; i + 1 < count; ++i) {
        _KXVertex* const vertices = _KXBatchQuads(1, _KXFill::Solid, 0);
        vertices[0] = solidVertex(points[0], color);
        vertices[1] = solidVertex(points[i], color);
        vertices[2] = vertices[3] = solidVertex(points[i + 1], color);
    }
    _KXBatchLeavesLineWidth(lineWidth);
    _KXBatchLeavesColor(color);
}

void _KXLeaveColor(KXColor color) {
    if (_KXIsBatching())
        _KXBatchLeavesColor(color);
    else
        glColor4f(color.r, color.g, color.b, color.a);
}

void _KXLeaveLineWidth(float width) {
    if (_KXIsBatching())
        _KXBatchLeavesLineWidth(width);
    else
        glLineWidth(width);
}
