#include "render/DrawSink.h"
#include "render/DrawStatistics.h"
#include "render/Driver.h"
#include "render/FillProgram.h"
#include "render/View.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <optional>

namespace {
class ImmediateSink final : public _KXDrawSink {
public:
    void quads(const _KXQuad* quads, int count, const _KXPaint& paint) override;
    void lines(const KXPoint* points, int count, bool closed, float width, KXColor color) override;
    void fan(const KXPoint* points, int count, KXColor color) override;
    void leaveColor(KXColor color) override { glColor4f(color.r, color.g, color.b, color.a); }
    void leaveLineWidth(float width) override { glLineWidth(width); }

    void forgetView() { _view.reset(); }

private:
    void bindToDraw(unsigned texture, const _KXQuad* quads, int count);
    bool isInView(const _KXQuad* quads, int count);
    bool keepsApart(const _KXQuad* quads, int count);
    void collect(const _KXQuad* quads, int count);

    std::optional<_KXView> _view;
    int _drawnInView = 0; // quads since it was looked at
    bool _lastWasInView = true;
    unsigned _lastTexture = 0;
};

// Turns 2D texturing off and sets the colour for as long as the scope lasts, then turns texturing on.
class SolidScope {
public:
    explicit SolidScope(KXColor color) {
        ++_KXDrawStatistics.drawCalls;
        glDisable(GL_TEXTURE_2D);
        glColor4f(color.r, color.g, color.b, color.a);
    }
    ~SolidScope() { glEnable(GL_TEXTURE_2D); }
    SolidScope(const SolidScope&) = delete;
    SolidScope& operator=(const SolidScope&) = delete;
};

// Switches edge flags on. They only show where the game has polygons drawn as lines or points, and reading
// the present flag would end the driver's batch, so nothing is done when polygons are filled.
class EdgeFlagScope {
public:
    explicit EdgeFlagScope(bool wanted) {
        if (!wanted)
            return;
        GLint mode[2] = {GL_FILL, GL_FILL};
        glGetIntegerv(GL_POLYGON_MODE, mode);
        _changed = mode[0] != GL_FILL || mode[1] != GL_FILL;
        if (!_changed)
            return;
        glGetBooleanv(GL_EDGE_FLAG, &_previous);
        glEdgeFlag(GL_TRUE);
    }
    ~EdgeFlagScope() {
        if (_changed)
            glEdgeFlag(_previous);
    }
    EdgeFlagScope(const EdgeFlagScope&) = delete;
    EdgeFlagScope& operator=(const EdgeFlagScope&) = delete;

private:
    bool _changed = false;
    GLboolean _previous = GL_TRUE;
};

void emitTextured(const _KXQuad* quads, int count) {
    glBegin(GL_QUADS);
    for (const _KXQuad* quad = quads; quad != quads + count; ++quad)
        for (const _KXCorner& corner : quad->corners) {
            glTexCoord2f(corner.u, corner.v);
            glVertex2f(corner.position.x, corner.position.y);
        }
    glEnd();
}

void emitSolid(const _KXQuad* quads, int count) {
    glBegin(GL_QUADS);
    for (const _KXQuad* quad = quads; quad != quads + count; ++quad)
        for (const _KXCorner& corner : quad->corners)
            glVertex2f(corner.position.x, corner.position.y);
    glEnd();
}

void emitPoints(GLenum primitive, const KXPoint* points, int count) {
    glBegin(primitive);
    for (const KXPoint* point = points; point != points + count; ++point)
        glVertex2f(point->x, point->y);
    glEnd();
}

bool ImmediateSink::isInView(const _KXQuad* quads, int count) {
    if (!_view)
        _view = _KXView::now();
    for (const _KXQuad* quad = quads; quad != quads + count; ++quad)
        if (!_view->contains(quad->corners, 4))
            return false;
    return true;
}

// What is to be drawn joins what the driver has collected.
void ImmediateSink::collect(const _KXQuad* quads, int count) {
    constexpr int quadsInAView = 1024; // by then the game may have moved it with a matrix of its own
    _KXCollectedLoad.unloadIfFull();
    for (const _KXQuad* quad = quads; quad != quads + count; ++quad)
        _KXCollectedLoad.addQuad(quad->corners);
    _drawnInView += count;
    if (_drawnInView < quadsInAView)
        return;
    _drawnInView = 0;
    _view.reset();
}

// Whether a driver that draws in software had better not merge quads with those before. It is worth a change
// of the texture for the sake of small ones only: what is large costs about the same either way.
bool ImmediateSink::keepsApart(const _KXQuad* quads, int count) {
    constexpr float large = 48;
    if (_KXCurrentDriver == _KXDriver::Hardware || _KXExtentOf(quads->corners) > large ||
        isInView(quads, count) == _lastWasInView)
        return false;
    _lastWasInView = !_lastWasInView;
    return true;
}

// Drivers merge draws of one texture. Where that is not wanted, the texture changes for a moment, which ends
// the merging.
void ImmediateSink::bindToDraw(unsigned texture, const _KXQuad* quads, int count) {
    if (keepsApart(quads, count))
        glBindTexture(GL_TEXTURE_2D, _lastTexture = 0);
    if (texture != _lastTexture)
        _KXCollectedLoad.addChange();
    ++_KXDrawStatistics.textureBinds;
    ++_KXDrawStatistics.drawCalls;
    glBindTexture(GL_TEXTURE_2D, _lastTexture = texture);
}

void ImmediateSink::quads(const _KXQuad* quads, int count, const _KXPaint& paint) {
    _KXDrawStatistics.quads += count;
    collect(quads, count);
    if (paint.fill == _KXFill::Solid) {
        const SolidScope solid(paint.color);
        const EdgeFlagScope edgeFlags(paint.showsEdges);
        emitSolid(quads, count);
        return;
    }
    GLint bound = 0;
    if (paint.fill == _KXFill::Glyph)
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    bindToDraw(paint.texture, quads, count);
    leaveColor(paint.color);
    if (paint.fill == _KXFill::Texture)
        return emitTextured(quads, count);
    {
        const _KXFillProgramScope program(_KXFillProgram::Texture);
        emitTextured(quads, count);
    }
    glBindTexture(GL_TEXTURE_2D, _lastTexture = static_cast<unsigned>(bound));
}

void ImmediateSink::lines(const KXPoint* points, int count, bool closed, float width, KXColor color) {
    _KXDrawStatistics.lines += count > 1 && closed ? count : count - 1;
    glLineWidth(width);
    const SolidScope solid(color);
    emitPoints(closed ? GL_LINE_LOOP : GL_LINE_STRIP, points, count);
}

void ImmediateSink::fan(const KXPoint* points, int count, KXColor color) {
    _KXDrawStatistics.quads += std::max(0, count - 2);
    const SolidScope solid(color);
    emitPoints(GL_TRIANGLE_FAN, points, count);
}
} // namespace

static constinit ImmediateSink immediate;

_KXDrawSink& _KXImmediateSink() { return immediate; }

void _KXForgetView() { immediate.forgetView(); }
