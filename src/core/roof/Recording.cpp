#include "core/roof/Recording.h"

#include "core/dispatch/EventDispatch.h"
#include "core/ground/Application.h"
#include "core/ground/ErrorSlot.h"
#include "core/ground/HeapGlobal.h"
#include "core/ground/Tape.h"
#include "core/roof/RecordedEvents.h"
#include "input/InputState.h"
#include "input/StepInput.h"
#include "platform/VideoDriver.h"
#include "render/KXTexture.h"
#include "render/KXWindow.h"
#include "ui/Focus.h"
#include "util/RandomTrace.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXLogicLoop.h>
#include <Kobaltrix/KXRecording.h>

#include <SDL.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {
constexpr std::string_view firstLine = "kobaltrix recording 1";

// ---- what both ways share

/// A line of a recording, taken apart. A line of answers is as many of these.
struct Item {
    enum Kind : char { Begin, Answer, Text, Event, Step, Generator, Pixels, End } kind;
    char question = 0;       ///< Of an answer.
    bool counts = false;     ///< Of an event.
    unsigned line = 0;       ///< Of the file, from 1.
    std::int64_t number = 0; ///< The answer, the step's number, the seed, or the place among events or texts.
    std::uint64_t hash = 0;  ///< Of random numbers or pixels.
};

std::string hexadecimal(std::uint64_t number) {
    char digits[17] = "";
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(number));
    return digits;
}

/// What was asked last, by question: recordings tell how much an answer is more than the last of its kind.
struct LastAnswers {
    std::int64_t of[128] = {};
};

// ---- recording

// Whether what is typed or pasted now goes into a masked entry.
bool isSecret() {
    const _KXFocus* const owner = _KXFocus::keyboardOwner();
    return owner && owner->isSecret();
}

std::string hidden(std::string_view text) {
    std::string result;
    while (_KXTakeCharacter(text))
        result += 'x';
    return result;
}

// What is typed into a masked entry: the keys that type become X, the characters x. A text of the event's own
// is kept in `text` as long as the event is used.
void hideTyping(SDL_Event& event, std::string& text) {
    const auto hide = [&text](const char* typed) { text = hidden(typed); };
    switch (event.type) {
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        if (event.key.keysym.sym > ' ' && !(event.key.keysym.sym & SDLK_SCANCODE_MASK) &&
            event.key.keysym.sym != SDLK_DELETE && !(event.key.keysym.mod & (KMOD_CTRL | KMOD_GUI))) {
            event.key.keysym.sym = SDLK_x;
            event.key.keysym.scancode = SDL_SCANCODE_X;
        }
        break;
    case SDL_TEXTINPUT:
        hide(event.text.text);
        SDL_strlcpy(event.text.text, text.c_str(), sizeof event.text.text);
        break;
    case SDL_TEXTEDITING:
        hide(event.edit.text);
        SDL_strlcpy(event.edit.text, text.c_str(), sizeof event.edit.text);
        break;
    case SDL_TEXTEDITING_EXT:
        hide(event.editExt.text ? event.editExt.text : "");
        event.editExt.text = text.data();
        break;
    default:
        break;
    }
}

class Recorder final : public _KXTape, public _KXEventTape {
public:
    Recorder(std::ofstream file, int pixelsEvery) : _file(std::move(file)), _pixelsEvery(pixelsEvery) {
        _file << firstLine << "\nprogram " << _KXQuoted(KXApplicationName ? KXApplicationName : "") << '\n';
    }

    bool replays() const override { return false; }
    KXSize largestWindow() const override { return KXZeroSize; }
    bool give(_KXQuestion, std::int64_t&) override { return false; }
    bool giveText(std::string&) override { return false; }
    bool give(SDL_Event&, bool&) override { return false; }

    void keep(_KXQuestion question, std::int64_t answer) override {
        const char letter = static_cast<char>(question);
        std::int64_t& last = _last.of[static_cast<unsigned char>(letter)];
        _file << (_inAnswers ? " " : "= ") << letter << answer - last;
        last = answer;
        _inAnswers = true;
    }
    void keepText(const char* answer) override {
        const std::string text = answer ? answer : "";
        line() << "answer " << _KXQuoted(isSecret() ? hidden(text) : text) << '\n'; // it may be pasted
    }
    void keep(const SDL_Event& event, bool counts) override {
        SDL_Event seen = event;
        std::string text;
        if (isSecret())
            hideTyping(seen, text);
        if (const std::string written = _KXLineOfEvent(seen, counts); !written.empty())
            line() << written << '\n';
    }
    void keepBeginning(unsigned seed) { line() << "begin " << seed << ' ' << _KXLastWindowID << '\n'; }
    void keepStep(std::uint64_t step, std::uint64_t hash) {
        line() << "step " << step << ' ' << hexadecimal(hash) << '\n';
        _file.flush(); // what was played is there when the game falls
    }
    void keepGenerator(const KXRandomState& state) {
        line() << "generator " << state.a << ' ' << state.b << ' ' << state.c << ' ' << state.d << '\n';
    }
    void keepPixels(KXWindow& window) {
        // A window that is being resized shows what a replay cannot: it takes a size when the game does.
        if (_pixelsEvery && window._hasKnownSize() && _pictures++ % static_cast<unsigned>(_pixelsEvery) == 0)
            line() << "pixels " << hexadecimal(_KXHashOfPixels(window)) << ' ' << _KXQuoted(_KXRendererName())
                   << '\n';
    }
    void end() { line() << "end\n" << std::flush; }

private:
    // Where the next line begins.
    std::ofstream& line() {
        if (std::exchange(_inAnswers, false))
            _file << '\n';
        return _file;
    }

    std::ofstream _file;
    int _pixelsEvery;
    unsigned _pictures = 0;
    bool _inAnswers = false;
    LastAnswers _last;
};

// ---- replaying

/// A recording that was read and found whole.
struct Recording {
    std::vector<Item> items;
    std::vector<SDL_Event> events;
    std::vector<std::string> texts; ///< Answers, and the renderers of pictures.
    std::vector<KXRandomState> generators;
    KXSize largestWindow = KXZeroSize;
    unsigned lastWindow = 0; ///< Number of the last window that was made before it began.

    Recording() = default;
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    ~Recording() {
        for (SDL_Event& event : events)
            _KXFreeEvent(event);
    }
};

/// Reads the lines of a recording into one.
class Parser {
public:
    explicit Parser(Recording& recording) : _to(recording) {}

    /// False if the line is damaged.
    bool read(std::string_view text) {
        ++_line;
        if (_line == 1)
            return text == firstLine;
        if (text.starts_with('='))
            return readAnswers(text.substr(1));
        std::string_view rest = text;
        const std::string_view word = rest.substr(0, rest.find(' '));
        rest.remove_prefix(std::min(rest.size(), word.size() + 1));
        if (word == "program")
            return _line == 2 && takeText(rest) && rest.empty();
        if (word == "end")
            return add(Item::End, 0) && rest.empty();
        if (word == "begin")
            return takeNumber(rest, _number) && takeBlank(rest) && takeNumber(rest, _to.lastWindow) &&
                   rest.empty() && add(Item::Begin, _number);
        if (word == "answer")
            return takeText(rest) && rest.empty() && addText(Item::Text);
        if (word == "step")
            return takeNumber(rest, _number) && takeHash(rest) && rest.empty() && add(Item::Step, _number);
        if (word == "pixels")
            return takeHash(rest) && takeText(rest) && rest.empty() && addText(Item::Pixels);
        if (word == "generator")
            return readGenerator(rest);
        return readEvent(text);
    }
    unsigned line() const { return _line; }
    /// Whether it may end here: behind anything once the recording has begun, as a game may have fallen.
    bool hasBegun() const { return !_to.items.empty() && _to.items[0].kind == Item::Begin; }

private:
    bool add(Item::Kind kind, std::int64_t number, char question = 0, bool counts = false) {
        _to.items.push_back({kind, question, counts, _line, number, std::exchange(_hash, 0)});
        return true;
    }
    bool addText(Item::Kind kind) {
        _to.texts.push_back(_text);
        return add(kind, static_cast<std::int64_t>(_to.texts.size() - 1));
    }
    static bool takeBlank(std::string_view& rest) {
        if (!rest.starts_with(' '))
            return false;
        rest.remove_prefix(1);
        return true;
    }
    template<class Number>
    static bool takeNumber(std::string_view& rest, Number& number, int base = 10) {
        const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number, base);
        rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
        return error == std::errc();
    }
    bool takeHash(std::string_view& rest) {
        takeBlank(rest);
        return takeNumber(rest, _hash, 16);
    }
    bool takeText(std::string_view& rest) {
        takeBlank(rest);
        return _KXTakeQuoted(rest, _text);
    }
    bool readAnswers(std::string_view rest) {
        while (!rest.empty()) {
            if (!takeBlank(rest) || rest.empty())
                return false;
            const char question = rest.front();
            rest.remove_prefix(1);
            std::int64_t more = 0;
            if (question < 'a' || question > 'z' || !takeNumber(rest, more))
                return false;
            std::int64_t& last = _last.of[static_cast<unsigned char>(question)];
            last = static_cast<std::int64_t>(static_cast<std::uint64_t>(last) +
                                             static_cast<std::uint64_t>(more));
            add(Item::Answer, last, question);
            if (question == static_cast<char>(_KXQuestion::Width))
                _to.largestWindow.width = std::max(_to.largestWindow.width, side(last));
            if (question == static_cast<char>(_KXQuestion::Height))
                _to.largestWindow.height = std::max(_to.largestWindow.height, side(last));
        }
        return true;
    }
    // No screen is larger, and no recording shall make a window that fills the memory.
    static float side(std::int64_t points) {
        return static_cast<float>(std::clamp<std::int64_t>(points, 0, 16384));
    }
    bool readGenerator(std::string_view rest) {
        KXRandomState state = {};
        const bool good = takeNumber(rest, state.a) && takeBlank(rest) && takeNumber(rest, state.b) &&
                          takeBlank(rest) && takeNumber(rest, state.c) && takeBlank(rest) &&
                          takeNumber(rest, state.d) && rest.empty();
        _to.generators.push_back(state);
        return good && add(Item::Generator, static_cast<std::int64_t>(_to.generators.size() - 1));
    }
    bool readEvent(std::string_view text) {
        SDL_Event event;
        bool counts = false;
        if (!_KXReadEvent(text, event, counts))
            return false;
        _to.events.push_back(event);
        return add(Item::Event, static_cast<std::int64_t>(_to.events.size() - 1), 0, counts);
    }

    Recording& _to;
    unsigned _line = 0;
    std::int64_t _number = 0;
    std::uint64_t _hash = 0;
    std::string _text;
    LastAnswers _last;
};

// False with a text in the error slot, which names the line.
bool readRecording(const char* path, Recording& recording) {
    std::ifstream file(path ? path : "", std::ios::binary);
    if (!file) {
        _KXReportError("Unable to read the recording at %s", path ? path : "(null)");
        return false;
    }
    Parser parser(recording);
    for (std::string line; std::getline(file, line);) {
        const bool cut = file.eof(); // without its end
        if (!parser.read(line) || cut) {
            _KXReportError("%s:%u: the recording is %s", path, parser.line(), cut ? "cut off" : "damaged");
            return false;
        }
    }
    if (!parser.hasBegun()) {
        _KXReportError("%s:%u: the recording is cut off", path, parser.line() + 1);
        return false;
    }
    return true;
}

void finish(KXRecordingState state, const char* what, unsigned line);
bool isWholeProcess();

class Player final : public _KXTape, public _KXEventTape {
public:
    bool open(const char* path) { return readRecording(path, _recording); }
    void keepPace(bool keep) { _keepsPace = keep; }
    std::size_t left() const { return _recording.items.size() - _at; }

    bool replays() const override { return true; }
    KXSize largestWindow() const override { return _recording.largestWindow; }
    void keep(_KXQuestion, std::int64_t) override {}
    void keepText(const char*) override {}
    void keep(const SDL_Event&, bool) override {}

    bool give(_KXQuestion question, std::int64_t& answer) override {
        const Item* const item = take(Item::Answer, "the game asks for what it did not ask for");
        if (!item)
            return false;
        if (item->question != static_cast<char>(question)) {
            go(item, "the game asks for something else");
            return false;
        }
        if (question == _KXQuestion::Nanoseconds)
            waitFor(item->number);
        answer = item->number;
        return true;
    }
    bool giveText(std::string& answer) override {
        const Item* const item = take(Item::Text, "the game asks for a text");
        if (item)
            answer = _recording.texts[static_cast<std::size_t>(item->number)];
        return item != nullptr;
    }
    bool give(SDL_Event& event, bool& counts) override {
        if (!isNext(Item::Event))
            return false;
        const Item& item = _recording.items[_at++];
        // The event's text stays here: the dispatch frees what it was given.
        event = std::exchange(_recording.events[static_cast<std::size_t>(item.number)], SDL_Event{});
        counts = item.counts;
        // Windows have other numbers where others were made before.
        if (Uint32* const window = _KXWindowOf(event); window && *window)
            *window += _lastWindow - _recording.lastWindow;
        return true;
    }
    unsigned giveSeed() {
        const Item* const item = take(Item::Begin, "the recording begins");
        return item ? static_cast<unsigned>(item->number) : 0;
    }
    void step(std::uint64_t step, std::uint64_t hash) {
        const Item* const item = take(Item::Step, "the game makes a step");
        if (item && static_cast<std::uint64_t>(item->number) != step)
            go(item, "the steps are counted otherwise");
        else if (item && item->hash != hash)
            go(item, "other random numbers were drawn");
    }
    void giveGenerator(KXRandomState& state) {
        if (const Item* const item = take(Item::Generator, "the game seeds a generator"))
            state = _recording.generators[static_cast<std::size_t>(item->number)];
    }
    void comparePixels(KXWindow& window) {
        if (!isNext(Item::Pixels))
            return;
        const Item& item = _recording.items[_at++];
        if (_recording.texts[static_cast<std::size_t>(item.number)] != _KXRendererName()) {
            if (!std::exchange(_toldOfRenderer, true))
                std::fprintf(stderr, "Replay: another driver draws here, so pictures are not compared.\n");
        } else if (item.hash != _KXHashOfPixels(window)) {
            go(&item, "the picture is another");
        }
    }
    bool isNext(Item::Kind kind) const {
        return _at < _recording.items.size() && _recording.items[_at].kind == kind;
    }

private:
    const Item* take(Item::Kind kind, const char* otherwise) {
        // Without its last line the game had fallen, or was killed.
        if (_at == _recording.items.size() || (isNext(Item::End) && !isWholeProcess())) {
            finish(KXRecordingReplayed, "the recording ends", _recording.items.empty() ? 0 : lastLine());
            return nullptr;
        }
        const Item& item = _recording.items[_at++];
        if (item.kind == kind)
            return &item;
        go(&item, item.kind == Item::End ? "the game goes on" : otherwise);
        return nullptr;
    }
    unsigned lastLine() const { return _recording.items.back().line; }
    void go(const Item* item, const char* apart) { finish(KXRecordingApart, apart, item->line); }

    // As long as it took then.
    void waitFor(std::int64_t moment) {
        using Clock = std::chrono::steady_clock;
        if (!_begun)
            _begun.emplace(Clock::now() - std::chrono::nanoseconds(moment));
        if (_keepsPace)
            std::this_thread::sleep_until(*_begun + std::chrono::nanoseconds(moment));
    }

    Recording _recording;
    std::size_t _at = 0;
    unsigned _lastWindow = _KXLastWindowID; ///< When the replay began.
    bool _keepsPace = false, _toldOfRenderer = false;
    std::optional<std::chrono::steady_clock::time_point> _begun;
};

// ---- what is under way

struct Run {
    std::unique_ptr<Recorder> recorder;
    std::unique_ptr<Player> player;
    _KXRandomTrace random;
    std::uint64_t steps = 0;
    std::uint64_t stopAt = 0;    ///< The step to end a replay at, 0 for none.
    std::string picture;         ///< To keep then.
    bool isWholeProcess = false; ///< By the environment: its end is the process's end.
};

constinit _KXHeapGlobal<Run> runKept;
constinit KXRecordingState state = KXRecordingNone;
constinit bool ignoresEnvironment = false;

Run& run() { return runKept.get(); }

bool isWholeProcess() { return run().isWholeProcess; }

void letGo() {
    _KXRunningTape = nullptr;
    _KXRunningEventTape = nullptr;
    _KXTraceOfRandom = nullptr;
    _KXBeforeSwap = nullptr;
}

void finish(KXRecordingState how, const char* what, unsigned line) {
    letGo();
    state = how;
    const bool apart = how == KXRecordingApart;
    if (apart)
        _KXReportError("The replay goes apart at step %llu (line %u of the recording): %s",
                       static_cast<unsigned long long>(run().steps), line, what);
    if (!run().isWholeProcess)
        return KXResetLogicLoop(); // the clocks are others now
    if (apart)
        std::fprintf(stderr, "%s\n", KXError());
    else
        std::fprintf(stderr, "Replay: %s at step %llu\n", what, static_cast<unsigned long long>(run().steps));
    std::_Exit(apart ? 1 : 0);
}

void keepPicture(KXWindow& window, const std::string& path) {
    bool kept = false;
    if (path.ends_with(".png")) {
        const std::unique_ptr<KXTexture> copy(window.copyTexture());
        kept = copy && copy->writeToPNG(path.c_str());
    } else {
        kept = window.saveBuffer(path.c_str(), 0) != 0;
    }
    if (!kept)
        std::fprintf(stderr, "Replay: %s\n", KXError());
}

void beforeSwap(KXWindow& window) {
    if (run().recorder)
        return run().recorder->keepPixels(window);
    if (run().player)
        run().player->comparePixels(window);
    if (run().stopAt && run().steps >= run().stopAt && state == KXRecordingReplays) {
        if (!run().picture.empty())
            keepPicture(window, run().picture);
        finish(KXRecordingReplayed, "stopped", 0);
    }
}

// Both ways begin alike: with nothing held, nothing owed and random numbers from a seed.
void begin(unsigned seed) {
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
}

int pixelsEvery(int usual) {
    const char* const wanted = SDL_getenv("KOBALTRIX_RECORD_PIXELS");
    return wanted ? std::max(0, SDL_atoi(wanted)) : usual;
}

unsigned newSeed() {
    const auto now = std::chrono::system_clock::now().time_since_epoch().count();
    return static_cast<unsigned>(now ^ (now >> 32));
}
} // namespace

void KXIgnoreRecordingVariables(int ignore) { ignoresEnvironment = ignore != 0; }

static int beginRecording(const char* path, int usualPixels) {
    KXEndRecording();
    std::ofstream file(path ? path : "", std::ios::binary | std::ios::trunc);
    if (!file) {
        _KXReportError("Unable to write a recording at %s", path ? path : "(null)");
        return 0;
    }
    run().player.reset();
    run().recorder = std::make_unique<Recorder>(std::move(file), pixelsEvery(usualPixels));
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
    auto player = std::make_unique<Player>();
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

void KXEndRecording() {
    const bool replayed = _KXIsReplaying();
    letGo();
    state = KXRecordingNone;
    if (run().recorder)
        run().recorder->end();
    run().recorder.reset();
    run().isWholeProcess = false;
    run().stopAt = 0;
    if (replayed)
        KXResetLogicLoop(); // the clocks are others now
}

KXRecordingState KXRecordingStateNow() { return state; }

std::uint64_t KXRecordingSteps() { return run().steps; }

void _KXRecordStep() {
    if (!_KXRunningTape)
        return;
    const std::uint64_t step = ++run().steps;
    if (run().recorder)
        run().recorder->keepStep(step, run().random.hash);
    else
        run().player->step(step, run().random.hash);
}

// The process ends: with all of the recording behind it, if it is as it was.
static void endProcess() {
    if (state == KXRecordingReplays) {
        if (run().player->isNext(Item::End) || run().player->left() == 0)
            std::fprintf(stderr, "Replay: %llu steps as recorded\n",
                         static_cast<unsigned long long>(run().steps));
        else
            finish(KXRecordingApart, "the game ends", 0);
    }
    KXEndRecording();
}

bool _KXBeginRecordingByEnvironment() {
    static constinit bool looked = false;
    if (ignoresEnvironment || std::exchange(looked, true))
        return true;
    const char* const record = SDL_getenv("KOBALTRIX_RECORD");
    const char* const replay = SDL_getenv("KOBALTRIX_REPLAY");
    if (!record && !replay)
        return true;
    constexpr int usualPixels = 60;
    if (!(replay ? KXBeginReplay(replay) : beginRecording(record, usualPixels)))
        return false;
    run().isWholeProcess = true;
    if (replay) {
        const char* const pace = SDL_getenv("KOBALTRIX_REPLAY_PACE");
        const char* const stop = SDL_getenv("KOBALTRIX_REPLAY_STOP");
        const char* const picture = SDL_getenv("KOBALTRIX_REPLAY_PICTURE");
        run().player->keepPace(pace ? !std::strcmp(pace, "recorded") : !_KXShowsNothing());
        run().stopAt = stop ? SDL_strtoull(stop, nullptr, 10) : 0;
        run().picture = picture ? picture : "";
    }
    std::atexit(endProcess);
    return true;
}
