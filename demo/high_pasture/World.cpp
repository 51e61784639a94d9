#include "World.h"

#include "Feel.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr KXSize kidSize = {12, 15}, beetleSize = {14, 9}, crowSize = {14, 9}, basketSize = {32, 8};
constexpr float tile = Stage::tile;

// In the middle of a cell, on its ground.
Mover standing(KXRect cell, KXSize size) {
    const KXPoint corner = {cell.origin.x + (cell.size.width - size.width) / 2,
                            cell.origin.y + cell.size.height - size.height};
    return {{corner, size}, corner, 1};
}

bool isUpright(const KXRect& way) { return way.size.height > way.size.width; }

// To the end of a way and back.
void goAlong(Mover& mover, const KXRect& way, float speed) {
    const bool upright = isUpright(way);
    float& at = upright ? mover.body.origin.y : mover.body.origin.x;
    const float least = upright ? way.origin.y : way.origin.x;
    const float most =
        upright ? KXRectEnd(way).y - mover.body.size.height : KXRectEnd(way).x - mover.body.size.width;
    at += speed * static_cast<float>(mover.direction);
    if (at >= most || at <= least)
        mover.direction = at >= most ? -1 : 1;
    at = std::fmax(least, std::fmin(at, most));
}

float towards(float value, float goal, float by) {
    return value < goal ? std::fmin(value + by, goal) : std::fmax(value - by, goal);
}
} // namespace

World::World(const Stage& level)
    : _level(&level), _flowersPicked(level.flowers.size()), _beetlesStomped(level.beetles.size()) {
    for (const KXRect& cell : level.beetles)
        _beetles.push_back(standing(cell, beetleSize));
    for (const Stage::Way& way : level.crows) {
        const KXPoint at = {way.origin.x, way.origin.y};
        _crows.push_back({{at, crowSize}, at, 1});
    }
    for (const Stage::Way& rope : level.ropes) {
        const KXPoint at = isUpright(rope)
                               ? KXPoint{KXRectCentre(rope).x - basketSize.width / 2, rope.origin.y}
                               : KXPoint{rope.origin.x, rope.origin.y + 4};
        _baskets.push_back({{at, basketSize}, at, 1});
    }
    wakeUp();
}

void World::wakeUp() {
    const KXRect cell =
        _bell >= 0 ? _level->bells[static_cast<std::size_t>(_bell)] : KXRect{_level->start, {tile, tile}};
    const int looks = _kid.direction;
    _kid = standing(cell, kidSize);
    _kid.direction = _bell >= 0 ? looks : 1;
    _speed = KXZeroPoint;
    _basket = -1;
    _late = _early = _dropping = 0;
}

void World::step(const Input& input) {
    _events.clear();
    _kid.before = _kid.body.origin;
    moveBaskets();
    moveBeetles();
    moveCrows();
    if (_home)
        return moveKid({});
    ++_steps;
    if (_tumbling > 0) {
        if (--_tumbling == 0)
            wakeUp();
        return;
    }
    moveKid(input);
    meet();
}

// What stands on a basket goes with it, but not into a wall.
void World::moveBaskets() {
    for (std::size_t i = 0; i < _baskets.size(); ++i) {
        Mover& basket = _baskets[i];
        basket.before = basket.body.origin;
        goAlong(basket, _level->ropes[i], Feel::basketSpeed);
        if (_basket != static_cast<int>(i))
            continue;
        const KXPoint by = basket.body.origin - basket.before;
        _kid.body.origin = _level->map.slide(_kid.body, by, _level->ground, "solid").position;
    }
}

// A beetle turns at walls and where the ground ends.
void World::moveBeetles() {
    for (Mover& beetle : _beetles) {
        beetle.before = beetle.body.origin;
        const float by = Feel::beetleSpeed * static_cast<float>(beetle.direction);
        const KXPoint foot = {beetle.direction > 0 ? KXRectEnd(beetle.body).x + by
                                                   : beetle.body.origin.x + by,
                              KXRectEnd(beetle.body).y + 1};
        const KXTile below = _level->map.tileAt(_level->ground, foot);
        const KXSlide slide = _level->map.slide(beetle.body, {by, 0}, _level->ground, "solid");
        if (slide.normal.x != 0 || !KXFindMapProperty(_level->map.tileProperties(below), "solid"))
            beetle.direction = -beetle.direction;
        else
            beetle.body.origin = slide.position;
    }
}

void World::moveCrows() {
    for (std::size_t i = 0; i < _crows.size(); ++i) {
        Mover& crow = _crows[i];
        crow.before = crow.body.origin;
        goAlong(crow, _level->crows[i], Feel::crowSpeed);
        if (!isUpright(_level->crows[i])) // up and down by the way
            crow.body.origin.y = _level->crows[i].origin.y + 10 * std::sin(crow.body.origin.x / 18);
    }
}

void World::walk(float wanted) {
    const float start = _stands ? Feel::runStart : Feel::airStart;
    const float stop = _stands ? Feel::runStop : Feel::airStop;
    const bool brakes = wanted == 0 || wanted * _speed.x < 0;
    _speed.x =
        towards(_speed.x, wanted * Feel::runSpeed, brakes ? std::fmax(stop, wanted == 0 ? 0 : start) : start);
    if (wanted != 0)
        _kid.direction = wanted < 0 ? -1 : 1;
}

void World::jump(const Input& input) {
    _early = input.jumps ? Feel::earlyJumpSteps : std::max(0, _early - 1);
    _late = _stands ? Feel::lateJumpSteps : std::max(0, _late - 1);
    if (_early > 0 && _late > 0) {
        _speed.y = -Feel::jumpSpeed;
        _early = _late = 0;
        _stands = false;
        _basket = -1;
        _rises = true;
        happens(Event::Jump);
    }
    if (_rises && !input.holdsJump && _speed.y < 0) {
        _speed.y *= Feel::jumpCut;
        _rises = false;
    }
    _rises = _rises && _speed.y < 0;
}

// Planks and baskets stop what comes from above, and let everything else through.
KXSlide World::land(KXSlide slide) {
    _basket = -1;
    if (slide.position.y < _kid.body.origin.y)
        return slide;
    const KXPoint by = slide.position - _kid.body.origin;
    const auto stop = [&](const KXRect& plank) {
        const KXSweep sweep = KXSweepRect(_kid.body, {by.x, std::fmax(by.y, 0.01f)}, plank);
        const bool stops = sweep.hit && sweep.normal.y < 0 && sweep.position.y <= slide.position.y;
        if (stops) {
            slide.position.y = sweep.position.y;
            slide.normal.y = -1;
        }
        return stops;
    };
    for (std::size_t i = 0; i < _baskets.size(); ++i)
        if (stop(_baskets[i].body))
            _basket = static_cast<int>(i);
    if (_dropping == 0)
        for (const KXRect& ledge : _level->ledges)
            if (std::abs(ledge.origin.x - _kid.body.origin.x) < 3 * tile && stop(ledge))
                _basket = -1;
    return slide;
}

void World::fall() {
    _speed.y = std::fmin(_speed.y + Feel::gravity, Feel::fallSpeed);
    const KXSlide slide = land(_level->map.slide(_kid.body, _speed, _level->ground, "solid"));
    const float fell = _speed.y;
    const bool stood = _stands;
    _kid.body.origin = slide.position;
    _stands = slide.normal.y < 0;
    if (slide.normal.y != 0)
        _speed.y = 0;
    if (slide.normal.x != 0)
        _speed.x = 0;
    if (_stands && !stood && fell > 1)
        happens(Event::Land);
}

void World::moveKid(const Input& input) {
    walk(input.walk);
    jump(input);
    _dropping = input.drops && _stands ? 10 : std::max(0, _dropping - 1);
    fall();
    const KXRect area = _level->area();
    float& x = _kid.body.origin.x;
    x = std::fmax(0.0f, std::fmin(x, area.size.width - kidSize.width));
    if (_kid.body.origin.y > area.size.height && !_home)
        tumble();
}

void World::meet() {
    const KXRect& body = _kid.body;
    for (std::size_t i = 0; i < _level->flowers.size(); ++i)
        if (!_flowersPicked[i] && KXRectsOverlap(body, KXGrownRect(_level->flowers[i], {-2, -2}))) {
            _flowersPicked[i] = true;
            ++_picked;
            happens(Event::Pick);
        }
    for (std::size_t i = 0; i < _level->bells.size(); ++i)
        if (static_cast<int>(i) > _bell && KXRectsOverlap(body, _level->bells[i])) {
            _bell = static_cast<int>(i);
            happens(Event::Ring);
        }
    for (std::size_t i = 0; i < _beetles.size(); ++i) {
        if (_beetlesStomped[i] || !KXRectsOverlap(body, _beetles[i].body))
            continue;
        const float into = KXRectEnd(body).y - _beetles[i].body.origin.y;
        if (_speed.y <= 0 || into > Feel::reach + _speed.y)
            return tumble();
        _beetlesStomped[i] = true;
        _speed.y = -Feel::bounceSpeed;
        _stands = _rises = false;
        happens(Event::Stomp);
    }
    for (const Mover& crow : _crows)
        if (KXRectsOverlap(body, KXGrownRect(crow.body, {-2, -1})))
            return tumble();
    if (_level->isDeadly(body))
        return tumble();
    if (_stands && KXRectsOverlap(body, _level->gate)) {
        _home = true;
        happens(Event::Home);
    }
}

void World::tumble() {
    if (_tumbling > 0)
        return;
    _tumbling = Feel::tumbleSteps;
    ++_tumbled;
    _stands = false;
    happens(Event::Tumble);
}

const Stage::Sign* World::sign() const {
    for (const Stage::Sign& sign : _level->signs)
        if (KXRectsOverlap(_kid.body, KXGrownRect(sign.rect, {tile / 2, 4})))
            return &sign;
    return nullptr;
}
