#include "JoinScene.h"

#include "Controls.h"
#include "GuestScene.h"
#include "HostScene.h"
#include "TitleScene.h"

JoinScene::JoinScene(App& app) : _app(app), _keepsTrying(!app.options.join.empty()) {
    _address.setRect({270, 236}, {190, 24});
    _address.setPlaceholder("name:port");
    _address.setText(_keepsTrying ? app.options.join.c_str()
                                  : KXTempString("localhost:%d", HostScene::usualPort));
    _address.focus();
    _go.setText("Join");
    _go.setOrigin({474, 236});
}

std::unique_ptr<Scene> JoinScene::connect() {
    std::string host;
    int port = 0;
    if (!splitAddress(_address.text(), host, port)) {
        _failure = "That is not a name and a port.";
        return nullptr;
    }
    auto client = std::make_unique<KXNetworkClient>();
    client->setStoredBufferLimit(64 * 1024);
    client->setSendRetryLimit(2000);
    if (!client->connect(host.c_str(), port)) {
        KXLog("network", "nobody at %s, port %d", host.c_str(), port);
        _failure = "Nobody waits there.";
        return nullptr;
    }
    KXLog("network", "playing with %s, port %d", host.c_str(), port);
    return std::make_unique<GuestScene>(_app, std::move(client));
}

std::unique_ptr<Scene> JoinScene::step() {
    const bool hadFocus = _address.isFocused();
    _address.poll();
    const bool go = _go.clicked(KXMouseLeft) != 0;
    if (_address.changed())
        _keepsTrying = false;
    constexpr int stepsBetweenTries = 60;
    if (go || _address.entered() || (_keepsTrying && _steps++ % stepsBetweenTries == 0))
        return connect();
    if (!hadFocus && Controls::menuLeaves())
        return std::make_unique<TitleScene>(_app);
    return nullptr;
}

void JoinScene::draw() {
    drawBackdrop(_app);
    _app.assets.picture("panel").drawNineSlice({240, 180}, {320, 130}, 8);
    Style::printCentred(400, 198, 18, Style::gold, "Where does your friend wait?");
    _address.draw();
    _go.draw();
    if (!_failure.empty())
        Style::printCentred(400, 266, 14, Style::rose, _failure.c_str());
    Style::printCentred(400, 286, 12, Style::faded(Style::paper, 0.7f), "Escape goes back.");
}
