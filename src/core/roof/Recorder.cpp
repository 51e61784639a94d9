#include "core/roof/Recorder.h"

#include "core/roof/RecordedEvents.h"
#include "render/KXWindow.h"
#include "util/Quoted.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXApplication.h>

#include <cstdio>
#include <utility>

static std::string hexadecimal(std::uint64_t number) {
    char digits[17] = "";
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(number));
    return digits;
}

_KXRecorder::_KXRecorder(std::ofstream file, std::uint64_t pixelsEvery)
    : _file(std::move(file)), _pixelsEvery(pixelsEvery) {
    _file << _KXRecordingFirstLine << "\nprogram " << _KXQuoted(KXApplicationName ? KXApplicationName : "")
          << '\n';
}

void _KXRecorder::keep(_KXQuestion question, std::int64_t answer) {
    const char letter = static_cast<char>(question);
    std::int64_t& last = _last.of[static_cast<unsigned char>(letter)];
    _file << (_inAnswers ? " " : "= ") << letter << answer - last;
    last = answer;
    _inAnswers = true;
}

void _KXRecorder::keepText(const char* answer) {
    const std::string text = answer ? answer : "";
    line() << "answer " << _KXQuoted(_KXTypingIsSecret() ? _KXHiddenText(text) : text)
           << '\n'; // it may be pasted
}

void _KXRecorder::keep(const SDL_Event& event, bool counts) {
    SDL_Event seen = event;
    std::string text;
    const bool secret = _KXTypingIsSecret();
    if (event.type == SDL_KEYDOWN || event.type == SDL_KEYUP)
        _keys.write(seen.key, secret);
    else if (secret)
        _KXHideTyping(seen, text);
    if (event.type == SDL_WINDOWEVENT &&
        (event.window.event == SDL_WINDOWEVENT_RESIZED || event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED))
        _unsettled.clear();
    if (const std::string written = _KXLineOfEvent(seen, counts); !written.empty())
        line() << written << '\n';
}

void _KXRecorder::keepStep(std::uint64_t step, std::uint64_t hash) {
    line() << "step " << step << ' ' << hexadecimal(hash) << '\n';
    while (!_unsettled.empty() && _unsettled.front().where + stepsToSettle <= step) {
        const _KXRecordedPicture& picture = _unsettled.front();
        _file << "pixels " << picture.number << ' ' << hexadecimal(picture.hash) << ' '
              << _KXQuoted(picture.renderer) << '\n';
        _unsettled.erase(_unsettled.begin());
    }
    _file.flush(); // what was played is there when the game falls
}

void _KXRecorder::keepGenerator(const KXRandomState& state) {
    line() << "generator " << state.a << ' ' << state.b << ' ' << state.c << ' ' << state.d << '\n';
}

void _KXRecorder::keepPixels(KXWindow& window, std::uint64_t step) {
    if (_pixelsEvery && _pictures++ % _pixelsEvery == 0 && window._hasKnownSize())
        _unsettled.push_back({_pictures, _KXHashOfPixels(window), _KXRendererName(), step});
}

std::ofstream& _KXRecorder::line() {
    if (std::exchange(_inAnswers, false))
        _file << '\n';
    return _file;
}
