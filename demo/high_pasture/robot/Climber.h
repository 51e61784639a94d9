#pragma once

#include "Game.h"
#include "Planner.h"

#include <KobaltrixTest/KXTestClock.h>
#include <KobaltrixTest/KXTestUser.h>

#include <set>

/// Somebody at the game. Each step is a frame of its own loop, on a display of 30 Hz: two steps of the game.
class Climber : public KXTestUser {
public:
    explicit Climber(Game& game) : KXTestUser(game.app.window.id()), _game(game) {}

    void step(unsigned count = 1) override {
        constexpr unsigned second = 1'000'000'000;
        for (unsigned i = 0; i < count; ++i) {
            _game.frame();
            KXTestClock::current()->advanceNanoseconds(second / 30 - second / 60); // it has waited
        }
    }
    /// Climbs home, if the game shows a level.
    void climb() {
        const auto level = dynamic_cast<const LevelScene*>(&_game.scene());
        const std::vector<Input> inputs = level ? inputsOf(findWay(level->world())) : std::vector<Input>();
        for (std::size_t i = 0; i < inputs.size(); i += 2) {
            keep(KXKeyRight, inputs[i].walk > 0);
            keep(KXKeyLeft, inputs[i].walk < 0);
            keep(KXKeySpace, inputs[i].holdsJump);
            step();
        }
        for (const KXKeyNumber key : {KXKeyRight, KXKeyLeft, KXKeySpace})
            keep(key, false);
    }

private:
    void keep(KXKeyNumber key, bool down) {
        if (down && _held.insert(key).second)
            hold(key);
        else if (!down && _held.erase(key))
            release(key);
    }

    Game& _game;
    std::set<KXKeyNumber> _held;
};
