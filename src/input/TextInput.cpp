#include "input/TextInput.h"

#include "core/ground/Truncate.h"
#include "text/FontCache.h"

#include <SDL.h>

#include <cstring>
#include <memory>
#include <mutex>
#include <string_view>

namespace {
// SDL calls its watches on whichever thread pushes an event, so what they collect is locked. It is a plain
// buffer because a watch has no one to throw to, and because it must outlive every static object of the game.
// No more is typed between two logic steps; if no one reads, the rest is dropped.
struct Collected {
    std::mutex mutex;
    std::size_t size = 0;
    char text[4096] = {};
    char composition[SDL_TEXTEDITINGEVENT_TEXT_SIZE] = {};
};

struct Source {
    bool collecting = false;      // the watch is with SDL, unless that has been stopped since
    bool startedPlatform = false; // its text input was off before
    unsigned libraryRun = 0;
    SDL_Rect rect = {};
};
} // namespace

static constinit Collected collected;
static constinit Source source;

// SDL forgets its watches when the library is stopped. The font cache ends with the library too, and counts.
static unsigned libraryRun() { return _KXGlobalFontGeneration; }

static bool isShortcut() {
    const int modifiers = SDL_GetModState();
    const bool command = modifiers & (KMOD_CTRL | KMOD_GUI);
    const bool otherLevel = modifiers & (KMOD_ALT | KMOD_MODE); // on some layouts Control and Alt make AltGr
    return command && !otherLevel;
}

static void collect(const SDL_TextInputEvent& event) {
    const std::string_view text(event.text, strnlen(event.text, sizeof event.text));
    const std::lock_guard lock(collected.mutex);
    collected.composition[0] = 0;
    if (text.size() > sizeof collected.text - collected.size)
        return;
    std::memcpy(collected.text + collected.size, text.data(), text.size());
    collected.size += text.size();
}

static int SDLCALL overhear(void*, SDL_Event* event) {
    if (event->type == SDL_TEXTINPUT && !isShortcut()) {
        collect(event->text);
    } else if (event->type == SDL_TEXTEDITING) {
        const std::lock_guard lock(collected.mutex);
        SDL_strlcpy(collected.composition, event->edit.text, sizeof collected.composition);
    }
    return 0; // a watch decides nothing
}

static void forgetCollected() {
    const std::lock_guard lock(collected.mutex);
    collected.size = 0;
    collected.composition[0] = 0;
}

void _KXBeginTextInput() {
    _KXEndTextInput();
    if (!SDL_WasInit(SDL_INIT_VIDEO))
        return;
    source = {true, !SDL_IsTextInputActive(), libraryRun(), {}};
    SDL_AddEventWatch(overhear, nullptr);
    if (source.startedPlatform)
        SDL_StartTextInput();
}

void _KXKeepTextInput() {
    if (!source.collecting || source.libraryRun != libraryRun())
        _KXBeginTextInput();
}

void _KXEndTextInput() {
    // Once the watch is taken away none is running any more: SDL holds its lock while it calls them. One that
    // SDL has dropped when it was stopped is not found, which does no harm.
    if (SDL_WasInit(SDL_INIT_EVENTS))
        SDL_DelEventWatch(overhear, nullptr);
    forgetCollected();
    const bool ours = source.collecting && source.startedPlatform && source.libraryRun == libraryRun();
    source = {};
    if (ours && SDL_WasInit(SDL_INIT_VIDEO))
        SDL_StopTextInput();
}

std::string _KXTakeTypedText() {
    const std::lock_guard lock(collected.mutex);
    std::string text(collected.text, collected.size);
    collected.size = 0;
    return text;
}

std::string _KXComposedText() {
    const std::lock_guard lock(collected.mutex);
    return collected.composition;
}

void _KXSetTextInputRect(KXRect rect) {
    const SDL_Rect area = {_KXTruncate(rect.origin.x), _KXTruncate(rect.origin.y),
                           _KXTruncate(rect.size.width), _KXTruncate(rect.size.height)};
    if (!source.collecting || SDL_memcmp(&area, &source.rect, sizeof area) == 0)
        return;
    source.rect = area;
    SDL_SetTextInputRect(&area);
}

std::string _KXClipboardText() {
    const std::unique_ptr<char, decltype(&SDL_free)> text(SDL_GetClipboardText(), SDL_free);
    return text ? text.get() : "";
}

bool _KXSetClipboardText(const std::string& text) { return SDL_SetClipboardText(text.c_str()) == 0; }
