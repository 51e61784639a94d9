#include <Kobaltrix/KXMusic.h>

#include "audio/AudioDevice.h"
#include "audio/MusicStream.h"
#include "audio/VoiceMixer.h"
#include "audio/WaveFile.h"
#include "core/ground/ErrorSlot.h"
#include "core/ground/Tape.h"
#include "platform/FilePath.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <string>
#include <utility>

static constinit _KXMusicStream& stream = _KXMusicPlayed;

struct KXMusic::Loader final : _KXMixerObject {
    Loader(KXMusic& owner, _KXAudioSource file) : music(owner), source(std::move(file)) {}
    void load() override;
    void unload() override;

    KXMusic& music;
    _KXAudioSource source;
};

// The mixer knows some kinds of files by their names only. It closes what it is given.
void KXMusic::Loader::load() {
    SDL_RWops* const file = source.open(_KXAudioUse::Music);
    if (file && source.path.empty()) {
        music._music = Mix_LoadMUS_RW(file, 1);
    } else if (file) {
        SDL_RWclose(file);
        music._music = Mix_LoadMUS(_KXPathForLibraries(source.path).c_str());
    }
}

void KXMusic::Loader::unload() {
    if (stream.next == &music)
        stream.next = nullptr;
    if (!music._music)
        return;
    Mix_HaltMusic();
    Mix_FreeMusic(music._music);
    if (stream.playing == music._music)
        stream.playing = nullptr;
    music._music = nullptr;
}

KXMusic::KXMusic() { throw std::bad_alloc(); }

void KXMusic::_load(std::unique_ptr<Loader> loader) {
    _music = nullptr;
    _loader = std::move(loader);
    if (_KXMixerIsOpen())
        _loader->load();
    if (!_music)
        throw std::bad_alloc();
}

KXMusic::KXMusic(const char* path) {
    if (!path || !*path)
        throw std::bad_alloc();
    _load(std::make_unique<Loader>(*this, _KXAudioSource{path, ""}));
}

KXMusic::KXMusic(const void* file, std::size_t size) {
    if (!file)
        throw std::bad_alloc();
    _load(std::make_unique<Loader>(*this,
                                   _KXAudioSource{"", std::string(static_cast<const char*>(file), size)}));
}

KXMusic::~KXMusic() { _loader->unload(); }

static bool mixerIsOpen() {
    if (_KXMixerIsOpen())
        return true;
    Mix_SetError("Audio device hasn't been opened");
    return false;
}

// The mixer's readers of files make what they get a number of samples or of milliseconds, whatever it is.
static bool hasPlace(Mix_Music* piece, double seconds) {
    constexpr double longest = 1e6; // where the file does not tell
    const double length = Mix_MusicDuration(piece);
    if (seconds == 0 || (seconds > 0 && seconds < (length > 0 ? length : longest)))
        return true;
    Mix_SetError("no such place");
    return false;
}

// Halting comes first: the mixer would wait for the end of a fade.
bool KXMusic::_begin(const KXMusicOptions& options) {
    stream.next = nullptr;
    stream.isPaused = false;
    Mix_HaltMusic();
    const double start = std::isnan(options.startSeconds) ? 0 : std::max(options.startSeconds, 0.0);
    const bool plays = mixerIsOpen() && (!_music || hasPlace(_music, start)) &&
                       Mix_FadeInMusicPos(_music, std::max(options.loops, -1),
                                          std::max(options.fadeInMilliseconds, 0), start) == 0;
    if (plays) {
        stream.playing = _music;
        _KXVoices.setMusicPlace(start);
        stream.apply();
    }
    return plays;
}

static bool reportUnless(bool plays) {
    if (_KXAnswerTo(_KXQuestion::Sound, [plays] { return plays; }))
        return true;
    _KXReportError("Unable to play music: %s", SDL_GetError());
    return false;
}

bool KXMusic::play(int loops) {
    KXMusicOptions options;
    options.loops = loops;
    return reportUnless(_begin(options));
}

bool KXMusic::start(const KXMusicOptions& options) {
    const bool waits = options.fadeOutMilliseconds > 0 && _music && Mix_PlayingMusic() && !Mix_PausedMusic();
    if (!waits)
        return reportUnless(_begin(options));
    Mix_FadeOutMusic(options.fadeOutMilliseconds);
    stream.next = this;
    stream.options = options;
    return reportUnless(true);
}

void KXMusic::_tend() {
    if (stream.next && !Mix_PlayingMusic() && !stream.next->_begin(stream.options))
        _KXReportError("Unable to play music: %s", SDL_GetError());
}

void KXMusic::stop() { stream.stop(0); }

void KXMusic::stop(int fadeOutMilliseconds) { stream.stop(fadeOutMilliseconds); }

void KXMusic::pause() {
    stream.isPaused = true;
    stream.apply();
}

void KXMusic::resume() {
    stream.isPaused = false;
    stream.apply();
}

bool KXMusic::isPlaying() const {
    return _KXAnswerTo(_KXQuestion::Sound, [] { return stream.next != nullptr || Mix_PlayingMusic() != 0; });
}

void KXMusic::setVolume(int volume) {
    stream.volume = std::clamp(volume, 0, MIX_MAX_VOLUME);
    stream.apply();
}

int KXMusic::volume() const { return Mix_VolumeMusic(-1); }

bool KXMusic::seek(double seconds) {
    const bool isThere =
        mixerIsOpen() && hasPlace(stream.playing, seconds) && Mix_SetMusicPosition(seconds) == 0;
    if (isThere)
        _KXVoices.setMusicPlace(seconds);
    if (_KXAnswerTo(_KXQuestion::Sound, [isThere] { return isThere; }))
        return true;
    _KXReportError("Unable to seek in music: %s", SDL_GetError());
    return false;
}

// Behind its end, or that of the part that the file says is repeated, it has gone round.
static double placeInPiece(double place) {
    const double begin = std::max(Mix_GetMusicLoopStartTime(stream.playing), 0.0);
    const double part = Mix_GetMusicLoopLengthTime(stream.playing);
    const double length = part > 0 ? part : Mix_MusicDuration(stream.playing) - begin;
    return length > 0 && place >= begin + length ? begin + std::fmod(place - begin, length) : place;
}

double KXMusic::position() const {
    return _KXSecondsOfMixer([] { return Mix_PlayingMusic() ? placeInPiece(_KXVoices.musicPlace()) : 0; });
}

double KXMusic::length() const {
    return _KXSecondsOfMixer([this] { return _music ? Mix_MusicDuration(_music) : 0; });
}
