#include "render/DrawBatch.h"

#include "core/ground/HeapGlobal.h"
#include "render/CameraMap.h"
#include "render/ClipSink.h"
#include "render/CuttingClip.h"
#include "render/DrawSink.h"
#include "render/GLCheck.h"
#include "render/ShaderProgram.h"
#include "render/VertexBlock.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <limits>

namespace {
// Enough that what a flush costs does not show.
constexpr int vertexCapacity = 16384;
constexpr int runCapacity = 512;

struct Block {
    _KXVertex vertices[vertexCapacity];
    _KXVertexRun runs[runCapacity];
};

// What the calls would have left behind had each of them been drawn at once.
struct Leavings {
    bool hasColor;
    KXColor color;
    unsigned texture;
    float lineWidth;
};

class BatchSink final : public _KXDrawSink {
public:
    void quads(const _KXQuad* quads, int count, const _KXPaint& paint) override;
    void lines(const KXPoint* points, int count, bool closed, float width, KXColor color) override;
    void fan(const KXPoint* points, int count, KXColor color) override;
    void leaveColor(KXColor color) override;
    void leaveLineWidth(float width) override;
    void mesh(const _KXMeshCorner* corners, int count);

    bool isEmpty() const { return _runCount == 0; }
    /// Draws what was collected, and counts why.
    void flush(KXDrawFlushReason reason);
    /// Draws what was collected, if there is anything.
    void drawIfAny() {
        if (!isEmpty())
            draw();
    }
    void draw();
    /// Forgets it.
    void drop();
    void freeMemory();

private:
    _KXVertex* roomForQuads(int count, const _KXPaint& paint);
    _KXVertex* roomForLine(float width, KXColor color);
    _KXVertexRun* lastRun(bool isLines);
    _KXVertex* addTo(_KXVertexRun& run, int corners, KXColor color);
    _KXVertexRun& addRun(const _KXVertexRun& run);
    void makeRoom(int corners);

    _KXHeapGlobal<Block> _block; // a game without batches does not pay for it
    int _vertexCount = 0;
    int _runCount = 0;
    Leavings _leavings = {};
};
} // namespace

static constinit int depth = 0;
static constinit BatchSink batch;

namespace {
// Without a batch, what has a pen is a batch of its own: it is set up for with more than a call or two.
class PenSink final : public _KXDrawSink {
public:
    void quads(const _KXQuad* quads, int count, const _KXPaint& paint) override {
        batch.quads(quads, count, paint);
        batch.drawIfAny();
    }
    void lines(const KXPoint* points, int count, bool closed, float width, KXColor color) override {
        batch.lines(points, count, closed, width, color);
        batch.drawIfAny();
    }
    void fan(const KXPoint* points, int count, KXColor color) override {
        batch.fan(points, count, color);
        batch.drawIfAny();
    }
    void leaveColor(KXColor color) override { batch.leaveColor(color); }
    void leaveLineWidth(float width) override { batch.leaveLineWidth(width); }
};
} // namespace

static constinit PenSink penSink;

void KXBeginDrawBatch() {
    if (depth == 0)
        _KXForgetWhatIsSeen(); // the game may have moved it
    if (depth < std::numeric_limits<int>::max())
        ++depth;
}

void KXEndDrawBatch() {
    if (depth > 0 && --depth == 0)
        _KXFlushBatch(KXDrawFlushEnd);
}

void KXFlushDrawBatch() { _KXFlushBatch(KXDrawFlushRequest); }

// Not where the game has polygons drawn as lines or points: shapes would show the edges between their
// triangles.
bool _KXIsCollecting() {
    if (depth == 0 || !batch.isEmpty())
        return depth != 0;
    GLint mode[2] = {GL_FILL, GL_FILL};
    glGetIntegerv(GL_POLYGON_MODE, mode);
    return mode[0] == GL_FILL && mode[1] == GL_FILL;
}

_KXDrawSink& _KXCurrentSink() { return _KXCut ? _KXClipSink() : _KXSinkBehindClips(); }

_KXDrawSink& _KXSinkBehindClips() { return _KXHasCamera ? _KXCameraSink() : _KXSinkWithoutCamera(); }

_KXDrawSink& _KXSinkWithoutCamera() {
    if (_KXIsCollecting())
        return batch;
    if (!_KXCurrentPen.isPlain())
        return penSink;
    return _KXImmediateSink();
}

void _KXDrawMesh(const _KXMeshCorner* corners, int count) {
    (_KXCut ? _KXDrawMeshCut : _KXDrawMeshBehindClips)(corners, count);
}

void _KXDrawMeshBehindClips(const _KXMeshCorner* corners, int count) {
    (_KXHasCamera ? _KXDrawMeshSeen : _KXDrawMeshWithoutCamera)(corners, count);
}

// At once it is a batch of its own: one that mostly has several triangles.
void _KXDrawMeshWithoutCamera(const _KXMeshCorner* corners, int count) {
    batch.mesh(corners, count);
    if (!_KXIsCollecting())
        batch.drawIfAny();
}

void _KXFlushBatch(KXDrawFlushReason reason) {
    _KXForgetView();
    _KXForgetWhatIsSeen();
    if (!batch.isEmpty())
        batch.flush(reason);
    _KXLeaveCutsToOpenGL(); // whoever lets it out may change what the scopes have seen
}

void _KXDropBatch() { batch.drop(); }

void _KXFreeBatch() {
    depth = 0;
    _KXFreePen();
    _KXFreeCameras();
    batch.freeMemory();
}

namespace {
// Makes sure that so many corners and one more run fit.
void BatchSink::makeRoom(int corners) {
    if (_vertexCount + corners > vertexCapacity || _runCount == runCapacity)
        flush(KXDrawFlushFull);
}

_KXVertexRun* BatchSink::lastRun(bool isLines) {
    _KXVertexRun* const last = _runCount > 0 ? &_block.get().runs[_runCount - 1] : nullptr;
    return last && last->isLines == isLines ? last : nullptr;
}

_KXVertexRun& BatchSink::addRun(const _KXVertexRun& run) {
    _KXVertexRun& added = _block.get().runs[_runCount++] = run;
    if (_KXCurrentShader)
        added.shaderValues = _KXKeepShaderValues(*_KXCurrentShader);
    return added;
}

_KXVertex* BatchSink::addTo(_KXVertexRun& run, int corners, KXColor color) {
    _KXVertex* const vertices = _block.get().vertices;
    _KXVertex* const room = vertices + _vertexCount;
    if (run.count > 0 && run.hasOneColor)
        run.hasOneColor = vertices[run.first].color == color;
    run.count += corners;
    _vertexCount += corners;
    return room;
}

_KXVertex* BatchSink::roomForQuads(int count, const _KXPaint& paint) {
    const auto& [fill, texture, color, showsEdges] = paint;
    makeRoom(4 * count);
    _KXDrawStatistics.quads += count;
    const bool solid = fill == _KXFill::Solid;
    _KXVertexRun* run = lastRun(false);
    // Solid fills go along with any texture: they need none.
    const bool fits = run && (_KXCurrentPen.shader ? run->texture == texture // which has white for them
                                                   : solid || run->texture == 0 || run->texture == texture);
    if (!fits || run->pen != _KXCurrentPen)
        run = &addRun({false, texture, solid, 0, _vertexCount, 0, _KXCurrentPen});
    run->hasSolid |= solid;
    if (!solid)
        run->texture = texture;
    return addTo(*run, 4 * count, color);
}

_KXVertex* BatchSink::roomForLine(float width, KXColor color) {
    makeRoom(2);
    ++_KXDrawStatistics.lines;
    _KXVertexRun* run = lastRun(true);
    if (!run || run->lineWidth != width || run->pen != _KXCurrentPen)
        run = &addRun({true, 0, true, width, _vertexCount, 0, _KXCurrentPen});
    return addTo(*run, 2, color);
}

_KXVertex solidVertex(KXPoint position, KXColor color) {
    return {position, 0, 0, static_cast<float>(_KXFill::Solid), color};
}

void BatchSink::quads(const _KXQuad* quads, int count, const _KXPaint& paint) {
    const auto fill = static_cast<float>(paint.fill);
    for (int taken; count > 0; count -= taken, quads += taken) {
        taken = std::min(count, vertexCapacity / 4);
        _KXVertex* vertex = roomForQuads(taken, paint);
        for (const _KXQuad* quad = quads; quad != quads + taken; ++quad)
            for (const _KXCorner& corner : quad->corners)
                *vertex++ = {corner.position, corner.u, corner.v, fill, paint.color};
    }
    if (paint.fill == _KXFill::Texture)
        _leavings.texture = paint.texture;
    leaveColor(paint.color);
}

void BatchSink::lines(const KXPoint* points, int count, bool closed, float width, KXColor color) {
    const auto add = [&](KXPoint from, KXPoint to) {
        _KXVertex* const ends = roomForLine(width, color);
        ends[0] = solidVertex(from, color);
        ends[1] = solidVertex(to, color);
    };
    for (int i = 1; i < count; ++i)
        add(points[i - 1], points[i]);
    if (closed && count > 1)
        add(points[count - 1], points[0]);
    leaveLineWidth(width);
    leaveColor(color);
}

void BatchSink::fan(const KXPoint* points, int count, KXColor color) {
    // Its own triangles, as quads whose second half is empty: other halves would cut the shape along other
    // lines.
    for (int i = 1; i + 1 < count; ++i) {
        _KXVertex* const vertices = roomForQuads(1, {_KXFill::Solid, 0, color});
        vertices[0] = solidVertex(points[0], color);
        vertices[1] = solidVertex(points[i], color);
        vertices[2] = vertices[3] = solidVertex(points[i + 1], color);
    }
    leaveColor(color);
}

void shade(_KXVertexRun& run) {
    run.hasOneColor = false;
    run.hasShades = true;
}

// Each triangle a quad whose second half is empty, as in a fan.
void BatchSink::mesh(const _KXMeshCorner* corners, int count) {
    for (const _KXMeshCorner* corner = corners; corner + 2 < corners + count; corner += 3) {
        const _KXPaint paint = {_KXFill::Solid, 0, corner->color};
        _KXVertex* const vertices = roomForQuads(1, paint);
        for (int i = 0; i < 3; ++i)
            vertices[i] = solidVertex(corner[i].position, _KXByteColor(corner[i].color));
        vertices[3] = vertices[2];
        if (!(vertices[0].color == vertices[1].color && vertices[0].color == vertices[2].color))
            shade(*lastRun(false));
    }
    if (count > 0)
        leaveColor(corners[count - 1].color);
}

// Where nothing was drawn, or it has left already, there is nothing to wait for.
void BatchSink::leaveColor(KXColor color) {
    if (isEmpty())
        return glColor4f(color.r, color.g, color.b, color.a);
    _leavings.hasColor = true;
    _leavings.color = color;
}

void BatchSink::leaveLineWidth(float width) {
    if (isEmpty())
        return glLineWidth(width);
    _leavings.lineWidth = width;
}

void BatchSink::flush(KXDrawFlushReason reason) {
    ++_KXDrawStatistics.flushes;
    ++_KXDrawStatistics.flushesBecause[reason];
    draw();
}

void BatchSink::draw() {
    KX_GL_CHECK("KXFlushDrawBatch");
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    _KXDrawVertexRuns(_block.get().vertices, _block.get().runs, _runCount);
    glBindTexture(GL_TEXTURE_2D, _leavings.texture ? _leavings.texture : static_cast<unsigned>(bound));
    if (_leavings.hasColor)
        glColor4f(_leavings.color.r, _leavings.color.g, _leavings.color.b, _leavings.color.a);
    if (_leavings.lineWidth > 0)
        glLineWidth(_leavings.lineWidth);
    drop();
}

void BatchSink::drop() {
    _vertexCount = _runCount = 0;
    _KXForgetShaderValues();
    _leavings = {};
}

void BatchSink::freeMemory() {
    drop();
    _block.free();
}
} // namespace
