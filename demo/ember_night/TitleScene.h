#pragma once

#include "App.h"
#include "ButtonColumn.h"

/// The first screen: what to do.
class TitleScene : public Scene {
public:
    explicit TitleScene(App& app);
    std::unique_ptr<Scene> step() override;
    void draw() override;

private:
    std::unique_ptr<Scene> chosen(int button);
    void askToLeave();

    App& _app;
    ButtonColumn _buttons;
    KXSprite _fire, _hero;
    std::unique_ptr<KXUIDialogBox> _dialog; ///< While somebody is asked whether to leave.
    KXTween _sway;
};

/// The valley behind every screen that is not a night.
void drawBackdrop(App& app);
