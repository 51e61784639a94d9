// Voices: what of them reaches the device, and what becomes of their numbers.

#include <Kobaltrix/KXVoice.h>

#include "audio/AudioTest.h"
#include "support/Allocations.h"
#include "support/System.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXMusic.h>
#include <Kobaltrix/KXRecording.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace {
constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr auto no = static_cast<float>(none);
constexpr KXRect meadow = {{0, 0}, {800, 600}};

struct Voices : AudioTest {
    ~Voices() override {
        KXSetSoundView(KXSoundView());
        KXResumeAllSounds();
        for (int group = 0; group < 16; ++group) {
            KXSetGroupVolume(KXSoundGroup(group), 1);
            KXResumeGroup(KXSoundGroup(group));
        }
    }
    /// A sound that stays at a quarter of the full loudness.
    static KXSamples level(std::size_t frames) {
        static const std::vector<float> values(44100, 0.25f);
        KXSamples samples;
        samples.values = values.data();
        samples.frames = frames;
        return samples;
    }
    static KXSoundOptions forEver() {
        KXSoundOptions options;
        options.loops = -1;
        return options;
    }
    /// Expects what is heard now, in thousandths of the level, when it has stopped gliding.
    void expectShares(int left, int right) {
        const Frame last = heard(1024).back();
        EXPECT_NEAR(last[0] * 1000 / quarter, left, 4);
        EXPECT_NEAR(last[1] * 1000 / quarter, right, 4);
    }
    static constexpr int quarter = 8192;
};

TEST_F(Voices, VolumesMultiplyAndPansAreCosines) {
    KXSound sound(level(44100));
    EXPECT_NEAR(sound.length(), 1, 0.001);
    const struct {
        float volume, group, pan;
        int master, left, right;
    } cases[] = {
        {1, 1, 0, 128, 1000, 1000},    {0.5f, 0.5f, 0, 64, 125, 125}, {1, 1, -1, 128, 1000, 0},
        {1, 1, 0.5f, 128, 707, 1000},  {1, 1, 7, 128, 0, 1000},       {3, -1, 0, 128, 0, 0},
        {no, no, no, 128, 1000, 1000},
    };
    for (const bool whilePlaying : {false, true})
        for (const auto& [volume, group, pan, master, left, right] : cases) {
            KXSoundOptions options = forEver();
            options.group = KXSoundGroupSpeech;
            KXVoice voice;
            if (whilePlaying)
                voice = sound.start(options);
            KXSetGroupVolume(KXSoundGroupSpeech, group);
            KXSetGroupVolume(KXSoundGroupOwn, 0); // another one
            KXSetSoundVolume(master);
            options.volume = volume;
            options.pan = pan;
            if (!whilePlaying)
                voice = sound.start(options);
            voice.setVolume(volume);
            voice.setPan(pan);
            expectShares(left, right);
            voice.stop();
            EXPECT_EQ(heard(1).back(), Frame{});
        }
}

TEST_F(Voices, AreHeardWhereTheyAreInTheView) {
    KXSound sound(level(44100));
    const struct {
        KXPoint place;
        KXSoundView view;
        int left, right;
    } cases[] = {
        {{400, 300}, {meadow, 1, 100}, 1000, 1000},      {{0, 300}, {meadow, 1, 100}, 1000, 0},
        {{800, 0}, {meadow, 0.5f, 100}, 707, 1000},      {{400, 650}, {meadow, 1, 100}, 500, 500},
        {{830, 640}, {meadow, 0, 100}, 500, 500},        {{400, -100}, {meadow, 1, 100}, 0, 0},
        {{1200, 300}, {meadow, 0, -1}, 500, 500},        {{400, 601}, {meadow, 1, 0}, 0, 0},
        {{no, 300}, {meadow, 1, 100}, 1000, 1000},       {{-900, 0}, {{{0, 0}, {0, 9}}, 1, 9}, 1000, 1000},
        {{0, 0}, {{{no, 0}, {9, 9}}, 1, 9}, 1000, 1000}, {{0, 300}, {meadow, no, no}, 1000, 383},
    };
    KXVoice moved = sound.start(forEver());
    for (const auto& [place, view, left, right] : cases) {
        SCOPED_TRACE(testing::Message() << place.x << ", " << place.y);
        KXSetSoundView(view);
        moved.setPlace(place);
        expectShares(left, right);
    }
    KXSetSoundView({meadow, 1, 100});
    moved.setPan(1);
    expectShares(0, 1000);
    moved.stop();
    moved = sound.startAt({0, 0}, forEver());
    expectShares(1000, 0);
    KXSetSoundView({{{-400, -300}, meadow.size}, 1, 100});
    expectShares(1000, 1000); // the camera went there
}

TEST_F(Voices, PitchChangesHeightAndTime) {
    KXSound tone(file.c_str());
    const double seconds = tone.length();
    EXPECT_TRUE(tone.play(0));
    const auto isHeard = [](const Frame& frame) { return frame != Frame{}; };
    const auto whole = [&](auto ended) {
        std::vector<Frame> frames = heardUntil(ended);
        frames.erase(frames.begin(), std::ranges::find_if(frames, isHeard));
        return frames;
    };
    const auto plain = whole([&] { return !tone.isPlaying(); });
    for (const float pitch : {1.0f, 2.0f, 0.5f, 1.5f}) {
        KXSoundOptions options;
        options.pitch = pitch;
        options.loops = 1;
        const KXVoice voice = tone.start(options);
        const auto frames = whole([&] { return !voice.isPlaying(); });
        const auto length =
            std::ranges::find_if(frames.rbegin(), frames.rend(), isHeard).base() - frames.begin();
        EXPECT_NEAR(static_cast<double>(length) / 44100, 2 * seconds / static_cast<double>(pitch), 0.001)
            << pitch;
        int rises = 0;
        for (std::ptrdiff_t i = 1; i < length; ++i)
            rises += frames[i - 1][0] < 0 && frames[i][0] >= 0;
        EXPECT_NEAR(rises * 44100.0 / static_cast<double>(length), 441 * static_cast<double>(pitch),
                    9 * static_cast<double>(pitch))
            << pitch;
        if (pitch == 1) {
            EXPECT_TRUE(std::equal(plain.begin(), plain.begin() + 2000, frames.begin())) << "bit by bit";
        }
    }
    KXVoice voice = tone.start(forEver());
    for (const float wild : {no, 0.0f, -3.0f, 1e30f, -1e30f}) {
        voice.setPitch(wild);
        heard(1);
        EXPECT_TRUE(voice.isPlaying()) << wild;
    }
}

TEST_F(Voices, FadeInStraightLinesAndCross) {
    KXSound sound(level(44100));
    KXSoundOptions options = forEver();
    options.fadeInMilliseconds = 100;
    KXVoice first;
    const auto rising = heardUntil([&, begun = 0]() mutable {
        if (begun++ == 0)
            first = sound.start(options);
        return first.position() > 0.15;
    });
    const auto begin = std::ranges::find_if(rising, [](const Frame& frame) { return frame[0] > 0; });
    for (const int frame : {441, 2205, 3969, 4500})
        EXPECT_NEAR(begin[frame][0], std::min(frame, 4410) * quarter / 4410, 8) << frame;

    KXVoice second = sound.start(options); // one comes while the other goes: together as loud as one
    first.stop(100);
    const auto crossing = heardUntil([&] { return second.position() > 0.15; });
    const auto [least, most] = std::ranges::minmax(crossing, {}, [](const Frame& frame) { return frame[0]; });
    EXPECT_TRUE(least[0] > quarter * 7 / 10 && most[0] < quarter * 13 / 10) << least[0] << ' ' << most[0];
    EXPECT_TRUE(!first.isPlaying() && second.isPlaying());
    expectShares(1000, 1000);
    second.stop(-7);
    EXPECT_FALSE(second.isPlaying());
    for (const int huge : {std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        options.fadeInMilliseconds = huge;
        second = sound.start(options);
        second.stop(huge);
        second.pause();
        second.stop(100);
        EXPECT_FALSE(second.isPlaying()) << "what is halted does not fade";
    }
}

TEST_F(Voices, HaltTogetherAndKeepTheirPlaces) {
    KXSound sound(level(44100));
    KXSoundOptions options = forEver();
    options.group = KXSoundGroupOwn;
    KXVoice voice = sound.start(options);
    const struct {
        void (*halt)(KXVoice&);
        void (*resume)(KXVoice&);
    } ways[] = {
        {[](KXVoice& it) { it.pause(); }, [](KXVoice& it) { it.resume(); }},
        {[](KXVoice&) { KXPauseGroup(KXSoundGroupOwn); }, [](KXVoice&) { KXResumeGroup(KXSoundGroupOwn); }},
        {[](KXVoice&) { KXPauseAllSounds(); }, [](KXVoice&) { KXResumeAllSounds(); }},
    };
    for (const auto& [halt, resume] : ways) {
        heard(2000);
        halt(voice);
        const double place = voice.position();
        expectShares(0, 0);
        EXPECT_TRUE(voice.isPlaying() && place > 0 && voice.position() == place);
        for (const auto& other : ways)
            if (other.resume != resume)
                other.resume(voice);
        expectShares(0, 0);
        resume(voice);
        expectShares(1000, 1000);
        EXPECT_NE(voice.position(), place);
    }
    KXPauseGroup(KXSoundGroupOwn);
    const KXVoice waiting = sound.start(options), click = sound.start(forEver());
    expectShares(1000, 1000);
    EXPECT_TRUE(waiting.isPlaying() && waiting.position() == 0);
    KXStopGroup(KXSoundGroupOwn);
    EXPECT_FALSE(waiting.isPlaying() || voice.isPlaying());
    EXPECT_TRUE(click.isPlaying());
    KXPauseAllSounds();
    EXPECT_TRUE(sound.play(-1));
    expectShares(0, 0);
    KXResumeAllSounds();
    expectShares(2000, 2000);
    KXStopAllSounds();
    expectShares(0, 0);
}

TEST_F(Voices, SeekAndEnd) {
    KXSound sound(level(44100));
    KXSoundOptions options;
    const struct {
        double to;
        bool plays;
        double at;
    } cases[] = {{0.5, true, 0.5}, {-1, true, 0}, {none, true, 0}, {1e300, false, 0}, {1, false, 0}};
    for (const auto& [to, plays, at] : cases)
        for (const bool start : {false, true}) {
            KXPauseGroup(options.group);
            options.startSeconds = start ? to : 0.2;
            KXVoice voice = sound.start(options);
            if (!start)
                voice.seek(to);
            if (plays) {
                EXPECT_NEAR(voice.position(), at, 1e-4) << to;
            }
            KXResumeGroup(options.group);
            heard(1024);
            EXPECT_EQ(voice.isPlaying(), plays) << to;
            voice.stop();
        }
}

TEST_F(Voices, NumbersNeverStandForAnother) {
    KXSound sound(level(44100));
    std::vector<KXVoice> voices;
    for (int i = 0; i < 64; ++i)
        EXPECT_TRUE(voices.emplace_back(sound.start(forEver())).isPlaying());
    EXPECT_FALSE(sound.start().isPlaying() || KXVoice().isPlaying());
    KXVoice old = voices[7];
    voices[7].stop();
    const KXVoice heir = sound.start(forEver());
    old.stop();
    old.setVolume(0);
    EXPECT_TRUE(heir.isPlaying() && !old.isPlaying() && old.position() == 0);
    {
        KXSound other(level(100));
        KXStopGroup(KXSoundGroupEffects);
        old = other.start(forEver());
        voices[0] = sound.start(forEver());
    }
    EXPECT_TRUE(!old.isPlaying() && voices[0].isPlaying()) << "a sound takes its own with it";
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_FALSE(voices[0].isPlaying());
    EXPECT_TRUE(sound.start(forEver()).isPlaying());
    KXDeInit();
    EXPECT_TRUE(!sound.start().isPlaying() && sound.length() == 0);
    EXPECT_EQ(KXInit(), -1);
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_TRUE(sound.start().isPlaying()) << "made in memory, and made again";
}

TEST_F(Voices, AskForNoMemoryOnceOneWasHeard) {
    KXSound sound(level(44100));
    sound.start().stop();
    const auto play = [&] {
        for (int i = 0; i < 200; ++i) {
            KXSetSoundView({meadow, 1, 100});
            KXVoice voice = sound.startAt({400, 300}, forEver());
            voice.setPitch(1.5f);
            voice.setPlace({100, 100});
            KXSetGroupVolume(KXSoundGroupEffects, 0.5f);
            EXPECT_TRUE(voice.isPlaying());
            voice.stop(i % 20 == 0 ? 20 : 0);
        }
    };
    EXPECT_EQ(allocationsOf(play), 0U);
}

TEST_F(Voices, SoundTheSameInEveryFormat) {
    KXSound sound(level(44100));
    for (const int format : {0x0008, 0x8008, 0x0010, 0x8010, 0x1010, 0x9010, 0x8020, 0x9020, 0x8120, 0x9120})
        for (const int channels : {1, 2, 6}) {
            ASSERT_EQ(KXInitAudio(44100, static_cast<unsigned short>(format), channels, 512), -1)
                << KXError();
            KXSoundOptions options = forEver();
            options.volume = 0.5f;
            options.pan = channels == 2 ? 1.0f : 0.0f;
            for (int i = 0; i < 3; ++i)
                sound.start(options);
            static std::atomic<int> left, right, mixed;
            static int kind, sides;
            kind = format, sides = channels, mixed = 0;
            Mix_SetPostMix(
                [](void*, Uint8* bytes, int) {
                    SDL_AudioCVT whole = {};
                    SDL_BuildAudioCVT(&whole, static_cast<SDL_AudioFormat>(kind), 1, 44100, AUDIO_S16SYS, 1,
                                      44100);
                    Uint8 frame[64];
                    whole.buf = frame;
                    whole.len = sides * SDL_AUDIO_BITSIZE(kind) / 8;
                    std::copy_n(bytes, whole.len, frame);
                    SDL_ConvertAudio(&whole);
                    const auto* const values = reinterpret_cast<const Sint16*>(frame);
                    left = values[0], right = values[std::min(sides, 2) - 1];
                    ++mixed;
                },
                nullptr);
            while (mixed < 3)
                std::this_thread::yield();
            Mix_SetPostMix(nullptr, nullptr);
            EXPECT_NEAR(left, channels == 2 ? 0 : quarter * 3 / 2, 300)
                << std::hex << format << ' ' << channels;
            EXPECT_NEAR(right, quarter * 3 / 2, 300) << std::hex << format << ' ' << channels;
        }
}

TEST_F(Voices, SoundsFromMemoryAreRefusedLikeFiles) {
    const auto refused = [](auto make) {
        try {
            make();
            return false;
        } catch (const std::bad_alloc&) {
            return true;
        }
    };
    EXPECT_TRUE(KXSound(wav.data(), wav.size()).start().isPlaying());
    EXPECT_TRUE(KXMusic(ogg.data(), ogg.size()).play(1));
    for (const std::string& bytes : {std::string(), wav.substr(0, 30), std::string(5000, 'x')})
        EXPECT_TRUE(refused([&] { KXSound(bytes.data(), bytes.size()); }) &&
                    refused([&] { KXMusic(bytes.data(), bytes.size()); }));
    EXPECT_TRUE(refused([] { KXSound(nullptr, 8); }) && refused([] { KXMusic(nullptr, 8); }));
    const float wild[] = {no, 5, -5, 0};
    const struct {
        const float* values;
        std::size_t frames;
        int channels, frequency;
        bool isGood;
    } cases[] = {{wild, 4, 1, 44100, true},        {wild, 2, 2, 1000, true},
                 {nullptr, 4, 1, 44100, false},    {wild, 0, 1, 44100, false},
                 {wild, 1, 0, 44100, false},       {wild, 1, 9, 44100, false},
                 {wild, 1, 1, 999, false},         {wild, 1, 1, -44100, false},
                 {wild, 1 << 30, 1, 44100, false}, {wild, ~std::size_t{0}, 8, 44100, false}};
    for (const auto& [values, frames, channels, frequency, isGood] : cases) {
        KXSamples samples;
        samples.values = values, samples.frames = frames;
        samples.channels = channels, samples.frequency = frequency;
        EXPECT_EQ(refused([&] { KXSound sound(samples); }), !isGood) << frames << ' ' << channels;
        EXPECT_TRUE(isGood || *KXError());
    }
}

TEST_F(Voices, GoOnInSilenceWithoutADevice) {
    EXPECT_EQ(KXAudioIsSilent(), 0);
    const std::string driver = getenv("SDL_AUDIODRIVER");
    setVariable("SDL_AUDIODRIVER", "no such driver");
    EXPECT_EQ(KXInitAudioOrSilence(), -1);
    EXPECT_TRUE(KXAudioIsSilent() && std::string(KXError()).starts_with("Couldn't initialize SDL: "));
    KXSound sound(level(30000));
    const KXVoice voice = sound.start();
    double furthest = 0;
    while (voice.isPlaying())
        furthest = std::max(furthest, voice.position());
    EXPECT_GT(furthest, 0);
    EXPECT_EQ(KXInitAudio(), 0) << "the described call fails as ever";
    setVariable("SDL_AUDIODRIVER", driver);
    KXAudioOptions wrong;
    wrong.channels = 0;
    EXPECT_TRUE(KXInitAudioOrSilence(wrong) == 0 && KXAudioIsSilent() == 0);
    EXPECT_TRUE(KXInitAudioOrSilence() == -1 && KXAudioIsSilent() == 0 && sound.start().isPlaying());
}

TEST_F(Voices, AReplayAnswersAsItsRecordingDid) {
    const std::string path = folder.write("recording", "");
    KXSound sound(level(44100));
    const auto asked = [&sound] {
        const KXVoice voice = sound.start(), lost = sound.start();
        return std::array{voice.isPlaying() ? 1.0 : 0.0, lost.isPlaying() ? 1.0 : 0.0,
                          sound.start().position()};
    };
    ASSERT_TRUE(KXBeginRecording(path.c_str())) << KXError();
    const auto recorded = asked();
    KXEndRecording();
    std::vector<KXVoice> many;
    for (int i = 0; i < 80; ++i)
        many.push_back(sound.start(forEver())); // no room in the replay
    ASSERT_TRUE(KXBeginReplay(path.c_str())) << KXError();
    EXPECT_EQ(asked(), recorded);
    EXPECT_EQ(KXRecordingStateNow(), KXRecordingReplays) << KXError();
    KXEndRecording();
}
} // namespace
