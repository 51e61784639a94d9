#include "core/roof/RecordingFile.h"

#include "core/dispatch/EventDispatch.h"
#include "core/ground/ErrorSlot.h"
#include "core/ground/Tape.h"
#include "core/roof/RecordedEvents.h"
#include "platform/FilePath.h"
#include "util/Quoted.h"
#include "util/Utf8.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <utility>

_KXReadRecording::~_KXReadRecording() {
    for (SDL_Event& event : events)
        _KXFreeEvent(event);
}

namespace {
/// Reads the lines of a recording into one.
class Parser {
public:
    explicit Parser(_KXReadRecording& recording) : _to(recording) {}

    /// False if the line is damaged.
    bool read(std::string_view text) {
        ++_line;
        if (_line == 1)
            return text == _KXRecordingFirstLine;
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
                   takeNumber(rest, _to.lastWindow) && rest.empty() && add(_KXRecordedItem::Begin, _number);
        if (!hasBegun())
            return false;
        if (word == "end")
            return (_ended = text == word) && add(_KXRecordedItem::End, 0);
        if (word == "answer")
            return takeText(rest) && rest.empty() && addText(_KXRecordedItem::Text);
        if (word == "step")
            return takeNumber(rest, _number) && _number == ++_steps && takeHash(rest) && rest.empty() &&
                   add(_KXRecordedItem::Step, _number);
        if (word == "pixels")
            return readPicture(rest);
        if (word == "generator")
            return readGenerator(rest);
        return readEvent(text);
    }
    unsigned line() const { return _line; }
    const char* fault() const { return _line == 1 ? "none of a kind that is known here" : "damaged"; }
    /// Whether it may end here: behind anything once the recording has begun, as a game may have fallen.
    bool hasBegun() const { return !_to.items.empty() && _to.items[0].kind == _KXRecordedItem::Begin; }

private:
    bool add(_KXRecordedItem::Kind kind, std::int64_t number, char question = 0, bool counts = false) {
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
    bool addText(_KXRecordedItem::Kind kind) {
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
            add(_KXRecordedItem::Answer, last, question);
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
        return good && add(_KXRecordedItem::Generator, static_cast<std::int64_t>(_to.generators.size() - 1));
    }
    bool readEvent(std::string_view text) {
        SDL_Event event;
        bool counts = false;
        if (!_KXReadEvent(text, event, counts))
            return false;
        _to.events.push_back(event);
        return add(_KXRecordedItem::Event, static_cast<std::int64_t>(_to.events.size() - 1), 0, counts);
    }

    _KXReadRecording& _to;
    unsigned _line = 0;
    std::int64_t _number = 0;
    std::int64_t _steps = 0;
    std::uint64_t _hash = 0;
    bool _ended = false;
    std::string _text;
    _KXLastAnswers _last;
};
} // namespace

bool _KXReadRecordingFile(const char* path, _KXReadRecording& recording) {
    std::ifstream file(_KXFilePath(path ? path : ""), std::ios::binary);
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
    if (file.bad()) {
        _KXReportError("Unable to read the recording at %s to its end", path);
        return false;
    }
    if (!parser.hasBegun()) {
        _KXReportError("%s:%u: the recording is cut off", path, parser.line() + 1);
        return false;
    }
    return true;
}
