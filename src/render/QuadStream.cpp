#include "render/QuadStream.h"

#include <SDL_opengl.h>

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

void _KXDrawTexturedQuad(unsigned texture, const _KXTextureRect& source, KXColor color,
                         const _KXAffine& placement, float width, float height) {
    const KXPoint corners[] = {placement(0, 0), placement(width, 0), placement(width, height),
                               placement(0, height)};
    glBindTexture(GL_TEXTURE_2D, texture);
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

void _KXDrawSolidQuads(const _KXSolidQuad* quads, int count, KXColor color) {
    const _KXSolidDrawingScope solid(color);
    glBegin(GL_QUADS);
    for (const _KXSolidQuad* quad = quads; quad != quads + count; ++quad) {
        glVertex2i(quad->x1, quad->y1);
        glVertex2i(quad->x2, quad->y1);
        glVertex2i(quad->x2, quad->y2);
        glVertex2i(quad->x1, quad->y2);
    }
    glEnd();
}

_KXSolidDrawingScope::_KXSolidDrawingScope(KXColor color) {
    glDisable(GL_TEXTURE_2D);
    glColor4f(color.r, color.g, color.b, color.a);
}

_KXSolidDrawingScope::~_KXSolidDrawingScope() { glEnable(GL_TEXTURE_2D); }
