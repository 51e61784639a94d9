#include "KobaltrixTest/KXTest.h"

#include "TestSystem.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXInit.h>
#include <Kobaltrix/KXLogicLoop.h>

#include <SDL_stdinc.h>

#include <cstdio>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>

static std::filesystem::path makeFolder() {
    for (std::random_device random;;) {
        const std::filesystem::path folder =
            std::filesystem::temp_directory_path() / ("kobaltrix-test-" + std::to_string(random()));
        if (std::filesystem::create_directory(folder)) {
            std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
            return folder;
        }
    }
}

KXTest::KXTest(char* executablePath) : clock(0, 1'000'000'000) {
    if (_KXDriverWithoutDisplay)
        SDL_setenv("SDL_VIDEODRIVER", _KXDriverWithoutDisplay, 0);
    SDL_setenv("SDL_AUDIODRIVER", "dummy", 0);
    if (!SDL_getenv("KOBALTRIX_USER_FOLDER")) {
        const std::filesystem::path folder = makeFolder();
        const std::u8string text = folder.u8string();
        _userFolder.assign(text.begin(), text.end());
        _KXSetUserFolderVariable(folder);
    }
    if (!KXInit(executablePath)) // it takes the time of day for a seed
        throw std::runtime_error(KXError());
    KXResetLogicLoop();
}

KXTest::~KXTest() {
    KXDeInit();
    if (_userFolder.empty())
        return;
    _KXSetUserFolderVariable({});
    std::error_code ignored;
    std::filesystem::remove_all(std::u8string(_userFolder.begin(), _userFolder.end()), ignored);
}

void KXTest::expect(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "Not so: %s\n", what);
    ++_failures;
}

void KXTest::expect(const KXTestResult& result) { expect(bool(result), result.message.c_str()); }
