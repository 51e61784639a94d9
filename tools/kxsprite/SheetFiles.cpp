#include "SheetFiles.h"

#include "Files.h"
#include "SpriteIO.h"

#include <cstdio>

SheetSettings sheetSettings(const Arguments& arguments) {
    return {{arguments.number(paddingOption.name, 1), arguments.number(extrudeOption.name, 0)},
            !arguments.has(noTrimOption.name)};
}

void saveSheet(const SpriteSheet& sheet, const std::string& path, const std::vector<std::string>& sprites) {
    if (!sheet.image.writeToPNG(path.c_str()))
        throw libraryFault(path);
    for (std::size_t i = 0; i < sprites.size(); ++i)
        saveDocument(sheet.documents[i], sprites[i]);
    std::printf("%s: %d x %d, %zu picture%s, %d %% full\n", path.c_str(), sheet.image.width(),
                sheet.image.height(), sheet.pictures, sheet.pictures == 1 ? "" : "s", sheet.percentFull);
    for (std::size_t i = 0; i < sprites.size(); ++i)
        if (const auto& [left, top, right, bottom] = sheet.cuts[i]; left + top + right + bottom > 0)
            std::printf("%s: cut off by %d left, %d top, %d right, %d bottom\n", sprites[i].c_str(), left,
                        top, right, bottom);
}
