#pragma once

#include "App.h"

/// Runs scenes until somebody leaves.
class Game {
public:
    explicit Game(const Options& options);
    virtual ~Game() = default;

    /// The steps that are due, and then a picture. @return false once it was the last.
    bool frame();
    /// One logic step.
    virtual void step();
    /// Draws what is to be seen now.
    virtual void draw() { app.draw(*_scene); }
    /// False if the last picture was to be kept and could not be.
    bool isGood() const { return _good; }

    const Scene& scene() const { return *_scene; }

    App app;

private:
    std::unique_ptr<Scene> _scene;
    int _frames = 0;
    bool _good = true;
};
