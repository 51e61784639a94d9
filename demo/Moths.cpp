#include "Moths.h"

#include <cstring>

namespace {
KXValueInterpolater drift(float seconds, float distance) {
    return {1, seconds, 0, 0, distance, -1, 0, -1, 0, KXAnimationCurveTypeEaseInOut};
}

const KXValueInterpolater fadeIn(1, 1.5f, 0, 0, 1, 0, 0, 0, 0, KXAnimationCurveTypeEaseIn);
} // namespace

Moths::Moths(const Assets& assets) {
    const struct {
        KXPoint home;
        float acrossSeconds, across, upSeconds, up;
    } homes[] = {
        {{80, 300}, 2.4f, 90, 0.9f, 26},    {{210, 330}, 1.9f, -60, 1.3f, 40},
        {{400, 300}, 2.8f, 110, 1.1f, -30}, {{460, 380}, 1.7f, 50, 0.8f, 24},
        {{640, 310}, 3.1f, -120, 1.0f, 34},
    };
    for (const auto& [home, acrossSeconds, across, upSeconds, up] : homes) {
        Moth moth{std::make_unique<KXSprite>(), home, drift(acrossSeconds, across), drift(upSeconds, up),
                  fadeIn};
        assets.load(*moth.sprite, "moth");
        moth.sprite->setScale(3);
        moth.sprite->setAnimation("fly");
        moth.sprite->randomizeCurrentFrame();
        moth.sprite->setAlpha(0);
        _moths.push_back(std::move(moth));
    }
}

KXPoint Moths::Moth::position() const { return {home.x + across.value(), home.y + up.value()}; }

void Moths::Moth::step(const Hero& hero) {
    sprite->poll();
    if (sprite->animationFinished()) { // burnt out: back again, slowly
        sprite->setAnimation("fly");
        light = fadeIn;
    }
    if (std::strcmp(sprite->currentAnimation(), "fly") != 0)
        return;
    across.interpolate();
    up.interpolate();
    sprite->setAlpha(light.done() ? 1 : light.interpolate());
    if (light.done() && hero.touches(boxOnScreen(*sprite, position(), "hit")))
        sprite->setAnimation("flare");
}

void Moths::step(const Hero& hero) {
    for (Moth& moth : _moths)
        moth.step(hero);
}

void Moths::draw() {
    for (Moth& moth : _moths)
        moth.sprite->draw(moth.position());
}

void Moths::drawBoxes() {
    for (const Moth& moth : _moths)
        KXDrawRect(boxOnScreen(*moth.sprite, moth.position(), "hit"), KXRedColor);
}
