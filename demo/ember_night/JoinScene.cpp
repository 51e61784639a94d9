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

void JoinScene::beginConnecting() {
    std::string host;
    int port = 0;
    if (!splitAddress(_address.text(), host, port)) {
        _answer = "That is not a name and a port.";
        return;
    }
    KXLog("network", "asking %s, port %d", host.c_str(), port);
    _client = std::make_unique<KXNetworkClient>();
    _client->setLimits(KXNetworkLimitsForStrangers()); // a host may be anyone, too
    _client->beginConnecting(host.c_str(), port);
}

// The night, once the host has answered.
std::unique_ptr<Scene> JoinScene::goOn() {
    _client->poll();
    switch (_client->state()) {
    case KXNetworkLookingUp:
    case KXNetworkConnecting:
        _answer = "Just a moment.";
        return nullptr;
    case KXNetworkConnected:
        return std::make_unique<GuestScene>(_app, std::move(_client));
    case KXNetworkNameUnknown:
        _answer = "Nobody has that name.";
        break;
    case KXNetworkTimedOut:
        _answer = "Nobody answers.";
        break;
    default:
        _answer = "Nobody waits there.";
        break;
    }
    KXLog("network", "%s", _answer.c_str());
    _client.reset();
    return nullptr;
}

std::unique_ptr<Scene> JoinScene::step() {
    const bool hadFocus = _address.isFocused();
    _address.poll();
    const bool go = _go.clicked(KXMouseLeft) != 0;
    if (_address.changed())
        _keepsTrying = false;
    constexpr int stepsBetweenTries = 60;
    const bool triesAgain = _keepsTrying && !_client && _steps++ % stepsBetweenTries == 0;
    if (go || _address.entered() || triesAgain)
        beginConnecting();
    if (!hadFocus && Controls::menuLeaves())
        return std::make_unique<TitleScene>(_app);
    return _client ? goOn() : nullptr;
}

void JoinScene::draw() {
    drawBackdrop(_app);
    _app.assets.picture("panel").drawNineSlice({240, 180}, {320, 130}, 8);
    Style::printCentred(400, 198, 18, Style::gold, "Where does your friend wait?");
    _address.draw();
    _go.draw();
    if (!_answer.empty())
        Style::printCentred(400, 266, 14, Style::rose, _answer.c_str());
    Style::printCentred(400, 286, 12, Style::faded(Style::paper, 0.7f), "Escape goes back.");
}
