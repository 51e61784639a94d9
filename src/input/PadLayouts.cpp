// The layouts of pads that games add, and the names of what all layouts have in common.

#include "core/ground/ErrorSlot.h"
#include "core/ground/LogicClock.h"
#include "input/Pads.h"
#include "util/WholeFile.h"

#include <SDL.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>

// The platform takes almost anything for a mapping, also of other systems.
static bool isMapping(std::string_view line) {
    constexpr std::size_t guidLength = 32;
    if (line.find(',') != guidLength ||
        !std::ranges::all_of(line.substr(0, guidLength), [](char c) { return SDL_isxdigit(c) != 0; }))
        return false;
    const std::size_t fields = line.find(',', guidLength + 1);
    if (fields == line.npos || line.find(':', fields) == line.npos)
        return false;
    constexpr std::string_view key = ",platform:";
    const std::size_t found = line.find(key, fields);
    if (found == line.npos)
        return true;
    const std::string_view platform = line.substr(found + key.size());
    return platform.substr(0, platform.find(',')) == SDL_GetPlatform();
}

int KXAddPadMappings(const char* text) {
    int added = 0;
    std::string_view rest = text && SDL_WasInit(SDL_INIT_JOYSTICK) ? text : "";
    while (!rest.empty()) {
        std::string_view line = rest.substr(0, rest.find_first_of("\r\n"));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        if (isMapping(line) && SDL_GameControllerAddMapping(std::string(line).c_str()) >= 0)
            ++added;
    }
    if (!added)
        _KXReportError("No layout of a pad for this system");
    _KXTakePads(_KXTicks()); // joysticks that were no pads until now
    return added;
}

int KXLoadPadMappings(const char* path) {
    constexpr std::size_t maximum = 16 << 20; // many times the community's database
    std::string text;
    return _KXReadWholeFile(path, maximum, text) ? KXAddPadMappings(text.c_str()) : 0;
}

namespace {
struct Named {
    int button;
    const char* name;
};
constexpr Named names[] = {{KXPadA, "A"},
                           {KXPadB, "B"},
                           {KXPadX, "X"},
                           {KXPadY, "Y"},
                           {KXPadBack, "Back"},
                           {KXPadGuide, "Guide"},
                           {KXPadStart, "Start"},
                           {KXPadLeftStick, "Left Stick"},
                           {KXPadRightStick, "Right Stick"},
                           {KXPadLeftShoulder, "Left Shoulder"},
                           {KXPadRightShoulder, "Right Shoulder"},
                           {KXPadDPadUp, "D-Pad Up"},
                           {KXPadDPadDown, "D-Pad Down"},
                           {KXPadDPadLeft, "D-Pad Left"},
                           {KXPadDPadRight, "D-Pad Right"},
                           {KXPadMisc, "Misc"},
                           {KXPadPaddle1, "Paddle 1"},
                           {KXPadPaddle2, "Paddle 2"},
                           {KXPadPaddle3, "Paddle 3"},
                           {KXPadPaddle4, "Paddle 4"},
                           {KXPadTouchpad, "Touchpad"},
                           {KXPadLeftStickLeft, "Left Stick Left"},
                           {KXPadLeftStickRight, "Left Stick Right"},
                           {KXPadLeftStickUp, "Left Stick Up"},
                           {KXPadLeftStickDown, "Left Stick Down"},
                           {KXPadRightStickLeft, "Right Stick Left"},
                           {KXPadRightStickRight, "Right Stick Right"},
                           {KXPadRightStickUp, "Right Stick Up"},
                           {KXPadRightStickDown, "Right Stick Down"},
                           {KXPadLeftTrigger, "Left Trigger"},
                           {KXPadRightTrigger, "Right Trigger"}};
} // namespace

const char* KXPadButtonName(int button) {
    const Named* const found = std::ranges::find(names, button, &Named::button);
    return found == std::end(names) ? "Unknown" : found->name;
}

int KXPadButtonFromName(const char* name) {
    const Named* const found = std::ranges::find_if(
        names, [=](const Named& named) { return name && !std::strcmp(named.name, name); });
    return found == std::end(names) ? -1 : found->button;
}
