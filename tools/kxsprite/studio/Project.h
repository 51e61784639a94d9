#pragma once

#include "Pixels.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// An animation and what it is called.
struct NamedAnimation {
    std::string name;
    Animation animation;

    bool operator==(const NamedAnimation&) const = default;
};

/// A box, what it is called, and how it is shown.
struct NamedBox {
    std::string name;
    Area area;
    std::uint32_t color = 0; ///< 0xRRGGBBAA.

    bool operator==(const NamedBox&) const = default;
};

/// The cells of a sheet, in its pixels.
struct Grid {
    int x = 0, y = 0;            ///< The first cell's corner.
    int width = 16, height = 16; ///< Of a cell.
    int gapX = 0, gapY = 0;      ///< Between two cells.

    bool operator==(const Grid&) const = default;
};

/// A sprite while it is edited: what its file says, and what only the studio knows, such as the order of the
/// list. Copies share the animations that they have in common, so each step of undo costs what it changed.
struct Project {
    std::string texture;                                           ///< The sheet's bare name, empty for none.
    std::vector<std::shared_ptr<const NamedAnimation>> animations; ///< In the order of the list; never null.
    std::vector<NamedBox> boxes;                                   ///< In the order of the list.
    Grid grid;
    std::optional<Pixels> picture; ///< The sheet once it was painted on; until then its file has it.

    bool operator==(const Project& other) const;
};

/// What the sprite file is to say.
Document documentOf(const Project& project);
/// What a sprite file says, in the order of its names.
Project projectOf(const Document& document);

/// The place of an animation of that name, -1 for none.
int animationNamed(const Project& project, const std::string& name);
/// The place of a box of that name, -1 for none.
int boxNamed(const Project& project, const std::string& name);

/// A colour for the next box, so that neighbours in the list differ.
std::uint32_t boxColor(std::size_t index);
