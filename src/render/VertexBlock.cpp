#include "render/VertexBlock.h"

#include "render/DrawSink.h"
#include "render/DrawStatistics.h"
#include "render/Driver.h"
#include "render/FillProgram.h"
#include "render/GLFunctions.h"
#include "render/ShaderProgram.h"
#include "render/VertexStream.h"
#include "render/View.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>

namespace {
constexpr int cornersPerQuad = 4;

// Whatever arrays the game uses come back afterwards.
class ArrayScope {
public:
    ArrayScope() {
        glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
        // Texture coordinates go to the first texture, whichever the game has made active.
        if (_KXGL.clientActiveTexture)
            _KXGL.clientActiveTexture(GL_TEXTURE0);
        for (const GLenum array : {GL_NORMAL_ARRAY, GL_INDEX_ARRAY, GL_EDGE_FLAG_ARRAY})
            glDisableClientState(array);
        for (const GLenum array : {GL_VERTEX_ARRAY, GL_TEXTURE_COORD_ARRAY, GL_COLOR_ARRAY})
            glEnableClientState(array);
    }
    ~ArrayScope() { glPopClientAttrib(); }
    ArrayScope(const ArrayScope&) = delete;
    ArrayScope& operator=(const ArrayScope&) = delete;

    /// Takes the colours from their array, or all corners in one colour.
    void setColor(const KXColor* color) {
        if (color)
            glColor4f(color->r, color->g, color->b, color->a);
        if (_hasColors == (color == nullptr))
            return;
        _hasColors = color == nullptr;
        (_hasColors ? glEnableClientState : glDisableClientState)(GL_COLOR_ARRAY);
    }

private:
    bool _hasColors = true;
};

// Where OpenGL finds the corners, and how they are cut into calls.
class Corners {
public:
    /// The next run in its order is to be drawn.
    virtual void begin(const _KXVertexRun&) {}
    /// @param isPlain Whether they are pictures that OpenGL's fixed pipeline draws.
    virtual void draw(GLenum primitive, int first, int count, bool isPlain) = 0;

protected:
    ~Corners() = default;
};

// In the driver's own memory: one call for each run, and nothing in it that the driver need not read.
class StreamedCorners final : public Corners {
public:
    StreamedCorners(const _KXVertex* vertices, ArrayScope& arrays) : _vertices(vertices), _arrays(arrays) {}

    /// False where the driver has no room.
    bool upload(const _KXVertexRun* runs, int runCount);
    void begin(const _KXVertexRun& run) override;
    void draw(GLenum primitive, int first, int count, bool isPlain) override;

private:
    static constexpr std::size_t sizeWithoutColor = offsetof(_KXVertex, color);
    static std::size_t cornerSize(const _KXVertexRun& run) {
        return run.hasOneColor ? sizeWithoutColor : sizeof(_KXVertex);
    }

    const _KXVertex* _vertices;
    ArrayScope& _arrays;
    std::size_t _offset = 0; // of the run that is next
    int _runBegin = 0;
};

// In the library's memory, for a driver that draws in software. It draws faster what has one colour and what
// is in view, so long stretches of that are calls of their own.
class MemoryCorners final : public Corners {
public:
    MemoryCorners(const _KXVertex* vertices, ArrayScope& arrays);
    void begin(const _KXVertexRun& run) override {
        _KXCollectedLoad.addChange();
        _hasShades = run.hasShades;
    }
    void draw(GLenum primitive, int first, int count, bool isPlain) override;

private:
    void drawInOneColor(GLenum primitive, int first, int count, bool isPlain);
    void drawCalls(GLenum primitive, int first, int count);
    bool drawsPlainly();

    const _KXVertex* _vertices;
    ArrayScope& _arrays;
    const _KXView _view = _KXView::now();
    std::optional<bool> _drawsPlainly;
    bool _hasShades = false; // then a quad's first colour does not stand for it
};

// From how many quads on a stretch of alike ones is worth calls of its own: where OpenGL's state has to be
// changed for it, and where not, in what would else be one call.
constexpr int stretchWorthState = 64, stretchWorthCall = 16;

// In software, more do not stay in the processor's cache together.
constexpr int mostCornersPerCall = 1024;

int cornersOf(GLenum primitive) { return primitive == GL_LINES ? 2 : cornersPerQuad; }

// Cuts quads, or lines, where a long stretch of those with the same key begins and ends. What lies between
// such stretches stays together.
template<class Key, class Draw>
void cut(int first, int count, int corners, int worth, const Key& key, const Draw& draw) {
    const int end = first + count;
    int rest = first;
    for (int i = first, next; i < end; i = next) {
        const auto here = key(i);
        for (next = i + corners; next < end && key(next) == here;)
            next += corners;
        if (next - i < worth * corners)
            continue;
        if (rest < i)
            draw(rest, i - rest, false);
        draw(i, next - i, true);
        rest = next;
    }
    if (rest < end)
        draw(rest, end - rest, false);
}

void drawCall(GLenum primitive, int first, int count) {
    ++_KXDrawStatistics.drawCalls;
    glDrawArrays(primitive, first, count);
}

bool isWhite(KXColor color) { return color == KXColor{1, 1, 1, 1}; }

bool StreamedCorners::upload(const _KXVertexRun* runs, int runCount) {
    std::size_t bytes = 0;
    for (const _KXVertexRun* run = runs; run != runs + runCount; ++run)
        bytes += cornerSize(*run) * static_cast<std::size_t>(run->count);
    const _KXStreamRoom room = _KXMapVertexStream(bytes);
    if (!room.bytes)
        return false;
    auto* to = static_cast<unsigned char*>(room.bytes);
    for (const _KXVertexRun* run = runs; run != runs + runCount; ++run) {
        const std::size_t size = cornerSize(*run);
        for (const _KXVertex* corner = _vertices + run->first; corner != _vertices + run->first + run->count;
             ++corner, to += size)
            std::memcpy(to, corner, size);
    }
    _offset = room.offset;
    return _KXUnmapVertexStream();
}

void StreamedCorners::begin(const _KXVertexRun& run) {
    const std::size_t size = cornerSize(run);
    const auto stride = static_cast<GLsizei>(size);
    const auto at = [this](std::size_t member) { return reinterpret_cast<const void*>(_offset + member); };
    glVertexPointer(2, GL_FLOAT, stride, at(offsetof(_KXVertex, position)));
    glTexCoordPointer(3, GL_FLOAT, stride, at(offsetof(_KXVertex, u)));
    _arrays.setColor(run.hasOneColor ? &_vertices[run.first].color : nullptr);
    if (!run.hasOneColor)
        glColorPointer(4, GL_FLOAT, stride, at(offsetof(_KXVertex, color)));
    _runBegin = run.first;
    _offset += size * static_cast<std::size_t>(run.count);
}

void StreamedCorners::draw(GLenum primitive, int first, int count, bool) {
    drawCall(primitive, first - _runBegin, count);
}

MemoryCorners::MemoryCorners(const _KXVertex* vertices, ArrayScope& arrays)
    : _vertices(vertices), _arrays(arrays) {
    if (_KXGL.bindBuffer)
        _KXGL.bindBuffer(GL_ARRAY_BUFFER, 0);
    glVertexPointer(2, GL_FLOAT, sizeof *vertices, &vertices->position);
    glTexCoordPointer(3, GL_FLOAT, sizeof *vertices, &vertices->u);
    glColorPointer(4, GL_FLOAT, sizeof *vertices, &vertices->color);
}

void MemoryCorners::draw(GLenum primitive, int first, int count, bool isPlain) {
    cut(
        first, count, cornersOf(primitive), stretchWorthState, [this](int i) { return _vertices[i].color; },
        [&](int from, int corners, bool isOneColor) {
            if (isOneColor && !_hasShades)
                return drawInOneColor(primitive, from, corners, isPlain);
            _arrays.setColor(nullptr);
            drawCalls(primitive, from, corners);
        });
}

bool MemoryCorners::drawsPlainly() {
    if (!_drawsPlainly)
        _drawsPlainly = _KXIsPlainPipeline();
    return *_drawsPlainly;
}

void MemoryCorners::drawInOneColor(GLenum primitive, int first, int count, bool isPlain) {
    const _KXVertex& corner = _vertices[first];
    _arrays.setColor(&corner.color);
    // A multiplication by white need not be made for each pixel.
    const bool skipsColor = isPlain && isWhite(corner.color) && drawsPlainly();
    if (skipsColor)
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    drawCalls(primitive, first, count);
    if (skipsColor)
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
}

void MemoryCorners::drawCalls(GLenum primitive, int first, int count) {
    if (primitive != GL_QUADS)
        return drawCall(primitive, first, count);
    cut(
        first, count, cornersPerQuad, count > mostCornersPerCall ? 2 : stretchWorthCall,
        [this](int i) { return _view.contains(_vertices + i, cornersPerQuad); },
        [this](int from, int stretch, bool) {
            for (const int end = from + stretch; from < end; from += mostCornersPerCall) {
                const int taken = std::min(mostCornersPerCall, end - from);
                drawCall(GL_QUADS, from, taken);
                for (int i = from; i < from + taken; i += cornersPerQuad)
                    _KXCollectedLoad.addQuad(_vertices + i);
                _KXCollectedLoad.unloadIfFull();
            }
        });
}

void drawUntextured(Corners& corners, GLenum primitive, int first, int count) {
    glDisable(GL_TEXTURE_2D);
    corners.draw(primitive, first, count, false);
    glEnable(GL_TEXTURE_2D);
}

// Pictures, or glyphs, which software draws fastest with a program.
void drawTextured(const _KXVertex* vertices, int first, int count, Corners& corners) {
    if (vertices[first].fill == static_cast<float>(_KXFill::Texture))
        return corners.draw(GL_QUADS, first, count, true);
    const _KXFillProgramScope program(_KXFillProgram::Texture);
    corners.draw(GL_QUADS, first, count, false);
}

// Solid quads among those with a texture.
class MixedQuads {
public:
    MixedQuads(const _KXVertex* vertices, Corners& corners) : _vertices(vertices), _corners(corners) {}

    void draw(const _KXVertexRun& run) {
        const bool likesLargeCalls = _KXCurrentDriver == _KXDriver::Hardware;
        cutByKind(run.first, run.count,
                  likesLargeCalls ? std::numeric_limits<int>::max() / cornersPerQuad : stretchWorthState);
    }

private:
    bool isSolid(int i) const { return _vertices[i].fill == static_cast<float>(_KXFill::Solid); }

    void cutByKind(int first, int count, int worth) {
        cut(
            first, count, cornersPerQuad, worth, [this](int i) { return isSolid(i); },
            [this](int from, int corners, bool isOneKind) {
                isOneKind ? drawOneKind(from, corners) : drawTogether(from, corners);
            });
    }
    void drawOneKind(int first, int count) {
        if (isSolid(first))
            drawUntextured(_corners, GL_QUADS, first, count);
        else
            drawTextured(_vertices, first, count, _corners);
    }
    void drawTogether(int first, int count) {
        if (const _KXFillProgramScope program(_KXFillProgram::Mixed); program)
            return _corners.draw(GL_QUADS, first, count, false);
        cutByKind(first, count, 1); // without a program each stretch is a call
    }

    const _KXVertex* _vertices;
    Corners& _corners;
};

void drawQuads(const _KXVertex* vertices, const _KXVertexRun& run, Corners& corners) {
    if (!run.texture)
        return drawUntextured(corners, GL_QUADS, run.first, run.count);
    ++_KXDrawStatistics.textureBinds;
    glBindTexture(GL_TEXTURE_2D, run.texture);
    if (run.hasSolid)
        MixedQuads(vertices, corners).draw(run);
    else
        drawTextured(vertices, run.first, run.count, corners);
}

// Corners of any kind, where they can be drawn in colours that are multiplied by their alpha.
bool drawProduct(const _KXVertexRun& run, Corners& corners) {
    const _KXFillProgramScope program(_KXFillProgram::Product);
    if (!program)
        return false;
    if (run.texture) {
        ++_KXDrawStatistics.textureBinds;
        glBindTexture(GL_TEXTURE_2D, run.texture);
    }
    if (run.isLines)
        glLineWidth(run.lineWidth);
    corners.draw(run.isLines ? GL_LINES : GL_QUADS, run.first, run.count, false);
    return true;
}

void drawShaded(const _KXVertexRun& run, Corners& corners) {
    const _KXShaderScope shader(run.shaderValues, run.texture, _KXWantsProduct(run.pen));
    _KXDrawStatistics.textureBinds += run.texture != 0;
    if (run.isLines)
        glLineWidth(run.lineWidth);
    corners.draw(run.isLines ? GL_LINES : GL_QUADS, run.first, run.count, false);
}

void drawRuns(const _KXVertex* vertices, const _KXVertexRun* runs, int runCount, Corners& corners) {
    _KXBlendScope blend;
    for (const _KXVertexRun* run = runs; run != runs + runCount; ++run) {
        corners.begin(*run);
        blend.use(run->pen);
        if (run->pen.shader) {
            drawShaded(*run, corners);
            continue;
        }
        if (_KXWantsProduct(run->pen) && drawProduct(*run, corners))
            continue;
        if (run->isLines) {
            glLineWidth(run->lineWidth);
            drawUntextured(corners, GL_LINES, run->first, run->count);
        } else {
            drawQuads(vertices, *run, corners);
        }
    }
}
} // namespace

void _KXDrawVertexRuns(const _KXVertex* vertices, const _KXVertexRun* runs, int runCount) {
    ArrayScope arrays;
    if (_KXCurrentDriver == _KXDriver::Hardware) {
        StreamedCorners streamed(vertices, arrays);
        if (streamed.upload(runs, runCount))
            return drawRuns(vertices, runs, runCount, streamed);
    }
    MemoryCorners inMemory(vertices, arrays);
    drawRuns(vertices, runs, runCount, inMemory);
}
