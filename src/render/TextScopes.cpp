#include "render/TextScopes.h"

#include "render/DrawBatch.h"

#include <SDL_opengl.h>

static bool blendsGlyphs() {
    GLint source = 0, destination = 0, environment = 0;
    glGetIntegerv(GL_BLEND_SRC, &source);
    glGetIntegerv(GL_BLEND_DST, &destination);
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &environment);
    return source == GL_SRC_ALPHA && destination == GL_ONE_MINUS_SRC_ALPHA && environment == GL_MODULATE &&
           glIsEnabled(GL_BLEND) && glIsEnabled(GL_TEXTURE_2D);
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
    glPushMatrix();
    glDisable(GL_TEXTURE_2D);
    glRotatef(180, 1, 0, 0);
    glTranslatef(origin.x, -origin.y, 0);
}

_KXPolygonTextScope::~_KXPolygonTextScope() {
    glEnable(GL_TEXTURE_2D);
    glPopMatrix();
}

void _KXPolygonTextScope::setColor(KXColor color) { glColor4f(color.r, color.g, color.b, color.a); }

void _KXPolygonTextScope::moveBy(float x) { glTranslatef(x, 0, 0); }
