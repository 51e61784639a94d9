#pragma once

#include "App.h"

/// Asks where to play, and goes there.
class JoinScene : public Scene {
public:
    explicit JoinScene(App& app);
    std::unique_ptr<Scene> step() override;
    void draw() override;

private:
    void beginConnecting();
    std::unique_ptr<Scene> goOn();

    App& _app;
    KXUITextEntry _address;
    KXUIButton _go;
    std::unique_ptr<KXNetworkClient> _client; ///< Null until there is somebody to be joined.
    std::string _answer;                      ///< What is said below the address.
    bool _keepsTrying; ///< The command line has told where; the host may not have begun to wait.
    int _steps = 0;
};
