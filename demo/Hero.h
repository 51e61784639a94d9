#pragma once

#include "Assets.h"

/// The one who walks in the valley: steered with the arrow keys, hops with the space bar.
class Hero {
public:
    explicit Hero(const Assets& assets);

    /// One logic step: reads the keys and the wheel.
    void step();
    /// Puts the middle of the figure somewhere.
    void place(KXPoint middle);
    void draw();
    void drawBox();
    /// Whether the figure touches a box.
    bool touches(KXRect box) const;

private:
    KXRect box() const;
    void play(const char* what);

    KXSprite _sprite;
    KXPoint _position = {120, 340};
    KXDirection _facing = KXDirectionRight;
    KXValueInterpolater _hop; ///< How far above the ground.
    bool _hopping = false;
};

/// A sprite's box on the screen. @param at where the sprite is drawn.
KXRect boxOnScreen(const KXSprite& sprite, KXPoint at, const char* name);
