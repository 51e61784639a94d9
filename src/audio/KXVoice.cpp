#include <Kobaltrix/KXVoice.h>

#include "audio/AudioDevice.h"
#include "audio/MusicStream.h"
#include "audio/VoiceMixer.h"
#include "core/ground/Tape.h"

#include <SDL_mixer.h>

using Voice = _KXVoiceMixer::Voice;
using Group = _KXVoiceMixer::Group;

void KXVoice::stop(int fadeOutMilliseconds) {
    _KXVoices.with(_number, [=](Voice& voice) { _KXVoices.stop(voice, fadeOutMilliseconds); });
}

void KXVoice::pause() {
    _KXVoices.with(_number, [](Voice& voice) { voice.isPaused = true; });
}

void KXVoice::resume() {
    _KXVoices.with(_number, [](Voice& voice) { voice.isPaused = false; });
}

void KXVoice::setVolume(float volume) {
    _KXVoices.with(_number, [=](Voice& voice) { voice.volume = _KXVoiceVolume(volume); });
}

void KXVoice::setPitch(float pitch) {
    _KXVoices.with(_number, [=](Voice& voice) { voice.pitch = _KXVoicePitch(pitch); });
}

void KXVoice::setPan(float pan) {
    _KXVoices.with(_number, [=](Voice& voice) {
        voice.pan = _KXVoicePan(pan);
        voice.hasPlace = false;
    });
}

void KXVoice::setPlace(KXPoint place) {
    _KXVoices.with(_number, [=](Voice& voice) {
        voice.place = place;
        voice.hasPlace = true;
    });
}

void KXVoice::seek(double seconds) {
    _KXVoices.with(_number, [=](Voice& voice) { _KXVoices.seek(voice, seconds); });
}

double KXVoice::position() const {
    return _KXSecondsOfMixer([this] {
        double seconds = 0;
        _KXVoices.with(_number, [&](const Voice& voice) { seconds = voice.at / _KXVoices.frequency(); });
        return seconds;
    });
}

bool KXVoice::isPlaying() const {
    return _KXAnswerTo(_KXQuestion::Sound, [this] { return _KXVoices.with(_number, [](Voice&) {}); });
}

void KXSetSoundView(const KXSoundView& view) { _KXVoices.setView(view); }

void KXSetGroupVolume(KXSoundGroup group, float volume) {
    _KXVoices.withGroup(group, [=](Group& it) { it.volume = _KXVoiceVolume(volume); });
    _KXMusicPlayed.apply();
}

float KXGroupVolume(KXSoundGroup group) {
    float volume = 0;
    _KXVoices.withGroup(group, [&](const Group& it) { volume = it.volume; });
    return volume;
}

static void haltGroup(KXSoundGroup group, bool isPaused) {
    _KXVoices.withGroup(group, [=](Group& it) { it.isPaused = isPaused; });
    _KXMusicPlayed.apply();
}

void KXPauseGroup(KXSoundGroup group) { haltGroup(group, true); }

void KXResumeGroup(KXSoundGroup group) { haltGroup(group, false); }

void KXStopGroup(KXSoundGroup group, int fadeOutMilliseconds) {
    _KXVoices.each([=](Voice& voice) {
        if (voice.group == _KXVoiceMixer::index(group))
            _KXVoices.stop(voice, fadeOutMilliseconds);
    });
    if (group == KXSoundGroupMusic)
        _KXMusicPlayed.stop(fadeOutMilliseconds);
}

static void haltAll(bool isPaused) {
    _KXVoices.pauseAll(isPaused);
    if (_KXMixerIsOpen())
        isPaused ? Mix_Pause(-1) : Mix_Resume(-1);
    _KXMusicPlayed.apply();
}

void KXPauseAllSounds() { haltAll(true); }

void KXResumeAllSounds() { haltAll(false); }
