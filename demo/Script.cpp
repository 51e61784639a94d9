#include "Script.h"

#include <SDL_events.h>

#include <cstring>
#include <fstream>
#include <optional>
#include <sstream>

// The rest of a line, without the blank before it.
static std::string restOf(std::istringstream& line) {
    std::string rest;
    std::getline(line >> std::ws, rest);
    return rest;
}

static SDL_Event emptyEvent(Uint32 type) {
    SDL_Event event;
    std::memset(&event, 0, sizeof event);
    event.type = type;
    return event;
}

static SDL_Event buttonEvent(Uint32 type, unsigned windowID) {
    SDL_Event event = emptyEvent(type);
    event.button.windowID = windowID;
    event.button.button = SDL_BUTTON_LEFT;
    event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
    return event;
}

// The event that a line of a script stands for; none if it makes no sense.
static std::optional<SDL_Event> eventOf(const std::string& text, unsigned windowID) {
    std::istringstream line(text);
    std::string act;
    line >> act;
    SDL_Event event;
    if (act == "down" || act == "up") {
        event = emptyEvent(act == "down" ? SDL_KEYDOWN : SDL_KEYUP);
        event.key.windowID = windowID;
        event.key.keysym.sym = SDL_GetKeyFromName(restOf(line).c_str());
        if (event.key.keysym.sym == SDLK_UNKNOWN)
            return {};
    } else if (act == "move") {
        event = emptyEvent(SDL_MOUSEMOTION);
        event.motion.windowID = windowID;
        if (!(line >> event.motion.x >> event.motion.y))
            return {};
    } else if (act == "press" || act == "release") {
        event = buttonEvent(act == "press" ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP, windowID);
    } else if (act == "wheel") {
        event = emptyEvent(SDL_MOUSEWHEEL);
        event.wheel.windowID = windowID;
        if (!(line >> event.wheel.y))
            return {};
    } else if (act == "text") {
        event = emptyEvent(SDL_TEXTINPUT);
        event.text.windowID = windowID;
        SDL_strlcpy(event.text.text, restOf(line).c_str(), sizeof event.text.text);
    } else if (act == "quit") {
        event = emptyEvent(SDL_QUIT);
    } else {
        return {};
    }
    return event;
}

static bool isShot(const std::string& act) { return act.rfind("shot ", 0) == 0 && act.size() > 5; }

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
        if (!hasStep || !(isShot(act) || eventOf(act, 0))) {
            std::fprintf(stderr, "play: %s: line %d is not understood\n", path.c_str(), number);
            return false;
        }
        _acts.emplace(step, act);
    }
    return true;
}

void Script::feed(int step, unsigned windowID) const {
    const auto [first, last] = _acts.equal_range(step);
    for (auto entry = first; entry != last; ++entry)
        if (std::optional<SDL_Event> event =
                isShot(entry->second) ? std::nullopt : eventOf(entry->second, windowID))
            SDL_PushEvent(&*event);
}

std::vector<std::string> Script::shots(int step) const {
    std::vector<std::string> paths;
    const auto [first, last] = _acts.equal_range(step);
    for (auto entry = first; entry != last; ++entry)
        if (isShot(entry->second))
            paths.push_back(entry->second.substr(5));
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
