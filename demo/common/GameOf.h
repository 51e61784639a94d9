#pragma once

#include "Scene.h"

#include <Kobaltrix/Kobaltrix.h>

#include <memory>

/// Runs the scenes of a game until somebody leaves. @tparam App what its scenes need, made of the Options;
/// the first scene is that of `startScene(app)`.
template<class App, class Options>
class GameOf {
public:
    explicit GameOf(const Options& options) : app(options), _scene(startScene(app)) {
        KXSetLogicExact(-1);
        KXSetMaximumLogicSteps(15); // after a stall the game goes on where it was
        KXResetLogicLoop();
    }
    virtual ~GameOf() = default;

    /// The steps that are due, and then a picture. @return false once it was the last.
    bool frame();
    /// One logic step.
    virtual void step() {
        if (!_scene->takesLetters())
            app.stepSwitches();
        if (std::unique_ptr<Scene> next = _scene->step())
            _scene = std::move(next);
    }
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

template<class App, class Options>
bool GameOf<App, Options>::frame() {
    KXPreLogicLoop();
    for (; KXLogicLoop(); KXLogicUpdate())
        step();
    draw();
    const bool isLast = KXApplicationQuitRequested() || ++_frames == app.options.frames;
    if (isLast && !app.options.screenshot.empty())
        _good = app.keepPicture(app.options.screenshot);
    app.window.swapBuffers();
    KXFPSTick();
    KXPostLogicLoop();
    if (!isLast)
        KXWaitForLogicStep();
    return !isLast;
}
