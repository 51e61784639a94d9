#include "Fuzz.h"

#include "core/ground/ErrorSlot.h"
#include "support/TemporaryFolder.h"
#include "util/KXString.h"

#include <Kobaltrix/Kobaltrix.h>

#include <cstdio>
#include <cstdlib>

// The name is the fuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz(FuzzBytes({reinterpret_cast<const char*>(data), size}));
    endFuzzStep();
    return 0;
}

void endFuzzStep() {
    _KXCleanTempStrings();
    _KXClearError();
}

void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "This does not hold: %s\n", what);
    std::abort();
}

const char* fuzzFile(const std::string& content, const char* extension) {
    static const TemporaryFolder folder;
    static std::string path;
    path = folder.write(std::string("fuzzed") + extension, content);
    return path.c_str();
}

KXWindow& fuzzWindow() {
    static const bool started = [] {
        setenv("SDL_VIDEODRIVER", "offscreen", 1);
        setenv("SDL_AUDIODRIVER", "dummy", 1);
        char path[] = "fuzz";
        return KXInit(path) && KXInitAudio();
    }();
    require(started, "the library starts");
    static KXWindow window("Fuzz", {320, 200});
    window.setRenderContext();
    return window;
}
