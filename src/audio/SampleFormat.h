#pragma once

#include <SDL.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

/// How the device keeps a sample: reads it as a float in the format's own steps, silence at 0, and writes
/// one, cut to what the format can hold.
template<class Stored, bool IsSwapped>
struct _KXSampleFormat {
    static constexpr std::size_t size = sizeof(Stored);

    static float read(const Uint8* at) {
        const Stored stored = load(at);
        if constexpr (std::is_unsigned_v<Stored>)
            return static_cast<float>(static_cast<int>(stored) - middle());
        else
            return static_cast<float>(stored);
    }

    static void write(Uint8* at, float value) {
        if constexpr (std::is_floating_point_v<Stored>) {
            store(at, std::fmin(std::fmax(value, -1.0f), 1.0f));
        } else {
            using Limits = std::numeric_limits<std::make_signed_t<Stored>>;
            const double cut = std::fmin(std::fmax(value, Limits::min()), Limits::max());
            const auto whole = static_cast<std::int64_t>(std::nearbyint(cut));
            store(at, static_cast<Stored>(whole + (std::is_unsigned_v<Stored> ? middle() : 0)));
        }
    }

private:
    static constexpr int middle() { return 1 << (8 * sizeof(Stored) - 1); }

    static void exchange(Uint8* bytes) {
        for (std::size_t i = 0; IsSwapped && i < size / 2; ++i)
            std::swap(bytes[i], bytes[size - 1 - i]);
    }
    static Stored load(const Uint8* at) {
        Uint8 bytes[size];
        std::memcpy(bytes, at, size);
        exchange(bytes);
        Stored stored;
        std::memcpy(&stored, bytes, size);
        return stored;
    }
    static void store(Uint8* at, Stored stored) {
        std::memcpy(at, &stored, size);
        exchange(at);
    }
};
