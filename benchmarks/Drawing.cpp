#include "Drawing.h"

#include <SDL_opengl.h>

#include <cmath>
#include <numbers>

std::vector<Place> places(int count, int rotatedEvery) {
    std::vector<Place> result;
    unsigned seed = 1;
    const auto random = [&seed](int below) {
        seed = seed * 1103515245u + 12345u;
        return static_cast<int>((seed >> 16) % static_cast<unsigned>(below));
    };
    for (int i = 0; i < count; ++i) {
        const bool rotated = rotatedEvery && i % rotatedEvery == 0;
        result.push_back({random(static_cast<int>(benchWindow.width)),
                          random(static_cast<int>(benchWindow.height)), rotated ? 1 + random(359) : 0});
    }
    return result;
}

std::unique_ptr<KXTexture> plainTexture(int side) {
    KXRenderContext* const window = KXCurrentRenderContext();
    auto texture = std::make_unique<KXTexture>(side, side);
    texture->setRenderContext();
    KXDrawRectFill({{0, 0}, texture->size()}, {0.3f, 0.6f, 0.9f, 1});
    texture->unsetRenderContext();
    window->setRenderContext();
    return texture;
}

Floor::Floor(const std::vector<Place>& places, int side) {
    const auto length = static_cast<float>(side);
    const auto middle = static_cast<float>(side / 2);
    for (const auto& [x, y, rotation] : places) {
        const double angle = rotation * std::numbers::pi / 180;
        const auto cosine = static_cast<float>(std::cos(angle)), sine = static_cast<float>(std::sin(angle));
        const float corners[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
        for (const auto& [u, v] : corners) {
            const float dx = u * length - middle, dy = v * length - middle;
            _corners.push_back({static_cast<float>(x) + middle + cosine * dx - sine * dy,
                                static_cast<float>(y) + middle + sine * dx + cosine * dy,
                                u,
                                v,
                                {1, 1, 1, 1}});
        }
    }
}

void Floor::draw(bool textured) const {
    glVertexPointer(2, GL_FLOAT, sizeof(Corner), &_corners[0].x);
    glTexCoordPointer(2, GL_FLOAT, sizeof(Corner), &_corners[0].u);
    glColorPointer(4, GL_FLOAT, sizeof(Corner), &_corners[0].color);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    if (textured)
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    else
        glDisable(GL_TEXTURE_2D);
    glDrawArrays(GL_QUADS, 0, static_cast<GLsizei>(_corners.size()));
    glEnable(GL_TEXTURE_2D);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glDisableClientState(GL_COLOR_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
}
