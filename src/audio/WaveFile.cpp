#include "audio/WaveFile.h"

#include <SDL.h>

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

// Reads a format chunk from behind its head.
static bool formatIsSane(SDL_RWops* file) {
    constexpr std::uint32_t highestFrequency = 768000;
    SDL_ReadLE16(file); // encoding
    const std::uint16_t channels = SDL_ReadLE16(file);
    const std::uint32_t frequency = SDL_ReadLE32(file);
    return channels >= 1 && channels <= 8 && frequency >= 1 && frequency <= highestFrequency;
}

bool _KXAudioFileIsSane(const char* path) {
    const std::unique_ptr<SDL_RWops, CloseFile> file(SDL_RWFromFile(path, "rb"));
    if (!file)
        return false;
    const std::uint32_t container = SDL_ReadLE32(file.get());
    SDL_ReadLE32(file.get()); // length
    if (container != tag("RIFF") || SDL_ReadLE32(file.get()) != tag("WAVE"))
        return true;
    // Whatever follows a chunk of no length is not read by the mixer either, and past the end all is zero.
    for (;;) {
        const std::uint32_t chunk = SDL_ReadLE32(file.get()), length = SDL_ReadLE32(file.get());
        if (length == 0)
            return true;
        const Sint64 next = SDL_RWtell(file.get()) + length;
        if (chunk == tag("fmt ") && !formatIsSane(file.get()))
            return false;
        if (SDL_RWseek(file.get(), next, RW_SEEK_SET) < 0)
            return true;
    }
}
