// The roof of the library: start-up, shut-down and the logic loop. It sees every room; no room sees it.

#include <Kobaltrix/KXCore.h>

#include "audio/AudioDevice.h"
#include "core/ApplicationPaths.h"
#include "core/Endianness.h"
#include "core/ErrorSlot.h"
#include "core/EventDispatch.h"
#include "core/LogicClock.h"
#include "core/UIColors.h"
#include "input/KXGamePad.h"
#include "input/KXMouse.h"
#include "input/Keyboard.h"
#include "render/DrawBatch.h"
#include "render/KXTextureCache.h"
#include "render/KXWindow.h"
#include "text/FontCache.h"
#include "text/KXUIGlobalFont.h"
#include "util/KXString.h"

#include <SDL.h>

#include <cstdlib>
#include <new>

#include <unistd.h>

// The frame counter.
static constinit int _KXFPS = 0;
static constinit int _KXFPSCount = 0;
static constinit int _KXFPSElapsedTime = 0;
static constinit int _KXFPSLastTime = 0;

int KXInit(char* executablePath) {
    _KXFindApplicationPaths(executablePath);
    return KXInit();
}

int KXInit() {
    _KXClearError();
    try {
        _KXCreateGlobalFontCache();
    } catch (const std::bad_alloc&) {
        _KXReportError("Unable to create global font cache.");
        return 0;
    }
    if (SDL_Init(SDL_INIT_TIMER | SDL_INIT_VIDEO | SDL_INIT_JOYSTICK) < 0) {
        _KXReportError("Error initializing SDL: %s", SDL_GetError());
        return 0;
    }
    SDL_JoystickEventState(SDL_ENABLE);
    _KXInitKeys();
    KXSetLogicInterval(60);
    _KXEndianness = -1;
    std::srand(static_cast<unsigned>(_KXTimeOfDay()));
    return -1;
}

void KXDeInit() {
    _KXDeInitAudio();
    _KXForgetApplicationPaths();
    KXDeInitGamePad();
    _KXDestroyGlobalFontCache();
    _KXUIForgetGlobalFont();
    KXTextureCachePurge();
    _KXCloseAllWindows(); // the platform would destroy them under their owners' feet
    _KXFreeBatch();
    _KXClearError();
    SDL_Quit();
}

void KXApplicationRequestQuit() { _KXAppQuitRequested = -1; }

void KXApplicationCancelQuitRequest() { _KXAppQuitRequested = 0; }

int KXApplicationQuitRequested() { return _KXAppQuitRequested; }

unsigned KXLogicInterval() { return _KXLogicSpeed; }

void KXSetLogicInterval(unsigned speed) {
    _KXLogicSpeed = speed > 999 ? 1000 : speed == 0 ? 1 : speed;
    _KXLogicTimeRequiredPerLogicCycle = 1000 / _KXLogicSpeed;
}

void KXResetLogicLoop() {
    _KXLogicTimeElapsed = _KXLogicTimeRequiredPerLogicCycle;
    _KXLogicCurrentTime = _KXLogicLastTime = _KXTicks();
    _KXLogicCurrentCycles = 0;
    _KXStartTime = _KXTimeOfDay();
}

void KXPreLogicLoop() {
    const std::uint32_t stepTime = _KXLogicTimeRequiredPerLogicCycle;
    _KXLogicCurrentTime = _KXTicks();
    _KXLogicTimeElapsed += _KXLogicCurrentTime - _KXLogicLastTime;
    _KXLogicCurrentCycles = stepTime ? _KXLogicTimeElapsed / stepTime : 0; // no speed is set before KXInit
    if (_KXLogicTimeElapsed < stepTime)
        usleep(0);
}

int KXLogicLoop() {
    if (_KXLogicCurrentCycles == 0)
        return 0;
    _KXDispatchEvents();
    return -1;
}

void KXLogicUpdate() {
    if (_KXLogicCurrentCycles == 0 || --_KXLogicCurrentCycles == 0)
        _KXLogicTimeElapsed = 0;
    if (_KXTemporaryStringCleanupDisabledCount == 0)
        _KXCleanTempStrings();
    const std::time_t now = _KXTimeOfDay();
    if (now != _KXStartTime) {
        _KXStartTime = now;
        ++_KXElapsedTime;
    }
}

void KXPostLogicLoop() {
    _KXFlushBatch(KXDrawFlushFrame);
    _KXUnsetMouseWheel();
    _KXLogicLastTime = _KXLogicCurrentTime;
}

std::int64_t KXElapsedTime() { return _KXElapsedTime; }

void KXResetElapsedTime() { _KXElapsedTime = 0; }

int KXFPS() { return _KXFPS; }

void KXFPSTick() {
    constexpr std::uint32_t period = 1000;
    const std::uint32_t now = _KXTicks();
    const std::uint32_t sinceLast = now - static_cast<std::uint32_t>(_KXFPSLastTime);
    _KXFPSLastTime = static_cast<int>(now);
    if (sinceLast <= period && _KXFPSElapsedTime + sinceLast <= period) {
        _KXFPSElapsedTime += static_cast<int>(sinceLast);
        ++_KXFPSCount;
        return;
    }
    _KXFPS = _KXFPSCount;
    _KXFPSElapsedTime = 0;
    _KXFPSCount = 1; // the frame that closed the period
}

void KXDisableTemporaryStringCleanup() { ++_KXTemporaryStringCleanupDisabledCount; }

void KXEnableTemporaryStringCleanup() {
    if (_KXTemporaryStringCleanupDisabledCount > 0)
        --_KXTemporaryStringCleanupDisabledCount;
}

void KXSetUIColor(KXColor border, KXColor background, KXColor backgroundInteraction, KXColor selection,
                  KXColor focus, KXColor text) {
    _KXUIBorderColor = border;
    _KXUIBackroundColor = background;
    _KXUIBackgroundColor_Interaction = backgroundInteraction;
    _KXUISelectionColor = selection;
    _KXUIFocusColor = focus;
    _KXUITextColor = text;
}
