#include "audio/KXSound.h"

#include "audio/AudioDevice.h"
#include "audio/VoiceMixer.h"
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
#include <utility>

struct KXSound::Loader final : _KXMixerObject {
    Loader(KXSound& owner, _KXAudioSource file) : sound(owner), source(std::move(file)) {}
    void load() override;
    void unload() override;
    const char* name() const { return source.path.empty() ? "a sound in memory" : source.path.c_str(); }

    KXSound& sound;
    _KXAudioSource source;
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
    SDL_RWops* file = source.open(_KXAudioUse::Sound);
    if (!file)
        return;
    const _KXMemoryBudget budget(memoryToLoad(file));
    sound._chunk = Mix_LoadWAV_RW(file, 0);
    SDL_RWclose(file); // the mixer does not close a file whose format it does not know
    if (sound._chunk ? sound._chunk->alen <= maximumBytes : !budget.exceeded())
        return;
    unload();
    _KXReportError("%s: takes more than %u bytes when it is decoded", name(), maximumBytes);
}

void KXSound::Loader::unload() {
    sound.stop();
    if (!sound._chunk)
        return;
    _KXVoices.forget(sound._chunk);
    Mix_FreeChunk(sound._chunk); // silences the channels that play other copies of it
    sound._chunk = nullptr;
}

static int clampedVolume(int volume) { return std::clamp(volume, 0, MIX_MAX_VOLUME); }

KXSound::KXSound() { throw std::bad_alloc(); }

void KXSound::_load(std::unique_ptr<Loader> loader) {
    _chunk = nullptr;
    _channel = -1;
    _volume = MIX_MAX_VOLUME;
    _loader = std::move(loader);
    if (_KXMixerIsOpen())
        _loader->load();
    if (!_chunk)
        throw std::bad_alloc();
}

KXSound::KXSound(const char* path) {
    if (!path || !*path)
        throw std::bad_alloc();
    _load(std::make_unique<Loader>(*this, _KXAudioSource{path, ""}));
}

KXSound::KXSound(const void* file, std::size_t size) {
    if (!file)
        throw std::bad_alloc();
    _load(std::make_unique<Loader>(*this,
                                   _KXAudioSource{"", std::string(static_cast<const char*>(file), size)}));
}

KXSound::KXSound(const KXSamples& samples) {
    _load(std::make_unique<Loader>(*this, _KXAudioSource{"", _KXWaveFileOf(samples)}));
}

KXSound::~KXSound() { _loader->unload(); }

bool KXSound::_hasChannel() const { return _channel != -1 && _KXMixerIsOpen(); }

bool KXSound::play(int loops) {
    _channel = _chunk && _KXMixerIsOpen() ? Mix_PlayChannel(-1, _chunk, std::max(loops, -1)) : -1;
    setVolume(_volume);
    if (_hasChannel() && _KXVoices.isAllPaused())
        Mix_Pause(_channel);
    return _KXAnswerTo(_KXQuestion::Sound, [this] { return _channel != -1; });
}

// Whether there is a voice is the world's answer; none of the recording is none in its replay.
static std::uint32_t begin(const Mix_Chunk* chunk, const KXSoundOptions& options, const KXPoint* place) {
    const std::uint32_t number = chunk ? _KXVoices.begin(chunk, options, place) : 0;
    if (_KXAnswerTo(_KXQuestion::Sound, [number] { return number != 0; }))
        return number;
    _KXVoices.with(number, [](_KXVoiceMixer::Voice& voice) { voice.number = 0; });
    return 0;
}

KXVoice KXSound::start(const KXSoundOptions& options) { return KXVoice(begin(_chunk, options, nullptr)); }

KXVoice KXSound::startAt(KXPoint place, const KXSoundOptions& options) {
    return KXVoice(begin(_chunk, options, &place));
}

double KXSound::length() const {
    int frequency = 0, channels = 0;
    Uint16 format = 0;
    if (!_chunk || !Mix_QuerySpec(&frequency, &format, &channels))
        return 0;
    const int frameSize = SDL_AUDIO_BITSIZE(format) / 8 * channels;
    return static_cast<double>(static_cast<int>(_chunk->alen) / frameSize) / frequency;
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
    _KXVoices.setMasterVolume(static_cast<float>(_KXMasterVolume) / MIX_MAX_VOLUME);
    if (_KXMixerIsOpen())
        Mix_Volume(-1, _KXMasterVolume);
}

void KXStopAllSounds() {
    if (_KXMixerIsOpen())
        Mix_HaltChannel(-1);
    _KXVoices.each([](_KXVoiceMixer::Voice& voice) {
        if (voice.group != KXSoundGroupMusic)
            voice.number = 0;
    });
}
