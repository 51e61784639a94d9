#pragma once

#include "Game.h"

#include <KobaltrixTest/KXTestClock.h>
#include <KobaltrixTest/KXTestUser.h>

#include <initializer_list>

/// Somebody at the game. What takes steps are frames of the game's own loop: each is a step on a display of
/// 60 Hz, which is what most have, and more on slower ones.
class Keeper : public KXTestUser {
public:
    explicit Keeper(Game& game, unsigned displayRate = 60)
        : KXTestUser(game.app.window.id()), _game(game), _displayRate(displayRate) {}

    void step(unsigned count = 1) override {
        constexpr unsigned second = 1'000'000'000;
        for (unsigned i = 0; i < count; ++i) {
            _game.frame();
            KXTestClock::current()->advanceNanoseconds(second / _displayRate - second / 60); // it has waited
        }
    }
    void clicks(std::initializer_list<KXPoint> points) {
        for (const KXPoint point : points)
            click(point);
    }
    void presses(std::initializer_list<KXKeyNumber> keys) {
        for (const KXKeyNumber key : keys)
            press(key);
    }
    void types(const char* text) {
        type(text);
        step();
    }

private:
    Game& _game;
    unsigned _displayRate;
};
