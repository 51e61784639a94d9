#include "render/TextScopes.h"

#include "render/CameraMap.h"
#include "render/DrawBatch.h"
#include "render/Pen.h"

#include <SDL_opengl.h>

#include <cmath>

static bool isAbout(float value, float wanted) {
    return std::fabs(value - wanted) < 1e-5f; // what matrices of large targets lack
}

_KXPixelGrid _KXPixelGrid::now() {
    GLfloat model[16], projection[16];
    GLint viewport[4];
    glGetFloatv(GL_MODELVIEW_MATRIX, model);
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
    // What (x, y, 0, 1) becomes: column by column, as OpenGL keeps its matrices.
    const auto product = [&](int column, int row) {
        float sum = 0;
        for (int i = 0; i < 4; ++i)
            sum += projection[4 * i + row] * model[4 * column + i];
        return sum;
    };
    const float halfWidth = static_cast<float>(viewport[2]) / 2,
                halfHeight = static_cast<float>(viewport[3]) / 2;
    const bool flat = product(0, 3) == 0 && product(1, 3) == 0 && isAbout(product(3, 3), 1);
    const bool upright = product(1, 0) == 0 && product(0, 1) == 0;
    return {flat && upright && isAbout(product(0, 0) * halfWidth, 1) &&
                isAbout(std::fabs(product(1, 1) * halfHeight), 1),
            {(product(3, 0) + 1) * halfWidth, (product(3, 1) + 1) * halfHeight}};
}

bool _KXGlyphScope::isOnPixels(KXPoint point) const {
    // A thousandth of a pixel changes no colour.
    const auto isWhole = [](float value) { return std::fabs(value - std::round(value)) < 1e-3f; };
    if (_KXHasCamera)
        point = _KXCurrentCamera(point);
    return _grid.natural && (!_KXHasCamera || _KXCurrentCamera.isNatural()) &&
           isWhole(point.x + _grid.origin.x) && isWhole(point.y + _grid.origin.y);
}

static bool blendsGlyphs() {
    GLint source = 0, destination = 0, environment = 0;
    glGetIntegerv(GL_BLEND_SRC, &source);
    glGetIntegerv(GL_BLEND_DST, &destination);
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &environment);
    const bool blends =
        source == GL_SRC_ALPHA && destination == GL_ONE_MINUS_SRC_ALPHA && glIsEnabled(GL_BLEND);
    return (blends || _KXCurrentPen.blend) && environment == GL_MODULATE && glIsEnabled(GL_TEXTURE_2D);
}

_KXGlyphScope::_KXGlyphScope() : _changed(!blendsGlyphs()) {
    if (!_changed)
        return;
    _KXFlushBatch(KXDrawFlushText);
    glPushAttrib(GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_TEXTURE_BIT);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
}

_KXGlyphScope::~_KXGlyphScope() {
    if (!_changed)
        return;
    _KXFlushBatch(KXDrawFlushText);
    glPopAttrib();
}

_KXPolygonTextScope::_KXPolygonTextScope(KXPoint origin) {
    _KXFlushBatch(KXDrawFlushText);
    _blend.use(_KXCurrentPen);
    if (_KXCurrentShader)
        _shader.emplace(_KXKeepShaderValues(*_KXCurrentShader), 0, _KXWantsProduct(_KXCurrentPen));
    glPushMatrix();
    glDisable(GL_TEXTURE_2D);
    if (_KXHasCamera)
        _KXMultiplyCamera();
    glRotatef(180, 1, 0, 0);
    glTranslatef(origin.x, -origin.y, 0);
}

_KXPolygonTextScope::~_KXPolygonTextScope() {
    _shader.reset();
    _KXForgetShaderValues();
    glEnable(GL_TEXTURE_2D);
    glPopMatrix();
}

void _KXPolygonTextScope::setColor(KXColor color) {
    const float product = _KXWantsProduct(_KXCurrentPen) && !_shader ? color.a : 1;
    glColor4f(color.r * product, color.g * product, color.b * product, color.a);
}

void _KXPolygonTextScope::moveBy(float x) { glTranslatef(x, 0, 0); }
