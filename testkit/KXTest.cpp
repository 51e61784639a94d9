#include "KobaltrixTest/KXTest.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXInit.h>
#include <Kobaltrix/KXLogicLoop.h>

#include <SDL_stdinc.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

KXTest::KXTest(char* executablePath) : clock(0, 1'000'000'000) {
    SDL_setenv("SDL_VIDEODRIVER", "offscreen", 0);
    SDL_setenv("SDL_AUDIODRIVER", "dummy", 0);
    if (!SDL_getenv("KOBALTRIX_USER_FOLDER")) {
        _userFolder = (std::filesystem::temp_directory_path() / "kobaltrix-test-XXXXXX").string();
        if (!mkdtemp(_userFolder.data()))
            throw std::runtime_error(_userFolder + " cannot be made");
        SDL_setenv("KOBALTRIX_USER_FOLDER", _userFolder.c_str(), 1);
    }
    if (!KXInit(executablePath)) // it takes the time of day for a seed
        throw std::runtime_error(KXError());
    KXResetLogicLoop();
}

KXTest::~KXTest() {
    KXDeInit();
    if (_userFolder.empty())
        return;
    SDL_setenv("KOBALTRIX_USER_FOLDER", "", 1);
    std::error_code ignored;
    std::filesystem::remove_all(_userFolder, ignored);
}

void KXTest::expect(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "Not so: %s\n", what);
    ++_failures;
}

void KXTest::expect(const KXTestResult& result) { expect(bool(result), result.message.c_str()); }
