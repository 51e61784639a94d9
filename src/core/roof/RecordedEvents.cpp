#include "core/roof/RecordedEvents.h"

#include "core/dispatch/EventDispatch.h"
#include "util/KXString.h"
#include "util/Quoted.h"

#include <SDL_stdinc.h>

#include <charconv>
#include <concepts>
#include <cstring>
#include <iterator>

namespace {
struct Name {
    Uint32 type;
    std::string_view name;
};

constexpr Name names[] = {{SDL_QUIT, "quit"},
                          {SDL_WINDOWEVENT, "window"},
                          {SDL_KEYDOWN, "key-down"},
                          {SDL_KEYUP, "key-up"},
                          {SDL_TEXTINPUT, "text"},
                          {SDL_TEXTEDITING, "composition"},
                          {SDL_TEXTEDITING_EXT, "long-composition"},
                          {SDL_MOUSEMOTION, "mouse-move"},
                          {SDL_MOUSEBUTTONDOWN, "mouse-down"},
                          {SDL_MOUSEBUTTONUP, "mouse-up"},
                          {SDL_MOUSEWHEEL, "wheel"},
                          {SDL_FINGERDOWN, "finger-down"},
                          {SDL_FINGERMOTION, "finger-move"},
                          {SDL_FINGERUP, "finger-up"},
                          {SDL_JOYAXISMOTION, "joystick-axis"},
                          {SDL_JOYHATMOTION, "joystick-hat"},
                          {SDL_JOYBUTTONDOWN, "joystick-down"},
                          {SDL_JOYBUTTONUP, "joystick-up"},
                          {SDL_CONTROLLERDEVICEADDED, "pad-added"},
                          {SDL_CONTROLLERDEVICEREMOVED, "pad-removed"},
                          {SDL_CONTROLLERDEVICEREMAPPED, "pad-remapped"},
                          {SDL_CONTROLLERBUTTONDOWN, "pad-down"},
                          {SDL_CONTROLLERBUTTONUP, "pad-up"},
                          {SDL_CONTROLLERAXISMOTION, "pad-axis"},
                          {SDL_DROPFILE, "drop-file"},
                          {SDL_DROPTEXT, "drop-text"}};

class Writer {
public:
    std::string line;

    template<class... Fields>
    void operator()(Fields&... fields) {
        (put(fields), ...);
    }

private:
    template<class Number>
    requires(std::integral<Number> || std::floating_point<Number>) void put(Number number) {
        char digits[64]; // the shortest that reads back as the same number
        line.append(" ").append(digits, std::to_chars(digits, std::end(digits), number).ptr);
    }
    void put(SDL_Scancode key) { put(static_cast<int>(key)); }
    template<std::size_t size>
    void put(const char (&text)[size]) {
        line += " " + _KXQuoted(_KXTextIn(text, size));
    }
    void put(const char* text) { line += " " + _KXQuoted(text ? text : ""); }
};

class Reader {
public:
    explicit Reader(std::string_view line) : _line(line) {}

    template<class... Fields>
    void operator()(Fields&... fields) {
        (take(fields), ...);
    }
    bool isDone() const { return _good && _line.empty(); }

private:
    bool takeBlank() {
        _good = _good && _line.starts_with(' ');
        if (_good)
            _line.remove_prefix(1);
        return _good;
    }
    template<class Number>
    requires(std::integral<Number> || std::floating_point<Number>) void take(Number& number) {
        if (!takeBlank())
            return;
        const auto [end, error] = std::from_chars(_line.data(), _line.data() + _line.size(), number);
        _good = error == std::errc();
        _line.remove_prefix(static_cast<std::size_t>(end - _line.data()));
    }
    void take(SDL_Scancode& key) {
        int number = 0;
        take(number);
        _good = _good && number >= 0 && number < SDL_NUM_SCANCODES;
        if (_good)
            key = static_cast<SDL_Scancode>(number);
    }
    template<std::size_t size>
    void take(char (&field)[size]) {
        const std::string text = takeText();
        _good = _good && text.size() < size;
        if (_good)
            std::memcpy(field, text.c_str(), text.size() + 1);
    }
    void take(char*& field) {
        const std::string text = takeText();
        if (_good)
            field = SDL_strdup(text.c_str());
    }
    std::string takeText() {
        std::string text;
        _good = takeBlank() && _KXTakeQuoted(_line, text);
        return text;
    }

    std::string_view _line;
    bool _good = true;
};

// What an event of its type has. Both ways go through here, so what is written is what is read.
template<class Fields>
void visit(SDL_Event& event, Fields& fields) {
    switch (event.type) {
    case SDL_QUIT:
        return fields(event.quit.timestamp);
    case SDL_WINDOWEVENT: {
        SDL_WindowEvent& window = event.window;
        return fields(window.windowID, window.timestamp, window.event, window.data1, window.data2);
    }
    case SDL_KEYDOWN:
    case SDL_KEYUP: {
        SDL_KeyboardEvent& key = event.key;
        key.state = event.type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
        return fields(key.windowID, key.timestamp, key.repeat, key.keysym.scancode, key.keysym.sym,
                      key.keysym.mod);
    }
    case SDL_TEXTINPUT:
        return fields(event.text.windowID, event.text.timestamp, event.text.text);
    case SDL_TEXTEDITING: {
        SDL_TextEditingEvent& edit = event.edit;
        return fields(edit.windowID, edit.timestamp, edit.start, edit.length, edit.text);
    }
    case SDL_TEXTEDITING_EXT: {
        SDL_TextEditingExtEvent& edit = event.editExt;
        return fields(edit.windowID, edit.timestamp, edit.start, edit.length, edit.text);
    }
    case SDL_MOUSEMOTION: {
        SDL_MouseMotionEvent& motion = event.motion;
        return fields(motion.windowID, motion.timestamp, motion.which, motion.state, motion.x, motion.y,
                      motion.xrel, motion.yrel);
    }
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: {
        SDL_MouseButtonEvent& button = event.button;
        button.state = event.type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
        return fields(button.windowID, button.timestamp, button.which, button.button, button.clicks, button.x,
                      button.y);
    }
    case SDL_MOUSEWHEEL: {
        SDL_MouseWheelEvent& wheel = event.wheel;
        return fields(wheel.windowID, wheel.timestamp, wheel.which, wheel.direction, wheel.x, wheel.y,
                      wheel.preciseX, wheel.preciseY);
    }
    case SDL_FINGERDOWN:
    case SDL_FINGERMOTION:
    case SDL_FINGERUP: {
        SDL_TouchFingerEvent& finger = event.tfinger;
        return fields(finger.windowID, finger.timestamp, finger.touchId, finger.fingerId, finger.x, finger.y,
                      finger.dx, finger.dy, finger.pressure);
    }
    case SDL_JOYAXISMOTION:
        return fields(event.jaxis.which, event.jaxis.timestamp, event.jaxis.axis, event.jaxis.value);
    case SDL_JOYHATMOTION:
        return fields(event.jhat.which, event.jhat.timestamp, event.jhat.hat, event.jhat.value);
    case SDL_JOYBUTTONDOWN:
    case SDL_JOYBUTTONUP:
        event.jbutton.state = event.type == SDL_JOYBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
        return fields(event.jbutton.which, event.jbutton.timestamp, event.jbutton.button);
    case SDL_CONTROLLERDEVICEADDED:
    case SDL_CONTROLLERDEVICEREMOVED:
    case SDL_CONTROLLERDEVICEREMAPPED:
        return fields(event.cdevice.which, event.cdevice.timestamp);
    case SDL_CONTROLLERBUTTONDOWN:
    case SDL_CONTROLLERBUTTONUP:
        event.cbutton.state = event.type == SDL_CONTROLLERBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
        return fields(event.cbutton.which, event.cbutton.timestamp, event.cbutton.button);
    case SDL_CONTROLLERAXISMOTION:
        return fields(event.caxis.which, event.caxis.timestamp, event.caxis.axis, event.caxis.value);
    case SDL_DROPFILE:
    case SDL_DROPTEXT:
        return fields(event.drop.windowID, event.drop.timestamp, event.drop.file);
    default:
        return;
    }
}
} // namespace

std::string _KXLineOfEvent(const SDL_Event& event, bool counts) {
    for (const auto& [type, name] : names)
        if (type == event.type) {
            Writer writer{std::string(name) + (counts ? "" : "*")};
            SDL_Event copy = event;
            visit(copy, writer);
            return writer.line;
        }
    return "";
}

bool _KXReadEvent(std::string_view line, SDL_Event& event, bool& counts) {
    std::string_view word = line.substr(0, line.find(' '));
    line.remove_prefix(word.size());
    counts = !word.ends_with('*');
    if (!counts)
        word.remove_suffix(1);
    for (const auto& [type, name] : names)
        if (name == word) {
            SDL_zero(event);
            event.type = type;
            Reader reader(line);
            visit(event, reader);
            if (reader.isDone())
                return true;
            _KXFreeEvent(event);
            return false;
        }
    return false;
}

Uint32* _KXWindowOf(SDL_Event& event) {
    switch (event.type) {
    case SDL_FINGERDOWN:
    case SDL_FINGERMOTION:
    case SDL_FINGERUP:
        return &event.tfinger.windowID;
    case SDL_DROPFILE:
    case SDL_DROPTEXT:
        return &event.drop.windowID;
    case SDL_WINDOWEVENT:
    case SDL_KEYDOWN:
    case SDL_KEYUP:
    case SDL_TEXTINPUT:
    case SDL_TEXTEDITING:
    case SDL_MOUSEMOTION:
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
    case SDL_MOUSEWHEEL:
        return &event.window.windowID; // all of them have it there
    case SDL_TEXTEDITING_EXT:
        return &event.editExt.windowID;
    default:
        return nullptr;
    }
}
