#include "render/DrawBatch.h"

#include "render/FillProgram.h"
#include "render/GLCheck.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace {
// Corners of one kind that leave in one draw call.
struct Run {
    GLenum primitive;
    unsigned texture; // 0 while all are solid
    bool hasSolid, hasGlyphs;
    float lineWidth;
    int first, count;
};

// Enough that what a flush costs does not show.
constexpr int vertexCapacity = 16384;
constexpr int runCapacity = 512;
// A driver that draws in software allocates what a call needs and gives it back, and more than this many
// corners do not stay in the processor's cache: calls of 256 quads draw small sprites twice as fast as calls
// of 4096. What a call costs does not show beside 256 quads.
constexpr int mostCornersPerCall = 1024;

struct Block {
    _KXVertex vertices[vertexCapacity];
    Run runs[runCapacity];
};

// What the calls would have left behind had each of them been drawn at once.
struct Leavings {
    bool hasColor;
    KXColor color;
    unsigned texture;
    float lineWidth;
};
} // namespace

static constinit int depth = 0;
// On the heap: a game without batches does not pay for it.
static constinit Block* block = nullptr;
static constinit int vertexCount = 0;
static constinit int runCount = 0;
static constinit Leavings leavings = {};

void KXBeginDrawBatch() {
    if (depth < std::numeric_limits<int>::max())
        ++depth;
}

void KXEndDrawBatch() {
    if (depth > 0 && --depth == 0)
        _KXFlushBatch(KXDrawFlushEnd);
}

void KXFlushDrawBatch() { _KXFlushBatch(KXDrawFlushRequest); }

KXDrawStatistics KXCurrentDrawStatistics() { return _KXDrawStatistics; }

KXDrawStatistics KXLastDrawStatistics() { return _KXLastDrawStatistics; }

void _KXEndDrawStatistics() { _KXLastDrawStatistics = std::exchange(_KXDrawStatistics, {}); }

bool _KXIsBatching() {
    if (depth == 0 || runCount > 0)
        return depth != 0;
    GLint mode[2] = {GL_FILL, GL_FILL};
    glGetIntegerv(GL_POLYGON_MODE, mode);
    return mode[0] == GL_FILL && mode[1] == GL_FILL;
}

static Run& addRun(const Run& run) {
    block->runs[runCount] = run;
    return block->runs[runCount++];
}

// Makes sure that so many corners and one more run fit.
static void makeRoom(int corners) {
    if (!block)
        block = new Block;
    if (vertexCount + corners > vertexCapacity || runCount == runCapacity)
        _KXFlushBatch(KXDrawFlushFull);
}

static _KXVertex* take(Run& run, int corners) {
    _KXVertex* const room = block->vertices + vertexCount;
    run.count += corners;
    vertexCount += corners;
    return room;
}

_KXVertex* _KXBatchQuads(int count, _KXFill fill, unsigned texture) {
    const int corners = 4 * count;
    makeRoom(corners);
    const bool solid = fill == _KXFill::Solid;
    _KXDrawStatistics.quads += count;
    if (runCount > 0) {
        // Solid fills go along with any texture: they need none.
        Run& last = block->runs[runCount - 1];
        if (last.primitive == GL_QUADS && (solid || last.texture == 0 || last.texture == texture)) {
            last.hasSolid |= solid;
            last.hasGlyphs |= fill == _KXFill::Glyph;
            if (!solid)
                last.texture = texture;
            return take(last, corners);
        }
    }
    return take(addRun({GL_QUADS, solid ? 0 : texture, solid, fill == _KXFill::Glyph, 0, vertexCount, 0}),
                corners);
}

_KXVertex* _KXBatchLines(int count, float width) {
    const int corners = 2 * count;
    makeRoom(corners);
    _KXDrawStatistics.lines += count;
    if (runCount > 0) {
        Run& last = block->runs[runCount - 1];
        if (last.primitive == GL_LINES && last.lineWidth == width)
            return take(last, corners);
    }
    return take(addRun({GL_LINES, 0, true, false, width, vertexCount, 0}), corners);
}

void _KXBatchLeavesColor(KXColor color) {
    if (runCount == 0) { // nothing was drawn, or it has left already
        glColor4f(color.r, color.g, color.b, color.a);
        return;
    }
    leavings.hasColor = true;
    leavings.color = color;
}

void _KXBatchLeavesTexture(unsigned texture) { leavings.texture = texture; }

void _KXBatchLeavesLineWidth(float width) {
    if (runCount == 0)
        glLineWidth(width);
    else
        leavings.lineWidth = width;
}

namespace {
// Points OpenGL's arrays at the block; whatever arrays the game uses come back afterwards.
class ArrayScope {
public:
    ArrayScope() {
        glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
        _KXUseArraysInMemory();
        for (const GLenum array : {GL_NORMAL_ARRAY, GL_INDEX_ARRAY, GL_EDGE_FLAG_ARRAY})
            glDisableClientState(array);
        const _KXVertex& first = block->vertices[0];
        glVertexPointer(2, GL_FLOAT, sizeof first, &first.position);
        glTexCoordPointer(3, GL_FLOAT, sizeof first, &first.u);
        glColorPointer(4, GL_FLOAT, sizeof first, &first.color);
        for (const GLenum array : {GL_VERTEX_ARRAY, GL_TEXTURE_COORD_ARRAY, GL_COLOR_ARRAY})
            glEnableClientState(array);
    }
    ~ArrayScope() { glPopClientAttrib(); }
    ArrayScope(const ArrayScope&) = delete;
    ArrayScope& operator=(const ArrayScope&) = delete;
};
} // namespace

static void drawArrays(GLenum primitive, int first, int count) {
    for (const int end = first + count; first < end; first += mostCornersPerCall) {
        ++_KXDrawStatistics.drawCalls;
        glDrawArrays(primitive, first, std::min(mostCornersPerCall, end - first));
    }
}

// Without a program that tells solid corners from textured ones, each of their stretches is a call.
static void drawStretches(const Run& run) {
    const _KXVertex* const vertices = block->vertices;
    const float solid = static_cast<float>(_KXFill::Solid);
    const int end = run.first + run.count;
    for (int first = run.first, next; first < end; first = next) {
        const bool textured = vertices[first].fill != solid;
        for (next = first; next < end && (vertices[next].fill != solid) == textured;)
            ++next;
        (textured ? glEnable : glDisable)(GL_TEXTURE_2D);
        drawArrays(run.primitive, first, next - first);
    }
    glEnable(GL_TEXTURE_2D);
}

static void draw(const Run& run) {
    if (run.texture) {
        ++_KXDrawStatistics.textureBinds;
        glBindTexture(GL_TEXTURE_2D, run.texture);
    }
    if (run.primitive == GL_LINES)
        glLineWidth(run.lineWidth);
    if (!run.texture) {
        glDisable(GL_TEXTURE_2D);
        drawArrays(run.primitive, run.first, run.count);
        glEnable(GL_TEXTURE_2D);
        return;
    }
    if (!run.hasSolid)
        return drawArrays(run.primitive, run.first, run.count);
    if (const _KXFillProgramScope program; program)
        return drawArrays(run.primitive, run.first, run.count);
    drawStretches(run);
}

void _KXFlushBatch(KXDrawFlushReason reason) {
    if (runCount == 0)
        return;
    KX_GL_CHECK("KXFlushDrawBatch");
    ++_KXDrawStatistics.flushes;
    ++_KXDrawStatistics.flushesBecause[reason];
    GLint texture = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &texture);
    {
        const ArrayScope arrays;
        for (int i = 0; i < runCount; ++i)
            draw(block->runs[i]);
    }
    glBindTexture(GL_TEXTURE_2D, leavings.texture ? leavings.texture : static_cast<unsigned>(texture));
    if (leavings.hasColor)
        glColor4f(leavings.color.r, leavings.color.g, leavings.color.b, leavings.color.a);
    if (leavings.lineWidth > 0)
        glLineWidth(leavings.lineWidth);
    _KXDropBatch();
}

void _KXDropBatch() {
    vertexCount = runCount = 0;
    leavings = {};
}

void _KXFreeBatch() {
    _KXDropBatch();
    depth = 0;
    delete block;
    block = nullptr;
}
