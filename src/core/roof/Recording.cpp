#include "core/roof/Recording.h"

#include "core/ground/ErrorSlot.h"
#include "core/ground/HeapGlobal.h"
#include "core/ground/LogicClock.h"
#include "core/ground/Tape.h"
#include "core/roof/Player.h"
#include "core/roof/Recorder.h"
#include "input/InputState.h"
#include "input/Pads.h"
#include "input/StepInput.h"
#include "platform/Environment.h"
#include "platform/FilePath.h"
#include "platform/RenameFile.h"
#include "platform/VideoDriver.h"
#include "render/KXTexture.h"
#include "render/KXWindow.h"
#include "util/RandomTrace.h"
#include "util/WholeFile.h"

#include <Kobaltrix/KXApplication.h>
#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXFile.h>
#include <Kobaltrix/KXLogicLoop.h>
#include <Kobaltrix/KXRecording.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {
// ---- what is under way

struct Run {
    std::unique_ptr<_KXRecorder> recorder;
    std::unique_ptr<_KXPlayer> player;
    _KXRandomTrace random;
    std::uint64_t steps = 0;
    std::string before;          ///< Where the recording lies that this one replaces; empty for none.
    std::uint64_t stopAt = 0;    ///< The step to end a replay at, 0 for none.
    std::string picture;         ///< To keep then.
    bool hasPicture = false;     ///< Whether it was kept.
    bool isWholeProcess = false; ///< By the environment: its end is the process's end.
};

constinit _KXHeapGlobal<Run> runKept;
constinit KXRecordingState state = KXRecordingNone;
constinit bool ignoresEnvironment = false;
constinit bool replayHasEnded = false; // and no step has been the user's since

Run& run() { return runKept.get(); }

void letGo() {
    _KXRunningTape = nullptr;
    _KXRunningEventTape = nullptr;
    _KXTraceOfRandom = nullptr;
    _KXBeforeSwap = nullptr;
}

// The clocks are others now. The rest waits for a step: whoever asks the tape may be going through pads or
// keys.
void goOnWithTheWorld() {
    replayHasEnded = true;
    KXResetLogicLoop();
}

// The process is to end, with everything that the game has written.
[[noreturn]] void leave(int status) {
    std::fflush(nullptr);
    std::_Exit(status);
}

void finish(KXRecordingState how, const char* what, unsigned line) {
    const std::string other = run().player->otherProgram();
    letGo();
    state = how;
    const bool apart = how == KXRecordingApart;
    if (apart)
        _KXReportError("The replay goes apart at step %llu (line %u of the recording%s): %s",
                       static_cast<unsigned long long>(run().steps), line,
                       other.empty() ? "" : (", which is of " + other).c_str(), what);
    if (!run().isWholeProcess)
        return goOnWithTheWorld();
    if (apart)
        std::fprintf(stderr, "%s\n", KXError());
    else
        std::fprintf(stderr, "Replay: %s at step %llu\n", what, static_cast<unsigned long long>(run().steps));
    const bool hasPicture = run().picture.empty() || run().hasPicture;
    if (!apart && !hasPicture)
        std::fprintf(stderr, "Replay: there is no picture at %s\n", run().picture.c_str());
    leave(apart || !hasPicture ? 1 : 0);
}

bool keepPicture(KXWindow& window, const std::string& path) {
    bool kept = false;
    if (path.ends_with(".png")) {
        const std::unique_ptr<KXTexture> copy(window.copyTexture());
        kept = copy && copy->writeToPNG(path.c_str());
    } else {
        kept = window.saveBuffer(path.c_str(), 0) != 0;
    }
    std::fprintf(stderr, "Replay: %s\n", kept ? ("the picture is " + path).c_str() : KXError());
    return kept;
}

void beforeSwap(KXWindow& window) {
    if (run().recorder)
        return run().recorder->keepPixels(window, run().steps);
    if (run().player)
        run().player->comparePixels(window);
    if (run().stopAt && run().steps >= run().stopAt && state == KXRecordingReplays) {
        if (!run().picture.empty())
            run().hasPicture = keepPicture(window, run().picture);
        finish(KXRecordingReplayed, "stopped", 0);
    }
}

// Both ways begin alike: with nothing held, nothing owed and random numbers from a seed.
void begin(unsigned seed) {
    _KXLeaveReplay();
    run().steps = 0;
    run().random = {};
    run().random.begins = [](KXRandomState& generator) {
        if (run().recorder)
            run().recorder->keepGenerator(generator);
        else if (run().player)
            run().player->giveGenerator(generator);
    };
    _KXTraceOfRandom = &run().random;
    _KXBeforeSwap = beforeSwap;
    _KXForgetInput();
    _KXPutInputState({});
    std::srand(seed);
    if (std::rand() != _KXRecordedNumbers(seed).next())
        run().random.instead.emplace(seed);
    std::srand(seed);
}

// Another one each time, but for tests, who own the clock.
unsigned newSeed() {
    const auto now = _KXNanoseconds();
    return static_cast<unsigned>(now ^ (now >> 32) ^ static_cast<std::uint64_t>(_KXTimeOfDay()));
}
} // namespace

void _KXLeaveReplay() {
    if (!std::exchange(replayHasEnded, false))
        return;
    _KXReleaseEverything();
    _KXInputState rested;
    rested.mousePosition = _KXTakeInputState().mousePosition;
    _KXPutInputState(rested);
    _KXLookForPads(_KXTicks());
}

void KXIgnoreRecordingVariables(int ignore) { ignoresEnvironment = ignore != 0; }

// Reads a variable that is a number; false, with a text in the error slot, for anything else.
static bool readNumber(const char* name, std::uint64_t& number) {
    const std::optional<std::string> text = _KXEnvironment(name);
    if (!text)
        return true;
    const char* const textEnd = text->data() + text->size();
    const auto [numberEnd, error] = std::from_chars(text->data(), textEnd, number);
    if (error == std::errc() && numberEnd == textEnd && number <= 0x7FFFFFFF)
        return true;
    _KXReportError("%s is no number: %s", name, text->c_str());
    return false;
}

// A recording grows as the game goes on, and what is there of it counts when the game falls. So the one
// before it stays until it is whole. The name of that; empty if there is none.
static std::string setAside(const std::string& path) {
    std::error_code error;
    const std::string before = path + ".before";
    const bool isThere = fs::is_regular_file(_KXFilePath(path), error);
    return isThere && !_KXRenameFile(path, before) ? before : "";
}

// @param pixelsEvery unless the environment says of which pictures a hash is kept.
static int beginRecording(const char* path, std::uint64_t pixelsEvery) {
    KXEndRecording();
    if (!readNumber("KOBALTRIX_RECORD_PIXELS", pixelsEvery))
        return 0;
    const std::string before = setAside(path ? path : "");
    std::ofstream file(_KXFilePath(path ? path : ""), std::ios::binary | std::ios::trunc);
    if (!file) {
        _KXReportError("Unable to write a recording at %s%s", path ? path : "(null)",
                       _KXPathFaultText(path).c_str());
        if (!before.empty())
            _KXRenameFile(before, path);
        return 0;
    }
    run().before = before;
    run().player.reset();
    run().recorder = std::make_unique<_KXRecorder>(std::move(file), pixelsEvery);
    const unsigned seed = newSeed();
    begin(seed);
    run().recorder->keepBeginning(seed);
    _KXRunningTape = run().recorder.get();
    _KXRunningEventTape = run().recorder.get();
    state = KXRecordingRecords;
    KXResetLogicLoop();
    return -1;
}

// A game that shows what is under way draws another picture in the replay.
int KXBeginRecording(const char* path) { return beginRecording(path, 0); }

int KXBeginReplay(const char* path) {
    auto player = std::make_unique<_KXPlayer>(finish);
    if (!player->open(path))
        return 0;
    KXEndRecording();
    run().player = std::move(player);
    state = KXRecordingReplays;
    begin(run().player->giveSeed());
    _KXRunningTape = run().player.get();
    _KXRunningEventTape = run().player.get();
    KXResetLogicLoop();
    return -1;
}

// Lets everything go on as it would without a recording or a replay.
static void end() {
    const bool replayed = _KXIsReplaying();
    letGo();
    state = KXRecordingNone;
    if (run().recorder) {
        run().recorder->end();
        if (run().recorder->isGood() && !run().before.empty())
            KXRemoveFile(run().before.c_str());
    }
    run().recorder.reset();
    run().isWholeProcess = false;
    run().stopAt = 0;
    if (replayed)
        goOnWithTheWorld();
}

// The replay of a whole process ends with the game: behind the recording's last line, if it is as it was.
static void endReplay() {
    if (!run().player->isOver())
        return finish(KXRecordingApart, KXApplicationQuitRequested() ? "the game is left" : "the game ends",
                      run().player->line());
    std::fprintf(stderr, "Replay: %llu steps as recorded\n", static_cast<unsigned long long>(run().steps));
    if (!run().picture.empty() && !run().hasPicture)
        finish(KXRecordingReplayed, "it ends", 0);
}

void KXEndRecording() {
    if (run().isWholeProcess && state == KXRecordingReplays) {
        endReplay(); // here the game has ended its recording
        leave(0);
    }
    end();
}

KXRecordingState KXRecordingStateNow() { return state; }

std::uint64_t KXRecordingSteps() { return run().steps; }

void _KXRecordStep() {
    if (!_KXRunningTape)
        return;
    const std::uint64_t step = ++run().steps;
    if (!run().recorder)
        return run().player->step(step, run().random.hash);
    run().recorder->keepStep(step, run().random.hash);
    if (run().recorder->isGood())
        return;
    end(); // the game itself goes on
    _KXReportError("The recording cannot be written any more at step %llu",
                   static_cast<unsigned long long>(step));
    std::fprintf(stderr, "%s\n", KXError());
}

static void endProcess() {
    if (state == KXRecordingReplays)
        endReplay();
    end();
}

static bool beginReplay(const char* path) {
    const std::string pace =
        _KXEnvironment("KOBALTRIX_REPLAY_PACE").value_or(_KXShowsNothing() ? "fast" : "recorded");
    std::uint64_t stopAt = 0;
    if (pace != "fast" && pace != "recorded") {
        _KXReportError("KOBALTRIX_REPLAY_PACE is neither recorded nor fast: %s", pace.c_str());
        return false;
    }
    if (!readNumber("KOBALTRIX_REPLAY_STOP", stopAt) || !KXBeginReplay(path))
        return false;
    run().player->keepPace(pace == "recorded");
    run().stopAt = stopAt;
    run().picture = _KXEnvironment("KOBALTRIX_REPLAY_PICTURE").value_or("");
    return true;
}

bool _KXBeginRecordingByEnvironment() {
    static constinit bool looked = false;
    if (ignoresEnvironment || std::exchange(looked, true))
        return true;
    const std::optional<std::string> record = _KXEnvironment("KOBALTRIX_RECORD");
    const std::optional<std::string> replay = _KXEnvironment("KOBALTRIX_REPLAY");
    if (!record && !replay)
        return true;
    if (record && replay) {
        _KXReportError(
            "A run is either recorded or replayed: KOBALTRIX_RECORD and KOBALTRIX_REPLAY are both set");
        return false;
    }
    constexpr std::uint64_t usualPixels = 60;
    if (!(replay ? beginReplay(replay->c_str()) : beginRecording(record->c_str(), usualPixels)))
        return false;
    run().isWholeProcess = true;
    if (run().player)
        run().player->endWithGame();
    std::atexit(endProcess);
    return true;
}
