#include "WorldView.h"

#include <cmath>
#include <cstring>

namespace {
constexpr float tile = Stage::tile, zoom = WorldView::zoom;
constexpr KXSize seen = {Style::windowSize.width / zoom, Style::windowSize.height / zoom};

/// The light of a level: what its landscape and its things are multiplied by.
constexpr KXColor lights[Stage::count] = {{1, 1, 1, 1}, {1, 0.93f, 0.84f, 1}, {0.86f, 0.84f, 1, 1}};

void play(KXSprite& sprite, const char* name) { // setting the one that plays would start it over
    if (std::strcmp(name, sprite.currentAnimation()) != 0)
        sprite.setAnimation(name);
}

const char* sided(const char* name, const Mover& mover) {
    return KXTempString("%s %s", name, mover.direction < 0 ? "left" : "right");
}

float kept(float value, float least, float most) { return std::fmax(least, std::fmin(value, most)); }
} // namespace

WorldView::WorldView(App& app, Stage& level, int number) : _app(app), _level(level), _number(number) {
    app.assets.load(_kid, "kid");
    _kid.setAnimation("stand right");
    app.assets.load(_flower, "flower");
    _flower.setAnimation("nod");
    const auto provide = [&app](std::vector<KXSprite>& sprites, std::size_t count, const char* file,
                                const char* animation) {
        KXSprite sprite;
        app.assets.load(sprite, file);
        sprite.setAnimation(animation);
        sprites.assign(count, sprite);
    };
    provide(_beetles, level.beetles.size(), "beetle", "walk right");
    provide(_crows, level.crows.size(), "crow", "fly right");
    provide(_bells, level.bells.size(), "bell", "still");
}

// Smoothly after the kid, further where it runs to, and never beyond the map.
void WorldView::stepCamera(const World& world) {
    const KXPoint kid = KXRectCentre(world.kid().body);
    const KXRect area = _level.area();
    _ahead += (44 * world.speed().x / 1.9f - _ahead) * 0.035f;
    const KXPoint goal = {kept(kid.x + _ahead, seen.width / 2, area.size.width - seen.width / 2),
                          kept(kid.y - 14, seen.height / 2, area.size.height - seen.height / 2)};
    _eyeBefore = _eye;
    const float slack = world.stands() ? 0.09f : 0.05f;
    _eye = _isFirst ? goal : KXPoint{_eye.x + (goal.x - _eye.x) * 0.14f, _eye.y + (goal.y - _eye.y) * slack};
    // However fast it falls, it stays in the picture.
    _eye.y = kept(_eye.y, std::fmin(kid.y - seen.height * 0.36f, goal.y),
                  std::fmax(kid.y + seen.height * 0.36f, goal.y));
    if (_isFirst)
        _eyeBefore = _eye;
    _isFirst = false;
    KXSetSoundView({KXRectAround(_eye, seen)});
}

void WorldView::happened(const Event& event) {
    _app.audio.play(event);
    switch (event.kind) {
    case Event::Pick:
        _particles.burst(event.at, 9, 1.3f, {0.55f, 0.66f, 1, 1});
        break;
    case Event::Land:
        _particles.burst({event.at.x, event.at.y + 8}, 4, 0.6f, Style::paper);
        break;
    case Event::Stomp:
        _particles.burst({event.at.x, event.at.y + 10}, 12, 1.6f, Style::rose);
        break;
    case Event::Ring:
    case Event::Home:
        _particles.burst(event.at, 26, 2, Style::gold);
        break;
    case Event::Tumble:
        _particles.burst(event.at, 14, 1.8f, {1, 1, 1, 1});
        break;
    default:
        break;
    }
}

void WorldView::step(const World& world) {
    for (const Event& event : world.events())
        happened(event);
    stepCamera(world);
    _particles.step();
    _flower.poll();
    const Mover& kid = world.kid();
    const char* const does = world.tumbles()       ? "tumble"
                             : world.stands()      ? std::abs(world.speed().x) > 0.2f ? "walk" : "stand"
                             : world.speed().y < 0 ? "jump"
                                                   : "fall";
    play(_kid, sided(does, kid));
    _kid.poll();
    for (std::size_t i = 0; i < _beetles.size(); ++i) {
        play(_beetles[i], sided(world.isStomped(i) ? "flat" : "walk", world.beetles()[i]));
        _beetles[i].poll();
    }
    for (std::size_t i = 0; i < _crows.size(); ++i) {
        play(_crows[i], sided("fly", world.crows()[i]));
        _crows[i].poll();
    }
    for (std::size_t i = 0; i < _bells.size(); ++i) {
        play(_bells[i], static_cast<int>(i) == world.lastBell() ? "ring" : "still");
        _bells[i].poll();
    }
}

// Layers that scroll more slowly the further they are, repeated as far as one sees.
void WorldView::drawBehind(KXPoint centre) {
    const KXColor light = lights[_number];
    _app.assets.picture("sky").draw({.scale = {zoom, zoom}, .tint = light});
    const KXRect area = _level.area();
    const float climbed = area.size.height - seen.height / 2 - centre.y; // above the lowest view
    const struct {
        const char* name;
        float depth,
            top; ///< How much of the camera's way it goes; where it begins, seen from the lowest view.
    } layers[] = {{"peaks", 0.12f, 62}, {"hills", 0.25f, 116}, {"woods", 0.45f, 136}};
    for (const auto& [name, depth, top] : layers) {
        KXTexture& picture = _app.assets.picture(name);
        const float width = picture.size().width, height = picture.size().height;
        const float y = std::round((top + climbed * depth * 0.6f) * zoom);
        for (float x = -std::fmod(centre.x * depth, width); x < seen.width; x += width)
            picture.draw({.position = {std::round(x * zoom), y}, .scale = {zoom, zoom}, .tint = light});
        const float under = y + height * zoom; // where one has climbed higher than it is tall
        if (under < Style::windowSize.height && std::strcmp(name, "woods") == 0)
            KXDrawRectFill({{0, under}, {Style::windowSize.width, Style::windowSize.height - under}},
                           {0.247f * light.r, 0.49f * light.g, 0.36f * light.b, 1});
    }
}

// On grass that is free above something grows here and there, always the same.
void WorldView::drawGrowth(KXRect part) {
    KXTexture& tufts = _app.assets.picture("tufts");
    const int first = static_cast<int>(part.origin.x / tile),
              last = static_cast<int>(KXRectEnd(part).x / tile);
    const int top = std::max(1, static_cast<int>(part.origin.y / tile)),
              bottom = static_cast<int>(KXRectEnd(part).y / tile) + 1;
    for (int column = first; column <= last; ++column)
        for (int row = top; row <= bottom; ++row) {
            const unsigned dice =
                (static_cast<unsigned>(column) * 2654435761u ^ static_cast<unsigned>(row) * 40503u) >> 7;
            if (dice % 8 > 4 || !_level.isGrass(column, row) ||
                _level.map.tileAt(_level.ground, column, row - 1).tileset >= 0)
                continue;
            const float kind = dice % 8 == 4 ? 3 : static_cast<float>(dice / 8 % 3);
            tufts.draw({.position = {static_cast<float>(column) * tile, static_cast<float>(row) * tile - 8},
                        .source = {{kind * tile, 0}, {tile, 8}}});
        }
}

void WorldView::drawThings(const World& world, float fraction) {
    for (const Stage::Way& rope : _level.ropes) {
        const bool upright = rope.size.height > rope.size.width;
        const KXPoint middle = KXRectCentre(rope);
        const KXColor hemp = {0.42f, 0.29f, 0.22f, 1};
        KXDrawRectFill(upright ? KXRect{{middle.x - 1, rope.origin.y}, {2, rope.size.height}}
                               : KXRect{{rope.origin.x, middle.y}, {rope.size.width, 2}},
                       hemp);
    }
    const KXRect gate = _level.gate;
    _app.assets.picture("hut").draw(
        {.position = {KXRectCentre(gate).x, KXRectEnd(gate).y}, .origin = {32, 52}});
    for (const Stage::Sign& sign : _level.signs)
        _app.assets.picture("sign").draw({.position = {sign.rect.origin.x, KXRectEnd(sign.rect).y - tile}});
    for (std::size_t i = 0; i < _bells.size(); ++i)
        _bells[i].draw(KXPoint{_level.bells[i].origin.x - 2, KXRectEnd(_level.bells[i]).y - 28});
    for (const Mover& basket : world.baskets())
        _app.assets.picture("basket").draw({.position = basket.drawnAt(fraction)});
    for (std::size_t i = 0; i < _level.flowers.size(); ++i)
        if (!world.isPicked(i)) {
            const KXPoint at = _level.flowers[i].origin;
            _flower.draw(KXPoint{
                at.x, at.y + std::round(2 * std::sin(static_cast<float>(world.steps()) / 20 + at.x))});
        }
}

void WorldView::drawAnimals(const World& world, float fraction) {
    for (std::size_t i = 0; i < _beetles.size(); ++i) {
        const KXPoint at = world.beetles()[i].drawnAt(fraction);
        _beetles[i].draw(KXPoint{at.x - 1, at.y - 1});
    }
    for (std::size_t i = 0; i < _crows.size(); ++i) {
        const KXPoint at = world.crows()[i].drawnAt(fraction);
        _crows[i].draw(KXPoint{at.x - 3, at.y - 2});
    }
}

void WorldView::drawKid(const World& world, float fraction) {
    const KXPoint at = world.kid().drawnAt(fraction);
    _kid.draw(KXPoint{at.x - 4, at.y - 5});
}

// What a sign says, above it: in the window's units, where text is sharp.
void WorldView::drawSigns(const World& world, KXRect part) {
    const Stage::Sign* const sign = world.sign();
    if (!sign || sign->text.empty() || world.tumbles())
        return;
    KXTextOptions options;
    options.width = 300;
    KXTextLayout text(*KXCachedFont(_app.assets.path("font.ttf"), KXAliasModeTexture, 15), sign->text.c_str(),
                      options);
    const KXSize box = {text.size().width + 24, text.size().height + 18};
    const KXPoint foot = (KXPoint{KXRectCentre(sign->rect).x, sign->rect.origin.y} - part.origin) * zoom;
    const KXPoint corner = {
        std::round(kept(foot.x - box.width / 2, 10, Style::windowSize.width - box.width - 10)),
        std::round(kept(foot.y - 26 - box.height, 44, Style::windowSize.height - box.height))};
    Style::fillRounded({{corner.x - 2, corner.y - 2}, {box.width + 4, box.height + 4}}, 9,
                       {0.5f, 0.32f, 0.2f, 1});
    Style::fillRounded({corner, box}, 8, {0.98f, 0.93f, 0.82f, 1});
    text.draw({corner.x + 12, corner.y + 9}, {0.25f, 0.18f, 0.2f, 1});
}

void WorldView::draw(const World& world) {
    const float fraction = KXLogicFraction();
    KXPoint centre = _eyeBefore + (_eye - _eyeBefore) * fraction;
    // On whole points of the window, so that tiles have no seams.
    centre = {std::round(centre.x * zoom) / zoom, std::round(centre.y * zoom) / zoom};
    KXCamera camera;
    camera.centre = centre;
    camera.zoom = zoom;
    const KXRect part = KXRectAround(centre, seen);
    drawBehind(centre);
    KXPushCamera(camera);
    drawGrowth(part);
    drawThings(world, fraction);
    _level.map.drawLayer(_level.ground, part, part.origin);
    drawAnimals(world, fraction);
    drawKid(world, fraction);
    _particles.draw();
    KXPopCamera();
    const KXColor light = lights[_number];
    if (light.r < 1 || light.b < 1) // evening
        KXDrawRectFill({{0, 0}, Style::windowSize}, {light.r * 0.4f, light.g * 0.25f, light.b * 0.4f, 0.14f});
    drawSigns(world, part);
}
