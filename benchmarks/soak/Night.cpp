// Ember Night in one window, by what somebody did whom a recording tells of, over and over: other bats come
// in each night. Most of its pictures are not drawn: a million would take hours.

#include "Game.h"
#include "Soak.h"
#include "core/roof/RecordedEvents.h"

#include <KobaltrixTest/KXTestClock.h>
#include <KobaltrixTest/KXTestUser.h>

#include <SDL.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

#include <unistd.h>

namespace {
// What happened before each step, but to the window, and that the player left.
std::vector<std::vector<SDL_Event>> readEvents(const std::string& recording) {
    std::vector<std::vector<SDL_Event>> steps(1);
    std::ifstream file(recording);
    for (std::string line; std::getline(file, line);) {
        SDL_Event event = {};
        bool counts = false;
        if (line.starts_with("step "))
            steps.emplace_back();
        else if (_KXReadEvent(line, event, counts) && event.type != SDL_QUIT && event.type != SDL_WINDOWEVENT)
            steps.back().push_back(event);
    }
    SDL_Event back = {}; // to the title, where it begins anew
    back.key.keysym.sym = SDLK_ESCAPE;
    back.key.keysym.scancode = SDL_SCANCODE_ESCAPE;
    for (const SDL_EventType type : {SDL_KEYDOWN, SDL_KEYUP}) {
        back.type = type;
        steps.push_back({back});
    }
    return steps;
}

// Small pictures are soon drawn. In a window that is smaller by this the game is as much smaller, and so are
// the ways of the mouse.
constexpr int shrinkage = 4;

void shrink(SDL_Event& event) {
    if (event.type == SDL_MOUSEMOTION) {
        event.motion.x /= shrinkage;
        event.motion.y /= shrinkage;
    } else if (event.type == SDL_MOUSEBUTTONDOWN || event.type == SDL_MOUSEBUTTONUP) {
        event.button.x /= shrinkage;
        event.button.y /= shrinkage;
    }
}

class SoakedGame : public Game {
public:
    SoakedGame(const Options& options, Watch& watch) : Game(options), _watch(watch) {
        const KXSize size = app.window.size();
        KXTestUser(app.window.id()).resize({size.width / shrinkage, size.height / shrinkage});
    }

    void step() override {
        _watch.stepBegins();
        Game::step();
        _watch.stepEnds();
    }
    void draw() override {
        if (++_frames % framesOfOneDrawn == 0)
            Game::draw();
    }
    int framesOfOneDrawn = 1;

    // Has the driver hold what it holds for a few pictures that are alike.
    void settle() {
        for (int i = 0; i < 4; ++i) {
            Game::draw();
            app.window.swapBuffers();
        }
    }
    // A step for each frame, after what the player does.
    void play(const std::vector<SDL_Event>& events) {
        for (SDL_Event event : events) {
            if (Uint32* const window = _KXWindowOf(event); window && *window)
                *window = app.window.id();
            shrink(event);
            SDL_PushEvent(&event);
        }
        frame();
    }

private:
    Watch& _watch;
    int _frames = 0;
};
} // namespace

bool soakNight(const std::string& folder, const std::string& recording, Watch& watch) {
    const std::vector<std::vector<SDL_Event>> steps = readEvents(recording);
    const KXTestClock clock;
    setenv("KOBALTRIX_DATA_FOLDER", (folder + "/assets").c_str(),
           1); // it lies there, and this program does not
    if (!KXInit((folder + "/ember-night").data()))
        return false;
    Options options;
    options.night = Options::secondsRecorded;
    options.save = std::filesystem::temp_directory_path() / ("kobaltrix_soak_" + std::to_string(getpid()));
    std::uint64_t runs = 0;
    int nights = 0;
    {
        SoakedGame game(options, watch);
        for (; !watch.isOver(); ++runs, watch.look()) {
            for (const std::vector<SDL_Event>& events : steps)
                game.play(events);
            game.framesOfOneDrawn = 50; // the driver has seen what it has to keep
            game.settle();
        }
        nights = game.app.nightsEnded;
    }
    KXDeInit();
    for (const char* extension : {"", ".controls"})
        std::filesystem::remove(options.save + extension);
    std::printf("Nights: %d of %llu\n", nights, static_cast<unsigned long long>(runs));
    return static_cast<std::uint64_t>(nights) == runs;
}
