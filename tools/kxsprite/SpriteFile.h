#pragma once

#include "Document.h"
#include "Files.h"

#include <functional>
#include <string_view>

/// A fault in a sprite file and the byte where it begins.
struct FaultAt {
    std::size_t offset;
    std::string what;
};

/// What a strict reading found.
struct StrictReading {
    Document document;
    bool readable = false; ///< Whether all of it could be read; the faults then are in what it says.
    std::vector<FaultAt> faults;
};

/// Gives the size of the sheet of that name, if it is known.
using FindSheet = std::function<std::optional<SheetSize>(const std::string& texture)>;

/// Reads the bytes of a sprite file, believing none of its counts and lengths.
StrictReading readStrictly(std::string_view bytes, const FindSheet& findSheet);
