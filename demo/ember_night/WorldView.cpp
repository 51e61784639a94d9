#include "WorldView.h"

#include <cmath>
#include <cstring>

namespace {
constexpr float spriteScale = 3;
// Where the corner of a sprite is, seen from the place of its figure: between the feet of a player, in the
// middle of a bat, at the corner of a moth.
constexpr KXPoint playerCorner = {-8 * spriteScale, -19 * spriteScale},
                  batCorner = {-8 * spriteScale, -5 * spriteScale};
constexpr int lightScale = 2; // pixels of the window for one of the light's

KXColor mixed(KXColor a, KXColor b, float share) {
    return {a.r + (b.r - a.r) * share, a.g + (b.g - a.g) * share, a.b + (b.b - a.b) * share, 1};
}

// Setting the animation that plays already would start it over.
void play(KXSprite& sprite, const char* name) {
    if (std::strcmp(name, sprite.currentAnimation()) != 0)
        sprite.setAnimation(name);
}
} // namespace

// A sprite's box where it is drawn: the origin of a figure is that far from its sprite's corner.
static KXRect hitBox(const Assets& assets, const char* file, KXPoint cornerAt) {
    KXSprite sprite;
    assets.load(sprite, file);
    const KXRect box = sprite.boundingBoxNamed("hit");
    return {{cornerAt.x + box.origin.x * spriteScale, cornerAt.y + box.origin.y * spriteScale},
            {box.size.width * spriteScale, box.size.height * spriteScale}};
}

HitBoxes loadHitBoxes(const Assets& assets) {
    return {hitBox(assets, "hero", playerCorner), hitBox(assets, "moth", KXZeroPoint),
            hitBox(assets, "bat", batCorner)};
}

WorldView::WorldView(App& app)
    : _app(app), _light(static_cast<int>(Style::windowSize.width) / lightScale,
                        static_cast<int>(Style::windowSize.height) / lightScale),
      _emberTimer(7) {
    const char* files[2] = {"hero", "friend"};
    for (int i = 0; i < 2; ++i) {
        app.assets.load(_players[i], files[i]);
        _players[i].setScale(spriteScale);
    }
    app.assets.load(_fire, "fire");
    _fire.setAnimation("burn");
}

// As many sprites as there is to show. Made while stepping, because random numbers are drawn for them: what
// is drawn on the screen, and how often, must not change the night.
void WorldView::provide(Flock& flock, std::size_t count, const char* file) {
    while (flock.size() < count) {
        auto& sprite = *flock.emplace_back(std::make_unique<KXSprite>());
        _app.assets.load(sprite, file);
        sprite.setAnimation("fly");
        sprite.randomizeCurrentFrame(); // or all would flap as one
        sprite.setScale(spriteScale);
    }
}

void WorldView::happened(const Event& event) {
    constexpr Effect effects[] = {Effect::Pick, Effect::Feed, Effect::Hop, Effect::Hurt,
                                  Effect::Bat,  Effect::Dawn, Effect::Dark};
    _app.audio.play(effects[event.kind], event.at);
    switch (event.kind) {
    case Event::Pick:
        _particles.burst(event.at, 8, 1.2f, Style::paper);
        break;
    case Event::Feed:
        _particles.burst(event.at, 14 + event.amount / 5, 3, Style::gold);
        break;
    case Event::Hurt:
        _particles.burst(event.at, 16, 2, Style::rose);
        _shaking = 16;
        break;
    default:
        break;
    }
    if (event.amount)
        _particles.number(event.at, event.amount);
}

void WorldView::step(const Picture& picture) {
    for (const Event& event : picture.events)
        happened(event);
    for (int i = 0; i < 2; ++i) {
        const Picture::Player& player = picture.players[i];
        play(_players[i], KXTempString("%s %s",
                                       player.height > 0 ? "hop"
                                       : player.walking  ? "walk"
                                                         : "stand",
                                       player.facing == KXDirectionLeft ? "left" : "right"));
        _players[i].poll();
    }
    provide(_moths, picture.moths.size(), "moth");
    provide(_bats, picture.bats.size(), "bat");
    for (const Flock* flock : {&_moths, &_bats})
        for (const auto& sprite : *flock)
            sprite->poll();
    _fire.poll();
    _particles.step();
    if (picture.fuel > 0 && _emberTimer.tick())
        _particles.ember({World::fire.x, World::fire.y - 20});
    ++_flicker;
    _shaking -= _shaking > 0;
}

void WorldView::drawGlow(KXPoint at, float radius, KXColor color) {
    KXTexture& glow = _app.assets.picture("glow");
    const float scale = 2 * radius / glow.size().width / lightScale;
    glow.draw({.position = {(at.x - radius) / lightScale, (at.y - radius) / lightScale},
               .scale = {scale, scale},
               .tint = color});
}

// Light adds up on a texture that begins as dark as the night.
void WorldView::drawLight(const Picture& picture) {
    const float dawn = 1 - KXMinf(1, picture.nightLeft * 5); // the last fifth of the night gets brighter
    const KXColor ambient = picture.phase == Picture::Dark
                                ? KXMakeColor(0.2f, 0.2f, 0.36f, 1)
                                : mixed({0.36f, 0.36f, 0.58f, 1}, {1, 0.95f, 0.9f, 1}, dawn);
    _light.setRenderContext();
    KXDrawRectFill({{0, 0}, _light.size()}, ambient);
    KXPushBlendMode(KXBlendAdd);
    const float flicker = 1 + 0.04f * std::sin(static_cast<float>(_flicker) * 0.31f);
    if (picture.fuel > 0)
        drawGlow({World::fire.x, World::fire.y - 20}, (110 + 1.9f * picture.fuel) * flicker,
                 {1, 0.72f, 0.42f, 0.9f});
    for (const Picture::Player& player : picture.players)
        if (player.present)
            drawGlow({player.at.x, player.at.y - 24 - player.height}, 74 * flicker, {1, 0.85f, 0.54f, 0.55f});
    for (const Picture::Moth& moth : picture.moths)
        drawGlow({moth.at.x + 9, moth.at.y + 9}, 34, {0.95f, 0.9f, 0.75f, 0.6f * moth.light});
    KXPopBlendMode();
    _light.unsetRenderContext();
}

void WorldView::drawPlayer(int index, const Picture::Player& player, bool blinks) {
    KXDrawCircleFill(player.at, 18 - static_cast<int>(player.height / 8), 16, {0, 0, 0, 0.3f});
    _players[index].setAlpha(blinks && player.hurt % 12 >= 6 ? 0.35f : 1);
    _players[index].draw({player.at.x + playerCorner.x, player.at.y + playerCorner.y - player.height});
}

// The world as a camera sees it that shakes and comes to rest; what is written over it stays where it is.
void WorldView::draw(const Picture& picture) {
    drawLight(picture);
    _app.window.setRenderContext();
    KXCamera camera;
    camera.centre = KXPoint{Style::windowSize.width, Style::windowSize.height} / 2;
    if (_app.settings.shakes && _shaking > 0) {
        const auto strength = static_cast<float>(_shaking), turn = strength * 1.9f;
        camera.centre += {strength * std::sin(turn) / 4, strength * std::cos(turn) / 5};
        camera.zoom = 1 + strength / 1000; // so that no edge comes into view
    }
    KXPushCamera(camera);
    drawWorld(picture);
    KXPopCamera();
    drawStatus(picture);
}

void WorldView::drawWorld(const Picture& picture) {
    _app.assets.picture("background").draw(0, 0, 1.0f, 2.0f, 0, 0, -1);
    const float fireScale = 1.4f + 3.0f * picture.fuel / 100;
    _fire.setScale(fireScale);
    const auto drawFire = [&] {
        _app.assets.picture("logs").draw(static_cast<int>(World::fire.x) - 32,
                                         static_cast<int>(World::fire.y) - 20, 1.0f, 4.0f, 0, 0, -1);
        if (picture.fuel > 0)
            _fire.draw({World::fire.x - 8 * fireScale, World::fire.y - 14 * fireScale});
    };
    // Who stands lower stands in front.
    int order[2] = {0, 1};
    if (picture.players[0].at.y > picture.players[1].at.y)
        std::swap(order[0], order[1]);
    bool fireDrawn = false;
    for (int index : order) {
        const Picture::Player& player = picture.players[index];
        if (!player.present)
            continue;
        if (!fireDrawn && player.at.y > World::fire.y) {
            drawFire();
            fireDrawn = true;
        }
        drawPlayer(index, player, picture.phase == Picture::Night);
    }
    if (!fireDrawn)
        drawFire();
    _light.draw({.scale = {lightScale, lightScale}, .blend = KXBlendMultiply}); // what the light falls on
    for (std::size_t i = 0; i < picture.bats.size() && i < _bats.size(); ++i)
        _bats[i]->draw({picture.bats[i].at.x + batCorner.x, picture.bats[i].at.y + batCorner.y});
    for (std::size_t i = 0; i < picture.moths.size() && i < _moths.size(); ++i) {
        _moths[i]->setAlpha(picture.moths[i].light);
        _moths[i]->draw(picture.moths[i].at);
    }
    _particles.draw();
}

void WorldView::drawStatus(const Picture& picture) {
    const float width = Style::windowSize.width;
    _app.assets.picture("panel").drawNineSlice({8, 8}, {190, 56}, 8);
    KXUIGlobalFontPrint({22, 16}, Style::paper, 16,
                        KXTempString("Score {C1,0.85,0.54,1}%d{EC}", picture.score));
    const KXColor fuelColor = picture.fuel < 25 ? Style::rose : picture.fuel < 50 ? Style::wood : Style::gold;
    KXDrawRectFill({{22, 42}, {162, 10}}, Style::ink);
    KXDrawRectFill({{23, 43}, {160 * picture.fuel / 100, 8}}, fuelColor);
    // The moon wanders over the sky, and where it sets the sun rises.
    const KXPoint moon = {60 + (width - 120) * (1 - picture.nightLeft),
                          96 - 60 * std::sin(3.1416f * (1 - picture.nightLeft))};
    _app.assets.picture("moon").draw(static_cast<int>(moon.x) - 16, static_cast<int>(moon.y) - 16, 1.0f, 2.0f,
                                     0, 0, -1);
    for (int i = 0; i < 2; ++i)
        if (picture.players[i].present)
            drawCarried(i, picture.players[i].carried);
    constexpr float hintEnds = 0.93f;
    if (picture.nightLeft > hintEnds)
        Style::printCentred(width / 2, 452, 16,
                            Style::faded(Style::paper, KXMinf(1, (picture.nightLeft - hintEnds) * 40)),
                            "Arrows walk, space hops over bats. Bring moths to the fire, many at once.");
}

// A box for every moth that a player can carry.
void WorldView::drawCarried(int index, int carried) {
    constexpr float side = 12, step = 18;
    const float y = 14 + step * static_cast<float>(index);
    float x = Style::windowSize.width - 14 - step * World::mostCarried;
    if (index == 0)
        KXUIGlobalFontPrint({x - 56, y - 4}, Style::paper, "Moths");
    for (int moth = 0; moth < World::mostCarried; ++moth, x += step) {
        const KXRect box = {{x, y}, {side, side}};
        KXDrawRectFill(box,
                       moth < carried ? (index ? Style::rose : Style::teal) : Style::faded(Style::ink, 0.6f));
        KXDrawRect(box, Style::faded(Style::paper, 0.4f));
    }
}
