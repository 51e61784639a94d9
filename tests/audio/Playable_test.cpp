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

using namespace std::string_literals;

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

    /// An Ogg Vorbis file that claims another sample rate, with the sum that its first page is checked by.
    static std::string oggAt(std::string file, std::uint32_t rate) {
        const auto put = [&](std::size_t at, std::uint32_t value) {
            for (std::size_t i = 0; i < 4; ++i)
                file[at + i] = static_cast<char>(value >> 8 * i);
        };
        put(40, rate);
        put(22, 0);
        std::uint32_t sum = 0;
        for (std::size_t i = 0; i < 28U + 30U; ++i) { // a head, and a packet of 30 bytes
            sum ^= static_cast<std::uint32_t>(static_cast<unsigned char>(file[i])) << 24;
            for (int bit = 0; bit < 8; ++bit)
                sum = sum << 1 ^ (sum >> 31 ? 0x04C11DB7U : 0);
        }
        put(22, sum);
        return file;
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
    // The mixer would divide by some of these: no or too many channels, no or too high a frequency. And it
    // would make gigabytes of what has less than 1000 samples a second.
    const std::string &wave = this->wav, &aiffFile = this->aiff, none(2, '\0'),
                      flac = keptFile("slow_mono.flac");
    const std::tuple<const std::string&, std::size_t, std::string> formats[] = {
        {wave, 22, none},       {wave, 22, "\x09"},
        {wave, 24, none},       {wave, 26, "\x0F"},
        {wave, 24, "\xE7\x03"}, {aiffFile, 20, none},
        {aiffFile, 28, none},   {aiffFile, 28, "\x40\x08"},
        {aiffFile, 21, "\x09"}, {flac, 18, "\x00\x3E\x70"s},
        {aiffFile, 29, "\x13"}};
    for (const auto& [whole, at, bytes] : formats)
        EXPECT_FALSE(this->plays(std::string(whole).replace(at, bytes.size(), bytes)))
            << whole.substr(0, 4) << ' ' << at;
    // A byte that counts for nobody lies behind a chunk of odd length, and what it hides is found.
    const std::string odd("LIST\3\0\0\0abc\0", 12), oddName("NAME\0\0\0\3abc\0", 12);
    EXPECT_FALSE(this->plays(std::string(wave).replace(24, 2, "\xE7\x03").insert(12, odd)));
    EXPECT_FALSE(this->plays(std::string(aiffFile).replace(29, 1, "\x13").insert(12, oddName)));
    EXPECT_TRUE(this->plays(std::string(aiffFile).insert(12, oddName)));
    EXPECT_TRUE(this->plays(flac));
    EXPECT_FALSE(this->plays(this->oggAt(this->ogg, 999)));
    EXPECT_STREQ(KXError(), "");
    EXPECT_TRUE(this->plays(this->oggAt(this->ogg, 1000)));
    EXPECT_TRUE(this->plays(std::string(wave).replace(24, 2, "\xE8\x03")));
}

TYPED_TEST(Playable, BelievesNoLoopsThatAreNotThere) {
    // A chunk of 60 bytes has room for one loop, from sample 0 to sample 1000.
    const auto withLoops = [this](char count) {
        std::string chunk = std::string("smpl\x3C\0\0\0", 8) + std::string(60, '\0');
        chunk[8 + 28] = count;
        chunk[8 + 36 + 13] = 4;
        return std::string(this->wav).insert(36, chunk);
    };
    EXPECT_TRUE(this->plays(withLoops(1)));
    EXPECT_EQ(this->plays(withLoops(2)), (std::is_same_v<TypeParam, KXSound>)) << "a sound has none";
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
    EXPECT_EQ(KXInitAudio(0, 0, 0, 0), 0);
    std::filesystem::remove(_KXFilePath(this->file)); // nobody has it open now
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
