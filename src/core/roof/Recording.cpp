#include "core/roof/Recording.h"

#include "core/dispatch/EventDispatch.h"
#include "core/ground/Application.h"
#include "core/ground/ErrorSlot.h"
#include "core/ground/HeapGlobal.h"
#include "core/ground/LogicClock.h"
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

#include <Kobaltrix/KXApplication.h>
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
    enum Kind : char { Begin, Answer, Text, Event, Step, Generator, End } kind;
    char question = 0;       ///< Of an answer.
    bool counts = false;     ///< Of an event.
    unsigned line = 0;       ///< Of the file, from 1.
    std::int64_t number = 0; ///< The answer, the step's number, the seed, or the place among events or texts.
    std::uint64_t hash = 0;  ///< Of random numbers.
};

/// A picture whose pixels are compared.
struct Picture {
    std::uint64_t number; ///< Among all pictures, from 1.
    std::uint64_t hash;   ///< Of the pixels.
    std::string renderer; ///< What drew it.
    std::uint64_t where;  ///< The step behind which it was drawn, or the line that tells of it.
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

// Whether a key types a character, with the modifiers that are held.
bool types(const SDL_Keysym& key) {
    const bool isShortcut = (key.mod & KMOD_GUI) || ((key.mod & KMOD_CTRL) && !(key.mod & KMOD_ALT));
    const bool isOnPad = key.scancode >= SDL_SCANCODE_KP_DIVIDE && key.scancode <= SDL_SCANCODE_KP_PERIOD &&
                         key.scancode != SDL_SCANCODE_KP_ENTER;
    const bool isCharacter = key.sym >= ' ' && !(key.sym & SDLK_SCANCODE_MASK) && key.sym != SDLK_DELETE;
    return !isShortcut && (isCharacter || isOnPad);
}

/// The keys that are held, with what stands for each in the recording: a key that has typed into a masked
/// entry is another letter there until it comes up, so that in a replay as many are held as there were.
class HeldKeys {
public:
    void write(SDL_KeyboardEvent& event, bool secret) {
        SDL_Keysym& key = event.keysym;
        const auto held = std::find_if(_keys.begin(), _keys.end(),
                                       [&key](const Key& each) { return each.pressed == key.scancode; });
        const SDL_Scancode shown = held != _keys.end()    ? held->shown
                                   : secret && types(key) ? freeLetter()
                                                          : key.scancode;
        if (event.type == SDL_KEYDOWN && held == _keys.end())
            _keys.push_back({key.scancode, shown});
        else if (event.type == SDL_KEYUP && held != _keys.end())
            _keys.erase(held);
        if (shown == key.scancode)
            return;
        key.scancode = shown;
        key.sym = SDLK_a + (shown - SDL_SCANCODE_A);
    }

private:
    struct Key {
        SDL_Scancode pressed, shown;
    };

    SDL_Scancode freeLetter() const {
        for (int letter = SDL_SCANCODE_X; letter > SDL_SCANCODE_A; --letter)
            if (std::none_of(_keys.begin(), _keys.end(),
                             [letter](const Key& each) { return each.shown == letter; }))
                return static_cast<SDL_Scancode>(letter);
        return SDL_SCANCODE_A;
    }

    std::vector<Key> _keys;
};

// What is typed into a masked entry: an x for each character. A text of the event's own is kept in `text` as
// long as the event is used.
void hideTyping(SDL_Event& event, std::string& text) {
    const auto hide = [&text](const char* typed) { text = hidden(typed); };
    switch (event.type) {
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
    Recorder(std::ofstream file, std::uint64_t pixelsEvery)
        : _file(std::move(file)), _pixelsEvery(pixelsEvery) {
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
        const bool secret = isSecret();
        if (event.type == SDL_KEYDOWN || event.type == SDL_KEYUP)
            _keys.write(seen.key, secret);
        else if (secret)
            hideTyping(seen, text);
        if (event.type == SDL_WINDOWEVENT && (event.window.event == SDL_WINDOWEVENT_RESIZED ||
                                              event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED))
            _unsettled.clear();
        if (const std::string written = _KXLineOfEvent(seen, counts); !written.empty())
            line() << written << '\n';
    }
    void keepBeginning(unsigned seed) { line() << "begin " << seed << ' ' << _KXLastWindowID << '\n'; }
    void keepStep(std::uint64_t step, std::uint64_t hash) {
        line() << "step " << step << ' ' << hexadecimal(hash) << '\n';
        while (!_unsettled.empty() && _unsettled.front().where + stepsToSettle <= step) {
            const Picture& picture = _unsettled.front();
            _file << "pixels " << picture.number << ' ' << hexadecimal(picture.hash) << ' '
                  << _KXQuoted(picture.renderer) << '\n';
            _unsettled.erase(_unsettled.begin());
        }
        _file.flush(); // what was played is there when the game falls
    }
    bool isGood() const { return _file.good(); }
    void keepGenerator(const KXRandomState& state) {
        line() << "generator " << state.a << ' ' << state.b << ' ' << state.c << ' ' << state.d << '\n';
    }
    // A window can have another size before the platform tells of it, and then shows what a replay cannot: a
    // picture counts only when some steps have heard of no other size.
    void keepPixels(KXWindow& window, std::uint64_t step) {
        if (_pixelsEvery && _pictures++ % _pixelsEvery == 0 && window._hasKnownSize())
            _unsettled.push_back({_pictures, _KXHashOfPixels(window), _KXRendererName(), step});
    }
    void end() { line() << "end\n" << std::flush; }

private:
    static constexpr std::uint64_t stepsToSettle = 3;

    // Where the next line begins.
    std::ofstream& line() {
        if (std::exchange(_inAnswers, false))
            _file << '\n';
        return _file;
    }

    std::ofstream _file;
    std::uint64_t _pixelsEvery;
    std::uint64_t _pictures = 0;
    bool _inAnswers = false;
    HeldKeys _keys;
    std::vector<Picture> _unsettled;
    LastAnswers _last;
};

// ---- replaying

/// A recording that was read and found whole.
struct Recording {
    std::vector<Item> items;
    std::vector<SDL_Event> events;
    std::vector<std::string> texts; ///< Answers.
    std::vector<KXRandomState> generators;
    std::vector<Picture> pictures;
    std::string program; ///< Which made it.
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
        if (_ended)
            return false;
        if (text.starts_with('='))
            return readAnswers(text.substr(1));
        std::string_view rest = text;
        const std::string_view word = rest.substr(0, rest.find(' '));
        rest.remove_prefix(std::min(rest.size(), word.size() + 1));
        if (word == "program")
            return _line == 2 && takeText(rest) && rest.empty() && keepProgram();
        if (word == "begin")
            return _to.items.empty() && takeNumber(rest, _number) && takeBlank(rest) &&
                   takeNumber(rest, _to.lastWindow) && rest.empty() && add(Item::Begin, _number);
        if (!hasBegun())
            return false;
        if (word == "end")
            return (_ended = text == word) && add(Item::End, 0);
        if (word == "answer")
            return takeText(rest) && rest.empty() && addText(Item::Text);
        if (word == "step")
            return takeNumber(rest, _number) && _number == ++_steps && takeHash(rest) && rest.empty() &&
                   add(Item::Step, _number);
        if (word == "pixels")
            return readPicture(rest);
        if (word == "generator")
            return readGenerator(rest);
        return readEvent(text);
    }
    unsigned line() const { return _line; }
    const char* fault() const { return _line == 1 ? "none of a kind that is known here" : "damaged"; }
    /// Whether it may end here: behind anything once the recording has begun, as a game may have fallen.
    bool hasBegun() const { return !_to.items.empty() && _to.items[0].kind == Item::Begin; }

private:
    bool add(Item::Kind kind, std::int64_t number, char question = 0, bool counts = false) {
        _to.items.push_back({kind, question, counts, _line, number, std::exchange(_hash, 0)});
        return true;
    }
    bool keepProgram() {
        _to.program = _text;
        return true;
    }
    // They come in their order.
    bool readPicture(std::string_view rest) {
        std::uint64_t number = 0;
        if (!takeNumber(rest, number) || !takeHash(rest) || !takeText(rest) || !rest.empty() ||
            number <= (_to.pictures.empty() ? 0 : _to.pictures.back().number))
            return false;
        _to.pictures.push_back({number, std::exchange(_hash, 0), _text, _line});
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
            if (!isPossible(question, last, more))
                return false;
        }
        return true;
    }
    // What would fill the memory or let a replay wait for ever was never answered.
    bool isPossible(char question, std::int64_t answer, std::int64_t more) {
        constexpr std::int64_t largestScreen = 16384, longest = std::int64_t(1) << 62;
        const auto isSide = [answer](float& largest) {
            largest = std::max(largest, static_cast<float>(answer));
            return answer >= 0 && answer <= largestScreen;
        };
        switch (static_cast<_KXQuestion>(question)) {
        case _KXQuestion::Width:
            return isSide(_to.largestWindow.width);
        case _KXQuestion::Height:
            return isSide(_to.largestWindow.height);
        case _KXQuestion::Density:
            return answer > 0 && answer <= 64000;
        case _KXQuestion::Nanoseconds:
            return more >= 0 && answer >= 0 && answer < longest;
        default:
            return true;
        }
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
    std::int64_t _steps = 0;
    std::uint64_t _hash = 0;
    bool _ended = false;
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
            _KXReportError("%s:%u: the recording is %s", path, parser.line(),
                           cut ? "cut off" : parser.fault());
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
        ++_pictures;
        if (_compared == _recording.pictures.size() || _recording.pictures[_compared].number != _pictures)
            return;
        const Picture& picture = _recording.pictures[_compared++];
        if (picture.renderer != _KXRendererName()) {
            if (!std::exchange(_toldOfRenderer, true))
                std::fprintf(stderr, "Replay: another driver draws here, so pictures are not compared.\n");
        } else if (picture.hash != _KXHashOfPixels(window)) {
            finish(KXRecordingApart, "the picture is another", static_cast<unsigned>(picture.where));
        }
    }
    bool isOver() const { return _at == _recording.items.size() || isNext(Item::End); }
    /// The line that comes next, or the last one.
    unsigned line() const { return isOver() ? lastLine() : _recording.items[_at].line; }
    /// The program that made it, if that is another one; else empty.
    std::string otherProgram() const {
        return KXApplicationName && _recording.program != KXApplicationName ? _recording.program : "";
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
    std::uint64_t _pictures = 0;
    std::size_t _compared = 0;              ///< Of the recorded pictures.
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
    bool hasPicture = false;     ///< Whether it was kept.
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
        return KXResetLogicLoop(); // the clocks are others now
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

// Another one each time, but for tests, who own the clock.
unsigned newSeed() {
    const auto now = _KXNanoseconds();
    return static_cast<unsigned>(now ^ (now >> 32) ^ static_cast<std::uint64_t>(_KXTimeOfDay()));
}
} // namespace

void KXIgnoreRecordingVariables(int ignore) { ignoresEnvironment = ignore != 0; }

// Reads a variable that is a number; false, with a text in the error slot, for anything else.
static bool readNumber(const char* name, std::uint64_t& number) {
    const char* const text = SDL_getenv(name);
    if (!text)
        return true;
    const char* const textEnd = text + std::strlen(text);
    const auto [numberEnd, error] = std::from_chars(text, textEnd, number);
    if (error == std::errc() && numberEnd == textEnd && number <= 0x7FFFFFFF)
        return true;
    _KXReportError("%s is no number: %s", name, text);
    return false;
}

// @param pixelsEvery unless the environment says of which pictures a hash is kept.
static int beginRecording(const char* path, std::uint64_t pixelsEvery) {
    KXEndRecording();
    if (!readNumber("KOBALTRIX_RECORD_PIXELS", pixelsEvery))
        return 0;
    std::ofstream file(path ? path : "", std::ios::binary | std::ios::trunc);
    if (!file) {
        _KXReportError("Unable to write a recording at %s", path ? path : "(null)");
        return 0;
    }
    run().player.reset();
    run().recorder = std::make_unique<Recorder>(std::move(file), pixelsEvery);
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

// Lets everything go on as it would without a recording or a replay.
static void end() {
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
    const char* const paceText = SDL_getenv("KOBALTRIX_REPLAY_PACE");
    const char* const picture = SDL_getenv("KOBALTRIX_REPLAY_PICTURE");
    const std::string_view pace = paceText ? paceText : _KXShowsNothing() ? "fast" : "recorded";
    std::uint64_t stopAt = 0;
    if (pace != "fast" && pace != "recorded") {
        _KXReportError("KOBALTRIX_REPLAY_PACE is neither recorded nor fast: %s", paceText);
        return false;
    }
    if (!readNumber("KOBALTRIX_REPLAY_STOP", stopAt) || !KXBeginReplay(path))
        return false;
    run().player->keepPace(pace == "recorded");
    run().stopAt = stopAt;
    run().picture = picture ? picture : "";
    return true;
}

bool _KXBeginRecordingByEnvironment() {
    static constinit bool looked = false;
    if (ignoresEnvironment || std::exchange(looked, true))
        return true;
    const char* const record = SDL_getenv("KOBALTRIX_RECORD");
    const char* const replay = SDL_getenv("KOBALTRIX_REPLAY");
    if (!record && !replay)
        return true;
    if (record && replay) {
        _KXReportError(
            "A run is either recorded or replayed: KOBALTRIX_RECORD and KOBALTRIX_REPLAY are both set");
        return false;
    }
    constexpr std::uint64_t usualPixels = 60;
    if (!(replay ? beginReplay(replay) : beginRecording(record, usualPixels)))
        return false;
    run().isWholeProcess = true;
    std::atexit(endProcess);
    return true;
}
