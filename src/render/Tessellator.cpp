#include "render/Tessellator.h"

#include <SDL_opengl.h>

#include <GL/glu.h>

#include <array>
#include <deque>
#include <memory>
#include <new>

#ifndef GLAPIENTRY // not every system's headers keep it
#define GLAPIENTRY APIENTRY
#endif

namespace {
struct Vertex {
    std::array<GLdouble, 3> place;
};

// What a run of the tessellator takes and gives. It calls from C: nothing may be thrown through it.
struct Work {
    std::deque<Vertex> vertices; // do not move
    _KXContours lines;           // of triangles one for all of them
    bool failed = false;

    template<class Act>
    void attempt(Act act) {
        try {
            act();
        } catch (const std::bad_alloc&) {
            failed = true;
        }
    }
};

Work& workOf(void* data) { return *static_cast<Work*>(data); }

void GLAPIENTRY begin(GLenum, void* data) {
    Work& work = workOf(data);
    work.attempt([&] { work.lines.emplace_back(); });
}

void GLAPIENTRY addVertex(void* vertex, void* data) {
    Work& work = workOf(data);
    const auto& place = static_cast<const Vertex*>(vertex)->place;
    work.attempt([&] {
        work.lines.back().push_back({static_cast<float>(place[0]), static_cast<float>(place[1])});
    });
}

void GLAPIENTRY combine(GLdouble place[3], void* [4], GLfloat[4], void** made, void* data) {
    Work& work = workOf(data);
    *made = nullptr;
    work.attempt([&] {
        work.vertices.push_back({{place[0], place[1], 0}});
        *made = &work.vertices.back();
    });
}

void GLAPIENTRY fail(GLenum, void* data) { workOf(data).failed = true; }

// With this one there are triangles, and neither strips nor fans of them.
void GLAPIENTRY takeEdgeFlag(GLboolean, void*) {}

struct Free {
    void operator()(GLUtesselator* tessellator) const { gluDeleteTess(tessellator); }
};

template<class Function>
void listen(GLUtesselator* tessellator, GLenum what, Function function) {
    gluTessCallback(tessellator, what, reinterpret_cast<void(GLAPIENTRY*)()>(function));
}

_KXContours tessellate(const _KXContours& contours, _KXInside rule, bool wantsOutlines) {
    const std::unique_ptr<GLUtesselator, Free> tessellator(gluNewTess());
    if (!tessellator)
        throw std::bad_alloc();
    Work work;
    GLUtesselator* const it = tessellator.get();
    listen(it, GLU_TESS_BEGIN_DATA, begin);
    listen(it, GLU_TESS_VERTEX_DATA, addVertex);
    listen(it, GLU_TESS_COMBINE_DATA, combine);
    listen(it, GLU_TESS_ERROR_DATA, fail);
    if (!wantsOutlines)
        listen(it, GLU_TESS_EDGE_FLAG_DATA, takeEdgeFlag);
    gluTessProperty(it, GLU_TESS_BOUNDARY_ONLY, wantsOutlines ? GL_TRUE : GL_FALSE);
    gluTessProperty(it, GLU_TESS_WINDING_RULE,
                    rule == _KXInside::GoneRound ? GLU_TESS_WINDING_NONZERO : GLU_TESS_WINDING_POSITIVE);
    gluTessNormal(it, 0, 0, 1); // else it looks for a plane of its own
    gluTessBeginPolygon(it, &work);
    for (const _KXContour& contour : contours) {
        gluTessBeginContour(it);
        for (const KXPoint& point : contour) {
            work.vertices.push_back({{point.x, point.y, 0}});
            gluTessVertex(it, work.vertices.back().place.data(), &work.vertices.back());
        }
        gluTessEndContour(it);
    }
    gluTessEndPolygon(it);
    if (work.failed)
        work.lines.clear();
    return std::move(work.lines);
}
} // namespace

std::vector<KXPoint> _KXTriangles(const _KXContours& contours, _KXInside rule) {
    const _KXContours runs = tessellate(contours, rule, false);
    std::vector<KXPoint> triangles;
    for (const _KXContour& run : runs)
        triangles.insert(triangles.end(), run.begin(), run.end());
    return triangles;
}

_KXContours _KXOutlines(const _KXContours& contours, _KXInside rule) {
    return tessellate(contours, rule, true);
}
