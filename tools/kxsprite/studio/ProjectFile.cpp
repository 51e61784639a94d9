#include "ProjectFile.h"

#include "../Files.h"
#include "../Json.h"
#include "../Paths.h"
#include "../SpriteIO.h"
#include "../ase/Loosen.h"
#include "ProjectText.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXSaveFile.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace fs = std::filesystem;

namespace {
std::string extensionOf(const std::string& path) {
    std::string extension = textOf(pathOf(path).extension());
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return extension;
}

bool isFile(const std::string& path) {
    std::error_code ignored;
    return fs::exists(pathOf(path), ignored);
}

OpenedProject openSprite(const std::string& path) {
    OpenedProject opened = {projectOf(loadDocument(path)), path, "", ""};
    const std::string beside = studioFileOf(path);
    if (!isFile(beside))
        return opened;
    try {
        applyStudioText(opened.project, readFile(beside));
    } catch (const Fault& fault) {
        opened.note = quoted(textOf(pathOf(beside).filename())) + " is not used: it " + fault.what();
    }
    return opened;
}

OpenedProject openJson(const std::string& path) {
    const ParsedJson json(readFile(path));
    if (!isOwnJson(json.root()))
        throw Fault("is no sprite: make one of an Aseprite export by kxsprite make");
    return {projectOf(documentFromJson(json.root())), "", "", ""};
}

// Its frames on a sheet, which is saved with the sprite.
OpenedProject openDrawing(const std::string& path) {
    const std::string stem = textOf(pathOf(path).stem());
    std::vector<std::string> notes;
    const SpriteSheet made = makeFromAseprite(readFile(path), {16, stem}, stem + ".png", {}, notes);
    OpenedProject opened = {projectOf(made.documents.front()), "", "", notes.empty() ? "" : notes.front()};
    opened.project.picture.emplace(made.image);
    return opened;
}

OpenedProject openPicture(const std::string& path) {
    if (!sheetSize(path))
        throw Fault("is not there");
    OpenedProject opened;
    opened.project.texture = textOf(pathOf(path).filename());
    return opened;
}

/// Whether what is written would say what is there already.
bool says(const std::string& path, const std::string& text) {
    try {
        return isFile(path) && readFile(path) == text;
    } catch (const Fault&) {
        return false;
    }
}
/// A file beside a sprite that cannot be read is kept for whoever wants to mend it.
void keepBroken(const std::string& beside) {
    try {
        Project nobodys;
        applyStudioText(nobodys, readFile(beside));
    } catch (const Fault&) {
        if (!KXPutFileAside(beside.c_str()))
            throw;
    }
}
} // namespace

std::string studioFileOf(const std::string& sprite) {
    return textOf(pathOf(sprite).replace_extension(".studio.json"));
}

OpenedProject openProject(const std::string& path) {
    const std::string extension = extensionOf(path);
    OpenedProject opened = extension == ".spr"                               ? openSprite(path)
                           : extension == ".json"                            ? openJson(path)
                           : extension == ".ase" || extension == ".aseprite" ? openDrawing(path)
                                                                             : openPicture(path);
    if (!opened.project.texture.empty() && !opened.project.picture)
        opened.sheet = sheetBeside(path, opened.project.texture);
    return opened;
}

void saveText(const std::string& path, const std::string& text) {
    KXSaveFile file(path.c_str());
    if (std::fwrite(text.data(), 1, text.size(), file.stream()) != text.size() || !file.commit())
        throw Fault(KXError(), path);
}

std::string saveProject(const Project& project, const std::string& path) {
    // The smaller one first: without it a sprite is whole, and without the sprite it says nothing.
    const std::string beside = studioFileOf(path);
    std::string note;
    Project plain = projectOf(documentOf(project));
    plain.picture = project.picture; // which is the sheet's file
    std::erase_if(plain.animations, [](const auto& each) { return each->animation.frames.empty(); });
    try {
        const std::string text = studioTextOf(project);
        if (isFile(beside) ? !says(beside, text) : !(plain == project)) {
            if (isFile(beside))
                keepBroken(beside);
            saveText(beside, text);
        }
    } catch (const std::exception& error) {
        note = "The order of the lists and the colours are not saved: " + std::string(error.what());
    }
    saveDocument(documentOf(project), path);
    return note;
}
