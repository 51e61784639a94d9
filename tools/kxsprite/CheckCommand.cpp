#include "Commands.h"
#include "Report.h"
#include "SpriteFile.h"

/// Reads a sprite file strictly and says what is wrong with it. Whether nothing is.
static bool checkSprite(const std::string& path) {
    const StrictReading reading = readStrictly(readFile(path), [&](const std::string& texture) {
        const std::string sheet = sheetBeside(path, texture);
        const std::optional<SheetSize> size = sheetSize(sheet);
        return size ? size : throw Fault("the sheet " + quoted(sheet) + " is missing");
    });
    for (const FaultAt& fault : reading.faults)
        complain(path, ("byte " + std::to_string(fault.offset) + ": " + fault.what).c_str());
    return reading.faults.empty();
}

static bool check(const Arguments& arguments) {
    bool sound = true;
    for (const std::string& path : arguments.files)
        sound &= tryWith(path, [&] { return checkSprite(path); });
    return sound;
}

const Command checkCommand = {
    "check",
    "FILE.spr...",
    "check       read strictly, and name every fault and its place; the sheet has to lie beside it",
    Command::Files::AtLeastOne,
    {},
    check};
