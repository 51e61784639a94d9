#pragma once

#include "core/dispatch/EventDispatch.h"
#include "core/ground/Tape.h"
#include "core/roof/RecordingFile.h"
#include "render/KXWindow.h"

#include <Kobaltrix/KXRecording.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

/// Gives a recording's answers and events in the place of the world's.
class _KXPlayer final : public _KXTape, public _KXEventTape {
public:
    /// Ends the replay: how, why, and at which line of the recording.
    using Finish = void (*)(KXRecordingState how, const char* what, unsigned line);

    explicit _KXPlayer(Finish finish) : _finish(finish) {}
    bool open(const char* path) { return _KXReadRecordingFile(path, _recording); }
    void keepPace(bool keep) { _keepsPace = keep; }
    /// Has the replay go apart where the game goes on behind the recording's last line.
    void endWithGame() { _endsWithGame = true; }

    bool replays() const override { return true; }
    KXSize largestWindow() const override { return _recording.largestWindow; }
    void keep(_KXQuestion, std::int64_t) override {}
    void keepText(const char*) override {}
    void keep(const SDL_Event&, bool) override {}

    bool give(_KXQuestion question, std::int64_t& answer) override;
    bool giveText(std::string& answer) override;
    bool give(SDL_Event& event, bool& counts) override;
    unsigned giveSeed();
    void step(std::uint64_t step, std::uint64_t hash);
    void giveGenerator(KXRandomState& state);
    void comparePixels(KXWindow& window);
    bool isOver() const { return _at == _recording.items.size() || isNext(_KXRecordedItem::End); }
    /// The line that comes next, or the last one.
    unsigned line() const { return isOver() ? lastLine() : _recording.items[_at].line; }
    /// The program that made it, if that is another one; else empty.
    std::string otherProgram() const;
    bool isNext(_KXRecordedItem::Kind kind) const;

private:
    const _KXRecordedItem* take(_KXRecordedItem::Kind kind, const char* otherwise);
    unsigned lastLine() const { return _recording.items.back().line; }
    void go(const _KXRecordedItem* item, const char* apart) { _finish(KXRecordingApart, apart, item->line); }

    // As long as it took then.
    void waitFor(std::int64_t moment);

    const Finish _finish;
    _KXReadRecording _recording;
    std::size_t _at = 0;
    std::uint64_t _pictures = 0;
    std::size_t _compared = 0;              ///< Of the recorded pictures.
    unsigned _lastWindow = _KXLastWindowID; ///< When the replay began.
    bool _keepsPace = false, _endsWithGame = false, _toldOfRenderer = false;
    std::optional<std::chrono::steady_clock::time_point> _begun;
};
