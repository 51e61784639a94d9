#include "audio/WaveFile.h"

#include "core/ground/ErrorSlot.h"
#include "platform/FilePath.h"

#include <Kobaltrix/KXSound.h>

#include <SDL.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <memory>

namespace {
struct CloseFile {
    void operator()(SDL_RWops* file) const { SDL_RWclose(file); }
};

constexpr std::uint32_t tag(const char (&name)[5]) {
    std::uint32_t value = 0;
    for (int i = 3; i >= 0; --i)
        value = value << 8 | static_cast<unsigned char>(name[i]);
    return value;
}
} // namespace

// A low frequency makes gigabytes of a few samples: the mixer converts them to that of the device.
static bool isSane(int channels, double frequency) {
    return channels >= 1 && channels <= 8 && frequency >= 1000 && frequency <= 768000;
}

/// A chunk that the mixer trusts, and what must hold of it. The file stands behind the chunk's head.
struct TrustedChunk {
    std::uint32_t name;
    bool (*isSane)(SDL_RWops* file, std::uint32_t length);
};

static bool waveFormatIsSane(SDL_RWops* file, std::uint32_t) {
    SDL_ReadLE16(file); // encoding
    const int channels = SDL_ReadLE16(file);
    return isSane(channels, SDL_ReadLE32(file));
}

// Where music goes round: the mixer reads as many loops as the chunk says it has.
static bool waveLoopsAreSane(SDL_RWops* file, std::uint32_t length) {
    constexpr std::uint32_t head = 36, loop = 24;
    SDL_RWseek(file, 28, RW_SEEK_CUR);
    return length >= head && SDL_ReadLE32(file) <= (length - head) / loop;
}

// The sample rate of an AIFF file is a floating-point number of 80 bits.
static bool aiffFormatIsSane(SDL_RWops* file, std::uint32_t) {
    const int channels = SDL_ReadBE16(file);
    SDL_RWseek(file, 6, RW_SEEK_CUR); // number of frames, bits
    const int exponent = SDL_ReadBE16(file);
    const std::uint32_t mantissa = SDL_ReadBE32(file); // its upper half
    return isSane(channels, std::ldexp(mantissa, exponent - 16383 - 31));
}

// Looks at every chunk of the given names. What the mixer takes for the place of the next one has to be taken
// here, too: some of its readers skip a byte behind a chunk of odd length.
static bool chunksAreSane(SDL_RWops* file, Uint32 (*readLength)(SDL_RWops*), bool areEven,
                          std::initializer_list<TrustedChunk> trusted) {
    // Whatever follows a chunk of no length is not read by the mixer either, and past the end all is zero.
    for (;;) {
        const std::uint32_t chunk = SDL_ReadLE32(file), length = readLength(file);
        if (length == 0)
            return true;
        const Sint64 next = SDL_RWtell(file) + length + (areEven ? length % 2 : 0);
        for (const auto& [name, isSane] : trusted)
            if (chunk == name && !isSane(file, length))
                return false;
        if (SDL_RWseek(file, next, RW_SEEK_SET) < 0)
            return true;
    }
}

// The first page of an Ogg file; what it holds is told by its first packet.
static bool vorbisIsSane(SDL_RWops* file) {
    char name[7];
    SDL_RWseek(file, 28, RW_SEEK_SET);
    if (SDL_RWread(file, name, sizeof name, 1) != 1 || SDL_memcmp(name, "\x01vorbis", sizeof name) != 0)
        return true;
    SDL_ReadLE32(file); // version
    const int channels = SDL_ReadU8(file);
    return isSane(channels, SDL_ReadLE32(file));
}

// A FLAC file begins with what its stream is like: 20 bits of sample rate and 3 of channels.
static bool flacIsSane(SDL_RWops* file) {
    SDL_RWseek(file, 18, RW_SEEK_SET);
    const std::uint32_t bits = SDL_ReadBE32(file);
    return isSane(static_cast<int>(bits >> 9 & 7) + 1, bits >> 12);
}

static bool fileIsSane(SDL_RWops* file, _KXAudioUse use) {
    const std::uint32_t container = SDL_ReadLE32(file);
    SDL_ReadLE32(file); // length
    const std::uint32_t content = SDL_ReadLE32(file);
    if (container == tag("RIFF") && content == tag("WAVE"))
        return use == _KXAudioUse::Sound
                   ? chunksAreSane(file, SDL_ReadLE32, true, {{tag("fmt "), waveFormatIsSane}})
                   : chunksAreSane(file, SDL_ReadLE32, false,
                                   {{tag("fmt "), waveFormatIsSane}, {tag("smpl"), waveLoopsAreSane}});
    if (container == tag("FORM") && (content == tag("AIFF") || content == tag("AIFC")))
        return chunksAreSane(file, SDL_ReadBE32, true, {{tag("COMM"), aiffFormatIsSane}});
    if (container == tag("OggS"))
        return vorbisIsSane(file);
    return container != tag("fLaC") || flacIsSane(file);
}

SDL_RWops* _KXAudioSource::open(_KXAudioUse use) const {
    const bool isInMemory = path.empty() && bytes.size() <= std::numeric_limits<int>::max();
    std::unique_ptr<SDL_RWops, CloseFile> file(
        isInMemory ? SDL_RWFromConstMem(bytes.data(), static_cast<int>(bytes.size()))
                   : SDL_RWFromFile(_KXPathForLibraries(path).c_str(), "rb"));
    if (!file || !fileIsSane(file.get(), use))
        return nullptr;
    SDL_RWseek(file.get(), 0, RW_SEEK_SET);
    return file.release();
}

static void put(char*& at, std::uint32_t word) {
    const std::uint32_t lowestFirst = SDL_SwapLE32(word);
    std::memcpy(at, &lowestFirst, sizeof lowestFirst);
    at += sizeof lowestFirst;
}

std::string _KXWaveFileOf(const KXSamples& samples) {
    constexpr std::uint32_t head = 44, format = 3, bits = 32; // floats
    constexpr std::size_t most = std::numeric_limits<int>::max() - head;
    const auto channels = static_cast<std::uint32_t>(samples.channels);
    if (!samples.values || samples.frames == 0 || !isSane(samples.channels, samples.frequency) ||
        samples.frames > most / sizeof(float) / channels) {
        _KXReportError("samples, channels or frequency out of range");
        return "";
    }
    const std::size_t count = samples.frames * channels;
    const auto size = static_cast<std::uint32_t>(count * sizeof(float));
    const auto frequency = static_cast<std::uint32_t>(samples.frequency);
    const std::uint32_t frameSize = channels * bits / 8;
    std::string bytes(head + size, '\0');
    char* at = bytes.data();
    for (const std::uint32_t word :
         {tag("RIFF"), head - 8 + size, tag("WAVE"), tag("fmt "), 16U, format | channels << 16, frequency,
          frequency * frameSize, frameSize | bits << 16, tag("data"), size})
        put(at, word);
    std::for_each_n(samples.values, count, [&at](float value) {
        put(at, std::bit_cast<std::uint32_t>(std::isnan(value) ? 0 : std::clamp(value, -1.0f, 1.0f)));
    });
    return bytes;
}
