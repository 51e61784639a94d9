#include "Scene.h"

#include <stdexcept>

const KXSize Scene::size = {640, 400};

static const float scale = 4;
static const float speed = 4; // points in each logic step

Scene::Scene() {
    const char* const file = KXDataPath("firefly.spr"); // wherever the game is installed
    if (!file || !KXFileExists(file) || !_firefly.load(file))
        throw std::runtime_error("firefly.spr cannot be read.");
    _firefly.setScale(scale);
    _firefly.setAnimation("fly");
}

void Scene::setRound(const Round& round) {
    _round = round;
    KXClampf(&_round.light.x, 20, size.width - 20);
    KXClampf(&_round.light.y, 20, size.height - 20);
}

void Scene::step(KXPoint push) {
    const KXSize body = _firefly.fullSize();
    KXPoint& at = _round.firefly;
    at.x += push.x * speed;
    at.y += push.y * speed;
    KXClampf(&at.x, 0, size.width - body.width * scale);
    KXClampf(&at.y, 0, size.height - body.height * scale);

    --_round.stepsLeft;
    if (touches(_round.light)) {
        ++_round.score;
        _round.light = {KXRandomizef(20, size.width - 20), KXRandomizef(20, size.height - 20)};
        _firefly.setAnimation("flash");
    }
    _firefly.poll();
    if (_firefly.animationFinished())
        _firefly.setAnimation("fly");
}

void Scene::draw(int best) {
    const KXColor gold = KXMakeColori(255, 217, 138, 255), dim = KXMakeColori(58, 84, 88, 255);
    KXClear(KXMakeColori(27, 27, 58, 255));
    KXDrawRectFill({{0, size.height - 48}, {size.width, 48}}, KXMakeColori(38, 60, 66, 255));
    KXDrawCircleFill(_round.light, 14, 24, KXMakeColori(255, 217, 138, 60));
    KXDrawCircleFill(_round.light, 6, 16, KXMakeColori(255, 246, 214, 255));
    _firefly.draw(_round.firefly);
    const float time = _round.stepsLeft / static_cast<float>(Round().stepsLeft);
    KXDrawRectFill({{0, size.height - 4}, {size.width * time, 4}}, gold); // that is left
    for (int i = 0; i < _round.score || i < best; ++i) { // the lights gathered, and how many it were at best
        const KXPoint place = {20.f + 16 * (i % 38), size.height - 36 + 12 * (i / 38)};
        KXDrawCircleFill(place, 4, 12, i < _round.score ? gold : dim);
    }
}

// The sprite's box is in pixels of its picture.
bool Scene::touches(KXPoint point) const {
    const KXRect box = _firefly.boundingBoxNamed("hit");
    const float x = (point.x - _round.firefly.x) / scale - box.origin.x,
                y = (point.y - _round.firefly.y) / scale - box.origin.y;
    return x >= 0 && y >= 0 && x < box.size.width && y < box.size.height;
}
