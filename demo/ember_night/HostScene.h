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
    void admit();
    int greeted();

    /// Strangers that have said nothing take no guest's place: there are as many, less one.
    static constexpr int places = 16;

    App& _app;
    int _port;
    std::unique_ptr<KXNetworkServer> _server; ///< Null if nobody can be waited for.
    std::vector<int> _silent;                 ///< Who has come and not said a word, longest first.
    std::string _failure;
    int _steps = 0;
};
