#pragma once

#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXAudio.h>
#include <Kobaltrix/KXCore.h>
#include <Kobaltrix/KXSound.h>

#include <gtest/gtest.h>

#include <SDL_mixer.h>

#include <array>
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

/// The values of the left and the right side at one moment.
using Frame = std::array<std::int16_t, 2>;

/// A file that is kept in tests/audio/files. All but the slow one, which has 1000
/// samples a second and knows no other than 1000, hold a tone of 441 Hz that rises to 8000, in whole periods.
inline std::string keptFile(const std::string& name) { return contentOf(SOUND_FILES "/" + name); }

/// The library with an open device, files to play, and what the mixer makes of them.
struct AudioTest : testing::Test {
    AudioTest() {
        EXPECT_EQ(KXInit(), -1) << KXError();
        EXPECT_EQ(KXInitAudio(), -1) << KXError();
    }
    ~AudioTest() override {
        KXDeInit();
        KXSetSoundVolume(128);
    }

    /// What the mixer gives to the device from now on: @a count frames, or until something holds. It mixes in
    /// another thread; a test that waits in vain fails.
    template<class Condition>
    std::vector<Frame> heardUntil(Condition holds) {
        _frames.clear();
        _mixed = 0;
        Mix_SetPostMix(
            [](void* test, Uint8* bytes, int length) {
                auto& self = *static_cast<AudioTest*>(test);
                const auto* first = reinterpret_cast<const Frame*>(bytes);
                self._frames.insert(self._frames.end(), first, first + length / sizeof(Frame));
                self._mixed = self._frames.size();
            },
            this);
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!holds() && std::chrono::steady_clock::now() < deadline)
            std::this_thread::yield();
        EXPECT_TRUE(holds()) << "the mixer stands still";
        Mix_SetPostMix(nullptr, nullptr);
        return _frames;
    }
    std::vector<Frame> heard(std::size_t count) {
        return heardUntil([=, this] { return _mixed >= count; });
    }

    const std::string wav = keptFile("44.wav"), ogg = keptFile("44.ogg");
    const TemporaryFolder folder;
    const std::string file = folder.write("tone.wav", wav);

private:
    std::vector<Frame> _frames;
    std::atomic<std::size_t> _mixed = 0;
};
