// What holds for sounds and for music: which files they take, and how they outlive the device.

#include "audio/AudioTest.h"

#include <Kobaltrix/KXMusic.h>

#include <memory>
#include <new>
#include <tuple>

#ifdef KOBALTRIX_SANITIZE
#include <sanitizer/lsan_interface.h>

extern "C" const char* __asan_default_options();

// A damaged file has the mixer ask for more memory than there is: it must be told so, as without a sanitizer.
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }
#endif

namespace {
template<class Kind>
struct Playable : AudioTest {
    /// Loads a file and plays it for a moment. @return whether it could be loaded.
    static bool playsFile(const char* path) {
        try {
            Kind(path).play(-1);
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }
    bool plays(const std::string& content) const { return playsFile(folder.write("other", content).c_str()); }

    /// Uses everything that could reach for the mixer, which is closed.
    static void useWithoutDevice(Kind& playable) {
        EXPECT_FALSE(playable.play(-1) || playable.isPlaying());
        playable.stop();
        playable.setVolume(50);
        if constexpr (std::is_same_v<Kind, KXMusic>) {
            EXPECT_STREQ(KXError(), "Unable to play music: Audio device hasn't been opened");
            EXPECT_EQ(playable.volume(), 50);
            playable.pause();
            playable.resume();
        } else {
            EXPECT_EQ(playable.volume(), 0);
            playable.setPanning(1, 2);
            playable.setDistance(3);
        }
        KXSetMixingChannels(3);
        KXSetSoundVolume(100);
        KXStopAllSounds();
    }

    const std::string aiff = keptFile("44_mono.aiff");
};

using Kinds = testing::Types<KXSound, KXMusic>;
TYPED_TEST_SUITE(Playable, Kinds);

TYPED_TEST(Playable, RefusesWhatIsNoSound) {
    EXPECT_THROW(TypeParam playable, std::bad_alloc);
    for (const char* path : {static_cast<const char*>(nullptr), "", this->folder.path().c_str(), "missing"})
        EXPECT_FALSE(this->playsFile(path)) << (path ? path : "null");
    for (const std::string& content : {std::string(), std::string(5000, '\x5A'), "OggS" + this->wav})
        EXPECT_FALSE(this->plays(content)) << content.substr(0, 12);
    // The mixer would divide by some of these: no or too many channels, no or too high a frequency.
    const std::string &wave = this->wav, &aiffFile = this->aiff, none(2, '\0');
    const std::tuple<const std::string&, std::size_t, std::string> formats[] = {
        {wave, 22, none},     {wave, 22, "\x09"},     {wave, 24, none},     {wave, 26, "\x0F"},
        {aiffFile, 20, none}, {aiffFile, 21, "\x09"}, {aiffFile, 28, none}, {aiffFile, 29, "\x13"}};
    for (const auto& [whole, at, bytes] : formats)
        EXPECT_FALSE(this->plays(std::string(whole).replace(at, bytes.size(), bytes)))
            << whole.substr(0, 4) << ' ' << at;
    EXPECT_STREQ(KXError(), "");
}

TYPED_TEST(Playable, SurvivesDamagedFiles) {
#ifdef KOBALTRIX_SANITIZE
    // The mixer keeps what it has taken for an AIFF file whose sizes are wrong; no report names more than
    // SDL.
    const __lsan::ScopedDisabler ignored;
#endif
    int refused = 0;
    for (const std::string& whole : {this->wav, this->ogg, this->aiff}) {
        for (std::size_t at = 0; at < 64; ++at) { // the head, where every byte counts
            std::string damaged = whole;
            damaged[at] = static_cast<char>(damaged[at] ^ 0xFF);
            refused += !this->plays(damaged);
        }
        for (std::size_t cut = 0; cut < whole.size(); cut += whole.size() / 50)
            refused += !this->plays(whole.substr(0, cut));
    }
    EXPECT_GT(refused, 60);
}

TYPED_TEST(Playable, NeedsAnOpenDeviceAndOutlivesIt) {
    auto playing = std::make_unique<TypeParam>(this->file.c_str());
    auto other = std::make_unique<TypeParam>(this->file.c_str());
    EXPECT_TRUE(other->play(-1) && playing->play(-1));
    KXDeInit();
    this->useWithoutDevice(*playing);
    this->useWithoutDevice(*other);
    playing.reset();
    EXPECT_EQ(KXInit(), -1);
    EXPECT_FALSE(this->playsFile(this->file.c_str())) << "a device is opened by KXInitAudio only";
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_TRUE(!other->isPlaying() && other->play(-1));
    std::filesystem::remove(this->file);
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_FALSE(other->play(-1)) << "its file has gone";
    EXPECT_EQ(KXInitAudio(0, 0, 0, 0), 0);
    this->useWithoutDevice(*other);
    this->folder.write("tone.wav", this->wav);
    EXPECT_EQ(KXInitAudio(), -1);
    EXPECT_TRUE(other->play(-1)) << "and is back";
    KXDeInit();
}
} // namespace
