#include "AsepriteImport.h"
#include "Commands.h"
#include "Files.h"
#include "Json.h"
#include "Paths.h"
#include "Report.h"
#include "SheetFiles.h"
#include "SpriteIO.h"
#include "ase/Loosen.h"

#include <filesystem>

static constexpr Option sheetOption = {"--sheet", Option::Kind::Text};

static void complainOf(const std::string& path, const std::vector<std::string>& notes) {
    for (const std::string& note : notes)
        complain(path, note.c_str());
}

/// The document that a JSON text of either form describes.
static Document readJson(const std::string& path, const std::string& text, const Arguments& arguments) {
    for (const Option& option : {sheetOption, paddingOption, extrudeOption, noTrimOption})
        if (arguments.has(option.name))
            throw Fault(std::string("is JSON, whose sheet is there already: no ") + option.name);
    const ParsedJson json(text);
    const Value root = json.root();
    if (isOwnJson(root))
        return documentFromJson(root);
    if (!isAsepriteJson(root))
        throw Fault("is JSON neither of kxsprite info --json nor of an Aseprite export (--data)");
    std::vector<std::string> notes;
    const ImportSettings settings = {arguments.number("--step-ms", 16), textOf(pathOf(path).stem())};
    Document document = documentFromAseprite(root, settings, notes);
    complainOf(path, notes);
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

static bool makeFromJson(const std::string& path, const std::string& text, const Arguments& arguments) {
    const std::string output = arguments.text("-o");
    const Document document = readJson(path, text, arguments);
    refuseFaults(document, output);
    return tryWith(output, [&] {
        saveDocument(document, output);
        return true;
    });
}

/// The bare name of the sheet beside a sprite file.
static std::string sheetName(const std::filesystem::path& sprite, const Arguments& arguments) {
    const std::filesystem::path given = pathOf(arguments.text(sheetOption.name));
    if (given != given.filename())
        throw Fault("the sheet lies in the folder of the sprite: --sheet takes a name without folders");
    std::filesystem::path name = given.empty() ? sprite.filename().replace_extension(".png") : given;
    if (name == sprite.filename())
        throw Fault("the sheet would have the name of the sprite");
    return textOf(name);
}

static bool makeFromAseprite(const std::string& path, const std::string& bytes, const Arguments& arguments) {
    const std::filesystem::path output = pathOf(arguments.text("-o"));
    const std::string name = sheetName(output, arguments);
    std::vector<std::string> notes;
    const SpriteSheet sheet =
        makeFromAseprite(bytes, {arguments.number("--step-ms", 16), textOf(pathOf(path).stem())}, name,
                         sheetSettings(arguments), notes);
    complainOf(path, notes);
    const std::filesystem::path beside = output.parent_path() / pathOf(name);
    return tryWith(textOf(output), [&] {
        saveSheet(sheet, textOf(beside), {textOf(output)});
        return true;
    });
}

static bool make(const Arguments& arguments) {
    const std::string& path = arguments.files.front();
    return tryWith(path, [&] {
        const std::string bytes = readFile(path);
        return isAseprite(bytes) ? makeFromAseprite(path, bytes, arguments)
                                 : makeFromJson(path, bytes, arguments);
    });
}

const Command makeCommand = {
    "make",
    "IN.aseprite -o OUT.spr [--sheet NAME.png] [--step-ms N]\n"
    "IN.json -o OUT.spr [--step-ms N]",
    "make        write a sprite file from a drawing of Aseprite, and its sheet beside it; or from the JSON\n"
    "            of info, or from one that Aseprite exports with --sheet, --data, --list-tags and\n"
    "            --list-slices\n"
    "  --step-ms N milliseconds of one logic step, 1 to 1000 (16); the length of Aseprite's frames is\n"
    "              counted in them\n"
    "  --sheet NAME.png\n"
    "              the sheet of a drawing, instead of OUT.png",
    Command::Files::One,
    {outputOption,
     {"--step-ms", Option::Kind::Number, 1, 1000},
     sheetOption,
     paddingOption,
     extrudeOption,
     noTrimOption},
    make};
