#pragma once

#include "App.h"

/// Every widget of the library on one screen.
class WidgetsScene : public Scene {
public:
    explicit WidgetsScene(App& app);
    std::unique_ptr<Scene> step() override;
    void draw() override;

private:
    App& _app;
    KXUIButton _back;
};
