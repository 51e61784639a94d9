#include "Editor.h"

#include "../AnimatedPreview.h"
#include "../Files.h"
#include "../Json.h"
#include "../Paths.h"
#include "ProjectFile.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace {
constexpr std::int64_t largestSide = 16384;

bool isSame(const std::string& a, const std::string& b) {
    std::error_code ignored;
    return fs::equivalent(pathOf(a), pathOf(b), ignored);
}

/// What a file holds, nothing where there is none that can be read.
std::string contentOf(const std::string& path) {
    try {
        std::error_code ignored;
        return fs::exists(pathOf(path), ignored) ? readFile(path) : "";
    } catch (const Fault&) {
        return "";
    }
}
/// Every animation as a row of its frames.
void saveRows(const Document& document, const KXImage& sheet, const std::string& path) {
    std::int64_t width = 0, height = 0;
    std::vector<std::int64_t> tops;
    for (const auto& [name, animation] : document.animations) {
        std::int64_t across = 0, high = 0;
        for (const Frame& frame : animation.frames) {
            across += frame.bounds.width;
            high = std::max<std::int64_t>(high, frame.bounds.height);
        }
        tops.push_back(height);
        width = std::max(width, across);
        height += high;
    }
    if (width < 1 || width > largestSide || height > largestSide)
        throw Fault(width < 1 ? "there are no frames" : "the picture would be too large");
    KXImage picture(static_cast<int>(width), static_cast<int>(height));
    std::size_t row = 0;
    for (const auto& [name, animation] : document.animations) {
        int x = 0;
        for (const Frame& frame : animation.frames) {
            const Area& area = frame.bounds;
            const KXSize size = {static_cast<float>(area.width), static_cast<float>(area.height)};
            picture.paste(sheet.part({{area.x, area.y}, size}), x, static_cast<int>(tops[row]));
            x += area.width;
        }
        ++row;
    }
    if (!picture.writeToPNG(path.c_str()))
        throw Fault(KXError());
}
} // namespace

void Editor::begin(Project project, const std::string& path, const std::string& sheet) {
    _recovery.forget(_work);
    _path = _work = path;
    _onDisk = path.empty() ? "" : contentOf(path);
    _session.begin(std::move(project));
    _kept = _session.version();
    _player.pause();
    loadSheet(sheet);
    _sheetView.showWhole();
    _stage.showWhole();
}

void Editor::loadSheet(const std::string& path) {
    if (path.empty())
        _sheet.clear();
    else if (!_sheet.load(path))
        say(KXError());
}

bool Editor::open(const std::string& path) {
    try {
        const std::string whole = textOf(fs::absolute(pathOf(path)));
        OpenedProject opened = openProject(whole);
        const bool isNew = opened.sprite.empty();
        say("");
        begin(std::move(opened.project), opened.sprite, opened.sheet);
        _work = whole;
        if (isNew)
            _session.noteUnsaved();
        if (!opened.note.empty())
            say(opened.note);
        noteRecent(_settings, whole);
        showRecent();
        return true;
    } catch (const std::exception& fault) {
        say(path + ": " + fault.what());
        return false;
    }
}

bool Editor::offerRecovery(const std::string& path) {
    const std::string whole = path.empty() ? "" : textOf(fs::absolute(pathOf(path)));
    const std::optional<Project> kept = _recovery.find(whole);
    if (!kept)
        return false;
    ask("The studio ended with work that was not saved. Go on with it?", {"Go on", "Discard"},
        [=, this](int answer) {
            if (answer != 0)
                return _recovery.forget(whole);
            _session.begin(*kept);
            _session.noteUnsaved();
            const std::string sheet = kept->texture.empty() ? "" : sheetBeside(whole, kept->texture);
            if (sheet != _sheet.path())
                loadSheet(sheet);
        });
    return true;
}

/// A name like that of what is edited.
std::string Editor::suggestedName(const char* extension) const {
    const std::string like = !_path.empty() ? _path : _session.project().texture;
    return like.empty() ? std::string("sprite") + extension
                        : textOf(pathOf(like).filename().replace_extension(extension));
}

void Editor::useSheet(const std::string& path) {
    if (!_sheet.load(path))
        return say(KXError());
    _session.setTexture(textOf(pathOf(path).filename()));
    _sheetView.showWhole();
}

// An empty one, to be painted.
void Editor::beginSheet(int width, int height) {
    begin({}, "", "");
    _session.setPicture(KXImage(width, height), "New sheet");
    useSheetTool(SheetTool::Pencil);
}

// A painted sheet is given up for the file's, which is a step like others.
void Editor::readSheet() {
    if (!_sheet.load(_sheet.path()))
        return say(KXError());
    if (_session.project().picture)
        _session.setPicture(_sheet.file(), "Read sheet");
    say("The sheet was read anew.");
}

// A sheet that another program has changed is shown at once, unless that would hide what was painted here.
void Editor::pollSheet() {
    if (!_sheet.pollChanged() || !_session.project().picture)
        return;
    if (!_session.isSaved())
        return say(
            "The sheet was changed by another program. F5 reads it, in place of what was painted here.");
    _session.setPicture(_sheet.file(), "Read sheet");
    _session.noteSaved();
}

// What is not saved is asked about first.
void Editor::leave(const std::function<void()>& next) {
    if (_session.isSaved() || (!_session.canUndo() && _path.empty()))
        return next();
    ask("The sprite was changed. Save it first?", {"Save", "Discard", "Cancel"}, [=, this](int answer) {
        if (answer == 0)
            save(next);
        else if (answer == 1)
            next();
    });
}

void Editor::requestQuit() {
    leave([this] {
        _recovery.forget(_work);
        _hasQuit = true;
    });
}

void Editor::save(const std::function<void()>& next) {
    if (_path.empty())
        return browse(KXUIFileBrowserModeSave, "spr", suggestedName(".spr"),
                      [=, this](const std::string& path) { saveTo(path, next); });
    if (contentOf(_path) == _onDisk)
        return saveTo(_path, next);
    ask("The file was changed by another program meanwhile. Save over it?", {"Save", "Cancel"},
        [=, this](int answer) {
            if (answer == 0)
                saveTo(_path, next);
        });
}

void Editor::saveTo(const std::string& path, const std::function<void()>& next, bool replacesSheet) {
    try {
        if (!replacesSheet && hidesSheet(path))
            return ask("Another " + sheetName(path) + " lies in that folder. Replace it?",
                       {"Replace", "Cancel"}, [=, this](int answer) {
                           if (answer == 0)
                               saveTo(path, next, true);
                       });
        bringSheetTo(path);
        const std::string note = saveProject(_session.project(), path);
        _recovery.forget(_work);
        _path = _work = path;
        _onDisk = contentOf(path);
        _session.noteSaved();
        _kept = _session.version();
        noteRecent(_settings, path);
        showRecent();
        say(note.empty() ? "Saved " + textOf(pathOf(path).filename()) + "." : note);
    } catch (const std::exception& fault) {
        return say("It is not saved: " + std::string(fault.what()));
    }
    if (next)
        next();
}

/// The sheet's bare name, or the one that a painted sheet without a file gets.
std::string Editor::sheetName(const std::string& path) const {
    const Project& project = _session.project();
    return !project.texture.empty() || !project.picture
               ? project.texture
               : textOf(pathOf(path).filename().replace_extension(".png"));
}

// Whether the sheet would take the place of somebody else's file.
bool Editor::hidesSheet(const std::string& path) const {
    const std::string name = sheetName(path);
    if (name.empty() || _sheet.isEmpty())
        return false;
    const std::string there = sheetBeside(path, name);
    std::error_code ignored;
    return fs::exists(pathOf(there), ignored) && !isSame(there, _sheet.path()) &&
           (_sheet.path().empty() || contentOf(there) != contentOf(_sheet.path()));
}

// A sprite finds its sheet beside it, so that goes with it.
void Editor::bringSheetTo(const std::string& path) {
    const std::string name = sheetName(path);
    if (name.empty() || _sheet.isEmpty())
        return;
    if (name != _session.project().texture)
        _session.setTexture(name);
    const std::string there = sheetBeside(path, name);
    if (const std::optional<Pixels>& painted = _session.project().picture) {
        if (!painted->image().writeToPNG(there.c_str()))
            throw Fault(KXError(), there);
    } else if (!isSame(there, _sheet.path())) {
        fs::copy_file(pathOf(_sheet.path()), pathOf(there), fs::copy_options::overwrite_existing);
    }
    loadSheet(there);
}

void Editor::exportAs(const char* extension) {
    const std::string kind = extension;
    browse(KXUIFileBrowserModeSave, extension + 1, suggestedName(extension),
           [=, this](const std::string& path) {
               try {
                   exportTo(path, kind);
                   say("Exported " + textOf(pathOf(path).filename()) + ".");
               } catch (const std::exception& fault) {
                   say("It is not exported: " + std::string(fault.what()));
               }
           });
}

void Editor::exportTo(const std::string& path, const std::string& kind) {
    const Document document = documentOf(_session.project());
    if (kind == ".json")
        return saveText(path, jsonFromDocument(document));
    if (kind == ".png")
        return saveRows(document, _sheet.image(), path);
    if (!_session.frame())
        throw Fault("there is no frame to show");
    previewMoving(_session.animation()->animation, _sheet.path(), {path, "", 4, _settings.stepMilliseconds});
}

void Editor::browse(KXUIFileBrowserMode mode, const char* extensions, const std::string& name,
                    const std::function<void(const std::string&)>& act) {
    const std::string beside = !_path.empty() ? _path : !_sheet.path().empty() ? _sheet.path() : _work;
    _chosenFile = act;
    _files.setExtensions(extensions);
    const std::string folder = textOf(pathOf(beside).parent_path());
    _files.show(mode, folder.empty() ? nullptr : folder.c_str(), name.empty() ? nullptr : name.c_str());
}
