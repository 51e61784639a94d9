#include "Script.h"

#include "testkit/KXTestInput.h"

#include <SDL_events.h>

#include <algorithm>
#include <fstream>
#include <sstream>

// The rest of a line, without the blank before it.
static std::string restOf(std::istringstream& line) {
    std::string rest;
    std::getline(line >> std::ws, rest);
    return rest;
}

// What a line of a script does; nothing if it makes no sense.
static Script::Act actOf(const std::string& text) {
    std::istringstream line(text);
    std::string act;
    line >> act;
    if (act == "down" || act == "up") {
        const SDL_Keycode key = SDL_GetKeyFromName(restOf(line).c_str());
        if (key == SDLK_UNKNOWN)
            return {};
        if (act == "down")
            return [key](KXTestInput& user) { user.keyDown(key); };
        return [key](KXTestInput& user) { user.keyUp(key); };
    }
    if (int x = 0, y = 0; act == "move" && line >> x >> y)
        return [x, y](KXTestInput& user) { user.moveMouse(x, y); };
    if (int notches = 0; act == "wheel" && line >> notches)
        return [notches](KXTestInput& user) { user.turnWheel(notches); };
    if (act == "press")
        return [](KXTestInput& user) { user.mouseDown(); };
    if (act == "release")
        return [](KXTestInput& user) { user.mouseUp(); };
    if (act == "text")
        return [typed = restOf(line)](KXTestInput& user) { user.type(typed.c_str()); };
    if (act == "quit")
        return [](KXTestInput& user) { user.quit(); };
    return {};
}

bool Script::load(const std::string& path) {
    std::ifstream file(path);
    if (!file) {
        std::fprintf(stderr, "play: %s: cannot be read\n", path.c_str());
        return false;
    }
    int number = 0;
    for (std::string text; std::getline(file, text);) {
        ++number;
        std::istringstream line(text.substr(0, text.find('#')));
        int step = 0;
        if (line.str().find_first_not_of(" \t\r") == std::string::npos)
            continue;
        const bool hasStep = static_cast<bool>(line >> step) && step > 0;
        const std::string act = restOf(line);
        const bool isShot = act.rfind("shot ", 0) == 0 && act.size() > 5;
        const Act does = isShot ? nullptr : actOf(act);
        if (!hasStep || !(isShot || does)) {
            std::fprintf(stderr, "play: %s: line %d is not understood\n", path.c_str(), number);
            return false;
        }
        if (isShot)
            _shots.emplace(step, act.substr(5));
        else
            _acts.emplace(step, does);
        _length = std::max(_length, step);
    }
    return true;
}

void Script::feed(int step, KXTestInput& user) const {
    const auto [first, last] = _acts.equal_range(step);
    for (auto entry = first; entry != last; ++entry)
        entry->second(user);
}

std::vector<std::string> Script::shots(int step) const {
    std::vector<std::string> paths;
    const auto [first, last] = _shots.equal_range(step);
    for (auto entry = first; entry != last; ++entry)
        paths.push_back(entry->second);
    return paths;
}

static int record(void* recorder, SDL_Event* happened) {
    static_cast<Recorder*>(recorder)->write(*happened);
    return 0;
}

Recorder::Recorder(const std::string& path) : _file(std::fopen(path.c_str(), "w")) {
    if (_file)
        SDL_AddEventWatch(record, this);
}

Recorder::~Recorder() {
    if (!_file)
        return;
    SDL_DelEventWatch(record, this);
    std::fclose(_file);
}

void Recorder::write(const SDL_Event& event) {
    const int due = _step + 1; // when the game reads it
    switch (event.type) {
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        if (!event.key.repeat)
            std::fprintf(_file, "%d %s %s\n", due, event.type == SDL_KEYDOWN ? "down" : "up",
                         SDL_GetKeyName(event.key.keysym.sym));
        break;
    case SDL_MOUSEMOTION:
        std::fprintf(_file, "%d move %d %d\n", due, event.motion.x, event.motion.y);
        break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        if (event.button.button == SDL_BUTTON_LEFT)
            std::fprintf(_file, "%d %s\n", due, event.type == SDL_MOUSEBUTTONDOWN ? "press" : "release");
        break;
    case SDL_MOUSEWHEEL:
        std::fprintf(_file, "%d wheel %d\n", due, event.wheel.y);
        break;
    case SDL_TEXTINPUT:
        std::fprintf(_file, "%d text %s\n", due, event.text.text);
        break;
    default:
        break;
    }
}
