#include "Scenes.h"

LevelScene::LevelScene(App& app, int number)
    : _app(app), _number(number), _level(app.assets, number), _world(_level), _view(app, _level, number),
      _hadPad(KXPadConnected(0) != 0) {
    _view.step(_world);
}

void LevelScene::setPaused(bool paused) {
    _pause.reset();
    if (paused)
        _pause.emplace(KXPoint{400, 220}, 180.0f,
                       std::vector<std::string>{"Go on", "From the beginning", "To the title"});
    _app.audio.setPaused(paused);
    _app.window.setTitle(paused ? "High Pasture: pause" : "High Pasture");
}

std::unique_ptr<Scene> LevelScene::stepPause() {
    const int chosen = _pause->step();
    if (chosen < 0 && !Controls::menuLeaves() && !_app.actions.wentDown(Controls::pause))
        return nullptr;
    _app.audio.click();
    setPaused(false);
    if (chosen == 1)
        return std::make_unique<LevelScene>(_app, _number);
    return chosen == 2 ? std::make_unique<TitleScene>(_app) : nullptr;
}

// A moment of joy, then the result.
std::unique_ptr<Scene> LevelScene::stepResult() {
    constexpr int joy = 70;
    if (++_stepsHome == 1) {
        _fastest = _app.progress.enter(_number, _world.steps(), _world.picked());
        _app.progressChanged();
        KXLog("game", "%s in %s with %d flowers", Stage::title(_number), timeText(_world.steps()).c_str(),
              _world.picked());
        if (_app.options.headless)
            std::printf("Home: %s, %d flowers\n", timeText(_world.steps()).c_str(), _world.picked());
    }
    if (_stepsHome < joy)
        return nullptr;
    if (!_result)
        _result.emplace(KXPoint{400, 290}, 180.0f,
                        std::vector<std::string>{"On", "Once more", "To the title"});
    const int chosen = _result->step();
    if (chosen < 0)
        return nullptr;
    _app.audio.click();
    if (chosen == 1)
        return std::make_unique<LevelScene>(_app, _number);
    if (chosen == 2)
        return std::make_unique<TitleScene>(_app);
    if (_number + 1 < Stage::count)
        return std::make_unique<LevelScene>(_app, _number + 1);
    return std::make_unique<EndScene>(_app);
}

std::unique_ptr<Scene> LevelScene::step() {
    const bool hasPad = KXPadConnected(0) != 0, lostPad = _hadPad && !hasPad;
    _hadPad = hasPad;
    if (_pause)
        return stepPause();
    if (!_world.isHome() &&
        (lostPad || KXKeyWentDown(KXKeyEscape) || _app.actions.wentDown(Controls::pause))) {
        setPaused(true);
        return nullptr;
    }
    _world.step(Controls::inputOf(_app.actions));
    _view.step(_world);
    return _world.isHome() ? stepResult() : nullptr;
}

void LevelScene::drawScore() {
    Style::fillRounded({{8, 8}, {176, 30}}, 8, Style::faded(Style::ink, 0.55f));
    _app.assets.picture("flower").draw(
        {.position = {12, 8}, .scale = {1.75f, 1.75f}, .source = {{0, 0}, {16, 16}}});
    KXUIGlobalFontPrint({44, 12}, Style::paper, 17,
                        KXTempString("%d / %d", _world.picked(), static_cast<int>(_level.flowers.size())));
    KXUIGlobalFontPrint({112, 12}, Style::paper, 17, timeText(_world.steps()).c_str());
}

void LevelScene::drawPanel(const char* title) {
    KXDrawRectFill({{0, 0}, Style::windowSize}, Style::faded(Style::ink, 0.35f));
    Style::fillRounded({{240, 110}, {320, 300}}, 12, Style::faded(Style::ink, 0.82f));
    Style::printCentred(400, 128, 30, Style::gold, title);
}

void LevelScene::draw() {
    constexpr int announced = 150;
    _view.draw(_world);
    drawScore();
    if (_world.steps() < announced && !_pause)
        Style::printCentred(
            400, 90, 34,
            Style::faded(Style::ink, KXMinf(1, static_cast<float>(announced - _world.steps()) / 40)),
            Stage::title(_number));
    if (_result) {
        drawPanel(_number + 1 < Stage::count ? "Well climbed!" : "You are there!");
        Style::printCentred(
            400, 178, 18, Style::paper,
            KXTempString("%s%s", timeText(_world.steps()).c_str(), _fastest ? ", faster than ever" : ""));
        Style::printCentred(
            400, 206, 18, Style::paper,
            KXTempString("%d of %d flowers", _world.picked(), static_cast<int>(_level.flowers.size())));
        Style::printCentred(400, 234, 18, Style::paper,
                            _world.tumbled() ? KXTempString("Tumbled %d times", _world.tumbled())
                                             : "Never tumbled");
        _result->draw();
    } else if (_pause) {
        drawPanel("Pause");
        Style::printCentred(400, 176, 16, Style::paper, Stage::title(_number));
        _pause->draw();
    }
}
