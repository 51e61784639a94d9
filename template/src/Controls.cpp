#include "Controls.h"

#include <cstdio>

Controls::Controls(const char* file) {
    const struct {
        const char* action;
        int key, position, stick, cross;
    } ways[] = {{"left", KXKeyLeft, KXPositionA, KXPadLeftStickLeft, KXPadDPadLeft},
                {"right", KXKeyRight, KXPositionD, KXPadLeftStickRight, KXPadDPadRight},
                {"up", KXKeyUp, KXPositionW, KXPadLeftStickUp, KXPadDPadUp},
                {"down", KXKeyDown, KXPositionS, KXPadLeftStickDown, KXPadDPadDown}};
    for (const auto& way : ways) {
        _actions.bind(way.action, KXInputOfKey(way.key));
        _actions.bind(way.action, KXInputOfPosition(way.position));
        for (const int button : {way.stick, way.cross})
            _actions.bind(way.action, KXInputOfPad(button, KXAnyPad));
    }
    _actions.bind("leave", KXInputOfKey(KXKeyEscape));
    _actions.bind("full screen", KXInputOfKey(KXKeyF11));
    if (KXFileExists(file) && !_actions.load(file))
        std::fprintf(stderr, "my_game: %s\n", KXError());
}

KXPoint Controls::push() const {
    return {_actions.value("right") - _actions.value("left"), _actions.value("down") - _actions.value("up")};
}

bool Controls::leaves() const { return _actions.wentDown("leave"); }

bool Controls::switchesFullscreen() const { return _actions.wentDown("full screen"); }
