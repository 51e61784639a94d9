#include "World.h"

#include <cmath>

namespace {
constexpr KXRect meadow = {{24, 316}, {752, 164}}; // where feet may stand
constexpr float playerSpeed = 2.6f, batSpeed = 1.7f;
constexpr float fireSide = 58;     // at which moths are delivered
constexpr float fearOfFire = 120;  // what a fully fed fire keeps bats away by
constexpr float highestMoth = 235; // within the reach of a hop
constexpr int moths = 9, mostBats = 6;
constexpr int stepsHurt = 100, stepsAway = 150;
constexpr float burnsPerStep = 100.0f / (45 * 60); // a fire that nobody feeds lasts 45 seconds
constexpr float fuelPerMoth = 11;

float distance(KXPoint a, KXPoint b) { return std::hypot(a.x - b.x, a.y - b.y); }

KXTween drift(float seconds, float way) {
    return KXTweenSettings{
        .to = way, .seconds = seconds, .ease = KXEaseInOutSine, .repeats = -1, .backAndForth = -1};
}
KXTween fadeIn() { return KXTweenSettings{.seconds = 1.2f, .ease = KXEaseInQuadratic}; }
KXTween hop() { // up and down again, as what is thrown
    return KXTweenSettings{.to = 46, .seconds = 0.26f, .ease = KXEaseOutQuadratic, .backAndForth = -1};
}
} // namespace

World::World(int players, int seconds, const HitBoxes& boxes) : _boxes(boxes), _length(seconds * 60) {
    for (int i = 0; i < players && i < 2; ++i) {
        _picture.players[i].present = true;
        _picture.players[i].at = {fire.x + (i ? 70.0f : -70.0f), fire.y + 60};
        _picture.players[i].facing = i ? KXDirectionLeft : KXDirectionRight;
    }
    _moths.resize(moths);
    for (Moth& moth : _moths)
        place(moth);
    _nextBat.setMinMaxTimeout(120, 300);
    show();
}

void World::place(Moth& moth) {
    do
        moth.home = {KXRandomizef(60, 740), KXRandomizef(highestMoth, 430)};
    while (distance(moth.home, fire) < 150);
    const float side = moth.home.x < fire.x ? 1.0f : -1.0f;
    moth.across = drift(KXRandomizef(1.5f, 3), side * KXRandomizef(40, 120));
    moth.up = drift(KXRandomizef(0.7f, 1.4f), KXRandomizef(-30, 30));
    moth.light = fadeIn();
    moth.carrier = -1;
    moth.away = 0;
}

void World::happened(Event::Kind kind, KXPoint at, int amount) {
    _picture.events.push_back({kind, at, amount});
}

void World::step(const Input (&inputs)[2]) {
    _picture.events.clear();
    if (isOver())
        return;
    ++_steps;
    for (int i = 0; i < 2; ++i)
        if (_picture.players[i].present)
            stepPlayer(i, inputs[i]);
    for (Moth& moth : _moths)
        stepMoth(moth);
    if (_nextBat.tick() && _bats.size() < mostBats) {
        Bat& bat = _bats.emplace_back();
        bat.at = {KXRandomPercentChance(50) ? -30.0f : 830.0f, KXRandomizef(120, 420)};
        bat.think.setMinMaxTimeout(14, 40);
        happened(Event::Bat, bat.at);
    }
    for (Bat& bat : _bats)
        stepBat(bat);
    stepFire();
    show();
}

void World::stepPlayer(int index, const Input& input) {
    Picture::Player& player = _picture.players[index];
    Hopper& hopper = _hoppers[index];
    const int across = input.right - input.left, down = input.down - input.up;
    const float speed = across && down ? playerSpeed * 0.7071f : playerSpeed;
    player.walking = across || down;
    player.at.x += speed * static_cast<float>(across);
    player.at.y += speed * static_cast<float>(down);
    KXClampf(&player.at.x, meadow.origin.x, meadow.origin.x + meadow.size.width);
    KXClampf(&player.at.y, meadow.origin.y, meadow.origin.y + meadow.size.height);
    if (across)
        player.facing = across < 0 ? KXDirectionLeft : KXDirectionRight;
    if (input.hop && !hopper.hopping) {
        hopper.hopping = true;
        hopper.height = hop();
        happened(Event::Hop, player.at);
    }
    if (hopper.hopping) {
        player.height = hopper.height.step();
        hopper.hopping = !hopper.height.done();
    } else {
        player.height = 0;
    }
    hopper.turn += 0.012f;
    player.hurt -= player.hurt > 0;
    if (player.carried > 0 && distance(player.at, fire) < fireSide)
        deliver(index);
}

// The more at once, the better: five are worth 250 points, five single ones 50.
void World::deliver(int index) {
    Picture::Player& player = _picture.players[index];
    const int points = 10 * player.carried * player.carried;
    _picture.score += points;
    _picture.fuel = KXMinf(100, _picture.fuel + fuelPerMoth * static_cast<float>(player.carried));
    happened(Event::Feed, {fire.x, fire.y - 70}, points);
    for (Moth& moth : _moths)
        if (moth.carrier == index) {
            moth.carrier = -1;
            moth.away = stepsAway;
        }
    player.carried = 0;
}

void World::stepMoth(Moth& moth) {
    if (moth.away > 0) {
        if (--moth.away == 0)
            place(moth);
        return;
    }
    if (moth.carrier >= 0)
        return;
    moth.across.step();
    moth.up.step();
    if (!moth.light.done()) {
        moth.light.step();
        return;
    }
    const KXPoint at = {moth.home.x + moth.across.value(), moth.home.y + moth.up.value()};
    for (int i = 0; i < 2; ++i) {
        Picture::Player& player = _picture.players[i];
        if (!player.present || player.hurt || player.carried == mostCarried ||
            !touches(player, _boxes.moth, at))
            continue;
        moth.carrier = i;
        moth.seat = player.carried++;
        happened(Event::Pick, at);
        return;
    }
}

// Whether a player, who may be up in a hop, overlaps a box that lies relative to a place.
bool World::touches(const Picture::Player& player, KXRect box, KXPoint at) const {
    const KXPoint own = {player.at.x + _boxes.player.origin.x,
                         player.at.y - player.height + _boxes.player.origin.y};
    const KXPoint other = {at.x + box.origin.x, at.y + box.origin.y};
    return own.x < other.x + box.size.width && other.x < own.x + _boxes.player.size.width &&
           own.y < other.y + box.size.height && other.y < own.y + _boxes.player.size.height;
}

int World::nearestPlayer(KXPoint from) const {
    int nearest = 0;
    for (int i = 0; i < 2; ++i)
        if (_picture.players[i].present &&
            distance(from, _picture.players[i].at) < distance(from, _picture.players[nearest].at))
            nearest = i;
    return nearest;
}

void World::stepBat(Bat& bat) {
    const int prey = nearestPlayer(bat.at);
    const KXPoint chest = {_picture.players[prey].at.x, _picture.players[prey].at.y - 30};
    bat.flees = distance(bat.at, fire) < fearOfFire * _picture.fuel / 100;
    if (bat.flees)
        bat.direction = KXOppositeDirection(KXDirectionBetween(bat.at, fire));
    else if (bat.think.tick())
        bat.direction = KXRandomPercentChance(70) ? KXDirectionBetween(bat.at, chest) : KXRandomDirection();
    bat.at = KXAddDirectionToPoint(bat.direction, bat.at, batSpeed);
    KXClampf(&bat.at.x, -40, 840);
    KXClampf(&bat.at.y, 60, 470);
    if (!_picture.players[prey].hurt && touches(_picture.players[prey], _boxes.bat, bat.at))
        hurt(prey);
}

void World::hurt(int index) {
    Picture::Player& player = _picture.players[index];
    player.hurt = stepsHurt;
    _picture.score = KXMaxi(0, _picture.score - 20);
    happened(Event::Hurt, {player.at.x, player.at.y - 30}, -20);
    lose(index);
}

// What a player carries flies off again.
void World::lose(int index) {
    for (Moth& moth : _moths)
        if (moth.carrier == index) {
            const KXPoint from = _picture.players[index].at;
            place(moth);
            moth.home = {from.x + KXRandomizef(-60, 60), KXMaxf(highestMoth, from.y - KXRandomizef(40, 90))};
        }
    _picture.players[index].carried = 0;
}

void World::stepFire() {
    _picture.fuel -= burnsPerStep;
    if (_picture.fuel <= 0) {
        _picture.fuel = 0;
        _picture.phase = Picture::Dark;
        happened(Event::Dark, fire);
    } else if (_steps >= _length) {
        const int bonus = 5 * static_cast<int>(_picture.fuel);
        _picture.score += bonus;
        _picture.phase = Picture::Dawn;
        happened(Event::Dawn, {fire.x, fire.y - 60}, bonus);
    }
    _picture.nightLeft = static_cast<float>(_length - _steps) / static_cast<float>(_length);
}

// Puts into the picture what the rules keep to themselves.
void World::show() {
    _picture.moths.clear();
    for (const Moth& moth : _moths) {
        if (moth.away > 0)
            continue;
        if (moth.carrier < 0) {
            _picture.moths.push_back(
                {{moth.home.x + moth.across.value(), moth.home.y + moth.up.value()}, moth.light.value()});
            continue;
        }
        const Picture::Player& player = _picture.players[moth.carrier];
        const float turn = _hoppers[moth.carrier].turn + static_cast<float>(moth.seat) / mostCarried;
        _picture.moths.push_back(
            {KXParametricCircle(turn, 26, {player.at.x, player.at.y - 44 - player.height}), 1});
    }
    _picture.bats.clear();
    for (const Bat& bat : _bats)
        _picture.bats.push_back({bat.at, bat.flees});
}
