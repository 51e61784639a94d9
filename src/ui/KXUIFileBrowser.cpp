#include "ui/KXUIFileBrowser.h"

#include "core/ground/HeapGlobal.h"
#include "platform/FileFacts.h"
#include "platform/FilePath.h"
#include "platform/RenameFile.h"
#include "ui/Description.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXString.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

namespace {
std::string inQuotes(const std::string& name) { return "\"" + name + "\""; }

std::string rowFor(const _KXFolderListing::Entry& entry) {
    return _KXShownName(entry.name) + (entry.isFolder ? "/" : "");
}

// A path is handed out as a temporary string, or where that would cut it as the browser's own text.
const char* textOut(const std::string& text) {
    constexpr std::size_t longest = 1023;
    return text.size() <= longest ? KXTempString("%s", text.c_str()) : text.c_str();
}
} // namespace

KXUIFileBrowser::KXUIFileBrowser() : _state(std::make_unique<State>(*this)) {}

KXUIFileBrowser::~KXUIFileBrowser() = default;

void KXUIFileBrowser::show(KXUIFileBrowserMode mode, const char* folder) { show(mode, folder, nullptr); }

void KXUIFileBrowser::show(KXUIFileBrowserMode mode, const char* folder, const char* name) {
    State& state = *_state;
    const std::string initial = name ? name : ""; // copied first: it may be this browser's own path()
    const std::string path = _KXAbsolutePath(folder);
    state.isShown = true;
    state.saves = mode != KXUIFileBrowserModeOpen;
    state.hasChosen = state.cancelled = false;
    state.chosen.clear();
    state.skipStep();
    state.endTask();
    state.listPlaces();
    state.caption();
    state.enter(path, initial);
    state.putName(initial);
    if (!state.saves) {
        state.list.setFocus(-1);
        return;
    }
    state.name.focus();
    state.selectStem();
}

/// Typing replaces the name but not its extension.
void KXUIFileBrowser::State::selectStem() {
    name.selectAll();
    const std::string text = name.text();
    const std::size_t dot = text.rfind('.');
    if (dot != 0 && dot != std::string::npos)
        name.select(0, static_cast<int>(_KXCountCharacters(text.substr(0, dot))));
}

int KXUIFileBrowser::addPlace(const char* name, const char* folder) {
    if (!name || !folder)
        return 0;
    _state->ownPlaces.push_back({name, folder});
    try {
        _state->listPlaces();
    } catch (const std::bad_alloc&) {
        _state->ownPlaces.pop_back();
        throw;
    }
    return -1;
}

void KXUIFileBrowser::setAllowsChanges(int allows) {
    _state->allowsChanges = allows;
    _state->newFolder.setEnabled(allows);
    _state->endTask();
}

int KXUIFileBrowser::allowsChanges() const { return _state->allowsChanges ? -1 : 0; }

void KXUIFileBrowser::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    _state->windowID = id;
    _state->list.setWindowID(id);
    _state->places.setWindowID(id);
    _state->name.setWindowID(id);
    for (KXUIButton* button : _state->buttons)
        button->setWindowID(id);
}

void KXUIFileBrowser::hide() {
    _state->isShown = false;
    _state->list.setFocus(0);
    _state->places.setFocus(0);
    _state->name.unfocus();
    _state->endTask();
    _state->dropQuestion();
}

int KXUIFileBrowser::isShown() const { return _state->isShown ? -1 : 0; }

void KXUIFileBrowser::setExtensions(const char* extensions) {
    _state->filter.extensions = _KXFileFilter::extensionsIn(extensions);
    refresh();
}

void KXUIFileBrowser::setShowsHiddenFiles(int shows) {
    _state->filter.showsHidden = shows;
    _state->hidden.setState(shows ? KXUIToggleButtonStateOn : KXUIToggleButtonStateOff);
    refresh();
}

int KXUIFileBrowser::showsHiddenFiles() const { return _state->filter.showsHidden ? -1 : 0; }

void KXUIFileBrowser::setFolder(const char* folder) { _state->enter(_KXAbsolutePath(folder), ""); }

void KXUIFileBrowser::refresh() {
    if (!_state->isShown)
        return;
    const int row = _state->list.selectedIndex();
    _state->read(row == -1 ? "" : std::string(_state->entries[row].name));
}

const char* KXUIFileBrowser::folder() const { return textOut(_state->folder); }

const char* KXUIFileBrowser::message() const { return KXTempString("%s", _state->message.c_str()); }

const char* KXUIFileBrowser::path() const { return _state->hasChosen ? textOut(_state->chosen) : nullptr; }

// What there is to say about a folder; empty for nothing.
static std::string messageFor(const _KXFolderListing& listing) {
    if (listing.error == ENOENT || listing.error == ENOTDIR)
        return "There is no such folder.";
    if (listing.error)
        return std::string("This folder cannot be read: ") + std::strerror(listing.error);
    if (!listing.entries.empty())
        return "";
    return listing.hasOthers ? "Nothing in this folder is listed." : "This folder is empty.";
}

/// Lists the folder, with the entry of a name selected if there is one. @return 0, or the system's error.
int KXUIFileBrowser::State::read(const std::string& select) {
    _KXFolderListing listing = _KXReadFolder(folder, filter);
    std::string aboutIt = messageFor(listing);
    dropQuestion();
    entries.swap(listing.entries);
    try {
        listEntries(select);
    } catch (const std::bad_alloc&) {
        entries.swap(listing.entries);
        throw;
    }
    message = std::move(aboutIt);
    return listing.error;
}

/// Lists the entries in their order, with that of a name selected if there is one.
void KXUIFileBrowser::State::listEntries(const std::string& select) {
    std::vector<_KXFolderListing::Entry> sorted = entries;
    _KXSortListing(sorted, order, isReversed);
    std::vector<std::string> rows;
    std::vector<std::array<std::string, 2>> details;
    rows.reserve(sorted.size());
    details.reserve(sorted.size());
    for (const _KXFolderListing::Entry& entry : sorted) {
        rows.push_back(rowFor(entry));
        details.push_back(
            {entry.isFolder ? "" : _KXSizeText(entry.facts.size), _KXDateText(entry.facts.changed)});
    }
    list._setRows(std::move(rows)); // the last that may lack memory
    list._setDetails(std::move(details));
    entries = std::move(sorted);
    const auto found = select.empty()
                           ? entries.end()
                           : std::find_if(entries.begin(), entries.end(),
                                          [&](const _KXFolderListing::Entry& e) { return e.name == select; });
    if (found != entries.end())
        list.setSelectedIndex(static_cast<int>(found - entries.begin()));
}

/// By what is given, or the other way round if it is so already.
void KXUIFileBrowser::State::sortBy(_KXListingOrder by) {
    const int row = list.selectedIndex();
    const std::string selected = row == -1 ? "" : entries[row].name;
    isReversed = by == order && !isReversed;
    order = by;
    listEntries(selected);
}

// Folders of files that were chosen, the latest first.
static constinit _KXHeapGlobal<std::vector<std::string>> usedFolders;

static void noteUsed(const std::string& folder) {
    constexpr std::size_t most = 5;
    std::vector<std::string>& used = usedFolders.get();
    std::erase(used, folder);
    used.insert(used.begin(), folder);
    used.resize(std::min(used.size(), most));
}

/// Home, desktop, the whole computer, those of the game, and where files were chosen last.
void KXUIFileBrowser::State::listPlaces() {
    std::vector<Place> all;
    if (const std::string home = _KXHomeFolder(); !home.empty()) {
        all.push_back({"Home", home});
        if (_KXKindOf(home + "/Desktop") == _KXPathKind::Folder)
            all.push_back({"Desktop", home + "/Desktop"});
    }
    all.push_back({"Computer", "/"});
    all.insert(all.end(), ownPlaces.begin(), ownPlaces.end());
    for (const std::string& used : usedFolders.get())
        if (std::ranges::find(all, used, &Place::folder) == all.end())
            all.push_back({rowFor({_KXLastPart(used), true}), used});
    std::vector<std::string> names, folders;
    for (const Place& each : all) {
        names.push_back(each.name);
        folders.push_back(_KXAbsolutePath(each.folder.c_str()));
    }
    places._setRows(std::move(names)); // the last that may lack memory
    placeFolders = std::move(folders);
}

void KXUIFileBrowser::State::enter(const std::string& path, const std::string& select) {
    endTask();
    std::string before = path;
    folder.swap(before);
    try {
        if (isShown)
            read(select);
    } catch (const std::bad_alloc&) {
        folder.swap(before);
        throw;
    }
    if (!saves)
        putName(""); // it named a file of the folder before
}

/// A part of the path: what one comes from is selected.
void KXUIFileBrowser::State::enterPart(const std::string& path) {
    std::string from;
    for (std::string part = folder; part != path && !_KXLastPart(part).empty(); part = _KXParentOf(part))
        from = _KXLastPart(part);
    enter(path, from);
}

void KXUIFileBrowser::State::goUp() {
    const std::string from = _KXLastPart(folder);
    if (!from.empty())
        enter(_KXParentOf(folder), from);
}

/// Writes a name that was not typed. Where its bytes are no text the line shows something else.
void KXUIFileBrowser::State::putName(const std::string& bytes) {
    name.setText(bytes.c_str());
    picked = bytes;
    pickedShown = name.text();
}

/// The bytes that the line stands for.
std::string KXUIFileBrowser::State::nameMeant() const {
    const std::string text = name.text();
    return text == pickedShown ? picked : text;
}

void KXUIFileBrowser::State::selected(int row) {
    dropQuestion();
    message.clear();
    const _KXFolderListing::Entry& entry = entries[row];
    if (entry.name != _KXLegibleText(entry.name.c_str()).get())
        message = "This name has bytes that are no text; they are shown as question marks.";
    if (!entry.isFolder)
        putName(entry.name);
    else if (!saves)
        putName(""); // the button is to enter the folder; a name to save under goes along into it
}

void KXUIFileBrowser::State::dropQuestion() {
    if (asked.empty())
        return;
    asked.clear();
    message.clear();
    caption();
}

// Whether there is something in a name beside blanks, dots and an extension.
static bool namesSomething(const std::string& name, const _KXFileFilter& filter) {
    const std::size_t dot = name.rfind('.');
    const bool hasExtension = dot != std::string::npos &&
                              (dot > 0 || (!filter.extensions.empty() && filter.matchesExtension(name)));
    return name.substr(0, hasExtension ? dot : name.npos).find_first_not_of(" .") != std::string::npos;
}

/// The line is for the name of a folder or a new name for what is selected, until endTask().
void KXUIFileBrowser::State::beginTask(Task begun) {
    const int row = list.selectedIndex();
    if (!allowsChanges || (begun == Task::Rename && row == -1))
        return;
    endTask();
    dropQuestion();
    nameBefore = nameMeant();
    task = begun;
    renamed = begun == Task::Rename ? entries[row].name : "";
    message = begun == Task::Rename ? "New name for " + inQuotes(renamed) + ":" : "Name of the new folder:";
    putName(renamed);
    name.focus();
    selectStem();
    caption();
}

void KXUIFileBrowser::State::endTask() {
    if (std::exchange(task, Task::Choose) == Task::Choose)
        return;
    putName(nameBefore);
    message.clear();
    caption();
}

/// Why a name can not be given; empty where it can.
std::string KXUIFileBrowser::State::taskFails(const std::string& path) const {
    const std::string wanted = nameMeant();
    if (std::ranges::any_of(wanted, _KXIsSlash) || !namesSomething(wanted, {}))
        return "A name needs more than blanks and dots, and no slash.";
    if (_KXNameIsTaken(path.c_str()))
        return inQuotes(wanted) + " is there already.";
    std::error_code error = _KXPathFault(wanted);
    if (error)
        return error.message() + ": " + inQuotes(wanted);
    if (task == Task::MakeFolder)
        std::filesystem::create_directory(_KXFilePath(path), error);
    else
        error = _KXRenameFile(_KXPathIn(folder, renamed), path);
    return error ? error.message() + ": " + inQuotes(wanted) : "";
}

void KXUIFileBrowser::State::doTask() {
    const std::string wanted = nameMeant();
    if (task == Task::Rename && wanted == renamed)
        return endTask();
    if (const std::string failure = taskFails(_KXPathIn(folder, wanted)); !failure.empty()) {
        message = failure;
        return;
    }
    if (task == Task::Rename && !saves && nameBefore == renamed)
        nameBefore = wanted;
    endTask();
    read(wanted);
    list.setFocus(-1);
}

/// The button, Return in the line, or the activation of a file.
void KXUIFileBrowser::State::pressed() {
    if (task != Task::Choose)
        return doTask();
    const std::string typed = nameMeant();
    const int row = list.selectedIndex();
    const std::string path = _KXPathIn(folder, typed);
    if (typed.empty() && row != -1 && entries[row].isFolder) {
        const std::string inside = _KXPathIn(folder, entries[row].name);
        enter(inside, "");
    } else if (typed.empty()) {
        message = saves ? "Type a name for the file." : "Select a file or type its name.";
    } else if (_KXKindOf(path) == _KXPathKind::Folder) {
        putName("");
        enter(_KXAbsolutePath(path.c_str()), "");
    } else if (typed.ends_with('/')) {
        message = "There is no folder " + inQuotes(typed) + ".";
    } else if (saves) {
        save(path);
    } else {
        open(path);
    }
}

// Why there is nothing at a path that was asked for just before.
static std::string whyNot(const std::string& name, int error) {
    if (error == ENOENT || error == ENOTDIR)
        return "There is no file " + inQuotes(name) + ".";
    return std::string(std::strerror(error)) + ": " + inQuotes(name);
}

void KXUIFileBrowser::State::open(const std::string& path) {
    const bool exists = _KXKindOf(path) != _KXPathKind::Nothing;
    const int error = errno;
    if (exists) {
        choose(path);
        return;
    }
    // What was listed is gone; read() tells whether its folder is, too.
    if (list.selectedIndex() == -1 || read("") == 0)
        message = whyNot(nameMeant(), error);
}

void KXUIFileBrowser::State::save(std::string path) {
    if (!namesSomething(_KXLastPart(path), filter)) {
        message = "A name needs more than blanks and dots.";
        return;
    }
    if (!filter.matchesExtension(_KXLastPart(path))) {
        path.erase(path.find_last_not_of('.') + 1); // "mine." is "mine.txt"
        path += "." + filter.extensions.front();
    }
    const std::string parent = _KXParentOf(path);
    const _KXPathKind kind = _KXKindOf(path);
    const int error = errno;
    if (const std::error_code fault = _KXPathFault(path))
        message = fault.message() + ": " + inQuotes(_KXLastPart(path));
    else if (kind == _KXPathKind::Folder)
        message = "There is a folder " + inQuotes(_KXLastPart(path)) + ".";
    else if (kind == _KXPathKind::Nothing && _KXKindOf(parent) != _KXPathKind::Folder)
        message = "There is no folder " + inQuotes(parent) + ".";
    else if (kind == _KXPathKind::Nothing && error != ENOENT)
        message = whyNot(_KXLastPart(path), error);
    else if (kind == _KXPathKind::Nothing || asked == path)
        choose(path);
    else {
        asked = path;
        message = inQuotes(_KXLastPart(path)) + " is there already. Replace it?";
        caption();
    }
}

void KXUIFileBrowser::State::choose(const std::string& path) {
    chosen = path;
    hasChosen = true;
    noteUsed(_KXParentOf(path));
}

int KXUIFileBrowser::pollInPanel() { return poll(); }
int KXUIFileBrowser::takesKeyboard() const { return 0; }
int KXUIFileBrowser::containsPoint(KXPoint point) const {
    return isShown() ? _KXUIWidget::containsPoint(point) : 0;
}

KXUIDescription KXUIFileBrowser::description() const {
    KXUIDescription said = _described("file browser", nullptr);
    if (isShown())
        said.value = folder();
    else
        _KXAddState(said, "closed");
    return said;
}
