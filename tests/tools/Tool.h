#pragma once

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <string>

#include <sys/wait.h>

/// How a run of kxsprite ended, and what it said on both channels.
struct Outcome {
    int status;
    std::string output;
};

/// Runs kxsprite in a folder of the test's own. @param settings environment variables, as a shell writes
/// them.
inline Outcome kxsprite(const TemporaryFolder& folder, const std::string& arguments,
                        const std::string& settings = "") {
    const std::string command =
        "cd '" + folder.path() + "' && " + settings + " '" KXSPRITE "' " + arguments + " 2>&1";
    Outcome run = {};
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 4096> buffer;
    while (fgets(buffer.data(), buffer.size(), pipe))
        run.output += buffer.data();
    const int status = pclose(pipe);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

inline std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The bytes of a sprite file, field by field.
struct Bytes : std::string {
    Bytes& number(std::int64_t value) {
        for (int i = 0; i < 4; ++i)
            push_back(static_cast<char>(value >> 8 * i & 0xFF));
        return *this;
    }
    Bytes& real(float value) { return number(std::bit_cast<std::int32_t>(value)); }
    Bytes& raw(const std::string& text) {
        append(text);
        return *this;
    }
    Bytes& name(const std::string& text) { return number(static_cast<std::int64_t>(text.size())).raw(text); }
    Bytes& area(float x, float y, int width, int height) {
        return real(x).real(y).number(width).number(height);
    }
    /// What a file begins with.
    static Bytes head(const std::string& texture) { return Bytes().raw("KXSPRITE").number(1).name(texture); }
};

/// hero.png with one box and one animation of one frame.
inline Bytes heroSprite() {
    return Bytes::head("hero.png")
        .number(1)
        .name("hit")
        .area(2, 3, 10, 20)
        .number(1)
        .name("idle")
        .number(1)
        .number(5)
        .area(0, 0, 16, 16)
        .number(-1);
}
