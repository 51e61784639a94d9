#include "AsepriteImport.h"
#include "Commands.h"
#include "Files.h"
#include "Json.h"
#include "Report.h"
#include "SpriteIO.h"

#include <filesystem>

/// The document that a file of any form describes.
static Document readSource(const std::string& path, const Arguments& arguments) {
    const ParsedJson json(readFile(path));
    const Value root = json.root();
    if (isOwnJson(root))
        return documentFromJson(root);
    if (!isAsepriteJson(root))
        throw Fault("is JSON neither of kxsprite info --json nor of an Aseprite export (--data)");
    std::vector<std::string> notes;
    const ImportSettings settings = {arguments.number("--step-ms", 16),
                                     std::filesystem::path(path).stem().string()};
    Document document = documentFromAseprite(root, settings, notes);
    for (const std::string& note : notes)
        complain(path, note.c_str());
    return document;
}

/// Refuses frames that could not be shown. The sheet may still be to come, unlike for check.
static void refuseFaults(const Document& document, const std::string& output) {
    std::optional<SheetSize> sheet;
    if (!document.texture.empty())
        sheet = sheetSize(sheetBeside(output, document.texture));
    for (const auto& [name, animation] : document.animations)
        for (std::size_t i = 0; i < animation.frames.size(); ++i)
            for (const std::string& fault : faultsOf(animation.frames[i], sheet))
                throw Fault("animation " + quoted(name) + ", frame " + std::to_string(i) + " " + fault);
}

static bool make(const Arguments& arguments) {
    const std::string& path = arguments.files.front();
    const std::string output = arguments.text("-o");
    Document document;
    const bool isRead = tryWith(path, [&] {
        document = readSource(path, arguments);
        refuseFaults(document, output);
        return true;
    });
    return isRead && tryWith(output, [&] {
               saveDocument(document, output);
               return true;
           });
}

const Command makeCommand = {
    "make",
    "IN.json -o OUT.spr [--step-ms N]",
    "make        write a sprite file from that JSON or from one that Aseprite exports with --sheet,\n"
    "            --data, --list-tags and --list-slices\n"
    "  --step-ms N milliseconds of one logic step, 1 to 1000 (16); the length of Aseprite's frames is\n"
    "              counted in them",
    Command::Files::One,
    {outputOption, {"--step-ms", Option::Kind::Number, 1, 1000}},
    make};
