#include "render/VertexBlock.h"

#include "render/DrawSink.h"
#include "render/DrawStatistics.h"
#include "render/FillProgram.h"
#include "render/GLFunctions.h"

#include <SDL_opengl.h>

#include <algorithm>

// A driver that draws in software allocates what a call needs and gives it back, and more than this many
// corners do not stay in the processor's cache: calls of 256 quads draw small sprites twice as fast as calls
// of 4096. What a call costs does not show beside 256 quads.
static constexpr int mostCornersPerCall = 1024;

namespace {
// Points OpenGL's arrays at the corners; whatever arrays the game uses come back afterwards.
class ArrayScope {
public:
    explicit ArrayScope(const _KXVertex& first) {
        glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
        // They lie in memory and texture coordinates go to the first texture, whatever the game has bound.
        if (_KXGL.bindBuffer)
            _KXGL.bindBuffer(GL_ARRAY_BUFFER, 0);
        if (_KXGL.clientActiveTexture)
            _KXGL.clientActiveTexture(GL_TEXTURE0);
        for (const GLenum array : {GL_NORMAL_ARRAY, GL_INDEX_ARRAY, GL_EDGE_FLAG_ARRAY})
            glDisableClientState(array);
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

static void drawUntextured(GLenum primitive, const _KXVertexRun& run) {
    glDisable(GL_TEXTURE_2D);
    drawArrays(primitive, run.first, run.count);
    glEnable(GL_TEXTURE_2D);
}

// Without a program that tells solid corners from textured ones, each of their stretches is a call.
static void drawStretches(const _KXVertex* vertices, const _KXVertexRun& run) {
    constexpr auto solid = static_cast<float>(_KXFill::Solid);
    const int end = run.first + run.count;
    for (int first = run.first, next; first < end; first = next) {
        const bool textured = vertices[first].fill != solid;
        for (next = first; next < end && (vertices[next].fill != solid) == textured;)
            ++next;
        (textured ? glEnable : glDisable)(GL_TEXTURE_2D);
        drawArrays(GL_QUADS, first, next - first);
    }
    glEnable(GL_TEXTURE_2D);
}

static void drawQuads(const _KXVertex* vertices, const _KXVertexRun& run) {
    if (!run.texture)
        return drawUntextured(GL_QUADS, run);
    ++_KXDrawStatistics.textureBinds;
    glBindTexture(GL_TEXTURE_2D, run.texture);
    if (!run.hasSolid) {
        const _KXFillProgramScope program(_KXFillProgram::Texture);
        return drawArrays(GL_QUADS, run.first, run.count);
    }
    if (const _KXFillProgramScope program(_KXFillProgram::Mixed); program)
        return drawArrays(GL_QUADS, run.first, run.count);
    drawStretches(vertices, run);
}

void _KXDrawVertexRuns(const _KXVertex* vertices, const _KXVertexRun* runs, int runCount) {
    const ArrayScope arrays(*vertices);
    for (const _KXVertexRun* run = runs; run != runs + runCount; ++run)
        if (run->isLines) {
            glLineWidth(run->lineWidth);
            drawUntextured(GL_LINES, *run);
        } else {
            drawQuads(vertices, *run);
        }
}
