#pragma once

#include "App.h"

/// Waits for a guest.
class HostScene : public Scene {
public:
    static constexpr int usualPort = 7474;

    HostScene(App& app, int port);
    std::unique_ptr<Scene> step() override;
    void draw() override;

private:
    App& _app;
    int _port;
    std::unique_ptr<KXNetworkServer> _server; ///< Null if nobody can be waited for.
    std::string _failure;
    int _steps = 0;
};
