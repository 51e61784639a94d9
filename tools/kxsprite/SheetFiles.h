#pragma once

#include "Command.h"
#include "LooseSprite.h"

// The options of commands that make a sheet.
inline constexpr Option paddingOption = {"--padding", Option::Kind::Number, 0, 256};
inline constexpr Option extrudeOption = {"--extrude", Option::Kind::Number, 0, 256};
inline constexpr Option noTrimOption = {"--no-trim"};

/// What those options say.
SheetSettings sheetSettings(const Arguments& arguments);

/// Writes a sheet and then its sprites, each file whole or not at all, and says on standard output how full
/// the sheet is and what was cut off. Throws a Fault that names the file.
/// @param sprites the paths of the sprite files.
void saveSheet(const SpriteSheet& sheet, const std::string& path, const std::vector<std::string>& sprites);
