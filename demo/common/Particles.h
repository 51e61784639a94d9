#pragma once

#include <Kobaltrix/Kobaltrix.h>

#include <vector>

/// Sparks that fly, fall and fade, and numbers that rise.
class Particles {
public:
    /// Sends sparks off in all directions.
    void burst(KXPoint at, int count, float speed, KXColor color);
    /// A spark that rises from the fire.
    void ember(KXPoint at);
    /// Points won or lost.
    void number(KXPoint at, int points);
    /// One logic step.
    void step();
    void draw();

private:
    struct Spark {
        KXPoint at, velocity;
        float fall;
        int left, lifetime; // steps
        KXColor color;
    };
    struct Number {
        KXPoint at;
        int points, left;
    };
    std::vector<Spark> _sparks;
    std::vector<Number> _numbers;
};
