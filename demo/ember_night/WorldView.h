#pragma once

#include "App.h"
#include "Particles.h"
#include "World.h"

/// What can be touched of each figure, as the sprite files say.
HitBoxes loadHitBoxes(const Assets& assets);

/// Shows a night: draws a picture of the world, and lets its events be heard.
class WorldView {
public:
    explicit WorldView(App& app);

    /// One logic step: animations and particles follow the picture.
    void step(const Picture& picture);
    /// Draws the world with its light, and above it the score, the fire and the time.
    void draw(const Picture& picture);

private:
    void happened(const Event& event);
    void drawWorld(const Picture& picture);
    void drawLight(const Picture& picture);
    void drawGlow(KXPoint at, float radius, KXColor color);
    void drawPlayer(int index, const Picture::Player& player, bool blinks);
    void drawStatus(const Picture& picture);
    void drawCarried(int index, int carried);
    using Flock = std::vector<std::unique_ptr<KXSprite>>;
    void provide(Flock& flock, std::size_t count, const char* file);

    App& _app;
    KXSprite _players[2], _fire;
    Flock _moths, _bats;
    KXTexture _light; ///< How bright it is where, in half of the window's resolution.
    Particles _particles;
    KXTimer _emberTimer;
    int _flicker = 0, _shaking = 0;
};
