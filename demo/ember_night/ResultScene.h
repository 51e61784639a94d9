#pragma once

#include "App.h"

/// After a night: whose score it was.
class ResultScene : public Scene {
public:
    ResultScene(App& app, int score);
    std::unique_ptr<Scene> step() override;
    void draw() override;

private:
    App& _app;
    int _score;
    KXUITextEntry _name;
    KXUIButton _done;
};
