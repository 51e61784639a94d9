#pragma once

#include "audio/SoundFiles.h"
#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXAudio.h>
#include <Kobaltrix/KXCore.h>
#include <Kobaltrix/KXSound.h>

#include <gtest/gtest.h>

#include <new>

/// The library with an open device, and files to play.
struct AudioTest : testing::Test {
    AudioTest() {
        EXPECT_EQ(KXInit(), -1) << KXError();
        EXPECT_EQ(KXInitAudio(), -1) << KXError();
    }
    ~AudioTest() override {
        KXDeInit();
        KXSetSoundVolume(128);
    }

    /// Tries to load files that hold no sound, and files that hold part of one; whatever comes of the latter
    /// is played for a moment. @return the number of those that could not be loaded.
    template<class Playable>
    int loadDamagedFiles() const {
        int refused = 0;
        for (const std::string& whole : {wav, ogg}) {
            std::string damaged = whole;
            for (std::size_t at = 0; at < 64; ++at) { // the head, where every byte counts
                damaged[at] = static_cast<char>(damaged[at] ^ 0xFF);
                refused += !plays<Playable>(damaged);
                refused += !plays<Playable>(whole.substr(0, at));
                damaged[at] = whole[at];
            }
            for (std::size_t cut = 64; cut < whole.size(); cut += whole.size() / 50)
                refused += !plays<Playable>(whole.substr(0, cut));
        }
        return refused;
    }

    template<class Playable>
    bool plays(const std::string& content) const {
        try {
            Playable playable(folder.write("damaged", content).c_str());
            playable.play(-1);
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    /// What never loads, and leaves no text behind.
    template<class Playable>
    void expectNoneOfTheseLoads() const {
        // The mixer would divide by some of these.
        const std::pair<int, int> formats[] = {{0, 2}, {1000000, 2}, {44100, 0}, {44100, 9}, {44100, 255}};
        for (const auto& [frequency, channels] : formats)
            for (auto make : {wavFile, aiffFile})
                EXPECT_FALSE(plays<Playable>(make({frequency, channels, {1, 2, 3, 4}})))
                    << frequency << " Hz, " << channels << " channels";
        const std::string folderPath = folder.path(), empty = folder.write("empty", ""),
                          garbage = folder.write("garbage", std::string(5000, '\x5A')),
                          noise = folder.write("noise.ogg", "OggS" + wav),
                          head = folder.write("head.wav", wav.substr(0, 40)),
                          cutOgg = folder.write("cut.ogg", ogg.substr(0, 100)), missing = folder / "missing";
        for (const char* wrong :
             {static_cast<const char*>(nullptr), "", folderPath.c_str(), empty.c_str(), garbage.c_str(),
              noise.c_str(), head.c_str(), cutOgg.c_str(), missing.c_str()})
            EXPECT_THROW(Playable playable(wrong), std::bad_alloc) << (wrong ? wrong : "null");
        EXPECT_THROW(Playable playable, std::bad_alloc);
        EXPECT_STREQ(KXError(), "");
    }

    const std::string wav = wavFile(Samples::tone(440, 5000, 4410));
    const std::string ogg = oggFile(Samples::tone(440, 5000, 4410));
    TemporaryFolder folder;
    const std::string file = folder.write("tone.wav", wav);
};
