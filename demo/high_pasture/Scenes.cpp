#include "Scenes.h"

#include <cmath>

std::unique_ptr<Scene> startScene(App& app) {
    if (app.options.level)
        return std::make_unique<LevelScene>(app, app.options.level - 1);
    return std::make_unique<TitleScene>(app);
}

void Backdrop::draw() {
    constexpr float scale = WorldView::zoom;
    _app.assets.picture("sky").draw({.scale = {scale, scale}});
    const struct {
        const char* name;
        float pace, top;
    } layers[] = {{"peaks", 0.3f, 90}, {"hills", 0.6f, 142}, {"woods", 1, 158}};
    for (const auto& [name, pace, top] : layers) {
        KXTexture& picture = _app.assets.picture(name);
        const float width = picture.size().width * scale;
        for (float x = -std::fmod(_at * pace, width); x < Style::windowSize.width; x += width)
            picture.draw({.position = {std::round(x), top * scale}, .scale = {scale, scale}});
    }
}

TitleScene::TitleScene(App& app)
    : _app(app), _backdrop(app), _buttons({400, 220}, 180, {"Climb", "Levels", "Options", "Leave"}) {
    app.assets.load(_kid, "kid");
    _kid.setAnimation("walk right");
    _kid.setScale(4);
}

std::unique_ptr<Scene> TitleScene::step() {
    _backdrop.step();
    _kid.poll();
    const int chosen = _buttons.step();
    if (chosen >= 0)
        _app.audio.click();
    switch (chosen) {
    case 0:
        return std::make_unique<LevelScene>(_app, _app.progress.open - 1);
    case 1:
        return std::make_unique<LevelsScene>(_app);
    case 2:
        return std::make_unique<OptionsScene>(_app);
    case 3:
        KXApplicationRequestQuit();
        return nullptr;
    default:
        return nullptr;
    }
}

void TitleScene::draw() {
    _backdrop.draw();
    constexpr float scale = 12;
    KXTexture& logo = _app.assets.picture("logo");
    logo.draw({.position = {400 - logo.size().width * scale / 2, 62}, .scale = {scale, scale}});
    Style::printCentred(400, 172, 17, Style::ink, "The herd is up there already. Catch up with it!");
    KXDrawRectFill({{0, 460}, {800, 40}}, {0.42f, 0.75f, 0.31f, 1});
    KXDrawRectFill({{0, 460}, {800, 5}}, {0.61f, 0.88f, 0.42f, 1});
    _kid.draw(KXPoint{150, 384});
    _buttons.draw();
}

LevelsScene::LevelsScene(App& app)
    : _app(app), _backdrop(app), _buttons({400, 150}, 420, [&app] {
          std::vector<std::string> captions;
          for (int i = 0; i < app.progress.open; ++i) {
              const Progress::Best& best = app.progress.best[static_cast<std::size_t>(i)];
              captions.emplace_back(best.steps ? KXTempString("%s   %s   %d flowers", Stage::title(i),
                                                              timeText(best.steps).c_str(), best.flowers)
                                               : Stage::title(i));
          }
          captions.emplace_back("Back");
          return captions;
      }()) {}

std::unique_ptr<Scene> LevelsScene::step() {
    _backdrop.step();
    const int chosen = _buttons.step();
    if (chosen < 0 && !Controls::menuLeaves())
        return nullptr;
    _app.audio.click();
    if (chosen >= 0 && chosen < _app.progress.open)
        return std::make_unique<LevelScene>(_app, chosen);
    return std::make_unique<TitleScene>(_app);
}

void LevelsScene::draw() {
    _backdrop.draw();
    Style::printCentred(400, 90, 30, Style::ink, "Where to?");
    if (_app.progress.open < Stage::count)
        Style::printCentred(400, 124, 15, Style::ink, "A level opens when the one before it is done.");
    _buttons.draw();
}

EndScene::EndScene(App& app) : _app(app), _backdrop(app), _buttons({400, 370}, 180, {"To the title"}) {}

std::unique_ptr<Scene> EndScene::step() {
    _backdrop.step();
    if (_buttons.step() < 0 && !Controls::menuLeaves())
        return nullptr;
    _app.audio.click();
    return std::make_unique<TitleScene>(_app);
}

void EndScene::draw() {
    _backdrop.draw();
    Style::fillRounded({{190, 90}, {420, 262}}, 12, Style::faded(Style::ink, 0.82f));
    Style::printCentred(400, 108, 34, Style::gold, "The high pasture!");
    Style::printCentred(400, 160, 16, Style::paper, "The herd looks up, and goes on chewing.");
    int steps = 0, flowers = 0;
    for (int i = 0; i < Stage::count; ++i) {
        const Progress::Best& best = _app.progress.best[static_cast<std::size_t>(i)];
        Style::printCentred(
            400, 200 + 28 * static_cast<float>(i), 16, Style::paper,
            KXTempString("%s:  %s, %d flowers", Stage::title(i), timeText(best.steps).c_str(), best.flowers));
        steps += best.steps;
        flowers += best.flowers;
    }
    Style::printCentred(400, 306, 20, Style::gold,
                        KXTempString("In all %s and %d flowers", timeText(steps).c_str(), flowers));
    _buttons.draw();
}
