#include "KobaltrixTest/KXTest.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXInit.h>
#include <Kobaltrix/KXLogicLoop.h>

#include <SDL_stdinc.h>

#include <cstdio>
#include <stdexcept>

KXTest::KXTest(char* executablePath) : clock(0, 1'000'000'000) {
    SDL_setenv("SDL_VIDEODRIVER", "offscreen", 0);
    SDL_setenv("SDL_AUDIODRIVER", "dummy", 0);
    if (!KXInit(executablePath)) // it takes the time of day for a seed
        throw std::runtime_error(KXError());
    KXResetLogicLoop();
}

KXTest::~KXTest() { KXDeInit(); }

void KXTest::expect(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "Not so: %s\n", what);
    ++_failures;
}

void KXTest::expect(const KXTestResult& result) { expect(bool(result), result.message.c_str()); }
