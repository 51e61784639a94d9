#include "App.h"
#include "Script.h"
#include "StartScene.h"
#include "testkit/KXTestInput.h"

#include <cstdio>
#include <cstdlib>
#include <new>
#include <optional>

namespace {
/// Runs scenes until somebody leaves.
class Game {
public:
    explicit Game(const Options& options)
        : _app(options), _scene(startScene(_app)), _user(_app.window.id()) {}

    bool prepare();
    void run();
    bool finish();

private:
    bool isOver() const;
    void step();

    App _app;
    std::unique_ptr<Scene> _scene;
    Script _script;
    KXTestInput _user;
    std::optional<Recorder> _recorder;
    int _steps = 0, _frames = 0, _lastFrame = 0;
    bool _failed = false;
};

bool Game::prepare() {
    const Options& options = _app.options;
    if (!options.script.empty() && !_script.load(options.script))
        return false;
    if (!options.record.empty() && !_recorder.emplace(options.record).isOpen()) {
        std::fprintf(stderr, "play: %s: cannot be written\n", options.record.c_str());
        return false;
    }
    _script.feed(1, _user);
    _lastFrame = options.frames ? options.frames : options.headless ? _script.length() : 0;
    return true;
}

bool Game::isOver() const { return KXApplicationQuitRequested() || (_lastFrame && _frames >= _lastFrame); }

void Game::step() {
    ++_steps;
    if (_recorder)
        _recorder->setStep(_steps);
    if (!_scene->takesLetters())
        _app.stepSwitches();
    if (std::unique_ptr<Scene> next = _scene->step())
        _scene = std::move(next);
    for (const std::string& path : _script.shots(_steps))
        _failed |= !_app.save(*_scene, path);
    _script.feed(_steps + 1, _user);
}

// Without anybody watching each frame is one logic step, as soon as the one before is done: the same happens
// on a slow machine as on a fast one. Only what a screenshot shows is drawn then. Between two machines time
// is what both have in common, and both keep to it.
void Game::run() {
    const bool headless = _app.options.headless;
    const bool lockstep = headless && !_app.options.hostPort && _app.options.join.empty();
    KXSetLogicExact(-1);
    KXSetMaximumLogicSteps(15); // after a stall the night goes on where it was
    KXResetLogicLoop();
    while (!isOver()) {
        KXPreLogicLoop();
        bool stepped = false;
        while (!(lockstep && stepped) && KXLogicLoop()) {
            step();
            KXLogicUpdate();
            stepped = true;
        }
        if (lockstep)
            KXResetLogicLoop(); // the next step is due at once
        if (!headless) {
            _app.draw(*_scene);
            _app.window.swapBuffers();
            KXFPSTick();
        }
        _frames = headless ? _steps : _frames + 1;
        KXPostLogicLoop();
        KXWaitForLogicStep();
    }
}

bool Game::finish() {
    const std::string& screenshot = _app.options.screenshot;
    return (screenshot.empty() || _app.save(*_scene, screenshot)) && !_failed;
}
} // namespace

static int play(const Options& options) {
    try {
        Game game(options);
        if (!game.prepare())
            return 2;
        game.run();
        return game.finish() ? 0 : 1;
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "play: a window, a picture or a sprite cannot be opened. %s\n", KXError());
        return 1;
    }
}

int main(int argc, char** argv) {
    Options options;
    if (!readOptions(argc, argv, options))
        return 2;
    if (options.help) {
        printUsage();
        return 0;
    }
    if (!KXInit(argv[0])) {
        std::fprintf(stderr, "play: %s\n", KXError());
        return 1;
    }
    KXInitializeLog("ember-night.log", 0);
    if (options.headless) {
        std::srand(1); // the same night every time
        if (options.script.empty())
            options.script = std::string(KXExecutablePath ? KXExecutablePath : ".") + "/assets/glimpse.txt";
        if (options.screenshot.empty())
            options.screenshot = "ember-night.png";
    }
    const int result = play(options);
    KXDeinitializeLog();
    KXDeInit();
    return result;
}
