#pragma once

#include "Game.h"

#include <KobaltrixTest/KXTestClock.h>
#include <KobaltrixTest/KXTestUser.h>

#include <initializer_list>

/// Somebody at the game. What takes time are frames of the game's own loop: each is a step on a display of
/// 60 Hz, which is what most have, and more on slower ones.
class Keeper : public KXTestUser {
public:
    explicit Keeper(Game& game, unsigned displayRate = 60)
        : KXTestUser(game.app.window.id()), _game(game), _displayRate(displayRate) {}

    /// Lets the game go on.
    void frames(unsigned count = 1) {
        constexpr unsigned second = 1'000'000'000;
        for (unsigned i = 0; i < count; ++i) {
            _game.frame();
            KXTestClock::current()->advanceNanoseconds(second / _displayRate - second / 60); // it has waited
        }
    }

    // What takes frames; each ends with one in which everything is let go.
    void clicks(std::initializer_list<KXPoint> points) {
        for (const KXPoint point : points) {
            presses(point);
            release(KXMouseLeft);
            frames();
        }
    }
    void drags(KXPoint from, KXPoint to) {
        presses(from);
        move(to);
        frames();
        release(KXMouseLeft);
        frames();
    }
    void taps(std::initializer_list<KXKeyNumber> keys) {
        for (const KXKeyNumber key : keys) {
            hold(key);
            frames();
            release(key);
            frames();
        }
    }
    void types(const char* text) {
        type(text);
        frames();
    }

private:
    void presses(KXPoint point) {
        move(point);
        frames(); // widgets look at the pointer before the press
        hold(KXMouseLeft);
        frames();
    }

    Game& _game;
    unsigned _displayRate;
};
