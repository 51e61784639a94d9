#pragma once

#include "Stage.h"

/// What the player does in a step.
struct Input {
    float walk = 0;         ///< -1 to the left, 1 to the right, less with a stick.
    bool jumps = false;     ///< Jump went down in this step.
    bool holdsJump = false; ///< Jump is down.
    bool drops = false;     ///< Down went down: through a plank.
};

/// What has happened in a step, for ears and eyes.
struct Event {
    enum Kind { Jump, Land, Pick, Stomp, Tumble, Ring, Home } kind;
    KXPoint at;
};

/// Something that moves: where it is, and where it was a step ago, between which it is drawn.
struct Mover {
    KXRect body = {{0, 0}, {0, 0}};
    KXPoint before = {0, 0};
    int direction = 1; ///< Where it looks, or goes: 1 right or down, -1 left or up.

    /// Where its corner is to be drawn. @param fraction of a step that has passed since.
    KXPoint drawnAt(float fraction) const { return before + (body.origin - before) * fraction; }
};

/// The rules of a level that is played, and nothing else: the same inputs make the same of it everywhere. It
/// can be copied, so that a robot can try what comes.
class World {
public:
    /// @param level outlives it.
    explicit World(const Stage& level);

    void step(const Input& input);

    const Stage& level() const { return *_level; }
    const Mover& kid() const { return _kid; }
    KXPoint speed() const { return _speed; }
    bool stands() const { return _stands; }
    bool tumbles() const { return _tumbling > 0; }
    bool isHome() const { return _home; }
    int steps() const { return _steps; }     ///< That it has taken until home.
    int picked() const { return _picked; }   ///< How many flowers.
    int tumbled() const { return _tumbled; } ///< How often.
    int lastBell() const { return _bell; }   ///< Its number; -1 for none.
    bool isPicked(std::size_t flower) const { return _flowersPicked[flower]; }
    bool isStomped(std::size_t beetle) const { return _beetlesStomped[beetle]; }
    const std::vector<Mover>& beetles() const { return _beetles; }
    const std::vector<Mover>& crows() const { return _crows; }
    const std::vector<Mover>& baskets() const { return _baskets; }
    /// What happened in the last step.
    const std::vector<Event>& events() const { return _events; }
    /// The sign that the kid stands at; null if at none.
    const Stage::Sign* sign() const;

private:
    void moveBaskets();
    void moveBeetles();
    void moveCrows();
    void moveKid(const Input& input);
    void walk(float wanted);
    void jump(const Input& input);
    void fall();
    KXSlide land(KXSlide slide);
    void meet();
    void tumble();
    void wakeUp();
    void happens(Event::Kind kind) { _events.push_back({kind, KXRectCentre(_kid.body)}); }

    const Stage* _level;
    Mover _kid;
    KXPoint _speed = {0, 0};
    bool _stands = false, _home = false;
    bool _rises = false; ///< By a jump that may still be cut.
    int _basket = -1;    ///< What carries it; -1 for none.
    int _late = 0;       ///< Steps in which it may still jump after an edge.
    int _early = 0;      ///< Steps in which a jump is remembered.
    int _dropping = 0;   ///< Steps in which planks let it through.
    int _tumbling = 0;
    int _steps = 0, _picked = 0, _tumbled = 0, _bell = -1;
    std::vector<Mover> _beetles, _crows, _baskets;
    std::vector<bool> _flowersPicked, _beetlesStomped;
    std::vector<Event> _events;
};
