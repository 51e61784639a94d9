#pragma once

#include "App.h"
#include "ButtonColumn.h"
#include "WorldView.h"

#include <optional>

/// The scene that the command line asks for.
std::unique_ptr<Scene> startScene(App& app);

/// A landscape that passes by, behind every screen that is no level.
class Backdrop {
public:
    explicit Backdrop(App& app) : _app(app) {}
    void step() { _at += 0.4f; }
    void draw();

private:
    App& _app;
    float _at = 0;
};

/// The first screen: what to do.
class TitleScene : public Scene {
public:
    explicit TitleScene(App& app);
    std::unique_ptr<Scene> step() override;
    void draw() override;

private:
    App& _app;
    Backdrop _backdrop;
    ButtonColumn _buttons;
    KXSprite _kid;
};

/// Which level to play: those that are open.
class LevelsScene : public Scene {
public:
    explicit LevelsScene(App& app);
    std::unique_ptr<Scene> step() override;
    void draw() override;

private:
    App& _app;
    Backdrop _backdrop;
    ButtonColumn _buttons;
};

/// Volumes, and which keys and buttons do what.
class OptionsScene : public Scene {
public:
    explicit OptionsScene(App& app);
    std::unique_ptr<Scene> step() override;
    void draw() override;
    bool takesLetters() override { return _asked != nullptr; }

private:
    std::vector<std::string> captions() const;
    void stepQuestion();

    App& _app;
    Backdrop _backdrop;
    KXUISlider _sounds, _music;
    ButtonColumn _buttons;
    const char* _asked = nullptr; ///< The action that is given another input now.
    bool _waits = false;          ///< The mouse was pressed for an answer: buttons are not meant.
    std::string _news;
};

/// A level that is played, with its pause and its result.
class LevelScene : public Scene {
public:
    LevelScene(App& app, int number);
    std::unique_ptr<Scene> step() override;
    void draw() override;
    const World& world() const { return _world; }
    int number() const { return _number; }
    bool isPaused() const { return _pause.has_value(); }

private:
    void setPaused(bool paused);
    std::unique_ptr<Scene> stepPause();
    std::unique_ptr<Scene> stepResult();
    void drawScore();
    void drawPanel(const char* title);

    App& _app;
    int _number;
    Stage _level;
    World _world;
    WorldView _view;
    std::optional<ButtonColumn> _pause;  ///< While the game is paused.
    std::optional<ButtonColumn> _result; ///< When the kid has been home for a moment.
    int _stepsHome = 0;
    bool _fastest = false;
    bool _hadPad; ///< Whether a pad was there a step ago.
};

/// All is done.
class EndScene : public Scene {
public:
    explicit EndScene(App& app);
    std::unique_ptr<Scene> step() override;
    void draw() override;

private:
    App& _app;
    Backdrop _backdrop;
    ButtonColumn _buttons;
};
