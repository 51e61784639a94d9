#include "Hero.h"

#include <cstring>

namespace {
constexpr int keyUp = 99, keyRight = 100, keyLeft = 101, keyDown = 102, keySpace = 133;
constexpr int wheelDown = 3, wheelUp = 4;
constexpr float scale = 4;
constexpr KXPoint middle = {8, 10}; // of a frame

const KXValueInterpolater hop(1, 0.26f, 0, 0, 60, 0, 0, -1, 0, KXAnimationCurveTypeEaseOut);
} // namespace

KXRect boxOnScreen(const KXSprite& sprite, KXPoint at, const char* name) {
    const KXRect box = sprite.boundingBoxNamed(name);
    const float size = sprite.scale();
    return {{at.x + box.origin.x * size, at.y + box.origin.y * size},
            {box.size.width * size, box.size.height * size}};
}

Hero::Hero(const Assets& assets) {
    assets.load(_sprite, "hero");
    _sprite.setScale(scale);
    play("stand");
}

// Setting the animation that plays already would start it over.
void Hero::play(const char* what) {
    const char* const name = KXTempString("%s %s", what, _facing == KXDirectionLeft ? "left" : "right");
    if (std::strcmp(name, _sprite.currentAnimation()) != 0)
        _sprite.setAnimation(name);
}

void Hero::step() {
    constexpr float speed = 3;
    const int across = !!KXKey(keyRight) - !!KXKey(keyLeft), down = !!KXKey(keyDown) - !!KXKey(keyUp);
    _position.x += speed * static_cast<float>(across);
    _position.y += speed * static_cast<float>(down);
    if (across)
        _facing = across < 0 ? KXDirectionLeft : KXDirectionRight;
    if (KXKey(keySpace, 1) && !_hopping) {
        _hopping = true;
        _hop = hop;
    }
    if (_hopping) {
        _hop.interpolate();
        _hopping = !_hop.done();
    }
    play(_hopping ? "hop" : across || down ? "walk" : "stand");
    _sprite.poll();
    if (KXMouse(wheelUp))
        _sprite.setRotation(_sprite.rotation() + 15);
    if (KXMouse(wheelDown))
        _sprite.setRotation(_sprite.rotation() - 15);
}

void Hero::place(KXPoint at) { _position = {at.x - middle.x * scale, at.y - middle.y * scale}; }

void Hero::draw() {
    const float height = _hopping ? _hop.value() : 0;
    KXDrawCircleFill({_position.x + middle.x * scale, _position.y + 20 * scale},
                     26 - static_cast<int>(height / 8), 24, {0, 0, 0, 0.25f});
    _sprite.draw({_position.x, _position.y - height});
}

void Hero::drawBox() { KXDrawRect(box(), KXRedColor); }

KXRect Hero::box() const {
    return boxOnScreen(_sprite, {_position.x, _position.y - (_hopping ? _hop.value() : 0)}, "hit");
}

bool Hero::touches(KXRect other) const {
    const KXRect own = box();
    return own.origin.x < other.origin.x + other.size.width &&
           other.origin.x < own.origin.x + own.size.width &&
           own.origin.y < other.origin.y + other.size.height &&
           other.origin.y < own.origin.y + own.size.height;
}
