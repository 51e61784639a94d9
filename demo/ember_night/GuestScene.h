#pragma once

#include "App.h"
#include "WorldView.h"

/// A night that happens on somebody else's machine: sends what the player does, shows what comes.
class GuestScene : public Scene {
public:
    GuestScene(App& app, std::unique_ptr<KXNetworkClient> client);
    std::unique_ptr<Scene> step() override;
    void draw() override;

private:
    void receive();
    bool lostHost();

    App& _app;
    std::unique_ptr<KXNetworkClient> _client;
    WorldView _view;
    Picture _picture;
    int _stepsOver = 0, _stepsLost = 0;
};
