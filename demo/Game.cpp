#include "Game.h"

#include "StartScene.h"

Game::Game(const Options& options) : app(options), _scene(startScene(app)) {
    KXSetLogicExact(-1);
    KXSetMaximumLogicSteps(15); // after a stall the night goes on where it was
    KXResetLogicLoop();
}

void Game::step() {
    if (!_scene->takesLetters())
        app.stepSwitches();
    if (std::unique_ptr<Scene> next = _scene->step())
        _scene = std::move(next);
}

bool Game::frame() {
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
