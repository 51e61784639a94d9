#include "HostScene.h"

#include "Controls.h"
#include "LevelScene.h"
#include "TitleScene.h"
#include "Wire.h"

#include <new>

HostScene::HostScene(App& app, int port) : _app(app), _port(port) {
    try {
        _server = std::make_unique<KXNetworkServer>(nullptr, port, places, 0, places);
        KXNetworkLimits limits = KXNetworkLimitsForStrangers(); // a guest may be anyone
        limits.firstMessageMilliseconds = 2000;                 // and greets at once
        _server->setLimits(limits);
        KXLog("network", "waiting for a guest at port %d", port);
    } catch (const std::bad_alloc&) {
        _failure = KXError();
        KXLog("network", "no port %d: %s", port, KXError());
    }
}

// Lets in whoever comes. The last place stays free: for it goes who has been silent for longest.
void HostScene::admit() {
    std::erase_if(_silent, [this](int id) { return !_server->isClientConnected(id); });
    for (int come = 0; come < places; ++come) {
        const int id = _server->checkForIncomingConnections();
        if (id == -1)
            return;
        _silent.push_back(id);
        if (_silent.size() < places)
            continue;
        _server->disconnectClient(_silent.front());
        _silent.erase(_silent.begin());
    }
}

// The first who greets as a guest does, -1 as long as nobody has; who says anything else has to go.
int HostScene::greeted() {
    int id = -1;
    while (const std::unique_ptr<KXNetworkBuffer> message{_server->receiveNext(&id)}) {
        if (isGreeting(*message))
            return id;
        _server->disconnectClient(id);
    }
    return -1;
}

std::unique_ptr<Scene> HostScene::step() {
    ++_steps;
    if (Controls::menuLeaves())
        return std::make_unique<TitleScene>(_app);
    if (!_server)
        return nullptr;
    admit();
    _server->poll();
    const int guest = greeted();
    if (guest == -1)
        return nullptr;
    for (const int id : _server->clientIDList())
        if (id != guest)
            _server->disconnectClient(id);
    KXLog("network", "a guest has come: %s", _server->peerAddress(guest));
    return std::make_unique<LevelScene>(_app, std::move(_server), guest);
}

void HostScene::draw() {
    drawBackdrop(_app);
    _app.assets.picture("panel").drawNineSlice({200, 180}, {400, 130}, 8);
    if (!_server) {
        Style::printCentred(400, 215, 16, Style::rose, KXTempString("Port %d cannot be used.", _port));
        Style::printCentred(400, 245, 12, Style::paper, _failure.c_str());
    } else {
        constexpr const char* dots[] = {"", ".", "..", "..."};
        Style::printCentred(400, 210, 18, Style::gold, "Waiting for a friend");
        KXUIGlobalFontPrint({508, 210}, Style::gold, 18, dots[_steps / 30 % 4]);
        Style::printCentred(400, 245, 14, Style::paper,
                            KXTempString("Tell them this machine's name and port %d.", _port));
    }
    Style::printCentred(400, 280, 12, Style::faded(Style::paper, 0.7f), "Escape goes back.");
}
