#pragma once

#include <Kobaltrix/Kobaltrix.h>

#include <string>

/// A firefly in the dark, and the light it is after.
class Scene {
public:
    /// @param assets the folder of the game's files. Needs a window. Throws std::runtime_error if a file is
    /// missing.
    explicit Scene(const std::string& assets);

    /// One logic step. @param push where the player steers: -1 to 1 in each direction.
    void step(KXPoint push);
    void draw();

    int score() const { return _score; }
    KXPoint firefly() const { return _at; }
    /// Puts the light somewhere.
    void setLight(KXPoint light) { _light = light; }

    static const KXSize size;

private:
    bool touches(KXPoint point) const;

    KXSprite _firefly;
    KXPoint _at = {80, 180};
    KXPoint _light = {440, 120};
    int _score = 0;
};
