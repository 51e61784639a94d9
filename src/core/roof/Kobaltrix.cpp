// Start-up and shut-down. They see every room; no room sees them.

#include <Kobaltrix/KXInit.h>

#include "audio/AudioDevice.h"
#include "core/ground/Application.h"
#include "core/ground/Endianness.h"
#include "core/ground/ErrorSlot.h"
#include "core/ground/LibraryRun.h"
#include "core/ground/LogicClock.h"
#include "core/roof/Recording.h"
#include "input/GamePad.h"
#include "input/Keyboard.h"
#include "input/StepInput.h"
#include "platform/Terminal.h"
#include "render/DrawBatch.h"
#include "render/KXTextureCache.h"
#include "render/KXWindow.h"
#include "text/FontCache.h"
#include "text/KXUIGlobalFont.h"

#include <Kobaltrix/KXLogicLoop.h>
#include <Kobaltrix/KXPads.h>

#include <SDL.h>

#include <cstdlib>
#include <new>

int KXInit(char* executablePath) {
    _KXFindApplicationPaths(executablePath);
    return KXInit();
}

int KXInit() {
    _KXClearError();
    _KXUseTerminal();
    try {
        _KXCreateGlobalFontCache();
    } catch (const std::bad_alloc&) {
        _KXReportError("Unable to create global font cache.");
        return 0;
    }
    // Pads name their buttons for where they lie. The platform reads its layouts when it starts.
    SDL_SetHintWithPriority(SDL_HINT_GAMECONTROLLER_USE_BUTTON_LABELS, "0", SDL_HINT_DEFAULT);
    // On Windows, too, sizes are in points, and windows as sharp as the display. Elsewhere this means
    // nothing.
    SDL_SetHintWithPriority("SDL_WINDOWS_DPI_SCALING", "1", SDL_HINT_DEFAULT);
    if (SDL_Init(SDL_INIT_TIMER | SDL_INIT_VIDEO | SDL_INIT_JOYSTICK) < 0) {
        _KXReportError("Error initializing SDL: %s", SDL_GetError());
        return 0;
    }
    SDL_JoystickEventState(SDL_ENABLE);
    _KXInitKeys();
    _KXForgetInput();
    KXSetLogicInterval(60);
    _KXEndianness = -1;
    std::srand(static_cast<unsigned>(_KXTimeOfDay()));
    return _KXBeginRecordingByEnvironment() ? -1 : 0;
}

void KXDeInit() {
    _KXDeInitAudio();
    _KXForgetApplicationPaths();
    KXDeInitGamePad();
    KXDeInitPads();
    _KXDestroyGlobalFontCache();
    _KXUIForgetGlobalFont();
    KXTextureCachePurge();
    _KXCloseAllWindows(); // the platform would destroy them under their owners' feet
    _KXFreeBatch();
    _KXClearError();
    SDL_Quit();
    ++_KXLibraryRun;
}
