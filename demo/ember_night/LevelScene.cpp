#include "LevelScene.h"

#include "Controls.h"
#include "ResultScene.h"
#include "TitleScene.h"
#include "Wire.h"

#include <cstdio>

LevelScene::LevelScene(App& app, int players)
    : _app(app), _world(players, app.secondsOfNight(), loadHitBoxes(app.assets)), _view(app),
      _players(players) {}

LevelScene::LevelScene(App& app, std::unique_ptr<KXNetworkServer> server, int guest)
    : _app(app), _world(2, app.secondsOfNight(), loadHitBoxes(app.assets)), _view(app), _players(2),
      _server(std::move(server)), _guest(guest) {}

// The newest of what the guest has sent; an older hop counts, too, or a short press would be lost.
Input LevelScene::guestInput() {
    bool hop = false;
    _server->poll();
    while (const std::unique_ptr<KXNetworkBuffer> message{_server->receiveNext(nullptr)}) {
        _guestInput = readInput(*message);
        hop |= _guestInput.hop;
    }
    if (!_server->isClientConnected(_guest))
        _guestInput = {};
    Input input = _guestInput;
    input.hop |= hop;
    return input;
}

void LevelScene::tellGuest() {
    KXNetworkBuffer message;
    writePicture(message, _world.picture());
    _server->sendBufferToClient(_guest, &message);
}

void LevelScene::stepWorld() {
    Input inputs[2] = {
        Controls::withMouse(Controls::inputOf(_app.actions, 0), _world.picture().players[0].at), {}};
    if (_server)
        inputs[1] = guestInput();
    else if (_players == 2)
        inputs[1] = Controls::inputOf(_app.actions, 1);
    _world.step(inputs);
    _view.step(_world.picture());
    if (_server)
        tellGuest();
}

void LevelScene::setPaused(bool paused) {
    _pause.reset();
    if (paused)
        _pause.emplace(KXPoint{400, 220}, 160.0f, std::vector<std::string>{"Go on", "Give up"});
    _app.audio.setPaused(paused && !_server); // with a guest the night goes on
    _app.window.setTitle(paused ? "Ember Night: pause" : "Ember Night");
}

std::unique_ptr<Scene> LevelScene::stepPause() {
    const int chosen = _pause->step();
    if (chosen >= 0 || Controls::menuLeaves() || _app.actions.wentDown(Controls::pause))
        setPaused(false);
    return chosen == 1 ? std::make_unique<TitleScene>(_app) : nullptr;
}

std::unique_ptr<Scene> LevelScene::step() {
    if (_pause && !_server) // a guest cannot be stopped
        return stepPause();
    if (_pause) {
        if (std::unique_ptr<Scene> next = stepPause())
            return next;
    } else if (KXKeyWentDown(KXKeyEscape) || _app.actions.wentDown(Controls::pause)) {
        setPaused(true);
    }
    stepWorld();
    const bool alone = !_server || !_server->isClientConnected(_guest);
    if (_world.isOver() && stepEnding(_app, _world.picture(), ++_stepsOver, alone)) {
        setPaused(false);
        return std::make_unique<ResultScene>(_app, _world.picture().score);
    }
    return nullptr;
}

void LevelScene::draw() {
    _view.draw(_world.picture());
    if (_world.isOver())
        drawEnding(_world.picture());
    if (_server && !_server->isClientConnected(_guest))
        Style::printCentred(400, 470, 14, Style::rose, "Your friend has left.");
    if (!_pause)
        return;
    KXDrawRectFill({{0, 0}, Style::windowSize}, Style::faded(Style::ink, 0.6f));
    Style::printCentred(400, 180, 24, Style::gold, "Pause");
    _pause->draw();
}

void drawEnding(const Picture& picture) {
    const bool dawn = picture.phase == Picture::Dawn;
    KXDrawRectFill({{0, 190}, {Style::windowSize.width, 90}}, Style::faded(Style::ink, 0.7f));
    Style::printCentred(400, 204, 34, dawn ? Style::gold : Style::rose,
                        dawn ? "Dawn!" : "The fire went out.");
    Style::printCentred(400, 250, 16, Style::paper,
                        KXTempString("You kept it for {C1,0.85,0.54,1}%d{EC} points.", picture.score));
}

bool stepEnding(App& app, const Picture& picture, int stepsOver, bool alone) {
    constexpr int looked = 180, looking = 30;
    if (stepsOver == 1) {
        KXLog("game", "the night ended with %d points", picture.score);
        if (app.options.headless)
            std::printf("Score: %d\n", picture.score);
        ++app.nightsEnded;
    }
    if (stepsOver >= (alone ? looking : looked) && app.nightsEnded == app.options.nights)
        KXApplicationRequestQuit();
    return stepsOver > looked;
}
