#include "Check.h"

#include "SpriteFile.h"

#include <cstdio>

bool checkSprite(const std::string& path) {
    const StrictReading reading = readStrictly(
        readFile(path), [&](const std::string& texture) { return sheetSize(sheetBeside(path, texture)); });
    for (const FaultAt& fault : reading.faults)
        std::fprintf(stderr, "kxsprite: %s: byte %zu: %s\n", path.c_str(), fault.offset, fault.what.c_str());
    return reading.faults.empty();
}
