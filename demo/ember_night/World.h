#pragma once

#include <Kobaltrix/Kobaltrix.h>

#include <vector>

/// What one player wants in one step.
struct Input {
    bool left = false, right = false, up = false, down = false, hop = false;
};

/// Something that was just now heard and seen.
struct Event {
    enum Kind { Pick, Feed, Hop, Hurt, Bat, Dawn, Dark };
    Kind kind;
    KXPoint at;
    int amount; ///< Points won with it.
};

/// All that is to be seen: what the view draws, and what a host sends to a guest.
struct Picture {
    struct Player {
        bool present = false;
        KXPoint at = {0, 0}; ///< Between the feet.
        KXDirection facing = KXDirectionRight;
        bool walking = false;
        float height = 0; ///< Of a hop.
        int hurt = 0;     ///< Steps for which nothing can happen any more.
        int carried = 0;  ///< Moths that follow.
    };
    struct Moth {
        KXPoint at;
        float light; ///< 0 to 1.
    };
    struct Bat {
        KXPoint at;
        bool flees;
    };
    enum Phase { Night, Dawn, Dark };

    Player players[2];
    std::vector<Moth> moths;
    std::vector<Bat> bats;
    float fuel = 100;    ///< Of the fire, 0 to 100.
    float nightLeft = 1; ///< 1 at dusk, 0 at dawn.
    int score = 0;
    Phase phase = Night;
    std::vector<Event> events; ///< Of this step.
};

/// What can be touched of each figure, relative to where the picture has it. From the sprite files.
struct HitBoxes {
    KXRect player, moth, bat;
};

/// The rules of a night: moths are caught and carried to the fire, which burns down; bats steal what is
/// carried. Nothing here draws, sounds or reads input.
class World {
public:
    static constexpr KXPoint fire = {400, 330};
    static constexpr int mostCarried = 5;

    /// @param players 1 or 2. @param seconds the length of the night.
    World(int players, int seconds, const HitBoxes& boxes);

    /// One logic step.
    void step(const Input (&inputs)[2]);
    const Picture& picture() const { return _picture; }
    bool isOver() const { return _picture.phase != Picture::Night; }

private:
    struct Hopper {
        bool hopping = false;
        KXTween height;
        float turn = 0; ///< Of the moths that follow.
    };
    struct Moth {
        KXPoint home;
        KXTween across, up, light;
        int carrier = -1; ///< The player it follows.
        int seat = 0;     ///< Its place among those that follow.
        int away = 0;     ///< Steps until it comes back.
    };
    struct Bat {
        KXPoint at;
        KXDirection direction = KXDirectionNone;
        KXTimer think;
        bool flees = false;
    };

    void stepPlayer(int index, const Input& input);
    void stepMoth(Moth& moth);
    void stepBat(Bat& bat);
    void stepFire();
    void deliver(int index);
    void hurt(int index);
    void lose(int index);
    bool touches(const Picture::Player& player, KXRect box, KXPoint at) const;
    int nearestPlayer(KXPoint from) const;
    void place(Moth& moth);
    void show();
    void happened(Event::Kind kind, KXPoint at, int amount = 0);

    HitBoxes _boxes;
    Picture _picture;
    Hopper _hoppers[2];
    std::vector<Moth> _moths;
    std::vector<Bat> _bats;
    KXTimer _nextBat;
    int _steps = 0, _length;
};
