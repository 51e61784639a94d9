#include "HostScene.h"

#include "Controls.h"
#include "LevelScene.h"
#include "TitleScene.h"

#include <new>

HostScene::HostScene(App& app, int port) : _app(app), _port(port) {
    try {
        _server = std::make_unique<KXNetworkServer>(nullptr, port, 1, 0, 4);
        _server->setLimits(KXNetworkLimitsForStrangers()); // a guest may be anyone
        KXLog("network", "waiting for a guest at port %d", port);
    } catch (const std::bad_alloc&) {
        _failure = KXError();
        KXLog("network", "no port %d: %s", port, KXError());
    }
}

std::unique_ptr<Scene> HostScene::step() {
    ++_steps;
    if (Controls::menuLeaves())
        return std::make_unique<TitleScene>(_app);
    if (_server && _server->checkForIncomingConnections() == 0) {
        KXLog("network", "a guest has come");
        return std::make_unique<LevelScene>(_app, std::move(_server));
    }
    return nullptr;
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
