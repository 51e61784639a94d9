#include "audio/WaveFile.h"

#include <SDL.h>

#include <cmath>
#include <cstdint>
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

static bool isSane(int channels, double frequency) {
    return channels >= 1 && channels <= 8 && frequency >= 1 && frequency <= 768000;
}

// Reads the format chunk of a WAV file from behind its head.
static bool waveFormatIsSane(SDL_RWops* file) {
    SDL_ReadLE16(file); // encoding
    const int channels = SDL_ReadLE16(file);
    return isSane(channels, SDL_ReadLE32(file));
}

// The same for an AIFF file, whose sample rate is a floating-point number of 80 bits.
static bool aiffFormatIsSane(SDL_RWops* file) {
    const int channels = SDL_ReadBE16(file);
    SDL_RWseek(file, 6, RW_SEEK_CUR); // number of frames, bits
    const int exponent = SDL_ReadBE16(file);
    const std::uint32_t mantissa = SDL_ReadBE32(file); // its upper half
    return isSane(channels, std::ldexp(mantissa, exponent - 16383 - 31));
}

// Looks at every chunk of the given name.
static bool chunksAreSane(SDL_RWops* file, Uint32 (*readLength)(SDL_RWops*), std::uint32_t name,
                          bool (*formatIsSane)(SDL_RWops*)) {
    // Whatever follows a chunk of no length is not read by the mixer either, and past the end all is zero.
    for (;;) {
        const std::uint32_t chunk = SDL_ReadLE32(file), length = readLength(file);
        if (length == 0)
            return true;
        const Sint64 next = SDL_RWtell(file) + length;
        if (chunk == name && !formatIsSane(file))
            return false;
        if (SDL_RWseek(file, next, RW_SEEK_SET) < 0)
            return true;
    }
}

bool _KXAudioFileIsSane(const char* path) {
    const std::unique_ptr<SDL_RWops, CloseFile> file(SDL_RWFromFile(path, "rb"));
    if (!file)
        return false;
    const std::uint32_t container = SDL_ReadLE32(file.get());
    SDL_ReadLE32(file.get()); // length
    const std::uint32_t content = SDL_ReadLE32(file.get());
    if (container == tag("RIFF") && content == tag("WAVE"))
        return chunksAreSane(file.get(), SDL_ReadLE32, tag("fmt "), waveFormatIsSane);
    if (container == tag("FORM") && (content == tag("AIFF") || content == tag("AIFC")))
        return chunksAreSane(file.get(), SDL_ReadBE32, tag("COMM"), aiffFormatIsSane);
    return true;
}
