#pragma once

#include "Document.h"

#include <optional>
#include <string>

/// A file's bytes. Throws a Fault if it cannot be read or is larger than any sprite file has reason to be.
std::string readFile(const std::string& path);

/// What KXError() says of a file.
Fault libraryFault(const std::string& path);

/// The path of the sheet that a sprite file names: it lies in the same folder.
std::string sheetBeside(const std::string& sprite, const std::string& texture);

/// The size of an image file; none if there is no such file. Throws a Fault for a file that is no image.
std::optional<SheetSize> sheetSize(const std::string& path);
