#pragma once

#include "App.h"

/// Volumes, the player's name, and the way to the controls.
class OptionsScene : public Scene {
public:
    explicit OptionsScene(App& app);
    std::unique_ptr<Scene> step() override;
    void draw() override;

private:
    void tellShakes();
    App& _app;
    KXUISlider _sounds, _music;
    KXUITextEntry _name;
    KXUIButton _controls, _shakes, _back;
};
