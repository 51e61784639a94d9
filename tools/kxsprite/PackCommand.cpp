#include "Commands.h"
#include "Files.h"
#include "NaturalOrder.h"
#include "Paths.h"
#include "Report.h"
#include "SheetFiles.h"
#include "Tags.h"
#include "ase/Loosen.h"

#include <algorithm>
#include <filesystem>
#include <set>

// Folders of pictures become animations: the folder's name, and the numbers in the names of the files.

namespace {
namespace fs = std::filesystem;

/// A sprite that is to be made, and what of.
struct Wanted {
    fs::path path; ///< Of the sprite file.
    std::vector<std::string> sources;
};

bool isPicture(const fs::path& path) {
    static const std::set<std::string> extensions = {".png", ".bmp", ".gif",  ".jpg", ".jpeg",
                                                     ".tga", ".tif", ".tiff", ".webp"};
    std::string extension = textOf(path.extension());
    std::ranges::transform(extension, extension.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extensions.contains(extension);
}

/// What lies in a folder, in the order of the numbers in the names.
std::vector<fs::path> contentsOf(const fs::path& folder, bool folders) {
    std::vector<fs::path> paths;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (folders ? entry.is_directory() : entry.is_regular_file() && isPicture(entry.path()))
            if (!textOf(entry.path().filename()).starts_with('.'))
                paths.push_back(entry.path());
    std::ranges::sort(paths, [](const fs::path& a, const fs::path& b) {
        return comesBefore(textOf(a.filename()), textOf(b.filename()));
    });
    return paths;
}

LoosePicture readPicture(const fs::path& path) {
    KXImage image;
    if (!image.load(textOf(path).c_str()))
        throw libraryFault(textOf(path));
    return loosePicture(image);
}

LooseSprite readAnimation(const fs::path& folder, const std::vector<fs::path>& pictures, int duration) {
    LooseSprite sprite;
    LooseSprite::Animation animation;
    for (const fs::path& picture : pictures) {
        animation.frames.push_back({sprite.add(readPicture(picture)), duration});
    }
    sprite.animations.emplace(textOf(fs::canonical(folder).filename()), std::move(animation));
    return sprite;
}

/// The animations of a folder: itself, or the folders in it.
LooseSprite readFolder(const fs::path& folder, int duration) {
    const std::vector<fs::path> pictures = contentsOf(folder, false), folders = contentsOf(folder, true);
    if (!pictures.empty() && !folders.empty())
        throw Fault("holds pictures beside folders; put the pictures into a folder of their own",
                    textOf(folder));
    if (!pictures.empty())
        return readAnimation(folder, pictures, duration);
    LooseSprite sprite;
    for (const fs::path& each : folders) {
        const std::vector<fs::path> inside = contentsOf(each, false);
        if (inside.empty())
            throw Fault("holds no pictures", textOf(each));
        sprite.add(readAnimation(each, inside, duration));
    }
    if (folders.empty())
        throw Fault("holds no pictures", textOf(folder));
    return sprite;
}

LooseSprite readSource(const std::string& path, int duration, const Arguments& arguments) {
    if (fs::is_directory(pathOf(path)))
        return readFolder(pathOf(path), duration);
    const std::string bytes = readFile(path);
    if (!isAseprite(bytes))
        throw Fault("is neither a folder of pictures nor an .aseprite file", path);
    std::vector<std::string> notes;
    LooseSprite sprite =
        loosen(readAseprite(bytes), {arguments.number("--step-ms", 16), textOf(pathOf(path).stem())}, notes);
    for (const std::string& note : notes)
        complain(path, note.c_str());
    return sprite;
}

/// The sprites that the words of the command line ask for, beside the sheet.
std::vector<Wanted> wantedSprites(const Arguments& arguments, const fs::path& base) {
    std::vector<Wanted> wanted;
    for (const auto& [option, value] : arguments.words) {
        if (option == "--sprite") {
            if (pathOf(value) != pathOf(value).filename())
                throw Fault("--sprite takes a name without folders: sprites lie beside their sheet");
            wanted.push_back({base.parent_path() / pathOf(value + ".spr"), {}});
        } else if (option.empty()) {
            if (wanted.empty() && arguments.has("--sprite"))
                throw Fault(quoted(value) + " stands before the first --sprite");
            if (wanted.empty())
                wanted.push_back({pathOf(textOf(base) + ".spr"), {}});
            wanted.back().sources.push_back(value);
        }
    }
    std::set<fs::path> paths;
    for (const Wanted& sprite : wanted)
        if (!paths.insert(sprite.path).second)
            throw Fault("two sprites have the name " + quoted(textOf(sprite.path.stem())));
    return wanted;
}

LooseSprite readSprite(const Wanted& wanted, const Arguments& arguments) {
    const int step = arguments.number("--step-ms", 16);
    const int duration =
        arguments.number("--steps", static_cast<int>(stepsOf(arguments.number("--ms", 100), step)));
    if (wanted.sources.empty())
        throw Fault("no folder follows its --sprite", textOf(wanted.path));
    LooseSprite sprite;
    for (const std::string& source : wanted.sources) {
        try {
            sprite.add(readSource(source, duration, arguments));
        } catch (const Fault& fault) {
            throw fault.file.empty() ? Fault(fault.what(), source) : fault;
        } catch (const fs::filesystem_error& error) {
            throw Fault(error.code().message(), source);
        }
    }
    return sprite;
}

/// Animations that are played once, in whichever sprite.
void playOnce(std::vector<LooseSprite>& sprites, const Arguments& arguments) {
    for (const auto& [option, name] : arguments.words) {
        bool found = option != "--once";
        for (LooseSprite& sprite : sprites)
            if (const auto animation = sprite.animations.find(name);
                option == "--once" && animation != sprite.animations.end()) {
                animation->second.loops = 0;
                found = true;
            }
        if (!found)
            throw Fault("there is no animation " + quoted(name) + " to be played once");
    }
}

bool pack(const Arguments& arguments) {
    fs::path base = pathOf(arguments.text("-o"));
    if (base.extension() == ".spr" || base.extension() == ".png")
        base.replace_extension();
    const fs::path sheetPath = pathOf(textOf(base) + ".png");
    return tryWith(textOf(sheetPath), [&] {
        std::vector<LooseSprite> sprites;
        std::vector<std::string> paths;
        for (const Wanted& wanted : wantedSprites(arguments, base)) {
            sprites.push_back(readSprite(wanted, arguments));
            paths.push_back(textOf(wanted.path));
        }
        playOnce(sprites, arguments);
        saveSheet(makeSheet(sprites, textOf(sheetPath.filename()), sheetSettings(arguments)),
                  textOf(sheetPath), paths);
        return true;
    });
}
} // namespace

const Command packCommand = {
    "pack",
    "FOLDER... -o NAME [--ms N | --steps N] [--step-ms N] [--once ANIMATION]...\n"
    "--sprite NAME FOLDER... [--sprite NAME FOLDER...]... -o SHEET [as above]",
    "pack        make one sheet, NAME.png, and a sprite file, NAME.spr, from folders of pictures: a\n"
    "            folder is an animation of its name, the numbers in the names of its files are their\n"
    "            order; a folder of folders has one animation for each; drawings may stand beside folders\n"
    "  --sprite NAME\n"
    "              what follows goes into a sprite file NAME.spr; several are on one sheet\n"
    "  --ms N      how long each frame of a folder is shown, 1 to 60000 milliseconds (100)\n"
    "  --steps N   or in logic steps, 1 to 60000\n"
    "  --step-ms N milliseconds of one logic step, 1 to 1000 (16)\n"
    "  --once ANIMATION\n"
    "              this one does not loop",
    Command::Files::AtLeastOne,
    {outputOption,
     {"--sprite", Option::Kind::Text},
     {"--ms", Option::Kind::Number, 1, 60000},
     {"--steps", Option::Kind::Number, 1, 60000},
     {"--step-ms", Option::Kind::Number, 1, 1000},
     {"--once", Option::Kind::Text},
     paddingOption,
     extrudeOption,
     noTrimOption},
    pack};
