// Lines of a recording: each that is an event is written as the same line again. And whole files.

#include "Fuzz.h"
#include "core/roof/RecordedEvents.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXLogicLoop.h>
#include <Kobaltrix/KXRecording.h>
#include <Kobaltrix/KXWindow.h>

#include <SDL.h>

static void freeTextOf(const SDL_Event& event) {
    if (event.type == SDL_DROPFILE || event.type == SDL_DROPTEXT)
        SDL_free(event.drop.file);
    else if (event.type == SDL_TEXTEDITING_EXT)
        SDL_free(event.editExt.text);
}

static void readLine(const std::string& line) {
    SDL_Event event = {};
    bool counts = false;
    if (!_KXReadEvent(line, event, counts))
        return;
    const std::string written = _KXLineOfEvent(event, counts);
    freeTextOf(event);
    SDL_Event again = {};
    require(_KXReadEvent(written, again, counts), "an event that was written can be read");
    require(_KXLineOfEvent(again, counts) == written, "and is the same");
    freeTextOf(again);
}

void fuzz(FuzzBytes bytes) {
    fuzzWindow();
    const std::string content = bytes.rest();
    for (std::size_t at = 0, end; at < content.size(); at = end + 1) {
        end = std::min(content.find('\n', at), content.size());
        readLine(content.substr(at, end - at));
    }
    if (!KXBeginReplay(fuzzFile(content)))
        return require(*KXError(), "a recording that is refused says why");
    for (int frame = 0; frame < 100 && KXRecordingStateNow() == KXRecordingReplays; ++frame) {
        KXPreLogicLoop();
        while (KXLogicLoop())
            KXLogicUpdate();
        KXPostLogicLoop();
    }
    KXEndRecording();
}
