#include "GuestScene.h"

#include "Controls.h"
#include "LevelScene.h"
#include "TitleScene.h"
#include "Wire.h"

GuestScene::GuestScene(App& app, std::unique_ptr<KXNetworkClient> client)
    : _app(app), _client(std::move(client)), _view(app) {
    KXNetworkBuffer message;
    writeGreeting(message);
    _client->send(&message);
}

// Only the newest picture is shown, but what happened in each of them is.
void GuestScene::receive() {
    std::vector<Event> events;
    _client->poll();
    while (const std::unique_ptr<KXNetworkBuffer> message{_client->receiveNext()}) {
        _picture = readPicture(*message);
        events.insert(events.end(), _picture.events.begin(), _picture.events.end());
    }
    _picture.events = std::move(events);
}

// True some time after the host has left in the middle of a night.
bool GuestScene::lostHost() {
    constexpr int told = 180;
    return !_client->connected() && ++_stepsLost > told;
}

std::unique_ptr<Scene> GuestScene::step() {
    receive();
    _view.step(_picture);
    if (_client->connected()) {
        KXNetworkBuffer message;
        writeInput(message, Controls::withMouse(Controls::inputOf(_app.actions, 0), _picture.players[1].at));
        _client->send(&message);
    }
    if (_picture.phase != Picture::Night ? stepEnding(_app, _picture, ++_stepsOver, true) : lostHost())
        return std::make_unique<TitleScene>(_app);
    if (Controls::menuLeaves())
        return std::make_unique<TitleScene>(_app);
    return nullptr;
}

void GuestScene::draw() {
    _view.draw(_picture);
    if (_picture.phase != Picture::Night)
        drawEnding(_picture);
    else if (!_client->connected())
        Style::printCentred(400, 470, 14, Style::rose, "Your friend has left.");
}
