#include "core/roof/Player.h"

#include "core/roof/RecordedEvents.h"

#include <Kobaltrix/KXApplication.h>

#include <cstdio>
#include <thread>
#include <utility>

bool _KXPlayer::give(_KXQuestion question, std::int64_t& answer) {
    const _KXRecordedItem* const item =
        take(_KXRecordedItem::Answer, "the game asks for what it did not ask for");
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

bool _KXPlayer::giveText(std::string& answer) {
    const _KXRecordedItem* const item = take(_KXRecordedItem::Text, "the game asks for a text");
    if (item)
        answer = _recording.texts[static_cast<std::size_t>(item->number)];
    return item != nullptr;
}

bool _KXPlayer::give(SDL_Event& event, bool& counts) {
    if (!isNext(_KXRecordedItem::Event))
        return false;
    const _KXRecordedItem& item = _recording.items[_at++];
    // The event's text stays here: the dispatch frees what it was given.
    event = std::exchange(_recording.events[static_cast<std::size_t>(item.number)], SDL_Event{});
    counts = item.counts;
    // Windows have other numbers where others were made before.
    if (Uint32* const window = _KXWindowOf(event); window && *window)
        *window += _lastWindow - _recording.lastWindow;
    return true;
}

unsigned _KXPlayer::giveSeed() {
    const _KXRecordedItem* const item = take(_KXRecordedItem::Begin, "the recording begins");
    return item ? static_cast<unsigned>(item->number) : 0;
}

void _KXPlayer::step(std::uint64_t step, std::uint64_t hash) {
    const _KXRecordedItem* const item = take(_KXRecordedItem::Step, "the game makes a step");
    if (item && static_cast<std::uint64_t>(item->number) != step)
        go(item, "the steps are counted otherwise");
    else if (item && item->hash != hash)
        go(item, "other random numbers were drawn");
}

void _KXPlayer::giveGenerator(KXRandomState& state) {
    if (const _KXRecordedItem* const item = take(_KXRecordedItem::Generator, "the game seeds a generator"))
        state = _recording.generators[static_cast<std::size_t>(item->number)];
}

void _KXPlayer::comparePixels(KXWindow& window) {
    ++_pictures;
    if (_compared == _recording.pictures.size() || _recording.pictures[_compared].number != _pictures)
        return;
    const _KXRecordedPicture& picture = _recording.pictures[_compared++];
    if (picture.renderer != _KXRendererName()) {
        if (!std::exchange(_toldOfRenderer, true))
            std::fprintf(stderr, "Replay: another driver draws here, so pictures are not compared.\n");
    } else if (picture.hash != _KXHashOfPixels(window)) {
        _finish(KXRecordingApart, "the picture is another", static_cast<unsigned>(picture.where));
    }
}

std::string _KXPlayer::otherProgram() const {
    return KXApplicationName && _recording.program != KXApplicationName ? _recording.program : "";
}

bool _KXPlayer::isNext(_KXRecordedItem::Kind kind) const {
    return _at < _recording.items.size() && _recording.items[_at].kind == kind;
}

const _KXRecordedItem* _KXPlayer::take(_KXRecordedItem::Kind kind, const char* otherwise) {
    // Without its last line the game had fallen, or was killed.
    if (_at == _recording.items.size() || (isNext(_KXRecordedItem::End) && !_endsWithGame)) {
        _finish(KXRecordingReplayed, "the recording ends", _recording.items.empty() ? 0 : lastLine());
        return nullptr;
    }
    const _KXRecordedItem& item = _recording.items[_at++];
    if (item.kind == kind)
        return &item;
    go(&item, item.kind == _KXRecordedItem::End ? "the game goes on" : otherwise);
    return nullptr;
}

void _KXPlayer::waitFor(std::int64_t moment) {
    using Clock = std::chrono::steady_clock;
    if (!_begun)
        _begun.emplace(Clock::now() - std::chrono::nanoseconds(moment));
    if (_keepsPace)
        std::this_thread::sleep_until(*_begun + std::chrono::nanoseconds(moment));
}
