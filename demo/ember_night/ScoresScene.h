#pragma once

#include "App.h"

/// The best keepers.
class ScoresScene : public Scene {
public:
    /// @param place of the score that was just won, -1 for none.
    ScoresScene(App& app, int place);
    std::unique_ptr<Scene> step() override;
    void draw() override;

private:
    App& _app;
    KXUIListBox _list;
    KXUIButton _back;
};
