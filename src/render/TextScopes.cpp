#include "render/TextScopes.h"

#include "render/CameraMap.h"
#include "render/DrawBatch.h"
#include "render/Pen.h"
#include "render/View.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <cmath>

// By default but for what matrices of large targets lack.
static bool isAbout(float value, float wanted, float tolerance = 1e-5f) {
    return std::fabs(value - wanted) < tolerance * wanted;
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
    return {flat && upright,
            {product(0, 0) * halfWidth, product(1, 1) * halfHeight},
            {(product(3, 0) + 1) * halfWidth, (product(3, 1) + 1) * halfHeight}};
}

// How many pixels of the target a unit has along each axis; none where upright things are not.
KXPoint _KXGlyphScope::scaleSeen() const {
    if (!_grid.isUpright || (_KXHasCamera && !_KXCurrentCamera.isUpright()))
        return KXZeroPoint;
    const float zoom = _KXHasCamera ? _KXCurrentCamera.xx : 1;
    return {_grid.scale.x * zoom, _grid.scale.y * zoom};
}

// The next of four steps between one power of two and the next, or what a turn has made of one.
static float nextStep(float zoom) {
    int exponent = 0;
    const float fraction = std::frexp(zoom, &exponent); // from a half to below 1
    return std::ldexp(std::ceil(fraction * 8 - 1e-4f) / 8, exponent);
}

// How many pixels a unit of glyphs is to have.
static float wantedScale(int size) {
    constexpr float largest = 2048, largestSeen = 256; // of an em, in pixels: it is enlarged beyond
    const float least = 1 / static_cast<float>(std::max(1, size)); // a pixel
    const bool isSeen = _KXHasCamera && _KXCurrentCamera.hasSharpText;
    if (!isSeen && !_KXTargetHasSharpText)
        return 1;
    const float direct = std::min(_KXPixelsPerUnit, std::max(1.0f, largest * least));
    if (!isSeen)
        return std::max(direct, least);
    const float seen = direct * nextStep(_KXCurrentCamera.zoom());
    return std::clamp(seen, least, std::max(direct, largestSeen * least));
}

_KXGlyphRaster _KXGlyphScope::rasterFor(int size) const {
    const KXPoint seen = scaleSeen();
    _KXGlyphRaster raster;
    raster.scale = wantedScale(size);
    raster.unit = {1 / raster.scale, 1 / raster.scale};
    raster.settles = _KXTargetHasSharpText || (_KXHasCamera && _KXCurrentCamera.hasSharpText);
    // A picture of whole pixels is not quite as high as it is wide.
    const float tolerance = raster.settles ? 1e-3f : 1e-5f;
    raster.isTargets = isAbout(seen.x, raster.scale) && isAbout(std::fabs(seen.y), raster.scale, tolerance);
    if (raster.isTargets && raster.settles)
        raster.unit = {1 / seen.x, 1 / std::fabs(seen.y)};
    return raster;
}

bool _KXGlyphScope::settle(KXPoint& point, const _KXGlyphRaster& raster) const {
    if (!raster.isTargets)
        return false;
    const KXPoint pixel = _grid(_KXHasCamera ? _KXCurrentCamera(point) : point);
    const KXPoint whole = {std::round(pixel.x), std::round(pixel.y)};
    if (raster.settles) {
        const KXPoint seen = scaleSeen();
        point = {point.x + (whole.x - pixel.x) / seen.x, point.y + (whole.y - pixel.y) / seen.y};
        return true;
    }
    constexpr float nothing = 1e-3f; // of a pixel changes no colour
    return std::fabs(pixel.x - whole.x) < nothing && std::fabs(pixel.y - whole.y) < nothing;
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
