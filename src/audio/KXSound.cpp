#include "audio/KXSound.h"

#include "audio/AudioDevice.h"
#include "audio/WaveFile.h"
#include "core/ground/ErrorSlot.h"
#include "core/ground/Tape.h"
#include "platform/MemoryBudget.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <algorithm>
#include <memory>
#include <new>
#include <string>

struct KXSound::Loader final : _KXMixerObject {
    Loader(KXSound& owner, const char* file) : sound(owner), path(file) {}
    void load() override;
    void unload() override;

    KXSound& sound;
    std::string path;
};

static constinit std::uint32_t maximumBytes = 128U << 20;

void KXSetMaximumSoundBytes(std::uint32_t bytes) { maximumBytes = bytes; }

// What loading may take: the decoded sound in pieces and as a whole; what the platform needs to convert
// samples as they stand in a file, which makes at most some hundred bytes of one; and the file itself, which
// may be larger than what becomes of it.
static std::size_t memoryToLoad(SDL_RWops* file) {
    const std::size_t twice = 2 * std::size_t{maximumBytes}, more = 1 << 20;
    const auto size = static_cast<std::size_t>(std::max<Sint64>(SDL_RWsize(file), 0));
    return twice + std::min(twice, 400 * size) + 16 * size + more;
}

void KXSound::Loader::load() {
    SDL_RWops* file =
        _KXAudioFileIsSane(path.c_str(), _KXAudioUse::Sound) ? SDL_RWFromFile(path.c_str(), "rb") : nullptr;
    if (!file)
        return;
    const _KXMemoryBudget budget(memoryToLoad(file));
    sound._chunk = Mix_LoadWAV_RW(file, 0);
    SDL_RWclose(file); // the mixer does not close a file whose format it does not know
    if (sound._chunk ? sound._chunk->alen <= maximumBytes : !budget.exceeded())
        return;
    unload();
    _KXReportError("%s: takes more than %u bytes when it is decoded", path.c_str(), maximumBytes);
}

void KXSound::Loader::unload() {
    sound.stop();
    if (sound._chunk)
        Mix_FreeChunk(sound._chunk); // silences the channels that play other copies of it
    sound._chunk = nullptr;
}

static int clampedVolume(int volume) { return std::clamp(volume, 0, MIX_MAX_VOLUME); }

KXSound::KXSound() { throw std::bad_alloc(); }

KXSound::KXSound(const char* path) : _chunk(nullptr), _channel(-1), _volume(MIX_MAX_VOLUME) {
    if (!path || !_KXMixerIsOpen())
        throw std::bad_alloc();
    _loader = std::make_unique<Loader>(*this, path);
    _loader->load();
    if (!_chunk)
        throw std::bad_alloc();
}

KXSound::~KXSound() { _loader->unload(); }

bool KXSound::_hasChannel() const { return _channel != -1 && _KXMixerIsOpen(); }

bool KXSound::play(int loops) {
    _channel = _chunk && _KXMixerIsOpen() ? Mix_PlayChannel(-1, _chunk, std::max(loops, -1)) : -1;
    setVolume(_volume);
    return _KXAnswerTo(_KXQuestion::Sound, [this] { return _channel != -1; });
}

void KXSound::stop() {
    if (_hasChannel())
        Mix_HaltChannel(_channel);
    _channel = -1;
}

void KXSound::setVolume(int volume) {
    _volume = clampedVolume(volume);
    if (_hasChannel())
        Mix_Volume(_channel, _volume * _KXMasterVolume / MIX_MAX_VOLUME);
}

int KXSound::volume() const {
    return _KXAnswerTo(_KXQuestion::Sound, [this] { return _hasChannel() ? Mix_Volume(_channel, -1) : 0; });
}

bool KXSound::isPlaying() const {
    return _KXAnswerTo(_KXQuestion::Sound, [this] { return _hasChannel() && Mix_Playing(_channel) != 0; });
}

void KXSound::setPanning(int left, int right) {
    if (_hasChannel())
        Mix_SetPanning(_channel, static_cast<Uint8>(left), static_cast<Uint8>(right));
}

void KXSound::setDistance(int distance) {
    if (_hasChannel())
        Mix_SetDistance(_channel, static_cast<Uint8>(distance));
}

void KXSetSoundVolume(int volume) {
    _KXMasterVolume = clampedVolume(volume);
    if (_KXMixerIsOpen())
        Mix_Volume(-1, _KXMasterVolume);
}

void KXStopAllSounds() {
    if (_KXMixerIsOpen())
        Mix_HaltChannel(-1);
}
