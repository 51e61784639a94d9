#pragma once

#include "core/dispatch/EventDispatch.h"
#include "core/ground/Tape.h"
#include "core/roof/RecordedTyping.h"
#include "core/roof/RecordingFile.h"
#include "render/KXWindow.h"

#include <fstream>
#include <ostream>

/// Writes a recording: what is kept of a run goes to a file at once.
class _KXRecorder final : public _KXTape, public _KXEventTape {
public:
    _KXRecorder(std::ofstream file, std::uint64_t pixelsEvery);

    bool replays() const override { return false; }
    KXSize largestWindow() const override { return KXZeroSize; }
    bool give(_KXQuestion, std::int64_t&) override { return false; }
    bool giveText(std::string&) override { return false; }
    bool give(SDL_Event&, bool&) override { return false; }

    void keep(_KXQuestion question, std::int64_t answer) override;
    void keepText(const char* answer) override;
    void keep(const SDL_Event& event, bool counts) override;
    void keepBeginning(unsigned seed) { line() << "begin " << seed << ' ' << _KXLastWindowID << '\n'; }
    void keepStep(std::uint64_t step, std::uint64_t hash);
    bool isGood() const { return _file.good(); }
    void keepGenerator(const KXRandomState& state);
    // A window can have another size before the platform tells of it, and then shows what a replay cannot: a
    // picture counts only when some steps have heard of no other size.
    void keepPixels(KXWindow& window, std::uint64_t step);
    void end() { line() << "end\n" << std::flush; }

private:
    static constexpr std::uint64_t stepsToSettle = 3;

    // Where the next line begins.
    std::ofstream& line();

    std::ofstream _file;
    std::uint64_t _pixelsEvery;
    std::uint64_t _pictures = 0;
    bool _inAnswers = false;
    _KXRecordedKeys _keys;
    std::vector<_KXRecordedPicture> _unsettled;
    _KXLastAnswers _last;
};
