#pragma once

#include "Hero.h"

#include <memory>
#include <vector>

/// Moths that drift to and fro, flare up at a touch, and come back.
class Moths {
public:
    explicit Moths(const Assets& assets);

    /// One logic step. @param hero whose touch they fear.
    void step(const Hero& hero);
    void draw();
    void drawBoxes();

private:
    struct Moth {
        std::unique_ptr<KXSprite> sprite;
        KXPoint home;
        KXValueInterpolater across, up, light;

        KXPoint position() const;
        void step(const Hero& hero);
    };

    std::vector<Moth> _moths;
};
