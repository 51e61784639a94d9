#pragma once

#include "App.h"

/// Asks where to play, and goes there.
class JoinScene : public Scene {
public:
    explicit JoinScene(App& app);
    std::unique_ptr<Scene> step() override;
    void draw() override;

private:
    std::unique_ptr<Scene> connect();

    App& _app;
    KXUITextEntry _address;
    KXUIButton _go;
    std::string _failure;
    bool _keepsTrying; ///< The command line has told where; the host may not have begun to wait.
    int _steps = 0;
};
