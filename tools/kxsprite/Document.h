#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// What is wrong with a file, as the user is told.
struct Fault : std::runtime_error {
    using std::runtime_error::runtime_error;
    Fault(const std::string& what, std::string inFile) : runtime_error(what), file(std::move(inFile)) {}

    std::string file; ///< Which file, where it is not the one being read.
};

/// Width and height in pixels.
struct SheetSize {
    int width, height;
};

/// A rectangle as sprite files hold it: the position keeps its fraction, the extent has none.
struct Area {
    float x = 0, y = 0;
    std::int32_t width = 0, height = 0;

    bool operator==(const Area&) const = default;
};

/// One frame of an animation.
struct Frame {
    std::int32_t duration = 0; ///< In polls.
    Area bounds;

    bool operator==(const Frame&) const = default;
};

/// One animation; 0 `loops` plays once, anything else for ever.
struct Animation {
    std::int32_t loops = -1;
    std::vector<Frame> frames;

    bool operator==(const Animation&) const = default;
};

/// Everything a sprite file says. The maps keep the byte-wise order of names that the file has.
struct Document {
    std::string texture; ///< Empty for none.
    std::map<std::string, Area> boxes;
    std::map<std::string, Animation> animations;

    bool operator==(const Document&) const = default;
};

/// What is wrong with a frame, on a sheet whose size is known or not.
std::vector<std::string> faultsOf(const Frame& frame, const std::optional<SheetSize>& sheet);

/// A name as it may be shown on a terminal: in quotes, what would move the cursor written as \xNN.
std::string quoted(const std::string& name);

/// The document for people, line by line.
std::string describe(const Document& document);
