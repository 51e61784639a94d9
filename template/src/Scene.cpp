#include "Scene.h"

#include <stdexcept>

const KXSize Scene::size = {640, 400};

static const float scale = 4;
static const float speed = 4; // points in each logic step

Scene::Scene(const std::string& assets) {
    const std::string file = assets + "/firefly.spr";
    if (!KXFileExists(file.c_str()) || !_firefly.load(file.c_str()))
        throw std::runtime_error(file + " cannot be read");
    _firefly.setScale(scale);
    _firefly.setAnimation("fly");
}

void Scene::step(KXPoint push) {
    const KXSize body = _firefly.fullSize();
    _at.x += push.x * speed;
    _at.y += push.y * speed;
    KXClampf(&_at.x, 0, size.width - body.width * scale);
    KXClampf(&_at.y, 0, size.height - body.height * scale);

    if (touches(_light)) {
        ++_score;
        _light = {KXRandomizef(20, size.width - 20), KXRandomizef(20, size.height - 20)};
        _firefly.setAnimation("flash");
    }
    _firefly.poll();
    if (_firefly.animationFinished())
        _firefly.setAnimation("fly");
}

void Scene::draw() {
    KXClear(KXMakeColori(27, 27, 58, 255));
    KXDrawRectFill({{0, size.height - 48}, {size.width, 48}}, KXMakeColori(38, 60, 66, 255));
    KXDrawCircleFill(_light, 14, 24, KXMakeColori(255, 217, 138, 60));
    KXDrawCircleFill(_light, 6, 16, KXMakeColori(255, 246, 214, 255));
    _firefly.draw(_at);
    for (int i = 0; i < _score; ++i) { // the lights gathered so far
        const KXPoint place = {20.f + 16 * (i % 38), size.height - 36 + 12 * (i / 38)};
        KXDrawCircleFill(place, 4, 12, KXMakeColori(255, 217, 138, 255));
    }
}

// The sprite's box is in pixels of its picture.
bool Scene::touches(KXPoint point) const {
    const KXRect box = _firefly.boundingBoxNamed("hit");
    const float x = (point.x - _at.x) / scale - box.origin.x, y = (point.y - _at.y) / scale - box.origin.y;
    return x >= 0 && y >= 0 && x < box.size.width && y < box.size.height;
}
