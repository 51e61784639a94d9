#pragma once

#include <zlib.h>

#include <cstdint>
#include <string>
#include <vector>

// .aseprite files, written byte by byte.

namespace ase {
inline std::string number(std::int64_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<char>(value >> 8 * i & 0xFF));
    return bytes;
}
inline std::string u8(std::int64_t value) { return number(value, 1); }
inline std::string u16(std::int64_t value) { return number(value, 2); }
inline std::string u32(std::int64_t value) { return number(value, 4); }
inline std::string nothing(std::size_t count) { return std::string(count, '\x77'); } // what is not looked at
inline std::string text(const std::string& name) { return u16(static_cast<int>(name.size())) + name; }

inline std::string chunk(int type, const std::string& data) {
    return u32(static_cast<int>(data.size()) + 6) + u16(type) + data;
}

inline std::string packed(const std::string& bytes) {
    const auto length = static_cast<uLong>(bytes.size());
    uLongf size = compressBound(length);
    std::string result(size, '\0');
    compress(reinterpret_cast<Bytef*>(result.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
             length);
    return result.substr(0, size);
}

struct LayerFields {
    int flags = 1, type = 0, level = 0, mode = 0, opacity = 255;
    std::string name = "a layer";
};
inline std::string layer(const LayerFields& f = {}) {
    return chunk(0x2004, u16(f.flags) + u16(f.type) + u16(f.level) + nothing(4) + u16(f.mode) +
                             u8(f.opacity) + nothing(3) + text(f.name));
}

struct CelFields {
    int layer = 0, x = 0, y = 0, opacity = 255, z = 0;
};
inline std::string cel(const CelFields& f, int type, const std::string& data) {
    return chunk(0x2005, u16(f.layer) + u16(f.x) + u16(f.y) + u8(f.opacity) + u16(type) + u16(f.z) +
                             nothing(5) + data);
}
inline std::string rawCel(const CelFields& f, int width, int height, const std::string& pixels) {
    return cel(f, 0, u16(width) + u16(height) + pixels);
}
inline std::string packedCel(const CelFields& f, int width, int height, const std::string& pixels) {
    return cel(f, 2, u16(width) + u16(height) + packed(pixels));
}
inline std::string linkedCel(const CelFields& f, int frame) { return cel(f, 1, u16(frame)); }

inline std::string palette(int size, int first, const std::vector<std::uint32_t>& colors) {
    std::string data = u32(size) + u32(first) + u32(first + static_cast<int>(colors.size()) - 1) + nothing(8);
    for (const std::uint32_t color : colors) { // every other one has a name
        const bool named = data.size() % 2;
        data += u16(named) + u8(color >> 24) + u8(color >> 16) + u8(color >> 8) + u8(color);
        data += named ? text("sky") : "";
    }
    return chunk(0x2019, data);
}

inline std::string tag(const std::string& name, int from, int to, int direction = 0, int repeat = 0) {
    return u16(from) + u16(to) + u8(direction) + u16(repeat) + nothing(10) + text(name);
}
inline std::string tags(const std::vector<std::string>& all) {
    std::string data = u16(static_cast<int>(all.size())) + nothing(8);
    for (const std::string& one : all)
        data += one;
    return chunk(0x2018, data);
}
inline std::string key(int frame, int x, int y, std::int64_t width, int height) {
    return u32(frame) + u32(x) + u32(y) + u32(width) + u32(height);
}
inline std::string slice(const std::string& name, const std::vector<std::string>& keys, int flags = 0) {
    std::string data = u32(static_cast<int>(keys.size())) + u32(flags) + nothing(4) + text(name);
    for (const std::string& one : keys)
        data += one + nothing((flags & 1 ? 16 : 0) + (flags & 2 ? 8 : 0));
    return chunk(0x2022, data);
}

struct FrameFields {
    std::vector<std::string> chunks;
    int milliseconds = 100;
};

struct File {
    int width, height, bits;
    std::vector<FrameFields> frames;
    int flags = 1, transparent = 0, speed = 40;

    std::string bytes() const {
        std::string all = u32(1) + u16(0xA5E0) + u16(static_cast<int>(frames.size())) + u16(width) +
                          u16(height) + u16(bits) + u32(flags) + u16(speed) + nothing(8) + u8(transparent) +
                          nothing(99);
        for (const FrameFields& frame : frames) {
            std::string chunks;
            for (const std::string& one : frame.chunks)
                chunks += one;
            const int count = static_cast<int>(frame.chunks.size());
            all += u32(static_cast<int>(chunks.size()) + 16) + u16(0xF1FA) + u16(count > 2 ? 0xFFFF : count) +
                   u16(frame.milliseconds) + nothing(2) + u32(count > 2 ? count : 0) + chunks;
        }
        return all;
    }
};
} // namespace ase
