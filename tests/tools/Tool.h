#pragma once

#include "support/Program.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

struct Tool : testing::Test {
    /// Runs kxsprite in a folder of the test's own. @param settings environment variables, as a shell writes
    /// them.
    Outcome kxsprite(const std::string& arguments, const std::string& settings = "") const {
        return runProgram(folder, settings + " '" KXSPRITE "' " + arguments);
    }
    /// Makes a.spr of a JSON file.
    Outcome make(const std::string& json) const {
        folder.write("a.json", json);
        return kxsprite("make a.json -o a.spr");
    }

    const TemporaryFolder folder;
};

/// Expects a run that fails with a line about a file.
inline void expectFault(const Outcome& run, const std::string& file, const std::string& said) {
    EXPECT_EQ(run.status, 1) << said;
    const std::size_t line = run.output.find("kxsprite: " + file + ": ");
    EXPECT_TRUE(line != std::string::npos && run.output.find(said, line) != std::string::npos) << said << "\n"
                                                                                               << run.output;
}

/// One field of a sprite file: a whole number, a fraction, or a name with its length before it.
struct Field {
    Field(int number) { // NOLINT(google-explicit-constructor): fields are written as they are
        for (int i = 0; i < 4; ++i)
            bytes.push_back(static_cast<char>(number >> 8 * i & 0xFF));
    }
    Field(float number) : Field(std::bit_cast<std::int32_t>(number)) {} // NOLINT(google-explicit-constructor)
    Field(const std::string& name)                                      // NOLINT(google-explicit-constructor)
        : Field(static_cast<int>(name.size())) {
        bytes += name;
    }
    Field(const char* name) : Field(std::string(name)) {} // NOLINT(google-explicit-constructor)

    std::string bytes;
};
using Fields = std::vector<Field>;

inline Fields operator+(Fields fields, const Fields& more) {
    fields.insert(fields.end(), more.begin(), more.end());
    return fields;
}

/// The bytes of a sprite file: what it begins with, and these fields.
inline std::string spriteFile(const Fields& fields) {
    std::string bytes = "KXSPRITE";
    for (const Field& field : Fields{1} + fields)
        bytes += field.bytes;
    return bytes;
}

/// hero.png with one box and one animation of one frame.
inline const std::string hero =
    spriteFile({"hero.png", 1, "hit", 2.f, 3.f, 10, 20, 1, "idle", 1, 5, 0.f, 0.f, 16, 16, -1});
