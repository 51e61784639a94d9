#pragma once

#include "App.h"
#include "Particles.h"

/// Draws a level that is played, between its steps, seen by a camera that follows the kid.
class WorldView {
public:
    WorldView(App& app, Stage& level, int number);

    /// One logic step, after that of the world.
    void step(const World& world);
    void draw(const World& world);

    static constexpr float zoom = 2;

private:
    void stepCamera(const World& world);
    void happened(const Event& event);
    void drawBehind(KXPoint centre);
    void drawGrowth(KXRect part);
    void drawThings(const World& world, float fraction);
    void drawAnimals(const World& world, float fraction);
    void drawKid(const World& world, float fraction);
    void drawSigns(const World& world, KXRect part);

    App& _app;
    Stage& _level;
    int _number;
    KXSprite _kid, _flower;
    std::vector<KXSprite> _beetles, _crows, _bells;
    Particles _particles;
    KXPoint _eye = {0, 0}, _eyeBefore = {0, 0}; ///< What the camera looks at.
    float _ahead = 0;                           ///< How far it looks ahead of the kid.
    bool _isFirst = true;
};
