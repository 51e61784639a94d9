#include "audio/WaveFile.h"

#include <SDL.h>

#include <cmath>
#include <cstdint>
#include <initializer_list>
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

bool _KXAudioFileIsSane(const char* path, _KXAudioUse use) {
    const std::unique_ptr<SDL_RWops, CloseFile> file(SDL_RWFromFile(path, "rb"));
    if (!file)
        return false;
    const std::uint32_t container = SDL_ReadLE32(file.get());
    SDL_ReadLE32(file.get()); // length
    const std::uint32_t content = SDL_ReadLE32(file.get());
    if (container == tag("RIFF") && content == tag("WAVE"))
        return use == _KXAudioUse::Sound
                   ? chunksAreSane(file.get(), SDL_ReadLE32, true, {{tag("fmt "), waveFormatIsSane}})
                   : chunksAreSane(file.get(), SDL_ReadLE32, false,
                                   {{tag("fmt "), waveFormatIsSane}, {tag("smpl"), waveLoopsAreSane}});
    if (container == tag("FORM") && (content == tag("AIFF") || content == tag("AIFC")))
        return chunksAreSane(file.get(), SDL_ReadBE32, true, {{tag("COMM"), aiffFormatIsSane}});
    if (container == tag("OggS"))
        return vorbisIsSane(file.get());
    return container != tag("fLaC") || flacIsSane(file.get());
}
