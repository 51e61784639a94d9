#include "audio/VoiceMixer.h"

#include "audio/SampleFormat.h"

#include <SDL_mixer.h>

#include <algorithm>
#include <cmath>
#include <iterator>

/// A number within a range; @a otherwise for what is not a number.
static float within(float value, float least, float most, float otherwise) {
    return std::isnan(value) ? otherwise : std::clamp(value, least, most);
}

float _KXVoiceVolume(float volume) { return within(volume, 0, 1, 1); }
float _KXVoicePitch(float pitch) { return within(pitch, 1.0f / 16, 16, 1); }
float _KXVoicePan(float pan) { return within(pan, -1, 1, 0); }

/// From one sample to the next a straight line is drawn; behind the last one the sound goes on with the
/// first, or stays.
template<class Format>
static bool mixVoice(_KXVoiceMixer::Voice& voice, const float (&wanted)[2], float glide, Uint8* out,
                     int frames, int channels) {
    const std::size_t frameSize = Format::size * static_cast<std::size_t>(channels);
    const auto length = static_cast<double>(voice.frames);
    for (int i = 0; i < frames; ++i, out += frameSize) {
        for (; voice.at >= length; voice.at -= length)
            if (voice.repeats == 0)
                return false;
            else if (voice.repeats > 0)
                --voice.repeats;
        const auto frame = static_cast<std::int64_t>(voice.at);
        const auto between = static_cast<float>(voice.at - static_cast<double>(frame));
        const std::int64_t next = frame + 1 < voice.frames ? frame + 1 : voice.repeats != 0 ? 0 : frame;
        for (const int side : {0, 1})
            voice.now[side] += std::clamp(wanted[side] - voice.now[side], -glide, glide);
        const Uint8* const from = voice.chunk->abuf + static_cast<std::size_t>(frame) * frameSize;
        const Uint8* const to = voice.chunk->abuf + static_cast<std::size_t>(next) * frameSize;
        const float middle = (voice.now[0] + voice.now[1]) / 2;
        for (int channel = 0; channel < channels; ++channel) {
            const std::size_t at = static_cast<std::size_t>(channel) * Format::size;
            const float loudness = channel < 2 && channels > 1 ? voice.now[channel] : middle;
            const float sample = Format::read(from + at);
            const float value = sample + (Format::read(to + at) - sample) * between;
            Format::write(out + at, Format::read(out + at) + value * loudness * voice.fade);
        }
        voice.at += static_cast<double>(voice.pitch);
        voice.fade = std::min(voice.fade + voice.fadePerFrame, 1.0f);
        if (voice.fade <= 0)
            return false;
    }
    return true;
}

template<class Stored>
static auto mixingOf(bool isSwapped) {
    return isSwapped ? mixVoice<_KXSampleFormat<Stored, true>> : mixVoice<_KXSampleFormat<Stored, false>>;
}

bool _KXVoiceMixer::attach() {
    Uint16 format = 0;
    if (_isAttached)
        return true;
    if (!Mix_QuerySpec(&_frequency, &format, &_channels))
        return false;
    const bool isSwapped = (SDL_AUDIO_ISBIGENDIAN(format) != 0) == (SDL_BYTEORDER == SDL_LIL_ENDIAN);
    const bool isSigned = SDL_AUDIO_ISSIGNED(format) != 0;
    const int bits = SDL_AUDIO_BITSIZE(format);
    _frameSize = bits / 8 * _channels;
    _mixing = SDL_AUDIO_ISFLOAT(format) ? mixingOf<float>(isSwapped)
              : bits == 32              ? mixingOf<std::int32_t>(isSwapped)
              : bits == 16 ? isSigned ? mixingOf<std::int16_t>(isSwapped) : mixingOf<std::uint16_t>(isSwapped)
              : isSigned ? mixingOf<std::int8_t>(false)
                           : mixingOf<std::uint8_t>(false);
    return _isAttached = Mix_RegisterEffect(MIX_CHANNEL_POST, mix, detach, this) != 0;
}

// The mixer calls it when it closes, whoever closes it.
void _KXVoiceMixer::detach(int, void* mixer) {
    auto& self = *static_cast<_KXVoiceMixer*>(mixer);
    self.each([](Voice& voice) { voice.number = 0; });
    self._isAttached = false;
    self._frequency = 0;
}

std::uint32_t _KXVoiceMixer::begin(const Mix_Chunk* chunk, const KXSoundOptions& options,
                                   const KXPoint* place) {
    if (!attach())
        return 0;
    const std::scoped_lock lock(_lock);
    Voice* const voice =
        std::find_if(std::begin(_voices), std::end(_voices), [](const Voice& it) { return it.number == 0; });
    const auto frames = static_cast<std::int64_t>(chunk->alen) / _frameSize;
    if (voice == std::end(_voices) || frames == 0)
        return 0;
    *voice = Voice();
    voice->chunk = chunk;
    voice->frames = frames;
    seek(*voice, options.startSeconds);
    voice->repeats = options.loops;
    voice->volume = _KXVoiceVolume(options.volume);
    voice->pitch = _KXVoicePitch(options.pitch);
    voice->pan = _KXVoicePan(options.pan);
    voice->group = index(options.group);
    if (place)
        voice->place = *place;
    voice->hasPlace = place != nullptr;
    if (options.fadeInMilliseconds > 0) {
        voice->fade = 0;
        voice->fadePerFrame = fadeOf(options.fadeInMilliseconds);
    }
    findLoudness(*voice, voice->now);
    _begun = _begun % (~0U / most) + 1;
    voice->number = _begun * most + static_cast<std::uint32_t>(voice - _voices);
    return voice->number;
}

void _KXVoiceMixer::forget(const Mix_Chunk* chunk) {
    each([chunk](Voice& voice) {
        if (voice.chunk == chunk)
            voice.number = 0;
    });
}

float _KXVoiceMixer::fadeOf(int milliseconds) const {
    return 1000.0f / (static_cast<float>(milliseconds) * static_cast<float>(_frequency));
}

void _KXVoiceMixer::stop(Voice& voice, int fadeOutMilliseconds) const {
    if (fadeOutMilliseconds <= 0 || isHalted(voice))
        voice.number = 0;
    else
        voice.fadePerFrame = -fadeOf(fadeOutMilliseconds);
}

void _KXVoiceMixer::seek(Voice& voice, double seconds) const {
    const double frame = std::isnan(seconds) ? 0 : seconds * _frequency;
    voice.at = std::clamp(frame, 0.0, static_cast<double>(voice.frames));
}

bool _KXVoiceMixer::isHalted(const Voice& voice) const {
    return voice.isPaused || _isPaused || _groups[voice.group].isPaused;
}

void _KXVoiceMixer::setView(const KXSoundView& view) {
    const std::scoped_lock lock(_lock);
    _view = view;
    _view.spread = within(view.spread, 0, 1, KXSoundView().spread);
    if (!(view.reach >= 0))
        _view.reach = std::max(view.area.size.width, view.area.size.height);
}

void _KXVoiceMixer::setMasterVolume(float volume) {
    const std::scoped_lock lock(_lock);
    _masterVolume = volume;
}

void _KXVoiceMixer::pauseAll(bool isPaused) {
    const std::scoped_lock lock(_lock);
    _isPaused = isPaused;
}

bool _KXVoiceMixer::isAllPaused() {
    const std::scoped_lock lock(_lock);
    return _isPaused;
}

/// How far a value lies outside of a range.
static float beyond(float value, float from, float size) {
    return std::max({from - value, value - (from + size), 0.0f});
}

void _KXVoiceMixer::findLoudness(const Voice& voice, float (&sides)[2]) const {
    constexpr float quarterTurn = 1.5707963f;
    const auto& [origin, size] = _view.area;
    float pan = voice.pan, loudness = voice.volume * _groups[voice.group].volume;
    if (voice.group != KXSoundGroupMusic)
        loudness *= _masterVolume;
    const float x = beyond(voice.place.x, origin.x, size.width);
    const float y = beyond(voice.place.y, origin.y, size.height);
    if (voice.hasPlace && size.width > 0 && size.height > 0 && std::isfinite(x) && std::isfinite(y)) {
        const float across = (voice.place.x - origin.x) / size.width * 2 - 1;
        pan = std::clamp(across, -1.0f, 1.0f) * _view.spread;
        const float distance = std::hypot(x, y);
        loudness *= distance < _view.reach ? 1 - distance / _view.reach : distance > 0 ? 0.0f : 1.0f;
    } else if (voice.hasPlace) {
        pan = 0;
    }
    sides[0] = loudness * std::max(std::cos(std::max(pan, 0.0f) * quarterTurn), 0.0f);
    sides[1] = loudness * std::max(std::cos(std::min(pan, 0.0f) * quarterTurn), 0.0f);
}

void _KXVoiceMixer::setMusicPlace(double seconds) {
    attach();
    const std::scoped_lock lock(_lock);
    _musicPlace = seconds;
}

void _KXVoiceMixer::pauseMusic(bool isPaused) {
    const std::scoped_lock lock(_lock);
    _isMusicPaused = isPaused;
}

double _KXVoiceMixer::musicPlace() {
    const std::scoped_lock lock(_lock);
    return _musicPlace;
}

void _KXVoiceMixer::mix(int, void* stream, int length, void* mixer) {
    auto& self = *static_cast<_KXVoiceMixer*>(mixer);
    const int frames = length / self._frameSize;
    const float glide = 100.0f / static_cast<float>(self._frequency); // all the way within 10 ms
    const std::scoped_lock lock(self._lock);
    if (!self._isMusicPaused)
        self._musicPlace += static_cast<double>(frames) / self._frequency;
    for (Voice& voice : self._voices) {
        if (voice.number == 0 || self.isHalted(voice))
            continue;
        float wanted[2];
        self.findLoudness(voice, wanted);
        if (!self._mixing(voice, wanted, glide, static_cast<Uint8*>(stream), frames, self._channels))
            voice.number = 0;
    }
}
